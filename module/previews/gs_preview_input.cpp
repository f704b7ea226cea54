// The preview's window: painting, the gadget, and the drags that zoom, pan and orbit.
#include "ads/ads.h"
#include "previews/gs_preview_ctrl.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kWheelCloser = 1.1;
constexpr double kWheelFarther = 0.9;
constexpr COLORREF kGadgetColor = 0xFF00;
constexpr int kFocusMargin = 2; // pixels
constexpr int kGadgetMargin = 20;
constexpr int kHandleRadius = 9;
constexpr float kBallShare = 0.4F; // of the smaller side of the viewport
constexpr double kQuarterTurn = 1.570796326795;

/// The circle in a box whose middle has that height, by its lower and its upper half.
void DrawCircle(CDC& dc, const CRect& box, int nMiddle) {
    const CPoint left(box.left, nMiddle);
    const CPoint right(box.right, nMiddle);
    dc.MoveTo(box.left, box.top);
    dc.Arc(box, left, right);
    dc.Arc(box, right, left);
}

void DrawHandle(CDC& dc, int x, int y) {
    DrawCircle(dc, CRect(x - kHandleRadius, y - kHandleRadius, x + kHandleRadius, y + kHandleRadius), y);
}

/// Where a pixel lies on the ball, in its radii; outside of its outline, on the outline.
AcGeVector3d OnBall(CPoint point, CPoint center, double dRadius) {
    AcGeVector3d place((point.x - center.x) / dRadius, (center.y - point.y) / dRadius, 0);
    const double dSquare = place.x * place.x + place.y * place.y;
    if (dSquare > 1.0)
        return place.normal();
    place.z = std::sqrt(1 - dSquare);
    return place;
}

} // namespace

BEGIN_MESSAGE_MAP(CGsPreviewCtrl, CStatic)
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_MOUSEWHEEL()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_LBUTTONDBLCLK()
ON_WM_MBUTTONDOWN()
ON_WM_MBUTTONUP()
ON_WM_RBUTTONUP()
ON_WM_RBUTTONDBLCLK()
ON_WM_MOUSEMOVE()
ON_WM_NCHITTEST()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
ON_WM_DESTROY()
END_MESSAGE_MAP()

// Painting.

void CGsPreviewCtrl::OnPaint() {
    CPaintDC dc(this);
    if (mpView) {
        try {
            mpView->invalidate();
            mpView->update();
        } catch (...) {
            acedAlert("mpView->update() failed");
        }
    } else {
        CRect client;
        GetClientRect(client);
        dc.FillRect(client, mBackBrush.get());
    }
    if (mOrbiting || mShowGadget)
        DrawOrbitGadget(&dc);
}

void CGsPreviewCtrl::DrawOrbitGadgetNow(bool bWanted) {
    if (bWanted && mShowGadget == 1)
        DrawOrbitGadget(nullptr);
}

void CGsPreviewCtrl::DrawOrbitGadget(CDC* pDC) {
    if (mPanning || mMode != kOrbit)
        return;
    if (!pDC) {
        CClientDC window(this);
        DrawOrbitGadget(&window);
        return;
    }
    CRect rect;
    GetWindowRect(rect);
    ScreenToClient(rect);
    const CPoint center = rect.CenterPoint();
    const int nRadius = std::min(rect.Width(), rect.Height()) / 2;
    const CRect box(center.x - nRadius + kGadgetMargin, center.y - nRadius + kGadgetMargin,
                    center.x + nRadius - kGadgetMargin, center.y + nRadius - kGadgetMargin);
    CPen pen(PS_SOLID, 1, kGadgetColor);
    CPen* pFormer = pDC->SelectObject(&pen);
    DrawCircle(*pDC, box, center.y);
    DrawHandle(*pDC, center.x, box.top);
    DrawHandle(*pDC, center.x, box.bottom);
    DrawHandle(*pDC, box.left, center.y);
    DrawHandle(*pDC, box.right, center.y);
    pDC->SelectObject(pFormer);
}

void CGsPreviewCtrl::OnSize(UINT nType, int cx, int cy) {
    CStatic::OnSize(nType, cx, cy);
    UpdateFocusRect();
    if (mpDevice)
        mpDevice->onSize(cx, cy);
    if (mShownName.IsEmpty()) {
        CRect client;
        GetClientRect(client);
        CClientDC dc(this);
        dc.FillRect(client, mBackBrush.get());
        return;
    }
    try {
        if (mpView) {
            mpView->invalidate();
            mpView->update();
        }
        if (mShowGadget)
            DrawOrbitGadget(nullptr);
    } catch (...) {
        // The next paint draws it, or tells.
    }
}

void CGsPreviewCtrl::UpdateFocusRect() {
    GetClientRect(mFocusRect);
    mFocusRect.DeflateRect(kFocusMargin, kFocusMargin);
}

void CGsPreviewCtrl::DrawFocusRect() {
    CClientDC dc(this);
    dc.DrawFocusRect(mFocusRect);
}

void CGsPreviewCtrl::OnSetFocus(CWnd* pOldWnd) {
    CStatic::OnSetFocus(pOldWnd);
    UpdateFocusRect();
    DrawFocusRect();
}

void CGsPreviewCtrl::OnKillFocus(CWnd* pNewWnd) {
    CStatic::OnKillFocus(pNewWnd);
    DrawFocusRect();
}

void CGsPreviewCtrl::OnDestroy() {
    if (mpDatabase) {
        clearAll();
        mShownName.Empty();
        mpDatabase.reset();
    }
    CStatic::OnDestroy();
}

LRESULT CGsPreviewCtrl::OnNcHitTest(CPoint /*point*/) { return HTCLIENT; }

void CGsPreviewCtrl::RedrawNow() { RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW); }

// The mouse.

