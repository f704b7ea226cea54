// Which window is active and which has the focus.
//
// The active window is a top-level one; the focus lies in it or in one of its descendants, or nowhere. This thread's
// windows are all there are, so the foreground window is the active one.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

struct ActivationState {
    HWND active = nullptr;
    HWND focus = nullptr;
    bool appActive = false; // WM_ACTIVATEAPP TRUE went out last
    // Alt and F10 reach for the menu when they go up and no other key came between.
    bool altAlone = false;
    bool f10Alone = false;
};

enum class ActivationCause { program, mouse };

/// Makes a top-level window active (null: none), with all messages. False when a hook or the window that was active
/// refused; true as well when it was active already.
bool activate(HWND window, ActivationCause cause);
/// A mouse button went down over `target`: WM_MOUSEACTIVATE, and what it asks for. True when the button's message is
/// to be delivered.
bool activateByMouse(HWND target, LRESULT hitTest, UINT message);
/// The window is hidden, minimised or destroyed: another one becomes active when it was.
void activateOther(HWND window);
/// Gives the focus to a window (null: none) without asking whether it may have it.
void moveFocus(HWND window);
/// The window is being destroyed: focus and activation forget it.
void forgetActivation(const Window& window);

} // namespace vndk::win32
