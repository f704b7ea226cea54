// A list in report view whose cells of column 1 are edited in place: a click lays an edit box over the cell, and the
// cell takes what is typed at every keystroke. The item data of a row is the most characters that its cell takes; 0
// stands for no limit of its own.
//
//     DDX_Control(pDX, IDC_ATTRIBUTES, m_list);
//     m_list.SetItemData(nRow, nFieldLength);
//     ... m_list.GetItemText(nRow, 1) ...
#pragma once

#include "attributes/in_place_edit.h"

class CAttributeListOwner;

class CEditListCtrl : public CListCtrl {
public:
    ~CEditListCtrl() override;

    /// Makes rows as high as small icons, so that the box, which is lower than its row, shows whole letters.
    void FitRowsToEdit();

    /// Opens the box on a cell and brings its row into view. Only cells of column 1 have a box; elsewhere, and with
    /// -1 for none, it is hidden.
    void EditCell(int nRow, int nCol);
    /// Writes into that column of the row on which the box stands, and tells the owner.
    void SetCellText(CString strText, int nCol);

    CInPlaceEdit m_edit;                       ///< made at its first use, then moved, shown and hidden
    int m_editRow = 0;                         ///< where the box stands or stood last; -1 for none
    int m_editCol = 1;                         ///< the same
    CAttributeListOwner* m_ownerDlg = nullptr; ///< whom to tell; null for nobody

protected:
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnVScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar);
    void OnHScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar);
    void OnItemChanged(NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()

private:
    void HideEdit();
    void PlaceEdit(const CRect& rect);
    void EnableApply();
    [[nodiscard]] int RowAt(CPoint point) const;
};
