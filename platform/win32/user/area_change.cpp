// What happens to the pixels when a window changes its place, size, order or visibility.
#include "user/desktop_state.h"
#include "user/input_state.h"
#include "user/update_region.h"
#include "win32/gdi.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace vndk::win32 {

struct AreaChange::Before {
    explicit Before(const Window& window)
        : caret(nullptr), visible(visibleRegion(window, DCX_WINDOW)), windowRect(window.windowRect),
          clientRect(window.clientRect) {}

    CaretPause caret; // Its pixels must not be moved along or left behind.
    Region visible;
    RECT windowRect;
    RECT clientRect;
};

AreaChange::AreaChange(Window& window) : before_(std::make_unique<Before>(window)), window_(window.handle) {}

AreaChange::~AreaChange() = default;

namespace {

bool sameSize(const RECT& a, const RECT& b) {
    return a.right - a.left == b.right - b.left && a.bottom - a.top == b.bottom - b.top;
}

// What is out of date in the window must stay so, within its new size.
void cutUpdateRegions(Window& window) {
    const RECT& client = window.clientRect;
    window.update &= Region(RECT{0, 0, client.right - client.left, client.bottom - client.top});
    if (window.update.empty())
        window.eraseNeeded = false;
    if (window.frameUpdate.empty())
        return;
    Region frame = outlineOf(window);
    frame -= Region(client);
    frame.offset(-window.windowRect.left, -window.windowRect.top);
    window.frameUpdate &= frame;
}

} // namespace

// Pixels that are right where they will lie: in screen coordinates before the move.
void AreaChange::commit(bool keepPixels, bool redrawFrame, UINT flags) {
    Window* window = findWindow(window_);
    if (window == nullptr)
        return;
    const Before& before = *before_;
    cutUpdateRegions(*window);
    refreshContexts();
    if ((flags & SWP_NOREDRAW) != 0)
        return;
    const Region visible = visibleRegion(*window, DCX_WINDOW);
    Region kept; // after the move
    if (keepPixels && (window->exStyle & WS_EX_TRANSPARENT) == 0) {
        const int dx = window->clientRect.left - before.clientRect.left;
        const int dy = window->clientRect.top - before.clientRect.top;
        const bool withFrame = !redrawFrame && sameSize(before.windowRect, window->windowRect) &&
                               sameSize(before.clientRect, window->clientRect) &&
                               window->windowRect.left - before.windowRect.left == dx &&
                               window->windowRect.top - before.windowRect.top == dy;
        kept = before.visible;
        if (!withFrame)
            kept &= Region(before.clientRect);
        kept.offset(dx, dy);
        kept &= visible;
        if (!withFrame)
            kept &= Region(window->clientRect);
        if (dx != 0 || dy != 0) {
            movePixels(shifted(kept, -dx, -dy), dx, dy);
            // A parent that doesn't spare its children has no say any more in what they brought along.
            validateParents(*window, kept - invalidOnScreen(*window));
        }
    }
    const Region fresh = visible - kept;
    if (!fresh.empty())
        mark(*window, &fresh, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_ALLCHILDREN);
    const Region exposed = before.visible - visible;
    if (window->parent != nullptr && !exposed.empty())
        exposeScreen(*window->parent, exposed);
}

void movePixels(const Region& source, int dx, int dy) {
    DesktopState* state = currentState();
    if (state == nullptr || (dx == 0 && dy == 0))
        return;
    const PixelTarget target = screenTarget(*state);
    Region movable = source;
    const RECT bounds{0, 0, target.width, target.height};
    movable &= Region(bounds);
    movable = shifted(movable, dx, dy);
    movable &= Region(bounds);
    // Rectangles that others will be moved onto go first.
    std::vector<RECT> rects(movable.rects().begin(), movable.rects().end());
    std::sort(rects.begin(), rects.end(), [dx, dy](const RECT& a, const RECT& b) {
        if (a.top != b.top)
            return dy > 0 ? a.top > b.top : a.top < b.top;
        return dx > 0 ? a.left > b.left : a.left < b.left;
    });
    for (const RECT& rect : rects) {
        const auto bytes = static_cast<std::size_t>(rect.right - rect.left) * sizeof(std::uint32_t);
        const int height = rect.bottom - rect.top;
        for (int i = 0; i < height; ++i) {
            const int y = dy > 0 ? rect.bottom - 1 - i : rect.top + i;
            std::uint32_t* to = target.pixels + static_cast<std::ptrdiff_t>(y) * target.stride + rect.left;
            const std::uint32_t* from =
                target.pixels + static_cast<std::ptrdiff_t>(y - dy) * target.stride + rect.left - dx;
            std::memmove(to, from, bytes);
        }
    }
    state->painting->touched |= movable;
}

} // namespace vndk::win32

using namespace vndk::win32;

int SetWindowRgn(HWND handle, HRGN handleOfShape, BOOL redrawNow) {
    Window* window = findWindow(handle);
    const Region* shape = handleOfShape != nullptr ? regionOf(handleOfShape) : nullptr;
    if (window == nullptr || window->parent == nullptr || (handleOfShape != nullptr && shape == nullptr))
        return 0;
    AreaChange change(*window);
    window->shape = shape != nullptr ? std::make_unique<Region>(*shape) : nullptr;
    change.commit(true, false, redrawNow != FALSE ? 0 : SWP_NOREDRAW);
    DeleteObject(handleOfShape);
    return 1;
}

int GetWindowRgn(HWND handle, HRGN handleOfCopy) {
    const Window* window = findWindow(handle);
    Region* copy = regionOf(handleOfCopy);
    if (window == nullptr || window->shape == nullptr || copy == nullptr)
        return 0;
    *copy = *window->shape;
    return copy->complexity();
}
