// DefWindowProc for the ground, colours, printing and the cursor.
#include "controls/scroll_bars.h"
#include "user/default_procedure.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/paint.h"

namespace vndk::win32 {

namespace {

/// A class names its ground by a brush, or by a system colour's number plus 1.
HBRUSH groundBrush(const WindowClass& windowClass) {
    const auto value = reinterpret_cast<UINT_PTR>(windowClass.background);
    return value != 0 && value <= 64 ? GetSysColorBrush(static_cast<int>(value) - 1) : windowClass.background;
}

LRESULT eraseGround(const Window& window, HDC dc) {
    const HBRUSH brush = groundBrush(*window.windowClass);
    if (brush == nullptr || dc == nullptr)
        return FALSE;
    RECT area{};
    if ((window.windowClass->style & CS_PARENTDC) != 0)
        GetClientRect(window.handle, &area);
    else
        GetClipBox(dc, &area);
    FillRect(dc, &area, brush);
    return TRUE;
}

LRESULT controlColor(UINT message, HDC dc) {
    if (message == WM_CTLCOLORSCROLLBAR)
        return reinterpret_cast<LRESULT>(scrollBarGround(dc));
    const bool field = message == WM_CTLCOLOREDIT || message == WM_CTLCOLORLISTBOX;
    const int ground = field ? COLOR_WINDOW : COLOR_BTNFACE;
    SetTextColor(dc, GetSysColor(message == WM_CTLCOLORBTN ? COLOR_BTNTEXT : COLOR_WINDOWTEXT));
    SetBkColor(dc, GetSysColor(ground));
    return reinterpret_cast<LRESULT>(GetSysColorBrush(ground));
}

void paintNothing(HWND handle) {
    PAINTSTRUCT paint{};
    if (BeginPaint(handle, &paint) != nullptr)
        EndPaint(handle, &paint);
}

void printChildren(HWND handle, HDC dc, LPARAM what) {
    std::vector<HWND> children;
    for (const Window* child : findWindow(handle)->children)
        if ((child->style & WS_VISIBLE) != 0)
            children.insert(children.begin(), child->handle); // The hindmost is painted first.
    for (const HWND child : children) {
        const Window* above = findWindow(handle);
        const Window* printed = findWindow(child);
        if (above == nullptr || printed == nullptr)
            continue;
        const int level = SaveDC(dc);
        OffsetViewportOrgEx(dc, printed->windowRect.left - above->clientRect.left,
                            printed->windowRect.top - above->clientRect.top, nullptr);
        send(child, WM_PRINT, reinterpret_cast<WPARAM>(dc), what | PRF_NONCLIENT | PRF_CLIENT);
        RestoreDC(dc, level);
    }
}

/// Paints the window into a context. Its frame's corner is at (0, 0) when the frame is asked for, else its client
/// area's is.
void print(HWND handle, HDC dc, LPARAM what) {
    if ((what & PRF_CHECKVISIBLE) != 0 && IsWindowVisible(handle) == FALSE)
        return;
    const int level = SaveDC(dc);
    if ((what & PRF_NONCLIENT) != 0) {
        paintFrameInto(handle, dc);
        if (const Window* window = findWindow(handle); window != nullptr)
            OffsetViewportOrgEx(dc, window->clientRect.left - window->windowRect.left,
                                window->clientRect.top - window->windowRect.top, nullptr);
    }
    if (const Window* window = findWindow(handle); window != nullptr)
        IntersectClipRect(dc, 0, 0, widthOf(window->clientRect), heightOf(window->clientRect));
    if ((what & PRF_ERASEBKGND) != 0)
        send(handle, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
    if ((what & PRF_CLIENT) != 0)
        send(handle, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc), what);
    if ((what & PRF_CHILDREN) != 0 && findWindow(handle) != nullptr)
        printChildren(handle, dc, what);
    RestoreDC(dc, level);
}

LPCSTR frameCursor(LRESULT hitTest) {
    switch (hitTest) {
    case HTLEFT:
    case HTRIGHT:
        return IDC_SIZEWE;
    case HTTOP:
    case HTBOTTOM:
        return IDC_SIZENS;
    case HTTOPLEFT:
    case HTBOTTOMRIGHT:
        return IDC_SIZENWSE;
    case HTTOPRIGHT:
    case HTBOTTOMLEFT:
        return IDC_SIZENESW;
    default:
        return nullptr;
    }
}

bool isButtonPress(UINT message) {
    return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN;
}

/// A click beside a modal dialog: it calls attention to itself.
void refuseClick(HWND handle) {
    MessageBeep(0);
    const HWND popup = GetLastActivePopup(handle);
    if (popup != handle && IsWindowVisible(popup) != FALSE && IsWindowEnabled(popup) != FALSE)
        SetForegroundWindow(popup);
}

LRESULT setCursor(HWND handle, WPARAM wParam, LPARAM lParam) {
    const auto hitTest = static_cast<SHORT>(LOWORD(static_cast<DWORD_PTR>(lParam)));
    const UINT message = HIWORD(static_cast<DWORD_PTR>(lParam));
    const Window* window = findWindow(handle);
    const LPCSTR sizing = frameCursor(hitTest);
    if (sizing == nullptr && hitTest != HTERROR && isChild(*window) && window->parent->parent != nullptr) {
        if (send(window->parent->handle, WM_SETCURSOR, wParam, lParam) != FALSE)
            return TRUE;
        window = findWindow(handle);
        if (window == nullptr)
            return FALSE;
    }
    if (hitTest == HTERROR && isButtonPress(message)) {
        refuseClick(handle);
        return FALSE;
    }
    if (hitTest == HTCLIENT && window->windowClass->cursor == nullptr)
        return FALSE;
    const HCURSOR cursor = hitTest == HTCLIENT ? window->windowClass->cursor
                                               : LoadCursorA(nullptr, sizing != nullptr ? sizing : IDC_ARROW);
    SetCursor(cursor);
    return TRUE;
}

} // namespace

std::optional<LRESULT> defaultPainting(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const HDC dc = reinterpret_cast<HDC>(wParam);
    switch (message) {
    case WM_ERASEBKGND:
        return eraseGround(*findWindow(handle), dc);
    case WM_PAINT:
        paintNothing(handle);
        return 0;
    case WM_PRINT:
        print(handle, dc, lParam);
        return 0;
    case WM_CTLCOLORMSGBOX:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORDLG:
    case WM_CTLCOLORSCROLLBAR:
    case WM_CTLCOLORSTATIC:
        return controlColor(message, dc);
    case WM_SETCURSOR:
        return setCursor(handle, wParam, lParam);
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
