// Which item of the list view lies under a point.
#include "controls/list_view.h"

#include "win32/draw.h"

#include <algorithm>

namespace vndk::win32 {

int ListView::rowAt(int y) const {
    const int top = listTop();
    return y >= top ? (y - top) / rowHeight_ + scroll_.y : -1;
}

int ListView::columnAt(int x) const {
    for (int index = 0; index < columnCount(); ++index) {
        const int left = column(index).left - scroll_.x;
        if (x >= left && x < left + column(index).width)
            return index;
    }
    return -1;
}

int ListView::hitTest(POINT point, UINT& flags) {
    const RECT client = clientRect();
    flags = 0;
    if (point.x < 0)
        flags |= LVHT_TOLEFT;
    else if (point.x >= client.right)
        flags |= LVHT_TORIGHT;
    if (point.y < 0)
        flags |= LVHT_ABOVE;
    else if (point.y >= client.bottom)
        flags |= LVHT_BELOW;
    if (flags != 0)
        return -1;
    flags = LVHT_NOWHERE;
    if (isReport()) {
        const int row = rowAt(point.y);
        return isItem(row) ? hitItem(row, point, flags) : -1;
    }
    // What was painted last lies on top.
    std::vector<int> items = itemsTouching({point.x, point.y, point.x + 1, point.y + 1});
    focusedLast(items);
    for (auto index = items.rbegin(); alive() && index != items.rend(); ++index)
        if (isItem(*index) && hitItem(*index, point, flags) >= 0)
            return *index;
    return -1;
}

int ListView::hitItem(int index, POINT point, UINT& flags) {
    const ItemRects rects = itemRects(index);
    const RECT label = selectRect(index, rects);
    if (stateSize().cx > 0 && PtInRect(&rects.state, point) != FALSE)
        flags = LVHT_ONITEMSTATEICON;
    else if (PtInRect(&rects.icon, point) != FALSE)
        flags = LVHT_ONITEMICON;
    else if (PtInRect(&label, point) != FALSE)
        flags = LVHT_ONITEMLABEL;
    else
        return -1;
    return index;
}

LRESULT ListView::onHitTest(LVHITTESTINFO* info, bool withSubItem) {
    if (info == nullptr)
        return -1;
    if (!withSubItem || !isReport()) {
        UINT flags = 0;
        const int index = hitTest(info->pt, flags);
        info->flags = flags;
        info->iItem = index;
        if (withSubItem)
            info->iSubItem = index >= 0 ? 0 : -1;
        return index;
    }
    const RECT area = listArea();
    const int row = PtInRect(&area, info->pt) != FALSE ? rowAt(info->pt.y) : -1;
    const int subItem = columnAt(info->pt.x);
    if (!isItem(row) || subItem < 0) {
        info->flags = LVHT_NOWHERE;
        info->iItem = info->iSubItem = -1;
        return -1;
    }
    info->iItem = row;
    info->iSubItem = subItem;
    info->flags = LVHT_ONITEMLABEL;
    if (subItem == 0) {
        const ItemRects rects = itemRects(row);
        if (stateSize().cx > 0 && PtInRect(&rects.state, info->pt) != FALSE)
            info->flags = LVHT_ONITEMSTATEICON;
        else if (PtInRect(&rects.icon, info->pt) != FALSE)
            info->flags = LVHT_ONITEMICON;
    } else if (hasExtended(LVS_EX_SUBITEMIMAGES) && info->pt.x < cellRect(row, subItem).left + smallSize().cx) {
        info->flags = LVHT_ONITEMICON;
    }
    return row;
}

} // namespace vndk::win32
