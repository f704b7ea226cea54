#include "db/database.h"

#include "db/stand_in.h"
#include "db/stub.h"
#include "dwg/default_drawing.h"

#include <algorithm>
#include <cassert>
#include <filesystem>
#include <limits>

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbDatabase, AcRxObject)

AcDbDatabase::AcDbDatabase(bool buildDefaultDrawing, bool /*noDocument*/) : undo_(*this) {
    if (buildDefaultDrawing)
        vndk::dwg::buildDefaultDrawing(*this);
    dirty_ = false;
    acrxEventReactors().tell([this](AcRxEventReactor& r) { r.databaseConstructed(this); });
}

AcDbDatabase::~AcDbDatabase() {
    acrxEventReactors().tell([this](AcRxEventReactor& r) { r.databaseToBeDestroyed(this); });
    reactors_.tell([this](AcDbDatabaseReactor& r) { r.goodbye(this); });
    if (acdbHostApplicationServices()->workingDatabase() == this)
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    undo_.clear();
    for (AcDbStub& stub : stubs_)
        delete stub.object;
}

void AcDbDatabase::addWarning(std::string text) {
    // A damaged file can be odd in every object: the first ones tell what a user needs to know.
    constexpr size_t kMostWarnings = 200;
    if (warnings_.size() < kMostWarnings)
        warnings_.push_back(std::move(text));
    else if (warnings_.size() == kMostWarnings)
        warnings_.push_back("More warnings were left out.");
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbBlockTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.block, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLayerTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.layer, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbTextStyleTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.style, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbLinetypeTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.linetype, mode);
}

Acad::ErrorStatus AcDbDatabase::getSymbolTable(AcDbRegAppTable*& table, AcDb::OpenMode mode) {
    return acdbOpenObject(table, tables_.regApp, mode);
}

Acad::ErrorStatus AcDbDatabase::getNamedObjectsDictionary(AcDbDictionary*& dictionary, AcDb::OpenMode mode) {
    return acdbOpenObject(dictionary, namedObjects_, mode);
}

AcDbObjectId AcDbDatabase::registerApplication(const char* name) {
    AcDbObjectId id;
    {
        AcDbObjectPointer<AcDbRegAppTable> table(tables_.regApp);
        if (!table || table->getAt(name, id) == Acad::eOk)
            return id;
    }
    AcDbObjectPointer<AcDbRegAppTable> table(tables_.regApp, AcDb::kForWrite);
    if (!table)
        return id;
    auto* const record = new AcDbRegAppTableRecord;
    if (record->setName(name) != Acad::eOk || table->add(id, record) != Acad::eOk) {
        delete record;
        return {};
    }
    record->close();
    return id;
}

Acad::ErrorStatus AcDbDatabase::getAcDbObjectId(AcDbObjectId& id, AcDbHandle handle) const {
    id = AcDbObjectId(findStub(handle));
    return id.isNull() ? Acad::eUnknownHandle : Acad::eOk;
}

AcDbStub* AcDbDatabase::findStub(AcDbHandle handle) const {
    if (handle.isNull())
        return nullptr;
    if (handle.value() < byHandle_.size() && byHandle_[handle.value()])
        return byHandle_[handle.value()];
    const auto it = std::lower_bound(stubs_.begin(), stubs_.end(), handle,
                                     [](const AcDbStub& stub, AcDbHandle h) { return stub.handle < h; });
    return it != stubs_.end() && it->handle == handle ? const_cast<AcDbStub*>(&*it) : nullptr;
}

AcDbStub& AcDbDatabase::addStub(AcDbHandle handle) {
    assert((stubs_.empty() || stubs_.back().handle < handle) && "slots come in ascending order of handles");
    AcDbStub& stub = stubs_.emplace_back();
    stub.handle = handle;
    stub.database = this;
    stub.index = static_cast<uint32_t>(stubs_.size() - 1);
    // Handles are mostly dense, so most are found by place; a far-off one is found by search.
    if (handle.value() < 4 * stubs_.size() + 1024) {
        if (byHandle_.size() <= handle.value())
            byHandle_.resize(handle.value() + 1);
        byHandle_[handle.value()] = &stub;
    }
    handleSeed_ = std::max(handleSeed_, handle.value() + 1);
    return stub;
}

AcDbStub& AcDbDatabase::addFileStub(AcDbHandle handle, const uint8_t* bytes, uint32_t byteCount) {
    AcDbStub& stub = addStub(handle);
    stub.bytes = bytes;
    stub.byteCount = byteCount;
    return stub;
}

