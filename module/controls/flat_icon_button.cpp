#include "controls/flat_icon_button.h"

#include "frame/module.h"

namespace {

constexpr UINT_PTR kToolId = 1;
constexpr int kIconMargin = 3; // pixels left of an icon that stands beside a caption

BYTE DoubledHotSpot(DWORD nHotSpot) { return static_cast<BYTE>(nHotSpot * 2); }

UINT DisabledState(UINT nState) { return (nState & ODS_DISABLED) != 0 ? DSS_DISABLED : DSS_NORMAL; }

/// One line to each point after the first.
void DrawLines(CDC& dc, int nColor, const POINT* points, int nCount) {
    CPen pen(PS_SOLID, 1, ::GetSysColor(nColor));
    CPen* pOldPen = dc.SelectObject(&pen);
    dc.MoveTo(points[0]);
    for (int i = 1; i < nCount; ++i)
        dc.LineTo(points[i]);
    dc.SelectObject(pOldPen);
}

} // namespace

BEGIN_MESSAGE_MAP(CFlatIconButton, CButton)
ON_WM_MOUSEMOVE()
ON_WM_KILLFOCUS()
ON_WM_CAPTURECHANGED()
ON_WM_CTLCOLOR_REFLECT()
END_MESSAGE_MAP()

CFlatIconButton::CFlatIconButton()
    : m_clrBackNormal(::GetSysColor(COLOR_3DFACE)), m_clrTextNormal(::GetSysColor(COLOR_BTNTEXT)),
      m_clrBackHot(::GetSysColor(COLOR_3DFACE)), m_clrTextHot(::GetSysColor(COLOR_BTNTEXT)) {}

CFlatIconButton::~CFlatIconButton() { DestroyIcons(); }

void CFlatIconButton::DestroyIcons() {
    if (m_hIconNormal && m_hIconNormal != m_hIconHot)
        ::DestroyIcon(m_hIconNormal);
    if (m_hIconHot)
        ::DestroyIcon(m_hIconHot);
    m_hIconHot = m_hIconNormal = nullptr;
}

void CFlatIconButton::SetIcons(UINT nHotId, UINT nNormalId) {
    const auto load = [](UINT nId) {
        return static_cast<HICON>(::LoadImageA(ModuleInstance(), MAKEINTRESOURCE(nId), IMAGE_ICON, 0, 0, 0));
    };
    const HICON hHot = load(nHotId);
    SetIconHandles(hHot, LOWORD(nNormalId) != 0 ? load(nNormalId) : nullptr);
}

void CFlatIconButton::SetIconHandles(HICON hHot, HICON hNormal) {
    DestroyIcons();
    m_hIconHot = hHot;
    m_hIconNormal = hNormal ? hNormal : hHot;
    ICONINFO info{};
    if (hHot && ::GetIconInfo(hHot, &info)) {
        m_nIconWidth = DoubledHotSpot(info.xHotspot);
        m_nIconHeight = DoubledHotSpot(info.yHotspot);
        ::DeleteObject(info.hbmMask);
        ::DeleteObject(info.hbmColor);
    }
    RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void CFlatIconButton::SetFlat(BOOL bFlat) {
    m_bFlat = bFlat;
    Invalidate();
}

void CFlatIconButton::EnsureToolTip() {
    if (m_toolTip.GetSafeHwnd())
        return;
    if (m_toolTip.Create(this))
        m_toolTip.Activate(FALSE);
}

void CFlatIconButton::SetToolTip(const CString& strText, BOOL bActive) {
    EnsureToolTip();
    if (m_toolTip.GetToolCount() == 0) {
        CRect rect;
        GetClientRect(rect);
        m_toolTip.AddTool(this, strText, rect, kToolId);
    }
    m_toolTip.UpdateTipText(strText, this, kToolId);
    m_toolTip.Activate(bActive);
}

void CFlatIconButton::PreSubclassWindow() {
    const DWORD dwStyle = GetStyle();
    if ((dwStyle & BS_DEFPUSHBUTTON) != 0)
        m_bDefault = 1;
    SendMessage(BM_SETSTYLE, (dwStyle | BS_OWNERDRAW) & 0xFF, 1);
    CButton::PreSubclassWindow();
}

BOOL CFlatIconButton::PreTranslateMessage(MSG* pMsg) {
    EnsureToolTip();
    m_toolTip.RelayEvent(pMsg);
    return CButton::PreTranslateMessage(pMsg);
}

/// A quick second click counts as a click of its own.
LRESULT CFlatIconButton::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return CButton::DefWindowProc(message == WM_LBUTTONDBLCLK ? WM_LBUTTONDOWN : message, wParam, lParam);
}

void CFlatIconButton::OnMouseMove(UINT nFlags, CPoint point) {
    CButton::OnMouseMove(nFlags, point);
    const BOOL bLeftDown = (nFlags & MK_LBUTTON) != 0;
    if (bLeftDown && !m_bHover)
        return;
    if (!m_bFlat)
        return;
    if (GetCapture() != this && GetActiveWindow() && GetOwner()) {
        m_bHover = 1;
        SetCapture();
        Invalidate();
        return;
    }
    ClientToScreen(&point);
    const CWnd* pWnd = WindowFromPoint(point);
    if (!pWnd || pWnd == this)
        return;
    if (m_bHover == 1) {
        m_bHover = 0;
        Invalidate();
    }
    if (!bLeftDown)
        ::ReleaseCapture();
}

