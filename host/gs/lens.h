// What a perspective makes of a parallel projection: what lies nearer to the eye is larger, and further aside.
#pragma once

#include "gs/raster.h"

#include <vector>

namespace vndk::gs {

/// Straight lines stay straight and planes plane, depths included. Places are pixels.
struct Lens {
    Spot target;    // seen in its place, as is all that is as deep
    double eye = 0; // how far the eye is before the target, above 0

    /// Whether the place is far enough before the eye to be seen.
    bool sees(const Spot& p) const { return eye - (p.z - target.z) >= eye * kNearest; }
    /// How many times as large things are at the place; it is seen.
    double scaleAt(const Spot& p) const { return eye / (eye - (p.z - target.z)); }
    Spot operator()(const Spot& p) const {
        const double scale = scaleAt(p);
        return {target.x + (p.x - target.x) * scale, target.y + (p.y - target.y) * scale,
                target.z + (p.z - target.z) * scale};
    }
    /// Where a line between a place that is seen and one that isn't passes out of sight, as a share of it.
    double cut(const Spot& a, const Spot& b) const { return (target.z + eye * (1 - kNearest) - a.z) / (b.z - a.z); }
    /// Of a closed contour what is seen, as it is seen.
    void appendContour(std::span<const Spot> corners, std::vector<Spot>& seen) const;

private:
    static constexpr double kNearest = 1e-3; // of the eye's distance
};

/// A place between two others.
inline Spot between(const Spot& a, const Spot& b, double share) {
    return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share, a.z + (b.z - a.z) * share};
}

} // namespace vndk::gs
