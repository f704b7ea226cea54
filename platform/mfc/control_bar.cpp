#include "mfc/control_bar.h"

#include "mfc/dc.h"
#include "mfc/dock_bar.h"
#include "mfc/dock_context.h"
#include "mfc/frame.h"
#include "mfc/message_map.h"

#include <algorithm>

IMPLEMENT_DYNAMIC(CControlBar, CWnd)

BEGIN_MESSAGE_MAP(CControlBar, CWnd)
ON_WM_CREATE()
ON_WM_DESTROY()
ON_WM_CLOSE()
ON_WM_ERASEBKGND()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_MESSAGE(WM_SIZEPARENT, &CControlBar::OnSizeParent)
ON_MESSAGE(WM_IDLEUPDATECMDUI, &CControlBar::OnIdleUpdateCmdUI)
END_MESSAGE_MAP()

CControlBar::CControlBar() = default;

CControlBar::~CControlBar() {
    CControlBar::DestroyWindow();
    if (m_pDockBar != nullptr)
        m_pDockBar->RemoveControlBar(this);
    if (m_pDockSite != nullptr)
        m_pDockSite->RemoveControlBar(this);
}

BOOL CControlBar::DestroyWindow() {
    if (m_hWnd == nullptr)
        return FALSE;
    CFrameWnd* const site = m_pDockSite; // this object may end with its window
    const bool floating = m_pDockBar != nullptr && m_pDockBar->m_bFloating != FALSE;
    CWnd* const frame = floating ? m_pDockBar->GetParentFrame() : nullptr;
    const BOOL destroyed = frame != nullptr ? frame->DestroyWindow() : CWnd::DestroyWindow();
    if (frame == nullptr && site != nullptr && ::IsWindow(site->m_hWnd) != FALSE)
        site->RecalcLayout();
    return destroyed;
}

int CControlBar::OnCreate(LPCREATESTRUCT create) {
    if (CWnd::OnCreate(create) == -1)
        return -1;
    CWnd* const parent = GetParent();
    if (m_hWndOwner == nullptr)
        SetOwner(parent);
    if (auto* const frame = DYNAMIC_DOWNCAST(CFrameWnd, parent); frame != nullptr && m_pDockSite == nullptr) {
        m_pDockSite = frame;
        frame->AddControlBar(this);
    }
    return 0;
}

void CControlBar::OnDestroy() {
    if (m_pDockBar != nullptr)
        m_pDockBar->RemoveControlBar(this);
    m_pDockBar = nullptr;
    CWnd::OnDestroy();
}

void CControlBar::OnClose() {
    if (m_pDockSite != nullptr)
        m_pDockSite->ShowControlBar(this, FALSE, FALSE);
}

void CControlBar::SetBarStyle(DWORD style) {
    const DWORD former = m_dwStyle;
    m_dwStyle = style & CBRS_ALL;
    if (m_dwStyle != former)
        OnBarStyleChange(former, m_dwStyle);
}

BOOL CControlBar::IsVisible() const {
    if (m_pending != Pending::nothing)
        return m_pending == Pending::show;
    return m_hWnd != nullptr && (GetStyle() & WS_VISIBLE) != 0;
}

void CControlBar::EnableDocking(DWORD dwDockStyle) {
    m_dwDockStyle = dwDockStyle & CBRS_ALIGN_ANY;
    if (m_pDockContext == nullptr)
        m_pDockContext = std::make_unique<CDockContext>(*this);
}

CSize CControlBar::CalcFixedLayout(BOOL bStretch, BOOL bHorz) {
    constexpr int endless = 32767;
    return {bStretch != FALSE && bHorz != FALSE ? endless : 0, bStretch != FALSE && bHorz == FALSE ? endless : 0};
}

CSize CControlBar::CalcDynamicLayout(int, DWORD nMode) {
    return CalcFixedLayout((nMode & LM_STRETCH) != 0, (nMode & LM_HORZ) != 0);
}

