// Affine transforms of space: 4 x 4, column vectors (the translation stands in the last column). Scale factors.
#pragma once

#include "ge/vector.h"

/// Scale factors along the three axes; negative ones mirror.
struct AcGeScale3d {
    double sx = 1, sy = 1, sz = 1;

    AcGeScale3d() = default;
    explicit AcGeScale3d(double s) : sx(s), sy(s), sz(s) {}
    AcGeScale3d(double x, double y, double z) : sx(x), sy(y), sz(z) {}
    /// True if the three factors agree in size, signs aside.
    bool isProportional(const AcGeTol& tol = {}) const;
    bool operator==(const AcGeScale3d&) const = default;
};

class AcGeMatrix3d {
public:
    double entry[4][4];

    static const AcGeMatrix3d kIdentity;

    AcGeMatrix3d();
    static AcGeMatrix3d translation(const AcGeVector3d& offset);
    /// Rotation by `angle` radians, counter-clockwise about `axis` through `center`.
    static AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis,
                                 const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(double factor, const AcGePoint3d& center = AcGePoint3d::kOrigin);
    static AcGeMatrix3d scaling(const AcGeScale3d& scale);
    /// Mirror in the plane through `point` with that normal.
    static AcGeMatrix3d mirroring(const AcGePoint3d& point, const AcGeVector3d& normal);
    /// The matrix whose columns are the given axes and origin: takes (x, y, z) to origin + x X + y Y + z Z.
    static AcGeMatrix3d coordSystem(const AcGePoint3d& origin, const AcGeVector3d& x, const AcGeVector3d& y,
                                    const AcGeVector3d& z);
    /// Takes the first coordinate system to the second: its origin to the other's origin, its axes to the other's axes.
    /// REQUIRES: the axes of the first one span space.
    static AcGeMatrix3d alignCoordSys(const AcGePoint3d& fromOrigin, const AcGeVector3d& fromX,
                                      const AcGeVector3d& fromY, const AcGeVector3d& fromZ, const AcGePoint3d& toOrigin,
                                      const AcGeVector3d& toX, const AcGeVector3d& toY, const AcGeVector3d& toZ) {
        return coordSystem(toOrigin, toX, toY, toZ) * coordSystem(fromOrigin, fromX, fromY, fromZ).inverse();
    }
    /// From the object coordinate system of a planar entity with that normal to world coordinates
    /// (arbitrary axis rule: the X axis is Y x N near the world Z axis, else Z x N).
    static AcGeMatrix3d planeToWorld(const AcGeVector3d& normal);
    static AcGeMatrix3d worldToPlane(const AcGeVector3d& normal);
    /// Of a single point or vector, which comes out as it is for nearly every entity of a plan.
    template <class T>
    static T planeToWorld(const AcGeVector3d& normal, const T& inPlane);

    /// this * right: `right` is applied first.
    AcGeMatrix3d operator*(const AcGeMatrix3d& right) const;
    /// The inverse. REQUIRES: !isSingular().
    AcGeMatrix3d inverse() const;
    bool isSingular(const AcGeTol& tol = {}) const;
    double det() const;
    /// True if lengths in all directions change by one factor and right angles are kept (mirrors included).
    bool isUniScaledOrtho(const AcGeTol& tol = {}) const;
    /// The factor by which a uniformly scaling matrix scales (always positive).
    double scale() const;
    AcGeVector3d xAxis() const { return {entry[0][0], entry[1][0], entry[2][0]}; }
    AcGeVector3d yAxis() const { return {entry[0][1], entry[1][1], entry[2][1]}; }
    AcGeVector3d zAxis() const { return {entry[0][2], entry[1][2], entry[2][2]}; }
    AcGeVector3d translationPart() const { return {entry[0][3], entry[1][3], entry[2][3]}; }
    bool isEqualTo(const AcGeMatrix3d& other, const AcGeTol& tol = {}) const;
};

inline AcGeVector3d operator*(const AcGeMatrix3d& m, const AcGeVector3d& v) {
    return m.xAxis() * v.x + m.yAxis() * v.y + m.zAxis() * v.z;
}
inline AcGePoint3d operator*(const AcGeMatrix3d& m, const AcGePoint3d& p) {
    const AcGeVector3d v = m * p.asVector() + m.translationPart();
    return {v.x, v.y, v.z};
}

template <class T>
T AcGeMatrix3d::planeToWorld(const AcGeVector3d& normal, const T& inPlane) {
    return normal == AcGeVector3d::kZAxis ? inPlane : planeToWorld(normal) * inPlane;
}
