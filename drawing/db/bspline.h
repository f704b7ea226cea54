// The points of B-spline curves. Private to the drawing layer.
#pragma once

#include "ge/vector.h"

#include <cstddef>
#include <vector>

namespace vndk::db {

struct BSpline {
    size_t degree = 3;
    std::vector<double> knots;
    std::vector<AcGePoint3d> points;
    std::vector<double> weights; // none, or one for each point

    /// Knots and points as the degree wants them.
    bool isCurve() const;
    /// The point at a parameter within the knots that the curve has its points for. REQUIRES: isCurve().
    AcGePoint3d at(double u) const;
    /// Points along the whole curve, `steps` for each span between two knots; none if it is no curve.
    std::vector<AcGePoint3d> flattened(int steps) const;

private:
    AcGePoint3d at(size_t span, double u) const;
};

} // namespace vndk::db
