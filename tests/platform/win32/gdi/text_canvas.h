// A canvas with the font of dialogs, and what tests of text look at.
#pragma once

#include "canvas.h"
#include "win32/draw.h"
#include "win32/fonts.h"

#include <algorithm>
#include <cstring>
#include <ostream>
#include <set>
#include <utility>

/// The dialogs' font: cells of 13 pixels.
inline HFONT dialogFont() { return CreateFontA(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "MS Sans Serif"); }

class TextCanvas : public Canvas {
public:
    TextCanvas(int width, int height) : Canvas(width, height) {
        use(dialogFont());
        SetBkMode(dc(), TRANSPARENT);
    }

    [[nodiscard]] int textWidth(const char* text) const {
        SIZE size{};
        GetTextExtentPoint32A(dc(), text, static_cast<int>(std::strlen(text)), &size);
        return size.cx;
    }

    /// The places of all pixels of a colour.
    [[nodiscard]] std::set<std::pair<int, int>> pixelsOf(COLORREF color) {
        std::set<std::pair<int, int>> places;
        for (int y = 0; y < height(); ++y)
            for (int x = 0; x < width(); ++x)
                if ((pixel(x, y) & 0xFFFFFF) == ((color & 0xFF) << 16 | (color & 0xFF00) | (color >> 16 & 0xFF)))
                    places.emplace(x, y);
        return places;
    }

    /// Around all pixels that aren't white; empty when there are none.
    [[nodiscard]] RECT painted() {
        RECT box{width(), height(), 0, 0};
        for (int y = 0; y < height(); ++y)
            for (int x = 0; x < width(); ++x)
                if ((pixel(x, y) & 0xFFFFFF) != 0xFFFFFF)
                    box = {std::min<LONG>(box.left, x), std::min<LONG>(box.top, y), std::max<LONG>(box.right, x + 1),
                           std::max<LONG>(box.bottom, y + 1)};
        return box.left < box.right ? box : RECT{};
    }
};

inline bool operator==(const RECT& a, const RECT& b) { return EqualRect(&a, &b) != FALSE; }
inline std::ostream& operator<<(std::ostream& out, const RECT& rect) {
    return out << '(' << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom << ')';
}
