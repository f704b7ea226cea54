// The system's colours and their brushes.
#include "gdi/objects.h"
#include "win32/draw.h"

#include <array>

using namespace vndk::win32;

namespace {

constexpr int colorCount = COLOR_GRADIENTINACTIVECAPTION + 1;

constexpr COLORREF black = RGB(0, 0, 0);
constexpr COLORREF white = RGB(255, 255, 255);
constexpr COLORREF gray = RGB(128, 128, 128);
constexpr COLORREF face = RGB(212, 208, 200);
constexpr COLORREF navy = RGB(10, 36, 106);

/// The platform's standard scheme, by COLOR_ number; 25 isn't in use.
std::array<COLORREF, colorCount>& colors() {
    static std::array<COLORREF, colorCount> current{face,                // scroll bar
                                                    RGB(58, 110, 165),   // desktop
                                                    navy,                // active caption
                                                    gray,                // inactive caption
                                                    face,                // menu
                                                    white,               // window
                                                    black,               // window frame
                                                    black,               // menu text
                                                    black,               // window text
                                                    white,               // caption text
                                                    face,                // active border
                                                    face,                // inactive border
                                                    gray,                // application workspace
                                                    navy,                // highlight
                                                    white,               // highlight text
                                                    face,                // button face
                                                    gray,                // button shadow
                                                    gray,                // grayed text
                                                    black,               // button text
                                                    face,                // inactive caption text
                                                    white,               // button highlight
                                                    RGB(64, 64, 64),     // dark shadow
                                                    face,                // light
                                                    black,               // tool tip text
                                                    RGB(255, 255, 225),  // tool tip
                                                    face,                // not in use
                                                    RGB(0, 0, 128),      // hot
                                                    RGB(166, 202, 240),  // right end of an active caption
                                                    RGB(192, 192, 192)}; // right end of an inactive caption
    return current;
}

/// Made when they are first asked for; they stay for good.
std::array<HBRUSH, colorCount>& brushes() {
    static std::array<HBRUSH, colorCount> made{};
    return made;
}

bool known(int index) { return index >= 0 && index < colorCount; }

} // namespace

COLORREF GetSysColor(int index) { return known(index) ? colors()[static_cast<std::size_t>(index)] : 0; }

HBRUSH GetSysColorBrush(int index) {
    if (!known(index)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    HBRUSH& brush = brushes()[static_cast<std::size_t>(index)];
    if (brush == nullptr)
        brush = newSystemBrush(GetSysColor(index));
    return brush;
}

BOOL SetSysColors(int count, const INT* indexes, const COLORREF* newColors) {
    const auto valid = [&] {
        if (count < 0 || (count > 0 && (indexes == nullptr || newColors == nullptr)))
            return false;
        for (int at = 0; at < count; ++at)
            if (!known(indexes[at]))
                return false;
        return true;
    };
    if (!valid()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    for (int at = 0; at < count; ++at) {
        colors()[static_cast<std::size_t>(indexes[at])] = newColors[at];
        if (auto* brush = objectOf<BrushObject>(brushes()[static_cast<std::size_t>(indexes[at])]); brush != nullptr)
            brush->color = newColors[at];
    }
    return TRUE;
}
