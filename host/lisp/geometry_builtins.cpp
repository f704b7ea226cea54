// Points: distance, angle, polar, inters.
#include <cmath>

#include "arguments.h"
#include "evaluator.h"

namespace vndk::lisp {

namespace {

constexpr double fullTurn = 2 * 3.14159265358979323846;

Value distance(Evaluator&, Arguments args) {
    const Point a = asPoint(args[0]);
    const Point b = asPoint(args[1]);
    // A point without height makes it a distance in plan.
    const double dz = a.flat || b.flat ? 0.0 : b.z - a.z;
    return Value::real(std::hypot(b.x - a.x, b.y - a.y, dz));
}

/// The direction from the first point to the second in plan, from 0 up to a full turn, in radians.
Value angle(Evaluator&, Arguments args) {
    const Point a = asPoint(args[0]);
    const Point b = asPoint(args[1]);
    const double direction = std::atan2(b.y - a.y, b.x - a.x);
    return Value::real(direction < 0 ? direction + fullTurn : direction);
}

Value polar(Evaluator&, Arguments args) {
    Point point = asPoint(args[0]);
    const double direction = asNumber(args[1]);
    const double length = asNumber(args[2]);
    point.x += length * std::cos(direction);
    point.y += length * std::sin(direction);
    return pointValue(point);
}

/// The crossing of two lines in plan. Without a fifth argument, or when it isn't nil, both segments must hold it.
/// nil when there is none, when the lines are parallel, or when lines with height pass each other.
Value inters(Evaluator&, Arguments args) {
    const Point a = asPoint(args[0]);
    const Point b = asPoint(args[1]);
    const Point c = asPoint(args[2]);
    const Point d = asPoint(args[3]);
    const double cross = (b.x - a.x) * (d.y - c.y) - (b.y - a.y) * (d.x - c.x);
    const double lengths = std::hypot(b.x - a.x, b.y - a.y) * std::hypot(d.x - c.x, d.y - c.y);
    if (std::fabs(cross) <= 1e-12 * lengths)
        return Value();
    const double alongFirst = ((c.x - a.x) * (d.y - c.y) - (c.y - a.y) * (d.x - c.x)) / cross;
    const double alongSecond = ((c.x - a.x) * (b.y - a.y) - (c.y - a.y) * (b.x - a.x)) / cross;
    constexpr double slack = 1e-10;
    const auto inside = [](double t) { return t >= -slack && t <= 1 + slack; };
    const bool bounded = args.size() < 5 || !args[4].isNil();
    if (bounded && !(inside(alongFirst) && inside(alongSecond)))
        return Value();
    const bool flat = a.flat || b.flat || c.flat || d.flat;
    const double z = a.z + alongFirst * (b.z - a.z);
    if (!flat && std::fabs(z - (c.z + alongSecond * (d.z - c.z))) > 1e-8)
        return Value();
    return pointValue({a.x + alongFirst * (b.x - a.x), a.y + alongFirst * (b.y - a.y), z, flat});
}

constexpr Builtin builtins[] = {
    {"DISTANCE", 2, 2, distance},
    {"ANGLE", 2, 2, angle},
    {"POLAR", 3, 3, polar},
    {"INTERS", 4, 5, inters},
};

} // namespace

std::span<const Builtin> geometryBuiltins() { return builtins; }

} // namespace vndk::lisp
