// A straight piece between two points of space, in drawing units.
#pragma once

#include "ge/vector.h"

class AcGeLineSeg3d {
public:
    AcGeLineSeg3d(const AcGePoint3d& start, const AcGePoint3d& end) : start_(start), end_(end) {}

    AcGePoint3d startPoint() const { return start_; }
    AcGePoint3d endPoint() const { return end_; }
    AcGePoint3d midPoint() const { return start_ + (end_ - start_) * 0.5; }
    double length() const { return start_.distanceTo(end_); }
    /// The point of the segment nearest to p (an end point if p lies beyond it).
    AcGePoint3d closestPointTo(const AcGePoint3d& p) const;
    double distanceTo(const AcGePoint3d& p) const { return p.distanceTo(closestPointTo(p)); }
    bool isOn(const AcGePoint3d& p, const AcGeTol& tol = {}) const { return distanceTo(p) <= tol.equalPoint; }
    /// The crossing of two segments. False if they are parallel or don't meet within the tolerance.
    bool intersectWith(const AcGeLineSeg3d& other, AcGePoint3d& point, const AcGeTol& tol = {}) const;

private:
    AcGePoint3d start_;
    AcGePoint3d end_;
};
