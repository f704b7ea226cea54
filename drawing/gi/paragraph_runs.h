// Paragraph texts as runs of equally formatted letters. Private to this room.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::gi {

struct TextFormat {
    double height = 1; // drawing units
    double widthFactor = 1;
    double oblique = 0; // radians
    uint32_t color = 0; // as in AcGiText
    std::string face;   // in place of the style's font; empty: the style's
    bool bold = false, italic = false;
    bool underlined = false, overlined = false;
    bool operator==(const TextFormat&) const = default;
};

struct TextRun {
    enum Stacking : unsigned char { kNone, kOverLine, kOverNothing };
    std::string text;  // code page 1252
    std::string below; // of stacked numbers
    TextFormat format;
    Stacking stacking = kNone;
};

/// The paragraphs of a text with formats: `\P` ends one, braces limit a format to what they enclose. A fraction with a
/// slanted bar is text like any other. Codes that aren't known show the letter behind their backslash.
std::vector<std::vector<TextRun>> paragraphRuns(std::string_view contents, const TextFormat& format);

} // namespace vndk::gi
