// Gripper, inner edge and menu of a dock bar.
#include "ui/adui_dock_control_bar.h"

#include <algorithm>

namespace {

constexpr int kGripperHeight = 13;
constexpr int kCloseSize = 11;
constexpr int kEdge = 4;       // width of the inner edge
constexpr int kLeastSize = 60; // of a docked bar
constexpr int kLeastMiddle = 100;

/// Two raised lines, as grippers have them.
void drawLines(CDC& dc, CRect area) {
    const int middle = area.CenterPoint().y;
    for (const int top : {middle - 4, middle}) {
        CRect line(area.left, top, area.right, top + 3);
        dc.DrawEdge(line, BDR_RAISEDINNER, BF_RECT);
    }
}

} // namespace

CRect CAdUiDockControlBar::GripperRect() const {
    CRect client;
    GetClientRect(client);
    return {0, 0, client.right, kGripperHeight};
}

/// A floating window has a button of its own.
CRect CAdUiDockControlBar::CloseButtonRect() const {
    if (IsFloating())
        return {};
    const CRect gripper = GripperRect();
    return {CPoint(gripper.right - kCloseSize - 1, 1), CSize(kCloseSize, kCloseSize)};
}

CRect CAdUiDockControlBar::EdgeRect() const {
    CRect window;
    GetWindowRect(window);
    const CRect whole(CPoint(), window.Size());
    switch (m_dwStyle & CBRS_ALIGN_ANY) {
    case CBRS_ALIGN_LEFT:
        return {whole.right - kEdge, 0, whole.right, whole.bottom};
    case CBRS_ALIGN_RIGHT:
        return {0, 0, kEdge, whole.bottom};
    case CBRS_ALIGN_TOP:
        return {0, whole.bottom - kEdge, whole.right, whole.bottom};
    case CBRS_ALIGN_BOTTOM:
        return {0, 0, whole.right, kEdge};
    default:
        return {};
    }
}

void CAdUiDockControlBar::OnNcCalcSize(BOOL calculate, NCCALCSIZE_PARAMS* parameters) {
    CControlBar::OnNcCalcSize(calculate, parameters);
    RECT& client = parameters->rgrc[0];
    switch (m_dwStyle & CBRS_ALIGN_ANY) {
    case CBRS_ALIGN_LEFT:
        client.right = std::max(client.left, client.right - kEdge);
        break;
    case CBRS_ALIGN_RIGHT:
        client.left = std::min(client.right, client.left + kEdge);
        break;
    case CBRS_ALIGN_TOP:
        client.bottom = std::max(client.top, client.bottom - kEdge);
        break;
    case CBRS_ALIGN_BOTTOM:
        client.top = std::min(client.bottom, client.top + kEdge);
        break;
    default:
        break;
    }
}

void CAdUiDockControlBar::OnNcPaint() {
    CControlBar::OnNcPaint();
    CRect edge = EdgeRect();
    if (edge.IsRectEmpty())
        return;
    CWindowDC dc(this);
    dc.FillSolidRect(edge, ::GetSysColor(COLOR_3DFACE));
    dc.DrawEdge(edge, BDR_RAISEDINNER, IsUpright() ? BF_LEFT | BF_RIGHT : BF_TOP | BF_BOTTOM);
}

LRESULT CAdUiDockControlBar::OnNcHitTest(CPoint point) {
    CRect window;
    GetWindowRect(window);
    if (!EdgeRect().PtInRect(CPoint(point.x - window.left, point.y - window.top)))
        return CControlBar::OnNcHitTest(point);
    switch (m_dwStyle & CBRS_ALIGN_ANY) {
    case CBRS_ALIGN_LEFT:
        return HTRIGHT;
    case CBRS_ALIGN_RIGHT:
        return HTLEFT;
    case CBRS_ALIGN_TOP:
        return HTBOTTOM;
    default:
        return HTTOP;
    }
}

