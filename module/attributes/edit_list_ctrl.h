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
    /// Two columns over the list's width, with grid lines and rows that fit the box.
    void InsertCellColumns(const CString& strPrompts, const CString& strValues);
    /// A row without a cell to edit: it is greyed, and the box never opens on it.
    void LockRow(int nRow);
    [[nodiscard]] bool IsRowLocked(int nRow) const { return GetItemState(nRow, LVIS_CUT) != 0; }
    /// The row `nStep` (1 or -1) further on that isn't locked, around the ends. -1 when all are.
    [[nodiscard]] int NextRow(int nRow, int nStep) const;

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
    void OnCustomDraw(NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()

private:
    void HideEdit();
    void PlaceEdit(const CRect& rect);
    void EnableApply();
    [[nodiscard]] int RowAt(CPoint point) const;
};
