// Geometry: where items lie, what is seen of them, scroll bars and scrolling.
#include "controls/list_box.h"

#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace vndk::win32 {

namespace {

constexpr std::int64_t offsetLimit = 0x3FFFFFFF;

int limited(std::int64_t offset) { return static_cast<int>(std::clamp(offset, -offsetLimit, offsetLimit)); }

bool sameInfo(const SCROLLINFO& a, const SCROLLINFO& b) {
    return a.fMask == b.fMask && a.nMax == b.nMax && a.nPage == b.nPage && a.nPos == b.nPos;
}

SCROLLINFO scrollInfo(int length, int page, int position) {
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = std::max(length - 1, 0);
    info.nPage = static_cast<UINT>(std::max(page, 1));
    info.nPos = position;
    return info;
}

} // namespace

ListBox::Handled ListBox::handleGeometry(UINT message, WPARAM wParam, LPARAM lParam) {
    const int index = static_cast<int>(wParam);
    switch (message) {
    case LB_GETTOPINDEX:
        return top_;
    case LB_SETTOPINDEX:
        if (!valid(index))
            return LB_ERR;
        scrollTo(index);
        return LB_OKAY;
    case LB_GETITEMRECT:
        if (!valid(index) || lParam == 0)
            return LB_ERR;
        *reinterpret_cast<RECT*>(lParam) = itemRect(index);
        return TRUE;
    case LB_ITEMFROMPOINT: {
        const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        const RECT client = clientRect();
        const bool outside = count() == 0 || PtInRect(&client, point) == FALSE;
        return MAKELRESULT(nearestItem(point), outside ? 1 : 0);
    }
    case LB_GETITEMHEIGHT:
        if (variable() && count() > 0)
            return valid(index) ? heightOf(index) : LB_ERR;
        return itemHeight_;
    case LB_SETITEMHEIGHT:
        return setItemHeight(index, LOWORD(static_cast<DWORD_PTR>(lParam)));
    case LB_SETTABSTOPS:
        return setTabStops(index, reinterpret_cast<const int*>(lParam));
    case LB_SETCOLUMNWIDTH:
        return setColumnWidth(index);
    case LB_GETHORIZONTALEXTENT:
        return horizontalExtent_;
    case LB_SETHORIZONTALEXTENT:
        return setHorizontalExtent(index);
    default:
        return std::nullopt;
    }
}

// ---- Places of items -----------------------------------------------------------------------------------------------

int ListBox::heightOf(int index) const { return variable() ? items_[index].height : itemHeight_; }

int ListBox::rowsPerColumn() const { return std::max<int>(clientRect().bottom / itemHeight_, 1); }

int ListBox::wholeColumns() const { return std::max<int>(clientRect().right / columnWidth_, 1); }

/// Top of an item in a list of one column; count() is allowed.
int ListBox::offsetOf(int index) const {
    if (variable())
        return limited(items_.heightBefore(index) - items_.heightBefore(top_));
    return limited(std::int64_t{index - top_} * itemHeight_);
}

RECT ListBox::itemRect(int index) const {
    const RECT client = clientRect();
    if (multiColumn()) {
        const int rows = rowsPerColumn();
        const int left = limited(std::int64_t{index / rows - top_ / rows} * columnWidth_);
        const int upper = index % rows * itemHeight_;
        return {left, upper, left + columnWidth_, upper + itemHeight_};
    }
    const int upper = offsetOf(index);
    const int height = valid(index) ? heightOf(index) : itemHeight_;
    return {-horizontalPosition_, upper, std::max<int>(client.right, horizontalExtent_ - horizontalPosition_),
            upper + height};
}

int ListBox::itemAt(POINT point) const {
    const RECT client = clientRect();
    if (count() == 0 || PtInRect(&client, point) == FALSE)
        return -1;
    const int index = nearestItem(point);
    const RECT rect = itemRect(index);
    return PtInRect(&rect, point) != FALSE ? index : -1;
}

int ListBox::nearestItem(POINT point) const {
    if (count() == 0)
        return -1;
    const RECT client = clientRect();
    const int x = std::clamp<int>(point.x, 0, std::max<int>(client.right - 1, 0));
    const int y = std::clamp<int>(point.y, 0, std::max<int>(client.bottom - 1, 0));
    int index = top_;
    if (multiColumn()) {
        const int rows = rowsPerColumn();
        index += x / columnWidth_ * rows + std::min(y / itemHeight_, rows - 1);
    } else if (variable()) {
        for (int lower = heightOf(index); lower <= y && index + 1 < count(); lower += heightOf(index))
            ++index;
    } else {
        index += y / itemHeight_;
    }
    return std::min(index, count() - 1);
}

