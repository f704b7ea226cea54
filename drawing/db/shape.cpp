#include "db/shape.h"

#include "db/plane_math.h"

ACDB_DXF_DEFINE_MEMBERS(AcDbShape, AcDbEntity, "SHAPE", "")

void AcDbShape::getCorners(AcGePoint3d (&corners)[4]) const {
    const AcGeMatrix3d toWorld = AcGeMatrix3d::planeToWorld(data_.normal);
    const double c = std::cos(data_.rotation), s = std::sin(data_.rotation);
    const AcGeVector3d along = toWorld * AcGeVector3d(c, s, 0), up = toWorld * AcGeVector3d(-s, c, 0);
    const AcGeVector3d width = along * (data_.size * data_.widthFactor);
    const AcGeVector3d height = (up + along * std::tan(data_.oblique)) * data_.size;
    corners[0] = data_.position;
    corners[1] = corners[0] + width;
    corners[2] = corners[1] + height;
    corners[3] = corners[0] + height;
}

Acad::ErrorStatus AcDbShape::transformBy(const AcGeMatrix3d& matrix) {
    if (!matrix.isUniScaledOrtho())
        return Acad::eCannotScaleNonUniformly;
    const vndk::db::PlaneTransform plane(matrix, data_.normal);
    Data moved = data_;
    moved.position = matrix * data_.position;
    moved.size *= plane.scale();
    moved.thickness *= plane.scale();
    moved.normal = plane.normal();
    // A mirrored figure runs the other way.
    moved.rotation = plane.angle(plane.mirrors() ? data_.rotation + kAcGePi : data_.rotation);
    if (plane.mirrors())
        moved.widthFactor = -moved.widthFactor;
    if (plane.mirrors())
        moved.oblique = -moved.oblique;
    const Acad::ErrorStatus status = acdbSetMember(*this, data_, moved);
    return status == Acad::eOk ? xDataTransformBy(matrix) : status;
}

Acad::ErrorStatus AcDbShape::getGeomExtents(AcDbExtents& extents) const {
    AcGePoint3d corners[4];
    getCorners(corners);
    extents = AcDbExtents();
    for (const AcGePoint3d& corner : corners)
        extents.addPoint(corner);
    return Acad::eOk;
}

void AcDbShape::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbEntity::visitReferences(visitor);
    visitor.visit(data_.style, AcDb::kHardPointer);
}
