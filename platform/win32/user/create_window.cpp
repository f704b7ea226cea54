#include "user/desktop_state.h"
#include "user/destroy_window.h"
#include "user/frame_geometry.h"
#include "user/hooks.h"
#include "user/show_window.h"
#include "user/window_class.h"
#include "user/window_position.h"
#include "win32/error.h"
#include "win32/input.h"
#include "win32/menu.h"
#include "win32/metrics.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

/// What CreateWindowEx was asked for, with defaults filled in.
struct Request {
    CREATESTRUCTA data{};
    WindowClass* windowClass = nullptr;
    HWND parent = nullptr; // in the tree
    HWND owner = nullptr;
    bool visible = false;
    int showCommand = SW_SHOW;
};

bool isOverlapped(DWORD style) { return (style & (WS_CHILD | WS_POPUP)) == 0; }

DWORD completeStyle(DWORD style) {
    if (isOverlapped(style))
        return style | WS_CAPTION | WS_CLIPSIBLINGS;
    if ((style & WS_CHILD) == 0)
        return style | WS_CLIPSIBLINGS;
    return style;
}

/// Whose child or whose popup the new window becomes. False with an error when it can't.
bool findParents(Request& request) {
    const DWORD style = static_cast<DWORD>(request.data.style);
    const HWND given = request.data.hwndParent;
    const HWND desktop = GetDesktopWindow();
    request.parent = desktop;
    if (given == nullptr) {
        if ((style & (WS_CHILD | WS_POPUP)) == WS_CHILD) {
            SetLastError(ERROR_TLW_WITH_WSCHILD);
            return false;
        }
        return true;
    }
    Window* parent = findWindow(given);
    if (parent == nullptr)
        return false;
    if (parent->destroying) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    if ((style & WS_CHILD) != 0)
        request.parent = given;
    else if (given != desktop)
        request.owner = topLevelOf(*parent)->handle;
    return true;
}

/// Overlapped windows without a place of their own come up one below the other.
void placeByDefault(Request& request) {
    CREATESTRUCTA& data = request.data;
    const bool overlapped = isOverlapped(static_cast<DWORD>(data.style));
    const RECT screen = findWindow(GetDesktopWindow())->windowRect;
    if (data.x == CW_USEDEFAULT) {
        const int step = GetSystemMetrics(SM_CYFRAME) + GetSystemMetrics(SM_CYCAPTION) - 1;
        const auto place = static_cast<int>(currentState()->root->children.size() % 8) * step;
        // In this case the vertical place is the command that shows the window.
        if (overlapped && data.y != CW_USEDEFAULT)
            request.showCommand = data.y;
        data.x = overlapped ? place : 0;
        data.y = overlapped ? place : 0;
    } else if (data.y == CW_USEDEFAULT) {
        data.y = 0;
    }
    if (data.cx == CW_USEDEFAULT) {
        data.cx = overlapped ? widthOf(screen) * 3 / 4 : 0;
        data.cy = overlapped ? heightOf(screen) * 3 / 4 : 0;
    } else if (data.cy == CW_USEDEFAULT) {
        data.cy = 0;
    }
}

void clampPlace(CREATESTRUCTA& data) {
    data.x = clampCoordinate(data.x);
    data.y = clampCoordinate(data.y);
    data.cx = std::max(clampCoordinate(data.cx), 0);
    data.cy = std::max(clampCoordinate(data.cy), 0);
}

void takePlace(Window& window, const CREATESTRUCTA& data) {
    window.windowRect = toScreen(window, {data.x, data.y, data.x + data.cx, data.y + data.cy});
    window.clientRect = window.normalRect = window.windowRect;
}

HWND makeWindow(const Request& request) {
    DesktopState* state = currentState();
    WindowClass& windowClass = *request.windowClass;
    auto made = std::make_unique<Window>();
    made->windowClass = &windowClass;
    made->procedure = windowClass.procedure;
    made->instance = request.data.hInstance;
    // It is shown only at the end, by ShowWindow; so are the states that begin minimised or maximised.
    made->style = static_cast<DWORD>(request.data.style) & ~(WS_VISIBLE | WS_MINIMIZE | WS_MAXIMIZE);
    made->exStyle = request.data.dwExStyle;
    made->extra.resize(static_cast<std::size_t>(windowClass.windowExtra));
    made->owner = request.owner;
    if ((made->style & WS_CHILD) != 0)
        made->id = reinterpret_cast<UINT_PTR>(request.data.hMenu);
    Window* window = made.get();
    const HWND handle = state->windows.add(std::move(made));
    window->handle = handle;
    linkWindow(*window, *findWindow(request.parent));
    if (Window* owner = request.owner != nullptr ? findWindow(request.owner) : nullptr; owner != nullptr) {
        if ((owner->exStyle & WS_EX_TOPMOST) != 0)
            window->exStyle |= WS_EX_TOPMOST;
        reorder(*window, HWND_TOP, false);
    }
    ++windowClass.windows;
    return handle;
}

