// DefWindowProc for keys, menus, help and the commands of the system menu.
#include "controls/scroll_bars.h"
#include "user/activation.h"
#include "user/default_procedure.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/hooks.h"
#include "user/input_queue.h"
#include "user/menu_bar.h"
#include "user/show_window.h"
#include "win32/input.h"
#include "win32/paint.h"

namespace vndk::win32 {

namespace {

constexpr LPARAM contextCodeBit = 0x20000000;   // Alt is held
constexpr LPARAM previousStateBit = 0x40000000; // the key was down already

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

HWND parentOf(HWND handle) {
    const Window* window = findWindow(handle);
    return window != nullptr && isChild(*window) && window->parent->parent != nullptr ? window->parent->handle
                                                                                      : nullptr;
}

void rememberMenuKeys(bool altAlone, bool f10Alone) {
    ActivationState& state = *currentState()->activation;
    state.altAlone = altAlone;
    state.f10Alone = f10Alone;
}

LRESULT closeByKey(HWND handle) {
    Window* window = findWindow(handle);
    const HWND top = topLevelOf(*window)->handle;
    window = findWindow(top);
    if ((window->windowClass->style & CS_NOCLOSE) == 0 && closeEnabled(top))
        PostMessageA(top, WM_SYSCOMMAND, SC_CLOSE, 0);
    return 0;
}

LRESULT systemKeyDown(HWND handle, WPARAM key, LPARAM lParam) {
    const bool repeated = (lParam & previousStateBit) != 0;
    if ((lParam & contextCodeBit) != 0) {
        if (key != VK_MENU || !repeated)
            rememberMenuKeys(key == VK_MENU, false);
        return key == VK_F4 ? closeByKey(handle) : 0;
    }
    const bool shift = (GetKeyState(VK_SHIFT) & 0x8000) != 0;
    rememberMenuKeys(false, key == VK_F10 && !shift);
    if (key == VK_F10 && shift)
        send(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle), -1);
    return 0;
}

LRESULT keyUp(HWND handle, WPARAM key) {
    const ActivationState& state = *currentState()->activation;
    const bool menu = (key == VK_MENU && state.altAlone) || (key == VK_F10 && state.f10Alone);
    rememberMenuKeys(false, false);
    if (menu)
        send(topLevelOf(*findWindow(handle))->handle, WM_SYSCOMMAND, SC_KEYMENU, 0);
    else if (key == VK_APPS)
        send(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle), -1);
    return 0;
}

LRESULT systemCharacter(HWND handle, WPARAM character, LPARAM lParam) {
    rememberMenuKeys(false, false);
    if (character == '\r' && IsIconic(handle) != FALSE) {
        PostMessageA(handle, WM_SYSCOMMAND, SC_RESTORE, 0);
        return 0;
    }
    if ((lParam & contextCodeBit) == 0 || character == '\t' || character == '\x1B')
        return 0;
    if (character == ' ' && parentOf(handle) != nullptr)
        return send(parentOf(handle), WM_SYSCHAR, character, lParam);
    return send(handle, WM_SYSCOMMAND, SC_KEYMENU, static_cast<LPARAM>(character));
}

/// What nobody wanted goes up to the parent.
LRESULT passToParent(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND parent = parentOf(handle);
    return parent != nullptr ? send(parent, message, wParam, lParam) : 0;
}

void contextMenuOfFrame(HWND handle, POINT point) {
    const LRESULT hit = send(handle, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
    const Window* window = findWindow(handle);
    if (window != nullptr && (hit == HTCAPTION || hit == HTSYSMENU) && (window->style & WS_SYSMENU) != 0)
        trackSystemMenu(handle, point);
}

LRESULT contextMenu(HWND handle, WPARAM wParam, LPARAM lParam) {
    if (lParam != -1 && showFrameScrollMenu(handle, pointOf(lParam)))
        return 0;
    if (const HWND parent = parentOf(handle); parent != nullptr)
        return send(parent, WM_CONTEXTMENU, wParam, lParam);
    if (lParam != -1)
        contextMenuOfFrame(handle, pointOf(lParam));
    return 0;
}

LRESULT rightButtonUp(HWND handle, LPARAM lParam) {
    POINT point = pointOf(lParam);
    ClientToScreen(handle, &point);
    send(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle), MAKELPARAM(point.x, point.y));
    return 0;
}

