// What belongs to one desktop. Each room of the window manager keeps its own part, and makes it when a desktop begins.
#pragma once

#include "user/window.h"

#include "screen/screen.h"

namespace vndk::win32 {

class Desktop;

struct ActivationState; // user/activation.h: focus, active and foreground window
struct HookState;       // user/hooks.h
struct QueueState;      // user/message_queue.h: posted messages, timers, quit
struct InputState;      // user/input_state.h: keys, buttons, capture, tracking, cursor, caret
struct PaintingState;   // user/painting.h: contexts handed out, what is to be presented
struct ClipboardState;  // user/clipboard.h
struct MenuState;       // user/menu.h: menus and the one that is tracked

struct DesktopState {
    DesktopState(Desktop& owner, screen::Screen& usedScreen) : desktop(owner), screen(usedScreen) {}

    Desktop& desktop;
    screen::Screen& screen;
    HandleTable<Window, HWND> windows{HandleKind::window};
    std::vector<std::unique_ptr<WindowClass>> classes;
    Window* root = nullptr; // the desktop window: as large as the screen, parent of all top-level windows
    DesktopState* former = nullptr;
    bool ending = false; // its windows are being destroyed; none can be made any more
    std::shared_ptr<HookState> hooks;
    std::shared_ptr<ActivationState> activation;
    std::shared_ptr<PaintingState> painting;
    std::shared_ptr<QueueState> queue;
    std::shared_ptr<InputState> input;
    std::shared_ptr<ClipboardState> clipboard;
    std::shared_ptr<MenuState> menus;
};

// Each is written in the room that the state belongs to. They run in this order, with `state` current and without any
// window; the parts die in the opposite order, when all windows are gone and `state` is still current.
std::shared_ptr<HookState> makeHookState();
std::shared_ptr<ActivationState> makeActivationState();
std::shared_ptr<PaintingState> makePaintingState(DesktopState& state);
std::shared_ptr<QueueState> makeQueueState();
std::shared_ptr<InputState> makeInputState();
std::shared_ptr<ClipboardState> makeClipboardState();
std::shared_ptr<MenuState> makeMenuState();

/// The screen has a new size: the desktop window takes it, maximised windows follow, everything is painted anew.
void desktopResized();

} // namespace vndk::win32
