#include "user/activation.h"

#include "user/desktop_state.h"
#include "user/hooks.h"
#include "user/window_position.h"
#include "win32/input.h"

namespace vndk::win32 {

namespace {

ActivationState* activationState() {
    DesktopState* state = currentState();
    return state != nullptr ? state->activation.get() : nullptr;
}

std::vector<HWND> topLevelWindows() {
    std::vector<HWND> windows;
    if (const DesktopState* state = currentState(); state != nullptr && state->root != nullptr)
        for (const Window* window : state->root->children)
            windows.push_back(window->handle);
    return windows;
}

/// WM_ACTIVATEAPP to all top-level windows.
void sendActivateApp(bool active) {
    ActivationState* state = activationState();
    if (state == nullptr || state->appActive == active)
        return;
    state->appActive = active;
    for (const HWND window : topLevelWindows())
        send(window, WM_ACTIVATEAPP, active ? TRUE : FALSE, 0);
}

/// The focus is in the window or below it.
bool focusIn(const ActivationState& state, HWND window) {
    return state.focus != nullptr && (state.focus == window || IsChild(window, state.focus) != FALSE);
}

/// The owner of all owners remembers which of its popups was active last.
void rememberPopup(HWND handle) {
    Window* window = findWindow(handle);
    for (int step = 0; window != nullptr && step < 100; ++step) {
        window->lastActivePopup = handle;
        window = window->owner != nullptr ? findWindow(window->owner) : nullptr;
    }
}

/// False when the window that was active refuses to give up its place.
bool deactivateFormer(HWND former, HWND next) {
    if (former == nullptr || findWindow(former) == nullptr)
        return true;
    if (send(former, WM_NCACTIVATE, FALSE, reinterpret_cast<LPARAM>(next)) == FALSE && next != nullptr &&
        findWindow(former) != nullptr)
        return false;
    const ActivationState* state = activationState();
    if (state != nullptr && state->active == former)
        send(former, WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, IsIconic(former)), reinterpret_cast<LPARAM>(next));
    return true;
}

void activateNext(HWND window, HWND former, ActivationCause cause) {
    if (!inPlace(*findWindow(window), HWND_TOP))
        setWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    if (findWindow(window) == nullptr)
        return;
    rememberPopup(window);
    sendActivateApp(true);
    send(window, WM_NCACTIVATE, TRUE, reinterpret_cast<LPARAM>(former));
    send(window, WM_ACTIVATE,
         MAKEWPARAM(cause == ActivationCause::mouse ? WA_CLICKACTIVE : WA_ACTIVE, IsIconic(window)),
         reinterpret_cast<LPARAM>(former));
}

/// The focus follows the active window, unless a handler has put it there already.
void settleFocus() {
    ActivationState* state = activationState();
    if (state == nullptr)
        return;
    if (state->active == nullptr) {
        moveFocus(nullptr);
        return;
    }
    if (!focusIn(*state, state->active))
        moveFocus(IsIconic(state->active) != FALSE ? nullptr : state->active);
}

bool canBeActive(const Window& window) {
    return isTopLevel(window) && (window.style & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE && !window.destroying;
}

/// Who is to be active when `leaving` goes: its owner, else the first window in the order that can be.
HWND successorOf(const Window& leaving) {
    const Window* owner = leaving.owner != nullptr ? findWindow(leaving.owner) : nullptr;
    if (owner != nullptr && canBeActive(*owner))
        return owner->handle;
    HWND minimized = nullptr;
    for (const HWND handle : topLevelWindows()) {
        const Window* window = findWindow(handle);
        if (window == &leaving || !canBeActive(*window) || (window->exStyle & WS_EX_NOACTIVATE) != 0 ||
            window->owner == leaving.handle)
            continue;
        if ((window->exStyle & WS_EX_TOOLWINDOW) != 0 && window->owner == nullptr)
            continue;
        if (window->showState != ShowState::minimized)
            return handle;
        minimized = minimized != nullptr ? minimized : handle;
    }
    return minimized;
}

/// A window can have the focus when neither it nor what it stands in is disabled or minimised.
bool canHaveFocus(const Window& window) {
    for (const Window* each = &window; each != nullptr && each->parent != nullptr; each = each->parent)
        if ((each->style & (WS_DISABLED | WS_MINIMIZE)) != 0 || each->destroySent)
            return false;
    return window.parent != nullptr;
}

bool clickActivates(LRESULT answer) { return answer != MA_NOACTIVATE && answer != MA_NOACTIVATEANDEAT; }

} // namespace

std::shared_ptr<ActivationState> makeActivationState() { return std::make_shared<ActivationState>(); }

bool activate(HWND window, ActivationCause cause) {
    ActivationState* state = activationState();
    if (state == nullptr || (window != nullptr && findWindow(window) == nullptr))
        return false;
    if (state->active == window)
        return true;
    const HWND former = state->active;
    if (window != nullptr && hasHooks(WH_CBT)) {
        CBTACTIVATESTRUCT asked{cause == ActivationCause::mouse ? TRUE : FALSE, former};
        if (callHooks(WH_CBT, HCBT_ACTIVATE, reinterpret_cast<WPARAM>(window), reinterpret_cast<LPARAM>(&asked)) != 0)
            return false;
    }
    if (!deactivateFormer(former, window))
        return false;
    // A handler may have made yet another window active, or ended this one.
    if (state->active != former || (window != nullptr && findWindow(window) == nullptr))
        return state->active == window;
    state->active = window;
    if (window != nullptr)
        activateNext(window, former, cause);
    else
        sendActivateApp(false);
    if (state->active == window)
        settleFocus();
    return state->active == window;
}

bool activateByMouse(HWND target, LRESULT hitTest, UINT message) {
    Window* window = findWindow(target);
    const ActivationState* state = activationState();
    if (window == nullptr || window->parent == nullptr || state->focus == target)
        return true;
    const HWND top = topLevelOf(*window)->handle;
    const LRESULT answer = send(target, WM_MOUSEACTIVATE, reinterpret_cast<WPARAM>(top),
                                MAKELPARAM(static_cast<int>(hitTest), static_cast<int>(message)));
    bool deliver = answer != MA_ACTIVATEANDEAT && answer != MA_NOACTIVATEANDEAT;
    const Window* asked = findWindow(top);
    if (asked != nullptr && clickActivates(answer) && (asked->exStyle & WS_EX_NOACTIVATE) == 0 &&
        (asked->style & WS_DISABLED) == 0 && isTopLevel(*asked))
        deliver = activate(top, ActivationCause::mouse) && deliver;
    return deliver;
}

void activateOther(HWND handle) {
    const ActivationState* state = activationState();
    const Window* window = findWindow(handle);
    if (state == nullptr || window == nullptr || state->active != handle)
        return;
    const HWND next = successorOf(*window);
    if (next == nullptr || !activate(next, ActivationCause::program))
        activate(nullptr, ActivationCause::program);
}

void moveFocus(HWND window) {
    ActivationState* state = activationState();
    if (state == nullptr || state->focus == window)
        return;
    const HWND former = state->focus;
    state->focus = window;
    if (former != nullptr)
        send(former, WM_KILLFOCUS, reinterpret_cast<WPARAM>(window), 0);
    if (window != nullptr && state->focus == window)
        send(window, WM_SETFOCUS, reinterpret_cast<WPARAM>(former), 0);
}

void forgetActivation(const Window& window) {
    ActivationState* state = activationState();
    if (state == nullptr)
        return;
    if (state->active == window.handle)
        state->active = nullptr;
    if (state->focus == window.handle)
        state->focus = nullptr;
}

} // namespace vndk::win32

