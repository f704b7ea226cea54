#include "user/show_window.h"

#include "user/activation.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/hooks.h"
#include "user/window_position.h"
#include "win32/error.h"
#include "win32/input.h"
#include "win32/metrics.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

bool isMinimizing(int command) {
    return command == SW_MINIMIZE || command == SW_SHOWMINIMIZED || command == SW_SHOWMINNOACTIVE;
}

void setShowState(Window& window, ShowState state) {
    window.showState = state;
    window.style &= ~(WS_MINIMIZE | WS_MAXIMIZE);
    if (state == ShowState::minimized)
        window.style |= WS_MINIMIZE;
    if (state == ShowState::maximized)
        window.style |= WS_MAXIMIZE;
}

bool slotTaken(const Window& window, const RECT& slot) {
    const std::vector<Window*>& siblings = window.parent->children;
    return std::any_of(siblings.begin(), siblings.end(), [&](const Window* each) {
        const RECT& other = each->windowRect;
        return each != &window && each->showState == ShowState::minimized && other.left < slot.right &&
               slot.left < other.right && other.top < slot.bottom && slot.top < other.bottom;
    });
}

/// Where the window goes for a command, on the screen, once it has taken its new state. False when it refused or died.
bool takeState(HWND handle, int command, RECT& place) {
    Window* window = findWindow(handle);
    const bool wasMinimized = window->showState == ShowState::minimized;
    if (isMinimizing(command)) {
        window->restoreMaximized = window->showState == ShowState::maximized;
        setShowState(*window, ShowState::minimized);
        place = minimizedPlace(*window);
        return true;
    }
    if (wasMinimized && send(handle, WM_QUERYOPEN) == FALSE)
        return false;
    window = findWindow(handle);
    if (window == nullptr)
        return false;
    const bool maximize =
        command == SW_SHOWMAXIMIZED || (wasMinimized && window->restoreMaximized && command != SW_SHOWNORMAL);
    if (!maximize) {
        setShowState(*window, ShowState::normal);
        place = window->normalRect;
        return true;
    }
    const MaximizedPlace maximized = askMaximizedPlace(handle);
    window = findWindow(handle);
    if (window == nullptr)
        return false;
    setShowState(*window, ShowState::maximized);
    const POINT at = maximized.position;
    place = toScreen(*window, {at.x, at.y, at.x + maximized.size.cx, at.y + maximized.size.cy});
    return true;
}

bool focusWithin(HWND window) {
    const HWND focus = GetFocus();
    return focus != nullptr && (focus == window || IsChild(window, focus) != FALSE);
}

/// What ShowWindow does with a window, once it has read the command.
struct Plan {
    bool show = true;
    bool changeState = false;
    bool nothing = false;
    UINT flags = 0;
};

Plan planFor(const Window& window, int command) {
    const bool visible = (window.style & WS_VISIBLE) != 0;
    const bool child = isChild(window);
    const bool normal = window.showState == ShowState::normal;
    constexpr UINT inPlace = SWP_NOSIZE | SWP_NOMOVE;
    constexpr UINT inBackground = SWP_NOACTIVATE | SWP_NOZORDER;
    Plan plan;
    switch (command) {
    case SW_HIDE:
        plan.show = false;
        plan.nothing = !visible;
        plan.flags = SWP_HIDEWINDOW | inPlace;
        if (child || GetActiveWindow() != window.handle)
            plan.flags |= inBackground;
        return plan;
    case SW_SHOWMINNOACTIVE:
    case SW_MINIMIZE:
        plan.flags = inBackground;
        [[fallthrough]];
    case SW_SHOWMINIMIZED:
        plan.flags |= SWP_SHOWWINDOW;
        plan.changeState = true;
        plan.nothing = visible && window.showState == ShowState::minimized && command != SW_SHOWMINIMIZED;
        break;
    case SW_SHOWMAXIMIZED:
        plan.flags = SWP_SHOWWINDOW;
        plan.changeState = window.showState != ShowState::maximized;
        plan.nothing = visible && !plan.changeState;
        break;
    case SW_SHOWNA:
        plan.flags = SWP_SHOWWINDOW | SWP_NOACTIVATE;
        break;
    case SW_SHOW:
        plan.flags = SWP_SHOWWINDOW;
        plan.nothing = visible;
        break;
    case SW_SHOWNOACTIVATE:
        plan.flags = SWP_SHOWWINDOW | SWP_NOACTIVATE;
        plan.changeState = !normal;
        plan.nothing = visible && normal;
        break;
    default: // SW_SHOWNORMAL, SW_SHOWDEFAULT, SW_RESTORE
        plan.flags = SWP_SHOWWINDOW;
        plan.changeState = !normal;
        plan.nothing = visible && normal;
        break;
    }
    if (child)
        plan.flags |= inBackground;
    if (!plan.changeState)
        plan.flags |= inPlace;
    return plan;
}

