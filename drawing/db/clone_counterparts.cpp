// What a copy refers to, in the drawing that the copy is in: found by name, or copied along.
#include "db/clone_run.h"
#include "db/opaque.h"
#include "db/stub.h"

#include <algorithm>
#include <memory>

namespace {

AcDbObject* residentObject(AcDbObjectId id) { return id.isNull() ? nullptr : id.database()->objectOf(*id.stub()); }

bool isOneOf(std::string_view name, std::initializer_list<std::string_view> names) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// Folders whose members belong to their drawing.
bool isOwnFolder(const std::string& key) {
    return acdbIsSameName(key, "ACAD_GROUP") || acdbIsSameName(key, "ACAD_LAYOUT");
}

} // namespace

bool acdbStaysBehind(const AcDbObject& object) {
    // The table of the drawing order names its entities by what can't be translated.
    return isOneOf(object.dxfName() ? object.dxfName() : "", {"GROUP", "LAYOUT", "SORTENTSTABLE"});
}

// Records of tables

AcDbObjectId AcDbCloneRun::tableFor(const AcDbSymbolTableRecord& record) const {
    const std::pair<const AcRxClass*, AcDbObjectId> tables[] = {
        {AcDbBlockTableRecord::desc(), to_.blockTableId()},
        {AcDbLayerTableRecord::desc(), to_.layerTableId()},
        {AcDbTextStyleTableRecord::desc(), to_.textStyleTableId()},
        {AcDbLinetypeTableRecord::desc(), to_.linetypeTableId()},
        {AcDbRegAppTableRecord::desc(), to_.regAppTableId()},
        {AcDbDimStyleTableRecord::desc(), to_.dimStyleTableId()}};
    for (const auto& [cls, table] : tables)
        if (record.isKindOf(cls))
            return table;
    // The others are of one class: the owner tells. A damaged file's owner may be anything.
    const AcDbObjectId table = mapping_.lookUp(record.ownerId());
    const AcDbObjectId others[] = {to_.viewTableId(), to_.UCSTableId(), to_.viewportTableId(), to_.vxTableId()};
    return std::find(std::begin(others), std::end(others), table) != std::end(others) ? table : AcDbObjectId();
}

/// The file by which a nameless style is known; empty for every other record.
const std::string& AcDbCloneRun::shapeFileKey(const AcDbSymbolTableRecord& record) const {
    static const std::string none;
    const auto* const style = AcDbTextStyleTableRecord::cast(&record);
    return style && style->mayBeNameless() && style->name().empty() ? style->data().fileName : none;
}

AcDbObjectId AcDbCloneRun::standingRecord(const AcDbSymbolTableRecord& record, const AcDbSymbolTable& table) {
    AcDbObjectId id;
    if (!record.mayBeNameless() || !record.name().empty()) {
        table.getAt(record.name().c_str(), id);
        return id;
    }
    for (const AcDbObjectId other : table.records())
        if (const auto* const found = AcDbSymbolTableRecord::cast(residentObject(other));
            found && !other.isErased() && found->mayBeNameless() && found->name().empty() &&
            acdbIsSameName(shapeFileKey(*found), shapeFileKey(record)))
            return other;
    return id;
}

std::string AcDbCloneRun::freeAnonymousName(const std::string& name, const AcDbSymbolTable& table) {
    const std::string stem = name.substr(0, name.find_last_not_of("0123456789") + 1);
    size_t& number = nextNumbers_.try_emplace(acdbFoldName(stem), table.records().size()).first->second;
    std::string candidate;
    do
        candidate = stem + std::to_string(number++);
    while (table.has(candidate.c_str()));
    return candidate;
}

Acad::ErrorStatus AcDbCloneRun::findRecord(AcDbSymbolTableRecord& record) {
    if (record.objectId() == forbidden_)
        return Acad::eSelfReference;
    const auto* const block = AcDbBlockTableRecord::cast(&record);
    const AcDbObjectId tableId = tableFor(record);
    if (tableId.isNull() || (block && block->isLayout()))
        return Acad::eOk;
    if (const Acad::ErrorStatus status = checkSound(record); status != Acad::eOk)
        return status;
    const AcDbObjectPointer<AcDbSymbolTable> table(tableId, AcDb::kForWrite);
    if (!table)
        return table.openStatus();
    const bool anonymous = block && record.name().starts_with('*');
    if (const AcDbObjectId standing = anonymous ? AcDbObjectId() : standingRecord(record, *table); !standing.isNull()) {
        mapping_.assign(record.objectId(), standing);
        return Acad::eOk;
    }
    std::unique_ptr<AcDbSymbolTableRecord> copy(static_cast<AcDbSymbolTableRecord*>(record.copyData()));
    if (anonymous)
        copy->setFromFile(freeAnonymousName(record.name(), *table), false, record.fileFlags());
    auto* const blockCopy = AcDbBlockTableRecord::cast(copy.get());
    if (blockCopy)
        blockCopy->dropFileParts();
    savepoint_.touch(tableId);
    if (const Acad::ErrorStatus status = table->add(copy.get()); status != Acad::eOk)
        return status;
    AcDbSymbolTableRecord* const added = copy.release();
    remember(record, *added);
    added->close();
    return blockCopy && blockCopy->data().blockEnd.isNull() ? Acad::eOutOfRange : Acad::eOk;
}

