// Items, texts, data and selection by program.
#include "list_box_fixture.h"

using namespace vndk::test;

namespace {

class ListBoxTest : public ListBoxFixture {};

TEST_F(ListBoxTest, keepsTheOrderInWhichItemsCameAndTellsTheParentNothing) {
    makeList(plain);
    recorder.clear();
    EXPECT_EQ(add("item 2"), 0);
    EXPECT_EQ(add("item 0"), 1);
    EXPECT_EQ(add("item 1"), 2);
    EXPECT_TRUE(recorder.saw({}));
    EXPECT_EQ(texts(), (Texts{"item 2", "item 0", "item 1"}));
    EXPECT_EQ(askText(LB_INSERTSTRING, 1, "between"), 1);
    EXPECT_EQ(askText(LB_INSERTSTRING, static_cast<WPARAM>(-1), "last"), 4);
    EXPECT_EQ(askText(LB_INSERTSTRING, 9, "nowhere"), LB_ERR);
    EXPECT_EQ(texts(), (Texts{"item 2", "between", "item 0", "item 1", "last"}));
}

TEST_F(ListBoxTest, sortsWordsAsADictionaryDoes) {
    makeList(plain | LBS_SORT);
    for (const char* text : {"zebra", "Apple", "apple", "10", "_x", "\xC4pfel", "Apfel", "co-op", "coop", "coot", "1"})
        add(text);
    EXPECT_EQ(texts(),
              (Texts{"_x", "1", "10", "Apfel", "\xC4pfel", "apple", "Apple", "co-op", "coop", "coot", "zebra"}));
    EXPECT_EQ(askText(LB_INSERTSTRING, 0, "zz"), 0) << "an item that is put somewhere stays there";
}

TEST_F(ListBoxTest, deletesAndCountsWhatIsLeft) {
    makeList(plain);
    fill(4);
    EXPECT_EQ(ask(LB_DELETESTRING, static_cast<WPARAM>(-1)), LB_ERR);
    EXPECT_EQ(ask(LB_DELETESTRING, 4), LB_ERR);
    EXPECT_EQ(ask(LB_GETCOUNT), 4);
    recorder.watch(list);
    recorder.clear();
    for (int left = 3; left > 0; --left)
        EXPECT_EQ(ask(LB_DELETESTRING, 0), left);
    EXPECT_EQ(recorder.count(LB_RESETCONTENT, list), 0);
    EXPECT_EQ(ask(LB_DELETESTRING, 0), 0);
    EXPECT_EQ(recorder.count(LB_RESETCONTENT, list), 1) << "the last item goes by a message that can be watched";
}

TEST_F(ListBoxTest, holdsTextsOfAnyLength) {
    makeList(plain);
    const std::string text(1000, 'x');
    add(text);
    EXPECT_EQ(ask(LB_GETTEXTLEN, 0), 1000);
    EXPECT_EQ(textAt(0), text);
    std::string buffer(1001, '\0');
    EXPECT_EQ(ask(LB_GETTEXT, 0, reinterpret_cast<LPARAM>(buffer.data())), 1000);
}

TEST_F(ListBoxTest, keepsDataBesideTheText) {
    makeList(plain);
    fill(2);
    EXPECT_EQ(ask(LB_GETITEMDATA, 0), 0);
    EXPECT_EQ(ask(LB_SETITEMDATA, 0, 20), TRUE);
    EXPECT_EQ(ask(LB_GETITEMDATA, 0), 20);
    EXPECT_EQ(ask(LB_SETITEMDATA, 2, 20), LB_ERR);
    EXPECT_EQ(ask(LB_SETITEMDATA, static_cast<WPARAM>(-1), 7), TRUE);
    EXPECT_EQ(ask(LB_GETITEMDATA, 1), 7);
    EXPECT_EQ(textAt(1), "item 1");
}

TEST_F(ListBoxTest, holdsWhatTheOwnerGaveWhenItHasNoStrings) {
    static const char something[] = "not copied";
    const auto pointer = reinterpret_cast<LPARAM>(something);
    for (const DWORD style : {LBS_OWNERDRAWFIXED, LBS_OWNERDRAWVARIABLE}) {
        makeList(plain | style);
        EXPECT_EQ(ask(LB_ADDSTRING, 0, pointer), 0);
        EXPECT_EQ(ask(LB_GETITEMDATA, 0), pointer) << style;
        ULONG_PTR read = 0;
        EXPECT_EQ(ask(LB_GETTEXTLEN, 0), static_cast<LRESULT>(sizeof read));
        EXPECT_EQ(ask(LB_GETTEXT, 0, reinterpret_cast<LPARAM>(&read)), static_cast<LRESULT>(sizeof read));
        EXPECT_EQ(static_cast<LRESULT>(read), pointer);
        EXPECT_EQ(ask(LB_FINDSTRING, static_cast<WPARAM>(-1), pointer), 0);
        EXPECT_EQ(ask(LB_FINDSTRING, static_cast<WPARAM>(-1), pointer + 1), LB_ERR);
        DestroyWindow(list);
    }
}

TEST_F(ListBoxTest, findsByBeginningOrWholeTextFromBehindAnItemAndRoundTheEnd) {
    makeList(plain);
    for (const char* text : {"alpha", "Beta", "alphabet", "\xC4rger"})
        add(text);
    struct Row {
        UINT message;
        int after;
        const char* text;
        LRESULT found;
    };
    const Row rows[] = {
        {LB_FINDSTRING, -1, "ALPHA", 0},
        {LB_FINDSTRING, 0, "alpha", 2},
        {LB_FINDSTRING, 2, "alpha", 0},
        {LB_FINDSTRING, 3, "b", 1},
        {LB_FINDSTRING, 99, "b", 1},
        {LB_FINDSTRING, -1, "x", LB_ERR},
        {LB_FINDSTRING, -1, "\xE4R", 3},
        {LB_FINDSTRING, -1, "", LB_ERR},
        {LB_FINDSTRINGEXACT, -1, "alph", LB_ERR},
        {LB_FINDSTRINGEXACT, -1, "BETA", 1},
        {LB_FINDSTRINGEXACT, 0, "alpha", 0},
    };
    for (const Row& row : rows)
        EXPECT_EQ(askText(row.message, static_cast<WPARAM>(row.after), row.text), row.found)
            << row.text << " after " << row.after;
    EXPECT_EQ(askText(LB_SELECTSTRING, static_cast<WPARAM>(-1), "be"), 1);
    EXPECT_EQ(ask(LB_GETCURSEL), 1);
    EXPECT_EQ(askText(LB_SELECTSTRING, static_cast<WPARAM>(-1), "nothing"), LB_ERR);
    EXPECT_EQ(ask(LB_GETCURSEL), 1);
}

TEST_F(ListBoxTest, selectsOneItemAtMostWithoutNotification) {
    makeList(plain);
    fill(4);
    EXPECT_EQ(ask(LB_GETCURSEL), LB_ERR);
    EXPECT_EQ(ask(LB_SETCURSEL, 2), 2);
    EXPECT_EQ(ask(LB_GETCURSEL), 2);
    EXPECT_EQ(selection(), Indexes{2});
    EXPECT_EQ(ask(LB_SETCURSEL, 4), LB_ERR);
    EXPECT_EQ(ask(LB_GETCURSEL), 2);
    EXPECT_EQ(ask(LB_SETCURSEL, static_cast<WPARAM>(-1)), LB_ERR);
    EXPECT_EQ(ask(LB_GETCURSEL), LB_ERR);
    EXPECT_EQ(selection(), Indexes{});
    for (const UINT message : {LB_SETSEL, LB_GETSELCOUNT, LB_GETSELITEMS, LB_SELITEMRANGE, LB_SELITEMRANGEEX})
        EXPECT_EQ(ask(message, 1, 1), LB_ERR) << message;
    EXPECT_EQ(takeCodes(), Indexes{});
}

TEST_F(ListBoxTest, movesTheSelectionAlongWithItsItem) {
    makeList(plain);
    fill(4);
    ask(LB_SETCURSEL, 2);
    askText(LB_INSERTSTRING, 0, "new");
    EXPECT_EQ(ask(LB_GETCURSEL), 3);
    ask(LB_DELETESTRING, 1);
    EXPECT_EQ(ask(LB_GETCURSEL), 2);
    EXPECT_EQ(textAt(2), "item 2");
    ask(LB_DELETESTRING, 2);
    EXPECT_EQ(ask(LB_GETCURSEL), LB_ERR);
}

TEST_F(ListBoxTest, resetsToAnEmptyList) {
    makeList(plain);
    fill(20);
    ask(LB_SETCURSEL, 15);
    ask(LB_RESETCONTENT);
    EXPECT_EQ(ask(LB_GETCOUNT), 0);
    EXPECT_EQ(ask(LB_GETCURSEL), LB_ERR);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 0);
    EXPECT_EQ(takeCodes(), Indexes{});
}

