#include "gdi/figure.h"

#include "win32/gdi.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

namespace vndk::win32 {

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int longestSide = 1 << 15; // the fourth power of a side must fit into 64 bits

int ceiling(double value) { return static_cast<int>(std::ceil(value)); }

/// A side of an outline, from top to bottom, with the rows whose centres it passes.
struct Side {
    PointD upper;
    PointD lower;
    int firstRow;
    int endRow;
    int direction; // +1 when the outline runs downward here

    [[nodiscard]] double at(int row) const {
        return upper.x + (row - upper.y) * (lower.x - upper.x) / (lower.y - upper.y);
    }
};

struct Crossing {
    double x;
    int direction;
};

void addSides(const Outline& outline, std::vector<Side>& sides) {
    for (std::size_t index = 0; index < outline.size(); ++index) {
        const PointD from = outline[index];
        const PointD to = outline[(index + 1) % outline.size()];
        const bool downward = from.y < to.y;
        const PointD upper = downward ? from : to;
        const PointD lower = downward ? to : from;
        const Side side{upper, lower, ceiling(upper.y), ceiling(lower.y), downward ? 1 : -1};
        if (side.firstRow < side.endRow)
            sides.push_back(side);
    }
}

void addPieces(RegionBuilder& builder, const std::vector<Crossing>& crossings, int fillMode, const RECT& bounds) {
    int winding = 0;
    for (std::size_t index = 0; index + 1 < crossings.size(); ++index) {
        winding += crossings[index].direction;
        const bool inside = fillMode == WINDING ? winding != 0 : index % 2 == 0;
        if (inside)
            builder.add(std::max(ceiling(crossings[index].x), int{bounds.left}),
                        std::min(ceiling(crossings[index + 1].x), int{bounds.right}));
    }
}

/// An ellipse whose path runs through the centres of the outermost pixels of a box. Places count from its middle in
/// halves of pixels, so that all sums are exact.
class EllipsePath {
public:
    EllipsePath(int width, int height) : width_(width - 1), height_(height - 1) {}

    /// Of the row `fromMiddle`: every row takes the column nearest to the path, and every column the row nearest to it,
    /// of two equally near ones the outer one. The inset is that of the outermost pixel the row gets either way.
    [[nodiscard]] int inset(int fromMiddle) const {
        const auto row = [this, fromMiddle](int column) { return column <= 1 || holds(column - 1, fromMiddle); };
        const auto byColumn = [this, fromMiddle](int column) { return holds(column, std::max(fromMiddle - 1, 0)); };
        int outermost = widest(fromMiddle, row);
        const int candidate = widest(std::max(fromMiddle - 1, 0), byColumn);
        const bool isNearestRow = byColumn(candidate) && !holds(candidate, fromMiddle + 1);
        if (isNearestRow)
            outermost = std::max(outermost, candidate);
        return static_cast<int>((width_ - outermost) / 2);
    }

private:
    [[nodiscard]] bool holds(std::int64_t x, std::int64_t y) const {
        const std::int64_t part = x * x * height_ * height_ + y * y * width_ * width_;
        return part <= width_ * width_ * height_ * height_;
    }
    /// The outermost column for which `belongs` holds, or else the innermost one; found from where the path is near.
    template <typename Belongs>
    [[nodiscard]] int widest(int fromMiddle, Belongs belongs) const {
        const int innermost = static_cast<int>(width_ % 2);
        const double part = height_ == 0 ? 0 : static_cast<double>(fromMiddle) / static_cast<double>(height_);
        const double near = static_cast<double>(width_) * std::sqrt(std::max(0.0, 1 - part * part));
        int column = innermost + static_cast<int>(near) / 2 * 2;
        while (column + 2 <= width_ && belongs(column + 2))
            column += 2;
        while (column > innermost && (column > width_ || !belongs(column)))
            column -= 2;
        return column;
    }

    std::int64_t width_; // between the outermost centres
    std::int64_t height_;
};

std::vector<int> ellipseInsets(int width, int height) {
    std::vector<int> insets(static_cast<std::size_t>(height), 0);
    if (width == 1 || height == 1)
        return insets;
    const EllipsePath path(width, height);
    for (int row = 0; row < (height + 1) / 2; ++row) {
        const int inset = path.inset(height - 1 - 2 * row);
        insets[static_cast<std::size_t>(row)] = inset;
        insets[static_cast<std::size_t>(height - 1 - row)] = inset;
    }
    return insets;
}

void addConvex(SpanSet& spans, const std::array<PointD, 4>& corners) {
    double top = corners[0].y;
    double bottom = top;
    for (const PointD& corner : corners) {
        top = std::min(top, corner.y);
        bottom = std::max(bottom, corner.y);
    }
    const int firstRow = std::max(ceiling(top), int{spans.bounds().top});
    const int endRow = std::min(ceiling(bottom), int{spans.bounds().bottom});
    for (int row = firstRow; row < endRow; ++row) {
        double left = infinity;
        double right = -infinity;
        for (std::size_t index = 0; index < corners.size(); ++index) {
            const PointD& a = corners[index];
            const PointD& b = corners[(index + 1) % corners.size()];
            if ((a.y <= row) == (b.y <= row))
                continue;
            const double x = a.x + (row - a.y) * (b.x - a.x) / (b.y - a.y);
            left = std::min(left, x);
            right = std::max(right, x);
        }
        if (left <= right)
            spans.add(row, ceiling(left), ceiling(right));
    }
}

void addSegment(SpanSet& spans, PointD from, PointD to, double width) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    if (length == 0)
        return;
    const double sideX = -(to.y - from.y) / length * width / 2;
    const double sideY = (to.x - from.x) / length * width / 2;
    addConvex(spans, {PointD{from.x + sideX, from.y + sideY},
                      {to.x + sideX, to.y + sideY},
                      {to.x - sideX, to.y - sideY},
                      {from.x - sideX, from.y - sideY}});
}

