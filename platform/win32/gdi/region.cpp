#include "gdi/region.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <limits>
#include <utility>

namespace vndk::win32 {

namespace {

bool isEmpty(const RECT& rect) { return rect.left >= rect.right || rect.top >= rect.bottom; }

bool overlap(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

RECT intersection(const RECT& a, const RECT& b) {
    return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right), std::min(a.bottom, b.bottom)};
}

/// Walks the bands of a region from the top.
class BandWalk {
public:
    explicit BandWalk(std::span<const RECT> rects) : rects_(rects) { findEnd(); }

    [[nodiscard]] bool done() const { return begin_ == rects_.size(); }
    [[nodiscard]] int top() const { return done() ? std::numeric_limits<int>::max() : rects_[begin_].top; }
    [[nodiscard]] int bottom() const { return done() ? std::numeric_limits<int>::max() : rects_[begin_].bottom; }
    [[nodiscard]] std::span<const RECT> rects() const { return rects_.subspan(begin_, end_ - begin_); }
    void next() {
        begin_ = end_;
        findEnd();
    }

private:
    void findEnd() {
        end_ = begin_;
        while (end_ < rects_.size() && rects_[end_].top == rects_[begin_].top)
            ++end_;
    }

    std::span<const RECT> rects_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
};

int edge(std::span<const RECT> band, std::size_t index) {
    return index % 2 == 0 ? band[index / 2].left : band[index / 2].right;
}

/// Adds the pieces where `belongs(in a, in b)` holds.
template <typename Belongs>
void combineBand(RegionBuilder& builder, std::span<const RECT> a, std::span<const RECT> b, Belongs belongs) {
    std::size_t nextA = 0;
    std::size_t nextB = 0;
    bool inside = false;
    int start = 0;
    while (nextA < 2 * a.size() || nextB < 2 * b.size()) {
        const bool fromA = nextB == 2 * b.size() || (nextA < 2 * a.size() && edge(a, nextA) <= edge(b, nextB));
        const int x = fromA ? edge(a, nextA) : edge(b, nextB);
        if (nextA < 2 * a.size() && edge(a, nextA) == x)
            ++nextA;
        if (nextB < 2 * b.size() && edge(b, nextB) == x)
            ++nextB;
        const bool nowInside = belongs(nextA % 2 == 1, nextB % 2 == 1);
        if (nowInside && !inside)
            start = x;
        else if (!nowInside && inside)
            builder.add(start, x);
        inside = nowInside;
    }
}

template <typename Belongs>
Region combine(std::span<const RECT> rectsA, std::span<const RECT> rectsB, Belongs belongs) {
    RegionBuilder builder;
    BandWalk a(rectsA);
    BandWalk b(rectsB);
    int y = std::min(a.top(), b.top());
    while (!a.done() || !b.done()) {
        const bool inA = a.top() <= y;
        const bool inB = b.top() <= y;
        const int end = std::min(inA ? a.bottom() : a.top(), inB ? b.bottom() : b.top());
        if (inA || inB) {
            builder.beginBand(y, end);
            combineBand(builder, inA ? a.rects() : std::span<const RECT>{}, inB ? b.rects() : std::span<const RECT>{},
                        belongs);
        }
        y = end;
        if (inA && a.bottom() == end)
            a.next();
        if (inB && b.bottom() == end)
            b.next();
    }
    return builder.take();
}

} // namespace

Region::Region(const RECT& rect) {
    if (isEmpty(rect))
        return;
    rects_.push_back(rect);
    bounds_ = rect;
}

std::span<const RECT> Region::rectsBetween(int top, int bottom) const {
    if (bottom <= bounds_.top || top >= bounds_.bottom)
        return {};
    const auto first =
        std::partition_point(rects_.begin(), rects_.end(), [=](const RECT& r) { return r.bottom <= top; });
    const auto last = std::partition_point(first, rects_.end(), [=](const RECT& r) { return r.top < bottom; });
    return {first, last};
}

bool Region::contains(POINT point) const {
    if (rects_.size() == 1)
        return point.x >= bounds_.left && point.x < bounds_.right && point.y >= bounds_.top && point.y < bounds_.bottom;
    if (point.y < bounds_.top || point.y >= bounds_.bottom)
        return false;
    const auto band = rectsBetween(point.y, point.y + 1);
    return std::any_of(band.begin(), band.end(),
                       [&](const RECT& rect) { return point.x >= rect.left && point.x < rect.right; });
}

bool Region::intersects(const RECT& rect) const {
    if (isEmpty(rect) || !overlap(rect, bounds_))
        return false;
    const auto candidates = rectsBetween(rect.top, rect.bottom);
    return std::any_of(candidates.begin(), candidates.end(), [&](const RECT& own) { return overlap(own, rect); });
}

Region& Region::operator|=(const Region& other) {
    if (other.empty() || holds(other.bounds_))
        return *this;
    if (empty() || other.holds(bounds_))
        return *this = Region(other);
    return *this = combine(rects_, other.rects_, [](bool a, bool b) { return a || b; });
}

Region& Region::operator&=(const Region& other) {
    if (!overlap(bounds_, other.bounds_)) {
        clear();
        return *this;
    }
    if (other.holds(bounds_))
        return *this;
    if (rects_.size() == 1 && other.rects_.size() == 1)
        return *this = Region(intersection(bounds_, other.bounds_));
    if (holds(other.bounds_))
        return *this = Region(other);
    return *this = combine(rects_, other.rects_, [](bool a, bool b) { return a && b; });
}

