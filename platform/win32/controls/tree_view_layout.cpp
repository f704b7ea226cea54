// Geometry of the tree view, hit test and scrolling: by lines down, by pixels across.
#include "controls/tree_view.h"

#include "win32/draw.h"
#include "win32/metrics.h"
#include "win32/paint.h"
#include "win32/scrollbar.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace vndk::win32 {

namespace {

constexpr int imageGap = 3;    // from the picture to the label
constexpr int labelMargin = 2; // between a label's sides and its text
constexpr int lineAcross = 8;

SIZE sizeOf(HIMAGELIST images) {
    int width = 0;
    int height = 0;
    if (images != nullptr)
        ImageList_GetIconSize(images, &width, &height);
    return {width, height};
}

} // namespace

// ---- Parts of an item ----------------------------------------------------------------------------------------------

SIZE TreeView::imageSize() const { return sizeOf(images_); }
SIZE TreeView::stateSize() const { return sizeOf(stateImages_); }

bool TreeView::hasRootCell() const {
    return hasStyle(TVS_LINESATROOT) && (style() & (TVS_HASLINES | TVS_HASBUTTONS)) != 0;
}

/// Without scrolling.
int TreeView::contentLeft(const TreeItem& item) const {
    constexpr int farthest = 1 << 24;
    const std::int64_t left = std::int64_t{item.level + (hasRootCell() ? 1 : 0)} * indent_;
    return static_cast<int>(std::min<std::int64_t>(left, farthest));
}

int TreeView::visibleLines() const { return std::max<int>(1, clientRect().bottom / lineHeight_); }

RECT TreeView::rowRect(const TreeItem& item) const {
    const int top = (TreeItems::lineOf(&item) - top_) * lineHeight_;
    return {0, top, clientRect().right, top + item.rowHook.weight * lineHeight_};
}

TreeView::Parts TreeView::partsOf(TreeItem& item) {
    Parts parts;
    parts.row = rowRect(item);
    const int left = contentLeft(item) - left_;
    parts.button = left - indent_;
    parts.state = left;
    parts.icon = left + (stateImages_ != nullptr && item.is(TVIS_STATEIMAGEMASK) ? stateSize().cx : 0);
    parts.label = parts.icon + (images_ != nullptr ? imageSize().cx + imageGap : 0);
    parts.labelEnd = parts.label + item.textWidth + 2 * labelMargin;
    return parts;
}

void TreeView::updateExtent(TreeItem& item) {
    const int state = stateImages_ != nullptr && item.is(TVIS_STATEIMAGEMASK) ? stateSize().cx : 0;
    const int image = images_ != nullptr ? static_cast<int>(imageSize().cx) + imageGap : 0;
    items_.setExtent(&item, contentLeft(item) + state + image + item.textWidth + 2 * labelMargin);
}

LRESULT TreeView::onGetItemRect(WPARAM textOnly, RECT* rect) {
    if (rect == nullptr)
        return FALSE;
    HTREEITEM handle = nullptr; // stands where the rectangle will be
    static_assert(sizeof(handle) <= sizeof(RECT));
    std::memcpy(&handle, rect, sizeof(handle));
    TreeItem* item = items_.find(handle);
    if (item == nullptr || !TreeItems::isRow(item))
        return FALSE;
    if (textOnly != 0 && item->textCallback) {
        const int width = measureFor(*item).width(textOf(handle));
        item = alive() ? items_.find(handle) : nullptr;
        if (item == nullptr || !TreeItems::isRow(item))
            return FALSE;
        item->textWidth = width;
    }
    const Parts parts = partsOf(*item);
    *rect = parts.row;
    if (textOnly != 0) {
        rect->left = parts.label;
        rect->right = parts.labelEnd;
    }
    return TRUE;
}

// ---- Hit test ------------------------------------------------------------------------------------------------------

