// DefWindowProc: what a window does when its procedure leaves a message alone.
#include "user/default_procedure.h"

#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "win32/codepage.h"
#include "win32/input.h"
#include "win32/paint.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {

namespace {

/// Text of a window, icons of a resource and nothing at all travel in the same place.
std::string textBehind(LPCSTR text) { return reinterpret_cast<UINT_PTR>(text) > 0xFFFF ? std::string(text) : ""; }

LRESULT setText(HWND handle, LPCSTR text) {
    Window* window = findWindow(handle);
    window->text = textBehind(text);
    if (hasCaption(window->style))
        paintCaption(handle);
    else if (window->owner == nullptr && isTopLevel(*window) && (window->style & WS_MAXIMIZE) != 0)
        currentState()->screen.setTitle(toUtf8(window->text)); // it stands for the whole screen
    return TRUE;
}

LRESULT getText(const Window& window, WPARAM size, LPSTR buffer) {
    if (buffer == nullptr || size == 0)
        return 0;
    const std::size_t length = std::min<std::size_t>(window.text.size(), size - 1);
    std::memcpy(buffer, window.text.data(), length);
    buffer[length] = '\0';
    return static_cast<LRESULT>(length);
}

LRESULT setIcon(HWND handle, WPARAM kind, LPARAM icon) {
    Window* window = findWindow(handle);
    HICON& place = kind == ICON_BIG ? window->icon : window->smallIcon;
    const HICON former = place;
    place = reinterpret_cast<HICON>(icon);
    if (hasCaption(window->style))
        paintCaption(handle);
    return reinterpret_cast<LRESULT>(former);
}

std::optional<LRESULT> defaultText(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    Window* window = findWindow(handle);
    switch (message) {
    case WM_NCCREATE:
        if (lParam == 0)
            return FALSE;
        window->text = textBehind(reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpszName);
        return TRUE;
    case WM_SETTEXT:
        return setText(handle, reinterpret_cast<LPCSTR>(lParam));
    case WM_GETTEXT:
        return getText(*window, wParam, reinterpret_cast<LPSTR>(lParam));
    case WM_GETTEXTLENGTH:
        return static_cast<LRESULT>(window->text.size());
    case WM_SETICON:
        return setIcon(handle, wParam, lParam);
    case WM_GETICON:
        return reinterpret_cast<LRESULT>(wParam == ICON_BIG ? window->icon : window->smallIcon);
    case WM_QUERYDRAGICON:
        return reinterpret_cast<LRESULT>(window->icon != nullptr ? window->icon : window->windowClass->icon);
    default:
        return std::nullopt;
    }
}

constexpr LRESULT notifyFormatAnsi = 1;

/// Questions with one answer.
std::optional<LRESULT> defaultAnswer(HWND handle, UINT message, LPARAM lParam) {
    switch (message) {
    case WM_QUERYOPEN:
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_NOTIFYFORMAT:
        return lParam != 0 ? notifyFormatAnsi : 0;
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
        return -1;
    case WM_CLOSE:
        DestroyWindow(handle);
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace

} // namespace vndk::win32

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace vndk::win32;
    if (findWindow(window) == nullptr)
        return 0;
    if (const auto result = defaultText(window, message, wParam, lParam))
        return *result;
    if (const auto result = defaultFrame(window, message, wParam, lParam))
        return *result;
    if (const auto result = defaultPlace(window, message, wParam, lParam))
        return *result;
    if (const auto result = defaultPainting(window, message, wParam, lParam))
        return *result;
    if (const auto result = defaultCommands(window, message, wParam, lParam))
        return *result;
    return defaultAnswer(window, message, lParam).value_or(0);
}
