// What the other rooms ask of queue and input.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

/// The window is being destroyed: its posted messages, timers, capture, tracking and caret go.
void forgetInput(Window& window);
/// Sends WM_CAPTURECHANGED and takes the capture away when `window` or one of its children holds it.
void releaseCaptureOf(const Window& window);
/// Posts without the limit of the queue; the message carries time and pointer of now.
bool postInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// A press that somebody had captured and doesn't want goes the ordinary way: it comes again, before all other input.
/// WM_LBUTTONDOWN, WM_RBUTTONDOWN or WM_MBUTTONDOWN; the point is on the screen.
void repeatPress(UINT message, POINT point);
/// MK_* of what is held as of the last message.
[[nodiscard]] WPARAM heldKeys();
/// Pointer as of the last message, in screen coordinates.
[[nodiscard]] POINT messagePoint();

/// Takes the screen's events into the input queue.
void collectScreenEvents();
/// What Desktop::settle does.
int settleQueue(int limit);

/// One turn of a loop that runs inside a message (moving, menus, scroll bars, dialogs): gets the next message, waiting
/// for it; false when WM_QUIT came (it is put back) or the desktop is ending. Filters of the kind `filter` (MSGF_*)
/// have seen it: a message that they ate is passed over.
bool nextModalMessage(MSG& message, int filter);

} // namespace vndk::win32
