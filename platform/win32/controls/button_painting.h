// How buttons look. Knows no window: all that it needs is told.
#pragma once

#include "controls/label.h"
#include "win32/button.h"

#include <string>

namespace vndk::win32 {

struct ButtonLook {
    DWORD style = 0;
    LRESULT check = BST_UNCHECKED;
    bool pushed = false;
    bool focused = false;
    bool enabled = true;
    std::string text;
    ControlImage image;
};

[[nodiscard]] constexpr DWORD kindOf(DWORD style) { return style & BS_TYPEMASK; }
[[nodiscard]] bool isCheckKind(DWORD kind); // two or three states
[[nodiscard]] bool isRadioKind(DWORD kind);
/// Painted as a push button: those by kind, and boxes with BS_PUSHLIKE.
[[nodiscard]] bool looksLikePush(DWORD style);

/// Paints a button of any kind but BS_OWNERDRAW into `rect`. The context has the font and the colours that the parent
/// chose; `ground` is the brush that it answered.
void paintButton(HDC dc, const RECT& rect, const ButtonLook& look, HBRUSH ground);

/// The strip of a group box that its caption stands in.
[[nodiscard]] RECT groupCaptionStrip(HDC dc, const RECT& rect);

} // namespace vndk::win32
