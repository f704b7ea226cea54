#include "commands/tangent_circle.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace vndk::host {

namespace {

/// Where the centres lie of the circles that touch a target on one side: a curve at their radius from it.
using Offset = TangentTarget;

AcGePoint2d along(const AcGePoint2d& from, const AcGeVector2d& direction, double length) {
    return {from.x + direction.x * length, from.y + direction.y * length};
}

double distance(const AcGePoint2d& a, const AcGePoint2d& b) { return std::hypot(b.x - a.x, b.y - a.y); }

/// The place on the line nearest to the point, counted from the line's position.
double footOf(const Offset& line, const AcGePoint2d& point) {
    return (point.x - line.position.x) * line.direction.x + (point.y - line.position.y) * line.direction.y;
}

std::vector<Offset> offsetsOf(const TangentTarget& target, double radius) {
    Offset outer = target, inner = target;
    if (target.radius == 0) {
        const AcGeVector2d aside(-target.direction.y, target.direction.x);
        outer.position = along(target.position, aside, radius);
        inner.position = along(target.position, aside, -radius);
        return {outer, inner};
    }
    outer.radius = target.radius + radius;
    inner.radius = std::abs(target.radius - radius);
    return inner.radius > 0 ? std::vector{outer, inner} : std::vector{outer};
}

/// Half the chord that a line at that distance cuts from a circle. A line that misses it by rounding alone touches it.
std::optional<double> halfChord(double radius, double distance) {
    const double square = radius * radius - distance * distance;
    if (square < -1e-10 * radius * radius)
        return std::nullopt;
    return std::sqrt(std::max(0.0, square));
}

void crossLines(const Offset& a, const Offset& b, std::vector<AcGePoint2d>& found) {
    const double turn = a.direction.x * b.direction.y - a.direction.y * b.direction.x;
    if (std::abs(turn) < 1e-12)
        return;
    const double dx = b.position.x - a.position.x, dy = b.position.y - a.position.y;
    found.push_back(along(a.position, a.direction, (dx * b.direction.y - dy * b.direction.x) / turn));
}

/// The points of the line at that half chord to both sides of the place.
void addChord(const AcGePoint2d& middle, const AcGeVector2d& direction, std::optional<double> half,
              std::vector<AcGePoint2d>& found) {
    if (!half)
        return;
    found.push_back(along(middle, direction, *half));
    found.push_back(along(middle, direction, -*half));
}

void crossLineAndCircle(const Offset& line, const Offset& circle, std::vector<AcGePoint2d>& found) {
    const AcGePoint2d foot = along(line.position, line.direction, footOf(line, circle.position));
    addChord(foot, line.direction, halfChord(circle.radius, distance(foot, circle.position)), found);
}

void crossCircles(const Offset& a, const Offset& b, std::vector<AcGePoint2d>& found) {
    const double apart = distance(a.position, b.position);
    if (!(apart > 0))
        return;
    const AcGeVector2d toOther((b.position.x - a.position.x) / apart, (b.position.y - a.position.y) / apart);
    const double place = (apart * apart + a.radius * a.radius - b.radius * b.radius) / (2 * apart);
    addChord(along(a.position, toOther, place), {-toOther.y, toOther.x}, halfChord(a.radius, place), found);
}

void cross(const Offset& a, const Offset& b, std::vector<AcGePoint2d>& found) {
    if (a.radius == 0 && b.radius == 0)
        crossLines(a, b, found);
    else if (a.radius == 0)
        crossLineAndCircle(a, b, found);
    else if (b.radius == 0)
        crossLineAndCircle(b, a, found);
    else
        crossCircles(a, b, found);
}

/// How far from its picked point the target is touched.
double missOf(const TangentTarget& target, const AcGePoint2d& center, double radius) {
    if (target.radius == 0)
        return distance(along(target.position, target.direction, footOf(target, center)), target.picked);
    const double apart = distance(target.position, center);
    // A larger circle around the target touches it on the far side.
    const bool around = radius > target.radius && apart < radius;
    const double arm = (around ? -target.radius : target.radius) / apart;
    const AcGeVector2d toCenter(center.x - target.position.x, center.y - target.position.y);
    return distance(along(target.position, toCenter, arm), target.picked);
}

} // namespace

std::optional<AcGePoint2d> tangentCircle(const TangentTarget& first, const TangentTarget& second, double radius) {
    std::vector<AcGePoint2d> centers;
    for (const Offset& a : offsetsOf(first, radius))
        for (const Offset& b : offsetsOf(second, radius))
            cross(a, b, centers);
    const auto miss = [&](const AcGePoint2d& center) {
        return missOf(first, center, radius) + missOf(second, center, radius);
    };
    const auto best = std::min_element(centers.begin(), centers.end(),
                                       [&](const auto& a, const auto& b) { return miss(a) < miss(b); });
    return best == centers.end() ? std::nullopt : std::optional(*best);
}

} // namespace vndk::host
