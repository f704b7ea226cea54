// Update regions, visible regions and the pixels of windows.
#pragma once

#include "gdi/window_dc.h"
#include "user/window.h"
#include "win32/paint.h"

#include <optional>

namespace vndk::win32 {

struct DesktopState;

/// A context that is handed out, or belongs to a window or class for good.
struct HandedContext {
    enum class Kind : std::uint8_t { cached, ownedByWindow, ownedByClass };

    HDC dc = nullptr;
    HWND window = nullptr;
    DWORD flags = 0; // DCX_*, styles taken into account
    Kind kind = Kind::cached;
    bool inUse = false;
    std::optional<Region> clip;  // counted from the window's corner, so that it moves along
    Region aimed;                // what it may paint now, in screen coordinates
    bool excludeClip = false;    // the clip is what may not be painted
    bool caretPaused = false;    // by BeginPaint
    HRGN passedRegion = nullptr; // came with DCX_INTERSECTRGN or DCX_EXCLUDERGN: deleted at the end
};

struct PaintingState {
    explicit PaintingState(DesktopState& desktop);
    ~PaintingState();
    PaintingState(const PaintingState&) = delete;
    PaintingState& operator=(const PaintingState&) = delete;

    DesktopState& state;
    std::vector<HandedContext> contexts;
    Region touched;                   // may have been painted since the last presentation
    std::vector<std::uint32_t> shown; // the picture as it was presented last
    bool showAll = true;              // the screen has lost its picture
    HWND locked = nullptr;            // LockWindowUpdate
    bool lockedPainted = false;       // somebody wanted to paint in it
    std::vector<HRGN> framePasses;    // regions that travel with WM_NCPAINT now
};

/// What may be painted of a window, in screen coordinates: its client area (or the whole window) inside all ancestors,
/// without what covers it. `flags`: DCX_WINDOW, DCX_CLIPCHILDREN, DCX_CLIPSIBLINGS, DCX_PARENTCLIP.
[[nodiscard]] Region visibleRegion(const Window& window, DWORD flags);

/// DCX_CLIPCHILDREN, DCX_CLIPSIBLINGS and DCX_PARENTCLIP as window and class want them.
[[nodiscard]] DWORD contextFlagsOf(const Window& window);
/// The window's own outline in screen coordinates: its rectangle within its shape.
[[nodiscard]] Region outlineOf(const Window& window);
/// Place, order, visibility or clipping styles of windows changed: contexts that are handed out follow.
void refreshContexts();

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

/// Sends WM_PAINT, and afterwards frame and ground when the procedure left them alone.
void sendPaint(HWND window);
/// The procedure of a WM_PAINT that was dispatched has returned: a frame that is still invalid is painted now.
void finishPaint(HWND window);
/// Sends WM_NCPAINT and WM_ERASEBKGND when they are due; the update region stays.
void eraseNow(HWND window);

/// Moves pixels of the screen: `source` (screen coordinates) to where it lies after the shift.
void movePixels(const Region& source, int dx, int dy);
/// The desktop's pixels.
[[nodiscard]] PixelTarget screenTarget(const DesktopState& state);

/// Presents the pixels that have changed since the last time.
void presentPainted();

} // namespace vndk::win32
