// Painting of the tree view, with custom drawing.
#include "controls/paint_session.h"
#include "controls/tree_view.h"
#include "win32/draw.h"
#include "win32/scrollbar.h"

#include <algorithm>
#include <cstdint>

namespace vndk::win32 {

namespace {

constexpr int labelMargin = 2;
constexpr int buttonSize = 9;
constexpr UINT labelFormat = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_NOCLIP;

void fill(HDC dc, const RECT& rect, COLORREF color) {
    SetDCBrushColor(dc, color);
    FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

HBRUSH makeDots() {
    // Every other pixel: 1 bits take the background colour.
    constexpr std::uint16_t rows[8] = {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55};
    const HBITMAP pattern = CreateBitmap(8, 8, 1, 1, rows);
    const HBRUSH brush = CreatePatternBrush(pattern);
    DeleteObject(pattern);
    return brush;
}

} // namespace

// ---- All of it -----------------------------------------------------------------------------------------------------

LRESULT TreeView::onEraseBackground(HDC dc) const {
    RECT area{};
    GetClipBox(dc, &area);
    fill(dc, area, backgroundColor());
    return 1;
}

void TreeView::onPaint(HDC given) {
    if (given == nullptr && barsStale_) {
        barsStale_ = false;
        for (const int bar : {SB_HORZ, SB_VERT})
            if (barMaximum_[bar] >= 0)
                SetScrollPos(window(), bar, barPosition_[bar], TRUE);
    }
    const PaintSession session(window(), given);
    if (session.dc() != nullptr && IsRectEmpty(&session.area()) == FALSE)
        drawAll(session.dc(), session.area());
}

void TreeView::drawAll(HDC dc, const RECT& area) {
    const SavedContext saved(dc);
    SelectObject(dc, measure_.font());
    SetBkMode(dc, TRANSPARENT);
    const RECT client = clientRect();
    const LRESULT answer = notifyDraw(CDDS_PREPAINT, dc, client, nullptr);
    if (!alive() || (answer & CDRF_SKIPDEFAULT) != 0)
        return;
    drawRows(dc, area, answer);
    if (alive())
        drawInsertMark(dc);
    if (alive() && (answer & CDRF_NOTIFYPOSTPAINT) != 0)
        notifyDraw(CDDS_POSTPAINT, dc, client, nullptr);
}

void TreeView::drawRows(HDC dc, const RECT& area, LRESULT answer) {
    const int first = top_ + std::max<int>(area.top, 0) / lineHeight_;
    const int last = top_ + std::max<int>(area.bottom - 1, 0) / lineHeight_;
    // Handlers may change the rows: they are noted before the first of them is asked.
    std::vector<HTREEITEM> rows;
    const TreeItem* row = items_.rowAtLine(first);
    for (int line = row != nullptr ? TreeItems::lineOf(row) : 0; row != nullptr && line <= last;
         row = TreeItems::nextRow(row)) {
        rows.push_back(row->handle);
        line += row->rowHook.weight;
    }
    for (const HTREEITEM handle : rows) {
        const TreeItem* item = alive() ? items_.find(handle) : nullptr;
        if (item != nullptr && TreeItems::isRow(item))
            drawRow(dc, handle, answer);
    }
}

// ---- Items ---------------------------------------------------------------------------------------------------------

bool TreeView::looksSelected(const TreeItem& item) const {
    if (press_ == Press::item && pressed_ != nullptr)
        return item.handle == pressed_; // the selection follows when the button goes up
    return item.is(TVIS_SELECTED);
}

TreeView::ItemLook TreeView::lookOf(TreeItem& item) {
    ItemLook look;
    look.handle = item.handle;
    look.parts = partsOf(item);
    look.text = textColor();
    look.background = backgroundColor();
    const bool hasFocus = focused();
    const bool selected = looksSelected(item);
    const bool shown = selected && (hasFocus || hasStyle(TVS_SHOWSELALWAYS));
    look.highlighted = shown || item.is(TVIS_DROPHILITED);
    if (look.highlighted) {
        const bool strong = hasFocus || item.is(TVIS_DROPHILITED);
        look.text = GetSysColor(strong ? COLOR_HIGHLIGHTTEXT : COLOR_BTNTEXT);
        look.background = GetSysColor(strong ? COLOR_HIGHLIGHT : COLOR_BTNFACE);
    } else if (item.handle == hot_ && hasStyle(TVS_TRACKSELECT)) {
        look.text = GetSysColor(COLOR_HOTLIGHT);
    }
    look.drawState = (selected ? CDIS_SELECTED : 0U) | (item.handle == caret_ && hasFocus ? CDIS_FOCUS : 0U) |
                     (enabled() ? 0U : CDIS_DISABLED) | (item.handle == hot_ ? CDIS_HOT : 0U);
    return look;
}

LRESULT TreeView::notifyDraw(DWORD stage, HDC dc, const RECT& rect, ItemLook* look) {
    NMTVCUSTOMDRAW draw{};
    draw.nmcd.dwDrawStage = stage;
    draw.nmcd.hdc = dc;
    draw.nmcd.rc = rect;
    draw.clrText = look != nullptr ? look->text : textColor();
    draw.clrTextBk = look != nullptr ? look->background : backgroundColor();
    if (look != nullptr) {
        draw.nmcd.dwItemSpec = reinterpret_cast<DWORD_PTR>(look->handle);
        draw.nmcd.uItemState = look->drawState;
        if (const TreeItem* item = items_.find(look->handle); item != nullptr) {
            draw.nmcd.lItemlParam = item->data;
            draw.iLevel = item->level;
        }
    }
    const LRESULT answer = notify(NM_CUSTOMDRAW, draw);
    if (look != nullptr) {
        look->text = draw.clrText == CLR_DEFAULT ? textColor() : draw.clrText;
        look->background = draw.clrTextBk == CLR_DEFAULT ? backgroundColor() : draw.clrTextBk;
    }
    return answer;
}

void TreeView::drawRow(HDC dc, HTREEITEM handle, LRESULT controlAnswer) {
    const SavedContext saved(dc);
    TreeItem* item = items_.find(handle);
    SelectObject(dc, measureFor(*item).font());
    ItemLook look = lookOf(*item);
    LRESULT answer = CDRF_DODEFAULT;
    if ((controlAnswer & CDRF_NOTIFYITEMDRAW) != 0) {
        answer = notifyDraw(CDDS_ITEMPREPAINT, dc, look.parts.row, &look);
        item = alive() ? items_.find(handle) : nullptr;
        if (item == nullptr || !TreeItems::isRow(item) || (answer & CDRF_SKIPDEFAULT) != 0)
            return;
        look.images = (answer & TVCDRF_NOIMAGES) == 0;
    }
    drawItem(dc, look);
    if (alive() && (answer & CDRF_NOTIFYPOSTPAINT) != 0)
        notifyDraw(CDDS_ITEMPOSTPAINT, dc, look.parts.row, &look);
}

void TreeView::drawItem(HDC dc, const ItemLook& look) {
    // What only the parent knows comes first: it may change the tree.
    const std::string text = textOf(look.handle);
    const TreeItem* asked = alive() ? items_.find(look.handle) : nullptr;
    const int image = asked != nullptr ? imageOf(look.handle, looksSelected(*asked)) : I_IMAGENONE;
    const bool hasButton = alive() && opens(look.handle);
    TreeItem* item = alive() ? items_.find(look.handle) : nullptr;
    if (item == nullptr || !TreeItems::isRow(item))
        return;
    if (item->textCallback) {
        item->textWidth = measureFor(*item).width(text);
        updateExtent(*item);
        updateScrollBars();
    }
    ItemLook placed = look;
    placed.parts = partsOf(*item);
    if (hasStyle(TVS_FULLROWSELECT) && !hasStyle(TVS_HASLINES) && look.background != CLR_NONE)
        fill(dc, placed.parts.row, look.background);
    if (hasStyle(TVS_HASLINES))
        drawLines(dc, *item, placed.parts);
    if (hasButton && hasStyle(TVS_HASBUTTONS) && (item->level > 0 || hasRootCell()))
        drawButton(dc, *item, placed.parts);
    if (look.images)
        drawImages(dc, placed, *item, image);
    if (look.handle != editing_)
        drawLabel(dc, placed, *item, text);
}

// ---- Lines and buttons ---------------------------------------------------------------------------------------------

void TreeView::drawDotted(HDC dc, const RECT& line) {
    if (dots_ == nullptr)
        dots_ = makeDots();
    FillRect(dc, &line, dots_);
}

void TreeView::drawLines(HDC dc, const TreeItem& item, const Parts& parts) {
    const SavedContext saved(dc);
    SetTextColor(dc, lineColor_ == CLR_DEFAULT ? GetSysColor(COLOR_BTNSHADOW) : lineColor_);
    SetBkColor(dc, backgroundColor());
    // The dots of rows that were painted at other times go on from each other.
    SetBrushOrgEx(dc, -(left_ & 7), -((top_ * lineHeight_) & 7), nullptr);
    const int middle = parts.row.top + lineHeight_ / 2;
    int x = parts.button + indent_ / 2;
    if (item.level > 0 || hasRootCell()) {
        const bool above = item.level > 0 || item.previous() != nullptr;
        const bool below = item.next() != nullptr;
        drawDotted(dc, {x, above ? static_cast<int>(parts.row.top) : middle, x + 1,
                        below ? static_cast<int>(parts.row.bottom) : middle + 1});
        drawDotted(dc, {x, middle, parts.state, middle + 1});
    }
    for (const TreeItem* up = item.parent; up != items_.root(); up = up->parent) {
        x -= indent_;
        if ((up->level > 0 || hasRootCell()) && up->next() != nullptr)
            drawDotted(dc, {x, parts.row.top, x + 1, parts.row.bottom});
    }
}

void TreeView::drawButton(HDC dc, const TreeItem& item, const Parts& parts) const {
    const int size = std::min(buttonSize, std::max(5, std::min(indent_, lineHeight_) - 2));
    const int half = size / 2;
    const int x = parts.button + indent_ / 2;
    const int y = parts.row.top + lineHeight_ / 2;
    const RECT frame{x - half, y - half, x + half + 1, y + half + 1};
    fill(dc, frame, GetSysColor(COLOR_BTNSHADOW));
    fill(dc, {frame.left + 1, frame.top + 1, frame.right - 1, frame.bottom - 1}, backgroundColor());
    const COLORREF sign = textColor();
    fill(dc, {frame.left + 2, y, frame.right - 2, y + 1}, sign);
    if (!item.is(TVIS_EXPANDED) || item.is(TVIS_EXPANDPARTIAL))
        fill(dc, {x, frame.top + 2, x + 1, frame.bottom - 2}, sign);
}

// ---- Pictures and label --------------------------------------------------------------------------------------------

void TreeView::drawImages(HDC dc, const ItemLook& look, const TreeItem& item, int image) const {
    const Parts& parts = look.parts;
    const auto centred = [&parts](LONG height) {
        return static_cast<int>(parts.row.top + (parts.row.bottom - parts.row.top - height) / 2);
    };
    if (const int state = static_cast<int>((item.state & TVIS_STATEIMAGEMASK) >> 12U); state > 0)
        ImageList_Draw(stateImages_, state, dc, parts.state, centred(stateSize().cy), ILD_TRANSPARENT);
    if (images_ == nullptr || image < 0)
        return;
    UINT drawing = ImageList_GetBkColor(images_) == backgroundColor() ? ILD_NORMAL : ILD_TRANSPARENT;
    drawing |= item.state & TVIS_OVERLAYMASK;
    COLORREF blend = CLR_DEFAULT;
    if (look.highlighted && (focused() || item.is(TVIS_DROPHILITED))) {
        drawing |= ILD_SELECTED;
    } else if (item.is(TVIS_CUT)) {
        drawing |= ILD_BLEND50;
        blend = backgroundColor();
    }
    ImageList_DrawEx(images_, image, dc, parts.icon, centred(imageSize().cy), 0, 0, CLR_DEFAULT, blend, drawing);
}

void TreeView::drawLabel(HDC dc, const ItemLook& look, const TreeItem& item, const std::string& text) {
    RECT label{look.parts.label, look.parts.row.top, look.parts.labelEnd, look.parts.row.bottom};
    if (look.background != CLR_NONE && (look.highlighted || look.background != backgroundColor()))
        fill(dc, label, look.background);
    RECT inner = label;
    InflateRect(&inner, -labelMargin, 0);
    if (!text.empty()) {
        SetTextColor(dc, look.text);
        DrawTextA(dc, text.data(), static_cast<int>(text.size()), &inner, labelFormat);
    }
    if (item.handle == hot_ && hasStyle(TVS_TRACKSELECT)) {
        const int y = inner.top + (inner.bottom - inner.top + measure_.lineHeight()) / 2 - 1;
        fill(dc, {inner.left, y, inner.right, y + 1}, look.text);
    }
    if (item.handle == caret_ && press_ != Press::item && focused()) {
        SetTextColor(dc, GetSysColor(COLOR_WINDOWTEXT));
        DrawFocusRect(dc, &label);
    }
}

void TreeView::drawInsertMark(HDC dc) const {
    TreeItem* item = items_.find(insertMark_);
    if (item == nullptr || !TreeItems::isRow(item))
        return;
    const RECT row = rowRect(*item);
    const int y = insertMarkAfter_ ? row.bottom - 1 : row.top;
    const int x = contentLeft(*item) - left_;
    const COLORREF color = markColor_ == CLR_DEFAULT ? textColor() : markColor_;
    fill(dc, {x, y - 1, row.right - 2, y + 1}, color);
    fill(dc, {x, y - 3, x + 2, y + 3}, color);
    fill(dc, {row.right - 4, y - 3, row.right - 2, y + 3}, color);
}

LRESULT TreeView::onCreateDragImage(HTREEITEM handle) {
    TreeItem* item = items_.find(handle);
    if (item == nullptr || !TreeItems::isRow(item))
        return 0;
    const std::string text = textOf(handle);
    const int image = alive() ? imageOf(handle, false) : I_IMAGENONE;
    item = alive() ? items_.find(handle) : nullptr;
    if (item == nullptr || !TreeItems::isRow(item))
        return 0;
    ItemLook look = lookOf(*item);
    look.highlighted = false;
    look.text = textColor();
    look.background = CLR_NONE;
    const POINT origin{look.parts.icon, look.parts.row.top};
    const SIZE size{look.parts.labelEnd - look.parts.icon, look.parts.row.bottom - look.parts.row.top};
    if (size.cx <= 0 || size.cy <= 0)
        return 0;
    const HDC screen = GetDC(window());
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, size.cx, size.cy);
    ReleaseDC(window(), screen);
    {
        const SelectedObject target(memory, bitmap);
        const SavedContext saved(memory);
        fill(memory, {0, 0, size.cx, size.cy}, backgroundColor());
        SetViewportOrgEx(memory, -origin.x, -origin.y, nullptr);
        SelectObject(memory, measureFor(*item).font());
        SetBkMode(memory, TRANSPARENT);
        drawImages(memory, look, *item, image);
        RECT label{look.parts.label + labelMargin, look.parts.row.top, look.parts.labelEnd, look.parts.row.bottom};
        SetTextColor(memory, look.text);
        DrawTextA(memory, text.data(), static_cast<int>(text.size()), &label, labelFormat);
    }
    DeleteDC(memory);
    const HIMAGELIST images = ImageList_Create(size.cx, size.cy, ILC_COLOR24 | ILC_MASK, 1, 1);
    ImageList_AddMasked(images, bitmap, backgroundColor());
    DeleteObject(bitmap);
    return reinterpret_cast<LRESULT>(images);
}

} // namespace vndk::win32
