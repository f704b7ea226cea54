#include "gs/raster.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace vndk::gs {

namespace {

/// Beyond it squares and sums leave the range of numbers; nothing that far away is seen.
constexpr double kFarthest = 1e100;

bool isNear(const Spot& p) { return std::fabs(p.x) < kFarthest && std::fabs(p.y) < kFarthest; }

/// Takes a boundary into account; `p` is how fast the line runs outward, `q` how far it is inside.
bool narrow(double p, double q, double& from, double& to) {
    if (p == 0)
        return q >= 0;
    const double share = q / p;
    if (p < 0)
        from = std::max(from, share);
    else
        to = std::min(to, share);
    return from <= to;
}

/// Cuts off what lies outside of a boundary, `outside` telling by how much a coordinate does. The cut is put onto the
/// boundary itself, so that far ends don't spoil it. False: nothing is left.
template <double Spot::*Cut, double Spot::*Other>
bool cutAt(double boundary, double sign, Spot& a, Spot& b) {
    const bool aOut = (a.*Cut - boundary) * sign > 0, bOut = (b.*Cut - boundary) * sign > 0;
    if (aOut && bOut)
        return false;
    if (aOut || bOut) {
        const double share = (boundary - a.*Cut) / (b.*Cut - a.*Cut);
        Spot& cut = aOut ? a : b;
        const double other = a.*Other + (b.*Other - a.*Other) * share, z = a.z + (b.z - a.z) * share;
        cut.*Other = other;
        cut.z = z;
        cut.*Cut = boundary;
    }
    return true;
}

/// An edge of an area, from its upper to its lower end.
struct Edge {
    int first, last; // rows whose centres it crosses
    double x, slope; // at the centre of the first row, and from row to row
    int winding;
};

/// The rows whose centres lie between two heights. False: none of them within the limits.
bool rowsBetween(double high, double low, int top, int bottom, int& first, int& last) {
    const double begin = std::max(std::ceil(high - 0.5), static_cast<double>(top));
    const double end = std::min(std::ceil(low - 0.5) - 1, static_cast<double>(bottom));
    if (!(begin <= end))
        return false;
    first = static_cast<int>(begin);
    last = static_cast<int>(end);
    return true;
}

/// Calls `use` for each side of each contour.
template <class Use>
void forEachSide(std::span<const Spot> corners, std::span<const std::size_t> ends, Use&& use) {
    std::size_t begin = 0;
    for (const std::size_t end : ends) {
        for (std::size_t i = begin; i < end; ++i)
            use(corners[i], corners[i + 1 < end ? i + 1 : begin]);
        begin = end;
    }
}

std::vector<Edge> edgesOf(std::span<const Spot> corners, std::span<const std::size_t> ends, const PixelRect& clip) {
    std::vector<Edge> edges;
    forEachSide(corners, ends, [&](const Spot& a, const Spot& b) {
        const bool down = a.y < b.y;
        const Spot &upper = down ? a : b, &lower = down ? b : a;
        Edge edge{};
        if (!isNear(a) || !isNear(b) || !rowsBetween(upper.y, lower.y, clip.top, clip.bottom, edge.first, edge.last))
            return;
        edge.slope = (lower.x - upper.x) / (lower.y - upper.y);
        edge.x = upper.x + edge.slope * (edge.first + 0.5 - upper.y);
        edge.winding = down ? 1 : -1;
        edges.push_back(edge);
    });
    std::sort(edges.begin(), edges.end(), [](const Edge& a, const Edge& b) { return a.first < b.first; });
    return edges;
}

std::uint32_t blended(std::uint32_t under, std::uint32_t over, float share) {
    std::uint32_t mixed = 0xFF000000;
    for (const int shift : {0, 8, 16}) {
        const float a = static_cast<float>(under >> shift & 0xFF), b = static_cast<float>(over >> shift & 0xFF);
        const float toHalf = a + (b - a) * share + 0.5F; // never negative
        mixed |= static_cast<std::uint32_t>(toHalf) << shift;
    }
    return mixed;
}

/// Adds to each pixel's cell how much of it, and with the next cell of the pixels to the right, a side covers: sums
/// along a row are the area then. Coordinates are within the cells.
class CoverageRows {
public:
    CoverageRows(std::vector<float>& cells, int width) : cells_(cells), width_(width) {}

