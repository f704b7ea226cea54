// MOVE and COPY.
#include "commands/commands.h"
#include "commands/object_changes.h"
#include "ed/host.h"

namespace vndk::host {

namespace {

/// Copies to one point after the other, until Enter. What has been placed stays when the user gives up.
CommandResult copyRepeatedly(CommandContext& ctx, const std::vector<AcDbObjectId>& objects) {
    AcGePoint3d base;
    ctx.prompts().initGet(kNoEmpty);
    if (ctx.prompts().getPoint("\nSpecify base point: ", base) != PromptStatus::Normal)
        return ctx.stopped();
    for (bool first = true;; first = false) {
        AcGeVector3d offset;
        ctx.prompts().setDragged({objects, {}, {}, ctx.prompts().ucsToWorld() * base});
        const PromptStatus status = askDisplacement(ctx, base, offset);
        if (status == PromptStatus::None && !first)
            return CommandResult::Done;
        if (status != PromptStatus::Normal && status != PromptStatus::None)
            return ctx.stopped();
        if (const CommandResult result = copyObjects(ctx, objects, AcGeMatrix3d::translation(offset));
            result != CommandResult::Done || status == PromptStatus::None)
            return result;
    }
}

} // namespace

CommandResult moveCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    PromptStatus status = askForMovableObjects(ctx, objects);
    if (status != PromptStatus::Normal || objects.empty())
        return status == PromptStatus::Normal ? CommandResult::Done : stoppedBy(status);
    AcGePoint3d base;
    ctx.prompts().initGet(kNoEmpty);
    if (ctx.prompts().getPoint("\nSpecify base point or displacement: ", base) != PromptStatus::Normal)
        return ctx.stopped();
    AcGeVector3d offset;
    ctx.prompts().setDragged({objects, {}, {}, ctx.prompts().ucsToWorld() * base});
    status = askDisplacement(ctx, base, offset);
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    return transformObjects(ctx, objects, AcGeMatrix3d::translation(offset));
}

CommandResult copyCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    PromptStatus status = askForMovableObjects(ctx, objects);
    if (status != PromptStatus::Normal || objects.empty())
        return status == PromptStatus::Normal ? CommandResult::Done : stoppedBy(status);
    AcGePoint3d base;
    ctx.prompts().initGet(kNoEmpty, "Multiple");
    status = ctx.prompts().getPoint("\nSpecify base point or displacement, or [Multiple]: ", base);
    if (status == PromptStatus::Keyword)
        return copyRepeatedly(ctx, objects);
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    AcGeVector3d offset;
    ctx.prompts().setDragged({objects, {}, {}, ctx.prompts().ucsToWorld() * base});
    status = askDisplacement(ctx, base, offset);
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    return copyObjects(ctx, objects, AcGeMatrix3d::translation(offset));
}

} // namespace vndk::host
