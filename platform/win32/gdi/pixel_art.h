// Small pictures of one colour, given as rows of text: '#' is painted, anything else is not.
#pragma once

#include "gdi/device_context.h"

#include <span>
#include <string_view>

namespace vndk::win32 {

struct PixelArt {
    std::span<const std::string_view> rows; // all of the same length, at least one

    [[nodiscard]] int width() const { return static_cast<int>(rows.front().size()); }
    [[nodiscard]] int height() const { return static_cast<int>(rows.size()); }
    /// The character at a place.
    [[nodiscard]] char at(int x, int y) const { return rows[static_cast<std::size_t>(y)][static_cast<std::size_t>(x)]; }
};

/// Paints the cells that hold `cell`, stretched over `place` and kept within `part` (both surface).
void paintArt(DeviceContext& dc, const PixelArt& art, const RECT& place, const RECT& part, std::uint32_t pixel,
              char cell = '#');

/// Every second pixel of the rectangle (surface) in the one colour, the others in the other.
void paintChecked(DeviceContext& dc, const RECT& rect, COLORREF first, COLORREF second);

} // namespace vndk::win32
