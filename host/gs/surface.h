// The pixels that views are drawn into.
#pragma once

#include "win32/picture.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vndk::gs {

/// 0xAARRGGBB, top row first. Rows are an odd number of cache lines apart: at a multiple of a large power of two the
/// pixels of a steep line would all compete for the same few places of the cache.
struct Surface {
    int width = 0, height = 0;
    int stride = 0; // pixels from row to row
    std::vector<std::uint32_t> pixels;

    Surface() = default;
    Surface(int wide, int high, std::uint32_t color)
        : width(wide), height(high), stride(((wide + kLine - 1) / kLine | 1) * kLine),
          pixels(static_cast<std::size_t>(stride) * static_cast<std::size_t>(high), color) {}

    win32::Picture picture() const { return win32::copyPicture(pixels.data(), stride, {0, 0, width, height}); }

private:
    static constexpr int kLine = 64 / sizeof(std::uint32_t);
};

} // namespace vndk::gs
