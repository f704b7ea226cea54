// A set of pixels as rectangles in bands: sorted by top, then left; rectangles of a band share top and bottom; no two
// touch or overlap. Equal sets have equal lists.
#pragma once

#include "win32/types.h"

#include <span>
#include <vector>

namespace vndk::win32 {

class Region {
public:
    Region() = default;
    /// An empty or reversed rectangle gives the empty region.
    explicit Region(const RECT& rect);

    [[nodiscard]] bool empty() const { return rects_.empty(); }
    /// Of the empty region: 0, 0, 0, 0.
    [[nodiscard]] RECT bounds() const { return bounds_; }
    [[nodiscard]] std::span<const RECT> rects() const { return rects_; }
    /// NULLREGION 1, SIMPLEREGION 2 (one rectangle), COMPLEXREGION 3.
    [[nodiscard]] int complexity() const { return rects_.empty() ? 1 : rects_.size() == 1 ? 2 : 3; }

    [[nodiscard]] bool contains(POINT point) const;
    /// Does any pixel of the rectangle belong to the region?
    [[nodiscard]] bool intersects(const RECT& rect) const;
    /// Is this one rectangle that holds all of `rect`? (No also where several together do.)
    [[nodiscard]] bool holds(const RECT& rect) const {
        return rects_.size() == 1 && rect.left >= bounds_.left && rect.top >= bounds_.top &&
               rect.right <= bounds_.right && rect.bottom <= bounds_.bottom;
    }
    /// The rectangles that can meet rows `top` to `bottom` (outside): the list's part to walk.
    [[nodiscard]] std::span<const RECT> rectsBetween(int top, int bottom) const;

    Region& operator|=(const Region& other);
    Region& operator&=(const Region& other);
    Region& operator-=(const Region& other);
    Region& operator^=(const Region& other);
    /// What leaves the range of coordinates is lost.
    void offset(int dx, int dy);
    void clear();

    bool operator==(const Region& other) const;

private:
    friend class RegionBuilder;

    std::vector<RECT> rects_;
    RECT bounds_{0, 0, 0, 0};
};

[[nodiscard]] Region operator|(Region a, const Region& b);
[[nodiscard]] Region operator&(Region a, const Region& b);
[[nodiscard]] Region operator-(Region a, const Region& b);

/// Builds a region from the top down.
///
///     RegionBuilder builder;
///     builder.beginBand(y, y + 1);
///     builder.add(left, right);          // within a band from left to right; pieces that touch become one
///     Region region = builder.take();
class RegionBuilder {
public:
    /// REQUIRES: not above the end of the band before.
    void beginBand(int top, int bottom);
    /// Nothing when left isn't below right. REQUIRES: not left of the beginning of the piece before.
    void add(int left, int right);
    [[nodiscard]] Region take();

private:
    void endBand();

    Region region_;
    std::size_t lastBand_ = 0; // where the band before the current one begins
    std::size_t band_ = 0;     // where the current band begins
    int top_ = 0;
    int bottom_ = 0;
};

/// Collects pieces of rows in any order.
class SpanSet {
public:
    /// Pieces outside of the bounds are cut off.
    explicit SpanSet(const RECT& bounds);

    /// Columns `left` to `right` (outside).
    void add(int y, int left, int right);
    [[nodiscard]] const RECT& bounds() const { return bounds_; }
    [[nodiscard]] Region take();

private:
    struct Span {
        int left;
        int right;
    };
    RECT bounds_;
    std::vector<std::vector<Span>> rows_;
};

} // namespace vndk::win32
