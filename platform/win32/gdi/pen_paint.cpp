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

Steps intersected(Steps a, Steps b) { return {std::max(a.first, b.first), std::min(a.end, b.end)}; }

/// A line taken apart into steps: each one moves a pixel along the longer axis, and now and then one along the shorter.
/// At step i the exact place on the shorter axis is i * rise / length; halves go to the smaller coordinate, whatever
/// the line's direction.
class LineSteps {
public:
    LineSteps(POINT from, POINT to) : from_(from) {
        const std::int64_t dx = std::int64_t{to.x} - from.x;
        const std::int64_t dy = std::int64_t{to.y} - from.y;
        alongX_ = std::abs(dx) >= std::abs(dy);
        length_ = alongX_ ? std::abs(dx) : std::abs(dy);
        forward_ = (alongX_ ? dx : dy) < 0 ? -1 : 1;
        rise_ = alongX_ ? dy : dx;
    }

    /// The steps whose pixels lie in the rectangle.
    [[nodiscard]] Steps within(const RECT& rect) const {
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

    /// `plot(x, y, step)` for each step. REQUIRES: not empty.
    template <typename Plot>
    void walk(Steps steps, Plot plot) const {
        const std::int64_t scaled = 2 * steps.first * rise_ - length_;
        std::int64_t shift = ceilDivide(scaled, 2 * length_);
        std::int64_t rest = shift * 2 * length_ - scaled; // from 0 to less than 2 * length
        std::int64_t place = steps.first * forward_;
        for (std::int64_t step = steps.first; step < steps.end; ++step, place += forward_) {
            if (alongX_)
                plot(static_cast<int>(from_.x + place), static_cast<int>(from_.y + shift), step);
            else
                plot(static_cast<int>(from_.x + shift), static_cast<int>(from_.y + place), step);
            rest -= 2 * rise_;
            if (rest < 0) {
                rest += 2 * length_;
                ++shift;
            } else if (rest >= 2 * length_) {
                rest -= 2 * length_;
                --shift;
            }
        }
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
    bool alongX_;
    int forward_;
    std::int64_t length_;
    std::int64_t rise_;
};

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

void PenPaint::plot(int x, int y, std::int64_t step) const {
    const bool inDash =
        !dashed() ||
        dashes_[static_cast<std::size_t>((phase_ + step) % static_cast<std::int64_t>(dashes_.size()))] != 0;
    const PixelMix mix = inDash ? mix_ : gapMix_;
    if (!mix.nothing())
        mixPixels(context_.surface(), x, y, 1, mix);
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
    if (nothing())
        return;
    BrushObject brush;
    brush.color = color_;
    paintRegion(context_, strokeRegion(points, width_, context_.reach().bounds()), BrushPaint(context_, brush),
                context_.state.rop2);
}

void PenPaint::pixels(std::span<const POINT> points) {
    if (nothing())
        return;
    const Region& reach = context_.reach();
    for (const POINT& point : points) {
        if (reach.contains(point))
            plot(point.x, point.y, 0);
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
    const std::uint32_t keep = mix_.keep & ~surface.format.always;
    const std::uint32_t flip = mix_.flip | surface.format.always;
    const int top = std::min(from.y, to.y);
    const int bottom = std::max(from.y, to.y) + 1;
    for (const RECT& part : context_.reach().rectsBetween(top, bottom)) {
        const Steps steps = line.within(part);
        if (steps.first >= steps.end)
            continue;
        if (surface.format.bits == 32 && !dashed())
            line.walk(steps, [&](int x, int y, std::int64_t /*step*/) {
                std::uint32_t& pixel = surface.row32(y)[x];
                pixel = (pixel & keep) ^ flip;
            });
        else
            line.walk(steps, [this](int x, int y, std::int64_t step) { plot(x, y, step); });
    }
}

} // namespace vndk::win32
