#include "db/curves.h"

#include "db/plane_math.h"

using vndk::db::normalizedAngle;
using vndk::db::PlaneTransform;
using vndk::db::unitVector;

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbCurve, AcDbEntity)
ACDB_DXF_DEFINE_MEMBERS(AcDbLine, AcDbCurve, "LINE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbCircle, AcDbCurve, "CIRCLE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbArc, AcDbCurve, "ARC", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbRay, AcDbCurve, "RAY", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbXline, AcDbCurve, "XLINE", "")

Acad::ErrorStatus AcDbCurve::getStartPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }

Acad::ErrorStatus AcDbCurve::getEndPoint(AcGePoint3d&) const { return Acad::eNotApplicable; }

// Line

Acad::ErrorStatus AcDbLine::setNormal(const AcGeVector3d& normal) {
    AcGeVector3d unit;
    const Acad::ErrorStatus status = unitVector(normal, unit);
    return status == Acad::eOk ? acdbSetMember(*this, data_.normal, unit) : status;
}

Acad::ErrorStatus AcDbLine::getStartPoint(AcGePoint3d& point) const {
    point = data_.start;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::getEndPoint(AcGePoint3d& point) const {
    point = data_.end;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLine::transformBy(const AcGeMatrix3d& matrix) {
    Data moved = data_;
    moved.start = matrix * data_.start;
    moved.end = matrix * data_.end;
    const AcGeVector3d extrusion = matrix * (data_.normal * (data_.thickness != 0 ? data_.thickness : 1));
    if (extrusion.isZeroLength())
        return Acad::eDegenerateGeometry;
    moved.normal = data_.thickness < 0 ? -extrusion.normal() : extrusion.normal();
    if (data_.thickness != 0)
        moved.thickness = std::copysign(extrusion.length(), data_.thickness);
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbLine::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& point : {data_.start, data_.end}) {
        extents.addPoint(point);
        extents.addPoint(point + data_.normal * data_.thickness);
    }
    return Acad::eOk;
}

// Circle

AcDbCircle::AcDbCircle(const AcGePoint3d& center, const AcGeVector3d& normal, double radius) {
    data_.normal = normal.isZeroLength() ? AcGeVector3d::kZAxis : normal.normal();
    data_.center = AcGeMatrix3d::worldToPlane(data_.normal) * center;
    data_.radius = radius;
}

AcGePoint3d AcDbCircle::center() const { return AcGeMatrix3d::planeToWorld(data_.normal) * data_.center; }

Acad::ErrorStatus AcDbCircle::setCenter(const AcGePoint3d& center) {
    return acdbSetMember(*this, data_.center, AcGeMatrix3d::worldToPlane(data_.normal) * center);
}

Acad::ErrorStatus AcDbCircle::setRadius(double radius) {
    return radius > 0 ? acdbSetMember(*this, data_.radius, radius) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbCircle::setNormal(const AcGeVector3d& normal) {
    Data turned = data_;
    if (const Acad::ErrorStatus status = unitVector(normal, turned.normal); status != Acad::eOk)
        return status;
    turned.center = AcGeMatrix3d::worldToPlane(turned.normal) * center();
    return acdbSetMember(*this, data_, turned);
}

Acad::ErrorStatus AcDbCircle::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    const PlaneTransform plane(matrix, data_.normal);
    Data moved = data_;
    moved.normal = plane.normal();
    moved.center = plane.point(data_.center);
    moved.radius *= plane.scale();
    moved.thickness *= plane.scale();
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbCircle::getGeomExtents(AcDbExtents& extents) const {
    const AcGePoint3d middle = center();
    const AcGeVector3d n = data_.normal;
    const auto reach = [&](double component) {
        return data_.radius * std::sqrt(std::max(0.0, 1 - component * component));
    };
    const AcGeVector3d half(reach(n.x), reach(n.y), reach(n.z));
    extents = AcDbExtents(middle + (-half), middle + half);
    AcDbExtents top = extents;
    top.transformBy(AcGeMatrix3d::translation(n * data_.thickness));
    extents.addExt(top);
    return Acad::eOk;
}

// Arc

AcDbArc::AcDbArc(const AcGePoint3d& center, double radius, double startAngle, double endAngle) {
    data_.center = center;
    data_.radius = radius;
    data_.startAngle = startAngle;
    data_.endAngle = endAngle;
}

AcGePoint3d AcDbArc::center() const { return AcGeMatrix3d::planeToWorld(data_.normal) * data_.center; }

Acad::ErrorStatus AcDbArc::setCenter(const AcGePoint3d& center) {
    return acdbSetMember(*this, data_.center, AcGeMatrix3d::worldToPlane(data_.normal) * center);
}

Acad::ErrorStatus AcDbArc::setRadius(double radius) {
    return radius > 0 ? acdbSetMember(*this, data_.radius, radius) : Acad::eInvalidInput;
}

Acad::ErrorStatus AcDbArc::setNormal(const AcGeVector3d& normal) {
    Data turned = data_;
    if (const Acad::ErrorStatus status = unitVector(normal, turned.normal); status != Acad::eOk)
        return status;
    turned.center = AcGeMatrix3d::worldToPlane(turned.normal) * center();
    return acdbSetMember(*this, data_, turned);
}

namespace {

AcGePoint3d arcPoint(const AcDbArc::Data& arc, double angle) {
    return AcGeMatrix3d::planeToWorld(arc.normal) *
           (arc.center + AcGeVector3d(std::cos(angle), std::sin(angle), 0) * arc.radius);
}

} // namespace

Acad::ErrorStatus AcDbArc::getStartPoint(AcGePoint3d& point) const {
    point = arcPoint(data_, data_.startAngle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::getEndPoint(AcGePoint3d& point) const {
    point = arcPoint(data_, data_.endAngle);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbArc::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    const PlaneTransform plane(matrix, data_.normal);
    Data moved = data_;
    moved.normal = plane.normal();
    moved.center = plane.point(data_.center);
    moved.radius *= plane.scale();
    moved.thickness *= plane.scale();
    moved.startAngle = plane.angle(data_.startAngle);
    moved.endAngle = plane.angle(data_.endAngle);
    if (plane.mirrors()) // a mirrored arc runs the other way round
        std::swap(moved.startAngle, moved.endAngle);
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbArc::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data_.normal);
    vndk::db::addArc(extents, toWorld, data_.center, data_.radius, data_.startAngle, data_.endAngle);
    if (data_.thickness != 0)
        vndk::db::addArc(extents, toWorld, data_.center + AcGeVector3d(0, 0, data_.thickness), data_.radius,
                         data_.startAngle, data_.endAngle);
    return Acad::eOk;
}

// Ray and construction line

Acad::ErrorStatus AcDbRay::setUnitDir(const AcGeVector3d& direction) {
    AcGeVector3d unit;
    const Acad::ErrorStatus status = unitVector(direction, unit);
    return status == Acad::eOk ? acdbSetMember(*this, data_.direction, unit) : status;
}

Acad::ErrorStatus AcDbRay::getStartPoint(AcGePoint3d& point) const {
    point = data_.base;
    return Acad::eOk;
}

namespace {

Acad::ErrorStatus transformRay(AcDbObject& object, AcDbRay::Data& data, const AcGeMatrix3d& matrix) {
    AcDbRay::Data moved;
    moved.base = matrix * data.base;
    if (unitVector(matrix * data.direction, moved.direction) != Acad::eOk)
        return Acad::eDegenerateGeometry;
    const Acad::ErrorStatus status = acdbSetMember(object, data, moved);
    return status == Acad::eOk ? object.xDataTransformBy(matrix) : status;
}

} // namespace

Acad::ErrorStatus AcDbRay::transformBy(const AcGeMatrix3d& matrix) { return transformRay(*this, data_, matrix); }

Acad::ErrorStatus AcDbXline::setUnitDir(const AcGeVector3d& direction) {
    AcGeVector3d unit;
    const Acad::ErrorStatus status = unitVector(direction, unit);
    return status == Acad::eOk ? acdbSetMember(*this, data_.direction, unit) : status;
}

Acad::ErrorStatus AcDbXline::transformBy(const AcGeMatrix3d& matrix) { return transformRay(*this, data_, matrix); }
