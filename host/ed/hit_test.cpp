#include "ed/hit_test.h"

#include "db/block_reference.h"
#include "db/curves.h"
#include "db/polylines.h"
#include "db/solids.h"
#include "db/text.h"
#include "db/viewport.h"
#include "ed/coordinates.h"
#include "ed/outline.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>
#include <optional>

namespace vndk::host {

namespace {

/// Takes a piece of an outline in the plane; true ends the walk.
using Touch = std::function<bool(const AcGePoint3d&, const AcGePoint3d&)>;

/// How an outline is walked. Chords leave an arc by less than an eighth of `size`, or by a millionth of the radius
/// where that is smaller still.
struct Walk {
    const AcGeMatrix3d& toPlane;
    double size;
    const Touch& touch;

    double chordAngle(double radius) const { return 2 * std::acos(1 - std::clamp(size / 8 / radius, 1e-6, 0.01)); }
    bool line(const AcGePoint3d& a, const AcGePoint3d& b) const { return touch(toPlane * a, toPlane * b); }
};

/// The entity's box as seen in the plane; false when it has none.
bool boxIn(const AcDbEntity& entity, const SelectionRectangle& rectangle, AcDbExtents& box) {
    if (entity.getGeomExtents(box) != Acad::eOk || box.isEmpty())
        return false;
    box.transformBy(rectangle.toPlane);
    return true;
}

/// Clips the segment from a to b by the rectangle; false when nothing is left.
bool segmentTouches(const AcGePoint3d& a, const AcGePoint3d& b, const SelectionRectangle& r) {
    double from = 0, to = 1;
    const auto clip = [&](double start, double delta, double low, double high) {
        if (delta == 0)
            return start >= low && start <= high;
        const double first = (low - start) / delta, second = (high - start) / delta;
        from = std::max(from, std::min(first, second));
        to = std::min(to, std::max(first, second));
        return from <= to;
    };
    return clip(a.x, b.x - a.x, r.min.x, r.max.x) && clip(a.y, b.y - a.y, r.min.y, r.max.y);
}

/// The points are center + a cos u + b sin u.
bool walkArc(const AcGePoint3d& center, const AcGeVector3d& a, const AcGeVector3d& b, double start, double sweep,
             const Walk& walk) {
    const double radius = std::max(a.length(), b.length());
    const int chords = std::max(1, static_cast<int>(std::ceil(std::fabs(sweep) / walk.chordAngle(radius))));
    AcGePoint3d former;
    for (int i = 0; i <= chords; ++i) {
        const double angle = start + sweep * i / chords;
        const AcGePoint3d point = center + a * std::cos(angle) + b * std::sin(angle);
        if (i > 0 && walk.line(former, point))
            return true;
        former = point;
    }
    return false;
}

bool walkRound(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double start, double sweep,
               const Walk& walk) {
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal);
    return walkArc(center, plane.xAxis() * radius, plane.yAxis() * radius, start, sweep, walk);
}

/// The centre line; the width doesn't count.
bool walkPolyline(const AcDbPolyline& polyline, const Walk& walk) {
    const AcDbPolyline::Data& data = polyline.data();
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(data.normal);
    const auto world = [&](double x, double y) { return plane * AcGePoint3d(x, y, data.elevation); };
    const size_t count = data.vertices.size();
    for (size_t i = 0; i + (data.closed ? 0 : 1) < count; ++i) {
        const AcGePoint2d a = data.vertices[i].point, b = data.vertices[(i + 1) % count].point;
        const double bulge = data.vertices[i].bulge, dx = b.x - a.x, dy = b.y - a.y;
        if (bulge == 0 || (dx == 0 && dy == 0)) {
            if (walk.line(world(a.x, a.y), world(b.x, b.y)))
                return true;
            continue;
        }
        // The bulge is the tangent of a quarter of the angle, negative when the arc runs clockwise.
        const double aside = (1 - bulge * bulge) / (4 * bulge);
        const AcGePoint2d center((a.x + b.x) / 2 - aside * dy, (a.y + b.y) / 2 + aside * dx);
        const AcGePoint2d& first = bulge > 0 ? a : b;
        if (walkRound(world(center.x, center.y), data.normal, std::hypot(a.x - center.x, a.y - center.y),
                      std::atan2(first.y - center.y, first.x - center.x), 4 * std::atan(std::abs(bulge)), walk))
            return true;
    }
    return false;
}

bool walkFrame(const AcDbViewport& viewport, const Walk& walk) {
    const AcDbViewport::Data& data = viewport.data();
    const auto corner = [&](double x, double y) {
        return data.center + AcGeVector3d(x * data.width / 2, y * data.height / 2, 0);
    };
    return walk.line(corner(-1, -1), corner(1, -1)) || walk.line(corner(1, -1), corner(1, 1)) ||
           walk.line(corner(1, 1), corner(-1, 1)) || walk.line(corner(-1, 1), corner(-1, -1));
}

std::optional<bool> walkOutline(const AcDbEntity& entity, const Walk& walk);

bool walkLines(const Outline::Lines& lines, const Walk& walk) {
    size_t begin = 0;
    for (const size_t end : lines.ends) {
        for (size_t i = begin + 1; i < end; ++i)
            if (walk.line(lines.points[i - 1], lines.points[i]))
                return true;
        begin = end;
    }
    return false;
}

/// Text fills its frame.
bool walkFrames(const Outline::Lines& frames, const Walk& walk) {
    constexpr int kRows = 8;
    size_t begin = 0;
    for (const size_t end : frames.ends) {
        const AcGePoint3d* const corner = &frames.points[begin];
        for (int row = 0; row <= kRows && end - begin >= 4; ++row) {
            const double share = static_cast<double>(row) / kRows;
            if (walk.line(corner[0] + (corner[3] - corner[0]) * share, corner[1] + (corner[2] - corner[1]) * share))
                return true;
        }
        begin = end;
    }
    return false;
}

/// What is seen of a reference. Nothing where nothing is: its box counts then.
std::optional<bool> walkReference(const AcDbEntity& reference, const Walk& walk) {
    Outline outline;
    addOutline(reference, {}, outline);
    if (outline.isEmpty())
        return std::nullopt;
    const auto arc = [&](const OutlineArc& a) { return walkArc(a.center, a.major, a.minor, a.start, a.sweep, walk); };
    const auto node = [&](const AcGePoint3d& p) { return walk.line(p, p); };
    return walkLines(outline.lines, walk) || walkFrames(outline.frames, walk) ||
           std::any_of(outline.arcs.begin(), outline.arcs.end(), arc) ||
           std::any_of(outline.nodes.begin(), outline.nodes.end(), node);
}

/// By simpler forms. Nothing where there is none, and for text, which fills its box.
std::optional<bool> walkParts(const AcDbEntity& entity, const Walk& walk) {
    std::vector<AcDbEntity*> raw;
    if (entity.isKindOf(AcDbBlockReference::desc()))
        return walkReference(entity, walk);
    if (entity.isKindOf(AcDbMText::desc()) || entity.explode(raw) != Acad::eOk || raw.empty())
        return std::nullopt;
    const std::vector<std::unique_ptr<AcDbEntity>> parts(raw.begin(), raw.end());
    return std::any_of(parts.begin(), parts.end(),
                       [&](const auto& part) { return walkOutline(*part, walk).value_or(false); });
}

/// True when `walk.touch` has said so. Nothing: the entity is known by its box only.
std::optional<bool> walkOutline(const AcDbEntity& entity, const Walk& walk) {
    if (const auto* line = AcDbLine::cast(&entity))
        return walk.line(line->startPoint(), line->endPoint());
    if (const auto* circle = AcDbCircle::cast(&entity))
        return walkRound(circle->center(), circle->normal(), circle->radius(), 0, 2 * kAcGePi, walk);
    if (const auto* arc = AcDbArc::cast(&entity))
        return walkRound(arc->center(), arc->normal(), arc->radius(), arc->startAngle(),
                         wholeTurn(arc->endAngle() - arc->startAngle()), walk);
    if (const auto* ellipse = AcDbEllipse::cast(&entity))
        return walkArc(ellipse->center(), ellipse->majorAxis(), ellipse->minorAxis(), ellipse->startParam(),
                       ellipse->isClosed() ? 2 * kAcGePi : wholeTurn(ellipse->endParam() - ellipse->startParam()),
                       walk);
    if (const auto* face = AcDbFace::cast(&entity)) {
        const auto& corners = face->data().corners;
        for (size_t i = 0; i < 4; ++i)
            if (walk.line(corners[i], corners[(i + 1) % 4]))
                return true;
        return false;
    }
    if (const auto* viewport = AcDbViewport::cast(&entity))
        return walkFrame(*viewport, walk);
    if (const auto* polyline = AcDbPolyline::cast(&entity))
        return walkPolyline(*polyline, walk);
    return walkParts(entity, walk);
}

bool walkBox(const AcDbExtents& box, const Touch& touch) {
    const AcGePoint3d &low = box.minPoint(), &high = box.maxPoint();
    const AcGePoint3d corners[] = {low, {high.x, low.y, 0}, high, {low.x, high.y, 0}};
    for (size_t i = 0; i < 4; ++i)
        if (touch(corners[i], corners[(i + 1) % 4]))
            return true;
    return false;
}

bool contains(const SelectionRectangle& r, const AcDbExtents& box) {
    return box.minPoint().x >= r.min.x && box.minPoint().y >= r.min.y && box.maxPoint().x <= r.max.x &&
           box.maxPoint().y <= r.max.y;
}

bool overlaps(const SelectionRectangle& r, const AcDbExtents& box) {
    return box.maxPoint().x >= r.min.x && box.maxPoint().y >= r.min.y && box.minPoint().x <= r.max.x &&
           box.minPoint().y <= r.max.y;
}

/// Do the pieces from a to b and from c to d meet?
bool meet(const AcGePoint2d& a, const AcGePoint2d& b, const AcGePoint2d& c, const AcGePoint2d& d) {
    const auto side = [](const AcGePoint2d& from, const AcGePoint2d& to, const AcGePoint2d& p) {
        const double area = (to.x - from.x) * (p.y - from.y) - (to.y - from.y) * (p.x - from.x);
        return area > 0 ? 1 : area < 0 ? -1 : 0;
    };
    const auto apart = [](double p, double q, double r, double s) {
        return std::max(p, q) < std::min(r, s) || std::max(r, s) < std::min(p, q);
    };
    return !apart(a.x, b.x, c.x, d.x) && !apart(a.y, b.y, c.y, d.y) && side(a, b, c) * side(a, b, d) <= 0 &&
           side(c, d, a) * side(c, d, b) <= 0;
}

bool isWithin(const std::vector<AcGePoint2d>& polygon, const AcGePoint3d& p) {
    bool inside = false;
    for (size_t i = 0; i < polygon.size(); ++i) {
        const AcGePoint2d &a = polygon[i], &b = polygon[(i + 1) % polygon.size()];
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y))
            inside = !inside;
    }
    return inside;
}

