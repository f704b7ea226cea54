// CAdUiDockControlBar: the host's dock bar, from which modules derive their palettes.
//
//     class CTools : public CAdUiDockControlBar { ... };      // makes its contents in OnCreate, moves them in
//     SizeChanged CTools* bar = new CTools; bar->Create(className, "Tools", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
//     rect, acedGetAcadFrame(), id); bar->SetToolID(&kToolId);                               // its name in the user's
//     profile bar->EnableDocking(CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT); bar->RestoreControlBar(AFX_IDW_DOCKBAR_LEFT);
//
// The user drags it by its gripper or by its floating window's caption, sizes it by its inner edge or the floating
// window's edges, toggles by a double click, closes it by its button, and has a menu on the right button. Where he
// leaves it is kept in the profile and holds for the next bar with that tool id, in this run of the program or another;
// whether it was closed isn't, since whoever makes a bar wants it seen.
#pragma once

#include "mfc/afx.h"

// Style of the constructor.
constexpr int ADUI_DOCK_CS_DESTROY_ON_CLOSE = 0x01; // closing ends the window; else it hides
constexpr int ADUI_DOCK_CS_STDMOUSECLICKS = 0x02;   // double click and menu as above; else they do nothing

// Commands of its menu that derived bars may take out.
constexpr UINT ID_ADUI_ALLOW_DOCKING = 0x1001;
constexpr UINT ID_ADUI_HIDE_BAR = 0x1002;

class CAdUiDockControlBar : public CControlBar {
    DECLARE_DYNAMIC(CAdUiDockControlBar)

public:
    explicit CAdUiDockControlBar(int nStyle = ADUI_DOCK_CS_STDMOUSECLICKS);
    ~CAdUiDockControlBar() override;

    /// A child of the main frame, of the rectangle's size where it floats and of its width where it is docked; it
    /// stands nowhere before RestoreControlBar. FALSE, with a line on the command line, when there is no frame.
    BOOL Create(LPCSTR className, LPCSTR windowName, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                void* context = nullptr) override;
    /// Before RestoreControlBar. Without one the bar's place isn't kept.
    void SetToolID(const GUID* pToolID);
    /// The sides (CBRS_ALIGN_) at which it may dock.
    void EnableDocking(DWORD dwDockStyle);
    /// Brings the bar to sight. A new one goes where the profile says, or else to that side (AFX_IDW_DOCKBAR_FLOAT: to
    /// none), floating in that rectangle of the screen.
    void RestoreControlBar(UINT nPreferredDockBarID = AFX_IDW_DOCKBAR_LEFT,
                           const CRect* pInitialFloatingRect = nullptr);
    /// The window that it floats in, or would float in; screen coordinates. Empty when it never had a place.
    void GetFloatingRect(CRect* pRect) const;

    CSize CalcDynamicLayout(int nLength, DWORD nMode) override;
    void OnUpdateCmdUI(CFrameWnd* pTarget, BOOL bDisableIfNoHndler) override;
    void OnBarStyleChange(DWORD dwOldStyle, DWORD dwNewStyle) override;

protected:
    /// Whether the frame gets the focus when the bar itself would get it, as by a click on its gripper.
    virtual bool CanFrameworkTakeFocus() { return true; }
    /// Everything but the children; the default fills the bar and draws the gripper.
    virtual void PaintControlBar(CDC* pDC);
    /// `rect` in client coordinates.
    virtual void DrawGripper(CDC* pDC, const CRect& rect);
    /// The bar has another size: `lpRect` is the room below the gripper, in client coordinates, and the callee's to
    /// change; `flags` is WM_SIZE's kind.
    virtual void SizeChanged(CRect* lpRect, BOOL bFloating, int flags);
    /// The user closes the bar; false keeps it open.
    virtual bool OnClosing() { return true; }
    /// The user drags an edge (WMSZ_) of the floating window; the rectangle (screen) may be changed.
    virtual void OnUserSizing(UINT nSide, LPRECT pRect);
    /// Before the menu (an HMENU) comes up. FALSE, or a menu without items: none is shown.
    virtual BOOL AddCustomMenuItems(LPARAM hMenu);
    /// The least size of the floating window; both hold what the host proposes.
    virtual void GetFloatingMinSize(long* pWidth, long* pHeight);

    void OnSize(UINT type, int width, int height);
    void OnPaint();
    BOOL OnEraseBkgnd(CDC*) { return TRUE; } // painted as a whole
    void OnNcCalcSize(BOOL calculate, NCCALCSIZE_PARAMS* parameters);
    void OnNcPaint();
    LRESULT OnNcHitTest(CPoint point);
    void OnNcLButtonDown(UINT hitTest, CPoint point);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnContextMenu(CWnd* window, CPoint point);
    void OnSetFocus(CWnd* former);
    void OnClose();
    void OnGetMinMaxInfo(MINMAXINFO* info);
    void OnSizing(UINT side, LPRECT rect);
    LRESULT OnExitSizeMove(WPARAM wParam, LPARAM lParam);
    void OnAllowDocking();
    void OnMoveCommand(UINT nID);

    DECLARE_MESSAGE_MAP()

private:
    void StandSomewhere(UINT nPreferredDockBarID, const CRect* pInitialFloatingRect);
    void Float();
    void AllowDocking(bool bAllow);
    void SavePlace() const;
    void SetFloatingRect(CRect rect);
    [[nodiscard]] bool IsUpright() const { return (m_dwStyle & CBRS_ORIENT_VERT) != 0; }
    [[nodiscard]] CRect GripperRect() const;
    [[nodiscard]] CRect CloseButtonRect() const;
    /// The strip by which a docked bar is sized; relative to the window. Empty while it floats.
    [[nodiscard]] CRect EdgeRect() const;
    void TrackEdge(CPoint start);
    void TrackCloseButton();
    void DrawCloseButton(CDC* pDC, bool bPressed) const;
    void FillMenu(CMenu& menu) const;

    const int m_nStyle;
    DWORD m_dwSides = 0; // EnableDocking's, also while the user doesn't allow docking
    bool m_bAllowDocking = true;
    CSize m_szDocked{150, 150};   // width left or right, height at top or bottom
    CSize m_szFloating{150, 300}; // of the bar, without its frame
    CString m_strToolID;
    mutable CFont m_font; // made when first needed
};
