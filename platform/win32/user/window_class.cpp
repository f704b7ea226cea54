#include "user/window_class.h"

#include "gdi/window_dc.h"
#include "user/desktop_state.h"
#include "win32/codepage.h"
#include "win32/error.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>

namespace vndk::win32 {

namespace {

constexpr UINT firstNamedAtom = 0xC000;

struct NoCaseLess {
    bool operator()(const std::string& a, const std::string& b) const { return compareNoCase(a, b) < 0; }
};

struct AtomTable {
    std::map<std::string, ATOM, NoCaseLess> numbers;
    std::vector<std::string> names;
};

AtomTable& atoms() {
    static AtomTable table;
    return table;
}

/// The number of "#123"; 0 for any other text.
ATOM numberInName(std::string_view name) {
    if (name.size() < 2 || name.size() > 6 || name[0] != '#')
        return 0;
    unsigned value = 0;
    for (const char digit : name.substr(1)) {
        if (digit < '0' || digit > '9')
            return 0;
        value = value * 10 + static_cast<unsigned>(digit - '0');
    }
    return value < firstNamedAtom ? static_cast<ATOM>(value) : ATOM{0};
}

bool isAtom(LPCSTR name) { return reinterpret_cast<UINT_PTR>(name) <= 0xFFFF; }

ATOM classAtom(LPCSTR name) {
    if (isAtom(name))
        return static_cast<ATOM>(reinterpret_cast<UINT_PTR>(name));
    return atomOf(name);
}

void fillClass(const WindowClass& windowClass, LPCSTR name, WNDCLASSA& filled) {
    filled.style = windowClass.style;
    filled.lpfnWndProc = windowClass.procedure;
    filled.cbClsExtra = static_cast<int>(windowClass.extra.size());
    filled.cbWndExtra = windowClass.windowExtra;
    filled.hInstance = windowClass.instance;
    filled.hIcon = windowClass.icon;
    filled.hCursor = windowClass.cursor;
    filled.hbrBackground = windowClass.background;
    filled.lpszMenuName = windowClass.menuNumber != 0    ? reinterpret_cast<LPCSTR>(UINT_PTR{windowClass.menuNumber})
                          : windowClass.menuName.empty() ? nullptr
                                                         : windowClass.menuName.c_str();
    filled.lpszClassName = name;
}

constexpr int extraLimit = 40960;

ATOM registerClass(const WNDCLASSA& given, HICON smallIcon) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return 0;
    const ATOM atom = given.lpszClassName != nullptr ? classAtom(given.lpszClassName) : ATOM{0};
    if (atom == 0 || given.lpfnWndProc == nullptr || given.cbClsExtra < 0 || given.cbWndExtra < 0 ||
        given.cbClsExtra > extraLimit || given.cbWndExtra > extraLimit) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const bool taken = std::any_of(state->classes.begin(), state->classes.end(), [&](const auto& each) {
        return each->atom == atom && each->instance == given.hInstance;
    });
    if (taken) {
        SetLastError(ERROR_CLASS_ALREADY_EXISTS);
        return 0;
    }
    auto made = std::make_unique<WindowClass>();
    made->name = isAtom(given.lpszClassName) ? nameOfAtom(atom) : given.lpszClassName;
    made->atom = atom;
    made->style = given.style;
    made->procedure = given.lpfnWndProc;
    made->windowExtra = given.cbWndExtra;
    made->extra.resize(static_cast<std::size_t>(given.cbClsExtra));
    made->instance = given.hInstance;
    made->icon = given.hIcon;
    made->smallIcon = smallIcon;
    made->cursor = given.hCursor;
    made->background = given.hbrBackground;
    if (isAtom(given.lpszMenuName))
        made->menuNumber = static_cast<UINT>(reinterpret_cast<UINT_PTR>(given.lpszMenuName));
    else
        made->menuName = given.lpszMenuName;
    state->classes.push_back(std::move(made));
    return atom;
}

} // namespace

