// What a list view keeps: items, sub-items, texts on demand, order.
#include "list_view_fixture.h"

#include <cstring>
#include <limits>

namespace vndk::test {
namespace {

class ListViewItemsTest : public ListViewFixture {};

TEST_F(ListViewItemsTest, ItemsAreInsertedWhereAskedAndBehindTheLastAtMost) {
    makeList(LVS_REPORT);
    EXPECT_EQ(insert("b", 0), 0);
    EXPECT_EQ(insert("d", 99), 1);
    EXPECT_EQ(insert("c", 1), 1);
    EXPECT_EQ(insert("a", 0), 0);
    EXPECT_EQ(insert("x", -1), -1);
    EXPECT_EQ(texts(), (Lines{"a", "b", "c", "d"}));
    LVITEM subItem{};
    subItem.mask = LVIF_TEXT;
    subItem.iSubItem = 1;
    EXPECT_EQ(ListView_InsertItem(list, &subItem), -1) << "a sub-item can't be inserted";
    EXPECT_EQ(takeNotes(), (Lines{"insert 0", "insert 1", "insert 1", "insert 0"}));
}

TEST_F(ListViewItemsTest, InsertionTakesAllOfTheState) {
    for (const UINT state : {LVIS_SELECTED, LVIS_FOCUSED, LVIS_CUT}) {
        makeList(LVS_REPORT);
        LVITEM item{};
        item.mask = LVIF_STATE;
        item.state = state;
        item.stateMask = 0;
        ListView_InsertItem(list, &item);
        EXPECT_EQ(ListView_GetItemState(list, 0, ~0U), state);
        DestroyWindow(list);
    }
}

TEST_F(ListViewItemsTest, SubItemsKeepTheirTextAndNothingOfTheItem) {
    makeList(LVS_REPORT);
    addColumn(100);
    addColumn(100);
    insert("main", 0, 42);
    takeNotes();
    char first[] = "first";
    LVITEM item{};
    item.mask = LVIF_TEXT;
    item.iSubItem = 1;
    item.pszText = first;
    EXPECT_TRUE(ListView_SetItem(list, &item));
    EXPECT_EQ(text(0, 1), "first");
    EXPECT_EQ(takeNotes(), (Lines{"changing 0.1", "changed 0.1"}));
    item.pszText = nullptr;
    EXPECT_TRUE(ListView_SetItem(list, &item));
    EXPECT_EQ(text(0, 1), "");
    item.mask = LVIF_PARAM;
    item.lParam = 7;
    EXPECT_FALSE(ListView_SetItem(list, &item)) << "data belongs to the item";
    item.lParam = 0;
    EXPECT_TRUE(ListView_GetItem(list, &item));
    EXPECT_EQ(item.lParam, 42) << "asked for through a sub-item";
}

TEST_F(ListViewItemsTest, TextsAreCutToTheBuffer) {
    makeList(LVS_REPORT);
    insert("abcdef");
    char buffer[4] = "???";
    LVITEM item{};
    item.pszText = buffer;
    item.cchTextMax = 4;
    EXPECT_EQ(send(LVM_GETITEMTEXT, 0, reinterpret_cast<LPARAM>(&item)), 3);
    EXPECT_STREQ(buffer, "abc");
    item.cchTextMax = 0;
    EXPECT_EQ(send(LVM_GETITEMTEXT, 0, reinterpret_cast<LPARAM>(&item)), 0);
    EXPECT_STREQ(buffer, "abc");
}

TEST_F(ListViewItemsTest, TextsAndImagesAreAskedForEachTimeUntilTheyAreToBeKept) {
    makeList(LVS_REPORT);
    LVITEM item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_PARAM;
    item.pszText = LPSTR_TEXTCALLBACK;
    item.iImage = I_IMAGECALLBACK;
    item.lParam = 5;
    ListView_InsertItem(list, &item);
    int asked = 0;
    bool keep = false;
    onNotify[LVN_GETDISPINFO] = [&](NMHDR& header) -> LRESULT {
        LVITEM& wanted = reinterpret_cast<NMLVDISPINFO&>(header).item;
        ++asked;
        if ((wanted.mask & LVIF_TEXT) != 0)
            std::strcpy(wanted.pszText, ("data " + std::to_string(wanted.lParam)).c_str());
        if ((wanted.mask & LVIF_IMAGE) != 0)
            wanted.iImage = 3;
        if (keep)
            wanted.mask |= LVIF_DI_SETITEM;
        return 0;
    };
    EXPECT_EQ(text(0), "data 5");
    EXPECT_EQ(text(0), "data 5");
    EXPECT_EQ(asked, 2);
    char buffer[20] = "";
    item.mask = LVIF_TEXT | LVIF_NORECOMPUTE;
    item.pszText = buffer;
    item.cchTextMax = 20;
    EXPECT_TRUE(ListView_GetItem(list, &item));
    EXPECT_EQ(item.pszText, LPSTR_TEXTCALLBACK);
    EXPECT_EQ(asked, 2);
    keep = true;
    EXPECT_EQ(text(0), "data 5");
    EXPECT_EQ(text(0), "data 5");
    EXPECT_EQ(asked, 3);
    item.mask = LVIF_IMAGE;
    EXPECT_TRUE(ListView_GetItem(list, &item));
    EXPECT_EQ(item.iImage, 3);
}

TEST_F(ListViewItemsTest, SortedListsPutTextsInOrderAndRefuseUnknownOnes) {
    const struct {
        DWORD style;
        Lines order;
    } rows[] = {{LVS_SORTASCENDING, {"Apple", "banana", "Cherry"}},
                {LVS_SORTDESCENDING, {"Cherry", "banana", "Apple"}}};
    for (const auto& row : rows) {
        makeList(LVS_REPORT | row.style);
        insert("Cherry", 0);
        insert("Apple", 0);
        EXPECT_EQ(insert("banana", 0), 1) << row.style;
        EXPECT_EQ(texts(), row.order);
        LVITEM item{};
        item.mask = LVIF_TEXT;
        item.pszText = LPSTR_TEXTCALLBACK;
        EXPECT_EQ(ListView_InsertItem(list, &item), -1);
        DestroyWindow(list);
    }
}

TEST_F(ListViewItemsTest, DeletionDeselectsFirstAndMovesTheFocusOn) {
    makeList(LVS_REPORT);
    fill(4);
    select(1);
    takeNotes();
    EXPECT_TRUE(ListView_DeleteItem(list, 1));
    EXPECT_EQ(takeNotes(), (Lines{"changing 1 SF>F", "changed 1 SF>F", "delete 1"}));
    EXPECT_EQ(texts(), (Lines{"item 0", "item 2", "item 3"}));
    EXPECT_EQ(focus(), 1);
    EXPECT_TRUE(selection().empty());
    select(2);
    EXPECT_TRUE(ListView_DeleteItem(list, 0));
    EXPECT_EQ(selection(), std::vector<int>{1}) << "the selection moves with its item";
    EXPECT_FALSE(ListView_DeleteItem(list, 2));
    EXPECT_FALSE(ListView_DeleteItem(list, -1));
}

TEST_F(ListViewItemsTest, DeletingAllTellsEachItemUnlessTheParentDeclines) {
    makeList(LVS_REPORT);
    fill(2);
    EXPECT_TRUE(ListView_DeleteAllItems(list));
    EXPECT_EQ(takeNotes(), (Lines{"delete all", "delete 1", "delete 0"}));
    fill(2);
    answers[LVN_DELETEALLITEMS] = TRUE;
    EXPECT_TRUE(ListView_DeleteAllItems(list));
    EXPECT_EQ(takeNotes(), (Lines{"delete all"}));
    EXPECT_EQ(ListView_GetItemCount(list), 0);
    answers.clear();
    fill(1);
    DestroyWindow(list);
    EXPECT_EQ(takeNotes(), (Lines{"delete all", "delete 0"}));
}

TEST_F(ListViewItemsTest, ItemsAreFoundByTextAndData) {
    makeList(LVS_REPORT);
    for (const char* each : {"foo", "Foobar", "bar", "foo"})
        insert(each, 99, static_cast<LPARAM>(std::strlen(each)));
    const struct {
        int start;
        UINT flags;
        const char* text;
        LPARAM data;
        int found;
    } rows[] = {
        {-1, LVFI_STRING, "FOO", 0, 0},
        {0, LVFI_STRING, "foo", 0, 3},
        {3, LVFI_STRING, "foo", 0, -1},
        {3, LVFI_STRING | LVFI_WRAP, "foo", 0, 0},
        {0, LVFI_STRING, "fo", 0, -1},
        {0, LVFI_STRING | LVFI_PARTIAL, "fo", 0, 1},
        {-1, LVFI_PARTIAL, "oo", 0, -1},
        {1, LVFI_SUBSTRING, "ba", 0, 2},
        {-1, LVFI_PARAM, nullptr, 6, 1},
        {1, LVFI_PARAM, nullptr, 6, -1},
        {1, LVFI_PARAM | LVFI_WRAP, nullptr, 6, 1},
        {-1, LVFI_STRING, nullptr, 0, -1},
        {-2, LVFI_STRING, "foo", 0, -1},
    };
    for (const auto& row : rows) {
        LVFINDINFO info{};
        info.flags = row.flags;
        info.psz = row.text;
        info.lParam = row.data;
        EXPECT_EQ(send(LVM_FINDITEM, static_cast<WPARAM>(row.start), reinterpret_cast<LPARAM>(&info)), row.found)
            << row.start << " " << row.flags << " " << (row.text ? row.text : "null");
    }
}

TEST_F(ListViewItemsTest, NextItemsFollowStateAndDirection) {
    makeList(LVS_REPORT);
    fill(5);
    EXPECT_EQ(ListView_GetNextItem(list, -1, LVNI_SELECTED), -1);
    select(1, LVIS_SELECTED);
    select(3);
    ListView_SetItemState(list, 4, LVIS_CUT, LVIS_CUT);
    const struct {
        int start;
        UINT flags;
        int next;
    } rows[] = {
        {-1, LVNI_ALL, 0},
        {4, LVNI_ALL, -1},
        {-1, LVNI_SELECTED, 1},
        {1, LVNI_SELECTED, 3},
        {3, LVNI_SELECTED, -1},
        {-1, LVNI_FOCUSED, 3},
        {3, LVNI_FOCUSED, -1},
        {-1, LVNI_CUT, 4},
        {4, LVNI_ABOVE, 3},
        {0, LVNI_ABOVE, -1},
        {0, LVNI_BELOW, 1},
        {4, LVNI_BELOW, -1},
        {2, LVNI_TOLEFT, -1},
        {5, LVNI_ALL, -1},
        {-2, LVNI_ALL, -1},
        {4, LVNI_ABOVE | LVNI_SELECTED, 3},
        {2, LVNI_ABOVE | LVNI_SELECTED, 1},
        {0, LVNI_ABOVE | LVNI_SELECTED, -1},
        {-1, LVNI_SELECTED | LVNI_FOCUSED, 3},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ListView_GetNextItem(list, row.start, row.flags), row.next) << row.start << " " << row.flags;
}

int CALLBACK byDataDownwards(LPARAM first, LPARAM second, LPARAM sort) {
    *reinterpret_cast<int*>(sort) += 1;
    return static_cast<int>(second - first);
}

TEST_F(ListViewItemsTest, SortingKeepsSelectionAndFocusWithTheirItems) {
    makeList(LVS_REPORT);
    fill(5);
    select(1);
    takeNotes();
    int compared = 0;
    EXPECT_TRUE(ListView_SortItems(list, &byDataDownwards, reinterpret_cast<LPARAM>(&compared)));
    EXPECT_GT(compared, 3);
    EXPECT_EQ(texts(), (Lines{"item 4", "item 3", "item 2", "item 1", "item 0"}));
    EXPECT_EQ(selection(), std::vector<int>{3});
    EXPECT_EQ(focus(), 3);
    EXPECT_TRUE(takeNotes().empty());
    EXPECT_FALSE(ListView_SortItems(list, nullptr, 0));
}

HWND sortedList = nullptr;
int CALLBACK contradicting(LPARAM, LPARAM, LPARAM) {
    SendMessage(sortedList, LVM_DELETEITEM, 0, 0);
    return -1;
}
int CALLBACK destroying(LPARAM, LPARAM, LPARAM) {
    DestroyWindow(sortedList);
    return 1;
}

TEST_F(ListViewItemsTest, HostileComparisonsLoseNoItem) {
    makeList(LVS_REPORT);
    fill(50);
    sortedList = list;
    EXPECT_TRUE(ListView_SortItems(list, &contradicting, 0));
    EXPECT_EQ(ListView_GetItemCount(list), 50) << "items stay while they are compared";
    EXPECT_FALSE(ListView_SortItems(list, &destroying, 0));
    EXPECT_FALSE(IsWindow(list));
}

// ---- Rows that the parent keeps ------------------------------------------------------------------------------------

class OwnerDataTest : public ListViewFixture {
protected:
    void SetUp() override {
        ListViewFixture::SetUp();
        onNotify[LVN_GETDISPINFO] = [](NMHDR& header) -> LRESULT {
            LVITEM& wanted = reinterpret_cast<NMLVDISPINFO&>(header).item;
            if ((wanted.mask & LVIF_TEXT) != 0)
                std::strcpy(wanted.pszText, ("row " + std::to_string(wanted.iItem)).c_str());
            return 0;
        };
    }
};

TEST_F(OwnerDataTest, RowsAreCountedAndAskedFor) {
    makeList(LVS_REPORT | LVS_OWNERDATA);
    addColumn(100);
    EXPECT_TRUE(send(LVM_SETITEMCOUNT, 1'000'000));
    EXPECT_EQ(ListView_GetItemCount(list), 1'000'000);
    EXPECT_EQ(text(999'999), "row 999999");
    EXPECT_EQ(insert("x", 0), -1);
    LVITEM item{};
    item.mask = LVIF_TEXT;
    EXPECT_FALSE(ListView_SetItem(list, &item));
    EXPECT_FALSE(ListView_SortItems(list, &byDataDownwards, 0));
    EXPECT_TRUE(ListView_DeleteAllItems(list));
    EXPECT_EQ(ListView_GetItemCount(list), 0);
}

TEST_F(OwnerDataTest, SelectionIsToldOnceForAll) {
    makeList(LVS_REPORT | LVS_OWNERDATA);
    send(LVM_SETITEMCOUNT, 20);
    select(3, LVIS_SELECTED);
    EXPECT_EQ(takeNotes(), (Lines{"changed 3 ->S"}));
    ListView_SetItemState(list, -1, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(takeNotes(), (Lines{"changed -1 ->S"}));
    EXPECT_EQ(send(LVM_GETSELECTEDCOUNT), 20);
    ListView_SetItemState(list, 7, 0, LVIS_SELECTED);
    EXPECT_EQ(ListView_GetNextItem(list, 6, LVNI_SELECTED), 8);
    ListView_SetItemState(list, -1, 0, LVIS_SELECTED);
    EXPECT_EQ(send(LVM_GETSELECTEDCOUNT), 0);
    send(LVM_SETITEMCOUNT, 3);
    select(2);
    send(LVM_SETITEMCOUNT, 2);
    EXPECT_EQ(send(LVM_GETSELECTEDCOUNT), 0) << "rows that are gone aren't selected";
    EXPECT_EQ(focus(), 1);
}

TEST_F(OwnerDataTest, TheStyleStaysAsItWasAtCreation) {
    makeList(LVS_REPORT | LVS_OWNERDATA);
    const LONG style = GetWindowLong(list, GWL_STYLE);
    SetWindowLong(list, GWL_STYLE, style & ~static_cast<LONG>(LVS_OWNERDATA));
    EXPECT_EQ(GetWindowLong(list, GWL_STYLE), style);
    makeList(LVS_REPORT);
    SetWindowLong(list, GWL_STYLE, GetWindowLong(list, GWL_STYLE) | LVS_OWNERDATA);
    EXPECT_EQ(GetWindowLong(list, GWL_STYLE) & LVS_OWNERDATA, 0U);
}

TEST_F(OwnerDataTest, PaintingHintsAtTheRowsFirst) {
    makeList(LVS_REPORT | LVS_OWNERDATA);
    addColumn(100);
    std::vector<std::pair<int, int>> hints;
    onNotify[LVN_ODCACHEHINT] = [&](NMHDR& header) -> LRESULT {
        const auto& hint = reinterpret_cast<NMLVCACHEHINT&>(header);
        hints.emplace_back(hint.iFrom, hint.iTo);
        return 0;
    };
    send(LVM_SETITEMCOUNT, 1000);
    settle();
    ASSERT_FALSE(hints.empty());
    EXPECT_EQ(hints.back().first, 0);
    EXPECT_EQ(hints.back().second, (200 - 17 - 1) / 14);
}

// ---- Hostile use ---------------------------------------------------------------------------------------------------

TEST_F(ListViewItemsTest, NonsenseArgumentsAreAnswered) {
    for (const DWORD style : {LVS_ICON, LVS_REPORT, LVS_SMALLICON, LVS_LIST, LVS_REPORT | LVS_OWNERDATA}) {
        makeList(style);
        addColumn(50);
        fill(3);
        send(LVM_SETITEMCOUNT, 3);
        for (UINT message = LVM_FIRST; message <= LVM_GETBKIMAGEW; ++message)
            for (const WPARAM wParam : {WPARAM{0}, static_cast<WPARAM>(-1), WPARAM{0x7FFFFFFF}, WPARAM{3}}) {
                const bool pointer = message == LVM_SORTITEMS || message == LVM_SORTITEMSEX;
                send(message, wParam, 0);
                if (!pointer && message == LVM_SCROLL)
                    send(message, wParam, std::numeric_limits<int>::min());
            }
        settle();
        EXPECT_TRUE(IsWindow(list)) << style;
        DestroyWindow(list);
    }
}

TEST_F(ListViewItemsTest, AHandlerMayDestroyTheList) {
    const UINT codes[] = {LVN_ITEMCHANGING, LVN_ITEMCHANGED, LVN_INSERTITEM, LVN_DELETEITEM,    LVN_DELETEALLITEMS,
                          NM_CLICK,         NM_SETFOCUS,     NM_CUSTOMDRAW,  LVN_GETDISPINFO,   LVN_BEGINLABELEDIT,
                          LVN_ENDLABELEDIT, NM_KILLFOCUS,    LVN_KEYDOWN,    NM_RELEASEDCAPTURE};
    for (const UINT code : codes) {
        onNotify.clear();
        makeList(LVS_REPORT | LVS_EDITLABELS);
        addColumn(100);
        fill(3);
        LVITEM item{};
        item.mask = LVIF_TEXT;
        item.pszText = LPSTR_TEXTCALLBACK;
        ListView_InsertItem(list, &item);
        onNotify[code] = [this](NMHDR&) -> LRESULT {
            DestroyWindow(list);
            return 0;
        };
        settle();
        clickOn(1);
        user.key(VK_DOWN);
        settle();
        send(LVM_EDITLABEL, 1);
        SetFocus(owner);
        insert("late", 0);
        ListView_DeleteItem(list, 0);
        ListView_DeleteAllItems(list);
        if (IsWindow(list))
            DestroyWindow(list);
        settle();
    }
}

} // namespace
} // namespace vndk::test
