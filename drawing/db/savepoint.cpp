#include "db/savepoint.h"

#include "db/database.h"
#include "db/stub.h"

namespace {

constexpr uint16_t kChangeMarks = kStubModified | kStubLinksChanged;

AcDbBlockTableRecord* blockOf(const AcDbStub& stub) { return AcDbBlockTableRecord::cast(stub.object); }

} // namespace

AcDbSavepoint::AcDbSavepoint(AcDbDatabase& database)
    : database_(database), slots_(database.stubs().size()), recording_(database.undo().isEnabled()),
      dirty_(database.isDirty()) {
    database.undo().setEnabled(true);
    mark_ = database.undo().mark();
}

AcDbSavepoint::~AcDbSavepoint() {
    if (recording_)
        return;
    database_.undo().forgetBehind(mark_);
    database_.undo().setEnabled(false);
}

void AcDbSavepoint::touch(AcDbObjectId object) {
    AcDbStub* const stub = object.stub();
    if (!stub || stub->index >= slots_ || touched_.count(stub))
        return;
    const AcDbBlockTableRecord* const block = blockOf(*stub);
    touched_[stub] = {static_cast<uint16_t>(stub->flags & kChangeMarks), block ? block->references().size() : 0};
}

void AcDbSavepoint::rollBack() {
    database_.undo().rollBackTo(mark_);
    takeOutReferences();
    removeAdded();
    for (const auto& [stub, former] : touched_)
        stub->flags = static_cast<uint16_t>((stub->flags & ~kChangeMarks) | former.flags);
    database_.setDirty(dirty_);
}

void AcDbSavepoint::takeOutReferences() {
    for (const auto& [stub, former] : touched_)
        if (AcDbBlockTableRecord* const block = blockOf(*stub))
            block->forgetReferences(former.references);
}

void AcDbSavepoint::removeAdded() {
    const auto isHeld = [](const AcDbStub& stub) {
        return stub.readers > 0 || stub.has(kStubWriter) || stub.has(kStubNotifier);
    };
    const auto isRemoved = [this](AcDbObjectId id) { return id.stub() && id.stub()->index >= slots_ && !id.isValid(); };
    // What stays may name objects of the drawing that it was copied from.
    const auto letsGo = [this](AcDbStub& owner) {
        return AcDbDictionary::cast(owner.object) || (blockOf(owner) && touched_.count(&owner));
    };
    auto& stubs = database_.stubs();
    // A table takes its records from the end; everything else can only go behind its owner.
    for (size_t i = stubs.size(); i-- > slots_;) {
        AcDbStub& stub = stubs[i];
        AcDbStub* const owner = stub.object ? stub.object->ownerId().stub() : nullptr;
        auto* const table = owner ? AcDbSymbolTable::cast(owner->object) : nullptr;
        if (!table || isHeld(stub) || table->records().empty() || table->records().back() != AcDbObjectId(&stub))
            continue;
        table->forgetLast();
        delete stub.object;
        stub.setObject(nullptr);
        stub.flags = kStubErased;
    }
    for (size_t i = slots_; i < stubs.size(); ++i) {
        AcDbStub& stub = stubs[i];
        const AcDbObjectId owner = stub.object ? stub.object->ownerId() : AcDbObjectId();
        if (owner.isNull() || isHeld(stub) || !(isRemoved(owner) || letsGo(*owner.stub())))
            continue;
        delete stub.object;
        stub.setObject(nullptr);
        stub.flags = kStubErased;
    }
    for (const auto& [stub, former] : touched_)
        if (AcDbBlockTableRecord* const block = blockOf(*stub))
            block->forgetRemovedEntities();
}
