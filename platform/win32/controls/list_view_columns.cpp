// Columns of the list view, and the header control that shows them.
#include "controls/list_view.h"

#include "win32/draw.h"
#include "win32/header.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int defaultWidth = 10;
constexpr int cellPadding = 6; // from a sub-item's sides to its text
constexpr int largestWidth = 0x7FFF;

int headerFormat(const LVCOLUMNA& given, int index) {
    int format = 0;
    if (index != 0) { // the first column is aligned to the left
        if ((given.fmt & LVCFMT_JUSTIFYMASK) == LVCFMT_RIGHT)
            format = HDF_RIGHT;
        else if ((given.fmt & LVCFMT_JUSTIFYMASK) == LVCFMT_CENTER)
            format = HDF_CENTER;
    }
    if ((given.fmt & LVCFMT_BITMAP_ON_RIGHT) != 0)
        format |= HDF_BITMAP_ON_RIGHT;
    return format;
}

HDITEMA headerItem(const LVCOLUMNA& given, int index, int formerFormat) {
    HDITEMA item{};
    item.mask = HDI_FORMAT;
    item.fmt = formerFormat;
    if ((given.mask & LVCF_FMT) != 0)
        item.fmt = headerFormat(given, index) | (formerFormat & (HDF_STRING | HDF_IMAGE));
    if ((given.mask & LVCF_WIDTH) != 0) {
        item.mask |= HDI_WIDTH;
        item.cxy = std::clamp(given.cx, 0, largestWidth);
    }
    if ((given.mask & LVCF_TEXT) != 0 && given.pszText != nullptr) {
        item.mask |= HDI_TEXT;
        item.fmt |= HDF_STRING;
        item.pszText = given.pszText;
    }
    const bool image = (given.mask & LVCF_IMAGE) != 0 ||
                       ((given.mask & LVCF_FMT) != 0 && (given.fmt & (LVCFMT_IMAGE | LVCFMT_COL_HAS_IMAGES)) != 0);
    if (image) {
        item.mask |= HDI_IMAGE;
        item.fmt |= HDF_IMAGE;
        item.iImage = (given.mask & LVCF_IMAGE) != 0 ? given.iImage : 0;
    }
    if ((given.mask & LVCF_ORDER) != 0) {
        item.mask |= HDI_ORDER;
        item.iOrder = given.iOrder;
    }
    return item;
}

} // namespace

// ---- The header ----------------------------------------------------------------------------------------------------

bool ListView::headerShown() const { return header_ != nullptr && isReport() && !hasStyle(LVS_NOCOLUMNHEADER); }

void ListView::makeHeader() {
    if (header_ != nullptr) {
        placeHeader();
        return;
    }
    DWORD headerStyle = WS_CHILD | HDS_HORZ | HDS_FULLDRAG;
    if (!hasStyle(LVS_NOSORTHEADER))
        headerStyle |= HDS_BUTTONS;
    if (hasExtended(LVS_EX_HEADERDRAGDROP))
        headerStyle |= HDS_DRAGDROP;
    if (hasStyle(LVS_NOCOLUMNHEADER))
        headerStyle |= HDS_HIDDEN;
    header_ = CreateWindowExA(0, WC_HEADER, nullptr, headerStyle, 0, 0, 0, 0, window(), nullptr, nullptr, nullptr);
    if (header_ == nullptr || !alive())
        return;
    SendMessageA(header_, WM_SETFONT, reinterpret_cast<WPARAM>(measure_.font()), FALSE);
    SendMessageA(header_, HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images_[LVSIL_SMALL]));
    placeHeader();
}

