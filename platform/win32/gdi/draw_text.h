// Text laid out in a rectangle: lines, words, tabs, ellipses and marks of mnemonics.
#pragma once

#include "gdi/font.h"
#include "win32/draw.h"

#include <string>
#include <string_view>
#include <vector>

namespace vndk::win32 {

/// How DrawText was asked to lay text out.
struct TextFormat {
    UINT flags = 0;     // DT_ values; the bits of the tab length are taken out
    int tabWidth = 0;   // pixels; 0: tabs don't count
    int leftMargin = 0; // pixels
    int rightMargin = 0;

    [[nodiscard]] bool has(UINT flag) const { return (flags & flag) != 0; }
};

/// Text as it is shown: marks are taken out.
struct MarkedText {
    std::string text;
    int marked = -1; // the character to be underlined; -1: none
};
/// "&&" becomes "&", another '&' marks what follows. Of several marks the last one counts.
[[nodiscard]] MarkedText withoutMarks(std::string_view text);

struct TextLine {
    std::string text;
    int marked = -1;
    int width = 0;       // pixels
    std::size_t end = 0; // characters of the source up to here, line end included
    bool shortened = false;
};

/// Breaks text into lines of at most `width` pixels, as far as the format asks for that, and shortens them with
/// ellipses. `height` bounds the lines with DT_END_ELLIPSIS and word breaks (the last one that shows gets the
/// ellipsis); it is negative where it doesn't count.
[[nodiscard]] std::vector<TextLine> layOutText(const Font& font, std::string_view text, const TextFormat& format,
                                               int width, int height);

/// The width of text that may hold tabs.
[[nodiscard]] int widthWithTabs(const Font& font, std::string_view text, int tabWidth);

} // namespace vndk::win32
