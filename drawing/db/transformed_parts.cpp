#include "db/transformed_parts.h"

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/database.h"
#include "db/dimensions.h"
#include "db/leader.h"
#include "db/plane_math.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/text.h"
#include "db/tied_entities.h"

#include <algorithm>

namespace vndk::db {

namespace {

using Part = std::unique_ptr<AcDbEntity>;

/// The point at a parameter u is center + a cos u + b sin u.
struct Oval {
    AcGePoint3d center;
    AcGeVector3d a, b;
    double start = 0, end = 2 * kAcGePi;
};

Oval ovalOf(const AcGeMatrix3d& plane, const AcGePoint3d& center, double radius) {
    return {center, plane.xAxis() * radius, plane.yAxis() * radius};
}

/// The ellipse that an oval becomes; null when it becomes a line.
Part transformedOval(const Oval& oval, const AcGeMatrix3d& matrix) {
    const AcGeVector3d a = matrix * oval.a, b = matrix * oval.b;
    // Where the arm from the centre is longest, it is at right angles to the arm a quarter further.
    const double turn = std::atan2(2 * a.dotProduct(b), a.dotProduct(a) - b.dotProduct(b)) / 2;
    const AcGeVector3d major = a * std::cos(turn) + b * std::sin(turn);
    const AcGeVector3d minor = b * std::cos(turn) + a * -std::sin(turn);
    if (major.isZeroLength() || minor.isZeroLength())
        return nullptr;
    const double start = normalizedAngle(oval.start - turn), sweep = oval.end - oval.start;
    const bool whole = std::fabs(sweep - 2 * kAcGePi) < AcGeTol().equalVector;
    auto ellipse = std::make_unique<AcDbEllipse>();
    const Acad::ErrorStatus status = ellipse->set(matrix * oval.center, major.crossProduct(minor), major,
                                                  std::min(1.0, minor.length() / major.length()), whole ? 0 : start,
                                                  whole ? 2 * kAcGePi : start + sweep);
    return status == Acad::eOk ? std::move(ellipse) : nullptr;
}

/// The axes and the normal of a plane as a transform leaves them.
struct MovedPlane {
    AcGeMatrix3d toWorld; // from the old object coordinates to the new place in the world
    AcGeVector3d normal;
    AcGeMatrix3d toPlane; // from there to the new object coordinates

