#include "mfc/dock_context.h"

#include "mfc/dock_bar.h"
#include "mfc/frame.h"
#include "mfc/pointer_tracking.h"
#include "win32/input.h"
#include "win32/metrics.h"

#include <algorithm>
#include <cstdlib>

CSize CDockContext::FloatingSize() const {
    return CMiniDockFrameWnd::FrameSize(m_bar.CalcDynamicLayout(-1, LM_HORZ | LM_MRUWIDTH), m_bar.GetBarStyle());
}

CDockContext::Landing CDockContext::LandingAt(CPoint point, bool mayDock) const {
    // Floating, the pointer keeps its share of the width and stays on the caption.
    const CSize size = FloatingSize();
    const int share = std::max(m_rectStart.Width(), 1);
    const int left = point.x - (m_start.x - m_rectStart.left) * size.cx / share;
    const int top = point.y - std::min<int>(m_start.y - m_rectStart.top, ::GetSystemMetrics(SM_CYSMCAPTION));
    Landing landing{CRect(CPoint(left, top), size)};
    const DWORD side = mayDock ? m_bar.m_pDockSite->CanDock(landing.rect, m_bar.m_dwDockStyle, &landing.dockBar) : 0;
    if (side == 0)
        return landing;
    const bool upright = (side & CBRS_ORIENT_VERT) != 0;
    const CSize docked = m_bar.CalcDynamicLayout(-1, LM_STRETCH | (upright ? LM_VERTDOCK : LM_HORZ | LM_HORZDOCK));
    CRect strip;
    landing.dockBar->GetWindowRect(strip);
    if (side == CBRS_ALIGN_LEFT)
        strip.right = strip.left + docked.cx;
    else if (side == CBRS_ALIGN_RIGHT)
        strip.left = strip.right - docked.cx;
    else if (side == CBRS_ALIGN_TOP)
        strip.bottom = strip.top + docked.cy;
    else
        strip.top = strip.bottom - docked.cy;
    landing.rect = strip;
    return landing;
}

bool CDockContext::Track(Landing& landing) {
    AfxScreenOutline outline;
    bool moved = false;
    const bool released = AfxTrackPointer(m_bar.m_hWnd, [&](CPoint point) {
        moved = moved || std::abs(point.x - m_start.x) > ::GetSystemMetrics(SM_CXDRAG) ||
                std::abs(point.y - m_start.y) > ::GetSystemMetrics(SM_CYDRAG);
        if (!moved)
            return;
        landing = LandingAt(point, ::GetKeyState(VK_CONTROL) >= 0);
        outline.Show(landing.rect, landing.dockBar != nullptr ? 1 : 3);
    });
    return released && moved;
}

void CDockContext::StartDrag(CPoint point) {
    if (m_bar.m_pDockBar == nullptr || m_bar.m_pDockSite == nullptr)
        return;
    const CWnd* const moved = m_bar.IsFloating() != FALSE ? static_cast<CWnd*>(m_bar.GetParentFrame()) : &m_bar;
    m_start = point;
    moved->GetWindowRect(m_rectStart);
    Landing landing;
    if (!Track(landing))
        return;
    CControlBar& bar = m_bar;
    if (landing.dockBar != nullptr) {
        bar.m_pDockSite->DockControlBar(&bar, landing.dockBar, landing.rect);
    } else {
        m_ptMRUFloatPos = landing.rect.TopLeft();
        bar.m_pDockSite->FloatControlBar(&bar, m_ptMRUFloatPos);
    }
    bar.SendMessage(WM_EXITSIZEMOVE);
}

void CDockContext::ToggleDocking() {
    CFrameWnd* const site = m_bar.m_pDockSite;
    if (site == nullptr)
        return;
    if (m_bar.IsFloating() != FALSE) {
        if (m_bar.m_dwDockStyle == 0)
            return;
        site->DockControlBar(&m_bar, m_uMRUDockID);
        m_bar.SendMessage(WM_EXITSIZEMOVE);
        return;
    }
    if (m_ptMRUFloatPos.x == CW_USEDEFAULT) {
        CRect docked;
        m_bar.GetWindowRect(docked);
        constexpr int away = 32; // so that it is seen to have left its side
        m_ptMRUFloatPos = docked.TopLeft() + CSize(away, away);
    }
    site->FloatControlBar(&m_bar, m_ptMRUFloatPos);
    m_bar.SendMessage(WM_EXITSIZEMOVE);
}
