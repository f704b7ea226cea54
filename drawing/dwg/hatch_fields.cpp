// Fields of hatches.
#include "db/hatch.h"
#include "dwg/object_types.h"

#include <algorithm>

namespace vndk::dwg {

namespace {

using namespace code;
using Hatch = AcDbHatch;

enum EdgeType : uint8_t { kLineEdge = 1, kArcEdge = 2, kEllipseEdge = 3, kSplineEdge = 4 };

template <class T>
T planar(FieldReader& r) {
    return RD2::read<T>(r);
}

void readSpline(FieldReader& r, Hatch::SplineEdge& edge) {
    edge.degree = r.bits.BL();
    edge.rational = r.bits.B();
    edge.periodic = r.bits.B();
    const uint32_t knots = r.count(r.bits.BL(), 2), points = r.count(r.bits.BL(), 128);
    edge.knots.resize(knots);
    for (double& knot : edge.knots)
        knot = BD::read<double>(r);
    edge.points.resize(points);
    edge.weights.resize(edge.rational ? points : 0);
    for (uint32_t i = 0; i < points; ++i) {
        edge.points[i] = planar<AcGePoint2d>(r);
        if (edge.rational)
            edge.weights[i] = BD::read<double>(r);
    }
}

Hatch::Edge readEdge(FieldReader& r) {
    switch (r.bits.RC()) {
    case kLineEdge: {
        Hatch::LineEdge edge;
        edge.start = planar<AcGePoint2d>(r);
        edge.end = planar<AcGePoint2d>(r);
        return edge;
    }
    case kArcEdge: {
        Hatch::ArcEdge edge;
        edge.center = planar<AcGePoint2d>(r);
        for (double* const value : {&edge.radius, &edge.start, &edge.end})
            *value = BD::read<double>(r);
        edge.ccw = r.bits.B();
        return edge;
    }
    case kEllipseEdge: {
        Hatch::EllipseEdge edge;
        edge.center = planar<AcGePoint2d>(r);
        edge.major = planar<AcGeVector2d>(r);
        for (double* const value : {&edge.ratio, &edge.start, &edge.end})
            *value = BD::read<double>(r);
        edge.ccw = r.bits.B();
        return edge;
    }
    case kSplineEdge: {
        Hatch::SplineEdge edge;
        readSpline(r, edge);
        return edge;
    }
    default:
        r.bits.fail();
        return Hatch::LineEdge();
    }
}

struct EdgeWriter {
    FieldWriter& w;

