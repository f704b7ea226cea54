// A scroll bar on the screen: where its values are kept, where it stands, its painting.
//
// A bar is named as in win32/scrollbar.h: by a window and SB_HORZ, SB_VERT (bars of the frame) or SB_CTL (the window is
// a scroll bar control).
#pragma once

#include "controls/scroll_model.h"

namespace vndk::win32 {

/// Null when the window is dead or, for SB_CTL, none of our scroll bar controls. Valid until the next message is sent.
[[nodiscard]] ScrollState* scrollStateOf(HWND window, int bar);

struct ScrollPlace {
    bool vertical = false;
    RECT rect{}; // screen coordinates
    ScrollLayout layout;

    [[nodiscard]] int breadth() const;
    /// Offset of a point of the screen along the bar.
    [[nodiscard]] int offsetOf(POINT point) const;
    /// The part that a point of the screen is over.
    [[nodiscard]] ScrollPart partAtPoint(POINT point) const;
};

/// False when the bar doesn't show.
[[nodiscard]] bool locateScrollBar(HWND window, int bar, ScrollPlace& place);

/// Paints the bar at once where it stands.
void repaintScrollBar(HWND window, int bar);

/// Paints a bar into `rect`, in the context's coordinates. `ground` fills its shaft.
void paintScrollBar(HDC dc, const RECT& rect, bool vertical, const ScrollState& state, bool enabled, HBRUSH ground);

} // namespace vndk::win32
