// Where the list view puts items, columns and icons, and how it scrolls. The default font has cells of 6 x 13 pixels
// on the average and 6 wide digits, so a row without pictures is 14 high, and the header 17.
#include "list_view_fixture.h"

#include "win32/metrics.h"
#include "win32/scrollbar.h"

namespace vndk::test {
namespace {

using Numbers = std::vector<int>;

class ListViewLayoutTest : public ListViewFixture {
protected:
    [[nodiscard]] POINT position(int index) {
        POINT found{-1000, -1000};
        send(LVM_GETITEMPOSITION, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&found));
        return found;
    }
    [[nodiscard]] POINT origin() {
        POINT found{-1, -1};
        EXPECT_TRUE(send(LVM_GETORIGIN, 0, reinterpret_cast<LPARAM>(&found)));
        return found;
    }
};

TEST_F(ListViewLayoutTest, AReportRowHasMarginStatePictureAndLabel) {
    makeList(LVS_REPORT);
    fill(1);
    EXPECT_EQ(rect(0, LVIR_BOUNDS), (Numbers{0, 17, 0, 31})) << "without columns a row has no width";
    addColumn(50);
    addColumn(100);
    EXPECT_EQ(rect(0, LVIR_BOUNDS), (Numbers{0, 17, 150, 31}));
    EXPECT_EQ(rect(0, LVIR_SELECTBOUNDS), (Numbers{2, 17, 50, 31}));
    EXPECT_EQ(rect(0, LVIR_ICON), (Numbers{2, 17, 2, 31}));
    EXPECT_EQ(position(0).x, 2);
    EXPECT_EQ(position(0).y, 17);
    const int order[] = {1, 0};
    EXPECT_TRUE(send(LVM_SETCOLUMNORDERARRAY, 2, reinterpret_cast<LPARAM>(order)));
    EXPECT_EQ(rect(0, LVIR_LABEL), (Numbers{102, 17, 150, 31}));
    EXPECT_EQ(rect(0, LVIR_BOUNDS), (Numbers{0, 17, 150, 31}));
    const int back[] = {0, 1};
    send(LVM_SETCOLUMNORDERARRAY, 2, reinterpret_cast<LPARAM>(back));
    ListView_SetImageList(list, images(16, {0, 0}), LVSIL_STATE);
    EXPECT_EQ(rect(0, LVIR_SELECTBOUNDS), (Numbers{18, 17, 50, 34})) << "after the state picture";
    ListView_SetImageList(list, images(16, {0}), LVSIL_SMALL);
    EXPECT_EQ(rect(0, LVIR_ICON), (Numbers{18, 17, 34, 34}));
    LVITEM indented{};
    indented.mask = LVIF_INDENT;
    indented.iIndent = 1;
    ListView_SetItem(list, &indented);
    EXPECT_EQ(rect(0, LVIR_ICON), (Numbers{34, 17, 50, 34}));
    EXPECT_EQ(rect(1, LVIR_BOUNDS), Numbers{});
    EXPECT_EQ(rect(0, 9), Numbers{});
}

TEST_F(ListViewLayoutTest, SubItemsAndHeaderItemsHaveRectangles) {
    makeList(LVS_REPORT);
    for (const int width : {100, 150, 200})
        addColumn(width);
    EXPECT_EQ(subRect(-1, 1, LVIR_BOUNDS), (Numbers{100, 0, 250, 17}));
    EXPECT_EQ(subRect(-1, 2, LVIR_BOUNDS), (Numbers{250, 0, 450, 17}));
    EXPECT_EQ(subRect(-1, 0, LVIR_BOUNDS), Numbers{});
    fill(1);
    EXPECT_EQ(subRect(0, 1, LVIR_BOUNDS), (Numbers{100, 17, 250, 31}));
    EXPECT_EQ(subRect(0, 1, LVIR_ICON), (Numbers{100, 17, 100, 31}));
    EXPECT_EQ(subRect(0, 1, LVIR_LABEL), (Numbers{100, 17, 250, 31}));
    EXPECT_EQ(subRect(0, 3, LVIR_BOUNDS), Numbers{});
    EXPECT_EQ(subRect(0, -1, LVIR_BOUNDS), Numbers{});
    EXPECT_EQ(subRect(-2, 1, LVIR_BOUNDS), Numbers{});
    send(LVM_SCROLL, 10);
    EXPECT_EQ(subRect(0, 1, LVIR_LABEL), (Numbers{90, 17, 240, 31}));
    for (const DWORD style : {LVS_ICON, LVS_SMALLICON, LVS_LIST}) {
        makeList(style);
        fill(1);
        RECT untouched{LVIR_BOUNDS, 0, -1, -1};
        EXPECT_FALSE(send(LVM_GETSUBITEMRECT, 0, reinterpret_cast<LPARAM>(&untouched)));
        EXPECT_EQ(untouched.right, -1);
    }
}

TEST_F(ListViewLayoutTest, PointsHitItemsAndSubItems) {
    makeList(LVS_REPORT);
    addColumn(100);
    addColumn(150);
    fill(1);
    const struct {
        POINT point;
        bool sub;
        int item;
        int subItem;
        UINT flags;
    } rows[] = {
        {{120, 24}, true, 0, 1, LVHT_ONITEMLABEL},
        {{50, 24}, true, 0, 0, LVHT_ONITEMLABEL},
        {{50, 100}, true, -1, -1, LVHT_NOWHERE},
        {{260, 24}, true, -1, -1, LVHT_NOWHERE},
        {{8, 24}, false, 0, 0, LVHT_ONITEMLABEL},
        {{90, 24}, false, -1, 0, LVHT_NOWHERE},
        {{120, 24}, false, -1, 0, LVHT_NOWHERE},
        {{-5, 24}, false, -1, 0, LVHT_TOLEFT},
        {{500, -5}, false, -1, 0, LVHT_TORIGHT | LVHT_ABOVE},
        {{5, 500}, false, -1, 0, LVHT_BELOW},
    };
    for (const auto& row : rows) {
        LVHITTESTINFO info{};
        info.pt = row.point;
        const int found = row.sub ? ListView_SubItemHitTest(list, &info) : ListView_HitTest(list, &info);
        EXPECT_EQ(found, row.item) << row.point.x << "," << row.point.y;
        EXPECT_EQ(info.iItem, row.item);
        EXPECT_EQ(info.flags, row.flags) << row.point.x << "," << row.point.y;
        if (row.sub) {
            EXPECT_EQ(info.iSubItem, row.subItem) << row.point.x;
        }
    }
    ListView_SetExtendedListViewStyle(list, LVS_EX_FULLROWSELECT);
    LVHITTESTINFO info{};
    info.pt = {120, 24};
    EXPECT_EQ(ListView_HitTest(list, &info), 0) << "all of the row selects";
}

TEST_F(ListViewLayoutTest, TheHeaderComesWithReportViewOrAColumnAndStays) {
    for (const DWORD style : {LVS_ICON, LVS_LIST, LVS_SMALLICON}) {
        makeList(style);
        EXPECT_EQ(ListView_GetHeader(list), nullptr);
        addColumn(50);
        const HWND header = ListView_GetHeader(list);
        ASSERT_NE(header, nullptr);
        EXPECT_FALSE(IsWindowVisible(header));
        SetWindowLong(list, GWL_STYLE, static_cast<LONG>(WS_CHILD | WS_VISIBLE | LVS_REPORT));
        EXPECT_TRUE(IsWindowVisible(header));
        SetWindowLong(list, GWL_STYLE, static_cast<LONG>(WS_CHILD | WS_VISIBLE | LVS_ICON));
        EXPECT_EQ(ListView_GetHeader(list), header);
    }
    makeList(LVS_REPORT);
    EXPECT_NE(ListView_GetHeader(list), nullptr);
    EXPECT_TRUE((GetWindowLong(ListView_GetHeader(list), GWL_STYLE) & HDS_BUTTONS) != 0);
    makeList(LVS_REPORT | LVS_NOSORTHEADER | LVS_NOCOLUMNHEADER);
    EXPECT_TRUE((GetWindowLong(ListView_GetHeader(list), GWL_STYLE) & HDS_BUTTONS) == 0);
    fill(1);
    EXPECT_EQ(rect(0, LVIR_BOUNDS)[1], 0);
}

TEST_F(ListViewLayoutTest, ColumnsComeAndGoWithTheirTexts) {
    makeList(LVS_REPORT);
    LVCOLUMN column{};
    EXPECT_EQ(ListView_InsertColumn(list, 0, &column), 0);
    EXPECT_EQ(send(LVM_GETCOLUMNWIDTH, 0), 10) << "the width of a column that was given none";
    addColumn(100, LVCFMT_RIGHT, "second");
    addColumn(120, LVCFMT_CENTER, "third");
    fill(1);
    for (const int subItem : {1, 2}) {
        std::string value = "sub " + std::to_string(subItem);
        ListView_SetItemText(list, 0, subItem, value.data());
    }
    char buffer[20] = "";
    column.mask = LVCF_FMT | LVCF_TEXT | LVCF_WIDTH | LVCF_ORDER;
    column.pszText = buffer;
    column.cchTextMax = 20;
    EXPECT_TRUE(send(LVM_GETCOLUMN, 1, reinterpret_cast<LPARAM>(&column)));
    EXPECT_STREQ(buffer, "second");
    EXPECT_EQ(column.fmt, LVCFMT_RIGHT);
    EXPECT_EQ(column.cx, 100);
    EXPECT_EQ(column.iOrder, 1);
    EXPECT_TRUE(send(LVM_DELETECOLUMN, 1));
    EXPECT_EQ(text(0, 1), "sub 2") << "texts move with their column";
    column.mask = LVCF_WIDTH | LVCF_FMT;
    column.fmt = LVCFMT_RIGHT;
    column.cx = 30;
    EXPECT_EQ(ListView_InsertColumn(list, 1, &column), 1);
    EXPECT_EQ(text(0, 1), "");
    EXPECT_EQ(text(0, 2), "sub 2");
    EXPECT_EQ(ListView_InsertColumn(list, 0, &column), 0);
    EXPECT_TRUE(send(LVM_GETCOLUMN, 0, reinterpret_cast<LPARAM>(&column)));
    EXPECT_EQ(column.fmt, LVCFMT_LEFT) << "the first column is aligned to the left";
    EXPECT_EQ(text(0, 0), "item 0");
    EXPECT_FALSE(send(LVM_DELETECOLUMN, static_cast<WPARAM>(-1)));
    EXPECT_FALSE(send(LVM_DELETECOLUMN, 9));
}

TEST_F(ListViewLayoutTest, ColumnWidthsFitTextsAndHeader) {
    makeList(LVS_REPORT);
    addColumn(10, LVCFMT_LEFT, "a much longer header than its texts");
    addColumn(10, LVCFMT_LEFT, "x");
    insert("000000", 0);
    EXPECT_TRUE(send(LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE));
    EXPECT_EQ(send(LVM_GETCOLUMNWIDTH, 0), 6 * 6 + 12);
    EXPECT_TRUE(send(LVM_SETCOLUMNWIDTH, 0, LVSCW_AUTOSIZE_USEHEADER));
    EXPECT_GT(send(LVM_GETCOLUMNWIDTH, 0), 100);
    EXPECT_TRUE(send(LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(60, 0)));
    EXPECT_TRUE(send(LVM_SETCOLUMNWIDTH, 1, LVSCW_AUTOSIZE_USEHEADER));
    EXPECT_EQ(send(LVM_GETCOLUMNWIDTH, 1), 300 - 60) << "the last one takes what is left";
    EXPECT_FALSE(send(LVM_SETCOLUMNWIDTH, 2, MAKELPARAM(60, 0)));
    EXPECT_FALSE(send(LVM_SETCOLUMNWIDTH, 0, -3));
}

TEST_F(ListViewLayoutTest, IconSpacingTakesAxesOneByOne) {
    makeList(LVS_ICON);
    const int cx = GetSystemMetrics(SM_CXICONSPACING) - GetSystemMetrics(SM_CXICON);
    const int cy = GetSystemMetrics(SM_CYICONSPACING) - GetSystemMetrics(SM_CYICON);
    EXPECT_EQ(send(LVM_GETITEMSPACING), MAKELRESULT(cx, cy));
    ListView_SetImageList(list, images(40, {0}), LVSIL_NORMAL);
    const LRESULT system = MAKELRESULT(cx + 40, cy + 40);
    const struct {
        int x, y;
        LRESULT after;
    } rows[] = {{100, 50, MAKELRESULT(100, 50)},
                {0, 60, MAKELRESULT(100, 60)},
                {20, 30, MAKELRESULT(20, 30)},
                {-1, -1, system}};
    LRESULT former = system;
    for (const auto& row : rows) {
        EXPECT_EQ(send(LVM_SETICONSPACING, 0, MAKELPARAM(row.x, row.y)), former) << row.x << "," << row.y;
        EXPECT_EQ(send(LVM_GETITEMSPACING), row.after) << row.x << "," << row.y;
        former = row.after;
    }
}

TEST_F(ListViewLayoutTest, IconsFillTheWidthRowByRow) {
    for (const DWORD arrange : {LVS_ICON, LVS_AUTOARRANGE}) {
        makeList(LVS_ICON | arrange, 120, 300);
        ListView_SetImageList(list, images(32, {0}), LVSIL_NORMAL);
        send(LVM_SETICONSPACING, 0, MAKELPARAM(52, 64));
        fill(5);
        for (int index = 0; index < 5; ++index) {
            EXPECT_EQ(position(index).x, 10 + index % 2 * 52) << index;
            EXPECT_EQ(position(index).y, 2 + index / 2 * 64) << index;
        }
        ListView_DeleteItem(list, 1);
        EXPECT_EQ(position(1).y, arrange == LVS_AUTOARRANGE ? 2 : 66) << "icons close up only when they are arranged";
        insert("new", 99);
        EXPECT_EQ(position(4).x, arrange == LVS_AUTOARRANGE ? 10 : 62) << "the free place is taken";
        ListView_DeleteAllItems(list);
        fill(1);
        EXPECT_EQ(position(0).x, 10) << "all places are free again";
        EXPECT_EQ(position(0).y, 2);
        DestroyWindow(list);
    }
}

TEST_F(ListViewLayoutTest, IconsStandWhereTheyArePutAndAreArrangedOnDemand) {
    makeList(LVS_ICON, 200, 200);
    fill(2);
    EXPECT_TRUE(send(LVM_SETITEMPOSITION, 1, MAKELPARAM(10, 5)));
    EXPECT_EQ(position(1).x, 10);
    EXPECT_EQ(position(1).y, 5);
    POINT far{100, 150};
    EXPECT_TRUE(send(LVM_SETITEMPOSITION32, 0, reinterpret_cast<LPARAM>(&far)));
    EXPECT_EQ(position(0).y, 150);
    EXPECT_FALSE(send(LVM_SETITEMPOSITION, 2, 0));
    EXPECT_TRUE(send(LVM_ARRANGE, LVA_DEFAULT));
    EXPECT_EQ(position(1).y, 2) << "the upper one comes first";
    EXPECT_GT(position(0).x, position(1).x);
    makeList(LVS_REPORT);
    fill(1);
    EXPECT_FALSE(send(LVM_SETITEMPOSITION, 0, 0));
    EXPECT_FALSE(send(LVM_ARRANGE));
}

TEST_F(ListViewLayoutTest, IconViewsScrollByPixels) {
    makeList(LVS_ICON, 100, 100);
    fill(10);
    EXPECT_EQ(origin().y, 0);
    EXPECT_TRUE(send(LVM_SCROLL, 0, 50));
    EXPECT_EQ(origin().x, 0);
    EXPECT_EQ(origin().y, 50);
    const int shown = rect(9, LVIR_BOUNDS)[1];
    EXPECT_TRUE(ListView_EnsureVisible(list, 9, FALSE));
    EXPECT_GT(origin().y, 50);
    EXPECT_LT(rect(9, LVIR_BOUNDS)[1], shown);
    POINT point{};
    for (const DWORD style : {LVS_REPORT, LVS_LIST}) {
        makeList(style);
        EXPECT_FALSE(send(LVM_GETORIGIN, 0, reinterpret_cast<LPARAM>(&point)));
    }
}

TEST_F(ListViewLayoutTest, ReportViewScrollsByRowsAndShowsItsBarsWhenNeeded) {
    makeList(LVS_REPORT, 200, 17 + 10 * 14);
    addColumn(150);
    fill(10);
    EXPECT_EQ(send(LVM_GETCOUNTPERPAGE), 10);
    EXPECT_TRUE((GetWindowLong(list, GWL_STYLE) & WS_VSCROLL) == 0);
    fill(10);
    EXPECT_TRUE((GetWindowLong(list, GWL_STYLE) & WS_VSCROLL) != 0);
    SCROLLINFO info{sizeof(SCROLLINFO), SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_TRUE(GetScrollInfo(list, SB_VERT, &info));
    EXPECT_EQ(info.nMax, 19);
    EXPECT_EQ(info.nPage, 10U);
    EXPECT_TRUE(ListView_EnsureVisible(list, 12, FALSE));
    EXPECT_EQ(send(LVM_GETTOPINDEX), 3);
    EXPECT_TRUE(ListView_EnsureVisible(list, 5, FALSE));
    EXPECT_EQ(send(LVM_GETTOPINDEX), 3) << "it is in view already";
    send(LVM_SCROLL, 0, 20);
    EXPECT_EQ(send(LVM_GETTOPINDEX), 4) << "to the nearest row";
    send(LVM_SCROLL, 0, 10'000);
    EXPECT_EQ(send(LVM_GETTOPINDEX), 10);
    EXPECT_FALSE(ListView_EnsureVisible(list, 20, FALSE));
    for (int index = 0; index < 10; ++index)
        ListView_DeleteItem(list, 0);
    EXPECT_EQ(send(LVM_GETTOPINDEX), 0);
    EXPECT_TRUE((GetWindowLong(list, GWL_STYLE) & WS_VSCROLL) == 0);
    addColumn(150);
    EXPECT_TRUE((GetWindowLong(list, GWL_STYLE) & WS_HSCROLL) != 0);
}

TEST_F(ListViewLayoutTest, ListViewFillsColumnsAsWideAsItsTexts) {
    makeList(LVS_LIST, 300, 5 * 14 + GetSystemMetrics(SM_CYHSCROLL));
    EXPECT_EQ(send(LVM_GETCOLUMNWIDTH, 0), 96);
    fill(12);
    EXPECT_EQ(rect(0, LVIR_BOUNDS), (Numbers{0, 0, 96, 14}));
    const int rows = static_cast<int>(clientRect(list).bottom) / 14;
    EXPECT_EQ(rect(rows, LVIR_BOUNDS)[0], 96);
    EXPECT_EQ(rect(rows, LVIR_BOUNDS)[1], 0);
    EXPECT_TRUE(send(LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(50, 0)));
    EXPECT_EQ(rect(rows, LVIR_BOUNDS)[0], 50);
    makeList(LVS_LIST);
    insert(std::string(40, '0'), 0);
    EXPECT_GT(send(LVM_GETCOLUMNWIDTH, 0), 240);
}

TEST_F(ListViewLayoutTest, TheLastOfVeryManyRowsIsReached) {
    constexpr int last = 100'000'000 - 1;
    for (const DWORD style : {LVS_REPORT, LVS_LIST, LVS_SMALLICON, LVS_ICON}) {
        makeList(style | LVS_OWNERDATA, 300, 20); // one row fits
        addColumn(100);
        send(LVM_SETITEMCOUNT, last + 1);
        EXPECT_FALSE(rect(last, LVIR_BOUNDS).empty()) << style;
        EXPECT_TRUE(send(LVM_ENSUREVISIBLE, last, FALSE));
        settle();
        EXPECT_FALSE(rect(0, LVIR_BOUNDS).empty()) << style;
        if (style == LVS_REPORT)
            EXPECT_EQ(send(LVM_GETTOPINDEX), last);
    }
}

TEST_F(ListViewLayoutTest, ViewRectanglesAreMeasured) {
    makeList(LVS_ICON, 100, 100);
    send(LVM_SETICONSPACING, 0, MAKELPARAM(75, 75));
    EXPECT_EQ(send(LVM_APPROXIMATEVIEWRECT, 11, MAKELPARAM(100, 100)), MAKELRESULT(77, 827));
    EXPECT_EQ(send(LVM_APPROXIMATEVIEWRECT, 4, MAKELPARAM(160, 100)), MAKELRESULT(152, 152));
    EXPECT_EQ(send(LVM_APPROXIMATEVIEWRECT, 0x7FFFFFFF, MAKELPARAM(100, 100)), MAKELRESULT(77, 0xFFFF));
    makeList(LVS_REPORT);
    addColumn(100);
    addColumn(120);
    fill(3);
    RECT view{};
    EXPECT_TRUE(send(LVM_GETVIEWRECT, 0, reinterpret_cast<LPARAM>(&view)));
    EXPECT_EQ(view.left, 0);
    EXPECT_EQ(view.right, 220);
    EXPECT_EQ(view.bottom - view.top, 3 * 14);
    EXPECT_EQ(send(LVM_GETSTRINGWIDTH, 0, reinterpret_cast<LPARAM>("0000")), 24);
}

TEST_F(ListViewLayoutTest, RowsThatComeAboveDontMoveTheView) {
    makeList(LVS_REPORT, 200, 100);
    addColumn(100);
    fill(100);
    settle();
    ListView_EnsureVisible(list, 99, FALSE);
    const int top = static_cast<int>(send(LVM_GETTOPINDEX));
    insert("late", 0);
    EXPECT_EQ(send(LVM_GETTOPINDEX), top);
    SCROLLINFO info{sizeof(SCROLLINFO), SIF_RANGE, 0, 0, 0, 0, 0};
    GetScrollInfo(list, SB_VERT, &info);
    EXPECT_EQ(info.nMax, 100) << "the bar knows of rows that come while nothing is painted";
}

} // namespace
} // namespace vndk::test
