// A dialog in words: what a user sees, for those who can't look, and for tests.
//
//     Dialog "Edit Attribute"
//       220  list, 2 rows, focus
//              Prompt | Value
//            1 Number | 42
//          * 2 Room | Office
//       223  button "OK", default
//         2  button "Cancel"
#pragma once

#include "win32/types.h"

#include <string>

namespace vndk::app {

/// Title and visible controls in tab order, each on a line of its own: id, kind, text, state; below a list its rows,
/// the selected ones marked by an asterisk. In code page 1252.
std::string dialogText(HWND dialog);
/// The popup menus that are open, the newest first, item by item; empty when there is none.
std::string openMenusText();
/// The kind of a control in a word or two.
std::string kindOf(HWND control);

} // namespace vndk::app
