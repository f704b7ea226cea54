// Painting of the list view, with owner drawing and custom drawing.
#include "controls/list_view.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/scrollbar.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int labelMargin = 2;
constexpr int cellMargin = 6; // of sub-items
constexpr UINT singleLine = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS;
constexpr UINT paintedStates =
    LVIS_FOCUSED | LVIS_SELECTED | LVIS_CUT | LVIS_DROPHILITED | LVIS_OVERLAYMASK | LVIS_STATEIMAGEMASK;

void fill(HDC dc, const RECT& rect, COLORREF color) {
    SetDCBrushColor(dc, color);
    FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

bool touches(const RECT& a, const RECT& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

} // namespace

// ---- Ground --------------------------------------------------------------------------------------------------------

void ListView::invalidate(const RECT* rect, bool erase) const {
    if (redraw_)
        Control::invalidate(rect, erase);
}

LRESULT ListView::onEraseBackground(HDC dc) {
    if (!redraw_)
        return 1;
    if (background_ == CLR_NONE) {
        // The parent paints in its own coordinates.
        POINT origin{0, 0};
        const HWND parent = GetParent(window());
        MapWindowPoints(window(), parent, &origin, 1);
        POINT former{};
        OffsetViewportOrgEx(dc, -origin.x, -origin.y, &former);
        SendMessageA(parent, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc), 0);
        SetViewportOrgEx(dc, former.x, former.y, nullptr);
        return 1;
    }
    RECT area{};
    GetClipBox(dc, &area);
    fill(dc, area, backgroundColor());
    return 1;
}

void ListView::onPaint(HDC given) {
    if (given == nullptr && barsStale_) {
        barsStale_ = false;
        for (const int which : {SB_HORZ, SB_VERT})
            if (hasStyle(which == SB_HORZ ? WS_HSCROLL : WS_VSCROLL))
                SetScrollPos(window(), which, bars_[which].position, TRUE);
    }
    const PaintSession session(window(), given);
    if ((redraw_ || given != nullptr) && session.dc() != nullptr && IsRectEmpty(&session.area()) == FALSE)
        drawAll(session.dc(), session.area());
}

void ListView::drawAll(HDC dc, const RECT& area) {
    const SavedContext saved(dc);
    SelectObject(dc, measure_.font());
    SetBkMode(dc, TRANSPARENT);
    const LRESULT answer = notifyDraw(CDDS_PREPAINT, dc, area, nullptr, 0);
    if (!alive() || (answer & CDRF_SKIPDEFAULT) != 0)
        return;
    RECT list = listArea();
    if (IntersectRect(&list, &list, &area) != FALSE) {
        {
            const SavedContext items(dc);
            IntersectClipRect(dc, list.left, list.top, list.right, list.bottom);
            drawItems(dc, list, answer);
        }
        if (alive() && isReport() && hasExtended(LVS_EX_GRIDLINES))
            drawGridLines(dc, list);
    }
    if (alive() && press_ == Press::band)
        drawBand(dc);
    if (alive() && (answer & CDRF_NOTIFYPOSTPAINT) != 0)
        notifyDraw(CDDS_POSTPAINT, dc, area, nullptr, 0);
}

void ListView::drawItems(HDC dc, const RECT& area, LRESULT answer) {
    std::vector<int> items = itemsTouching(area);
    if (ownerData_ && !items.empty()) {
        NMLVCACHEHINT hint{};
        hint.iFrom = items.front();
        hint.iTo = items.back();
        notify(LVN_ODCACHEHINT, hint);
    }
    focusedLast(items);
    for (const int index : items) {
        if (!alive() || !isItem(index))
            return;
        if (touches(roughBounds(index), area))
            drawItem(dc, index, area, answer);
    }
}

/// The label with the focus is shown whole, over its neighbours.
void ListView::focusedLast(std::vector<int>& items) const {
    if (isIconic())
        std::stable_partition(items.begin(), items.end(), [this](int index) { return index != focus_; });
}

void ListView::drawGridLines(HDC dc, const RECT& area) const {
    const COLORREF color = GetSysColor(COLOR_3DFACE);
    for (const Column& column : columns_) {
        const int x = column.left + column.width - scroll_.x;
        if (x > area.left && x <= area.right)
            fill(dc, {x - 1, area.top, x, area.bottom}, color);
    }
    const int top = listTop();
    const int first = (area.top - top) / rowHeight_;
    for (int y = top + (first + 1) * rowHeight_; y <= area.bottom; y += rowHeight_)
        fill(dc, {area.left, y - 1, area.right, y}, color);
}

