// From an event of the pointer to the message of a window.
#include "user/activation.h"
#include "user/desktop_state.h"
#include "user/input_queue.h"
#include "user/input_state.h"
#include "win32/metrics.h"

#include <algorithm>
#include <cstdlib>

namespace vndk::win32 {

using screen::Event;

namespace {

struct Target {
    HWND window = nullptr;
    LRESULT hitTest = HTCLIENT;
    bool captured = false;
};

UINT buttonMessage(const Event& event) {
    const bool down = event.kind == Event::Kind::mouseDown;
    switch (event.button) {
    case screen::MouseButton::left:
        return down ? WM_LBUTTONDOWN : WM_LBUTTONUP;
    case screen::MouseButton::right:
        return down ? WM_RBUTTONDOWN : WM_RBUTTONUP;
    default:
        return down ? WM_MBUTTONDOWN : WM_MBUTTONUP;
    }
}

UINT clientMessage(const Event& event) {
    return event.kind == Event::Kind::mouseMove ? WM_MOUSEMOVE : buttonMessage(event);
}

bool isPress(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

constexpr UINT doubleClickOf(UINT press) { return press + (WM_LBUTTONDBLCLK - WM_LBUTTONDOWN); }
constexpr UINT frameMessage(UINT client) { return client + (WM_NCMOUSEMOVE - WM_MOUSEMOVE); }

void noteButtons(InputState& input, const Event& event) {
    const UINT key = event.button == screen::MouseButton::left    ? VK_LBUTTON
                     : event.button == screen::MouseButton::right ? VK_RBUTTON
                                                                  : VK_MBUTTON;
    if (event.kind == Event::Kind::mouseDown || event.kind == Event::Kind::mouseUp)
        noteKey(input.keys, key, event.kind == Event::Kind::mouseDown);
    noteHeld(input.keys, event.held);
}

// The window below the pointer is asked where in it the pointer is.
Target findTarget(const InputState& input, POINT point) {
    if (input.capture != nullptr && findWindow(input.capture) != nullptr)
        return {input.capture, HTCLIENT, true};
    Target target;
    target.window = windowAt(point, target.hitTest);
    return target;
}

bool wantsDoubleClicks(HWND window, LRESULT hitTest) {
    const Window* found = findWindow(window);
    return found != nullptr && (hitTest != HTCLIENT || (found->windowClass->style & CS_DBLCLKS) != 0);
}

bool isSecondClick(const LastClick& last, const InputState& input, const Target& target, UINT message, POINT point,
                   DWORD time) {
    return last.message == message && last.window == target.window && last.hitTest == target.hitTest &&
           time - last.time <= input.doubleClickTime &&
           std::abs(point.x - last.point.x) * 2 <= GetSystemMetrics(SM_CXDOUBLECLK) &&
           std::abs(point.y - last.point.y) * 2 <= GetSystemMetrics(SM_CYDOUBLECLK);
}

// The message a press becomes: a double click's when the window wants these.
UINT pressOrDoubleClick(InputState& input, const Target& target, UINT message, POINT point, DWORD time, bool remove) {
    const bool second = wantsDoubleClicks(target.window, target.hitTest) &&
                        isSecondClick(input.lastClick, input, target, message, point, time);
    if (remove)
        input.lastClick = second ? LastClick{} : LastClick{target.window, message, target.hitTest, point, time};
    return second ? doubleClickOf(message) : message;
}

MSG messageFor(const Target& target, UINT message, const Event& event, POINT point) {
    MSG made{target.window, message, 0, MAKELPARAM(point.x, point.y), event.time, point};
    if (target.hitTest != HTCLIENT) {
        made.message = frameMessage(message);
        made.wParam = static_cast<WPARAM>(target.hitTest);
    } else {
        POINT inside = point;
        ScreenToClient(target.window, &inside);
        made.wParam = heldKeys();
        made.lParam = MAKELPARAM(inside.x, inside.y);
    }
    return made;
}

// All parents hear of a press in one of their children.
void notifyParents(HWND target, UINT message, POINT point) {
    HWND child = target;
    while (true) {
        const Window* window = findWindow(child);
        if (window == nullptr || !isChild(*window) || (window->exStyle & WS_EX_NOPARENTNOTIFY) != 0 ||
            window->parent == nullptr)
            return;
        const HWND parent = window->parent->handle;
        POINT inside = point;
        ScreenToClient(parent, &inside);
        send(parent, WM_PARENTNOTIFY, MAKEWPARAM(static_cast<int>(message), 0), MAKELPARAM(inside.x, inside.y));
        child = parent;
    }
}

// What a window is asked and told before the message. False when the message is eaten.
bool announce(const Target& target, UINT message, POINT point) {
    if (target.captured)
        return true;
    bool deliver = true;
    const UINT press = message;
    if (isPress(press) && target.hitTest != HTERROR) {
        notifyParents(target.window, press, point);
        if (findWindow(target.window) == nullptr)
            return false;
        deliver = activateByMouse(target.window, target.hitTest, press);
    }
    if (findWindow(target.window) == nullptr)
        return false;
    const LPARAM where = MAKELPARAM(static_cast<int>(target.hitTest), static_cast<int>(message));
    send(target.window, WM_SETCURSOR, reinterpret_cast<WPARAM>(target.window), where);
    return deliver && target.hitTest != HTERROR && findWindow(target.window) != nullptr;
}

Taken takeWheel(InputState& input, const InputEntry& entry, MSG& message, const MessageFilter& filter, bool remove) {
    const DesktopState& state = *currentState();
    const HWND target = state.activation->focus != nullptr ? state.activation->focus : state.activation->active;
    if (target == nullptr) {
        dropEntry(input, entry.number);
        return Taken::dropped;
    }
    if (!filter.takesMessage(WM_MOUSEWHEEL) || !filter.takesWindow(target))
        return Taken::no;
    const Event& event = entry.event;
    if (remove) {
        noteHeld(input.keys, event.held);
        dropEntry(input, entry.number);
    }
    message = {target,
               WM_MOUSEWHEEL,
               MAKEWPARAM(static_cast<int>(heldKeys()), event.delta),
               MAKELPARAM(event.x, event.y),
               event.time,
               {event.x, event.y}};
    return Taken::yes;
}

Taken takeLeave(InputState& input, const InputEntry& entry, bool remove) {
    if (!remove)
        return Taken::no;
    dropEntry(input, entry.number);
    trackPointer(nullptr, HTNOWHERE, input.pointer);
    return Taken::dropped;
}

// Could the event give a message of the range at all? Saves asking the windows.
bool mayFit(UINT message, const MessageFilter& filter) {
    return filter.takesMessage(message) || filter.takesMessage(frameMessage(message)) ||
           (isPress(message) &&
            (filter.takesMessage(doubleClickOf(message)) || filter.takesMessage(frameMessage(doubleClickOf(message)))));
}

// An entry that was taken out for nothing goes back to its place.
void putBack(InputState& input, const InputEntry& entry) {
    const auto place = std::find_if(input.events.begin(), input.events.end(),
                                    [&entry](const InputEntry& other) { return other.number > entry.number; });
    input.events.insert(place, entry);
}

} // namespace

Taken takeMouse(InputState& input, const InputEntry& entry, MSG& message, const MessageFilter& filter, bool remove) {
    const Event& event = entry.event;
    if (event.kind == Event::Kind::wheel)
        return takeWheel(input, entry, message, filter, remove);
    if (event.kind == Event::Kind::mouseLeave)
        return takeLeave(input, entry, remove);
    const UINT plain = clientMessage(event);
    if (!mayFit(plain, filter))
        return Taken::no;
    // Out of the queue before anything is sent: a handler with a loop of its own must not take the event again.
    dropEntry(input, entry.number);
    const POINT point{event.x, event.y};
    const Target target = findTarget(input, point);
    if (findWindow(target.window) == nullptr)
        return Taken::dropped;
    UINT made = plain;
    if (isPress(plain))
        made = pressOrDoubleClick(input, target, plain, point, event.time, false);
    const UINT final = target.hitTest == HTCLIENT ? made : frameMessage(made);
    if (!filter.takesMessage(final) || !filter.takesWindow(target.window)) {
        putBack(input, entry);
        return Taken::no;
    }
    if (!remove) {
        putBack(input, entry);
        message = messageFor(target, made, event, point);
        return Taken::yes;
    }
    noteButtons(input, event);
    if (isPress(plain))
        pressOrDoubleClick(input, target, plain, point, event.time, true);
    trackPointer(target.window, target.hitTest, point);
    if (!announce(target, plain, point))
        return Taken::dropped;
    message = messageFor(target, made, event, point);
    return Taken::yes;
}

} // namespace vndk::win32

using namespace vndk::win32;

UINT GetDoubleClickTime() {
    const DesktopState* state = currentState();
    return state != nullptr ? state->input->doubleClickTime : 500;
}

BOOL SetDoubleClickTime(UINT milliseconds) {
    constexpr UINT longest = 5000;
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    state->input->doubleClickTime = milliseconds == 0 ? 500 : std::min(milliseconds, longest);
    return TRUE;
}

BOOL SwapMouseButton(BOOL swap) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    const bool before = state->input->swapButtons;
    state->input->swapButtons = swap != FALSE;
    return before ? TRUE : FALSE;
}