void attachMenu(HWND handle, const Request& request) {
    HMENU menu = request.data.hMenu;
    if (menu == nullptr) {
        const WindowClass& windowClass = *request.windowClass;
        if (windowClass.menuNumber != 0)
            menu = LoadMenuA(windowClass.instance, reinterpret_cast<LPCSTR>(UINT_PTR{windowClass.menuNumber}));
        else if (!windowClass.menuName.empty())
            menu = LoadMenuA(windowClass.instance, windowClass.menuName.c_str());
    }
    if (menu != nullptr && IsMenu(menu) != FALSE)
        SetMenu(handle, menu);
}

/// Overlapped and sizable windows are asked for limits before anything else.
void limitSize(HWND handle, CREATESTRUCTA& data) {
    const DWORD style = static_cast<DWORD>(data.style);
    if ((style & WS_THICKFRAME) == 0 && (style & (WS_POPUP | WS_CHILD)) != 0)
        return;
    const MINMAXINFO limits = askMinMax(handle);
    data.cx = std::max(std::min(data.cx, static_cast<int>(limits.ptMaxTrackSize.x)),
                       static_cast<int>(limits.ptMinTrackSize.x));
    data.cy = std::max(std::min(data.cy, static_cast<int>(limits.ptMaxTrackSize.y)),
                       static_cast<int>(limits.ptMinTrackSize.y));
    clampPlace(data);
}

/// HCBT_CREATEWND; the hook may change the place. False when it refused.
bool askHooks(HWND handle, CREATESTRUCTA& data) {
    if (!hasHooks(WH_CBT))
        return true;
    CBT_CREATEWNDA asked{&data, HWND_TOP};
    if (callHooks(WH_CBT, HCBT_CREATEWND, reinterpret_cast<WPARAM>(handle), reinterpret_cast<LPARAM>(&asked)) != 0)
        return false;
    clampPlace(data);
    return true;
}

/// The messages up to WM_MOVE. False when the window refused or is gone.
bool sendCreation(HWND handle, CREATESTRUCTA& data) {
    const auto lParam = reinterpret_cast<LPARAM>(&data);
    if (send(handle, WM_NCCREATE, 0, lParam) == FALSE) {
        freeWindows(handle);
        return false;
    }
    calculateClient(handle);
    if (send(handle, WM_CREATE, 0, lParam) == -1) {
        destroyWindow(handle);
        return false;
    }
    Window* window = findWindow(handle);
    if (window == nullptr || window->destroying)
        return false;
    window->created = true;
    if (isOverlapped(window->style))
        window->sendSizeAndMove = true;
    else
        sendSizeAndMove(handle);
    return IsWindow(handle) != FALSE;
}

/// Takes the state that was asked for. False when the window is gone.
bool showFirst(HWND handle, const Request& request) {
    const DWORD style = static_cast<DWORD>(request.data.style);
    int command = request.showCommand;
    if ((style & WS_MINIMIZE) != 0) {
        changeShowState(handle, SW_SHOWMINNOACTIVE, SWP_NOACTIVATE);
        command = SW_SHOWMINIMIZED;
    } else if ((style & WS_MAXIMIZE) != 0) {
        changeShowState(handle, SW_SHOWMAXIMIZED, SWP_NOACTIVATE);
        command = SW_SHOW;
    }
    notifyParents(handle, WM_CREATE);
    if (request.visible)
        ShowWindow(handle, command);
    return IsWindow(handle) != FALSE;
}

HWND create(Request& request) {
    const HWND handle = makeWindow(request);
    takePlace(*findWindow(handle), request.data);
    if (!askHooks(handle, request.data)) {
        if (Window* refused = findWindow(handle); refused != nullptr) {
            refused->procedure = &DefWindowProcA; // It hears nothing of its short life.
            freeWindows(handle);
        }
        return nullptr;
    }
    limitSize(handle, request.data);
    Window* window = findWindow(handle);
    if (window == nullptr)
        return nullptr;
    takePlace(*window, request.data);
    if ((window->style & WS_CHILD) == 0)
        attachMenu(handle, request);
    if (!sendCreation(handle, request.data) || !showFirst(handle, request))
        return nullptr;
    assertWindows();
    return handle;
}

} // namespace

} // namespace vndk::win32

HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, int x, int y, int width, int height,
                     HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter) {
    using namespace vndk::win32;
    const DesktopState* state = currentState();
    if (state == nullptr || state->ending) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return nullptr;
    }
    Request request;
    request.windowClass = findClass(className, instance);
    if (request.windowClass == nullptr) {
        SetLastError(ERROR_CANNOT_FIND_WND_CLASS);
        return nullptr;
    }
    // Every handle has 20 bits for its place in the table; long before that something runs wild.
    if (state->windows.size() >= 65536) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    const DWORD completed = completeStyle(style);
    request.data = {parameter, instance,  menu,
                    parent,    height,    width,
                    y,         x,         static_cast<LONG>(completed),
                    name,      className, withWindowEdge(completed, exStyle)};
    request.visible = (style & WS_VISIBLE) != 0;
    if (!findParents(request))
        return nullptr;
    placeByDefault(request);
    clampPlace(request.data);
    return create(request);
}
