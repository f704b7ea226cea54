#include "user/menu_layout.h"

#include "user/frame_geometry.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/gdi.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr int barPadding = 6;   // left and right of a bar's text
constexpr int textPadding = 4;  // above and below together
constexpr int shortcutGap = 12; // between the longest label and the shortcuts
constexpr int afterCheck = 4;   // between the check marks and the text
constexpr int columnLine = 4;   // width of the line between columns

// Text is measured in the menu font, bold for the default item.
class MenuMeasure {
public:
    MenuMeasure() : dc_(CreateCompatibleDC(nullptr)), former_(SelectObject(dc_, GetStockObject(DEFAULT_GUI_FONT))) {
        GetTextMetricsA(dc_, &metrics_);
    }
    ~MenuMeasure() {
        SelectObject(dc_, former_);
        DeleteDC(dc_);
    }
    MenuMeasure(const MenuMeasure&) = delete;
    MenuMeasure& operator=(const MenuMeasure&) = delete;

    [[nodiscard]] int lineHeight() const { return metrics_.tmHeight; }
    [[nodiscard]] int width(const std::string& text, bool prefixes) const {
        RECT rect{};
        const UINT flags = DT_SINGLELINE | DT_CALCRECT | (prefixes ? 0U : DT_NOPREFIX);
        if (!text.empty())
            DrawTextA(dc_, text.c_str(), static_cast<int>(text.size()), &rect, flags);
        return rect.right;
    }

private:
    HDC dc_;
    HGDIOBJ former_;
    TEXTMETRICA metrics_{};
};

MenuItem* itemAt(HMENU menu, std::size_t index) {
    Menu* found = findMenu(menu);
    return found != nullptr && index < found->items.size() ? &found->items[index] : nullptr;
}

bool askedOfOwner(const MenuItem& item) { return item.ownerDrawn() || item.bitmap == HBMMENU_CALLBACK; }

// The owner may do anything with the menu meanwhile, so it is found anew for each item. Without an owner nothing is
// noted: one that comes later has still to be asked.
void askSizes(HMENU menu, HWND owner) {
    if (owner == nullptr)
        return;
    for (std::size_t i = 0; const MenuItem* item = itemAt(menu, i); ++i) {
        if (!askedOfOwner(*item) || item->asked)
            continue;
        MEASUREITEMSTRUCT asked{};
        asked.CtlType = ODT_MENU;
        asked.itemID = item->id;
        asked.itemData = item->data;
        asked.itemHeight = static_cast<UINT>(GetSystemMetrics(SM_CYMENUSIZE));
        send(owner, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&asked));
        constexpr UINT largest = 4096;
        if (MenuItem* answered = itemAt(menu, i))
            answered->asked = SIZE{static_cast<LONG>(std::min(asked.itemWidth, largest)),
                                   static_cast<LONG>(std::min(asked.itemHeight, largest))};
    }
}

SIZE bitmapSize(HBITMAP bitmap) {
    BITMAP info{};
    if (bitmap == nullptr || GetObjectA(bitmap, sizeof info, &info) == 0)
        return {0, 0};
    return {info.bmWidth, info.bmHeight};
}

int checkColumn() { return GetSystemMetrics(SM_CXMENUCHECK) + afterCheck; }

struct ItemSize {
    int label = 0; // width of the label or picture
    int shortcut = 0;
    int height = 0;
};

ItemSize sizeOf(const MenuItem& item, const MenuMeasure& measure) {
    ItemSize size;
    if (item.ownerDrawn())
        return {item.asked ? static_cast<int>(item.asked->cx) : 0, 0,
                item.asked ? static_cast<int>(item.asked->cy) : GetSystemMetrics(SM_CYMENUSIZE)};
    if (item.separator())
        return {0, 0, GetSystemMetrics(SM_CYMENUSIZE) / 2};
    if ((item.type & MFT_BITMAP) != 0) {
        const SIZE bitmap = bitmapSize(item.bitmap);
        return {static_cast<int>(bitmap.cx), 0, static_cast<int>(bitmap.cy) + 2};
    }
    const MenuText text = splitMenuText(item.text);
    size.label = measure.width(text.label, true);
    size.shortcut = measure.width(text.shortcut, false);
    size.height = std::max(measure.lineHeight() + textPadding, GetSystemMetrics(SM_CYMENUCHECK));
    return size;
}

// ---- Popups --------------------------------------------------------------------------------------------------------

// A column of a popup while it is being filled.
struct Column {
    std::size_t first = 0;
    int left = popupBorder;
    int bottom = popupBorder;
    int label = 0;
    int shortcut = 0;

