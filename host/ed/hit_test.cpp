#include "ed/hit_test.h"

#include "db/curves.h"
#include "db/polylines.h"
#include "ed/coordinates.h"

#include <algorithm>
#include <cmath>

namespace vndk::host {

namespace {

/// The angle of the chords by which an arc is tested: they leave it by less than an eighth of the rectangle, or by a
/// millionth of the radius where the rectangle is smaller still.
double chordAngle(double radius, const SelectionRectangle& r) {
    const double size = std::min(r.max.x - r.min.x, r.max.y - r.min.y);
    const double rise = std::clamp(size / 8 / radius, 1e-6, 0.01);
    return 2 * std::acos(1 - rise);
}

/// The entity's box as seen in the UCS; false when it has none.
bool boxIn(const AcDbEntity& entity, const SelectionRectangle& rectangle, AcDbExtents& box) {
    if (entity.getGeomExtents(box) != Acad::eOk || box.isEmpty())
        return false;
    box.transformBy(rectangle.worldToUcs);
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

bool arcTouches(const AcGePoint3d& center, const AcGeVector3d& normal, double radius, double start, double sweep,
                const SelectionRectangle& rectangle) {
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(normal);
    const int chords = std::max(1, static_cast<int>(std::ceil(sweep / chordAngle(radius, rectangle))));
    AcGePoint3d former;
    for (int i = 0; i <= chords; ++i) {
        const double angle = start + sweep * i / chords;
        const AcGeVector3d arm = plane * AcGeVector3d(radius * std::cos(angle), radius * std::sin(angle), 0);
        const AcGePoint3d point = rectangle.worldToUcs * (center + arm);
        if (i > 0 && segmentTouches(former, point, rectangle))
            return true;
        former = point;
    }
    return false;
}

/// The centre line; the width doesn't count.
bool polylineTouches(const AcDbPolyline& polyline, const SelectionRectangle& rectangle) {
    const AcDbPolyline::Data& data = polyline.data();
    const AcGeMatrix3d plane = AcGeMatrix3d::planeToWorld(data.normal);
    const auto world = [&](double x, double y) { return plane * AcGePoint3d(x, y, data.elevation); };
    const size_t count = data.vertices.size();
    for (size_t i = 0; i + (data.closed ? 0 : 1) < count; ++i) {
        const AcGePoint2d a = data.vertices[i].point, b = data.vertices[(i + 1) % count].point;
        const double bulge = data.vertices[i].bulge, dx = b.x - a.x, dy = b.y - a.y;
        if (bulge == 0 || (dx == 0 && dy == 0)) {
            if (segmentTouches(rectangle.worldToUcs * world(a.x, a.y), rectangle.worldToUcs * world(b.x, b.y),
                               rectangle))
                return true;
            continue;
        }
        // The bulge is the tangent of a quarter of the angle, negative when the arc runs clockwise.
        const double aside = (1 - bulge * bulge) / (4 * bulge);
        const AcGePoint2d center((a.x + b.x) / 2 - aside * dy, (a.y + b.y) / 2 + aside * dx);
        const AcGePoint2d& first = bulge > 0 ? a : b;
        if (arcTouches(world(center.x, center.y), data.normal, std::hypot(a.x - center.x, a.y - center.y),
                       std::atan2(first.y - center.y, first.x - center.x), 4 * std::atan(std::abs(bulge)), rectangle))
            return true;
    }
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

bool partsTouch(const AcDbEntity& entity, const SelectionRectangle& rectangle) {
    std::vector<AcDbEntity*> raw;
    if (entity.explode(raw) != Acad::eOk || raw.empty())
        return true; // what has no simpler form is taken by its box
    const std::vector<std::unique_ptr<AcDbEntity>> parts(raw.begin(), raw.end());
    return std::any_of(parts.begin(), parts.end(), [&](const auto& part) { return touches(*part, rectangle); });
}

} // namespace

SelectionRectangle SelectionRectangle::between(const AcGeMatrix3d& worldToUcs, const AcGePoint3d& a,
                                               const AcGePoint3d& b) {
    return {worldToUcs, {std::min(a.x, b.x), std::min(a.y, b.y)}, {std::max(a.x, b.x), std::max(a.y, b.y)}};
}

bool liesInside(const AcDbEntity& entity, const SelectionRectangle& rectangle) {
    // Lines exactly: in a turned UCS the box around the box would be too large.
    if (const auto* line = AcDbLine::cast(&entity)) {
        AcDbExtents ends;
        ends.addPoint(rectangle.worldToUcs * line->startPoint());
        ends.addPoint(rectangle.worldToUcs * line->endPoint());
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
    if (const auto* line = AcDbLine::cast(&entity))
        return segmentTouches(rectangle.worldToUcs * line->startPoint(), rectangle.worldToUcs * line->endPoint(),
                              rectangle);
    if (const auto* circle = AcDbCircle::cast(&entity))
        return arcTouches(circle->center(), circle->normal(), circle->radius(), 0, 2 * kAcGePi, rectangle);
    if (const auto* arc = AcDbArc::cast(&entity))
        return arcTouches(arc->center(), arc->normal(), arc->radius(), arc->startAngle(),
                          wholeTurn(arc->endAngle() - arc->startAngle()), rectangle);
    if (const auto* polyline = AcDbPolyline::cast(&entity))
        return polylineTouches(*polyline, rectangle);
    return partsTouch(entity, rectangle);
}

} // namespace vndk::host
