#include "user/desktop_state.h"
#include "user/hooks.h"
#include "user/message_queue.h"
#include "win32/error.h"
#include "win32/paint.h"

#include <cstdio>
#include <exception>
#include <set>

namespace vndk::win32 {

namespace {

// A handler that sends itself messages without end would run out of stack; far below that the sending stops.
constexpr int depthLimit = 600;
int depth = 0;

struct DepthGuard {
    DepthGuard() { ++depth; }
    ~DepthGuard() { --depth; }
    DepthGuard(const DepthGuard&) = delete;
    DepthGuard& operator=(const DepthGuard&) = delete;
};

std::string messageName(UINT message) {
    char buffer[24];
    std::snprintf(buffer, sizeof buffer, "0x%04X", message);
    return buffer;
}

std::vector<HWND> topLevelWindows() {
    std::vector<HWND> windows;
    if (const DesktopState* state = currentState(); state != nullptr && state->root != nullptr)
        for (const Window* window : state->root->children)
            windows.push_back(window->handle);
    return windows;
}

} // namespace

void logOnce(const std::string& text) {
    static std::set<std::string> known;
    if (known.insert(text).second)
        std::fprintf(stderr, "win32: %s\n", text.c_str());
}

LRESULT callProcedure(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (procedure == nullptr)
        return 0;
    if (depth >= depthLimit) {
        logOnce("messages are nested too deeply; message " + messageName(message) + " isn't sent");
        return 0;
    }
    const DepthGuard guard;
    try {
        return procedure(window, message, wParam, lParam);
    } catch (const std::exception& error) {
        logOnce("message " + messageName(message) + " threw an exception: " + error.what());
    } catch (...) {
        logOnce("message " + messageName(message) + " threw an exception");
    }
    if (message == WM_PAINT)
        ValidateRect(window, nullptr); // or it would come for ever
    return 0;
}

LRESULT send(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (findWindow(window) == nullptr)
        return 0;
    if (hasHooks(WH_CALLWNDPROC)) {
        CWPSTRUCT sent{lParam, wParam, message, window};
        callHooks(WH_CALLWNDPROC, HC_ACTION, 0, reinterpret_cast<LPARAM>(&sent));
    }
    const Window* target = findWindow(window);
    if (target == nullptr)
        return 0;
    const LRESULT result = callProcedure(target->procedure, window, message, wParam, lParam);
    if (hasHooks(WH_CALLWNDPROCRET)) {
        CWPRETSTRUCT answered{result, lParam, wParam, message, window};
        callHooks(WH_CALLWNDPROCRET, HC_ACTION, 0, reinterpret_cast<LPARAM>(&answered));
    }
    return result;
}

} // namespace vndk::win32

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window != HWND_BROADCAST)
        return vndk::win32::send(window, message, wParam, lParam);
    for (const HWND each : vndk::win32::topLevelWindows())
        vndk::win32::send(each, message, wParam, lParam);
    return TRUE;
}

BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (window != HWND_BROADCAST)
        return vndk::win32::postMessage(window, message, wParam, lParam) ? TRUE : FALSE;
    for (const HWND each : vndk::win32::topLevelWindows())
        vndk::win32::postMessage(each, message, wParam, lParam);
    return TRUE;
}

LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return vndk::win32::callProcedure(procedure, window, message, wParam, lParam);
}
