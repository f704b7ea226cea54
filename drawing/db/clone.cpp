// Copying within a drawing and from one drawing into another.
#include "db/clone_run.h"
#include "db/stub.h"

#include <memory>

namespace {

template <class F>
void tellAll(F&& f) {
    acrxEventReactors().tell(f);
}

} // namespace

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const std::vector<AcDbObjectId>& objects, AcDbObjectId owner,
                                                 AcDbIdMapping& mapping) {
    AcDbSavepoint savepoint(*this);
    Acad::ErrorStatus status = Acad::eOk;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> target(owner, AcDb::kForWrite);
        if (!target || owner.database() != this)
            return target ? Acad::eWrongDatabase : Acad::eInvalidOwnerObject;
        tellAll([&](AcRxEventReactor& r) { r.beginDeepClone(this, mapping); });
        savepoint.touch(owner);
        AcDbCloneRun run(*this, *this, mapping, savepoint);
        status = run.cloneEntities(objects, *target);
        if (status == Acad::eOk)
            status = run.cloneNeeded();
        if (status == Acad::eOk) {
            tellAll([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping); });
            run.translate();
        }
    }
    if (status != Acad::eOk)
        savepoint.rollBack();
    tellAll([&](AcRxEventReactor& r) { status == Acad::eOk ? r.endDeepClone(mapping) : r.abortDeepClone(mapping); });
    return status;
}

namespace {

/// Makes the empty block that a drawing goes into.
Acad::ErrorStatus addBlock(AcDbDatabase& database, const char* name, const AcGePoint3d& origin, AcDbObjectId& id) {
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
    if (!table)
        return table.openStatus();
    auto block = std::make_unique<AcDbBlockTableRecord>();
    Acad::ErrorStatus status = block->setName(name);
    if (status == Acad::eOk)
        status = block->setOrigin(origin);
    if (status == Acad::eOk)
        status = table->add(id, block.get());
    if (status != Acad::eOk)
        return status;
    AcDbBlockTableRecord* const added = block.release();
    added->close();
    return added->data().blockEnd.isNull() ? Acad::eOutOfRange : Acad::eOk;
}

AcDbObjectId blockNamed(AcDbDatabase& database, const char* name) {
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId()); table)
        table->getAt(name, id);
    return id;
}

Acad::ErrorStatus cloneModelSpace(AcDbCloneRun& run, const AcDbDatabase& source, AcDbObjectId blockId) {
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
        if (!block)
            return block.openStatus();
        if (const Acad::ErrorStatus status = run.cloneContents(source.modelSpaceId(), *block); status != Acad::eOk)
            return status;
    }
    return run.cloneNeeded();
}

} // namespace

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const char* blockName, AcDbDatabase* source,
                                       bool /*preserveSource*/) {
    blockId.setNull();
    if (!source || source->modelSpaceId().isNull() || modelSpace_.isNull())
        return Acad::eNoDatabase;
    if (source == this)
        return Acad::eSelfReference;
    AcDbSavepoint savepoint(*this);
    savepoint.touch(tables_.block);
    Acad::ErrorStatus status = addBlock(*this, blockName, source->insbase(), blockId);
    if (status != Acad::eOk) {
        savepoint.rollBack();
        blockId.setNull();
        return status;
    }
    AcDbIdMapping mapping(source, this);
    tellAll([&](AcRxEventReactor& r) { r.beginInsert(this, blockName, source); });
    tellAll([&](AcRxEventReactor& r) { r.beginDeepClone(this, mapping); });
    AcDbCloneRun run(*source, *this, mapping, savepoint);
    run.forbid(blockNamed(*source, blockName));
    status = cloneModelSpace(run, *source, blockId);
    if (status != Acad::eOk) {
        savepoint.rollBack();
        blockId.setNull();
        setLastFileError(run.failureText());
        tellAll([&](AcRxEventReactor& r) { r.abortDeepClone(mapping); });
        tellAll([&](AcRxEventReactor& r) { r.abortInsert(this); });
        return status;
    }
    tellAll([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping); });
    run.translate();
    for (const std::string& warning : run.warnings())
        addWarning(warning);
    tellAll([&](AcRxEventReactor& r) { r.otherInsert(this, mapping, source); });
    tellAll([&](AcRxEventReactor& r) { r.endDeepClone(mapping); });
    tellAll([&](AcRxEventReactor& r) { r.endInsert(this); });
    return Acad::eOk;
}
