// WBLOCK: writes a block, objects or the whole drawing to a file of its own.
#include "ap/drawing_preview.h"
#include "commands/commands.h"
#include "commands/selection.h"
#include "commands/written_files.h"
#include "db/database.h"
#include "db/viewport.h"
#include "dwg/drawing_writer.h"
#include "ed/host.h"
#include "win32/codepage.h"

#include <algorithm>
#include <memory>

namespace vndk::host {

namespace {

enum class Source { Objects, Block, Drawing };

/// "C:\dwg\door.dwg" gives "door".
std::string blockNameOf(const DrawingFile& file) {
    const std::string name = file.dosName.substr(file.dosName.find_last_of("\\/:") + 1);
    return name.substr(0, name.find_last_of('.'));
}

/// Asks until there is a source that can be written.
PromptStatus askSource(CommandContext& ctx, const DrawingFile& file, Source& source, AcDbObjectId& block) {
    for (;;) {
        std::string name;
        const PromptStatus status = ctx.prompts().getString(
            "\nEnter name of existing block or\n[= (block=output file)/* (whole drawing)] <define new drawing>: ",
            TextForm::Word, name);
        source = name.empty() ? Source::Objects : name == "*" ? Source::Drawing : Source::Block;
        if (status != PromptStatus::Normal || source != Source::Block)
            return status;
        if (name == "=")
            name = blockNameOf(file);
        block = findRecord<AcDbBlockTable>(ctx.database().blockTableId(), name);
        const AcDbObjectPointer<AcDbBlockTableRecord> record(block);
        if (record && !record->isLayout() && !record->isFromExternalReference())
            return status;
        const std::string complaint = record ? "\"" + name + "\" is a space or an external reference, and no block."
                                             : "Block \"" + name + "\" not found.";
        if (!ctx.host().commandLine().complain(complaint, name))
            return PromptStatus::Error;
    }
}

PromptStatus askObjects(CommandContext& ctx, AcGePoint3d& base, std::vector<AcDbObjectId>& objects) {
    if (ctx.prompts().getPoint("\nSpecify insertion base point: ", base) != PromptStatus::Normal &&
        ctx.prompts().lastStatus() != PromptStatus::None)
        return ctx.prompts().lastStatus();
    base = ctx.prompts().ucsToWorld() * base;
    return SelectionPrompt(ctx).ask(objects);
}

/// A viewport shows its own drawing; in another one it would show nothing.
bool isViewport(AcDbObjectId id) { return AcDbViewport::cast(AcDbObjectPointer<AcDbEntity>(id).object()) != nullptr; }

/// The objects are in the file now.
void takeOut(CommandContext& ctx, const std::vector<AcDbObjectId>& objects) {
    size_t kept = 0;
    for (const AcDbObjectId id : objects)
        if (!id.isErased() && (isOnLockedLayer(id) || !eraseEntity(id)))
            ++kept;
    if (kept > 0)
        ctx.print("\n" + std::to_string(kept) + " on locked layers or in use stayed in the drawing too.");
}

CommandResult writeTo(CommandContext& ctx, const DrawingFile& file, AcDbDatabase& output) {
    dwg::setThumbnailBitmap(output, previewOf(output));
    if (output.saveAs(file.hostPath.c_str()) == Acad::eOk)
        return CommandResult::Done;
    return ctx.fail(win32::fromUtf8Lossy(output.lastFileError()), FailureKind::Drawing);
}

CommandResult failedCopy(CommandContext& ctx, Acad::ErrorStatus status) {
    if (status == Acad::eNotApplicable)
        return ctx.fail("Objects of a kind that can't be turned are among these: set the UCS to World first.");
    if (status == Acad::eDwgNeedsRecovery || status == Acad::eFileInternalErr)
        return ctx.fail(win32::fromUtf8Lossy(ctx.database().lastFileError()), FailureKind::Drawing);
    return ctx.fail(std::string("These objects can't be written: ") + acadErrorStatusText(status) + '.');
}

CommandResult writeObjects(CommandContext& ctx, const DrawingFile& file) {
    AcGePoint3d base;
    std::vector<AcDbObjectId> objects;
    if (const PromptStatus status = askObjects(ctx, base, objects); status != PromptStatus::Normal)
        return stoppedBy(status);
    if (std::erase_if(objects, isViewport) > 0)
        ctx.print("\nViewports were left out.");
    if (objects.empty())
        return ctx.fail("No objects were selected: " + file.dosName + " wasn't written.");
    AcDbDatabase* made = nullptr;
    const Acad::ErrorStatus status = ctx.database().wblock(made, objects, base);
    const std::unique_ptr<AcDbDatabase> output(made);
    if (!output)
        return failedCopy(ctx, status);
    const CommandResult written = writeTo(ctx, file, *output);
    if (written == CommandResult::Done)
        takeOut(ctx, objects);
    return written;
}

} // namespace

CommandResult wblockCommand(CommandContext& ctx) {
    std::string name;
    if (ctx.prompts().getString("\nEnter name of output file: ", TextForm::FileName, name) != PromptStatus::Normal)
        return ctx.stopped();
    if (name.empty())
        return ctx.fail("No file name was given.", FailureKind::Drawing);
    const auto file = drawingFile(name);
    if (!file)
        return badName(ctx, name);
    if (documentWith(ctx, *file))
        return ctx.fail(file->dosName + " is open as a drawing: close it first or choose another name.",
                        FailureKind::Drawing);
    if (const std::string obstacle = obstacleAt(*file); !obstacle.empty())
        return ctx.fail(obstacle, FailureKind::Drawing);
    PromptStatus status;
    if (!mayReplace(ctx, *file, status))
        return status == PromptStatus::Normal ? CommandResult::Cancelled : ctx.stopped();
    Source source;
    AcDbObjectId block;
    if (status = askSource(ctx, *file, source, block); status != PromptStatus::Normal)
        return stoppedBy(status);
    if (source == Source::Objects)
        return writeObjects(ctx, *file);
    AcDbDatabase* made = nullptr;
    const Acad::ErrorStatus copied =
        source == Source::Block ? ctx.database().wblock(made, block) : ctx.database().wblock(made);
    const std::unique_ptr<AcDbDatabase> output(made);
    return output ? writeTo(ctx, *file, *output) : failedCopy(ctx, copied);
}

} // namespace vndk::host
