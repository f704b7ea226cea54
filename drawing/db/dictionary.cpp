#include "db/dictionary.h"

#include "db/database.h"
#include "db/stub.h"

#include <algorithm>

ACDB_DXF_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY", "")

namespace {

auto findEntry(const std::vector<AcDbDictionary::Entry>& entries, const char* name) {
    const std::string_view wanted = name ? name : "";
    return std::find_if(entries.begin(), entries.end(), [&](const AcDbDictionary::Entry& entry) {
        return !entry.id.isErased() && acdbIsSameName(entry.name, wanted);
    });
}

} // namespace

bool AcDbDictionary::has(const char* name) const { return findEntry(entries_, name) != entries_.end(); }

Acad::ErrorStatus AcDbDictionary::getAt(const char* name, AcDbObjectId& id) const {
    const auto entry = findEntry(entries_, name);
    id = entry == entries_.end() ? AcDbObjectId() : entry->id;
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::getAt(const char* name, AcDbObject*& object, AcDb::OpenMode mode) const {
    AcDbObjectId id;
    object = nullptr;
    const Acad::ErrorStatus status = getAt(name, id);
    return status == Acad::eOk ? acdbOpenAcDbObject(object, id, mode) : status;
}

Acad::ErrorStatus AcDbDictionary::nameAt(AcDbObjectId id, char*& name) const {
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [id](const Entry& e) { return e.id == id; });
    name = nullptr;
    if (entry == entries_.end() || id.isErased())
        return Acad::eKeyNotFound;
    name = acutNewString(entry->name);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::setAt(const char* name, AcDbObject* object, AcDbObjectId& id) {
    if (!object)
        return Acad::eNullObjectPointer;
    if (!name || !*name)
        return Acad::eInvalidKey;
    if (!isResident())
        return Acad::eNoDatabase;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    if (object->isResident())
        id = object->objectId();
    else if (const Acad::ErrorStatus status = database()->addAcDbObject(id, object, objectId()); status != Acad::eOk)
        return status;
    const auto found = findEntry(entries_, name);
    if (found == entries_.end()) {
        entries_.push_back({name, id});
        return Acad::eOk;
    }
    Entry& entry = entries_[static_cast<size_t>(found - entries_.begin())];
    if (entry.id != id)
        if (const AcDbObjectPointer<AcDbObject> former(entry.id, AcDb::kForWrite); former)
            former->erase();
    entry.id = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const char* name) {
    const auto found = findEntry(entries_, name);
    if (found == entries_.end())
        return Acad::eKeyNotFound;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        entries_.erase(found);
    return status;
}

size_t AcDbDictionary::numEntries() const {
    return static_cast<size_t>(
        std::count_if(entries_.begin(), entries_.end(), [](const Entry& entry) { return !entry.id.isErased(); }));
}

AcDbDictionaryIterator* AcDbDictionary::newIterator() const { return new AcDbDictionaryIterator(*this); }

void AcDbDictionary::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbObject::visitReferences(visitor);
    for (Entry& entry : entries_)
        visitor.visit(entry.id, hardOwner_ ? AcDb::kHardOwner : AcDb::kSoftOwner);
    visitor.visit(defaultId_, AcDb::kHardPointer);
}

void AcDbDictionary::setFileData(FileData data) {
    entries_ = std::move(data.entries);
    cloning_ = data.cloning;
    hardOwner_ = data.hardOwner;
    withDefault_ = data.withDefault;
    defaultId_ = data.defaultId;
}

AcDbDictionary::FileData AcDbDictionary::fileData() const {
    return {entries_, cloning_, hardOwner_, withDefault_, defaultId_};
}
