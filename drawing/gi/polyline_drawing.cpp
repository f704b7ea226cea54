// Polylines with arcs and widths, meshes, filled areas and faces.
#include "db/open.h"
#include "db/plane_math.h"
#include "gi/entity_drawing_parts.h"
#include "gi/face_collector.h"

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

/// The walls and the top of a piece with a width, and the edges around them.
void raise(const std::vector<AcGePoint3d>& left, const std::vector<AcGePoint3d>& right, const AcGeVector3d& up,
           AcGiGeometry& geometry) {
    FaceCollector faces;
    faces.wall(left, up);
    faces.wall(right, up);
    faces.wall(std::array{left.front(), right.front()}, up);
    faces.wall(std::array{left.back(), right.back()}, up);
    for (size_t i = 0; i + 1 < left.size(); ++i)
        faces.fan(std::array{left[i] + up, right[i] + up, right[i + 1] + up, left[i + 1] + up});
    faces.draw(geometry);
    for (const std::vector<AcGePoint3d>* const side : {&left, &right}) {
        std::vector<AcGePoint3d> edge = {side->front()};
        for (const AcGePoint3d& p : *side)
            edge.push_back(p + up);
        edge.push_back(side->back());
        geometry.polyline(edge);
    }
    geometry.polyline(std::array{left.front() + up, right.front() + up});
    geometry.polyline(std::array{left.back() + up, right.back() + up});
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
    if (!curve.up.isZeroLength())
        raise(left, right, curve.up, geometry);
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

void drawThinWalls(const PlaneCurve& curve, AcGiGeometry& geometry) {
    FaceCollector faces;
    std::vector<AcGePoint3d> foot;
    for (size_t i = 0; i < curve.pieces(); ++i) {
        const Vertex& from = curve.vertices[i];
        const AcGePoint2d to = curve.vertices[(i + 1) % curve.vertices.size()].point;
        if (from.startWidth > 0 || from.endWidth > 0 || from.point.distanceTo(to) == 0)
            continue;
        foot.clear();
        for (const AcGePoint2d& p : divided(from.point, to, from.bulge).points)
            foot.push_back(curve.world(p));
        faces.wall(foot, curve.up);
    }
    faces.draw(geometry);
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
    drawThinWalls(curve, geometry);
    for (const Vertex& vertex : curve.vertices)
        geometry.polyline(std::array{curve.world(vertex.point), curve.world(vertex.point) + curve.up});
}

constexpr unsigned char kFramePoint = 16; // of a vertex: a control point of the curve that the others draw

/// The points of the vertices that are drawn.
std::vector<AcGePoint3d> drawnPoints(const AcDbVertexOwner& owner) {
    std::vector<AcGePoint3d> points;
    for (const AcDbObjectId id : owner.vertices(true)) {
        const AcDbObjectPointer<AcDbVertex> vertex(id);
        if (vertex && !(vertex->data().flag & kFramePoint))
            points.push_back(vertex->position());
    }
    return points;
}

/// A face of three or four corners by their numbers, which begin with 1; an edge before a number below 0 is hidden.
void addFaceRecord(const AcDbFaceRecord& record, FaceCollector& faces) {
    std::vector<uint32_t> corners;
    unsigned visible = 0;
    for (const int16_t number : record.data().vertices) {
        const size_t vertex = static_cast<size_t>(std::abs(int(number)));
        if (vertex == 0)
            break;
        if (vertex > faces.points().size())
            return;
        visible |= number > 0 ? 1U << corners.size() : 0U;
        corners.push_back(static_cast<uint32_t>(vertex - 1));
    }
    if (corners.size() == 4)
        faces.quad(corners[0], corners[1], corners[2], corners[3], visible);
    else if (corners.size() == 3)
        faces.triangle(corners[0], corners[1], corners[2], visible);
    else if (corners.size() == 2)
        faces.triangle(corners[0], corners[1], corners[1], visible & 1);
}

/// The points of a mesh, in rows, and what is closed of it.
struct Grid {
    std::vector<AcGePoint3d> points;
    size_t rows = 0, columns = 0;
    bool rowsClosed = false, columnsClosed = false; // the last one meets the first one
};

/// Faces between neighbours. A side between two faces is drawn with one of them.
void drawGrid(const Grid& grid, AcGiGeometry& geometry) {
    enum { kFirst = 1, kSecond = 2, kThird = 4, kFourth = 8 };
    FaceCollector faces;
    for (const AcGePoint3d& p : grid.points)
        faces.point(p);
    const size_t down = grid.rowsClosed ? grid.rows : grid.rows - 1;
    const size_t across = grid.columnsClosed ? grid.columns : grid.columns - 1;
    const auto number = [&](size_t i, size_t j) {
        return static_cast<uint32_t>(i % grid.rows * grid.columns + j % grid.columns);
    };
    for (size_t i = 0; i < down; ++i)
        for (size_t j = 0; j < across; ++j) {
            const unsigned right = !grid.columnsClosed && j + 1 == across ? kSecond : 0;
            const unsigned low = !grid.rowsClosed && i + 1 == down ? kThird : 0;
            faces.quad(number(i, j), number(i, j + 1), number(i + 1, j + 1), number(i + 1, j),
                       kFirst | kFourth | right | low);
        }
    faces.draw(geometry);
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
    for (const AcDbObjectId id : polyline.vertices(true)) {
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
    drawGrid({points, m, n, (data.flag & kClosedInM) != 0, (data.flag & kClosedInN) != 0}, geometry);
}

void drawPolyFaceMesh(const AcDbEntity& entity, AcGiGeometry& geometry) {
    FaceCollector faces;
    for (const AcDbObjectId id : static_cast<const AcDbPolyFaceMesh&>(entity).vertices(true)) {
        const AcDbObjectPointer<AcDbEntity> part(id);
        if (const auto* const vertex = part ? AcDbPolyFaceMeshVertex::cast(part.object()) : nullptr)
            faces.point(vertex->position());
        else if (const auto* const face = part ? AcDbFaceRecord::cast(part.object()) : nullptr)
            addFaceRecord(*face, faces);
    }
    faces.draw(geometry);
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
    FaceCollector faces;
    for (size_t i = 0; i < corners.size(); ++i)
        faces.wall(std::array{corners[i], corners[(i + 1) % corners.size()]}, up);
    for (AcGePoint3d& corner : corners)
        corner += up;
    faces.fan(corners);
    faces.draw(geometry);
}

void drawFace(const AcDbEntity& entity, AcGiGeometry& geometry) {
    const AcDbFace::Data& data = static_cast<const AcDbFace&>(entity).data();
    const unsigned visible = ~unsigned{data.invisibleEdges};
    FaceCollector faces;
    for (const AcGePoint3d& corner : data.corners)
        faces.point(corner);
    // The third edge of a triangle has no length, and the fourth one closes it.
    if (data.corners[2] == data.corners[3])
        faces.triangle(0, 1, 2, (visible & 3U) | (visible >> 1 & 4U));
    else
        faces.quad(0, 1, 2, 3, visible);
    faces.draw(geometry);
}

} // namespace vndk::gi
