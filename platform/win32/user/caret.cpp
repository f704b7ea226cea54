// The blinking mark of the place where text goes. Its pixels are inverted, so drawing it twice takes it away.
#include "user/desktop_state.h"
#include "user/input_state.h"
#include "user/painting.h"
#include "win32/error.h"
#include "win32/gdi.h"
#include "win32/metrics.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr UINT blinkTime = 530; // milliseconds

Caret* currentCaret() {
    DesktopState* state = currentState();
    return state != nullptr && state->input->caret.window != nullptr ? &state->input->caret : nullptr;
}

void invert(const Caret& caret) {
    const HDC dc = GetDCEx(caret.window, nullptr, DCX_CACHE | DCX_USESTYLE);
    if (dc == nullptr)
        return;
    const RECT area{caret.place.x, caret.place.y, caret.place.x + caret.width, caret.place.y + caret.height};
    if (caret.bitmap != nullptr) {
        const HDC memory = CreateCompatibleDC(dc);
        const HGDIOBJ before = SelectObject(memory, caret.bitmap);
        BitBlt(dc, area.left, area.top, caret.width, caret.height, memory, 0, 0, SRCINVERT);
        SelectObject(memory, before);
        DeleteDC(memory);
    } else {
        InvertRect(dc, &area);
    }
    ReleaseDC(caret.window, dc);
}

bool shouldShow(const Caret& caret) { return caret.hidden == 0 && caret.suspended == 0 && caret.blinkOn; }

void update(Caret& caret) {
    const bool show = shouldShow(caret);
    if (show == caret.shown)
        return;
    caret.shown = show;
    invert(caret);
}

void CALLBACK blink(HWND window, UINT, UINT_PTR, DWORD) {
    Caret* caret = currentCaret();
    if (caret == nullptr || caret->window != window)
        return;
    caret->blinkOn = !caret->blinkOn;
    update(*caret);
}

// After each change of its place it is shown at once and for a full time.
void startBlinking(Caret& caret) {
    caret.blinkOn = true;
    setSystemTimer(caret.window, caretTimer, blinkTime, &blink);
}

Caret* caretOf(HWND window) {
    Caret* caret = currentCaret();
    if (caret == nullptr || (window != nullptr && caret->window != window)) {
        SetLastError(ERROR_ACCESS_DENIED);
        return nullptr;
    }
    return caret;
}

} // namespace

bool pauseCaret(const Window* window) {
    Caret* caret = currentCaret();
    if (caret == nullptr)
        return false;
    if (window != nullptr && window->handle != caret->window && IsChild(window->handle, caret->window) == FALSE)
        return false;
    ++caret->suspended;
    update(*caret);
    return true;
}

void resumeCaret() {
    Caret* caret = currentCaret();
    // Another caret may have taken its place meanwhile: that one isn't paused.
    if (caret == nullptr || caret->suspended == 0)
        return;
    --caret->suspended;
    update(*caret);
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL CreateCaret(HWND window, HBITMAP bitmap, int width, int height) {
    if (findWindow(window) == nullptr)
        return FALSE;
    DestroyCaret();
    Caret caret;
    caret.window = window;
    caret.gray = bitmap == reinterpret_cast<HBITMAP>(UINT_PTR{1});
    caret.bitmap = caret.gray ? nullptr : bitmap;
    BITMAP size{};
    if (caret.bitmap != nullptr && GetObjectA(caret.bitmap, sizeof size, &size) != 0) {
        width = size.bmWidth;
        height = size.bmHeight;
    }
    constexpr int largest = 0x4000;
    caret.width = width <= 0 ? GetSystemMetrics(SM_CXBORDER) : std::min(width, largest);
    caret.height = height <= 0 ? GetSystemMetrics(SM_CYBORDER) : std::min(height, largest);
    caret.hidden = 1;
    currentState()->input->caret = caret;
    return TRUE;
}

BOOL DestroyCaret() {
    Caret* caret = caretOf(nullptr);
    if (caret == nullptr)
        return FALSE;
    ++caret->hidden;
    update(*caret);
    killSystemTimer(caret->window, caretTimer);
    *caret = {};
    return TRUE;
}

BOOL ShowCaret(HWND window) {
    Caret* caret = caretOf(window);
    if (caret == nullptr)
        return FALSE;
    if (caret->hidden > 0 && --caret->hidden == 0) {
        startBlinking(*caret);
        update(*caret);
    }
    return TRUE;
}

BOOL HideCaret(HWND window) {
    Caret* caret = caretOf(window);
    if (caret == nullptr)
        return FALSE;
    if (++caret->hidden == 1) {
        killSystemTimer(caret->window, caretTimer);
        update(*caret);
    }
    return TRUE;
}

BOOL SetCaretPos(int x, int y) {
    Caret* caret = caretOf(nullptr);
    if (caret == nullptr)
        return FALSE;
    constexpr int farthest = 0x8000000;
    x = std::clamp(x, -farthest, farthest);
    y = std::clamp(y, -farthest, farthest);
    if (caret->place.x == x && caret->place.y == y)
        return TRUE;
    caret->blinkOn = false;
    update(*caret);
    caret->place = {x, y};
    if (caret->hidden == 0)
        startBlinking(*caret);
    update(*caret);
    return TRUE;
}

BOOL GetCaretPos(POINT* point) {
    const Caret* caret = currentCaret();
    if (point == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *point = caret != nullptr ? caret->place : POINT{0, 0};
    return TRUE;
}

UINT GetCaretBlinkTime() { return blinkTime; }
