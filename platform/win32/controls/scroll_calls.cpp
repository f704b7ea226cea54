// The calls of win32/scrollbar.h. For SB_CTL they go to the window as SBM_ messages, which any window may answer.
#include "controls/scroll_bar.h"
#include "controls/scroll_place.h"
#include "win32/error.h"

namespace vndk::win32 {
namespace {

DWORD styleBit(int bar) { return bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL; }

/// The window, when `bar` names a bar of its frame. Sets the error otherwise.
Window* frameWindow(HWND window, int bar) {
    if (bar != SB_HORZ && bar != SB_VERT) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return findWindow(window);
}

bool hasScrollBars(const Window& window) {
    return window.scrollStateMade || (window.style & (WS_HSCROLL | WS_VSCROLL)) != 0;
}

/// The state of a frame's bar for reading; null, with the error set, when the window has had no bars so far.
const ScrollState* readFrame(HWND window, int bar) {
    const Window* found = frameWindow(window, bar);
    if (found == nullptr)
        return nullptr;
    if (!hasScrollBars(*found)) {
        SetLastError(ERROR_HAS_NO_SCROLLBARS);
        return nullptr;
    }
    return bar == SB_HORZ ? &found->horizontal : &found->vertical;
}

ScrollState* writeFrame(HWND window, int bar) {
    Window* found = frameWindow(window, bar);
    if (found == nullptr)
        return nullptr;
    found->scrollStateMade = true;
    return bar == SB_HORZ ? &found->horizontal : &found->vertical;
}

/// Shows and hides bars of a frame by style bits; the frame is laid out anew when that changes anything.
bool showFrameBars(HWND window, DWORD bits, bool show) {
    Window* found = findWindow(window);
    if (found == nullptr)
        return false;
    found->scrollStateMade = true;
    const DWORD style = show ? found->style | bits : found->style & ~bits;
    if (style == found->style)
        return false;
    found->style = style;
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    return true;
}

/// What the range that was set asks of the bar: shown and enabled, disabled, or hidden. True when that relaid the
/// frame.
bool followRange(HWND window, int bar, ScrollState& state, UINT mask) {
    if (canScroll(state)) {
        state.disabledArrows = ESB_ENABLE_BOTH;
        // A page alone never brings a hidden bar back.
        return (mask & (SIF_RANGE | SIF_DISABLENOSCROLL)) != 0 && showFrameBars(window, styleBit(bar), true);
    }
    if ((mask & SIF_DISABLENOSCROLL) != 0) {
        state.disabledArrows = ESB_DISABLE_BOTH;
        return showFrameBars(window, styleBit(bar), true);
    }
    return showFrameBars(window, styleBit(bar), false);
}

/// The position that holds after it.
int setFrameInfo(HWND window, int bar, const SCROLLINFO& info, bool redraw) {
    ScrollState* state = writeFrame(window, bar);
    if (state == nullptr)
        return 0;
    const UINT formerArrows = state->disabledArrows;
    bool changed = applyScrollInfo(*state, info);
    const int position = state->position;
    bool laidOut = false;
    if ((info.fMask & (SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL)) != 0) {
        laidOut = followRange(window, bar, *state, info.fMask);
        if (!laidOut)
            changed = changed || state->disabledArrows != formerArrows;
    }
    if (redraw && changed && !laidOut)
        repaintScrollBar(window, bar);
    return position;
}

bool enableFrameArrows(HWND window, int bar, UINT arrows) {
    ScrollState* state = writeFrame(window, bar);
    if (state == nullptr || state->disabledArrows == arrows)
        return false;
    state->disabledArrows = arrows;
    repaintScrollBar(window, bar);
    return true;
}

LRESULT sendInfo(HWND window, UINT message, BOOL redraw, const SCROLLINFO* info) {
    return SendMessageA(window, message, static_cast<WPARAM>(redraw), reinterpret_cast<LPARAM>(info));
}

DWORD partStates(const ScrollState& state, ScrollPart part, bool gone) {
    const bool up = part == ScrollPart::lineUp || part == ScrollPart::pageUp;
    const UINT own = up ? ESB_DISABLE_LTUP : ESB_DISABLE_RTDN;
    const bool arrow = part == ScrollPart::lineUp || part == ScrollPart::lineDown;
    DWORD bits = 0;
    if (state.disabledArrows == ESB_DISABLE_BOTH || (arrow && (state.disabledArrows & own) != 0))
        bits |= STATE_SYSTEM_UNAVAILABLE;
    if (state.pressedPart == static_cast<int>(part))
        bits |= STATE_SYSTEM_PRESSED;
    return gone ? bits | STATE_SYSTEM_INVISIBLE : bits;
}

void fillBarInfo(const ScrollState& state, const ScrollPlace& place, bool shown, SCROLLBARINFO& info) {
    info.rcScrollBar = place.rect;
    info.dxyLineButton = place.layout.arrow;
    info.xyThumbTop = place.layout.thumbBegin;
    info.xyThumbBottom = place.layout.thumbEnd;
    info.reserved = 0;
    const bool disabled = state.disabledArrows == ESB_DISABLE_BOTH || !canScroll(state);
    info.rgstate[0] = (disabled ? STATE_SYSTEM_UNAVAILABLE : 0U) | (shown ? 0U : STATE_SYSTEM_INVISIBLE);
    const ScrollLayout& layout = place.layout;
    const bool noUp = !layout.hasThumb || layout.thumbBegin == layout.shaftBegin();
    const bool noDown = !layout.hasThumb || layout.thumbEnd == layout.shaftEnd();
    info.rgstate[1] = partStates(state, ScrollPart::lineUp, false);
    info.rgstate[2] = partStates(state, ScrollPart::pageUp, noUp);
    info.rgstate[3] = partStates(state, ScrollPart::thumb, !layout.hasThumb);
    info.rgstate[4] = partStates(state, ScrollPart::pageDown, noDown);
    info.rgstate[5] = partStates(state, ScrollPart::lineDown, false);
}

} // namespace
} // namespace vndk::win32

