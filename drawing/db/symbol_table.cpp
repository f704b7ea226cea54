#include "db/symbol_table.h"

#include "db/database.h"
#include "db/stub.h"

#include <algorithm>
#include <array>

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTableRecord, AcDbObject)
ACRX_NO_CONS_DEFINE_MEMBERS(AcDbSymbolTable, AcDbObject)

namespace {

/// Upper-case letter of each character of code page 1252.
constexpr std::array<unsigned char, 256> makeFoldTable() {
    std::array<unsigned char, 256> table{};
    for (unsigned c = 0; c < 256; ++c) {
        const bool plain = c >= 'a' && c <= 'z';
        const bool accented = c >= 0xE0 && c <= 0xFE && c != 0xF7;
        const bool caron = c == 0x9A || c == 0x9C || c == 0x9E;
        const unsigned folded = plain || accented ? c - 0x20 : caron ? c - 0x10 : c == 0xFF ? 0x9F : c;
        table[c] = static_cast<unsigned char>(folded);
    }
    return table;
}

constexpr auto kFold = makeFoldTable();

bool foldsTo(const std::string& name, std::string_view folded) {
    if (name.size() != folded.size())
        return false;
    for (size_t i = 0; i < name.size(); ++i)
        if (kFold[static_cast<unsigned char>(name[i])] != static_cast<unsigned char>(folded[i]))
            return false;
    return true;
}

} // namespace

bool acdbIsSameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return kFold[static_cast<unsigned char>(x)] == kFold[static_cast<unsigned char>(y)];
    });
}

std::string acdbFoldName(std::string_view name) {
    std::string folded(name);
    for (char& c : folded)
        c = static_cast<char>(kFold[static_cast<unsigned char>(c)]);
    return folded;
}

bool acdbIsValidSymbolName(const char* name) {
    constexpr size_t kLongest = 255;
    if (!name || !*name)
        return false;
    std::string_view text(name);
    if (text.size() > kLongest)
        return false;
    if (text.front() == '*')
        text.remove_prefix(1);
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 0x20 ||
            std::string_view("<>/\\\":;?*|,=`").find(c) != std::string_view::npos)
            return false;
    return !text.empty();
}

Acad::ErrorStatus AcDbSymbolTableRecord::getName(char*& name) const {
    name = acutNewString(name_);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableRecord::setName(const char* name) {
    if (!acdbIsValidSymbolName(name))
        return Acad::eInvalidSymbolTableName;
    auto* const table = isResident() && ownerId().stub() ? AcDbSymbolTable::cast(ownerId().stub()->object) : nullptr;
    AcDbObjectId holder;
    if (table && table->getAt(name, holder) == Acad::eOk && holder != objectId())
        return Acad::eDuplicateRecordName;
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status != Acad::eOk)
        return status;
    name_ = name;
    if (table)
        table->recordRenamed(*this);
    return Acad::eOk;
}

void AcDbSymbolTableRecord::dataRestored() {
    auto* const table = ownerId().stub() ? AcDbSymbolTable::cast(ownerId().stub()->object) : nullptr;
    if (table)
        table->recordRenamed(*this);
}

void AcDbSymbolTableRecord::visitReferences(AcDbReferenceVisitor& visitor) {
    AcDbObject::visitReferences(visitor);
    visitor.visit(fileFlags_.xrefBlock, AcDb::kHardPointer);
}

void AcDbSymbolTableRecord::setFromFile(std::string name, bool dependent, const FileFlags& flags) {
    name_ = std::move(name);
    xrefDependent_ = dependent;
    fileFlags_ = flags;
}

void AcDbSymbolTable::ensureIndexed() const {
    Content& content = content_;
    while (content.indexed < content.records.size()) {
        AcDbStub* const stub = content.records[content.indexed].stub();
        ++content.indexed;
        AcDbObject* const object = stub ? stub->database->objectOf(*stub) : nullptr;
        if (const auto* const record = AcDbSymbolTableRecord::cast(object))
            const_cast<AcDbSymbolTable*>(this)->recordRenamed(*record);
    }
}

AcDbObjectId AcDbSymbolTable::find(std::string_view name, bool erasedToo) const {
    ensureIndexed();
    const std::string folded = acdbFoldName(name);
    AcDbObjectId erased;
    const auto [begin, end] = content_.byName.equal_range(folded);
    for (auto it = begin; it != end; ++it) {
        const auto* const record = static_cast<const AcDbSymbolTableRecord*>(it->second.stub()->object);
        if (!record || !foldsTo(record->name(), folded))
            continue; // removed or renamed since
        if (!it->second.isErased())
            return it->second;
        erased = it->second;
    }
    return erasedToo ? erased : AcDbObjectId();
}