ATOM atomOf(std::string_view name) {
    if (name.empty() || name.size() > 255)
        return 0;
    if (const ATOM number = numberInName(name); number != 0)
        return number;
    AtomTable& table = atoms();
    const std::string text(name);
    if (const auto found = table.numbers.find(text); found != table.numbers.end())
        return found->second;
    if (table.names.size() >= 0x4000)
        return 0;
    const auto atom = static_cast<ATOM>(firstNamedAtom + table.names.size());
    table.names.push_back(text);
    table.numbers.emplace(text, atom);
    return atom;
}

std::string nameOfAtom(ATOM atom) {
    if (atom < firstNamedAtom)
        return "#" + std::to_string(atom);
    const std::size_t index = atom - firstNamedAtom;
    return index < atoms().names.size() ? atoms().names[index] : std::string();
}

WindowClass* findClass(LPCSTR name, HINSTANCE instance) {
    DesktopState* state = currentState();
    if (state == nullptr || name == nullptr)
        return nullptr;
    const ATOM atom = classAtom(name);
    WindowClass* global = nullptr;
    WindowClass* any = nullptr;
    for (const auto& each : state->classes) {
        if (each->atom != atom)
            continue;
        if (each->instance == instance)
            return each.get();
        if ((each->style & CS_GLOBALCLASS) != 0)
            global = each.get();
        any = each.get();
    }
    return global != nullptr ? global : instance == nullptr ? any : nullptr;
}

} // namespace vndk::win32

using vndk::win32::currentState;
using vndk::win32::findWindow;
using vndk::win32::Window;
using vndk::win32::WindowClass;

ATOM RegisterClassA(const WNDCLASSA* windowClass) {
    if (windowClass == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return vndk::win32::registerClass(*windowClass, nullptr);
}

ATOM RegisterClassExA(const WNDCLASSEXA* windowClass) {
    if (windowClass == nullptr || windowClass->cbSize != sizeof(WNDCLASSEXA)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const WNDCLASSEXA& given = *windowClass;
    return vndk::win32::registerClass({given.style, given.lpfnWndProc, given.cbClsExtra, given.cbWndExtra,
                                       given.hInstance, given.hIcon, given.hCursor, given.hbrBackground,
                                       given.lpszMenuName, given.lpszClassName},
                                      given.hIconSm);
}

BOOL UnregisterClassA(LPCSTR name, HINSTANCE instance) {
    vndk::win32::DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    const WindowClass* found = vndk::win32::findClass(name, instance);
    if (found == nullptr) {
        SetLastError(ERROR_CLASS_DOES_NOT_EXIST);
        return FALSE;
    }
    if (found->windows != 0) {
        SetLastError(ERROR_CLASS_HAS_WINDOWS);
        return FALSE;
    }
    if (found->classDC != nullptr)
        vndk::win32::deleteWindowDC(found->classDC);
    std::erase_if(state->classes, [&](const auto& each) { return each.get() == found; });
    return TRUE;
}

BOOL GetClassInfoA(HINSTANCE instance, LPCSTR name, WNDCLASSA* windowClass) {
    const WindowClass* found = vndk::win32::findClass(name, instance);
    if (found == nullptr || windowClass == nullptr) {
        SetLastError(found == nullptr ? ERROR_CLASS_DOES_NOT_EXIST : ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    vndk::win32::fillClass(*found, name, *windowClass);
    return found->atom;
}

int GetClassNameA(HWND window, LPSTR buffer, int size) {
    const Window* found = findWindow(window);
    if (found == nullptr || buffer == nullptr || size <= 0)
        return 0;
    const std::string& name = found->windowClass->name;
    const std::size_t length = std::min(name.size(), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, name.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

UINT RegisterWindowMessageA(LPCSTR name) {
    const ATOM atom = name != nullptr ? vndk::win32::atomOf(name) : ATOM{0};
    if (atom == 0)
        SetLastError(ERROR_INVALID_PARAMETER);
    return atom;
}