    [[nodiscard]] int width() const {
        return checkColumn() + label + (shortcut > 0 ? shortcutGap + shortcut : 0) + checkColumn();
    }
};

void closeColumn(Menu& menu, const Column& column, std::size_t end) {
    for (std::size_t i = column.first; i < end; ++i) {
        MenuItem& item = menu.items[i];
        item.rect.left = column.left;
        item.rect.right = column.left + column.width();
        item.tab = column.left + checkColumn() + column.label + shortcutGap;
    }
}

Column nextColumn(const Menu& menu, const Column& column, std::size_t first) {
    const bool line = (menu.items[first].type & MFT_MENUBARBREAK) != 0;
    Column next;
    next.first = first;
    next.left = column.left + column.width() + (line ? columnLine : 0);
    return next;
}

// All items of a bar's row are as high as the highest.
void closeRow(Menu& menu, std::size_t first, std::size_t end, int bottom) {
    for (std::size_t i = first; i < end; ++i)
        menu.items[i].rect.bottom = bottom;
}

} // namespace

void layOutPopup(HMENU handle, HWND owner) {
    askSizes(handle, owner);
    Menu* menu = findMenu(handle);
    if (menu == nullptr)
        return;
    const MenuMeasure measure;
    const int limit = GetSystemMetrics(SM_CYSCREEN) - popupBorder;
    Column column;
    int lowest = popupBorder;
    for (std::size_t i = 0; i < menu->items.size(); ++i) {
        MenuItem& item = menu->items[i];
        const ItemSize size = sizeOf(item, measure);
        const bool breaks = (item.type & (MFT_MENUBREAK | MFT_MENUBARBREAK)) != 0;
        if (i > column.first && (breaks || column.bottom + size.height > limit)) {
            closeColumn(*menu, column, i);
            column = nextColumn(*menu, column, i);
        }
        item.rect.top = column.bottom;
        item.rect.bottom = column.bottom + size.height;
        column.bottom = item.rect.bottom;
        column.label = std::max(column.label, size.label);
        column.shortcut = std::max(column.shortcut, size.shortcut);
        lowest = std::max(lowest, column.bottom);
    }
    closeColumn(*menu, column, menu->items.size());
    menu->size = {column.left + column.width() + popupBorder, lowest + popupBorder};
}

int layOutBar(HMENU handle, HWND owner, int width) {
    askSizes(handle, owner);
    Menu* menu = findMenu(handle);
    if (menu == nullptr)
        return 0;
    const MenuMeasure measure;
    const int rowHeight = GetSystemMetrics(SM_CYMENUSIZE);
    int left = 0;
    int top = 0;
    int height = rowHeight;
    std::size_t rowFirst = 0;
    std::size_t rightFrom = menu->items.size();
    for (std::size_t i = 0; i < menu->items.size(); ++i) {
        MenuItem& item = menu->items[i];
        const ItemSize size = sizeOf(item, measure);
        const int itemWidth = size.label + (item.separator() ? 0 : 2 * barPadding);
        if (left > 0 && (left + itemWidth > width || (item.type & (MFT_MENUBREAK | MFT_MENUBARBREAK)) != 0)) {
            closeRow(*menu, rowFirst, i, top + height);
            rowFirst = i;
            left = 0;
            top += height;
            height = rowHeight;
        }
        height = std::max(height, size.height);
        item.rect = {left, top, left + itemWidth, top};
        left += itemWidth;
        if ((item.type & MFT_RIGHTJUSTIFY) != 0)
            rightFrom = std::min(rightFrom, i);
    }
    closeRow(*menu, rowFirst, menu->items.size(), top + height);
    // From the first item that asks for it, the rest of the row goes to the right end.
    if (rightFrom < menu->items.size() && menu->items[rightFrom].rect.top == top)
        for (std::size_t i = rightFrom; i < menu->items.size() && width > left; ++i)
            menu->items[i].rect = shifted(menu->items[i].rect, width - left, 0);
    return top + height;
}

// ---- Painting ------------------------------------------------------------------------------------------------------

namespace {

// One item on its way to the pixels; a copy, since drawing by the owner can change the menu.
struct Drawing {
    HDC dc;
    RECT rect;
    MenuItem item;
    bool bar;
    bool selected;
    HMENU menu;
    HWND owner;
    int tab;

