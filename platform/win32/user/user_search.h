// How a user who is made of steps finds things.
#pragma once

#include "user/window.h"
#include "win32/menu.h"

#include <string>

namespace vndk::win32 {

/// The topmost visible top-level window with this title, or of the class when the text begins with '#'; the active one
/// for an empty text. Null when there is none.
[[nodiscard]] HWND topLevelWindow(const std::string& titleOrClass);
/// Depth first below the window, a visible one before all hidden ones; the window itself for 0. Null when there is
/// none.
[[nodiscard]] HWND findControl(HWND window, int id);
[[nodiscard]] bool enabledWithParents(HWND window);
/// True when a click at this point of the screen reaches the control.
[[nodiscard]] bool reachable(HWND control, POINT point);

struct FoundMenuItem {
    HMENU menu = nullptr; // null: there is no such item
    UINT position = 0;
};
/// In the popups that are open, the newest first; else in the bar of the window.
[[nodiscard]] FoundMenuItem shownItem(HWND window, const std::string& text);

} // namespace vndk::win32
