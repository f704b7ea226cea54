// CControlBar: a window at a side of a frame window, or floating before it.
//
// A frame lays its bars out one after the other in the order in which they were made: each takes a strip off the side
// that its style names (CFrameWnd::RecalcLayout). A bar that may dock lives in one of the frame's dock bars
// (dock_bar.h) and is moved there and between them by CFrameWnd::DockControlBar and FloatControlBar, or by the user:
//
//     bar.SetBarStyle(CBRS_LEFT | CBRS_SIZE_DYNAMIC);
//     bar.EnableDocking(CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT);
//     frame.EnableDocking(CBRS_ALIGN_ANY);
//     frame.DockControlBar(&bar, AFX_IDW_DOCKBAR_LEFT);
//
// Not done: several bars in one row of a dock bar (each has a row of its own), delayed layout, tool tips and fly-by
// help, borders and grippers drawn by the base class, saving of all bars' places at once.
#pragma once

#include "mfc/wnd.h"

#include <memory>

class CDockBar;
class CDockContext;

// Ids of bars and of what they leave over.
constexpr UINT AFX_IDW_CONTROLBAR_FIRST = 0xE800;
constexpr UINT AFX_IDW_CONTROLBAR_LAST = 0xE8FF;
constexpr UINT AFX_IDW_DOCKBAR_TOP = 0xE81B;
constexpr UINT AFX_IDW_DOCKBAR_LEFT = 0xE81C;
constexpr UINT AFX_IDW_DOCKBAR_RIGHT = 0xE81D;
constexpr UINT AFX_IDW_DOCKBAR_BOTTOM = 0xE81E;
constexpr UINT AFX_IDW_DOCKBAR_FLOAT = 0xE81F;
constexpr UINT AFX_IDW_PANE_FIRST = 0xE900; ///< what fills the frame's middle
constexpr UINT AFX_IDW_PANE_LAST = 0xE9FF;

// Styles of a bar.
constexpr DWORD CBRS_FLOATING = 0x0001;     // set while it floats
constexpr DWORD CBRS_SIZE_DYNAMIC = 0x0004; // the user may size it where it floats
constexpr DWORD CBRS_ALIGN_LEFT = 0x1000;
constexpr DWORD CBRS_ALIGN_TOP = 0x2000;
constexpr DWORD CBRS_ALIGN_RIGHT = 0x4000;
constexpr DWORD CBRS_ALIGN_BOTTOM = 0x8000;
constexpr DWORD CBRS_ALIGN_ANY = CBRS_ALIGN_LEFT | CBRS_ALIGN_TOP | CBRS_ALIGN_RIGHT | CBRS_ALIGN_BOTTOM;
constexpr DWORD CBRS_ORIENT_HORZ = CBRS_ALIGN_TOP | CBRS_ALIGN_BOTTOM;
constexpr DWORD CBRS_ORIENT_VERT = CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT;
constexpr DWORD CBRS_NOALIGN = 0;
constexpr DWORD CBRS_LEFT = CBRS_ALIGN_LEFT;
constexpr DWORD CBRS_TOP = CBRS_ALIGN_TOP;
constexpr DWORD CBRS_RIGHT = CBRS_ALIGN_RIGHT;
constexpr DWORD CBRS_BOTTOM = CBRS_ALIGN_BOTTOM;
constexpr DWORD CBRS_ALL = 0xFFFF;

// What CalcDynamicLayout is asked for.
constexpr DWORD LM_STRETCH = 0x01;  // as long as the side
constexpr DWORD LM_HORZ = 0x02;     // lying, else upright
constexpr DWORD LM_MRUWIDTH = 0x04; // floating, at the size that it had last
constexpr DWORD LM_HORZDOCK = 0x08; // docked at top or bottom
constexpr DWORD LM_VERTDOCK = 0x10; // docked left or right

class CControlBar : public CWnd {
    DECLARE_DYNAMIC(CControlBar)

public:
    CControlBar();
    ~CControlBar() override;

    /// CBRS_ bits.
    [[nodiscard]] DWORD GetBarStyle() const { return m_dwStyle; }
    void SetBarStyle(DWORD style);
    [[nodiscard]] BOOL IsFloating() const { return (m_dwStyle & CBRS_FLOATING) != 0; }
    /// Shown, or to be shown; whether its frame is visible doesn't count.
    [[nodiscard]] virtual BOOL IsVisible() const;
    /// The frame that it docks at; null without one.
    [[nodiscard]] CFrameWnd* GetDockingFrame() const { return m_pDockSite; }

    /// The sides (CBRS_ALIGN_) at which the user may dock it; 0: it floats. The bar gets what dragging needs.
    void EnableDocking(DWORD dwDockStyle);

    /// Pixels that the bar wants at a side. With `bStretch` it has the side for itself.
    virtual CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz);
    /// The same for the state that the LM_ bits name; `nLength` -1: as it wants to be.
    virtual CSize CalcDynamicLayout(int nLength, DWORD nMode);
    /// At idle time: the states of its buttons.
    virtual void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) = 0;
    /// The style has changed; both are CBRS_ bits.
    virtual void OnBarStyleChange(DWORD /*dwOldStyle*/, DWORD /*dwNewStyle*/) {}

    /// Of a floating bar, with its frame.
    BOOL DestroyWindow() override;
    /// Frames first, for their keys; then the keys of a dialog.
    BOOL PreTranslateMessage(MSG* message) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    CFrameWnd* m_pDockSite = nullptr;             ///< not owned
    CDockBar* m_pDockBar = nullptr;               ///< the dock bar that it lives in; not owned
    std::unique_ptr<CDockContext> m_pDockContext; ///< null until EnableDocking
    DWORD m_dwDockStyle = 0;                      ///< what EnableDocking was given

protected:
    int OnCreate(LPCREATESTRUCT create);
    void OnDestroy();
    /// Closed by the user: hides the bar.
    void OnClose();
    LRESULT OnSizeParent(WPARAM wParam, LPARAM lParam);
    LRESULT OnIdleUpdateCmdUI(WPARAM wParam, LPARAM lParam);
    BOOL OnEraseBkgnd(CDC* dc);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);

    DWORD m_dwStyle = 0; ///< CBRS_ bits

    DECLARE_MESSAGE_MAP()

private:
    friend class CFrameWnd;
    enum class Pending { nothing, show, hide };
    Pending m_pending = Pending::nothing; // ShowControlBar with a delay
};
