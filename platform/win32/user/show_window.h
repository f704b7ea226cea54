// Showing, minimising and maximising, for the window manager's own rooms.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

/// Minimises (SW_MINIMIZE, SW_SHOWMINIMIZED, SW_SHOWMINNOACTIVE), maximises (SW_SHOWMAXIMIZED) or restores (SW_RESTORE,
/// SW_SHOWNORMAL, SW_SHOWNOACTIVATE) with the messages of SetWindowPos; `flags` are added to it. False when a hook or
/// the window refused.
bool changeShowState(HWND window, int command, UINT flags);
/// WM_SIZE and WM_MOVE with what the window has.
void sendSizeAndMove(HWND window);
/// The popups of an owner that is minimised go away, those of one that is restored come back.
void showOwnedPopups(HWND owner, bool show);
/// DefWindowProc's part of it.
void ownerShown(HWND window, bool show, LPARAM why);
/// Where a minimised window stands, on the screen.
[[nodiscard]] RECT minimizedPlace(const Window& window);
/// Where a maximised window stands: place counts from the parent.
struct MaximizedPlace {
    POINT position;
    SIZE size;
};
[[nodiscard]] MaximizedPlace askMaximizedPlace(HWND window);

} // namespace vndk::win32