HCURSOR CGsPreviewCtrl::ModeCursor() const {
    return mMode == kOrbit ? mhOrbitCursor : mMode == kPan ? mhPanCursor : mhZoomCursor;
}

/// The class has no cursor of its own as long as ours is to stay.
void CGsPreviewCtrl::ShowCursorOf(HCURSOR hCursor) {
    ::SetClassLongPtr(m_hWnd, GCL_HCURSOR, 0);
    ::SetCursor(hCursor);
}

void CGsPreviewCtrl::BeginDrag(CPoint point, HCURSOR hCursor) {
    SetCapture();
    ShowCursorOf(hCursor);
    mLastPoint = point;
}

void CGsPreviewCtrl::OnLButtonDown(UINT nFlags, CPoint point) {
    SetFocus();
    if (mpView && !mShownName.IsEmpty()) {
        mOrbiting = mMode == kOrbit;
        mPanning = mMode == kPan;
        mZooming = mMode == kZoom;
        if (mZooming)
            mZoomFactor = 1.0;
        BeginDrag(point, ModeCursor());
    }
    CStatic::OnLButtonDown(nFlags, point);
}

void CGsPreviewCtrl::OnLButtonUp(UINT nFlags, CPoint point) {
    SetFocus();
    mOrbiting = mPanning = mZooming = 0;
    ShowCursorOf(ModeCursor());
    Invalidate(TRUE);
    ::ReleaseCapture();
    CStatic::OnLButtonUp(nFlags, point);
}

void CGsPreviewCtrl::OnMButtonDown(UINT nFlags, CPoint point) {
    SetFocus();
    if (mpView && !mShownName.IsEmpty()) {
        mPanning = 1;
        BeginDrag(point, mhPanCursor);
    }
    CStatic::OnMButtonDown(nFlags, point);
}

void CGsPreviewCtrl::OnMButtonUp(UINT nFlags, CPoint point) {
    SetFocus();
    if (mpView && !mShownName.IsEmpty()) {
        ::ReleaseCapture();
        mPanning = 0;
        // Until the mouse moves and the mode has its cursor back.
        ShowCursorOf(::LoadCursor(nullptr, IDC_ARROW));
        DrawFocusRect();
    }
    CStatic::OnMButtonUp(nFlags, point);
}

void CGsPreviewCtrl::OnLButtonDblClk(UINT nFlags, CPoint point) {
    SetFocus();
    CStatic::OnLButtonDblClk(nFlags, point);
}

void CGsPreviewCtrl::OnRButtonDblClk(UINT nFlags, CPoint point) {
    SetFocus();
    CStatic::OnRButtonDblClk(nFlags, point);
}

void CGsPreviewCtrl::OnRButtonUp(UINT nFlags, CPoint point) {
    SetFocus();
    CStatic::OnRButtonUp(nFlags, point);
}

BOOL CGsPreviewCtrl::OnMouseWheel(UINT /*nFlags*/, short zDelta, CPoint /*point*/) {
    if (!mpView)
        return TRUE;
    mpView->zoom(zDelta >= 0 ? kWheelCloser : kWheelFarther);
    Invalidate(TRUE);
    if (GetFocus() == this)
        DrawFocusRect();
    return TRUE;
}

void CGsPreviewCtrl::OnMouseMove(UINT nFlags, CPoint point) {
    ShowCursorOf(ModeCursor());
    if (mpView) {
        if (mZooming)
            ZoomStep(point);
        if (mPanning)
            PanStep(point);
        if (mOrbiting)
            OrbitStep(point);
    }
    CStatic::OnMouseMove(nFlags, point);
}

/// Each step takes the factor of the one before along once more, so that a drag gathers speed.
void CGsPreviewCtrl::ZoomStep(CPoint point) {
    const int dy = point.y - mLastPoint.y;
    mLastPoint = point;
    if (dy == 0)
        return;
    if (mZoomFactor != 1.0)
        mpView->zoom(1 - (1 - mZoomFactor));
    CRect client;
    GetClientRect(client);
    mZoomFactor = 1 - static_cast<double>(dy) / client.Height();
    mpView->zoom(mZoomFactor);
    RedrawNow();
}

void CGsPreviewCtrl::PanStep(CPoint point) {
    AcGeVector3d step(mLastPoint.x - point.x, mLastPoint.y - point.y, 0);
    step.transformBy(mpView->viewingMatrix() * mpView->worldToDeviceMatrix().inverse());
    mpView->dolly(step);
    RedrawNow();
    mLastPoint = point;
}

/// A ball in the middle of the viewport turns with the mouse. Its axis is brought into the picture's plane and back.
void CGsPreviewCtrl::OrbitStep(CPoint point) {
    AcGsDCRect viewport;
    mpView->getViewport(viewport);
    const int nWidth = viewport.m_max.x - viewport.m_min.x + 1;
    const int nHeight = viewport.m_max.y - viewport.m_min.y + 1;
    const CPoint center(viewport.m_min.x + nWidth / 2, viewport.m_min.y + nHeight / 2);
    const double dRadius = std::min(nWidth, nHeight) * static_cast<double>(kBallShare);
    const AcGeVector3d turn = OnBall(mLastPoint, center, dRadius).crossProduct(OnBall(point, center, dRadius));
    const double dRoll = std::atan2(turn.x, turn.y);
    const double dLength = turn.length();
    const double dTilt = dLength != 0 ? std::acos(turn.z / dLength) + kQuarterTurn : kQuarterTurn;
    mpView->roll(dRoll);
    mpView->orbit(0, dTilt);
    mpView->orbit(std::asin(std::min(dLength, 1.0)), 0);
    mpView->orbit(0, -dTilt);
    mpView->roll(-dRoll);
    RedrawNow();
    mLastPoint = point;
}
