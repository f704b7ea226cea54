// NEW, OPEN, QSAVE, SAVEAS, CLOSE, QUIT.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/drawing_files.h"
#include "db/database.h"
#include "ed/host.h"
#include "win32/codepage.h"

#include <filesystem>

namespace vndk::host {

namespace {

CommandResult badName(CommandContext& ctx, const std::string& typed) {
    return ctx.fail("\"" + typed + "\" can't name a drawing: it names a folder, its folder or drive isn't there, or " +
                        "it has characters that file names can't have.",
                    FailureKind::Drawing);
}

CommandResult save(CommandContext& ctx, const DrawingFile& file) {
    ctx.host().linker().tellAll(AcRx::kSaveMsg);
    AcDbDatabase& database = ctx.database();
    if (database.saveAs(file.hostPath.c_str()) != Acad::eOk)
        return ctx.fail(win32::fromUtf8Lossy(database.lastFileError()), FailureKind::Drawing);
    return CommandResult::Done;
}

/// The document that has the file open; null if none.
AcApDocument* openIn(CommandContext& ctx, const DrawingFile& file) {
    const std::unique_ptr<AcApDocumentIterator> iterator(ctx.host().documents().newAcApDocumentIterator());
    for (; !iterator->done(); iterator->step())
        if (acdbFoldName(iterator->document()->fileName()) == acdbFoldName(file.dosName))
            return iterator->document();
    return nullptr;
}

/// Why no drawing can stand at the path; empty if one can.
std::string obstacleAt(const DrawingFile& file) {
    const std::filesystem::path path(file.hostPath);
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored))
        return file.dosName + " isn't a file that can be replaced. Choose another name.";
    if (path.has_parent_path() && !std::filesystem::is_directory(path.parent_path(), ignored))
        return file.dosName + ": there is no such folder. Make it or choose another one.";
    return {};
}

/// False: the file is to stay as it is. EXPERT 2 and more replaces without asking.
bool mayReplace(CommandContext& ctx, const DrawingFile& file, PromptStatus& status) {
    status = PromptStatus::Normal;
    std::error_code ignored;
    if (!std::filesystem::exists(file.hostPath, ignored) || ctx.host().variables().getShort("EXPERT") >= 2)
        return true;
    return askYesNo(ctx, "\nA drawing with this name already exists.\nDo you want to replace it? <N>: ", status);
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
    const AcApDocument* const holder = openIn(ctx, *file);
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
