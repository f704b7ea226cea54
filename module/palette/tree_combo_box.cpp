#include "palette/tree_combo_box.h"

#include "frame/module.h"
#include "palette/dwg_list_box.h"
#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CTreeComboBox, CComboBox)
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_CONTROL_REFLECT(CBN_DROPDOWN, &CTreeComboBox::OnDropDown)
ON_WM_DESTROY()
ON_MESSAGE(WM_TREEITEMPICKED, &CTreeComboBox::OnTreeItemPicked)
END_MESSAGE_MAP()

CTreeComboBox::CTreeComboBox() = default;
CTreeComboBox::~CTreeComboBox() = default;

void CTreeComboBox::CreateTree() {
    m_tree.CreateEx(0, WC_TREEVIEW, nullptr, WS_POPUP | WS_BORDER | TVS_DISABLEDRAGDROP | TVS_SHOWSELALWAYS,
                    CRect(0, 0, 10, 10), GetParent(), 0);
    m_tree.LoadImages();
    m_tree.FillRoot(this);
}

void CTreeComboBox::SelectPath(CString path) {
    m_tree.SelectPath(path);
    Invalidate();
}

void CTreeComboBox::ShowDropDown() {
    constexpr int kFrame = 3;
    const int height =
        static_cast<int>(m_tree.SendMessage(TVM_GETITEMHEIGHT) * m_tree.SendMessage(TVM_GETCOUNT)) + kFrame;
    CRect rc;
    GetWindowRect(rc);
    m_tree.DropAt(rc.left, rc.bottom + 1, GetDroppedWidth(), height);
}

void CTreeComboBox::ToggleTree() {
    if (!m_tree.IsWindowVisible()) {
        ShowDropDown();
        return;
    }
    m_tree.ShowWindow(SW_HIDE);
    m_tree.SetFocus();
}

// The list of the control itself never drops down: it doesn't hear of the mouse.
void CTreeComboBox::OnLButtonDown(UINT /*nFlags*/, CPoint /*point*/) { ToggleTree(); }
void CTreeComboBox::OnLButtonDblClk(UINT /*nFlags*/, CPoint /*point*/) { ToggleTree(); }
void CTreeComboBox::OnDropDown() {}

void CTreeComboBox::OnDestroy() {
    m_tree.FreeAllItems();
    m_tree.DestroyWindow();
    CWnd::OnDestroy();
}

LRESULT CTreeComboBox::OnTreeItemPicked(WPARAM wParam, LPARAM /*lParam*/) {
    const auto* pData = reinterpret_cast<const CTreeItemData*>(wParam);
    const CString path = pData ? pData->m_strPath : CString(); // the data go with the rows
    if (m_pListBox)
        m_pListBox->FillList(path);
    m_tree.FreeAllItems();
    m_tree.FillRoot(this);
    SelectPath(path);
    if (CWinApp* pApp = AfxGetModuleState()->m_pCurrentWinApp)
        pApp->WriteProfileString(LoadResString(IDS_VONDRAKE), "Directory", path);
    return 0;
}

BOOL CTreeComboBox::PreTranslateMessage(MSG* pMsg) {
    if (!m_toolTip.m_hWnd) {
        m_toolTip.Create(this);
        m_toolTip.Activate(FALSE);
    }
    m_toolTip.RelayEvent(pMsg);
    return TranslateKey(*pMsg) || CWnd::PreTranslateMessage(pMsg);
}

BOOL CTreeComboBox::TranslateKey(const MSG& msg) {
    if (msg.message == WM_SYSKEYDOWN && msg.wParam == VK_DOWN) {
        ShowDropDown();
        return TRUE;
    }
    if (msg.message != WM_KEYDOWN)
        return FALSE;
    const bool forward = msg.wParam == VK_DOWN || msg.wParam == VK_RIGHT;
    if (!forward && msg.wParam != VK_UP && msg.wParam != VK_LEFT)
        return FALSE;
    m_tree.StepVisible(forward);
    Invalidate();
    return TRUE;
}

void CTreeComboBox::MeasureItem(LPMEASUREITEMSTRUCT /*lpMeasureItem*/) {}

void CTreeComboBox::DrawItem(LPDRAWITEMSTRUCT lpDrawItem) {
    CDC dc;
    if (!dc.Attach(lpDrawItem->hDC))
        return;
    DrawCurrent(dc, CRect(lpDrawItem->rcItem), lpDrawItem->itemState);
    dc.Detach();
}

void CTreeComboBox::DrawCurrent(CDC& dc, CRect rc, UINT nState) {
    const CTreeItemData* pData = m_tree.DataOf(m_tree.m_hSelected);
    if (!pData)
        return;
    CRect client;
    GetClientRect(client);
    if (CImageList* pImages = m_tree.GetImageList(TVSIL_NORMAL)) {
        constexpr int kOpenFolder = 1;
        const int nImage = pData->m_nImage == 0 ? kOpenFolder : pData->m_nImage;
        ::ImageList_Draw(*pImages, nImage, dc, 4, (client.Height() - m_nIconWidth) / 2, ILD_NORMAL);
    }
    const CString& label = pData->m_strLabel;
    rc = CRect(rc.left + m_nIconWidth + 2, rc.top + 1, 0, rc.bottom - 1);
    rc.right = rc.left + dc.GetTextExtent(label).cx + 4;
    COLORREF textColor = ::GetSysColor(COLOR_WINDOWTEXT);
    if ((nState & ODS_SELECTED) != 0) {
        dc.FillSolidRect(rc, ::GetSysColor(COLOR_HIGHLIGHT));
        dc.DrawFocusRect(rc);
        textColor = ~textColor & 0x00FFFFFF;
    }
    dc.SetTextColor(textColor);
    rc.left += 2;
    ::DrawTextA(dc, label, label.GetLength(), rc, DT_SINGLELINE | DT_VCENTER);
}
