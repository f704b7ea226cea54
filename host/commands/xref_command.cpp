// XREF and -XREF by prompts: drawings attached, detached, read anew, listed.
#include "ap/xrefs.h"
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/drawing_files.h"
#include "commands/insert_placement.h"
#include "commands/wildcard.h"
#include "db/block_reference.h"
#include "db/database.h"
#include "db/xref.h"
#include "ed/host.h"

namespace vndk::host {

namespace {

std::string holderOf(const CommandContext& ctx) { return ctx.document().hasFile() ? ctx.document().fileName() : ""; }

void printXref(const CommandContext& ctx, AcDbObjectId id) {
    const AcDbObjectPointer<AcDbBlockTableRecord> record(id);
    if (record)
        ctx.print("\n  \"" + record->name() + "\"  " + record->pathName() +
                  (record->isFromOverlayReference() ? "  Overlay" : "  Attach") +
                  (record->xrefDatabase() ? "" : "  not found"));
}

PromptStatus listXrefs(CommandContext& ctx) {
    std::string pattern;
    const PromptStatus status = ctx.prompts().getString("\nEnter xref name(s) to list <*>: ", TextForm::Word, pattern);
    if (status != PromptStatus::Normal)
        return status;
    size_t count = 0;
    for (const AcDbObjectId id : acdbXrefBlocks(ctx.database()))
        if (matchesWildcard(recordName(id), pattern.empty() ? "*" : pattern)) {
            printXref(ctx, id);
            ++count;
        }
    ctx.print("\nTotal Xref(s): " + std::to_string(count));
    return status;
}

/// Those that a list of names and patterns means; says so when there are none.
PromptStatus askXrefs(CommandContext& ctx, const std::string& what, std::vector<AcDbObjectId>& found) {
    std::string names;
    const PromptStatus status =
        ctx.prompts().getString("\nEnter xref name(s) to " + what + ": ", TextForm::Word, names);
    if (status != PromptStatus::Normal)
        return status;
    for (const AcDbObjectId id : acdbXrefBlocks(ctx.database()))
        if (matchesWildcard(recordName(id), names))
            found.push_back(id);
    if (found.empty())
        ctx.print("\nNo matching xref names found. ? lists them.");
    return status;
}

CommandResult detach(CommandContext& ctx) {
    std::vector<AcDbObjectId> blocks;
    if (askXrefs(ctx, "detach", blocks) != PromptStatus::Normal)
        return ctx.stopped();
    for (const AcDbObjectId block : blocks) {
        const std::string name = recordName(block);
        if (const Acad::ErrorStatus status = acdbDetachXref(block); status != Acad::eOk)
            return ctx.fail("Xref \"" + name + "\" can't be detached: " + acadErrorStatusText(status) + '.');
        ctx.print("\nXref \"" + name + "\" detached.");
    }
    return CommandResult::Done;
}

CommandResult load(CommandContext& ctx, AcDbObjectId block) {
    const std::string problem = loadXref(ctx.host(), block, holderOf(ctx));
    if (!problem.empty())
        return ctx.fail(problem, FailureKind::Drawing);
    ctx.print("\n\"" + recordName(block) + "\" loaded.");
    return CommandResult::Done;
}

CommandResult reload(CommandContext& ctx) {
    std::vector<AcDbObjectId> blocks;
    if (askXrefs(ctx, "reload", blocks) != PromptStatus::Normal)
        return ctx.stopped();
    CommandResult result = CommandResult::Done;
    for (const AcDbObjectId block : blocks)
        if (load(ctx, block) != CommandResult::Done)
            result = CommandResult::Failed;
    return result;
}

CommandResult changePath(CommandContext& ctx) {
    std::vector<AcDbObjectId> blocks;
    if (askXrefs(ctx, "change the path of", blocks) != PromptStatus::Normal)
        return ctx.stopped();
    for (const AcDbObjectId block : blocks) {
        std::string typed;
        if (ctx.prompts().getString("\nEnter new path of \"" + recordName(block) + "\": ", TextForm::Name, typed) !=
            PromptStatus::Normal)
            return ctx.stopped();
        const auto file = findDrawing(ctx, typed);
        if (!file)
            return ctx.fail("\"" + typed + "\" was not found. Give the path of a drawing.");
        if (const Acad::ErrorStatus status = acdbSetXrefPath(block, file->dosName.c_str()); status != Acad::eOk)
            return ctx.fail(std::string("The path can't be changed: ") + acadErrorStatusText(status) + '.');
        if (const CommandResult result = load(ctx, block); result != CommandResult::Done)
            return result;
    }
    return CommandResult::Done;
}

std::string blockNameOf(const DrawingFile& file) {
    const std::string name = file.dosName.substr(file.dosName.find_last_of("\\/:") + 1);
    return name.substr(0, name.find_last_of('.'));
}

CommandResult attach(CommandContext& ctx, bool overlay) {
    std::string typed;
    if (ctx.prompts().getString(std::string("\nEnter name of file to ") + (overlay ? "overlay: " : "attach: "),
                                TextForm::Name, typed) != PromptStatus::Normal)
        return ctx.stopped();
    const auto file = findDrawing(ctx, typed);
    if (!file)
        return ctx.fail("\"" + typed + "\" was not found. Give the path of a drawing.");
    InsertPlacement placement(ctx);
    if (const PromptStatus status = placement.ask(); status != PromptStatus::Normal)
        return stoppedBy(status);
    AcDbObjectId block;
    const std::string problem =
        attachXref(ctx.host(), ctx.database(), file->dosName, blockNameOf(*file), overlay, holderOf(ctx), block);
    if (!problem.empty())
        return ctx.fail(problem, FailureKind::Drawing);
    ctx.print("\n\"" + recordName(block) + "\" loaded.");
    const DrawingPlane plane(ctx);
    auto reference = std::make_unique<AcDbBlockReference>();
    reference->setBlockTableRecord(block);
    reference->setNormal(plane.normal());
    reference->setPosition(plane.toWorld(placement.point()));
    reference->setScaleFactors(placement.scale());
    reference->setRotation(plane.toObjectAngle(placement.rotation()));
    ctx.document().lastPoint = placement.point();
    return addToSpace(ctx, std::move(reference)).isNull() ? CommandResult::Failed : CommandResult::Done;
}

} // namespace

CommandResult xrefCommand(CommandContext& ctx) {
    for (;;) {
        ctx.prompts().initGet(0, "? Detach Path Reload Overlay Attach");
        const PromptStatus status =
            ctx.prompts().getKeyword("\nEnter an option [?/Detach/Path/Reload/Overlay/Attach] <Attach>: ");
        if (status != PromptStatus::Normal && status != PromptStatus::None)
            return ctx.stopped();
        const std::string option = status == PromptStatus::None ? "Attach" : ctx.prompts().keyword();
        if (option == "Detach")
            return detach(ctx);
        if (option == "Path")
            return changePath(ctx);
        if (option == "Reload")
            return reload(ctx);
        if (option != "?")
            return attach(ctx, option == "Overlay");
        if (listXrefs(ctx) != PromptStatus::Normal)
            return ctx.stopped();
    }
}

} // namespace vndk::host
