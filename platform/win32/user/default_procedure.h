// The parts of DefWindowProc. Each answers the messages of one family.
#pragma once

#include "user/window.h"

#include <optional>

namespace vndk::win32 {

/// Frame: WM_NCCALCSIZE, WM_NCPAINT, WM_NCHITTEST, WM_NCACTIVATE and the mouse over it. Nothing for other messages.
std::optional<LRESULT> defaultFrame(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Place, visibility, activation and focus.
std::optional<LRESULT> defaultPlace(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Ground, colours, painting, printing, the cursor.
std::optional<LRESULT> defaultPainting(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Keys, menus, system commands, help.
std::optional<LRESULT> defaultCommands(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// WM_NCHITTEST's default answer for a point of the screen.
[[nodiscard]] LRESULT hitTestFrame(const Window& window, POINT point);
/// Paints the frame (borders, caption, menu bar, scroll bars), clipped to `clip` (screen coordinates) if given.
void paintFrame(HWND window, const Region* clip);
/// Paints the frame into a context whose origin is the window's corner.
void paintFrameInto(HWND window, HDC dc);
/// Paints the caption's part of the frame anew when it can be seen.
void paintCaption(HWND window);
/// WM_NCLBUTTONDOWN and the like.
void pressFrame(HWND window, LRESULT hitTest, POINT point);
void doubleClickFrame(HWND window, LRESULT hitTest, POINT point);
/// WM_SYSCOMMAND.
LRESULT systemCommand(HWND window, WPARAM command, LPARAM lParam);
/// Follows mouse or keys until the window has its new place or size. `command` is SC_MOVE or SC_SIZE with a hit-test
/// part in the low four bits (0: by keys).
void moveOrSize(HWND window, UINT command, POINT point);

} // namespace vndk::win32