bool AcDbSymbolTable::has(const char* name) const { return name && !find(name, false).isNull(); }

bool AcDbSymbolTable::has(AcDbObjectId record) const {
    return !record.isErased() &&
           std::find(content_.records.begin(), content_.records.end(), record) != content_.records.end();
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const char* name, AcDbObjectId& id, bool getErased) const {
    id = name ? find(name, getErased) : AcDbObjectId();
    return id.isNull() ? Acad::eKeyNotFound : Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::getAt(const char* name, AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                         bool openErased) const {
    AcDbObjectId id;
    record = nullptr;
    const Acad::ErrorStatus status = getAt(name, id, openErased);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbSymbolTableRecord* record) {
    AcDbObjectId id;
    return add(id, record);
}

Acad::ErrorStatus AcDbSymbolTable::add(AcDbObjectId& id, AcDbSymbolTableRecord* record) {
    if (!record)
        return Acad::eNullObjectPointer;
    if (!isResident())
        return Acad::eNoDatabase;
    if (!isWriteEnabled())
        return Acad::eNotOpenForWrite;
    if (record->name().empty() && !record->mayBeNameless())
        return Acad::eInvalidSymbolTableName;
    if (!record->name().empty() && has(record->name().c_str()))
        return Acad::eDuplicateRecordName;
    const Acad::ErrorStatus status = database()->addAcDbObject(id, record, objectId());
    if (status != Acad::eOk)
        return status;
    ensureIndexed();
    content_.records.push_back(id);
    recordRenamed(*record);
    content_.indexed = content_.records.size();
    noteContentChanged();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTable::newIterator(AcDbSymbolTableIterator*& iterator, bool atBeginning,
                                               bool skipDeleted) const {
    iterator = new AcDbSymbolTableIterator(*this, atBeginning, skipDeleted);
    return Acad::eOk;
}

void AcDbSymbolTable::addFromFile(AcDbObjectId record) { content_.records.push_back(record); }

void AcDbSymbolTable::forgetLast() {
    content_.records.pop_back();
    content_.indexed = std::min(content_.indexed, content_.records.size());
}

void AcDbSymbolTable::recordRenamed(const AcDbSymbolTableRecord& record) {
    const std::string folded = acdbFoldName(record.name());
    const auto [begin, end] = content_.byName.equal_range(folded);
    for (auto it = begin; it != end; ++it)
        if (it->second == record.objectId())
            return;
    content_.byName.emplace(folded, record.objectId());
}

void AcDbSymbolTable::visitReferences(AcDbReferenceVisitor& visitor) { AcDbObject::visitReferences(visitor); }

AcDbSymbolTableIterator::AcDbSymbolTableIterator(const AcDbSymbolTable& table, bool atBeginning, bool skipDeleted)
    : records_(table.records()) {
    start(atBeginning, skipDeleted);
}

void AcDbSymbolTableIterator::start(bool atBeginning, bool skipDeleted) {
    position_ = atBeginning ? 0 : static_cast<ptrdiff_t>(records_.size()) - 1;
    skip(atBeginning, skipDeleted);
}

bool AcDbSymbolTableIterator::done() const {
    return position_ < 0 || position_ >= static_cast<ptrdiff_t>(records_.size());
}

void AcDbSymbolTableIterator::step(bool forwards, bool skipDeleted) {
    if (done())
        return;
    position_ += forwards ? 1 : -1;
    skip(forwards, skipDeleted);
}

void AcDbSymbolTableIterator::skip(bool forwards, bool skipDeleted) {
    while (!done() && (records_[static_cast<size_t>(position_)].isNull() ||
                       (skipDeleted && records_[static_cast<size_t>(position_)].isErased())))
        position_ += forwards ? 1 : -1;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecordId(AcDbObjectId& id) const {
    if (done())
        return Acad::eInvalidInput;
    id = records_[static_cast<size_t>(position_)];
    return Acad::eOk;
}

Acad::ErrorStatus AcDbSymbolTableIterator::getRecord(AcDbSymbolTableRecord*& record, AcDb::OpenMode mode,
                                                     bool openErased) const {
    AcDbObjectId id;
    record = nullptr;
    const Acad::ErrorStatus status = getRecordId(id);
    return status == Acad::eOk ? acdbOpenObject(record, id, mode, openErased) : status;
}
