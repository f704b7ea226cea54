// The tolerances of geometric comparisons, in one place.
#pragma once

/// Points nearer than equalPoint (drawing units) are the same; unit vectors that differ by less than
/// equalVector are parallel.
struct AcGeTol {
    double equalPoint = 1e-10;
    double equalVector = 1e-10;
};

inline constexpr double kAcGePi = 3.14159265358979323846;