/// A window that is shown already comes to the front with the commands that activate.
void activateShown(HWND handle, int command) {
    const Window* window = findWindow(handle);
    if (window == nullptr || isChild(*window) || !isTopLevel(*window) || GetActiveWindow() == handle)
        return;
    if (command == SW_SHOW || command == SW_SHOWNORMAL || command == SW_RESTORE || command == SW_SHOWMAXIMIZED ||
        command == SW_SHOWDEFAULT)
        activate(handle, ActivationCause::program);
}

/// An overlapped window that was never shown hears its size and place with the first command of all.
void sendFirstSize(HWND handle) {
    Window* window = findWindow(handle);
    if (window == nullptr || !window->sendSizeAndMove)
        return;
    window->sendSizeAndMove = false;
    sendSizeAndMove(handle);
}

/// The focus, or the activation, doesn't stay with what is hidden.
void leaveHidden(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return;
    if (!isChild(*window))
        activateOther(handle);
    else if (focusWithin(handle))
        SetFocus(GetParent(handle));
}

void carryOut(HWND handle, const Plan& plan) {
    Window* window = findWindow(handle);
    if (isChild(*window) && !isVisible(*window->parent)) {
        // Nothing can be seen of it: only its own wish changes.
        window->style = plan.show ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
        return;
    }
    setWindowPos(handle, HWND_TOP, 0, 0, 0, 0, plan.flags);
}

/// After SW_MINIMIZE another window is active; a window restored while it was active gets the focus again.
void settleActivation(HWND handle, int command, bool wasMinimized) {
    const Window* window = findWindow(handle);
    if (window == nullptr || isChild(*window))
        return;
    if (command == SW_MINIMIZE)
        activateOther(handle);
    else if (wasMinimized && window->showState != ShowState::minimized && GetActiveWindow() == handle &&
             GetFocus() == nullptr)
        send(handle, WM_ACTIVATE, WA_ACTIVE, 0);
}

BOOL show(HWND handle, int command) {
    const Window* window = findWindow(handle);
    const bool wasVisible = (window->style & WS_VISIBLE) != 0;
    const bool wasMinimized = window->showState == ShowState::minimized;
    const Plan plan = planFor(*window, command);
    if (plan.nothing) {
        if (command == SW_HIDE && window->sendSizeAndMove)
            send(handle, WM_SHOWWINDOW, FALSE, 0);
        activateShown(handle, command);
        sendFirstSize(handle);
        return wasVisible ? TRUE : FALSE;
    }
    if (plan.changeState) {
        changeShowState(handle, command, plan.flags);
    } else {
        if (plan.show != wasVisible || command == SW_SHOWNA)
            send(handle, WM_SHOWWINDOW, plan.show ? TRUE : FALSE, 0);
        if (findWindow(handle) != nullptr)
            carryOut(handle, plan);
    }
    if (!plan.show)
        leaveHidden(handle);
    settleActivation(handle, command, wasMinimized);
    sendFirstSize(handle);
    return wasVisible ? TRUE : FALSE;
}

} // namespace

/// Minimised windows stand in rows at the bottom of their parent, from the left; on the screen.
RECT minimizedPlace(const Window& window) {
    const int width = GetSystemMetrics(SM_CXMINIMIZED);
    const int height = GetSystemMetrics(SM_CYMINIMIZED);
    const RECT area = window.parent->clientRect;
    if (window.minimizedPosition.x != -1 || window.minimizedPosition.y != -1)
        return toScreen(window, {window.minimizedPosition.x, window.minimizedPosition.y,
                                 window.minimizedPosition.x + width, window.minimizedPosition.y + height});
    const int columns = std::max(1, widthOf(area) / width);
    for (int slot = 0; slot < 1000; ++slot) {
        const int left = area.left + slot % columns * width;
        const int bottom = area.bottom - slot / columns * height;
        const RECT place{left, bottom - height, left + width, bottom};
        if (!slotTaken(window, place))
            return place;
    }
    return {area.left, area.bottom - height, area.left + width, area.bottom};
}

