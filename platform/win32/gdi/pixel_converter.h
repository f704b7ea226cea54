// Turns pixels of one surface into pixels of another, by the rules for monochrome bitmaps where one takes part.
#pragma once

#include "gdi/surface.h"

#include <optional>
#include <vector>

namespace vndk::win32 {

/// What the contexts of an operation say about monochrome bitmaps.
struct MonochromeRule {
    COLORREF zeros = RGB(0, 0, 0); // what 0 bits of a monochrome source become: the target's text colour
    COLORREF ones = RGB(255, 255, 255);
    /// The colour that becomes 1 in a monochrome target, all others 0. Nothing: the nearer of black and white is taken.
    std::optional<COLORREF> background;
};

class PixelConverter {
public:
    /// Only the formats and tables of the surfaces are looked at; the tables must outlive the converter.
    PixelConverter(const Surface& from, const Surface& to, const MonochromeRule& rule);

    /// Pixels need not be touched at all (but for what the target sets always).
    [[nodiscard]] bool keeps() const { return way_ == Way::keep; }
    /// In place.
    void convert(std::uint32_t* pixels, int count) const;

private:
    enum class Way { keep, table, match, general };

    void convertGeneral(std::uint32_t* pixels, int count) const;

    Surface from_;
    Surface to_;
    Way way_ = Way::general;
    std::vector<std::uint32_t> table_; // by the source's pixel
    std::uint32_t background_ = 0;     // 0x00RRGGBB
};

} // namespace vndk::win32
