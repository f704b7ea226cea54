// The geometry of figures: which pixels an ellipse, a rounded rectangle, a polygon or a thick line covers. Nothing is
// painted here. Pixel centres have whole coordinates.
#pragma once

#include "gdi/region.h"
#include "win32/types.h"

#include <optional>
#include <vector>

namespace vndk::win32 {

struct PointD {
    double x = 0;
    double y = 0;
};

/// Corners of a closed outline; the last one is joined to the first.
using Outline = std::vector<PointD>;

/// Of all corners; `right` and `bottom` lie outside.
[[nodiscard]] RECT boundsOf(const std::vector<Outline>& outlines);
/// The pixels whose centres lie inside, or on a left or upper edge. Only rows and columns within `bounds` are looked
/// at. `fillMode` is ALTERNATE or WINDING.
[[nodiscard]] Region fillOutlines(const std::vector<Outline>& outlines, int fillMode, const RECT& bounds);

/// Ellipses and rounded rectangles: symmetric, each row one piece.
class RoundShape {
public:
    /// The corners are quarters of an ellipse of the given size. Nothing for an empty rectangle and for one with a
    /// side longer than 2^15 pixels.
    [[nodiscard]] static std::optional<RoundShape> create(const RECT& box, SIZE ellipse);

    [[nodiscard]] Region region() const;
    /// The pixels of its edge, each once, in clockwise order.
    [[nodiscard]] std::vector<POINT> contour() const;
    /// What the contour leaves.
    [[nodiscard]] Region interior() const;

private:
    /// Columns of the contour at the left end of a row, from the box's left edge, both ends inside.
    struct Run {
        int outer;
        int inner;
    };
    [[nodiscard]] Run runOf(int row) const;
    [[nodiscard]] bool inTopHalf(int row) const { return 2 * row < height() - 1; }
    [[nodiscard]] int width() const { return box_.right - box_.left; }
    [[nodiscard]] int height() const { return box_.bottom - box_.top; }

    RECT box_{};
    std::vector<int> insets_; // of each row, at both ends
};

/// What a wide pen covers along the edge of a rounded shape. Nothing for an empty rectangle and a shape that is too
/// large. REQUIRES: the ellipse is no larger than the box.
[[nodiscard]] std::optional<Region> roundRing(const RECT& box, SIZE ellipse, int width);

/// Nothing for a shape that is too large; the empty region for an empty rectangle.
[[nodiscard]] std::optional<Region> ellipseRegion(const RECT& box);
[[nodiscard]] std::optional<Region> roundRectRegion(const RECT& box, SIZE ellipse);

/// A part of an ellipse's outline. Angles in radians, counterclockwise as seen on the screen.
class EllipseArc {
public:
    /// From the ray through `start` to that through `end`, counterclockwise. REQUIRES: `box` isn't empty.
    EllipseArc(const RECT& box, POINT start, POINT end);
    /// All of it.
    explicit EllipseArc(const RECT& box);

    [[nodiscard]] PointD center() const { return center_; }
    /// Does the ray from the centre through the pixel meet this part?
    [[nodiscard]] bool contains(POINT pixel) const;
    /// The outline as short straight pieces, counterclockwise, with both ends.
    [[nodiscard]] std::vector<PointD> points() const;

private:
    PointD center_;
    double radiusX_;
    double radiusY_;
    double start_ = 0;
    double sweep_;
};

/// The pixels that a round pen covers along the points. Only what lies within `bounds` is looked at.
[[nodiscard]] Region strokeRegion(const std::vector<PointD>& points, int width, const RECT& bounds);

} // namespace vndk::win32
