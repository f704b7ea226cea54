// The mouse on the frame: caption buttons, dragging, menus, scroll bars.
#include "user/activation.h"
#include "user/default_procedure.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/input_queue.h"
#include "user/menu_bar.h"
#include "win32/input.h"
#include "win32/queue.h"

namespace vndk::win32 {

namespace {

bool buttonEnabled(const Window& window, int button) {
    switch (button) {
    case HTCLOSE:
        return (window.windowClass->style & CS_NOCLOSE) == 0 && closeEnabled(window.handle);
    case HTMINBUTTON:
        return (window.style & WS_MINIMIZEBOX) != 0;
    case HTMAXBUTTON:
        return (window.style & WS_MAXIMIZEBOX) != 0;
    default:
        return true;
    }
}

UINT commandOf(const Window& window, int button) {
    switch (button) {
    case HTCLOSE:
        return SC_CLOSE;
    case HTMINBUTTON:
        return window.showState == ShowState::minimized ? SC_RESTORE : SC_MINIMIZE;
    case HTMAXBUTTON:
        return window.showState == ShowState::maximized ? SC_RESTORE : SC_MAXIMIZE;
    default:
        return SC_CONTEXTHELP;
    }
}

void drawPressed(HWND handle, int button) {
    Window* window = findWindow(handle);
    if (window == nullptr || window->pressedButton == button)
        return;
    window->pressedButton = button;
    paintCaption(handle);
}

/// Follows the mouse until the button goes up; true when that happens over the caption button.
bool trackButton(HWND handle, int button) {
    SetCapture(handle);
    drawPressed(handle, button);
    bool inside = true;
    MSG message{};
    while (GetCapture() == handle && nextModalMessage(message, MSGF_MOVE)) {
        if (message.message == WM_LBUTTONUP) {
            ReleaseCapture();
            drawPressed(handle, 0);
            return inside && findWindow(handle) != nullptr;
        }
        if (message.message == WM_MOUSEMOVE) {
            const Window* window = findWindow(handle);
            inside = window != nullptr && containsPoint(captionButtonArea(*window, button), message.pt);
            drawPressed(handle, inside ? button : 0);
        } else {
            DispatchMessageA(&message);
        }
    }
    drawPressed(handle, 0);
    return false;
}

void pressButton(HWND handle, int button, POINT point) {
    const Window* window = findWindow(handle);
    if (!buttonEnabled(*window, button) || !trackButton(handle, button))
        return;
    window = findWindow(handle);
    if (window != nullptr)
        send(handle, WM_SYSCOMMAND, commandOf(*window, button), MAKELPARAM(point.x, point.y));
}

/// HTLEFT to HTBOTTOMRIGHT as the numbers WMSZ_LEFT to WMSZ_BOTTOMRIGHT.
UINT sizingEdge(LRESULT hitTest) { return static_cast<UINT>(hitTest - HTLEFT + 1); }

void sendCommand(HWND handle, UINT command, POINT point) {
    send(handle, WM_SYSCOMMAND, command, MAKELPARAM(point.x, point.y));
}

void pressCaption(HWND handle, POINT point) {
    const HWND top = topLevelOf(*findWindow(handle))->handle;
    if (!activate(top, ActivationCause::mouse) || findWindow(handle) == nullptr)
        return;
    sendCommand(handle, SC_MOVE | HTCAPTION, point);
}

} // namespace

void pressFrame(HWND handle, LRESULT hitTest, POINT point) {
    switch (hitTest) {
    case HTCAPTION:
        pressCaption(handle, point);
        break;
    case HTSYSMENU:
        sendCommand(handle, SC_MOUSEMENU | HTSYSMENU, point);
        break;
    case HTMENU:
        sendCommand(handle, SC_MOUSEMENU | HTMENU, point);
        break;
    case HTHSCROLL:
        sendCommand(handle, SC_HSCROLL | HTHSCROLL, point);
        break;
    case HTVSCROLL:
        sendCommand(handle, SC_VSCROLL | HTVSCROLL, point);
        break;
    case HTCLOSE:
    case HTMINBUTTON:
    case HTMAXBUTTON:
    case HTHELP:
        pressButton(handle, static_cast<int>(hitTest), point);
        break;
    default:
        if (hitTest >= HTLEFT && hitTest <= HTBOTTOMRIGHT)
            sendCommand(handle, SC_SIZE | sizingEdge(hitTest), point);
        break;
    }
}

void doubleClickFrame(HWND handle, LRESULT hitTest, POINT point) {
    const Window* window = findWindow(handle);
    if (hitTest == HTSYSMENU) {
        if (buttonEnabled(*window, HTCLOSE))
            sendCommand(handle, SC_CLOSE, point);
        return;
    }
    if (hitTest != HTCAPTION) {
        pressFrame(handle, hitTest, point);
        return;
    }
    if (window->showState != ShowState::normal)
        sendCommand(handle, SC_RESTORE, point);
    else if ((window->style & WS_MAXIMIZEBOX) != 0)
        sendCommand(handle, SC_MAXIMIZE, point);
}

} // namespace vndk::win32