/// How an entity lies to a path.
struct Meeting {
    bool meets = false;    // its outline meets the path
    bool isInside = false; // a point of the outline lies in the polygon of the path's points
};

Meeting meeting(const AcDbEntity& entity, const SelectionPath& path, bool closed) {
    Meeting found;
    AcDbExtents pathBox, box;
    for (const AcGePoint2d& point : path.points)
        pathBox.addPoint({point.x, point.y, 0});
    if (path.points.empty() || entity.getGeomExtents(box) != Acad::eOk || box.isEmpty())
        return found;
    box.transformBy(path.toPlane);
    const size_t pieces = path.points.size() - (closed ? 0 : 1);
    const Touch touch = [&](const AcGePoint3d& a, const AcGePoint3d& b) {
        found.isInside = found.isInside || isWithin(path.points, a);
        for (size_t i = 0; i < pieces && !found.meets; ++i)
            found.meets = meet({a.x, a.y}, {b.x, b.y}, path.points[i], path.points[(i + 1) % path.points.size()]);
        return found.meets;
    };
    const AcGeVector3d span = pathBox.maxPoint() - pathBox.minPoint();
    if (!walkOutline(entity, {path.toPlane, std::max(span.x, span.y) / 100, touch}))
        walkBox(box, touch);
    return found;
}

} // namespace