    void add(Spot a, Spot b) {
        if (a.y == b.y)
            return;
        const double winding = a.y < b.y ? 1 : -1;
        if (a.y > b.y)
            std::swap(a, b);
        const double slope = (b.x - a.x) / (b.y - a.y);
        double x = a.x;
        for (int row = static_cast<int>(a.y); row < b.y; ++row) {
            const double height = std::min(row + 1.0, b.y) - std::max(static_cast<double>(row), a.y);
            const double next = x + slope * height;
            addRow(row, std::min(x, next), std::max(x, next), height * winding);
            x = next;
        }
    }

private:
    /// A piece within one row, `height` high with its sign: its cells get what lies to the right of it.
    void addRow(int row, double left, double right, double height) {
        const int first = static_cast<int>(left), last = static_cast<int>(right);
        double done = 0;
        for (int column = first; column <= last; ++column) {
            const double from = std::max(left, static_cast<double>(column)), to = std::min(right, column + 1.0);
            const double share = right > left ? (to - from) / (right - left) : 1;
            const double inner = 1 - ((from + to) / 2 - column);
            cell(row, column) += static_cast<float>(height * share * inner);
            cell(row, column + 1) += static_cast<float>(height * share * (1 - inner));
            done += share;
        }
        // What rounding kept from the pieces belongs to the last one.
        cell(row, last + 1) += static_cast<float>(height * (1 - done));
    }
    float& cell(int row, int column) {
        return cells_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width_) +
                      static_cast<std::size_t>(column)];
    }

    std::vector<float>& cells_;
    int width_;
};

struct Bounds {
    double left = 0, top = 0, right = 0, bottom = 0;
};

Bounds boundsOf(std::span<const Spot> corners) {
    Bounds box{corners[0].x, corners[0].y, corners[0].x, corners[0].y};
    for (const Spot& corner : corners) {
        box.left = std::min(box.left, corner.x);
        box.right = std::max(box.right, corner.x);
        box.top = std::min(box.top, corner.y);
        box.bottom = std::max(box.bottom, corner.y);
    }
    return box;
}

} // namespace

bool clipLine(const Spot& a, const Spot& b, double left, double top, double right, double bottom, double& from,
              double& to) {
    from = 0;
    to = 1;
    const double dx = b.x - a.x, dy = b.y - a.y;
    return isNear(a) && isNear(b) && narrow(-dx, a.x - left, from, to) && narrow(dx, right - a.x, from, to) &&
           narrow(-dy, a.y - top, from, to) && narrow(dy, bottom - a.y, from, to);
}

void Raster::clear(std::uint32_t color) {
    for (int y = clip_.top; y <= clip_.bottom; ++y) {
        std::fill(&at(clip_.left, y), &at(clip_.right, y) + 1, color);
        if (depths_)
            std::fill(&depthAt(clip_.left, y), &depthAt(clip_.right, y) + 1, -std::numeric_limits<float>::infinity());
    }
}

void Raster::dot(const Spot& spot, std::uint32_t color) {
    if (lens_)
        return dotThroughLens(spot, color);
    if (!holds(spot)) {
        touchedOutside_ = touchedOutside_ || isNear(spot);
        return;
    }
    touchedInside_ = true;
    const int x = static_cast<int>(spot.x), y = static_cast<int>(spot.y);
    if (depths_)
        deepLine(x, y, x, y, spot.z, spot.z, color);
    else if (pixels_)
        at(x, y) = color;
}

/// The pixels of a row whose centres lie between two places.
void Raster::span(double from, double to, int y, std::uint32_t color) {
    int first = 0, last = 0;
    if (!rowsBetween(from, to, clip_.left, clip_.right, first, last))
        return;
    touchedInside_ = true;
    if (depths_)
        deepSpan(first, last, y, color);
    else if (pixels_)
        std::fill(&at(first, y), &at(last, y) + 1, color);
}

void Raster::clipped(const Spot& a, const Spot& b, std::uint32_t color, double behind) {
    if (lens_)
        return lineThroughLens(a, b, color, behind);
    if (!isNear(a) || !isNear(b))
        return;
    touchedOutside_ = touchedOutside_ || !holds(a) || !holds(b);
    Spot c = a, d = b;
    if (!cutAt<&Spot::x, &Spot::y>(clip_.left, -1, c, d) || !cutAt<&Spot::x, &Spot::y>(right_, 1, c, d) ||
        !cutAt<&Spot::y, &Spot::x>(clip_.top, -1, c, d) || !cutAt<&Spot::y, &Spot::x>(bottom_, 1, c, d))
        return;
    touchedInside_ = true;
    const auto pixel = [](double place, int low, int high) {
        return static_cast<int>(std::clamp(std::floor(place), static_cast<double>(low), static_cast<double>(high)));
    };
    const int x0 = pixel(c.x, clip_.left, clip_.right), y0 = pixel(c.y, clip_.top, clip_.bottom),
              x1 = pixel(d.x, clip_.left, clip_.right), y1 = pixel(d.y, clip_.top, clip_.bottom);
    if (depths_)
        deepLine(x0, y0, x1, y1, c.z - behind, d.z - behind, color);
    else if (pixels_)
        inside(x0, y0, x1, y1, color);
}

