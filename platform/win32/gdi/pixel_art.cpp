#include "gdi/pixel_art.h"

#include <vector>

namespace vndk::win32 {

namespace {

/// The mask covers only what can be seen of `place`: a wild rectangle takes no wild memory.
template <typename IsSet>
void paintCells(DeviceContext& dc, const RECT& place, const RECT& part, std::uint32_t pixel, IsSet isSet) {
    const RECT shown = intersected(intersected(place, part), dc.reach().bounds());
    if (isEmptyRect(shown))
        return;
    const int stride = (shown.right - shown.left + 7) / 8;
    std::vector<std::uint8_t> bits(static_cast<std::size_t>(stride) *
                                   static_cast<std::size_t>(shown.bottom - shown.top));
    for (int y = shown.top; y < shown.bottom; ++y) {
        std::uint8_t* row = bits.data() + std::ptrdiff_t{stride} * (y - shown.top);
        for (int x = shown.left; x < shown.right; ++x)
            if (isSet(x - place.left, y - place.top))
                row[(x - shown.left) >> 3] |= static_cast<std::uint8_t>(0x80 >> ((x - shown.left) & 7));
    }
    paintMask(
        dc,
        {bits.data(), static_cast<int>(shown.right - shown.left), static_cast<int>(shown.bottom - shown.top), stride},
        {shown.left, shown.top}, pixel);
}

} // namespace

void paintArt(DeviceContext& dc, const PixelArt& art, const RECT& place, const RECT& part, std::uint32_t pixel,
              char cell) {
    const std::int64_t width = place.right - place.left;
    const std::int64_t height = place.bottom - place.top;
    paintCells(dc, place, part, pixel, [&](int x, int y) {
        return art.at(static_cast<int>(x * art.width() / width), static_cast<int>(y * art.height() / height)) == cell;
    });
}

void paintChecked(DeviceContext& dc, const RECT& rect, COLORREF first, COLORREF second) {
    paintRect(dc, rect, dc.pixelOf(first));
    paintCells(dc, rect, rect, dc.pixelOf(second), [](int x, int y) { return ((x + y) & 1) != 0; });
}

} // namespace vndk::win32
