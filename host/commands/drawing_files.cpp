#include "commands/drawing_files.h"

#include "db/symbol_table.h"
#include "ed/host.h"
#include "win32/drive_map.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <vector>

namespace vndk::host {

std::optional<DrawingFile> drawingFile(const std::string& typed) {
    if (std::string_view("\\/:").find(typed.empty() ? '/' : typed.back()) != std::string_view::npos)
        return std::nullopt; // a folder or a drive
    const win32::DriveMap& drives = win32::DriveMap::current();
    const bool complete = acdbFoldName(typed).ends_with(".DWG");
    const auto hostPath = drives.toHost(complete ? typed : typed + ".dwg");
    if (!hostPath)
        return std::nullopt;
    const auto dosName = drives.toDos(*hostPath);
    if (!dosName)
        return std::nullopt;
    return DrawingFile{*dosName, *hostPath};
}

namespace {

/// The folders of names without one, in the DOS form with a closing backslash.
std::vector<std::string> searchFolders(const CommandContext& ctx) {
    const win32::DriveMap& drives = win32::DriveMap::current();
    std::vector<std::string> folders;
    const auto add = [&](const std::optional<std::string>& folder) {
        if (!folder)
            return;
        std::string whole = folder->ends_with('\\') ? *folder : *folder + '\\';
        if (std::find(folders.begin(), folders.end(), whole) == folders.end())
            folders.push_back(std::move(whole));
    };
    std::error_code ignored;
    add(drives.toDos(std::filesystem::current_path(ignored).string()));
    if (ctx.hasDocument() && ctx.document().hasFile()) {
        const std::string drawing = ctx.document().fileName();
        add(drawing.substr(0, drawing.find_last_of('\\') + 1));
    }
    for (const std::string& folder : ctx.host().linker().supportFolders())
        add(drives.toDos(folder));
    return folders;
}

std::optional<DrawingFile> fileAt(const std::string& name) {
    const win32::DriveMap& drives = win32::DriveMap::current();
    const auto hostPath = drives.toHost(name);
    std::error_code ignored;
    if (!hostPath || !std::filesystem::is_regular_file(*hostPath, ignored))
        return std::nullopt;
    const auto dosName = drives.toDos(*hostPath);
    return dosName ? std::optional(DrawingFile{*dosName, *hostPath}) : std::nullopt;
}

} // namespace

std::optional<DrawingFile> findDrawing(const CommandContext& ctx, const std::string& typed) {
    std::vector<std::string> folders{""};
    if (typed.find_first_of("\\/:") == std::string::npos)
        folders = searchFolders(ctx);
    for (const std::string& folder : folders)
        for (const char* const ending : {"", ".dwg"})
            if (auto file = fileAt(folder + typed + ending))
                return file;
    return std::nullopt;
}

std::string searchPathText(const CommandContext& ctx) {
    std::string text;
    for (const std::string& folder : searchFolders(ctx))
        text += "\n  " + folder + (text.empty() ? " (current directory)" : "");
    return text;
}

} // namespace vndk::host
