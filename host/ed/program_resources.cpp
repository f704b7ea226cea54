#include "ed/program_resources.h"

#include "win32/loader.h"

#include <cassert>

extern "C" {
__attribute__((visibility("hidden"))) extern const unsigned char vndk_resources_begin[];
__attribute__((visibility("hidden"))) extern const unsigned char vndk_resources_end[];
}

namespace vndk::host {

ProgramResources::ProgramResources() {
    [[maybe_unused]] const win32::Status status =
        win32::registerProgram("Acad.exe", {vndk_resources_begin, vndk_resources_end}, instance_);
    assert(status.ok() && "the resources come whole from the build");
}

ProgramResources::~ProgramResources() { win32::unregisterProgram(instance_); }

} // namespace vndk::host
