#include "win32/desktop.h"

#include "controls/register.h"
#include "gdi/metrics.h"
#include "user/desktop_state.h"
#include "user/destroy_window.h"
#include "user/frame_geometry.h"
#include "user/hooks.h"
#include "user/input_queue.h"
#include "user/painting.h"
#include "user/show_window.h"
#include "user/window_position.h"
#include "win32/draw.h"
#include "win32/error.h"
#include "win32/gdi.h"
#include "win32/paint.h"

#include <cassert>

namespace vndk::win32 {

namespace {

DesktopState* newest = nullptr; // the current one; those before it hang behind

constexpr LPCSTR rootClass = "#32769";
constexpr WPARAM bitsPerPixel = 32;

LRESULT CALLBACK rootProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ERASEBKGND: {
        RECT client{};
        GetClientRect(window, &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, GetSysColorBrush(COLOR_BACKGROUND));
        return TRUE;
    }
    case WM_CLOSE:
    case WM_SYSCOMMAND:
        return 0; // The desktop can't be closed or moved.
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

RECT screenRect(DesktopState& state) {
    const screen::Surface surface = state.screen.surface();
    return {0, 0, surface.width, surface.height};
}

void announceScreenSize(DesktopState& state) {
    const RECT rect = screenRect(state);
    setScreenSize(rect.right, rect.bottom);
}

void makeRoot(DesktopState& state) {
    WNDCLASSA rootWindows{};
    rootWindows.style = CS_GLOBALCLASS | CS_DBLCLKS;
    rootWindows.lpfnWndProc = &rootProcedure;
    rootWindows.lpszClassName = rootClass;
    RegisterClassA(&rootWindows);

    auto window = std::make_unique<Window>();
    window->windowClass = state.classes.back().get();
    window->windowClass->windows = 1;
    window->procedure = &rootProcedure;
    window->style = WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS;
    window->windowRect = window->clientRect = window->normalRect = screenRect(state);
    window->created = true;
    Window* root = window.get();
    root->handle = state.windows.add(std::move(window));
    state.root = root;
}

void destroyAll(DesktopState& state) {
    state.hooks->hooks.clear(); // Nobody can hold it up any more.
    state.ending = true;
    while (!state.root->children.empty()) {
        const HWND first = state.root->children.front()->handle;
        destroyWindow(first);
        // A handler that is still running further down keeps its window half destroyed; take it all the same.
        if (state.windows.find(first) != nullptr)
            freeWindows(first);
    }
    freeWindows(state.root->handle);
    state.root = nullptr;
    assert(state.windows.size() == 0 && "all windows of a desktop die with it");
}

} // namespace

DesktopState* currentState() {
    if (newest == nullptr)
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
    return newest;
}

Desktop::Desktop(screen::Screen& screen) : state_(std::make_unique<DesktopState>(*this, screen)) {
    DesktopState& state = *state_;
    state.former = newest;
    newest = &state;
    announceScreenSize(state);
    state.hooks = makeHookState();
    state.activation = makeActivationState();
    state.painting = makePaintingState(state);
    state.queue = makeQueueState();
    state.input = makeInputState();
    state.clipboard = makeClipboardState();
    state.menus = makeMenuState();
    makeRoot(state);
    registerControls();
    RedrawWindow(state.root->handle, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE);
}

Desktop::~Desktop() {
    DesktopState& state = *state_;
    // Its windows hear of their end on their own desktop, whichever is current.
    DesktopState* const top = newest;
    if (top != &state) {
        for (DesktopState* each = top; each != nullptr; each = each->former)
            if (each->former == &state)
                each->former = state.former;
        state.former = top;
        newest = &state;
    }
    destroyAll(state);
    state.menus.reset();
    state.clipboard.reset();
    state.input.reset();
    state.queue.reset();
    state.painting.reset();
    state.activation.reset();
    state.hooks.reset();
    newest = state.former;
    if (newest != nullptr)
        announceScreenSize(*newest);
}

Desktop* Desktop::current() { return newest != nullptr ? &newest->desktop : nullptr; }

screen::Screen& Desktop::screen() { return state_->screen; }

void Desktop::collectInput() { collectScreenEvents(); }
void Desktop::present() { presentPainted(); }
int Desktop::settle(int limit) { return settleQueue(limit); }

namespace {

/// Maximised windows fill the screen again, minimised ones go back to its bottom.
void fitToDesktop(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr || window->showState == ShowState::normal)
        return;
    if (window->showState == ShowState::minimized) {
        const RECT place = minimizedPlace(*window);
        SetWindowPos(handle, nullptr, place.left, place.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        return;
    }
    const MaximizedPlace place = askMaximizedPlace(handle);
    SetWindowPos(handle, nullptr, place.position.x, place.position.y, place.size.cx, place.size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

} // namespace

void desktopResized() {
    DesktopState* state = currentState();
    if (state == nullptr || state->root == nullptr)
        return;
    announceScreenSize(*state);
    Window& root = *state->root;
    const RECT size = screenRect(*state);
    root.windowRect = root.clientRect = root.normalRect = size;
    std::vector<HWND> windows;
    for (const Window* window : root.children)
        windows.push_back(window->handle);
    for (const HWND window : windows) {
        fitToDesktop(window);
        send(window, WM_DISPLAYCHANGE, bitsPerPixel, MAKELPARAM(size.right, size.bottom));
    }
    RedrawWindow(GetDesktopWindow(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
}

} // namespace vndk::win32

using vndk::win32::currentState;
using vndk::win32::DesktopState;

HWND GetDesktopWindow() {
    const DesktopState* state = currentState();
    return state != nullptr && state->root != nullptr ? state->root->handle : nullptr;
}
