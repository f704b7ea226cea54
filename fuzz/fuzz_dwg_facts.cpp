// Any bytes as a drawing: read, every object decoded into its class, and the facts written.

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "db/database.h"
#include "rx/app_codes.h"
#include "vondrake/facts.h"

/// Of the object library: makes its classes known.
extern "C" AcRx::AppRetCode acrxEntryPoint(AcRx::AppMsgCode message, void* packet);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool registered = acrxEntryPoint(AcRx::kInitAppMsg, nullptr) == AcRx::kRetOK;
    static const std::string path =
        (std::filesystem::temp_directory_path() / ("vondrake-fuzz-" + std::to_string(getpid()) + ".dwg")).string();
    std::ofstream(path, std::ios::binary).write(reinterpret_cast<const char*>(data), static_cast<long>(size));
    AcDbDatabase database(false, true);
    const bool read = registered && database.readDwgFile(path.c_str(), 0x40) == Acad::eOk;
    vndk::app::JsonWriter json([](std::string_view) {});
    if (read)
        vndk::app::writeFacts(database, vndk::app::readFileStart(path), json);
    std::filesystem::remove(path);
    return 0;
}