/// Both ends lie inside. A pixel for each step along the longer side; how far aside it lies is a whole number and 32
/// bits of a fraction, beginning in the middle. The step is rounded up by less than what shows in so short a line, so
/// that ties go aside.
void Raster::inside(int x0, int y0, int x1, int y1, std::uint32_t color) {
    const int dx = std::abs(x1 - x0), dy = std::abs(y1 - y0);
    std::uint32_t* const first = &at(x0, y0);
    if (dx <= 1 && dy <= 1) { // pieces of small circles and texts
        *first = color;
        at(x1, y1) = color;
        return;
    }
    if (dy == 0) { // many lines are level
        std::fill_n(std::min(first, first + (x1 - x0)), dx + 1, color);
        return;
    }
    const std::ptrdiff_t stepX = x0 < x1 ? 1 : -1, stepY = y0 < y1 ? stride_ : -std::ptrdiff_t{stride_};
    const bool flat = dx >= dy;
    const auto longer = static_cast<std::uint64_t>(flat ? dx : dy),
               shorter = static_cast<std::uint64_t>(flat ? dy : dx);
    const std::ptrdiff_t along = flat ? stepX : stepY, aside = flat ? stepY : stepX;
    const std::uint64_t step = ((shorter << 32) + longer - 1) / longer;
    std::uint64_t place = std::uint64_t{1} << 31;
    std::ptrdiff_t forward = 0;
#pragma GCC unroll 4 // pixels don't wait for each other
    for (std::uint64_t i = 0; i <= longer; ++i) {
        first[forward + static_cast<std::ptrdiff_t>(place >> 32) * aside] = color;
        place += step;
        forward += along;
    }
}

void Raster::noteBounds(std::span<const Spot> corners) {
    if (isProbe())
        touchedOutside_ = touchedOutside_ || std::any_of(corners.begin(), corners.end(),
                                                         [this](const Spot& p) { return isNear(p) && !holds(p); });
}

void Raster::fill(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color) {
    if (lens_)
        return fillThroughLens(corners, ends, color, false);
    noteBounds(corners);
    if (depths_ && !setPlane(corners, ends))
        return; // seen from its side: its edge is all that is seen
    const std::vector<Edge> edges = edgesOf(corners, ends, clip_);
    std::vector<Edge> active;
    std::size_t next = 0;
    for (int y = edges.empty() ? 0 : edges[0].first; next < edges.size() || !active.empty(); ++y) {
        std::erase_if(active, [y](const Edge& edge) { return edge.last < y; });
        if (active.empty() && next < edges.size())
            y = std::max(y, edges[next].first);
        for (; next < edges.size() && edges[next].first <= y; ++next)
            active.push_back(edges[next]);
        std::sort(active.begin(), active.end(), [](const Edge& a, const Edge& b) { return a.x < b.x; });
        int winding = 0;
        double begin = 0;
        for (Edge& edge : active) {
            if (winding == 0)
                begin = edge.x;
            winding += edge.winding;
            if (winding == 0)
                span(begin, edge.x, y, color);
            edge.x += edge.slope;
        }
    }
}

void Raster::fillSmooth(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color) {
    if (lens_)
        return fillThroughLens(corners, ends, color, true);
    constexpr double kLargest = 96; // a side in pixels; edges of larger areas look smooth enough
    if (corners.empty() || !std::all_of(corners.begin(), corners.end(), isNear))
        return;
    const Bounds box = boundsOf(corners);
    if (!(box.right < clip_.right + 1.0 + kLargest && box.left > clip_.left - kLargest &&
          box.bottom < clip_.bottom + 1.0 + kLargest && box.top > clip_.top - kLargest &&
          box.right - box.left < kLargest && box.bottom - box.top < kLargest) ||
        isProbe())
        return fill(corners, ends, color);
    if (depths_ && !setPlane(corners, ends))
        return;
    const double left = std::floor(box.left), top = std::floor(box.top);
    const int width = static_cast<int>(box.right - left) + 3, height = static_cast<int>(box.bottom - top) + 2;
    coverage_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
    CoverageRows rows(coverage_, width);
    forEachSide(corners, ends, [&](const Spot& a, const Spot& b) {
        rows.add({a.x - left, a.y - top}, {b.x - left, b.y - top});
    });
    for (int row = 0; row < height; ++row) {
        float sum = 0;
        for (int column = 0; column < width; ++column) {
            sum += coverage_[static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                             static_cast<std::size_t>(column)];
            const float share = std::min(std::fabs(sum), 1.0F);
            const int x = static_cast<int>(left) + column, y = static_cast<int>(top) + row;
            if (share > 0.004F && holds(x, y) && (!depths_ || plane_.at(x, y) >= depthAt(x, y)))
                at(x, y) = blended(at(x, y), color, share);
        }
    }
}

} // namespace vndk::gs
