// The running program as the module "Acad.exe", under which modules look for its icon.
#pragma once

#include "win32/types.h"

namespace vndk::host {

/// The module is there as long as this object.
class ProgramResources {
public:
    ProgramResources();
    ~ProgramResources();
    ProgramResources(const ProgramResources&) = delete;
    ProgramResources& operator=(const ProgramResources&) = delete;

private:
    HINSTANCE instance_ = nullptr;
};

} // namespace vndk::host
