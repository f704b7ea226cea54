// DefWindowProc for place, visibility, activation and focus.
#include "user/activation.h"
#include "user/default_procedure.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/painting.h"
#include "user/show_window.h"
#include "user/window_position.h"
#include "win32/input.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

/// Windows that the user can size keep within their limits.
void limitPosition(HWND handle, WINDOWPOS& position) {
    const Window* window = findWindow(handle);
    if ((position.flags & SWP_NOSIZE) != 0 || window->showState == ShowState::minimized)
        return;
    if ((window->style & WS_THICKFRAME) == 0 && (window->style & (WS_POPUP | WS_CHILD)) != 0)
        return;
    const MINMAXINFO limits = askMinMax(handle);
    window = findWindow(handle);
    if (window == nullptr)
        return;
    position.cx = std::min(position.cx, static_cast<int>(limits.ptMaxTrackSize.x));
    position.cy = std::min(position.cy, static_cast<int>(limits.ptMaxTrackSize.y));
    position.cx = std::max(position.cx, static_cast<int>(limits.ptMinTrackSize.x));
    position.cy = std::max(position.cy, static_cast<int>(limits.ptMinTrackSize.y));
}

void tellPosition(HWND handle, const WINDOWPOS& position) {
    const UINT flags = position.flags;
    if ((flags & SWP_NOCLIENTMOVE) == 0) {
        const Window* window = findWindow(handle);
        const RECT client = fromScreen(*window, window->clientRect);
        send(handle, WM_MOVE, 0, MAKELPARAM(client.left, client.top));
    }
    const Window* window = findWindow(handle);
    if (window == nullptr || ((flags & SWP_NOCLIENTSIZE) != 0 && (flags & SWP_STATECHANGED) == 0))
        return;
    const WPARAM kind = window->showState == ShowState::minimized   ? SIZE_MINIMIZED
                        : window->showState == ShowState::maximized ? SIZE_MAXIMIZED
                                                                    : SIZE_RESTORED;
    send(handle, WM_SIZE, kind, MAKELPARAM(widthOf(window->clientRect), heightOf(window->clientRect)));
}

/// The caption can be dragged without bringing the window to the front first: the drag does that by itself.
LRESULT mouseActivate(HWND handle, WPARAM wParam, LPARAM lParam) {
    const Window* window = findWindow(handle);
    if (isChild(*window) && window->parent != nullptr && window->parent->parent != nullptr) {
        const LRESULT answer = send(window->parent->handle, WM_MOUSEACTIVATE, wParam, lParam);
        if (answer != 0)
            return answer;
    }
    const DWORD_PTR where = static_cast<DWORD_PTR>(lParam);
    return HIWORD(where) == WM_LBUTTONDOWN && LOWORD(where) == HTCAPTION ? MA_NOACTIVATE : MA_ACTIVATE;
}

/// The bit alone changes: nothing is painted, and nothing of it can be seen until it is set again.
void setRedraw(HWND handle, bool redraw) {
    Window* window = findWindow(handle);
    window->style = redraw ? window->style | WS_VISIBLE : window->style & ~WS_VISIBLE;
    refreshContexts();
}

} // namespace

std::optional<LRESULT> defaultPlace(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_WINDOWPOSCHANGING:
        if (lParam != 0)
            limitPosition(handle, *reinterpret_cast<WINDOWPOS*>(lParam));
        return 0;
    case WM_WINDOWPOSCHANGED:
        if (lParam != 0)
            tellPosition(handle, *reinterpret_cast<const WINDOWPOS*>(lParam));
        return 0;
    case WM_SHOWWINDOW:
        ownerShown(handle, wParam != FALSE, lParam);
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE && IsIconic(handle) == FALSE)
            SetFocus(handle);
        return 0;
    case WM_MOUSEACTIVATE:
        return mouseActivate(handle, wParam, lParam);
    case WM_SETREDRAW:
        setRedraw(handle, wParam != FALSE);
        return 0;
    case WM_CANCELMODE:
        if (GetCapture() == handle)
            ReleaseCapture();
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
