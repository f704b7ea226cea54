// Windows of tools with TTF_SUBCLASS: their procedure is replaced by one that lets the tip hear of the mouse first.
#include "controls/tool_tip.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr const char* propertyName = "ToolTipRelay";

struct Relay {
    WNDPROC former = nullptr;
    std::vector<HWND> tips;
};

Relay* relayOf(HWND window) { return static_cast<Relay*>(GetPropA(window, propertyName)); }

bool isMouseMessage(UINT message) {
    return (message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) ||
           (message >= WM_NCMOUSEMOVE && message <= WM_NCMBUTTONDBLCLK);
}

LRESULT CALLBACK relayProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Relay* relay = relayOf(window);
    if (relay == nullptr)
        return DefWindowProcA(window, message, wParam, lParam);
    const WNDPROC former = relay->former;
    if (message == WM_NCDESTROY) {
        RemovePropA(window, propertyName);
        delete relay;
    } else if (isMouseMessage(message)) {
        for (const HWND tip : std::vector<HWND>(relay->tips))
            if (const auto control = controlOf<ToolTip>(tip); control != nullptr)
                control->relay(window, message, lParam);
    }
    return CallWindowProcA(former, window, message, wParam, lParam);
}

} // namespace

void relayMessagesOf(HWND source, HWND tip) {
    if (IsWindow(source) == FALSE)
        return;
    Relay* relay = relayOf(source);
    if (relay == nullptr) {
        auto made = std::make_unique<Relay>();
        made->former = reinterpret_cast<WNDPROC>(GetWindowLongPtrA(source, GWLP_WNDPROC));
        if (SetPropA(source, propertyName, made.get()) == FALSE)
            return;
        relay = made.release(); // the window owns it until WM_NCDESTROY
        SetWindowLongPtrA(source, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&relayProcedure));
    }
    if (std::find(relay->tips.begin(), relay->tips.end(), tip) == relay->tips.end())
        relay->tips.push_back(tip);
}

void stopRelayingTo(HWND source, HWND tip) {
    if (IsWindow(source) == FALSE)
        return;
    // The procedure stays: somebody may have put another one before it meanwhile.
    if (Relay* relay = relayOf(source); relay != nullptr)
        std::erase(relay->tips, tip);
}

} // namespace vndk::win32