AcDbObject* AcDbDatabase::objectOf(AcDbStub& stub) {
    if (stub.object || !source_ || !stub.bytes)
        return stub.object;
    AcDbObject* const object = source_->decode(stub);
    assert(object && "the source gives an object for all bytes");
    stub.setObject(object);
    object->bindStub(&stub);
    object->dataRestored();
    return object;
}

Acad::ErrorStatus AcDbDatabase::addAcDbObject(AcDbObjectId& id, AcDbObject* object, AcDbObjectId owner) {
    if (!object)
        return Acad::eNullObjectPointer;
    if (object->isResident())
        return Acad::eAlreadyInDb;
    if (handleSeed_ == std::numeric_limits<uint64_t>::max() ||
        (!stubs_.empty() && stubs_.back().handle.value() >= handleSeed_))
        return Acad::eOutOfRange;
    AcDbStub& stub = addStub(AcDbHandle(handleSeed_));
    stub.setObject(object);
    stub.flags = kStubNew | kStubModified | kStubWriter;
    object->bindStub(&stub);
    object->setOwnerRaw(owner);
    id = AcDbObjectId(&stub);
    dirty_ = true;
    undo_.recordAppended(stub);
    object->madeResident();
    // Now, and not when the drawing is saved: what undo brings back mustn't meet an application of the same name.
    if (const AcDbStandInClass* const standIn = acdbStandInOf(object->isA()))
        registerApplication(standIn->applicationName);
    reactors_.tell([&](AcDbDatabaseReactor& r) { r.objectAppended(this, object); });
    return Acad::eOk;
}

void AcDbDatabase::noteModified(AcDbStub& stub) {
    undo_.recordModified(stub);
    stub.set(kStubModified);
    dirty_ = true;
}

void AcDbDatabase::setSpaces(AcDbObjectId model, AcDbObjectId paper) {
    modelSpace_ = model;
    paperSpace_ = paper;
}

void AcDbDatabase::setLinetypes(AcDbObjectId byLayer, AcDbObjectId byBlock, AcDbObjectId continuous) {
    byLayer_ = byLayer;
    byBlock_ = byBlock;
    continuous_ = continuous;
}

void AcDbDatabase::setHeader(const vndk::dwg::HeaderVariables& header, AcDbHandle handleSeed) {
    header_ = header;
    handleSeed_ = std::max(handleSeed_, handleSeed.value());
    headerModified_ = false;
}

void AcDbDatabase::headerWillChange(const char* name) {
    reactors_.tell([&](AcDbDatabaseReactor& r) { r.headerSysVarWillChange(this, name); });
    undo_.recordHeader(header_);
}

void AcDbDatabase::headerChanged(const char* name) {
    headerModified_ = true;
    dirty_ = true;
    reactors_.tell([&](AcDbDatabaseReactor& r) { r.headerSysVarChanged(this, name, true); });
}

void AcDbDatabase::restoreHeader(vndk::dwg::HeaderVariables& values) {
    std::swap(header_, values);
    headerModified_ = true;
}

AcGePoint3d AcDbDatabase::insbase() const { return {header_.INSBASE.x, header_.INSBASE.y, header_.INSBASE.z}; }

Acad::ErrorStatus AcDbDatabase::setInsbase(const AcGePoint3d& base) {
    changeHeader("INSBASE", [&](vndk::dwg::HeaderVariables& header) { header.INSBASE = {base.x, base.y, base.z}; });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::setClayer(AcDbObjectId layer) {
    const AcDbObjectPointer<AcDbLayerTableRecord> record(layer);
    if (!record)
        return record.openStatus();
    if (layer.database() != this)
        return Acad::eWrongDatabase;
    changeHeader("CLAYER", [&](vndk::dwg::HeaderVariables& header) { header.CLAYER = layer.handle().value(); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbHostApplicationServices::findFile(std::string& fullPath, const char* fileName) {
    fullPath = fileName;
    std::error_code ignored;
    return std::filesystem::exists(fullPath, ignored) ? Acad::eOk : Acad::eFileNotFound;
}

namespace {

AcDbHostApplicationServices* g_services = nullptr;

} // namespace

AcDbHostApplicationServices* acdbHostApplicationServices() {
    static AcDbHostApplicationServices plain;
    return g_services ? g_services : &plain;
}

void acdbSetHostApplicationServices(AcDbHostApplicationServices* services) { g_services = services; }
