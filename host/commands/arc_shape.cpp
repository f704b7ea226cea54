#include "commands/arc_shape.h"

#include "commands/command_tools.h"

#include <algorithm>
#include <cmath>

namespace vndk::host {

namespace {

double span(const AcGePoint3d& a, const AcGePoint3d& b) { return std::hypot(b.x - a.x, b.y - a.y); }

AcGePoint3d middle(const AcGePoint3d& a, const AcGePoint3d& b) { return {(a.x + b.x) / 2, (a.y + b.y) / 2, a.z}; }

} // namespace

double directionOf(const AcGePoint3d& from, const AcGePoint3d& to) {
    return wholeTurn(std::atan2(to.y - from.y, to.x - from.x));
}

std::optional<AcGePoint3d> centerOfThree(const AcGePoint3d& a, const AcGePoint3d& b, const AcGePoint3d& c) {
    const double bx = b.x - a.x, by = b.y - a.y, cx = c.x - a.x, cy = c.y - a.y;
    const double twice = 2 * (bx * cy - by * cx);
    const double size = std::max({bx * bx + by * by, cx * cx + cy * cy});
    if (std::abs(twice) <= 1e-12 * size)
        return std::nullopt;
    const double bb = bx * bx + by * by, cc = cx * cx + cy * cy;
    return AcGePoint3d(a.x + (cy * bb - by * cc) / twice, a.y + (bx * cc - cx * bb) / twice, a.z);
}

std::optional<ArcShape> arcThrough(const AcGePoint3d& start, const AcGePoint3d& second, const AcGePoint3d& end) {
    const auto center = centerOfThree(start, second, end);
    if (!center)
        return std::nullopt;
    const double first = directionOf(*center, start), last = directionOf(*center, end);
    const double toSecond = wholeTurn(directionOf(*center, second) - first);
    const bool forwards = toSecond < wholeTurn(last - first);
    return ArcShape{*center, span(*center, start), forwards ? first : last, forwards ? last : first};
}

std::optional<ArcShape> arcAround(const AcGePoint3d& center, const AcGePoint3d& start, const AcGePoint3d& end) {
    const double radius = span(center, start);
    if (!(radius > 0) || !(span(center, end) > 0))
        return std::nullopt;
    return ArcShape{{center.x, center.y, start.z}, radius, directionOf(center, start), directionOf(center, end)};
}

std::optional<ArcShape> arcByAngle(const AcGePoint3d& center, const AcGePoint3d& start, double includedAngle) {
    const double radius = span(center, start);
    if (!(radius > 0) || includedAngle == 0)
        return std::nullopt;
    const double first = directionOf(center, start), last = wholeTurn(first + includedAngle);
    const bool forwards = includedAngle > 0;
    return ArcShape{{center.x, center.y, start.z}, radius, forwards ? first : last, forwards ? last : first};
}

std::optional<ArcShape> arcByChord(const AcGePoint3d& center, const AcGePoint3d& start, double chord) {
    const double radius = span(center, start);
    if (!(radius > 0) || chord == 0 || std::abs(chord) > 2 * radius)
        return std::nullopt;
    const double angle = 2 * std::asin(std::abs(chord) / (2 * radius));
    return arcByAngle(center, start, chord > 0 ? angle : 2 * kAcGePi - angle);
}

std::optional<ArcShape> arcByEndAndAngle(const AcGePoint3d& start, const AcGePoint3d& end, double includedAngle) {
    const double chord = span(start, end), half = includedAngle / 2;
    if (!(chord > 0) || std::abs(std::sin(half)) < 1e-12)
        return std::nullopt;
    // The centre lies to the left of the chord by this part of it.
    const double offset = std::cos(half) / (2 * std::sin(half));
    const AcGePoint3d mid = middle(start, end);
    const AcGePoint3d center(mid.x - offset * (end.y - start.y), mid.y + offset * (end.x - start.x), start.z);
    const double first = directionOf(center, start), last = directionOf(center, end);
    const bool forwards = includedAngle > 0;
    return ArcShape{center, span(center, start), forwards ? first : last, forwards ? last : first};
}

double includedAngle(const AcGePoint3d& start, const AcGePoint3d& end, double startDirection) {
    const double turn = wholeTurn(directionOf(start, end) - startDirection);
    return 2 * (turn > kAcGePi ? turn - 2 * kAcGePi : turn);
}

std::optional<ArcShape> arcByEndAndDirection(const AcGePoint3d& start, const AcGePoint3d& end, double startDirection) {
    return arcByEndAndAngle(start, end, includedAngle(start, end, startDirection));
}

std::optional<ArcShape> arcByEndAndRadius(const AcGePoint3d& start, const AcGePoint3d& end, double radius) {
    const double chord = span(start, end);
    if (!(chord > 0) || radius == 0 || 2 * std::abs(radius) < chord)
        return std::nullopt;
    const double angle = 2 * std::asin(std::min(1.0, chord / (2 * std::abs(radius))));
    return arcByEndAndAngle(start, end, radius > 0 ? angle : 2 * kAcGePi - angle);
}

} // namespace vndk::host
