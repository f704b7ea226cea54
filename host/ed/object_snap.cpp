#include "ed/object_snap.h"

#include "db/symbol_table.h"
#include "ge/extents.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace vndk::host {

namespace {

struct Name {
    int mode;
    const char* shown;
    const char* typed; // its beginning is typed, three letters at least
};
constexpr Name kNames[] = {
    {kSnapEnd, "Endpoint", "ENDPOINT"},
    {kSnapMid, "Midpoint", "MIDPOINT"},
    {kSnapCenter, "Center", "CENTER"},
    {kSnapNode, "Node", "NODE"},
    {kSnapQuadrant, "Quadrant", "QUADRANT"},
    {kSnapIntersection, "Intersection", "INTERSECTION"},
    {kSnapInsertion, "Insert", "INSERTION"},
    {kSnapPerpendicular, "Perpendicular", "PERPENDICULAR"},
    {kSnapTangent, "Tangent", "TANGENT"},
    {kSnapNearest, "Nearest", "NEAREST"},
    {kSnapOff, "None", "NONE"},
};

constexpr size_t kMostCrossing = 64; // lines near the cursor whose crossings are looked for

/// A straight line, or a piece of an arc.
struct Piece {
    AcGePoint3d a, b; // the ends
    const OutlineArc* arc = nullptr;
    double from = 0, to = 0; // angles on the arc

    AcGePoint3d at(double share) const { return arc ? arc->at(from + (to - from) * share) : a + (b - a) * share; }
    AcGeVector3d along(double share) const {
        const double u = from + (to - from) * share;
        return arc ? (arc->minor * std::cos(u) - arc->major * std::sin(u)) * (to - from) : b - a;
    }
};

/// Looks through outlines for places, keeping the nearest one.
class Search {
public:
    explicit Search(const SnapQuery& query) : query_(query) {}

    void look(const Outline& outline);
    std::optional<Snap> finish();

private:
    bool wants(int mode) const { return (query_.modes & mode) != 0; }
    AcGePoint3d seen(const AcGePoint3d& world) const { return query_.worldToSeen * world; }
    double distanceTo(const AcGePoint3d& world) const {
        const AcGePoint3d p = seen(world);
        return std::max(std::fabs(p.x - query_.at.x), std::fabs(p.y - query_.at.y));
    }
    void offer(const AcGePoint3d& world, int mode);
    void offerBehind(const AcGePoint3d& world, int mode, double lineDistance);
    void lookAtLines(const Outline::Lines& lines);
    void lookAtLine(const Piece& line);
    void lookAtFrame(std::span<const AcGePoint3d> frame);
    void lookAtArc(const OutlineArc& arc);
    void lookAtFoot(const OutlineArc& arc, double lineDistance);
    void lookAtCrossings();
    void cross(const Piece& one, const Piece& other);

