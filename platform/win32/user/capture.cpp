#include "user/desktop_state.h"
#include "user/input_queue.h"
#include "user/input_state.h"
#include "win32/input.h"

namespace vndk::win32 {

namespace {

// The loser is told after the change.
HWND passCapture(DesktopState& state, HWND window) {
    const HWND before = state.input->capture;
    state.input->capture = window;
    if (before != nullptr && before != window)
        send(before, WM_CAPTURECHANGED, 0, reinterpret_cast<LPARAM>(window));
    return before;
}

} // namespace

void releaseCaptureOf(const Window& window) {
    DesktopState* state = currentState();
    if (state == nullptr || state->input->capture == nullptr)
        return;
    const HWND holder = state->input->capture;
    if (holder == window.handle || IsChild(window.handle, holder) != FALSE)
        passCapture(*state, nullptr);
}

} // namespace vndk::win32

using namespace vndk::win32;

HWND SetCapture(HWND window) {
    DesktopState* state = currentState();
    if (state == nullptr || (window != nullptr && findWindow(window) == nullptr))
        return nullptr;
    return passCapture(*state, window);
}

BOOL ReleaseCapture() {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    passCapture(*state, nullptr);
    return TRUE;
}

HWND GetCapture() {
    const DesktopState* state = currentState();
    return state != nullptr ? state->input->capture : nullptr;
}
