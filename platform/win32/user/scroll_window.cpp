// Scrolling of pixels, with the update region and children that lie on them.
#include "user/desktop_state.h"
#include "user/input_state.h"
#include "user/update_region.h"
#include "user/window_contexts.h"
#include "user/window_position.h"
#include "win32/error.h"
#include "win32/gdi.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

/// All in screen coordinates.
struct Scroll {
    Region area;    // what is scrolled
    Region clip;    // what may change
    Region visible; // where the pixels are right
    int dx = 0;
    int dy = 0;
};

RECT onScreen(const Window& window, const RECT* rect) {
    const RECT& client = window.clientRect;
    if (rect == nullptr)
        return client;
    const RECT safe = saturated(*rect);
    return {client.left + safe.left, client.top + safe.top, client.left + safe.right, client.top + safe.bottom};
}

/// Moves what can be moved and answers what has to be painted anew.
Region movePixelsOf(const Scroll& scroll) {
    Region moved = scroll.area & scroll.visible;
    Region arrived = shifted(moved, scroll.dx, scroll.dy);
    arrived &= scroll.clip;
    arrived &= scroll.visible;
    movePixels(shifted(arrived, -scroll.dx, -scroll.dy), scroll.dx, scroll.dy);
    Region touched = scroll.area | shifted(scroll.area, scroll.dx, scroll.dy);
    touched &= scroll.clip;
    touched &= scroll.visible;
    touched -= arrived;
    return touched;
}

/// Pixels that were out of date are so still, where they lie now. What they left is among the uncovered.
void scrollUpdateRegion(Window& window, const Scroll& scroll) {
    if (window.update.empty())
        return;
    const int left = window.clientRect.left;
    const int top = window.clientRect.top;
    Region invalid = window.update;
    invalid.offset(left, top);
    Region moved = shifted(invalid & scroll.area, scroll.dx, scroll.dy) & scroll.clip;
    invalid -= (scroll.area | shifted(scroll.area, scroll.dx, scroll.dy)) & scroll.clip;
    invalid |= moved;
    invalid &= Region(window.clientRect);
    invalid.offset(-left, -top);
    window.update = std::move(invalid);
}

void shiftRect(RECT& rect, int dx, int dy) {
    rect = {rect.left + dx, rect.top + dy, rect.right + dx, rect.bottom + dy};
}

void shiftWindow(Window& window, int dx, int dy) {
    shiftRect(window.windowRect, dx, dy);
    shiftRect(window.clientRect, dx, dy);
    shiftRect(window.normalRect, dx, dy);
    shiftChildren(window, dx, dy);
}

std::vector<HWND> scrollChildren(Window& window, const Region& area, int dx, int dy) {
    std::vector<HWND> shiftedOnes;
    for (Window* child : window.children)
        if (area.intersects(child->windowRect)) {
            shiftWindow(*child, dx, dy);
            shiftedOnes.push_back(child->handle);
        }
    return shiftedOnes;
}

void tellMoved(const std::vector<HWND>& moved) {
    for (const HWND handle : moved)
        if (const Window* window = findWindow(handle); window != nullptr && window->parent != nullptr) {
            POINT place{window->clientRect.left, window->clientRect.top};
            place.x -= window->parent->clientRect.left;
            place.y -= window->parent->clientRect.top;
            send(handle, WM_MOVE, 0, MAKELPARAM(place.x, place.y));
        }
}

void moveCaret(const Window& window, const Scroll& scroll) {
    POINT place{};
    if (currentState()->input->caret.window != window.handle || GetCaretPos(&place) == FALSE)
        return;
    if (scroll.area.contains({window.clientRect.left + place.x, window.clientRect.top + place.y}))
        SetCaretPos(place.x + scroll.dx, place.y + scroll.dy);
}

int report(const Region& uncovered, HRGN region, RECT* rect) {
    if (Region* target = regionOf(region))
        *target = uncovered;
    if (rect != nullptr)
        *rect = uncovered.bounds();
    return uncovered.complexity();
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

int ScrollWindowEx(HWND handle, int dx, int dy, const RECT* scrolled, const RECT* clip, HRGN update, RECT* updateRect,
                   UINT flags) {
    Window* window = findWindow(handle);
    if (window == nullptr)
        return 0;
    const RECT limits = saturated({dx, dy, 0, 0});
    const bool withChildren = (flags & SW_SCROLLCHILDREN) != 0;
    Scroll scroll;
    scroll.dx = limits.left;
    scroll.dy = limits.top;
    scroll.area = Region(onScreen(*window, scrolled)) & Region(window->clientRect);
    scroll.clip = Region(onScreen(*window, clip)) & Region(window->clientRect);
    scroll.visible =
        visibleRegion(*window, contextFlagsOf(*window) & (withChildren ? ~DCX_CLIPCHILDREN : ~0U) & ~DCX_PARENTCLIP);
    if (dx == 0 && dy == 0)
        return report({}, update, updateRect);
    const CaretPause pause(window);
    Region uncovered = movePixelsOf(scroll);
    scrollUpdateRegion(*window, scroll);
    std::vector<HWND> moved;
    if (withChildren) {
        moved = scrollChildren(*window, scroll.area, scroll.dx, scroll.dy);
        refreshContexts();
    }
    moveCaret(*window, scroll);
    uncovered.offset(-window->clientRect.left, -window->clientRect.top);
    const int result = report(uncovered, update, updateRect);
    if ((flags & SW_INVALIDATE) != 0 && !uncovered.empty())
        redraw(handle, &uncovered,
               RDW_INVALIDATE | ((flags & SW_ERASE) != 0 ? RDW_ERASE : 0) | (withChildren ? RDW_ALLCHILDREN : 0));
    tellMoved(moved);
    return result;
}

BOOL ScrollWindow(HWND window, int dx, int dy, const RECT* scrolled, const RECT* clip) {
    const UINT children = scrolled == nullptr ? SW_SCROLLCHILDREN : 0;
    return ScrollWindowEx(window, dx, dy, scrolled, clip, nullptr, nullptr, SW_INVALIDATE | SW_ERASE | children) != 0
               ? TRUE
               : FALSE;
}

BOOL ScrollDC(HDC dc, int dx, int dy, const RECT* scrolled, const RECT* clip, HRGN update, RECT* updateRect) {
    const HandedContext* context = handedContext(dc);
    const Window* window = context != nullptr ? findWindow(context->window) : nullptr;
    POINT origin{};
    if (window == nullptr || GetDCOrgEx(dc, &origin) == FALSE) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    RECT box{};
    GetClipBox(dc, &box);
    const auto place = [&](const RECT* rect) {
        RECT placed = saturated(rect != nullptr ? *rect : box);
        LPtoDP(dc, reinterpret_cast<POINT*>(&placed), 2);
        shiftRect(placed, origin.x, origin.y);
        return Region(placed);
    };
    Scroll scroll;
    scroll.dx = saturated({dx, dy, 0, 0}).left;
    scroll.dy = saturated({dx, dy, 0, 0}).top;
    scroll.area = place(scrolled);
    scroll.clip = place(clip) & place(nullptr);
    scroll.visible = visibleRegion(*window, context->flags);
    const CaretPause pause(window);
    Region uncovered = movePixelsOf(scroll);
    uncovered.offset(-origin.x, -origin.y);
    report(uncovered, update, updateRect);
    return TRUE;
}
