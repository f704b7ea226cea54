#include "win32/profile.h"

#include "win32/drive_map.h"
#include "win32/error.h"
#include "win32/profile_file.h"

#include <algorithm>
#include <cstring>

using namespace vndk::win32;

namespace {

bool readProfile(LPCSTR file, ProfileFile& profile) {
    const auto path = file != nullptr ? DriveMap::current().toHost(file) : std::nullopt;
    if (!path)
        return false;
    const Status status = ProfileFile::read(*path, profile);
    if (!status.ok())
        SetLastError(status.code());
    return status.ok();
}

DWORD copyText(std::string_view text, LPSTR buffer, DWORD size) {
    const std::size_t length = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<DWORD>(length);
}

DWORD copyList(const std::vector<std::string>& names, LPSTR buffer, DWORD size) {
    std::string all;
    for (const std::string& name : names)
        all.append(name).push_back('\0');
    if (size < 2)
        return copyText({}, buffer, size);
    const std::size_t length = std::min<std::size_t>(all.size(), size - 2);
    std::memcpy(buffer, all.data(), length);
    buffer[length] = buffer[length + 1] = '\0';
    return static_cast<DWORD>(all.size() + 1 > size ? size - 2 : length);
}

std::string withoutBlanksAtEnd(std::string text) {
    text.resize(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace

DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size, LPCSTR file) {
    if (buffer == nullptr || size == 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    ProfileFile profile;
    readProfile(file, profile);
    if (section == nullptr)
        return copyList(profile.sections(), buffer, size);
    if (key == nullptr)
        return copyList(profile.keys(section), buffer, size);
    const auto value = profile.value(section, key);
    return copyText(value ? *value : withoutBlanksAtEnd(fallback != nullptr ? fallback : ""), buffer, size);
}

UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT fallback, LPCSTR file) {
    ProfileFile profile;
    if (section == nullptr || key == nullptr || !readProfile(file, profile))
        return static_cast<UINT>(fallback);
    return profile.number(section, key).value_or(static_cast<UINT>(fallback));
}

BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file) {
    const auto path = file != nullptr && section != nullptr ? DriveMap::current().toHost(file) : std::nullopt;
    if (!path) {
        if (file == nullptr || section == nullptr)
            SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const Status status = ProfileFile::change(*path, section, key, value);
    if (!status.ok())
        SetLastError(status.code());
    return status.ok();
}

DWORD GetPrivateProfileSectionA(LPCSTR section, LPSTR buffer, DWORD size, LPCSTR file) {
    ProfileFile profile;
    if (buffer == nullptr || size == 0 || section == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    readProfile(file, profile);
    return copyList(profile.entries(section), buffer, size);
}

DWORD GetPrivateProfileSectionNamesA(LPSTR buffer, DWORD size, LPCSTR file) {
    return GetPrivateProfileStringA(nullptr, nullptr, nullptr, buffer, size, file);
}

BOOL WritePrivateProfileSectionA(LPCSTR section, LPCSTR lines, LPCSTR file) {
    const auto path = file != nullptr && section != nullptr ? DriveMap::current().toHost(file) : std::nullopt;
    if (!path) {
        if (file == nullptr || section == nullptr)
            SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    ProfileFile profile;
    Status status = ProfileFile::read(*path, profile);
    if (status.ok())
        profile.clearSection(section);
    if (lines == nullptr)
        profile.eraseSection(section);
    for (; status.ok() && lines != nullptr && *lines != '\0'; lines += std::strlen(lines) + 1) {
        const std::string_view line = lines;
        const std::size_t sign = line.find('=');
        if (sign != std::string_view::npos)
            status = profile.set(section, line.substr(0, sign), line.substr(sign + 1));
    }
    if (status.ok())
        status = profile.write(*path);
    if (!status.ok())
        SetLastError(status.code());
    return status.ok();
}