void addDisc(SpanSet& spans, PointD at, const std::vector<int>& insets) {
    const int size = static_cast<int>(insets.size());
    const int left = ceiling(at.x - size / 2.0);
    const int top = ceiling(at.y - size / 2.0);
    const int first = std::max(0, spans.bounds().top - top);
    const int end = std::min(size, spans.bounds().bottom - top);
    for (int row = first; row < end; ++row) {
        const int inset = insets[static_cast<std::size_t>(row)];
        spans.add(top + row, left + inset, left + size - inset);
    }
}

double angleOf(PointD center, POINT point) { return std::atan2(center.y - point.y, point.x - center.x); }

/// The remainder from 0 to less than a full turn.
double wrappedAngle(double angle) {
    constexpr double turn = 2 * std::numbers::pi;
    const double rest = std::fmod(angle, turn);
    return rest < 0 ? rest + turn : rest;
}

} // namespace

RECT boundsOf(const std::vector<Outline>& outlines) {
    double left = infinity;
    double top = infinity;
    double right = -infinity;
    double bottom = -infinity;
    for (const Outline& outline : outlines) {
        for (const PointD& corner : outline) {
            left = std::min(left, corner.x);
            top = std::min(top, corner.y);
            right = std::max(right, corner.x);
            bottom = std::max(bottom, corner.y);
        }
    }
    if (left > right)
        return {0, 0, 0, 0};
    return {static_cast<LONG>(std::floor(left)), static_cast<LONG>(std::floor(top)), ceiling(right) + 1,
            ceiling(bottom) + 1};
}

