// EXPLODE.
#include "commands/commands.h"
#include "commands/object_changes.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/polylines.h"
#include "db/tied_entities.h"

#include <algorithm>
#include <map>

namespace vndk::host {

namespace {

/// Puts the parts into the entity's record. On a failure those that are there already are erased again.
Acad::ErrorStatus appendParts(AcDbObjectId recordId, std::vector<AcDbEntity*> raw) {
    std::vector<std::unique_ptr<AcDbEntity>> parts(raw.begin(), raw.end());
    std::vector<AcDbObjectId> appended;
    const AcDbObjectPointer<AcDbBlockTableRecord> record(recordId, AcDb::kForWrite);
    Acad::ErrorStatus status = record.openStatus();
    for (size_t i = 0; i < parts.size() && status == Acad::eOk; ++i) {
        AcDbObjectId id;
        status = record->appendAcDbEntity(id, parts[i].get());
        if (status != Acad::eOk)
            break;
        parts[i].release()->close();
        appended.push_back(id);
    }
    if (status != Acad::eOk)
        for (const AcDbObjectId id : appended)
            eraseEntity(id);
    return status;
}

bool isExternal(const AcDbBlockReference& reference) {
    const AcDbObjectPointer<AcDbBlockTableRecord> block(reference.blockTableRecord());
    return block && block->isFromExternalReference();
}

/// True for a polyline that is wide somewhere.
bool losesWidth(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id);
    if (!entity)
        return false;
    if (const auto* const polyline = AcDbPolyline::cast(entity.object()))
        return std::any_of(polyline->data().vertices.begin(), polyline->data().vertices.end(),
                           [](const auto& vertex) { return vertex.startWidth > 0 || vertex.endWidth > 0; });
    const auto* const old = AcDb2dPolyline::cast(entity.object());
    return old && std::any_of(old->vertices().begin(), old->vertices().end(), [](AcDbObjectId vertexId) {
               const AcDbObjectPointer<AcDb2dVertex> vertex(vertexId);
               return vertex && (vertex->startWidth() > 0 || vertex->endWidth() > 0);
           });
}

/// Why an object stays whole; empty when it came apart.
std::string explodeObject(AcDbObjectId id) {
    const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    if (!entity)
        return " could not be exploded: something else has it open.";
    Acad::ErrorStatus status = Acad::eOk;
    if (const auto* const reference = AcDbBlockReference::cast(entity.object())) {
        if (reference->isKindOf(AcDbMInsertBlock::desc()))
            return " was MINSERTed and could not be exploded.";
        if (isExternal(*reference))
            return " was an external reference and could not be exploded.";
        status = reference->explodeToOwnerSpace();
        if (status == Acad::eCannotScaleNonUniformly)
            return " could not be exploded: the block holds what can't follow its uneven scaling.";
        if (status == Acad::eNotApplicable)
            return " could not be exploded: the block holds what can't be transformed.";
    } else {
        std::vector<AcDbEntity*> parts;
        status = entity->explode(parts);
        if (status == Acad::eOk)
            status = appendParts(entity->ownerId(), std::move(parts));
        if (status == Acad::eNotApplicable)
            return std::string(" ") + entity->dxfName() + " could not be exploded.";
    }
    if (status == Acad::eOk)
        status = entity->erase();
    return status == Acad::eOk ? std::string()
                               : std::string(" could not be exploded: ") + acadErrorStatusText(status) + '.';
}

} // namespace

CommandResult explodeCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    if (const PromptStatus status = askForObjects(ctx, objects); status != PromptStatus::Normal)
        return stoppedBy(status);
    std::map<std::string, size_t> whole;
    size_t exploded = 0;
    for (const AcDbObjectId id : acdbWithoutTied(objects)) {
        const bool wide = losesWidth(id);
        const std::string reason = explodeObject(id);
        reason.empty() ? ++exploded : ++whole[reason];
        if (wide && reason.empty())
            ctx.print("\nExploding this polyline has lost width information."
                      "\nThe UNDO command will restore it.");
    }
    std::string message;
    for (const auto& [reason, count] : whole)
        message += (message.empty() ? "" : "\n") + std::to_string(count) + reason;
    if (exploded == 0 && !whole.empty())
        return ctx.fail(message);
    if (!whole.empty())
        ctx.print("\n" + message);
    return CommandResult::Done;
}

} // namespace vndk::host
