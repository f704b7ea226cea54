#include "user/message_queue.h"

#include "user/clipboard.h"
#include "user/desktop_state.h"
#include "user/hooks.h"
#include "user/input_queue.h"
#include "user/input_state.h"
#include "user/painting.h"
#include "win32/error.h"

#include <algorithm>

namespace vndk::win32 {

std::shared_ptr<QueueState> makeQueueState() { return std::make_shared<QueueState>(); }

bool MessageFilter::takesMessage(UINT message) const {
    return (first == 0 && last == 0) || (message >= first && message <= last);
}

bool MessageFilter::takesWindow(HWND target) const {
    if (threadOnly)
        return target == nullptr;
    if (window == nullptr || target == window)
        return true;
    // A message can wait for a window that is gone by now; asking about it must not leave an error.
    const Window* found = target != nullptr ? findWindow(target) : nullptr;
    while (found != nullptr && found->handle != window)
        found = found->parent;
    return found != nullptr;
}

namespace {

MSG messageOfNow(const DesktopState& state, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return {window, message, wParam, lParam, state.screen.clock(), state.input->pointer};
}

bool put(HWND window, UINT message, WPARAM wParam, LPARAM lParam, bool limited) {
    DesktopState* state = currentState();
    if (state == nullptr || (window != nullptr && findWindow(window) == nullptr))
        return false;
    QueueState& queue = *state->queue;
    if (limited && queue.posted.size() >= postedLimit) {
        SetLastError(ERROR_NOT_ENOUGH_QUOTA);
        return false;
    }
    queue.posted.push_back(messageOfNow(*state, window, message, wParam, lParam));
    queue.changed |= QS_POSTMESSAGE;
    return true;
}

bool takePosted(QueueState& queue, MSG& message, const MessageFilter& filter, bool remove) {
    const auto found = std::find_if(queue.posted.begin(), queue.posted.end(), [&filter](const MSG& posted) {
        return filter.takesMessage(posted.message) && filter.takesWindow(posted.hwnd);
    });
    if (found == queue.posted.end())
        return false;
    message = *found;
    if (remove)
        queue.posted.erase(found);
    return true;
}

// Quitting waits until everything that was posted before has been handled.
bool takeQuit(const DesktopState& state, MSG& message, bool remove) {
    QueueState& queue = *state.queue;
    if (!queue.quit || !queue.posted.empty())
        return false;
    message = messageOfNow(state, nullptr, WM_QUIT, static_cast<WPARAM>(queue.exitCode), 0);
    if (remove)
        queue.quit = false;
    return true;
}

bool takePaint(const DesktopState& state, MSG& message, const MessageFilter& filter, bool remove) {
    if (filter.threadOnly || !filter.takesMessage(WM_PAINT))
        return false;
    const HWND window = nextToPaint(filter.window);
    if (window == nullptr)
        return false;
    message = messageOfNow(state, window, WM_PAINT, 0, 0);
    // A paint that was only asked for, without anything invalid, comes once, whether the window paints or not.
    if (Window* found = findWindow(window); remove && found != nullptr)
        found->internalPaint = false;
    return true;
}

bool takeTimer(const DesktopState& state, MSG& message, const MessageFilter& filter, bool remove) {
    Timer* timer = dueTimer(filter);
    if (timer == nullptr)
        return false;
    message = messageOfNow(state, timer->window, timer->system ? WM_SYSTIMER : WM_TIMER, timer->id,
                           reinterpret_cast<LPARAM>(timer->procedure));
    // Periods that were missed don't pile up.
    if (remove)
        timer->due = state.screen.clock() + timer->period;
    return true;
}

} // namespace

bool postMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return put(window, message, wParam, lParam, true);
}

bool postInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return put(window, message, wParam, lParam, false);
}

bool takeMessage(MSG& message, const MessageFilter& filter, bool remove) {
    collectScreenEvents();
    DesktopState* state = currentState();
    if (state == nullptr)
        return false;
    // Looking at input and paints sends messages, after which anything may have been posted.
    QueueState& queue = *state->queue;
    const bool taken = takePosted(queue, message, filter, remove) || takeQuit(*state, message, remove) ||
                       takeInput(message, filter, remove) || takePosted(queue, message, filter, remove) ||
                       takePaint(*state, message, filter, remove) || takeTimer(*state, message, filter, remove);
    if (!taken)
        return false;
    queue.messageTime = message.time;
    queue.messagePoint = message.pt;
    queue.idleRounds = 0;
    callHooks(WH_GETMESSAGE, HC_ACTION, remove ? PM_REMOVE : PM_NOREMOVE, reinterpret_cast<LPARAM>(&message));
    return true;
}

void forgetInput(Window& window) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return;
    const HWND handle = window.handle;
    std::erase_if(state->queue->posted, [handle](const MSG& message) { return message.hwnd == handle; });
    std::erase_if(state->queue->timers, [handle](const Timer& timer) { return timer.window == handle; });
    InputState& input = *state->input;
    if (input.capture == handle)
        input.capture = nullptr;
    if (input.tracking.window == handle)
        input.tracking = {};
    if (input.caret.window == handle)
        DestroyCaret();
    if (input.lastClick.window == handle)
        input.lastClick = {};
    forgetClipboard(handle);
}

WPARAM heldKeys() {
    const DesktopState* state = currentState();
    if (state == nullptr)
        return 0;
    const KeyStates& keys = state->input->keys;
    WPARAM held = 0;
    const auto add = [&keys, &held](int key, WPARAM bit) {
        if ((keys[static_cast<std::size_t>(key)] & 0x80) != 0)
            held |= bit;
    };
    add(VK_LBUTTON, MK_LBUTTON);
    add(VK_RBUTTON, MK_RBUTTON);
    add(VK_MBUTTON, MK_MBUTTON);
    add(VK_SHIFT, MK_SHIFT);
    add(VK_CONTROL, MK_CONTROL);
    return held;
}

POINT messagePoint() {
    const DesktopState* state = currentState();
    return state != nullptr ? state->queue->messagePoint : POINT{0, 0};
}

} // namespace vndk::win32

using namespace vndk::win32;

DWORD GetMessagePos() {
    const POINT point = messagePoint();
    return static_cast<DWORD>(MAKELPARAM(point.x, point.y));
}

LONG GetMessageTime() {
    const DesktopState* state = currentState();
    return state != nullptr ? static_cast<LONG>(state->queue->messageTime) : 0;
}

LPARAM GetMessageExtraInfo() {
    const DesktopState* state = currentState();
    return state != nullptr ? state->input->extraInfo : 0;
}

void PostQuitMessage(int exitCode) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return;
    state->queue->quit = true;
    state->queue->exitCode = exitCode;
    state->queue->changed |= QS_POSTMESSAGE;
}

DWORD GetQueueStatus(UINT flags) {
    collectScreenEvents();
    DesktopState* state = currentState();
    if (state == nullptr)
        return 0;
    QueueState& queue = *state->queue;
    UINT present = inputStatus(*state->input);
    if (!queue.posted.empty() || queue.quit)
        present |= QS_POSTMESSAGE;
    if ((flags & QS_PAINT) != 0 && nextToPaint(nullptr) != nullptr)
        present |= QS_PAINT;
    if (dueTimer({}) != nullptr)
        present |= QS_TIMER;
    const UINT fresh = queue.changed & present & flags;
    queue.changed &= ~flags;
    return static_cast<DWORD>(MAKELONG(static_cast<WORD>(fresh), static_cast<WORD>(present & flags)));
}
