// The classic look of frames.
#include "controls/scroll_bars.h"
#include "gdi/window_dc.h"
#include "user/default_procedure.h"
#include "user/desktop_state.h"
#include "user/frame_geometry.h"
#include "user/menu_bar.h"
#include "user/painting.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/scrollbar.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

/// Window coordinates: (0, 0) is the frame's corner.
RECT inWindow(const Window& window, const RECT& rect) {
    return shifted(rect, -window.windowRect.left, -window.windowRect.top);
}

void fill(HDC dc, const RECT& rect, COLORREF color) {
    if (rect.left >= rect.right || rect.top >= rect.bottom)
        return;
    SetDCBrushColor(dc, color);
    FillRect(dc, &rect, reinterpret_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

/// A ring of one pixel along the rectangle's edge; the rectangle shrinks to what is inside.
void ring(HDC dc, RECT& rect, COLORREF color) {
    fill(dc, {rect.left, rect.top, rect.right, rect.top + 1}, color);
    fill(dc, {rect.left, rect.bottom - 1, rect.right, rect.bottom}, color);
    fill(dc, {rect.left, rect.top, rect.left + 1, rect.bottom}, color);
    fill(dc, {rect.right - 1, rect.top, rect.right, rect.bottom}, color);
    rect = {rect.left + 1, rect.top + 1, rect.right - 1, rect.bottom - 1};
}

void drawBorders(const Window& window, HDC dc) {
    RECT rect = inWindow(window, window.windowRect);
    const bool edge = (window.exStyle & WS_EX_WINDOWEDGE) != 0;
    if (edge)
        DrawEdge(dc, &rect, EDGE_RAISED, BF_RECT | BF_ADJUST);
    else if ((window.exStyle & WS_EX_STATICEDGE) != 0)
        DrawEdge(dc, &rect, BDR_SUNKENOUTER, BF_RECT | BF_ADJUST);
    if ((window.style & WS_THICKFRAME) != 0)
        for (int count = GetSystemMetrics(SM_CXFRAME) - GetSystemMetrics(SM_CXFIXEDFRAME); count > 0; --count)
            ring(dc, rect, GetSysColor(window.captionActive ? COLOR_ACTIVEBORDER : COLOR_INACTIVEBORDER));
    if ((window.style & WS_CAPTION) != 0 || (window.exStyle & WS_EX_DLGMODALFRAME) != 0)
        ring(dc, rect, GetSysColor(edge ? COLOR_3DFACE : COLOR_WINDOWFRAME));
}

COLORREF between(COLORREF a, COLORREF b, int part, int whole) {
    const auto mix = [&](int from, int to) { return from + (to - from) * part / whole; };
    return RGB(mix(GetRValue(a), GetRValue(b)), mix(GetGValue(a), GetGValue(b)), mix(GetBValue(a), GetBValue(b)));
}

/// From one colour at the left to another at the right, in bands of the same colour.
void fillCaption(HDC dc, const RECT& rect, bool active) {
    const COLORREF left = GetSysColor(active ? COLOR_ACTIVECAPTION : COLOR_INACTIVECAPTION);
    const COLORREF right = GetSysColor(active ? COLOR_GRADIENTACTIVECAPTION : COLOR_GRADIENTINACTIVECAPTION);
    constexpr int bands = 64;
    const int width = widthOf(rect);
    for (int band = 0; band < bands; ++band)
        fill(dc, {rect.left + width * band / bands, rect.top, rect.left + width * (band + 1) / bands, rect.bottom},
             between(left, right, band, bands - 1));
}

HICON captionIcon(const Window& window) {
    for (const HICON icon : {window.smallIcon, window.icon, window.windowClass->smallIcon, window.windowClass->icon})
        if (icon != nullptr)
            return icon;
    return LoadIconA(nullptr, IDI_APPLICATION);
}

void drawCaptionText(const Window& window, HDC dc) {
    NONCLIENTMETRICSA metrics{};
    metrics.cbSize = sizeof metrics;
    if (window.text.empty() || SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0) == FALSE)
        return;
    const bool small = (window.exStyle & WS_EX_TOOLWINDOW) != 0;
    const HFONT font = CreateFontIndirectA(small ? &metrics.lfSmCaptionFont : &metrics.lfCaptionFont);
    const HGDIOBJ former = SelectObject(dc, font);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, GetSysColor(window.captionActive ? COLOR_CAPTIONTEXT : COLOR_INACTIVECAPTIONTEXT));
    RECT area = inWindow(window, captionTextArea(window));
    DrawTextA(dc, window.text.c_str(), static_cast<int>(window.text.size()), &area,
              DT_SINGLELINE | DT_VCENTER | DT_LEFT | DT_NOPREFIX | DT_END_ELLIPSIS);
    SelectObject(dc, former);
    DeleteObject(font);
}