struct ChoiceRow {
    const char* name;
    DWORD style;
};

class MultipleChoiceTest : public ListBoxFixture, public testing::WithParamInterface<ChoiceRow> {};

TEST_P(MultipleChoiceTest, selectsByIndexRangeAndAll) {
    makeList(plain | GetParam().style);
    fill(6);
    EXPECT_EQ(ask(LB_GETCURSEL), 0) << "the focus item";
    EXPECT_EQ(ask(LB_GETANCHORINDEX), -1);
    EXPECT_EQ(ask(LB_GETCARETINDEX), 0);
    EXPECT_EQ(ask(LB_SETCURSEL, 2), LB_ERR);
    EXPECT_EQ(ask(LB_SELITEMRANGE, TRUE, MAKELPARAM(1, 2)), LB_OKAY);
    EXPECT_EQ(selection(), (Indexes{1, 2}));
    EXPECT_EQ(ask(LB_GETCARETINDEX), 0) << "a range leaves the focus item";
    EXPECT_EQ(ask(LB_SETSEL, TRUE, 4), LB_OKAY);
    EXPECT_EQ(ask(LB_GETANCHORINDEX), 4);
    EXPECT_EQ(ask(LB_GETCARETINDEX), 4);
    EXPECT_EQ(ask(LB_GETSELCOUNT), 3);
    int items[8]{};
    EXPECT_EQ(ask(LB_GETSELITEMS, 2, reinterpret_cast<LPARAM>(items)), 2) << "as many as fit";
    EXPECT_EQ(ask(LB_GETSELITEMS, 8, reinterpret_cast<LPARAM>(items)), 3);
    EXPECT_EQ(Indexes(items, items + 3), (Indexes{1, 2, 4}));
    EXPECT_EQ(ask(LB_SELITEMRANGEEX, 4, 2), LB_OKAY) << "backward takes it away";
    EXPECT_EQ(selection(), Indexes{1});
    EXPECT_EQ(ask(LB_SELITEMRANGEEX, 4, 99), LB_OKAY);
    EXPECT_EQ(selection(), (Indexes{1, 4, 5}));
    EXPECT_EQ(ask(LB_SETSEL, TRUE, 6), LB_ERR);
    EXPECT_EQ(ask(LB_SETSEL, TRUE, -1), LB_OKAY);
    EXPECT_EQ(ask(LB_GETSELCOUNT), 6);
    EXPECT_EQ(ask(LB_SETSEL, FALSE, -1), LB_OKAY);
    EXPECT_EQ(ask(LB_GETSELCOUNT), 0);
    EXPECT_EQ(takeCodes(), Indexes{});
}