bool changeShowState(HWND handle, int command, UINT flags) {
    if (callHooks(WH_CBT, HCBT_MINMAX, reinterpret_cast<WPARAM>(handle), command) != 0)
        return false;
    Window* window = findWindow(handle);
    if (window == nullptr)
        return false;
    const bool wasMinimized = window->showState == ShowState::minimized;
    if (wasMinimized && isMinimizing(command)) {
        setWindowPos(handle, HWND_TOP, 0, 0, 0, 0, flags | SWP_NOSIZE | SWP_NOMOVE);
        return true;
    }
    if (isMinimizing(command) && focusWithin(handle))
        moveFocus(nullptr);
    if (findWindow(handle) == nullptr)
        return false;
    RECT place{};
    if (!takeState(handle, command, place))
        return false;
    window = findWindow(handle);
    const bool minimized = window->showState == ShowState::minimized;
    place = fromScreen(*window, place);
    setWindowPos(handle, HWND_TOP, place.left, place.top, widthOf(place), heightOf(place),
                 flags | SWP_FRAMECHANGED | SWP_STATECHANGED | SWP_NOCOPYBITS);
    if (minimized != wasMinimized)
        showOwnedPopups(handle, !minimized);
    return true;
}

void sendSizeAndMove(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return;
    const WPARAM kind = window->showState == ShowState::minimized   ? SIZE_MINIMIZED
                        : window->showState == ShowState::maximized ? SIZE_MAXIMIZED
                                                                    : SIZE_RESTORED;
    const RECT size = window->clientRect;
    send(handle, WM_SIZE, kind, MAKELPARAM(widthOf(size), heightOf(size)));
    window = findWindow(handle);
    if (window == nullptr)
        return;
    const RECT place = fromScreen(*window, window->clientRect);
    send(handle, WM_MOVE, 0, MAKELPARAM(place.left, place.top));
}

MaximizedPlace askMaximizedPlace(HWND handle) {
    const MINMAXINFO info = askMinMax(handle);
    MaximizedPlace place{info.ptMaxPosition, {info.ptMaxSize.x, info.ptMaxSize.y}};
    // Larger than its limit a window isn't, and one that can't be sized shows its whole frame.
    place.size.cx = std::min(place.size.cx, info.ptMaxTrackSize.x);
    place.size.cy = std::min(place.size.cy, info.ptMaxTrackSize.y);
    return place;
}

void showOwnedPopups(HWND owner, bool show) {
    const DesktopState* state = currentState();
    if (state == nullptr || state->root == nullptr)
        return;
    std::vector<HWND> popups;
    for (const Window* window : state->root->children)
        if (window->owner == owner && (show ? window->hiddenByOwner : (window->style & WS_VISIBLE) != 0))
            popups.push_back(window->handle);
    for (const HWND popup : popups)
        send(popup, WM_SHOWWINDOW, show ? TRUE : FALSE, show ? SW_PARENTOPENING : SW_PARENTCLOSING);
}

void ownerShown(HWND handle, bool show, LPARAM why) {
    Window* window = findWindow(handle);
    if (window == nullptr || window->owner == nullptr)
        return;
    if (!show && why == SW_PARENTCLOSING && (window->style & WS_VISIBLE) != 0) {
        window->hiddenByOwner = true;
        setWindowPos(handle, nullptr, 0, 0, 0, 0,
                     SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    } else if (show && why == SW_PARENTOPENING && window->hiddenByOwner) {
        window->hiddenByOwner = false;
        setWindowPos(handle, nullptr, 0, 0, 0, 0,
                     SWP_SHOWWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
}

} // namespace vndk::win32

using vndk::win32::findWindow;
using vndk::win32::ShowState;
using vndk::win32::Window;

BOOL ShowWindow(HWND window, int command) {
    const Window* found = findWindow(window);
    if (found == nullptr || found->parent == nullptr)
        return FALSE;
    if (command < SW_HIDE || command > SW_SHOWDEFAULT) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return vndk::win32::show(window, command);
}

BOOL ShowOwnedPopups(HWND owner, BOOL show) {
    if (findWindow(owner) == nullptr)
        return FALSE;
    vndk::win32::showOwnedPopups(owner, show != FALSE);
    return TRUE;
}

BOOL OpenIcon(HWND window) {
    if (findWindow(window) == nullptr)
        return FALSE;
    if (IsIconic(window) != FALSE)
        ShowWindow(window, SW_SHOWNORMAL);
    return TRUE;
}

BOOL CloseWindow(HWND window) {
    if (findWindow(window) == nullptr)
        return FALSE;
    if (IsIconic(window) == FALSE)
        ShowWindow(window, SW_MINIMIZE);
    return TRUE;
}

BOOL IsIconic(HWND window) {
    const Window* found = findWindow(window);
    return found != nullptr && (found->style & WS_MINIMIZE) != 0 ? TRUE : FALSE;
}

BOOL IsZoomed(HWND window) {
    const Window* found = findWindow(window);
    return found != nullptr && (found->style & WS_MAXIMIZE) != 0 ? TRUE : FALSE;
}