    [[nodiscard]] bool highlighted() const { return selected && !bar; }
    [[nodiscard]] COLORREF background() const { return GetSysColor(highlighted() ? COLOR_HIGHLIGHT : COLOR_MENU); }
    [[nodiscard]] COLORREF textColor() const {
        if (item.grayed())
            return GetSysColor(COLOR_GRAYTEXT);
        return GetSysColor(highlighted() ? COLOR_HIGHLIGHTTEXT : COLOR_MENUTEXT);
    }
};

void drawByOwner(const Drawing& drawing) {
    DRAWITEMSTRUCT asked{};
    asked.CtlType = ODT_MENU;
    asked.itemID = drawing.item.id;
    asked.itemAction = ODA_DRAWENTIRE;
    asked.itemState = (drawing.selected ? ODS_SELECTED : 0U) |
                      (drawing.item.grayed() ? ODS_GRAYED | ODS_DISABLED : 0U) |
                      ((drawing.item.state & MFS_CHECKED) != 0 ? ODS_CHECKED : 0U) |
                      ((drawing.item.state & MFS_DEFAULT) != 0 ? ODS_DEFAULT : 0U);
    asked.hwndItem = reinterpret_cast<HWND>(drawing.menu);
    asked.hDC = drawing.dc;
    asked.rcItem = drawing.rect;
    asked.itemData = drawing.item.data;
    const int saved = SaveDC(drawing.dc);
    send(drawing.owner, WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&asked));
    RestoreDC(drawing.dc, saved);
}

void fill(HDC dc, const RECT& rect, COLORREF color) {
    const HBRUSH brush = CreateSolidBrush(color);
    FillRect(dc, &rect, brush);
    DeleteObject(brush);
}

void drawLine(const Drawing& drawing) {
    RECT line = drawing.rect;
    line.top += (heightOf(line) - 2) / 2;
    line.left += 1;
    line.right -= 1;
    DrawEdge(drawing.dc, &line, EDGE_ETCHED, BF_TOP);
}

void blitBitmap(HDC dc, int x, int y, HBITMAP bitmap) {
    const SIZE size = bitmapSize(bitmap);
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    BitBlt(dc, x, y, size.cx, size.cy, memory, 0, 0, SRCCOPY);
    SelectObject(memory, former);
    DeleteDC(memory);
}

// Marks are black on white; through a monochrome bitmap they take the item's colours.
void drawMark(const Drawing& drawing, UINT mark, int x) {
    const int width = GetSystemMetrics(SM_CXMENUCHECK);
    const int height = GetSystemMetrics(SM_CYMENUCHECK);
    const HBITMAP bitmap = CreateBitmap(width, height, 1, 1, nullptr);
    const HDC memory = CreateCompatibleDC(drawing.dc);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    RECT whole{0, 0, width, height};
    DrawFrameControl(memory, &whole, DFC_MENU, mark);
    SetTextColor(drawing.dc, drawing.textColor());
    SetBkColor(drawing.dc, drawing.background());
    BitBlt(drawing.dc, x, drawing.rect.top + (heightOf(drawing.rect) - height) / 2, width, height, memory, 0, 0,
           SRCCOPY);
    SelectObject(memory, former);
    DeleteDC(memory);
    DeleteObject(bitmap);
}

void drawCheck(const Drawing& drawing) {
    const MenuItem& item = drawing.item;
    const bool checked = (item.state & MFS_CHECKED) != 0;
    const HBITMAP own = checked ? item.checked : item.unchecked;
    const int x = drawing.rect.left + 1;
    if (own != nullptr) {
        SetTextColor(drawing.dc, drawing.textColor());
        SetBkColor(drawing.dc, drawing.background());
        blitBitmap(drawing.dc, x, drawing.rect.top + (heightOf(drawing.rect) - bitmapSize(own).cy) / 2, own);
    } else if (checked) {
        drawMark(drawing, (item.type & MFT_RADIOCHECK) != 0 ? DFCS_MENUBULLET : DFCS_MENUCHECK, x);
    } else if (item.bitmap != nullptr && item.bitmap != HBMMENU_CALLBACK && (item.type & MFT_BITMAP) == 0) {
        blitBitmap(drawing.dc, x, drawing.rect.top + (heightOf(drawing.rect) - bitmapSize(item.bitmap).cy) / 2,
                   item.bitmap);
    }
}

void drawText(const Drawing& drawing, const std::string& text, RECT rect, UINT flags) {
    if (text.empty())
        return;
    const auto count = static_cast<int>(text.size());
    flags |= DT_SINGLELINE | DT_VCENTER | DT_NOCLIP;
    SetBkMode(drawing.dc, TRANSPARENT);
    if (drawing.item.grayed() && !drawing.highlighted()) {
        RECT light = shifted(rect, 1, 1);
        SetTextColor(drawing.dc, GetSysColor(COLOR_BTNHIGHLIGHT));
        DrawTextA(drawing.dc, text.c_str(), count, &light, flags);
    }
    SetTextColor(drawing.dc, drawing.textColor());
    DrawTextA(drawing.dc, text.c_str(), count, &rect, flags);
}

