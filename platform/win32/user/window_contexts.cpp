// Device contexts of windows: handed out with the part of the screen that may be painted now, and kept in step when
// windows change.
#include "user/window_contexts.h"
#include "user/desktop_state.h"
#include "user/input_state.h"
#include "user/painting.h"
#include "win32/error.h"
#include "win32/gdi.h"

#include <algorithm>
#include <utility>

namespace vndk::win32 {

std::shared_ptr<PaintingState> makePaintingState(DesktopState& state) { return std::make_shared<PaintingState>(state); }

PaintingState::PaintingState(DesktopState& desktop) : state(desktop) { setScreenTarget(screenTarget(state)); }

PaintingState::~PaintingState() {
    for (const HandedContext& context : contexts)
        deleteWindowDC(context.dc);
    setScreenTarget(state.former != nullptr ? screenTarget(*state.former) : PixelTarget{});
}

PixelTarget screenTarget(const DesktopState& state) {
    const screen::Surface surface = state.screen.surface();
    return {surface.pixels, surface.width, surface.height, surface.width};
}

namespace {

constexpr DWORD ownedRegionFlags = DCX_INTERSECTRGN | DCX_EXCLUDERGN;

POINT originOf(const Window& window, DWORD flags) {
    return (flags & DCX_WINDOW) != 0 ? POINT{window.windowRect.left, window.windowRect.top}
                                     : POINT{window.clientRect.left, window.clientRect.top};
}

bool isLocked(const PaintingState& painting, const Window& window) {
    if (painting.locked == nullptr)
        return false;
    for (const Window* outer = &window; outer != nullptr; outer = outer->parent)
        if (outer->handle == painting.locked)
            return true;
    return false;
}

Region paintable(PaintingState& painting, const Window& window, const HandedContext& context) {
    if ((context.flags & DCX_LOCKWINDOWUPDATE) == 0 && isLocked(painting, window)) {
        painting.lockedPainted = true;
        return {};
    }
    Region region = visibleRegion(window, context.flags);
    if (!context.clip)
        return region;
    Region clip = *context.clip;
    clip.offset(window.windowRect.left, window.windowRect.top);
    if (context.excludeClip)
        region -= clip;
    else
        region &= clip;
    return region;
}

HandedContext* findContext(PaintingState& painting, HDC dc) {
    const auto found = std::find_if(painting.contexts.begin(), painting.contexts.end(),
                                    [dc](const HandedContext& context) { return context.dc == dc; });
    return found != painting.contexts.end() ? &*found : nullptr;
}

// Whoever has the context may have painted with it already.
void noteTouched(PaintingState& painting, HandedContext& context) {
    if (context.inUse)
        painting.touched |= context.aimed;
}

void aim(PaintingState& painting, const Window& window, HandedContext& context) {
    noteTouched(painting, context);
    context.aimed = paintable(painting, window, context);
    moveWindowDC(context.dc, screenTarget(painting.state), originOf(window, context.flags), context.aimed);
}

// The context that a window or its class keeps; null when it has none.
HandedContext* keptContext(PaintingState& painting, Window& window) {
    const UINT style = window.windowClass->style;
    if ((style & (CS_OWNDC | CS_CLASSDC)) == 0)
        return nullptr;
    const bool own = (style & CS_OWNDC) != 0;
    HDC& kept = own ? window.ownDC : window.windowClass->classDC;
    if (HandedContext* found = findContext(painting, kept)) {
        found->window = window.handle;
        return found;
    }
    HandedContext made;
    made.kind = own ? HandedContext::Kind::ownedByWindow : HandedContext::Kind::ownedByClass;
    made.window = window.handle;
    made.dc = kept = createWindowDC(screenTarget(painting.state), {0, 0}, {}, window.handle);
    if (kept == nullptr)
        return nullptr;
    painting.contexts.push_back(std::move(made));
    return &painting.contexts.back();
}

DWORD resolveFlags(const Window& window, DWORD flags) {
    if ((flags & DCX_USESTYLE) != 0) {
        flags &= ~(DCX_CLIPCHILDREN | DCX_CLIPSIBLINGS | DCX_PARENTCLIP);
        flags |= contextFlagsOf(window);
    }
    if ((flags & DCX_WINDOW) != 0)
        flags &= ~(DCX_CLIPCHILDREN | DCX_PARENTCLIP);
    return flags;
}

void dropPassedRegion(PaintingState& painting, HandedContext& context) {
    const std::vector<HRGN>& passes = painting.framePasses;
    if (context.passedRegion != nullptr &&
        std::find(passes.begin(), passes.end(), context.passedRegion) == passes.end())
        DeleteObject(context.passedRegion);
    context.passedRegion = nullptr;
}

} // namespace

HDC handOut(Window& window, DWORD flags, std::optional<Region> clip, bool excludeClip) {
    PaintingState& painting = *currentState()->painting;
    HandedContext fresh;
    HandedContext* context = (flags & (DCX_CACHE | DCX_WINDOW)) == 0 ? keptContext(painting, window) : nullptr;
    const bool kept = context != nullptr;
    if (!kept)
        context = &fresh;
    context->window = window.handle;
    context->flags = flags;
    context->clip = std::move(clip);
    context->excludeClip = excludeClip;
    context->inUse = true;
    if (kept) {
        aim(painting, window, *context);
        return context->dc;
    }
    fresh.aimed = paintable(painting, window, fresh);
    fresh.dc = createWindowDC(screenTarget(painting.state), originOf(window, flags), fresh.aimed, window.handle);
    if (fresh.dc == nullptr)
        return nullptr;
    painting.contexts.push_back(std::move(fresh));
    return painting.contexts.back().dc;
}

bool takeBack(HDC dc) {
    DesktopState* state = currentState();
    HandedContext* context = state != nullptr ? findContext(*state->painting, dc) : nullptr;
    if (context == nullptr)
        return false;
    PaintingState& painting = *state->painting;
    dropPassedRegion(painting, *context);
    noteTouched(painting, *context);
    const bool resume = std::exchange(context->caretPaused, false);
    if (context->kind == HandedContext::Kind::cached) {
        deleteWindowDC(dc);
        painting.contexts.erase(painting.contexts.begin() + (context - painting.contexts.data()));
    } else {
        context->inUse = false;
        if (context->clip) {
            context->clip.reset();
            if (const Window* window = findWindow(context->window))
                aim(painting, *window, *context);
        }
    }
    if (resume)
        resumeCaret();
    return true;
}

HandedContext* handedContext(HDC dc) {
    DesktopState* state = currentState();
    return state != nullptr ? findContext(*state->painting, dc) : nullptr;
}

void refreshContexts() {
    DesktopState* state = currentState();
    if (state == nullptr || state->painting == nullptr)
        return;
    PaintingState& painting = *state->painting;
    for (HandedContext& context : painting.contexts)
        if (const Window* window = findWindow(context.window))
            aim(painting, *window, context);
}

void forgetPainting(Window& window) {
    DesktopState* state = currentState();
    if (state == nullptr || state->painting == nullptr)
        return;
    PaintingState& painting = *state->painting;
    if (painting.locked == window.handle)
        painting.locked = nullptr;
    for (std::size_t index = painting.contexts.size(); index-- > 0;) {
        HandedContext& context = painting.contexts[index];
        if (context.window != window.handle)
            continue;
        noteTouched(painting, context);
        // A class's context goes with the last window of the class.
        if (context.kind == HandedContext::Kind::ownedByClass && window.windowClass->windows > 1) {
            context.aimed.clear();
            moveWindowDC(context.dc, screenTarget(*state), {0, 0}, {});
            continue;
        }
        if (context.kind == HandedContext::Kind::ownedByClass)
            window.windowClass->classDC = nullptr;
        dropPassedRegion(painting, context);
        const bool resume = context.caretPaused;
        deleteWindowDC(context.dc);
        painting.contexts.erase(painting.contexts.begin() + static_cast<std::ptrdiff_t>(index));
        if (resume)
            resumeCaret();
    }
    window.ownDC = nullptr;
    if (window.parent != nullptr && isVisible(window)) {
        const Region shown = visibleRegion(window, DCX_WINDOW);
        window.style &= ~WS_VISIBLE;
        refreshContexts();
        exposeScreen(*window.parent, shown);
    }
    window.update.clear();
    window.frameUpdate.clear();
    window.internalPaint = false;
}

} // namespace vndk::win32

