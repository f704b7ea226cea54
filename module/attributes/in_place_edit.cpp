#include "attributes/in_place_edit.h"

#include "attributes/edit_list_ctrl.h"

BEGIN_MESSAGE_MAP(CInPlaceEdit, CEdit)
ON_WM_KILLFOCUS()
ON_CONTROL_REFLECT(EN_CHANGE, &CInPlaceEdit::CommitIfChanged)
END_MESSAGE_MAP()

CInPlaceEdit::~CInPlaceEdit() = default;

CEditListCtrl& CInPlaceEdit::List() const { return *static_cast<CEditListCtrl*>(GetParent()); }

BOOL CInPlaceEdit::PreTranslateMessage(MSG* pMsg) {
    if (pMsg->message == WM_KEYDOWN && pMsg->hwnd == m_hWnd) {
        const CEditListCtrl& list = List();
        if (pMsg->wParam == VK_RETURN && list.NextRow(list.m_editRow, 1) > list.m_editRow)
            pMsg->wParam = VK_DOWN;
        if (pMsg->wParam == VK_DOWN)
            MoveBy(1);
        else if (pMsg->wParam == VK_UP)
            MoveBy(-1);
    }
    return CEdit::PreTranslateMessage(pMsg);
}

void CInPlaceEdit::MoveBy(int nStep) {
    CEditListCtrl& list = List();
    const int nRow = list.NextRow(list.m_editRow, nStep);
    if (nRow == -1)
        return;
    list.EditCell(nRow, 1);
    // The key goes on to the box, which moves its caret by it and would leave the new cell's text unselected.
    PostMessage(EM_SETSEL, 0, -1);
}

void CInPlaceEdit::OnKillFocus(CWnd* pNewWnd) {
    CEdit::OnKillFocus(pNewWnd);
    CommitIfChanged();
}

void CInPlaceEdit::CommitIfChanged() {
    if (!IsWindowVisible())
        return;
    CString strText;
    GetWindowText(strText);
    CEditListCtrl& list = List();
    // Text that was typed back to what it was has left another one in the cell: what the box shows is what counts.
    const bool bChanged = strText != m_openingText || strText != list.GetItemText(list.m_editRow, 1);
    if (bChanged && m_commitEnabled)
        list.SetCellText(strText, 1);
}
