#include "user/frame_geometry.h"

#include "user/desktop_state.h"
#include "user/menu_bar.h"
#include "win32/error.h"
#include "win32/metrics.h"

#include <algorithm>
#include <limits>

namespace vndk::win32 {

namespace {

bool hasSystemMenu(const Window& window) { return hasCaption(window.style) && (window.style & WS_SYSMENU) != 0; }

bool isToolWindow(const Window& window) { return (window.exStyle & WS_EX_TOOLWINDOW) != 0; }

/// The bar goes off a side only when there is room for it.
void takeOffScrollBars(const Window& window, RECT& rect) {
    if ((window.style & WS_VSCROLL) != 0 && widthOf(rect) >= GetSystemMetrics(SM_CXVSCROLL)) {
        if ((window.exStyle & WS_EX_LEFTSCROLLBAR) != 0)
            rect.left += GetSystemMetrics(SM_CXVSCROLL);
        else
            rect.right -= GetSystemMetrics(SM_CXVSCROLL);
    }
    if ((window.style & WS_HSCROLL) != 0 && heightOf(rect) > GetSystemMetrics(SM_CYHSCROLL))
        rect.bottom -= GetSystemMetrics(SM_CYHSCROLL);
}

RECT shrunk(const RECT& rect, int by) {
    return {rect.left + by, rect.top + by, std::max(rect.left + by, rect.right - by),
            std::max(rect.top + by, rect.bottom - by)};
}

} // namespace

int borderWidth(DWORD style, DWORD exStyle) {
    int width = 0;
    if ((withWindowEdge(style, exStyle) & WS_EX_WINDOWEDGE) != 0)
        width = 2;
    else if ((exStyle & WS_EX_STATICEDGE) != 0)
        width = 1;
    if ((style & WS_THICKFRAME) != 0)
        width += GetSystemMetrics(SM_CXFRAME) - GetSystemMetrics(SM_CXFIXEDFRAME);
    if ((style & WS_CAPTION) != 0 || (exStyle & WS_EX_DLGMODALFRAME) != 0)
        width += GetSystemMetrics(SM_CXBORDER);
    return width;
}

int captionHeight(DWORD style, DWORD exStyle) {
    if (!hasCaption(style))
        return 0;
    return GetSystemMetrics((exStyle & WS_EX_TOOLWINDOW) != 0 ? SM_CYSMCAPTION : SM_CYCAPTION);
}

DWORD withWindowEdge(DWORD style, DWORD exStyle) {
    const bool edge = (exStyle & WS_EX_DLGMODALFRAME) != 0 ||
                      ((exStyle & WS_EX_STATICEDGE) == 0 && (style & (WS_DLGFRAME | WS_THICKFRAME)) != 0);
    return edge ? exStyle | WS_EX_WINDOWEDGE : exStyle & ~WS_EX_WINDOWEDGE;
}

RECT insideFrame(const Window& window, const RECT& windowRect) {
    return shrunk(windowRect, borderWidth(window.style, window.exStyle));
}

RECT captionArea(const Window& window) {
    if (!hasCaption(window.style))
        return {};
    RECT area = insideFrame(window, window.windowRect);
    if (window.showState != ShowState::minimized)
        area.bottom = std::min(area.bottom, area.top + captionHeight(window.style, window.exStyle) - 1);
    return area;
}

RECT menuBarArea(const Window& window) {
    if (!hasMenuBar(window) || window.showState == ShowState::minimized)
        return {};
    RECT area = insideFrame(window, window.windowRect);
    area.top += captionHeight(window.style, window.exStyle);
    area.bottom = std::min(area.bottom, area.top + menuBarHeight(window.handle, widthOf(area)));
    return area;
}

RECT captionIconArea(const Window& window) {
    // A dialog shows no icon but one that it was given.
    const bool wantsIcon = (window.exStyle & WS_EX_DLGMODALFRAME) == 0 || window.smallIcon != nullptr;
    if (!hasSystemMenu(window) || isToolWindow(window) || !wantsIcon)
        return {};
    const RECT caption = captionArea(window);
    const int size = GetSystemMetrics(SM_CXSMICON);
    const int top = caption.top + (heightOf(caption) - size) / 2;
    return {caption.left + 2, top, caption.left + 2 + size, top + size};
}

bool hasCaptionButton(const Window& window, int button) {
    if (!hasSystemMenu(window))
        return false;
    const bool boxes = (window.style & (WS_MINIMIZEBOX | WS_MAXIMIZEBOX)) != 0 && !isToolWindow(window);
    switch (button) {
    case HTCLOSE:
        return true;
    case HTMINBUTTON:
    case HTMAXBUTTON:
        return boxes;
    case HTHELP:
        return !boxes && (window.exStyle & WS_EX_CONTEXTHELP) != 0;
    default:
        return false;
    }
}

RECT captionButtonArea(const Window& window, int button) {
    if (!hasCaptionButton(window, button))
        return {};
    const RECT caption = captionArea(window);
    const bool small = isToolWindow(window);
    const int width = GetSystemMetrics(small ? SM_CXSMSIZE : SM_CXSIZE) - 2;
    const int height = GetSystemMetrics(small ? SM_CYSMSIZE : SM_CYSIZE) - 4;
    RECT area{caption.right - 2 - width, caption.top + 2, caption.right - 2, caption.top + 2 + height};
    // The close button stands apart; the two boxes touch.
    if (button == HTMAXBUTTON || button == HTHELP)
        area = shifted(area, -width - 2, 0);
    if (button == HTMINBUTTON)
        area = shifted(area, -2 * width - 2, 0);
    return area;
}

RECT captionTextArea(const Window& window) {
    RECT area = captionArea(window);
    if (const RECT icon = captionIconArea(window); icon.right > icon.left)
        area.left = icon.right;
    area.left += 2;
    for (const int button : {HTCLOSE, HTMAXBUTTON, HTMINBUTTON, HTHELP})
        if (const RECT place = captionButtonArea(window, button); place.right > place.left)
            area.right = std::min(area.right, place.left);
    area.right = std::max(area.left, area.right - 2);
    return area;
}

RECT clientFromWindowRect(const Window& window, const RECT& windowRect) {
    if (window.showState == ShowState::minimized)
        return {windowRect.left, windowRect.top, windowRect.left, windowRect.top};
    RECT client = insideFrame(window, windowRect);
    client.top += captionHeight(window.style, window.exStyle);
    if (hasMenuBar(window))
        client.top += menuBarHeight(window.handle, widthOf(client));
    client.bottom = std::max(client.top, client.bottom);
    const int edge = GetSystemMetrics(SM_CXEDGE);
    if ((window.exStyle & WS_EX_CLIENTEDGE) != 0 && widthOf(client) >= 2 * edge && heightOf(client) >= 2 * edge)
        client = shrunk(client, edge);
    takeOffScrollBars(window, client);
    return client;
}

POINT positionOrigin(const Window& window) {
    if (window.parent == nullptr)
        return {0, 0};
    return {window.parent->clientRect.left, window.parent->clientRect.top};
}

RECT toScreen(const Window& window, RECT rect) {
    const POINT origin = positionOrigin(window);
    return shifted(rect, origin.x, origin.y);
}

RECT fromScreen(const Window& window, RECT rect) {
    const POINT origin = positionOrigin(window);
    return shifted(rect, -origin.x, -origin.y);
}

namespace {

/// The screen point that a window's client coordinates count from; false for a dead window.
bool clientOrigin(HWND handle, POINT& origin) {
    origin = {0, 0};
    if (handle == nullptr)
        return true;
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return false;
    origin = {window->clientRect.left, window->clientRect.top};
    return true;
}

LONG added(LONG a, LONG b) {
    const long long sum = static_cast<long long>(a) + b;
    return static_cast<LONG>(
        std::clamp<long long>(sum, std::numeric_limits<LONG>::min(), std::numeric_limits<LONG>::max()));
}

} // namespace

} // namespace vndk::win32