TreeItem* TreeView::hitTest(POINT point, UINT& flags) {
    const RECT client = clientRect();
    flags = 0;
    if (point.x < 0)
        flags |= TVHT_TOLEFT;
    else if (point.x >= client.right)
        flags |= TVHT_TORIGHT;
    if (point.y < 0)
        flags |= TVHT_ABOVE;
    else if (point.y >= client.bottom)
        flags |= TVHT_BELOW;
    if (flags != 0)
        return nullptr;
    TreeItem* item = items_.rowAtLine(top_ + point.y / lineHeight_);
    if (item == nullptr) {
        flags = TVHT_NOWHERE;
        return nullptr;
    }
    const Parts parts = partsOf(*item);
    const bool buttonCell = hasStyle(TVS_HASBUTTONS) && (item->level > 0 || hasRootCell());
    if (point.x < parts.button)
        flags = TVHT_ONITEMINDENT;
    else if (point.x < parts.state)
        flags = buttonCell && opens(item->handle) ? TVHT_ONITEMBUTTON : TVHT_ONITEMINDENT;
    else if (point.x < parts.icon)
        flags = TVHT_ONITEMSTATEICON;
    else if (point.x < parts.label)
        flags = TVHT_ONITEMICON;
    else if (point.x < parts.labelEnd)
        flags = TVHT_ONITEMLABEL;
    else
        flags = TVHT_ONITEMRIGHT;
    return alive() ? items_.rowAtLine(top_ + point.y / lineHeight_) : nullptr;
}

LRESULT TreeView::onHitTest(TVHITTESTINFO* info) {
    if (info == nullptr)
        return 0;
    UINT flags = 0;
    const TreeItem* item = hitTest(info->pt, flags);
    info->flags = flags;
    info->hItem = item != nullptr ? item->handle : nullptr;
    return reinterpret_cast<LRESULT>(info->hItem);
}

// ---- Scroll bars ---------------------------------------------------------------------------------------------------

int TreeView::clampedTop(int line) const {
    return std::clamp(line, 0, std::max(0, items_.lineCount() - visibleLines()));
}

int TreeView::clampedLeft(int x) const {
    if ((style() & (TVS_NOHSCROLL | TVS_NOSCROLL)) != 0)
        return 0;
    return std::clamp(x, 0, std::max<int>(0, items_.widest() - clientRect().right));
}

void TreeView::updateScrollBars() {
    if (!redraw_ || updatingBars_ || !alive())
        return;
    updatingBars_ = true;
    const SIZE bar{GetSystemMetrics(SM_CXVSCROLL), GetSystemMetrics(SM_CYHSCROLL)};
    SIZE space{clientRect().right, clientRect().bottom};
    space.cx += hasStyle(WS_VSCROLL) ? bar.cx : 0;
    space.cy += hasStyle(WS_HSCROLL) ? bar.cy : 0;
    const bool canScroll = !hasStyle(TVS_NOSCROLL);
    const bool canScrollAcross = canScroll && !hasStyle(TVS_NOHSCROLL);
    const std::int64_t height = std::int64_t{items_.lineCount()} * lineHeight_;
    bool down = canScroll && height > space.cy;
    const bool across = canScrollAcross && items_.widest() > space.cx - (down ? bar.cx : 0);
    down = canScroll && height > space.cy - (across ? bar.cy : 0);
    if (down != hasStyle(WS_VSCROLL))
        ShowScrollBar(window(), SB_VERT, down ? TRUE : FALSE);
    if (alive() && across != hasStyle(WS_HSCROLL))
        ShowScrollBar(window(), SB_HORZ, across ? TRUE : FALSE);
    if (alive()) {
        if (const int top = clampedTop(top_), left = clampedLeft(left_); top != top_ || left != left_) {
            top_ = top;
            left_ = left;
            invalidate();
        }
        setBar(SB_HORZ, across ? items_.widest() - 1 : -1, clientRect().right, left_);
        setBar(SB_VERT, down ? items_.lineCount() - 1 : -1, visibleLines(), top_);
    }
    updatingBars_ = false;
}

/// `maximum` -1: the bar isn't shown.
void TreeView::setBar(int bar, int maximum, int page, int position) {
    if (!alive() || (barMaximum_[bar] == maximum && barPage_[bar] == page && barPosition_[bar] == position))
        return;
    // While items are being added the bar is painted once, with the next WM_PAINT.
    const bool now = barPosition_[bar] != position || barMaximum_[bar] < 0;
    barMaximum_[bar] = maximum;
    barPage_[bar] = page;
    barPosition_[bar] = position;
    SCROLLINFO info{};
    info.cbSize = sizeof(info);
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS | (maximum >= 0 ? SIF_DISABLENOSCROLL : 0U);
    info.nMax = std::max(maximum, 0);
    info.nPage = static_cast<UINT>(maximum >= 0 ? page : 0);
    info.nPos = position;
    SetScrollInfo(window(), bar, &info, now ? TRUE : FALSE);
    if (!now && !barsStale_) {
        barsStale_ = true;
        RedrawWindow(window(), nullptr, nullptr, RDW_INTERNALPAINT);
    }
}

