// Device-independent bitmaps as the interface hands them over: a header, a colour table or masks, rows. Headers come
// from files and resources of anybody's making, so everything in them is checked before it is believed.
#pragma once

#include "gdi/surface.h"
#include "win32/gdi.h"

#include <optional>
#include <vector>

namespace vndk::win32 {

/// No bitmap is larger than this.
constexpr std::int64_t maxBitmapBytes = std::int64_t{1} << 28;

/// Bytes of a row padded to 4; nothing for a width that can't be.
[[nodiscard]] std::optional<std::size_t> dibStride(std::int64_t width, int bits);

/// Black and white for 1 bit, the 16 standard colours for 4, for 8 bits these and an even spread of others.
/// REQUIRES: bits is 1, 4 or 8.
[[nodiscard]] const ColorTable& standardColors(int bits);

struct Dib {
    BITMAPINFOHEADER header{}; // of 40 bytes, also when a shorter or longer one was given
    int width = 0;
    int height = 0; // positive
    bool bottomUp = true;
    std::size_t stride = 0;
    PixelFormat format; // that of the rows once they are decoded
    ColorTable colors;  // 2^bits entries for up to 8 bits; missing ones are black

    [[nodiscard]] bool compressed() const { return header.biCompression == BI_RLE4 || header.biCompression == BI_RLE8; }
    /// `rows` rows beginning with the picture's row `first`, counted in the order in which they lie in memory.
    /// REQUIRES: not compressed; this object outlives the surface.
    [[nodiscard]] Surface surface(const void* bits, int rows) const;
};

/// Bytes that header, masks and colour table take together; the rows of a packed bitmap follow.
/// REQUIRES: a header that parseDib accepts.
[[nodiscard]] std::size_t dibHeaderBytes(const BITMAPINFO& info);

/// Nothing with ERROR_INVALID_PARAMETER for a null pointer or a header that makes no sense.
[[nodiscard]] std::optional<Dib> parseDib(const BITMAPINFO* info, UINT usage);

/// Rows of 4 or 8 bits from run lengths, the bottom row first, padded to 4 bytes; pixels that the data leaves out are
/// 0. Reads at most `size` bytes; data that ends early or leads outside of the picture ends the decoding.
[[nodiscard]] std::vector<std::uint8_t> decodeRunLengths(const Dib& dib, const std::uint8_t* data, std::size_t size);

} // namespace vndk::win32
