// Names that are unique in the world.
#pragma once

#include "win32/types.h"

struct GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
};
