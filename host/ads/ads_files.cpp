// Files, as modules look for them.
#include "ads/ads.h"
#include "db/database.h"
#include "win32/drive_map.h"

#include <cstring>
#include <filesystem>

int acedFindFile(const char* name, char* result) {
    constexpr size_t kLongest = 511;
    std::string path;
    if (!name || !result || acdbHostApplicationServices()->findFile(path, name) != Acad::eOk)
        return RTERROR;
    std::error_code error;
    const auto full = vndk::win32::DriveMap::current().toDos(std::filesystem::absolute(path, error).string());
    if (!full || full->size() > kLongest)
        return RTERROR;
    std::memcpy(result, full->c_str(), full->size() + 1);
    return RTNORM;
}
