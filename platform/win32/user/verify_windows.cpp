// The window tree checks itself.
#include "user/desktop_state.h"
#include "user/window_position.h"

#include <algorithm>
#include <cassert>
#include <set>

namespace vndk::win32 {

namespace {

std::string nameOf(const Window& window) {
    return "window " + std::to_string(reinterpret_cast<UINT_PTR>(window.handle)) + " of class " +
           window.windowClass->name;
}

std::string checkWindow(const DesktopState& state, const Window& window) {
    if (state.windows.find(window.handle) != &window)
        return nameOf(window) + " isn't behind its handle";
    if (window.clientRect.right < window.clientRect.left || window.clientRect.bottom < window.clientRect.top ||
        window.windowRect.right < window.windowRect.left || window.windowRect.bottom < window.windowRect.top)
        return nameOf(window) + " has a reversed rectangle";
    if (((window.style & WS_MINIMIZE) != 0) != (window.showState == ShowState::minimized) && window.created)
        return nameOf(window) + " is minimised by style and not by state, or the other way";
    return {};
}

std::string checkBelow(const DesktopState& state, const Window& window, std::set<const Window*>& seen) {
    if (!seen.insert(&window).second)
        return nameOf(window) + " stands twice in the tree";
    if (std::string wrong = checkWindow(state, window); !wrong.empty())
        return wrong;
    for (const Window* child : window.children) {
        if (child->parent != &window)
            return nameOf(*child) + " doesn't know its parent";
        if (std::string wrong = checkBelow(state, *child, seen); !wrong.empty())
            return wrong;
    }
    return {};
}

std::string checkOrder(const DesktopState& state) {
    bool ordinary = false;
    for (const Window* window : state.root->children) {
        const bool topmost = (window->exStyle & WS_EX_TOPMOST) != 0;
        if (topmost && ordinary)
            return nameOf(*window) + " is topmost and stands behind one that isn't";
        ordinary = ordinary || !topmost;
    }
    return {};
}

} // namespace

std::string verifyWindows() {
    const DesktopState* state = currentState();
    if (state == nullptr || state->root == nullptr)
        return {};
    std::set<const Window*> seen;
    if (std::string wrong = checkBelow(*state, *state->root, seen); !wrong.empty())
        return wrong;
    if (seen.size() != state->windows.size())
        return "a window has a handle and no place in the tree";
    return checkOrder(*state);
}

void assertWindows() {
#ifndef NDEBUG
    const std::string wrong = verifyWindows();
    if (!wrong.empty())
        logOnce(wrong);
    assert(wrong.empty() && "the window tree is consistent");
#endif
}

} // namespace vndk::win32