    const SnapQuery& query_;
    std::vector<Piece> near_; // what runs through the aperture, for crossings
    bool touched_ = false;    // the outline that is looked at runs through the aperture
    std::optional<Snap> best_, nearest_;
    double bestDistance_ = std::numeric_limits<double>::max();
    double nearestDistance_ = std::numeric_limits<double>::max();
};

void Search::offer(const AcGePoint3d& world, int mode) {
    if (!wants(mode))
        return;
    const double distance = distanceTo(world);
    if (distance > query_.aperture || distance >= bestDistance_)
        return;
    best_ = Snap{world, mode};
    bestDistance_ = distance;
}

/// A place away from the cursor, which is on the line that has it.
void Search::offerBehind(const AcGePoint3d& world, int mode, double lineDistance) {
    const double distance = std::min(lineDistance + query_.aperture / 2, distanceTo(world));
    if (!wants(mode) || distance >= bestDistance_)
        return;
    best_ = Snap{world, mode};
    bestDistance_ = distance;
}

/// The share of the line's length at which it comes nearest to a place, seen flat.
double shareNearest(const AcGePoint3d& a, const AcGePoint3d& b, double x, double y) {
    const double dx = b.x - a.x, dy = b.y - a.y, square = dx * dx + dy * dy;
    return square > 0 ? std::clamp(((x - a.x) * dx + (y - a.y) * dy) / square, 0.0, 1.0) : 0;
}

void Search::lookAtLine(const Piece& line) {
    const AcGePoint3d a = seen(line.a), b = seen(line.b);
    const double x = query_.at.x, y = query_.at.y, reach = query_.aperture;
    if (std::min(a.x, b.x) > x + reach || std::max(a.x, b.x) < x - reach || std::min(a.y, b.y) > y + reach ||
        std::max(a.y, b.y) < y - reach)
        return;
    const double share = shareNearest(a, b, x, y);
    const AcGePoint3d touch = line.a + (line.b - line.a) * share;
    const double distance = distanceTo(touch);
    if (distance > reach)
        return;
    touched_ = true;
    offer(line.a, kSnapEnd);
    offer(line.b, kSnapEnd);
    offer(line.a + (line.b - line.a) * 0.5, kSnapMid);
    if (near_.size() < kMostCrossing)
        near_.push_back(line);
    const AcGeVector3d along = line.b - line.a;
    if (query_.base && wants(kSnapPerpendicular) && along.dotProduct(along) > 0)
        offerBehind(line.a + along * ((*query_.base - line.a).dotProduct(along) / along.dotProduct(along)),
                    kSnapPerpendicular, distance);
    if (wants(kSnapNearest) && distance < nearestDistance_) {
        nearest_ = Snap{touch, kSnapNearest};
        nearestDistance_ = distance;
    }
}

void Search::lookAtLines(const Outline::Lines& lines) {
    size_t begin = 0;
    for (const size_t end : lines.ends) {
        for (size_t i = begin + 1; i < end; ++i)
            lookAtLine({lines.points[i - 1], lines.points[i]});
        begin = end;
    }
}

/// Where the circle comes nearest to the base and where a line from it touches; for round arcs.
void Search::lookAtFoot(const OutlineArc& arc, double lineDistance) {
    const double radius = arc.major.length();
    if (!query_.base || std::fabs(arc.minor.length() - radius) > radius * 1e-9 || !(radius > 0))
        return;
    const AcGeVector3d way = *query_.base - arc.center;
    const double x = way.dotProduct(arc.major) / radius, y = way.dotProduct(arc.minor) / radius;
    const double distance = std::hypot(x, y);
    const double toBase = std::atan2(y, x);
    if (distance > 0)
        for (const double u : {toBase, toBase + kAcGePi})
            if (distanceTo(arc.at(u)) < bestDistance_ + query_.aperture * 4)
                offerBehind(arc.at(u), kSnapPerpendicular, lineDistance);
    if (distance > radius && wants(kSnapTangent)) {
        const double half = std::acos(radius / distance);
        const AcGePoint3d one = arc.at(toBase + half), other = arc.at(toBase - half);
        offerBehind(distanceTo(one) < distanceTo(other) ? one : other, kSnapTangent, lineDistance);
    }
}

void Search::lookAtArc(const OutlineArc& arc) {
    // Far from the cursor: nothing but the centre could count.
    const AcGeVector3d a = query_.worldToSeen * arc.major, b = query_.worldToSeen * arc.minor;
    const AcGePoint3d center = seen(arc.center);
    const double reach = std::hypot(a.x, a.y) + std::hypot(b.x, b.y) + query_.aperture;
    if (std::fabs(center.x - query_.at.x) > reach || std::fabs(center.y - query_.at.y) > reach)
        return;
    offer(arc.center, kSnapCenter);
    const bool closed = std::fabs(arc.sweep) >= 2 * kAcGePi - 1e-9;
    // As chords that the eye can't tell from it.
    const int steps = std::clamp(static_cast<int>(std::sqrt(reach) * 4 * std::fabs(arc.sweep) / kAcGePi), 8, 2000);
    double distance = std::numeric_limits<double>::max();
    AcGePoint3d touch;
    for (int i = 0; i < steps; ++i) {
        const double u = arc.start + arc.sweep * i / steps, next = arc.start + arc.sweep * (i + 1) / steps;
        const AcGePoint3d p = arc.at(u), q = arc.at(next);
        const AcGePoint3d from = seen(p), to = seen(q);
        const double share = shareNearest(from, to, query_.at.x, query_.at.y);
        const double here = distanceTo(p + (q - p) * share);
        if (here <= query_.aperture && near_.size() < kMostCrossing)
            near_.push_back({p, q, &arc, u, next});
        if (here < distance) {
            distance = here;
            touch = arc.at(u + (next - u) * share);
        }
    }
    if (distance > query_.aperture)
        return;
    touched_ = true;
    offerBehind(arc.center, kSnapCenter, distance);
    if (!closed) {
        offer(arc.at(arc.start), kSnapEnd);
        offer(arc.at(arc.start + arc.sweep), kSnapEnd);
        offer(arc.at(arc.start + arc.sweep / 2), kSnapMid);
    }
    for (int quarter = -8; quarter <= 8; ++quarter) {
        const double u = quarter * kAcGePi / 2, from = std::min(arc.start, arc.start + arc.sweep);
        if (u >= from - 1e-9 && u <= from + std::fabs(arc.sweep) + 1e-9)
            offer(arc.at(u), kSnapQuadrant);
    }
    lookAtFoot(arc, distance);
    if (wants(kSnapNearest) && distance < nearestDistance_) {
        nearest_ = Snap{touch, kSnapNearest};
        nearestDistance_ = distance;
    }
}

/// Where two pieces meet as they are seen. From where their chords meet it is a few steps to where arcs do.
void Search::cross(const Piece& one, const Piece& other) {
    double s = 0.5, t = 0.5;
    for (int step = 0; step < (one.arc || other.arc ? 8 : 1); ++step) {
        const AcGePoint3d p = seen(one.at(s)), q = seen(other.at(t));
        const AcGeVector3d v = query_.worldToSeen * one.along(s), w = query_.worldToSeen * other.along(t);
        const double determinant = v.x * w.y - v.y * w.x;
        if (std::fabs(determinant) < 1e-12)
            return;
        s += ((q.x - p.x) * w.y - (q.y - p.y) * w.x) / determinant;
        t += ((q.x - p.x) * v.y - (q.y - p.y) * v.x) / determinant;
    }
    constexpr double kSlack = 1e-9;
    if (!(s >= -kSlack && s <= 1 + kSlack && t >= -kSlack && t <= 1 + kSlack))
        return;
    const AcGePoint3d point = one.at(s);
    // They only seem to meet where one passes above the other.
    if (point.distanceTo(other.at(t)) < 1e-6 * (1 + point.asVector().length()))
        offer(point, kSnapIntersection);
}

void Search::lookAtCrossings() {
    for (size_t i = 0; i < near_.size(); ++i)
        for (size_t j = i + 1; j < near_.size(); ++j)
            if (!near_[i].arc || near_[i].arc != near_[j].arc)
                cross(near_[i], near_[j]);
}

void Search::lookAtFrame(std::span<const AcGePoint3d> frame) {
    AcDbExtents box;
    for (const AcGePoint3d& corner : frame)
        box.addPoint(seen(corner));
    const double reach = query_.aperture;
    touched_ = touched_ || (query_.at.x >= box.minPoint().x - reach && query_.at.x <= box.maxPoint().x + reach &&
                            query_.at.y >= box.minPoint().y - reach && query_.at.y <= box.maxPoint().y + reach);
}

void Search::look(const Outline& outline) {
    touched_ = false;
    lookAtLines(outline.lines);
    for (const OutlineArc& arc : outline.arcs)
        lookAtArc(arc);
    for (const AcGePoint3d& node : outline.nodes)
        offer(node, kSnapNode);
    size_t begin = 0;
    for (const size_t end : outline.frames.ends) {
        lookAtFrame(std::span(outline.frames.points).subspan(begin, end - begin));
        begin = end;
    }
    for (const AcGePoint3d& insertion : outline.insertions)
        offer(insertion, kSnapInsertion);
    // A text or a reference is pointed at anywhere.
    if (touched_ && !outline.insertions.empty())
        offerBehind(outline.insertions.back(), kSnapInsertion, query_.aperture);
}

std::optional<Snap> Search::finish() {
    if (wants(kSnapIntersection))
        lookAtCrossings();
    return best_ ? best_ : nearest_;
}

} // namespace

std::optional<int> snapModesOf(std::string_view text) {
    int modes = 0;
    while (!text.empty()) {
        const size_t comma = text.find(',');
        const std::string word = acdbFoldName(text.substr(0, comma));
        const auto* const name = std::find_if(std::begin(kNames), std::end(kNames), [&](const Name& n) {
            return word.size() >= 3 && std::string_view(n.typed).starts_with(word);
        });
        if (name == std::end(kNames))
            return std::nullopt;
        modes |= name->mode;
        text = comma == std::string_view::npos ? std::string_view() : text.substr(comma + 1);
    }
    return modes != 0 ? std::optional(modes) : std::nullopt;
}

const char* snapName(int mode) {
    const auto* const name =
        std::find_if(std::begin(kNames), std::end(kNames), [mode](const Name& n) { return n.mode == mode; });
    return name != std::end(kNames) ? name->shown : "";
}

std::optional<Snap> findSnap(std::span<const Outline* const> outlines, const SnapQuery& query) {
    if ((query.modes & kSnapOff) != 0 || query.modes == 0)
        return std::nullopt;
    Search search(query);
    for (const Outline* const outline : outlines)
        search.look(*outline);
    return search.finish();
}

} // namespace vndk::host
