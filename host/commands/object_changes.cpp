#include "commands/object_changes.h"

#include "commands/selection.h"
#include "db/database.h"
#include "db/id_mapping.h"
#include "db/opaque.h"
#include "db/tied_entities.h"
#include "ed/host.h"

#include <algorithm>
#include <map>

namespace vndk::host {

namespace {

bool isOpaque(AcDbObjectId id) { return bool(AcDbObjectPointer<AcDbOpaqueEntity>(id)); }

/// "2 HATCH, 1 DIMENSION"
std::string countsByType(const std::vector<AcDbObjectId>& objects) {
    std::map<std::string, size_t> counts;
    for (const AcDbObjectId id : objects)
        if (const AcDbObjectPointer<AcDbEntity> entity(id); entity)
            ++counts[entity->dxfName()];
    std::string text;
    for (const auto& [type, count] : counts)
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + type;
    return text;
}

void sortByDrawingOrder(const CommandContext& ctx, std::vector<AcDbObjectId>& objects) {
    const std::unordered_set<AcDbObjectId> wanted(objects.begin(), objects.end());
    const AcDbObjectPointer<AcDbBlockTableRecord> space(ctx.currentSpace());
    if (!space)
        return;
    objects.clear();
    std::copy_if(space->entities().begin(), space->entities().end(), std::back_inserter(objects),
                 [&](AcDbObjectId id) { return wanted.contains(id); });
}

/// Transforms what isn't tied to another one of the objects; gives how many can't be, and why the last one can't.
size_t transformAll(const std::vector<AcDbObjectId>& objects, const AcGeMatrix3d& matrix, Acad::ErrorStatus& reason) {
    size_t refused = 0;
    for (const AcDbObjectId id : acdbWithoutTied(objects)) {
        const AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
        const Acad::ErrorStatus status = entity ? entity->transformBy(matrix) : entity.openStatus();
        if (status == Acad::eOk)
            continue;
        reason = status;
        ++refused;
    }
    return refused;
}

CommandResult failToChange(CommandContext& ctx, size_t refused, Acad::ErrorStatus reason) {
    return ctx.fail(std::to_string(refused) + (refused == 1 ? " object" : " objects") +
                    " can't be changed: " + acadErrorStatusText(reason) + '.');
}

} // namespace

PromptStatus askForObjects(CommandContext& ctx, std::vector<AcDbObjectId>& objects) {
    const PromptStatus status = SelectionPrompt(ctx).ask(objects);
    if (status != PromptStatus::Normal)
        return status;
    const size_t locked = std::erase_if(objects, isOnLockedLayer);
    if (locked > 0)
        ctx.print("\n" + std::to_string(locked) + (locked == 1 ? " was" : " were") + " on a locked layer.");
    return status;
}

PromptStatus askForMovableObjects(CommandContext& ctx, std::vector<AcDbObjectId>& objects) {
    const PromptStatus status = askForObjects(ctx, objects);
    if (status != PromptStatus::Normal)
        return status;
    sortByDrawingOrder(ctx, objects);
    const auto opaque =
        std::stable_partition(objects.begin(), objects.end(), [](AcDbObjectId id) { return !isOpaque(id); });
    const std::vector<AcDbObjectId> left(opaque, objects.end());
    objects.erase(opaque, objects.end());
    if (left.empty())
        return status;
    const std::string message = countsByType(left) + " stay as they are: their geometry isn't known.";
    if (!objects.empty()) {
        ctx.print("\n" + message);
        return status;
    }
    ctx.fail(message);
    return PromptStatus::Error;
}

CommandResult transformObjects(CommandContext& ctx, const std::vector<AcDbObjectId>& objects,
                               const AcGeMatrix3d& matrix) {
    Acad::ErrorStatus reason = Acad::eOk;
    const size_t refused = transformAll(objects, matrix, reason);
    return refused == 0 ? CommandResult::Done : failToChange(ctx, refused, reason);
}

CommandResult copyObjects(CommandContext& ctx, const std::vector<AcDbObjectId>& objects, const AcGeMatrix3d& matrix,
                          std::vector<AcDbObjectId>& copies) {
    AcDbDatabase& database = ctx.database();
    AcDbIdMapping mapping(&database, &database);
    copies.clear();
    Acad::ErrorStatus status = database.deepCloneObjects(objects, ctx.currentSpace(), mapping);
    if (status != Acad::eOk)
        return ctx.fail(std::string("These objects can't be copied: ") + acadErrorStatusText(status) + '.');
    for (const AcDbObjectId id : objects)
        copies.push_back(mapping.lookUp(id));
    const size_t refused = transformAll(copies, matrix, status);
    if (refused == 0)
        return CommandResult::Done;
    for (const AcDbObjectId id : acdbWithoutTied(copies))
        eraseEntity(id);
    copies.clear();
    return failToChange(ctx, refused, status);
}

CommandResult copyObjects(CommandContext& ctx, const std::vector<AcDbObjectId>& objects, const AcGeMatrix3d& matrix) {
    std::vector<AcDbObjectId> copies;
    return copyObjects(ctx, objects, matrix, copies);
}

PromptStatus askDisplacement(CommandContext& ctx, const AcGePoint3d& base, AcGeVector3d& offset) {
    AcGePoint3d second;
    PromptStatus status = ctx.prompts().getPoint(
        "\nSpecify second point of displacement or <use first point as displacement>: ", second, &base);
    offset = ctx.prompts().ucsToWorld() * (status == PromptStatus::Normal ? second - base : base.asVector());
    return status;
}

} // namespace vndk::host
