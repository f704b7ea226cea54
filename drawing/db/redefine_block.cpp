#include "db/redefine_block.h"

#include "db/block_reference.h"
#include "db/clone_run.h"

#include <algorithm>
#include <unordered_set>

namespace {

std::vector<AcDbObjectId> liveEntities(AcDbObjectId block) {
    std::vector<AcDbObjectId> ids;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    if (record)
        std::copy_if(record->entities().begin(), record->entities().end(), std::back_inserter(ids),
                     [](AcDbObjectId id) { return !id.isErased(); });
    return ids;
}

void replaceContents(AcDbObjectId block, const std::vector<AcDbObjectId>& former, const AcGePoint3d& origin) {
    for (const AcDbObjectId id : former)
        if (const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite); entity)
            entity->erase();
    if (const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite); record)
        record->setOrigin(origin);
}

Acad::ErrorStatus checkBlock(AcDbObjectId block, std::string& name) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    if (!record)
        return record.openStatus();
    name = record->name();
    return record->isLayout() || record->isFromExternalReference() ? Acad::eNotApplicable : Acad::eOk;
}

/// Copies the source's model space into the block, beside what it holds, with all that it needs.
Acad::ErrorStatus copyInto(AcDbObjectId block, const AcDbDatabase& source, AcDbCloneRun& run) {
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
        if (!record)
            return record.openStatus();
        if (const Acad::ErrorStatus status = run.cloneContents(source.modelSpaceId(), *record); status != Acad::eOk)
            return status;
    }
    return run.cloneNeeded();
}

AcDbObjectId blockNamed(const AcDbDatabase& database, const std::string& name) {
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId()); table)
        static_cast<const AcDbSymbolTable&>(*table).getAt(name.c_str(), id);
    return id;
}

} // namespace

bool acdbBlockContains(AcDbObjectId record, AcDbObjectId block) {
    std::vector<AcDbObjectId> open{record};
    std::unordered_set<AcDbObjectId> seen;
    while (!open.empty()) {
        const AcDbObjectPointer<AcDbBlockTableRecord> next(open.back());
        open.pop_back();
        if (!next)
            continue;
        for (const AcDbObjectId id : next->entities()) {
            const AcDbObjectPointer<AcDbBlockReference> reference(id);
            if (!reference)
                continue;
            if (reference->blockTableRecord() == block)
                return true;
            if (seen.insert(reference->blockTableRecord()).second)
                open.push_back(reference->blockTableRecord());
        }
    }
    return false;
}

Acad::ErrorStatus acdbRedefineBlock(AcDbObjectId block, AcDbDatabase& source) {
    std::string name;
    if (const Acad::ErrorStatus status = checkBlock(block, name); status != Acad::eOk)
        return status;
    AcDbDatabase& database = *block.database();
    if (source.modelSpaceId().isNull())
        return Acad::eNoDatabase;
    if (&source == &database)
        return Acad::eSelfReference;

    const std::vector<AcDbObjectId> former = liveEntities(block);
    AcDbSavepoint savepoint(database);
    savepoint.touch(block);
    AcDbIdMapping mapping(&source, &database);
    auto& events = acrxEventReactors();
    events.tell([&](AcRxEventReactor& r) { r.beginInsert(&database, name.c_str(), &source); });
    events.tell([&](AcRxEventReactor& r) { r.beginDeepClone(&database, mapping); });
    AcDbCloneRun run(source, database, mapping, savepoint);
    run.forbid(blockNamed(source, name));
    Acad::ErrorStatus status = copyInto(block, source, run);
    if (status == Acad::eOk) {
        events.tell([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping); });
        run.translate();
        // The drawing's own blocks stand for those of equal names, and one of them may hold this block.
        if (acdbBlockContains(block, block))
            status = Acad::eSelfReference;
    }
    if (status != Acad::eOk) {
        savepoint.rollBack();
        database.setLastFileError(run.failureText());
        events.tell([&](AcRxEventReactor& r) { r.abortDeepClone(mapping); });
        events.tell([&](AcRxEventReactor& r) { r.abortInsert(&database); });
        return status;
    }
    for (const std::string& warning : run.warnings())
        database.addWarning(warning);
    replaceContents(block, former, source.insbase());
    events.tell([&](AcRxEventReactor& r) { r.otherInsert(&database, mapping, &source); });
    events.tell([&](AcRxEventReactor& r) { r.endDeepClone(mapping); });
    events.tell([&](AcRxEventReactor& r) { r.endInsert(&database); });
    return Acad::eOk;
}
