// The end of windows, for the window manager's own rooms.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

/// DestroyWindow without the error for the desktop itself.
bool destroyWindow(HWND window);
/// The last step: WM_NCDESTROY for the children and the window; their memory goes.
void freeWindows(HWND window);
/// WM_PARENTNOTIFY WM_CREATE or WM_DESTROY to the parents of a child, up to the top-level window.
void notifyParents(HWND child, UINT event);

} // namespace vndk::win32
