#include "db/plane_math.h"

#include <utility>

namespace vndk::db {

double normalizedAngle(double angle) {
    constexpr double kTurn = 2 * kAcGePi;
    const double rest = std::fmod(angle, kTurn);
    const double positive = rest < 0 ? rest + kTurn : rest;
    return positive >= kTurn ? 0 : positive;
}

PlaneTransform::PlaneTransform(const AcGeMatrix3d& matrix, const AcGeVector3d& normal)
    : normal_((matrix * normal).normal()), scale_(matrix.scale()), mirrors_(matrix.det() < 0) {
    toNewPlane_ = AcGeMatrix3d::worldToPlane(normal_) * matrix * AcGeMatrix3d::planeToWorld(normal);
}

AcGePoint2d PlaneTransform::point(const AcGePoint2d& p, double elevation) const {
    const AcGePoint3d moved = toNewPlane_ * AcGePoint3d(p.x, p.y, elevation);
    return {moved.x, moved.y};
}

double PlaneTransform::angle(double angle) const {
    const AcGeVector3d direction = toNewPlane_ * AcGeVector3d(std::cos(angle), std::sin(angle), 0);
    return normalizedAngle(std::atan2(direction.y, direction.x));
}

BulgeArc bulgeArc(const AcGePoint2d& a, const AcGePoint2d& b, double bulge) {
    const double chord = a.distanceTo(b);
    const double radius = chord * (1 + bulge * bulge) / (4 * bulge); // negative for a clockwise arc
    const double height = radius - bulge * chord / 2;                // from the chord to the centre, to its left
    const AcGeVector2d along = (b - a) * (1 / chord);
    BulgeArc arc{{(a.x + b.x) / 2 - along.y * height, (a.y + b.y) / 2 + along.x * height}, std::fabs(radius)};
    arc.startAngle = std::atan2(a.y - arc.center.y, a.x - arc.center.x);
    arc.endAngle = std::atan2(b.y - arc.center.y, b.x - arc.center.x);
    if (bulge < 0)
        std::swap(arc.startAngle, arc.endAngle);
    return arc;
}

void addArc(AcDbExtents& extents, const AcGeMatrix3d& planeToWorld, const AcGePoint3d& center, double radius,
            double startAngle, double endAngle) {
    const double sweep = normalizedAngle(endAngle - startAngle);
    const auto pointAt = [&](double angle) {
        return planeToWorld * (center + AcGeVector3d(std::cos(angle), std::sin(angle), 0) * radius);
    };
    extents.addPoint(pointAt(startAngle));
    extents.addPoint(pointAt(endAngle));
    // On each world axis the arc is farthest where its direction is at right angles to the axis.
    const AcGeVector3d x = planeToWorld.xAxis(), y = planeToWorld.yAxis();
    const double extremes[] = {std::atan2(y.x, x.x), std::atan2(y.y, x.y), std::atan2(y.z, x.z)};
    for (const double extreme : extremes)
        for (const double angle : {extreme, extreme + kAcGePi})
            if (normalizedAngle(angle - startAngle) <= sweep)
                extents.addPoint(pointAt(angle));
}

Acad::ErrorStatus unitVector(const AcGeVector3d& vector, AcGeVector3d& unit) {
    if (vector.isZeroLength())
        return Acad::eInvalidInput;
    unit = vector.normal();
    return Acad::eOk;
}

} // namespace vndk::db
