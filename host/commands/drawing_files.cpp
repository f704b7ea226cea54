#include "commands/drawing_files.h"

#include "db/symbol_table.h"
#include "win32/drive_map.h"

#include <string_view>

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

} // namespace vndk::host