Region fillOutlines(const std::vector<Outline>& outlines, int fillMode, const RECT& bounds) {
    std::vector<Side> sides;
    for (const Outline& outline : outlines)
        addSides(outline, sides);
    std::sort(sides.begin(), sides.end(), [](const Side& a, const Side& b) { return a.firstRow < b.firstRow; });
    const RECT all = boundsOf(outlines);
    RegionBuilder builder;
    std::vector<const Side*> active;
    std::vector<Crossing> crossings;
    std::size_t next = 0;
    for (int row = std::max(all.top, bounds.top); row < std::min(all.bottom, bounds.bottom); ++row) {
        for (; next < sides.size() && sides[next].firstRow <= row; ++next)
            active.push_back(&sides[next]);
        std::erase_if(active, [row](const Side* side) { return side->endRow <= row; });
        crossings.clear();
        for (const Side* side : active)
            crossings.push_back({side->at(row), side->direction});
        std::sort(crossings.begin(), crossings.end(), [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
        builder.beginBand(row, row + 1);
        addPieces(builder, crossings, fillMode, bounds);
    }
    return builder.take();
}

std::optional<RoundShape> RoundShape::create(const RECT& box, SIZE ellipse) {
    RoundShape shape;
    shape.box_ = box;
    if (shape.width() < 1 || shape.height() < 1 || shape.width() > longestSide || shape.height() > longestSide)
        return {};
    const int cornerWidth = std::min(std::abs(ellipse.cx), shape.width());
    const int cornerHeight = std::min(std::abs(ellipse.cy), shape.height());
    shape.insets_.assign(static_cast<std::size_t>(shape.height()), 0);
    if (cornerWidth < 1 || cornerHeight < 1)
        return shape;
    const std::vector<int> corner = ellipseInsets(cornerWidth, cornerHeight);
    for (int row = 0; row < (cornerHeight + 1) / 2; ++row) {
        shape.insets_[static_cast<std::size_t>(row)] = corner[static_cast<std::size_t>(row)];
        shape.insets_[static_cast<std::size_t>(shape.height() - 1 - row)] = corner[static_cast<std::size_t>(row)];
    }
    return shape;
}

Region RoundShape::region() const {
    RegionBuilder builder;
    for (int row = 0; row < height(); ++row) {
        const int inset = insets_[static_cast<std::size_t>(row)];
        builder.beginBand(box_.top + row, box_.top + row + 1);
        builder.add(box_.left + inset, box_.right - inset);
    }
    return builder.take();
}

RoundShape::Run RoundShape::runOf(int row) const {
    const int inset = insets_[static_cast<std::size_t>(row)];
    if (row == 0 || row == height() - 1)
        return {inset, (width() - 1) / 2};
    const int outerRow = inTopHalf(row) ? row - 1 : row + 1;
    // The contour goes on where the row farther out leaves off, so that its pixels meet at least at their corners.
    return {inset, std::max(inset, insets_[static_cast<std::size_t>(outerRow)] - 1)};
}

Region RoundShape::interior() const {
    RegionBuilder builder;
    for (int row = 1; row < height() - 1; ++row) {
        const Run run = runOf(row);
        builder.beginBand(box_.top + row, box_.top + row + 1);
        builder.add(box_.left + run.inner + 1, box_.right - run.inner - 1);
    }
    return builder.take();
}

std::vector<POINT> RoundShape::contour() const {
    std::vector<POINT> points;
    const auto addRow = [&](int row, int from, int to) {
        const int step = from <= to ? 1 : -1;
        for (int column = from; column != to + step; column += step)
            points.push_back({box_.left + column, box_.top + row});
    };
    const int last = width() - 1;
    addRow(0, insets_.front(), last - insets_.front());
    for (int row = 1; row < height() - 1; ++row) {
        const Run run = runOf(row);
        if (inTopHalf(row))
            addRow(row, last - run.inner, last - run.outer);
        else
            addRow(row, last - run.outer, last - run.inner);
    }
    if (height() > 1)
        addRow(height() - 1, last - insets_.back(), insets_.back());
    for (int row = height() - 2; row > 0; --row) {
        Run run = runOf(row);
        run.inner = std::min(run.inner, last - run.inner - 1); // never a pixel of the right side again
        if (run.outer > run.inner)
            continue;
        if (inTopHalf(row))
            addRow(row, run.outer, run.inner);
        else
            addRow(row, run.inner, run.outer);
    }
    return points;
}

std::optional<Region> roundRing(const RECT& box, SIZE ellipse, int width) {
    const int before = width / 2;
    const int after = width - 1 - before;
    const RECT outerBox{box.left - before, box.top - before, box.right + after, box.bottom + after};
    const auto outer = RoundShape::create(outerBox, {ellipse.cx + width - 1, ellipse.cy + width - 1});
    if (!outer)
        return {};
    const RECT innerBox{box.left + after + 1, box.top + after + 1, box.right - before - 1, box.bottom - before - 1};
    const SIZE innerEllipse{std::max(ellipse.cx - width - 1, 0), std::max(ellipse.cy - width - 1, 0)};
    const auto inner = RoundShape::create(innerBox, innerEllipse);
    return inner ? outer->region() - inner->region() : outer->region();
}

std::optional<Region> roundRectRegion(const RECT& box, SIZE ellipse) {
    if (box.left >= box.right || box.top >= box.bottom)
        return Region();
    const auto shape = RoundShape::create(box, ellipse);
    return shape ? std::optional(shape->region()) : std::nullopt;
}

std::optional<Region> ellipseRegion(const RECT& box) {
    return roundRectRegion(box, {box.right - box.left, box.bottom - box.top});
}

EllipseArc::EllipseArc(const RECT& box)
    : center_{(box.left + (box.right - 1.0)) / 2, (box.top + (box.bottom - 1.0)) / 2},
      radiusX_((box.right - 1.0 - box.left) / 2), radiusY_((box.bottom - 1.0 - box.top) / 2),
      sweep_(2 * std::numbers::pi) {}

EllipseArc::EllipseArc(const RECT& box, POINT start, POINT end) : EllipseArc(box) {
    start_ = angleOf(center_, start);
    const double sweep = wrappedAngle(angleOf(center_, end) - start_);
    if (sweep > 1e-9)
        sweep_ = sweep;
}

bool EllipseArc::contains(POINT pixel) const {
    constexpr double tolerance = 1e-9;
    const double fromStart = wrappedAngle(angleOf(center_, pixel) - start_ + tolerance);
    return fromStart <= sweep_ + 2 * tolerance;
}

std::vector<PointD> EllipseArc::points() const {
    // About three pixels each, where memory allows.
    const int pieces = static_cast<int>(std::clamp((radiusX_ + radiusY_) * sweep_ / 6, 8.0, 4096.0));
    std::vector<PointD> points;
    for (int index = 0; index <= pieces; ++index) {
        const double angle = start_ + sweep_ * index / pieces;
        // The point of the ellipse that the ray meets, by way of the ellipse's own parameter.
        const double parameter = std::atan2(radiusX_ * std::sin(angle), radiusY_ * std::cos(angle));
        points.push_back({center_.x + radiusX_ * std::cos(parameter), center_.y - radiusY_ * std::sin(parameter)});
    }
    return points;
}

Region strokeRegion(const std::vector<PointD>& points, int width, const RECT& bounds) {
    SpanSet spans(bounds);
    const std::vector<int> disc = ellipseInsets(width, width);
    for (std::size_t index = 0; index < points.size(); ++index) {
        addDisc(spans, points[index], disc);
        if (index > 0)
            addSegment(spans, points[index - 1], points[index], width);
    }
    return spans.take();
}

} // namespace vndk::win32
