#include "ge/line_seg3d.h"

#include <algorithm>

AcGePoint3d AcGeLineSeg3d::closestPointTo(const AcGePoint3d& p) const {
    const AcGeVector3d along = end_ - start_;
    const double square = along.lengthSqrd();
    if (square == 0)
        return start_;
    const double t = std::clamp((p - start_).dotProduct(along) / square, 0.0, 1.0);
    return start_ + along * t;
}

bool AcGeLineSeg3d::intersectWith(const AcGeLineSeg3d& other, AcGePoint3d& point, const AcGeTol& tol) const {
    const AcGeVector3d a = end_ - start_;
    const AcGeVector3d b = other.end_ - other.start_;
    const AcGeVector3d cross = a.crossProduct(b);
    if (cross.length() <= tol.equalVector * a.length() * b.length())
        return false;
    const double t = (other.start_ - start_).crossProduct(b).dotProduct(cross) / cross.lengthSqrd();
    const AcGePoint3d candidate = start_ + a * t;
    if (!isOn(candidate, tol) || !other.isOn(candidate, tol))
        return false;
    point = candidate;
    return true;
}
