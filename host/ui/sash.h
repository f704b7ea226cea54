// A bar between two windows, one above the other, that is dragged to change their heights.
#pragma once

#include "mfc/afx.h"

#include <functional>

namespace vndk::host {

class Sash : public CWnd {
public:
    static constexpr int kHeight = 4; // pixels

    bool create(CWnd& parent, UINT id);

    /// Told how far the bar is dragged, in pixels downward, each time the mouse moves with it.
    std::function<void(int)> onDrag;

protected:
    BOOL OnEraseBkgnd(CDC* dc);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnCaptureChanged(CWnd* other);

    LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    bool dragging_ = false;
    int grip_ = 0; // where the bar was taken, from its top
};

} // namespace vndk::host