// Members of named dictionaries. An extension dictionary is none: what it holds is copied with it.

const std::string& AcDbCloneRun::keyIn(const AcDbDictionary& dictionary, AcDbObjectId member) {
    const auto [keys, fresh] = keys_.try_emplace(dictionary.objectId());
    if (fresh)
        for (const AcDbDictionary::Entry& entry : dictionary.entries())
            keys->second.emplace(entry.id, entry.name);
    return keys->second[member];
}

/// The dictionary that has the same name and stands in the same place, made if missing. Null if there can't be one:
/// only dictionaries below that of the named objects have a name in another drawing.
Acad::ErrorStatus AcDbCloneRun::findFolder(AcDbDictionary& dictionary, AcDbObjectId& counterpart, int depth) {
    constexpr int kDeepest = 16;
    const auto known = folders_.find(dictionary.objectId());
    counterpart = known == folders_.end() ? AcDbObjectId() : known->second;
    auto* const parent = AcDbDictionary::cast(residentObject(dictionary.ownerId()));
    if (!counterpart.isNull() || !parent || depth > kDeepest)
        return Acad::eOk;
    const std::string& key = keyIn(*parent, dictionary.objectId());
    AcDbObjectId parentId;
    if (const Acad::ErrorStatus status = findFolder(*parent, parentId, depth + 1); status != Acad::eOk)
        return status;
    if (parentId.isNull() || key.empty() || isOwnFolder(key))
        return Acad::eOk;
    const AcDbObjectPointer<AcDbDictionary> target(parentId, AcDb::kForWrite);
    if (!target)
        return target.openStatus();
    if (target->getAt(key.c_str(), counterpart) == Acad::eOk) {
        if (!AcDbDictionary::cast(residentObject(counterpart)))
            counterpart.setNull();
    } else {
        auto folder = std::make_unique<AcDbDictionary>();
        AcDbDictionary::FileData data;
        data.cloning = dictionary.fileData().cloning;
        data.hardOwner = dictionary.fileData().hardOwner;
        folder->setFileData(std::move(data));
        folder->addPersistentReactor(parentId);
        savepoint_.touch(parentId);
        if (const Acad::ErrorStatus status = target->setAt(key.c_str(), folder.get(), counterpart); status != Acad::eOk)
            return status;
        folder.release()->close();
    }
    if (!counterpart.isNull()) {
        folders_[dictionary.objectId()] = counterpart;
        mapping_.assign(dictionary.objectId(), counterpart);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCloneRun::findMember(AcDbObject& object) {
    AcDbObjectId folderId;
    if (auto* const itself = AcDbDictionary::cast(&object))
        return findFolder(*itself, folderId);
    AcDbObject* const owner = residentObject(object.ownerId());
    if (const Acad::ErrorStatus status = owner ? checkSound(*owner) : Acad::eOk; status != Acad::eOk)
        return status;
    auto* const folder = AcDbDictionary::cast(owner);
    if (!folder || acdbStaysBehind(object))
        return Acad::eOk;
    if (const Acad::ErrorStatus status = findFolder(*folder, folderId); status != Acad::eOk || folderId.isNull())
        return status;
    const std::string& key = keyIn(*folder, object.objectId());
    if (key.empty())
        return Acad::eOk;
    const AcDbObjectPointer<AcDbDictionary> target(folderId, AcDb::kForWrite);
    if (!target)
        return target.openStatus();
    AcDbObjectId id;
    if (target->getAt(key.c_str(), id) == Acad::eOk) {
        const AcDbObject* const standing = residentObject(id);
        if (standing && standing->isA() == object.isA() &&
            std::string_view(standing->dxfName()) == std::string_view(object.dxfName()))
            mapping_.assign(object.objectId(), id);
        return Acad::eOk;
    }
    if (const Acad::ErrorStatus status = checkSound(object); status != Acad::eOk)
        return status;
    std::unique_ptr<AcDbObject> copy(object.copyData());
    savepoint_.touch(folderId);
    if (const Acad::ErrorStatus status = target->setAt(key.c_str(), copy.get(), id); status != Acad::eOk)
        return status;
    remember(object, *copy);
    copy.release()->close();
    return Acad::eOk;
}
