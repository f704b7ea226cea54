// How a tab control looks.
#include "controls/tab_control.h"

#include "controls/paint_session.h"
#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/imagelist.h"

namespace vndk::win32 {
namespace {

constexpr int imageGap = 4;
constexpr int selectedRise = 2;

void fill(HDC dc, int left, int top, int right, int bottom, int color) {
    const RECT rect{left, top, right, bottom};
    FillRect(dc, &rect, GetSysColorBrush(color));
}

} // namespace

/// Three sides of a tab with cut corners; the fourth, open one is the display area's.
void TabControl::paintFrame(HDC dc, const RECT& rect, bool selected) const {
    const int l = rect.left;
    const int r = rect.right;
    // A selected tab covers the border of the display area below it.
    const int t = atBottom() && selected ? rect.top - selectedRise : rect.top;
    const int b = !atBottom() && selected ? rect.bottom + selectedRise : rect.bottom;
    if (atBottom()) {
        fill(dc, l, t, r, b - 2, COLOR_3DFACE);
        fill(dc, l + 2, b - 2, r - 2, b, COLOR_3DFACE);
        fill(dc, l, t, l + 1, b - 2, COLOR_3DHILIGHT);
        fill(dc, l + 1, t, l + 2, b - 1, COLOR_3DLIGHT);
        fill(dc, l + 2, b - 2, r - 2, b - 1, COLOR_3DSHADOW);
        fill(dc, l + 2, b - 1, r - 2, b, COLOR_3DDKSHADOW);
        fill(dc, r - 2, t, r - 1, b - 2, COLOR_3DSHADOW);
        fill(dc, r - 1, t, r, b - 2, COLOR_3DDKSHADOW);
        fill(dc, r - 2, b - 2, r - 1, b - 1, COLOR_3DDKSHADOW);
        return;
    }
    fill(dc, l, t + 2, r, b, COLOR_3DFACE);
    fill(dc, l + 2, t, r - 2, t + 2, COLOR_3DFACE);
    fill(dc, l, t + 2, l + 1, b, COLOR_3DHILIGHT);
    fill(dc, l + 1, t + 1, l + 2, t + 2, COLOR_3DHILIGHT);
    fill(dc, l + 2, t, r - 2, t + 1, COLOR_3DHILIGHT);
    fill(dc, l + 1, t + 2, l + 2, b, COLOR_3DLIGHT);
    fill(dc, l + 2, t + 1, r - 2, t + 2, COLOR_3DLIGHT);
    fill(dc, r - 2, t + 2, r - 1, b, COLOR_3DSHADOW);
    fill(dc, r - 1, t + 2, r, b, COLOR_3DDKSHADOW);
    fill(dc, r - 2, t + 1, r - 1, t + 2, COLOR_3DDKSHADOW);
}

void TabControl::paintButtonFrame(HDC dc, const RECT& rect, int index) const {
    RECT inside = rect;
    const bool down = index == selected_ || (index == pressed_ && pressedOver_) ||
                      (items_[static_cast<std::size_t>(index)].state & TCIS_BUTTONPRESSED) != 0;
    fill(dc, rect.left, rect.top, rect.right, rect.bottom, down && index == selected_ ? COLOR_3DHILIGHT : COLOR_3DFACE);
    if (down)
        DrawEdge(dc, &inside, EDGE_SUNKEN, BF_SOFT | BF_RECT);
    else if (!hasStyle(TCS_FLATBUTTONS))
        DrawEdge(dc, &inside, EDGE_RAISED, BF_SOFT | BF_RECT);
}

void TabControl::paintContent(HDC dc, RECT rect, int index) {
    const Item item = items_[static_cast<std::size_t>(index)];
    if (hasStyle(TCS_OWNERDRAWFIXED)) {
        DRAWITEMSTRUCT draw{};
        draw.CtlType = ODT_TAB;
        draw.CtlID = static_cast<UINT>(id());
        draw.itemID = static_cast<UINT>(index);
        draw.itemAction = ODA_DRAWENTIRE;
        draw.itemState = (index == selected_ ? ODS_SELECTED : 0) | (index == focus_ && focused() ? ODS_FOCUS : 0);
        draw.hwndItem = window();
        draw.hDC = dc;
        draw.rcItem = rect;
        draw.itemData = static_cast<ULONG_PTR>(item.parameter);
        SendMessageA(GetParent(window()), WM_DRAWITEM, draw.CtlID, reinterpret_cast<LPARAM>(&draw));
        return;
    }
    RECT text{};
    DrawTextA(dc, item.text.c_str(), -1, &text, DT_SINGLELINE | DT_CALCRECT);
    int imageWidth = 0;
    int imageHeight = 0;
    const bool image =
        images_ != nullptr && item.image >= 0 && ImageList_GetIconSize(images_, &imageWidth, &imageHeight) != FALSE;
    const int content = text.right + (image ? imageWidth + (item.text.empty() ? 0 : imageGap) : 0);
    int x = rect.left + (rect.right - rect.left - content) / 2;
    if (hasStyle(TCS_FORCELABELLEFT) || content > rect.right - rect.left)
        x = rect.left + static_cast<int>(padding_.cx);
    if (image) {
        const bool left = hasStyle(TCS_FORCEICONLEFT) || hasStyle(TCS_FORCELABELLEFT);
        const int imageX = left ? rect.left + static_cast<int>(padding_.cx) : x;
        ImageList_Draw(images_, item.image, dc, imageX, rect.top + (rect.bottom - rect.top - imageHeight) / 2,
                       ILD_TRANSPARENT);
        x += imageWidth + imageGap;
    }
    RECT place{x, rect.top, rect.right - 2, rect.bottom};
    const bool highlighted = (item.state & TCIS_HIGHLIGHTED) != 0;
    SetTextColor(
        dc, GetSysColor(enabled() ? (highlighted || index == hot_ ? COLOR_HIGHLIGHT : COLOR_BTNTEXT) : COLOR_GRAYTEXT));
    DrawTextA(dc, item.text.c_str(), -1, &place, DT_SINGLELINE | DT_VCENTER);
}

void TabControl::paintItem(HDC dc, int index) {
    RECT rect = itemRect(index);
    const bool selected = index == selected_;
    if (buttons()) {
        paintButtonFrame(dc, rect, index);
        if (selected || (index == pressed_ && pressedOver_))
            OffsetRect(&rect, 1, 1);
    } else if (selected) {
        RECT risen = rect;
        InflateRect(&risen, selectedRise, 0);
        if (atBottom())
            risen.bottom += selectedRise;
        else
            risen.top -= selectedRise;
        paintFrame(dc, risen, true);
        OffsetRect(&rect, 0, atBottom() ? 1 : -1);
    } else {
        paintFrame(dc, rect, false);
    }
    const SavedContext saved(dc);
    paintContent(dc, rect, index);
    if (alive() && index == focus_ && focused() && !hasStyle(TCS_OWNERDRAWFIXED)) {
        RECT ring = rect;
        InflateRect(&ring, -3, -2);
        SetTextColor(dc, RGB(0, 0, 0));
        SetBkColor(dc, RGB(255, 255, 255));
        DrawFocusRect(dc, &ring);
    }
}

void TabControl::paintArrows(HDC dc) const {
    for (const bool right : {false, true}) {
        RECT rect = arrowRect(right);
        const bool usable = right ? itemRect(count() - 1).right > arrowRect(false).left : first_ > 0;
        DrawFrameControl(dc, &rect, DFC_SCROLL,
                         (right ? DFCS_SCROLLRIGHT : DFCS_SCROLLLEFT) | (usable ? 0 : DFCS_INACTIVE));
    }
}

void TabControl::paint(HDC given) {
    const PaintSession session(window(), given);
    const HDC dc = session.dc();
    const RECT client = clientRect();
    FillRect(dc, &client, GetSysColorBrush(COLOR_3DFACE));
    const SavedContext saved(dc);
    SelectObject(dc, font_ != nullptr ? font_ : GetStockObject(SYSTEM_FONT));
    SetBkMode(dc, TRANSPARENT);
    if (!buttons()) {
        RECT body = bodyRect();
        DrawEdge(dc, &body, EDGE_RAISED, BF_SOFT | BF_RECT);
    }
    for (int index = count() - 1; index >= (scrolls() ? first_ : 0) && alive(); --index)
        if (index != selected_)
            paintItem(dc, index);
    if (alive() && valid(selected_) && (!scrolls() || selected_ >= first_))
        paintItem(dc, selected_);
    if (alive() && scrolls())
        paintArrows(dc);
}

} // namespace vndk::win32