INSTANTIATE_TEST_SUITE_P(Styles, MultipleChoiceTest,
                         testing::Values(ChoiceRow{"Multiple", LBS_MULTIPLESEL},
                                         ChoiceRow{"Extended", LBS_EXTENDEDSEL}),
                         [](const auto& info) { return info.param.name; });

TEST_F(ListBoxTest, followsAChangeOfTheSelectionStyle) {
    makeList(plain | LBS_MULTIPLESEL);
    fill(4);
    ask(LB_SETSEL, TRUE, 1);
    ask(LB_SETSEL, TRUE, 3);
    SetWindowLong(list, GWL_STYLE, GetWindowLong(list, GWL_STYLE) & ~static_cast<LONG>(LBS_MULTIPLESEL));
    EXPECT_EQ(selection(), Indexes{1});
    EXPECT_EQ(ask(LB_GETCURSEL), 1);
}

TEST_F(ListBoxTest, setsTheFocusItemOfASingleListOnlyWhileNothingIsSelected) {
    makeList(plain);
    fill(4);
    EXPECT_EQ(ask(LB_SETCARETINDEX, 2), LB_OKAY);
    EXPECT_EQ(ask(LB_GETCARETINDEX), 2);
    EXPECT_EQ(ask(LB_GETCURSEL), LB_ERR);
    ask(LB_SETCURSEL, 1);
    EXPECT_EQ(ask(LB_SETCARETINDEX, 3), LB_ERR);
}

