// Geometry of the list view: where items, their pictures and labels are.
#include "controls/list_view.h"

#include "win32/draw.h"
#include "win32/header.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int reportMargin = 2; // left of a row's picture
constexpr int labelMargin = 2;  // between a label's sides and its text
constexpr int iconMarginX = 8;  // of the picture's rectangle beyond the picture
constexpr int iconMarginY = 2;
constexpr int labelGap = 4; // from an icon down to its label
constexpr int listGap = 8;  // from a label to the next column
constexpr int farthest = 1 << 24;

/// Two lengths in one result, which has 16 bits for each.
LRESULT packed(std::int64_t cx, std::int64_t cy) {
    const auto word = [](std::int64_t length) {
        return static_cast<WORD>(std::clamp<std::int64_t>(length, 0, 0xFFFF));
    };
    return MAKELRESULT(word(cx), word(cy));
}

SIZE sizeOf(HIMAGELIST images) {
    int width = 0;
    int height = 0;
    if (images != nullptr)
        ImageList_GetIconSize(images, &width, &height);
    return {width, height};
}

} // namespace

// ---- Sizes ---------------------------------------------------------------------------------------------------------

SIZE ListView::iconSize() const { return sizeOf(images_[LVSIL_NORMAL]); }
SIZE ListView::smallSize() const { return sizeOf(images_[LVSIL_SMALL]); }
SIZE ListView::stateSize() const { return sizeOf(images_[LVSIL_STATE]); }

SIZE ListView::spacing() const {
    const SIZE icon = iconSize();
    SIZE size = givenSpacing_;
    if (size.cx == 0)
        size.cx = GetSystemMetrics(SM_CXICONSPACING) - GetSystemMetrics(SM_CXICON) + icon.cx;
    if (size.cy == 0)
        size.cy = GetSystemMetrics(SM_CYICONSPACING) - GetSystemMetrics(SM_CYICON) + icon.cy;
    return size;
}

SIZE ListView::cellSize() const { return view() == LVS_ICON ? spacing() : SIZE{listColumnWidth_, rowHeight_}; }

POINT ListView::cellOffset() const {
    if (view() != LVS_ICON)
        return {0, 0};
    return {(spacing().cx - iconSize().cx) / 2, iconMarginY};
}

RECT ListView::listArea() const {
    RECT area = clientRect();
    area.top = std::min<LONG>(listTop(), area.bottom);
    return area;
}

int ListView::rowsPerPage() const {
    const RECT area = listArea();
    return std::max<int>(1, (area.bottom - area.top) / rowHeight_);
}

int ListView::columnsPerPage() const { return std::max<int>(1, clientRect().right / std::max(listColumnWidth_, 1)); }

int ListView::iconsPerLine() const {
    const RECT client = clientRect();
    const SIZE cell = grid_.cell();
    return std::max<int>(1, fillsDownwards() ? client.bottom / cell.cy : client.right / cell.cx);
}

// ---- Icons in the view ---------------------------------------------------------------------------------------------

POINT ListView::slotPosition(int slot) const {
    const SIZE cell = grid_.cell();
    const POINT offset = cellOffset();
    const int perLine = iconsPerLine();
    const int along = slot % perLine;
    const int across = slot / perLine;
    if (fillsDownwards())
        return {offset.x + lengthOf(across, cell.cx), offset.y + along * cell.cy};
    return {offset.x + along * cell.cx, offset.y + lengthOf(across, cell.cy)};
}

POINT ListView::viewPosition(int index) const {
    if (arranged())
        return slotPosition(index);
    const ListItem* item = items_.at(index);
    return item != nullptr ? item->position : POINT{};
}

void ListView::resetGrid() {
    grid_.reset(cellSize(), cellOffset());
    if (!isIconic() || arranged())
        return;
    for (ListItem* item = items_.first(); item != nullptr; item = ListItems::next(item))
        grid_.add(item, grid_.firstFree(iconsPerLine(), fillsDownwards()));
}

void ListView::placeNew(ListItem* item) {
    if (isIconic() && !arranged())
        grid_.add(item, grid_.firstFree(iconsPerLine(), fillsDownwards()));
}

LRESULT ListView::onGetItemPosition(int index, POINT* point) {
    if (point == nullptr || !isItem(index))
        return FALSE;
    if (isIconic()) {
        *point = viewPosition(index);
        return TRUE;
    }
    const ItemRects rects = itemRects(index);
    *point = {rects.icon.left, rects.icon.top};
    return TRUE;
}

