#include "commands/written_files.h"

#include "commands/command_tools.h"
#include "ed/host.h"

#include <filesystem>
#include <memory>

namespace vndk::host {

CommandResult badName(CommandContext& ctx, const std::string& typed) {
    return ctx.fail("\"" + typed + "\" can't name a drawing: it names a folder, its folder or drive isn't there, or " +
                        "it has characters that file names can't have.",
                    FailureKind::Drawing);
}

AcApDocument* documentWith(CommandContext& ctx, const DrawingFile& file) {
    const std::unique_ptr<AcApDocumentIterator> iterator(ctx.host().documents().newAcApDocumentIterator());
    for (; !iterator->done(); iterator->step())
        if (acdbFoldName(iterator->document()->fileName()) == acdbFoldName(file.dosName))
            return iterator->document();
    return nullptr;
}

std::string obstacleAt(const DrawingFile& file) {
    const std::filesystem::path path(file.hostPath);
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored) && !std::filesystem::is_regular_file(path, ignored))
        return file.dosName + " isn't a file that can be replaced. Choose another name.";
    if (path.has_parent_path() && !std::filesystem::is_directory(path.parent_path(), ignored))
        return file.dosName + ": there is no such folder. Make it or choose another one.";
    return {};
}

bool mayReplace(CommandContext& ctx, const DrawingFile& file, PromptStatus& status) {
    status = PromptStatus::Normal;
    std::error_code ignored;
    if (!std::filesystem::exists(file.hostPath, ignored) || ctx.host().variables().getShort("EXPERT") >= 2)
        return true;
    return askYesNo(ctx, "\nA drawing with this name already exists.\nDo you want to replace it? <N>: ", status);
}

} // namespace vndk::host
