// Areas painted with a brush through a context's clip. All points count on the surface.
#pragma once

#include "gdi/device_context.h"
#include "gdi/raster_ops.h"

#include <array>
#include <vector>

namespace vndk::win32 {

/// What a brush gives in a context at every place, as pixels of its surface. Lives no longer than either.
class BrushPaint {
public:
    BrushPaint(const DeviceContext& context, const BrushObject& brush);

    /// A brush of style BS_NULL: nothing is painted.
    [[nodiscard]] bool nothing() const { return kind_ == Kind::nothing; }
    [[nodiscard]] bool solid() const { return kind_ == Kind::solid; }
    /// A hatch on a TRANSPARENT background: between its lines nothing is painted.
    [[nodiscard]] bool hasGaps() const { return gaps_; }
    /// Of a solid brush; of a hatch the colour of the lines.
    [[nodiscard]] std::uint32_t pixel() const { return pixel_; }
    void row(int x, int y, int count, std::uint32_t* pixels) const;
    /// Is there a line of the hatch?
    [[nodiscard]] bool onLine(int x, int y) const;

private:
    enum class Kind { nothing, solid, hatch, pattern };

    void readPattern(const DeviceContext& context, const BitmapObject& pattern);

    Kind kind_ = Kind::nothing;
    bool gaps_ = false;
    POINT origin_{0, 0};
    std::uint32_t pixel_ = 0;
    std::uint32_t background_ = 0;
    std::array<std::uint8_t, 8> hatch_{}; // rows, the leftmost column in bit 7
    int width_ = 0;                       // of a pattern
    int height_ = 0;
    std::vector<std::uint32_t> pattern_;
};

/// Calls `paint(piece)` for the pieces of the rectangle that may be painted.
template <typename Paint>
void eachVisible(const DeviceContext& context, const RECT& rect, Paint paint) {
    for (const RECT& part : context.reach().rectsBetween(rect.top, rect.bottom)) {
        const RECT piece = intersected(part, rect);
        if (!isEmptyRect(piece))
            paint(piece);
    }
}

void paintRect(const DeviceContext& context, const RECT& rect, const BrushPaint& paint, int rop2);
void paintRegion(const DeviceContext& context, const Region& region, const BrushPaint& paint, int rop2);

/// The brush selected into the context.
[[nodiscard]] const BrushObject& selectedBrush(const DeviceContext& context);

} // namespace vndk::win32
