// Where the parts of a window's frame lie.
//
// From outside: edge and border, caption, menu bar, client edge, scroll bars, client area.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

/// Pixels between the outer edge and the caption or, without one, the client edge.
[[nodiscard]] int borderWidth(DWORD style, DWORD exStyle);
/// The caption's height with the line below it; 0 without a caption.
[[nodiscard]] int captionHeight(DWORD style, DWORD exStyle);
[[nodiscard]] inline bool hasCaption(DWORD style) { return (style & WS_CAPTION) == WS_CAPTION; }
/// WS_EX_WINDOWEDGE follows from the other bits.
[[nodiscard]] DWORD withWindowEdge(DWORD style, DWORD exStyle);

// All in screen coordinates; empty where the window has no such part. A minimised window is all caption.
[[nodiscard]] RECT captionArea(const Window& window);
[[nodiscard]] RECT menuBarArea(const Window& window);
/// The small icon that opens the system menu.
[[nodiscard]] RECT captionIconArea(const Window& window);
/// HTCLOSE, HTMAXBUTTON, HTMINBUTTON or HTHELP.
[[nodiscard]] RECT captionButtonArea(const Window& window, int button);
/// Where the caption's text stands.
[[nodiscard]] RECT captionTextArea(const Window& window);
/// The window has a caption that shows this button, if only grayed.
[[nodiscard]] bool hasCaptionButton(const Window& window, int button);
/// What the bars, the client area and the client edge have together.
[[nodiscard]] RECT insideFrame(const Window& window, const RECT& windowRect);

/// The point that a window's position counts from: (0, 0) of the screen, or the parent's client area.
[[nodiscard]] POINT positionOrigin(const Window& window);
/// A rectangle that counts from the parent, on the screen, and the other way.
[[nodiscard]] RECT toScreen(const Window& window, RECT rect);
[[nodiscard]] RECT fromScreen(const Window& window, RECT rect);

[[nodiscard]] inline int widthOf(const RECT& rect) { return rect.right - rect.left; }
[[nodiscard]] inline int heightOf(const RECT& rect) { return rect.bottom - rect.top; }
[[nodiscard]] inline bool sameRect(const RECT& a, const RECT& b) {
    return a.left == b.left && a.top == b.top && a.right == b.right && a.bottom == b.bottom;
}
[[nodiscard]] inline bool containsPoint(const RECT& rect, POINT point) {
    return point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
}
[[nodiscard]] inline RECT shifted(RECT rect, int dx, int dy) {
    return {rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy};
}

} // namespace vndk::win32