using namespace vndk::win32;

int SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw) {
    if (info == nullptr || !isValid(*info)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    if (bar == SB_CTL)
        return static_cast<int>(sendInfo(window, SBM_SETSCROLLINFO, redraw, info));
    return setFrameInfo(window, bar, *info, redraw != FALSE);
}

BOOL GetScrollInfo(HWND window, int bar, SCROLLINFO* info) {
    if (info == nullptr || !isValid(*info)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (bar == SB_CTL)
        return sendInfo(window, SBM_GETSCROLLINFO, 0, info) != 0 ? TRUE : FALSE;
    const ScrollState* state = readFrame(window, bar);
    return state != nullptr && readScrollInfo(*state, *info) ? TRUE : FALSE;
}

int SetScrollPos(HWND window, int bar, int position, BOOL redraw) {
    if (bar == SB_CTL)
        return static_cast<int>(SendMessageA(window, SBM_SETPOS, static_cast<WPARAM>(position), redraw));
    const ScrollState* state = writeFrame(window, bar);
    if (state == nullptr)
        return 0;
    const int former = state->position;
    SCROLLINFO info{};
    info.fMask = SIF_POS;
    info.nPos = position;
    setFrameInfo(window, bar, info, redraw != FALSE);
    return former;
}

int GetScrollPos(HWND window, int bar) {
    if (bar == SB_CTL)
        return static_cast<int>(SendMessageA(window, SBM_GETPOS, 0, 0));
    const ScrollState* state = readFrame(window, bar);
    return state != nullptr ? state->position : 0;
}

BOOL SetScrollRange(HWND window, int bar, int minimum, int maximum, BOOL redraw) {
    const std::int64_t span = std::int64_t{maximum} - minimum;
    if (span > 0x7FFFFFFF) {
        SetLastError(ERROR_INVALID_SCROLLBAR_RANGE);
        return FALSE;
    }
    if (bar == SB_CTL) {
        SendMessageA(window, redraw != FALSE ? SBM_SETRANGEREDRAW : SBM_SETRANGE, static_cast<WPARAM>(minimum),
                     static_cast<LPARAM>(maximum));
        return IsWindow(window);
    }
    if (frameWindow(window, bar) == nullptr)
        return FALSE;
    SCROLLINFO info{};
    info.fMask = SIF_RANGE;
    info.nMin = minimum;
    info.nMax = maximum;
    setFrameInfo(window, bar, info, redraw != FALSE);
    return TRUE;
}

BOOL GetScrollRange(HWND window, int bar, int* minimum, int* maximum) {
    int unused = 0;
    int& low = minimum != nullptr ? *minimum : unused;
    int& high = maximum != nullptr ? *maximum : unused;
    low = high = 0;
    if (bar == SB_CTL) {
        SendMessageA(window, SBM_GETRANGE, reinterpret_cast<WPARAM>(&low), reinterpret_cast<LPARAM>(&high));
        return IsWindow(window);
    }
    if (frameWindow(window, bar) == nullptr)
        return FALSE;
    if (const ScrollState* state = readFrame(window, bar); state != nullptr) {
        low = state->minimum;
        high = state->maximum;
    }
    return TRUE;
}

BOOL ShowScrollBar(HWND window, int bar, BOOL show) {
    if (IsWindow(window) == FALSE) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    switch (bar) {
    case SB_CTL:
        ShowWindow(window, show != FALSE ? SW_SHOW : SW_HIDE);
        return TRUE;
    case SB_HORZ:
    case SB_VERT:
        showFrameBars(window, styleBit(bar), show != FALSE);
        return TRUE;
    case SB_BOTH:
        showFrameBars(window, WS_HSCROLL | WS_VSCROLL, show != FALSE);
        return TRUE;
    default:
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
}

BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows) {
    arrows &= ESB_DISABLE_BOTH;
    if (bar == static_cast<UINT>(SB_CTL))
        return SendMessageA(window, SBM_ENABLE_ARROWS, arrows, 0) != 0 ? TRUE : FALSE;
    bool changed = false;
    if (bar == static_cast<UINT>(SB_HORZ) || bar == static_cast<UINT>(SB_BOTH))
        changed = enableFrameArrows(window, SB_HORZ, arrows);
    if (bar == static_cast<UINT>(SB_VERT) || bar == static_cast<UINT>(SB_BOTH))
        changed = enableFrameArrows(window, SB_VERT, arrows) || changed;
    return changed ? TRUE : FALSE;
}

BOOL GetScrollBarInfo(HWND window, LONG object, SCROLLBARINFO* info) {
    const int bar = object == OBJID_HSCROLL ? SB_HORZ : object == OBJID_VSCROLL ? SB_VERT : SB_CTL;
    if (info == nullptr || info->cbSize != sizeof(SCROLLBARINFO) || (bar == SB_CTL && object != OBJID_CLIENT)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    if (bar != SB_CTL && readFrame(window, bar) == nullptr)
        return FALSE;
    const ScrollState* state = scrollStateOf(window, bar);
    if (state == nullptr)
        return FALSE;
    ScrollPlace place;
    const bool shown = locateScrollBar(window, bar, place) && IsWindowVisible(window) != FALSE;
    fillBarInfo(*state, place, shown, *info);
    return TRUE;
}
