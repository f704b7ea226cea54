// Lines and areas straight into pixels. Coordinates are pixels with the origin at the upper left, y downward; a pixel
// reaches from its number to the next one. They may lie anywhere: everything is clipped before it becomes whole
// numbers, and what isn't a number draws nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vndk::gs {

struct Spot {
    double x = 0, y = 0;
};

/// Pixels that lie inside, both corners included.
struct PixelRect {
    int left = 0, top = 0, right = -1, bottom = -1;
};

/// The part of a line within a rectangle, as shares of its length. False: nothing is.
bool clipLine(const Spot& a, const Spot& b, double left, double top, double right, double bottom, double& from,
              double& to);

class Raster {
public:
    /// Draws within `clip` alone, which lies inside of the pixels; rows are `stride` pixels apart.
    Raster(std::uint32_t* pixels, int stride, const PixelRect& clip) : pixels_(pixels), stride_(stride), clip_(clip) {}

    const PixelRect& clip() const { return clip_; }
    void clear(std::uint32_t color);
    void dot(const Spot& at, std::uint32_t color);
    /// One pixel wide, both end pixels included.
    void line(const Spot& a, const Spot& b, std::uint32_t color);
    /// Pixels whose centres have a winding number other than 0. `ends` are the places behind the last corner of each
    /// closed contour.
    void fill(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color);
    /// The same with smooth edges; large areas are filled as above.
    void fillSmooth(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color);

private:
    std::uint32_t& at(int x, int y) { return pixels_[static_cast<std::ptrdiff_t>(y) * stride_ + x]; }
    bool holds(int x, int y) const {
        return x >= clip_.left && x <= clip_.right && y >= clip_.top && y <= clip_.bottom;
    }
    void span(double from, double to, int y, std::uint32_t color);
    void whole(int x0, int y0, int x1, int y1, std::uint32_t color);

    std::uint32_t* pixels_;
    int stride_;
    PixelRect clip_;
    std::vector<float> coverage_; // kept between letters
};

} // namespace vndk::gs
