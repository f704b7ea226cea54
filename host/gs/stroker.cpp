#include "gs/stroker.h"

#include "gs/lens.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace vndk::gs {

namespace {

constexpr double kFinestPeriod = 3; // pixels; a finer pattern looks like an unbroken line

double lengthOf(const Spot& v) { return std::sqrt(v.x * v.x + v.y * v.y); }

} // namespace

double Projector::scale() const {
    return std::max({lengthOf((*this)(AcGeVector3d::kXAxis)), lengthOf((*this)(AcGeVector3d::kYAxis)),
                     lengthOf((*this)(AcGeVector3d::kZAxis))});
}

Stroker::Stroker(Raster& raster, const Projector& projector, const Style& style)
    : raster_(raster), projector_(projector), style_(style) {
    if (!style.pattern)
        return;
    const double period = style.pattern->length * style.patternScale;
    if (period * projector.scale() >= kFinestPeriod && std::isfinite(period))
        period_ = period;
}

void Stroker::piece(const Spot& a, const Spot& b) const {
    raster_.line(a, b, style_.color);
    if (style_.width <= 1)
        return;
    const Spot along{b.x - a.x, b.y - a.y};
    const double length = lengthOf(along);
    if (!(length > 0))
        return;
    const double half = style_.width / 2.0;
    const Spot side{-along.y / length * half, along.x / length * half};
    const std::array corners = {Spot{a.x + side.x, a.y + side.y, a.z}, Spot{b.x + side.x, b.y + side.y, b.z},
                                Spot{b.x - side.x, b.y - side.y, b.z}, Spot{a.x - side.x, a.y - side.y, a.z}};
    raster_.fill(corners, std::array{corners.size()}, style_.color);
}

void Stroker::dashed(const Spot& a, const Spot& b) const {
    const double scale = projector_.scale(), length = lengthOf({b.x - a.x, b.y - a.y});
    if (period_ > 0 && scale > 0)
        drawDashes(a, b, length / scale, 0, length / scale);
    else
        piece(a, b);
}

void Stroker::draw(std::span<const AcGePoint3d> points) const {
    if (points.empty())
        return;
    if (points.size() == 1)
        return raster_.dot(projector_(points[0]), style_.color);
    if (period_ > 0)
        return drawBroken(points);
    Spot last = projector_(points[0]);
    for (const AcGePoint3d& point : points.subspan(1)) {
        const Spot next = projector_(point);
        piece(last, next);
        last = next;
    }
}

void Stroker::drawBroken(std::span<const AcGePoint3d> points) const {
    double total = 0;
    for (size_t i = 0; i + 1 < points.size(); ++i)
        total += points[i].distanceTo(points[i + 1]);
    double begin = 0;
    for (size_t i = 0; i + 1 < points.size(); ++i) {
        const double length = points[i].distanceTo(points[i + 1]);
        drawDashes(projector_(points[i]), projector_(points[i + 1]), length, begin, total);
        begin += length;
    }
}

/// The dashes of a piece that begins that far along its run. The run begins and ends with the same share of a dash.
void Stroker::drawDashes(const Spot& a, const Spot& b, double length, double begin, double total) const {
    const PixelRect& clip = raster_.clip();
    double from = 0, to = 1;
    // In perspective a piece may be seen wherever it lies.
    if (!raster_.lens() && !clipLine(a, b, clip.left, clip.top, clip.right + 1.0, clip.bottom + 1.0, from, to))
        return;
    const double first = std::max(style_.pattern->dashes[0] * style_.patternScale, 0.0);
    const double periods = std::floor(total / period_);
    if (!(length > 0) || !(periods >= 1))
        return piece(a, b);
    const double margin = (total - periods * period_ + first) / 2; // the dash at both ends
    const double patternBegin = margin - first, patternEnd = total - margin;
    const double seenFrom = begin + from * length, seenTo = begin + to * length;
    const auto mark = [&](double low, double high) {
        low = std::max(low, seenFrom);
        high = std::min(high, seenTo);
        if (low <= high)
            piece(between(a, b, (low - begin) / length), between(a, b, (high - begin) / length));
    };
    if (seenFrom <= margin)
        mark(0, margin);
    if (seenTo >= patternEnd)
        mark(patternEnd, total);
    double at = patternBegin + std::max(std::floor((seenFrom - patternBegin) / period_), 0.0) * period_;
    // Each turn is a period of at least some pixels on the screen; the guard is for what rounding makes of huge
    // numbers.
    constexpr int kMostPeriods = 20000;
    for (int i = 0; i < kMostPeriods && at < std::min(seenTo, patternEnd); ++i)
        for (const double dash : style_.pattern->dashes) {
            const double end = at + std::fabs(dash) * style_.patternScale;
            if (dash >= 0 && at < patternEnd)
                mark(at, std::min(end, patternEnd));
            at = end;
        }
}

} // namespace vndk::gs
