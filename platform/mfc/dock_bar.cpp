#include "mfc/dock_bar.h"

#include "mfc/dock_context.h"
#include "mfc/message_map.h"
#include "win32/icons.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CDockBar, CControlBar)
IMPLEMENT_DYNAMIC(CMiniDockFrameWnd, CFrameWnd)

BEGIN_MESSAGE_MAP(CDockBar, CControlBar)
ON_WM_SIZE()
END_MESSAGE_MAP()

BEGIN_MESSAGE_MAP(CMiniDockFrameWnd, CFrameWnd)
ON_WM_SIZE()
ON_WM_CLOSE()
ON_WM_SETFOCUS()
ON_WM_NCACTIVATE()
ON_WM_NCLBUTTONDOWN()
ON_WM_NCLBUTTONDBLCLK()
ON_WM_CONTEXTMENU()
END_MESSAGE_MAP()

// ---- Dock bar ------------------------------------------------------------------------------------------------------

CDockBar::~CDockBar() {
    for (CControlBar* bar : m_bars)
        bar->m_pDockBar = nullptr;
}

BOOL CDockBar::Create(CWnd* pParent, DWORD dwStyle, UINT nID) {
    m_dwStyle = dwStyle & CBRS_ALL;
    const LPCSTR className = AfxRegisterWndClass(0, ::LoadCursorA(nullptr, IDC_ARROW));
    return CWnd::Create(className, nullptr, WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | WS_CLIPCHILDREN, CRect(), pParent,
                        nID);
}

CControlBar* CDockBar::GetFirstVisibleBar() const {
    const auto found =
        std::find_if(m_bars.begin(), m_bars.end(), [](const CControlBar* bar) { return bar->IsVisible() != FALSE; });
    return found != m_bars.end() ? *found : nullptr;
}

void CDockBar::DockControlBar(CControlBar* pBar, LPCRECT pRect) {
    CDockBar* const former = pBar->m_pDockBar;
    if (former != nullptr)
        former->RemoveControlBar(pBar);
    const auto place = std::find_if(m_bars.begin(), m_bars.end(), [&](const CControlBar* other) {
        if (pRect == nullptr)
            return false;
        CRect there;
        other->GetWindowRect(there);
        const CPoint middle = CRect(*pRect).CenterPoint();
        return SideBySide() ? middle.x < there.CenterPoint().x : middle.y < there.CenterPoint().y;
    });
    m_bars.insert(place, pBar);
    pBar->m_pDockBar = this;
    if (::GetParent(pBar->m_hWnd) != m_hWnd)
        pBar->SetParent(this);
    const DWORD kept = pBar->GetBarStyle() & ~(CBRS_ALIGN_ANY | CBRS_FLOATING);
    pBar->SetBarStyle(kept | (m_bFloating != FALSE ? CBRS_FLOATING : m_dwStyle & CBRS_ALIGN_ANY));
    if (m_bFloating == FALSE && pBar->m_pDockContext != nullptr)
        pBar->m_pDockContext->m_uMRUDockID = static_cast<UINT>(GetDlgCtrlID());
    if (former != nullptr && former != this && former->m_bFloating != FALSE && former->m_bars.empty())
        former->GetParentFrame()->DestroyWindow();
}

void CDockBar::RemoveControlBar(CControlBar* pBar) {
    std::erase(m_bars, pBar);
    pBar->m_pDockBar = nullptr;
}

CSize CDockBar::SizeOf(CControlBar& bar) const {
    return bar.CalcDynamicLayout(-1, LM_STRETCH | (SideBySide() ? LM_VERTDOCK : LM_HORZ | LM_HORZDOCK));
}

CSize CDockBar::CalcFixedLayout(BOOL bStretch, BOOL bHorz) {
    CSize size = CControlBar::CalcFixedLayout(bStretch, bHorz);
    for (CControlBar* bar : m_bars) {
        if (bar->IsVisible() == FALSE)
            continue;
        const CSize its = SizeOf(*bar);
        if (SideBySide())
            size.cx += its.cx;
        else
            size.cy += its.cy;
    }
    return size;
}

void CDockBar::PlaceBars() {
    CRect room;
    GetClientRect(room);
    const std::vector<CControlBar*> bars = m_bars; // a bar that is placed may move others
    for (CControlBar* bar : bars) {
        if (bar->m_pDockBar != this || bar->IsVisible() == FALSE)
            continue;
        CRect place = room;
        const CSize size = m_bFloating != FALSE ? room.Size() : SizeOf(*bar);
        if (m_bFloating == FALSE && SideBySide())
            room.left = place.right = std::min(room.left + size.cx, room.right);
        else if (m_bFloating == FALSE)
            room.top = place.bottom = std::min(room.top + size.cy, room.bottom);
        bar->SetWindowPos(nullptr, place.left, place.top, place.Width(), place.Height(), SWP_NOACTIVATE | SWP_NOZORDER);
    }
}

