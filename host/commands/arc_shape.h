// Arcs from what a user gives of them. All in the XY plane of one coordinate system; z is that of the first point.
#pragma once

#include "ge/vector.h"

#include <optional>

namespace vndk::host {

/// Runs counter-clockwise from the start to the end angle.
struct ArcShape {
    AcGePoint3d center;
    double radius = 0;
    double startAngle = 0, endAngle = 0;
};

/// The angle from `from` to `to`, from the x axis.
double directionOf(const AcGePoint3d& from, const AcGePoint3d& to);

/// The centre of the circle through three points; nothing when they lie on a line.
std::optional<AcGePoint3d> centerOfThree(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c);

// Nothing when there is no such arc.
std::optional<ArcShape> arcThrough(const AcGePoint3d& start, const AcGePoint3d& second, const AcGePoint3d& end);
/// The end point gives the direction only; counter-clockwise.
std::optional<ArcShape> arcAround(const AcGePoint3d& center, const AcGePoint3d& start, const AcGePoint3d& end);
/// A negative angle runs clockwise from the start.
std::optional<ArcShape> arcByAngle(const AcGePoint3d& center, const AcGePoint3d& start, double includedAngle);
/// A negative chord gives the longer arc.
std::optional<ArcShape> arcByChord(const AcGePoint3d& center, const AcGePoint3d& start, double chord);
std::optional<ArcShape> arcByEndAndAngle(const AcGePoint3d& start, const AcGePoint3d& end, double includedAngle);
std::optional<ArcShape> arcByEndAndDirection(const AcGePoint3d& start, const AcGePoint3d& end, double startDirection);
/// A negative radius gives the longer arc.
std::optional<ArcShape> arcByEndAndRadius(const AcGePoint3d& start, const AcGePoint3d& end, double radius);

/// The included angle of an arc that leaves `start` in that direction and ends at `end`: -2 pi to 2 pi.
double includedAngle(const AcGePoint3d& start, const AcGePoint3d& end, double startDirection);

} // namespace vndk::host
