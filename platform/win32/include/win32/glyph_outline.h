// Letters as outlines, for text of any size and slant.
#pragma once

#include "win32/fonts.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vndk::win32 {

/// In units of the height of capital letters: x from the pen, y upward from the base line.
struct GlyphOutline {
    struct Point {
        double x = 0;
        double y = 0;
    };
    std::vector<Point> points;
    std::vector<std::size_t> ends; ///< behind the last point of each contour; contours are closed
    double advance = 0;            ///< to the next letter's pen
};

/// The outline of a character of code page 1252 in the face that the description names (its size doesn't count), curves
/// divided. Inside is where the winding number isn't 0. Without font files it is a box, so that text is seen. Valid as
/// long as the program.
const GlyphOutline& glyphOutline(const LOGFONTA& description, char character);

} // namespace vndk::win32
