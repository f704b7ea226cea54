// Where a tab control's items stand.
#include "controls/tab_control.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/imagelist.h"
#include "win32/metrics.h"

#include <algorithm>

namespace vndk::win32 {
namespace {

constexpr int selectedRise = 2; // a selected tab is larger by this at three sides
constexpr int bodyBorder = 2;
constexpr int bodyPadding = 2;
constexpr int buttonGap = 3;
constexpr int imageGap = 4; // between image and text

} // namespace

int TabControl::itemHeight() const {
    if (fixedHeight_)
        return fixedSize_.cy;
    const HDC dc = GetDC(window());
    TEXTMETRIC metrics{};
    {
        const SelectedObject selected(dc, font_ != nullptr ? font_ : GetStockObject(SYSTEM_FONT));
        GetTextMetricsA(dc, &metrics);
    }
    ReleaseDC(window(), dc);
    int content = metrics.tmHeight;
    int width = 0;
    int height = 0;
    if (images_ != nullptr && ImageList_GetIconSize(images_, &width, &height) != FALSE)
        content = std::max(content, height);
    return content + 2 * padding_.cy;
}

int TabControl::itemWidth(HDC dc, const Item& item) const {
    if (hasStyle(TCS_FIXEDWIDTH))
        return fixedSize_.cx;
    RECT text{};
    if (!item.text.empty())
        DrawTextA(dc, item.text.c_str(), -1, &text, DT_SINGLELINE | DT_CALCRECT);
    int width = text.right;
    int imageWidth = 0;
    int imageHeight = 0;
    if (images_ != nullptr && item.image >= 0 && ImageList_GetIconSize(images_, &imageWidth, &imageHeight) != FALSE)
        width += imageWidth + (item.text.empty() ? 0 : imageGap);
    width += 2 * padding_.cx;
    const int least = minimumWidth_ >= 0 ? minimumWidth_ : 42;
    return std::max(width, least);
}

/// Widths side by side from 0, in the order of the items.
void TabControl::layout() {
    const int height = itemHeight();
    const HDC dc = GetDC(window());
    {
        const SelectedObject selected(dc, font_ != nullptr ? font_ : GetStockObject(SYSTEM_FONT));
        int left = 0;
        for (Item& item : items_) {
            const int width = itemWidth(dc, item);
            item.rect = {left, 0, left + width, height};
            item.row = 0;
            left += width + (buttons() ? buttonGap : 0);
        }
    }
    ReleaseDC(window(), dc);
    rows_ = items_.empty() ? 0 : 1;
    if (hasStyle(TCS_MULTILINE))
        breakIntoRows();
    first_ = std::clamp(first_, 0, std::max(count() - 1, 0));
    if (!scrolls())
        first_ = 0;
}

void TabControl::breakIntoRows() {
    const RECT client = clientRect();
    const int width = std::max(static_cast<int>(client.right) - 2 * (buttons() ? 0 : selectedRise), 1);
    int row = 0;
    int start = 0;
    for (Item& item : items_) {
        if (item.rect.right - start > width && item.rect.left > start) {
            ++row;
            start = item.rect.left;
        }
        item.row = row;
        OffsetRect(&item.rect, -start, 0);
    }
    rows_ = items_.empty() ? 0 : row + 1;
    if (rows_ < 2)
        return;
    if (!hasStyle(TCS_RAGGEDRIGHT) && !hasStyle(TCS_FIXEDWIDTH))
        fillRows();
    if (buttons())
        return;
    // The row of the selected tab stands next to the display area; row 0 is that row.
    const int nearest = valid(selected_) ? items_[static_cast<std::size_t>(selected_)].row : rows_ - 1;
    for (Item& item : items_)
        item.row = (nearest - item.row + rows_) % rows_;
}

/// Stretches the tabs of each row until all rows are equally wide.
void TabControl::fillRows() {
    const RECT client = clientRect();
    const int width = client.right - 2 * (buttons() ? 0 : selectedRise);
    for (int row = 0; row < rows_; ++row) {
        std::vector<Item*> members;
        for (Item& item : items_)
            if (item.row == row)
                members.push_back(&item);
        if (members.empty())
            continue;
        const int spare = width - static_cast<int>(members.back()->rect.right);
        const auto size = static_cast<int>(members.size());
        for (int i = 0; i < size && spare > 0; ++i) {
            Item& item = *members[static_cast<std::size_t>(i)];
            item.rect.left += spare * i / size;
            item.rect.right += spare * (i + 1) / size;
        }
    }
}

int TabControl::stripHeight() const {
    const int height = items_.empty() ? itemHeight() : items_.front().rect.bottom;
    const int rows = std::max(rows_, 1);
    if (buttons())
        return rows * height + (rows - 1) * buttonGap;
    return rows * height + selectedRise;
}

bool TabControl::scrolls() const {
    if (hasStyle(TCS_MULTILINE) || items_.empty())
        return false;
    const RECT client = clientRect();
    return items_.back().rect.right > client.right - (buttons() ? 0 : 2 * selectedRise);
}

int TabControl::scrollShift() const { return scrolls() ? items_[static_cast<std::size_t>(first_)].rect.left : 0; }

RECT TabControl::arrowRect(bool right) const {
    const RECT client = clientRect();
    const int width = GetSystemMetrics(SM_CXHSCROLL);
    const int height = std::min(static_cast<int>(stripHeight()), GetSystemMetrics(SM_CYHSCROLL) + 2);
    const int left = client.right - (right ? 1 : 2) * width;
    const int top = atBottom() ? client.bottom - height : stripHeight() - height;
    return {left, top, left + width, top + height};
}

bool TabControl::onArrow(POINT point) const {
    if (!scrolls())
        return false;
    const RECT left = arrowRect(false);
    const RECT right = arrowRect(true);
    return PtInRect(&left, point) != FALSE || PtInRect(&right, point) != FALSE;
}

RECT TabControl::itemRect(int index) const {
    const Item& item = items_[static_cast<std::size_t>(index)];
    RECT rect = item.rect;
    const int height = rect.bottom;
    const int inset = buttons() ? 0 : selectedRise;
    OffsetRect(&rect, inset - scrollShift(), 0);
    const RECT client = clientRect();
    if (buttons())
        OffsetRect(&rect, 0, item.row * (height + buttonGap));
    else if (atBottom())
        OffsetRect(&rect, 0, client.bottom - stripHeight() + item.row * height);
    else
        OffsetRect(&rect, 0, stripHeight() - (item.row + 1) * height);
    if (buttons() && atBottom())
        OffsetRect(&rect, 0, client.bottom - stripHeight());
    return rect;
}

RECT TabControl::bodyRect() const {
    RECT body = clientRect();
    if (atBottom())
        body.bottom -= stripHeight();
    else
        body.top += stripHeight();
    return body;
}

RECT TabControl::stripRect() const {
    RECT strip = clientRect();
    const RECT body = bodyRect();
    if (atBottom())
        strip.top = body.bottom - bodyBorder;
    else
        strip.bottom = body.top + bodyBorder;
    return strip;
}

void TabControl::adjustRect(bool larger, RECT& rect) const {
    const int border = bodyBorder + bodyPadding;
    const int sign = larger ? -1 : 1;
    const int strip = stripHeight() + (buttons() ? buttonGap : 0);
    rect.left += sign * border;
    rect.right -= sign * border;
    rect.top += sign * (border + (atBottom() ? 0 : strip));
    rect.bottom -= sign * (border + (atBottom() ? strip : 0));
}

int TabControl::hitTest(POINT point, UINT& flags) const {
    flags = TCHT_NOWHERE;
    if (onArrow(point))
        return -1;
    for (int index = scrolls() ? first_ : 0; index < count(); ++index) {
        const RECT rect = itemRect(index);
        if (PtInRect(&rect, point) == FALSE)
            continue;
        flags = TCHT_ONITEM;
        return index;
    }
    return -1;
}

void TabControl::scrollTo(int first) {
    first = std::clamp(first, 0, std::max(count() - 1, 0));
    if (first == first_)
        return;
    first_ = first;
    changed();
}

void TabControl::showSelected() {
    if (!valid(selected_) || !scrolls())
        return;
    if (selected_ < first_) {
        first_ = selected_;
        return;
    }
    const int edge = arrowRect(false).left;
    while (first_ < selected_ && itemRect(selected_).right > edge)
        ++first_;
}

} // namespace vndk::win32
