// What a rich edit shows: layout, scrolling, caret, painting.
#include "controls/paint_session.h"
#include "controls/rich_edit.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/input.h"
#include "win32/scrollbar.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr int leftMargin = 1; // pixels between the client area's edge and the text
constexpr int caretWidth = 1;

} // namespace

int RichEdit::wrapWidth() const {
    if (!multiLine() || hasStyle(ES_AUTOHSCROLL) || hasStyle(WS_HSCROLL))
        return 0;
    return std::max(static_cast<int>(clientRect().right) - 2 * leftMargin, 1);
}

void RichEdit::relayout() {
    layout_.build(document_, wrapWidth());
    // The bar that appears takes from the width, so that lines break once more.
    const int before = wrapWidth();
    updateScrollBars();
    if (alive() && wrapWidth() != before) {
        layout_.build(document_, wrapWidth());
        updateScrollBars();
    }
    if (!alive())
        return;
    scrollTo(scroll_.x, scroll_.y);
    placeCaret();
    if (redraw_ && alive())
        invalidate(nullptr, false);
}

void RichEdit::updateScrollBars() {
    const RECT client = clientRect();
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    if (hasStyle(WS_VSCROLL) || layout_.height() > client.bottom) {
        info.nMax = std::max(layout_.height() - 1, 0);
        info.nPage = static_cast<UINT>(std::max<LONG>(client.bottom, 0));
        info.nPos = scroll_.y;
        if ((style() & WS_VSCROLL) != 0 || multiLine())
            SetScrollInfo(window(), SB_VERT, &info, TRUE);
    }
    if (alive() && hasStyle(WS_HSCROLL)) {
        info.nMax = std::max(layout_.widest() + leftMargin, 0);
        info.nPage = static_cast<UINT>(std::max<LONG>(client.right, 0));
        info.nPos = scroll_.x;
        SetScrollInfo(window(), SB_HORZ, &info, TRUE);
    }
}

void RichEdit::scrollTo(int x, int y) {
    const RECT client = clientRect();
    const int lowest = std::max(layout_.height() - static_cast<int>(client.bottom), 0);
    const int rightmost =
        wrapWidth() > 0 ? 0
                        : std::max(layout_.widest() + 2 * leftMargin + caretWidth - static_cast<int>(client.right), 0);
    const POINT wanted{std::clamp(x, 0, rightmost), std::clamp(y, 0, multiLine() ? lowest : 0)};
    if (wanted.x == scroll_.x && wanted.y == scroll_.y)
        return;
    scroll_ = wanted;
    SetScrollPos(window(), SB_VERT, scroll_.y, TRUE);
    if (alive() && hasStyle(WS_HSCROLL))
        SetScrollPos(window(), SB_HORZ, scroll_.x, TRUE);
    if (!alive())
        return;
    placeCaret();
    if (redraw_)
        invalidate(nullptr, false);
    if ((eventMask_ & ENM_SCROLL) != 0)
        notifyCommand(EN_VSCROLL);
}

POINT RichEdit::clientPlace(int position) const {
    const POINT place = layout_.placeOf(document_, position);
    return {place.x + leftMargin - scroll_.x, place.y - scroll_.y};
}

int RichEdit::positionAt(POINT client) const {
    return layout_.positionAt(document_, {client.x - leftMargin + scroll_.x, client.y + scroll_.y});
}

int RichEdit::lineHeightAt(int y) const { return layout_.line(layout_.lineAtHeight(y)).height; }

void RichEdit::showCaret() {
    const RECT client = clientRect();
    const POINT place = clientPlace(caret_);
    const int height = layout_.line(layout_.lineOf(caret_)).height;
    POINT wanted = scroll_;
    if (place.y < 0)
        wanted.y += place.y;
    else if (place.y + height > client.bottom)
        wanted.y += place.y + height - client.bottom;
    if (place.x < leftMargin)
        wanted.x += place.x - leftMargin;
    else if (place.x + caretWidth > client.right)
        wanted.x += place.x + caretWidth - client.right;
    scrollTo(wanted.x, wanted.y);
}

void RichEdit::placeCaret() {
    if (!focused() || readOnly())
        return;
    const POINT place = clientPlace(caret_);
    SetCaretPos(place.x, place.y);
}

void RichEdit::paint(HDC given) {
    const PaintSession session(window(), given);
    const HDC dc = session.dc();
    const COLORREF ground = systemBackground_ ? GetSysColor(enabled() ? COLOR_WINDOW : COLOR_3DFACE) : background_;
    SetBkColor(dc, ground);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &session.area(), nullptr, 0, nullptr);
    const bool shows = (focused() && !hideSelection_) || hasStyle(ES_NOHIDESEL);
    const Range selected = shows ? selection() : Range{};
    RichLayout::Colors colors;
    colors.text = GetSysColor(enabled() ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    colors.selectedText = GetSysColor(COLOR_HIGHLIGHTTEXT);
    colors.selectedBackground = GetSysColor(COLOR_HIGHLIGHT);
    layout_.paint(dc, document_, {leftMargin - scroll_.x, -scroll_.y}, session.area(), selected.begin, selected.end,
                  colors);
}

void RichEdit::scrollLines(int lines) {
    int y = scroll_.y;
    for (; lines > 0; --lines)
        y += lineHeightAt(y);
    for (; lines < 0 && y > 0; ++lines)
        y -= lineHeightAt(y - 1);
    scrollTo(scroll_.x, y);
}

void RichEdit::onScroll(bool vertical, int code) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_ALL;
    GetScrollInfo(window(), vertical ? SB_VERT : SB_HORZ, &info);
    const RECT client = clientRect();
    const int page = static_cast<int>(vertical ? client.bottom : client.right);
    int position = vertical ? scroll_.y : scroll_.x;
    switch (code) {
    case SB_LINEUP:
    case SB_LINEDOWN:
        if (vertical) {
            scrollLines(code == SB_LINEUP ? -1 : 1);
            return;
        }
        position += code == SB_LINEUP ? -8 : 8;
        break;
    case SB_PAGEUP:
        position -= page;
        break;
    case SB_PAGEDOWN:
        position += page;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        position = info.nTrackPos;
        break;
    case SB_TOP:
        position = 0;
        break;
    case SB_BOTTOM:
        position = info.nMax;
        break;
    default:
        return;
    }
    scrollTo(vertical ? scroll_.x : position, vertical ? position : scroll_.y);
}

} // namespace vndk::win32
