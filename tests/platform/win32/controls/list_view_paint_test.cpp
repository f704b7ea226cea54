// What the list view paints, and whom it asks.
#include "list_view_fixture.h"

#include "win32/draw.h"

namespace vndk::test {
namespace {

class ListViewPaintTest : public ListViewFixture {
protected:
    /// Of a point in the list's client area.
    [[nodiscard]] std::uint32_t at(int x, int y) {
        const POINT point = onScreen(list, x, y);
        return pixel(point.x, point.y);
    }
    /// How many pixels of a rectangle have a colour.
    [[nodiscard]] int count(const RECT& rect, COLORREF color) {
        int found = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                found += at(x, y) == rgbOf(color) ? 1 : 0;
        return found;
    }
    void makeReport(DWORD style = 0) {
        makeList(LVS_REPORT | style, 300, 150);
        addColumn(100);
        addColumn(80);
        fill(3);
    }
};

TEST_F(ListViewPaintTest, TheGroundIsTheParentsOnlyWithoutAColourOfItsOwn) {
    makeReport();
    const HDC dc = GetDC(list);
    const struct {
        COLORREF color;
        int forwarded;
    } rows[] = {{CLR_NONE, 1}, {CLR_DEFAULT, 0}, {RGB(1, 2, 3), 0}};
    for (const auto& row : rows) {
        EXPECT_TRUE(send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(row.color)));
        recorder.clear();
        EXPECT_EQ(send(WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc)), 1);
        EXPECT_EQ(recorder.count(WM_ERASEBKGND, owner), row.forwarded) << row.color;
    }
    ReleaseDC(list, dc);
    EXPECT_EQ(static_cast<COLORREF>(send(LVM_GETBKCOLOR)), RGB(1, 2, 3));
}

TEST_F(ListViewPaintTest, ColoursAreKeptAndShown) {
    makeReport();
    const COLORREF back = RGB(10, 60, 110);
    const COLORREF fore = RGB(250, 240, 10);
    send(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(back));
    send(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(fore));
    send(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(CLR_NONE));
    EXPECT_EQ(static_cast<COLORREF>(send(LVM_GETTEXTCOLOR)), fore);
    EXPECT_EQ(static_cast<COLORREF>(send(LVM_GETTEXTBKCOLOR)), CLR_NONE);
    settle();
    EXPECT_EQ(at(150, 100), rgbOf(back));
    EXPECT_GT(count({0, 17, 100, 31}, fore), 20);
}

TEST_F(ListViewPaintTest, TheSelectionIsShownByFocusAndStyle) {
    for (const DWORD style : {DWORD{0}, LVS_SHOWSELALWAYS}) {
        makeReport(style);
        select(1, LVIS_SELECTED);
        SetFocus(list);
        settle();
        const RECT label{0, 31, 100, 45};
        const int highlighted = count(label, GetSysColor(COLOR_HIGHLIGHT));
        EXPECT_GT(highlighted, 200);
        EXPECT_LT(highlighted, 90 * 14) << "as wide as the text";
        SetFocus(owner);
        settle();
        EXPECT_EQ(count(label, GetSysColor(COLOR_HIGHLIGHT)), 0);
        EXPECT_EQ(count(label, GetSysColor(COLOR_BTNFACE)) > 200, style == LVS_SHOWSELALWAYS);
    }
    makeReport(LVS_SHOWSELALWAYS);
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    select(1, LVIS_SELECTED);
    settle();
    EXPECT_EQ(at(170, 38), rgbOf(GetSysColor(COLOR_BTNFACE))) << "the whole row";
}

TEST_F(ListViewPaintTest, GridLinesStandBetweenRowsAndColumns) {
    makeReport();
    ListView_SetExtendedListViewStyle(list, LVS_EX_GRIDLINES);
    settle();
    const std::uint32_t line = rgbOf(GetSysColor(COLOR_3DFACE));
    EXPECT_EQ(at(90, 30), line);
    EXPECT_EQ(at(200, 30), line) << "also right of the columns";
    EXPECT_EQ(at(99, 24), line);
    EXPECT_EQ(at(179, 100), line) << "also below the rows";
    EXPECT_NE(at(98, 24), line);
    EXPECT_NE(at(90, 29), line);
}