/// Takes a strip off the side at which the bar is aligned.
LRESULT CControlBar::OnSizeParent(WPARAM, LPARAM lParam) {
    auto& layout = *reinterpret_cast<AFX_SIZEPARENTPARAMS*>(lParam);
    if (IsVisible() == FALSE || (m_dwStyle & CBRS_ALIGN_ANY) == 0)
        return 0;
    const bool level = (m_dwStyle & CBRS_ORIENT_HORZ) != 0;
    const DWORD stretch = layout.bStretch != FALSE ? LM_STRETCH : 0;
    const CSize size = CalcDynamicLayout(-1, stretch | (level ? LM_HORZ | LM_HORZDOCK : LM_VERTDOCK));
    CRect place(layout.rect);
    const int width = std::clamp<int>(size.cx, 0, std::max(place.Width(), 0));
    const int height = std::clamp<int>(size.cy, 0, std::max(place.Height(), 0));
    if ((m_dwStyle & CBRS_ALIGN_TOP) != 0)
        layout.rect.top = place.bottom = place.top + height;
    else if ((m_dwStyle & CBRS_ALIGN_BOTTOM) != 0)
        layout.rect.bottom = place.top = place.bottom - height;
    else if ((m_dwStyle & CBRS_ALIGN_LEFT) != 0)
        layout.rect.left = place.right = place.left + width;
    else
        layout.rect.right = place.left = place.right - width;
    if (layout.hDWP != nullptr)
        layout.hDWP = ::DeferWindowPos(layout.hDWP, m_hWnd, nullptr, place.left, place.top, place.Width(),
                                       place.Height(), SWP_NOACTIVATE | SWP_NOZORDER);
    return 0;
}

LRESULT CControlBar::OnIdleUpdateCmdUI(WPARAM wParam, LPARAM) {
    if (m_pending != Pending::nothing && m_pDockSite != nullptr)
        m_pDockSite->ShowControlBar(this, m_pending == Pending::show, FALSE);
    auto* const target = DYNAMIC_DOWNCAST(CFrameWnd, GetOwner());
    if (target != nullptr && (GetStyle() & WS_VISIBLE) != 0)
        OnUpdateCmdUI(target, static_cast<BOOL>(wParam));
    return 0;
}

BOOL CControlBar::PreTranslateMessage(MSG* message) {
    if (CWnd::PreTranslateMessage(message) != FALSE)
        return TRUE;
    // A dialog would swallow the keys that stand for commands of the frames around it.
    for (CWnd* owner = GetOwner(); owner != nullptr; owner = owner->GetParentFrame())
        if (owner->PreTranslateMessage(message) != FALSE)
            return TRUE;
    return PreTranslateInput(message);
}

LRESULT CControlBar::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool fromBelow = message == WM_COMMAND || message == WM_NOTIFY;
    CWnd* const owner = fromBelow ? GetOwner() : nullptr;
    if (owner == nullptr)
        return CWnd::WindowProc(message, wParam, lParam);
    // What a bar doesn't handle is its owner's.
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result) == FALSE)
        result = owner->SendMessage(message, wParam, lParam);
    return result;
}

BOOL CControlBar::OnEraseBkgnd(CDC* dc) {
    CRect client;
    GetClientRect(client);
    dc->FillSolidRect(client, ::GetSysColor(COLOR_3DFACE));
    return TRUE;
}

void CControlBar::OnLButtonDown(UINT, CPoint point) {
    if (m_pDockBar == nullptr || m_pDockContext == nullptr) {
        Default();
        return;
    }
    ClientToScreen(&point);
    m_pDockContext->StartDrag(point);
}

void CControlBar::OnLButtonDblClk(UINT, CPoint) {
    if (m_pDockBar != nullptr && m_pDockContext != nullptr)
        m_pDockContext->ToggleDocking();
    else
        Default();
}
