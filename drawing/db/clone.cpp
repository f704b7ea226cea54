// Copying within a drawing and from one drawing into another.
#include "db/clone_run.h"
#include "db/stub.h"

Acad::ErrorStatus AcDbDatabase::deepCloneObjects(const std::vector<AcDbObjectId>& objects, AcDbObjectId owner,
                                                 AcDbIdMapping& mapping) {
    const AcDbObjectPointer<AcDbBlockTableRecord> target(owner, AcDb::kForWrite);
    if (!target || owner.database() != this)
        return target ? Acad::eWrongDatabase : Acad::eInvalidOwnerObject;
    acrxEventReactors().tell([&](AcRxEventReactor& r) { r.beginDeepClone(this, mapping); });
    AcDbCloneRun run(*this, *this, mapping);
    Acad::ErrorStatus status = run.cloneEntities(objects, *target);
    if (status == Acad::eOk) {
        acrxEventReactors().tell([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping); });
        status = run.translate();
    }
    if (status != Acad::eOk)
        run.rollBack();
    acrxEventReactors().tell([&](AcRxEventReactor& r) {
        status == Acad::eOk ? r.endDeepClone(mapping) : r.abortDeepClone(mapping);
    });
    return status;
}

namespace {

/// Makes the empty block that a drawing goes into.
Acad::ErrorStatus addBlock(AcDbDatabase& database, const char* name, const AcGePoint3d& origin, AcDbObjectId& id) {
    AcDbBlockTable* table = nullptr;
    if (const Acad::ErrorStatus status = database.getSymbolTable(table, AcDb::kForWrite); status != Acad::eOk)
        return status;
    auto* const block = new AcDbBlockTableRecord;
    Acad::ErrorStatus status = block->setName(name);
    if (status == Acad::eOk)
        status = block->setOrigin(origin);
    if (status == Acad::eOk)
        status = table->add(id, block);
    if (status == Acad::eOk)
        block->close();
    else
        delete block;
    table->close();
    return status;
}

void eraseObject(AcDbObjectId id) {
    if (const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite); object)
        object->erase();
}

AcDbObjectId blockNamed(AcDbDatabase& database, const char* name) {
    AcDbObjectId id;
    if (const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId()); table)
        table->getAt(name, id);
    return id;
}

} // namespace

Acad::ErrorStatus AcDbDatabase::insert(AcDbObjectId& blockId, const char* blockName, AcDbDatabase* source,
                                       bool /*preserveSource*/) {
    blockId.setNull();
    if (!source || source->modelSpaceId().isNull() || modelSpace_.isNull())
        return Acad::eNoDatabase;
    if (source == this)
        return Acad::eSelfReference;
    if (const Acad::ErrorStatus status = addBlock(*this, blockName, source->insbase(), blockId); status != Acad::eOk)
        return status;
    AcDbIdMapping mapping(source, this);
    auto& events = acrxEventReactors();
    events.tell([&](AcRxEventReactor& r) { r.beginInsert(this, blockName, source); });
    events.tell([&](AcRxEventReactor& r) { r.beginDeepClone(this, mapping); });
    AcDbCloneRun run(*source, *this, mapping);
    run.forbid(blockNamed(*source, blockName));
    Acad::ErrorStatus status = Acad::eOk;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(source->modelSpaceId());
        const AcDbObjectPointer<AcDbBlockTableRecord> block(blockId, AcDb::kForWrite);
        status = space ? run.cloneEntities(space->entities(), *block) : space.openStatus();
    }
    events.tell([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping); });
    if (status == Acad::eOk)
        status = run.translate();
    if (status != Acad::eOk) {
        run.rollBack();
        eraseObject(blockId);
        blockId.setNull();
        events.tell([&](AcRxEventReactor& r) { r.abortDeepClone(mapping); });
        events.tell([&](AcRxEventReactor& r) { r.abortInsert(this); });
        return status;
    }
    events.tell([&](AcRxEventReactor& r) { r.otherInsert(this, mapping, source); });
    events.tell([&](AcRxEventReactor& r) { r.endDeepClone(mapping); });
    events.tell([&](AcRxEventReactor& r) { r.endInsert(this); });
    return Acad::eOk;
}