TEST_F(ListViewPaintTest, PicturesStandWhereTheRectanglesSay) {
    const COLORREF colors[] = {RGB(255, 0, 0), RGB(0, 255, 0)};
    makeReport();
    ListView_SetExtendedListViewStyle(list, LVS_EX_SUBITEMIMAGES);
    ListView_SetImageList(list, images(16, {colors[0], colors[1]}), LVSIL_SMALL);
    LVITEM sub{};
    sub.mask = LVIF_IMAGE;
    sub.iItem = 0;
    sub.iSubItem = 1;
    sub.iImage = 1;
    ListView_SetItem(list, &sub);
    settle();
    EXPECT_EQ(at(2, 17), rgbOf(colors[0]));
    EXPECT_EQ(at(17, 32), rgbOf(colors[0]));
    EXPECT_NE(at(1, 20), rgbOf(colors[0]));
    EXPECT_EQ(at(110, 25), rgbOf(colors[1]));
    EXPECT_NE(at(110, 42), rgbOf(colors[1])) << "a sub-item without a picture";
    makeList(LVS_ICON);
    ListView_SetImageList(list, images(32, {colors[0], colors[1]}), LVSIL_NORMAL);
    fill(1);
    POINT place{};
    send(LVM_GETITEMPOSITION, 0, reinterpret_cast<LPARAM>(&place));
    EXPECT_EQ(at(place.x, place.y), rgbOf(colors[0]));
    EXPECT_EQ(at(place.x + 31, place.y + 31), rgbOf(colors[0]));
    EXPECT_NE(at(place.x + 32, place.y), rgbOf(colors[0]));
}

TEST_F(ListViewPaintTest, LabelsUnderIconsWrapAndTheFocusedOneIsWhole) {
    makeList(LVS_ICON | LVS_AUTOARRANGE);
    send(LVM_SETICONSPACING, 0, MAKELPARAM(60, 60));
    insert("one", 0);
    insert("several words that need lines", 1);
    SetFocus(list);
    settle();
    const auto height = [this](int index) {
        const std::vector<int> label = rect(index, LVIR_LABEL);
        EXPECT_LE(label[2] - label[0], 60);
        return label[3] - label[1];
    };
    EXPECT_EQ(height(0), 13);
    EXPECT_EQ(height(1), 26);
    select(1);
    EXPECT_GE(height(1), 39);
    SetWindowLong(list, GWL_STYLE, GetWindowLong(list, GWL_STYLE) | LVS_NOLABELWRAP);
    const std::vector<int> label = rect(1, LVIR_LABEL);
    EXPECT_EQ(label[3] - label[1], 13);
    EXPECT_GT(label[2] - label[0], 100);
}

TEST_F(ListViewPaintTest, CustomDrawingGoesFromListToItemsToSubItems) {
    makeReport();
    ListView_DeleteItem(list, 2);
    ListView_DeleteItem(list, 1);
    settle();
    Lines stages;
    const COLORREF back = RGB(200, 100, 50);
    onNotify[NM_CUSTOMDRAW] = [&](NMHDR& header) -> LRESULT {
        auto& draw = reinterpret_cast<NMLVCUSTOMDRAW&>(header);
        switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            stages.push_back("list");
            return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
        case CDDS_ITEMPREPAINT:
            stages.push_back("item " + std::to_string(draw.nmcd.dwItemSpec));
            draw.clrTextBk = back;
            return CDRF_NOTIFYSUBITEMDRAW | CDRF_NOTIFYPOSTPAINT;
        case CDDS_ITEMPREPAINT | CDDS_SUBITEM:
            stages.push_back("sub " + std::to_string(draw.iSubItem));
            EXPECT_EQ(draw.clrTextBk, back) << "the item's colour goes on";
            return draw.iSubItem == 1 ? CDRF_SKIPDEFAULT : CDRF_DODEFAULT;
        case CDDS_ITEMPOSTPAINT:
            stages.push_back("after item");
            return 0;
        case CDDS_POSTPAINT:
            stages.push_back("after list");
            return 0;
        default:
            stages.push_back("?");
            return 0;
        }
    };
    InvalidateRect(list, nullptr, TRUE);
    settle();
    EXPECT_EQ(stages, (Lines{"list", "item 0", "sub 0", "sub 1", "after item", "after list"}));
    EXPECT_EQ(at(90, 24), rgbOf(back));
    EXPECT_NE(at(150, 24), rgbOf(back)) << "the handler has drawn this one itself";
}

