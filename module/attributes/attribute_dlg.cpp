#include "attributes/attribute_dlg.h"

#include "ads/ads.h"
#include "attributes/attribute_access.h"

namespace {

constexpr UINT kHostIcon = 1;

} // namespace

BEGIN_MESSAGE_MAP(CAttributeDlg, CDialog)
ON_WM_DESTROY()
END_MESSAGE_MAP()

CAttributeDlg::CAttributeDlg(UINT nTemplateId, CWnd* pParent) : CDialog(nTemplateId, pParent) {}

CAttributeDlg::~CAttributeDlg() = default;

BOOL CAttributeDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    m_hIcon = static_cast<HICON>(
        ::LoadImageA(::GetModuleHandleA("Acad.exe"), MAKEINTRESOURCE(kHostIcon), IMAGE_ICON, 0, 0, 0));
    SendMessage(WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_hIcon));
    return TRUE;
}

void CAttributeDlg::OnDestroy() {
    CWnd::OnDestroy();
    ::DestroyIcon(m_hIcon);
    m_hIcon = nullptr;
}

// The reference.

bool CAttributeDlg::PickReference() {
    TakeReference(PickBlockReference(m_entName));
    return m_pBlockRef || m_pIntelligentRef;
}

void CAttributeDlg::TakeReference(AcDbBlockReference* pReference) {
    m_pIntelligentRef = VNDKBlockReference::cast(pReference);
    m_pBlockRef = m_pIntelligentRef ? nullptr : pReference;
}

bool CAttributeDlg::ReadRows() {
    const AcDbBlockReference* pReference = m_pIntelligentRef ? m_pIntelligentRef : m_pBlockRef;
    auto* pBlock = OpenChecked<AcDbBlockTableRecord>(pReference->blockTableRecord(), AcDb::kForRead);
    if (pBlock) {
        ReadReference(pBlock);
        pBlock->close();
    }
    CloseReference();
    return m_prompts.GetSize() > 0;
}

AcDbBlockReference* CAttributeDlg::OpenReference() {
    AcDbObjectId id;
    acdbGetObjectId(id, m_entName);
    auto* pReference = OpenChecked<AcDbBlockReference>(id, AcDb::kForWrite);
    TakeReference(pReference);
    return pReference;
}

void CAttributeDlg::CloseReference() {
    if (m_pIntelligentRef)
        m_pIntelligentRef->close();
    else if (m_pBlockRef)
        m_pBlockRef->close();
    TakeReference(nullptr);
}

void CAttributeDlg::FlushGraphics() { acDocManagerPtr()->curDocument()->transactionManager()->flushGraphics(); }