using vndk::win32::findWindow;
using vndk::win32::Window;

BOOL GetWindowRect(HWND window, RECT* rect) {
    const Window* found = findWindow(window);
    if (found == nullptr || rect == nullptr)
        return FALSE;
    *rect = found->windowRect;
    return TRUE;
}

BOOL GetClientRect(HWND window, RECT* rect) {
    const Window* found = findWindow(window);
    if (found == nullptr || rect == nullptr)
        return FALSE;
    *rect = {0, 0, vndk::win32::widthOf(found->clientRect), vndk::win32::heightOf(found->clientRect)};
    return TRUE;
}

BOOL ClientToScreen(HWND window, POINT* point) {
    POINT origin{};
    if (point == nullptr || findWindow(window) == nullptr || !vndk::win32::clientOrigin(window, origin))
        return FALSE;
    *point = {vndk::win32::added(point->x, origin.x), vndk::win32::added(point->y, origin.y)};
    return TRUE;
}

BOOL ScreenToClient(HWND window, POINT* point) {
    POINT origin{};
    if (point == nullptr || findWindow(window) == nullptr || !vndk::win32::clientOrigin(window, origin))
        return FALSE;
    *point = {vndk::win32::added(point->x, -origin.x), vndk::win32::added(point->y, -origin.y)};
    return TRUE;
}

int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count) {
    POINT source{};
    POINT target{};
    if (points == nullptr || !vndk::win32::clientOrigin(from, source) || !vndk::win32::clientOrigin(to, target))
        return 0;
    const POINT shift{source.x - target.x, source.y - target.y};
    for (UINT index = 0; index < count; ++index)
        points[index] = {vndk::win32::added(points[index].x, shift.x), vndk::win32::added(points[index].y, shift.y)};
    return MAKELONG(static_cast<WORD>(shift.x), static_cast<WORD>(shift.y));
}

BOOL AdjustWindowRect(RECT* rect, DWORD style, BOOL menu) { return AdjustWindowRectEx(rect, style, menu, 0); }

BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL menu, DWORD exStyle) {
    if (rect == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    int around = vndk::win32::borderWidth(style, exStyle);
    if ((exStyle & WS_EX_CLIENTEDGE) != 0)
        around += GetSystemMetrics(SM_CXEDGE);
    *rect = {rect->left - around, rect->top - around, rect->right + around, rect->bottom + around};
    rect->top -= vndk::win32::captionHeight(style, exStyle);
    if (menu != FALSE)
        rect->top -= GetSystemMetrics(SM_CYMENU);
    return TRUE;
}
