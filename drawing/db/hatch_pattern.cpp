// The lines of hatch patterns, cut at the contours.
#include "db/hatch_contours.h"

#include <algorithm>

namespace vndk::db {

namespace {

constexpr size_t kMostCuts = 4'000'000; // of lines with sides of contours

AcGeVector2d along(double angle) { return {std::cos(angle), std::sin(angle)}; }
double cross(const AcGeVector2d& a, const AcGeVector2d& b) { return a.x * b.y - a.y * b.x; }

/// A family of parallel lines over the contours.
class LineFamily {
public:
    LineFamily(const AcDbHatch::PatternLine& line, const std::vector<Contour>& contours)
        : line_(line), direction_(along(line.angle)), distance_(cross(direction_, line.offset)) {
        if (std::fabs(distance_) < 1e-12 || !std::isfinite(distance_))
            return;
        double low = 1e300, high = -1e300;
        for (const Contour& contour : contours)
            for (const AcGePoint2d& p : contour) {
                low = std::min(low, numberOf(p));
                high = std::max(high, numberOf(p));
            }
        if (low > high || std::fabs(low) > 1e15 || std::fabs(high) > 1e15)
            return;
        first_ = std::ceil(low);
        count_ = std::floor(high) - first_ + 1;
    }
    double count() const { return std::max(count_, 0.0); }

    /// Cuts each `step`th line with the sides of the contours, and gives the dashes of what lies within.
    void draw(const std::vector<Contour>& contours, double step, size_t most, PatternDashes& out) {
        const size_t lines = static_cast<size_t>(std::ceil(count() / step));
        std::vector<std::pair<uint32_t, double>> cuts;
        for (const Contour& contour : contours)
            for (size_t i = 0; i < contour.size() && cuts.size() < kMostCuts; ++i)
                cutSide(contour[i], contour[(i + 1) % contour.size()], step, lines, cuts);
        std::sort(cuts.begin(), cuts.end());
        for (size_t i = 0; i + 1 < cuts.size(); ++i)
            if (cuts[i].first == cuts[i + 1].first) {
                addDashes(first_ + cuts[i].first * step, cuts[i].second, cuts[i + 1].second, most, out);
                ++i;
            }
    }

private:
    /// Which line of the family goes through a point; a broken number lies between two.
    double numberOf(const AcGePoint2d& p) const { return cross(direction_, p - line_.base) / distance_; }
    AcGePoint2d originOf(double number) const { return line_.base + line_.offset * number; }

    void cutSide(const AcGePoint2d& a, const AcGePoint2d& b, double step, size_t lines,
                 std::vector<std::pair<uint32_t, double>>& cuts) const {
        double from = (numberOf(a) - first_) / step, to = (numberOf(b) - first_) / step;
        AcGePoint2d start = a, end = b;
        if (from > to) {
            std::swap(from, to);
            std::swap(start, end);
        }
        // Of the two ends of a side the lower one counts as on it, so that a corner is met once or twice as it must.
        const double last = std::min(std::ceil(to), static_cast<double>(lines));
        for (double i = std::max(std::ceil(from), 0.0); i < last && cuts.size() < kMostCuts; ++i) {
            const AcGePoint2d at = start + (end - start) * ((i - from) / (to - from));
            const double place = (at - originOf(first_ + i * step)).dotProduct(direction_);
            cuts.emplace_back(static_cast<uint32_t>(i), place);
        }
    }

    void addDashes(double number, double from, double to, size_t most, PatternDashes& out) const {
        const AcGePoint2d origin = originOf(number);
        const auto add = [&](double start, double end) {
            if (out.dashes.size() < most)
                out.dashes.push_back({origin + direction_ * start, origin + direction_ * end});
            else
                out.complete = false;
        };
        double period = 0;
        for (const double dash : line_.dashes)
            period += std::fabs(dash);
        if (line_.dashes.empty() || !(period > 0))
            return add(from, to);
        const double left = static_cast<double>(most - std::min(most, out.dashes.size()));
        if (!((to - from) / period * static_cast<double>(line_.dashes.size()) < left)) {
            out.complete = false;
            return add(from, to);
        }
        for (double at = std::floor(from / period) * period; at < to;) {
            const double before = at;
            for (const double dash : line_.dashes) {
                const double end = at + std::fabs(dash);
                if (dash >= 0 && end >= from && at <= to && (dash == 0 || (end > from && at < to)))
                    add(std::max(at, from), std::min(end, to));
                at = end;
            }
            if (!(at > before))
                return; // too far away for the pattern's length to count
        }
    }

    const AcDbHatch::PatternLine& line_;
    AcGeVector2d direction_;
    double distance_;
    double first_ = 0, count_ = 0;
};

} // namespace

PatternDashes patternDashes(const AcDbHatch::Data& hatch, size_t most) {
    PatternDashes result;
    const std::vector<Contour> contours = filledContours(hatch);
    std::vector<LineFamily> families;
    double lines = 0, sides = 0;
    for (const AcDbHatch::PatternLine& line : hatch.lines)
        lines += families.emplace_back(line, contours).count();
    for (const Contour& contour : contours)
        sides += static_cast<double>(contour.size());
    const double share = static_cast<double>(most) / static_cast<double>(std::max<size_t>(1, families.size()));
    for (LineFamily& family : families) {
        // No more lines than the dashes that are allowed, and no more than can be cut with all the sides.
        const double allowed = std::max(1.0, std::min(share, kMostCuts / std::max(sides, 1.0) * 4));
        const double step = lines > allowed ? std::max(1.0, std::ceil(family.count() / allowed)) : 1;
        result.complete = result.complete && step == 1;
        family.draw(contours, step, most, result);
    }
    return result;
}

} // namespace vndk::db
