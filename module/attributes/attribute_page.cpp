#include "attributes/attribute_page.h"

#include "attributes/attribute_access.h"
#include "attributes/enhanced_attribute_dlg.h"

#include <algorithm>

CAttributePage::~CAttributePage() = default;

void CAttributePage::OnOK() {}

void CAttributePage::OnCancel() {}

BOOL CAttributePage::PreTranslateMessage(MSG* pMsg) {
    // The editor moves the focus, or Tab would never leave the page.
    if (pMsg->message == WM_KEYDOWN && pMsg->wParam == VK_TAB)
        return CWnd::PreTranslateMessage(pMsg); // NOLINT(bugprone-parent-virtual-call)
    return CDialog::PreTranslateMessage(pMsg);
}

void CAttributePage::FitLabels() {
    CClientDC dc(this);
    CFont* const pFormer = dc.SelectObject(GetFont());
    for (CWnd* pControl = GetWindow(GW_CHILD); pControl; pControl = pControl->GetWindow(GW_HWNDNEXT)) {
        if (pControl->GetDlgCtrlID() != IDC_STATIC)
            continue;
        CString strText;
        pControl->GetWindowText(strText);
        CRect text;
        dc.DrawText(strText, text, DT_SINGLELINE | DT_CALCRECT);
        CRect rect;
        pControl->GetWindowRect(rect);
        ScreenToClient(rect);
        rect.left = std::min(rect.left, rect.right - text.Width());
        pControl->MoveWindow(rect);
    }
    dc.SelectObject(pFormer);
}

AcDbText* CAttributePage::OpenAttributeForWrite() { return OpenChecked<AcDbText>(m_attributeId, AcDb::kForWrite); }

void CAttributePage::UpdateEditor() { static_cast<CEnhancedAttributeDlg*>(GetParent())->UpdateBlockGraphics(true); }

void CAttributePage::EnableControls(bool bEnable) {
    for (CWnd* pControl = GetWindow(GW_CHILD); pControl; pControl = pControl->GetWindow(GW_HWNDNEXT))
        pControl->EnableWindow(bEnable);
}

void CAttributePage::FillFromTable(CComboBox& combo, AcDbObjectId tableId, AcDbObjectId current) {
    combo.ResetContent();
    AcDbSymbolTable* const pTable = OpenChecked<AcDbSymbolTable>(tableId, AcDb::kForRead);
    if (!pTable)
        return;
    AcDbSymbolTableIterator* pIterator = nullptr;
    if (pTable->newIterator(pIterator, true, true) == Acad::eOk) {
        const std::unique_ptr<AcDbSymbolTableIterator> iterator(pIterator);
        for (; !pIterator->done(); pIterator->step(true, true))
            AddRecord(combo, *pIterator);
    }
    pTable->close();
    // Only now: a row that sorts in before the selected one would move it.
    for (int nRow = 0; nRow < combo.GetCount(); ++nRow)
        if (RecordOfRow(combo, nRow) == current)
            combo.SetCurSel(nRow);
}

void CAttributePage::AddRecord(CComboBox& combo, const AcDbSymbolTableIterator& iterator) {
    AcDbSymbolTableRecord* pRecord = nullptr;
    if (iterator.getRecord(pRecord, AcDb::kForRead) != Acad::eOk)
        return;
    if (char* pszName = nullptr; pRecord->getName(pszName) == Acad::eOk) {
        // The style that a shape file hides behind has no name, and no text can have it.
        if (*pszName != '\0')
            combo.SetItemData(combo.AddString(pszName), static_cast<DWORD_PTR>(pRecord->objectId().asOldId()));
        acutDelString(pszName);
    }
    pRecord->close();
}

AcDbObjectId CAttributePage::RecordOfRow(const CComboBox& combo, int nRow) {
    AcDbObjectId id;
    if (nRow != CB_ERR)
        id.setFromOldId(static_cast<intptr_t>(combo.GetItemData(nRow)));
    return id;
}
