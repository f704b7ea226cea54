// Lines and areas straight into pixels. Coordinates are pixels with the origin at the upper left, y downward; a pixel
// reaches from its number to the next one. They may lie anywhere: everything is clipped before it becomes whole
// numbers, and what isn't a number draws nothing.
//
// With depths beside the pixels, what lies behind what has been drawn isn't seen. Areas lie a little deeper than they
// say, so that lines in them and along them are seen.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace vndk::gs {

/// A place in the picture; `z` is its depth in pixels, which grows towards the viewer.
struct Spot {
    double x = 0, y = 0, z = 0;
};

/// Pixels that lie inside, both corners included.
struct PixelRect {
    int left = 0, top = 0, right = -1, bottom = -1;
};

/// The part of a line within a rectangle, as shares of its length. False: nothing is.
bool clipLine(const Spot& a, const Spot& b, double left, double top, double right, double bottom, double& from,
              double& to);

struct Lens;

class Raster {
public:
    /// Draws within `clip` alone, which lies inside of the pixels; rows are `stride` pixels apart, those of the depths
    /// as well. Without depths the last one drawn is seen.
    Raster(std::uint32_t* pixels, int stride, const PixelRect& clip, float* depths = nullptr)
        : pixels_(pixels), depths_(depths), stride_(stride), clip_(clip), right_(clip.right + 1.0),
          bottom_(clip.bottom + 1.0) {}
    /// Draws nothing, but notes what would have been drawn within and outside of `clip`.
    explicit Raster(const PixelRect& clip) : Raster(nullptr, 0, clip) {}

    /// The same pixels within a smaller clip.
    Raster within(const PixelRect& clip) const { return {pixels_, stride_, clip, depths_}; }
    /// What is drawn from here on is seen in perspective; null: as it is given. The lens outlives the drawing.
    void setLens(const Lens* lens) {
        lens_ = lens;
        direct_ = pixels_ && !lens;
    }
    const Lens* lens() const { return lens_; }

    const PixelRect& clip() const { return clip_; }
    bool hasDepths() const { return depths_ != nullptr; }
    /// Whether pixels are drawn at all.
    bool isProbe() const { return pixels_ == nullptr; }
    bool touchedInside() const { return touchedInside_; }
    bool touchedOutside() const { return touchedOutside_; }
    /// Of what isn't even tried because it lies outside.
    void noteOutside() { touchedOutside_ = true; }

    /// Depths, where there are any, become the farthest.
    void clear(std::uint32_t color);
    void dot(const Spot& at, std::uint32_t color);
    /// One pixel wide, both end pixels included.
    void line(const Spot& a, const Spot& b, std::uint32_t color) {
        if (!direct_ || !holds(a) || !holds(b))
            return clipped(a, b, color, 0);
        const int x0 = static_cast<int>(a.x), y0 = static_cast<int>(a.y), x1 = static_cast<int>(b.x),
                  y1 = static_cast<int>(b.y);
        if (depths_)
            deepLine(x0, y0, x1, y1, a.z, b.z, color);
        else
            inside(x0, y0, x1, y1, color);
    }
    /// The edge of an area, as deep as the area.
    void edge(const Spot& a, const Spot& b, std::uint32_t color) {
        if (depths_ || lens_)
            clipped(a, b, color, depths_ ? kAreaDepth : 0);
        else
            line(a, b, color);
    }
    /// Pixels whose centres have a winding number other than 0. `ends` are the places behind the last corner of each
    /// closed contour. With depths the corners lie in one plane.
    void fill(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color);
    /// The same with smooth edges; large areas are filled as above.
    void fillSmooth(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color);
    /// A triangle whose brightness runs from corner to corner; 1 is the colour itself.
    void shade(const std::array<Spot, 3>& corners, const std::array<double, 3>& light, std::uint32_t color);

private:
    /// How much deeper areas lie than lines in them, in pixels.
    static constexpr double kAreaDepth = 0.5;

    /// A number that runs evenly over the pixels: at the centre of pixel (0, 0), and from pixel to pixel.
    struct Ramp {
        double start = 0, perX = 0, perY = 0;
        double at(int x, int y) const { return start + perX * x + perY * y; }
    };

    std::uint32_t& at(int x, int y) { return pixels_[static_cast<std::ptrdiff_t>(y) * stride_ + x]; }
    float& depthAt(int x, int y) { return depths_[static_cast<std::ptrdiff_t>(y) * stride_ + x]; }
    bool holds(int x, int y) const {
        return x >= clip_.left && x <= clip_.right && y >= clip_.top && y <= clip_.bottom;
    }
    bool holds(const Spot& p) const { return p.x >= clip_.left && p.x < right_ && p.y >= clip_.top && p.y < bottom_; }
    void noteBounds(std::span<const Spot> corners);
    void span(double from, double to, int y, std::uint32_t color);
    void deepSpan(int first, int last, int y, std::uint32_t color);
    void clipped(const Spot& a, const Spot& b, std::uint32_t color, double behind);
    void inside(int x0, int y0, int x1, int y1, std::uint32_t color);
    void deepRow(int first, int last, int y, double z, std::uint32_t color);
    void deepLine(int x0, int y0, int x1, int y1, double z0, double z1, std::uint32_t color);
    bool setPlane(std::span<const Spot> corners, std::span<const std::size_t> ends);

    template <class Draw>
    void throughLens(Draw&& draw);
    void dotThroughLens(const Spot& at, std::uint32_t color);
    void lineThroughLens(Spot a, Spot b, std::uint32_t color, double behind);
    void fillThroughLens(std::span<const Spot> corners, std::span<const std::size_t> ends, std::uint32_t color,
                         bool smooth);
    void shadeThroughLens(const std::array<Spot, 3>& corners, const std::array<double, 3>& light, std::uint32_t color);

    std::uint32_t* pixels_;
    float* depths_;
    const Lens* lens_ = nullptr;
    bool direct_ = pixels_ != nullptr; // what lies inside goes straight into the pixels
    int stride_;
    PixelRect clip_;
    double right_, bottom_; // where the clip ends
    Ramp plane_;            // of the area that is being filled
    bool touchedInside_ = false, touchedOutside_ = false;
    std::vector<float> coverage_; // kept between letters
};

} // namespace vndk::gs
