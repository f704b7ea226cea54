#include "db/solids.h"

#include "db/plane_math.h"

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbFilledArea, AcDbEntity)
ACDB_DXF_DEFINE_MEMBERS(AcDbSolid, AcDbFilledArea, "SOLID", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbTrace, AcDbFilledArea, "TRACE", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbFace, AcDbEntity, "3DFACE", "")

Acad::ErrorStatus AcDbFilledArea::getPointAt(unsigned short index, AcGePoint3d& point) const {
    if (index > 3)
        return Acad::eInvalidIndex;
    const AcGePoint2d& corner = data_.corners[index];
    point = AcGeMatrix3d::planeToWorld(data_.normal) * AcGePoint3d(corner.x, corner.y, data_.elevation);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFilledArea::setPointAt(unsigned short index, const AcGePoint3d& point) {
    if (index > 3)
        return Acad::eInvalidIndex;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    const AcGePoint3d inPlane = AcGeMatrix3d::worldToPlane(data_.normal) * point;
    data_.corners[index] = {inPlane.x, inPlane.y};
    data_.elevation = inPlane.z;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFilledArea::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    const vndk::db::PlaneTransform plane(matrix, data_.normal);
    Data moved = data_;
    for (AcGePoint2d& corner : moved.corners)
        corner = plane.point(corner, data_.elevation);
    moved.elevation = plane.elevation(data_.elevation);
    moved.thickness *= plane.scale();
    moved.normal = plane.normal();
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbFilledArea::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (unsigned short i = 0; i < 4; ++i) {
        AcGePoint3d corner;
        getPointAt(i, corner);
        extents.addPoint(corner);
        extents.addPoint(corner + data_.normal * data_.thickness);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::getVertexAt(unsigned short index, AcGePoint3d& point) const {
    if (index > 3)
        return Acad::eInvalidIndex;
    point = data_.corners[index];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbFace::setVertexAt(unsigned short index, const AcGePoint3d& point) {
    return index > 3 ? Acad::eInvalidIndex : acdbSetMember(*this, data_.corners[index], point);
}

Acad::ErrorStatus AcDbFace::transformBy(const AcGeMatrix3d& matrix) {
    Data moved = data_;
    for (AcGePoint3d& corner : moved.corners)
        corner = matrix * corner;
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbFace::getGeomExtents(AcDbExtents& extents) const {
    extents = AcDbExtents();
    for (const AcGePoint3d& corner : data_.corners)
        extents.addPoint(corner);
    return Acad::eOk;
}
