// The axis-parallel box around points, in world coordinates.
#pragma once

#include "ge/matrix3d.h"

#include <algorithm>

/// Empty until a point is added: then min lies above max, and adding it to another box changes nothing.
class AcDbExtents {
public:
    AcDbExtents() = default;
    AcDbExtents(const AcGePoint3d& min, const AcGePoint3d& max) : min_(min), max_(max) {}

    const AcGePoint3d& minPoint() const { return min_; }
    const AcGePoint3d& maxPoint() const { return max_; }
    bool isEmpty() const { return min_.x > max_.x || min_.y > max_.y || min_.z > max_.z; }
    void addPoint(const AcGePoint3d& p) {
        min_ = {std::min(min_.x, p.x), std::min(min_.y, p.y), std::min(min_.z, p.z)};
        max_ = {std::max(max_.x, p.x), std::max(max_.y, p.y), std::max(max_.z, p.z)};
    }
    void addExt(const AcDbExtents& other) {
        if (other.isEmpty())
            return;
        addPoint(other.min_);
        addPoint(other.max_);
    }
    void expandBy(const AcGeVector3d& v);
    /// The box around the transformed eight corners.
    void transformBy(const AcGeMatrix3d& matrix);

private:
    AcGePoint3d min_{1e20, 1e20, 1e20};
    AcGePoint3d max_{-1e20, -1e20, -1e20};
};
