#include "attributes/edit_attribute_dlg.h"

#include "ads/ads.h"
#include "attributes/attribute_access.h"
#include "frame/module.h"
#include "objects/attribute.h"
#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CEditAttributeDlg, CAttributeDlg)
ON_BN_CLICKED(IDC_EDIT_OK, &CEditAttributeDlg::OnOK)
ON_NOTIFY(NM_CLICK, IDC_ATTRIBUTE_LIST, &CEditAttributeDlg::OnListNotify)
ON_NOTIFY(NM_RETURN, IDC_ATTRIBUTE_LIST, &CEditAttributeDlg::OnListNotify)
END_MESSAGE_MAP()

CEditAttributeDlg::CEditAttributeDlg(CWnd* pParent) : CAttributeDlg(IDD_EDIT_ATTRIBUTE, pParent) {}

CEditAttributeDlg::~CEditAttributeDlg() = default;

void CEditAttributeDlg::DoDataExchange(CDataExchange* pDX) {
    CAttributeDlg::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_ATTRIBUTE_LIST, m_list);
    DDX_Text(pDX, IDC_BLOCK_LABEL, m_blockLabel);
}

// The rows, from the drawing.

bool CEditAttributeDlg::SelectBlock(VNDKBlockReference* pRef) {
    if (pRef) {
        TakeReference(pRef);
        acdbGetAdsName(m_entName, pRef->objectId());
    } else if (!PickReference()) {
        return false;
    }
    return ReadRows();
}

void CEditAttributeDlg::ReadReference(AcDbBlockTableRecord* pBlock) {
    m_blockLabel = LoadResString(IDS_BLOCK_NAME);
    if (m_pIntelligentRef) {
        m_blockLabel += m_pIntelligentRef->originalBlockName();
    } else if (char* pszName = nullptr; pBlock->getName(pszName) == Acad::eOk) {
        m_blockLabel += TakeText(pszName);
    }
    ReadDefinitions(pBlock);
    if (m_pIntelligentRef)
        ReadIntelligentValues();
    else
        ReadPlainValues();
}

void CEditAttributeDlg::ReadDefinitions(AcDbBlockTableRecord* pBlock) {
    ForEachRowDefinition(pBlock, [this](const AcDbAttributeDefinition* pDefinition) {
        m_fieldLengths.Add(pDefinition->fieldLength());
        m_prompts.Add(TakeText(pDefinition->prompt()));
        m_values.Add(TakeText(pDefinition->textString()));
    });
}

/// The reference may have more attributes than the block has definitions.
void CEditAttributeDlg::SetValue(int nRow, char* pszValue) {
    const CString strValue = TakeText(pszValue);
    if (HasRow(nRow))
        m_values[nRow] = strValue;
}

void CEditAttributeDlg::ReadIntelligentValues() {
    int nRow = 0;
    for (int i = 0; i < m_pIntelligentRef->attributeCount(); ++i) {
        auto* pAttribute = OpenChecked<VNDKAttribute>(m_pIntelligentRef->getAttribute(i), AcDb::kForRead);
        if (!pAttribute)
            continue;
        if (!pAttribute->isConstant())
            SetValue(nRow++, pAttribute->defaultValue());
        pAttribute->close();
    }
}

void CEditAttributeDlg::ReadPlainValues() {
    int nRow = 0;
    ForEachRowAttribute(m_pBlockRef, AcDb::kForRead,
                        [&](AcDbAttribute* pAttribute) { SetValue(nRow++, pAttribute->textString()); });
}

// The dialog.

BOOL CEditAttributeDlg::OnInitDialog() {
    CAttributeDlg::OnInitDialog();
    m_list.InsertCellColumns(LoadResString(IDS_COLUMN_DESCRIPTION), LoadResString(IDS_COLUMN_DATA));
    for (int nRow = 0; nRow < m_prompts.GetSize(); ++nRow) {
        m_list.InsertItem(nRow, m_prompts[nRow]);
        m_list.SetItemText(nRow, 1, m_values[nRow]);
        m_list.SetItemData(nRow, static_cast<DWORD_PTR>(m_fieldLengths[nRow]));
    }
    m_list.SetFocus();
    return TRUE;
}

void CEditAttributeDlg::OnListNotify(NMHDR* /*pNMHDR*/, LRESULT* pResult) { *pResult = 0; }

void CEditAttributeDlg::OnOK() {
    CommitAttributes();
    CAttributeDlg::OnOK();
}

// The values, into the drawing.

bool CEditAttributeDlg::CommitAttributes() {
    const CDocumentLock lock;
    if (!lock.IsLocked() || !WriteReference())
        return false;
    FlushGraphics();
    return true;
}

bool CEditAttributeDlg::WriteReference() {
    AcDbBlockReference* const pReference = OpenReference();
    if (!pReference)
        return false;
    bool bWritten = true;
    if (m_pIntelligentRef)
        bWritten = WriteIntelligentValues();
    else
        WritePlainValues();
    if (bWritten)
        pReference->recordGraphicsModified(true);
    CloseReference();
    return bWritten;
}

bool CEditAttributeDlg::WriteIntelligentValues() {
    int nRow = 0;
    for (int i = 0; i < m_pIntelligentRef->attributeCount(); ++i) {
        auto* pAttribute = OpenChecked<VNDKAttribute>(m_pIntelligentRef->getAttribute(i), AcDb::kForWrite);
        if (!pAttribute)
            return false;
        if (!pAttribute->isConstant() && HasRow(nRow)) {
            const CString strText = m_list.GetItemText(nRow++, 1);
            pAttribute->setTextString(strText);
            pAttribute->setDefaultValue(strText);
            pAttribute->adjustAlignment(acdbHostApplicationServices()->workingDatabase());
        }
        pAttribute->CheckFormulaForStretch();
        pAttribute->close();
    }
    return true;
}

void CEditAttributeDlg::WritePlainValues() {
    int nRow = 0;
    ForEachRowAttribute(m_pBlockRef, AcDb::kForWrite, [&](AcDbAttribute* pAttribute) {
        if (HasRow(nRow))
            pAttribute->setTextString(m_list.GetItemText(nRow++, 1));
    });
}

// Commands.

void EditAttributes() {
    CEditAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
    if (dlg.SelectBlock(nullptr))
        dlg.DoModal();
}

int EditAttributesFunction() {
    EditAttributes();
    acedRetVoid();
    return 0;
}
