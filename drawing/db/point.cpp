#include "db/point.h"

#include "db/plane_math.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbPoint, AcDbEntity, "POINT", "")

Acad::ErrorStatus AcDbPoint::setNormal(const AcGeVector3d& normal) {
    AcGeVector3d unit;
    const Acad::ErrorStatus status = vndk::db::unitVector(normal, unit);
    return status == Acad::eOk ? acdbSetMember(*this, data_.normal, unit) : status;
}

Acad::ErrorStatus AcDbPoint::transformBy(const AcGeMatrix3d& matrix) {
    Data moved = data_;
    moved.position = matrix * data_.position;
    if (matrix.isUniScaledOrtho()) {
        const vndk::db::PlaneTransform plane(matrix, data_.normal);
        moved.normal = plane.normal();
        moved.thickness *= plane.scale();
        moved.ecsRotation = plane.angle(data_.ecsRotation);
    }
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbPoint::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents(data_.position, data_.position);
    extents.addPoint(data_.position + data_.normal * data_.thickness);
    return Acad::eOk;
}
