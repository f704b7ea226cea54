#include "user/update_region.h"

#include "user/desktop_state.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

// Far beyond any window, and sums of two such numbers still fit.
constexpr LONG farthest = 1 << 28;

Region withinParents(const Window& window, Region region) {
    for (const Window* outer = window.parent; outer != nullptr && !region.empty(); outer = outer->parent)
        region &= Region(outer->clientRect);
    return region;
}

void invalidateOwn(Window& window, const Region& area, UINT flags) {
    Region client = area;
    client &= Region(window.clientRect);
    if ((flags & RDW_FRAME) != 0) {
        Region frame = area;
        frame &= outlineOf(window);
        frame -= Region(window.clientRect);
        frame.offset(-window.windowRect.left, -window.windowRect.top);
        window.frameUpdate |= frame;
    }
    if (client.empty())
        return;
    client.offset(-window.clientRect.left, -window.clientRect.top);
    window.update |= client;
    if ((flags & RDW_ERASE) != 0)
        window.eraseNeeded = true;
}

void validateOwn(Window& window, const Region& area, UINT flags) {
    Region client = area;
    client.offset(-window.clientRect.left, -window.clientRect.top);
    window.update -= client;
    if ((flags & RDW_NOFRAME) != 0) {
        Region frame = area;
        frame.offset(-window.windowRect.left, -window.windowRect.top);
        window.frameUpdate -= frame;
    }
    if ((flags & RDW_NOERASE) != 0 || window.update.empty())
        window.eraseNeeded = false;
}

void markOwn(Window& window, const Region& area, UINT flags) {
    if ((flags & RDW_INVALIDATE) != 0)
        invalidateOwn(window, area, flags);
    else if ((flags & RDW_VALIDATE) != 0)
        validateOwn(window, area, flags);
    if ((flags & RDW_INTERNALPAINT) != 0)
        window.internalPaint = true;
    else if ((flags & RDW_NOINTERNALPAINT) != 0)
        window.internalPaint = false;
}

bool reachesChildren(const Window& window, UINT flags) {
    if ((flags & RDW_NOCHILDREN) != 0 || window.showState == ShowState::minimized)
        return false;
    return (flags & RDW_ALLCHILDREN) != 0 || (window.style & WS_CLIPCHILDREN) == 0;
}

bool overlaps(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

void markTree(Window& window, Region area, UINT flags) {
    area &= outlineOf(window);
    markOwn(window, area, flags);
    if (!reachesChildren(window, flags))
        return;
    area &= Region(window.clientRect);
    // What a parent paints anew takes its children's frames and ground away.
    if ((flags & RDW_INVALIDATE) != 0)
        flags |= RDW_FRAME | RDW_ERASE;
    for (Window* child : window.children)
        if ((child->style & WS_VISIBLE) != 0 && !area.empty() && overlaps(child->windowRect, area.bounds()))
            markTree(*child, area, flags);
}

} // namespace

RECT saturated(const RECT& rect) {
    return {std::clamp(rect.left, -farthest, farthest), std::clamp(rect.top, -farthest, farthest),
            std::clamp(rect.right, -farthest, farthest), std::clamp(rect.bottom, -farthest, farthest)};
}

Region shifted(const Region& region, int dx, int dy) {
    Region result = region;
    result &= Region(RECT{-farthest, -farthest, farthest, farthest});
    result.offset(std::clamp(dx, -farthest, farthest), std::clamp(dy, -farthest, farthest));
    return result;
}

void mark(Window& window, const Region* screenRegion, UINT flags) {
    if (!isVisible(window))
        return;
    const bool frameToo = (flags & (RDW_FRAME | RDW_VALIDATE)) != 0;
    Region area;
    if (screenRegion != nullptr)
        area = *screenRegion;
    else
        area = frameToo ? outlineOf(window) : Region(window.clientRect);
    // Validating must reach what was clipped when it was invalidated, so only invalidation is cut.
    if ((flags & RDW_INVALIDATE) != 0)
        area = withinParents(window, std::move(area));
    markTree(window, std::move(area), flags);
}

Region invalidOnScreen(const Window& window) {
    Region invalid = window.update;
    invalid.offset(window.clientRect.left, window.clientRect.top);
    Region frame = window.frameUpdate;
    frame.offset(window.windowRect.left, window.windowRect.top);
    invalid |= frame;
    return invalid;
}

bool needsPaint(const Window& window) {
    if (window.internalPaint)
        return true;
    if (window.update.empty() && window.frameUpdate.empty())
        return false;
    // What is covered needs no paint now: it becomes invalid again when it comes to light.
    Region shows = visibleRegion(window, DCX_WINDOW);
    shows &= invalidOnScreen(window);
    return !shows.empty();
}

void validateParents(const Window& window, const Region& painted) {
    for (Window* outer = window.parent; outer != nullptr && outer->parent != nullptr; outer = outer->parent) {
        if ((outer->style & WS_CLIPCHILDREN) != 0)
            continue;
        Region area = painted;
        area.offset(-outer->clientRect.left, -outer->clientRect.top);
        outer->update -= area;
        if (outer->update.empty())
            outer->eraseNeeded = false;
    }
}

} // namespace vndk::win32
