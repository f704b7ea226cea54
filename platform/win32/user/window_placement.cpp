// WINDOWPLACEMENT: what a program keeps of a window for its next start.
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/show_window.h"
#include "user/window_position.h"
#include "win32/error.h"

#include <algorithm>

using vndk::win32::findWindow;
using vndk::win32::fromScreen;
using vndk::win32::ShowState;
using vndk::win32::toScreen;
using vndk::win32::Window;

BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement) {
    const Window* found = findWindow(window);
    if (found == nullptr)
        return FALSE;
    if (placement == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const bool minimized = found->showState == ShowState::minimized;
    const bool maximized = found->showState == ShowState::maximized;
    placement->length = sizeof(WINDOWPLACEMENT);
    placement->flags = minimized && found->restoreMaximized ? WPF_RESTORETOMAXIMIZED : 0;
    placement->showCmd = static_cast<UINT>(minimized ? SW_SHOWMINIMIZED : maximized ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL);
    placement->ptMinPosition = found->minimizedPosition;
    if (minimized) {
        const RECT place = fromScreen(*found, found->windowRect);
        placement->ptMinPosition = {place.left, place.top};
    }
    placement->ptMaxPosition = found->maximizedPosition;
    placement->rcNormalPosition = fromScreen(*found, found->normalRect);
    return TRUE;
}

BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement) {
    Window* found = findWindow(window);
    if (found == nullptr)
        return FALSE;
    if (placement == nullptr || placement->length != sizeof(WINDOWPLACEMENT) || found->parent == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const WINDOWPLACEMENT wanted = *placement;
    RECT normal = wanted.rcNormalPosition;
    normal = {vndk::win32::clampCoordinate(normal.left), vndk::win32::clampCoordinate(normal.top),
              vndk::win32::clampCoordinate(normal.right), vndk::win32::clampCoordinate(normal.bottom)};
    normal.right = std::max(normal.left, normal.right);
    normal.bottom = std::max(normal.top, normal.bottom);
    if ((wanted.flags & WPF_SETMINPOSITION) != 0)
        found->minimizedPosition = wanted.ptMinPosition;
    found->maximizedPosition = wanted.ptMaxPosition;
    if (found->showState == ShowState::normal)
        SetWindowPos(window, nullptr, normal.left, normal.top, normal.right - normal.left, normal.bottom - normal.top,
                     SWP_NOZORDER | SWP_NOACTIVATE);
    else
        found->normalRect = toScreen(*found, normal);
    ShowWindow(window, static_cast<int>(wanted.showCmd));
    found = findWindow(window);
    if (found != nullptr && found->showState == ShowState::minimized)
        found->restoreMaximized = (wanted.flags & WPF_RESTORETOMAXIMIZED) != 0;
    return TRUE;
}
