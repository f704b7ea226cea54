// A module whose start-up refuses.
#include "platform/modules/journal.h"
#include "win32/windows.h"

extern "C" BOOL APIENTRY DllMain(HINSTANCE, DWORD reason, LPVOID) {
    journal().push_back("refusing: " + std::to_string(reason));
    return FALSE;
}

extern "C" __attribute__((visibility("default"))) void refusingName() {}
