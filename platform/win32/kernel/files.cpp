#include "win32/files.h"

#include "kernel/file_facts.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"
#include "win32/error.h"

#include <dirent.h>
#include <sys/stat.h>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

using namespace vndk::win32;

namespace {

struct Search {
    std::string folder;             // system path
    std::vector<std::string> names; // system names that fit, in order
    std::size_t next = 0;
};

std::vector<std::unique_ptr<Search>>& searches() {
    static auto& open = *new std::vector<std::unique_ptr<Search>>;
    return open;
}

auto findSearch(HANDLE handle) {
    return std::find_if(searches().begin(), searches().end(), [handle](const auto& s) { return s.get() == handle; });
}

bool isDots(std::string_view name) { return name == "." || name == ".."; }

// Fills `data` with the next name that is still there; FALSE at the end.
BOOL step(Search& search, WIN32_FIND_DATAA& data) {
    while (search.next < search.names.size()) {
        const std::string& name = search.names[search.next++];
        struct stat facts {};
        if (stat((search.folder + "/" + name).c_str(), &facts) != 0)
            continue; // Gone since the search began, or a link to nowhere.
        if (!S_ISREG(facts.st_mode) && !S_ISDIR(facts.st_mode))
            continue; // Pipes, sockets and devices are no files to the platform, and to open one may take for ever.
        data = {};
        data.dwFileAttributes = attributesOf(facts, name);
        data.ftCreationTime = data.ftLastWriteTime = fileTime(facts.st_mtim);
        data.ftLastAccessTime = fileTime(facts.st_atim);
        const auto size = S_ISDIR(facts.st_mode) ? 0 : static_cast<ULONGLONG>(facts.st_size);
        data.nFileSizeHigh = static_cast<DWORD>(size >> 32);
        data.nFileSizeLow = static_cast<DWORD>(size);
        const std::string inside = *fromUtf8(name); // Names that don't convert were never collected.
        std::memcpy(data.cFileName, inside.c_str(), inside.size() + 1);
        return TRUE;
    }
    return FALSE;
}

bool isDriveRoot(const std::string& folder) {
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if (const std::string* root = DriveMap::current().folder(letter); root != nullptr && *root == folder)
            return true;
    return false;
}

// All names of the folder that fit; false with the last error set when it cannot be read.
bool collect(Search& search, std::string_view mask) {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(search.folder.c_str()), &closedir);
    if (!listing) {
        SetLastError(errno == ENOENT ? ERROR_PATH_NOT_FOUND : errorFromErrno(errno));
        return false;
    }
    const bool root = isDriveRoot(search.folder);
    std::vector<std::pair<std::string, std::string>> found; // inside and system name
    while (const dirent* entry = readdir(listing.get())) {
        const std::string_view name = entry->d_name;
        if (isDots(name) ? root : !isHoldable(name))
            continue;
        std::string inside = *fromUtf8(name);
        if (matchesMask(inside, mask))
            found.emplace_back(std::move(inside), name);
    }
    std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) {
        const int order = compareNoCase(a.first, b.first);
        return order != 0 ? order < 0 : a.second < b.second;
    });
    for (auto& [inside, name] : found)
        search.names.push_back(std::move(name));
    return true;
}

// Splits "folder\mask"; the folder keeps its last separator, so that "\*.dwg" and "C:*.dwg" stay what they are.
std::pair<std::string, std::string> splitMask(std::string_view pattern) {
    const std::size_t last = pattern.find_last_of("\\/:");
    const std::size_t start = last == std::string_view::npos ? 0 : last + 1;
    return {std::string(start == 0 ? "." : pattern.substr(0, start)), std::string(pattern.substr(start))};
}

} // namespace

HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* data) {
    if (pattern == nullptr || data == nullptr || *pattern == '\0') {
        SetLastError(ERROR_INVALID_PARAMETER);
        return INVALID_HANDLE_VALUE;
    }
    const auto [folder, mask] = splitMask(pattern);
    if (mask.empty()) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    auto hostFolder = DriveMap::current().toHost(folder);
    if (!hostFolder)
        return INVALID_HANDLE_VALUE;
    auto search = std::make_unique<Search>();
    search->folder = std::move(*hostFolder);
    if (!collect(*search, mask))
        return INVALID_HANDLE_VALUE;
    if (step(*search, *data) == FALSE) {
        SetLastError(ERROR_FILE_NOT_FOUND);
        return INVALID_HANDLE_VALUE;
    }
    searches().push_back(std::move(search));
    return searches().back().get();
}

BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* data) {
    const auto at = findSearch(search);
    if (at == searches().end() || data == nullptr) {
        SetLastError(data == nullptr ? ERROR_INVALID_PARAMETER : ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (step(**at, *data) == FALSE) {
        SetLastError(ERROR_NO_MORE_FILES);
        return FALSE;
    }
    return TRUE;
}

BOOL FindClose(HANDLE search) {
    const auto at = findSearch(search);
    if (at == searches().end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    searches().erase(at);
    return TRUE;
}

DWORD GetFileAttributesA(LPCSTR path) {
    const auto host = hostPathOf(path);
    if (!host)
        return INVALID_FILE_ATTRIBUTES;
    struct stat facts {};
    if (stat(host->c_str(), &facts) != 0) {
        SetLastError(fileError(*host));
        return INVALID_FILE_ATTRIBUTES;
    }
    return attributesOf(facts, lastComponent(*host));
}

BOOL GetFileAttributesExA(LPCSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID data) {
    const auto host = data != nullptr && level == GetFileExInfoStandard ? hostPathOf(path) : std::nullopt;
    if (!host) {
        if (path != nullptr && data == nullptr)
            SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    struct stat facts {};
    if (stat(host->c_str(), &facts) != 0)
        return failed(*host);
    auto& answer = *static_cast<WIN32_FILE_ATTRIBUTE_DATA*>(data);
    const auto size = S_ISDIR(facts.st_mode) ? 0 : static_cast<ULONGLONG>(facts.st_size);
    answer = {attributesOf(facts, lastComponent(*host)),
              fileTime(facts.st_mtim),
              fileTime(facts.st_atim),
              fileTime(facts.st_mtim),
              static_cast<DWORD>(size >> 32),
              static_cast<DWORD>(size)};
    return TRUE;
}

DWORD GetLogicalDrives() {
    DWORD drives = 0;
    for (int i = 0; i < 26; ++i)
        if (DriveMap::current().folder(static_cast<char>('A' + i)) != nullptr)
            drives |= 1u << i;
    return drives;
}

DWORD GetTempPathA(DWORD size, LPSTR buffer) {
    const char* wanted = std::getenv("TMPDIR");
    auto path = DriveMap::current().toDos(wanted != nullptr && *wanted == '/' ? wanted : "/tmp");
    if (!path)
        return 0;
    if (path->back() != '\\')
        *path += '\\';
    if (buffer == nullptr || path->size() + 1 > size)
        return static_cast<DWORD>(path->size() + 1);
    std::memcpy(buffer, path->c_str(), path->size() + 1);
    return static_cast<DWORD>(path->size());
}
