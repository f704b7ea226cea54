// Geometry that planar entities share. Private to the drawing layer.
#pragma once

#include "db/entity.h"
#include "ge/matrix3d.h"

namespace vndk::db {

/// Into an angle from 0 up to, not including, a full turn.
double normalizedAngle(double angle);

/// How a uniformly scaling transform changes things in a plane with some normal.
class PlaneTransform {
public:
    /// `normal` is the entity's present normal. REQUIRES: matrix.isUniScaledOrtho().
    PlaneTransform(const AcGeMatrix3d& matrix, const AcGeVector3d& normal);

    double scale() const { return scale_; }
    bool mirrors() const { return mirrors_; }
    const AcGeVector3d& normal() const { return normal_; }
    /// From a point in object coordinates of the old normal to one of the new normal.
    AcGePoint3d point(const AcGePoint3d& p) const { return toNewPlane_ * p; }
    AcGePoint2d point(const AcGePoint2d& p, double elevation) const;
    double elevation(double elevation) const { return (toNewPlane_ * AcGePoint3d(0, 0, elevation)).z; }
    /// From the direction of an angle in the old plane to its angle in the new one.
    double angle(double angle) const;

private:
    AcGeVector3d normal_;
    AcGeMatrix3d toNewPlane_;
    double scale_;
    bool mirrors_;
};

/// The arc of a bulge that isn't 0 between two points that differ, counter-clockwise from start to end.
struct BulgeArc {
    AcGePoint2d center;
    double radius = 0, startAngle = 0, endAngle = 0;
};
BulgeArc bulgeArc(const AcGePoint2d& a, const AcGePoint2d& b, double bulge);

/// Adds an arc in a plane, from one angle counter-clockwise to another, both in object coordinates.
void addArc(AcDbExtents& extents, const AcGeMatrix3d& planeToWorld, const AcGePoint3d& center, double radius,
            double startAngle, double endAngle);

/// eInvalidInput for a vector without length; else its direction.
Acad::ErrorStatus unitVector(const AcGeVector3d& vector, AcGeVector3d& unit);

} // namespace vndk::db
