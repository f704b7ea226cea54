// Scrolling of the list view. Report view scrolls by pixels across and by rows down, list view by columns, the icon
// views by pixels.
#include "controls/list_view.h"

#include "win32/draw.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/scrollbar.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

namespace vndk::win32 {

namespace {

constexpr int lineAcross = 8;

int clampedTo(int value, int low, int high) { return std::clamp(value, low, std::max(low, high)); }
int saturated(std::int64_t value) { return static_cast<int>(std::min<std::int64_t>(value, 0x3FFFFFFF)); }

} // namespace

// ---- Content -------------------------------------------------------------------------------------------------------

SIZE ListView::contentSize(SIZE space) const {
    const std::int64_t items = count();
    if (isReport())
        return {columnsWidth(), saturated(items * rowHeight_ + listTop())};
    if (view() == LVS_LIST) {
        const std::int64_t rows = std::max<int>(1, space.cy / rowHeight_);
        return {saturated((items + rows - 1) / rows * listColumnWidth_), rowHeight_};
    }
    if (!arranged()) {
        const RECT bounds = grid_.bounds();
        return {bounds.right - bounds.left, bounds.bottom - bounds.top};
    }
    const SIZE cell = grid_.cell();
    const std::int64_t perLine = std::max<int>(1, fillsDownwards() ? space.cy / cell.cy : space.cx / cell.cx);
    const std::int64_t along = std::min(items, perLine);
    const std::int64_t lines = (items + perLine - 1) / perLine;
    return fillsDownwards() ? SIZE{saturated(lines * cell.cx), saturated(along * cell.cy)}
                            : SIZE{saturated(along * cell.cx), saturated(lines * cell.cy)};
}

RECT ListView::contentBounds() const {
    if (isIconic() && !arranged())
        return grid_.bounds();
    const RECT area = listArea();
    const SIZE size = contentSize({area.right, area.bottom - area.top});
    return {0, 0, size.cx, isReport() ? size.cy - listTop() : size.cy};
}

POINT ListView::clampedScroll(POINT position) const {
    const RECT client = clientRect();
    if (isReport())
        return {clampedTo(position.x, 0, columnsWidth() - client.right),
                clampedTo(position.y, 0, count() - rowsPerPage())};
    if (view() == LVS_LIST) {
        const int columns = (count() + rowsPerPage() - 1) / rowsPerPage();
        return {clampedTo(position.x, 0, columns - columnsPerPage()), 0};
    }
    const RECT bounds = contentBounds();
    return {clampedTo(position.x, bounds.left, bounds.right - client.right),
            clampedTo(position.y, bounds.top, bounds.bottom - client.bottom)};
}

// ---- Scroll bars ---------------------------------------------------------------------------------------------------

bool ListView::fitsInto(SIZE space, bool across) const {
    const SIZE size = contentSize(space);
    return across ? size.cx <= space.cx : size.cy <= space.cy;
}

/// Shows the bars that are needed: one of them may make the other necessary.
void ListView::showBars() {
    const RECT client = clientRect();
    const SIZE bar{GetSystemMetrics(SM_CXVSCROLL), GetSystemMetrics(SM_CYHSCROLL)};
    SIZE space{client.right, client.bottom};
    if (hasStyle(WS_VSCROLL))
        space.cx += bar.cx;
    if (hasStyle(WS_HSCROLL))
        space.cy += bar.cy;
    const bool downNeeded = view() != LVS_LIST && !fitsInto(space, false);
    SIZE left{space.cx - (downNeeded ? bar.cx : 0), space.cy};
    const bool acrossNeeded = !fitsInto(left, true);
    if (acrossNeeded)
        left.cy -= bar.cy;
    const bool down = downNeeded || (acrossNeeded && view() != LVS_LIST && !fitsInto(left, false));
    if (down != hasStyle(WS_VSCROLL))
        ShowScrollBar(window(), SB_VERT, down ? TRUE : FALSE);
    if (alive() && acrossNeeded != hasStyle(WS_HSCROLL))
        ShowScrollBar(window(), SB_HORZ, acrossNeeded ? TRUE : FALSE);
}

void ListView::updateScrollBars() {
    if (!redraw_ || updatingBars_ || !alive())
        return;
    updatingBars_ = true;
    if (!hasStyle(LVS_NOSCROLL))
        showBars();
    updatingBars_ = false;
    if (!alive())
        return;
    if (const POINT kept = clampedScroll(scroll_); kept.x != scroll_.x || kept.y != scroll_.y) {
        scroll_ = kept;
        invalidateList();
    }
    const RECT client = clientRect();
    if (headerShown() && (headerPlace_.cx != client.right || headerPlace_.cy != scroll_.x))
        placeHeader();
    if (hasStyle(LVS_NOSCROLL))
        return;
    const RECT bounds = contentBounds();
    Bar across{bounds.left, bounds.right - 1, client.right, scroll_.x};
    Bar down{bounds.top, bounds.bottom - 1, client.bottom, scroll_.y};
    if (isReport()) {
        down = {0, count() - 1, rowsPerPage(), scroll_.y};
    } else if (view() == LVS_LIST) {
        across = {0, (count() + rowsPerPage() - 1) / rowsPerPage() - 1, columnsPerPage(), scroll_.x};
        down = {};
    }
    updatingBars_ = true;
    setBar(SB_HORZ, across);
    setBar(SB_VERT, down);
    updatingBars_ = false;
}

void ListView::setBar(int which, const Bar& bar) {
    const bool shown = hasStyle(which == SB_HORZ ? WS_HSCROLL : WS_VSCROLL);
    const Bar wanted = shown ? bar : Bar{};
    Bar& set = bars_[which];
    if (!alive() || set == wanted)
        return;
    // While rows are being added the bar is painted once, with the next WM_PAINT.
    const bool now = set.position != wanted.position || set.minimum != wanted.minimum;
    set = wanted;
    // A bar that is shown isn't hidden here, also while its range and page don't agree yet.
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | (shown ? SIF_DISABLENOSCROLL : 0U);
    info.nMin = wanted.minimum;
    info.nMax = wanted.maximum;
    info.nPage = static_cast<UINT>(std::max(wanted.page, 0));
    info.nPos = wanted.position;
    SetScrollInfo(window(), which, &info, now ? TRUE : FALSE);
    if (!now && !barsStale_) {
        barsStale_ = true;
        RedrawWindow(window(), nullptr, nullptr, RDW_INTERNALPAINT);
    }
}

// ---- Moving --------------------------------------------------------------------------------------------------------

void ListView::scrollTo(POINT position) {
    const POINT target = clampedScroll(position);
    const POINT former = scroll_;
    if (target.x == former.x && target.y == former.y)
        return;
    if (labelEdit_.isOpen())
        endLabelEdit(true);
    if (!alive())
        return;
    scroll_ = target;
    const POINT unit = isReport()           ? POINT{1, rowHeight_}
                       : view() == LVS_LIST ? POINT{listColumnWidth_, 1}
                                            : POINT{1, 1};
    const std::int64_t dx = (std::int64_t{former.x} - target.x) * unit.x;
    const std::int64_t dy = (std::int64_t{former.y} - target.y) * unit.y;
    const RECT area = listArea();
    if (std::abs(dx) >= area.right || std::abs(dy) >= area.bottom - area.top)
        invalidateList();
    else
        moveContent(static_cast<int>(dx), static_cast<int>(dy));
    updateScrollBars();
}

void ListView::moveContent(int dx, int dy) {
    if (background_ == CLR_NONE || press_ == Press::band) { // what is below doesn't move along
        invalidateList();
        return;
    }
    if (!redraw_)
        return;
    const RECT area = listArea();
    ScrollWindowEx(window(), dx, dy, &area, &area, nullptr, nullptr, SW_INVALIDATE | SW_ERASE);
}

LRESULT ListView::onScroll(int dx, int dy) {
    if (view() == LVS_LIST) {
        if (dy != 0)
            return FALSE;
        scrollTo({scroll_.x + std::clamp(dx, -count(), count()), 0});
        return TRUE;
    }
    constexpr int farthest = 1 << 28;
    dx = std::clamp(dx, -farthest, farthest);
    dy = std::clamp(dy, -farthest, farthest);
    if (isReport()) // to the nearest row
        dy = (dy + (dy >= 0 ? rowHeight_ / 2 : -rowHeight_ / 2)) / rowHeight_;
    scrollTo({scroll_.x + dx, scroll_.y + dy});
    return TRUE;
}

LRESULT ListView::onEnsureVisible(int index, bool partialIsEnough) {
    if (!isItem(index))
        return FALSE;
    POINT target = scroll_;
    if (isReport()) {
        const RECT area = listArea();
        const int shown = partialIsEnough ? (area.bottom - area.top + rowHeight_ - 1) / rowHeight_ : rowsPerPage();
        if (index < scroll_.y)
            target.y = index;
        else if (index >= scroll_.y + shown)
            target.y = index - rowsPerPage() + 1;
    } else if (view() == LVS_LIST) {
        const int column = index / rowsPerPage();
        if (column < scroll_.x)
            target.x = column;
        else if (column >= scroll_.x + columnsPerPage())
            target.x = column - columnsPerPage() + 1;
    } else {
        const RECT client = clientRect();
        const RECT bounds = itemRects(index).bounds;
        const auto shift = [](LONG low, LONG high, LONG space) {
            if (low < 0 || high - low > space)
                return low;
            return high > space ? high - space : 0;
        };
        if (!alive())
            return FALSE;
        const bool visible =
            bounds.left < client.right && bounds.right > 0 && bounds.top < client.bottom && bounds.bottom > 0;
        if (!visible || !partialIsEnough)
            target = {scroll_.x + shift(bounds.left, bounds.right, client.right),
                      scroll_.y + shift(bounds.top, bounds.bottom, client.bottom)};
    }
    scrollTo(target);
    return TRUE;
}

// ---- By the user ---------------------------------------------------------------------------------------------------

int ListView::pageTrack(int bar, int code, int position, int line, int page) const {
    constexpr int end = 0x3FFFFFFF;
    switch (code) {
    case SB_LINEUP:
        return position - line;
    case SB_LINEDOWN:
        return position + line;
    case SB_PAGEUP:
        return position - std::max(page, line);
    case SB_PAGEDOWN:
        return position + std::max(page, line);
    case SB_TOP:
        return -end;
    case SB_BOTTOM:
        return end;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        SCROLLINFO info{sizeof(SCROLLINFO), SIF_TRACKPOS, 0, 0, 0, 0, position};
        GetScrollInfo(window(), bar, &info);
        return info.nTrackPos;
    }
    default:
        return position;
    }
}