void ListView::placeHeader() {
    if (header_ == nullptr)
        return;
    if (!headerShown()) {
        ShowWindow(header_, SW_HIDE);
        return;
    }
    RECT space = clientRect();
    const int width = space.right;
    WINDOWPOS position{};
    HDLAYOUT layout{&space, &position};
    SendMessageA(header_, HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(&layout));
    headerHeight_ = position.cy;
    headerPlace_ = {width, scroll_.x};
    SetWindowPos(header_, nullptr, -scroll_.x, position.y, width + scroll_.x, position.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

void ListView::refreshColumns() {
    for (int index = 0; index < columnCount(); ++index) {
        RECT rect{};
        SendMessageA(header_, HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
        Column& column = columns_[static_cast<std::size_t>(index)];
        column.left = rect.left;
        column.width = rect.right - rect.left;
    }
}

int ListView::columnsWidth() const {
    int width = 0;
    for (const Column& column : columns_)
        width = std::max(width, column.left + column.width);
    return width;
}

LRESULT ListView::forwardToParent(WPARAM wParam, LPARAM lParam) const {
    return SendMessageA(GetParent(window()), WM_NOTIFY, wParam, lParam);
}

LRESULT ListView::onHeaderNotify(NMHDR& header, WPARAM wParam, LPARAM lParam) {
    if (header.code > HDN_FIRST || header.code < HDN_FILTERBTNCLICK)
        return 0; // others stay between the two
    const auto& told = reinterpret_cast<const NMHEADERA&>(header);
    switch (header.code) {
    case HDN_ITEMCHANGING:
        endLabelEdit(true);
        break;
    case HDN_ITEMCHANGED: {
        const bool moved = told.pitem == nullptr || (told.pitem->mask & HDI_ORDER) != 0;
        RECT rect = listArea();
        refreshColumns();
        if (!moved && told.iItem >= 0 && told.iItem < columnCount())
            rect.left = column(told.iItem).left - scroll_.x;
        updateScrollBars();
        invalidate(&rect);
        break;
    }
    case HDN_DIVIDERDBLCLICK:
        onSetColumnWidth(told.iItem, LVSCW_AUTOSIZE);
        break;
    default:
        break;
    }
    const bool clicked = header.code == HDN_ITEMCLICK;
    const int index = told.iItem;
    const LRESULT answer = alive() ? forwardToParent(wParam, lParam) : 0;
    if (clicked && alive()) {
        NMLISTVIEW click{};
        click.iItem = -1;
        click.iSubItem = index;
        notify(LVN_COLUMNCLICK, click);
    }
    return answer;
}

// ---- Messages ------------------------------------------------------------------------------------------------------

LRESULT ListView::onInsertColumn(int index, const LVCOLUMNA* given) {
    if (given == nullptr || index < 0)
        return -1;
    if (header_ == nullptr)
        makeHeader();
    if (!alive() || header_ == nullptr)
        return -1;
    index = std::min(index, columnCount());
    HDITEMA item = headerItem(*given, index, HDF_LEFT);
    if ((item.mask & HDI_WIDTH) == 0) {
        item.mask |= HDI_WIDTH;
        item.cxy = defaultWidth;
    }
    if (SendMessageA(header_, HDM_INSERTITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) < 0)
        return -1;
    Column column;
    column.format = (given->mask & LVCF_FMT) != 0 ? given->fmt : LVCFMT_LEFT;
    if (index == 0)
        column.format &= ~LVCFMT_JUSTIFYMASK;
    column.subItem = (given->mask & LVCF_SUBITEM) != 0 ? given->iSubItem : index;
    column.image = (given->mask & LVCF_IMAGE) != 0 ? given->iImage : 0;
    const bool atEnd = index == columnCount();
    columns_.insert(columns_.begin() + index, column);
    if (!atEnd)
        shiftSubItems(index, 1);
    refreshColumns();
    updateScrollBars();
    placeHeader();
    invalidateList();
    return index;
}

LRESULT ListView::onDeleteColumn(int index) {
    if (index < 0 || index >= columnCount())
        return FALSE;
    endLabelEdit(false);
    if (!alive() || index >= columnCount())
        return FALSE;
    SendMessageA(header_, HDM_DELETEITEM, static_cast<WPARAM>(index), 0);
    columns_.erase(columns_.begin() + index);
    shiftSubItems(index, -1);
    refreshColumns();
    updateScrollBars();
    invalidateList();
    return TRUE;
}

/// Texts move with their columns. Column 0 shows the items' own text whatever comes and goes.
void ListView::shiftSubItems(int from, int by) {
    if (from == 0)
        return;
    const auto place = static_cast<std::size_t>(from) - 1;
    for (ListItem* item = items_.first(); item != nullptr; item = ListItems::next(item)) {
        if (place >= item->subItems.size())
            continue;
        const auto at = item->subItems.begin() + from - 1;
        if (by > 0)
            item->subItems.insert(at, {{}, false, I_IMAGENONE});
        else
            item->subItems.erase(at);
    }
}

LRESULT ListView::onGetColumn(int index, LVCOLUMNA* wanted) {
    if (wanted == nullptr || index < 0 || index >= columnCount())
        return FALSE;
    HDITEMA item{};
    item.mask = HDI_WIDTH | HDI_ORDER | ((wanted->mask & LVCF_TEXT) != 0 ? HDI_TEXT : 0U);
    item.pszText = wanted->pszText;
    item.cchTextMax = wanted->cchTextMax;
    if (SendMessageA(header_, HDM_GETITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)) == FALSE)
        return FALSE;
    if ((wanted->mask & LVCF_WIDTH) != 0)
        wanted->cx = item.cxy;
    if ((wanted->mask & LVCF_ORDER) != 0)
        wanted->iOrder = item.iOrder;
    if ((wanted->mask & LVCF_FMT) != 0)
        wanted->fmt = column(index).format;
    if ((wanted->mask & LVCF_SUBITEM) != 0)
        wanted->iSubItem = column(index).subItem;
    if ((wanted->mask & LVCF_IMAGE) != 0)
        wanted->iImage = column(index).image;
    return TRUE;
}

LRESULT ListView::onSetColumn(int index, const LVCOLUMNA* given) {
    if (given == nullptr || index < 0 || index >= columnCount())
        return FALSE;
    HDITEMA former{};
    former.mask = HDI_FORMAT;
    SendMessageA(header_, HDM_GETITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&former));
    HDITEMA item = headerItem(*given, index, former.fmt);
    Column& changed = columns_[static_cast<std::size_t>(index)];
    if ((given->mask & LVCF_FMT) != 0)
        changed.format = index == 0 ? given->fmt & ~LVCFMT_JUSTIFYMASK : given->fmt;
    if ((given->mask & LVCF_SUBITEM) != 0)
        changed.subItem = given->iSubItem;
    if ((given->mask & LVCF_IMAGE) != 0)
        changed.image = given->iImage;
    const LRESULT done =
        SendMessageA(header_, HDM_SETITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    if (alive())
        invalidateList();
    return done;
}

// ---- Widths --------------------------------------------------------------------------------------------------------

LRESULT ListView::onGetColumnWidth(int index) {
    if (view() == LVS_LIST)
        return listColumnWidth_;
    return isReport() && index >= 0 && index < columnCount() ? column(index).width : 0;
}

LRESULT ListView::onSetColumnWidth(int index, int width) {
    if (view() == LVS_LIST) {
        if (width == LVSCW_AUTOSIZE || width == LVSCW_AUTOSIZE_USEHEADER) {
            listColumnWidthSet_ = false;
            measureRows();
            for (int item = 0; alive() && item < count(); ++item)
                growListColumns(item);
        } else if (width >= 0) {
            listColumnWidth_ = std::max(width, 1);
            listColumnWidthSet_ = true;
        } else {
            return FALSE;
        }
        updateScrollBars();
        invalidateList();
        return TRUE;
    }
    if (header_ == nullptr || index < 0 || index >= columnCount() || width < LVSCW_AUTOSIZE_USEHEADER)
        return FALSE;
    HDITEMA item{};
    item.mask = HDI_WIDTH;
    item.cxy = width >= 0 ? width : bestColumnWidth(index, width == LVSCW_AUTOSIZE_USEHEADER);
    return alive() ? SendMessageA(header_, HDM_SETITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item))
                   : FALSE;
}

int ListView::bestColumnWidth(int index, bool withHeader) {
    int best = 0;
    // Rows that the parent keeps are asked for only as far as they are in view.
    const int first = ownerData_ ? scroll_.y : 0;
    const int end = ownerData_ ? std::min(count(), scroll_.y + rowsPerPage() + 1) : count();
    for (int row = first; alive() && row < end && row < count(); ++row) {
        int width = measure_.width(textOf(row, index)) + 2 * cellPadding;
        if (alive() && index == 0)
            width += smallSize().cx * (1 + indentOf(row)) + stateSize().cx;
        else if (hasExtended(LVS_EX_SUBITEMIMAGES))
            width += smallSize().cx;
        best = std::max(best, width);
    }
    if (!alive() || !withHeader)
        return best;
    char text[MAX_PATH] = {};
    HDITEMA item{};
    item.mask = HDI_TEXT | HDI_FORMAT | HDI_ORDER;
    item.pszText = text;
    item.cchTextMax = MAX_PATH;
    SendMessageA(header_, HDM_GETITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
    best = std::max(best, measure_.width(text) + 2 * cellPadding +
                              ((item.fmt & HDF_IMAGE) != 0 ? static_cast<int>(smallSize().cx) + cellPadding : 0));
    if (item.iOrder == columnCount() - 1) // the last one takes what is left
        best = std::max<int>(best, clientRect().right - (columnsWidth() - column(index).width));
    return best;
}

} // namespace vndk::win32
