#include "gdi/pen_paint.h"

#include "gdi/painter.h"

#include <algorithm>
#include <cassert>
#include <initializer_list>

namespace vndk::win32 {

namespace {

std::int64_t floorDivide(std::int64_t dividend, std::int64_t divisor) {
    const std::int64_t quotient = dividend / divisor;
    return quotient - (dividend % divisor < 0 ? 1 : 0);
}

std::int64_t ceilDivide(std::int64_t dividend, std::int64_t divisor) { return -floorDivide(-dividend, divisor); }

struct Steps {
    std::int64_t first;
    std::int64_t end;
};

bool holds(const RECT& rect, POINT point) {
    return point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
}

Steps intersected(Steps a, Steps b) { return {std::max(a.first, b.first), std::min(a.end, b.end)}; }

/// A line taken apart into steps: each one moves a pixel along the longer axis, and now and then one along the shorter.
/// At step i the exact place on the shorter axis is i * rise / length; halves go to the smaller coordinate, whatever
/// the line's direction.
class LineSteps {
public:
    LineSteps(POINT from, POINT to) : from_(from), to_(to) {
        const std::int64_t dx = std::int64_t{to.x} - from.x;
        const std::int64_t dy = std::int64_t{to.y} - from.y;
        alongX_ = std::abs(dx) >= std::abs(dy);
        length_ = alongX_ ? std::abs(dx) : std::abs(dy);
        forward_ = (alongX_ ? dx : dy) < 0 ? -1 : 1;
        rise_ = alongX_ ? dy : dx;
    }

    /// The steps whose pixels lie in the rectangle.
    [[nodiscard]] Steps within(const RECT& rect) const {
        if (holds(rect, from_) && holds(rect, to_))
            return {0, length_};
        const int from = alongX_ ? from_.x : from_.y;
        const int fromAcross = alongX_ ? from_.y : from_.x;
        const int low = alongX_ ? rect.left : rect.top;
        const int high = alongX_ ? rect.right : rect.bottom;
        const int lowAcross = alongX_ ? rect.top : rect.left;
        const int highAcross = alongX_ ? rect.bottom : rect.right;
        const Steps along = forward_ > 0 ? Steps{std::int64_t{low} - from, std::int64_t{high} - from}
                                         : Steps{std::int64_t{from} - high + 1, std::int64_t{from} - low + 1};
        return intersected(intersected({0, length_}, along),
                           across(std::int64_t{lowAcross} - fromAcross, std::int64_t{highAcross} - fromAcross));
    }

    /// Goes along the steps one by one. Without a branch, for whether the line shifts is hard to foresee.
    class Walker {
    public:
        Walker(const LineSteps& line, std::int64_t first) : full_(2 * line.length_), part_(2 * std::abs(line.rise_)) {
            const std::int64_t scaled = 2 * first * line.rise_ - line.length_;
            // A line's first pixel has no shift: its scaled place is half a length below it.
            const std::int64_t shift = first == 0 ? 0 : ceilDivide(scaled, full_);
            const std::int64_t rest = shift * full_ - scaled; // from 0 to less than `full_`
            left_ = line.rise_ >= 0 ? rest : full_ - 1 - rest;
            const auto along = static_cast<int>(first * line.forward_);
            const auto across = static_cast<int>(shift);
            place_ = line.alongX_ ? POINT{line.from_.x + along, line.from_.y + across}
                                  : POINT{line.from_.x + across, line.from_.y + along};
        }

        /// Of the first step.
        [[nodiscard]] POINT place() const { return place_; }
        /// Takes a step; all ones when the line shifts with it, else 0.
        std::int64_t advance() {
            left_ -= part_;
            const std::int64_t shifts = left_ >> 63;
            left_ += shifts & full_;
            return shifts;
        }

    private:
        std::int64_t full_;
        std::int64_t part_;
        std::int64_t left_; // until the next shift
        POINT place_;
    };

    /// What a step adds, and what a shift adds to it.
    [[nodiscard]] POINT stepBy() const { return alongX_ ? POINT{forward_, 0} : POINT{0, forward_}; }
    [[nodiscard]] POINT shiftBy() const {
        const int side = rise_ < 0 ? -1 : 1;
        return alongX_ ? POINT{0, side} : POINT{side, 0};
    }

private:
    /// The steps whose shift lies from `low` to `high` (outside).
    [[nodiscard]] Steps across(std::int64_t low, std::int64_t high) const {
        const std::int64_t belowLow = length_ * (2 * low - 1); // 2 * step * rise must be above this
        const std::int64_t limit = length_ * (2 * high - 1);   // and not above this
        if (rise_ == 0)
            return low <= 0 && 0 < high ? Steps{0, length_} : Steps{0, 0};
        if (rise_ > 0)
            return {floorDivide(belowLow, 2 * rise_) + 1, floorDivide(limit, 2 * rise_) + 1};
        return {ceilDivide(-limit, -2 * rise_), ceilDivide(-belowLow, -2 * rise_)};
    }

