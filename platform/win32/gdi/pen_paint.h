// Lines drawn with a context's pen through its clip. All points count on the surface.
#pragma once

#include "gdi/device_context.h"
#include "gdi/figure.h"
#include "gdi/raster_ops.h"

#include <span>
#include <vector>

namespace vndk::win32 {

class PenPaint {
public:
    explicit PenPaint(const DeviceContext& context);

    [[nodiscard]] bool nothing() const { return style_ == PS_NULL; }
    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] bool insideFrame() const { return style_ == PS_INSIDEFRAME; }

    /// Through all points; the last one's pixel isn't drawn. A closed line begins and ends with the same point.
    void polyline(std::span<const POINT> points);
    /// The same for a wide pen, whose ends are round, with points between pixels.
    void stroke(const std::vector<PointD>& points) const;
    /// All of a region.
    void region(const Region& region) const;
    /// Single pixels that follow one another; for pens of width 1.
    void pixels(std::span<const POINT> points);

private:
    void segment(POINT from, POINT to);
    void straight(POINT from, POINT to);
    void sloping(POINT from, POINT to);
    void plot(POINT place, std::int64_t step) const;
    [[nodiscard]] bool dashed() const { return !dashes_.empty(); }

    const DeviceContext& context_;
    UINT style_;
    int width_;
    COLORREF color_;
    PixelMix mix_;
    PixelMix gapMix_;                  // between dashes
    std::vector<std::uint8_t> dashes_; // by pixel: 1 in a dash; empty for a solid pen
    std::int64_t phase_ = 0;           // pixels drawn so far: dashes go on around corners
};

} // namespace vndk::win32
