#include "db/clone_run.h"

#include "db/block_ends.h"
#include "db/block_reference.h"
#include "db/dimensions.h"
#include "db/opaque.h"
#include "db/polylines.h"
#include "db/stub.h"
#include "db/viewport.h"
#include "db/xdata.h"

namespace {

/// Collects what an object refers to.
class ReferenceCollector : public AcDbReferenceVisitor {
public:
    void visit(AcDbObjectId& id, AcDb::ReferenceKind kind) override {
        if (!id.isNull() && !id.isErased())
            references.emplace_back(id, kind);
    }
    std::vector<std::pair<AcDbObjectId, AcDb::ReferenceKind>> references;
};

AcDbObject* residentObject(AcDbObjectId id) { return id.isNull() ? nullptr : id.database()->objectOf(*id.stub()); }

AcDbSubentities* subentitiesOf(AcDbObject& object) {
    if (auto* const reference = AcDbBlockReference::cast(&object))
        return &reference->subentities();
    if (auto* const polyline = AcDbVertexOwner::cast(&object))
        return &polyline->subentities();
    return nullptr;
}

/// Made anew with their owner, never copied.
bool comesWithOwner(const AcDbObject& object) {
    return object.isKindOf(AcDbSequenceEnd::desc()) || object.isKindOf(AcDbBlockBegin::desc()) ||
           object.isKindOf(AcDbBlockEnd::desc());
}

bool isOwning(AcDb::ReferenceKind kind) { return kind == AcDb::kSoftOwner || kind == AcDb::kHardOwner; }

} // namespace

AcDbCloneRun::AcDbCloneRun(AcDbDatabase& from, AcDbDatabase& to, AcDbIdMapping& mapping, AcDbSavepoint& savepoint)
    : from_(from), to_(to), mapping_(mapping), savepoint_(savepoint) {
    if (!betweenDrawings())
        return;
    for (const auto table :
         {&AcDbDatabase::blockTableId, &AcDbDatabase::layerTableId, &AcDbDatabase::textStyleTableId,
          &AcDbDatabase::linetypeTableId, &AcDbDatabase::viewTableId, &AcDbDatabase::UCSTableId,
          &AcDbDatabase::viewportTableId, &AcDbDatabase::regAppTableId, &AcDbDatabase::dimStyleTableId,
          &AcDbDatabase::vxTableId, &AcDbDatabase::namedObjectsDictionaryId})
        if (const AcDbObjectId source = (from.*table)(), destination = (to.*table)();
            !source.isNull() && !destination.isNull())
            mapping.assign(source, destination);
    folders_[from.namedObjectsDictionaryId()] = to.namedObjectsDictionaryId();
}

void AcDbCloneRun::remember(AcDbObject& original, AcDbObject& copy) {
    mapping_.assign(original.objectId(), copy.objectId());
    created_.push_back(copy.objectId());
    pending_.push_back({&original, &copy});
}

/// What another drawing gets has to be whole: a damaged object is just bytes, and only its own file can keep those.
Acad::ErrorStatus AcDbCloneRun::checkSound(const AcDbObject& original, bool listBroken) {
    const AcDbStub* const stub = original.objectId().stub();
    if (!betweenDrawings() || !stub || !(listBroken || stub->has(kStubDecodeFailed)))
        return Acad::eOk;
    char text[17];
    stub->handle.getIntoAsciiBuffer(text);
    const std::string name = from_.fileName().empty() ? "The drawing" : from_.fileName();
    failureText_ = name + " is damaged: " + (listBroken ? "entities of object " : "object ") + text +
                   " can't be read. Open its .bak copy, or have the program that saved it repair it.";
    return Acad::eDwgNeedsRecovery;
}

