// What a dialog for file names knows about folders. Paths are in the DOS form; folders have no closing backslash
// except for a drive's root.
#pragma once

#include "win32/files.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::win32 {

struct FolderEntry {
    std::string name;
    bool folder = false;
    std::string size;    // "12 KB"; empty for a folder
    std::string changed; // "2026-03-07 14:05", local time
};

/// Folders first, then the files that one of the masks ("*.dwg;*.bak") fits, each by name. Hidden ones, whose names
/// begin with a dot, are left out. Nothing when the folder can't be read.
std::optional<std::vector<FolderEntry>> listFolder(const std::string& folder, std::string_view masks);

/// The folder and those above it, the drive's root first, then the roots of the other drives.
struct FolderPlace {
    std::string path;
    std::string shown;
    int depth = 0;
};
std::vector<FolderPlace> placesAround(const std::string& folder);

bool isFolder(const std::string& path);
bool isFile(const std::string& path);
std::string joined(const std::string& folder, const std::string& name);
/// The folder above; a root's own is itself.
std::string folderAbove(const std::string& folder);
/// What was typed, of either form, in full, counted from `folder` (empty: the working folder). Nothing when it can't be
/// a path.
std::optional<std::string> fullPath(const std::string& folder, const std::string& typed);
/// Makes "New Folder", or "New Folder (2)" and so on; its name, empty when none can be made.
std::string makeNewFolder(const std::string& folder);

} // namespace vndk::win32