UINT buttonKind(const Window& window, int button) {
    switch (button) {
    case HTCLOSE:
        return DFCS_CAPTIONCLOSE;
    case HTMINBUTTON:
        return window.showState == ShowState::minimized ? DFCS_CAPTIONRESTORE : DFCS_CAPTIONMIN;
    case HTMAXBUTTON:
        return window.showState == ShowState::maximized ? DFCS_CAPTIONRESTORE : DFCS_CAPTIONMAX;
    default:
        return DFCS_CAPTIONHELP;
    }
}

bool buttonGrayed(const Window& window, int button) {
    switch (button) {
    case HTCLOSE:
        return (window.windowClass->style & CS_NOCLOSE) != 0 || !closeEnabled(window.handle);
    case HTMINBUTTON:
        return (window.style & WS_MINIMIZEBOX) == 0;
    case HTMAXBUTTON:
        return (window.style & WS_MAXIMIZEBOX) == 0;
    default:
        return false;
    }
}

void drawButtons(const Window& window, HDC dc) {
    for (const int button : {HTMINBUTTON, HTMAXBUTTON, HTHELP, HTCLOSE}) {
        if (!hasCaptionButton(window, button))
            continue;
        RECT area = inWindow(window, captionButtonArea(window, button));
        UINT kind = buttonKind(window, button);
        if (window.pressedButton == button)
            kind |= DFCS_PUSHED;
        if (buttonGrayed(window, button))
            kind |= DFCS_INACTIVE;
        DrawFrameControl(dc, &area, DFC_CAPTION, kind);
    }
}

void drawCaption(const Window& window, HDC dc) {
    const RECT area = inWindow(window, captionArea(window));
    fillCaption(dc, area, window.captionActive);
    fill(dc, {area.left, area.bottom, area.right, area.bottom + 1}, GetSysColor(COLOR_3DFACE));
    if (const RECT icon = inWindow(window, captionIconArea(window)); icon.right > icon.left)
        DrawIconEx(dc, icon.left, icon.top, captionIcon(window), widthOf(icon), heightOf(icon), 0, nullptr, DI_NORMAL);
    drawCaptionText(window, dc);
    drawButtons(window, dc);
}

void drawClientEdge(const Window& window, HDC dc) {
    if ((window.exStyle & WS_EX_CLIENTEDGE) == 0 || window.showState == ShowState::minimized)
        return;
    RECT rect = insideFrame(window, window.windowRect);
    rect.top += captionHeight(window.style, window.exStyle);
    if (hasMenuBar(window))
        rect.top += menuBarHeight(window.handle, widthOf(rect));
    rect = inWindow(window, rect);
    if (rect.bottom > rect.top)
        DrawEdge(dc, &rect, EDGE_SUNKEN, BF_RECT);
}

/// Controls paint over siblings that stand before them, group boxes for one, unless their style says otherwise.
DWORD frameContextFlags(const Window& window) {
    return DCX_WINDOW | DCX_CACHE | ((window.style & WS_CLIPSIBLINGS) != 0 ? DCX_CLIPSIBLINGS : 0);
}

} // namespace

void paintFrameInto(HWND handle, HDC dc) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return;
    const int level = SaveDC(dc);
    drawBorders(*window, dc);
    if (hasCaption(window->style))
        drawCaption(*window, dc);
    const RECT bar = inWindow(*window, menuBarArea(*window));
    if (bar.bottom > bar.top)
        drawMenuBar(handle, dc, bar); // Its items may be drawn by the window itself.
    window = findWindow(handle);
    if (window != nullptr && window->showState != ShowState::minimized) {
        drawClientEdge(*window, dc);
        drawFrameScrollBar(handle, dc, SB_VERT);
        drawFrameScrollBar(handle, dc, SB_HORZ);
        drawFrameSizeBox(handle, dc);
    }
    RestoreDC(dc, level);
}

void paintFrame(HWND handle, const Region* clip) {
    const Window* window = findWindow(handle);
    if (window == nullptr || window->parent == nullptr || sameRect(window->windowRect, window->clientRect))
        return;
    HRGN limit = nullptr;
    if (clip != nullptr) {
        Region moved = *clip;
        moved.offset(-window->windowRect.left, -window->windowRect.top);
        limit = newRegionHandle(std::move(moved));
    }
    const HDC dc = GetDCEx(handle, nullptr, frameContextFlags(*window));
    if (dc != nullptr) {
        if (limit != nullptr)
            SelectClipRgn(dc, limit);
        paintFrameInto(handle, dc);
        ReleaseDC(handle, dc);
    }
    if (limit != nullptr)
        DeleteObject(limit);
}

void paintCaption(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr || !window->created || !isVisible(*window))
        return;
    // The border's colour changes with the activation, too.
    const HDC dc = GetDCEx(handle, nullptr, frameContextFlags(*window));
    if (dc == nullptr)
        return;
    drawBorders(*window, dc);
    if (hasCaption(window->style))
        drawCaption(*window, dc);
    ReleaseDC(handle, dc);
}

} // namespace vndk::win32
