// The windows that popup menus are shown in.
#pragma once

#include "user/menu.h"

namespace vndk::win32 {

/// Registers class "#32768" in the current desktop.
void registerMenuClass();

/// Where a popup of this size stands: at a point aligned as TPM_ flags say, not over `exclude` (may be null), and
/// inside of the screen.
[[nodiscard]] POINT placePopup(SIZE size, POINT at, UINT flags, const RECT* exclude);
/// Shows a laid-out menu. Null when that failed.
HWND showPopup(HMENU menu, HWND owner, POINT at);
/// Takes the window away.
void hidePopup(HMENU menu);
/// The item at a point of the screen; noItem on the border and outside.
[[nodiscard]] int popupItemAt(const Menu& menu, POINT point);
/// Paints items anew that changed their selection.
void repaintPopupItem(const Menu& menu, int position);

} // namespace vndk::win32