    void operator()(const Hatch::LineEdge& edge) const {
        w.bits.RC(kLineEdge);
        RD2::write(w, edge.start);
        RD2::write(w, edge.end);
    }
    void operator()(const Hatch::ArcEdge& edge) const {
        w.bits.RC(kArcEdge);
        RD2::write(w, edge.center);
        for (const double value : {edge.radius, edge.start, edge.end})
            w.bits.BD(value);
        w.bits.B(edge.ccw);
    }
    void operator()(const Hatch::EllipseEdge& edge) const {
        w.bits.RC(kEllipseEdge);
        RD2::write(w, edge.center);
        RD2::write(w, edge.major);
        for (const double value : {edge.ratio, edge.start, edge.end})
            w.bits.BD(value);
        w.bits.B(edge.ccw);
    }
    void operator()(const Hatch::SplineEdge& edge) const {
        w.bits.RC(kSplineEdge);
        w.bits.BL(edge.degree);
        w.bits.B(edge.rational);
        w.bits.B(edge.periodic);
        w.bits.BL(static_cast<uint32_t>(edge.knots.size()));
        w.bits.BL(static_cast<uint32_t>(edge.points.size()));
        for (const double knot : edge.knots)
            w.bits.BD(knot);
        for (size_t i = 0; i < edge.points.size(); ++i) {
            RD2::write(w, edge.points[i]);
            if (edge.rational)
                w.bits.BD(edge.weights[i]);
        }
    }
};

/// The number of boundary objects stands with the loop, the objects themselves behind all fields.
Hatch::Loop readLoop(FieldReader& r) {
    Hatch::Loop loop;
    loop.flags = r.bits.BL();
    if (loop.flags & Hatch::kPolyline) {
        loop.bulges = r.bits.B();
        loop.closed = r.bits.B();
        loop.vertices.resize(r.count(r.bits.BL(), 128));
        for (Hatch::Vertex& vertex : loop.vertices) {
            vertex.point = planar<AcGePoint2d>(r);
            vertex.bulge = loop.bulges ? BD::read<double>(r) : 0;
        }
    } else {
        for (uint32_t edges = r.count(r.bits.BL(), 8); edges > 0 && !r.bits.failed(); --edges)
            loop.edges.push_back(readEdge(r));
    }
    const uint32_t objects = r.bits.BL();
    loop.boundary.resize(objects <= r.handles.remaining() / 8 ? objects : static_cast<uint32_t>(r.bits.fail()));
    return loop;
}

/// Objects that aren't in the file any more are no boundary.
std::vector<AcDbObjectId> writtenBoundary(const Hatch::Loop& loop) {
    std::vector<AcDbObjectId> written;
    std::copy_if(loop.boundary.begin(), loop.boundary.end(), std::back_inserter(written),
                 [](AcDbObjectId id) { return writtenHandle(id) != 0; });
    return written;
}

void writeLoop(FieldWriter& w, const Hatch::Loop& loop) {
    w.bits.BL(loop.flags);
    if (loop.flags & Hatch::kPolyline) {
        w.bits.B(loop.bulges);
        w.bits.B(loop.closed);
        w.bits.BL(static_cast<uint32_t>(loop.vertices.size()));
        for (const Hatch::Vertex& vertex : loop.vertices) {
            RD2::write(w, vertex.point);
            if (loop.bulges)
                w.bits.BD(vertex.bulge);
        }
    } else {
        w.bits.BL(static_cast<uint32_t>(loop.edges.size()));
        for (const Hatch::Edge& edge : loop.edges)
            std::visit(EdgeWriter{w}, edge);
    }
    w.bits.BL(static_cast<uint32_t>(writtenBoundary(loop).size()));
}

void readLoops(FieldReader& r, Hatch::Data& hatch) {
    constexpr size_t kLeastBits = 6; // flags and two counts, each of two bits at least
    for (uint32_t loops = r.count(r.bits.BL(), kLeastBits); loops > 0 && !r.bits.failed(); --loops)
        hatch.loops.push_back(readLoop(r));
}

void writeLoops(FieldWriter& w, const Hatch::Data& hatch) {
    w.bits.BL(static_cast<uint32_t>(hatch.loops.size()));
    for (const Hatch::Loop& loop : hatch.loops)
        writeLoop(w, loop);
}

void readPattern(FieldReader& r, Hatch::Data& hatch) {
    if (hatch.solid)
        return;
    hatch.angle = BD::read<double>(r);
    hatch.scale = BD::read<double>(r);
    hatch.doubled = r.bits.B();
    hatch.lines.resize(r.count(r.bits.BS(), 12));
    for (Hatch::PatternLine& line : hatch.lines) {
        for (double* const value : {&line.angle, &line.base.x, &line.base.y, &line.offset.x, &line.offset.y})
            *value = BD::read<double>(r);
        line.dashes.resize(r.count(r.bits.BS(), 2));
        for (double& dash : line.dashes)
            dash = BD::read<double>(r);
    }
}

void writePattern(FieldWriter& w, const Hatch::Data& hatch) {
    if (hatch.solid)
        return;
    w.bits.BD(hatch.angle);
    w.bits.BD(hatch.scale);
    w.bits.B(hatch.doubled);
    w.bits.BS(static_cast<uint16_t>(hatch.lines.size()));
    for (const Hatch::PatternLine& line : hatch.lines) {
        for (const double value : {line.angle, line.base.x, line.base.y, line.offset.x, line.offset.y})
            w.bits.BD(value);
        w.bits.BS(static_cast<uint16_t>(line.dashes.size()));
        for (const double dash : line.dashes)
            w.bits.BD(dash);
    }
}

bool isDerived(const Hatch::Data& hatch) {
    return std::any_of(hatch.loops.begin(), hatch.loops.end(),
                       [](const Hatch::Loop& loop) { return loop.flags & Hatch::kDerived; });
}

void readSeeds(FieldReader& r, Hatch::Data& hatch) {
    if (isDerived(hatch))
        hatch.pixelSize = BD::read<double>(r);
    hatch.seeds.resize(r.count(r.bits.BL(), 128));
    for (AcGePoint2d& seed : hatch.seeds)
        seed = planar<AcGePoint2d>(r);
    for (Hatch::Loop& loop : hatch.loops)
        for (AcDbObjectId& id : loop.boundary)
            id = r.id();
}

void writeSeeds(FieldWriter& w, const Hatch::Data& hatch) {
    if (isDerived(hatch))
        w.bits.BD(hatch.pixelSize);
    w.bits.BL(static_cast<uint32_t>(hatch.seeds.size()));
    for (const AcGePoint2d& seed : hatch.seeds)
        RD2::write(w, seed);
    for (const Hatch::Loop& loop : hatch.loops)
        for (const AcDbObjectId id : writtenBoundary(loop))
            w.id(4, id);
}

constexpr FieldRow kHatchRows[] = {
    row<BD, &Hatch::Data::elevation>("elevation"),
    row<P3, &Hatch::Data::normal>("normal"),
    row<TV, &Hatch::Data::name>("pattern name"),
    row<B, &Hatch::Data::solid>("solid"),
    row<B, &Hatch::Data::associative>("associative"),
    customRow<Hatch::Data, readLoops, writeLoops>("contours"),
    row<BS, &Hatch::Data::style>("style"),
    row<BS, &Hatch::Data::patternType>("pattern type"),
    customRow<Hatch::Data, readPattern, writePattern>("pattern"),
    customRow<Hatch::Data, readSeeds, writeSeeds>("seeds"),
};

constexpr ObjectType kTypes[] = {dataType<AcDbHatch, kHatchRows>(78, "HATCH")};

} // namespace

std::span<const ObjectType> hatchTypes() { return kTypes; }

} // namespace vndk::dwg
