#include "controls/control.h"

#include "user/window.h"
#include "win32/draw.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/paint.h"

namespace vndk::win32 {

LRESULT Control::defaultHandling(UINT message, WPARAM wParam, LPARAM lParam) const {
    return DefWindowProcA(window_, message, wParam, lParam);
}

DWORD Control::style() const { return static_cast<DWORD>(GetWindowLongA(window_, GWL_STYLE)); }
int Control::id() const { return static_cast<int>(GetWindowLongPtrA(window_, GWL_ID)); }

RECT Control::clientRect() const {
    RECT rect{};
    GetClientRect(window_, &rect);
    return rect;
}

bool Control::focused() const { return GetFocus() == window_; }
bool Control::enabled() const { return IsWindowEnabled(window_) != FALSE; }

std::string Control::text() const {
    const Window* window = findWindow(window_);
    return window != nullptr ? window->text : std::string();
}

void Control::invalidate(const RECT* rect, bool erase) const { InvalidateRect(window_, rect, erase ? TRUE : FALSE); }

LRESULT Control::notifyCommand(WORD code) const {
    const HWND parent = GetParent(window_);
    return parent != nullptr
               ? SendMessageA(parent, WM_COMMAND, MAKEWPARAM(id(), code), reinterpret_cast<LPARAM>(window_))
               : 0;
}

LRESULT Control::sendNotify(UINT code, NMHDR& header) const {
    header.hwndFrom = window_;
    header.idFrom = static_cast<UINT_PTR>(id());
    header.code = code;
    const HWND parent = GetParent(window_);
    return parent != nullptr ? SendMessageA(parent, WM_NOTIFY, header.idFrom, reinterpret_cast<LPARAM>(&header)) : 0;
}

HBRUSH Control::colorBrush(UINT message, HDC dc) const {
    const HWND parent = GetParent(window_);
    LRESULT brush = 0;
    if (parent != nullptr)
        brush = SendMessageA(parent, message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window_));
    if (brush == 0)
        brush = DefWindowProcA(window_, message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(window_));
    return reinterpret_cast<HBRUSH>(brush);
}

std::shared_ptr<Control> anyControlOf(HWND window) {
    const Window* found = findWindow(window);
    return found != nullptr ? std::static_pointer_cast<Control>(found->control) : nullptr;
}

LRESULT controlProcedure(MakeControl make, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE)
        if (Window* created = findWindow(window); created != nullptr && created->control == nullptr)
            created->control = make(window);
    const std::shared_ptr<Control> control = anyControlOf(window);
    if (control == nullptr)
        return DefWindowProcA(window, message, wParam, lParam);
    const LRESULT result = control->handle(message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        control->markDead();
        if (Window* dying = findWindow(window); dying != nullptr)
            dying->control.reset();
    }
    return result;
}

void registerControlClass(const ControlClass& controlClass, WNDPROC procedure) {
    WNDCLASSA registered{};
    registered.style = controlClass.style | CS_GLOBALCLASS;
    registered.lpfnWndProc = procedure;
    registered.cbWndExtra = controlClass.windowExtra;
    registered.hCursor = LoadCursorA(nullptr, controlClass.cursor != nullptr ? controlClass.cursor : IDC_ARROW);
    if (controlClass.windowBackground)
        registered.hbrBackground = reinterpret_cast<HBRUSH>(static_cast<UINT_PTR>(COLOR_WINDOW + 1));
    registered.lpszClassName = controlClass.name;
    RegisterClassA(&registered);
}

} // namespace vndk::win32
