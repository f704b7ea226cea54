// Fields of filled areas, faces, lightweight polylines, viewports and the ends of blocks and sequences.
#include "db/block_ends.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/viewport.h"
#include "dwg/object_types.h"

namespace vndk::dwg {

namespace {

using namespace code;

// 3D face: in release 15 corners are stored by their difference to the corner before.

void readFace15(FieldReader& r, AcDbFace::Data& face) {
    const bool noFlags = r.bits.B();
    const bool flat = r.bits.B();
    face.corners[0] = {r.bits.RD(), 0, 0};
    face.corners[0].y = r.bits.RD();
    if (!flat)
        face.corners[0].z = r.bits.RD();
    for (int i = 1; i < 4; ++i) {
        face.corners[i].x = r.number(r.bits.DD(face.corners[i - 1].x));
        face.corners[i].y = r.number(r.bits.DD(face.corners[i - 1].y));
        face.corners[i].z = r.number(r.bits.DD(face.corners[i - 1].z));
    }
    face.invisibleEdges = noFlags ? 0 : r.bits.BS();
}

void writeFace15(FieldWriter& w, const AcDbFace::Data& face) {
    const bool noFlags = face.invisibleEdges == 0;
    const bool flat = face.corners[0].z == 0;
    w.bits.B(noFlags);
    w.bits.B(flat);
    w.bits.RD(face.corners[0].x);
    w.bits.RD(face.corners[0].y);
    if (!flat)
        w.bits.RD(face.corners[0].z);
    for (int i = 1; i < 4; ++i) {
        w.bits.DD(face.corners[i].x, face.corners[i - 1].x);
        w.bits.DD(face.corners[i].y, face.corners[i - 1].y);
        w.bits.DD(face.corners[i].z, face.corners[i - 1].z);
    }
    if (!noFlags)
        w.bits.BS(face.invisibleEdges);
}

void readFace14(FieldReader& r, AcDbFace::Data& face) {
    for (AcGePoint3d& corner : face.corners)
        corner = P3::read<AcGePoint3d>(r);
}

void writeFace14(FieldWriter& w, const AcDbFace::Data& face) {
    for (const AcGePoint3d& corner : face.corners)
        P3::write(w, corner);
}

constexpr FieldRow kFaceRows[] = {
    customRow<AcDbFace::Data, readFace14, writeFace14>("corners", kOnly1314),
    row<BS, &AcDbFace::Data::invisibleEdges>("invisible edges", kOnly1314),
    customRow<AcDbFace::Data, readFace15, writeFace15>("corners", kOnly15),
};

// Solid and trace

using AreaData = AcDbFilledArea::Data;

void readCorners(FieldReader& r, AreaData& area) {
    for (AcGePoint2d& corner : area.corners)
        corner = RD2::read<AcGePoint2d>(r);
}

void writeCorners(FieldWriter& w, const AreaData& area) {
    for (const AcGePoint2d& corner : area.corners)
        RD2::write(w, corner);
}

constexpr FieldRow kAreaRows[] = {
    row<BD, &AreaData::thickness>("thickness", kOnly1314),
    row<BT, &AreaData::thickness>("thickness", kOnly15),
    row<BD, &AreaData::elevation>("elevation"),
    customRow<AreaData, readCorners, writeCorners>("corners"),
    row<P3, &AreaData::normal>("normal", kOnly1314),
    row<BE, &AreaData::normal>("normal", kOnly15),
};

// Lightweight polyline

using PolylineData = AcDbPolyline::Data;

/// What is there, and two marks.
enum PolylineFlag : unsigned {
    kHasNormal = 1,
    kHasThickness = 2,
    kHasConstantWidth = 4,
    kHasElevation = 8,
    kHasBulges = 16,
    kHasWidths = 32,
    kPlinegen = 256,
    kClosed = 512,
};

void readPolylineHead(FieldReader& r, PolylineData& p) {
    const unsigned flags = r.bits.BS();
    p.fileFlags = static_cast<uint16_t>(flags & ~(kPlinegen | kClosed));
    p.plinegen = flags & kPlinegen;
    p.closed = flags & kClosed;
    p.constantWidth = flags & kHasConstantWidth ? BD::read<double>(r) : 0;
    p.elevation = flags & kHasElevation ? BD::read<double>(r) : 0;
    p.thickness = flags & kHasThickness ? BD::read<double>(r) : 0;
    if (flags & kHasNormal)
        p.normal = P3::read<AcGeVector3d>(r);
    const uint32_t count = r.count(r.bits.BL(), 4);
    // Each list has an item for every point, or the polyline can't be drawn.
    const bool fits =
        (!(flags & kHasBulges) || r.bits.BL() == count) && (!(flags & kHasWidths) || r.bits.BL() == count);
    if (fits)
        p.vertices.resize(count);
    else
        r.bits.fail();
}

void readPoints14(FieldReader& r, PolylineData& p) {
    for (AcDbPolyline::Vertex& vertex : p.vertices)
        vertex.point = RD2::read<AcGePoint2d>(r);
}

void readPoints15(FieldReader& r, PolylineData& p) {
    const AcGePoint2d* previous = nullptr;
    for (AcDbPolyline::Vertex& vertex : p.vertices) {
        vertex.point.x = r.number(previous ? r.bits.DD(previous->x) : r.bits.RD());
        vertex.point.y = r.number(previous ? r.bits.DD(previous->y) : r.bits.RD());
        previous = &vertex.point;
    }
}

void readBulgesAndWidths(FieldReader& r, PolylineData& p) {
    for (AcDbPolyline::Vertex& vertex : p.vertices) {
        vertex.bulge = p.fileFlags & kHasBulges ? BD::read<double>(r) : 0;
        vertex.startWidth = vertex.endWidth = p.constantWidth;
    }
    if (!(p.fileFlags & kHasWidths))
        return;
    for (AcDbPolyline::Vertex& vertex : p.vertices) {
        vertex.startWidth = BD::read<double>(r);
        vertex.endWidth = BD::read<double>(r);
    }
}

/// The parts that the data need, and those that the file named though it needn't.
unsigned partsOf(const PolylineData& p) {
    unsigned flags = p.fileFlags;
    const auto need = [&](bool needed, PolylineFlag flag) { flags |= needed ? flag : 0u; };
    need(!(p.normal == AcGeVector3d(0, 0, 1)), kHasNormal);
    need(p.thickness != 0, kHasThickness);
    need(p.elevation != 0, kHasElevation);
    bool bulges = false, widths = false;
    for (const AcDbPolyline::Vertex& vertex : p.vertices) {
        bulges = bulges || vertex.bulge != 0;
        widths = widths || vertex.startWidth != p.constantWidth || vertex.endWidth != p.constantWidth;
    }
    need(bulges, kHasBulges);
    need(widths, kHasWidths);
    need(p.constantWidth != 0 && !widths, kHasConstantWidth);
    const bool bothInFile = (p.fileFlags & kHasConstantWidth) && (p.fileFlags & kHasWidths);
    if (widths && !bothInFile)
        flags &= ~unsigned{kHasConstantWidth};
    return flags;
}

void writePolylineHead(FieldWriter& w, const PolylineData& p) {
    const unsigned flags = partsOf(p) | (p.plinegen ? kPlinegen : 0u) | (p.closed ? kClosed : 0u);
    w.bits.BS(static_cast<uint16_t>(flags));
    if (flags & kHasConstantWidth)
        w.bits.BD(p.constantWidth);
    if (flags & kHasElevation)
        w.bits.BD(p.elevation);
    if (flags & kHasThickness)
        w.bits.BD(p.thickness);
    if (flags & kHasNormal)
        P3::write(w, p.normal);
    const auto count = static_cast<uint32_t>(p.vertices.size());
    w.bits.BL(count);
    if (flags & kHasBulges)
        w.bits.BL(count);
    if (flags & kHasWidths)
        w.bits.BL(count);
}

void writePoints14(FieldWriter& w, const PolylineData& p) {
    for (const AcDbPolyline::Vertex& vertex : p.vertices)
        RD2::write(w, vertex.point);
}

void writePoints15(FieldWriter& w, const PolylineData& p) {
    const AcGePoint2d* previous = nullptr;
    for (const AcDbPolyline::Vertex& vertex : p.vertices) {
        if (previous) {
            w.bits.DD(vertex.point.x, previous->x);
            w.bits.DD(vertex.point.y, previous->y);
        } else {
            RD2::write(w, vertex.point);
        }
        previous = &vertex.point;
    }
}

void writeBulgesAndWidths(FieldWriter& w, const PolylineData& p) {
    const unsigned flags = partsOf(p);
    if (flags & kHasBulges)
        for (const AcDbPolyline::Vertex& vertex : p.vertices)
            w.bits.BD(vertex.bulge);
    if (flags & kHasWidths)
        for (const AcDbPolyline::Vertex& vertex : p.vertices) {
            w.bits.BD(vertex.startWidth);
            w.bits.BD(vertex.endWidth);
        }
}

constexpr FieldRow kPolylineRows[] = {
    customRow<PolylineData, readPolylineHead, writePolylineHead>("head"),
    customRow<PolylineData, readPoints14, writePoints14>("points", kOnly1314),
    customRow<PolylineData, readPoints15, writePoints15>("points", kOnly15),
    customRow<PolylineData, readBulgesAndWidths, writeBulgesAndWidths>("bulges and widths"),
};

// Viewport

using ViewData = AcDbViewport::Data;

void readFrozenCount(FieldReader& r, ViewData& v) {
    const uint32_t count = r.bits.BL();
    if (count > r.handles.remaining() / 8)
        r.bits.fail();
    else
        v.frozenLayers.resize(count);
}

void writeFrozenCount(FieldWriter& w, const ViewData& v) { w.bits.BL(static_cast<uint32_t>(v.frozenLayers.size())); }

void readFrozen(FieldReader& r, ViewData& v) {
    for (AcDbObjectId& layer : v.frozenLayers)
        layer = r.id();
}

void writeFrozen(FieldWriter& w, const ViewData& v) {
    for (const AcDbObjectId layer : v.frozenLayers)
        w.id(5, layer);
}

constexpr FieldRow kViewportRows[] = {
    row<P3, &ViewData::center>("center"),
    row<BD, &ViewData::width>("width"),
    row<BD, &ViewData::height>("height"),
    row<P3, &ViewData::target>("target", kOnly15),
    row<P3, &ViewData::direction>("direction", kOnly15),
    row<BD, &ViewData::twist>("twist", kOnly15),
    row<BD, &ViewData::viewHeight>("view height", kOnly15),
    row<BD, &ViewData::lens>("lens", kOnly15),
    row<BD, &ViewData::frontClip>("front clip", kOnly15),
    row<BD, &ViewData::backClip>("back clip", kOnly15),
    row<BD, &ViewData::snapAngle>("snap angle", kOnly15),
    row<RD2, &ViewData::viewCenter>("view center", kOnly15),
    row<RD2, &ViewData::snapBase>("snap base", kOnly15),
    row<RD2, &ViewData::snapSpacing>("snap spacing", kOnly15),
    row<RD2, &ViewData::gridSpacing>("grid spacing", kOnly15),
    row<BS, &ViewData::circleZoom>("circle zoom", kOnly15),
    customRow<ViewData, readFrozenCount, writeFrozenCount>("frozen layers", kOnly15),
    row<BL, &ViewData::status>("status", kOnly15),
    row<TV, &ViewData::styleSheet>("style sheet", kOnly15),
    row<RC, &ViewData::renderMode>("render mode", kOnly15),
    row<B, &ViewData::ucsAtOrigin>("UCS at origin", kOnly15),
    row<B, &ViewData::ucsPerViewport>("UCS per viewport", kOnly15),
    row<P3, &ViewData::ucsOrigin>("UCS origin", kOnly15),
    row<P3, &ViewData::ucsXAxis>("UCS x axis", kOnly15),
    row<P3, &ViewData::ucsYAxis>("UCS y axis", kOnly15),
    row<BD, &ViewData::ucsElevation>("UCS elevation", kOnly15),
    row<BS, &ViewData::ucsOrthoType>("UCS orthographic type", kOnly15),
    customRow<ViewData, readFrozen, writeFrozen>("frozen layers", kOnly15),
    row<H<5>, &ViewData::clipBoundary>("clip boundary", kOnly15),
    row<H<5>, &ViewData::vxRecord>("viewport record"),
    row<H<5>, &ViewData::namedUcs>("named UCS", kOnly15),
    row<H<5>, &ViewData::baseUcs>("base UCS", kOnly15),
};

AcDbObject* readBlockBegin(FieldReader& r) {
    auto* const begin = new AcDbBlockBegin;
    begin->setFileName(r.text());
    return begin;
}

void writeBlockBegin(FieldWriter& w, const AcDbObject& object) {
    w.text(static_cast<const AcDbBlockBegin&>(object).fileName());
}

constexpr ObjectType kTypes[] = {
    {4, "BLOCK", &AcDbBlockBegin::desc, readBlockBegin, writeBlockBegin, &assignBaseOf<AcDbBlockBegin>},
    emptyType<AcDbBlockEnd>(5, "ENDBLK"),
    emptyType<AcDbSequenceEnd>(6, "SEQEND"),
    dataType<AcDbFace, kFaceRows>(28, "3DFACE"),
    dataType<AcDbSolid, kAreaRows>(31, "SOLID"),
    dataType<AcDbTrace, kAreaRows>(32, "TRACE"),
    dataType<AcDbViewport, kViewportRows>(34, "VIEWPORT"),
    dataType<AcDbPolyline, kPolylineRows>(77, "LWPOLYLINE"),
};

} // namespace

std::span<const ObjectType> planarTypes() { return kTypes; }

} // namespace vndk::dwg
