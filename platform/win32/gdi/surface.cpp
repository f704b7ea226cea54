#include "gdi/surface.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstring>

namespace vndk::win32 {

namespace {

/// The place of a colour's part within a pixel.
struct Channel {
    int shift;
    int width;
};

Channel channelOf(std::uint32_t mask) {
    return mask == 0 ? Channel{0, 0} : Channel{std::countr_zero(mask), std::popcount(mask)};
}

std::uint32_t packChannel(std::uint32_t value8, Channel channel) {
    if (channel.width <= 8)
        return (value8 >> (8 - channel.width)) << channel.shift;
    return (value8 << (channel.width - 8)) << channel.shift;
}

/// Spreads the channel over 0 to 255, so that its highest value gives 255.
std::uint32_t unpackChannel(std::uint32_t pixel, Channel channel) {
    if (channel.width == 0)
        return 0;
    const std::uint64_t highest = (std::uint64_t{1} << channel.width) - 1;
    const std::uint64_t value = (pixel >> channel.shift) & highest;
    return static_cast<std::uint32_t>((value * 255 + highest / 2) / highest);
}

int squaredDistance(std::uint32_t a, std::uint32_t b) {
    const auto part = [](std::uint32_t argb, int shift) { return static_cast<int>((argb >> shift) & 0xFF); };
    const int red = part(a, 16) - part(b, 16);
    const int green = part(a, 8) - part(b, 8);
    const int blue = part(a, 0) - part(b, 0);
    return red * red + green * green + blue * blue;
}

std::uint32_t nearestIndex(const ColorTable& colors, std::uint32_t argb) {
    std::size_t best = 0;
    int bestDistance = squaredDistance(colors[0], argb);
    for (std::size_t index = 1; index < colors.size() && bestDistance != 0; ++index) {
        const int distance = squaredDistance(colors[index], argb);
        if (distance < bestDistance) {
            best = index;
            bestDistance = distance;
        }
    }
    return static_cast<std::uint32_t>(best);
}

/// What nearestIndex has found for the colours of one table. Pictures have many pixels and few colours.
class NearestColors {
public:
    NearestColors() { keys_.fill(kNone); }
    /// Forgets all when the table isn't the one of the last time.
    void use(const ColorTable& colors) {
        if (colors == colors_)
            return;
        colors_ = colors;
        keys_.fill(kNone);
    }
    std::uint32_t indexOf(std::uint32_t argb) {
        const std::uint32_t color = argb & 0x00FFFFFF;
        const std::size_t slot = (color * 2654435761U) >> (32 - kBits);
        if (keys_[slot] != color) {
            keys_[slot] = color;
            indices_[slot] = static_cast<std::uint8_t>(nearestIndex(colors_, color));
        }
        return indices_[slot];
    }

private:
    static constexpr int kBits = 12;
    static constexpr std::uint32_t kNone = ~0U;

