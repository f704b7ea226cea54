// Parents, owners, children, and walks through them.
#include "user/desktop_state.h"
#include "user/destroy_window.h"
#include "user/frame_geometry.h"
#include "user/painting.h"
#include "user/window_class.h"
#include "user/window_position.h"
#include "win32/codepage.h"
#include "win32/error.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

HWND handleOf(const Window* window) { return window != nullptr ? window->handle : nullptr; }

/// The window that `step` places further stands in its parent's order.
HWND neighbour(const Window& window, std::ptrdiff_t step) {
    if (window.parent == nullptr)
        return nullptr;
    const std::vector<Window*>& order = window.parent->children;
    const auto at = std::find(order.begin(), order.end(), &window) - order.begin() + step;
    return at >= 0 && at < static_cast<std::ptrdiff_t>(order.size()) ? order[static_cast<std::size_t>(at)]->handle
                                                                     : nullptr;
}

void collectDescendants(const Window& window, std::vector<HWND>& found) {
    for (const Window* child : window.children) {
        found.push_back(child->handle);
        collectDescendants(*child, found);
    }
}

/// Windows that go away meanwhile are passed over.
BOOL visitEach(const std::vector<HWND>& windows, WNDENUMPROC visit, LPARAM lParam) {
    for (const HWND window : windows)
        if (IsWindow(window) != FALSE && visit(window, lParam) == FALSE)
            return FALSE;
    return TRUE;
}

bool matches(const Window& window, ATOM classAtom, LPCSTR name) {
    return (classAtom == 0 || window.windowClass->atom == classAtom) &&
           (name == nullptr || compareNoCase(window.text, name) == 0);
}

/// The end of the chain of parents and owners.
Window* rootOwner(Window& window) {
    Window* last = &window;
    for (;;) {
        Window* next = topLevelOf(*last);
        if (Window* owner = ownerOf(*next); owner != nullptr)
            next = owner;
        if (next == last)
            return last;
        last = next;
    }
}

bool isBelow(const Window& window, const Window& ancestor) {
    for (const Window* each = &window; each != nullptr; each = each->parent)
        if (each == &ancestor)
            return true;
    return false;
}

/// Takes the window over to another parent, its place relative to it unchanged; nothing is sent or painted.
void moveToParent(Window& window, Window& parent) {
    const RECT place = fromScreen(window, window.windowRect);
    const RECT normal = fromScreen(window, window.normalRect);
    unlinkWindow(window);
    linkWindow(window, parent);
    if (isTopLevel(window))
        window.owner = nullptr;
    const RECT moved = toScreen(window, place);
    shiftChildren(window, moved.left - window.windowRect.left, moved.top - window.windowRect.top);
    window.clientRect =
        shifted(window.clientRect, moved.left - window.windowRect.left, moved.top - window.windowRect.top);
    window.windowRect = moved;
    window.normalRect = toScreen(window, normal);
}

} // namespace

Window* findWindow(HWND handle) {
    const DesktopState* state = currentState();
    Window* found = state != nullptr ? state->windows.find(handle) : nullptr;
    if (found == nullptr)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return found;
}

Window* topLevelOf(Window& window) {
    Window* each = &window;
    while (each->parent != nullptr && each->parent->parent != nullptr)
        each = each->parent;
    return each;
}

bool isVisible(const Window& window) {
    for (const Window* each = &window; each != nullptr; each = each->parent)
        if ((each->style & WS_VISIBLE) == 0)
            return false;
    return true;
}

bool isMinimizedUnder(const Window& window) {
    for (const Window* each = &window; each != nullptr; each = each->parent)
        if (each->showState == ShowState::minimized)
            return true;
    return false;
}

} // namespace vndk::win32

using vndk::win32::currentState;
using vndk::win32::DesktopState;
using vndk::win32::findWindow;
using vndk::win32::handleOf;
using vndk::win32::isTopLevel;
using vndk::win32::topLevelOf;
using vndk::win32::Window;

BOOL IsWindow(HWND window) { return findWindow(window) != nullptr ? TRUE : FALSE; }

BOOL IsWindowVisible(HWND window) {
    const Window* found = findWindow(window);
    return found != nullptr && vndk::win32::isVisible(*found) ? TRUE : FALSE;
}

BOOL IsChild(HWND parent, HWND window) {
    const Window* above = findWindow(parent);
    const Window* below = findWindow(window);
    if (above == nullptr || below == nullptr || above == below)
        return FALSE;
    // The way up ends at the first popup: what it belongs to is its owner, not its parent.
    for (const Window* each = below; (each->style & WS_CHILD) != 0 && each->parent != nullptr; each = each->parent)
        if (each->parent == above)
            return TRUE;
    return FALSE;
}

