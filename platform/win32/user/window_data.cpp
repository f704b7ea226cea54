// Numbers, text and properties kept with windows and classes.
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/painting.h"
#include "win32/codepage.h"
#include "win32/error.h"
#include "win32/input.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {

namespace {

/// Reads or writes a number among extra bytes; null when it doesn't lie inside.
BYTE* extraAt(std::vector<BYTE>& extra, int index, std::size_t size) {
    if (index < 0 || static_cast<std::size_t>(index) + size > extra.size()) {
        SetLastError(ERROR_INVALID_INDEX);
        return nullptr;
    }
    return extra.data() + index;
}

LONG_PTR readExtra(std::vector<BYTE>& extra, int index, std::size_t size) {
    const BYTE* place = extraAt(extra, index, size);
    if (place == nullptr)
        return 0;
    if (size == sizeof(LONG)) {
        LONG value = 0;
        std::memcpy(&value, place, sizeof value);
        return value;
    }
    LONG_PTR value = 0;
    std::memcpy(&value, place, sizeof value);
    return value;
}

LONG_PTR writeExtra(std::vector<BYTE>& extra, int index, std::size_t size, LONG_PTR value) {
    BYTE* place = extraAt(extra, index, size);
    if (place == nullptr)
        return 0;
    const LONG_PTR former = readExtra(extra, index, size);
    std::memcpy(place, &value, size); // The low bytes come first.
    return former;
}

template <typename T>
LONG_PTR number(T value) {
    if constexpr (std::is_pointer_v<T>)
        return reinterpret_cast<LONG_PTR>(value);
    else
        return static_cast<LONG_PTR>(value);
}

LONG_PTR readWindow(HWND handle, int index, std::size_t size) {
    Window* window = findWindow(handle);
    if (window == nullptr)
        return 0;
    switch (index) {
    case GWL_WNDPROC:
        return number(window->procedure);
    case GWL_HINSTANCE:
        return number(window->instance);
    case GWL_HWNDPARENT:
        return number(isTopLevel(*window) ? window->owner : GetAncestor(handle, GA_PARENT));
    case GWL_ID:
        return number(window->id);
    case GWL_STYLE:
        return number(window->style);
    case GWL_EXSTYLE:
        return number(window->exStyle);
    case GWL_USERDATA:
        return window->userData;
    default:
        return readExtra(window->extra, index, size);
    }
}

/// A window can't own one that it belongs to itself.
bool ownsItself(const Window& window, HWND owner) {
    const Window* each = findWindow(owner);
    for (int step = 0; each != nullptr && step < 1000; ++step) {
        if (each == &window)
            return true;
        each = each->owner != nullptr ? findWindow(each->owner) : nullptr;
    }
    return false;
}

LONG_PTR setOwnerOrParent(Window& window, HWND wanted) {
    if (!isTopLevel(window))
        return number(SetParent(window.handle, wanted));
    const HWND former = window.owner;
    if (wanted == nullptr) {
        window.owner = nullptr;
        return number(former);
    }
    Window* owner = findWindow(wanted);
    if (owner == nullptr)
        return 0;
    owner = topLevelOf(*owner);
    if (owner->parent == nullptr || ownsItself(window, owner->handle)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    window.owner = owner->handle;
    return number(former);
}

/// WM_STYLECHANGING, the change, WM_STYLECHANGED. The bits that say how a window is shown stay in step with it.
LONG_PTR setStyle(HWND handle, int index, DWORD value) {
    const Window* window = findWindow(handle);
    const bool extended = index == GWL_EXSTYLE;
    STYLESTRUCT styles{extended ? window->exStyle : window->style, value};
    send(handle, WM_STYLECHANGING, static_cast<WPARAM>(static_cast<LONG_PTR>(index)),
         reinterpret_cast<LPARAM>(&styles));
    Window* changed = findWindow(handle);
    if (changed == nullptr)
        return 0;
    const DWORD former = extended ? changed->exStyle : changed->style;
    if (extended) {
        // Being topmost is a matter of the order: SetWindowPos alone changes it.
        changed->exStyle =
            withWindowEdge(changed->style, (styles.styleNew & ~WS_EX_TOPMOST) | (changed->exStyle & WS_EX_TOPMOST));
    } else {
        changed->style = styles.styleNew;
        changed->exStyle = withWindowEdge(changed->style, changed->exStyle);
        changed->showState = (changed->style & WS_MINIMIZE) != 0   ? ShowState::minimized
                             : (changed->style & WS_MAXIMIZE) != 0 ? ShowState::maximized
                                                                   : ShowState::normal;
    }
    refreshContexts();
    styles.styleOld = former;
    send(handle, WM_STYLECHANGED, static_cast<WPARAM>(static_cast<LONG_PTR>(index)), reinterpret_cast<LPARAM>(&styles));
    return static_cast<LONG_PTR>(former);
}

LONG_PTR writeWindow(HWND handle, int index, std::size_t size, LONG_PTR value) {
    Window* window = findWindow(handle);
    if (window == nullptr)
        return 0;
    switch (index) {
    case GWL_WNDPROC: {
        const LONG_PTR former = number(window->procedure);
        window->procedure = value != 0 ? reinterpret_cast<WNDPROC>(value) : window->windowClass->procedure;
        return former;
    }
    case GWL_HINSTANCE:
        return number(std::exchange(window->instance, reinterpret_cast<HINSTANCE>(value)));
    case GWL_HWNDPARENT:
        return setOwnerOrParent(*window, reinterpret_cast<HWND>(value));
    case GWL_ID:
        return number(std::exchange(window->id, static_cast<UINT_PTR>(value)));
    case GWL_STYLE:
    case GWL_EXSTYLE:
        return window->parent != nullptr ? setStyle(handle, index, static_cast<DWORD>(value)) : 0;
    case GWL_USERDATA:
        return std::exchange(window->userData, value);
    default:
        return writeExtra(window->extra, index, size, value);
    }
}

template <typename T>
ULONG_PTR exchanged(T& place, LONG_PTR value, bool write) {
    const LONG_PTR former = number(place);
    if (write) {
        if constexpr (std::is_pointer_v<T>)
            place = reinterpret_cast<T>(value);
        else
            place = static_cast<T>(value);
    }
    return static_cast<ULONG_PTR>(former);
}

ULONG_PTR classMenu(WindowClass& windowClass, LONG_PTR value, bool write) {
    // The name that is answered must outlive the change.
    static std::string former;
    former = windowClass.menuName;
    const UINT formerNumber = windowClass.menuNumber;
    const std::string& answered = write ? former : windowClass.menuName;
    const ULONG_PTR result = formerNumber != 0  ? formerNumber
                             : answered.empty() ? 0
                                                : reinterpret_cast<ULONG_PTR>(answered.c_str());
    if (write) {
        const bool isNumber = static_cast<ULONG_PTR>(value) <= 0xFFFF;
        windowClass.menuNumber = isNumber ? static_cast<UINT>(value) : 0;
        windowClass.menuName = isNumber ? "" : reinterpret_cast<LPCSTR>(value);
    }
    return result;
}

ULONG_PTR accessClass(HWND handle, int index, LONG_PTR value, bool write) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return 0;
    WindowClass& windowClass = *window->windowClass;
    switch (index) {
    case GCL_MENUNAME:
        return classMenu(windowClass, value, write);
    case GCL_HBRBACKGROUND:
        return exchanged(windowClass.background, value, write);
    case GCL_HCURSOR:
        return exchanged(windowClass.cursor, value, write);
    case GCL_HICON:
        return exchanged(windowClass.icon, value, write);
    case GCL_HICONSM:
        return exchanged(windowClass.smallIcon, value, write);
    case GCL_HMODULE:
        return exchanged(windowClass.instance, value, write);
    case GCL_WNDPROC:
        return exchanged(windowClass.procedure, value, write && value != 0);
    case GCL_STYLE:
        return exchanged(windowClass.style, value, write);
    case GCW_ATOM:
        return windowClass.atom;
    case GCL_CBWNDEXTRA:
        return exchanged(windowClass.windowExtra, std::clamp<LONG_PTR>(value, 0, 40960), write);
    case GCL_CBCLSEXTRA:
        return windowClass.extra.size();
    default:
        return static_cast<ULONG_PTR>(write ? writeExtra(windowClass.extra, index, sizeof(LONG_PTR), value)
                                            : readExtra(windowClass.extra, index, sizeof(LONG_PTR)));
    }
}

/// Properties are named by text or by number; either way there is one key for each.
std::string propertyKey(LPCSTR name) {
    const auto value = reinterpret_cast<UINT_PTR>(name);
    if (value <= 0xFFFF)
        return value == 0 ? std::string() : "#" + std::to_string(value);
    std::string key = name;
    std::transform(key.begin(), key.end(), key.begin(), lower1252);
    return key;
}

} // namespace

} // namespace vndk::win32

