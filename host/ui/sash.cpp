#include "ui/sash.h"

#include "ui/edge_strip.h"

namespace vndk::host {

BEGIN_MESSAGE_MAP(Sash, CWnd)
ON_WM_ERASEBKGND()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_CAPTURECHANGED()
ON_MESSAGE(WM_SIZEPARENT, &Sash::OnSizeParent)
END_MESSAGE_MAP()

LRESULT Sash::OnSizeParent(WPARAM, LPARAM layout) { return takeStrip(*this, layout, Edge::Bottom, kHeight); }

bool Sash::create(CWnd& parent, UINT id) {
    const LPCSTR className = AfxRegisterWndClass(0, ::LoadCursorA(nullptr, IDC_SIZENS));
    return Create(className, "", WS_CHILD | WS_VISIBLE, CRect(), &parent, id) != FALSE;
}

BOOL Sash::OnEraseBkgnd(CDC* dc) {
    CRect client;
    GetClientRect(client);
    dc->FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    return TRUE;
}

void Sash::OnLButtonDown(UINT, CPoint point) {
    dragging_ = true;
    grip_ = point.y;
    SetCapture();
}

void Sash::OnLButtonUp(UINT, CPoint) {
    if (dragging_)
        ::ReleaseCapture();
}

void Sash::OnCaptureChanged(CWnd*) { dragging_ = false; }

void Sash::OnMouseMove(UINT, CPoint point) {
    if (dragging_ && point.y != grip_ && onDrag)
        onDrag(point.y - grip_);
}

} // namespace vndk::host
