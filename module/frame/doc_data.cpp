#include "frame/doc_data.h"

namespace {

CDocDataManager g_docDataManager;

AcDbDatabase* WorkingDatabase() { return acdbHostApplicationServices()->workingDatabase(); }

AcDbDatabase* DatabaseOf(const AcApDocument* pDocument) { return pDocument ? pDocument->database() : nullptr; }

} // namespace

CDocDataManager& DocDataManager() { return g_docDataManager; }

CDocBlockWatcher::~CDocBlockWatcher() = default;

void CDocData::AttachWatcher() {
    if (!m_pBlockWatcher)
        m_pBlockWatcher = std::make_unique<CDocBlockWatcher>();
    if (AcDbDatabase* pDatabase = WorkingDatabase())
        pDatabase->addReactor(m_pBlockWatcher.get());
}

void CDocData::DetachWatcher() { DetachWatcherFrom(WorkingDatabase()); }

void CDocData::DetachWatcherFrom(AcDbDatabase* pDatabase) {
    if (!pDatabase)
        return;
    pDatabase->removeReactor(m_pBlockWatcher.get());
    m_pBlockWatcher.reset();
}

CDocDataManager::CDocDataManager() {
    if (AcApDocManager* pManager = acDocManagerPtr())
        pManager->addReactor(this);
}

CDocDataManager::~CDocDataManager() {
    if (AcApDocManager* pManager = acDocManagerPtr())
        pManager->removeReactor(this);
    // Drawings that stay open must not know watchers whose code is about to be unmapped.
    for (auto& [pDocument, data] : m_data)
        data.DetachWatcherFrom(DatabaseOf(pDocument));
}

CDocData& CDocDataManager::docData(AcApDocument* pDocument) { return m_data[pDocument]; }

CDocData& CDocDataManager::docData() {
    AcApDocManager* pManager = acDocManagerPtr();
    return docData(pManager ? pManager->curDocument() : nullptr);
}

void CDocDataManager::documentToBeDestroyed(AcApDocument* pDocument) {
    const auto found = m_data.find(pDocument);
    if (found == m_data.end())
        return;
    found->second.DetachWatcherFrom(DatabaseOf(pDocument));
    m_data.erase(found);
}
