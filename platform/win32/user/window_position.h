// Place, size, order and visibility of windows, for the window manager's own rooms.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

/// Sizes and places that a window can have: what lies beyond is brought back to these.
constexpr int coordinateLimit = 32767;
[[nodiscard]] int clampCoordinate(long long value);

/// SetWindowPos with flags that only the system sets (SWP_STATECHANGED).
bool setWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags);

/// Sends WM_NCCALCSIZE in the form that asks for the client area alone, and takes it.
void calculateClient(HWND window);

/// Moves the rectangles of all windows below `window` along with it.
void shiftChildren(Window& window, int dx, int dy);

/// WM_GETMINMAXINFO with the defaults filled in; what the window left there.
[[nodiscard]] MINMAXINFO askMinMax(HWND window);

/// The owner as far as it counts for the order: null when SetParent has put it into another window, where it has no
/// place among the top-level windows any more.
[[nodiscard]] Window* ownerOf(const Window& window);
/// Puts a window into its parent's order. `insertAfter` as in SetWindowPos; owned windows go along and stay in front of
/// their owners. Returns whether the order changed. Nothing is painted and nothing is sent.
bool reorder(Window& window, HWND insertAfter, bool moveOwners);
/// Would `reorder` do nothing?
[[nodiscard]] bool inPlace(const Window& window, HWND insertAfter);
/// Puts a window that has just been made into its parent's order.
void linkWindow(Window& window, Window& parent);
void unlinkWindow(Window& window);

/// The whole tree fits together: parents, owners, order, handles. Names what doesn't; empty when all is well.
[[nodiscard]] std::string verifyWindows();
/// In debug builds, asserts that it does.
void assertWindows();

} // namespace vndk::win32
