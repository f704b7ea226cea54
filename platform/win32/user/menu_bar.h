// Menu bars and system menus, as the frame of a window needs them.
//
// The bar is a strip of the frame below the caption. The frame's room gives it its place: menuBarArea of
// user/frame_geometry.h.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

/// The window has a bar: it is no child, and a menu was set.
[[nodiscard]] bool hasMenuBar(const Window& window);
/// Height of the bar at this width, with the line below it. Items that don't fit go into further rows. 0 without a bar.
/// Lays the items out and sends nothing: items that the owner draws get their sizes (WM_MEASUREITEM) when the bar is
/// drawn for the first time, or by DrawMenuBar.
int menuBarHeight(HWND window, int width);
/// Paints the bar into a context of the whole window; `area` in that context's coordinates.
void drawMenuBar(HWND window, HDC dc, const RECT& area);

/// WM_SYSCOMMAND SC_MOUSEMENU: a button went down on the bar (HTMENU) or on the system menu's icon (HTSYSMENU).
void trackMenuByMouse(HWND window, int hitTest, POINT screenPoint);
/// WM_SYSCOMMAND SC_KEYMENU: Alt or F10 (character 0) goes to the first item of the bar, a blank opens the system menu,
/// another character the item that it marks. Without a bar the top-level parent's is taken.
void trackMenuByKey(HWND window, WPARAM character);

/// Items of the system menu get the states that fit to the window (SC_RESTORE, SC_MOVE, SC_SIZE...).
void updateSystemMenu(HWND window);
/// Opens the system menu at a place, as after a right click on the caption. The command goes as WM_SYSCOMMAND.
void trackSystemMenu(HWND window, POINT screenPoint);
/// May the window be closed by its system menu? False when SC_CLOSE was grayed or taken out.
[[nodiscard]] bool closeEnabled(HWND window);

/// The window is being destroyed: its bar and system menu go with it, tracking for it ends.
void forgetMenus(Window& window);
/// A menu is being tracked now.
[[nodiscard]] bool menuTracked();

} // namespace vndk::win32
