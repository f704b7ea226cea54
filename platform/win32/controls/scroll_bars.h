// Scroll bars in the frames of windows, for the window manager; the calls of win32/scrollbar.h are done beside them.
//
// The frame's geometry is the window manager's: it takes a bar's breadth off the client area (SM_CXVSCROLL at the
// right, or at the left with WS_EX_LEFTSCROLLBAR, SM_CYHSCROLL at the bottom) when the style has WS_VSCROLL or
// WS_HSCROLL and there is room. The bars stand right beside the client rectangle, as long as its side; where they meet
// is the size box.
#pragma once

#include "win32/types.h"

namespace vndk::win32 {

struct Window;

/// Place of a frame's bar (SB_HORZ or SB_VERT) in screen coordinates; empty when the frame shows none.
[[nodiscard]] RECT frameScrollBarRect(const Window& window, int bar);
/// The corner between two bars, in screen coordinates; empty without both.
[[nodiscard]] RECT frameSizeBoxRect(const Window& window);
/// The corner sizes the window: it, or the top-level window whose lower right corner it fills, has a thick frame and is
/// not maximised. It answers HTBOTTOMRIGHT then, or HTBOTTOMLEFT with WS_EX_LEFTSCROLLBAR, and shows a grip.
[[nodiscard]] bool frameSizeBoxSizes(const Window& window);

/// Paints a bar (SB_HORZ or SB_VERT) of the frame; nothing when the frame shows none. The context is the window's own
/// of GetWindowDC: its origin is the window's corner.
void drawFrameScrollBar(HWND window, HDC dc, int bar);
/// Paints the corner between two bars.
void drawFrameSizeBox(HWND window, HDC dc);

/// The left button went down over HTHSCROLL or HTVSCROLL at a point of the screen: follows the mouse until it goes up,
/// sending WM_HSCROLL or WM_VSCROLL to the window. Returns at once when the bar doesn't react. The window may be gone
/// when it returns.
void trackFrameScrollBar(HWND window, LRESULT hitTest, POINT point);

/// A right click at a point of the screen: shows the menu of the frame's bar that is there. False when there is none.
/// The window may be gone when it returns.
bool showFrameScrollMenu(HWND window, POINT point);

/// The standard ground of a bar between its arrows: what DefWindowProc answers to WM_CTLCOLORSCROLLBAR. Sets the
/// context's colours for the pattern. The brush is shared; don't delete it.
HBRUSH scrollBarGround(HDC dc);

} // namespace vndk::win32
