// RedrawWindow and its relatives.
#include "user/desktop_state.h"
#include "user/update_region.h"
#include "user/window_contexts.h"
#include "win32/error.h"
#include "win32/gdi.h"

#include <optional>

namespace vndk::win32 {

namespace {

void collectToUpdate(const Window& window, UINT flags, bool (*due)(const Window&), std::vector<HWND>& found) {
    if ((window.style & WS_VISIBLE) == 0)
        return;
    if (due(window))
        found.push_back(window.handle);
    const bool children =
        (flags & RDW_NOCHILDREN) == 0 && ((flags & RDW_ALLCHILDREN) != 0 || (window.style & WS_CLIPCHILDREN) != 0);
    if (!children)
        return;
    for (const Window* child : window.children)
        collectToUpdate(*child, flags, due, found);
}

bool needsErase(const Window& window) {
    return !window.frameUpdate.empty() || (window.eraseNeeded && !window.update.empty());
}

// What is due at once: of children only when the window doesn't paint over them, or when they are asked for.
void updateNow(HWND handle, UINT flags) {
    const Window* window = findWindow(handle);
    if (window == nullptr || !isVisible(*window) || (flags & (RDW_UPDATENOW | RDW_ERASENOW)) == 0)
        return;
    const bool paint = (flags & RDW_UPDATENOW) != 0;
    bool (*const due)(const Window&) = paint ? &needsPaint : &needsErase;
    std::vector<HWND> waiting;
    collectToUpdate(*window, flags, due, waiting);
    const bool root = window->parent == nullptr;
    if (root)
        (void)nextToPaint(nullptr); // Paints the desktop's own ground.
    for (const HWND next : waiting) {
        const Window* still = findWindow(next);
        if (still == nullptr || still->parent == nullptr || !isVisible(*still) || !due(*still))
            continue;
        if (paint)
            sendPaint(next);
        else
            eraseNow(next);
    }
}

} // namespace

void redraw(HWND handle, const Region* region, UINT flags) {
    Window* window = findWindow(handle);
    if (window == nullptr)
        return;
    if (region != nullptr) {
        const Region onScreen = shifted(*region, window->clientRect.left, window->clientRect.top);
        mark(*window, &onScreen, flags);
    } else {
        mark(*window, nullptr, flags);
    }
    updateNow(handle, flags);
}

void exposeScreen(Window& under, const Region& region) {
    Region left = region;
    left &= Region(under.clientRect);
    constexpr UINT flags = RDW_INVALIDATE | RDW_ERASE | RDW_FRAME;
    for (Window* child : under.children) {
        if ((child->style & WS_VISIBLE) == 0 || left.empty())
            continue;
        Region part = left;
        part &= outlineOf(*child);
        if (part.empty())
            continue;
        mark(*child, &part, flags | RDW_ALLCHILDREN);
        if ((child->exStyle & WS_EX_TRANSPARENT) == 0)
            left -= part;
    }
    if (!left.empty())
        mark(under, &left, flags | RDW_NOCHILDREN);
}

namespace {

// Without a window: everything on the screen is invalid, and frames and grounds are painted at once.
BOOL redrawScreen() {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    redraw(state->root->handle, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ERASENOW | RDW_ALLCHILDREN);
    return TRUE;
}

// The region of a published call's arguments; false for a dead handle.
bool regionFrom(const RECT* rect, HRGN handle, std::optional<Region>& region) {
    if (handle != nullptr) {
        const Region* found = regionOf(handle);
        if (found == nullptr) {
            SetLastError(ERROR_INVALID_HANDLE);
            return false;
        }
        region = *found;
    } else if (rect != nullptr) {
        region = Region(saturated(*rect));
    }
    return true;
}

void flushErase(HWND window, BOOL erase) {
    if (erase != FALSE)
        redraw(window, nullptr, RDW_ERASENOW | RDW_NOCHILDREN);
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

BOOL RedrawWindow(HWND handle, const RECT* rect, HRGN region, UINT flags) {
    const DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    const HWND window = handle != nullptr ? handle : state->root->handle;
    std::optional<Region> area;
    if (findWindow(window) == nullptr || !regionFrom(rect, region, area))
        return FALSE;
    redraw(window, area ? &*area : nullptr, flags);
    return TRUE;
}

BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase) {
    if (window == nullptr)
        return redrawScreen();
    return RedrawWindow(window, rect, nullptr, RDW_INVALIDATE | (erase != FALSE ? RDW_ERASE : 0));
}

BOOL InvalidateRgn(HWND window, HRGN region, BOOL erase) {
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    return RedrawWindow(window, nullptr, region, RDW_INVALIDATE | (erase != FALSE ? RDW_ERASE : 0));
}

BOOL ValidateRect(HWND window, const RECT* rect) {
    return window == nullptr ? redrawScreen() : RedrawWindow(window, rect, nullptr, RDW_VALIDATE);
}

BOOL ValidateRgn(HWND window, HRGN region) {
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    return RedrawWindow(window, nullptr, region, RDW_VALIDATE);
}

BOOL UpdateWindow(HWND window) {
    if (window == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    return RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW);
}

BOOL GetUpdateRect(HWND handle, RECT* rect, BOOL erase) {
    if (findWindow(handle) == nullptr)
        return FALSE;
    flushErase(handle, erase);
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return FALSE;
    if (rect != nullptr)
        *rect = window->update.bounds();
    return !window->update.empty() || !window->frameUpdate.empty() ? TRUE : FALSE;
}

int GetUpdateRgn(HWND handle, HRGN region, BOOL erase) {
    if (findWindow(handle) == nullptr)
        return 0;
    flushErase(handle, erase);
    const Window* window = findWindow(handle);
    Region* target = regionOf(region);
    if (window == nullptr || target == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    *target = window->update;
    return target->complexity();
}

int ExcludeUpdateRgn(HDC dc, HWND handle) {
    const Window* window = findWindow(handle);
    const HRGN region = window != nullptr ? newRegionHandle(window->update) : nullptr;
    if (region == nullptr)
        return 0;
    const int result = ExtSelectClipRgn(dc, region, RGN_DIFF);
    DeleteObject(region);
    return result;
}