using vndk::win32::activationState;
using vndk::win32::ActivationState;
using vndk::win32::findWindow;
using vndk::win32::Window;

HWND GetFocus() {
    const ActivationState* state = activationState();
    return state != nullptr ? state->focus : nullptr;
}

HWND GetActiveWindow() {
    const ActivationState* state = activationState();
    return state != nullptr ? state->active : nullptr;
}

HWND GetForegroundWindow() { return GetActiveWindow(); }

HWND SetFocus(HWND window) {
    ActivationState* state = activationState();
    if (state == nullptr)
        return nullptr;
    const HWND former = state->focus;
    if (window == former)
        return former;
    if (window != nullptr) {
        const Window* found = findWindow(window);
        if (found == nullptr || !vndk::win32::canHaveFocus(*found))
            return nullptr;
    }
    if (vndk::win32::callHooks(WH_CBT, HCBT_SETFOCUS, reinterpret_cast<WPARAM>(window),
                               reinterpret_cast<LPARAM>(former)) != 0)
        return nullptr;
    if (window != nullptr) {
        Window* found = findWindow(window);
        if (found == nullptr)
            return nullptr;
        const HWND top = vndk::win32::topLevelOf(*found)->handle;
        if (!vndk::win32::activate(top, vndk::win32::ActivationCause::program) || findWindow(window) == nullptr)
            return nullptr;
    }
    vndk::win32::moveFocus(window);
    return former;
}

HWND SetActiveWindow(HWND window) {
    const ActivationState* state = activationState();
    if (state == nullptr)
        return nullptr;
    const HWND former = state->active;
    if (window == nullptr) {
        vndk::win32::activate(nullptr, vndk::win32::ActivationCause::program);
        return former;
    }
    const Window* found = findWindow(window);
    if (found == nullptr || found->parent == nullptr)
        return nullptr;
    if (isChild(*found) || !vndk::win32::isTopLevel(*found) || (found->style & WS_DISABLED) != 0)
        return former;
    return vndk::win32::activate(window, vndk::win32::ActivationCause::program) ? former : nullptr;
}

BOOL SetForegroundWindow(HWND window) {
    const Window* found = findWindow(window);
    if (found == nullptr || found->parent == nullptr || isChild(*found) || !vndk::win32::isTopLevel(*found))
        return FALSE;
    return vndk::win32::activate(window, vndk::win32::ActivationCause::program) ? TRUE : FALSE;
}
