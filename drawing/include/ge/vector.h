// Vectors and points in two and three dimensions, in drawing units. Angles are radians, counter-clockwise
// seen against the reference normal. All values are plain and copyable.
#pragma once

#include "ge/tolerance.h"

#include <cmath>

struct AcGeVector2d {
    double x = 0, y = 0;

    AcGeVector2d() = default;
    AcGeVector2d(double xx, double yy) : x(xx), y(yy) {}
    AcGeVector2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGeVector2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator*(double s) const { return {x * s, y * s}; }
    double dotProduct(const AcGeVector2d& v) const { return x * v.x + y * v.y; }
    double length() const { return std::hypot(x, y); }
    bool operator==(const AcGeVector2d&) const = default;
};

struct AcGePoint2d {
    double x = 0, y = 0;

    AcGePoint2d() = default;
    AcGePoint2d(double xx, double yy) : x(xx), y(yy) {}
    AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
    AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
    AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }
    double distanceTo(const AcGePoint2d& p) const { return (*this - p).length(); }
    bool operator==(const AcGePoint2d&) const = default;
};

class AcGeMatrix3d;

struct AcGeVector3d {
    double x = 0, y = 0, z = 0;

    static const AcGeVector3d kIdentity;
    static const AcGeVector3d kXAxis;
    static const AcGeVector3d kYAxis;
    static const AcGeVector3d kZAxis;

    constexpr AcGeVector3d() = default;
    constexpr AcGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    AcGeVector3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGeVector3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator-() const { return {-x, -y, -z}; }
    AcGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    double dotProduct(const AcGeVector3d& v) const { return x * v.x + y * v.y + z * v.z; }
    AcGeVector3d crossProduct(const AcGeVector3d& v) const {
        return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
    }
    double lengthSqrd() const { return dotProduct(*this); }
    double length() const { return std::sqrt(lengthSqrd()); }
    bool isZeroLength(const AcGeTol& tol = {}) const { return length() <= tol.equalVector; }
    /// The vector of length 1 in the same direction; the zero vector stays as it is.
    AcGeVector3d normal() const {
        const double len = length();
        return len > 0 ? *this * (1 / len) : *this;
    }
    bool isEqualTo(const AcGeVector3d& v, const AcGeTol& tol = {}) const {
        return (*this - v).length() <= tol.equalVector;
    }
    bool isParallelTo(const AcGeVector3d& v, const AcGeTol& tol = {}) const {
        return normal().crossProduct(v.normal()).length() <= tol.equalVector;
    }
    /// Angle to v, 0 to pi.
    double angleTo(const AcGeVector3d& v) const { return std::atan2(crossProduct(v).length(), dotProduct(v)); }
    /// Angle to v counter-clockwise about `reference`, 0 to 2 pi.
    double angleTo(const AcGeVector3d& v, const AcGeVector3d& reference) const;
    /// A vector at right angles to this one, by the arbitrary axis rule of drawing files.
    AcGeVector3d perpVector() const;
    AcGeVector3d& transformBy(const AcGeMatrix3d& matrix);
    bool operator==(const AcGeVector3d&) const = default;
};

inline AcGeVector3d operator*(double s, const AcGeVector3d& v) { return v * s; }

struct AcGePoint3d {
    double x = 0, y = 0, z = 0;

    static const AcGePoint3d kOrigin;

    constexpr AcGePoint3d() = default;
    constexpr AcGePoint3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) {}
    AcGePoint3d operator+(const AcGeVector3d& v) const { return {x + v.x, y + v.y, z + v.z}; }
    AcGePoint3d operator-(const AcGeVector3d& v) const { return {x - v.x, y - v.y, z - v.z}; }
    AcGeVector3d operator-(const AcGePoint3d& p) const { return {x - p.x, y - p.y, z - p.z}; }
    AcGePoint3d& operator+=(const AcGeVector3d& v) { return *this = *this + v; }
    AcGeVector3d asVector() const { return {x, y, z}; }
    double distanceTo(const AcGePoint3d& p) const { return (*this - p).length(); }
    bool isEqualTo(const AcGePoint3d& p, const AcGeTol& tol = {}) const { return distanceTo(p) <= tol.equalPoint; }
    AcGePoint3d& transformBy(const AcGeMatrix3d& matrix);
    bool operator==(const AcGePoint3d&) const = default;
};
