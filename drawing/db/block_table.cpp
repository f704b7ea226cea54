#include "db/block_table.h"

#include "db/block_ends.h"
#include "db/database.h"
#include "db/stub.h"
#include "db/text.h"

#include <algorithm>

ACDB_DXF_DEFINE_MEMBERS(AcDbBlockTableRecord, AcDbSymbolTableRecord, "BLOCK_HEADER", "")
ACDB_DXF_DEFINE_MEMBERS(AcDbBlockTable, AcDbSymbolTable, "BLOCK_CONTROL", "")

Acad::ErrorStatus AcDbBlockTableRecord::setOrigin(const AcGePoint3d& origin) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        data_.origin = origin;
    return status;
}

Acad::ErrorStatus AcDbBlockTableRecord::setPathName(const char* path) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        data_.xrefPath = path ? path : "";
    return status;
}

AcDbBlockTableRecord::Shown AcDbBlockTableRecord::shown() const {
    if (const AcDbDatabase* const other = xrefDatabase())
        return {other->modelSpaceId(), other->insbase()};
    return {objectId(), data_.origin};
}

Acad::ErrorStatus AcDbBlockTableRecord::setComments(const char* text) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        data_.description = text ? text : "";
    return status;
}

Acad::ErrorStatus AcDbBlockTableRecord::getPreviewIcon(PreviewIcon& icon) const {
    icon.assign(data_.previewIcon.begin(), data_.previewIcon.end());
    return hasPreviewIcon() ? Acad::eOk : Acad::eNotApplicable;
}

Acad::ErrorStatus AcDbBlockTableRecord::setPreviewIcon(const PreviewIcon& icon) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        data_.previewIcon.assign(icon.begin(), icon.end());
    return status;
}

bool AcDbBlockTableRecord::isLayout() const {
    // Model space and every paper space; their names alone begin so.
    const std::string folded = acdbFoldName(name());
    return folded.starts_with("*MODEL_SPACE") || folded.starts_with("*PAPER_SPACE");
}

bool AcDbBlockTableRecord::hasAttributeDefinitions() const {
    const auto& ids = entities();
    return std::any_of(ids.begin(), ids.end(), [](AcDbObjectId id) {
        AcDbStub* const stub = id.stub();
        return stub && !stub->has(kStubErased) &&
               AcDbAttributeDefinition::cast(stub->database->objectOf(*stub)) != nullptr;
    });
}

const std::vector<AcDbObjectId>& AcDbBlockTableRecord::entities(bool decoding) const {
    if (!content_.loaded) {
        content_.loaded = true;
        content_.entities = database()->source()->readChain(objectId(), content_.first, content_.last, decoding);
        content_.broken = content_.entities.empty() || content_.entities.back() != content_.last;
    }
    return content_.entities;
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbEntity* entity) {
    AcDbObjectId id;
    return appendAcDbEntity(id, entity);
}