    ColorTable colors_;
    std::array<std::uint32_t, std::size_t{1} << kBits> keys_;
    std::array<std::uint8_t, std::size_t{1} << kBits> indices_{};
};

std::uint32_t packed24(const std::uint8_t* bytes) {
    return bytes[0] | (std::uint32_t{bytes[1]} << 8) | (std::uint32_t{bytes[2]} << 16);
}

void load16(const std::uint8_t* row, int x, int count, std::uint32_t* pixels) {
    for (int index = 0; index < count; ++index) {
        std::uint16_t value;
        std::memcpy(&value, row + std::ptrdiff_t{2} * (x + index), 2);
        pixels[index] = value;
    }
}

void store16(std::uint8_t* row, int x, int count, const std::uint32_t* pixels) {
    for (int index = 0; index < count; ++index) {
        const auto value = static_cast<std::uint16_t>(pixels[index]);
        std::memcpy(row + std::ptrdiff_t{2} * (x + index), &value, 2);
    }
}

void store24(std::uint8_t* row, int x, int count, const std::uint32_t* pixels) {
    std::uint8_t* out = row + std::ptrdiff_t{3} * x;
    for (int index = 0; index < count; ++index, out += 3) {
        out[0] = static_cast<std::uint8_t>(pixels[index]);
        out[1] = static_cast<std::uint8_t>(pixels[index] >> 8);
        out[2] = static_cast<std::uint8_t>(pixels[index] >> 16);
    }
}

// 1 or 4 bits a pixel, the leftmost in the highest bits of a byte.

template <unsigned Bits>
void loadSmall(const std::uint8_t* row, int x, int count, std::uint32_t* pixels) {
    constexpr unsigned perByte = 8 / Bits;
    const auto first = static_cast<unsigned>(x);
    for (unsigned index = 0; index < static_cast<unsigned>(count); ++index) {
        const unsigned column = first + index;
        pixels[index] = (row[column / perByte] >> ((perByte - 1 - column % perByte) * Bits)) & ((1U << Bits) - 1);
    }
}

template <unsigned Bits>
void storeSmall(std::uint8_t* row, int x, int count, const std::uint32_t* pixels) {
    constexpr unsigned perByte = 8 / Bits;
    constexpr unsigned mask = (1U << Bits) - 1;
    const auto storeOne = [&](unsigned column, std::uint32_t pixel) {
        const unsigned shift = (perByte - 1 - column % perByte) * Bits;
        std::uint8_t& byte = row[column / perByte];
        byte = static_cast<std::uint8_t>((byte & ~(mask << shift)) | ((pixel & mask) << shift));
    };
    auto column = static_cast<unsigned>(x);
    const unsigned end = column + static_cast<unsigned>(count);
    for (; column < end && column % perByte != 0; ++column)
        storeOne(column, *pixels++);
    for (; end - column >= perByte; column += perByte) {
        unsigned byte = 0;
        for (unsigned index = 0; index < perByte; ++index)
            byte = byte << Bits | (*pixels++ & mask);
        row[column / perByte] = static_cast<std::uint8_t>(byte);
    }
    for (; column < end; ++column)
        storeOne(column, *pixels++);
}

void assertInside([[maybe_unused]] const Surface& surface, [[maybe_unused]] int x, [[maybe_unused]] int y,
                  [[maybe_unused]] int count) {
    assert(x >= 0 && y >= 0 && count >= 0 && x + count <= surface.width && y < surface.height &&
           "painting stays inside of its surface");
}

} // namespace

Surface surfaceOf(const PixelTarget& target) {
    Surface surface;
    surface.top = reinterpret_cast<std::uint8_t*>(target.pixels);
    surface.stride = std::ptrdiff_t{4} * target.stride;
    surface.width = target.pixels == nullptr ? 0 : target.width;
    surface.height = target.pixels == nullptr ? 0 : target.height;
    surface.format.always = 0xFF000000;
    return surface;
}

std::uint32_t pixelFromArgb(const Surface& surface, std::uint32_t argb) {
    const PixelFormat& format = surface.format;
    if (format.isArgb())
        return argb;
    if (format.indexed())
        return nearestIndex(*surface.colors, argb);
    if (format.bits == 24)
        return argb & 0x00FFFFFF;
    return packChannel((argb >> 16) & 0xFF, channelOf(format.red)) |
           packChannel((argb >> 8) & 0xFF, channelOf(format.green)) | packChannel(argb & 0xFF, channelOf(format.blue));
}

std::uint32_t argbFromPixel(const Surface& surface, std::uint32_t pixel) {
    const PixelFormat& format = surface.format;
    if (format.isArgb() || format.bits == 24)
        return pixel;
    if (format.indexed())
        return (*surface.colors)[pixel < surface.colors->size() ? pixel : 0];
    return (unpackChannel(pixel, channelOf(format.red)) << 16) | (unpackChannel(pixel, channelOf(format.green)) << 8) |
           unpackChannel(pixel, channelOf(format.blue));
}

void loadPixels(const Surface& surface, int x, int y, int count, std::uint32_t* pixels) {
    assertInside(surface, x, y, count);
    const std::uint8_t* row = surface.row(y);
    switch (surface.format.bits) {
    case 8:
        std::copy_n(row + x, count, pixels);
        break;
    case 16:
        load16(row, x, count, pixels);
        break;
    case 24:
        for (int index = 0; index < count; ++index)
            pixels[index] = packed24(row + std::ptrdiff_t{3} * (x + index));
        break;
    case 32:
        std::memcpy(pixels, row + std::ptrdiff_t{4} * x, std::size_t{4} * static_cast<std::size_t>(count));
        break;
    case 4:
        loadSmall<4>(row, x, count, pixels);
        break;
    default:
        loadSmall<1>(row, x, count, pixels);
    }
}

void storePixels(const Surface& surface, int x, int y, int count, const std::uint32_t* pixels) {
    assertInside(surface, x, y, count);
    std::uint8_t* row = surface.row(y);
    switch (surface.format.bits) {
    case 8:
        std::transform(pixels, pixels + count, row + x,
                       [](std::uint32_t pixel) { return static_cast<std::uint8_t>(pixel); });
        break;
    case 16:
        store16(row, x, count, pixels);
        break;
    case 24:
        store24(row, x, count, pixels);
        break;
    case 32:
        // Rows of a caller's own memory need not be aligned; the desktop's are.
        if (surface.format.always == 0)
            std::memcpy(row + std::ptrdiff_t{4} * x, pixels, std::size_t{4} * static_cast<std::size_t>(count));
        else
            std::transform(pixels, pixels + count, surface.row32(y) + x,
                           [&](std::uint32_t pixel) { return pixel | surface.format.always; });
        break;
    case 4:
        storeSmall<4>(row, x, count, pixels);
        break;
    default:
        storeSmall<1>(row, x, count, pixels);
    }
}

void fillPixels(const Surface& surface, int x, int y, int count, std::uint32_t pixel) {
    assertInside(surface, x, y, count);
    switch (surface.format.bits) {
    case 8:
        std::memset(surface.row(y) + x, static_cast<int>(pixel & 0xFF), static_cast<std::size_t>(count));
        return;
    case 32:
        std::fill_n(surface.row32(y) + x, count, pixel | surface.format.always);
        return;
    default:
        if (pixel == 0 && x == 0 && count == surface.width) {
            std::memset(surface.row(y), 0, (static_cast<std::size_t>(count * surface.format.bits) + 7) / 8);
            return;
        }
        break;
    }
    constexpr int chunk = 256;
    std::uint32_t pixels[chunk];
    std::fill_n(pixels, std::min(count, chunk), pixel);
    for (int done = 0; done < count; done += chunk)
        storePixels(surface, x + done, y, std::min(count - done, chunk), pixels);
}

void loadArgb(const Surface& surface, int x, int y, int count, std::uint32_t* argb) {
    loadPixels(surface, x, y, count, argb);
    if (surface.format.isArgb() || surface.format.bits == 24)
        return;
    if (surface.format.indexed()) {
        const ColorTable& colors = *surface.colors;
        std::transform(argb, argb + count, argb,
                       [&](std::uint32_t pixel) { return colors[pixel < colors.size() ? pixel : 0]; });
        return;
    }
    std::transform(argb, argb + count, argb, [&](std::uint32_t pixel) { return argbFromPixel(surface, pixel); });
}

void storeArgb(const Surface& surface, int x, int y, int count, const std::uint32_t* argb) {
    if (surface.format.isArgb() || surface.format.bits == 24) {
        storePixels(surface, x, y, count, argb);
        return;
    }
    static NearestColors nearest;
    if (surface.format.indexed())
        nearest.use(*surface.colors);
    constexpr int chunk = 256;
    std::uint32_t pixels[chunk];
    for (int done = 0; done < count; done += chunk) {
        const int length = std::min(count - done, chunk);
        std::transform(argb + done, argb + done + length, pixels, [&](std::uint32_t value) {
            return surface.format.indexed() ? nearest.indexOf(value) : pixelFromArgb(surface, value);
        });
        storePixels(surface, x + done, y, length, pixels);
    }
}

} // namespace vndk::win32
