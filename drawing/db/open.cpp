#include "db/open.h"

#include "db/database.h"
#include "db/is_a.h"
#include "db/stub.h"

#include <cstdio>

const AcDbObjectId AcDbObjectId::kNull;

void AcDbHandle::getIntoAsciiBuffer(char* buffer) const {
    std::snprintf(buffer, 17, "%llX", static_cast<unsigned long long>(value_));
}

bool AcDbObjectId::isValid() const { return stub_ && (stub_->object || stub_->bytes); }

bool AcDbObjectId::isErased() const { return stub_ && stub_->has(kStubErased); }

AcDbDatabase* AcDbObjectId::database() const { return stub_ ? stub_->database : nullptr; }

AcDbHandle AcDbObjectId::handle() const { return stub_ ? stub_->handle : AcDbHandle(); }

void AcDbStub::setObject(AcDbObject* made) {
    object = made;
    cls = made ? made->isA() : nullptr;
}

bool acdbIsA(AcDbObjectId id, const AcRxClass* cls) {
    AcDbStub* const stub = id.stub();
    if (!stub)
        return false;
    if (stub->object)
        return stub->cls == cls;
    AcDbObjectSource* const source = stub->database->source();
    if (!stub->bytes || !source || !source->canBe(*stub, cls))
        return false;
    return stub->database->objectOf(*stub)->isA() == cls;
}

namespace {

constexpr int kMaxReaders = 256;

/// What the slot's present state says to opening it in that mode.
Acad::ErrorStatus refusal(const AcDbStub& stub, AcDb::OpenMode mode) {
    if (stub.has(kStubNotifier))
        return Acad::eWasOpenForNotify;
    switch (mode) {
    case AcDb::kForRead:
        if (stub.has(kStubWriter))
            return Acad::eWasOpenForWrite;
        return stub.readers < kMaxReaders ? Acad::eOk : Acad::eAtMaxReaders;
    case AcDb::kForWrite:
        if (stub.has(kStubWriter))
            return Acad::eWasOpenForWrite;
        if (stub.has(kStubNotifying))
            return Acad::eWasNotifying;
        return stub.readers == 0 ? Acad::eOk : Acad::eWasOpenForRead;
    case AcDb::kForNotify:
        return Acad::eOk;
    }
    return Acad::eInvalidInput;
}

} // namespace

Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode, bool openErased) {
    object = nullptr;
    AcDbStub* const stub = id.stub();
    if (!stub)
        return Acad::eNullObjectId;
    if (stub->has(kStubErased) && !openErased)
        return Acad::eWasErased;
    if (const Acad::ErrorStatus status = refusal(*stub, mode); status != Acad::eOk)
        return status;
    AcDbObject* const found = stub->database->objectOf(*stub);
    if (!found)
        return Acad::ePermanentlyErased;
    if (mode == AcDb::kForRead)
        ++stub->readers;
    else
        stub->set(mode == AcDb::kForWrite ? kStubWriter : kStubNotifier);
    object = found;
    return Acad::eOk;
}

Acad::ErrorStatus acdbGetObjectId(AcDbObjectId& id, const ads_name name) {
    id.setFromOldId(name[0]);
    return id.isValid() ? Acad::eOk : Acad::eInvalidInput;
}

Acad::ErrorStatus acdbGetAdsName(ads_name& name, AcDbObjectId id) {
    name[0] = id.asOldId();
    name[1] = 0;
    return id.isNull() ? Acad::eNullObjectId : Acad::eOk;
}
