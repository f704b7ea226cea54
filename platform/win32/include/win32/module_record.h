// How a loadable library (.arx, .dbx) makes itself known to the loader without exporting a name.
//
// Each library has module/announce.cpp linked in. Before the first of the library's own statics is built it hands one
// record to announceModule; after the last of them is gone it takes the record back. The loader (win32/loader.h) finds
// the record of the library it has just mapped by the record's anchor.
//
// The library can define its entry itself, hidden from the outside (without one, an entry that agrees is linked in):
//     extern "C" BOOL APIENTRY DllMain(HINSTANCE instance, DWORD reason, LPVOID reserved);
#pragma once

#include "win32/types.h"

/// Reasons that the loader gives. Thread reasons don't exist here.
constexpr DWORD DLL_PROCESS_DETACH = 0;
constexpr DWORD DLL_PROCESS_ATTACH = 1;

namespace vndk::win32 {

using ModuleEntry = BOOL (*)(HINSTANCE instance, DWORD reason, LPVOID reserved);

/// One library's record: static memory of that library, valid from announcement to withdrawal.
struct ModuleRecord {
    ModuleEntry entry;
    const void* anchor;                  ///< any address inside the library
    const unsigned char* resourcesBegin; ///< compiled resources (.res); begin == end when it has none
    const unsigned char* resourcesEnd;
};

void announceModule(const ModuleRecord& record);
void withdrawModule(const ModuleRecord& record);

} // namespace vndk::win32
