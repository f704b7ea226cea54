// Which of many boxes come out within a part of the picture, without looking at all of them.
#pragma once

#include "ge/extents.h"
#include "ge/matrix3d.h"
#include "gs/lens.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <vector>

namespace vndk::gs {

/// A part of the picture, in pixels.
struct PictureBox {
    double left = 0, top = 0, right = 0, bottom = 0;
    bool meets(const PictureBox& other) const {
        return left <= other.right && right >= other.left && top <= other.bottom && bottom >= other.top;
    }
    bool isWithin(const PictureBox& other) const {
        return left >= other.left && right <= other.right && top >= other.top && bottom <= other.bottom;
    }
    double area() const { return (right - left) * (bottom - top); }
    PictureBox common(const PictureBox& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
};

/// The box around a box's picture; an empty one meets nothing.
class BoxProjector {
public:
    /// With a lens as a perspective shows it; what reaches before the eye is everywhere.
    explicit BoxProjector(const AcGeMatrix3d& toDevice, const Lens* lens = nullptr) : m_(toDevice), lens_(lens) {}
    PictureBox operator()(const AcDbExtents& box) const;

private:
    PictureBox throughLens(const PictureBox& box, double low, double high) const;

    AcGeMatrix3d m_;
    const Lens* lens_;
};

/// Neighbours in space stand together: one box around each few of them, and so on upward. Boxes are kept by who calls.
class PartTree {
public:
    /// Boxes that reach without end are found always.
    void build(std::span<const AcDbExtents> boxes);
    /// How many boxes there were; those behind them aren't found here.
    size_t size() const { return places_.size(); }
    /// One of the boxes has become another one.
    void update(std::span<const AcDbExtents> boxes, uint32_t changed);
    /// Appends the numbers of the boxes that meet a part of the picture, in no order.
    void find(std::span<const AcDbExtents> boxes, const BoxProjector& projector, const PictureBox& seen,
              std::vector<uint32_t>& found) const;

private:
    static constexpr size_t kFan = 8;

    AcDbExtents around(std::span<const AcDbExtents> boxes, size_t level, size_t place) const;
    void findBelow(std::span<const AcDbExtents> boxes, const BoxProjector& projector, const PictureBox& seen,
                   size_t level, size_t place, std::vector<uint32_t>& found) const;
    void takeBelow(size_t level, size_t place, std::vector<uint32_t>& found) const;
    size_t sizeOf(size_t level) const { return level == 0 ? order_.size() : levels_[level - 1].size(); }

    std::vector<uint32_t> order_;  // numbers of boxes, neighbours together
    std::vector<uint32_t> places_; // where each number stands in `order_`
    std::vector<std::vector<AcDbExtents>> levels_;
};

} // namespace vndk::gs