using vndk::win32::findWindow;
using vndk::win32::send;
using vndk::win32::Window;

LONG GetWindowLongA(HWND window, int index) {
    return static_cast<LONG>(vndk::win32::readWindow(window, index, sizeof(LONG)));
}
LONG SetWindowLongA(HWND window, int index, LONG value) {
    return static_cast<LONG>(vndk::win32::writeWindow(window, index, sizeof(LONG), value));
}
LONG_PTR GetWindowLongPtrA(HWND window, int index) { return vndk::win32::readWindow(window, index, sizeof(LONG_PTR)); }
LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value) {
    return vndk::win32::writeWindow(window, index, sizeof(LONG_PTR), value);
}

ULONG_PTR GetClassLongPtrA(HWND window, int index) { return vndk::win32::accessClass(window, index, 0, false); }
ULONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value) {
    return vndk::win32::accessClass(window, index, value, true);
}

BOOL SetPropA(HWND window, LPCSTR name, HANDLE value) {
    Window* found = findWindow(window);
    const std::string key = vndk::win32::propertyKey(name);
    if (found == nullptr || key.empty())
        return FALSE;
    found->properties[key] = value;
    return TRUE;
}

HANDLE GetPropA(HWND window, LPCSTR name) {
    const Window* found = findWindow(window);
    if (found == nullptr)
        return nullptr;
    const auto property = found->properties.find(vndk::win32::propertyKey(name));
    return property != found->properties.end() ? property->second : nullptr;
}

