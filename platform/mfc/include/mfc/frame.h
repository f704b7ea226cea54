// CFrameWnd: a program's main window: menu, accelerators, update queries for its menus, commands routed on to the
// application; bars at its sides, laid out around what fills its middle (the child AFX_IDW_PANE_FIRST, where there is
// one).
#pragma once

#include "mfc/control_bar.h"
#include "mfc/wnd.h"

#include <array>
#include <memory>
#include <vector>

class CDockBar;
class CMiniDockFrameWnd;

class CFrameWnd : public CWnd {
    DECLARE_DYNAMIC(CFrameWnd)

public:
    CFrameWnd();
    ~CFrameWnd() override;

    /// Where the platform is to choose place and size.
    static const CRect rectDefault;

    virtual BOOL Create(LPCSTR className, LPCSTR title, DWORD style = WS_OVERLAPPEDWINDOW,
                        const RECT& rect = rectDefault, CWnd* parent = nullptr, UINT menuId = 0, DWORD exStyle = 0);
    using CWnd::Create;
    /// The keys that stand for commands.
    BOOL LoadAccelTable(UINT id);

    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;

    // Bars. Those that a frame knows are its children and dock bars' children; none is owned.

    /// Makes the dock bars of these sides (CBRS_ALIGN_). Bars that were made before lie outside of them.
    void EnableDocking(DWORD dwDockStyle);
    /// Docks a bar at the side of that dock bar (0: the first side that both allow); `pRect` (screen) gives its place
    /// among others. Does nothing at a side that wasn't enabled.
    void DockControlBar(CControlBar* pBar, UINT nDockBarID = 0, LPCRECT pRect = nullptr);
    void DockControlBar(CControlBar* pBar, CDockBar* pDockBar, LPCRECT pRect = nullptr);
    /// Lets a bar float with its window's corner at a point of the screen. The floating frame; null when it can't be
    /// made.
    CFrameWnd* FloatControlBar(CControlBar* pBar, CPoint point);
    /// With `bDelay` at the next idle time.
    void ShowControlBar(CControlBar* pBar, BOOL bShow, BOOL bDelay);
    /// The bar with that id, wherever it is; null when there is none.
    [[nodiscard]] CControlBar* GetControlBar(UINT nID) const;
    /// Null when that side wasn't enabled.
    [[nodiscard]] CDockBar* GetDockBar(UINT nID) const;
    /// The side (CBRS_ALIGN_) among `dwDockStyle` where a bar that lies at `rect` (screen) would dock; 0: none.
    [[nodiscard]] DWORD CanDock(CRect rect, DWORD dwDockStyle, CDockBar** ppDockBar = nullptr) const;
    /// Lays bars and middle out anew.
    virtual void RecalcLayout(BOOL bNotify = TRUE);
    /// For bars: they come and go by themselves.
    void AddControlBar(CControlBar* pBar);
    void RemoveControlBar(CControlBar* pBar);

    /// Items that nobody handles are shown disabled.
    BOOL m_bAutoMenuEnable = TRUE;

protected:
    void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
    void OnSize(UINT type, int width, int height);
    void OnActivate(UINT state, CWnd* other, BOOL minimized);
    LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);
    void OnClose();

    DECLARE_MESSAGE_MAP()

private:
    [[nodiscard]] CMiniDockFrameWnd* CreateFloatingFrame(DWORD dwBarStyle);

    HACCEL m_hAccelTable = nullptr;
    std::vector<CControlBar*> m_controlBars;
    std::array<std::unique_ptr<CDockBar>, 4> m_dockBars; // in the order of their ids
    bool m_bInRecalcLayout = false;
};
