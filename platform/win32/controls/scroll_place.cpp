#include "controls/scroll_place.h"

#include "controls/scroll_bar.h"
#include "controls/scroll_bars.h"
#include "controls/scroll_tracker.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/metrics.h"
#include "win32/paint.h"

namespace vndk::win32 {
namespace {

bool isEmpty(const RECT& rect) { return rect.right <= rect.left || rect.bottom <= rect.top; }

void shift(RECT& rect, int dx, int dy) {
    rect.left += dx;
    rect.right += dx;
    rect.top += dy;
    rect.bottom += dy;
}

bool leftBar(const Window& window) { return (window.exStyle & WS_EX_LEFTSCROLLBAR) != 0; }

/// Where a frame's bar would be; the window manager left no room there when its breadth doesn't fit into the window.
RECT besideClient(const Window& window, int bar) {
    const RECT& client = window.clientRect;
    if (bar == SB_HORZ)
        return {client.left, client.bottom, client.right, client.bottom + GetSystemMetrics(SM_CYHSCROLL)};
    const int breadth = GetSystemMetrics(SM_CXVSCROLL);
    const int left = leftBar(window) ? client.left - breadth : client.right;
    return {left, client.top, left + breadth, client.bottom};
}

bool inside(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

bool isSizable(const Window& window) {
    return (window.style & WS_THICKFRAME) != 0 && window.showState == ShowState::normal;
}

} // namespace

RECT frameScrollBarRect(const Window& window, int bar) {
    if ((window.style & (bar == SB_HORZ ? WS_HSCROLL : WS_VSCROLL)) == 0)
        return {};
    const RECT rect = besideClient(window, bar);
    return inside(rect, window.windowRect) && !isEmpty(rect) ? rect : RECT{};
}

RECT frameSizeBoxRect(const Window& window) {
    const RECT horizontal = frameScrollBarRect(window, SB_HORZ);
    const RECT vertical = frameScrollBarRect(window, SB_VERT);
    if (isEmpty(horizontal) || isEmpty(vertical))
        return {};
    return {vertical.left, horizontal.top, vertical.right, horizontal.bottom};
}

bool frameSizeBoxSizes(const Window& window) {
    if (isSizable(window))
        return true;
    if (!isChild(window) || window.parent == nullptr || !isSizable(*window.parent))
        return false;
    const RECT box = frameSizeBoxRect(window);
    const RECT& outer = window.parent->clientRect;
    return box.bottom == outer.bottom && (leftBar(window) ? box.left == outer.left : box.right == outer.right);
}

ScrollState* scrollStateOf(HWND window, int bar) {
    if (bar == SB_CTL) {
        const auto control = controlOf<ScrollBar>(window);
        return control != nullptr ? &control->state() : nullptr;
    }
    Window* found = findWindow(window);
    if (found == nullptr)
        return nullptr;
    return bar == SB_HORZ ? &found->horizontal : &found->vertical;
}

int ScrollPlace::breadth() const { return vertical ? rect.right - rect.left : rect.bottom - rect.top; }

int ScrollPlace::offsetOf(POINT point) const { return vertical ? point.y - rect.top : point.x - rect.left; }

ScrollPart ScrollPlace::partAtPoint(POINT point) const {
    const bool over = point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
    return over ? partAt(layout, offsetOf(point)) : ScrollPart::none;
}

bool locateScrollBar(HWND window, int bar, ScrollPlace& place) {
    const Window* found = findWindow(window);
    const ScrollState* state = scrollStateOf(window, bar);
    if (found == nullptr || state == nullptr)
        return false;
    const bool control = bar == SB_CTL;
    place.vertical = control ? (found->style & SBS_VERT) != 0 : bar == SB_VERT;
    place.rect = control ? found->clientRect : frameScrollBarRect(*found, bar);
    const int length = place.vertical ? place.rect.bottom - place.rect.top : place.rect.right - place.rect.left;
    const int arrow = GetSystemMetrics(place.vertical ? SM_CYVSCROLL : SM_CXHSCROLL);
    place.layout = layoutScrollBar(*state, length, arrow, !control || (found->style & WS_DISABLED) == 0);
    return !isEmpty(place.rect);
}

void repaintScrollBar(HWND window, int bar) {
    if (IsWindowVisible(window) == FALSE)
        return;
    if (bar == SB_CTL) {
        if (const auto control = controlOf<ScrollBar>(window); control != nullptr)
            control->paintNow();
        return;
    }
    const HDC dc = GetWindowDC(window);
    drawFrameScrollBar(window, dc, bar);
    ReleaseDC(window, dc);
}

void drawFrameScrollBar(HWND window, HDC dc, int bar) {
    // What DefWindowProc answers is asked from it directly: the window itself is not asked for its frame's colours.
    const auto brush = reinterpret_cast<HBRUSH>(
        DefWindowProcA(window, WM_CTLCOLORSCROLLBAR, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window)));
    const Window* found = findWindow(window);
    if (found == nullptr)
        return;
    RECT rect = frameScrollBarRect(*found, bar);
    if (isEmpty(rect))
        return;
    shift(rect, -found->windowRect.left, -found->windowRect.top);
    paintScrollBar(dc, rect, bar == SB_VERT, bar == SB_HORZ ? found->horizontal : found->vertical, true,
                   brush != nullptr ? brush : scrollBarGround(dc));
}

void drawFrameSizeBox(HWND window, HDC dc) {
    const Window* found = findWindow(window);
    if (found == nullptr)
        return;
    RECT rect = frameSizeBoxRect(*found);
    if (isEmpty(rect))
        return;
    shift(rect, -found->windowRect.left, -found->windowRect.top);
    FillRect(dc, &rect, GetSysColorBrush(COLOR_BTNFACE));
    if (frameSizeBoxSizes(*found))
        DrawFrameControl(dc, &rect, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
}

void trackFrameScrollBar(HWND window, LRESULT hitTest, POINT point) {
    if (hitTest == HTHSCROLL || hitTest == HTVSCROLL)
        trackScrollBar(window, hitTest == HTHSCROLL ? SB_HORZ : SB_VERT, point);
}

} // namespace vndk::win32