void TreeView::scrollTo(int line, int x) {
    const int formerTop = top_;
    const int formerLeft = left_;
    if (clampedTop(line) == top_ && clampedLeft(x) == left_)
        return;
    if (labelEdit_.isOpen())
        endLabelEdit(true);
    if (!alive())
        return;
    top_ = clampedTop(line);
    left_ = clampedLeft(x);
    const RECT client = clientRect();
    const std::int64_t dy = std::int64_t{formerTop - top_} * lineHeight_;
    const int dx = formerLeft - left_;
    if (std::abs(dy) >= client.bottom || std::abs(dx) >= client.right)
        invalidate();
    else
        ScrollWindowEx(window(), dx, static_cast<int>(dy), nullptr, nullptr, nullptr, nullptr,
                       SW_INVALIDATE | SW_ERASE);
    updateScrollBars();
}

/// True when something was scrolled.
bool TreeView::scrollIntoView(TreeItem& item, bool across) {
    if (!TreeItems::isRow(&item))
        return false;
    const int line = TreeItems::lineOf(&item);
    const int lines = item.rowHook.weight;
    int top = top_;
    if (line < top)
        top = line;
    else if (line + lines > top + visibleLines())
        top = std::min(line, line + lines - visibleLines());
    int left = left_;
    if (across) {
        const Parts parts = partsOf(item);
        const int width = clientRect().right;
        if (parts.label < 0 || parts.labelEnd - parts.label > width)
            left += parts.label;
        else if (parts.labelEnd > width)
            left += parts.labelEnd - width;
    }
    const int formerTop = top_;
    const int formerLeft = left_;
    scrollTo(top, left);
    return alive() && (top_ != formerTop || left_ != formerLeft);
}

void TreeView::onScrollBar(int bar, int code) {
    const bool down = bar == SB_VERT;
    int position = down ? top_ : left_;
    const int line = down ? 1 : lineAcross;
    const int page = std::max<int>(line, down ? visibleLines() : clientRect().right);
    constexpr int end = 0x3FFFFFFF;
    switch (code) {
    case SB_LINEUP:
        position -= line;
        break;
    case SB_LINEDOWN:
        position += line;
        break;
    case SB_PAGEUP:
        position -= page;
        break;
    case SB_PAGEDOWN:
        position += page;
        break;
    case SB_TOP:
        position = 0;
        break;
    case SB_BOTTOM:
        position = end;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION: {
        SCROLLINFO info{};
        info.cbSize = sizeof(info);
        info.fMask = SIF_TRACKPOS;
        info.nTrackPos = position;
        GetScrollInfo(window(), bar, &info);
        position = info.nTrackPos;
        break;
    }
    default:
        return;
    }
    scrollTo(down ? position : top_, down ? left_ : position);
}

void TreeView::onWheel(int delta) {
    UINT lines = 3;
    SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    scrollTo(top_ - delta / WHEEL_DELTA * static_cast<int>(std::min(lines, 100U)), left_);
}

// ---- Invalidation --------------------------------------------------------------------------------------------------

void TreeView::invalidateItem(const TreeItem* item) const {
    if (item == nullptr || !TreeItems::isRow(item))
        return;
    const RECT row = rowRect(*item);
    const RECT client = clientRect();
    if (row.bottom > 0 && row.top < client.bottom)
        invalidate(&row);
}

/// The item and all below it. The root: everything.
void TreeView::invalidateFrom(const TreeItem* item) const {
    RECT area = clientRect();
    if (item != nullptr && TreeItems::isRow(item))
        area.top = std::max(area.top, rowRect(*item).top);
    if (area.top < area.bottom)
        invalidate(&area);
}

} // namespace vndk::win32