void ListView::onScrollBar(int bar, int code) {
    const RECT client = clientRect();
    POINT target = scroll_;
    if (bar == SB_VERT) {
        const int line = isReport() ? 1 : static_cast<int>(cellSize().cy);
        const int page = isReport() ? rowsPerPage() : static_cast<int>(client.bottom);
        target.y = pageTrack(bar, code, scroll_.y, line, page);
    } else {
        const bool byColumns = view() == LVS_LIST;
        const int line = byColumns ? 1 : isReport() ? lineAcross : static_cast<int>(cellSize().cx);
        target.x = pageTrack(bar, code, scroll_.x, line, byColumns ? columnsPerPage() : static_cast<int>(client.right));
    }
    scrollTo(target);
}

void ListView::onWheel(int delta) {
    const int notches = delta / WHEEL_DELTA;
    UINT lines = 3;
    SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    const int rows = notches * static_cast<int>(std::min(lines, 100U));
    if (view() == LVS_LIST)
        scrollTo({scroll_.x - notches, 0});
    else if (isReport())
        scrollTo({scroll_.x, scroll_.y - rows});
    else if (hasStyle(WS_VSCROLL) || !hasStyle(WS_HSCROLL))
        scrollTo({scroll_.x, scroll_.y - rows * rowHeight_});
    else
        scrollTo({scroll_.x - rows * rowHeight_, scroll_.y});
}

} // namespace vndk::win32