using namespace vndk::win32;

HDC GetDCEx(HWND handle, HRGN clip, DWORD flags) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return nullptr;
    Window* window = handle != nullptr ? findWindow(handle) : state->root;
    if (window == nullptr)
        return nullptr;
    std::optional<Region> bounds;
    HRGN passed = nullptr;
    if ((flags & ownedRegionFlags) != 0 && clip != nullptr) {
        if (const Region* region = regionOf(clip)) {
            bounds = *region;
            bounds->offset(-window->windowRect.left, -window->windowRect.top);
            passed = clip;
        }
    }
    const HDC dc = handOut(*window, resolveFlags(*window, flags), std::move(bounds), (flags & DCX_EXCLUDERGN) != 0);
    if (HandedContext* context = dc != nullptr ? findContext(*state->painting, dc) : nullptr)
        context->passedRegion = passed;
    return dc;
}

HDC GetDC(HWND window) {
    return window != nullptr ? GetDCEx(window, nullptr, DCX_USESTYLE) : GetDCEx(nullptr, nullptr, DCX_CACHE);
}

HDC GetWindowDC(HWND window) { return GetDCEx(window, nullptr, DCX_WINDOW | DCX_USESTYLE); }

int ReleaseDC(HWND, HDC dc) { return takeBack(dc) ? 1 : 0; }

BOOL LockWindowUpdate(HWND window) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return FALSE;
    PaintingState& painting = *state->painting;
    if (window != nullptr) {
        if (painting.locked != nullptr || findWindow(window) == nullptr)
            return FALSE;
        painting.locked = window;
        painting.lockedPainted = false;
        refreshContexts();
        return TRUE;
    }
    const HWND locked = std::exchange(painting.locked, nullptr);
    refreshContexts();
    if (locked != nullptr && std::exchange(painting.lockedPainted, false))
        redraw(locked, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    return TRUE;
}
