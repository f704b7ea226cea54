// NEW, OPEN, QSAVE, SAVEAS, CLOSE, QUIT.
#include "ap/drawing_preview.h"
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/file_questions.h"
#include "commands/written_files.h"
#include "db/database.h"
#include "ed/host.h"
#include "win32/codepage.h"

namespace vndk::host {

namespace {

CommandResult save(CommandContext& ctx, const DrawingFile& file) {
    ctx.host().linker().tellAll(AcRx::kSaveMsg);
    AcDbDatabase& database = ctx.database();
    prepareToSave(ctx.document());
    if (database.saveAs(file.hostPath.c_str()) != Acad::eOk)
        return ctx.fail(AcApDocManager::fileErrorOf(database), FailureKind::Drawing);
    return CommandResult::Done;
}

/// The last question before changes are lost. True when there is nothing to lose any more.
bool mayDiscard(CommandContext& ctx, AcApDocument& document, bool named, PromptStatus& status) {
    status = PromptStatus::Normal;
    if (!document.database()->isDirty())
        return true;
    if (!ctx.host().commandLine().asksUser()) {
        const std::string which = named ? std::string(" of ") + document.fileName() : "";
        return askYesNo(ctx, "\nReally want to discard all changes to drawing" + which + "? <N>: ", status);
    }
    // The drawing in question is the one in sight.
    ctx.host().documents().activateDocument(&document);
    const Changes wanted = askAboutChanges(ctx, document);
    CommandContext saving(ctx.host(), &document);
    return wanted == Changes::Discard || (wanted == Changes::Save && qsaveCommand(saving) == CommandResult::Done);
}

/// Of the current drawing, with its backslash; empty when it has no file.
std::string folderOf(const CommandContext& ctx) {
    const std::string name = ctx.hasDocument() ? ctx.document().fileName() : "";
    return name.substr(0, name.find_last_of('\\') + 1);
}

/// Asks for a name at the prompt, or in the dialog where one is wanted. False: the command ends with `result`.
bool askName(CommandContext& ctx, const std::string& prompt, const FileQuestion& question, std::string& name,
             CommandResult& result) {
    const bool inDialog = wantsFileDialog(ctx);
    if (!inDialog && ctx.prompts().getString(prompt, TextForm::FileName, name) != PromptStatus::Normal) {
        result = ctx.stopped();
        return false;
    }
    if (!inDialog && name != kAskInDialog)
        return true;
    const auto chosen = askFileName(ctx.host(), question);
    name = chosen.value_or("");
    result = CommandResult::Cancelled;
    return chosen.has_value();
}

/// Saves under another name and goes on with that. `agreed`: the user has said already that a file there may go.
CommandResult saveUnder(CommandContext& ctx, const std::string& name, bool agreed) {
    const auto file = drawingFile(name);
    if (!file)
        return badName(ctx, name);
    const AcApDocument* const holder = documentWith(ctx, *file);
    if (holder && holder != &ctx.document())
        return ctx.fail(file->dosName + " is open as another drawing: close it first or choose another name.",
                        FailureKind::Drawing);
    if (const std::string obstacle = obstacleAt(*file); !obstacle.empty())
        return ctx.fail(obstacle, FailureKind::Drawing);
    PromptStatus status = PromptStatus::Normal;
    if (!agreed && !mayReplace(ctx, *file, status))
        return status == PromptStatus::Normal ? CommandResult::Cancelled : ctx.stopped();
    const CommandResult saved = save(ctx, *file);
    if (saved == CommandResult::Done)
        ctx.host().documents().renameDocument(ctx.document(), file->dosName);
    return saved;
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
    CommandResult result = CommandResult::Done;
    if (!askName(ctx, "\nEnter name of drawing to open: ", {.title = "Open Drawing", .start = folderOf(ctx)}, name,
                 result))
        return result;
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
    const std::string standard = ctx.document().fileName();
    const FileQuestion question{.save = true, .title = "Save Drawing As", .start = standard};
    std::string name;
    CommandResult result = CommandResult::Done;
    if (wantsFileDialog(ctx))
        return askName(ctx, {}, question, name, result) ? saveUnder(ctx, name, true) : result;
    ctx.print("\nCurrent file format:  2000");
    ctx.prompts().initGet(0, "2000");
    const PromptStatus status = ctx.prompts().getKeyword("\nEnter file format [2000] <2000>: ");
    if (status != PromptStatus::Normal && status != PromptStatus::None)
        return ctx.stopped();
    if (!askName(ctx, "\nSave drawing as <" + standard + ">: ", question, name, result))
        return result;
    const bool inDialog = ctx.prompts().keyword() == kAskInDialog;
    return saveUnder(ctx, name.empty() ? standard : name, inDialog);
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
