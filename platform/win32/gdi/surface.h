// Pixels in memory, in any of the formats that bitmaps have.
//
// Two kinds of number stand for a colour here, next to the interface's COLORREF (0x00BBGGRR):
//  - an "ARGB" value 0xAARRGGBB, the same for all formats;
//  - a "pixel": what a surface stores, that is an index, a bit, packed 16 bits or an ARGB value. Raster operations
//    combine pixels.
#pragma once

#include "gdi/window_dc.h"
#include "win32/types.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vndk::win32 {

using ColorTable = std::vector<std::uint32_t>; // 0x00RRGGBB

struct PixelFormat {
    int bits = 32;                  // 1, 4, 8, 16, 24, 32
    std::uint32_t red = 0x00FF0000; // masks, for 16, 24 and 32 bits
    std::uint32_t green = 0x0000FF00;
    std::uint32_t blue = 0x000000FF;
    /// Bits that every pixel stored gets besides: the desktop's pixels are opaque.
    std::uint32_t always = 0;
    /// One bit and no table of its own: the contexts that take part in an operation give the two colours.
    bool monochrome = false;

    /// 32 bits in the order of an ARGB value.
    [[nodiscard]] bool isArgb() const { return bits == 32 && red == 0x00FF0000 && green == 0x0000FF00 && blue == 0xFF; }
    [[nodiscard]] bool indexed() const { return bits <= 8; }
    bool operator==(const PixelFormat&) const = default;
};

/// A view; it owns neither the pixels nor the table.
struct Surface {
    std::uint8_t* top = nullptr; // the top row
    std::ptrdiff_t stride = 0;   // bytes from a row to the one below; negative when the bottom row comes first
    int width = 0;
    int height = 0;
    PixelFormat format;
    const ColorTable* colors = nullptr; // 2^bits entries for an indexed format, null for others

    [[nodiscard]] std::uint8_t* row(int y) const { return top + stride * y; }
    /// REQUIRES: 32 bits.
    [[nodiscard]] std::uint32_t* row32(int y) const { return reinterpret_cast<std::uint32_t*>(row(y)); }
    [[nodiscard]] RECT bounds() const { return {0, 0, width, height}; }
};

[[nodiscard]] Surface surfaceOf(const PixelTarget& target);

[[nodiscard]] constexpr std::uint32_t argbFromColor(COLORREF color) {
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}
[[nodiscard]] constexpr COLORREF colorFromArgb(std::uint32_t argb) {
    return ((argb & 0xFF) << 16) | (argb & 0xFF00) | ((argb >> 16) & 0xFF);
}

/// The pixel that shows an ARGB value best. A 32-bit surface keeps the alpha byte, too.
[[nodiscard]] std::uint32_t pixelFromArgb(const Surface& surface, std::uint32_t argb);
[[nodiscard]] std::uint32_t argbFromPixel(const Surface& surface, std::uint32_t pixel);

// `count` pixels of row y from column x. REQUIRES: all inside of the surface.
void loadPixels(const Surface& surface, int x, int y, int count, std::uint32_t* pixels);
void storePixels(const Surface& surface, int x, int y, int count, const std::uint32_t* pixels);
void fillPixels(const Surface& surface, int x, int y, int count, std::uint32_t pixel);

/// The same converted to ARGB values; alpha is what a 32-bit surface holds there, 0 for others.
void loadArgb(const Surface& surface, int x, int y, int count, std::uint32_t* argb);
void storeArgb(const Surface& surface, int x, int y, int count, const std::uint32_t* argb);

} // namespace vndk::win32
