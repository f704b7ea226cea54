#include "db/dictionary.h"

#include "db/database.h"
#include "db/stub.h"

#include <algorithm>
#include <unordered_map>

ACDB_DXF_DEFINE_MEMBERS(AcDbDictionary, AcDbObject, "DICTIONARY", "")

/// Places of the entries by folded name. New entries are taken in when something is looked up.
struct AcDbDictionary::Index {
    std::unordered_map<std::string, std::vector<size_t>> places;
    size_t taken = 0;
};

size_t AcDbDictionary::find(const char* name) const {
    constexpr size_t kSmall = 32;
    const std::string_view wanted = name ? name : "";
    const auto isIt = [&](const Entry& entry) { return !entry.id.isErased() && acdbIsSameName(entry.name, wanted); };
    if (entries_.size() <= kSmall)
        return static_cast<size_t>(std::find_if(entries_.begin(), entries_.end(), isIt) - entries_.begin());
    std::shared_ptr<Index>& index = index_;
    if (!index)
        index = std::make_shared<Index>();
    for (; index->taken < entries_.size(); ++index->taken)
        index->places[acdbFoldName(entries_[index->taken].name)].push_back(index->taken);
    if (const auto found = index->places.find(acdbFoldName(wanted)); found != index->places.end())
        for (const size_t place : found->second)
            if (isIt(entries_[place]))
                return place;
    return entries_.size();
}

void AcDbDictionary::dataRestored() {
    std::shared_ptr<Index>& index = index_;
    index.reset();
}

bool AcDbDictionary::has(const char* name) const { return find(name) < entries_.size(); }

Acad::ErrorStatus AcDbDictionary::getAt(const char* name, AcDbObjectId& id) const {
    const size_t place = find(name);
    id = place < entries_.size() ? entries_[place].id : AcDbObjectId();
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
    const size_t place = find(name);
    if (place == entries_.size()) {
        entries_.push_back({name, id});
        return Acad::eOk;
    }
    Entry& entry = entries_[place];
    if (entry.id != id)
        if (const AcDbObjectPointer<AcDbObject> former(entry.id, AcDb::kForWrite); former)
            former->erase();
    entry.id = id;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDictionary::remove(const char* name) {
    const size_t place = find(name);
    if (place == entries_.size())
        return Acad::eKeyNotFound;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk)
        return status;
    entries_.erase(entries_.begin() + static_cast<ptrdiff_t>(place));
    dataRestored();
    return Acad::eOk;
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
    dataRestored();
    cloning_ = data.cloning;
    hardOwner_ = data.hardOwner;
    withDefault_ = data.withDefault;
    defaultId_ = data.defaultId;
}

AcDbDictionary::FileData AcDbDictionary::fileData() const {
    return {entries_, cloning_, hardOwner_, withDefault_, defaultId_};
}