Region& Region::operator-=(const Region& other) {
    if (!overlap(bounds_, other.bounds_))
        return *this;
    return *this = combine(rects_, other.rects_, [](bool a, bool b) { return a && !b; });
}

Region& Region::operator^=(const Region& other) {
    return *this = combine(rects_, other.rects_, [](bool a, bool b) { return a != b; });
}

void Region::offset(int dx, int dy) {
    constexpr std::int64_t lowest = std::numeric_limits<LONG>::min();
    constexpr std::int64_t highest = std::numeric_limits<LONG>::max();
    const bool leavesRange = std::int64_t{bounds_.left} + dx < lowest || std::int64_t{bounds_.right} + dx > highest ||
                             std::int64_t{bounds_.top} + dy < lowest || std::int64_t{bounds_.bottom} + dy > highest;
    if (leavesRange) {
        // Only what stays within the range once it has been moved is kept.
        const auto cut = [=](std::int64_t value) { return static_cast<LONG>(std::clamp(value, lowest, highest)); };
        *this &= Region(RECT{cut(lowest - dx), cut(lowest - dy), cut(highest - dx), cut(highest - dy)});
        if (empty())
            return;
    }
    const auto move = [=](RECT& rect) {
        rect.left += dx;
        rect.top += dy;
        rect.right += dx;
        rect.bottom += dy;
    };
    std::for_each(rects_.begin(), rects_.end(), move);
    if (!empty())
        move(bounds_);
}

void Region::clear() {
    rects_.clear();
    bounds_ = {0, 0, 0, 0};
}

bool Region::operator==(const Region& other) const {
    return std::equal(rects_.begin(), rects_.end(), other.rects_.begin(), other.rects_.end(),
                      [](const RECT& a, const RECT& b) {
                          return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
                      });
}

Region operator|(Region a, const Region& b) { return std::move(a |= b); }
Region operator&(Region a, const Region& b) { return std::move(a &= b); }
Region operator-(Region a, const Region& b) { return std::move(a -= b); }

void RegionBuilder::beginBand(int top, int bottom) {
    endBand();
    assert((region_.rects_.empty() || top >= region_.rects_.back().bottom) && "bands come from the top down");
    top_ = top;
    bottom_ = bottom;
}

void RegionBuilder::add(int left, int right) {
    if (left >= right || top_ >= bottom_)
        return;
    auto& rects = region_.rects_;
    if (rects.size() > band_ && rects.back().right >= left) {
        assert(rects.back().left <= left && "pieces of a band come from left to right");
        rects.back().right = std::max(rects.back().right, right);
    } else {
        rects.push_back({left, top_, right, bottom_});
    }
}

void RegionBuilder::endBand() {
    auto& rects = region_.rects_;
    const std::size_t count = rects.size() - band_;
    if (count == 0)
        return;
    const bool continues =
        band_ > lastBand_ && band_ - lastBand_ == count && rects[lastBand_].bottom == top_ &&
        std::equal(rects.begin() + static_cast<std::ptrdiff_t>(lastBand_),
                   rects.begin() + static_cast<std::ptrdiff_t>(band_),
                   rects.begin() + static_cast<std::ptrdiff_t>(band_),
                   [](const RECT& a, const RECT& b) { return a.left == b.left && a.right == b.right; });
    if (continues) {
        rects.resize(band_);
        for (std::size_t index = lastBand_; index < band_; ++index)
            rects[index].bottom = bottom_;
    } else {
        lastBand_ = band_;
        band_ = rects.size();
    }
}

Region RegionBuilder::take() {
    endBand();
    Region result = std::exchange(region_, {});
    lastBand_ = band_ = 0;
    if (result.rects_.empty())
        return result;
    result.bounds_ = result.rects_.front();
    result.bounds_.bottom = result.rects_.back().bottom;
    for (const RECT& rect : result.rects_) {
        result.bounds_.left = std::min(result.bounds_.left, rect.left);
        result.bounds_.right = std::max(result.bounds_.right, rect.right);
    }
    return result;
}

SpanSet::SpanSet(const RECT& bounds) : bounds_(bounds) {
    if (isEmpty(bounds_))
        bounds_ = {0, 0, 0, 0};
    rows_.resize(static_cast<std::size_t>(bounds_.bottom - bounds_.top));
}

void SpanSet::add(int y, int left, int right) {
    left = std::max(left, bounds_.left);
    right = std::min(right, bounds_.right);
    if (y >= bounds_.top && y < bounds_.bottom && left < right)
        rows_[static_cast<std::size_t>(y - bounds_.top)].push_back({left, right});
}

Region SpanSet::take() {
    RegionBuilder builder;
    for (int y = bounds_.top; y < bounds_.bottom; ++y) {
        auto& row = rows_[static_cast<std::size_t>(y - bounds_.top)];
        std::sort(row.begin(), row.end(), [](const Span& a, const Span& b) { return a.left < b.left; });
        builder.beginBand(y, y + 1);
        for (const Span& span : row)
            builder.add(span.left, span.right);
        row.clear();
    }
    return builder.take();
}

} // namespace vndk::win32
