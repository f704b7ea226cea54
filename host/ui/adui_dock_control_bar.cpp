// Places of a dock bar: docked, floating, remembered.
#include "ui/adui_dock_control_bar.h"

#include "ads/ads.h"
#include "ui/dock_place.h"

#include <algorithm>

using vndk::host::DockPlace;

IMPLEMENT_DYNAMIC(CAdUiDockControlBar, CControlBar)

BEGIN_MESSAGE_MAP(CAdUiDockControlBar, CControlBar)
ON_COMMAND(ID_ADUI_ALLOW_DOCKING, &CAdUiDockControlBar::OnAllowDocking)
ON_COMMAND(ID_ADUI_HIDE_BAR, &CAdUiDockControlBar::OnClose)
ON_COMMAND_RANGE(AFX_IDW_DOCKBAR_TOP, AFX_IDW_DOCKBAR_FLOAT, &CAdUiDockControlBar::OnMoveCommand)
ON_WM_SIZE()
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_NCCALCSIZE()
ON_WM_NCPAINT()
ON_WM_NCHITTEST()
ON_WM_NCLBUTTONDOWN()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_CONTEXTMENU()
ON_WM_SETFOCUS()
ON_WM_CLOSE()
ON_WM_GETMINMAXINFO()
ON_WM_SIZING()
ON_MESSAGE(WM_EXITSIZEMOVE, &CAdUiDockControlBar::OnExitSizeMove)
END_MESSAGE_MAP()

namespace {

constexpr int kLeastMiddle = 100; // pixels that a docked bar leaves of the frame

DWORD sideOf(UINT dockBarId) {
    switch (dockBarId) {
    case AFX_IDW_DOCKBAR_TOP:
        return CBRS_ALIGN_TOP;
    case AFX_IDW_DOCKBAR_LEFT:
        return CBRS_ALIGN_LEFT;
    case AFX_IDW_DOCKBAR_RIGHT:
        return CBRS_ALIGN_RIGHT;
    case AFX_IDW_DOCKBAR_BOTTOM:
        return CBRS_ALIGN_BOTTOM;
    default:
        return 0;
    }
}

} // namespace

CAdUiDockControlBar::CAdUiDockControlBar(int nStyle) : m_nStyle(nStyle) {}

CAdUiDockControlBar::~CAdUiDockControlBar() = default;

BOOL CAdUiDockControlBar::Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent,
                                 UINT id, void* context) {
    if (!parent) {
        acutPrintf("\nA dock bar needs the program's window, and there is none.");
        return FALSE;
    }
    m_szDocked = m_szFloating = CRect(rect).Size();
    m_dwStyle = CBRS_SIZE_DYNAMIC;
    return CControlBar::Create(className, windowName, style, CRect(CPoint(), m_szFloating), parent, id, context);
}

void CAdUiDockControlBar::SetToolID(const GUID* pToolID) {
    const GUID& id = *pToolID;
    m_strToolID.Format("{%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X}", id.Data1, id.Data2, id.Data3, id.Data4[0],
                       id.Data4[1], id.Data4[2], id.Data4[3], id.Data4[4], id.Data4[5], id.Data4[6], id.Data4[7]);
}

void CAdUiDockControlBar::EnableDocking(DWORD dwDockStyle) {
    m_dwSides = dwDockStyle;
    CControlBar::EnableDocking(m_bAllowDocking ? m_dwSides : 0);
}

void CAdUiDockControlBar::RestoreControlBar(UINT nPreferredDockBarID, const CRect* pInitialFloatingRect) {
    if (!m_hWnd || !m_pDockSite || !m_pDockContext)
        return;
    if (!m_pDockBar)
        StandSomewhere(nPreferredDockBarID, pInitialFloatingRect);
    m_pDockSite->ShowControlBar(this, TRUE, FALSE);
}

void CAdUiDockControlBar::StandSomewhere(UINT nPreferredDockBarID, const CRect* pInitialFloatingRect) {
    UINT dockBarId = nPreferredDockBarID;
    if (pInitialFloatingRect)
        SetFloatingRect(*pInitialFloatingRect);
    if (const auto kept = vndk::host::readDockPlace(m_strToolID)) {
        dockBarId = kept->dockBarId;
        m_szDocked = kept->docked;
        if (!kept->floating.IsRectEmpty())
            SetFloatingRect(vndk::host::withinReach(kept->floating));
        AllowDocking(kept->mayDock);
    }
    if (m_dwDockStyle != 0 && dockBarId != AFX_IDW_DOCKBAR_FLOAT)
        m_pDockSite->DockControlBar(this, (sideOf(dockBarId) & m_dwDockStyle) != 0 ? dockBarId : 0);
    if (!m_pDockBar)
        Float();
}

void CAdUiDockControlBar::SetFloatingRect(CRect rect) {
    const CSize frame = CMiniDockFrameWnd::FrameSize(CSize(), m_dwStyle);
    m_szFloating = CSize(std::max<int>(rect.Width() - frame.cx, 1), std::max<int>(rect.Height() - frame.cy, 1));
    m_pDockContext->m_ptMRUFloatPos = rect.TopLeft();
}

