// The bars of a frame window.
#include "mfc/dock_bar.h"
#include "mfc/dock_context.h"
#include "mfc/frame.h"

#include "win32/input.h"

#include <algorithm>

namespace {

struct DockSide {
    UINT id;
    DWORD side;
};

/// In the order in which they are made: top and bottom take the whole width.
constexpr DockSide kSides[] = {{AFX_IDW_DOCKBAR_TOP, CBRS_ALIGN_TOP},
                               {AFX_IDW_DOCKBAR_BOTTOM, CBRS_ALIGN_BOTTOM},
                               {AFX_IDW_DOCKBAR_LEFT, CBRS_ALIGN_LEFT},
                               {AFX_IDW_DOCKBAR_RIGHT, CBRS_ALIGN_RIGHT}};

bool belongsTo(HWND frame, HWND window) { return window != nullptr && ::GetAncestor(window, GA_ROOTOWNER) == frame; }

CMiniDockFrameWnd* floatingFrameOf(const CControlBar& bar) {
    if (bar.m_pDockBar == nullptr || bar.m_pDockBar->m_bFloating == FALSE)
        return nullptr;
    return DYNAMIC_DOWNCAST(CMiniDockFrameWnd, bar.m_pDockBar->GetParentFrame());
}

} // namespace

void CFrameWnd::EnableDocking(DWORD dwDockStyle) {
    for (const DockSide& each : kSides) {
        std::unique_ptr<CDockBar>& dockBar = m_dockBars[each.id - AFX_IDW_DOCKBAR_TOP];
        if ((dwDockStyle & each.side) == 0 || dockBar != nullptr)
            continue;
        dockBar = std::make_unique<CDockBar>();
        if (dockBar->Create(this, each.side, each.id) == FALSE)
            dockBar.reset();
    }
    RecalcLayout();
}

CDockBar* CFrameWnd::GetDockBar(UINT nID) const {
    return nID >= AFX_IDW_DOCKBAR_TOP && nID <= AFX_IDW_DOCKBAR_BOTTOM ? m_dockBars[nID - AFX_IDW_DOCKBAR_TOP].get()
                                                                       : nullptr;
}

void CFrameWnd::DockControlBar(CControlBar* pBar, UINT nDockBarID, LPCRECT pRect) {
    CDockBar* dockBar = GetDockBar(nDockBarID);
    if (nDockBarID == 0)
        for (const DockSide& each : kSides)
            if (dockBar == nullptr && (pBar->m_dwDockStyle & each.side) != 0)
                dockBar = GetDockBar(each.id);
    if (dockBar != nullptr)
        DockControlBar(pBar, dockBar, pRect);
}

void CFrameWnd::DockControlBar(CControlBar* pBar, CDockBar* pDockBar, LPCRECT pRect) {
    pDockBar->DockControlBar(pBar, pRect);
    RecalcLayout();
}

CMiniDockFrameWnd* CFrameWnd::CreateFloatingFrame(DWORD dwBarStyle) {
    auto* const frame = new CMiniDockFrameWnd; // ends with its window, also when that can't be made
    return frame->Create(this, dwBarStyle) != FALSE ? frame : nullptr;
}

CFrameWnd* CFrameWnd::FloatControlBar(CControlBar* pBar, CPoint point) {
    CMiniDockFrameWnd* frame = floatingFrameOf(*pBar);
    const bool made = frame == nullptr;
    if (made)
        frame = CreateFloatingFrame(pBar->GetBarStyle());
    if (frame == nullptr)
        return nullptr;
    frame->SetWindowPos(nullptr, point.x, point.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    if (made)
        frame->GetDockBar().DockControlBar(pBar);
    frame->RecalcLayout();
    frame->ShowActive(belongsTo(m_hWnd, ::GetActiveWindow()));
    if (pBar->IsVisible() != FALSE) {
        frame->ShowWindow(SW_SHOWNA);
        frame->UpdateWindow();
    }
    RecalcLayout();
    return frame;
}

void CFrameWnd::ShowControlBar(CControlBar* pBar, BOOL bShow, BOOL bDelay) {
    using Pending = CControlBar::Pending;
    if (bDelay != FALSE) {
        pBar->m_pending = bShow != FALSE ? Pending::show : Pending::hide;
        return;
    }
    pBar->m_pending = Pending::nothing;
    const HWND focus = ::GetFocus();
    if (bShow == FALSE && focus != nullptr && (focus == pBar->m_hWnd || ::IsChild(pBar->m_hWnd, focus) != FALSE))
        SetFocus(); // or the keyboard would be nobody's
    pBar->ShowWindow(bShow != FALSE ? SW_SHOWNA : SW_HIDE);
    if (CMiniDockFrameWnd* frame = floatingFrameOf(*pBar)) {
        frame->RecalcLayout();
        frame->ShowWindow(bShow != FALSE ? SW_SHOWNA : SW_HIDE);
    } else {
        RecalcLayout();
    }
}

CControlBar* CFrameWnd::GetControlBar(UINT nID) const {
    const auto found = std::find_if(m_controlBars.begin(), m_controlBars.end(), [nID](const CControlBar* bar) {
        return bar->m_hWnd != nullptr && static_cast<UINT>(bar->GetDlgCtrlID()) == nID;
    });
    return found != m_controlBars.end() ? *found : nullptr;
}

DWORD CFrameWnd::CanDock(CRect rect, DWORD dwDockStyle, CDockBar** ppDockBar) const {
    constexpr int reach = 4; // pixels around a dock bar, which has no area of its own while it is empty
    for (const DockSide& each : kSides) {
        CDockBar* const dockBar = GetDockBar(each.id);
        if (dockBar == nullptr || (dwDockStyle & each.side) == 0)
            continue;
        CRect strip;
        dockBar->GetWindowRect(strip);
        strip.InflateRect(reach, reach);
        CRect common;
        if (common.IntersectRect(strip, rect) == FALSE)
            continue;
        if (ppDockBar != nullptr)
            *ppDockBar = dockBar;
        return each.side;
    }
    return 0;
}

void CFrameWnd::RecalcLayout(BOOL) {
    if (m_bInRecalcLayout || m_hWnd == nullptr)
        return;
    m_bInRecalcLayout = true;
    RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST);
    for (const std::unique_ptr<CDockBar>& dockBar : m_dockBars)
        if (dockBar != nullptr && dockBar->m_hWnd != nullptr)
            dockBar->PlaceBars();
    m_bInRecalcLayout = false;
}

void CFrameWnd::AddControlBar(CControlBar* pBar) { m_controlBars.push_back(pBar); }
void CFrameWnd::RemoveControlBar(CControlBar* pBar) { std::erase(m_controlBars, pBar); }

/// Floating frames look active together with their owner.
void CFrameWnd::OnActivate(UINT state, CWnd* other, BOOL minimized) {
    CWnd::OnActivate(state, other, minimized);
    CFrameWnd* const top = GetTopLevelFrame();
    const bool stays = other != nullptr && belongsTo(top->m_hWnd, other->m_hWnd);
    for (const CControlBar* bar : top->m_controlBars)
        if (CMiniDockFrameWnd* frame = floatingFrameOf(*bar))
            frame->ShowActive(state != WA_INACTIVE || stays);
}

/// Floating bars aren't among the frame's children, to whom this goes by itself.
LRESULT CFrameWnd::OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam) {
    const std::vector<CControlBar*> bars = m_controlBars;
    for (CControlBar* bar : bars)
        if (floatingFrameOf(*bar) != nullptr)
            bar->SendMessage(WM_IDLEUPDATECMDUI, wParam, lParam);
    return 0;
}
