#include "gdi/pixel_converter.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

bool sameLayout(const Surface& a, const Surface& b) {
    const PixelFormat& first = a.format;
    const PixelFormat& second = b.format;
    if (first.bits != second.bits || first.monochrome != second.monochrome)
        return false;
    if (first.indexed())
        return a.colors == b.colors || *a.colors == *b.colors;
    return first.red == second.red && first.green == second.green && first.blue == second.blue;
}

} // namespace

PixelConverter::PixelConverter(const Surface& from, const Surface& to, const MonochromeRule& rule)
    : from_(from), to_(to) {
    if (sameLayout(from, to)) {
        way_ = Way::keep;
    } else if (from.format.monochrome) {
        way_ = Way::table;
        table_ = {pixelFromArgb(to, argbFromColor(rule.zeros)), pixelFromArgb(to, argbFromColor(rule.ones))};
    } else if (to.format.monochrome && rule.background) {
        way_ = Way::match;
        background_ = argbFromColor(*rule.background);
    } else if (from.format.indexed()) {
        way_ = Way::table;
        for (const std::uint32_t color : *from.colors)
            table_.push_back(pixelFromArgb(to, color));
    }
}

void PixelConverter::convert(std::uint32_t* pixels, int count) const {
    switch (way_) {
    case Way::keep:
        break;
    case Way::table:
        std::transform(pixels, pixels + count, pixels, [this](std::uint32_t pixel) { return table_[pixel]; });
        break;
    case Way::match:
        std::transform(pixels, pixels + count, pixels, [this](std::uint32_t pixel) {
            return (argbFromPixel(from_, pixel) & 0x00FFFFFF) == background_ ? 1U : 0U;
        });
        break;
    case Way::general:
        convertGeneral(pixels, count);
        break;
    }
}

void PixelConverter::convertGeneral(std::uint32_t* pixels, int count) const {
    // Neighbours are often alike, and looking for the nearest of 256 colours is dear.
    std::uint32_t lastIn = 0;
    std::uint32_t lastOut = pixelFromArgb(to_, argbFromPixel(from_, 0));
    for (int index = 0; index < count; ++index) {
        if (pixels[index] != lastIn) {
            lastIn = pixels[index];
            lastOut = pixelFromArgb(to_, argbFromPixel(from_, lastIn));
        }
        pixels[index] = lastOut;
    }
}

} // namespace vndk::win32
