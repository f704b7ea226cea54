#include "db/xref.h"

#include "db/block_reference.h"
#include "db/database.h"

namespace {

bool isXref(const AcDbBlockTableRecord& record) {
    return record.isFromExternalReference() || record.isFromOverlayReference();
}

/// References look otherwise now; they aren't changed.
void tellReferences(const AcDbBlockTableRecord& record) {
    std::vector<AcDbObjectId> references;
    if (record.getBlockReferenceIds(references) != Acad::eOk)
        return;
    AcDbDatabase& database = *record.database();
    for (const AcDbObjectId id : references)
        if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
            database.reactors().tell(
                [&](AcDbDatabaseReactor& reactor) { reactor.objectModified(&database, entity.object()); });
}

} // namespace

Acad::ErrorStatus acdbMakeXref(AcDbObjectId& block, AcDbDatabase& database, const char* name, const char* path,
                               bool overlay) {
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
    if (!table)
        return table.openStatus();
    if (table->has(name))
        return Acad::eDuplicateRecordName;
    auto record = std::make_unique<AcDbBlockTableRecord>();
    if (const Acad::ErrorStatus status = record->setName(name); status != Acad::eOk)
        return status;
    AcDbBlockTableRecord::Data data;
    data.isXref = true;
    data.xrefOverlaid = overlay;
    data.xrefPath = path;
    record->setFileData(std::move(data));
    const Acad::ErrorStatus status = table->add(block, record.get());
    if (status == Acad::eOk)
        record.release()->close();
    return status;
}

std::vector<AcDbObjectId> acdbXrefBlocks(const AcDbDatabase& database) {
    std::vector<AcDbObjectId> blocks;
    const AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId());
    if (!table)
        return blocks;
    for (const AcDbObjectId id : table->records()) {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(id);
        if (record && isXref(*record))
            blocks.push_back(id);
    }
    return blocks;
}

Acad::ErrorStatus acdbSetXrefDatabase(AcDbObjectId block, std::shared_ptr<AcDbDatabase> shown) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
    if (!record)
        return record.openStatus();
    if (!isXref(*record))
        return Acad::eNotApplicable;
    record->setXrefDatabase(std::move(shown));
    tellReferences(*record);
    return Acad::eOk;
}

Acad::ErrorStatus acdbSetXrefPath(AcDbObjectId block, const char* path) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    if (!record)
        return record.openStatus();
    return isXref(*record) ? record->setPathName(path) : Acad::eNotApplicable;
}

Acad::ErrorStatus acdbDetachXref(AcDbObjectId block) {
    std::vector<AcDbObjectId> references;
    {
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
        if (!record)
            return record.openStatus();
        if (!isXref(*record))
            return Acad::eNotApplicable;
        if (const Acad::ErrorStatus status = record->getBlockReferenceIds(references); status != Acad::eOk)
            return status;
    }
    for (const AcDbObjectId id : references)
        if (const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite); entity)
            entity->erase();
    const AcDbObjectPointer<AcDbBlockTableRecord> record(block, AcDb::kForWrite);
    return record ? record->erase() : record.openStatus();
}
