// One window of the desktop, and how the rooms of the window manager reach it.
//
// Any message that is sent can destroy any window. So a Window* is never kept over a send: keep the handle and find the
// window again. `send` and the calls of the published interface are what sends.
#pragma once

#include "gdi/region.h"
#include "kernel/handle_table.h"
#include "win32/messages.h"
#include "win32/window.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace vndk::win32 {

struct WindowClass {
    std::string name; // as registered; compared without regard to case
    ATOM atom = 0;
    UINT style = 0;
    WNDPROC procedure = nullptr;
    int windowExtra = 0;
    std::vector<BYTE> extra;
    HINSTANCE instance = nullptr;
    HICON icon = nullptr;
    HICON smallIcon = nullptr;
    HCURSOR cursor = nullptr;
    HBRUSH background = nullptr; // a brush, or a system colour's number + 1
    std::string menuName;        // text, or empty
    UINT menuNumber = 0;         // resource number, or 0
    int windows = 0;             // living windows of the class
    HDC classDC = nullptr;
};

/// A scroll bar of a window's frame; also the state of a scroll bar control.
struct ScrollState {
    int minimum = 0;
    int maximum = 100;
    UINT page = 0;
    int position = 0;
    int trackPosition = 0;
    bool tracking = false;
    UINT disabledArrows = 0; // ESB_*
    int pressedPart = 0;     // ScrollPart that is drawn pressed, see controls/scroll_model.h
    int thumbOffset = -1;    // while the thumb is dragged: pixels from the begin of its way; else -1
};

enum class ShowState : std::uint8_t { normal, minimized, maximized };

struct DialogInfo;

struct Window {
    HWND handle = nullptr;
    WindowClass* windowClass = nullptr;
    WNDPROC procedure = nullptr;
    HINSTANCE instance = nullptr;
    DWORD style = 0;
    DWORD exStyle = 0;
    std::string text;
    UINT_PTR id = 0;      // of a child
    HMENU menu = nullptr; // of a top-level window: its bar; owned by the window
    HMENU systemMenu = nullptr;
    LONG_PTR userData = 0;
    std::vector<BYTE> extra;
    std::map<std::string, HANDLE> properties; // names in lower case
    HICON icon = nullptr;
    HICON smallIcon = nullptr;

    Window* parent = nullptr;      // of a child its parent, of a top-level window the desktop; null for the desktop
    HWND owner = nullptr;          // of a top-level window
    std::vector<Window*> children; // topmost first
    HWND lastActivePopup = nullptr;
    HWND savedFocus = nullptr; // where the focus was when the window was deactivated

    RECT windowRect{}; // screen coordinates
    RECT clientRect{}; // screen coordinates
    RECT normalRect{}; // where it goes back to: screen coordinates, of a child its parent's
    POINT minimizedPosition{-1, -1};
    POINT maximizedPosition{-1, -1};
    ShowState showState = ShowState::normal;
    bool restoreMaximized = false;
    std::unique_ptr<Region> shape; // set by SetWindowRgn, relative to windowRect
    ScrollState horizontal;
    ScrollState vertical;
    bool scrollStateMade = false; // its bars were used before, so they have a state even when the style shows none

    // Painting. The update region is in client coordinates, the frame's in window coordinates.
    Region update;
    Region frameUpdate;
    bool eraseNeeded = false;
    bool internalPaint = false;
    bool paintPending = false; // WM_PAINT went out and nobody has validated since: frame and ground are not sent again
    HDC ownDC = nullptr;

    std::shared_ptr<void> control; // the object behind a control's window, see controls/control.h

    bool created = false;         // WM_CREATE was answered
    bool destroying = false;      // DestroyWindow is at work
    bool destroySent = false;     // WM_DESTROY went out
    bool sendSizeAndMove = false; // an overlapped window hears its size and place when it is first shown
    bool hiddenByOwner = false;   // shown again together with its owner
    bool captionActive = false;
    int pressedButton = 0; // HTCLOSE and the like: the caption button that is drawn pressed
    bool isDialog = false;
    std::shared_ptr<DialogInfo> dialog; // user/dialog.h; null unless the dialog manager works on the window
};

struct DesktopState;

/// The current desktop's state, or null with ERROR_INVALID_WINDOW_HANDLE.
DesktopState* currentState();
/// Null, with ERROR_INVALID_WINDOW_HANDLE, when the handle is dead.
Window* findWindow(HWND handle);
/// Calls the window procedure with hooks and guard; 0 for a dead window. What SendMessage does.
LRESULT send(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
/// The same for a procedure that is given (subclasses, dialog procedures): exceptions are logged and answer 0.
LRESULT callProcedure(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// A line about what goes wrong in module code or isn't done, once for each text, to stderr: "win32: ...".
void logOnce(const std::string& text);

/// WS_CHILD without WS_POPUP: coordinates and order count within the parent.
[[nodiscard]] inline bool isChild(const Window& window) { return (window.style & (WS_CHILD | WS_POPUP)) == WS_CHILD; }
[[nodiscard]] Window* topLevelOf(Window& window);
[[nodiscard]] bool isVisible(const Window& window);        // with all its ancestors
[[nodiscard]] bool isMinimizedUnder(const Window& window); // the window or an ancestor is minimised

/// The window that the pointer is over at a point of the screen, with its WM_NCHITTEST answer (sent to it and, after
/// HTTRANSPARENT, to what lies behind). Disabled windows answer HTERROR.
HWND windowAt(POINT point, LRESULT& hitTest);

/// True for a window of the desktop itself.
[[nodiscard]] inline bool isTopLevel(const Window& window) {
    return window.parent != nullptr && window.parent->parent == nullptr;
}

/// Frame sizes by style, as WM_NCCALCSIZE takes them off: borders, caption, menu bar, scroll bars.
[[nodiscard]] RECT clientFromWindowRect(const Window& window, const RECT& windowRect);

} // namespace vndk::win32
