// What belongs to one desktop. Each room of the window manager keeps its own part.
#pragma once

#include "user/window.h"

#include "screen/screen.h"

namespace vndk::win32 {

struct ActivationState; // user/activation.h: focus, active and foreground window
struct QueueState;      // user/message_queue.h: posted messages, timers, hooks, quit
struct InputState;      // user/input_state.h: keys, buttons, capture, tracking, cursor, caret
struct PaintingState;   // user/painting.h: contexts handed out, what is to be presented
struct ClipboardState;  // user/clipboard.h
struct MenuState;       // user/menu.h: menus and the one that is tracked

struct DesktopState {
    explicit DesktopState(screen::Screen& usedScreen);
    ~DesktopState();

    screen::Screen& screen;
    HandleTable<Window, HWND> windows{HandleKind::window};
    std::vector<std::unique_ptr<WindowClass>> classes;
    Window* root = nullptr; // the desktop window: as large as the screen, parent of all top-level windows
    DesktopState* former = nullptr;
    std::unique_ptr<ActivationState> activation;
    std::unique_ptr<QueueState> queue;
    std::unique_ptr<InputState> input;
    std::unique_ptr<PaintingState> painting;
    std::unique_ptr<ClipboardState> clipboard;
    std::unique_ptr<MenuState> menus;
};

} // namespace vndk::win32
