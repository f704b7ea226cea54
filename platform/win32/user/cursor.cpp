// The pointer: its picture and its place.
#include "gdi/cursor_image.h"
#include "user/desktop_state.h"
#include "user/input_queue.h"
#include "user/input_state.h"
#include "win32/error.h"

#include <algorithm>

namespace vndk::win32 {

void showCurrentCursor() {
    DesktopState* state = currentState();
    if (state == nullptr)
        return;
    const InputState& input = *state->input;
    std::optional<screen::CursorImage> image;
    if (input.cursor != nullptr && input.cursorShown >= 0)
        image = cursorImage(input.cursor);
    state->screen.setCursor(image ? &*image : nullptr);
}

} // namespace vndk::win32

using namespace vndk::win32;

HCURSOR SetCursor(HCURSOR cursor) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return nullptr;
    const HCURSOR before = state->input->cursor;
    state->input->cursor = cursor;
    if (before != cursor)
        showCurrentCursor();
    return before;
}

HCURSOR GetCursor() {
    const DesktopState* state = currentState();
    return state != nullptr ? state->input->cursor : nullptr;
}

int ShowCursor(BOOL show) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return 0;
    const int count = state->input->cursorShown += show != FALSE ? 1 : -1;
    if (count == 0 || count == -1)
        showCurrentCursor();
    return count;
}

BOOL GetCursorPos(POINT* point) {
    const DesktopState* state = currentState();
    if (state == nullptr || point == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    collectScreenEvents();
    *point = state->input->pointer;
    return TRUE;
}

BOOL SetCursorPos(int x, int y) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    const vndk::screen::Surface surface = state->screen.surface();
    RECT reach{0, 0, surface.width, surface.height};
    if (state->input->pointerClip)
        reach = *state->input->pointerClip;
    const POINT point{std::clamp<LONG>(x, reach.left, std::max(reach.left, reach.right - 1)),
                      std::clamp<LONG>(y, reach.top, std::max(reach.top, reach.bottom - 1))};
    state->input->pointer = point;
    state->screen.moveCursor(point.x, point.y);
    return TRUE;
}

BOOL ClipCursor(const RECT* rect) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    if (rect == nullptr) {
        state->input->pointerClip.reset();
        return TRUE;
    }
    const vndk::screen::Surface surface = state->screen.surface();
    const RECT clip{std::clamp<LONG>(rect->left, 0, surface.width), std::clamp<LONG>(rect->top, 0, surface.height),
                    std::clamp<LONG>(rect->right, 0, surface.width), std::clamp<LONG>(rect->bottom, 0, surface.height)};
    if (clip.left > clip.right || clip.top > clip.bottom) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    state->input->pointerClip = clip;
    const POINT point = state->input->pointer;
    if (point.x < clip.left || point.x >= clip.right || point.y < clip.top || point.y >= clip.bottom)
        SetCursorPos(point.x, point.y);
    return TRUE;
}

BOOL MessageBeep(UINT) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    state->screen.beep();
    return TRUE;
}