int ListBox::lastSeenItem() const {
    const RECT client = clientRect();
    if (multiColumn()) {
        const std::int64_t columns = (client.right + columnWidth_ - 1) / columnWidth_;
        return static_cast<int>(std::min<std::int64_t>(top_ + columns * rowsPerColumn(), count())) - 1;
    }
    return nearestItem({0, client.bottom - 1});
}

int ListBox::lastWholeItem() const {
    if (multiColumn())
        return std::min(top_ + wholeColumns() * rowsPerColumn(), count()) - 1;
    const int last = lastSeenItem();
    return last > top_ && itemRect(last).bottom > clientRect().bottom ? last - 1 : last;
}

int ListBox::itemsPerPage() const {
    if (multiColumn())
        return wholeColumns() * rowsPerColumn();
    if (!variable())
        return std::max<int>(clientRect().bottom / itemHeight_, 1);
    return std::max(lastWholeItem() - top_ + 1, 1);
}

/// The first top item with which `last` is seen whole, if it is no higher than the list.
int ListBox::topThatShows(int last) const {
    if (!variable())
        return std::max(last - std::max<int>(clientRect().bottom / itemHeight_, 1) + 1, 0);
    int index = last;
    for (int room = clientRect().bottom - heightOf(last); index > 0 && heightOf(index - 1) <= room; --index)
        room -= heightOf(index - 1);
    return index;
}

int ListBox::lastTop() const {
    if (count() == 0)
        return 0;
    if (!multiColumn())
        return topThatShows(count() - 1);
    const int rows = rowsPerColumn();
    const int columns = (count() - 1) / rows + 1;
    return std::max(columns - wholeColumns(), 0) * rows;
}

// ---- Changes -------------------------------------------------------------------------------------------------------

void ListBox::sized() {
    RECT rect{};
    GetWindowRect(window(), &rect);
    if (!fitting_ && rect.bottom - rect.top != fittedHeight_)
        askedHeight_ = rect.bottom - rect.top;
    fitWholeItems();
    if (!alive())
        return;
    const RECT client = clientRect();
    if (client.right != seenWidth_ && redraw_)
        invalidate();
    seenWidth_ = client.right;
    if (multiColumn())
        top_ -= top_ % rowsPerColumn();
    updateScrollBars();
}

