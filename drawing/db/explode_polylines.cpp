// Polylines and meshes in pieces.
#include "db/open.h"
#include "db/plane_math.h"
#include "db/point.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/transformed_parts.h"

namespace {

using vndk::db::Parts;

/// A curve in a plane: its points with the bulge to the next one.
struct PlaneCurve {
    std::vector<AcDbPolyline::Vertex> vertices;
    double elevation = 0, thickness = 0;
    AcGeVector3d normal;
    bool closed = false;
};

template <class Part>
void addPart(Parts& parts, std::unique_ptr<Part> part, const AcDbEntity& whole) {
    part->setPropertiesFrom(&whole);
    parts.push_back(std::move(part));
}

Parts piecesOf(const PlaneCurve& curve, const AcDbEntity& whole) {
    Parts parts;
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(curve.normal);
    const auto world = [&](const AcGePoint2d& p) { return toWorld * AcGePoint3d(p.x, p.y, curve.elevation); };
    const auto add = [&](auto piece) {
        piece->setNormal(curve.normal);
        piece->setThickness(curve.thickness);
        addPart(parts, std::move(piece), whole);
    };
    const size_t count = curve.vertices.size();
    for (size_t i = 0; i + (curve.closed ? 0 : 1) < count; ++i) {
        const AcGePoint2d a = curve.vertices[i].point, b = curve.vertices[(i + 1) % count].point;
        const double bulge = curve.vertices[i].bulge;
        if (a.distanceTo(b) == 0)
            continue;
        if (bulge == 0) {
            add(std::make_unique<AcDbLine>(world(a), world(b)));
            continue;
        }
        const vndk::db::BulgeArc round = vndk::db::bulgeArc(a, b, bulge);
        auto arc = std::make_unique<AcDbArc>(AcGePoint3d(), round.radius, vndk::db::normalizedAngle(round.startAngle),
                                             vndk::db::normalizedAngle(round.endAngle));
        arc->setNormal(curve.normal);
        arc->setCenter(world(round.center));
        add(std::move(arc));
    }
    return parts;
}

constexpr unsigned char kFramePoint = 16; // of a vertex: a control point of the curve that the others draw

/// Calls `use` for each vertex that is drawn.
template <class Vertex, class Use>
void forEachDrawn(const AcDbVertexOwner& owner, Use&& use) {
    for (const AcDbObjectId id : owner.vertices()) {
        const AcDbObjectPointer<Vertex> vertex(id);
        if (vertex && !(vertex->data().flag & kFramePoint))
            use(*vertex);
    }
}

std::unique_ptr<AcDbFace> newFace(const AcGePoint3d (&corners)[4], uint16_t invisibleEdges = 0) {
    auto face = std::make_unique<AcDbFace>();
    AcDbFace::Data data;
    std::copy(std::begin(corners), std::end(corners), data.corners);
    data.invisibleEdges = invisibleEdges;
    face->setFileData(data);
    return face;
}

/// A face record of a mesh as an entity of its own; nothing for one that names vertices that aren't there.
void addFace(Parts& parts, const AcDbFaceRecord& record, const std::vector<AcGePoint3d>& points,
             const AcDbEntity& whole) {
    AcGePoint3d corners[4];
    uint16_t invisible = 0;
    unsigned count = 0;
    for (const int16_t number : record.data().vertices) {
        const size_t vertex = static_cast<size_t>(std::abs(int(number)));
        if (vertex == 0)
            break;
        if (vertex > points.size())
            return;
        invisible = static_cast<uint16_t>(invisible | (number < 0 ? 1U << count : 0U));
        corners[count++] = points[vertex - 1];
    }
    if (count == 1) {
        auto point = std::make_unique<AcDbPoint>();
        point->setPosition(corners[0]);
        addPart(parts, std::move(point), whole);
    } else if (count == 2) {
        addPart(parts, std::make_unique<AcDbLine>(corners[0], corners[1]), whole);
    } else if (count >= 3) {
        corners[3] = count == 3 ? corners[2] : corners[3];
        addPart(parts, newFace(corners, invisible), whole);
    }
}

} // namespace

Acad::ErrorStatus AcDbPolyline::explode(std::vector<AcDbEntity*>& parts) const {
    Parts pieces = piecesOf({data_.vertices, data_.elevation, data_.thickness, data_.normal, data_.closed}, *this);
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb2dPolyline::explode(std::vector<AcDbEntity*>& parts) const {
    PlaneCurve curve{{}, data_.elevation, data_.thickness, data_.normal, isClosed()};
    forEachDrawn<AcDb2dVertex>(*this, [&](const AcDb2dVertex& vertex) {
        curve.vertices.push_back({{vertex.position().x, vertex.position().y}, vertex.bulge()});
    });
    Parts pieces = piecesOf(curve, *this);
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

Acad::ErrorStatus AcDb3dPolyline::explode(std::vector<AcDbEntity*>& parts) const {
    std::vector<AcGePoint3d> points;
    forEachDrawn<AcDbVertex>(*this, [&](const AcDbVertex& vertex) { points.push_back(vertex.position()); });
    Parts pieces;
    for (size_t i = 0; i + (isClosed() ? 0 : 1) < points.size(); ++i)
        if (const AcGePoint3d& next = points[(i + 1) % points.size()]; points[i].distanceTo(next) > 0)
            addPart(pieces, std::make_unique<AcDbLine>(points[i], next), *this);
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolygonMesh::explode(std::vector<AcDbEntity*>& parts) const {
    constexpr uint16_t kClosedInM = 1, kSmooth = 4, kClosedInN = 32;
    const bool smooth = data_.flag & kSmooth;
    const size_t m = smooth ? data_.mDensity : data_.mSize, n = smooth ? data_.nDensity : data_.nSize;
    std::vector<AcGePoint3d> points;
    forEachDrawn<AcDbVertex>(*this, [&](const AcDbVertex& vertex) { points.push_back(vertex.position()); });
    if (points.size() != m * n || points.empty())
        return Acad::eDegenerateGeometry;
    Parts pieces;
    for (size_t i = 0; i + (data_.flag & kClosedInM ? 0 : 1) < m; ++i)
        for (size_t j = 0; j + (data_.flag & kClosedInN ? 0 : 1) < n; ++j) {
            const size_t below = (i + 1) % m, beside = (j + 1) % n;
            addPart(
                pieces,
                newFace({points[i * n + j], points[below * n + j], points[below * n + beside], points[i * n + beside]}),
                *this);
        }
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbPolyFaceMesh::explode(std::vector<AcDbEntity*>& parts) const {
    std::vector<AcGePoint3d> points;
    Parts pieces;
    for (const AcDbObjectId id : vertices()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (const auto* const vertex = entity ? AcDbPolyFaceMeshVertex::cast(entity.object()) : nullptr)
            points.push_back(vertex->position());
        else if (const auto* const face = entity ? AcDbFaceRecord::cast(entity.object()) : nullptr)
            addFace(pieces, *face, points, *this);
    }
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}