void CAdUiDockControlBar::GetFloatingRect(CRect* pRect) const {
    pRect->SetRectEmpty();
    if (IsFloating() && m_pDockBar)
        m_pDockBar->GetParentFrame()->GetWindowRect(pRect);
    else if (m_pDockContext && m_pDockContext->m_ptMRUFloatPos.x != CW_USEDEFAULT)
        *pRect = CRect(m_pDockContext->m_ptMRUFloatPos, CMiniDockFrameWnd::FrameSize(m_szFloating, m_dwStyle));
}

void CAdUiDockControlBar::Float() {
    CPoint& place = m_pDockContext->m_ptMRUFloatPos;
    if (place.x == CW_USEDEFAULT) {
        CRect frame;
        m_pDockSite->GetWindowRect(frame);
        constexpr int away = 60;
        place = frame.TopLeft() + CSize(away, away);
    }
    m_pDockSite->FloatControlBar(this, place);
}

CSize CAdUiDockControlBar::CalcDynamicLayout(int nLength, DWORD nMode) {
    if ((nMode & LM_MRUWIDTH) != 0)
        return m_szFloating;
    CSize size = CControlBar::CalcDynamicLayout(nLength, nMode);
    CRect frame;
    if (m_pDockSite)
        m_pDockSite->GetClientRect(frame);
    if ((nMode & LM_VERTDOCK) != 0)
        size.cx = std::min<int>(m_szDocked.cx, std::max(frame.Width() - kLeastMiddle, 0));
    else
        size.cy = std::min<int>(m_szDocked.cy, std::max(frame.Height() - kLeastMiddle, 0));
    return size;
}

void CAdUiDockControlBar::OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) {
    UpdateDialogControls(pTarget, bDisableIfNoHndler);
}

/// The inner edge goes to another side, the gripper looks different.
void CAdUiDockControlBar::OnBarStyleChange(DWORD, DWORD) {
    if (m_hWnd)
        SetWindowPos(nullptr, 0, 0, 0, 0,
                     SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | SWP_NOCOPYBITS);
}

void CAdUiDockControlBar::OnSize(UINT type, int width, int height) {
    CControlBar::OnSize(type, width, height);
    CRect room(0, GripperRect().bottom, width, std::max<int>(height, GripperRect().bottom));
    SizeChanged(&room, IsFloating(), static_cast<int>(type));
    Invalidate();
}

void CAdUiDockControlBar::SizeChanged(CRect*, BOOL, int) {}

void CAdUiDockControlBar::OnGetMinMaxInfo(MINMAXINFO* info) {
    long width = info->ptMinTrackSize.x;
    long height = info->ptMinTrackSize.y;
    GetFloatingMinSize(&width, &height);
    info->ptMinTrackSize = {static_cast<LONG>(width), static_cast<LONG>(height)};
}

void CAdUiDockControlBar::GetFloatingMinSize(long*, long*) {}

void CAdUiDockControlBar::OnSizing(UINT side, LPRECT rect) { OnUserSizing(side, rect); }

void CAdUiDockControlBar::OnUserSizing(UINT, LPRECT) {}

/// The user has moved or sized it.
LRESULT CAdUiDockControlBar::OnExitSizeMove(WPARAM, LPARAM) {
    if (IsFloating()) {
        CRect client;
        GetClientRect(client);
        m_szFloating = client.Size();
    }
    SavePlace();
    if (CanFrameworkTakeFocus() && m_pDockSite)
        m_pDockSite->SetFocus();
    return 0;
}

void CAdUiDockControlBar::SavePlace() const {
    if (!m_pDockBar)
        return;
    DockPlace place;
    place.dockBarId = static_cast<UINT>(m_pDockBar->GetDlgCtrlID());
    place.docked = m_szDocked;
    GetFloatingRect(&place.floating);
    place.mayDock = m_bAllowDocking;
    vndk::host::writeDockPlace(m_strToolID, place);
}

void CAdUiDockControlBar::AllowDocking(bool bAllow) {
    m_bAllowDocking = bAllow;
    CControlBar::EnableDocking(bAllow ? m_dwSides : 0);
}

/// A docked bar that mustn't dock any more leaves its side.
void CAdUiDockControlBar::OnAllowDocking() {
    AllowDocking(!m_bAllowDocking);
    if (!m_bAllowDocking && !IsFloating())
        Float();
    SavePlace();
}

void CAdUiDockControlBar::OnMoveCommand(UINT nID) {
    if (nID == AFX_IDW_DOCKBAR_FLOAT)
        Float();
    else
        m_pDockSite->DockControlBar(this, nID);
    SavePlace();
}

void CAdUiDockControlBar::OnClose() {
    if (!OnClosing())
        return;
    SavePlace();
    if ((m_nStyle & ADUI_DOCK_CS_DESTROY_ON_CLOSE) != 0)
        DestroyWindow();
    else
        CControlBar::OnClose();
}

/// A floating window that gave its focus away at once could never be dragged: it does so when that is over.
void CAdUiDockControlBar::OnSetFocus(CWnd* former) {
    if (!IsFloating() && CanFrameworkTakeFocus() && m_pDockSite)
        m_pDockSite->SetFocus();
    else
        CControlBar::OnSetFocus(former);
}