LRESULT ListView::onSetItemPosition(int index, POINT point) {
    if (!isItem(index) || !isIconic() || ownerData_)
        return FALSE;
    if (arranged())
        return TRUE; // it is put back into line
    invalidateItem(index);
    ListItem* item = items_.at(index);
    if (item == nullptr)
        return FALSE;
    grid_.remove(item);
    grid_.add(item, {std::clamp(point.x, -farthest, farthest), std::clamp(point.y, -farthest, farthest)});
    updateScrollBars();
    invalidateItem(index);
    return TRUE;
}

LRESULT ListView::onArrange(UINT how) {
    if (!isIconic() || ownerData_)
        return FALSE;
    if (arranged())
        return TRUE;
    std::vector<ListItem*> items = items_.all();
    if (how == LVA_SNAPTOGRID) {
        const SIZE cell = grid_.cell();
        const POINT offset = cellOffset();
        for (ListItem* item : items) {
            const POINT at = item->position;
            const auto snap = [](int value, int by) { return (value + (value >= 0 ? by / 2 : -by / 2)) / by * by; };
            grid_.remove(item);
            grid_.add(item, {snap(at.x - offset.x, cell.cx) + offset.x, snap(at.y - offset.y, cell.cy) + offset.y});
        }
    } else {
        const bool downwards = how == LVA_ALIGNLEFT || (how == LVA_DEFAULT && fillsDownwards());
        const SIZE cell = grid_.cell();
        std::stable_sort(items.begin(), items.end(), [&](const ListItem* a, const ListItem* b) {
            const int lineA = downwards ? a->position.x / cell.cx : a->position.y / cell.cy;
            const int lineB = downwards ? b->position.x / cell.cx : b->position.y / cell.cy;
            if (lineA != lineB)
                return lineA < lineB;
            return downwards ? a->position.y < b->position.y : a->position.x < b->position.x;
        });
        grid_.reset(cellSize(), cellOffset());
        for (ListItem* item : items)
            grid_.add(item, grid_.firstFree(iconsPerLine(), downwards));
    }
    updateScrollBars();
    invalidateList();
    return TRUE;
}

LRESULT ListView::onSetIconSpacing(int cx, int cy) {
    const SIZE former = spacing();
    constexpr int fromSystem = -1;
    const auto take = [](int given, LONG kept) { return given == fromSystem ? LONG{0} : given > 0 ? given : kept; };
    givenSpacing_ = {take(cx, givenSpacing_.cx), take(cy, givenSpacing_.cy)};
    if (view() == LVS_ICON) {
        resetGrid();
        updateScrollBars();
        invalidateList();
    }
    return MAKELRESULT(former.cx, former.cy);
}

// ---- Parts of an item ----------------------------------------------------------------------------------------------

ListView::ItemRects ListView::itemRects(int index) {
    ItemRects rects;
    switch (view()) {
    case LVS_REPORT:
        reportRects(index, rects);
        break;
    case LVS_LIST:
        listRects(index, rects);
        break;
    case LVS_SMALLICON:
        smallRects(index, rects);
        break;
    default:
        iconRects(index, rects);
        break;
    }
    return rects;
}

RECT ListView::rowRect(int index) const {
    const int top = listTop() + lengthOf(std::int64_t{index} - scroll_.y, rowHeight_);
    return {-scroll_.x, top, columnsWidth() - scroll_.x, top + rowHeight_};
}

RECT ListView::cellRect(int index, int subItem) const {
    RECT rect = rowRect(index);
    if (subItem < 0 || subItem >= columnCount())
        return {rect.left, rect.top, rect.left, rect.bottom};
    rect.left += column(subItem).left;
    rect.right = rect.left + column(subItem).width;
    return rect;
}

void ListView::reportRects(int index, ItemRects& rects) {
    rects.bounds = rowRect(index);
    const RECT cell = cellRect(index, 0);
    const auto cut = [&](LONG x) { return std::min(x, std::max(cell.right, cell.left)); };
    rects.state = rects.icon = rects.label = cell;
    rects.state.left = cut(cell.left + reportMargin + smallSize().cx * indentOf(index));
    rects.state.right = rects.icon.left = cut(rects.state.left + stateSize().cx);
    rects.icon.right = rects.label.left = cut(rects.icon.left + smallSize().cx);
}

void ListView::listRects(int index, ItemRects& rects) {
    const int rows = rowsPerPage();
    const int left = lengthOf(index / rows - scroll_.x, listColumnWidth_);
    const int top = index % rows * rowHeight_;
    rects.bounds = {left, top, left + listColumnWidth_, top + rowHeight_};
    rects.state = rects.icon = rects.label = rects.bounds;
    rects.state.right = rects.icon.left = left + stateSize().cx;
    rects.icon.right = rects.label.left = rects.icon.left + smallSize().cx;
    const int text = measure_.width(textOf(index, 0));
    rects.label.right = std::min<LONG>(rects.label.left + text + 2 * labelMargin, rects.bounds.right);
}