    POINT from_;
    POINT to_;
    bool alongX_;
    int forward_;
    std::int64_t length_;
    std::int64_t rise_;
};

/// REQUIRES: a surface of 32 bits, and steps whose pixels lie within it.
void mixLine(const Surface& surface, const LineSteps& line, Steps steps, PixelMix mix) {
    const std::uint32_t keep = mix.keep & ~surface.format.always;
    const std::uint32_t flip = mix.flip | surface.format.always;
    const std::ptrdiff_t rowStep = surface.stride / 4;
    const auto offsetOf = [rowStep](POINT by) { return by.y * rowStep + by.x; };
    LineSteps::Walker walker(line, steps.first);
    std::uint32_t* top = surface.row32(0);
    std::ptrdiff_t at = offsetOf(walker.place());
    const std::ptrdiff_t along = offsetOf(line.stepBy());
    const std::ptrdiff_t across = offsetOf(line.shiftBy());
    for (std::int64_t step = steps.first; step < steps.end; ++step) {
        top[at] = (top[at] & keep) ^ flip;
        at += along + (walker.advance() & across);
    }
}

/// `plot(place, step)` for each of the steps.
template <typename Plot>
void plotLine(const LineSteps& line, Steps steps, Plot plot) {
    LineSteps::Walker walker(line, steps.first);
    const POINT along = line.stepBy();
    const POINT across = line.shiftBy();
    POINT place = walker.place();
    for (std::int64_t step = steps.first; step < steps.end; ++step) {
        plot(place, step);
        const int shifts = static_cast<int>(walker.advance());
        place.x += along.x + (shifts & across.x);
        place.y += along.y + (shifts & across.y);
    }
}

/// Lengths of dashes and gaps in turn, spelt out by pixel.
std::vector<std::uint8_t> spellOut(std::initializer_list<int> lengths) {
    std::vector<std::uint8_t> dashes;
    std::uint8_t drawn = 1;
    for (int length : lengths) {
        dashes.insert(dashes.end(), static_cast<std::size_t>(length), drawn);
        drawn ^= 1;
    }
    return dashes;
}

std::vector<std::uint8_t> dashesOf(UINT style) {
    switch (style) {
    case PS_DASH:
        return spellOut({18, 6});
    case PS_DOT:
        return spellOut({3, 3});
    case PS_DASHDOT:
        return spellOut({9, 6, 3, 6});
    case PS_DASHDOTDOT:
        return spellOut({9, 3, 3, 3, 3, 3});
    default:
        return {};
    }
}

} // namespace

PenPaint::PenPaint(const DeviceContext& context) : context_(context) {
    const auto* pen = context.state.pen.get<PenObject>();
    assert(pen != nullptr && "a context always has a pen");
    style_ = pen->style;
    width_ = pen->width;
    color_ = pen->fromContext ? context.state.penColor : pen->color;
    mix_ = mixOf(context.state.rop2, context.pixelOf(color_));
    if (width_ == 1)
        dashes_ = dashesOf(style_);
    if (dashed())
        gapMix_ = context.state.backgroundMode == OPAQUE
                      ? mixOf(context.state.rop2, context.pixelOf(context.state.backgroundColor))
                      : mixOf(R2_NOP, 0);
}

void PenPaint::plot(POINT place, std::int64_t step) const {
    const bool inDash =
        !dashed() ||
        dashes_[static_cast<std::size_t>((phase_ + step) % static_cast<std::int64_t>(dashes_.size()))] != 0;
    const PixelMix mix = inDash ? mix_ : gapMix_;
    if (!mix.nothing())
        mixPixels(context_.surface(), place.x, place.y, 1, mix);
}

void PenPaint::polyline(std::span<const POINT> points) {
    if (nothing() || points.size() < 2)
        return;
    if (width_ > 1) {
        std::vector<PointD> places;
        for (const POINT& point : points)
            places.push_back({double(point.x), double(point.y)});
        stroke(places);
        return;
    }
    for (std::size_t index = 1; index < points.size(); ++index)
        segment(points[index - 1], points[index]);
}

void PenPaint::stroke(const std::vector<PointD>& points) const {
    if (!nothing())
        region(strokeRegion(points, width_, context_.reach().bounds()));
}

void PenPaint::region(const Region& region) const {
    BrushObject brush;
    brush.color = color_;
    if (!nothing())
        paintRegion(context_, region, BrushPaint(context_, brush), context_.state.rop2);
}

void PenPaint::pixels(std::span<const POINT> points) {
    if (nothing())
        return;
    const Region& reach = context_.reach();
    for (const POINT& point : points) {
        if (reach.contains(point))
            plot(point, 0);
        ++phase_;
    }
}

void PenPaint::segment(POINT from, POINT to) {
    if ((from.x == to.x || from.y == to.y) && !dashed())
        straight(from, to);
    else
        sloping(from, to);
    phase_ += std::max(std::abs(std::int64_t{to.x} - from.x), std::abs(std::int64_t{to.y} - from.y));
}

void PenPaint::straight(POINT from, POINT to) {
    RECT rect{from.x, from.y, from.x + 1, from.y + 1};
    if (to.x > from.x)
        rect.right = to.x;
    else if (to.x < from.x)
        rect.left = to.x + 1;
    else if (to.y > from.y)
        rect.bottom = to.y;
    else if (to.y < from.y)
        rect.top = to.y + 1;
    else
        return;
    eachVisible(context_, rect, [this](const RECT& piece) {
        for (int y = piece.top; y < piece.bottom; ++y)
            mixPixels(context_.surface(), piece.left, y, piece.right - piece.left, mix_);
    });
}

void PenPaint::sloping(POINT from, POINT to) {
    if (from.x == to.x && from.y == to.y)
        return;
    const LineSteps line(from, to);
    const Surface& surface = context_.surface();
    const int top = std::min(from.y, to.y);
    const int bottom = std::max(from.y, to.y) + 1;
    for (const RECT& part : context_.reach().rectsBetween(top, bottom)) {
        const Steps steps = line.within(part);
        if (steps.first >= steps.end)
            continue;
        if (surface.format.bits == 32 && !dashed())
            mixLine(surface, line, steps, mix_);
        else
            plotLine(line, steps, [this](POINT place, std::int64_t step) { plot(place, step); });
    }
}

} // namespace vndk::win32
