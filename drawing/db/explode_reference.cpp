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

/// Gives a part what it would take from the reference that it is seen by.
void inherit(AcDbEntity& part, const AcDbBlockReference& reference, AcDbDatabase& database) {
    if (part.colorIndex() == kAcDbColorByBlock)
        part.setColorIndex(reference.colorIndex());
    if (part.linetypeId() == database.byBlockLinetypeId())
        part.setLinetype(reference.linetypeId());
    if (part.lineWeight() == AcDb::kLnWtByBlock)
        part.setLineWeight(reference.lineWeight());
    const AcDbObjectPointer<AcDbLayerTableRecord> layer(part.layerId());
    if (layer && layer->name() == "0")
        part.setLayer(reference.layerId());
    const auto* const polyline = AcDbVertexOwner::cast(&part);
    if (!polyline)
        return;
    for (const AcDbObjectId id : polyline->vertices())
        if (const AcDbObjectPointer<AcDbEntity> vertex(id, AcDb::kForWrite); vertex)
            inherit(*vertex, reference, database);
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

/// One explosion into the reference's record.
class Explosion {
public:
    Explosion(const AcDbBlockReference& reference, AcDbDatabase& database, AcDbIdMapping& mapping)
        : reference_(reference), database_(database), mapping_(mapping), run_(database, database, mapping) {}

    Acad::ErrorStatus run(std::vector<Outcome>& outcomes, const AcGeMatrix3d& matrix) {
        Acad::ErrorStatus status = place(outcomes);
        if (status == Acad::eOk) {
            acrxEventReactors().tell([&](AcRxEventReactor& r) { r.beginDeepCloneXlation(mapping_); });
            status = run_.translate();
        }
        if (status == Acad::eOk)
            status = settle(outcomes, matrix);
        if (status != Acad::eOk)
            takeBack();
        return status;
    }

private:
    Acad::ErrorStatus place(std::vector<Outcome>& outcomes) {
        const AcDbObjectPointer<AcDbBlockTableRecord> space(reference_.ownerId(), AcDb::kForWrite);
        if (!space)
            return space.openStatus();
        for (Outcome& outcome : outcomes) {
            Acad::ErrorStatus status = outcome.parts.empty() ? run_.cloneEntities({outcome.source}, *space) : Acad::eOk;
            for (std::unique_ptr<AcDbEntity>& part : outcome.parts) {
                inherit(*part, reference_, database_);
                AcDbObjectId id;
                status = space->appendAcDbEntity(id, part.get());
                if (status != Acad::eOk)
                    return status;
                part.release()->close();
                appended_.push_back(id);
            }
            if (status != Acad::eOk)
                return status;
        }
        return Acad::eOk;
    }

    /// Moves the copies to their places.
    Acad::ErrorStatus settle(const std::vector<Outcome>& outcomes, const AcGeMatrix3d& matrix) {
        std::vector<AcDbObjectId> copies;
        for (const Outcome& outcome : outcomes)
            if (const AcDbObjectId copy = mapping_.lookUp(outcome.source); !copy.isNull())
                copies.push_back(copy);
        for (const AcDbObjectId id : copies)
            if (const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite); entity)
                inherit(*entity, reference_, database_);
        for (const AcDbObjectId id : acdbWithoutTied(copies)) {
            const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
            const Acad::ErrorStatus status = entity ? entity->transformBy(matrix) : entity.openStatus();
            if (status != Acad::eOk)
                return status;
        }
        return Acad::eOk;
    }

    void takeBack() {
        run_.rollBack();
        for (const AcDbObjectId id : appended_)
            if (const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite); entity)
                entity->erase();
    }

    const AcDbBlockReference& reference_;
    AcDbDatabase& database_;
    AcDbIdMapping& mapping_;
    AcDbCloneRun run_;
    std::vector<AcDbObjectId> appended_;
};

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
        inherit(*piece, *this, *block->database());
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
    auto& events = acrxEventReactors();
    events.tell([&](AcRxEventReactor& r) { r.beginDeepClone(database(), mapping); });
    const Acad::ErrorStatus status = Explosion(*this, *database(), mapping).run(outcomes, matrix);
    events.tell(
        [&](AcRxEventReactor& r) { status == Acad::eOk ? r.endDeepClone(mapping) : r.abortDeepClone(mapping); });
    return status;
}