Acad::ErrorStatus AcDbBlockTableRecord::appendAcDbEntity(AcDbObjectId& id, AcDbEntity* entity) {
    if (!entity)
        return Acad::eNullObjectPointer;
    if (!isResident())
        return Acad::eNoDatabase;
    if (!isWriteEnabled())
        return Acad::eNotOpenForWrite;
    if (entity->isResident())
        return Acad::eAlreadyInDb;
    if (entity->layerId().isNull())
        entity->fillDatabaseDefaults(database());
    entities(); // what the file has stands before what comes in
    const Acad::ErrorStatus status = database()->addAcDbObject(id, entity, objectId());
    if (status != Acad::eOk)
        return status;
    content_.entities.push_back(id);
    id.stub()->set(kStubEntity);
    noteContentChanged();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::newIterator(AcDbBlockTableRecordIterator*& iterator, bool atBeginning,
                                                    bool skipDeleted) const {
    iterator = new AcDbBlockTableRecordIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecord::getBlockReferenceIds(std::vector<AcDbObjectId>& ids) const {
    ids.clear();
    for (const AcDbObjectId id : content_.references)
        if (!id.isNull() && !id.isErased())
            ids.push_back(id);
    return Acad::eOk;
}

void AcDbBlockTableRecord::noteReference(AcDbObjectId reference) {
    content_.references.push_back(reference);
    if (AcDbStub* const stub = objectId().stub())
        stub->set(kStubLinksChanged);
}

void AcDbBlockTableRecord::dropFileParts() {
    data_.layout.setNull();
    data_.blockBegin.setNull();
    data_.blockEnd.setNull();
}

void AcDbBlockTableRecord::madeResident() {
    const auto add = [this](AcDbEntity* entity) {
        AcDbObjectId id;
        AcDbEntity::CommonData common;
        const AcDbObjectPointer<AcDbLayerTable> layers(database()->layerTableId());
        if (layers)
            layers->getAt("0", common.layer);
        common.linetype = database()->byLayerLinetypeId();
        entity->setCommonData(common);
        if (database()->addAcDbObject(id, entity, objectId()) == Acad::eOk)
            entity->close();
        else
            delete entity;
        return id;
    };
    auto* const begin = new AcDbBlockBegin;
    begin->setFileName(name());
    data_.blockBegin = add(begin);
    data_.blockEnd = add(new AcDbBlockEnd);
}

Acad::ErrorStatus AcDbBlockTableRecord::subErase(bool erasing) {
    if (isLayout())
        return Acad::eCannotBeErasedByCaller;
    std::vector<AcDbObjectId> contents = std::move(content_.erasedWithRecord);
    content_.erasedWithRecord.clear();
    if (erasing) {
        contents = entities();
        contents.insert(contents.end(), {data_.blockBegin, data_.blockEnd});
        std::erase_if(contents, [](AcDbObjectId id) { return id.isErased(); });
    }
    for (const AcDbObjectId id : contents)
        if (const AcDbObjectPointer<AcDbObject> object(id, AcDb::kForWrite, true); object)
            object->erase(erasing);
    if (erasing)
        content_.erasedWithRecord = std::move(contents);
    return Acad::eOk;
}

void AcDbBlockTableRecord::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbSymbolTableRecord::visitReferences(visitor);
    visitor.visit(data_.layout, AcDb::kSoftPointer);
    visitor.visit(data_.blockBegin, AcDb::kHardOwner);
    visitor.visit(data_.blockEnd, AcDb::kHardOwner);
}

AcDbBlockTableRecordIterator::AcDbBlockTableRecordIterator(const AcDbBlockTableRecord& record, bool atBeginning,
                                                           bool skipDeleted)
    : entities_(record.entities()) {
    start(atBeginning, skipDeleted);
}

void AcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted) {
    position_ = atBeginning ? 0 : static_cast<ptrdiff_t>(entities_.size()) - 1;
    skip(atBeginning, skipDeleted);
}

bool AcDbBlockTableRecordIterator::done() const {
    return position_ < 0 || position_ >= static_cast<ptrdiff_t>(entities_.size());
}

void AcDbBlockTableRecordIterator::step(bool forwards, bool skipDeleted) {
    if (done())
        return;
    position_ += forwards ? 1 : -1;
    skip(forwards, skipDeleted);
}

void AcDbBlockTableRecordIterator::skip(bool forwards, bool skipDeleted) {
    while (skipDeleted && !done() && entities_[static_cast<size_t>(position_)].isErased())
        position_ += forwards ? 1 : -1;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::seek(AcDbObjectId entity) {
    const auto it = std::find(entities_.begin(), entities_.end(), entity);
    if (it == entities_.end())
        return Acad::eInvalidInput;
    position_ = it - entities_.begin();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntityId(AcDbObjectId& id) const {
    if (done())
        return Acad::eInvalidInput;
    id = entities_[static_cast<size_t>(position_)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockTableRecordIterator::getEntity(AcDbEntity*& entity, AcDb::OpenMode mode,
                                                          bool openErased) const {
    AcDbObjectId id;
    entity = nullptr;
    const Acad::ErrorStatus status = getEntityId(id);
    return status == Acad::eOk ? acdbOpenObject(entity, id, mode, openErased) : status;
}
