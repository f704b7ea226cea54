#include "user/desktop_state.h"
#include "user/hooks.h"
#include "user/input_queue.h"
#include "user/message_queue.h"
#include "user/painting.h"
#include "win32/error.h"
#include "win32/queue.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

const HWND threadMessages = reinterpret_cast<HWND>(~UINT_PTR{0});

// False for a window that isn't there.
bool makeFilter(MessageFilter& filter, HWND window, UINT first, UINT last) {
    filter = {window, window == threadMessages, first, last};
    if (filter.threadOnly)
        filter.window = nullptr;
    return filter.window == nullptr || findWindow(window) != nullptr;
}

// Nobody can ever wake a loop that waits on a screen in memory without events or timers. After this many fruitless
// rounds with the clock standing still the loop is ended rather than left to hang.
constexpr int fruitlessRounds = 10000;

bool isTimerMessage(const MSG& message) { return message.message == WM_TIMER || message.message == WM_SYSTIMER; }

// A timer that was killed after its message was made must not call a procedure that may be gone.
void callTimer(const MSG& message) {
    const Timer* timer = findTimer(message.hwnd, message.wParam, message.message == WM_SYSTIMER);
    const auto procedure = reinterpret_cast<TIMERPROC>(message.lParam);
    if (timer == nullptr || timer->procedure != procedure)
        return;
    try {
        procedure(message.hwnd, message.message, message.wParam, GetTickCount());
    } catch (...) {
        logOnce("a timer procedure threw");
    }
}

} // namespace

bool waitForInput() {
    DesktopState* state = currentState();
    if (state == nullptr)
        return false;
    presentPainted();
    QueueState& queue = *state->queue;
    const int timeout = untilNextTimer();
    state->screen.wait(timeout);
    if (timeout >= 0 || state->screen.clock() != queue.idleClock) {
        queue.idleClock = state->screen.clock();
        queue.idleRounds = 0;
        return true;
    }
    return ++queue.idleRounds < fruitlessRounds;
}

bool nextModalMessage(MSG& message, int filter) {
    while (true) {
        DesktopState* state = currentState();
        if (state == nullptr || state->ending || GetMessageA(&message, nullptr, 0, 0) < 0)
            return false;
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return false;
        }
        if (CallMsgFilterA(&message, filter) == FALSE)
            return true;
    }
}

int settleQueue(int limit) {
    int dispatched = 0;
    MSG message{};
    while (dispatched < limit && PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            break;
        }
        TranslateMessage(&message);
        DispatchMessageA(&message);
        ++dispatched;
    }
    presentPainted();
    return dispatched;
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last) {
    MessageFilter filter;
    if (message == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return -1;
    }
    if (currentState() == nullptr || !makeFilter(filter, window, first, last))
        return -1;
    while (!takeMessage(*message, filter, true)) {
        if (!waitForInput()) {
            logOnce("a message loop waits for what can never come; it gets WM_QUIT");
            *message = {nullptr, WM_QUIT, 0, 0, GetTickCount(), messagePoint()};
            return FALSE;
        }
        if (filter.window != nullptr && findWindow(filter.window) == nullptr)
            return -1;
    }
    return message->message != WM_QUIT ? TRUE : FALSE;
}

BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT flags) {
    MessageFilter filter;
    if (message == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (!makeFilter(filter, window, first, last))
        return FALSE;
    if (takeMessage(*message, filter, (flags & PM_REMOVE) != 0))
        return TRUE;
    presentPainted();
    return FALSE;
}

LRESULT DispatchMessageA(const MSG* message) {
    if (message == nullptr)
        return 0;
    if (isTimerMessage(*message) && message->lParam != 0) {
        callTimer(*message);
        return 0;
    }
    const Window* window = message->hwnd != nullptr ? findWindow(message->hwnd) : nullptr;
    if (window == nullptr)
        return 0;
    const MSG copy = *message; // The procedure may change the caller's.
    const LRESULT result = callProcedure(window->procedure, copy.hwnd, copy.message, copy.wParam, copy.lParam);
    if (copy.message == WM_PAINT)
        finishPaint(copy.hwnd);
    return result;
}

BOOL WaitMessage() {
    const DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    while (HIWORD(GetQueueStatus(QS_ALLINPUT)) == 0)
        if (!waitForInput())
            return FALSE;
    return TRUE;
}

BOOL CallMsgFilterA(MSG* message, int code) {
    if (message == nullptr)
        return FALSE;
    return callHooks(WH_MSGFILTER, code, 0, reinterpret_cast<LPARAM>(message)) != 0 ? TRUE : FALSE;
}

// All windows belong to one thread, so no message ever comes from another one.
BOOL InSendMessage() { return FALSE; }

DWORD GetCurrentThreadId() { return 1; }