void CAdUiDockControlBar::OnNcLButtonDown(UINT hitTest, CPoint point) {
    if (hitTest == HTLEFT || hitTest == HTRIGHT || hitTest == HTTOP || hitTest == HTBOTTOM)
        TrackEdge(point);
    else
        CControlBar::OnNcLButtonDown(hitTest, point);
}

void CAdUiDockControlBar::TrackEdge(CPoint start) {
    if (!m_pDockSite)
        return;
    CRect window;
    GetWindowRect(window);
    CRect frame;
    m_pDockSite->GetClientRect(frame);
    const bool upright = IsUpright();
    const bool farSide = (m_dwStyle & (CBRS_ALIGN_RIGHT | CBRS_ALIGN_BOTTOM)) != 0;
    const int former = upright ? window.Width() : window.Height();
    const int most = std::max((upright ? frame.Width() : frame.Height()) - kLeastMiddle, kLeastSize);
    int wanted = former;
    bool released = false;
    {
        AfxScreenOutline outline;
        released = AfxTrackPointer(m_hWnd, [&](CPoint point) {
            const int way = upright ? point.x - start.x : point.y - start.y;
            wanted = std::clamp(former + (farSide ? -way : way), kLeastSize, most);
            const int shift = farSide ? former - wanted : wanted - former;
            CRect edge = EdgeRect();
            edge.OffsetRect(window.TopLeft());
            edge.OffsetRect(upright ? shift : 0, upright ? 0 : shift);
            outline.Show(edge, kEdge);
        });
    }
    if (!released || wanted == former)
        return;
    (upright ? m_szDocked.cx : m_szDocked.cy) = wanted;
    m_pDockSite->RecalcLayout();
    SavePlace();
}

void CAdUiDockControlBar::OnPaint() {
    CPaintDC dc(this);
    PaintControlBar(&dc);
}

void CAdUiDockControlBar::PaintControlBar(CDC* pDC) {
    CRect client;
    GetClientRect(client);
    pDC->FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    DrawGripper(pDC, GripperRect());
}

