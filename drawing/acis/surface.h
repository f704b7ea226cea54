// Surfaces of solids with two parameters each: seen from outside, u runs to the right where v runs up.
#pragma once

#include "ge/vector.h"

#include <optional>

namespace vndk::acis {

struct Surface {
    enum class Kind { Plane, Cone, Sphere, Torus };

    Kind kind = Kind::Plane;
    AcGePoint3d origin;
    AcGeVector3d x{1, 0, 0}, y{0, 1, 0}, axis{0, 0, 1}; // for a cone x and y are the half axes of its base
    double radius = 0;                                  // of a sphere, or of the ring of a torus
    double tube = 0;                                    // of a torus
    double slope = 0;     // by how much a cone's base grows along the axis, as a share of its size
    bool inwards = false; // the surface's own normal points to its inside

    AcGePoint3d point(double u, double v) const;
    /// Pointing away from the axis, the centre or, for a plane, along its normal. Length 1.
    AcGeVector3d normal(double u, double v) const;
    /// The parameters of a point on the surface; angles from 0 to a full turn.
    AcGePoint2d parameters(const AcGePoint3d& p) const;
    bool turnsInU() const { return kind != Kind::Plane; }
    bool turnsInV() const { return kind == Kind::Torus; }
    /// Where v ends whatever the face's edges are: poles, apexes, seams.
    std::optional<double> lowestV() const;
    std::optional<double> highestV() const;
};

} // namespace vndk::acis
