// Loads and frees libraries that carry a module record (win32/module_record.h).
//
//     LoadResult result = loadLibrary("/opt/vondrake/VNDKKeldmoor.arx");
//     if (!result.status.ok()) ... result.status.message() ...
//     auto entry = reinterpret_cast<Entry>(getProcAddress(result.instance, "acrxEntryPoint"));
//     freeLibrary(result.instance);
//
// Order of events:
//   load: the library's statics are built; then DllMain(instance, DLL_PROCESS_ATTACH) of every library that it links
//         and that isn't attached yet, then its own.
//   free: when the last user lets go, DllMain(instance, DLL_PROCESS_DETACH), then that of libraries it alone kept,
//         then the library is unmapped (its statics are destroyed). A later load builds everything anew.
// A library that others link stays attached until the last of them is freed, so it may be freed from within their
// detach. All of this belongs to the program's one main thread.
#pragma once

#include "win32/module_record.h"
#include "win32/status.h"

#include <cstdint>
#include <span>
#include <string>

namespace vndk::win32 {

struct [[nodiscard]] LoadResult {
    Status status;
    HINSTANCE instance = nullptr; ///< null unless status.ok()
};

/// Loads a library or, if it is loaded already, adds one to its count of users.
/// `hostPath`: UTF-8 path of the system. A bare file name is looked for in the folder of the running program.
LoadResult loadLibrary(const std::string& hostPath);

/// Takes one user away; with the last one the library is detached and unmapped. FALSE with ERROR_INVALID_HANDLE for
/// an instance that isn't loaded.
BOOL freeLibrary(HINSTANCE instance);

/// Address of an exported name of that very library (never of one that it links); null with ERROR_PROC_NOT_FOUND.
[[nodiscard]] void* getProcAddress(HINSTANCE instance, const char* name);

/// The system path that a loaded library was mapped from; empty for an instance that isn't a loaded library.
[[nodiscard]] std::string libraryPath(HINSTANCE instance);

/// Makes the running program a module of that name ("Acad.exe"), with these compiled resources, which must stay. A
/// later program of the same name goes before an earlier one.
Status registerProgram(const std::string& name, std::span<const std::uint8_t> compiledResources, HINSTANCE& instance);
void unregisterProgram(HINSTANCE instance);

} // namespace vndk::win32

/// The module of that name: a library by its file's name, or the program; case doesn't count, and a name without
/// extension means ".dll". Null names the program. Null with ERROR_MOD_NOT_FOUND when there is none.
HMODULE GetModuleHandleA(LPCSTR name);
