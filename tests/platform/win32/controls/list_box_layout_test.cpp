// Where items lie, what is seen of them, scroll bars.
#include "list_box_fixture.h"

using namespace vndk::test;

namespace {

class ListBoxLayoutTest : public ListBoxFixture {
protected:
    void setHeight(int height) const { ask(LB_SETITEMHEIGHT, 0, MAKELPARAM(height, 0)); }
};

TEST_F(ListBoxLayoutTest, takesAHeightOfAtLeastOnePixel) {
    makeList(plain);
    add("one");
    EXPECT_EQ(ask(LB_SETITEMHEIGHT, 0, MAKELPARAM(20, 0)), LB_OKAY);
    EXPECT_EQ(ask(LB_GETITEMHEIGHT, 0), 20);
    EXPECT_EQ(ask(LB_SETITEMHEIGHT, 0, MAKELPARAM(0, 30)), LB_ERR);
    EXPECT_EQ(ask(LB_GETITEMHEIGHT, 0), 20);
    EXPECT_EQ(ask(LB_SETITEMHEIGHT, 0, MAKELPARAM(300, 0)), LB_OKAY);
    EXPECT_EQ(ask(LB_GETITEMHEIGHT, 0), 300);
}

TEST_F(ListBoxLayoutTest, showsTheTopItemThatWasAskedForAsFarAsTheLastPageAllows) {
    makeList(plain, 20);
    setHeight(20);
    fill(4);
    ask(LB_SETTOPINDEX, 1);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 1);
    EXPECT_EQ(rectOf(0).top, -20);
    EXPECT_EQ(rectOf(0).bottom, 0);
    ask(LB_SETTOPINDEX, 3);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 3);
    EXPECT_EQ(ask(LB_SETTOPINDEX, 4), LB_ERR);
    SetWindowPos(list, nullptr, 0, 0, 120, 60, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 1) << "a larger list has no room left below its items";
    RECT rect{7, 7, 7, 7};
    EXPECT_EQ(ask(LB_GETITEMRECT, 4, reinterpret_cast<LPARAM>(&rect)), LB_ERR);
}

TEST_F(ListBoxLayoutTest, scrollsToASelectionThatIsntSeenWhole) {
    makeList(plain | WS_VSCROLL);
    setHeight(32);
    fill(4);
    EXPECT_EQ(ask(LB_SETCURSEL, 2), 2);
    EXPECT_EQ(GetScrollPos(list, SB_VERT), 0);
    EXPECT_EQ(ask(LB_SETCURSEL, 3), 3);
    EXPECT_EQ(GetScrollPos(list, SB_VERT), 1);
    ask(LB_SETCURSEL, 0);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 0);
}

TEST_F(ListBoxLayoutTest, knowsTheItemNearestToAPoint) {
    makeList(plain, 90);
    setHeight(20);
    EXPECT_EQ(ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(10, 10)), MAKELRESULT(0xFFFF, 1)) << "nothing is there";
    fill(8);
    ask(LB_SETTOPINDEX, 1);
    struct Row {
        int x;
        int y;
        LRESULT answer;
    };
    const Row rows[] = {{10, 10, 1},        {10, 19, 1}, {10, 20, 2},       {1000, 10, 0x10001},
                        {10, -10, 0x10001}, {10, 89, 5}, {10, 90, 0x10005}, {10, 200, 0x10005}};
    for (const Row& row : rows)
        EXPECT_EQ(ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(row.x, row.y)), row.answer) << row.x << ", " << row.y;
    ask(LB_RESETCONTENT);
    fill(2);
    EXPECT_EQ(ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(10, 60)), 1) << "the ground below belongs to the last item";
}

TEST_F(ListBoxLayoutTest, hasAHeightForEachItemWhenTheyVary) {
    makeList(plain | LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS | WS_VSCROLL);
    fill(6);
    const int heights[] = {17, 40, 17, 60, 30, 17};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(ask(LB_SETITEMHEIGHT, static_cast<WPARAM>(i), heights[i]), LB_OKAY);
    int y = 0;
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(rectOf(i).top, y) << i;
        EXPECT_EQ(rectOf(i).bottom, y += heights[i]) << i;
    }
    EXPECT_EQ(ask(LB_SETITEMHEIGHT, 6, 10), LB_ERR);
    EXPECT_EQ(ask(LB_GETITEMHEIGHT, 6), LB_ERR);
    EXPECT_TRUE(shows(WS_VSCROLL));
    ask(LB_SETTOPINDEX, 5);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 4) << "30 and 17 fit into 100, 60 more don't";
    EXPECT_EQ(rectOf(3).top, -60);
    EXPECT_EQ(ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(5, 31)), 5);
    ask(LB_SETCURSEL, 3);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 3);
}

