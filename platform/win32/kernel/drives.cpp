// Drives, full paths, and what the shell shows for them.
#include "kernel/file_facts.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"
#include "win32/error.h"
#include "win32/shell.h"

#include <sys/vfs.h>
#include <algorithm>
#include <cerrno>
#include <cstring>

using namespace vndk::win32;

namespace {

// Numbers of file systems as the kernel reports them (statfs).
constexpr std::uint32_t networkSystems[] = {0x6969, 0x517B, 0xFF534D42, 0xFE534D42, 0x5346414F, 0x01021997, 0x65735546};
constexpr std::uint32_t memorySystems[] = {0x01021994, 0x858458F6};
constexpr std::uint32_t discSystems[] = {0x9660, 0x15013346};
constexpr std::uint32_t stickSystems[] = {0x4D44, 0x2011BAB0};

template <std::size_t N>
bool isOneOf(std::uint32_t type, const std::uint32_t (&types)[N]) {
    return std::find(std::begin(types), std::end(types), type) != std::end(types);
}

// The letter of "X:", "X:\" or "X:/"; NUL for anything else.
char driveOfRoot(std::string_view path) {
    const bool letter = path.size() >= 2 && path[1] == ':' && std::isalpha(static_cast<unsigned char>(path[0])) != 0;
    if (!letter || path.size() > 3 || (path.size() == 3 && path[2] != '\\' && path[2] != '/'))
        return '\0';
    return upper1252(path[0]);
}

DWORD copyOut(const std::string& text, DWORD size, LPSTR buffer) {
    if (buffer == nullptr || text.size() + 1 > size)
        return static_cast<DWORD>(text.size() + 1);
    std::memcpy(buffer, text.c_str(), text.size() + 1);
    return static_cast<DWORD>(text.size());
}

std::string driveTitle(char letter, const std::string& folder) {
    const std::string_view name = lastComponent(folder);
    const std::string title = name.empty() ? "File system" : fromUtf8Lossy(name);
    return title + " (" + letter + ":)";
}

void copyField(std::string_view text, char* field, std::size_t size) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(field, text.data(), length);
    field[length] = '\0';
}

std::string typeName(DWORD attributes, std::string_view name) {
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        return "File Folder";
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot + 1 == name.size())
        return "File";
    std::string type(name.substr(dot + 1));
    for (char& letter : type)
        letter = upper1252(letter);
    return type + " File";
}

} // namespace

DWORD GetLogicalDriveStringsA(DWORD size, LPSTR buffer) {
    std::string roots;
    for (char letter = 'A'; letter <= 'Z'; ++letter)
        if (DriveMap::current().folder(letter) != nullptr)
            roots.append(1, letter).append(":\\").push_back('\0');
    return copyOut(roots, size, buffer);
}

UINT GetDriveTypeA(LPCSTR root) {
    std::string folder = "/";
    if (root != nullptr) {
        const char letter = driveOfRoot(root);
        const std::string* mapped = letter != '\0' ? DriveMap::current().folder(letter) : nullptr;
        if (mapped == nullptr)
            return DRIVE_NO_ROOT_DIR;
        folder = *mapped;
    }
    struct statfs facts {};
    if (statfs(folder.c_str(), &facts) != 0)
        return DRIVE_NO_ROOT_DIR;
    const auto type = static_cast<std::uint32_t>(facts.f_type);
    if (isOneOf(type, networkSystems))
        return DRIVE_REMOTE;
    if (isOneOf(type, discSystems))
        return DRIVE_CDROM;
    if (isOneOf(type, memorySystems))
        return DRIVE_RAMDISK;
    return isOneOf(type, stickSystems) ? DRIVE_REMOVABLE : DRIVE_FIXED;
}

DWORD GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR* namePart) {
    if (namePart != nullptr)
        *namePart = nullptr;
    const auto host = hostPathOf(path);
    auto full = host ? DriveMap::current().toDos(*host) : std::nullopt;
    if (!full)
        return 0;
    const char last = path[std::strlen(path) - 1];
    if ((last == '\\' || last == '/') && full->back() != '\\')
        *full += '\\';
    const DWORD length = copyOut(*full, size, buffer);
    const std::size_t name = full->rfind('\\') + 1;
    if (namePart != nullptr && buffer != nullptr && length < size && name < full->size())
        *namePart = buffer + name;
    return length;
}

DWORD_PTR SHGetFileInfoA(LPCSTR path, DWORD attributes, SHFILEINFOA* info, UINT size, UINT flags) {
    constexpr UINT known = SHGFI_DISPLAYNAME | SHGFI_TYPENAME | SHGFI_ATTRIBUTES | SHGFI_USEFILEATTRIBUTES;
    if (path == nullptr || info == nullptr || size < sizeof(SHFILEINFOA) || (flags & ~known) != 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const auto host = hostPathOf(path);
    if (!host)
        return 0;
    struct stat facts {};
    std::string name = fromUtf8Lossy(lastComponent(*host));
    if ((flags & SHGFI_USEFILEATTRIBUTES) == 0) {
        if (stat(host->c_str(), &facts) != 0) {
            failed(*host);
            return 0;
        }
        attributes = attributesOf(facts, lastComponent(*host));
    }
    const char drive = driveOfRoot(path);
    if (drive != '\0')
        name = driveTitle(drive, *host);
    *info = {};
    if ((flags & SHGFI_DISPLAYNAME) != 0)
        copyField(name, info->szDisplayName, sizeof info->szDisplayName);
    if ((flags & SHGFI_TYPENAME) != 0)
        copyField(drive != '\0' ? "Local Disk" : typeName(attributes, name), info->szTypeName, sizeof info->szTypeName);
    if ((flags & SHGFI_ATTRIBUTES) != 0)
        info->dwAttributes = SFGAO_FILESYSTEM | ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? SFGAO_FOLDER : 0) |
                             ((attributes & FILE_ATTRIBUTE_READONLY) != 0 ? SFGAO_READONLY : 0);
    return 1;
}
