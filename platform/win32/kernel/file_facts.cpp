#include "kernel/file_facts.h"

#include "win32/drive_map.h"
#include "win32/error.h"

#include <cerrno>

namespace vndk::win32 {

FILETIME fileTime(const timespec& time) {
    constexpr LONGLONG secondsFrom1601To1970 = 11644473600;
    const auto ticks = static_cast<ULONGLONG>((time.tv_sec + secondsFrom1601To1970) * 10'000'000 + time.tv_nsec / 100);
    return {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
}

DWORD attributesOf(const struct stat& facts, std::string_view name) {
    DWORD attributes = S_ISDIR(facts.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : FILE_ATTRIBUTE_ARCHIVE;
    if ((facts.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
        attributes |= FILE_ATTRIBUTE_READONLY;
    if (name.starts_with('.') && name != "." && name != "..")
        attributes |= FILE_ATTRIBUTE_HIDDEN;
    return attributes;
}

std::optional<std::string> hostPathOf(LPCSTR path) {
    if (path == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return std::nullopt;
    }
    return DriveMap::current().toHost(path);
}

DWORD fileError(const std::string& hostPath) {
    const int problem = errno;
    if (problem == ENOENT) {
        const std::size_t end = hostPath.rfind('/');
        struct stat facts {};
        if (end != std::string::npos && end > 0 && stat(hostPath.substr(0, end).c_str(), &facts) != 0)
            return ERROR_PATH_NOT_FOUND;
    }
    return errorFromErrno(problem);
}

BOOL failed(const std::string& hostPath) {
    SetLastError(fileError(hostPath));
    return FALSE;
}

std::string_view lastComponent(std::string_view hostPath) { return hostPath.substr(hostPath.rfind('/') + 1); }

} // namespace vndk::win32
