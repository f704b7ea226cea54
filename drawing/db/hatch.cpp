#include "db/hatch.h"

#include "db/hatch_contours.h"
#include "db/plane_math.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbHatch, AcDbEntity, "HATCH", "")

namespace {

using vndk::db::PlaneTransform;

/// Moves parts of a hatch within its plane.
class Mover {
public:
    Mover(const PlaneTransform& plane, double elevation) : plane_(plane), elevation_(elevation) {}

    void point(AcGePoint2d& p) const { p = plane_.point(p, elevation_); }
    void vector(AcGeVector2d& v) const {
        v = plane_.point(AcGePoint2d(v.x, v.y), elevation_) - plane_.point(AcGePoint2d(), elevation_);
    }

    void operator()(AcDbHatch::LineEdge& edge) const {
        point(edge.start);
        point(edge.end);
    }
    void operator()(AcDbHatch::ArcEdge& edge) const {
        point(edge.center);
        edge.radius *= plane_.scale();
        // A mirror changes the direction in which angles count, and with it how they are given.
        const double turn = plane_.angle(0), sweep = edge.end - edge.start;
        edge.start += edge.ccw != plane_.mirrors() ? turn : -turn;
        edge.ccw = edge.ccw != plane_.mirrors();
        edge.start = vndk::db::normalizedAngle(edge.start);
        edge.end = edge.start + sweep;
    }
    void operator()(AcDbHatch::EllipseEdge& edge) const {
        point(edge.center);
        vector(edge.major);
        edge.ccw = edge.ccw != plane_.mirrors();
    }
    void operator()(AcDbHatch::SplineEdge& edge) const {
        for (AcGePoint2d& p : edge.points)
            point(p);
    }
    void operator()(AcDbHatch::Loop& loop) const {
        for (AcDbHatch::Vertex& vertex : loop.vertices) {
            point(vertex.point);
            vertex.bulge = plane_.mirrors() ? -vertex.bulge : vertex.bulge;
        }
        for (AcDbHatch::Edge& edge : loop.edges)
            std::visit(*this, edge);
    }
    void operator()(AcDbHatch::PatternLine& line) const {
        line.angle = plane_.angle(line.angle);
        point(line.base);
        vector(line.offset);
        for (double& dash : line.dashes)
            dash *= plane_.scale();
    }

private:
    const PlaneTransform& plane_;
    double elevation_;
};

} // namespace

Acad::ErrorStatus AcDbHatch::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const PlaneTransform plane(matrix, data_.normal);
    const Mover move(plane, data_.elevation);
    for (Loop& loop : data_.loops)
        move(loop);
    for (PatternLine& line : data_.lines)
        move(line);
    for (AcGePoint2d& seed : data_.seeds)
        move.point(seed);
    if (!data_.solid) {
        data_.angle = plane.angle(data_.angle);
        data_.scale *= plane.scale();
    }
    data_.elevation = plane.elevation(data_.elevation);
    data_.normal = plane.normal();
    return xDataTransformBy(matrix);
}

Acad::ErrorStatus AcDbHatch::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data_.normal);
    for (const Loop& loop : data_.loops)
        for (const AcGePoint2d& p : vndk::db::contourOf(loop))
            extents.addPoint(toWorld * AcGePoint3d(p.x, p.y, data_.elevation));
    return extents.isEmpty() ? Acad::eNullExtents : Acad::eOk;
}

void AcDbHatch::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    for (Loop& loop : data_.loops)
        for (AcDbObjectId& id : loop.boundary)
            visitor.visit(id, AcDb::kSoftPointer);
}
