// CDockContext: how the user moves one bar: dragged by an outline between sides and floating, and back and forth by a
// double click. It remembers where the bar was last. A bar that was moved is told so by WM_EXITSIZEMOVE, like a window
// that was moved by its caption.
#pragma once

#include "mfc/control_bar.h"

class CDockContext {
public:
    explicit CDockContext(CControlBar& bar) : m_bar(bar) {}
    CDockContext(const CDockContext&) = delete;
    CDockContext& operator=(const CDockContext&) = delete;

    /// Follows the pointer from `point` (screen) until the button goes up, and docks or floats the bar there. Ctrl
    /// keeps it floating, Escape and the right button leave everything as it was. The bar may be gone afterwards.
    void StartDrag(CPoint point);
    /// Floats a docked bar, docks a floating one, at the place that it had last.
    void ToggleDocking();

    UINT m_uMRUDockID = 0;                                ///< AFX_IDW_DOCKBAR_ that it was docked at; 0: never yet
    CPoint m_ptMRUFloatPos{CW_USEDEFAULT, CW_USEDEFAULT}; ///< of the floating frame, screen

private:
    /// Where the bar would come to stand.
    struct Landing {
        CRect rect;                  // screen
        CDockBar* dockBar = nullptr; // null: floating
        bool operator==(const Landing& other) const { return rect == other.rect && dockBar == other.dockBar; }
    };

    [[nodiscard]] CSize FloatingSize() const;
    [[nodiscard]] Landing LandingAt(CPoint point, bool mayDock) const;
    /// False when the drag was given up or the bar has gone; then nothing of this object may be touched.
    bool Track(Landing& landing);

    CControlBar& m_bar; // owns this object
    CPoint m_start;     // where the button went down, screen
    CRect m_rectStart;  // of the bar, or of its floating frame, at that time
};
