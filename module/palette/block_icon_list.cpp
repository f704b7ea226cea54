#include "palette/block_icon_list.h"

#include "ap/document.h"
#include "db/block_table.h"
#include "db/database.h"
#include "frame/module.h"
#include "frame/palette_doc_reactor.h"
#include "frame/palette_editor_reactor.h"
#include "palette/block_palette_dlg.h"
#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CBlockIconList, CListCtrl)
ON_NOTIFY_REFLECT(NM_CLICK, &CBlockIconList::OnClick)
ON_NOTIFY_REFLECT(NM_RETURN, &CBlockIconList::OnReturn)
ON_WM_CREATE()
ON_WM_SIZE()
ON_WM_DESTROY()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

namespace {

constexpr int kIconSize = 32;
constexpr COLORREF kMaskColor = RGB(255, 0, 255);
constexpr int kStockIcon = 0; // index of the image

} // namespace

CBlockIconList::CBlockIconList() = default;

CBlockIconList::~CBlockIconList() {
    if (CPaletteEditorReactor* pReactor = EditorReactor()) {
        pReactor->SetBlockList(nullptr);
        pReactor->SetPalette(nullptr);
    }
}

void CBlockIconList::Init(CBlockPaletteDlg* dlg) {
    m_pImageList = std::make_unique<CImageList>();
    m_pImageList->Create(kIconSize, kIconSize, ILC_COLOR4, 1, 1);
    m_pImageList->SetBkColor(GetBkColor());
    const auto hIcon =
        static_cast<HICON>(::LoadImageA(ModuleInstance(), MAKEINTRESOURCE(IDI_STOCK_BLOCK), IMAGE_ICON, 0, 0, 0));
    m_pImageList->Replace(-1, hIcon);
    ::DestroyIcon(hIcon);
    SetImageList(m_pImageList.get(), LVSIL_NORMAL);
    SetImageList(m_pImageList.get(), LVSIL_SMALL);
    m_pDocReactor = std::make_unique<CPaletteDocReactor>(this);
    EditorReactor()->SetPalette(dlg);
    EditorReactor()->SetBlockList(this);
    acDocManagerPtr()->addReactor(m_pDocReactor.get());
    SetIconSpacing(52, 64);
    Refresh();
}

void CBlockIconList::Refresh() {
    DeleteAllItems();
    AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase();
    if (!pDatabase)
        return;
    AcDbBlockTable* pTable = nullptr;
    const bool opened = pDatabase->getSymbolTable(pTable, AcDb::kForRead) == Acad::eOk;
    SetRedraw(FALSE);
    if (opened) {
        InsertBlocks(*pTable);
        pTable->close();
    }
    SetRedraw(TRUE);
    Invalidate();
    UpdateWindow();
}

void CBlockIconList::InsertBlocks(const AcDbBlockTable& table) {
    AcDbSymbolTableIterator* pNew = nullptr;
    if (table.newIterator(pNew, true, true) != Acad::eOk)
        return;
    const std::unique_ptr<AcDbSymbolTableIterator> pIterator(pNew);
    for (; !pIterator->done(); pIterator->step(true, true)) {
        AcDbSymbolTableRecord* pRecord = nullptr;
        if (pIterator->getRecord(pRecord, AcDb::kForRead, false) != Acad::eOk)
            continue;
        if (auto* pBlock = AcDbBlockTableRecord::cast(pRecord))
            AddBlock(pBlock);
        pRecord->close();
    }
}

void CBlockIconList::AddBlock(AcDbBlockTableRecord* record) {
    const std::string& name = record->name();
    if (name.starts_with('*') || name.starts_with('~') || name.empty() || record->isAnonymous())
        return;
    LVITEM item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_INDENT;
    item.iImage = GetBlockIcon(record);
    item.iItem = GetItemCount();
    item.pszText = const_cast<char*>(name.c_str());
    item.iIndent = -1;
    InsertItem(&item);
}

int CBlockIconList::GetBlockIcon(AcDbBlockTableRecord* record) {
    if (!record->hasPreviewIcon())
        return kStockIcon;
    AcDbBlockTableRecord::PreviewIcon icon;
    if (record->getPreviewIcon(icon) != Acad::eOk || !IsWholeDib(icon.data(), icon.size()))
        return kStockIcon;
    int nImage = -1;
    const HGLOBAL hDib = CopyDibToGlobal(reinterpret_cast<const BITMAPINFOHEADER*>(icon.data()));
    if (const HBITMAP hBitmap = DibToBitmap(hDib)) {
        nImage = ::ImageList_AddMasked(*m_pImageList, hBitmap, kMaskColor);
        ::DeleteObject(hBitmap);
    }
    ::GlobalFree(hDib);
    return nImage < 0 ? kStockIcon : nImage;
}

BOOL CBlockIconList::PreTranslateMessage(MSG* pMsg) {
    if (!m_toolTip.GetSafeHwnd() && m_toolTip.Create(this))
        m_toolTip.Activate(FALSE);
    m_toolTip.RelayEvent(pMsg);
    return CWnd::PreTranslateMessage(pMsg);
}

void CBlockIconList::OnDestroy() {
    m_toolTip.DelTool(this, 1);
    DeleteAllItems();
    DetachImages();
    if (CHeaderCtrl* pHeader = GetHeaderCtrl())
        for (int nCount = pHeader->GetItemCount(); nCount > 0; --nCount)
            DeleteColumn(0);
    RemoveDocReactor();
    m_pImageList.reset();
    CWnd::OnDestroy();
}

void CBlockIconList::DetachImages() {
    SetImageList(nullptr, LVSIL_NORMAL);
    SetImageList(nullptr, LVSIL_SMALL);
}

void CBlockIconList::RemoveDocReactor() {
    if (m_pDocReactor)
        acDocManagerPtr()->removeReactor(m_pDocReactor.get());
    m_pDocReactor.reset();
}

int CBlockIconList::OnCreate(LPCREATESTRUCT lpCreateStruct) { return CListCtrl::OnCreate(lpCreateStruct); }

void CBlockIconList::OnSize(UINT nType, int cx, int cy) { CListCtrl::OnSize(nType, cx, cy); }

void CBlockIconList::OnLButtonDown(UINT nFlags, CPoint point) { CListCtrl::OnLButtonDown(nFlags, point); }

void CBlockIconList::OnLButtonUp(UINT nFlags, CPoint point) { CListCtrl::OnLButtonUp(nFlags, point); }

void CBlockIconList::OnClick(NMHDR* /*pNMHDR*/, LRESULT* pResult) { *pResult = 0; }

void CBlockIconList::OnReturn(NMHDR* /*pNMHDR*/, LRESULT* pResult) { *pResult = 0; }
