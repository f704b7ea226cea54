#include "attributes/edit_list_ctrl.h"

#include "attributes/attribute_list_owner.h"

namespace {

constexpr UINT kEditId = 110;
constexpr DWORD kEditStyle = WS_CHILD | WS_CLIPSIBLINGS | ES_AUTOHSCROLL;
constexpr WPARAM kMostCharacters = 36000;
constexpr int kPromptWidth = 100;      // pixels
constexpr int kColumnMargin = 4;       // what the columns leave free of the list's width
constexpr LONG kInsideFirstColumn = 2; // pixels

// The box leaves the grid lines free and lays its text over the cell's.
constexpr LONG kTopMargin = 2;
constexpr LONG kLeftMargin = 6;
constexpr LONG kBottomMargin = 1;

} // namespace

BEGIN_MESSAGE_MAP(CEditListCtrl, CListCtrl)
ON_WM_LBUTTONDOWN()
ON_WM_VSCROLL()
ON_WM_HSCROLL()
ON_NOTIFY_REFLECT(LVN_ITEMCHANGED, &CEditListCtrl::OnItemChanged)
ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CEditListCtrl::OnCustomDraw)
END_MESSAGE_MAP()

CEditListCtrl::~CEditListCtrl() = default;

void CEditListCtrl::InsertCellColumns(const CString& strPrompts, const CString& strValues) {
    CRect rect;
    GetWindowRect(rect);
    InsertColumn(0, strPrompts, LVCFMT_LEFT, kPromptWidth);
    InsertColumn(1, strValues, LVCFMT_LEFT, rect.Width() - kPromptWidth - kColumnMargin);
    SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_GRIDLINES, LVS_EX_GRIDLINES);
    FitRowsToEdit();
}

void CEditListCtrl::LockRow(int nRow) {
    SetItemState(nRow, LVIS_CUT, LVIS_CUT);
    SendMessage(LVM_REDRAWITEMS, static_cast<WPARAM>(nRow), nRow); // the list itself greys no texts for that state
}

int CEditListCtrl::NextRow(int nRow, int nStep) const {
    const int nCount = GetItemCount();
    for (int nTried = 0; nTried < nCount; ++nTried) {
        nRow = (nRow + nStep + nCount) % nCount;
        if (!IsRowLocked(nRow))
            return nRow;
    }
    return -1;
}

void CEditListCtrl::FitRowsToEdit() {
    CImageList rowHeight;
    if (!rowHeight.Create(1, ::GetSystemMetrics(SM_CYSMICON), ILC_COLOR, 1, 1))
        return;
    SetImageList(&rowHeight, LVSIL_SMALL);
    rowHeight.Detach(); // the control destroys it
}

void CEditListCtrl::EditCell(int nRow, int nCol) {
    // Stored before the box hides and loses the focus by it: what was typed belongs to the row it was typed in.
    const bool bCell = nRow > -1 && nCol > -1;
    m_editRow = bCell ? nRow : -1;
    m_editCol = bCell ? nCol : -1;
    HideEdit();
    m_edit.m_commitEnabled = false;
    if (m_editRow == -1 || m_editCol != 1)
        return;

    const CString strText = GetItemText(nRow, nCol);
    if (m_edit.GetSafeHwnd())
        m_edit.SetWindowText(strText);
    if (m_ownerDlg)
        m_ownerDlg->ShowRow(nRow);
    if (IsRowLocked(nRow))
        return;
    EnsureVisible(nRow, FALSE);
    CRect rect;
    GetSubItemRect(nRow, nCol, LVIR_LABEL, rect);
    rect.top += kTopMargin;
    rect.left += kLeftMargin;
    rect.bottom -= kBottomMargin;
    PlaceEdit(rect);

    const DWORD_PTR nLimit = GetItemData(nRow);
    m_edit.SendMessage(EM_LIMITTEXT, nLimit != 0 ? nLimit : kMostCharacters);
    m_edit.m_openingText = strText;
    m_edit.SetWindowText(strText);
    m_edit.SetWindowPos(&CWnd::wndTop, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    m_edit.ShowWindow(SW_SHOW);
    m_edit.SendMessage(EM_SETSEL, 0, strText.GetLength());
    m_edit.m_commitEnabled = true;
    m_edit.SetFocus();
}

void CEditListCtrl::HideEdit() {
    if (m_edit.GetSafeHwnd())
        m_edit.ShowWindow(SW_HIDE);
}

void CEditListCtrl::PlaceEdit(const CRect& rect) {
    if (!m_edit.GetSafeHwnd()) {
        m_edit.Create(kEditStyle, rect, this, kEditId);
        m_edit.SendMessage(WM_SETFONT, static_cast<WPARAM>(SendMessage(WM_GETFONT)), TRUE);
        // Without margins the text begins where the cell's does.
        m_edit.SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELPARAM(0, 0));
    }
    m_edit.MoveWindow(rect, TRUE);
}

void CEditListCtrl::SetCellText(CString strText, int nCol) {
    SetItemText(m_editRow, nCol, strText);
    EnableApply();
}

void CEditListCtrl::EnableApply() {
    if (m_ownerDlg)
        m_ownerDlg->EnableApply();
}

/// The row whose whole width holds the point; -1 for none.
int CEditListCtrl::RowAt(CPoint point) const {
    const int nCount = GetItemCount();
    for (int nRow = 0; nRow < nCount; ++nRow) {
        CRect rect;
        if (GetItemRect(nRow, rect, LVIR_BOUNDS) && rect.PtInRect(point))
            return nRow;
    }
    return -1;
}

void CEditListCtrl::OnLButtonDown(UINT nFlags, CPoint point) {
    CListCtrl::OnLButtonDown(nFlags, point);
    LVHITTESTINFO hit{};
    hit.pt = point;
    if (SubItemHitTest(&hit) == -1) {
        // To the right of the last column the click still has a row.
        hit = {};
        hit.pt = CPoint(kInsideFirstColumn, point.y);
        SubItemHitTest(&hit);
    }
    if (hit.iItem != -1) {
        if (hit.iSubItem != 0)
            EditCell(hit.iItem, hit.iSubItem);
        return;
    }
    if (const int nRow = RowAt(point); nRow != -1)
        EditCell(nRow, 1);
}

void CEditListCtrl::OnVScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar) {
    HideEdit();
    CListCtrl::OnVScroll(nSBCode, nPos, pScrollBar);
}

void CEditListCtrl::OnHScroll(UINT nSBCode, UINT nPos, CWnd* pScrollBar) {
    HideEdit();
    CListCtrl::OnHScroll(nSBCode, nPos, pScrollBar);
}

void CEditListCtrl::OnItemChanged(NMHDR* /*pNMHDR*/, LRESULT* pResult) {
    EnableApply();
    *pResult = 0;
}

void CEditListCtrl::OnCustomDraw(NMHDR* pNMHDR, LRESULT* pResult) {
    auto* const pDraw = reinterpret_cast<LPNMLVCUSTOMDRAW>(pNMHDR);
    *pResult = CDRF_DODEFAULT;
    if (pDraw->nmcd.dwDrawStage == CDDS_PREPAINT)
        *pResult = CDRF_NOTIFYITEMDRAW;
    else if (pDraw->nmcd.dwDrawStage == CDDS_ITEMPREPAINT && IsRowLocked(static_cast<int>(pDraw->nmcd.dwItemSpec)))
        pDraw->clrText = ::GetSysColor(COLOR_GRAYTEXT);
}
