// Filters of messages and of what happens to windows.
#pragma once

#include "win32/queue.h"

#include <memory>
#include <vector>

namespace vndk::win32 {

struct Hook {
    HHOOK handle = nullptr;
    int kind = 0;
    HOOKPROC procedure = nullptr;
};

struct HookState {
    std::vector<Hook> hooks;    // newest last
    std::vector<HHOOK> running; // innermost last
    UINT_PTR next = 1;
};

/// Calls the newest hook of a kind (WH_*), which passes on with CallNextHookEx. 0 when there is none.
LRESULT callHooks(int kind, int code, WPARAM wParam, LPARAM lParam);
[[nodiscard]] bool hasHooks(int kind);

} // namespace vndk::win32
