// Icons and cursors out of compiled resources and icon files.
#include "gdi/icon.h"
#include "gdi/packed_dib.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr std::size_t hotSpotBytes = 4;

std::nullopt_t damaged() {
    SetLastError(ERROR_INVALID_DATA);
    return std::nullopt;
}

int wordAt(std::span<const std::uint8_t> bytes, std::size_t at) { return bytes[at] | (bytes[at + 1] << 8); }

bool blackAndWhite(const Dib& dib) {
    return dib.format.bits == 1 && dib.colors.size() == 2 && dib.colors[0] == 0 && dib.colors[1] == 0x00FFFFFF;
}

/// The mask behind the colours: one bit for each pixel, rows padded to 4 bytes, in the same order.
bool readMaskRows(std::span<const std::uint8_t> rows, const Dib& dib, IconImage& image) {
    const auto stride = dibStride(image.width, 1);
    if (!stride || rows.size() / *stride < static_cast<std::size_t>(image.height))
        return false;
    for (int y = 0; y < image.height; ++y) {
        const int line = dib.bottomUp ? image.height - 1 - y : y;
        const std::uint8_t* row = rows.data() + *stride * static_cast<std::size_t>(line);
        for (int x = 0; x < image.width; ++x)
            image.mask[image.index(x, y)] = (row[x >> 3] >> (7 - (x & 7))) & 1;
    }
    return true;
}

} // namespace

std::optional<IconImage> decodeIcon(std::span<const std::uint8_t> bytes, bool cursor) {
    const std::size_t headBytes = cursor ? hotSpotBytes : 0;
    if (bytes.size() < headBytes)
        return damaged();
    const auto packed = readPackedDib(bytes.subspan(headBytes));
    if (!packed)
        return {};
    const Dib& dib = packed->dib;
    const int height = dib.height / 2; // the header counts colours and mask
    if (dib.compressed() || height < 1 || dib.width > largestIcon || height > largestIcon)
        return damaged();
    const std::size_t colorBytes = dib.stride * static_cast<std::size_t>(height);
    if (packed->rows.size() < colorBytes)
        return damaged();

    IconImage image = IconImage::blank(dib.width, height);
    const Surface surface = dib.surface(packed->rows.data(), height);
    for (int y = 0; y < height; ++y)
        loadArgb(surface, 0, y, image.width, image.pixels.data() + image.index(0, y));
    if (!readMaskRows(packed->rows.subspan(colorBytes), dib, image))
        return damaged();
    if (dib.format.bits == 32)
        image.findAlpha();
    image.colored = !blackAndWhite(dib);
    image.cursor = cursor;
    image.hot = {image.width / 2, height / 2};
    if (cursor)
        image.hot = {std::min(wordAt(bytes, 0), image.width - 1), std::min(wordAt(bytes, 2), height - 1)};
    return image;
}

} // namespace vndk::win32

using namespace vndk::win32;

HICON CreateIconFromResource(const BYTE* bits, DWORD size, BOOL icon, DWORD version) {
    return CreateIconFromResourceEx(bits, size, icon, version, 0, 0, LR_DEFAULTSIZE);
}
