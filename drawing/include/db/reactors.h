// Who is told of what happens in a database. A reactor isn't owned by what it watches; it is removed by who
// added it, also while it is being told. Reactors are told in the order in which they were added.
#pragma once

#include "db/object_id.h"
#include "ge/vector.h"
#include "rx/class.h"

#include <algorithm>
#include <vector>

class AcDbDatabase;
class AcDbIdMapping;
class AcDbObject;

/// Watches one database.
///
/// Order for one change: objectOpenedForModify before the first change of an opened object, objectModified
/// when it is closed; objectAppended when an object comes in (its close then tells objectModified too if it
/// was changed after that); objectErased when the erased mark changes. Undo: objectUnAppended and
/// objectReAppended for an appended object, objectModified and objectErased otherwise.
class AcDbDatabaseReactor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbDatabaseReactor)
public:
    virtual void objectAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectUnAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectReAppended(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectOpenedForModify(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectModified(const AcDbDatabase*, const AcDbObject*) {}
    virtual void objectErased(const AcDbDatabase*, const AcDbObject*, bool /*erased*/) {}
    virtual void headerSysVarWillChange(const AcDbDatabase*, const char* /*name*/) {}
    virtual void headerSysVarChanged(const AcDbDatabase*, const char* /*name*/, bool /*success*/) {}
    virtual void goodbye(const AcDbDatabase*) {}
};

/// Watches one object.
class AcDbObjectReactor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbObjectReactor)
public:
    virtual void openedForModify(const AcDbObject*) {}
    virtual void modified(const AcDbObject*) {}
    virtual void erased(const AcDbObject*, bool /*erasing*/) {}
    virtual void objectClosed(AcDbObjectId) {}
    virtual void goodbye(const AcDbObject*) {}
};

/// Told of work on whole databases: reading and saving, inserting, copying, writing out.
class AcRxEventReactor : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcRxEventReactor)
public:
    virtual void dwgFileOpened(AcDbDatabase*, char* /*fileName*/) {}
    virtual void databaseConstructed(AcDbDatabase*) {}
    virtual void databaseToBeDestroyed(AcDbDatabase*) {}
    virtual void beginSave(AcDbDatabase*, const char* /*fileName*/) {}
    virtual void saveComplete(AcDbDatabase*, const char* /*fileName*/) {}
    virtual void abortSave(AcDbDatabase*) {}
    virtual void beginInsert(AcDbDatabase* /*to*/, const char* /*blockName*/, AcDbDatabase* /*from*/) {}
    virtual void otherInsert(AcDbDatabase* /*to*/, AcDbIdMapping&, AcDbDatabase* /*from*/) {}
    virtual void abortInsert(AcDbDatabase* /*to*/) {}
    virtual void endInsert(AcDbDatabase* /*to*/) {}
    virtual void beginDeepClone(AcDbDatabase* /*to*/, AcDbIdMapping&) {}
    virtual void beginDeepCloneXlation(AcDbIdMapping&) {}
    virtual void abortDeepClone(AcDbIdMapping&) {}
    virtual void endDeepClone(AcDbIdMapping&) {}
    /// Before a drawing, or a part of it, is written out: the drawing may still be changed.
    virtual void wblockNotice(AcDbDatabase* /*from*/) {}
    /// Some objects, whose insertion point, in world coordinates, becomes the origin.
    virtual void beginWblock(AcDbDatabase* /*to*/, AcDbDatabase* /*from*/, const AcGePoint3d& /*insertionPoint*/) {}
    /// One block.
    virtual void beginWblock(AcDbDatabase* /*to*/, AcDbDatabase* /*from*/, AcDbObjectId /*blockId*/) {}
    /// The whole drawing.
    virtual void beginWblock(AcDbDatabase* /*to*/, AcDbDatabase* /*from*/) {}
    virtual void otherWblock(AcDbDatabase* /*to*/, AcDbIdMapping&, AcDbDatabase* /*from*/) {}
    virtual void abortWblock(AcDbDatabase* /*to*/) {}
    virtual void endWblock(AcDbDatabase* /*to*/) {}
};

/// A list of reactors that may change while it is walked: removed ones aren't told any more, added ones are
/// told from the next event on.
template <class R>
class AcDbReactorList {
public:
    void add(R* reactor) {
        if (std::find(items_.begin(), items_.end(), reactor) == items_.end())
            items_.push_back(reactor);
    }
    void remove(R* reactor) {
        for (R*& item : items_)
            if (item == reactor)
                item = nullptr;
        if (depth_ == 0)
            std::erase(items_, nullptr);
    }
    bool empty() const { return items_.empty(); }

    template <class F>
    void tell(F&& f) {
        if (items_.empty())
            return;
        ++depth_;
        const size_t count = items_.size();
        for (size_t i = 0; i < count; ++i)
            if (items_[i])
                f(*items_[i]);
        if (--depth_ == 0)
            std::erase(items_, nullptr);
    }

private:
    std::vector<R*> items_;
    int depth_ = 0;
};

/// The process-wide list of AcRxEventReactors.
AcDbReactorList<AcRxEventReactor>& acrxEventReactors();
