// Selection, focus and check boxes of the list view.
#include "list_view_fixture.h"

namespace vndk::test {
namespace {

class ListViewStateTest : public ListViewFixture {};

TEST_F(ListViewStateTest, TheSelectionMarkTakesGoodValuesOnly) {
    makeList(LVS_REPORT);
    fill(5);
    const struct {
        int mark;
        LRESULT former;
    } rows[] = {{0, -1}, {0, 0}, {5, 0}, {-2, 0}, {3, 0}, {-1, 3}};
    for (const auto& row : rows)
        EXPECT_EQ(send(LVM_SETSELECTIONMARK, 0, row.mark), row.former) << row.mark;
    EXPECT_EQ(send(LVM_GETSELECTIONMARK), -1);
}

TEST_F(ListViewStateTest, AStateForAllIsToldForEach) {
    makeList(LVS_REPORT);
    fill(3);
    LVITEM item{};
    item.state = item.stateMask = LVIS_SELECTED;
    EXPECT_TRUE(send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item)));
    EXPECT_EQ(selection(), (std::vector<int>{0, 1, 2}));
    EXPECT_EQ(takeNotes(), (Lines{"changing 0 ->S", "changed 0 ->S", "changing 1 ->S", "changed 1 ->S",
                                  "changing 2 ->S", "changed 2 ->S"}));
    item.state = item.stateMask = LVIS_FOCUSED;
    EXPECT_FALSE(send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item)))
        << "one item has the focus";
    EXPECT_FALSE(send(LVM_SETITEMSTATE, 3, reinterpret_cast<LPARAM>(&item)));
}

TEST_F(ListViewStateTest, SingleSelectionPassesFromItemToItem) {
    makeList(LVS_REPORT | LVS_SINGLESEL);
    fill(3);
    select(0, LVIS_SELECTED);
    takeNotes();
    select(2, LVIS_SELECTED);
    EXPECT_EQ(takeNotes(), (Lines{"changing 2 ->S", "changing 0 S>-", "changed 0 S>-", "changed 2 ->S"}));
    EXPECT_EQ(selection(), std::vector<int>{2});
    LVITEM item{};
    item.state = item.stateMask = LVIS_SELECTED;
    EXPECT_FALSE(send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item)));
    EXPECT_EQ(selection(), std::vector<int>{2});
    item.state = 0;
    EXPECT_TRUE(send(LVM_SETITEMSTATE, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&item)));
    EXPECT_TRUE(selection().empty());
}

TEST_F(ListViewStateTest, AStyleSetLaterActsOnTheNextSelection) {
    makeList(LVS_REPORT);
    fill(5);
    for (const int index : {0, 1, 2})
        select(index, LVIS_SELECTED);
    SetWindowLong(list, GWL_STYLE, GetWindowLong(list, GWL_STYLE) | LVS_SINGLESEL);
    EXPECT_EQ(send(LVM_GETSELECTEDCOUNT), 3);
    select(3, LVIS_SELECTED);
    EXPECT_EQ(selection(), std::vector<int>{3});
}

TEST_F(ListViewStateTest, TheParentCanRefuseAChange) {
    makeList(LVS_REPORT);
    fill(2);
    answers[LVN_ITEMCHANGING] = TRUE;
    select(0);
    EXPECT_TRUE(selection().empty());
    EXPECT_EQ(focus(), -1);
    EXPECT_EQ(takeNotes(), (Lines{"changing 0 ->SF"}));
    std::string changed = "changed";
    ListView_SetItemText(list, 0, 0, changed.data());
    EXPECT_EQ(text(0), "item 0");
}

TEST_F(ListViewStateTest, TheFocusLeavesOneItemAndEntersAnother) {
    makeList(LVS_REPORT);
    fill(3);
    ListView_SetItemState(list, 0, LVIS_FOCUSED, LVIS_FOCUSED);
    EXPECT_EQ(send(LVM_GETSELECTIONMARK), 0) << "the first focus sets the mark";
    takeNotes();
    ListView_SetItemState(list, 2, LVIS_FOCUSED, LVIS_FOCUSED);
    EXPECT_EQ(takeNotes(), (Lines{"changing 2 ->F", "changing 0 F>-", "changed 0 F>-", "changed 2 ->F"}));
    EXPECT_EQ(send(LVM_GETSELECTIONMARK), 0);
    ListView_SetItemState(list, 2, 0, LVIS_FOCUSED);
    EXPECT_EQ(focus(), -1);
}

TEST_F(ListViewStateTest, UnchangedStatesTellNothing) {
    makeList(LVS_REPORT);
    fill(1);
    select(0);
    takeNotes();
    select(0);
    EXPECT_TRUE(takeNotes().empty());
}

TEST_F(ListViewStateTest, BitsThatTheParentKeepsAreAskedFor) {
    makeList(LVS_REPORT);
    fill(2);
    EXPECT_TRUE(send(LVM_SETCALLBACKMASK, LVIS_CUT));
    EXPECT_EQ(send(LVM_GETCALLBACKMASK), LVIS_CUT);
    onNotify[LVN_GETDISPINFO] = [](NMHDR& header) -> LRESULT {
        LVITEM& wanted = reinterpret_cast<NMLVDISPINFO&>(header).item;
        if (wanted.iItem == 1 && (wanted.stateMask & LVIS_CUT) != 0)
            wanted.state = LVIS_CUT;
        return 0;
    };
    EXPECT_EQ(ListView_GetItemState(list, 0, ~0U), 0U);
    EXPECT_EQ(ListView_GetItemState(list, 1, ~0U), LVIS_CUT);
}

TEST_F(ListViewStateTest, CheckBoxesBeginClearAndFollowKeyAndClick) {
    makeList(LVS_REPORT);
    addColumn(100);
    fill(1);
    ListView_SetItemState(list, 0, LVIS_CUT | INDEXTOSTATEIMAGEMASK(5), ~0U);
    ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES);
    EXPECT_EQ(ListView_GetItemState(list, 0, ~0U), LVIS_CUT | INDEXTOSTATEIMAGEMASK(1));
    LVITEM item{};
    item.mask = LVIF_STATE;
    item.iItem = 1;
    item.state = INDEXTOSTATEIMAGEMASK(2) | LVIS_SELECTED;
    ListView_InsertItem(list, &item);
    EXPECT_EQ(ListView_GetItemState(list, 1, ~0U), LVIS_SELECTED | INDEXTOSTATEIMAGEMASK(1));
    ListView_SetItemState(list, 1, LVIS_FOCUSED, LVIS_FOCUSED);
    send(WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(ListView_GetCheckState(list, 1), 1U);
    send(WM_KEYDOWN, VK_SPACE);
    EXPECT_EQ(ListView_GetCheckState(list, 1), 0U);
    const std::vector<int> row = rect(0, LVIR_BOUNDS);
    const POINT box = onScreen(list, 8, (row[1] + row[3]) / 2);
    user.click(box.x, box.y);
    settle();
    EXPECT_EQ(ListView_GetCheckState(list, 0), 1U);
    EXPECT_EQ(selection(), std::vector<int>{1}) << "a click on the box doesn't select";
    ListView_SetExtendedListViewStyle(list, 0);
    EXPECT_EQ(ListView_GetItemState(list, 0, LVIS_STATEIMAGEMASK), INDEXTOSTATEIMAGEMASK(2)) << "it stays as it is";
    ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES);
    EXPECT_EQ(ListView_GetCheckState(list, 0), 0U);
}

} // namespace
} // namespace vndk::test
