#include "ap/host_services.h"

#include "ed/host.h"
#include "win32/codepage.h"
#include "win32/drive_map.h"

#include <algorithm>
#include <filesystem>

namespace vndk::host {

namespace {

bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

/// A name that can only be the system's, where characters take several bytes.
bool isSystemName(const std::string& name) {
    const bool plain = std::all_of(name.begin(), name.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
    return !plain && win32::fromUtf8(name).has_value();
}

bool isRelative(const std::string& name) {
    return !name.empty() && name[0] != '\\' && name[0] != '/' && name.find(':') == std::string::npos;
}

} // namespace

Acad::ErrorStatus HostServices::findFile(std::string& fullPath, const char* fileName) {
    fullPath = fileName;
    if (exists(fullPath))
        return Acad::eOk;
    if (isSystemName(fullPath))
        return Acad::eFileNotFound;
    const std::string name = fullPath;
    // The path is for messages too, so the first place stands when there is no file anywhere.
    fullPath = win32::DriveMap::current().toHost(name).value_or(win32::toUtf8(name));
    if (exists(fullPath) || (isRelative(name) && findRelative(fullPath, name)))
        return Acad::eOk;
    return Acad::eFileNotFound;
}

bool HostServices::findRelative(std::string& fullPath, const std::string& name) const {
    const win32::DriveMap& drives = win32::DriveMap::current();
    std::vector<std::string> folders;
    const AcApDocument* const document = host_.documents().curDocument();
    if (document && document->hasFile()) {
        const std::string drawing = document->fileName();
        folders.push_back(drawing.substr(0, drawing.find_last_of("\\/") + 1));
    }
    for (const std::string& folder : host_.linker().supportFolders())
        if (const auto dosName = drives.toDos(folder))
            folders.push_back(*dosName + "\\");
    for (const std::string& folder : folders) {
        const auto path = drives.toHost(folder + name);
        if (path && exists(*path)) {
            fullPath = *path;
            return true;
        }
    }
    return false;
}

} // namespace vndk::host
