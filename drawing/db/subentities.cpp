#include "db/subentities.h"

#include "db/database.h"
#include "db/polylines.h"
#include "db/stub.h"

AcDbSubentities::State& AcDbSubentities::state() {
    if (!state_)
        state_.reset(new State); // NOLINT(modernize-make-unique): it takes no assignment
    return *state_;
}

const std::vector<AcDbObjectId>& AcDbSubentities::ids(const AcDbObject& owner, bool decoding) const {
    static const std::vector<AcDbObjectId> none;
    if (!state_)
        return none;
    if (!state_->loaded) {
        state_->loaded = true;
        AcDbDatabase* const database = owner.database();
        if (database && database->source())
            state_->ids = database->source()->readChain(owner.objectId(), state_->first, state_->last, decoding);
        state_->broken = state_->ids.empty() || state_->ids.back() != state_->last;
    }
    return state_->ids;
}

void AcDbSubentities::setFileChain(AcDbObjectId first, AcDbObjectId last, AcDbObjectId end) {
    State& file = state();
    file.first = first;
    file.last = last;
    file.end = end;
    file.loaded = first.isNull();
}

Acad::ErrorStatus AcDbSubentities::append(AcDbObject& owner, AcDbObjectId& id, AcDbEntity* entity) {
    AcDbDatabase* const database = owner.database();
    if (!database)
        return Acad::eNotInDatabase;
    if (const Acad::ErrorStatus status = owner.assertWriteEnabled(); status != Acad::eOk)
        return status;
    if (const Acad::ErrorStatus status = database->addAcDbObject(id, entity, owner.objectId()); status != Acad::eOk)
        return status;
    ids(owner);
    state().ids.push_back(id);
    if (!state_->end.isNull() && !state_->end.isErased())
        return Acad::eOk;
    auto* const end = new AcDbSequenceEnd;
    if (const auto* const graphical = AcDbEntity::cast(&owner))
        end->setPropertiesFrom(graphical);
    const Acad::ErrorStatus status = database->addAcDbObject(state_->end, end, owner.objectId());
    if (status == Acad::eOk)
        end->close();
    else
        delete end;
    return status;
}

namespace {

/// Erases or brings back one object, whatever its state; true if that changed it.
bool setErased(AcDbObjectId id, bool erasing) {
    if (id.isNull() || id.isErased() == erasing)
        return false;
    AcDbObject* object = nullptr;
    if (acdbOpenAcDbObject(object, id, AcDb::kForWrite, true) != Acad::eOk)
        return false;
    const bool changed = object->erase(erasing) == Acad::eOk;
    object->close();
    return changed;
}

} // namespace

Acad::ErrorStatus AcDbSubentities::eraseWithOwner(const AcDbObject& owner, bool erasing) {
    if (!state_)
        return Acad::eOk;
    ids(owner);
    State& list = *state_;
    if (!erasing) {
        for (const AcDbObjectId id : list.erasedWithOwner)
            setErased(id, false);
        list.erasedWithOwner.clear();
        return Acad::eOk;
    }
    list.erasedWithOwner.clear();
    for (const AcDbObjectId id : list.ids)
        if (setErased(id, true))
            list.erasedWithOwner.push_back(id);
    if (setErased(list.end, true))
        list.erasedWithOwner.push_back(list.end);
    return Acad::eOk;
}

void AcDbSubentities::visit(const AcDbObject& owner, AcDbReferenceVisitor& visitor) {
    if (!state_)
        return;
    ids(owner);
    // The owner keeps its list whatever a visitor does: a copy gets its own subentities appended.
    for (AcDbObjectId id : state_->ids)
        visitor.visit(id, AcDb::kHardOwner);
    AcDbObjectId end = state_->end;
    if (!end.isNull())
        visitor.visit(end, AcDb::kHardOwner);
}

Acad::ErrorStatus AcDbSubentities::transformBy(const AcDbObject& owner, const AcGeMatrix3d& matrix) {
    Acad::ErrorStatus result = Acad::eOk;
    for (const AcDbObjectId id : ids(owner)) {
        if (id.isErased())
            continue;
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        const Acad::ErrorStatus status = entity ? entity->transformBy(matrix) : entity.openStatus();
        if (status != Acad::eOk)
            result = status;
    }
    return result;
}
