// DefWindowProc for the frame: its sizes, hit test, painting, and the mouse over it.
#include "controls/scroll_bars.h"
#include "user/activation.h"
#include "user/default_procedure.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/menu_bar.h"
#include "user/painting.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/scrollbar.h"

namespace vndk::win32 {

namespace {

LRESULT calculateSize(HWND handle, WPARAM wParam, LPARAM lParam) {
    if (lParam == 0)
        return 0;
    const Window* window = findWindow(handle);
    RECT& rect =
        wParam != FALSE ? reinterpret_cast<NCCALCSIZE_PARAMS*>(lParam)->rgrc[0] : *reinterpret_cast<RECT*>(lParam);
    const UINT classStyle = window->windowClass->style;
    rect = clientFromWindowRect(*window, rect);
    LRESULT result = 0;
    if (wParam != FALSE && (classStyle & CS_HREDRAW) != 0)
        result |= WVR_HREDRAW;
    if (wParam != FALSE && (classStyle & CS_VREDRAW) != 0)
        result |= WVR_VREDRAW;
    return result;
}

/// The side or corner of a thick frame; a corner reaches as far as a caption is high.
LRESULT hitTestThickFrame(const Window& window, POINT point) {
    const int border = borderWidth(window.style, window.exStyle);
    const RECT& outer = window.windowRect;
    const int cornerX = border + GetSystemMetrics(SM_CXSIZE);
    const int cornerY = border + GetSystemMetrics(SM_CYSIZE);
    const bool left = point.x < outer.left + cornerX;
    const bool right = point.x >= outer.right - cornerX;
    const bool top = point.y < outer.top + cornerY;
    const bool bottom = point.y >= outer.bottom - cornerY;
    const bool onSide = point.x < outer.left + border || point.x >= outer.right - border;
    if (!onSide) {
        const bool upper = point.y < outer.top + border;
        return left    ? (upper ? HTTOPLEFT : HTBOTTOMLEFT)
               : right ? (upper ? HTTOPRIGHT : HTBOTTOMRIGHT)
               : upper ? HTTOP
                       : HTBOTTOM;
    }
    const bool leftSide = point.x < outer.left + border;
    return top        ? (leftSide ? HTTOPLEFT : HTTOPRIGHT)
           : bottom   ? (leftSide ? HTBOTTOMLEFT : HTBOTTOMRIGHT)
           : leftSide ? HTLEFT
                      : HTRIGHT;
}

LRESULT hitTestCaption(const Window& window, POINT point) {
    if (containsPoint(captionIconArea(window), point))
        return HTSYSMENU;
    for (const int button : {HTCLOSE, HTMAXBUTTON, HTMINBUTTON, HTHELP})
        if (containsPoint(captionButtonArea(window, button), point))
            return button;
    return HTCAPTION;
}

LRESULT hitTestBars(const Window& window, POINT point) {
    if (containsPoint(frameScrollBarRect(window, SB_VERT), point))
        return HTVSCROLL;
    if (containsPoint(frameScrollBarRect(window, SB_HORZ), point))
        return HTHSCROLL;
    if (containsPoint(frameSizeBoxRect(window), point)) {
        if (!frameSizeBoxSizes(window))
            return HTBORDER;
        return (window.exStyle & WS_EX_LEFTSCROLLBAR) != 0 ? HTBOTTOMLEFT : HTBOTTOMRIGHT;
    }
    return HTBORDER;
}

/// FALSE lets the frame stay as it is; by default a window can always become inactive.
LRESULT setCaptionActive(HWND handle, bool active) {
    Window* window = findWindow(handle);
    if (window->captionActive != active) {
        window->captionActive = active;
        paintCaption(handle);
    }
    return TRUE;
}

void rightButtonUp(HWND handle, LPARAM lParam) {
    // The button went down and up over the frame: its menu is asked for.
    send(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle), lParam);
}

} // namespace

LRESULT hitTestFrame(const Window& window, POINT point) {
    if (!containsPoint(window.windowRect, point))
        return HTNOWHERE;
    if (window.showState == ShowState::minimized)
        return hasCaption(window.style) && containsPoint(captionArea(window), point) ? hitTestCaption(window, point)
                                                                                     : HTCAPTION;
    if (containsPoint(window.clientRect, point))
        return HTCLIENT;
    if (!containsPoint(insideFrame(window, window.windowRect), point))
        return (window.style & WS_THICKFRAME) != 0 && window.showState != ShowState::maximized
                   ? hitTestThickFrame(window, point)
                   : HTBORDER;
    if (hasCaption(window.style) && point.y < captionArea(window).bottom + 1) // The line below belongs to the caption.
        return hitTestCaption(window, point);
    if (containsPoint(menuBarArea(window), point))
        return HTMENU;
    return hitTestBars(window, point);
}

std::optional<LRESULT> defaultFrame(HWND handle, UINT message, WPARAM wParam, LPARAM lParam) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_NCCALCSIZE:
        return calculateSize(handle, wParam, lParam);
    case WM_NCHITTEST:
        return hitTestFrame(*findWindow(handle), point);
    case WM_NCPAINT: {
        // 1 stands for the whole frame.
        const Region* clip = wParam > 1 ? regionOf(reinterpret_cast<HRGN>(wParam)) : nullptr;
        paintFrame(handle, clip);
        return 0;
    }
    case WM_NCACTIVATE:
        return setCaptionActive(handle, wParam != FALSE);
    case WM_NCLBUTTONDOWN:
        pressFrame(handle, static_cast<LRESULT>(wParam), point);
        return 0;
    case WM_NCLBUTTONDBLCLK:
        doubleClickFrame(handle, static_cast<LRESULT>(wParam), point);
        return 0;
    case WM_NCRBUTTONUP:
        rightButtonUp(handle, lParam);
        return 0;
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
