// What all controls share: one object for each window, alive from WM_NCCREATE to WM_NCDESTROY, and longer while one of
// its handlers still runs (the handler's messages can destroy the window).
//
//     class Button : public Control {
//     public:
//         using Control::Control;
//         LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) override;
//     };
//     void registerButton() { registerControl<Button>({.name = "Button", .style = CS_DBLCLKS | CS_PARENTDC}); }
//
// `handle` only unpacks parameters and calls one function for each message; what it doesn't know goes to
// `defaultHandling`. After each message sent (notify, send to the parent) ask `alive()` before touching the window.
#pragma once

#include "win32/messages.h"
#include "win32/window.h"

#include <memory>
#include <string>

namespace vndk::win32 {

class Control {
public:
    explicit Control(HWND window) : window_(window) {}
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    virtual LRESULT handle(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    [[nodiscard]] HWND window() const { return window_; }
    /// False once WM_NCDESTROY has come.
    [[nodiscard]] bool alive() const { return alive_; }
    void markDead() { alive_ = false; }

protected:
    [[nodiscard]] LRESULT defaultHandling(UINT message, WPARAM wParam, LPARAM lParam) const;
    [[nodiscard]] DWORD style() const;
    [[nodiscard]] bool hasStyle(DWORD bits) const { return (style() & bits) == bits; }
    [[nodiscard]] int id() const;
    [[nodiscard]] RECT clientRect() const;
    [[nodiscard]] bool focused() const;
    [[nodiscard]] bool enabled() const;
    [[nodiscard]] std::string text() const;
    void invalidate(const RECT* rect = nullptr, bool erase = true) const;

    /// WM_COMMAND with this control's id and handle, sent to the parent.
    LRESULT notifyCommand(WORD code) const;
    /// WM_NOTIFY sent to the parent; the header is filled in. T begins with an NMHDR member `hdr`, or is one.
    template <typename T>
    LRESULT notify(UINT code, T& data) const {
        return sendNotify(code, *reinterpret_cast<NMHDR*>(&data));
    }
    LRESULT notify(UINT code) const {
        NMHDR header{};
        return sendNotify(code, header);
    }
    /// The brush that the parent answers to a WM_CTLCOLOR message; the platform's default when it answers null.
    [[nodiscard]] HBRUSH colorBrush(UINT message, HDC dc) const;

private:
    LRESULT sendNotify(UINT code, NMHDR& header) const;

    HWND window_;
    bool alive_ = true;
};

struct ControlClass {
    LPCSTR name;
    UINT style = CS_GLOBALCLASS;
    int windowExtra = 0;
    LPCSTR cursor = nullptr;       // an IDC_ number; null: the arrow
    bool windowBackground = false; // COLOR_WINDOW + 1 as class brush; else none
};

using MakeControl = std::shared_ptr<Control> (*)(HWND window);
LRESULT controlProcedure(MakeControl make, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
void registerControlClass(const ControlClass& controlClass, WNDPROC procedure);

template <typename T>
LRESULT CALLBACK controlProcedureOf(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return controlProcedure([](HWND made) -> std::shared_ptr<Control> { return std::make_shared<T>(made); }, window,
                            message, wParam, lParam);
}

/// Registers the class in the current desktop.
template <typename T>
void registerControl(const ControlClass& controlClass) {
    registerControlClass(controlClass, &controlProcedureOf<T>);
}

/// The control object of a window, when it is a T made by this layer; else null.
template <typename T>
std::shared_ptr<T> controlOf(HWND window);

std::shared_ptr<Control> anyControlOf(HWND window);

template <typename T>
std::shared_ptr<T> controlOf(HWND window) {
    return std::dynamic_pointer_cast<T>(anyControlOf(window));
}

} // namespace vndk::win32
