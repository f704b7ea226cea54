// Circles of a given radius that touch two curves. All in one plane.
#pragma once

#include "ge/vector.h"

#include <optional>

namespace vndk::host {

/// A line without ends, or a circle, and where it was picked.
struct TangentTarget {
    AcGePoint2d position;   ///< a point of the line, or the circle's centre
    AcGeVector2d direction; ///< of the line, of length 1
    double radius = 0;      ///< 0: a line
    AcGePoint2d picked;
};

/// The centre of the circle that touches both, of several the one that touches them nearest to where they were picked;
/// nothing when there is none. REQUIRES: radius > 0.
std::optional<AcGePoint2d> tangentCircle(const TangentTarget& first, const TangentTarget& second, double radius);

} // namespace vndk::host
