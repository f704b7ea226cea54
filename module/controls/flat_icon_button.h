// A push button with an icon and a tool tip. Flat, it has no border until the mouse is over it; raised, it looks like
// any other button.
//
//     DDX_Control(pDX, IDC_PREVIEW, m_btnPreview);            // a button of a dialog template
//     m_btnPreview.SetIcons(IDI_PREVIEW, IDI_PREVIEW);
//     m_btnPreview.SetToolTip("Preview a block or drawing", TRUE);
#pragma once

#include "mfc/afx.h"

class CFlatIconButton : public CButton {
public:
    CFlatIconButton();
    ~CFlatIconButton() override;

    /// Icons of the module, by number, of which the low 16 bits count. Without a normal one the hot icon serves for
    /// both. An icon that is missing isn't painted.
    void SetIcons(UINT nHotId, UINT nNormalId);
    /// Takes both icons over, and destroys those held so far.
    void SetIconHandles(HICON hHot, HICON hNormal);
    void SetFlat(BOOL bFlat);
    /// The one tip of the button; a second call changes its text.
    void SetToolTip(const CString& strText, BOOL bActive);

    void PreSubclassWindow() override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItem) override;

protected:
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnKillFocus(CWnd* pNewWnd);
    void OnCaptureChanged(CWnd* pWnd);
    HBRUSH CtlColor(CDC* pDC, UINT nCtlColor);

    DECLARE_MESSAGE_MAP()

private:
    void EnsureToolTip();
    void DestroyIcons();
    void DrawPressedBorder(CDC& dc, const CRect& rc) const;
    void DrawReleasedBorder(CDC& dc, const CRect& rc) const;
    /// Paints the icon and takes its place off the caption's rectangle.
    void DrawButtonIcon(CDC& dc, const CRect& item, UINT nState, BOOL bCaption, CRect& caption) const;
    void DrawCaption(CDC& dc, const CString& strCaption, CRect caption, UINT nState) const;
    [[nodiscard]] BOOL IsHot(UINT nState) const { return m_bHover == 1 || (nState & ODS_SELECTED) != 0; }

    BOOL m_bFlat = 1;
    BOOL m_bHover = 0; ///< the mouse is over the button
    CToolTipCtrl m_toolTip;
    HICON m_hIconHot = nullptr; ///< with the mouse over the button, and while it is pressed
    HICON m_hIconNormal = nullptr;
    BYTE m_nIconHeight = 0; ///< pixels
    BYTE m_nIconWidth = 0;
    BOOL m_bDefault = 0; ///< the template made it the default button
    COLORREF m_clrBackNormal;
    COLORREF m_clrTextNormal;
    COLORREF m_clrBackHot;
    COLORREF m_clrTextHot;
};
