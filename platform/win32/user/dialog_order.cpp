#include "user/dialog.h"

#include "win32/error.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

void collect(const Window& parent, std::vector<HWND>& controls) {
    for (const Window* child : parent.children) {
        controls.push_back(child->handle);
        if ((child->exStyle & WS_EX_CONTROLPARENT) != 0 && isUsable(*child))
            collect(*child, controls);
    }
}

bool isTabStop(HWND handle) {
    const Window* window = findWindow(handle);
    // What holds other controls is passed through and is no stop itself.
    return window != nullptr && isUsable(*window) && (window->style & WS_TABSTOP) != 0 &&
           (window->exStyle & WS_EX_CONTROLPARENT) == 0;
}

bool isGroupMember(HWND handle) {
    const Window* window = findWindow(handle);
    return window != nullptr && isUsable(*window);
}

// The first that is accepted after `start` (before it, with `previous`), going round; `start` itself comes last.
HWND nextAccepted(const std::vector<HWND>& controls, HWND start, bool previous, bool (*accepted)(HWND)) {
    if (controls.empty())
        return nullptr;
    const auto count = static_cast<std::ptrdiff_t>(controls.size());
    const std::ptrdiff_t step = previous ? -1 : 1;
    const auto found = std::find(controls.begin(), controls.end(), start);
    // Without a start, the turn begins just outside of the list.
    std::ptrdiff_t at = found != controls.end() ? found - controls.begin() : previous ? count : -1;
    for (std::ptrdiff_t tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        const HWND candidate = controls[static_cast<std::size_t>(at)];
        if (accepted(candidate))
            return candidate;
    }
    return nullptr;
}

bool checkDialogAndControl(HWND dialog, HWND control) {
    if (findWindow(dialog) == nullptr)
        return false;
    if (control != nullptr && !IsChild(dialog, control)) {
        SetLastError(findWindow(control) != nullptr ? ERROR_INVALID_PARAMETER : ERROR_INVALID_WINDOW_HANDLE);
        return false;
    }
    return true;
}

} // namespace

bool isUsable(const Window& window) { return (window.style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE; }

std::vector<HWND> controlsInOrder(HWND dialog) {
    std::vector<HWND> controls;
    if (const Window* window = findWindow(dialog))
        collect(*window, controls);
    return controls;
}

HWND controlAround(HWND dialog, HWND descendant) {
    const auto controls = controlsInOrder(dialog);
    for (const Window* window = findWindow(descendant); window != nullptr && window->handle != dialog;
         window = window->parent)
        if (std::find(controls.begin(), controls.end(), window->handle) != controls.end())
            return window->handle;
    return nullptr;
}

std::vector<HWND> groupOf(HWND control) {
    const Window* window = findWindow(control);
    if (window == nullptr || window->parent == nullptr)
        return {};
    std::vector<HWND> group;
    bool found = false;
    for (const Window* sibling : window->parent->children) {
        if ((sibling->style & WS_GROUP) != 0) {
            if (found)
                break;
            group.clear();
        }
        group.push_back(sibling->handle);
        found = found || sibling == window;
    }
    return group;
}

} // namespace vndk::win32

using namespace vndk::win32;

HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous) {
    if (control == dialog)
        control = nullptr;
    if (!checkDialogAndControl(dialog, control))
        return nullptr;
    const HWND start = control != nullptr ? controlAround(dialog, control) : nullptr;
    const HWND next = nextAccepted(controlsInOrder(dialog), start, previous != FALSE, isTabStop);
    return next != nullptr ? next : control;
}

HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous) {
    if (control == dialog)
        control = nullptr;
    if (!checkDialogAndControl(dialog, control))
        return nullptr;
    if (control == nullptr)
        return nextAccepted(controlsInOrder(dialog), nullptr, previous != FALSE, isGroupMember);
    const HWND start = controlAround(dialog, control);
    const HWND next = nextAccepted(groupOf(start), start, previous != FALSE, isGroupMember);
    return next != nullptr ? next : control;
}
