// What stands behind an HDC: attributes, the place it paints to, and what of that place it may touch.
//
// Three kinds of point:
//  - logical: what the interface's calls take;
//  - device: logical, less the window origin, plus the viewport origin. Clip regions and the brush origin count so.
//  - surface: device plus the context's origin; pixels of the surface. Inside of the drawing room all painting is done
//    with these.
#pragma once

#include "gdi/objects.h"
#include "gdi/region.h"
#include "gdi/surface.h"
#include "gdi/window_dc.h"
#include "win32/gdi.h"

#include <optional>
#include <vector>

namespace vndk::win32 {

/// What SaveDC keeps.
struct ContextState {
    Selection pen;
    Selection brush;
    Selection font;
    Selection bitmap; // of a memory context only
    COLORREF textColor = RGB(0, 0, 0);
    COLORREF backgroundColor = RGB(255, 255, 255);
    COLORREF brushColor = RGB(255, 255, 255); // of DC_BRUSH
    COLORREF penColor = RGB(0, 0, 0);         // of DC_PEN
    int backgroundMode = OPAQUE;
    int rop2 = R2_COPYPEN;
    int stretchMode = BLACKONWHITE;
    int polyFillMode = ALTERNATE;
    int arcDirection = AD_COUNTERCLOCKWISE;
    UINT textAlign = 0;
    POINT position{0, 0};    // logical
    POINT brushOrigin{0, 0}; // device
    POINT windowOrigin{0, 0};
    POINT viewportOrigin{0, 0};
    std::optional<Region> clip; // device; nothing: no clip
};

class DeviceContext {
public:
    enum class Kind { memory, window, screen };

    /// With all attributes at their defaults.
    explicit DeviceContext(Kind kind);

    ContextState state;
    std::vector<ContextState> saved;

    [[nodiscard]] Kind kind() const { return kind_; }
    [[nodiscard]] HWND window() const { return window_; }
    /// Where it paints: of a memory context its bitmap.
    [[nodiscard]] const Surface& surface() const { return surface_; }
    /// The surface point of the device's (0, 0).
    [[nodiscard]] POINT origin() const { return origin_; }
    /// What painting may touch, in surface points: always inside of the surface's bounds.
    [[nodiscard]] const Region& reach() const;
    /// The whole surface in device points.
    [[nodiscard]] RECT deviceBounds() const;

    /// Call after `state.clip` has been changed.
    void clipChanged() { reachValid_ = false; }
    /// Call after `state.bitmap` has been changed.
    void bitmapChanged();
    /// `visible` is in surface points; what lies outside of the surface is left out. Not for memory contexts.
    void moveTo(const Surface& surface, POINT origin, Region visible);
    void setWindow(HWND window) { window_ = window; }
    /// Attributes and saved levels as the constructor gives them.
    void reset();

    [[nodiscard]] POINT toDevice(POINT logical) const;
    [[nodiscard]] POINT toLogical(POINT device) const;
    [[nodiscard]] POINT toSurface(POINT logical) const;
    /// Corner by corner: a reversed rectangle stays reversed.
    [[nodiscard]] RECT toSurface(const RECT& logical) const;

    /// The pixel of its surface for a colour.
    [[nodiscard]] std::uint32_t pixelOf(COLORREF color) const { return pixelFromArgb(surface_, argbFromColor(color)); }

private:
    Kind kind_;
    HWND window_ = nullptr;
    Surface surface_;
    POINT origin_{0, 0};
    Region visible_; // surface points; of a memory context its bitmap's bounds
    mutable Region reach_;
    mutable bool reachValid_ = false;
};

/// Corners in order.
[[nodiscard]] RECT normalized(const RECT& rect);
[[nodiscard]] RECT intersected(const RECT& a, const RECT& b);
[[nodiscard]] constexpr bool isEmptyRect(const RECT& rect) {
    return rect.left >= rect.right || rect.top >= rect.bottom;
}
/// A coordinate brought back to +-2^27, so that sums of several stay within 32 bits.
[[nodiscard]] int limited(std::int64_t coordinate);

/// Null for a dead handle; sets no error.
DeviceContext* contextOf(HDC dc);
/// The same, but sets ERROR_INVALID_HANDLE.
DeviceContext* requireContext(HDC dc);

// ---- Painting that text, icons and drawn parts are made of. All through the clip, without the mix mode (ROP2). -----

/// One bit for each pixel, top row first, the leftmost in bit 7.
struct BitMask {
    const std::uint8_t* bits = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0; // bytes from a row to the next
};

/// Sets the pixels where the mask has ones; `at` (surface) is where its top left corner comes to lie.
void paintMask(DeviceContext& dc, const BitMask& mask, POINT at, std::uint32_t pixel);
/// The rectangle is in surface points; an empty or reversed one paints nothing.
void paintRect(DeviceContext& dc, const RECT& rect, std::uint32_t pixel);
/// The same with a brush: its pattern is laid out from the context's brush origin.
void paintRect(DeviceContext& dc, const RECT& rect, const BrushObject& brush);
/// Lays a picture of 0xAARRGGBB values (not premultiplied) over what is there.
void blendPicture(DeviceContext& dc, const PixelTarget& picture, POINT at);
/// The brush behind a handle, or behind a system colour's number plus 1; null when there is none.
const BrushObject* brushOf(HBRUSH brush);

} // namespace vndk::win32
