// CDockBar: the strip at one side of a frame that holds docked bars. CMiniDockFrameWnd: the small window of a floating
// one. Both are made by CFrameWnd; a program meets them when it asks where a bar is.
#pragma once

#include "mfc/control_bar.h"
#include "mfc/frame.h"

#include <vector>

/// Its bars stand beside each other, from left to right or from top to bottom, each as long as the side.
class CDockBar : public CControlBar {
    DECLARE_DYNAMIC(CDockBar)

public:
    /// `bFloating`: the one bar within a floating frame.
    explicit CDockBar(BOOL bFloating = FALSE) : m_bFloating(bFloating) {}
    ~CDockBar() override;

    /// `dwStyle`: the side as a CBRS_ALIGN_ bit.
    BOOL Create(CWnd* pParent, DWORD dwStyle, UINT nID);
    using CWnd::Create;

    /// Takes the bar from wherever it was; a floating frame that it leaves empty ends. `pRect` (screen) tells its place
    /// among the others; null: the last.
    void DockControlBar(CControlBar* pBar, LPCRECT pRect = nullptr);
    void RemoveControlBar(CControlBar* pBar);
    /// In their order; not owned.
    [[nodiscard]] const std::vector<CControlBar*>& GetBars() const { return m_bars; }
    [[nodiscard]] CControlBar* GetFirstVisibleBar() const;

    /// Puts the bars in their places.
    void PlaceBars();

    CSize CalcFixedLayout(BOOL bStretch, BOOL bHorz) override;
    void OnUpdateCmdUI(CFrameWnd*, BOOL) override {}
    [[nodiscard]] BOOL IsVisible() const override { return TRUE; }

    const BOOL m_bFloating;

protected:
    void OnSize(UINT type, int width, int height);

    DECLARE_MESSAGE_MAP()

private:
    /// Along the strip's depth: left to right, or top to bottom.
    [[nodiscard]] bool SideBySide() const { return (m_dwStyle & CBRS_ORIENT_VERT) != 0; }
    [[nodiscard]] CSize SizeOf(CControlBar& bar) const;

    std::vector<CControlBar*> m_bars;
};

/// Owned by the frame whose bar it holds; deletes itself with its window. Its caption moves and docks the bar.
class CMiniDockFrameWnd : public CFrameWnd {
    DECLARE_DYNAMIC(CMiniDockFrameWnd)

public:
    ~CMiniDockFrameWnd() override;

    /// Hidden at first. `dwBarStyle`: with CBRS_SIZE_DYNAMIC all its edges can be dragged.
    BOOL Create(CFrameWnd* pOwner, DWORD dwBarStyle);
    using CFrameWnd::Create;
    [[nodiscard]] CDockBar& GetDockBar() { return m_wndDockBar; }
    /// As large as its bar wants to be, with the bar's text for a title.
    void RecalcLayout(BOOL bNotify = TRUE) override;
    /// Looks active while any window of its owner's is.
    void ShowActive(BOOL bActive);
    /// The whole window around a bar of this size.
    [[nodiscard]] static CSize FrameSize(CSize barSize, DWORD dwBarStyle);

    void PostNcDestroy() override { delete this; }
    /// The limits of its size, what the user does to it, and that he has done it, are the bar's to hear:
    /// WM_GETMINMAXINFO, WM_SIZING, WM_EXITSIZEMOVE.
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

protected:
    void OnSize(UINT type, int width, int height);
    void OnClose();
    void OnSetFocus(CWnd* former);
    void OnNcLButtonDown(UINT hitTest, CPoint point);
    void OnNcLButtonDblClk(UINT hitTest, CPoint point);
    void OnContextMenu(CWnd* window, CPoint point);
    BOOL OnNcActivate(BOOL active);

    DECLARE_MESSAGE_MAP()

private:
    /// The bar that a click on the caption means; null without one.
    [[nodiscard]] CControlBar* DraggedBar() const { return m_wndDockBar.GetFirstVisibleBar(); }

    CDockBar m_wndDockBar{TRUE};
    BOOL m_bActive = TRUE;
};
