// Update regions, visible regions and the pixels of windows.
#pragma once

#include "user/window.h"

namespace vndk::win32 {

/// What may be painted of a window, in screen coordinates: its client area (or the whole window) inside all ancestors,
/// without what covers it. `flags`: DCX_WINDOW, DCX_CLIPCHILDREN, DCX_CLIPSIBLINGS, DCX_PARENTCLIP.
[[nodiscard]] Region visibleRegion(const Window& window, DWORD flags);

/// RedrawWindow with a region in client coordinates (null: all of the client area).
void redraw(HWND window, const Region* region, UINT flags);
/// Makes a part of the screen, in screen coordinates, invalid in whatever windows show there below `under`.
void exposeScreen(Window& under, const Region& region);

/// The pixel side of a change of place, size, order or visibility:
///
///     AreaChange change(window);         // remembers what is visible now
///     ...windowRect, clientRect, children order, WS_VISIBLE change...
///     change.commit(keep, flags);        // moves pixels that stay valid, invalidates what has come to light
class AreaChange {
public:
    explicit AreaChange(Window& window);
    ~AreaChange();
    AreaChange(const AreaChange&) = delete;
    AreaChange& operator=(const AreaChange&) = delete;

    /// `keep`: the old client pixels may be moved along (false: all is painted anew, as with SWP_NOCOPYBITS or
    /// CS_HREDRAW). `redrawFrame`: the frame changed. With SWP_NOREDRAW in `flags` nothing is invalidated.
    void commit(bool keepPixels, bool redrawFrame, UINT flags);

private:
    struct Before;
    std::unique_ptr<Before> before_;
    HWND window_;
};

/// A window is going away: contexts are taken back, its area is exposed.
void forgetPainting(Window& window);

/// The next window that needs WM_PAINT within `within` and its children (null: any), topmost parents first; null when
/// there is none.
[[nodiscard]] HWND nextToPaint(HWND within);

/// Presents what was painted.
void presentPainted();

} // namespace vndk::win32
