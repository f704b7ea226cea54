#include "user/desktop_state.h"
#include "user/message_queue.h"
#include "win32/error.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr UINT longestPeriod = 0x7FFFFFFF;

// The clock wraps; times less than half of its range apart compare right.
std::int32_t untilDue(const Timer& timer, DWORD now) { return static_cast<std::int32_t>(timer.due - now); }

auto locate(QueueState& queue, HWND window, UINT_PTR id, bool system) {
    return std::find_if(queue.timers.begin(), queue.timers.end(), [=](const Timer& timer) {
        return timer.window == window && timer.id == id && timer.system == system;
    });
}

void start(DesktopState& state, Timer timer) {
    timer.due = state.screen.clock() + timer.period;
    QueueState& queue = *state.queue;
    queue.changed |= QS_TIMER;
    const auto found = locate(queue, timer.window, timer.id, timer.system);
    if (found != queue.timers.end())
        *found = timer;
    else
        queue.timers.push_back(timer);
}

bool stop(DesktopState& state, HWND window, UINT_PTR id, bool system) {
    QueueState& queue = *state.queue;
    const auto found = locate(queue, window, id, system);
    if (found == queue.timers.end())
        return false;
    queue.timers.erase(found);
    return true;
}

UINT_PTR freeTimerId(QueueState& queue) {
    do
        queue.nextTimerId = queue.nextTimerId > 0x100 ? queue.nextTimerId - 1 : 0x7FFF;
    while (locate(queue, nullptr, queue.nextTimerId, false) != queue.timers.end());
    return queue.nextTimerId;
}

} // namespace

void setSystemTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    DesktopState* state = currentState();
    if (state == nullptr || findWindow(window) == nullptr)
        return;
    const UINT period = std::clamp(milliseconds, USER_TIMER_MINIMUM, longestPeriod);
    start(*state, {window, id, period, 0, procedure, true});
}

void killSystemTimer(HWND window, UINT_PTR id) {
    if (DesktopState* state = currentState(); state != nullptr)
        stop(*state, window, id, true);
}

const Timer* findTimer(HWND window, UINT_PTR id, bool system) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return nullptr;
    const auto found = locate(*state->queue, window, id, system);
    return found != state->queue->timers.end() ? &*found : nullptr;
}

Timer* dueTimer(const MessageFilter& filter) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return nullptr;
    const DWORD now = state->screen.clock();
    Timer* longest = nullptr;
    for (Timer& timer : state->queue->timers) {
        if (untilDue(timer, now) > 0 || !filter.takesMessage(timer.system ? WM_SYSTIMER : WM_TIMER) ||
            !filter.takesWindow(timer.window))
            continue;
        if (longest == nullptr || untilDue(timer, now) < untilDue(*longest, now))
            longest = &timer;
    }
    return longest;
}

int untilNextTimer() {
    const DesktopState* state = currentState();
    if (state == nullptr || state->queue->timers.empty())
        return -1;
    const DWORD now = state->screen.clock();
    std::int32_t shortest = longestPeriod;
    for (const Timer& timer : state->queue->timers)
        shortest = std::min(shortest, untilDue(timer, now));
    return std::max(shortest, 0);
}

} // namespace vndk::win32

using namespace vndk::win32;

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure) {
    DesktopState* state = currentState();
    if (state == nullptr || (window != nullptr && findWindow(window) == nullptr))
        return 0;
    if (window == nullptr && findTimer(nullptr, id, false) == nullptr)
        id = freeTimerId(*state->queue);
    const UINT period = std::clamp(milliseconds, USER_TIMER_MINIMUM, longestPeriod);
    start(*state, {window, id, period, 0, procedure, false});
    return id != 0 ? id : 1;
}

BOOL KillTimer(HWND window, UINT_PTR id) {
    DesktopState* state = currentState();
    if (state == nullptr || (window != nullptr && findWindow(window) == nullptr))
        return FALSE;
    if (!stop(*state, window, id, false)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    return TRUE;
}

DWORD GetTickCount() {
    const DesktopState* state = currentState();
    return state != nullptr ? state->screen.clock() : 0;
}