SelectionRectangle SelectionRectangle::between(const AcGeMatrix3d& toPlane, const AcGePoint3d& a,
                                               const AcGePoint3d& b) {
    return {toPlane, {std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
}

bool liesInside(const AcDbEntity& entity, const SelectionRectangle& rectangle) {
    // Lines exactly: in a turned plane the box around the box would be too large.
    if (const auto* line = AcDbLine::cast(&entity)) {
        AcDbExtents ends;
        ends.addPoint(rectangle.toPlane * line->startPoint());
        ends.addPoint(rectangle.toPlane * line->endPoint());
        return contains(rectangle, ends);
    }
    AcDbExtents box;
    return boxIn(entity, rectangle, box) && contains(rectangle, box);
}

bool touches(const AcDbEntity& entity, const SelectionRectangle& rectangle) {
    AcDbExtents box;
    if (!boxIn(entity, rectangle, box) || !overlaps(rectangle, box))
        return false;
    if (contains(rectangle, box))
        return true;
    const double size = std::min(rectangle.max.x - rectangle.min.x, rectangle.max.y - rectangle.min.y);
    const Touch touch = [&](const AcGePoint3d& a, const AcGePoint3d& b) { return segmentTouches(a, b, rectangle); };
    return walkOutline(entity, {rectangle.toPlane, size, touch}).value_or(true);
}

bool liesInside(const AcDbEntity& entity, const SelectionPath& polygon) {
    const Meeting found = meeting(entity, polygon, true);
    return found.isInside && !found.meets;
}

bool touches(const AcDbEntity& entity, const SelectionPath& polygon) {
    const Meeting found = meeting(entity, polygon, true);
    return found.isInside || found.meets;
}

bool crosses(const AcDbEntity& entity, const SelectionPath& fence) { return meeting(entity, fence, false).meets; }

} // namespace vndk::host