/// Takes off what is left below the last item that fits.
void ListBox::fitWholeItems() {
    RECT rect{};
    GetWindowRect(window(), &rect);
    fittedHeight_ = rect.bottom - rect.top;
    if (hasBits(LBS_NOINTEGRALHEIGHT | LBS_COMBOBOX) || variable() || fitting_)
        return;
    const int frame = fittedHeight_ - clientRect().bottom;
    const int room = askedHeight_ - frame;
    const int height = frame + (room > itemHeight_ ? room - room % itemHeight_ : room);
    if (room <= 0 || height == fittedHeight_)
        return;
    fitting_ = true;
    SetWindowPos(window(), nullptr, 0, 0, rect.right - rect.left, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    fitting_ = false;
    fittedHeight_ = height;
}

/// Items from this one on lie elsewhere now, or are others.
void ListBox::layoutChanged(int from) {
    const int formerTop = top_;
    updateScrollBars();
    if (!alive() || !redraw_)
        return;
    if (top_ != formerTop)
        invalidate();
    else
        invalidateFrom(from);
}

void ListBox::invalidateFrom(int index) const {
    if (!redraw_)
        return;
    if (multiColumn() || index <= top_) {
        invalidate();
        return;
    }
    if (index > lastSeenItem() + 1)
        return;
    RECT rect = clientRect();
    rect.top = offsetOf(index);
    if (rect.top < rect.bottom)
        invalidate(&rect);
}

LRESULT ListBox::setItemHeight(int index, int height) {
    if (height == 0 || (variable() && !valid(index)))
        return LB_ERR;
    if (!variable()) {
        itemHeight_ = height;
        layoutChanged(0);
        return LB_OKAY;
    }
    if (items_[index].height == height)
        return LB_OKAY;
    items_.setHeight(index, height);
    invalidateFrom(index);
    // Whoever sets one height mostly sets them all. The scroll bars wait until all are known.
    layoutPending_ = true;
    RedrawWindow(window(), nullptr, nullptr, RDW_INTERNALPAINT);
    return LB_OKAY;
}

LRESULT ListBox::setTabStops(int tabCount, const int* stops) {
    if (!hasBits(LBS_USETABSTOPS) || tabCount < 0 || (tabCount > 0 && stops == nullptr))
        return FALSE;
    tabs_.assign(stops, stops + tabCount);
    for (int& stop : tabs_)
        stop = MulDiv(stop, averageWidth_, 4);
    invalidateFrom(0);
    return TRUE;
}

LRESULT ListBox::setColumnWidth(int width) {
    if (!multiColumn() || width <= 0 || width > 0xFFFF)
        return LB_ERR;
    columnWidth_ = width;
    layoutChanged(0);
    return LB_OKAY;
}

LRESULT ListBox::setHorizontalExtent(int extent) {
    if (multiColumn())
        return LB_OKAY;
    horizontalExtent_ = std::clamp(extent, 0, static_cast<int>(offsetLimit));
    scrollSideways(horizontalPosition_);
    if (alive())
        updateScrollBars();
    return LB_OKAY;
}

// ---- Scroll bars ---------------------------------------------------------------------------------------------------

void ListBox::updateScrollBars() {
    layoutPending_ = true;
    settleLayout();
}

/// A bar that comes or goes changes the width, whereupon the owner may change heights, so that the bar has to go or
/// come: one that has come stays, or this would go on for ever.
void ListBox::settleLayout() {
    if (!layoutPending_ || updatingBars_ || !redraw_)
        return;
    updatingBars_ = true;
    DWORD shown = 0;
    for (int round = 0; layoutPending_ && round < 5 && alive(); ++round) {
        layoutPending_ = false;
        applyScrollBars(shown);
    }
    layoutPending_ = false;
    updatingBars_ = false;
}

void ListBox::applyScrollBars(DWORD& shown) {
    if (top_ > lastTop())
        scrollTo(lastTop());
    if (alive() && hasBits(WS_VSCROLL) && !multiColumn())
        applyScrollBar(SB_VERT, wantedVertical(), shown);
    if (alive() && hasBits(WS_HSCROLL))
        applyScrollBar(SB_HORZ, wantedHorizontal(), shown);
}

SCROLLINFO ListBox::wantedVertical() const { return scrollInfo(count(), count() - lastTop(), top_); }

SCROLLINFO ListBox::wantedHorizontal() const {
    if (!multiColumn())
        return scrollInfo(horizontalExtent_, clientRect().right, horizontalPosition_);
    const int rows = rowsPerColumn();
    return scrollInfo((count() + rows - 1) / rows, wholeColumns(), top_ / rows);
}

void ListBox::applyScrollBar(int bar, SCROLLINFO info, DWORD& shown) {
    const DWORD bit = bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL;
    const bool wasShown = hasStyle(bit);
    if (hasBits(LBS_DISABLENOSCROLL) || (shown & bit) != 0)
        info.fMask |= SIF_DISABLENOSCROLL;
    const bool needed = info.nMax >= static_cast<int>(info.nPage) || (info.fMask & SIF_DISABLENOSCROLL) != 0;
    if (!needed && !wasShown)
        return;
    if (!needed && setBars_[bar].fMask == 0) {
        ShowScrollBar(window(), bar, FALSE); // A bar that was never needed keeps its first range.
        return;
    }
    if (sameInfo(info, setBars_[bar]) && needed == wasShown)
        return;
    setBars_[bar] = info;
    SetScrollInfo(window(), bar, &info, FALSE);
    if (!alive())
        return;
    const bool isShown = hasStyle(bit);
    if (isShown && !wasShown)
        shown |= bit;
    if (isShown && wasShown) {
        // Painted with the next WM_PAINT: a list that is being filled would paint its bar for every item.
        if (!std::exchange(barsUnpainted_, true))
            RedrawWindow(window(), nullptr, nullptr, RDW_INTERNALPAINT);
    }
}

// ---- Scrolling -----------------------------------------------------------------------------------------------------

void ListBox::scrollTo(int top) {
    top = std::clamp(top, 0, lastTop());
    if (multiColumn())
        top -= top % rowsPerColumn();
    if (top == top_)
        return;
    const RECT former = itemRect(top);
    const RECT client = clientRect();
    top_ = top;
    const int dx = multiColumn() ? -former.left : 0;
    const int dy = multiColumn() ? 0 : -former.top;
    if (redraw_) {
        if (std::abs(dx) < client.right && std::abs(dy) < client.bottom)
            ScrollWindowEx(window(), dx, dy, nullptr, nullptr, nullptr, nullptr, SW_INVALIDATE | SW_ERASE);
        else
            invalidate();
    }
    const int bar = multiColumn() ? SB_HORZ : SB_VERT;
    if (!hasBits(multiColumn() ? WS_HSCROLL : WS_VSCROLL))
        return;
    setBars_[bar].nPos = multiColumn() ? top_ / rowsPerColumn() : top_;
    if (redraw_)
        SetScrollPos(window(), bar, setBars_[bar].nPos, TRUE);
}

void ListBox::ensureVisible(int index, bool partIsEnough) {
    if (multiColumn()) {
        const int rows = rowsPerColumn();
        const int lastColumn = top_ / rows + wholeColumns() - 1;
        if (index < top_)
            scrollTo(index);
        else if (index / rows > lastColumn)
            scrollTo((index / rows - wholeColumns() + 1) * rows);
        return;
    }
    const RECT rect = itemRect(index);
    const int room = clientRect().bottom;
    if (index < top_)
        scrollTo(index);
    else if (partIsEnough ? rect.top >= room : rect.bottom > room)
        scrollTo(topThatShows(index));
}

ListBox::Handled ListBox::handleScrolling(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
    case WM_VSCROLL:
        settleLayout();
        verticalScroll(wParam);
        return 0;
    case WM_HSCROLL:
        settleLayout();
        horizontalScroll(wParam);
        return 0;
    case WM_MOUSEWHEEL:
        settleLayout();
        return wheel(wParam);
    default:
        return std::nullopt;
    }
}

