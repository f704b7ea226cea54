// The loop that follows the mouse while the left button is held on a scroll bar.
//
//  - An arrow or a page area: its code at once, again after four fifths of the double-click time, then twenty times a
//    second, as long as the pointer is on it.
//  - The thumb: SB_THUMBTRACK for each new position. Too far from the bar, or with Escape, it snaps back to where it
//  was.
//  - At the end SB_THUMBPOSITION (thumb only), then SB_ENDSCROLL. Losing the capture ends it likewise, with the thumb
//    back where it was.
#pragma once

#include "win32/types.h"

namespace vndk::win32 {

/// Sends WM_HSCROLL or WM_VSCROLL for a bar (SB_HORZ, SB_VERT, SB_CTL): to the window, or to a control's parent.
void sendScroll(HWND window, int bar, int code, int position);

/// The button went down over a bar (SB_HORZ, SB_VERT, SB_CTL) at a point of the screen. Returns when it is over; the
/// window may be gone then.
void trackScrollBar(HWND window, int bar, POINT point);

} // namespace vndk::win32