void CFlatIconButton::OnKillFocus(CWnd* pNewWnd) {
    CButton::OnKillFocus(pNewWnd);
    if (m_bFlat && m_bHover == 1) {
        m_bHover = 0;
        Invalidate();
    }
}

void CFlatIconButton::OnCaptureChanged(CWnd* pWnd) {
    if (m_bHover == 1) {
        ::ReleaseCapture();
        Invalidate();
    }
    CButton::OnCaptureChanged(pWnd);
}

HBRUSH CFlatIconButton::CtlColor(CDC* /*pDC*/, UINT /*nCtlColor*/) {
    return static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
}

void CFlatIconButton::DrawItem(LPDRAWITEMSTRUCT lpDrawItem) {
    CDC& dc = *CDC::FromHandle(lpDrawItem->hDC);
    const UINT nState = lpDrawItem->itemState;
    const BOOL bFocused = (nState & ODS_FOCUS) != 0;
    const CRect item(lpDrawItem->rcItem);
    CRect rc(item);

    dc.SetBkMode(TRANSPARENT);
    if (!m_bFlat && (bFocused || m_bDefault)) {
        CBrush brush(RGB(0, 0, 0));
        dc.FrameRect(rc, &brush);
        rc.DeflateRect(1, 1);
    }
    CBrush background(IsHot(nState) ? m_clrBackHot : m_clrBackNormal);
    dc.FillRect(rc, &background);
    if ((nState & ODS_SELECTED) != 0)
        DrawPressedBorder(dc, rc);
    else
        DrawReleasedBorder(dc, rc);

    CString strCaption;
    GetWindowText(strCaption);
    CRect caption(item);
    if (m_hIconHot)
        DrawButtonIcon(dc, item, nState, !strCaption.IsEmpty(), caption);
    if (!strCaption.IsEmpty())
        DrawCaption(dc, strCaption, caption, nState);
    if (!m_bFlat && bFocused) {
        CRect focus(rc);
        focus.DeflateRect(3, 3);
        dc.DrawFocusRect(focus);
    }
}

void CFlatIconButton::DrawPressedBorder(CDC& dc, const CRect& rc) const {
    if (m_bFlat) {
        dc.Draw3dRect(rc, ::GetSysColor(COLOR_BTNSHADOW), ::GetSysColor(COLOR_BTNHILIGHT));
        return;
    }
    CBrush brush(::GetSysColor(COLOR_BTNSHADOW));
    dc.FrameRect(rc, &brush);
}

void CFlatIconButton::DrawReleasedBorder(CDC& dc, const CRect& rc) const {
    if (m_bFlat) {
        if (m_bHover == 1)
            dc.Draw3dRect(rc, ::GetSysColor(COLOR_BTNHILIGHT), ::GetSysColor(COLOR_BTNSHADOW));
        return;
    }
    const LONG l = rc.left, t = rc.top, r = rc.right, b = rc.bottom;
    const POINT highlight[] = {{l, b - 1}, {l, t}, {r, t}};
    const POINT light[] = {{l + 1, b - 1}, {l + 1, t + 1}, {r, t + 1}};
    const POINT darkShadow[] = {{l, b - 1}, {r - 1, b - 1}, {r - 1, t - 1}};
    const POINT shadow[] = {{l + 1, b - 2}, {r - 2, b - 2}, {r - 2, t}};
    DrawLines(dc, COLOR_BTNHILIGHT, highlight, 3);
    DrawLines(dc, COLOR_3DLIGHT, light, 3);
    DrawLines(dc, COLOR_3DDKSHADOW, darkShadow, 3);
    DrawLines(dc, COLOR_BTNSHADOW, shadow, 3);
}

void CFlatIconButton::DrawButtonIcon(CDC& dc, const CRect& item, UINT nState, BOOL bCaption, CRect& caption) const {
    CPoint place(item.left + (item.Width() - m_nIconWidth) / 2, item.top + (item.Height() - m_nIconHeight) / 2);
    if (bCaption) {
        place.x = item.left + kIconMargin;
        caption.left += m_nIconWidth + kIconMargin;
    }
    if ((nState & ODS_SELECTED) != 0)
        place.Offset(1, 1);
    dc.DrawState(place, CSize(m_nIconWidth, m_nIconHeight), IsHot(nState) ? m_hIconHot : m_hIconNormal,
                 DisabledState(nState));
}

void CFlatIconButton::DrawCaption(CDC& dc, const CString& strCaption, CRect caption, UINT nState) const {
    if ((nState & ODS_SELECTED) != 0)
        caption.OffsetRect(1, 1);
    dc.SetTextColor(IsHot(nState) ? m_clrTextHot : m_clrTextNormal);
    dc.SetBkColor(IsHot(nState) ? m_clrBackHot : m_clrBackNormal);
    CRect text(caption);
    dc.DrawText(strCaption, -1, text, DT_SINGLELINE | DT_CALCRECT);
    text.OffsetRect((caption.Width() - text.Width()) / 2, (caption.Height() - text.Height()) / 2);
    dc.SetBkMode(TRANSPARENT);
    dc.DrawState(text.TopLeft(), text.Size(), strCaption, DisabledState(nState), TRUE, 0);
}
