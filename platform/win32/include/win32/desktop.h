// The desktop: all windows of the program on one screen, with their classes, queue, focus, capture, timers, clipboard.
//
//     screen::MemoryScreen screen(1280, 800);
//     Desktop desktop(screen);                    // current from now on: CreateWindowEx and the others work on it
//     HWND window = CreateWindowEx(...);
//     desktop.settle();                           // deliver input, messages and paints until nothing is left
//
// The platform's calls reach the current desktop; without one they fail with ERROR_INVALID_WINDOW_HANDLE. A desktop
// that ends destroys its windows (with their messages) and makes the former one current again.
#pragma once

#include "screen/screen.h"
#include "win32/types.h"

#include <memory>

namespace vndk::win32 {

struct DesktopState;

class Desktop {
public:
    /// The screen must outlive the desktop.
    explicit Desktop(screen::Screen& screen);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Null when there is none.
    [[nodiscard]] static Desktop* current();

    [[nodiscard]] screen::Screen& screen();

    /// Takes the screen's events into the input queue. GetMessage and PeekMessage do this by themselves.
    void collectInput();
    /// Shows what was painted since the last call. Done by itself whenever the queue is found empty.
    void present();
    /// Runs PeekMessage, TranslateMessage, DispatchMessage until the queue is empty, timers that are not yet due left
    /// alone; then presents. Returns the number of messages dispatched; stops after `limit`.
    int settle(int limit = 100000);

    /// For the layer's own rooms.
    [[nodiscard]] DesktopState& state() { return *state_; }

private:
    std::unique_ptr<DesktopState> state_;
};

} // namespace vndk::win32
