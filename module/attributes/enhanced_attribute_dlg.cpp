#include "attributes/enhanced_attribute_dlg.h"

#include "ads/ads.h"
#include "attributes/attribute_access.h"
#include "frame/module.h"
#include "objects/attribute.h"
#include "resources/resource.h"

namespace {

constexpr int kFaceMargin = 6; // pixels between the tab control's edge and a face
constexpr int kAnotherBlock = -1;

enum Face { kAttributes, kTextOptions, kProperties };

} // namespace

BEGIN_MESSAGE_MAP(CEnhancedAttributeDlg, CAttributeDlg)
ON_NOTIFY(TCN_SELCHANGE, IDC_TABS, &CEnhancedAttributeDlg::OnTabChange)
ON_BN_CLICKED(IDC_APPLY, &CEnhancedAttributeDlg::OnApply)
ON_BN_CLICKED(IDC_SELECT_BLOCK, &CEnhancedAttributeDlg::OnSelectBlock)
END_MESSAGE_MAP()

CEnhancedAttributeDlg::CEnhancedAttributeDlg(CWnd* pParent) : CAttributeDlg(IDD_ENHANCED_ATTRIBUTES, pParent) {}

CEnhancedAttributeDlg::~CEnhancedAttributeDlg() = default;

void CEnhancedAttributeDlg::DoDataExchange(CDataExchange* pDX) {
    CAttributeDlg::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_APPLY, m_btnApply);
    DDX_Control(pDX, IDC_ATTRIBUTES, m_list);
    DDX_Control(pDX, IDC_SELECT_BLOCK, m_btnSelectBlock);
    DDX_Control(pDX, IDC_TABS, m_tabCtrl);
    DDX_Text(pDX, IDC_BLOCK_NAME, m_blockName);
    DDX_Text(pDX, IDC_TAG_NAME, m_tagName);
}

// The rows, from the drawing.

bool CEnhancedAttributeDlg::SelectBlock() { return PickReference() && ReadRows(); }

void CEnhancedAttributeDlg::ReadReference(AcDbBlockTableRecord* pBlock) {
    if (m_pIntelligentRef)
        ReadIntelligentAttributes();
    else
        ReadPlainAttributes();
    if (char* pszName = nullptr; pBlock->getName(pszName) == Acad::eOk)
        m_blockName = TakeText(pszName);
    ReadDefinitions(pBlock);
}

void CEnhancedAttributeDlg::ReadIntelligentAttributes() {
    for (int i = 0; i < m_pIntelligentRef->attributeCount(); ++i) {
        auto* pAttribute = OpenChecked<VNDKAttribute>(m_pIntelligentRef->getAttribute(i), AcDb::kForRead);
        if (!pAttribute)
            continue;
        if (!pAttribute->isConstant()) {
            m_attributeIds.Add(pAttribute->objectId());
            m_values.Add(TakeText(pAttribute->textString()));
        }
        pAttribute->close();
    }
}

void CEnhancedAttributeDlg::ReadPlainAttributes() {
    ForEachRowAttribute(m_pBlockRef, AcDb::kForRead, [this](const AcDbAttribute* pAttribute) {
        m_attributeIds.Add(pAttribute->objectId());
        m_fieldLengths.Add(pAttribute->fieldLength());
        m_values.Add(TakeText(pAttribute->textString()));
    });
}

void CEnhancedAttributeDlg::ReadDefinitions(AcDbBlockTableRecord* pBlock) {
    ForEachRowDefinition(pBlock, [this](const AcDbAttributeDefinition* pDefinition) {
        m_prompts.Add(TakeText(pDefinition->prompt()));
        m_tags.Add(TakeText(pDefinition->tag()));
        if (m_pIntelligentRef)
            m_fieldLengths.Add(pDefinition->fieldLength());
    });
}

// The dialog.

BOOL CEnhancedAttributeDlg::OnInitDialog() {
    CAttributeDlg::OnInitDialog();
    m_tabCtrl.InsertItem(kAttributes, LoadResString(IDS_TAB_ATTRIBUTES));
    m_tabCtrl.InsertItem(kTextOptions, LoadResString(IDS_TAB_TEXT_OPTIONS));
    m_tabCtrl.InsertItem(kProperties, LoadResString(IDS_TAB_PROPERTIES));
    m_list.ShowWindow(SW_SHOW);
    m_list.m_ownerDlg = this;
    m_btnSelectBlock.SetIcons(IDI_SELECT_BLOCK, 0);
    m_btnSelectBlock.SetFlat(0);
    PlacePages();
    InitList();
    m_btnApply.EnableWindow(FALSE); // filling the list has enabled it
    return TRUE;
}