/// Where an SB_ code leads to.
int ListBox::scrollTarget(int bar, WPARAM wParam, int position, int page, int end) const {
    switch (LOWORD(wParam)) {
    case SB_LINEUP:
        return position - 1;
    case SB_LINEDOWN:
        return position + 1;
    case SB_PAGEUP:
        return position - page;
    case SB_PAGEDOWN:
        return position + page;
    case SB_TOP:
        return 0;
    case SB_BOTTOM:
        return end;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        // The message has 16 bits of it only.
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_TRACKPOS;
        const bool dragged = hasStyle(bar == SB_VERT ? WS_VSCROLL : WS_HSCROLL) && setBars_[bar].nMax > 0x7FFF &&
                             GetScrollInfo(window(), bar, &info) != FALSE;
        return dragged ? info.nTrackPos : HIWORD(wParam);
    }
    default:
        return position;
    }
}

void ListBox::verticalScroll(WPARAM wParam) {
    if (multiColumn())
        return;
    const int page = std::max(itemsPerPage() - 1, 1);
    scrollTo(scrollTarget(SB_VERT, wParam, top_, page, count()));
}

void ListBox::horizontalScroll(WPARAM wParam) {
    if (multiColumn()) {
        const int rows = rowsPerColumn();
        const int column = scrollTarget(SB_HORZ, wParam, top_ / rows, std::max(wholeColumns() - 1, 1), count() / rows);
        scrollTo(limited(std::int64_t{column} * rows));
        return;
    }
    const int line = LOWORD(wParam) <= SB_LINERIGHT ? averageWidth_ - 1 : 0;
    int target = scrollTarget(SB_HORZ, wParam, horizontalPosition_, clientRect().right, horizontalExtent_);
    target += target > horizontalPosition_ ? line : -line;
    scrollSideways(LOWORD(wParam) == SB_ENDSCROLL ? horizontalPosition_ : target);
}

void ListBox::scrollSideways(int position) {
    const RECT client = clientRect();
    position = std::clamp(position, 0, std::max<int>(horizontalExtent_ - client.right, 0));
    const int dx = horizontalPosition_ - position;
    if (dx == 0)
        return;
    horizontalPosition_ = position;
    if (redraw_) {
        if (std::abs(dx) < client.right)
            ScrollWindowEx(window(), dx, 0, nullptr, nullptr, nullptr, nullptr, SW_INVALIDATE | SW_ERASE);
        else
            invalidate();
    }
    setBars_[SB_HORZ].nPos = position;
    if (redraw_ && hasStyle(WS_HSCROLL))
        SetScrollPos(window(), SB_HORZ, position, TRUE);
}

ListBox::Handled ListBox::wheel(WPARAM wParam) {
    // What can't scroll leaves the wheel to its parent.
    if ((LOWORD(wParam) & (MK_CONTROL | MK_SHIFT)) != 0 || lastTop() == 0)
        return std::nullopt;
    UINT lines = 3;
    SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    if (lines == 0)
        return 0;
    wheelRest_ += static_cast<SHORT>(HIWORD(wParam));
    const int perNotch = static_cast<int>(std::min<UINT>(lines, static_cast<UINT>(itemsPerPage())));
    const int steps = wheelRest_ * perNotch / WHEEL_DELTA;
    wheelRest_ -= steps * WHEEL_DELTA / perNotch;
    scrollTo(top_ - steps * (multiColumn() ? rowsPerColumn() : 1));
    return 0;
}

} // namespace vndk::win32
