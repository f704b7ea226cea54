#include "win32/drive_map.h"

#include "win32/codepage.h"

#include <dirent.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

namespace vndk::win32 {

namespace {

constexpr std::string_view kForbidden = "\"<>|*?:/\\";

bool isLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

std::size_t indexOf(char letter) { return static_cast<std::size_t>(upper1252(letter) - 'A'); }

bool isSeparator(char c) { return c == '/' || c == '\\'; }

bool hasForbidden(std::string_view name) {
    return std::any_of(name.begin(), name.end(), [](char c) {
        return static_cast<unsigned char>(c) < 0x20 || kForbidden.find(c) != std::string_view::npos;
    });
}

std::string homeFolder() {
    if (const char* home = std::getenv("HOME"); home != nullptr && *home == '/')
        return home;
    const passwd* account = getpwuid(getuid());
    return account != nullptr && account->pw_dir != nullptr && *account->pw_dir == '/' ? account->pw_dir : "/";
}

// Empty if the folder was removed meanwhile.
std::string workingFolder() {
    std::unique_ptr<char, decltype(&std::free)> folder(getcwd(nullptr, 0), &std::free);
    return folder ? folder.get() : "";
}

bool exists(const std::string& path) {
    struct stat facts {};
    return lstat(path.c_str(), &facts) == 0;
}

std::string joined(const std::string& folder, std::string_view name) {
    std::string path = folder;
    if (path.empty() || path.back() != '/')
        path += '/';
    return path.append(name);
}

// Components without "." and with ".." resolved, never above the start.
std::vector<std::string_view> componentsOf(std::string_view path) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0; at < path.size();) {
        std::size_t end = at;
        while (end < path.size() && !isSeparator(path[end]))
            ++end;
        const std::string_view part = path.substr(at, end - at);
        if (part == "..") {
            if (!parts.empty())
                parts.pop_back();
        } else if (!part.empty() && part != ".") {
            parts.push_back(part);
        }
        at = end + 1;
    }
    return parts;
}

// The name in `folder` that differs from `name` (code page 1252) in case only; of several the first by bytes.
std::optional<std::string> nameWithoutCase(const std::string& folder, std::string_view name) {
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(opendir(folder.c_str()), &closedir);
    std::optional<std::string> found;
    while (const dirent* entry = listing ? readdir(listing.get()) : nullptr) {
        const auto inside = fromUtf8(entry->d_name);
        if (inside && compareNoCase(*inside, name) == 0 && (!found || *found > entry->d_name))
            found = entry->d_name;
    }
    return found;
}

// Walks down from `base`; what doesn't exist keeps the spelling that was given.
std::string resolve(std::string base, const std::vector<std::string_view>& parts) {
    bool exact = true; // still on the disk
    for (const std::string_view part : parts) {
        std::string next = joined(base, toUtf8(part));
        if (exact && !exists(next)) {
            if (const auto other = nameWithoutCase(base, part))
                next = joined(base, *other);
            else
                exact = false;
        }
        base = std::move(next);
    }
    return base;
}

std::optional<std::string> refuse(DWORD code) {
    SetLastError(code);
    return std::nullopt;
}

bool isBelow(std::string_view path, std::string_view folder) {
    if (folder == "/")
        return path.starts_with('/');
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

DriveMap DriveMap::standard() {
    DriveMap drives;
    drives.folders_[indexOf('Z')] = "/";
    // A home that is missing leaves the machine without C:, which every program expects; the root stands in.
    if (!drives.map('C', homeFolder()).ok())
        drives.folders_[indexOf('C')] = "/";
    return drives;
}

DriveMap& DriveMap::current() {
    static DriveMap drives = standard();
    return drives;
}

Status DriveMap::map(char letter, const std::string& hostFolder) {
    if (!isLetter(letter))
        return {ERROR_INVALID_DRIVE, std::string("'") + letter + "' is no drive letter; use one of A to Z."};
    struct stat facts {};
    if (stat(hostFolder.c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode))
        return {ERROR_PATH_NOT_FOUND, "Cannot map drive " + std::string(1, letter) + ": \"" + hostFolder +
                                          "\" is no folder. Create it or name another one."};
    std::unique_ptr<char, decltype(&std::free)> real(realpath(hostFolder.c_str(), nullptr), &std::free);
    folders_[indexOf(letter)] = real ? real.get() : hostFolder;
    return {};
}

Status DriveMap::mapOption(std::string_view text) {
    const std::size_t sign = text.find('=');
    const std::string_view drive = text.substr(0, sign);
    if (sign == std::string_view::npos || drive.empty() || !(drive.size() == 1 || drive.substr(1) == ":"))
        return {ERROR_INVALID_PARAMETER,
                "\"" + std::string(text) + "\" maps no drive; write LETTER=FOLDER, for example D=/data/blocks."};
    return map(drive.front(), std::string(text.substr(sign + 1)));
}

const std::string* DriveMap::folder(char letter) const {
    if (!isLetter(letter) || folders_[indexOf(letter)].empty())
        return nullptr;
    return &folders_[indexOf(letter)];
}

std::optional<std::string> DriveMap::toHost(std::string_view path) const {
    if (path.empty() || path.find('\0') != std::string_view::npos)
        return refuse(ERROR_INVALID_NAME);
    if (path.starts_with("\\\\"))
        return refuse(ERROR_BAD_NETPATH);
    if (path.size() >= 2 && path[1] == ':' && isLetter(path[0])) {
        const std::string* root = folder(path[0]);
        if (root == nullptr)
            return refuse(ERROR_INVALID_DRIVE);
        const auto parts = componentsOf(path.substr(2));
        if (std::any_of(parts.begin(), parts.end(), hasForbidden))
            return refuse(ERROR_INVALID_NAME);
        return resolve(*root, parts);
    }
    if (isSeparator(path[0]))
        return resolve("/", componentsOf(path));
    // ".." of a relative path may climb, so the working folder's own name takes part.
    const std::string folder = workingFolder();
    if (folder.empty())
        return refuse(ERROR_PATH_NOT_FOUND);
    const auto here = fromUtf8(folder);
    if (!here)
        return joined(folder, toUtf8(path));
    return resolve("/", componentsOf(*here + "/" + std::string(path)));
}

std::optional<std::string> DriveMap::toDos(std::string_view hostPath) const {
    if (!hostPath.starts_with('/'))
        return refuse(ERROR_INVALID_NAME);
    std::size_t best = folders_.size();
    for (std::size_t i = 0; i < folders_.size(); ++i)
        if (!folders_[i].empty() && isBelow(hostPath, folders_[i]) &&
            (best == folders_.size() || folders_[i].size() > folders_[best].size()))
            best = i;
    if (best == folders_.size())
        return refuse(ERROR_INVALID_DRIVE);

    std::string dos = {static_cast<char>('A' + best), ':'};
    const std::size_t skipped = folders_[best] == "/" ? 0 : folders_[best].size();
    for (const std::string_view part : componentsOf(hostPath.substr(skipped))) {
        if (!isHoldable(part))
            return refuse(ERROR_INVALID_NAME);
        dos += '\\' + *fromUtf8(part);
    }
    return dos.size() == 2 ? dos + '\\' : dos;
}

bool isHoldable(std::string_view hostName) {
    const auto inside = fromUtf8(hostName);
    return inside && !inside->empty() && inside->size() < MAX_PATH && !hasForbidden(*inside) && inside->back() != ' ' &&
           inside->back() != '.';
}

} // namespace vndk::win32