void ListView::smallRects(int index, ItemRects& rects) {
    const POINT at = viewPosition(index);
    const int left = at.x - scroll_.x;
    const int top = at.y - scroll_.y;
    rects.state = {left, top, left + stateSize().cx, top + rowHeight_};
    rects.icon = {rects.state.right, top, rects.state.right + smallSize().cx, top + rowHeight_};
    const int text = measure_.width(textOf(index, 0));
    rects.label = {rects.icon.right, top, rects.icon.right + text + 2 * labelMargin, top + rowHeight_};
    rects.bounds = {left, top, rects.label.right, top + rowHeight_};
}

void ListView::iconRects(int index, ItemRects& rects) {
    const SIZE icon = iconSize();
    const POINT view = viewPosition(index);
    const POINT at{view.x - scroll_.x, view.y - scroll_.y};
    rects.icon = {at.x - iconMarginX, at.y - iconMarginY, at.x + icon.cx + iconMarginX, at.y + icon.cy + iconMarginY};
    const SIZE state = stateSize();
    rects.state = {rects.icon.left - state.cx, at.y + icon.cy - state.cy, rects.icon.left, at.y + icon.cy};
    const SIZE label = iconLabelSize(textOf(index, 0), storedState(index, LVIS_FOCUSED) != 0 && focused());
    const int middle = at.x + icon.cx / 2;
    const int left = middle - (label.cx + 1) / 2;
    const int top = at.y + icon.cy + labelGap;
    rects.label = {left, top, left + label.cx, top + label.cy};
    UnionRect(&rects.bounds, &rects.icon, &rects.label);
}

UINT ListView::iconLabelFormat(bool unfolded) const {
    if (hasStyle(LVS_NOLABELWRAP))
        return DT_CENTER | DT_SINGLELINE | DT_NOPREFIX;
    const UINT format = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX | DT_EDITCONTROL;
    return unfolded ? format : format | DT_END_ELLIPSIS;
}

SIZE ListView::iconLabelSize(const std::string& text, bool unfolded) const {
    if (text.empty())
        return {0, 0};
    const int width = std::max<int>(spacing().cx - 2 * labelMargin, 2 * measure_.lineHeight());
    SIZE size = measure_.wrapped(text, width, iconLabelFormat(true));
    if (!hasStyle(LVS_NOLABELWRAP)) {
        size.cx = std::min<LONG>(size.cx, width);
        if (!unfolded) // two lines, unless the label has the focus
            size.cy = std::min<LONG>(size.cy, 2L * measure_.lineHeight());
    }
    size.cx += 2 * labelMargin;
    return size;
}

