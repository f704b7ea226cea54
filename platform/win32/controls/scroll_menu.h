// The menu of a right click on a scroll bar.
#pragma once

#include "win32/types.h"

namespace vndk::win32 {

/// Shows the menu for a bar (SB_HORZ, SB_VERT, SB_CTL) at a point of the screen, and sends what was picked as if the
/// user had done it with the bar's parts. The window may be gone when it returns.
void showScrollMenu(HWND window, int bar, POINT point);

} // namespace vndk::win32
