#include "frame/palette_editor_reactor.h"

#include "ads/ads.h"
#include "frame/palette_views.h"

CPaletteEditorReactor::~CPaletteEditorReactor() = default;

void CPaletteEditorReactor::RefreshBlockList() {
    if (m_pBlockList)
        m_pBlockList->Refresh();
}

void CPaletteEditorReactor::ShowFirstPage() {
    if (!m_pPalette)
        return;
    m_pPalette->SelectTab(0);
    m_pPalette->ShowActivePage();
    ads_regen();
}

void CPaletteEditorReactor::endInsert(AcDbDatabase* pTo) {
    if (pTo)
        RefreshBlockList();
}

void CPaletteEditorReactor::beginWblock(AcDbDatabase* /*pTo*/, AcDbDatabase* /*pFrom*/) { ShowFirstPage(); }

void CPaletteEditorReactor::beginWblock(AcDbDatabase* /*pTo*/, AcDbDatabase* /*pFrom*/, AcDbObjectId /*blockId*/) {
    ShowFirstPage();
}

void CPaletteEditorReactor::endDeepClone(AcDbIdMapping& /*mapping*/) { RefreshBlockList(); }