void CEnhancedAttributeDlg::PlacePages() {
    CRect face;
    m_tabCtrl.GetWindowRect(face);
    ScreenToClient(face);
    face.InflateRect(-kFaceMargin, -kFaceMargin);
    CRect tab;
    m_tabCtrl.GetItemRect(0, tab);
    face.top += tab.bottom;

    m_list.MoveWindow(face);
    m_pageTextOptions.Create(IDD_ATTR_TEXT_OPTIONS, this);
    m_pageTextOptions.FitLabels();
    m_pageProperties.Create(IDD_ATTR_PROPERTIES, this);
    m_pageProperties.FitLabels();
    // The pages stand in front of the tab control, and there the Tab key reaches them.
    m_pageTextOptions.SetWindowPos(&m_list, face.left, face.top, face.Width(), face.Height(), SWP_HIDEWINDOW);
    m_pageProperties.SetWindowPos(&m_pageTextOptions, face.left - 1, face.top, face.Width() + 1, face.Height(),
                                  SWP_HIDEWINDOW);
}

void CEnhancedAttributeDlg::InitList() {
    m_list.InsertCellColumns(LoadResString(IDS_COLUMN_DESCRIPTION), LoadResString(IDS_COLUMN_DATA));
    for (int nRow = 0; nRow < m_prompts.GetSize(); ++nRow) {
        m_list.InsertItem(nRow, m_prompts[nRow]);
        if (!HasAttribute(nRow)) {
            m_list.LockRow(nRow);
            continue;
        }
        m_list.SetItemText(nRow, 1, m_values[nRow]);
        m_list.SetItemData(nRow, static_cast<DWORD_PTR>(m_fieldLengths[nRow]));
    }
    m_list.SetFocus();
}

void CEnhancedAttributeDlg::ShowRow(int nRow) {
    m_tagName = m_tags[nRow];
    const AcDbObjectId id = HasAttribute(nRow) ? m_attributeIds[nRow] : AcDbObjectId::kNull;
    for (CAttributePage* pPage :
         {static_cast<CAttributePage*>(&m_pageTextOptions), static_cast<CAttributePage*>(&m_pageProperties)}) {
        pPage->m_attributeId = id;
        pPage->LoadFromAttribute();
    }
    UpdateData(FALSE);
}

void CEnhancedAttributeDlg::OnTabChange(NMHDR* /*pNMHDR*/, LRESULT* pResult) {
    m_list.ShowWindow(SW_HIDE);
    m_pageTextOptions.ShowWindow(SW_HIDE);
    m_pageProperties.ShowWindow(SW_HIDE);
    switch (m_tabCtrl.GetCurSel()) {
    case kAttributes:
        m_list.ShowWindow(SW_SHOW);
        m_list.SetFocus();
        m_list.EditCell(m_list.m_editRow, m_list.m_editCol);
        break;
    case kTextOptions:
        m_pageTextOptions.ShowWindow(SW_SHOW);
        m_pageTextOptions.SetFocus();
        break;
    case kProperties:
        m_pageProperties.ShowWindow(SW_SHOW);
        m_pageProperties.SetFocus();
        break;
    default:
        break;
    }
    *pResult = 0;
}

void CEnhancedAttributeDlg::OnOK() {
    CommitAttributes();
    CAttributeDlg::OnOK();
}

void CEnhancedAttributeDlg::OnApply() {
    CommitAttributes();
    m_btnApply.EnableWindow(FALSE);
}

void CEnhancedAttributeDlg::OnSelectBlock() {
    m_anotherBlock = true;
    EndDialog(kAnotherBlock);
}

// The values, into the drawing.

bool CEnhancedAttributeDlg::CommitAttributes() {
    {
        const CDocumentLock lock;
        if (!lock.IsLocked() || !WriteReference())
            return false;
        FlushGraphics();
    }
    UpdateBlockGraphics(false);
    return true;
}

bool CEnhancedAttributeDlg::WriteReference() {
    AcDbBlockReference* const pReference = OpenReference();
    if (!pReference)
        return false;
    for (int nRow = 0; nRow < m_list.GetItemCount(); ++nRow)
        if (HasAttribute(nRow))
            WriteValue(nRow);
    pReference->recordGraphicsModified(true);
    CloseReference();
    return true;
}

/// Each text stays with the attribute that it was read from.
void CEnhancedAttributeDlg::WriteValue(int nRow) {
    auto* pText = OpenChecked<AcDbText>(m_attributeIds[nRow], AcDb::kForWrite);
    if (!pText)
        return;
    pText->setTextString(m_list.GetItemText(nRow, 1));
    if (pText->isKindOf(VNDKAttribute::desc()))
        pText->adjustAlignment(acdbHostApplicationServices()->workingDatabase());
    pText->close();
}

/// Undo recording stays as the user has set it: switched on for this, a half step would be left in it.
void CEnhancedAttributeDlg::UpdateBlockGraphics(bool bEnableApply) {
    if (AcDbBlockReference* const pReference = OpenReference()) {
        pReference->recordGraphicsModified(true);
        CloseReference();
    }
    FlushGraphics();
    acedUpdateDisplay();
    m_btnApply.EnableWindow(bEnableApply);
}

// Commands.

void EditAttributesEnhanced() {
    for (bool bAnother = true; bAnother;) {
        CEnhancedAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
        if (!dlg.SelectBlock())
            return;
        // A dialog that can't be made gives -1, too.
        bAnother = dlg.DoModal() == kAnotherBlock && dlg.WantsAnotherBlock();
    }
}
