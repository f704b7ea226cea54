#include "acis/surface.h"

#include <algorithm>

namespace vndk::acis {

namespace {

constexpr double kTurn = 2 * kAcGePi;

double angleOf(double x, double y) {
    const double angle = std::atan2(y, x);
    return angle < 0 ? angle + kTurn : angle;
}

} // namespace

AcGePoint3d Surface::point(double u, double v) const {
    switch (kind) {
    case Kind::Plane:
        return origin + x * u + y * v;
    case Kind::Cone:
        return origin + axis * v + (x * std::cos(u) + y * std::sin(u)) * (1 + v * slope);
    case Kind::Sphere:
        return origin + (x * std::cos(u) + y * std::sin(u)) * (radius * std::cos(v)) + axis * (radius * std::sin(v));
    case Kind::Torus:
        return origin + (x * std::cos(u) + y * std::sin(u)) * (radius + tube * std::cos(v)) +
               axis * (tube * std::sin(v));
    }
    return origin;
}

AcGeVector3d Surface::normal(double u, double v) const {
    const AcGeVector3d out = x * std::cos(u) + y * std::sin(u);
    switch (kind) {
    case Kind::Plane:
        return axis;
    case Kind::Cone: {
        const AcGeVector3d across = y * std::cos(u) - x * std::sin(u);
        return across.crossProduct(axis + out * slope).normal();
    }
    default:
        return (out * std::cos(v) + axis * std::sin(v)).normal();
    }
}

AcGePoint2d Surface::parameters(const AcGePoint3d& p) const {
    const AcGeVector3d arm = p - origin;
    const double a = arm.dotProduct(x) / std::max(x.lengthSqrd(), 1e-300);
    const double b = arm.dotProduct(y) / std::max(y.lengthSqrd(), 1e-300);
    const double height = arm.dotProduct(axis);
    switch (kind) {
    case Kind::Plane:
        return {a, b};
    case Kind::Cone:
        return {angleOf(a, b), height};
    case Kind::Sphere:
        return {angleOf(a, b), std::atan2(height, std::hypot(a, b))};
    case Kind::Torus:
        return {angleOf(a, b), angleOf(std::hypot(a, b) - radius, height)};
    }
    return {a, b};
}

std::optional<double> Surface::lowestV() const {
    switch (kind) {
    case Kind::Sphere:
        return -kAcGePi / 2;
    case Kind::Torus:
        return 0;
    case Kind::Cone:
        return slope > 0 ? std::optional(-1 / slope) : std::nullopt;
    default:
        return std::nullopt;
    }
}

std::optional<double> Surface::highestV() const {
    switch (kind) {
    case Kind::Sphere:
        return kAcGePi / 2;
    case Kind::Torus:
        return kTurn;
    case Kind::Cone:
        return slope < 0 ? std::optional(-1 / slope) : std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace vndk::acis