Acad::ErrorStatus AcDbCloneRun::cloneEntities(const std::vector<AcDbObjectId>& entities, AcDbBlockTableRecord& target) {
    for (const AcDbObjectId id : entities) {
        if (id.isErased() || !mapping_.lookUp(id).isNull())
            continue;
        AcDbObject* const original = residentObject(id);
        if (!original)
            return Acad::eNotThatKindOfClass;
        if (const Acad::ErrorStatus status = cloneEntity(*original, target); status != Acad::eOk)
            return status;
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCloneRun::cloneContents(AcDbObjectId block, AcDbBlockTableRecord& target) {
    const auto* const original = AcDbBlockTableRecord::cast(residentObject(block));
    if (!original)
        return Acad::eNotThatKindOfClass;
    const std::vector<AcDbObjectId>& entities = original->entities();
    const Acad::ErrorStatus status = checkSound(*original, original->isChainBroken());
    return status == Acad::eOk ? cloneEntities(entities, target) : status;
}

Acad::ErrorStatus AcDbCloneRun::cloneEntity(AcDbObject& original, AcDbBlockTableRecord& target) {
    if (const Acad::ErrorStatus status = checkSound(original); status != Acad::eOk)
        return status;
    if (!original.isKindOf(AcDbEntity::desc()))
        return Acad::eNotThatKindOfClass;
    if (betweenDrawings() && original.isKindOf(AcDbViewport::desc()))
        return Acad::eOk;
    auto* const copy = static_cast<AcDbEntity*>(original.copyData());
    AcDbObjectId id;
    if (const Acad::ErrorStatus status = target.appendAcDbEntity(id, copy); status != Acad::eOk) {
        delete copy;
        return status;
    }
    remember(original, *copy);
    copy->close();
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCloneRun::cloneChild(AcDbObject& original, AcDbObject& copy) {
    if (betweenDrawings() && acdbStaysBehind(original))
        return Acad::eOk;
    if (const Acad::ErrorStatus status = checkSound(original); status != Acad::eOk)
        return status;
    AcDbObject* const childCopy = original.copyData();
    AcDbSubentities* const parts = original.isKindOf(AcDbEntity::desc()) ? subentitiesOf(copy) : nullptr;
    AcDbObjectId id;
    Acad::ErrorStatus status = Acad::eOk;
    if (parts) {
        const AcDbObjectId formerEnd = parts->sequenceEnd();
        status = parts->append(copy, id, static_cast<AcDbEntity*>(childCopy));
        if (parts->sequenceEnd() != formerEnd)
            created_.push_back(parts->sequenceEnd()); // made anew, with the properties of its owner
    } else {
        status = to_.addAcDbObject(id, childCopy, copy.objectId());
    }
    if (childCopy->isResident()) {
        remember(original, *childCopy);
        childCopy->close();
    } else {
        delete childCopy;
    }
    return status;
}

Acad::ErrorStatus AcDbCloneRun::cloneRecordContents(const AcDbBlockTableRecord& original, const AcDbObject& copy) {
    const AcDbObjectPointer<AcDbBlockTableRecord> target(copy.objectId(), AcDb::kForWrite);
    return target ? cloneContents(original.objectId(), *target) : target.openStatus();
}

Acad::ErrorStatus AcDbCloneRun::adopt(AcDbObjectId source, AcDbObjectId namesake) {
    AcDbObject* const original = residentObject(source);
    const AcDbObjectPointer<AcDbObject> copy(namesake, AcDb::kForWrite);
    if (!original || !copy || original->isA() != copy->isA())
        return Acad::eNotThatKindOfClass;
    if (const Acad::ErrorStatus status = checkSound(*original); status != Acad::eOk)
        return status;
    const AcDbObjectId owner = copy->ownerId();
    copy->assignData(*original);
    copy->setOwnerRaw(owner);
    remember(*original, *copy);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCloneRun::cloneNeeded() {
    while (!pending_.empty()) {
        const Pending next = pending_.front();
        pending_.pop_front();
        Acad::ErrorStatus status = followAll(next);
        if (const auto* const block = AcDbBlockTableRecord::cast(next.original); block && status == Acad::eOk)
            status = cloneRecordContents(*block, *next.copy);
        if (status != Acad::eOk)
            return status;
    }
    return checkNesting();
}

Acad::ErrorStatus AcDbCloneRun::followAll(const Pending& pending) {
    ReferenceCollector collector;
    pending.original->visitReferences(collector);
    if (const AcDbXData* const data = betweenDrawings() ? pending.original->packedXData() : nullptr)
        for (const AcDbXDataGroup& group : data->groups) {
            AcDbXDataReader reader(group.items);
            AcDbXDataItem item;
            while (reader.next(item))
                if (const AcDbObjectId layer = item.code == 3 ? from_.idOf(item.handle.value()) : AcDbObjectId();
                    !layer.isNull() && !layer.isErased())
                    collector.references.emplace_back(layer, AcDb::kHardPointer);
        }
    const AcDbSubentities* const parts = subentitiesOf(*pending.original);
    Acad::ErrorStatus status = checkSound(*pending.original, parts && parts->isChainBroken());
    // Subentities come in while their owner is open for write.
    const AcDbObjectPointer<AcDbObject> owner(parts ? pending.copy->objectId() : AcDbObjectId(), AcDb::kForWrite);
    if (status == Acad::eOk && parts)
        status = owner.openStatus();
    for (const auto& [id, kind] : collector.references)
        if (status == Acad::eOk)
            status = follow(pending, id, kind);
    return status;
}

Acad::ErrorStatus AcDbCloneRun::follow(const Pending& pending, AcDbObjectId id, AcDb::ReferenceKind kind) {
    AcDbObject* const target = residentObject(id);
    if (!target || id == pending.original->ownerId() || comesWithOwner(*target))
        return Acad::eOk;
    // A damaged object doesn't tell what it is: a style, a dictionary or a part.
    if (kind != AcDb::kSoftPointer)
        if (const Acad::ErrorStatus status = checkSound(*target); status != Acad::eOk)
            return status;
    if (const auto* const block = AcDbBlockTableRecord::cast(target); block && betweenDrawings())
        if (const Acad::ErrorStatus status = noteUse(*pending.original, *block); status != Acad::eOk)
            return status;
    if (!mapping_.lookUp(id).isNull())
        return Acad::eOk;
    if (isOwning(kind) && target->ownerId() == pending.original->objectId())
        return cloneChild(*target, *pending.copy);
    if (isOwning(kind) && target->ownerId() == pending.original->ownerId() && target->isKindOf(AcDbEntity::desc()))
        return followBeside(*target, *pending.copy);
    if (!betweenDrawings()) {
        // The picture of a dimension is its own: the copy gets one, too.
        const auto* const dimension = AcDbDimension::cast(pending.original);
        auto* const picture = dimension && dimension->dimBlockId() == id ? AcDbBlockTableRecord::cast(target) : nullptr;
        return picture && picture->isAnonymous() ? findRecord(*picture) : Acad::eOk;
    }
    // A soft pointer takes nothing along but what a drawing has in any case when it has the holder.
    const bool soft = kind == AcDb::kSoftPointer;
    if (auto* const record = AcDbSymbolTableRecord::cast(target))
        return soft && AcDbBlockTableRecord::cast(target) ? Acad::eOk : findRecord(*record);
    return soft ? Acad::eOk : findMember(*target);
}

/// An entity that another one holds without being its owner goes into the same block.
Acad::ErrorStatus AcDbCloneRun::followBeside(AcDbObject& original, const AcDbObject& copy) {
    const AcDbObjectPointer<AcDbBlockTableRecord> open(copy.ownerId(), AcDb::kForWrite);
    if (open)
        return cloneEntity(original, *open);
    // The caller of the run has the first block open.
    auto* const block = AcDbBlockTableRecord::cast(residentObject(copy.ownerId()));
    if (!block)
        return Acad::eOk;
    return block->isWriteEnabled() ? cloneEntity(original, *block) : open.openStatus();
}

/// Blocks must not come to hold themselves.
Acad::ErrorStatus AcDbCloneRun::noteUse(const AcDbObject& user, const AcDbBlockTableRecord& block) {
    const auto* const reference = AcDbBlockReference::cast(&user);
    if (!reference || reference->blockTableRecord() != block.objectId())
        return Acad::eOk;
    if (block.objectId() == from_.modelSpaceId())
        return Acad::eSelfReference;
    uses_[user.ownerId()].insert(block.objectId());
    return Acad::eOk;
}

Acad::ErrorStatus AcDbCloneRun::checkNesting() const {
    // Blocks that hold none but finished ones are finished; what is left then runs in a circle.
    std::unordered_map<AcDbObjectId, size_t> unfinished;
    std::unordered_map<AcDbObjectId, std::vector<AcDbObjectId>> users;
    for (const auto& [user, blocks] : uses_) {
        unfinished[user] += blocks.size();
        for (const AcDbObjectId block : blocks) {
            unfinished[block];
            users[block].push_back(user);
        }
    }
    std::vector<AcDbObjectId> finished;
    for (const auto& [block, count] : unfinished)
        if (count == 0)
            finished.push_back(block);
    for (size_t i = 0; i < finished.size(); ++i)
        for (const AcDbObjectId user : users[finished[i]])
            if (--unfinished[user] == 0)
                finished.push_back(user);
    return finished.size() == unfinished.size() ? Acad::eOk : Acad::eSelfReference;
}
