#include "user/hooks.h"

#include "user/desktop_state.h"
#include "win32/error.h"

#include <algorithm>
#include <iterator>

namespace vndk::win32 {

namespace {

HookState* hookState() {
    DesktopState* state = currentState();
    return state != nullptr ? state->hooks.get() : nullptr;
}

const Hook* findHook(const HookState& state, HHOOK handle) {
    const auto found =
        std::find_if(state.hooks.begin(), state.hooks.end(), [&](const Hook& hook) { return hook.handle == handle; });
    return found != state.hooks.end() ? &*found : nullptr;
}

LRESULT callHook(HookState& state, const Hook& hook, int code, WPARAM wParam, LPARAM lParam) {
    state.running.push_back(hook.handle);
    LRESULT result = 0;
    try {
        result = hook.procedure(code, wParam, lParam);
    } catch (...) {
        logOnce("a hook threw an exception; it counts as passed on");
    }
    // The hook may have ended the desktop it ran on.
    if (HookState* still = hookState(); still == &state && !state.running.empty())
        state.running.pop_back();
    return result;
}

bool knownKind(int kind) {
    return kind == WH_MSGFILTER || kind == WH_GETMESSAGE || kind == WH_CALLWNDPROC || kind == WH_CBT ||
           kind == WH_CALLWNDPROCRET;
}

} // namespace

std::shared_ptr<HookState> makeHookState() { return std::make_shared<HookState>(); }

bool hasHooks(int kind) {
    const HookState* state = hookState();
    return state != nullptr &&
           std::any_of(state->hooks.begin(), state->hooks.end(), [&](const Hook& hook) { return hook.kind == kind; });
}

LRESULT callHooks(int kind, int code, WPARAM wParam, LPARAM lParam) {
    HookState* state = hookState();
    if (state == nullptr)
        return 0;
    const auto newest =
        std::find_if(state->hooks.rbegin(), state->hooks.rend(), [&](const Hook& hook) { return hook.kind == kind; });
    if (newest == state->hooks.rend())
        return 0;
    const Hook hook = *newest;
    return callHook(*state, hook, code, wParam, lParam);
}

} // namespace vndk::win32

using vndk::win32::findHook;
using vndk::win32::Hook;
using vndk::win32::HookState;

HHOOK SetWindowsHookExA(int kind, HOOKPROC procedure, HINSTANCE /*instance*/, DWORD /*thread*/) {
    HookState* state = vndk::win32::hookState();
    if (state == nullptr)
        return nullptr;
    if (procedure == nullptr || !vndk::win32::knownKind(kind)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const HHOOK handle = reinterpret_cast<HHOOK>((UINT_PTR{0x7} << 28) | state->next++);
    state->hooks.push_back({handle, kind, procedure});
    return handle;
}

BOOL UnhookWindowsHookEx(HHOOK hook) {
    HookState* state = vndk::win32::hookState();
    if (state == nullptr)
        return FALSE;
    const auto removed = std::erase_if(state->hooks, [&](const Hook& each) { return each.handle == hook; });
    if (removed == 0)
        SetLastError(ERROR_INVALID_HANDLE);
    return removed != 0 ? TRUE : FALSE;
}

LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam) {
    HookState* state = vndk::win32::hookState();
    if (state == nullptr)
        return 0;
    // The handle isn't needed to know who is passing on; a hook that took itself off has lost its place.
    const HHOOK passing = !state->running.empty() ? state->running.back() : hook;
    const Hook* current = findHook(*state, passing);
    if (current == nullptr)
        return 0;
    const auto at = static_cast<std::size_t>(current - state->hooks.data());
    for (std::size_t index = at; index-- > 0;)
        if (state->hooks[index].kind == current->kind) {
            const Hook next = state->hooks[index];
            return vndk::win32::callHook(*state, next, code, wParam, lParam);
        }
    return 0;
}
