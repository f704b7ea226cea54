// Linked into every loadable library; see win32/module_record.h.
#include "win32/module_record.h"

extern "C" {
// What a library gets that defines no entry of its own.
__attribute__((visibility("hidden"), weak)) BOOL APIENTRY DllMain(HINSTANCE /*instance*/, DWORD /*reason*/,
                                                                  LPVOID /*reserved*/) {
    return TRUE;
}
__attribute__((visibility("hidden"))) extern const unsigned char vndk_resources_begin[];
__attribute__((visibility("hidden"))) extern const unsigned char vndk_resources_end[];
}

namespace {

const vndk::win32::ModuleRecord g_record{&DllMain, vndk_resources_begin, vndk_resources_begin, vndk_resources_end};

// The lowest priority open to programs: before any static of the library is built, and after the last one is gone.
__attribute__((constructor(101))) void announce() { vndk::win32::announceModule(g_record); }

__attribute__((destructor(101))) void withdraw() { vndk::win32::withdrawModule(g_record); }

} // namespace