void ListView::drawBand(HDC dc) const {
    const RECT band = bandRect();
    DrawFocusRect(dc, &band);
}

// ---- Items ---------------------------------------------------------------------------------------------------------

ListView::ItemLook ListView::lookOf(int index) {
    ItemLook look;
    look.index = index;
    look.state = fullState(index, paintedStates);
    if (!alive() || !isItem(index))
        return look;
    look.rects = itemRects(index);
    look.listFocused = focused();
    const bool selected = (look.state & LVIS_SELECTED) != 0 && (look.listFocused || hasStyle(LVS_SHOWSELALWAYS));
    look.highlighted = selected || (look.state & LVIS_DROPHILITED) != 0;
    look.text = textColor();
    look.background = textBackgroundColor();
    look.drawState = ((look.state & LVIS_SELECTED) != 0 ? CDIS_SELECTED : 0U) |
                     ((look.state & LVIS_FOCUSED) != 0 && look.listFocused ? CDIS_FOCUS : 0U) |
                     (enabled() ? 0U : CDIS_DISABLED) | (index == hot_ ? CDIS_HOT : 0U);
    return look;
}

/// The colours of the selection take the place of the item's own.
void ListView::resolveHighlight(ItemLook& look) const {
    if (!look.highlighted)
        return;
    const bool strong = look.listFocused || (look.state & LVIS_DROPHILITED) != 0;
    look.text = GetSysColor(strong ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT);
    look.background = GetSysColor(strong ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
}

LRESULT ListView::notifyDraw(DWORD stage, HDC dc, const RECT& rect, ItemLook* look, int subItem) {
    NMLVCUSTOMDRAW draw{};
    draw.nmcd.dwDrawStage = stage;
    draw.nmcd.hdc = dc;
    draw.nmcd.rc = rect;
    draw.clrText = look != nullptr ? look->text : textColor();
    draw.clrTextBk = look != nullptr ? look->background : textBackgroundColor();
    draw.iSubItem = subItem;
    if (look != nullptr) {
        draw.nmcd.dwItemSpec = static_cast<DWORD_PTR>(look->index);
        draw.nmcd.uItemState = look->drawState;
        draw.nmcd.lItemlParam = dataOf(look->index);
    }
    const LRESULT answer = notify(NM_CUSTOMDRAW, draw);
    if (look != nullptr) {
        look->text = draw.clrText == CLR_DEFAULT ? textColor() : draw.clrText;
        look->background = draw.clrTextBk == CLR_DEFAULT ? textBackgroundColor() : draw.clrTextBk;
        // A handler takes the selection's look away by clearing its bit.
        if ((look->drawState & CDIS_SELECTED) != 0 && (draw.nmcd.uItemState & CDIS_SELECTED) == 0)
            look->highlighted = false;
        look->drawState = draw.nmcd.uItemState;
    }
    return answer;
}

void ListView::drawItem(HDC dc, int index, const RECT& area, LRESULT controlAnswer) {
    ItemLook look = lookOf(index);
    if (!alive() || !isItem(index) || index == editing_)
        return;
    if (isReport() && hasStyle(LVS_OWNERDRAWFIXED)) {
        sendDrawItem(dc, look);
        return;
    }
    const SavedContext saved(dc);
    LRESULT answer = CDRF_DODEFAULT;
    if ((controlAnswer & CDRF_NOTIFYITEMDRAW) != 0) {
        answer = notifyDraw(CDDS_ITEMPREPAINT, dc, look.rects.bounds, &look, 0);
        if (!alive() || !isItem(index) || (answer & CDRF_SKIPDEFAULT) != 0)
            return;
    }
    if (isReport()) {
        drawReportRow(dc, look, area, answer);
    } else {
        resolveHighlight(look);
        drawMainItem(dc, look);
    }
    if (alive() && (answer & CDRF_NOTIFYPOSTPAINT) != 0)
        notifyDraw(CDDS_ITEMPOSTPAINT, dc, look.rects.bounds, &look, 0);
}

void ListView::drawReportRow(HDC dc, const ItemLook& look, const RECT& area, LRESULT answer) {
    for (int subItem = 0; alive() && isItem(look.index) && subItem < columnCount(); ++subItem)
        if (const RECT cell = cellRect(look.index, subItem); touches(cell, area))
            drawCell(dc, look, subItem, answer);
    if (alive() && hasExtended(LVS_EX_FULLROWSELECT))
        drawRowFocus(dc, look);
}

void ListView::drawCell(HDC dc, const ItemLook& row, int subItem, LRESULT rowAnswer) {
    const SavedContext saved(dc);
    const RECT cell = cellRect(row.index, subItem);
    ItemLook look = row;
    LRESULT answer = CDRF_DODEFAULT;
    if ((rowAnswer & CDRF_NOTIFYSUBITEMDRAW) != 0) {
        answer = notifyDraw(CDDS_ITEMPREPAINT | CDDS_SUBITEM, dc, cell, &look, subItem);
        if (!alive() || !isItem(row.index) || (answer & CDRF_SKIPDEFAULT) != 0)
            return;
    }
    IntersectClipRect(dc, cell.left, cell.top, cell.right, cell.bottom);
    if (subItem == 0) {
        if (look.background != textBackgroundColor()) // coloured by its parent: all of the cell
            fillGround(dc, look, cell);
        resolveHighlight(look);
        drawMainItem(dc, look);
    } else {
        if (hasExtended(LVS_EX_FULLROWSELECT))
            resolveHighlight(look);
        drawSubItem(dc, look, subItem);
    }
    if (alive() && (answer & CDRF_NOTIFYPOSTPAINT) != 0)
        notifyDraw(CDDS_ITEMPOSTPAINT | CDDS_SUBITEM, dc, cell, &look, subItem);
}

void ListView::drawRowFocus(HDC dc, const ItemLook& look) const {
    if ((look.state & LVIS_FOCUSED) == 0 || !look.listFocused)
        return;
    RECT row = look.rects.bounds;
    if (columnCount() > 0 && column(0).left == 0)
        row.left = look.rects.label.left;
    DrawFocusRect(dc, &row);
}

void ListView::drawMainItem(HDC dc, const ItemLook& look) {
    const std::string text = textOf(look.index, 0);
    const int image = alive() ? imageOf(look.index, 0) : I_IMAGENONE;
    if (!alive() || !isItem(look.index))
        return;
    if (view() == LVS_LIST || view() == LVS_SMALLICON)
        growListColumns(text);
    drawStateImage(dc, look, look.rects.state);
    drawImage(dc, look, images_[view() == LVS_ICON ? LVSIL_NORMAL : LVSIL_SMALL], image, look.rects.icon);
    if (!isReport()) {
        drawLabel(dc, look, text, look.rects.label,
                  view() == LVS_ICON ? iconLabelFormat((look.state & LVIS_FOCUSED) != 0 && look.listFocused)
                                     : singleLine);
        return;
    }
    // The text's ground is as wide as the text; what is drawn may take the column's width.
    RECT label = look.rects.label;
    if (look.highlighted && !hasExtended(LVS_EX_FULLROWSELECT))
        label.right = std::min<LONG>(label.left + measure_.width(text) + 2 * labelMargin, label.right);
    drawLabel(dc, look, text, label, singleLine);
}

void ListView::drawSubItem(HDC dc, const ItemLook& look, int subItem) {
    const std::string text = textOf(look.index, subItem);
    const bool pictured = hasExtended(LVS_EX_SUBITEMIMAGES) && images_[LVSIL_SMALL] != nullptr;
    const int image = alive() && pictured ? imageOf(look.index, subItem) : I_IMAGENONE;
    if (!alive() || !isItem(look.index))
        return;
    RECT rect = cellRect(look.index, subItem);
    fillGround(dc, look, rect);
    if (image >= 0) {
        RECT picture = rect;
        picture.left += labelMargin;
        picture.right = std::min<LONG>(picture.left + smallSize().cx, rect.right);
        drawImage(dc, look, images_[LVSIL_SMALL], image, picture);
        rect.left += smallSize().cx;
    }
    rect.left += cellMargin;
    rect.right -= cellMargin;
    if (text.empty() || rect.right <= rect.left)
        return;
    const int align = column(subItem).format & LVCFMT_JUSTIFYMASK;
    SetTextColor(dc, look.text);
    DrawTextA(dc, text.data(), static_cast<int>(text.size()), &rect,
              singleLine | (align == LVCFMT_RIGHT    ? DT_RIGHT
                            : align == LVCFMT_CENTER ? DT_CENTER
                                                     : DT_LEFT));
}

// ---- Parts ---------------------------------------------------------------------------------------------------------

void ListView::fillGround(HDC dc, const ItemLook& look, const RECT& rect) const {
    if (look.background != CLR_NONE)
        fill(dc, rect, look.background);
}

void ListView::drawStateImage(HDC dc, const ItemLook& look, const RECT& rect) const {
    const int image = static_cast<int>((look.state & LVIS_STATEIMAGEMASK) >> 12U) - 1;
    if (images_[LVSIL_STATE] == nullptr || image < 0 || rect.right <= rect.left)
        return;
    const int y = rect.top + (rect.bottom - rect.top - stateSize().cy) / 2;
    ImageList_DrawEx(images_[LVSIL_STATE], image, dc, rect.left, y, rect.right - rect.left, 0, CLR_NONE, CLR_DEFAULT,
                     ILD_TRANSPARENT);
}

void ListView::drawImage(HDC dc, const ItemLook& look, HIMAGELIST images, int image, const RECT& rect) const {
    if (images == nullptr || image < 0 || rect.right <= rect.left)
        return;
    int width = 0;
    int height = 0;
    ImageList_GetIconSize(images, &width, &height);
    UINT drawing = ImageList_GetBkColor(images) == backgroundColor() ? ILD_NORMAL : ILD_TRANSPARENT;
    drawing |= look.state & LVIS_OVERLAYMASK;
    COLORREF blend = CLR_DEFAULT;
    if (look.highlighted && (look.listFocused || (look.state & LVIS_DROPHILITED) != 0)) {
        drawing |= ILD_SELECTED;
    } else if ((look.state & LVIS_CUT) != 0) {
        drawing |= ILD_BLEND50;
        blend = backgroundColor();
    }
    const int x = view() == LVS_ICON ? rect.left + (rect.right - rect.left - width) / 2 : rect.left;
    const int y = rect.top + (rect.bottom - rect.top - height) / 2;
    ImageList_DrawEx(images, image, dc, x, y, std::min<int>(width, rect.right - x), 0, CLR_DEFAULT, blend, drawing);
}

void ListView::drawLabel(HDC dc, const ItemLook& look, const std::string& text, const RECT& rect, UINT format) const {
    fillGround(dc, look, rect);
    RECT inner = rect;
    InflateRect(&inner, -labelMargin, 0);
    if (!text.empty() && inner.right > inner.left) {
        SetTextColor(dc, look.text);
        DrawTextA(dc, text.data(), static_cast<int>(text.size()), &inner, format);
    }
    const bool ownFocus = !isReport() || !hasExtended(LVS_EX_FULLROWSELECT);
    if (ownFocus && (look.state & LVIS_FOCUSED) != 0 && look.listFocused) {
        RECT frame = rect;
        if (isReport())
            frame.right = std::min<LONG>(frame.left + measure_.width(text) + 2 * labelMargin, rect.right);
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        DrawFocusRect(dc, &frame);
    }
}

void ListView::sendDrawItem(HDC dc, const ItemLook& look) const {
    const SavedContext saved(dc);
    DRAWITEMSTRUCT draw{};
    draw.CtlType = ODT_LISTVIEW;
    draw.CtlID = static_cast<UINT>(id());
    draw.itemID = static_cast<UINT>(look.index);
    draw.itemAction = ODA_DRAWENTIRE;
    draw.itemState = ((look.state & LVIS_SELECTED) != 0 ? ODS_SELECTED : 0U) |
                     ((look.state & LVIS_FOCUSED) != 0 ? ODS_FOCUS : 0U) | (enabled() ? 0U : ODS_DISABLED);
    draw.hwndItem = window();
    draw.hDC = dc;
    draw.rcItem = look.rects.bounds;
    draw.itemData = static_cast<ULONG_PTR>(dataOf(look.index));
    SendMessageA(GetParent(window()), WM_DRAWITEM, draw.CtlID, reinterpret_cast<LPARAM>(&draw));
}

// ---- Invalidation --------------------------------------------------------------------------------------------------

RECT ListView::roughBounds(int index) const {
    constexpr int mostLines = 8;
    if (isReport()) {
        RECT row = rowRect(index);
        row.right = std::max(row.right, clientRect().right);
        return row;
    }
    if (view() == LVS_LIST) {
        const int rows = rowsPerPage();
        const int left = (index / rows - scroll_.x) * listColumnWidth_;
        const int top = index % rows * rowHeight_;
        return {left, top, left + listColumnWidth_, top + rowHeight_};
    }
    const POINT place = viewPosition(index);
    const POINT at{place.x - scroll_.x, place.y - scroll_.y};
    const ListCell* cell = cellAt(index, 0);
    const bool known = cell != nullptr && !cell->textCallback;
    if (view() == LVS_SMALLICON) {
        const int text = known ? measure_.width(cell->text) + 2 * labelMargin : static_cast<int>(clientRect().right);
        return {at.x, at.y, at.x + stateSize().cx + smallSize().cx + text, at.y + rowHeight_};
    }
    const SIZE icon = iconSize();
    int half = spacing().cx;
    if (hasStyle(LVS_NOLABELWRAP))
        half = std::max<int>(half, known ? measure_.width(cell->text) : clientRect().right);
    const int middle = at.x + icon.cx / 2;
    return {middle - half, at.y - labelMargin, middle + half,
            at.y + static_cast<int>(icon.cy) + mostLines * measure_.lineHeight()};
}

void ListView::invalidateItem(int index) const {
    if (!isItem(index))
        return;
    const RECT rect = roughBounds(index);
    invalidate(&rect);
}

void ListView::invalidateFrom(int index) const {
    RECT area = listArea();
    if (isReport()) {
        area.top = std::max(area.top, rowRect(index).top);
    } else if (view() == LVS_LIST) {
        area.left = std::max<LONG>(0, lengthOf(index / rowsPerPage() - scroll_.x, listColumnWidth_));
    } else if (!arranged()) {
        invalidateItem(index);
        return;
    } else if (!fillsDownwards()) {
        area.top = std::max<LONG>(0, slotPosition(index).y - scroll_.y - labelMargin);
    }
    if (area.top < area.bottom && area.left < area.right)
        invalidate(&area);
}

void ListView::invalidateList() const {
    const RECT area = listArea();
    invalidate(&area);
}

LRESULT ListView::onRedrawItems(int first, int last) {
    const int begin = std::max(first, 0);
    if (last < begin)
        return TRUE;
    // Beyond what fits into the window it is the same as all.
    if (last - begin > 1000) {
        invalidateList();
        return TRUE;
    }
    for (int index = begin; index <= last && index < count(); ++index)
        invalidateItem(index);
    return TRUE;
}

LRESULT ListView::onCreateDragImage(int index, POINT* origin) {
    if (!isItem(index) || origin == nullptr)
        return 0;
    ItemLook look = lookOf(index);
    if (!alive() || !isItem(index))
        return 0;
    RECT bounds{};
    UnionRect(&bounds, &look.rects.icon, &look.rects.label);
    *origin = {bounds.left, bounds.top};
    const SIZE size{bounds.right - bounds.left, bounds.bottom - bounds.top};
    if (size.cx <= 0 || size.cy <= 0)
        return 0;
    look.highlighted = false;
    look.state &= ~LVIS_FOCUSED;
    look.background = CLR_NONE;
    const HDC screen = GetDC(window());
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, size.cx, size.cy);
    ReleaseDC(window(), screen);
    {
        const SelectedObject target(memory, bitmap);
        const SavedContext saved(memory);
        fill(memory, {0, 0, size.cx, size.cy}, backgroundColor());
        SetViewportOrgEx(memory, -bounds.left, -bounds.top, nullptr);
        SelectObject(memory, measure_.font());
        SetBkMode(memory, TRANSPARENT);
        drawMainItem(memory, look);
    }
    DeleteDC(memory);
    const HIMAGELIST images = ImageList_Create(size.cx, size.cy, ILC_COLOR24 | ILC_MASK, 1, 1);
    ImageList_AddMasked(images, bitmap, backgroundColor());
    DeleteObject(bitmap);
    return reinterpret_cast<LRESULT>(images);
}

} // namespace vndk::win32