HANDLE RemovePropA(HWND window, LPCSTR name) {
    Window* found = findWindow(window);
    if (found == nullptr)
        return nullptr;
    const auto property = found->properties.find(vndk::win32::propertyKey(name));
    if (property == found->properties.end())
        return nullptr;
    const HANDLE value = property->second;
    found->properties.erase(property);
    return value;
}

BOOL SetWindowTextA(HWND window, LPCSTR text) {
    if (findWindow(window) == nullptr)
        return FALSE;
    return send(window, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text)) != 0 ? TRUE : FALSE;
}

int GetWindowTextA(HWND window, LPSTR buffer, int size) {
    if (buffer == nullptr || size <= 0)
        return 0;
    buffer[0] = '\0';
    return static_cast<int>(send(window, WM_GETTEXT, static_cast<WPARAM>(size), reinterpret_cast<LPARAM>(buffer)));
}

int GetWindowTextLengthA(HWND window) { return static_cast<int>(send(window, WM_GETTEXTLENGTH)); }

BOOL IsWindowEnabled(HWND window) {
    const Window* found = findWindow(window);
    return found != nullptr && (found->style & WS_DISABLED) == 0 ? TRUE : FALSE;
}

BOOL EnableWindow(HWND window, BOOL enable) {
    Window* found = findWindow(window);
    if (found == nullptr)
        return FALSE;
    const bool wasDisabled = (found->style & WS_DISABLED) != 0;
    if (enable != FALSE && wasDisabled) {
        found->style &= ~WS_DISABLED;
        send(window, WM_ENABLE, TRUE, 0);
    } else if (enable == FALSE && !wasDisabled) {
        send(window, WM_CANCELMODE);
        found = findWindow(window);
        if (found == nullptr)
            return FALSE;
        found->style |= WS_DISABLED;
        // What lies in the window keeps the focus: another window is about to become active.
        if (GetFocus() == window)
            SetFocus(nullptr);
        if (GetCapture() == window)
            ReleaseCapture();
        send(window, WM_ENABLE, FALSE, 0);
    }
    return wasDisabled ? TRUE : FALSE;
}