TEST_F(ListBoxTest, countsBareItems) {
    makeList(plain);
    EXPECT_EQ(ask(LB_SETCOUNT, 5), LB_ERR) << "only with LBS_NODATA";
    DestroyWindow(list);
    makeList(plain | LBS_NODATA | LBS_OWNERDRAWFIXED | LBS_EXTENDEDSEL | WS_VSCROLL);
    EXPECT_EQ(ask(LB_SETCOUNT, 50'000'000), LB_OKAY);
    EXPECT_EQ(ask(LB_GETCOUNT), 50'000'000);
    EXPECT_EQ(ask(LB_GETITEMDATA, 49'999'999), 0);
    EXPECT_EQ(ask(LB_SETSEL, TRUE, 49'999'999), LB_OKAY);
    EXPECT_EQ(ask(LB_GETSEL, 49'999'999), 1);
    EXPECT_EQ(ask(LB_GETSELCOUNT), 1);
    EXPECT_EQ(ask(LB_SETCOUNT, 0x7FFFFFFF), LB_ERRSPACE);
    EXPECT_EQ(ask(LB_SETCOUNT, static_cast<WPARAM>(-2)), LB_ERR);
}

TEST_F(ListBoxTest, addsUpTheStorageAskedFor) {
    makeList(plain);
    EXPECT_EQ(ask(LB_INITSTORAGE, 100, 10'000), 100);
    EXPECT_EQ(ask(LB_INITSTORAGE, 50, 10'000), 150);
    EXPECT_EQ(ask(LB_INITSTORAGE, 0x7FFFFFFF, 0), LB_ERRSPACE);
}

TEST_F(ListBoxTest, standsHostileArguments) {
    for (const DWORD style : {DWORD{0}, LBS_EXTENDEDSEL, LBS_MULTICOLUMN, LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS}) {
        makeList(plain | style | WS_VSCROLL | WS_HSCROLL);
        for (int filled = 0; filled < 2; ++filled) {
            for (UINT message = LB_ADDSTRING; message <= LB_ITEMFROMPOINT; ++message)
                for (const WPARAM wParam : {WPARAM{0}, WPARAM{0x7FFFFFFF}, WPARAM{0x80000000}, ~WPARAM{0}})
                    ask(message, wParam, 0);
            settle();
            ask(LB_RESETCONTENT);
            EXPECT_EQ(add(""), 0) << style;
        }
        SetWindowPos(list, nullptr, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOZORDER);
        settle();
        SetWindowPos(list, nullptr, 0, 0, 32767, 3, SWP_NOMOVE | SWP_NOZORDER);
        settle();
        DestroyWindow(list);
    }
}

TEST_F(ListBoxTest, keepsManyItemsSorted) {
    makeList(plain | LBS_SORT | WS_VSCROLL);
    unsigned random = 1;
    for (int i = 0; i < 20'000; ++i) {
        random = random * 1664525 + 1013904223;
        add(std::to_string(random));
    }
    const std::vector<std::string> all = texts();
    ASSERT_EQ(all.size(), 20'000U);
    EXPECT_TRUE(std::is_sorted(all.begin(), all.end()));
}

} // namespace