void CDockBar::OnSize(UINT type, int width, int height) {
    CControlBar::OnSize(type, width, height);
    if (m_bFloating != FALSE)
        PlaceBars();
}

// ---- Floating frame ------------------------------------------------------------------------------------------------

namespace {

constexpr DWORD kFrameStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN;
constexpr DWORD kFrameExStyle = WS_EX_TOOLWINDOW;

DWORD frameStyle(DWORD barStyle) { return kFrameStyle | ((barStyle & CBRS_SIZE_DYNAMIC) != 0 ? WS_THICKFRAME : 0); }

} // namespace

CMiniDockFrameWnd::~CMiniDockFrameWnd() = default;

BOOL CMiniDockFrameWnd::Create(CFrameWnd* pOwner, DWORD dwBarStyle) {
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW));
    if (CFrameWnd::Create(className, "", frameStyle(dwBarStyle), CRect(0, 0, 0, 0), pOwner, 0, kFrameExStyle) == FALSE)
        return FALSE;
    if (m_wndDockBar.Create(this, CBRS_LEFT, AFX_IDW_DOCKBAR_FLOAT) != FALSE)
        return TRUE;
    DestroyWindow();
    return FALSE;
}

CSize CMiniDockFrameWnd::FrameSize(CSize barSize, DWORD dwBarStyle) {
    CRect rect(0, 0, barSize.cx, barSize.cy);
    ::AdjustWindowRectEx(rect, frameStyle(dwBarStyle), FALSE, kFrameExStyle);
    return rect.Size();
}

void CMiniDockFrameWnd::RecalcLayout(BOOL) {
    CControlBar* const bar = m_wndDockBar.GetFirstVisibleBar();
    if (bar == nullptr)
        return;
    CString title;
    bar->GetWindowText(title);
    SetWindowText(title);
    const CSize size = FrameSize(bar->CalcDynamicLayout(-1, LM_HORZ | LM_MRUWIDTH), bar->GetBarStyle());
    SetWindowPos(nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    m_wndDockBar.PlaceBars();
}

void CMiniDockFrameWnd::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (m_wndDockBar.m_hWnd != nullptr)
        m_wndDockBar.MoveWindow(0, 0, width, height);
}

LRESULT CMiniDockFrameWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = CFrameWnd::WindowProc(message, wParam, lParam);
    if (message == WM_GETMINMAXINFO || message == WM_SIZING || message == WM_EXITSIZEMOVE)
        if (CControlBar* bar = DraggedBar())
            bar->SendMessage(message, wParam, lParam);
    return result;
}

void CMiniDockFrameWnd::OnClose() {
    if (CControlBar* bar = DraggedBar())
        bar->SendMessage(WM_CLOSE);
}

void CMiniDockFrameWnd::OnSetFocus(CWnd*) {
    if (CControlBar* bar = DraggedBar())
        bar->SetFocus();
}

void CMiniDockFrameWnd::ShowActive(BOOL bActive) {
    m_bActive = bActive;
    SendMessage(WM_NCACTIVATE, static_cast<WPARAM>(bActive));
}

BOOL CMiniDockFrameWnd::OnNcActivate(BOOL) {
    return static_cast<BOOL>(DefWindowProc(WM_NCACTIVATE, static_cast<WPARAM>(m_bActive), 0));
}

void CMiniDockFrameWnd::OnNcLButtonDown(UINT hitTest, CPoint point) {
    CControlBar* const bar = DraggedBar();
    if (hitTest == HTCAPTION && bar != nullptr && bar->m_pDockContext != nullptr) {
        SetActiveWindow();
        bar->m_pDockContext->StartDrag(point);
        return;
    }
    CFrameWnd::OnNcLButtonDown(hitTest, point);
}

void CMiniDockFrameWnd::OnNcLButtonDblClk(UINT hitTest, CPoint point) {
    CControlBar* const bar = DraggedBar();
    if (hitTest == HTCAPTION && bar != nullptr && bar->m_pDockContext != nullptr) {
        bar->m_pDockContext->ToggleDocking();
        return;
    }
    CFrameWnd::OnNcLButtonDblClk(hitTest, point);
}

/// The caption's menu is the bar's.
void CMiniDockFrameWnd::OnContextMenu(CWnd*, CPoint point) {
    if (CControlBar* bar = DraggedBar())
        bar->SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(bar->m_hWnd), MAKELPARAM(point.x, point.y));
}
