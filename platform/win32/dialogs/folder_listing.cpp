#include "dialogs/folder_listing.h"

#include "win32/drive_map.h"
#include "win32/shell.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <ctime>
#include <iterator>
#include <map>

namespace vndk::win32 {

namespace {

constexpr int mostNewFolders = 100;

std::string sizeText(const WIN32_FIND_DATAA& data) {
    const std::uint64_t bytes = (std::uint64_t{data.nFileSizeHigh} << 32) | data.nFileSizeLow;
    return std::to_string((bytes + 1023) / 1024) + " KB";
}

std::string timeText(FILETIME time) {
    constexpr std::uint64_t unitsPerSecond = 10'000'000;
    constexpr std::int64_t secondsTo1970 = 11'644'473'600;
    const std::uint64_t units = (std::uint64_t{time.dwHighDateTime} << 32) | time.dwLowDateTime;
    const auto seconds = static_cast<std::time_t>(static_cast<std::int64_t>(units / unitsPerSecond) - secondsTo1970);
    std::tm parts{};
    std::array<char, 32> text{};
    if (localtime_r(&seconds, &parts) == nullptr)
        return {};
    return {text.data(), std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &parts)};
}

/// By folded name, so that the same file that two masks fit comes once.
using Found = std::map<std::string, FolderEntry>;

std::string folded(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(), [](char c) { return c >= 'a' && c <= 'z' ? c - 32 : c; });
    return name;
}

/// False when the folder can't be read.
bool search(const std::string& folder, const std::string& mask, bool folders, Found& found) {
    WIN32_FIND_DATAA data{};
    const HANDLE handle = FindFirstFileA(joined(folder, mask).c_str(), &data);
    if (handle == INVALID_HANDLE_VALUE)
        return GetFileAttributesA(folder.c_str()) != INVALID_FILE_ATTRIBUTES;
    do {
        const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        if (isDirectory != folders || data.cFileName[0] == '.')
            continue;
        found[folded(data.cFileName) + data.cFileName] = {data.cFileName, folders, folders ? "" : sizeText(data),
                                                          timeText(data.ftLastWriteTime)};
    } while (FindNextFileA(handle, &data) != FALSE);
    FindClose(handle);
    return true;
}

std::string shownName(const std::string& root) {
    SHFILEINFOA info{};
    return SHGetFileInfoA(root.c_str(), 0, &info, sizeof info, SHGFI_DISPLAYNAME) != 0 ? info.szDisplayName : root;
}

bool isRoot(const std::string& folder) { return folder.size() <= 3; }

} // namespace

std::optional<std::vector<FolderEntry>> listFolder(const std::string& folder, std::string_view masks) {
    Found folders;
    Found files;
    if (!search(folder, "*", true, folders))
        return std::nullopt;
    while (!masks.empty()) {
        const std::size_t end = std::min(masks.find(';'), masks.size());
        const std::string_view mask = masks.substr(0, end);
        masks.remove_prefix(std::min(end + 1, masks.size()));
        if (!mask.empty())
            search(folder, std::string(mask), false, files);
    }
    std::vector<FolderEntry> entries;
    for (Found* part : {&folders, &files})
        std::transform(part->begin(), part->end(), std::back_inserter(entries),
                       [](auto& item) { return std::move(item.second); });
    return entries;
}

std::vector<FolderPlace> placesAround(const std::string& folder) {
    std::vector<FolderPlace> places;
    std::array<char, 128> roots{};
    GetLogicalDriveStringsA(roots.size(), roots.data());
    for (const char* root = roots.data(); *root != '\0'; root += std::char_traits<char>::length(root) + 1) {
        places.push_back({root, shownName(root), 0});
        if (folded(folder).rfind(folded(root), 0) != 0)
            continue;
        int depth = 0;
        for (std::size_t end = 3; end < folder.size(); ++end) {
            const std::size_t begin = end;
            end = std::min(folder.find('\\', begin), folder.size());
            places.push_back({folder.substr(0, end), folder.substr(begin, end - begin), ++depth});
        }
    }
    return places;
}

bool isFolder(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool isFile(const std::string& path) {
    const DWORD attributes = GetFileAttributesA(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::string joined(const std::string& folder, const std::string& name) {
    return folder.ends_with('\\') ? folder + name : folder + "\\" + name;
}

std::string folderAbove(const std::string& folder) {
    if (isRoot(folder))
        return folder;
    const std::size_t end = folder.find_last_of('\\');
    return folder.substr(0, std::max<std::size_t>(end, 3));
}

std::optional<std::string> fullPath(const std::string& folder, const std::string& typed) {
    const bool complete =
        folder.empty() || typed.starts_with('/') || typed.starts_with('\\') || (typed.size() > 1 && typed[1] == ':');
    const DriveMap& drives = DriveMap::current();
    const auto host = drives.toHost(complete ? typed : joined(folder, typed));
    return host ? drives.toDos(*host) : std::nullopt;
}

std::string makeNewFolder(const std::string& folder) {
    for (int i = 1; i <= mostNewFolders; ++i) {
        const std::string name = i == 1 ? "New Folder" : "New Folder (" + std::to_string(i) + ")";
        if (GetFileAttributesA(joined(folder, name).c_str()) != INVALID_FILE_ATTRIBUTES)
            continue;
        return CreateDirectoryA(joined(folder, name).c_str(), nullptr) != FALSE ? name : std::string();
    }
    return {};
}

} // namespace vndk::win32
