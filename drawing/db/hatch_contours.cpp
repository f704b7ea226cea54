#include "db/hatch_contours.h"

#include "db/bspline.h"
#include "db/plane_math.h"

#include <algorithm>

namespace vndk::db {

namespace {

constexpr int kStepsPerTurn = 128;
constexpr int kStepsPerSpan = 12; // of a spline, between two knots
constexpr double kTurn = 2 * kAcGePi;

/// Appends the points of edges.
class Flattener {
public:
    explicit Flattener(Contour& contour) : contour_(contour) {}

    void operator()(const AcDbHatch::LineEdge& edge) {
        add(edge.start);
        add(edge.end);
    }
    void operator()(const AcDbHatch::ArcEdge& edge) {
        oval(edge.center, {edge.radius, 0}, {0, edge.radius}, edge.start, edge.end, edge.ccw);
    }
    void operator()(const AcDbHatch::EllipseEdge& edge) {
        const AcGeVector2d minor(-edge.major.y * edge.ratio, edge.major.x * edge.ratio);
        oval(edge.center, edge.major, minor, edge.start, edge.end, edge.ccw);
    }
    void operator()(const AcDbHatch::SplineEdge& edge) {
        BSpline spline{edge.degree, edge.knots, {}, edge.weights};
        for (const AcGePoint2d& p : edge.points)
            spline.points.emplace_back(p.x, p.y, 0);
        for (const AcGePoint3d& p : spline.flattened(kStepsPerSpan))
            add({p.x, p.y});
    }
    void add(const AcGePoint2d& p) {
        if (contour_.empty() || !(contour_.back() == p))
            contour_.push_back(p);
    }
    void oval(const AcGePoint2d& center, const AcGeVector2d& a, const AcGeVector2d& b, double start, double end,
              bool ccw) {
        const double sweep = std::clamp(end - start, -kTurn, kTurn), sign = ccw ? 1 : -1;
        const int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(sweep) / kTurn * kStepsPerTurn - 1e-6)));
        for (int i = 0; i <= steps; ++i) {
            const double u = sign * (start + sweep * i / steps);
            add(center + a * std::cos(u) + b * std::sin(u));
        }
    }

private:
    Contour& contour_;
};

void addVertices(Flattener& flattener, const std::vector<AcDbHatch::Vertex>& vertices) {
    for (size_t i = 0; i < vertices.size(); ++i) {
        const AcDbHatch::Vertex &from = vertices[i], &to = vertices[(i + 1) % vertices.size()];
        flattener.add(from.point);
        if (from.bulge == 0 || from.point.distanceTo(to.point) == 0)
            continue;
        const BulgeArc arc = bulgeArc(from.point, to.point, from.bulge);
        double sweep = normalizedAngle(arc.endAngle - arc.startAngle);
        const double start = from.bulge > 0 ? arc.startAngle : arc.endAngle;
        sweep = from.bulge > 0 ? sweep : -sweep;
        flattener.oval(arc.center, {arc.radius, 0}, {0, arc.radius}, start, start + sweep, true);
    }
}

double areaOf(const Contour& contour) {
    double twice = 0;
    for (size_t i = 0; i < contour.size(); ++i) {
        const AcGePoint2d &a = contour[i], &b = contour[(i + 1) % contour.size()];
        twice += a.x * b.y - b.x * a.y;
    }
    return twice / 2;
}

bool holds(const Contour& contour, const AcGePoint2d& p) {
    bool inside = false;
    for (size_t i = 0; i < contour.size(); ++i) {
        const AcGePoint2d &a = contour[i], &b = contour[(i + 1) % contour.size()];
        if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (b.x - a.x) * (p.y - a.y) / (b.y - a.y))
            inside = !inside;
    }
    return inside;
}

struct Box {
    AcGePoint2d low{1e300, 1e300}, high{-1e300, -1e300};

    explicit Box(const Contour& contour) {
        for (const AcGePoint2d& p : contour) {
            low = {std::min(low.x, p.x), std::min(low.y, p.y)};
            high = {std::max(high.x, p.x), std::max(high.y, p.y)};
        }
    }
    bool holds(const AcGePoint2d& p) const { return p.x >= low.x && p.x <= high.x && p.y >= low.y && p.y <= high.y; }
};

/// How many of the contours hold each one. One that touches another is judged by the middle of its first side, too.
std::vector<unsigned> depthsOf(const std::vector<Contour>& contours) {
    std::vector<Box> boxes;
    for (const Contour& contour : contours)
        boxes.emplace_back(contour);
    std::vector<unsigned> depths(contours.size());
    for (size_t i = 0; i < contours.size(); ++i) {
        const AcGePoint2d a = contours[i][0], b = contours[i][1];
        const AcGePoint2d middle((a.x + b.x) / 2, (a.y + b.y) / 2);
        for (size_t j = 0; j < contours.size(); ++j)
            if (j != i && boxes[j].holds(a) && holds(contours[j], a) && holds(contours[j], middle))
                ++depths[i];
    }
    return depths;
}

} // namespace

Contour contourOf(const AcDbHatch::Loop& loop) {
    Contour contour;
    Flattener flattener(contour);
    if (loop.flags & AcDbHatch::kPolyline)
        addVertices(flattener, loop.vertices);
    else
        for (const AcDbHatch::Edge& edge : loop.edges)
            std::visit(flattener, edge);
    const auto isPlace = [](const AcGePoint2d& p) { return std::isfinite(p.x) && std::isfinite(p.y); };
    if (!std::all_of(contour.begin(), contour.end(), isPlace))
        return {};
    while (contour.size() > 1 && contour.front() == contour.back())
        contour.pop_back();
    return contour.size() < 3 ? Contour() : contour;
}

std::vector<Contour> filledContours(const AcDbHatch::Data& hatch) {
    std::vector<Contour> contours;
    size_t corners = 0;
    for (const AcDbHatch::Loop& loop : hatch.loops)
        if (Contour contour = contourOf(loop); !contour.empty()) {
            corners += contour.size();
            contours.push_back(std::move(contour));
        }
    // Contours beyond count are no drawing: then each fills what it holds.
    constexpr double kMostWork = 5e8; // contours times corners
    const bool readable = static_cast<double>(contours.size()) * static_cast<double>(corners) <= kMostWork;
    const std::vector<unsigned> depths = readable ? depthsOf(contours) : std::vector<unsigned>(contours.size());
    const unsigned deepest = hatch.style == AcDbHatch::kIgnore ? 0 : hatch.style == AcDbHatch::kOuter ? 1 : UINT32_MAX;
    std::vector<Contour> filled;
    for (size_t i = 0; i < contours.size(); ++i) {
        if (depths[i] > deepest)
            continue;
        if ((areaOf(contours[i]) > 0) != (depths[i] % 2 == 0))
            std::reverse(contours[i].begin(), contours[i].end());
        filled.push_back(std::move(contours[i]));
    }
    return filled;
}

} // namespace vndk::db
