// Making and changing menus, among the parts of the menu room.
#pragma once

#include "user/desktop_state.h"
#include "user/menu.h"

namespace vndk::win32 {

/// Null with ERROR_NOT_ENOUGH_MEMORY.
HMENU addMenu(bool popup);
/// What follows from an item's kind: lines are grayed, the owner is asked anew for a size.
void settleItem(MenuItem& item);
/// What a MENUITEMINFO says over what the item already is. False with an error when it makes no sense; the item may be
/// half changed then.
bool takeItemInfo(HMENU menu, const MENUITEMINFOA* info, MenuItem& item);
/// Makes `sub` (null: none) the item's sub-menu. False with an error when it is no menu or would contain `menu`.
bool takeSubMenu(HMENU menu, HMENU sub, MenuItem& item);
/// An item changed its look: a menu that is shown is painted anew.
void menuChanged(Menu& menu);
/// An item was enabled or disabled: the caption shows it when the menu is a system menu.
void systemMenuChanged(HMENU menu);

} // namespace vndk::win32
