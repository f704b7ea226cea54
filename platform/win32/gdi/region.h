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

    Region& operator|=(const Region& other);
    Region& operator&=(const Region& other);
    Region& operator-=(const Region& other);
    Region& operator^=(const Region& other);
    void offset(int dx, int dy);
    void clear();

    bool operator==(const Region& other) const;

private:
    std::vector<RECT> rects_;
    RECT bounds_{0, 0, 0, 0};
};

[[nodiscard]] Region operator|(Region a, const Region& b);
[[nodiscard]] Region operator&(Region a, const Region& b);
[[nodiscard]] Region operator-(Region a, const Region& b);

} // namespace vndk::win32