    MovedPlane(const AcGeMatrix3d& matrix, const AcGeVector3d& formerNormal)
        : toWorld(matrix * AcGeMatrix3d::planeToWorld(formerNormal)) {
        const AcGeVector3d across = toWorld.xAxis().crossProduct(toWorld.yAxis());
        normal = (across.dotProduct(toWorld.zAxis()) < 0 ? -across : across).normal();
        toPlane = AcGeMatrix3d::worldToPlane(normal) * toWorld;
    }
    /// By how much an area in the plane grows.
    double areaFactor() const { return toWorld.xAxis().crossProduct(toWorld.yAxis()).length(); }
    double thicknessFactor() const { return std::fabs(normal.dotProduct(toWorld.zAxis())); }
    AcGePoint3d place(const AcGePoint2d& point, double elevation) const {
        return toPlane * AcGePoint3d(point.x, point.y, elevation);
    }
};

/// A copy without what belongs to the original alone.
Part looseCopy(const AcDbEntity& entity) {
    Part copy(static_cast<AcDbEntity*>(entity.copyData()));
    copy->setExtensionDictionary({});
    while (!copy->persistentReactors().empty())
        copy->removePersistentReactor(copy->persistentReactors().back());
    return copy;
}

Part transformedArea(const AcDbFilledArea& area, const AcGeMatrix3d& matrix) {
    Part copy = looseCopy(area);
    AcDbFilledArea::Data data = area.data();
    const MovedPlane plane(matrix, data.normal);
    for (AcGePoint2d& corner : data.corners) {
        const AcGePoint3d moved = plane.place(corner, area.elevation());
        corner = {moved.x, moved.y};
        data.elevation = moved.z;
    }
    data.normal = plane.normal;
    data.thickness *= plane.thicknessFactor();
    static_cast<AcDbFilledArea&>(*copy).setFileData(data);
    return copy;
}

/// For one without arcs.
Part transformedPolyline(const AcDbPolyline& polyline, const AcGeMatrix3d& matrix) {
    AcDbPolyline::Data data = polyline.data();
    const MovedPlane plane(matrix, data.normal);
    const double widening = std::sqrt(plane.areaFactor());
    for (AcDbPolyline::Vertex& vertex : data.vertices) {
        const AcGePoint3d moved = plane.place(vertex.point, polyline.elevation());
        vertex.point = {moved.x, moved.y};
        vertex.startWidth *= widening;
        vertex.endWidth *= widening;
        data.elevation = moved.z;
    }
    data.constantWidth *= widening;
    data.thickness *= plane.thicknessFactor();
    data.normal = plane.normal;
    Part copy = looseCopy(polyline);
    static_cast<AcDbPolyline&>(*copy).setFileData(std::move(data));
    return copy;
}

Part transformedText(const AcDbText& text, const AcGeMatrix3d& matrix) {
    AcDbText::Data data = text.data();
    const MovedPlane plane(matrix, data.normal);
    const double c = std::cos(data.rotation), s = std::sin(data.rotation);
    const AcGeVector3d along = plane.toPlane * AcGeVector3d(c, s, 0), up = plane.toPlane * AcGeVector3d(-s, c, 0);
    const double length = along.length(), rise = along.crossProduct(up).length() / length;
    // A mirrored text runs backwards from the other direction.
    const bool mirrors = along.crossProduct(up).z < 0;
    const double across = data.generation & 2 ? -1 : 1, upwards = data.generation & 4 ? -1 : 1;
    const AcGeVector3d stroke = up * upwards + along * (std::tan(data.oblique) * across);
    data.oblique = std::atan2(stroke.dotProduct(along) * across / length, rise);
    const AcGeVector3d direction = mirrors ? -along : along;
    data.rotation = normalizedAngle(std::atan2(direction.y, direction.x));
    data.generation = static_cast<unsigned char>(mirrors ? data.generation ^ 2 : data.generation);
    data.widthFactor *= length / rise;
    data.height *= rise;
    data.thickness *= plane.thicknessFactor();
    for (AcGePoint2d* const point : {&data.position, &data.alignment}) {
        const AcGePoint3d moved = plane.place(*point, text.data().elevation);
        *point = {moved.x, moved.y};
        data.elevation = moved.z;
    }
    data.normal = plane.normal;
    Part copy = looseCopy(text);
    static_cast<AcDbText&>(*copy).setFileData(std::move(data));
    return copy;
}

/// Null when its axes don't stay at right angles, or when it has attributes, which would have to follow.
Part transformedReference(const AcDbBlockReference& reference, const AcGeMatrix3d& matrix) {
    Part copy = looseCopy(reference);
    if (!reference.attributes().empty() || !acdbTiedEntities(*copy).empty())
        return nullptr;
    const Acad::ErrorStatus status =
        static_cast<AcDbBlockReference&>(*copy).setBlockTransform(matrix * reference.blockTransform());
    return status == Acad::eOk ? std::move(copy) : nullptr;
}

/// As another class, or as the same one by other means than its own transform; null when it can't follow.
Part unevenlyTransformed(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    if (matrix.isSingular())
        return nullptr;
    const auto asOval = [&](const Oval& oval) {
        Part ellipse = transformedOval(oval, matrix);
        if (ellipse)
            ellipse->setPropertiesFrom(&entity);
        return ellipse;
    };
    if (const auto* const circle = AcDbCircle::cast(&entity))
        return asOval(ovalOf(AcGeMatrix3d::planeToWorld(circle->normal()), circle->center(), circle->radius()));
    if (const auto* const arc = AcDbArc::cast(&entity)) {
        Oval oval = ovalOf(AcGeMatrix3d::planeToWorld(arc->normal()), arc->center(), arc->radius());
        oval.start = arc->startAngle();
        oval.end = oval.start + normalizedAngle(arc->endAngle() - arc->startAngle());
        return asOval(oval);
    }
    if (const auto* const ellipse = AcDbEllipse::cast(&entity))
        return asOval({ellipse->center(), ellipse->majorAxis(), ellipse->minorAxis(), ellipse->startParam(),
                       ellipse->endParam()});
    if (const auto* const area = AcDbFilledArea::cast(&entity))
        return transformedArea(*area, matrix);
    if (const auto* const polyline = AcDbPolyline::cast(&entity))
        return transformedPolyline(*polyline, matrix);
    // Classes that derive from the host's have points of their own.
    if (entity.isA() == AcDbText::desc() || entity.isA() == AcDbAttributeDefinition::desc())
        return transformedText(static_cast<const AcDbText&>(entity), matrix);
    if (entity.isA() != AcDbMInsertBlock::desc())
        if (const auto* const reference = AcDbBlockReference::cast(&entity))
            return transformedReference(*reference, matrix);
    return nullptr;
}

bool hasArcs(const AcDbEntity& entity) {
    const auto* const polyline = AcDbPolyline::cast(&entity);
    return polyline && std::any_of(polyline->data().vertices.begin(), polyline->data().vertices.end(),
                                   [](const AcDbPolyline::Vertex& vertex) { return vertex.bulge != 0; });
}

bool comesInPieces(const AcDbEntity& entity) {
    return hasArcs(entity) || entity.isKindOf(AcDbMText::desc()) || entity.isKindOf(AcDbDimension::desc()) ||
           entity.isKindOf(AcDbLeader::desc()) || entity.isKindOf(AcDbFcf::desc());
}

Acad::ErrorStatus addPieces(const AcDbEntity& entity, const AcGeMatrix3d& matrix, Parts& parts) {
    std::vector<AcDbEntity*> raw;
    if (const Acad::ErrorStatus status = entity.explode(raw); status != Acad::eOk)
        return status;
    const Parts pieces(raw.begin(), raw.end());
    Parts moved;
    for (const Part& piece : pieces)
        if (const Acad::ErrorStatus status = addTransformed(*piece, matrix, moved); status != Acad::eOk)
            return status;
    std::move(moved.begin(), moved.end(), std::back_inserter(parts));
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus addTransformed(const AcDbEntity& entity, const AcGeMatrix3d& matrix, Parts& parts) {
    // A copy that isn't in a drawing has no vertices.
    if (entity.isKindOf(AcDbVertexOwner::desc()))
        return addPieces(entity, matrix, parts);
    Part copy = looseCopy(entity);
    const Acad::ErrorStatus status = copy->transformBy(matrix);
    if (status == Acad::eCannotScaleNonUniformly && comesInPieces(entity)) {
        const Acad::ErrorStatus pieces = addPieces(entity, matrix, parts);
        return pieces == Acad::eNotApplicable ? Acad::eCannotScaleNonUniformly : pieces;
    }
    if (status == Acad::eCannotScaleNonUniformly)
        copy = unevenlyTransformed(entity, matrix);
    else if (status != Acad::eOk)
        return status;
    if (!copy)
        return Acad::eCannotScaleNonUniformly;
    parts.push_back(std::move(copy));
    return Acad::eOk;
}

void inherit(AcDbEntity& part, const AcDbEntity& shownBy, AcDbDatabase& database) {
    if (part.colorIndex() == kAcDbColorByBlock)
        part.setColorIndex(shownBy.colorIndex());
    if (part.linetypeId() == database.byBlockLinetypeId())
        part.setLinetype(shownBy.linetypeId());
    if (part.lineWeight() == AcDb::kLnWtByBlock)
        part.setLineWeight(shownBy.lineWeight());
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(part.layerId());
    if (layer && layer->name() == "0")
        part.setLayer(shownBy.layerId());
    const auto* const polyline = AcDbVertexOwner::cast(&part);
    if (!polyline)
        return;
    for (const AcDbObjectId id : polyline->vertices())
        if (const AcDbObjectPointer<AcDbEntity> vertex(id, AcDb::kForWrite); vertex)
            inherit(*vertex, shownBy, database);
}

Parts shownBy(const AcDbEntity& entity, AcDbDatabase* database, Parts parts) {
    for (const std::unique_ptr<AcDbEntity>& part : parts) {
        if (database)
            inherit(*part, entity, *database);
        else
            part->setPropertiesFrom(&entity);
    }
    return parts;
}

} // namespace vndk::db
