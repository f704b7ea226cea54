#include "frame/palette_doc_reactor.h"

#include "frame/doc_data.h"
#include "frame/palette_views.h"

CPaletteDocReactor::~CPaletteDocReactor() = default;

// Watchers come and go with the document that is current then, which needn't be the one that is told of.

void CPaletteDocReactor::documentCreated(AcApDocument* pDocument) {
    if (pDocument)
        DocDataManager().docData().AttachWatcher();
}

void CPaletteDocReactor::documentDestroyed(const char* /*fileName*/) {
    DocDataManager().docData().DetachWatcher();
    if (m_pBlockList)
        m_pBlockList->Refresh();
}

void CPaletteDocReactor::documentActivated(AcApDocument* pDocument) {
    if (pDocument && m_pBlockList)
        m_pBlockList->Refresh();
}
