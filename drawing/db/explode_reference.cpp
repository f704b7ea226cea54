// The contents of a block in place of a reference to it.
#include "db/block_reference.h"
#include "db/clone_run.h"
#include "db/polylines.h"
#include "db/tied_entities.h"
#include "db/transformed_parts.h"

namespace {

using vndk::db::Parts;

/// How an entity of the block comes out: copied with all it owns when there are no parts.
struct Outcome {
    AcDbObjectId source;
    Parts parts;
};

/// From the block's coordinates, base point and all, to the world.
AcGeMatrix3d fromBlock(const AcDbBlockReference& reference, const AcDbBlockTableRecord& block) {
    return reference.blockTransform() * AcGeMatrix3d::translation(AcGePoint3d::kOrigin - block.origin());
}

/// Can a copy of the entity with all it owns be transformed?
Acad::ErrorStatus follows(const AcDbEntity& entity, const AcGeMatrix3d& matrix) {
    const std::unique_ptr<AcDbObject> trial(entity.copyData());
    return static_cast<AcDbEntity&>(*trial).transformBy(matrix);
}

Acad::ErrorStatus plan(const AcDbBlockTableRecord& block, const AcGeMatrix3d& matrix, std::vector<Outcome>& outcomes) {
    for (const AcDbObjectId id : block.entities()) {
        if (id.isErased())
            continue;
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (!entity)
            return entity.openStatus();
        Outcome& outcome = outcomes.emplace_back();
        outcome.source = id;
        Acad::ErrorStatus status = follows(*entity, matrix);
        if (status == Acad::eCannotScaleNonUniformly)
            status = vndk::db::addTransformed(*entity, matrix, outcome.parts);
        if (status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

/// Puts copies and parts into the reference's record, the order being that of the block.
Acad::ErrorStatus place(const AcDbBlockReference& reference, std::vector<Outcome>& outcomes, AcDbCloneRun& run) {
    const AcDbObjectPointer<AcDbBlockTableRecord> space(reference.ownerId(), AcDb::kForWrite);
    if (!space)
        return space.openStatus();
    for (Outcome& outcome : outcomes) {
        if (outcome.parts.empty())
            if (const Acad::ErrorStatus status = run.cloneEntities({outcome.source}, *space); status != Acad::eOk)
                return status;
        for (std::unique_ptr<AcDbEntity>& part : outcome.parts) {
            vndk::db::inherit(*part, reference, *reference.database());
            AcDbObjectId id;
            if (const Acad::ErrorStatus status = space->appendAcDbEntity(id, part.get()); status != Acad::eOk)
                return status;
            part.release()->close();
        }
    }
    return run.cloneNeeded();
}

/// Moves the copies to their places.
Acad::ErrorStatus settle(const AcDbBlockReference& reference, const std::vector<Outcome>& outcomes,
                         const AcDbIdMapping& mapping, const AcGeMatrix3d& matrix) {
    std::vector<AcDbObjectId> copies;
    for (const Outcome& outcome : outcomes) {
        const AcDbObjectPointer<AcDbEntity> copy(mapping.lookUp(outcome.source), AcDb::kForWrite);
        if (!copy)
            continue;
        vndk::db::inherit(*copy, reference, *reference.database());
        copies.push_back(copy->objectId());
    }
    for (const AcDbObjectId id : acdbWithoutTied(copies)) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        const Acad::ErrorStatus status = entity ? entity->transformBy(matrix) : entity.openStatus();
        if (status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

} // namespace

Acad::ErrorStatus AcDbBlockReference::explode(std::vector<AcDbEntity*>& parts) const {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockTableRecord());
    if (!block)
        return block.openStatus();
    const AcGeMatrix3d matrix = fromBlock(*this, *block);
    Parts pieces;
    for (const AcDbObjectId id : block->entities()) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (id.isErased())
            continue;
        const Acad::ErrorStatus status =
            entity ? vndk::db::addTransformed(*entity, matrix, pieces) : entity.openStatus();
        if (status != Acad::eOk)
            return status;
    }
    for (const std::unique_ptr<AcDbEntity>& piece : pieces)
        vndk::db::inherit(*piece, *this, *block->database());
    vndk::db::release(pieces, parts);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbBlockReference::explodeToOwnerSpace() const {
    if (!database())
        return Acad::eNotInDatabase;
    const AcDbObjectPointer<AcDbBlockTableRecord> block(blockTableRecord());
    if (!block)
        return block.openStatus();
    const AcGeMatrix3d matrix = fromBlock(*this, *block);
    std::vector<Outcome> outcomes;
    if (const Acad::ErrorStatus status = plan(*block, matrix, outcomes); status != Acad::eOk)
        return status;
    AcDbIdMapping mapping(database(), database());
    AcDbSavepoint savepoint(*database());
    savepoint.touch(ownerId());
    auto& events = acrxEventReactors();
    events.tell([&](AcRxEventReactor& r) { r.beginDeepClone(database(), mapping); });
    AcDbCloneRun run(*database(), *database(), mapping, savepoint);
    Acad::ErrorStatus status = place(*this, outcomes, run);
    if (status == Acad::eOk) {
        events.tell([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping); });
        run.translate();
        status = settle(*this, outcomes, mapping, matrix);
    }
    if (status != Acad::eOk)
        savepoint.rollBack();
    events.tell(
        [&](AcRxEventReactor& r) { status == Acad::eOk ? r.endDeepClone(mapping) : r.abortDeepClone(mapping); });
    return status;
}
