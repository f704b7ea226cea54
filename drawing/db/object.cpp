#include "db/object.h"

#include "db/database.h"
#include "db/open.h"
#include "db/reactors.h"
#include "db/stub.h"
#include "db/xdata.h"

#include <cassert>

ACRX_NO_CONS_DEFINE_MEMBERS(AcDbObject, AcRxObject)

/// What few objects have. The copy of an object takes all of it along but the transient reactors.
struct AcDbObject::Extras {
    AcDbXData xdata;
    AcDbObjectId dictionary;
    std::vector<AcDbObjectId> persistentReactors;
    AcDbReactorList<AcDbObjectReactor> transientReactors;

    bool hasData() const { return !xdata.groups.empty() || !dictionary.isNull() || !persistentReactors.empty(); }
    void copyDataFrom(const Extras& other) {
        xdata = other.xdata;
        dictionary = other.dictionary;
        persistentReactors = other.persistentReactors;
    }
};

AcDbObject::AcDbObject() = default;

AcDbObject::~AcDbObject() {
    if (extras_)
        extras_->transientReactors.tell([this](AcDbObjectReactor& r) { r.goodbye(this); });
}

AcDbObject::AcDbObject(const AcDbObject& other) : AcRxObject(other), owner_(other.owner_) {
    if (other.extras_ && other.extras_->hasData())
        extras().copyDataFrom(*other.extras_);
}

AcDbObject& AcDbObject::operator=(const AcDbObject& other) {
    owner_ = other.owner_;
    if (other.extras_)
        extras().copyDataFrom(*other.extras_);
    else if (extras_)
        extras_->copyDataFrom(Extras());
    return *this;
}

AcDbObject::Extras& AcDbObject::extras() const {
    if (!extras_)
        extras_ = std::make_unique<Extras>();
    return *extras_;
}

Acad::ErrorStatus AcDbObject::setOwnerId(AcDbObjectId owner) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk)
        owner_ = owner;
    return status;
}

void AcDbObject::getAcDbHandle(AcDbHandle& handle) const { handle = stub_ ? stub_->handle : AcDbHandle(); }

AcDbDatabase* AcDbObject::database() const { return stub_ ? stub_->database : nullptr; }

bool AcDbObject::isReadEnabled() const {
    return !stub_ || stub_->readers > 0 || stub_->has(kStubWriter) || stub_->has(kStubNotifier);
}

bool AcDbObject::isWriteEnabled() const { return !stub_ || stub_->has(kStubWriter); }

bool AcDbObject::isModified() const { return stub_ && stub_->has(kStubModifiedOpen); }

bool AcDbObject::isErased() const { return stub_ && stub_->has(kStubErased); }

bool AcDbObject::isNewObject() const { return !stub_ || stub_->has(kStubNew); }

void AcDbObject::assertReadEnabled() const { assert(isReadEnabled() && "an object is read that isn't open"); }

Acad::ErrorStatus AcDbObject::assertWriteEnabled() {
    if (!stub_)
        return Acad::eOk;
    if (!stub_->has(kStubWriter))
        return Acad::eNotOpenForWrite;
    if (!stub_->has(kStubModifiedOpen)) {
        stub_->database->reactors().tell(
            [this](AcDbDatabaseReactor& r) { r.objectOpenedForModify(stub_->database, this); });
        if (extras_)
            extras_->transientReactors.tell([this](AcDbObjectReactor& r) { r.openedForModify(this); });
        stub_->set(kStubModifiedOpen);
    }
    stub_->database->noteModified(*stub_);
    return Acad::eOk;
}

void AcDbObject::noteContentChanged() {
    if (!stub_)
        return;
    stub_->set(kStubLinksChanged);
    stub_->set(kStubModifiedOpen);
    stub_->database->setDirty(true);
}

namespace {

/// Tells the watchers of the database and of the object. The object can't be told of again meanwhile.
template <class ForDatabase, class ForObject>
void tellReactors(AcDbStub& stub, AcDbReactorList<AcDbObjectReactor>* own, ForDatabase&& forDatabase,
                  ForObject&& forObject) {
    if (stub.has(kStubNotifying))
        return;
    stub.set(kStubNotifying);
    stub.database->reactors().tell(forDatabase);
    if (own)
        own->tell(forObject);
    stub.clear(kStubNotifying);
}

} // namespace