TEST_F(ListViewPaintTest, OwnersMeasureAndDrawRows) {
    recorder.onMessage(WM_MEASUREITEM, [](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        auto& measured = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        EXPECT_EQ(measured.CtlType, ODT_LISTVIEW);
        measured.itemHeight = 30;
        return TRUE;
    });
    std::vector<UINT> drawn;
    recorder.onMessage(WM_DRAWITEM, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& draw = *reinterpret_cast<DRAWITEMSTRUCT*>(lParam);
        EXPECT_EQ(wParam, static_cast<WPARAM>(controlId));
        EXPECT_EQ(draw.CtlType, ODT_LISTVIEW);
        EXPECT_EQ(draw.rcItem.bottom - draw.rcItem.top, 30);
        EXPECT_EQ(draw.itemData, draw.itemID);
        FillRect(draw.hDC, &draw.rcItem, GetSysColorBrush(COLOR_DESKTOP));
        drawn.push_back(draw.itemID);
        return TRUE;
    });
    makeReport(LVS_OWNERDRAWFIXED);
    EXPECT_EQ(rect(1, LVIR_BOUNDS)[1], 17 + 30);
    EXPECT_EQ(drawn, (std::vector<UINT>{0, 1, 2}));
    EXPECT_EQ(at(50, 60), rgbOf(GetSysColor(COLOR_DESKTOP)));
    drawn.clear();
    select(1, LVIS_SELECTED);
    settle();
    EXPECT_EQ(drawn, std::vector<UINT>{1}) << "only what changes is painted";
}

TEST_F(ListViewPaintTest, ScrollingPaintsOnlyWhatComesIn) {
    makeReport();
    fill(50);
    std::vector<DWORD_PTR> drawn;
    onNotify[NM_CUSTOMDRAW] = [&](NMHDR& header) -> LRESULT {
        auto& draw = reinterpret_cast<NMCUSTOMDRAW&>(header);
        if (draw.dwDrawStage == CDDS_ITEMPREPAINT)
            drawn.push_back(draw.dwItemSpec);
        return CDRF_NOTIFYITEMDRAW;
    };
    settle();
    drawn.clear();
    send(LVM_SCROLL, 0, 14);
    settle();
    EXPECT_LE(drawn.size(), 3U);
    EXPECT_GE(drawn.size(), 1U);
}

TEST_F(ListViewPaintTest, RedrawingIsSwitchedOffWithoutHidingOrShowing) {
    makeReport();
    const std::uint32_t ground = at(5, 25);
    send(WM_SETREDRAW, FALSE);
    EXPECT_TRUE(IsWindowVisible(list));
    send(LVM_SETBKCOLOR, 0, RGB(1, 2, 3));
    fill(3);
    InvalidateRect(list, nullptr, TRUE);
    settle();
    EXPECT_EQ(at(5, 140), ground);
    send(WM_SETREDRAW, TRUE);
    settle();
    EXPECT_EQ(at(5, 140), rgbOf(RGB(1, 2, 3)));
    ShowWindow(list, SW_HIDE);
    send(WM_SETREDRAW, FALSE);
    send(WM_SETREDRAW, TRUE);
    EXPECT_FALSE(IsWindowVisible(list)) << "a hidden list stays hidden";
}

} // namespace
} // namespace vndk::test