/// Floating, title and button are the window's.
void CAdUiDockControlBar::DrawGripper(CDC* pDC, const CRect& rect) {
    constexpr int margin = 3;
    CRect lines = rect;
    lines.DeflateRect(margin, 0);
    if (!IsFloating()) {
        if (!m_font.GetSafeHandle())
            m_font.CreatePointFont(80, "MS Sans Serif");
        CString title;
        GetWindowText(title);
        CFont* const former = pDC->SelectObject(&m_font);
        const CRect button = CloseButtonRect();
        CRect text(rect.left + margin, rect.top, button.left - margin, rect.bottom);
        pDC->SetBkMode(TRANSPARENT);
        pDC->SetTextColor(::GetSysColor(COLOR_BTNTEXT));
        pDC->DrawText(title, text, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
        lines.left = std::min<int>(text.left + pDC->GetTextExtent(title).cx + margin, text.right);
        lines.right = text.right;
        pDC->SelectObject(former);
        DrawCloseButton(pDC, false);
    }
    if (!lines.IsRectEmpty())
        drawLines(*pDC, lines);
}

void CAdUiDockControlBar::DrawCloseButton(CDC* pDC, bool bPressed) const {
    CRect button = CloseButtonRect();
    pDC->DrawFrameControl(button, DFC_CAPTION, DFCS_CAPTIONCLOSE | (bPressed ? DFCS_PUSHED : 0U));
}

void CAdUiDockControlBar::TrackCloseButton() {
    bool inside = true;
    const HWND window = m_hWnd;
    const auto draw = [this](bool pressed) {
        CClientDC dc(this);
        DrawCloseButton(&dc, pressed);
    };
    draw(true);
    const bool released = AfxTrackPointer(window, [&](CPoint point) {
        ScreenToClient(&point);
        const bool now = CloseButtonRect().PtInRect(point) != FALSE;
        if (now != inside)
            draw(now);
        inside = now;
    });
    if (CWnd::FromHandlePermanent(window) != this)
        return;
    draw(false);
    if (released && inside)
        SendMessage(WM_CLOSE);
}

void CAdUiDockControlBar::OnLButtonDown(UINT flags, CPoint point) {
    if (CloseButtonRect().PtInRect(point)) {
        TrackCloseButton();
        return;
    }
    if (!GripperRect().PtInRect(point)) {
        Default();
        return;
    }
    SetFocus();
    CControlBar::OnLButtonDown(flags, point);
}

void CAdUiDockControlBar::OnLButtonDblClk(UINT flags, CPoint point) {
    const bool onButton = CloseButtonRect().PtInRect(point) != FALSE;
    if ((m_nStyle & ADUI_DOCK_CS_STDMOUSECLICKS) != 0 && !onButton && GripperRect().PtInRect(point))
        CControlBar::OnLButtonDblClk(flags, point);
    else
        OnLButtonDown(flags, point); // clicks that follow each other fast
}

void CAdUiDockControlBar::FillMenu(CMenu& menu) const {
    struct Row {
        UINT id;
        DWORD side;
        const char* text;
    };
    static constexpr Row kRows[] = {{AFX_IDW_DOCKBAR_LEFT, CBRS_ALIGN_LEFT, "Dock &Left"},
                                    {AFX_IDW_DOCKBAR_RIGHT, CBRS_ALIGN_RIGHT, "Dock &Right"},
                                    {AFX_IDW_DOCKBAR_TOP, CBRS_ALIGN_TOP, "Dock &Top"},
                                    {AFX_IDW_DOCKBAR_BOTTOM, CBRS_ALIGN_BOTTOM, "Dock &Bottom"}};
    for (const Row& row : kRows)
        if ((m_dwSides & row.side) != 0) {
            const bool can = m_bAllowDocking && (m_dwStyle & row.side) == 0;
            menu.AppendMenu(MF_STRING | (can ? MF_ENABLED : MF_GRAYED), row.id, row.text);
        }
    menu.AppendMenu(MF_STRING | (IsFloating() ? MF_GRAYED : MF_ENABLED), AFX_IDW_DOCKBAR_FLOAT, "&Float");
    menu.AppendMenu(MF_SEPARATOR);
    menu.AppendMenu(MF_STRING | (m_bAllowDocking ? MF_CHECKED : MF_UNCHECKED), ID_ADUI_ALLOW_DOCKING, "&Allow Docking");
    menu.AppendMenu(MF_STRING, ID_ADUI_HIDE_BAR, "&Hide");
}

void CAdUiDockControlBar::OnContextMenu(CWnd* window, CPoint point) {
    if ((m_nStyle & ADUI_DOCK_CS_STDMOUSECLICKS) == 0 || window != this || !m_pDockBar) {
        Default();
        return;
    }
    if (point.x == -1 && point.y == -1) { // by the keyboard
        point = GripperRect().BottomRight();
        point.x = 0;
        ClientToScreen(&point);
    }
    CMenu menu;
    menu.CreatePopupMenu();
    FillMenu(menu);
    if (!AddCustomMenuItems(reinterpret_cast<LPARAM>(menu.m_hMenu)))
        return;
    for (UINT count = menu.GetMenuItemCount(); count > 0; --count) {
        if ((menu.GetMenuState(count - 1, MF_BYPOSITION) & MF_SEPARATOR) == 0)
            break;
        menu.RemoveMenu(count - 1, MF_BYPOSITION); // nothing is left below it
    }
    if (menu.GetMenuItemCount() > 0)
        menu.TrackPopupMenu(TPM_LEFTALIGN | TPM_RIGHTBUTTON, point.x, point.y, this);
}

BOOL CAdUiDockControlBar::AddCustomMenuItems(LPARAM) { return TRUE; }
