#include "user/destroy_window.h"

#include "gdi/window_dc.h"
#include "user/activation.h"
#include "user/desktop_state.h"
#include "user/hooks.h"
#include "user/input_queue.h"
#include "user/menu_bar.h"
#include "user/painting.h"
#include "user/window_position.h"
#include "win32/error.h"
#include "win32/input.h"

#include <cassert>

namespace vndk::win32 {

namespace {

std::vector<HWND> childrenOf(HWND window) {
    std::vector<HWND> handles;
    if (const Window* found = findWindow(window); found != nullptr)
        for (const Window* child : found->children)
            handles.push_back(child->handle);
    return handles;
}

/// False when a handler has ended it or put it elsewhere.
bool isStillIn(HWND child, HWND parent) {
    const Window* found = findWindow(child);
    return found != nullptr && found->parent != nullptr && found->parent->handle == parent;
}

std::vector<HWND> ownedBy(HWND owner) {
    std::vector<HWND> handles;
    if (const DesktopState* state = currentState(); state != nullptr && state->root != nullptr)
        for (const Window* window : state->root->children)
            if (window->owner == owner)
                handles.push_back(window->handle);
    return handles;
}

/// A child goes as with ShowWindow, a top-level window without WM_SHOWWINDOW.
void hide(HWND window) {
    const Window* found = findWindow(window);
    if (found == nullptr || (found->style & WS_VISIBLE) == 0)
        return;
    if (isChild(*found)) {
        ShowWindow(window, SW_HIDE);
        return;
    }
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void sendDestroy(HWND window) {
    Window* found = findWindow(window);
    if (found == nullptr || found->destroySent)
        return;
    found->destroying = true;
    found->destroySent = true;
    if (const HWND focus = GetFocus(); focus == window && isChild(*found))
        SetFocus(GetParent(window));
    send(window, WM_DESTROY);
    for (const HWND child : childrenOf(window))
        if (isStillIn(child, window))
            sendDestroy(child);
}

void release(Window& window) {
    DesktopState* state = currentState();
    forgetInput(window);
    forgetMenus(window);
    forgetPainting(window);
    forgetActivation(window);
    unlinkWindow(window);
    --window.windowClass->windows;
    state->windows.remove(window.handle);
}

} // namespace

void notifyParents(HWND child, UINT event) {
    HWND each = child;
    for (;;) {
        const Window* found = findWindow(each);
        if (found == nullptr || !isChild(*found) || (found->exStyle & WS_EX_NOPARENTNOTIFY) != 0 ||
            found->parent == nullptr || found->parent->parent == nullptr)
            return;
        const HWND parent = found->parent->handle;
        const Window* about = findWindow(child);
        if (about == nullptr)
            return;
        send(parent, WM_PARENTNOTIFY, MAKEWPARAM(static_cast<int>(event), static_cast<int>(about->id)),
             reinterpret_cast<LPARAM>(child));
        each = parent;
    }
}

void freeWindows(HWND window) {
    Window* found = findWindow(window);
    if (found == nullptr)
        return;
    found->destroying = true; // From here on nobody makes a child in it or puts one there.
    for (const HWND child : childrenOf(window))
        if (isStillIn(child, window))
            freeWindows(child);
    send(window, WM_NCDESTROY);
    found = findWindow(window);
    if (found == nullptr)
        return;
    assert(found->children.empty() && "children go before their parent");
    release(*found);
}

bool destroyWindow(HWND window) {
    Window* found = findWindow(window);
    if (found == nullptr)
        return false;
    if (found->destroying)
        return true; // Further down the stack it is being done.
    if (callHooks(WH_CBT, HCBT_DESTROYWND, reinterpret_cast<WPARAM>(window), 0) != 0)
        return false;
    notifyParents(window, WM_DESTROY);
    found = findWindow(window);
    if (found == nullptr || found->destroying)
        return true;
    found->destroying = true;
    hide(window);
    activateOther(window);
    for (const HWND owned : ownedBy(window))
        destroyWindow(owned);
    sendDestroy(window);
    freeWindows(window);
    assertWindows();
    return true;
}

} // namespace vndk::win32

BOOL DestroyWindow(HWND window) {
    const vndk::win32::Window* found = vndk::win32::findWindow(window);
    if (found == nullptr)
        return FALSE;
    if (found->parent == nullptr) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    return vndk::win32::destroyWindow(window) ? TRUE : FALSE;
}
