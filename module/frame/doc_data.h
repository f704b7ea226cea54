// What the module keeps for each open document.
#pragma once

#include "ap/document.h"

#include <map>
#include <memory>

/// Listens to a document's drawing.
class CDocBlockWatcher : public AcDbDatabaseReactor {
public:
    ~CDocBlockWatcher() override;
};

class CDocData {
public:
    /// Makes the watcher if there is none and adds it to the working database.
    void AttachWatcher();
    /// Removes the watcher from the working database and ends it; does nothing without a working database.
    void DetachWatcher();
    /// The same for the database that is given; the watcher's own, when its document goes.
    void DetachWatcherFrom(AcDbDatabase* pDatabase);
    /// Null while nothing is watched.
    const CDocBlockWatcher* blockWatcher() const { return m_pBlockWatcher.get(); }

    /// The plain reference that an Intelligent Block replaced last in this document; null at first.
    AcDbObjectId lastUpgradedRef() const { return m_lastUpgradedRef; }
    void SetLastUpgradedRef(AcDbObjectId id) { m_lastUpgradedRef = id; }

private:
    std::unique_ptr<CDocBlockWatcher> m_pBlockWatcher;
    AcDbObjectId m_lastUpgradedRef;
};

/// The records of all documents. One static instance, which is there before process attach and goes after process
/// detach.
class CDocDataManager : public AcApDocManagerReactor {
public:
    CDocDataManager();
    ~CDocDataManager() override;

    /// The record of a document, made if missing.
    CDocData& docData(AcApDocument* pDocument);
    /// The record of the current document.
    CDocData& docData();

    void documentToBeDestroyed(AcApDocument* pDocument) override;

private:
    std::map<AcApDocument*, CDocData> m_data;
};

CDocDataManager& DocDataManager();
