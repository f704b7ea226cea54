#include "controls/scroll_bar.h"

#include "controls/scroll_bars.h"
#include "controls/scroll_menu.h"
#include "controls/scroll_place.h"
#include "controls/scroll_tracker.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/queue.h"

namespace vndk::win32 {

ScrollBar::ScrollBar(HWND window) : Control(window) { state_.maximum = 0; }

// ---- Values --------------------------------------------------------------------------------------------------------

void ScrollBar::refresh(bool redraw) {
    if (redraw && IsWindowVisible(window()) != FALSE)
        paintNow();
    if (alive() && focused())
        placeCaret();
}

int ScrollBar::setPosition(int position, bool redraw) {
    const int former = state_.position;
    SCROLLINFO info{};
    info.fMask = SIF_POS;
    info.nPos = position;
    applyScrollInfo(state_, info);
    refresh(redraw);
    return former;
}

bool ScrollBar::setRange(int minimum, int maximum, bool redraw) {
    SCROLLINFO info{};
    info.fMask = SIF_RANGE;
    info.nMin = minimum;
    info.nMax = maximum;
    applyScrollInfo(state_, info);
    refresh(redraw);
    return true;
}

int ScrollBar::setInfo(const SCROLLINFO& info, bool redraw) {
    applyScrollInfo(state_, info);
    if ((info.fMask & (SIF_RANGE | SIF_PAGE | SIF_DISABLENOSCROLL)) != 0) {
        if (canScroll(state_))
            enableArrows(ESB_ENABLE_BOTH);
        else if ((info.fMask & SIF_DISABLENOSCROLL) != 0)
            enableArrows(ESB_DISABLE_BOTH);
    }
    if (alive())
        refresh(redraw);
    return state_.position;
}

bool ScrollBar::enableArrows(UINT arrows) {
    const UINT former = state_.disabledArrows;
    arrows &= ESB_DISABLE_BOTH;
    if (arrows == former)
        return false;
    // The window is enabled along with its arrows; it learns of that by WM_ENABLE, which would set both alike.
    if (arrows == ESB_DISABLE_BOTH || former == ESB_DISABLE_BOTH)
        EnableWindow(window(), arrows != ESB_DISABLE_BOTH ? TRUE : FALSE);
    state_.disabledArrows = arrows;
    if (alive())
        refresh(true);
    return true;
}

void ScrollBar::onEnable(bool enable) {
    state_.disabledArrows = enable ? ESB_ENABLE_BOTH : ESB_DISABLE_BOTH;
    refresh(true);
}

// ---- Place ---------------------------------------------------------------------------------------------------------

void ScrollBar::onCreate() {
    if (!enabled())
        state_.disabledArrows = ESB_DISABLE_BOTH;
    align(clientRect());
}

/// The align styles give the bar its standard breadth at one side of the rectangle that it was created with.
void ScrollBar::align(const RECT& client) const {
    const DWORD bits = style();
    if ((bits & (SBS_TOPALIGN | SBS_BOTTOMALIGN)) == 0)
        return;
    const bool far = (bits & SBS_BOTTOMALIGN) != 0;
    const bool both = (bits & (SBS_SIZEBOX | SBS_SIZEGRIP)) != 0;
    int width = client.right;
    int height = client.bottom;
    if (both || (bits & SBS_VERT) != 0)
        width = GetSystemMetrics(SM_CXVSCROLL);
    if (both || (bits & SBS_VERT) == 0)
        height = GetSystemMetrics(SM_CYHSCROLL);
    RECT place{};
    GetWindowRect(window(), &place);
    POINT corner{place.left, place.top};
    if (far)
        corner = {place.right - width, place.bottom - height};
    ScreenToClient(GetParent(window()), &corner);
    MoveWindow(window(), corner.x, corner.y, width, height, FALSE);
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void ScrollBar::paint(HDC dc) {
    const HBRUSH brush = colorBrush(WM_CTLCOLORSCROLLBAR, dc);
    if (!alive())
        return;
    RECT client = clientRect();
    if (!isSizeBox()) {
        paintScrollBar(dc, client, isVertical(), state_, enabled(), brush != nullptr ? brush : scrollBarGround(dc));
        return;
    }
    FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
    DrawFrameControl(dc, &client, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
}

void ScrollBar::onPaint(HDC given) {
    if (given != nullptr) {
        paint(given);
        return;
    }
    PAINTSTRUCT area{};
    const HDC dc = BeginPaint(window(), &area);
    if (alive() && dc != nullptr)
        paint(dc);
    EndPaint(window(), &area);
}

void ScrollBar::paintNow() {
    const bool caret = focused();
    if (caret)
        HideCaret(window());
    if (const HDC dc = GetDC(window()); dc != nullptr) {
        paint(dc);
        ReleaseDC(window(), dc);
    }
    if (caret && alive())
        ShowCaret(window());
}

// ---- Input ---------------------------------------------------------------------------------------------------------

void ScrollBar::onButtonDown(LPARAM lParam) {
    if (isSizeBox()) {
        // The user sizes the window that the box stands in.
        SendMessageA(GetAncestor(window(), GA_ROOT), WM_SYSCOMMAND, SC_SIZE | WMSZ_BOTTOMRIGHT,
                     static_cast<LPARAM>(GetMessagePos()));
        return;
    }
    POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    ClientToScreen(window(), &point);
    if (hasStyle(WS_TABSTOP))
        SetFocus(window());
    if (!alive())
        return;
    HideCaret(window());
    trackScrollBar(window(), SB_CTL, point);
    if (alive() && focused()) {
        placeCaret();
        ShowCaret(window());
    }
}

/// By mouse only: the menu says where to scroll to.
void ScrollBar::onContextMenu(LPARAM lParam) {
    if (lParam != -1 && !isSizeBox())
        showScrollMenu(window(), SB_CTL, {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
}

bool ScrollBar::onKey(WPARAM key, bool down) {
    struct Row {
        int key;
        int code;
    };
    constexpr Row rows[] = {{VK_PRIOR, SB_PAGEUP},  {VK_NEXT, SB_PAGEDOWN}, {VK_HOME, SB_TOP},
                            {VK_END, SB_BOTTOM},    {VK_UP, SB_LINEUP},     {VK_LEFT, SB_LINEUP},
                            {VK_DOWN, SB_LINEDOWN}, {VK_RIGHT, SB_LINEDOWN}};
    for (const Row& row : rows)
        if (static_cast<WPARAM>(row.key) == key) {
            if (!state_.tracking)
                sendScroll(window(), SB_CTL, down ? row.code : SB_ENDSCROLL, 0);
            return true;
        }
    return false;
}

bool ScrollBar::onSetCursor(LPARAM lParam) const {
    if (!isSizeBox() || LOWORD(static_cast<DWORD_PTR>(lParam)) != HTCLIENT)
        return false;
    SetCursor(LoadCursorA(nullptr, IDC_SIZENWSE));
    return true;
}

/// The focus shows as a caret that blinks inside of the thumb.
void ScrollBar::onSetFocus() {
    ScrollPlace place;
    if (!locateScrollBar(window(), SB_CTL, place) || !place.layout.hasThumb)
        return;
    constexpr int inset = 3;
    const int along = place.layout.thumbEnd - place.layout.thumbBegin - 2 * inset;
    const int across = place.breadth() - 2 * inset;
    if (along <= 0 || across <= 0)
        return;
    const auto gray = reinterpret_cast<HBITMAP>(UINT_PTR{1});
    CreateCaret(window(), gray, place.vertical ? across : along, place.vertical ? along : across);
    placeCaret();
    ShowCaret(window());
}

void ScrollBar::placeCaret() const {
    ScrollPlace place;
    if (!locateScrollBar(window(), SB_CTL, place) || !place.layout.hasThumb)
        return;
    constexpr int inset = 3;
    const int begin = place.layout.thumbBegin + inset;
    SetCaretPos(place.vertical ? inset : begin, place.vertical ? begin : inset);
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT ScrollBar::handleScrollMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case SBM_SETPOS:
        return setPosition(static_cast<int>(wParam), lParam != 0);
    case SBM_GETPOS:
        return state_.position;
    case SBM_SETRANGE:
    case SBM_SETRANGEREDRAW: {
        const int former = state_.position;
        setRange(static_cast<int>(wParam), static_cast<int>(lParam), message == SBM_SETRANGEREDRAW);
        return former != state_.position ? former : 0;
    }
    case SBM_GETRANGE:
        if (wParam != 0)
            *reinterpret_cast<int*>(wParam) = state_.minimum;
        if (lParam != 0)
            *reinterpret_cast<int*>(lParam) = state_.maximum;
        return 0;
    case SBM_ENABLE_ARROWS:
        return enableArrows(static_cast<UINT>(wParam)) ? TRUE : FALSE;
    case SBM_SETSCROLLINFO: {
        const auto* info = reinterpret_cast<const SCROLLINFO*>(lParam);
        return info != nullptr && isValid(*info) ? setInfo(*info, wParam != 0) : 0;
    }
    case SBM_GETSCROLLINFO: {
        auto* info = reinterpret_cast<SCROLLINFO*>(lParam);
        return info != nullptr && readScrollInfo(state_, *info) ? TRUE : FALSE;
    }
    default:
        return GetScrollBarInfo(window(), OBJID_CLIENT, reinterpret_cast<SCROLLBARINFO*>(lParam));
    }
}

LRESULT ScrollBar::handleInput(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        onButtonDown(lParam);
        return 0;
    case WM_KEYDOWN:
    case WM_KEYUP:
        if (onKey(wParam, message == WM_KEYDOWN))
            return 0;
        break;
    case WM_SETCURSOR:
        if (onSetCursor(lParam))
            return TRUE;
        break;
    case WM_SETFOCUS:
        onSetFocus();
        return 0;
    case WM_KILLFOCUS:
        DestroyCaret();
        return 0;
    case WM_CONTEXTMENU:
        onContextMenu(lParam);
        return 0;
    default:
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

LRESULT ScrollBar::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message >= SBM_SETPOS && message <= SBM_GETSCROLLBARINFO && message != 0x00E5 && message != 0x00E7 &&
        message != 0x00E8)
        return handleScrollMessage(message, wParam, lParam);
    switch (message) {
    case WM_CREATE:
        onCreate();
        return 0;
    case WM_ENABLE:
        onEnable(wParam != 0);
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS;
    case WM_PAINT:
        onPaint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_PRINTCLIENT:
        onPaint(reinterpret_cast<HDC>(wParam));
        return 0;
    default:
        return handleInput(message, wParam, lParam);
    }
}

void registerScrollBar() {
    registerControl<ScrollBar>({.name = "SCROLLBAR", .style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW | CS_PARENTDC});
}

} // namespace vndk::win32