RECT ListView::selectRect(int index, const ItemRects& rects) {
    if (isReport() && hasExtended(LVS_EX_FULLROWSELECT))
        return rects.bounds;
    RECT rect{};
    if (isReport()) {
        rect = rects.label;
        const int text = measure_.width(textOf(index, 0));
        rect.right = std::max(rect.left, std::min<LONG>(rect.left + text + 2 * labelMargin, rect.right));
        return rect;
    }
    return rects.label;
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT ListView::onGetItemRect(int index, RECT* rect) {
    if (rect == nullptr || !isItem(index))
        return FALSE;
    const int part = rect->left;
    const ItemRects rects = itemRects(index);
    switch (part) {
    case LVIR_BOUNDS:
        *rect = rects.bounds;
        return TRUE;
    case LVIR_ICON:
        *rect = rects.icon;
        return TRUE;
    case LVIR_LABEL:
        *rect = rects.label;
        return TRUE;
    case LVIR_SELECTBOUNDS:
        *rect =
            isReport() && hasExtended(LVS_EX_FULLROWSELECT)
                ? rects.bounds
                : RECT{std::min(rects.icon.left, rects.label.left), std::min(rects.icon.top, rects.label.top),
                       std::max(rects.icon.right, rects.label.right), std::max(rects.icon.bottom, rects.label.bottom)};
        return TRUE;
    default:
        return FALSE;
    }
}

LRESULT ListView::onGetSubItemRect(int index, RECT* rect) {
    if (rect == nullptr || !isReport() || index < -1)
        return FALSE;
    const int part = rect->left;
    const int subItem = rect->top;
    if (index == -1) { // the header's item
        if (subItem < 1 || subItem >= columnCount())
            return FALSE;
        *rect = cellRect(scroll_.y, subItem);
        rect->top = 0;
        rect->bottom = listTop();
        return TRUE;
    }
    if (subItem == 0 && isItem(index))
        return onGetItemRect(index, rect);
    if (subItem < 0 || subItem >= columnCount())
        return FALSE;
    const RECT cell = cellRect(index, subItem);
    const int picture = hasExtended(LVS_EX_SUBITEMIMAGES) && subItem != 0 ? smallSize().cx : 0;
    const LONG split = std::min<LONG>(cell.left + picture, cell.right);
    switch (part) {
    case LVIR_BOUNDS:
        *rect = cell;
        return TRUE;
    case LVIR_ICON:
        *rect = {cell.left, cell.top, split, cell.bottom};
        return TRUE;
    case LVIR_LABEL:
        *rect = {split, cell.top, cell.right, cell.bottom};
        return TRUE;
    default:
        return FALSE;
    }
}

LRESULT ListView::onGetViewRect(RECT* rect) {
    if (rect == nullptr)
        return FALSE;
    *rect = contentBounds();
    if (isIconic())
        OffsetRect(rect, -scroll_.x, -scroll_.y);
    else if (isReport())
        OffsetRect(rect, -scroll_.x, listTop() - lengthOf(scroll_.y, rowHeight_));
    else
        OffsetRect(rect, -lengthOf(scroll_.x, listColumnWidth_), 0);
    return TRUE;
}

LRESULT ListView::onGetOrigin(POINT* point) const {
    if (point == nullptr || !isIconic())
        return FALSE;
    *point = scroll_;
    return TRUE;
}

LRESULT ListView::onApproximateViewRect(int items, int cx, int cy) {
    const RECT client = clientRect();
    const std::int64_t wanted = items < 0 ? count() : items;
    const int width = cx < 0 ? client.right : cx;
    const int height = cy < 0 ? client.bottom : cy;
    const int edge = GetSystemMetrics(SM_CXEDGE);
    if (isReport()) {
        return packed(columnsWidth(), listTop() + wanted * rowHeight_ + edge);
    }
    const SIZE cell = cellSize();
    const bool downwards = view() == LVS_LIST || fillsDownwards();
    const std::int64_t perLine = std::max<LONG>(1, downwards ? height / cell.cy : width / cell.cx);
    const std::int64_t along = std::clamp<std::int64_t>(wanted, 1, perLine);
    const std::int64_t lines = (wanted + perLine - 1) / perLine;
    return downwards ? packed(lines * cell.cx + edge, along * cell.cy + edge)
                     : packed(along * cell.cx + edge, lines * cell.cy + edge);
}

// ---- Which items are where -----------------------------------------------------------------------------------------

std::vector<int> ListView::itemsTouching(const RECT& rect) const {
    std::vector<int> found;
    int first = 0;
    int last = -1;
    if (isReport()) {
        first = rowAt(std::max<int>(rect.top, listTop()));
        last = rowAt(rect.bottom - 1);
    } else if (view() == LVS_LIST) {
        const int rows = rowsPerPage();
        first = (scroll_.x + static_cast<int>(std::max<LONG>(rect.left, 0)) / listColumnWidth_) * rows;
        last = (scroll_.x + static_cast<int>(std::max<LONG>(rect.right - 1, 0)) / listColumnWidth_ + 1) * rows - 1;
    } else if (arranged()) {
        const SIZE cell = grid_.cell();
        const int perLine = iconsPerLine();
        const int from = fillsDownwards() ? (rect.left + scroll_.x) / cell.cx : (rect.top + scroll_.y) / cell.cy;
        const int to = fillsDownwards() ? (rect.right + scroll_.x) / cell.cx : (rect.bottom + scroll_.y) / cell.cy;
        // Labels with the focus hang down into the next lines.
        first = (from - 2) * perLine;
        last = (to + 2) * perLine - 1;
    } else {
        for (const ListItem* item : grid_.within(
                 {rect.left + scroll_.x, rect.top + scroll_.y, rect.right + scroll_.x, rect.bottom + scroll_.y}))
            found.push_back(ListItems::indexOf(item));
        std::sort(found.begin(), found.end());
        return found;
    }
    for (int index = std::max(first, 0); index <= last && index < count(); ++index)
        found.push_back(index);
    return found;
}

// ---- Columns of list and small icon view ---------------------------------------------------------------------------

void ListView::growListColumns(int index) {
    const ListCell* cell = cellAt(index, 0);
    if (cell != nullptr && !cell->textCallback) // else its text is known when it is painted
        growListColumns(cell->text);
}

void ListView::growListColumns(const std::string& text) {
    if ((view() != LVS_LIST && view() != LVS_SMALLICON) || listColumnWidthSet_)
        return;
    const int needed = stateSize().cx + smallSize().cx + measure_.width(text) + 2 * labelMargin + listGap;
    if (needed <= listColumnWidth_)
        return;
    listColumnWidth_ = needed;
    if (view() == LVS_SMALLICON)
        resetGrid();
    invalidateList();
}

} // namespace vndk::win32
