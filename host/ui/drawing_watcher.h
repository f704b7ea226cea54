// Tells the window of every change of the drawing that it shows, and of another drawing that becomes current.
#pragma once

#include "ap/document.h"
#include "db/reactors.h"

#include <functional>

namespace vndk::host {

class DrawingWatcher : private AcDbDatabaseReactor, private AcApDocManagerReactor {
public:
    DrawingWatcher(AcApDocManager& documents, std::function<void()> changed, std::function<void()> becameCurrent);
    ~DrawingWatcher() override;
    DrawingWatcher(const DrawingWatcher&) = delete;
    DrawingWatcher& operator=(const DrawingWatcher&) = delete;

private:
    void objectAppended(const AcDbDatabase*, const AcDbObject*) override { changed_(); }
    void objectUnAppended(const AcDbDatabase*, const AcDbObject*) override { changed_(); }
    void objectReAppended(const AcDbDatabase*, const AcDbObject*) override { changed_(); }
    void objectModified(const AcDbDatabase*, const AcDbObject*) override { changed_(); }
    void objectErased(const AcDbDatabase*, const AcDbObject*, bool) override { changed_(); }
    void headerSysVarChanged(const AcDbDatabase*, const char*, bool) override { changed_(); }
    void goodbye(const AcDbDatabase*) override { watched_ = nullptr; }

    void documentBecameCurrent(AcApDocument* document) override;
    void documentToBeDestroyed(AcApDocument*) override { watch(nullptr); }
    void documentDestroyed(const char*) override { documentBecameCurrent(documents_.curDocument()); }

    void watch(AcDbDatabase* database);

    AcApDocManager& documents_;
    AcDbDatabase* watched_ = nullptr;
    std::function<void()> changed_, becameCurrent_;
};

} // namespace vndk::host
