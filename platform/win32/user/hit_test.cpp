// Which window, and which part of it, lies under a point.
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "win32/error.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

bool covers(const Window& window, POINT point) {
    if ((window.style & WS_VISIBLE) == 0 || !containsPoint(window.windowRect, point))
        return false;
    return window.shape == nullptr ||
           window.shape->contains({point.x - window.windowRect.left, point.y - window.windowRect.top});
}

/// All windows under the point below `parent`, the foremost first. A disabled child hides what is behind it: its
/// parent comes next.
void collectAt(const Window& parent, POINT point, std::vector<HWND>& found) {
    for (const Window* child : parent.children) {
        if (!covers(*child, point))
            continue;
        const bool disabled = (child->style & WS_DISABLED) != 0;
        if (disabled && !isTopLevel(*child))
            return;
        if (!disabled && child->showState != ShowState::minimized && containsPoint(child->clientRect, point))
            collectAt(*child, point, found);
        found.push_back(child->handle);
    }
}

POINT clientPoint(const Window& window, POINT point) {
    const long long x = static_cast<long long>(point.x) + window.clientRect.left;
    const long long y = static_cast<long long>(point.y) + window.clientRect.top;
    return {static_cast<LONG>(std::clamp<long long>(x, -0x40000000, 0x40000000)),
            static_cast<LONG>(std::clamp<long long>(y, -0x40000000, 0x40000000))};
}

bool skipped(const Window& child, UINT flags) {
    return ((flags & CWP_SKIPINVISIBLE) != 0 && (child.style & WS_VISIBLE) == 0) ||
           ((flags & CWP_SKIPDISABLED) != 0 && (child.style & WS_DISABLED) != 0) ||
           ((flags & CWP_SKIPTRANSPARENT) != 0 && (child.exStyle & WS_EX_TRANSPARENT) != 0);
}

} // namespace

HWND windowAt(POINT point, LRESULT& hitTest) {
    hitTest = HTNOWHERE;
    const DesktopState* state = currentState();
    if (state == nullptr || state->root == nullptr)
        return nullptr;
    std::vector<HWND> candidates;
    collectAt(*state->root, point, candidates);
    for (const HWND candidate : candidates) {
        const Window* window = findWindow(candidate);
        if (window == nullptr)
            continue;
        if ((window->style & WS_DISABLED) != 0) {
            hitTest = HTERROR;
            return candidate;
        }
        hitTest = send(candidate, WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
        if (hitTest != HTTRANSPARENT)
            return candidate;
    }
    hitTest = HTCLIENT;
    return GetDesktopWindow();
}

} // namespace vndk::win32

using vndk::win32::findWindow;
using vndk::win32::Window;

HWND WindowFromPoint(POINT point) {
    LRESULT hitTest = 0;
    return vndk::win32::windowAt(point, hitTest);
}

HWND ChildWindowFromPoint(HWND parent, POINT point) { return ChildWindowFromPointEx(parent, point, CWP_ALL); }

HWND ChildWindowFromPointEx(HWND parent, POINT point, UINT flags) {
    const Window* above = findWindow(parent);
    if (above == nullptr)
        return nullptr;
    const POINT place = vndk::win32::clientPoint(*above, point);
    if (!vndk::win32::containsPoint(above->clientRect, place))
        return nullptr;
    for (const Window* child : above->children)
        if (!vndk::win32::skipped(*child, flags) && vndk::win32::containsPoint(child->windowRect, place))
            return child->handle;
    return parent;
}

HWND RealChildWindowFromPoint(HWND parent, POINT point) {
    return ChildWindowFromPointEx(parent, point, CWP_SKIPINVISIBLE | CWP_SKIPTRANSPARENT);
}
