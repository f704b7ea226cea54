// What a drag by mouse needs: a loop that follows the pointer, and an outline on the screen.
//
//     AfxScreenOutline outline;
//     if (AfxTrackPointer(m_hWnd, [&](CPoint point) { outline.Show(RectAt(point), 1); }))
//         ...                                                  // the button went up
#pragma once

#include "mfc/dc.h"
#include "mfc/geometry.h"

#include <functional>

/// Has `follow` told of each place (screen) of the pointer, and of each key that may matter, until the left button goes
/// up: true. False when Escape or the right button gave it up, the capture was lost, or the window's object has gone;
/// then nothing that belongs to it may be touched.
bool AfxTrackPointer(HWND window, const std::function<void(CPoint)>& follow);

/// A frame of inverted pixels. While it lives nobody else paints, or the pixels couldn't be inverted back.
class AfxScreenOutline {
public:
    AfxScreenOutline();
    ~AfxScreenOutline();
    AfxScreenOutline(const AfxScreenOutline&) = delete;
    AfxScreenOutline& operator=(const AfxScreenOutline&) = delete;

    /// Shows it there, and no longer where it was. Width in pixels, inwards.
    void Show(const CRect& rect, int width);
    void Hide();

private:
    void Invert();

    CDC m_dc;
    CRect m_rect;
    int m_width = 0;
    bool m_shown = false;
};