/// F1 asks for help about the window that has the focus.
LRESULT askForHelp(HWND handle) {
    const Window* window = findWindow(handle);
    HELPINFO help{};
    help.cbSize = sizeof help;
    help.iContextType = HELPINFO_WINDOW;
    help.iCtrlId = static_cast<int>(window->id);
    help.hItemHandle = handle;
    help.MousePos = messagePoint();
    send(handle, WM_HELP, 0, reinterpret_cast<LPARAM>(&help));
    return 0;
}

void nextWindow(HWND handle, bool backward) {
    const DesktopState* state = currentState();
    HWND wanted = nullptr;
    for (const Window* window : state->root->children) {
        if (window->handle == handle || window->owner != nullptr ||
            (window->style & (WS_VISIBLE | WS_DISABLED)) != WS_VISIBLE ||
            (window->exStyle & (WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE)) != 0)
            continue;
        wanted = window->handle;
        if (!backward)
            break;
    }
    if (wanted == nullptr)
        return;
    if (!backward)
        SetWindowPos(handle, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE);
    SetForegroundWindow(GetLastActivePopup(wanted));
}

void scrollFrame(HWND handle, WPARAM command, POINT point) {
    trackFrameScrollBar(handle, (command & 0xFFF0) == SC_VSCROLL ? HTVSCROLL : HTHSCROLL, point);
}

} // namespace

LRESULT systemCommand(HWND handle, WPARAM command, LPARAM lParam) {
    if (callHooks(WH_CBT, HCBT_SYSCOMMAND, command, lParam) != 0 || findWindow(handle) == nullptr)
        return 0;
    const POINT point = pointOf(lParam);
    switch (command & 0xFFF0) {
    case SC_SIZE:
    case SC_MOVE:
        moveOrSize(handle, static_cast<UINT>(command), point);
        return 0;
    case SC_MINIMIZE:
        ShowWindow(handle, SW_MINIMIZE);
        return 0;
    case SC_MAXIMIZE:
        ShowWindow(handle, SW_SHOWMAXIMIZED);
        return 0;
    case SC_RESTORE:
        ShowWindow(handle, SW_RESTORE);
        return 0;
    case SC_CLOSE:
        return send(handle, WM_CLOSE);
    case SC_VSCROLL:
    case SC_HSCROLL:
        scrollFrame(handle, command, point);
        return 0;
    case SC_MOUSEMENU:
        trackMenuByMouse(handle, static_cast<int>(command & 0x000F), point);
        return 0;
    case SC_KEYMENU:
        trackMenuByKey(handle, static_cast<WPARAM>(lParam));
        return 0;
    case SC_NEXTWINDOW:
    case SC_PREVWINDOW:
        nextWindow(handle, (command & 0xFFF0) == SC_PREVWINDOW);
        return 0;
    default:
        return 0;
    }
}

std::optional<LRESULT> defaultCommands(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_SYSCOMMAND:
        return systemCommand(handle, wParam, lParam);
    case WM_SYSKEYDOWN:
        return systemKeyDown(handle, wParam, lParam);
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return keyUp(handle, wParam);
    case WM_SYSCHAR:
        return systemCharacter(handle, wParam, lParam);
    case WM_KEYDOWN:
        if (wParam == VK_F10)
            rememberMenuKeys(false, true);
        return wParam == VK_F1 ? askForHelp(handle) : 0;
    case WM_RBUTTONUP:
        return rightButtonUp(handle, lParam);
    case WM_CONTEXTMENU:
        return contextMenu(handle, wParam, lParam);
    case WM_HELP:
    case WM_MOUSEWHEEL:
        return passToParent(handle, message, wParam, lParam);
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