// The menu font, bold for the default item. The caller deletes what isn't the stock font.
HFONT boldFont() {
    LOGFONTA description{};
    GetObjectA(GetStockObject(DEFAULT_GUI_FONT), sizeof description, &description);
    description.lfWeight = FW_BOLD;
    return CreateFontIndirectA(&description);
}

void drawLabel(const Drawing& drawing) {
    const bool bold = (drawing.item.state & MFS_DEFAULT) != 0;
    const HFONT made = bold ? boldFont() : nullptr;
    const HGDIOBJ former = SelectObject(drawing.dc, made != nullptr ? made : GetStockObject(DEFAULT_GUI_FONT));
    const MenuText text = splitMenuText(drawing.item.text);
    RECT label = drawing.rect;
    if (drawing.bar) {
        drawText(drawing, text.label, label, DT_CENTER);
    } else {
        label.left += checkColumn();
        drawText(drawing, text.label, label, DT_LEFT);
        label.left = drawing.rect.left + drawing.tab;
        drawText(drawing, text.shortcut, label, DT_LEFT | DT_NOPREFIX);
    }
    SelectObject(drawing.dc, former);
    if (made != nullptr)
        DeleteObject(made);
}

void drawContent(const Drawing& drawing) {
    if (drawing.item.separator()) {
        if (!drawing.bar)
            drawLine(drawing);
        return;
    }
    if (!drawing.bar)
        drawCheck(drawing);
    if ((drawing.item.type & MFT_BITMAP) != 0)
        blitBitmap(drawing.dc, drawing.rect.left + (drawing.bar ? barPadding : checkColumn()), drawing.rect.top + 1,
                   drawing.item.bitmap);
    else
        drawLabel(drawing);
    if (!drawing.bar && drawing.item.subMenu != nullptr)
        drawMark(drawing, DFCS_MENUARROW, drawing.rect.right - GetSystemMetrics(SM_CXMENUCHECK) - 1);
}

// A bar's item rises under the pointer and sinks while its menu is open.
void drawBarEdge(const Drawing& drawing) {
    if (!drawing.bar || !drawing.selected)
        return;
    const MenuState* state = menuState();
    const Menu* sub = state != nullptr ? state->menus.find(drawing.item.subMenu) : nullptr;
    RECT edge = drawing.rect;
    DrawEdge(drawing.dc, &edge, sub != nullptr && sub->window != nullptr ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
}

} // namespace

void drawMenuItem(HMENU handle, int position, HDC dc, POINT origin, HWND owner) {
    const Menu* menu = findMenu(handle);
    if (menu == nullptr || position < 0 || static_cast<std::size_t>(position) >= menu->items.size())
        return;
    const MenuItem& item = menu->items[static_cast<std::size_t>(position)];
    const bool selected = menu->selected == position || (!menu->popup && (item.state & MFS_HILITE) != 0);
    const Drawing drawing{
        dc,    shifted(item.rect, origin.x, origin.y),     item, !menu->popup, selected && !item.separator(), handle,
        owner, item.tab - static_cast<int>(item.rect.left)};
    if (drawing.item.ownerDrawn()) {
        drawByOwner(drawing);
        return;
    }
    fill(dc, drawing.rect, drawing.background());
    drawContent(drawing);
    drawBarEdge(drawing);
}

void drawPopup(HMENU handle, HDC dc, HWND owner) {
    const Menu* menu = findMenu(handle);
    if (menu == nullptr)
        return;
    RECT whole{0, 0, menu->size.cx, menu->size.cy};
    fill(dc, whole, GetSysColor(COLOR_MENU));
    DrawEdge(dc, &whole, EDGE_RAISED, BF_RECT);
    for (std::size_t i = 0; const MenuItem* item = itemAt(handle, i); ++i) {
        if (i > 0 && (item->type & MFT_MENUBARBREAK) != 0) {
            RECT line{item->rect.left - columnLine / 2 - 1, popupBorder, item->rect.left, whole.bottom - popupBorder};
            DrawEdge(dc, &line, EDGE_ETCHED, BF_LEFT);
        }
        if (const RECT rect = item->rect; RectVisible(dc, &rect) != FALSE)
            drawMenuItem(handle, static_cast<int>(i), dc, {0, 0}, owner);
    }
}

} // namespace vndk::win32