HWND GetParent(HWND window) {
    const Window* found = findWindow(window);
    if (found == nullptr)
        return nullptr;
    if ((found->style & WS_POPUP) != 0)
        return found->owner;
    return (found->style & WS_CHILD) != 0 ? handleOf(found->parent) : nullptr;
}

HWND GetAncestor(HWND window, UINT which) {
    Window* found = findWindow(window);
    if (found == nullptr || found->parent == nullptr)
        return nullptr;
    switch (which) {
    case GA_PARENT:
        return found->parent->handle;
    case GA_ROOT:
        return topLevelOf(*found)->handle;
    case GA_ROOTOWNER:
        return vndk::win32::rootOwner(*found)->handle;
    default:
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
}

HWND GetWindow(HWND window, UINT which) {
    const Window* found = findWindow(window);
    if (found == nullptr)
        return nullptr;
    switch (which) {
    case GW_HWNDFIRST:
        return found->parent != nullptr ? found->parent->children.front()->handle : nullptr;
    case GW_HWNDLAST:
        return found->parent != nullptr ? found->parent->children.back()->handle : nullptr;
    case GW_HWNDNEXT:
        return vndk::win32::neighbour(*found, 1);
    case GW_HWNDPREV:
        return vndk::win32::neighbour(*found, -1);
    case GW_OWNER:
        return found->owner;
    case GW_CHILD:
        return found->children.empty() ? nullptr : found->children.front()->handle;
    default:
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
}

HWND GetTopWindow(HWND parent) { return GetWindow(parent != nullptr ? parent : GetDesktopWindow(), GW_CHILD); }

HWND GetLastActivePopup(HWND window) {
    Window* found = findWindow(window);
    if (found == nullptr)
        return window;
    const Window* last = findWindow(found->lastActivePopup);
    return last != nullptr ? last->handle : window;
}

BOOL EnumChildWindows(HWND parent, WNDENUMPROC visit, LPARAM lParam) {
    const Window* above = findWindow(parent != nullptr ? parent : GetDesktopWindow());
    if (above == nullptr || visit == nullptr)
        return FALSE;
    std::vector<HWND> windows;
    vndk::win32::collectDescendants(*above, windows);
    return vndk::win32::visitEach(windows, visit, lParam);
}

BOOL EnumWindows(WNDENUMPROC visit, LPARAM lParam) {
    const Window* root = findWindow(GetDesktopWindow());
    if (root == nullptr || visit == nullptr)
        return FALSE;
    std::vector<HWND> windows;
    for (const Window* window : root->children)
        windows.push_back(window->handle);
    return vndk::win32::visitEach(windows, visit, lParam);
}

HWND FindWindowA(LPCSTR className, LPCSTR name) { return FindWindowExA(nullptr, nullptr, className, name); }

HWND FindWindowExA(HWND parent, HWND after, LPCSTR className, LPCSTR name) {
    const Window* above = findWindow(parent != nullptr ? parent : GetDesktopWindow());
    if (above == nullptr)
        return nullptr;
    ATOM atom = 0;
    if (className != nullptr) {
        const bool number = reinterpret_cast<UINT_PTR>(className) <= 0xFFFF;
        atom = number ? static_cast<ATOM>(reinterpret_cast<UINT_PTR>(className)) : vndk::win32::atomOf(className);
        if (atom == 0)
            return nullptr;
    }
    bool looking = after == nullptr;
    for (const Window* child : above->children) {
        if (looking && vndk::win32::matches(*child, atom, name))
            return child->handle;
        looking = looking || child->handle == after;
    }
    return nullptr;
}

HWND SetParent(HWND window, HWND parent) {
    const HWND target = parent != nullptr ? parent : GetDesktopWindow();
    Window* found = findWindow(window);
    Window* above = findWindow(target);
    if (found == nullptr || above == nullptr)
        return nullptr;
    if (found->parent == nullptr || vndk::win32::isBelow(*above, *found) || above->destroying || found->destroying) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const HWND former = found->parent->handle;
    const bool wasVisible = (found->style & WS_VISIBLE) != 0;
    if (wasVisible)
        ShowWindow(window, SW_HIDE);
    found = findWindow(window);
    above = findWindow(target);
    if (found == nullptr || above == nullptr || above->destroying || vndk::win32::isBelow(*above, *found))
        return nullptr;
    vndk::win32::moveToParent(*found, *above);
    const RECT place = vndk::win32::fromScreen(*found, found->windowRect);
    SetWindowPos(window, HWND_TOP, place.left, place.top, 0, 0,
                 SWP_NOSIZE | SWP_NOACTIVATE | (wasVisible ? SWP_SHOWWINDOW : 0));
    return former;
}
