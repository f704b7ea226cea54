// Places of menu items, and how they are painted.
#pragma once

#include "user/menu.h"

namespace vndk::win32 {

/// Border of a popup menu, inside of its client area.
constexpr int popupBorder = 3;

/// Lays out a popup: item rectangles in its client area, and its size. The owner is asked for the size of items that it
/// draws. Items that don't fit between the edges of the screen go into further columns.
void layOutPopup(HMENU menu, HWND owner);
/// Lays out a bar from its upper left corner; the height of its rows.
int layOutBar(HMENU menu, HWND owner, int width);

/// Paints one item; `origin` is where the corner that its rectangle counts from lies in the context.
void drawMenuItem(HMENU menu, int position, HDC dc, POINT origin, HWND owner);
/// The border and all items that the clip of the context touches.
void drawPopup(HMENU menu, HDC dc, HWND owner);

} // namespace vndk::win32
