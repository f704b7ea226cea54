// NEW, OPEN, QSAVE, SAVEAS, CLOSE, QUIT.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/written_files.h"
#include "db/database.h"
#include "ed/host.h"
#include "win32/codepage.h"

namespace vndk::host {

namespace {

CommandResult save(CommandContext& ctx, const DrawingFile& file) {
    ctx.host().linker().tellAll(AcRx::kSaveMsg);
    AcDbDatabase& database = ctx.database();
    if (database.saveAs(file.hostPath.c_str()) != Acad::eOk)
        return ctx.fail(AcApDocManager::fileErrorOf(database), FailureKind::Drawing);
    return CommandResult::Done;
}

/// The last question before changes are lost. True when there is nothing to lose.
bool mayDiscard(CommandContext& ctx, const AcApDocument& document, bool named, PromptStatus& status) {
    status = PromptStatus::Normal;
    if (!document.database()->isDirty())
        return true;
    const std::string which = named ? std::string(" of ") + document.fileName() : "";
    return askYesNo(ctx, "\nReally want to discard all changes to drawing" + which + "? <N>: ", status);
}

} // namespace

CommandResult newCommand(CommandContext& ctx) {
    std::string name;
    if (ctx.prompts().getString("\nEnter template file name or [. (for none)] <.>: ", TextForm::FileName, name) !=
        PromptStatus::Normal)
        return ctx.stopped();
    if (name == ".")
        name.clear();
    AcApDocManager& documents = ctx.host().documents();
    if (documents.appContextNewDocument(name.empty() ? nullptr : name.c_str()) != Acad::eOk)
        return ctx.fail(documents.lastError(), FailureKind::Drawing);
    return CommandResult::Done;
}

CommandResult openCommand(CommandContext& ctx) {
    std::string name;
    if (ctx.prompts().getString("\nEnter name of drawing to open: ", TextForm::FileName, name) != PromptStatus::Normal)
        return ctx.stopped();
    if (name.empty())
        return ctx.fail("No file name was given.", FailureKind::Drawing);
    const auto file = drawingFile(name);
    if (!file)
        return badName(ctx, name);
    AcApDocManager& documents = ctx.host().documents();
    if (documents.appContextOpenDocument(file->dosName.c_str()) != Acad::eOk)
        return ctx.fail(documents.lastError(), FailureKind::Drawing);
    return CommandResult::Done;
}

CommandResult qsaveCommand(CommandContext& ctx) {
    if (!ctx.document().hasFile())
        return saveasCommand(ctx);
    if (ctx.document().isReadOnly())
        return ctx.fail(std::string(ctx.document().fileName()) + " is open for reading only: use SAVEAS.",
                        FailureKind::Drawing);
    const auto file = drawingFile(ctx.document().fileName());
    return file ? save(ctx, *file) : badName(ctx, ctx.document().fileName());
}

CommandResult saveasCommand(CommandContext& ctx) {
    ctx.print("\nCurrent file format:  2000");
    ctx.prompts().initGet(0, "2000");
    PromptStatus status = ctx.prompts().getKeyword("\nEnter file format [2000] <2000>: ");
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    std::string name;
    const std::string standard = ctx.document().fileName();
    if (ctx.prompts().getString("\nSave drawing as <" + standard + ">: ", TextForm::FileName, name) !=
        PromptStatus::Normal)
        return ctx.stopped();
    const auto file = drawingFile(name.empty() ? standard : name);
    if (!file)
        return badName(ctx, name);
    const AcApDocument* const holder = documentWith(ctx, *file);
    if (holder && holder != &ctx.document())
        return ctx.fail(file->dosName + " is open as another drawing: close it first or choose another name.",
                        FailureKind::Drawing);
    if (const std::string obstacle = obstacleAt(*file); !obstacle.empty())
        return ctx.fail(obstacle, FailureKind::Drawing);
    if (!mayReplace(ctx, *file, status))
        return status == PromptStatus::Normal ? CommandResult::Cancelled : ctx.stopped();
    const CommandResult saved = save(ctx, *file);
    if (saved == CommandResult::Done)
        ctx.host().documents().renameDocument(ctx.document(), file->dosName);
    return saved;
}

CommandResult closeCommand(CommandContext& ctx) {
    PromptStatus status;
    if (!mayDiscard(ctx, ctx.document(), false, status))
        return status == PromptStatus::Normal ? CommandResult::Cancelled : ctx.stopped();
    AcApDocManager& documents = ctx.host().documents();
    if (documents.closeDocument(&ctx.document()) != Acad::eOk)
        return ctx.fail(documents.lastError());
    return CommandResult::Done;
}

CommandResult quitCommand(CommandContext& ctx) {
    AcApDocManager& documents = ctx.host().documents();
    const std::unique_ptr<AcApDocumentIterator> iterator(documents.newAcApDocumentIterator());
    for (; !iterator->done(); iterator->step()) {
        PromptStatus status;
        if (!mayDiscard(ctx, *iterator->document(), documents.documentCount() > 1, status))
            return status == PromptStatus::Normal ? CommandResult::Cancelled : ctx.stopped();
    }
    ctx.host().requestQuit();
    return CommandResult::Done;
}

} // namespace vndk::host
