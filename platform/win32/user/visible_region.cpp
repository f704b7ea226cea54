#include "user/desktop_state.h"
#include "user/painting.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

bool isTransparent(const Window& window) { return (window.exStyle & WS_EX_TRANSPARENT) != 0; }

bool overlaps(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

void cutOut(Region& region, const Window& window) {
    if ((window.style & WS_VISIBLE) == 0 || isTransparent(window) || region.empty() ||
        !overlaps(region.bounds(), window.windowRect))
        return;
    region -= outlineOf(window);
}

void cutOutSiblingsAbove(Region& region, const Window& window) {
    for (const Window* sibling : window.parent->children) {
        if (sibling == &window)
            return;
        cutOut(region, *sibling);
    }
}

// Top-level windows keep out of each other's way, whatever their style says.
bool clipsSiblings(const Window& window) {
    return (window.style & WS_CLIPSIBLINGS) != 0 || (window.parent != nullptr && window.parent->parent == nullptr);
}

void keepWithinShape(Region& region, const Window& window) {
    if (window.shape == nullptr)
        return;
    Region shape = *window.shape;
    shape.offset(window.windowRect.left, window.windowRect.top);
    region &= shape;
}

} // namespace

Region outlineOf(const Window& window) {
    Region outline(window.windowRect);
    keepWithinShape(outline, window);
    return outline;
}

DWORD contextFlagsOf(const Window& window) {
    DWORD flags = 0;
    if ((window.style & WS_CLIPSIBLINGS) != 0)
        flags |= DCX_CLIPSIBLINGS;
    if ((window.style & WS_CLIPCHILDREN) != 0)
        flags |= DCX_CLIPCHILDREN;
    if ((window.windowClass->style & CS_PARENTDC) != 0 && isChild(window))
        flags |= DCX_PARENTCLIP;
    return flags;
}

Region visibleRegion(const Window& window, DWORD flags) {
    if (!isVisible(window))
        return {};
    const bool asParent = (flags & DCX_PARENTCLIP) != 0 && (flags & DCX_WINDOW) == 0 && window.parent != nullptr;
    const Window& base = asParent ? *window.parent : window;
    Region region((flags & DCX_WINDOW) != 0 ? base.windowRect : base.clientRect);
    keepWithinShape(region, base);
    if ((flags & DCX_CLIPCHILDREN) != 0 && (flags & DCX_WINDOW) == 0 && !asParent)
        for (const Window* child : base.children)
            cutOut(region, *child);
    const bool baseClips = asParent ? clipsSiblings(base) : (flags & DCX_CLIPSIBLINGS) != 0 || clipsSiblings(base);
    if (base.parent != nullptr && baseClips)
        cutOutSiblingsAbove(region, base);
    for (const Window* outer = base.parent; outer != nullptr && !region.empty(); outer = outer->parent) {
        if (outer->showState == ShowState::minimized && outer->parent != nullptr)
            return {};
        region &= Region(outer->clientRect);
        keepWithinShape(region, *outer);
        if (outer->parent != nullptr && clipsSiblings(*outer))
            cutOutSiblingsAbove(region, *outer);
    }
    return region;
}

} // namespace vndk::win32
