// MIRROR.
#include "commands/commands.h"
#include "commands/object_changes.h"
#include "db/database.h"
#include "db/tied_entities.h"
#include "ed/host.h"

namespace vndk::host {

namespace {

/// Asks for the mirror line; `mirror` is the mirroring in the plane through it along the UCS's z axis.
PromptStatus askMirror(CommandContext& ctx, AcGeMatrix3d& mirror) {
    Prompts& prompts = ctx.prompts();
    AcGePoint3d first, second;
    prompts.initGet(kNoEmpty);
    PromptStatus status = prompts.getPoint("\nSpecify first point of mirror line: ", first);
    while (status == PromptStatus::Normal) {
        prompts.initGet(kNoEmpty);
        status = prompts.getPoint("\nSpecify second point of mirror line: ", second, &first);
        const AcGeVector3d side(first.y - second.y, second.x - first.x, 0);
        if (status == PromptStatus::Normal && side.isZeroLength()) {
            if (!ctx.host().commandLine().complain("The points of the mirror line must differ.", "the same point"))
                return PromptStatus::Error;
            continue;
        }
        const AcGeMatrix3d toWorld = prompts.ucsToWorld();
        mirror = AcGeMatrix3d::mirroring(toWorld * first, toWorld * side);
        break;
    }
    return status;
}

} // namespace

CommandResult mirrorCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    PromptStatus status = askForMovableObjects(ctx, objects);
    if (status != PromptStatus::Normal || objects.empty())
        return status == PromptStatus::Normal ? CommandResult::Done : stoppedBy(status);
    AcGeMatrix3d mirror;
    if (status = askMirror(ctx, mirror); status != PromptStatus::Normal)
        return stoppedBy(status);
    const bool inPlace = askYesNo(ctx, "\nDelete source objects? [Yes/No] <N>: ", status);
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    std::vector<AcDbObjectId> mirrored = objects;
    const CommandResult result =
        inPlace ? transformObjects(ctx, objects, mirror) : copyObjects(ctx, objects, mirror, mirrored);
    if (!ctx.database().header().MIRRTEXT)
        for (const AcDbObjectId id : acdbWithoutTied(mirrored))
            keepReadable(id, mirror);
    return result;
}

} // namespace vndk::host
