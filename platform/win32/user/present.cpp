// What the screen is given to show: the pixels that differ from those it shows already.
#include "user/desktop_state.h"
#include "user/painting.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vndk::win32 {

namespace {

/// Columns of a row that differ from what is shown: from `first` up to `end`.
struct Span {
    int first = 0;
    int end = 0;
};

// Compares one row between two columns and takes the new pixels over.
Span takeChanges(const std::uint32_t* now, std::uint32_t* shown, int left, int right) {
    const auto bytes = static_cast<std::size_t>(right - left) * sizeof(std::uint32_t);
    if (std::memcmp(now + left, shown + left, bytes) == 0)
        return {};
    while (now[left] == shown[left])
        ++left;
    while (now[right - 1] == shown[right - 1])
        --right;
    std::copy(now + left, now + right, shown + left);
    return {left, right};
}

// Rows that follow each other make one rectangle.
void collectChanges(const PixelTarget& target, std::vector<std::uint32_t>& shown, const RECT& area,
                    std::vector<screen::Rect>& changes) {
    screen::Rect change;
    for (int y = area.top; y < area.bottom; ++y) {
        const std::ptrdiff_t row = static_cast<std::ptrdiff_t>(y) * target.stride;
        const Span span = takeChanges(target.pixels + row, shown.data() + row, area.left, area.right);
        if (span.first == span.end) {
            if (change.height > 0)
                changes.push_back(std::exchange(change, {}));
            continue;
        }
        if (change.height == 0) {
            change = {span.first, y, span.end - span.first, 1};
            continue;
        }
        const int right = std::max(change.x + change.width, span.end);
        change.x = std::min(change.x, span.first);
        change.width = right - change.x;
        ++change.height;
    }
    if (change.height > 0)
        changes.push_back(change);
}

Region touchedRegion(PaintingState& painting, const RECT& bounds) {
    Region touched = std::exchange(painting.touched, {});
    if (hasScreenContexts())
        return Region(bounds);
    for (const HandedContext& context : painting.contexts)
        if (context.inUse)
            touched |= context.aimed;
    touched &= Region(bounds);
    return touched;
}

void presentAll(PaintingState& painting, const PixelTarget& target) {
    painting.showAll = false;
    painting.touched.clear();
    const auto count = static_cast<std::size_t>(target.stride) * static_cast<std::size_t>(target.height);
    painting.shown.assign(target.pixels, target.pixels + count);
    const screen::Rect all{0, 0, target.width, target.height};
    painting.state.screen.present({&all, 1});
}

} // namespace

void presentPainted() {
    DesktopState* state = currentState();
    if (state == nullptr || state->painting == nullptr)
        return;
    PaintingState& painting = *state->painting;
    const PixelTarget target = screenTarget(*state);
    const auto count = static_cast<std::size_t>(target.stride) * static_cast<std::size_t>(target.height);
    if (painting.showAll || painting.shown.size() != count) {
        presentAll(painting, target);
        return;
    }
    std::vector<screen::Rect> changes;
    const Region touched = touchedRegion(painting, {0, 0, target.width, target.height});
    for (const RECT& area : touched.rects())
        collectChanges(target, painting.shown, area, changes);
    if (!changes.empty())
        state->screen.present(changes);
}

} // namespace vndk::win32