TEST_F(ListBoxLayoutTest, showsItsScrollBarOnlyWhileItIsNeeded) {
    makeList(plain | WS_VSCROLL);
    setHeight(20);
    EXPECT_FALSE(shows(WS_VSCROLL));
    fill(5);
    EXPECT_FALSE(shows(WS_VSCROLL));
    add("one too many");
    EXPECT_TRUE(shows(WS_VSCROLL));
    EXPECT_EQ(clientRect(list).right, 104);
    EXPECT_EQ(scrollInfo(SB_VERT).nMax, 5);
    EXPECT_EQ(scrollInfo(SB_VERT).nPage, 5U);
    ask(LB_DELETESTRING, 0);
    EXPECT_FALSE(shows(WS_VSCROLL));
    DestroyWindow(list);
    makeList(plain | WS_VSCROLL | LBS_DISABLENOSCROLL);
    EXPECT_TRUE(shows(WS_VSCROLL));
}

TEST_F(ListBoxLayoutTest, shrinksToWholeItemsUnlessToldNotTo) {
    const int line = static_cast<int>(SendMessage(makeList(plain), LB_GETITEMHEIGHT, 0, 0));
    EXPECT_EQ(clientRect(list).bottom, 100);
    DestroyWindow(list);
    makeList(LBS_NOTIFY | WS_BORDER);
    EXPECT_EQ(clientRect(list).bottom, 98 / line * line);
    SetWindowPos(list, nullptr, 0, 0, 120, 5 * line + 9, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(clientRect(list).bottom, 5 * line);
    SetWindowPos(list, nullptr, 0, 0, 120, line / 2, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(windowRect(list).bottom - windowRect(list).top, line / 2) << "less than one item stays as it is";
    DestroyWindow(list);
    makeList(LBS_NOTIFY | LBS_OWNERDRAWVARIABLE);
    EXPECT_EQ(clientRect(list).bottom, 100);
}

TEST_F(ListBoxLayoutTest, takesItsItemHeightFromTheFont) {
    makeList(LBS_NOTIFY);
    const HFONT font = CreateFont(-20, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    SendMessage(list, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
    EXPECT_EQ(ask(WM_GETFONT), reinterpret_cast<LRESULT>(font));
    const auto height = static_cast<int>(ask(LB_GETITEMHEIGHT));
    EXPECT_GE(height, 20);
    EXPECT_EQ(clientRect(list).bottom, 100 / height * height);
    DestroyWindow(list);
    DeleteObject(font);
}

TEST_F(ListBoxLayoutTest, scrollsByTheMessagesOfItsBar) {
    makeList(plain | WS_VSCROLL);
    setHeight(20);
    fill(50);
    struct Row {
        int code;
        int position;
        int top;
    };
    const Row rows[] = {{SB_LINEDOWN, 0, 1},   {SB_PAGEDOWN, 0, 5},  {SB_PAGEUP, 0, 1},         {SB_LINEUP, 0, 0},
                        {SB_LINEUP, 0, 0},     {SB_BOTTOM, 0, 45},   {SB_LINEDOWN, 0, 45},      {SB_TOP, 0, 0},
                        {SB_THUMBTRACK, 7, 7}, {SB_ENDSCROLL, 0, 7}, {SB_THUMBPOSITION, 30, 30}};
    for (const Row& row : rows) {
        ask(WM_VSCROLL, MAKEWPARAM(row.code, row.position));
        EXPECT_EQ(ask(LB_GETTOPINDEX), row.top) << row.code;
        EXPECT_EQ(scrollInfo(SB_VERT).nPos, row.top) << row.code;
    }
}

TEST_F(ListBoxLayoutTest, turnsTheWheelByLinesAndLeavesItToTheParentWithoutNeed) {
    makeList(plain | WS_VSCROLL);
    setHeight(20);
    fill(5);
    recorder.clear();
    ask(WM_MOUSEWHEEL, MAKEWPARAM(0, -120));
    EXPECT_EQ(recorder.count(WM_MOUSEWHEEL, owner), 1);
    fill(45);
    ask(WM_MOUSEWHEEL, MAKEWPARAM(0, -120));
    EXPECT_EQ(ask(LB_GETTOPINDEX), 3);
    ask(WM_MOUSEWHEEL, MAKEWPARAM(0, -40));
    EXPECT_EQ(ask(LB_GETTOPINDEX), 4) << "a third of a notch is one line";
    ask(WM_MOUSEWHEEL, MAKEWPARAM(0, 240));
    EXPECT_EQ(ask(LB_GETTOPINDEX), 0);
    EXPECT_EQ(recorder.count(WM_MOUSEWHEEL, owner), 1);
}

TEST_F(ListBoxLayoutTest, scrollsSidewaysToItsExtent) {
    makeList(plain | WS_HSCROLL);
    fill(2);
    ask(LB_SETHORIZONTALEXTENT, 64);
    EXPECT_EQ(ask(LB_GETHORIZONTALEXTENT), 64);
    EXPECT_FALSE(shows(WS_HSCROLL));
    ask(LB_SETHORIZONTALEXTENT, 300);
    EXPECT_EQ(scrollInfo(SB_HORZ).nMax, 299);
    EXPECT_EQ(scrollInfo(SB_HORZ).nPage, 120U);
    EXPECT_EQ(ask(LB_GETHORIZONTALEXTENT), 300);
    EXPECT_TRUE(shows(WS_HSCROLL));
    ask(WM_HSCROLL, SB_PAGERIGHT);
    EXPECT_EQ(rectOf(0).left, -120);
    EXPECT_EQ(rectOf(0).right, 180);
    ask(WM_HSCROLL, SB_RIGHT);
    EXPECT_EQ(scrollInfo(SB_HORZ).nPos, 180);
    ask(WM_HSCROLL, MAKEWPARAM(SB_THUMBTRACK, 33));
    EXPECT_EQ(rectOf(0).left, -33);
    ask(LB_SETHORIZONTALEXTENT, 100);
    EXPECT_EQ(rectOf(0).left, 0);
    EXPECT_FALSE(shows(WS_HSCROLL));
}

TEST_F(ListBoxLayoutTest, fillsColumnAfterColumn) {
    makeList(plain | LBS_MULTICOLUMN | WS_HSCROLL | WS_VSCROLL, 76);
    setHeight(20);
    ask(LB_SETCOLUMNWIDTH, 50);
    fill(14);
    EXPECT_TRUE(shows(WS_HSCROLL));
    EXPECT_FALSE(shows(WS_VSCROLL));
    ASSERT_EQ(clientRect(list).bottom, 60);
    const RECT fifth = rectOf(4);
    EXPECT_EQ(fifth.left, 50);
    EXPECT_EQ(fifth.top, 20);
    EXPECT_EQ(fifth.right, 100);
    EXPECT_EQ(ask(LB_ITEMFROMPOINT, 0, MAKELPARAM(60, 30)), 4);
    ask(LB_SETCURSEL, 13);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 9) << "the fifth column comes into sight beside the fourth";
    EXPECT_EQ(scrollInfo(SB_HORZ).nPos, 3);
    ask(WM_HSCROLL, SB_LINELEFT);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 6);
    ask(LB_SETTOPINDEX, 4);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 3) << "a column begins at the left";
}

// An owner that gives its rows a height by the list's width would make the bar come and go for ever.
TEST_F(ListBoxLayoutTest, comesToRestWhenHeightsFollowTheWidth) {
    makeList(plain | LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS | WS_VSCROLL);
    recorder.watch(list);
    int sizes = 0;
    recorder.onMessage(WM_SIZE, [&](HWND window, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        if (window == list && ++sizes < 1000)
            for (int i = 0; i < ask(LB_GETCOUNT); ++i)
                ask(LB_SETITEMHEIGHT, static_cast<WPARAM>(i), LOWORD(static_cast<DWORD_PTR>(lParam)) > 110 ? 60 : 40);
        return std::nullopt;
    });
    fill(2);
    for (int i = 0; i < 2; ++i)
        ask(LB_SETITEMHEIGHT, static_cast<WPARAM>(i), 60);
    settle();
    EXPECT_LT(sizes, 20);
    EXPECT_EQ(rectOf(1).top, ask(LB_GETITEMHEIGHT, 0));
}

TEST_F(ListBoxLayoutTest, leavesItsPictureAloneWhileRedrawIsOff) {
    makeList(plain | WS_VSCROLL);
    setHeight(20);
    settle();
    ask(WM_SETREDRAW, FALSE);
    fill(20);
    EXPECT_FALSE(shows(WS_VSCROLL));
    RECT update{};
    EXPECT_EQ(GetUpdateRect(list, &update, FALSE), FALSE);
    EXPECT_TRUE((GetWindowLong(list, GWL_STYLE) & WS_VISIBLE) != 0);
    ask(WM_SETREDRAW, TRUE);
    EXPECT_TRUE(shows(WS_VSCROLL));
    EXPECT_NE(GetUpdateRect(list, &update, FALSE), FALSE);
}

} // namespace
