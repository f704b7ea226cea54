// Fields of block references, polylines with vertex entities, and their vertices.
#include "db/block_reference.h"
#include "db/polylines.h"
#include "dwg/object_types.h"
#include "dwg/subentity_handles.h"

namespace vndk::dwg {

namespace {

using namespace code;
using InsertData = AcDbBlockReference::Data;

/// How release 15 stores the three scale factors.
enum ScaleForm : unsigned { kAllGiven = 0, kXIsOne = 1, kAllEqual = 2, kAllOne = 3 };

void readScale15(FieldReader& r, InsertData& insert) {
    AcGeScale3d& s = insert.scale;
    switch (r.bits.BB()) {
    case kAllOne:
        s = AcGeScale3d();
        break;
    case kAllEqual:
        s = AcGeScale3d(r.number(r.bits.RD()));
        break;
    case kXIsOne:
        s.sx = 1;
        s.sy = r.number(r.bits.DD(1.0));
        s.sz = r.number(r.bits.DD(1.0));
        break;
    default:
        s.sx = r.number(r.bits.RD());
        s.sy = r.number(r.bits.DD(s.sx));
        s.sz = r.number(r.bits.DD(s.sx));
    }
}

void writeScale15(FieldWriter& w, const InsertData& insert) {
    const AcGeScale3d& s = insert.scale;
    if (s == AcGeScale3d()) {
        w.bits.BB(kAllOne);
    } else if (s.sx == 1) {
        w.bits.BB(kXIsOne);
        w.bits.DD(s.sy, 1.0);
        w.bits.DD(s.sz, 1.0);
    } else if (s.sx == s.sy && s.sx == s.sz) {
        w.bits.BB(kAllEqual);
        w.bits.RD(s.sx);
    } else {
        w.bits.BB(kAllGiven);
        w.bits.RD(s.sx);
        w.bits.DD(s.sy, s.sx);
        w.bits.DD(s.sz, s.sx);
    }
}

void readScale14(FieldReader& r, InsertData& insert) {
    insert.scale = {BD::read<double>(r), 1, 1};
    insert.scale.sy = BD::read<double>(r);
    insert.scale.sz = BD::read<double>(r);
}

void writeScale14(FieldWriter& w, const InsertData& insert) {
    for (const double factor : {insert.scale.sx, insert.scale.sy, insert.scale.sz})
        w.bits.BD(factor);
}

constexpr FieldRow kInsertRows[] = {
    row<P3, &InsertData::position>("insertion point"),
    customRow<InsertData, readScale14, writeScale14>("scale", kOnly1314),
    customRow<InsertData, readScale15, writeScale15>("scale", kOnly15),
    row<BD, &InsertData::rotation>("rotation"),
    row<P3, &InsertData::normal>("normal"),
};

using ArrayData = AcDbMInsertBlock::ArrayData;

constexpr FieldRow kArrayRows[] = {
    row<BS, &ArrayData::columns>("columns"),
    row<BS, &ArrayData::rows>("rows"),
    row<BD, &ArrayData::columnSpacing>("column spacing"),
    row<BD, &ArrayData::rowSpacing>("row spacing"),
};

void readInsertHandles(FieldReader& r, AcDbBlockReference& insert, InsertData& data, bool hasAttributes) {
    data.block = r.id();
    insert.setFileData(data);
    if (hasAttributes)
        readSubentityHandles(r, insert.subentities());
}

void writeInsertHandles(FieldWriter& w, const AcDbBlockReference& insert, bool hasAttributes) {
    w.id(5, insert.blockTableRecord());
    if (hasAttributes)
        writeSubentityHandles(w, insert, insert.subentities());
}

AcDbObject* readInsert(FieldReader& r) {
    auto* const insert = new AcDbBlockReference;
    InsertData data;
    readRows(kInsertRows, r, &data);
    readInsertHandles(r, *insert, data, r.bits.B());
    return insert;
}

void writeInsert(FieldWriter& w, const AcDbObject& object) {
    const auto& insert = static_cast<const AcDbBlockReference&>(object);
    const bool hasAttributes = hasLiveSubentities(insert, insert.subentities());
    writeRows(kInsertRows, w, &insert.data());
    w.bits.B(hasAttributes);
    writeInsertHandles(w, insert, hasAttributes);
}

AcDbObject* readMInsert(FieldReader& r) {
    auto* const insert = new AcDbMInsertBlock;
    InsertData data;
    ArrayData array;
    readRows(kInsertRows, r, &data);
    const bool hasAttributes = r.bits.B();
    readRows(kArrayRows, r, &array);
    insert->setFileArrayData(array);
    readInsertHandles(r, *insert, data, hasAttributes);
    return insert;
}

void writeMInsert(FieldWriter& w, const AcDbObject& object) {
    const auto& insert = static_cast<const AcDbMInsertBlock&>(object);
    const bool hasAttributes = hasLiveSubentities(insert, insert.subentities());
    writeRows(kInsertRows, w, &insert.data());
    w.bits.B(hasAttributes);
    writeRows(kArrayRows, w, &insert.arrayData());
    writeInsertHandles(w, insert, hasAttributes);
}

/// The subentities belong to the identity, so they don't come over with the data.
template <class T>
void assignInsert(AcDbObject& derived, const AcDbObject& base) {
    assignBaseOf<T>(derived, base);
    const AcDbSubentities& list = static_cast<const T&>(base).subentities();
    if (!list.sequenceEnd().isNull())
        static_cast<T&>(derived).subentities().setFileChain(list.fileFirst(), list.fileLast(), list.sequenceEnd());
}

// Vertices

constexpr FieldRow kVertexRows[] = {
    row<RC, &AcDbVertex::Data::flag>("flag"),
    row<P3, &AcDbVertex::Data::position>("point"),
};

using CurveData = AcDb2dVertex::CurveData;

// A negative start width stands for both.
void readWidths(FieldReader& r, CurveData& curve) {
    const double width = BD::read<double>(r);
    curve.startWidth = std::fabs(width);
    curve.endWidth = width < 0 ? curve.startWidth : BD::read<double>(r);
}

void writeWidths(FieldWriter& w, const CurveData& curve) {
    const bool same = curve.startWidth == curve.endWidth && curve.startWidth > 0;
    w.bits.BD(same ? -curve.startWidth : curve.startWidth);
    if (!same)
        w.bits.BD(curve.endWidth);
}

constexpr FieldRow kCurveRows[] = {
    customRow<CurveData, readWidths, writeWidths>("widths"),
    row<BD, &CurveData::bulge>("bulge"),
    row<BD, &CurveData::tangent>("tangent direction"),
};

AcDbObject* readVertex2d(FieldReader& r) {
    AcDbVertex::Data data;
    CurveData curve;
    readRows(kVertexRows, r, &data);
    readRows(kCurveRows, r, &curve);
    auto* const vertex = new AcDb2dVertex;
    vertex->setFileData(data);
    vertex->setFileCurveData(curve);
    return vertex;
}

void writeVertex2d(FieldWriter& w, const AcDbObject& object) {
    const auto& vertex = static_cast<const AcDb2dVertex&>(object);
    writeRows(kVertexRows, w, &vertex.data());
    writeRows(kCurveRows, w, &vertex.curveData());
}

using FaceData = AcDbFaceRecord::Data;

void readFaceVertices(FieldReader& r, FaceData& face) {
    for (int16_t& vertex : face.vertices)
        vertex = static_cast<int16_t>(r.bits.BS());
}

void writeFaceVertices(FieldWriter& w, const FaceData& face) {
    for (const int16_t vertex : face.vertices)
        w.bits.BS(static_cast<uint16_t>(vertex));
}

constexpr FieldRow kFaceRecordRows[] = {customRow<FaceData, readFaceVertices, writeFaceVertices>("vertices")};

// Polylines

using Polyline2d = AcDb2dPolyline::Data;

constexpr FieldRow kPolyline2dRows[] = {
    row<BS, &Polyline2d::flag>("flag"),
    row<BS, &Polyline2d::curveType>("curve type"),
    row<BD, &Polyline2d::startWidth>("start width"),
    row<BD, &Polyline2d::endWidth>("end width"),
    row<BD, &Polyline2d::thickness>("thickness", kOnly1314),
    row<BT, &Polyline2d::thickness>("thickness", kOnly15),
    row<BD, &Polyline2d::elevation>("elevation"),
    row<P3, &Polyline2d::normal>("normal", kOnly1314),
    row<BE, &Polyline2d::normal>("normal", kOnly15),
};

constexpr FieldRow kPolyline3dRows[] = {
    row<RC, &AcDb3dPolyline::Data::curveType>("curve type"),
    row<RC, &AcDb3dPolyline::Data::flag>("flag"),
};

constexpr FieldRow kPolyFaceRows[] = {
    row<BS, &AcDbPolyFaceMesh::Data::numVertices>("number of vertices"),
    row<BS, &AcDbPolyFaceMesh::Data::numFaces>("number of faces"),
};

using MeshData = AcDbPolygonMesh::Data;

constexpr FieldRow kMeshRows[] = {
    row<BS, &MeshData::flag>("flag"),
    row<BS, &MeshData::curveType>("curve type"),
    row<BS, &MeshData::mSize>("M"),
    row<BS, &MeshData::nSize>("N"),
    row<BS, &MeshData::mDensity>("M density"),
    row<BS, &MeshData::nDensity>("N density"),
};

template <class T, const auto& Rows>
AcDbObject* readOwner(FieldReader& r) {
    auto* const owner = static_cast<T*>(readData<T, Rows>(r));
    readSubentityHandles(r, owner->subentities());
    return owner;
}

template <class T, const auto& Rows>
void writeOwner(FieldWriter& w, const AcDbObject& object) {
    writeData<T, Rows>(w, object);
    const auto& owner = static_cast<const T&>(object);
    writeSubentityHandles(w, owner, owner.subentities());
}

template <class T, const auto& Rows>
constexpr ObjectType ownerType(uint16_t number) {
    return {number, "POLYLINE", &T::desc, &readOwner<T, Rows>, &writeOwner<T, Rows>, &assignBaseOf<T>};
}

constexpr ObjectType kTypes[] = {
    {7, "INSERT", &AcDbBlockReference::desc, readInsert, writeInsert, &assignInsert<AcDbBlockReference>},
    {8, "INSERT", &AcDbMInsertBlock::desc, readMInsert, writeMInsert, &assignInsert<AcDbMInsertBlock>},
    {10, "VERTEX", &AcDb2dVertex::desc, readVertex2d, writeVertex2d, &assignBaseOf<AcDb2dVertex>},
    dataType<AcDb3dPolylineVertex, kVertexRows>(11, "VERTEX"),
    dataType<AcDbPolygonMeshVertex, kVertexRows>(12, "VERTEX"),
    dataType<AcDbPolyFaceMeshVertex, kVertexRows>(13, "VERTEX"),
    dataType<AcDbFaceRecord, kFaceRecordRows>(14, "VERTEX"),
    ownerType<AcDb2dPolyline, kPolyline2dRows>(15),
    ownerType<AcDb3dPolyline, kPolyline3dRows>(16),
    ownerType<AcDbPolyFaceMesh, kPolyFaceRows>(29),
    ownerType<AcDbPolygonMesh, kMeshRows>(30),
};

} // namespace

std::span<const ObjectType> complexTypes() { return kTypes; }

} // namespace vndk::dwg
