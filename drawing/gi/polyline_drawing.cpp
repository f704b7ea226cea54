// Polylines with arcs and widths, meshes, filled areas and faces.
#include "db/open.h"
#include "db/plane_math.h"
#include "gi/entity_drawing_parts.h"

#include <algorithm>
#include <array>

namespace vndk::gi {

namespace {

using Vertex = AcDbPolyline::Vertex;

/// A curve in a plane.
struct PlaneCurve {
    std::vector<Vertex> vertices;
    AcGeMatrix3d toWorld;
    double elevation = 0;
    AcGeVector3d up; // its thickness
    bool closed = false;

    AcGePoint3d world(const AcGePoint2d& p) const { return toWorld * AcGePoint3d(p.x, p.y, elevation); }
    size_t pieces() const { return vertices.empty() ? 0 : closed ? vertices.size() : vertices.size() - 1; }
};

constexpr double kLargestStep = kAcGePi / 32; // of an arc, where it is drawn by short pieces

/// Points along a piece of the curve, both ends included, and how far along each lies, from 0 to 1.
struct Along {
    std::vector<AcGePoint2d> points;
    std::vector<AcGeVector2d> sides; // to the left, length 1
};

Along divided(const AcGePoint2d& a, const AcGePoint2d& b, double bulge) {
    Along along;
    if (bulge == 0) {
        const AcGeVector2d d = (b - a) * (1 / a.distanceTo(b));
        along.points = {a, b};
        along.sides = {{-d.y, d.x}, {-d.y, d.x}};
        return along;
    }
    const db::BulgeArc arc = db::bulgeArc(a, b, bulge);
    const double sweep = sweepOf(arc.startAngle, arc.endAngle);
    const int steps = std::max(2, static_cast<int>(std::ceil(sweep / kLargestStep)));
    for (int i = 0; i <= steps; ++i) {
        const double share = static_cast<double>(bulge > 0 ? i : steps - i) / steps;
        const double angle = arc.startAngle + sweep * share;
        const AcGeVector2d out(std::cos(angle), std::sin(angle));
        along.points.push_back(arc.center + out * arc.radius);
        along.sides.push_back(bulge > 0 ? out * -1 : out);
    }
    return along;
}

/// A piece with a width: the area between its two edges.
void drawWide(const PlaneCurve& curve, const Vertex& from, const AcGePoint2d& to, AcGiGeometry& geometry) {
    const Along along = divided(from.point, to, from.bulge);
    const size_t count = along.points.size();
    std::vector<AcGePoint3d> left, right;
    for (size_t i = 0; i < count; ++i) {
        const double share = static_cast<double>(i) / static_cast<double>(count - 1);
        const double half = (from.startWidth + (from.endWidth - from.startWidth) * share) / 2;
        left.push_back(curve.world(along.points[i] + along.sides[i] * half));
        right.push_back(curve.world(along.points[i] + along.sides[i] * -half));
    }
    left.insert(left.end(), right.rbegin(), right.rend());
    geometry.polygon(left);
}

void drawThinArc(const PlaneCurve& curve, const Vertex& from, const AcGePoint2d& to, const AcGeVector3d& up,
                 AcGiGeometry& geometry) {
    const db::BulgeArc arc = db::bulgeArc(from.point, to, from.bulge);
    geometry.ellipArc(curve.world(arc.center) + up, curve.toWorld.xAxis() * arc.radius,
                      curve.toWorld.yAxis() * arc.radius, arc.startAngle, sweepOf(arc.startAngle, arc.endAngle));
}

/// The curve's thin pieces, straight ones that follow each other as one line, so that a pattern runs on.
void drawThin(const PlaneCurve& curve, const AcGeVector3d& up, AcGiGeometry& geometry) {
    std::vector<AcGePoint3d> run;
    const auto finish = [&] {
        if (run.size() > 1)
            geometry.polyline(run);
        run.clear();
    };
    for (size_t i = 0; i < curve.pieces(); ++i) {
        const Vertex& from = curve.vertices[i];
        const AcGePoint2d to = curve.vertices[(i + 1) % curve.vertices.size()].point;
        const bool wide = from.startWidth > 0 || from.endWidth > 0;
        if (wide || from.bulge != 0 || from.point.distanceTo(to) == 0)
            finish();
        if (wide || from.point.distanceTo(to) == 0)
            continue;
        if (from.bulge != 0) {
            drawThinArc(curve, from, to, up, geometry);
            continue;
        }
        if (run.empty())
            run.push_back(curve.world(from.point) + up);
        run.push_back(curve.world(to) + up);
    }
    finish();
}

void drawCurve(const PlaneCurve& curve, AcGiGeometry& geometry) {
    for (size_t i = 0; i < curve.pieces(); ++i) {
        const Vertex& from = curve.vertices[i];
        const AcGePoint2d to = curve.vertices[(i + 1) % curve.vertices.size()].point;
        if ((from.startWidth > 0 || from.endWidth > 0) && from.point.distanceTo(to) > 0)
            drawWide(curve, from, to, geometry);
    }
    drawThin(curve, AcGeVector3d(), geometry);
    if (curve.up.isZeroLength())
        return;
    drawThin(curve, curve.up, geometry);
    for (const Vertex& vertex : curve.vertices)
        geometry.polyline(std::array{curve.world(vertex.point), curve.world(vertex.point) + curve.up});
}

constexpr unsigned char kFramePoint = 16; // of a vertex: a control point of the curve that the others draw

/// The points of the vertices that are drawn.
std::vector<AcGePoint3d> drawnPoints(const AcDbVertexOwner& owner) {
    std::vector<AcGePoint3d> points;
    for (const AcDbObjectId id : owner.vertices()) {
        const AcDbObjectPointer<AcDbVertex> vertex(id);
        if (vertex && !(vertex->data().flag & kFramePoint))
            points.push_back(vertex->position());
    }
    return points;
}

/// The edges of a face from corner to corner, those left out that a bit says.
void drawEdges(std::span<const AcGePoint3d> corners, unsigned invisible, AcGiGeometry& geometry) {
    for (size_t i = 0; i < corners.size(); ++i)
        if (!(invisible >> i & 1))
            geometry.polyline(std::array{corners[i], corners[(i + 1) % corners.size()]});
}

void drawFaceRecord(const AcDbFaceRecord& record, const std::vector<AcGePoint3d>& points, AcGiGeometry& geometry) {
    std::vector<AcGePoint3d> corners;
    unsigned invisible = 0;
    for (const int16_t number : record.data().vertices) {
        const size_t vertex = static_cast<size_t>(std::abs(int(number)));
        if (vertex == 0)
            break;
        if (vertex > points.size())
            return;
        invisible |= number < 0 ? 1U << corners.size() : 0U;
        corners.push_back(points[vertex - 1]);
    }
    drawEdges(corners, invisible, geometry);
}

} // namespace

void drawPolyline(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbPolyline::Data& data = static_cast<const AcDbPolyline&>(entity).data();
    PlaneCurve curve{data.vertices, AcGeMatrix3d::planeToWorld(data.normal), data.elevation,
                     extrusion(data.thickness, data.normal), data.closed};
    if (data.constantWidth > 0)
        for (Vertex& vertex : curve.vertices)
            vertex.startWidth = vertex.endWidth = data.constantWidth;
    drawCurve(curve, geometry);
}

void draw2dPolyline(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& polyline = static_cast<const AcDb2dPolyline&>(entity);
    PlaneCurve curve{{},
                     AcGeMatrix3d::planeToWorld(polyline.normal()),
                     polyline.elevation(),
                     extrusion(polyline.thickness(), polyline.normal()),
                     polyline.isClosed()};
    for (const AcDbObjectId id : polyline.vertices()) {
        const AcDbObjectPointer<AcDb2dVertex> vertex(id);
        if (vertex && !(vertex->data().flag & kFramePoint))
            curve.vertices.push_back({{vertex->position().x, vertex->position().y},
                                      vertex->bulge(),
                                      vertex->startWidth(),
                                      vertex->endWidth()});
    }
    drawCurve(curve, geometry);
}

void draw3dPolyline(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const auto& polyline = static_cast<const AcDb3dPolyline&>(entity);
    std::vector<AcGePoint3d> points = drawnPoints(polyline);
    if (polyline.isClosed() && !points.empty())
        points.push_back(points.front());
    geometry.polyline(points);
}

void drawPolygonMesh(const AcDbEntity& entity, AcGiGeometry& geometry) {
    constexpr uint16_t kClosedInM = 1, kSmooth = 4, kClosedInN = 32;
    const auto& mesh = static_cast<const AcDbPolygonMesh&>(entity);
    const AcDbPolygonMesh::Data& data = mesh.data();
    const bool smooth = data.flag & kSmooth;
    const size_t m = smooth ? data.mDensity : data.mSize, n = smooth ? data.nDensity : data.nSize;
    const std::vector<AcGePoint3d> points = drawnPoints(mesh);
    if (points.empty() || points.size() != m * n)
        return;
    std::vector<AcGePoint3d> line;
    for (size_t i = 0; i < m; ++i) {
        line.assign(points.begin() + static_cast<ptrdiff_t>(i * n), points.begin() + static_cast<ptrdiff_t>(i * n + n));
        if (data.flag & kClosedInN)
            line.push_back(line.front());
        geometry.polyline(line);
    }
    for (size_t j = 0; j < n; ++j) {
        line.clear();
        for (size_t i = 0; i < m; ++i)
            line.push_back(points[i * n + j]);
        if (data.flag & kClosedInM)
            line.push_back(line.front());
        geometry.polyline(line);
    }
}

void drawPolyFaceMesh(const AcDbEntity& entity, AcGiGeometry& geometry) {
    std::vector<AcGePoint3d> points;
    for (const AcDbObjectId id : static_cast<const AcDbPolyFaceMesh&>(entity).vertices()) {
        const AcDbObjectPointer<AcDbEntity> part(id);
        if (const auto* const vertex = part ? AcDbPolyFaceMeshVertex::cast(part.object()) : nullptr)
            points.push_back(vertex->position());
        else if (const auto* const face = part ? AcDbFaceRecord::cast(part.object()) : nullptr)
            drawFaceRecord(*face, points, geometry);
    }
}

void drawFilledArea(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbFilledArea::Data& data = static_cast<const AcDbFilledArea&>(entity).data();
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data.normal);
    std::vector<AcGePoint3d> corners;
    for (const size_t crosswise : {0, 1, 3, 2})
        corners.push_back(toWorld * AcGePoint3d(data.corners[crosswise].x, data.corners[crosswise].y, data.elevation));
    geometry.polygon(corners);
    if (data.thickness == 0)
        return;
    const AcGeVector3d up = extrusion(data.thickness, data.normal);
    for (size_t i = 0; i < corners.size(); ++i) {
        const AcGePoint3d &a = corners[i], &b = corners[(i + 1) % corners.size()];
        geometry.polyline(std::array{a, a + up, b + up});
    }
}

void drawFace(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbFace::Data& data = static_cast<const AcDbFace&>(entity).data();
    const bool triangle = data.corners[2] == data.corners[3];
    if (!triangle)
        return drawEdges(data.corners, data.invisibleEdges, geometry);
    // The third edge has no length there, and the fourth one closes the triangle.
    const unsigned invisible = (data.invisibleEdges & 3U) | (data.invisibleEdges >> 1 & 4U);
    drawEdges(std::span(data.corners).first(3), invisible, geometry);
}

} // namespace vndk::gi
