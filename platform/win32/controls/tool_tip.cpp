#include "controls/tool_tip.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/queue.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr UINT_PTR showTimer = 1;
constexpr UINT_PTR popTimer = 2;
constexpr UINT_PTR leaveTimer = 3;
constexpr UINT leaveCheck = 100;  // milliseconds between two looks whether the pointer has gone
constexpr int textMargin = 2;     // pixels around the text, inside the border
constexpr int pointerHeight = 20; // the tip stands this far below the hot spot

bool isButtonMessage(UINT message) {
    return (message >= WM_LBUTTONDOWN && message <= WM_MBUTTONDBLCLK) ||
           (message >= WM_NCLBUTTONDOWN && message <= WM_NCMBUTTONDBLCLK);
}

} // namespace

ToolTip::~ToolTip() {
    for (const Tool& tool : tools_)
        stopRelayingTo(tool.source(), window());
}

HFONT ToolTip::font() const { return font_ != nullptr ? font_ : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT)); }

// ---- The pointer ---------------------------------------------------------------------------------------------------

void ToolTip::relay(HWND target, UINT message, LPARAM lParam) {
    if (isButtonMessage(message)) {
        rest();
        return;
    }
    if (message != WM_MOUSEMOVE && message != WM_NCMOUSEMOVE)
        return;
    POINT screen{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    if (message == WM_MOUSEMOVE)
        ClientToScreen(target, &screen);
    pointerMoved(target, screen);
}

void ToolTip::pointerMoved(HWND source, POINT screen) {
    const bool moved = screen.x != lastPointer_.x || screen.y != lastPointer_.y;
    // A message at the same place shows nothing that was put away, but the tool goes on waiting for rest.
    if (tracked_ || (!moved && !waiting_))
        return;
    lastPointer_ = screen;
    const Index tool = toolAt(source, screen);
    if (shown_ && tool == current_)
        return;
    const bool wasShown = shown_;
    if (shown_)
        hide();
    if (!alive())
        return;
    current_ = tool;
    stopWaiting();
    waiting_ = tool && active_;
    if (waiting_)
        SetTimer(window(), showTimer, static_cast<UINT>(delay(wasShown ? TTDT_RESHOW : TTDT_INITIAL)), nullptr);
}

void ToolTip::stopWaiting() {
    KillTimer(window(), showTimer);
    waiting_ = false;
}

/// No tool, nothing shown, until the pointer moves onto one again.
void ToolTip::rest() {
    stopWaiting();
    if (shown_)
        hide();
    current_.reset();
    tracked_ = false;
}

ToolTip::Index ToolTip::toolUnderPointer() const {
    POINT pointer{};
    GetCursorPos(&pointer);
    return toolAt(WindowFromPoint(pointer), pointer);
}

void ToolTip::onTimer(UINT_PTR id) {
    switch (id) {
    case showTimer:
        stopWaiting();
        if (current_ && *current_ < tools_.size() && toolUnderPointer() == current_ && ownerIsActive(tools_[*current_]))
            show(*current_);
        break;
    case popTimer:
        hide(); // the tool stays the current one: it shows again after the pointer has left it
        break;
    case leaveTimer:
        if (!tracked_ && toolUnderPointer() != current_)
            rest();
        break;
    default:
        break;
    }
}

bool ToolTip::ownerIsActive(const Tool& tool) const {
    if (hasStyle(TTS_ALWAYSTIP))
        return true;
    const HWND activeWindow = GetActiveWindow();
    return activeWindow != nullptr && GetAncestor(tool.window, GA_ROOT) == activeWindow;
}

// ---- Showing -------------------------------------------------------------------------------------------------------

LRESULT ToolTip::tell(const Tool& tool, UINT code) const {
    NMHDR header{window(), tool.id, code};
    return SendMessageA(tool.window, WM_NOTIFY, tool.id, reinterpret_cast<LPARAM>(&header));
}

SIZE ToolTip::bubbleSize(const std::string& text) const {
    const HDC dc = GetDC(window());
    RECT rect{0, 0, maxWidth_ > 0 ? maxWidth_ : 0x7FFF, 0};
    {
        const SelectedObject selected(dc, font());
        const UINT wrap = maxWidth_ >= 0 ? DT_WORDBREAK : DT_SINGLELINE;
        const UINT prefix = hasStyle(TTS_NOPREFIX) ? DT_NOPREFIX : 0;
        DrawTextA(dc, text.c_str(), -1, &rect, DT_CALCRECT | DT_EXTERNALLEADING | wrap | prefix);
    }
    ReleaseDC(window(), dc);
    const int border = GetSystemMetrics(SM_CXBORDER);
    return {rect.right - rect.left + 2 * (textMargin + border) + margin_.left + margin_.right,
            rect.bottom - rect.top + 2 * (textMargin + border) + margin_.top + margin_.bottom};
}

POINT ToolTip::placeFor(const Tool& tool, SIZE size) const {
    const SIZE screen{GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    POINT place{};
    GetCursorPos(&place);
    const POINT pointer = place;
    place.y += pointerHeight;
    if (tracked_) {
        place = trackPoint_;
        if ((tool.flags & TTF_ABSOLUTE) != 0)
            return place;
    } else if ((tool.flags & TTF_CENTERTIP) != 0) {
        RECT rect = tool.rect;
        if ((tool.flags & TTF_IDISHWND) != 0)
            GetWindowRect(tool.source(), &rect);
        else
            MapWindowPoints(tool.window, nullptr, reinterpret_cast<POINT*>(&rect), 2);
        place = {(rect.left + rect.right - size.cx) / 2, rect.bottom};
    }
    place.x = std::max(0, std::min(place.x, screen.cx - size.cx));
    // At the screen's foot it stands above the pointer: covering it would make it look gone from the tool.
    if (place.y + size.cy > screen.cy)
        place.y = std::max(0, pointer.y - size.cy - textMargin);
    return place;
}

void ToolTip::show(std::size_t index) {
    const Tool tool = tools_[index];
    std::string text = textOf(index);
    if (!alive() || text.empty())
        return;
    shownText_ = std::move(text);
    shown_ = true;
    const SIZE size = bubbleSize(shownText_);
    const POINT place = placeFor(tool, size);
    SetWindowPos(window(), HWND_TOPMOST, place.x, place.y, size.cx, size.cy, SWP_NOACTIVATE);
    const LRESULT placed = alive() ? tell(tool, TTN_SHOW) : 0;
    if (!alive() || !shown_)
        return;
    if (placed == 0)
        SetWindowPos(window(), HWND_TOPMOST, place.x, place.y, size.cx, size.cy, SWP_NOACTIVATE);
    SetWindowPos(window(), HWND_TOPMOST, 0, 0, 0, 0, SWP_NOACTIVATE | SWP_NOSIZE | SWP_NOMOVE | SWP_SHOWWINDOW);
    invalidate();
    UpdateWindow(window());
    if (tracked_ || !alive())
        return;
    SetTimer(window(), popTimer, static_cast<UINT>(delay(TTDT_AUTOPOP)), nullptr);
    SetTimer(window(), leaveTimer, leaveCheck, nullptr);
}

void ToolTip::hide() {
    KillTimer(window(), popTimer);
    if (!shown_)
        return;
    shown_ = false;
    if (current_ && *current_ < tools_.size())
        tell(Tool(tools_[*current_]), TTN_POP);
    if (!alive())
        return;
    KillTimer(window(), leaveTimer);
    SetWindowPos(window(), nullptr, 0, 0, 0, 0,
                 SWP_NOZORDER | SWP_NOSIZE | SWP_NOMOVE | SWP_HIDEWINDOW | SWP_NOACTIVATE);
}

void ToolTip::trackActivate(bool on, const TOOLINFO* info) {
    const Index index = find(info);
    if (!on) {
        if (tracked_)
            rest();
        return;
    }
    if (!index)
        return;
    rest();
    if (!alive())
        return;
    current_ = index;
    tracked_ = true;
    show(*index);
}

void ToolTip::textChanged(std::size_t index) {
    if (shown_ && current_ == index)
        show(index);
}

// ---- Delays --------------------------------------------------------------------------------------------------------

int ToolTip::delay(WPARAM which) const {
    const auto usual = static_cast<int>(GetDoubleClickTime());
    switch (which) {
    case TTDT_INITIAL:
        return initialDelay_ >= 0 ? initialDelay_ : usual;
    case TTDT_RESHOW:
        return reshowDelay_ >= 0 ? reshowDelay_ : usual / 5;
    case TTDT_AUTOPOP:
        return autoPopDelay_ >= 0 ? autoPopDelay_ : usual * 10;
    default:
        return -1;
    }
}

void ToolTip::setDelay(WPARAM which, int milliseconds) {
    switch (which) {
    case TTDT_AUTOMATIC:
        initialDelay_ = milliseconds > 0 ? milliseconds : -1;
        reshowDelay_ = milliseconds > 0 ? milliseconds / 5 : -1;
        autoPopDelay_ = milliseconds > 0 ? milliseconds * 10 : -1;
        break;
    case TTDT_INITIAL:
        initialDelay_ = milliseconds;
        break;
    case TTDT_RESHOW:
        reshowDelay_ = milliseconds;
        break;
    case TTDT_AUTOPOP:
        autoPopDelay_ = milliseconds;
        break;
    default:
        break;
    }
}

// ---- Painting ------------------------------------------------------------------------------------------------------

void ToolTip::paint(HDC given) const {
    const PaintSession session(window(), given);
    const HDC dc = session.dc();
    RECT rect = clientRect();
    const HBRUSH brush = CreateSolidBrush(background_.value_or(GetSysColor(COLOR_INFOBK)));
    FillRect(dc, &rect, brush);
    DeleteObject(brush);
    InflateRect(&rect, -textMargin, -textMargin);
    rect.left += margin_.left;
    rect.top += margin_.top;
    rect.right -= margin_.right;
    rect.bottom -= margin_.bottom;
    const SavedContext saved(dc);
    SelectObject(dc, font());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, textColor_.value_or(GetSysColor(COLOR_INFOTEXT)));
    const UINT wrap = maxWidth_ >= 0 ? DT_WORDBREAK : DT_SINGLELINE;
    DrawTextA(dc, shownText_.c_str(), -1, &rect,
              DT_EXTERNALLEADING | wrap | (hasStyle(TTS_NOPREFIX) ? DT_NOPREFIX : 0));
}

// ---- Messages ------------------------------------------------------------------------------------------------------

/// A tip is a popup with a thin border, whatever its creator asked for.
void ToolTip::onCreate() {
    const DWORD kept = style() & (TTS_ALWAYSTIP | TTS_NOPREFIX);
    SetWindowLongA(window(), GWL_STYLE, static_cast<LONG>(kept | WS_POPUP | WS_BORDER | WS_CLIPSIBLINGS));
    SetWindowLongA(window(), GWL_EXSTYLE, static_cast<LONG>(WS_EX_TOOLWINDOW | WS_EX_TOPMOST));
}

bool ToolTip::handleStateMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    switch (message) {
    case TTM_ACTIVATE:
        active_ = wParam != 0;
        if (!active_)
            rest();
        return true;
    case TTM_POP:
        rest();
        return true;
    case TTM_UPDATE:
        invalidate();
        return true;
    case TTM_RELAYEVENT:
        if (const auto* relayed = reinterpret_cast<const MSG*>(lParam); relayed != nullptr)
            relay(relayed->hwnd, relayed->message, relayed->lParam);
        return true;
    case TTM_SETDELAYTIME:
        setDelay(wParam, static_cast<SHORT>(LOWORD(static_cast<DWORD_PTR>(lParam))));
        return true;
    case TTM_GETDELAYTIME:
        result = delay(wParam);
        return true;
    case TTM_TRACKACTIVATE:
        trackActivate(wParam != 0, reinterpret_cast<const TOOLINFO*>(lParam));
        return true;
    case TTM_TRACKPOSITION:
        trackPoint_ = {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        if (tracked_ && current_)
            show(*current_);
        return true;
    case TTM_SETTIPBKCOLOR:
        background_ = static_cast<COLORREF>(wParam);
        invalidate();
        return true;
    case TTM_GETTIPBKCOLOR:
        result = static_cast<LRESULT>(background_.value_or(GetSysColor(COLOR_INFOBK)));
        return true;
    case TTM_SETTIPTEXTCOLOR:
        textColor_ = static_cast<COLORREF>(wParam);
        invalidate();
        return true;
    case TTM_GETTIPTEXTCOLOR:
        result = static_cast<LRESULT>(textColor_.value_or(GetSysColor(COLOR_INFOTEXT)));
        return true;
    case TTM_SETMAXTIPWIDTH:
        result = std::exchange(maxWidth_, static_cast<int>(lParam));
        return true;
    case TTM_GETMAXTIPWIDTH:
        result = maxWidth_;
        return true;
    case TTM_SETMARGIN:
        if (const auto* margin = reinterpret_cast<const RECT*>(lParam); margin != nullptr)
            margin_ = *margin;
        return true;
    case TTM_GETMARGIN:
        if (auto* margin = reinterpret_cast<RECT*>(lParam); margin != nullptr)
            *margin = margin_;
        return true;
    case TTM_WINDOWFROMPOINT:
        if (const auto* point = reinterpret_cast<const POINT*>(lParam); point != nullptr)
            result = reinterpret_cast<LRESULT>(WindowFromPoint(*point));
        return true;
    case TTM_GETBUBBLESIZE:
        if (const Index index = find(reinterpret_cast<const TOOLINFO*>(lParam))) {
            const SIZE size = bubbleSize(textOf(*index));
            result = MAKELRESULT(size.cx, size.cy);
        }
        return true;
    default:
        return false;
    }
}

LRESULT ToolTip::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (handleToolMessage(message, wParam, lParam, result) || handleStateMessage(message, wParam, lParam, result))
        return result;
    switch (message) {
    case WM_CREATE:
        onCreate();
        return 0;
    case WM_TIMER:
        onTimer(wParam);
        return 0;
    case WM_PAINT:
    case WM_PRINTCLIENT:
        paint(reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_SETFONT:
        font_ = reinterpret_cast<HFONT>(wParam);
        if (LOWORD(static_cast<DWORD_PTR>(lParam)) != 0)
            invalidate();
        return 0;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(font_);
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_NCHITTEST:
        if (current_ && *current_ < tools_.size() && (tools_[*current_].flags & TTF_TRANSPARENT) != 0)
            return HTTRANSPARENT;
        break;
    default:
        if (isButtonMessage(message)) {
            rest();
            return 0;
        }
        break;
    }
    return defaultHandling(message, wParam, lParam);
}

void registerToolTip() { registerControl<ToolTip>({.name = TOOLTIPS_CLASS, .style = CS_DBLCLKS | CS_SAVEBITS}); }

} // namespace vndk::win32
