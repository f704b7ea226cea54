// Posted messages, the quit message and timers of the thread that owns the desktop.
#pragma once

#include "user/window.h"
#include "win32/queue.h"

#include <deque>
#include <vector>

namespace vndk::win32 {

struct Timer {
    HWND window = nullptr;
    UINT_PTR id = 0;
    UINT period = 0; // milliseconds
    DWORD due = 0;   // on the screen's clock
    TIMERPROC procedure = nullptr;
    bool system = false; // WM_SYSTIMER, of the window manager itself
};

struct QueueState {
    std::deque<MSG> posted;
    bool quit = false;
    int exitCode = 0;
    std::vector<Timer> timers;
    UINT_PTR nextTimerId = 0x7FFF; // counts down: ids of timers without a window
    UINT changed = 0;              // QS_* that came since the last GetQueueStatus
    DWORD messageTime = 0;         // of the last message taken
    POINT messagePoint{0, 0};
    int idleRounds = 0; // waits without any event while the clock stood still
    DWORD idleClock = 0;
};

/// What a program wants to see of the queue.
struct MessageFilter {
    HWND window = nullptr; // it and its children; null: all
    bool threadOnly = false;
    UINT first = 0;
    UINT last = 0; // both 0: all messages

    [[nodiscard]] bool takesMessage(UINT message) const;
    [[nodiscard]] bool takesWindow(HWND target) const;
};

constexpr std::size_t postedLimit = 10000;

/// Puts a message at the end of the queue. False with ERROR_NOT_ENOUGH_QUOTA when it is full, or for a dead window.
/// Null posts to the thread.
bool postMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Takes the next message that fits, in the documented order. False when there is none; never waits.
bool takeMessage(MSG& message, const MessageFilter& filter, bool remove);
/// Waits for the screen's next event or the next timer. False when neither can ever come.
bool waitForInput();

/// Timers of the window manager itself: caret, hovering, auto repeat. The procedure is called when WM_SYSTIMER is
/// dispatched; without one the message goes to the window. Setting one that exists starts it anew.
void setSystemTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
void killSystemTimer(HWND window, UINT_PTR id);
[[nodiscard]] const Timer* findTimer(HWND window, UINT_PTR id, bool system);
/// The due timer that waits longest, or null.
[[nodiscard]] Timer* dueTimer(const MessageFilter& filter);
/// Milliseconds until the next timer; -1 without any.
[[nodiscard]] int untilNextTimer();

// Numbers of system timers.
constexpr UINT_PTR caretTimer = 0xFFFF;
constexpr UINT_PTR hoverTimer = 0xFFFA;

} // namespace vndk::win32