Acad::ErrorStatus AcDbObject::close() {
    if (!stub_)
        return Acad::eNotInDatabase;
    AcDbStub& stub = *stub_;
    if (stub.has(kStubNotifier)) {
        stub.clear(kStubNotifier);
        return Acad::eOk;
    }
    if (stub.readers > 0) {
        --stub.readers;
        return Acad::eOk;
    }
    if (!stub.has(kStubWriter))
        return Acad::eInvalidOpenState;
    stub.clear(kStubWriter);
    auto* const own = extras_ ? &extras_->transientReactors : nullptr;
    if (stub.has(kStubModifiedOpen)) {
        stub.clear(kStubModifiedOpen);
        tellReactors(
            stub, own, [&](AcDbDatabaseReactor& r) { r.objectModified(stub.database, this); },
            [&](AcDbObjectReactor& r) { r.modified(this); });
    }
    if (own)
        own->tell([&](AcDbObjectReactor& r) { r.objectClosed(AcDbObjectId(&stub)); });
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::upgradeOpen() {
    if (!stub_)
        return Acad::eNotInDatabase;
    if (stub_->has(kStubWriter))
        return Acad::eWasOpenForWrite;
    if (stub_->readers == 0)
        return Acad::eNotOpenForRead;
    if (stub_->readers > 1)
        return Acad::eHadMultipleReaders;
    stub_->readers = 0;
    stub_->set(kStubWriter);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbObject::downgradeOpen() {
    if (!stub_)
        return Acad::eNotInDatabase;
    if (!stub_->has(kStubWriter))
        return Acad::eNotOpenForWrite;
    const Acad::ErrorStatus status = close();
    if (status == Acad::eOk)
        stub_->readers = 1;
    return status;
}

Acad::ErrorStatus AcDbObject::erase(bool erasing) {
    if (!stub_)
        return Acad::eNotInDatabase;
    if (!stub_->has(kStubWriter))
        return Acad::eNotOpenForWrite;
    if (stub_->has(kStubErased) == erasing)
        return erasing ? Acad::eWasErased : Acad::eWasNotErased;
    if (const Acad::ErrorStatus status = subErase(erasing); status != Acad::eOk)
        return status;
    AcDbDatabase& database = *stub_->database;
    database.undo().recordErased(*stub_);
    erasing ? stub_->set(kStubErased) : stub_->clear(kStubErased);
    database.setDirty(true);
    if (AcDbStub* const owner = owner_.stub())
        owner->set(kStubLinksChanged);
    tellReactors(
        *stub_, extras_ ? &extras_->transientReactors : nullptr,
        [&](AcDbDatabaseReactor& r) { r.objectErased(&database, this, erasing); },
        [&](AcDbObjectReactor& r) { r.erased(this, erasing); });
    return Acad::eOk;
}

const AcDbXData* AcDbObject::packedXData() const {
    return extras_ && !extras_->xdata.groups.empty() ? &extras_->xdata : nullptr;
}

AcDbXData* AcDbObject::packedXDataForWrite() { return &extras().xdata; }

AcDbObjectId AcDbObject::extensionDictionary() const { return extras_ ? extras_->dictionary : AcDbObjectId(); }

Acad::ErrorStatus AcDbObject::setExtensionDictionary(AcDbObjectId dictionary) {
    const Acad::ErrorStatus status = assertWriteEnabled();
    if (status == Acad::eOk && (extras_ || !dictionary.isNull()))
        extras().dictionary = dictionary;
    return status;
}

Acad::ErrorStatus AcDbObject::createExtensionDictionary() {
    if (!stub_)
        return Acad::eNotInDatabase;
    const AcDbObjectId former = extensionDictionary();
    if (!former.isNull() && !former.isErased())
        return Acad::eAlreadyInDb;
    if (const Acad::ErrorStatus status = assertWriteEnabled(); status != Acad::eOk)
        return status;
    auto* const dictionary = new AcDbDictionary;
    AcDbObjectId id;
    if (const Acad::ErrorStatus status = stub_->database->addAcDbObject(id, dictionary, objectId());
        status != Acad::eOk) {
        delete dictionary;
        return status;
    }
    dictionary->close();
    extras().dictionary = id;
    return Acad::eOk;
}

const std::vector<AcDbObjectId>& AcDbObject::persistentReactors() const {
    static const std::vector<AcDbObjectId> none;
    return extras_ ? extras_->persistentReactors : none;
}

void AcDbObject::addPersistentReactor(AcDbObjectId reactor) {
    auto& reactors = extras().persistentReactors;
    if (std::find(reactors.begin(), reactors.end(), reactor) == reactors.end() && assertWriteEnabled() == Acad::eOk)
        reactors.push_back(reactor);
}

void AcDbObject::removePersistentReactor(AcDbObjectId reactor) {
    if (extras_ && assertWriteEnabled() == Acad::eOk)
        std::erase(extras_->persistentReactors, reactor);
}

void AcDbObject::dropLostReferences() {
    if (!extras_)
        return;
    std::erase(extras_->persistentReactors, AcDbObjectId());
    std::erase_if(extras_->xdata.groups, [](const AcDbXDataGroup& group) { return group.application.isNull(); });
}

void AcDbObject::addReactor(AcDbObjectReactor* reactor) const { extras().transientReactors.add(reactor); }

void AcDbObject::removeReactor(AcDbObjectReactor* reactor) const {
    if (extras_)
        extras_->transientReactors.remove(reactor);
}

void AcDbObject::disableUndoRecording(bool disable) {
    if (stub_)
        stub_->database->disableUndoRecording(disable);
}

void AcDbObject::visitReferences(AcDbReferenceVisitor& visitor) {
    visitor.visit(owner_, AcDb::kSoftPointer);
    if (!extras_)
        return;
    if (!extras_->dictionary.isNull())
        visitor.visit(extras_->dictionary, AcDb::kHardOwner);
    for (AcDbObjectId& reactor : extras_->persistentReactors)
        visitor.visit(reactor, AcDb::kSoftPointer);
    for (AcDbXDataGroup& group : extras_->xdata.groups)
        visitor.visit(group.application, AcDb::kHardPointer);
}
