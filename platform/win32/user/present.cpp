#include "user/desktop_state.h"
#include "user/painting.h"

#include <utility>

namespace vndk::win32 {

void presentPainted() {
    DesktopState* state = currentState();
    if (state == nullptr || state->painting == nullptr)
        return;
    Region painted;
    collectPainted(painted);
    painted |= std::exchange(state->painting->changed, {});
    const screen::Surface surface = state->screen.surface();
    painted &= Region(RECT{0, 0, surface.width, surface.height});
    if (painted.empty())
        return;
    std::vector<screen::Rect> rects;
    for (const RECT& rect : painted.rects())
        rects.push_back({rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top});
    state->screen.present(rects);
}

} // namespace vndk::win32
