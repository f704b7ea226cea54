// Mouse and keyboard.
#include "list_box_fixture.h"

using namespace vndk::test;

namespace {

struct ChoiceState {
    LRESULT current;
    LRESULT anchor;
    LRESULT caret;
    LRESULT selected;
    bool operator==(const ChoiceState&) const = default;
    friend void PrintTo(const ChoiceState& state, std::ostream* out) {
        *out << state.current << " anchor " << state.anchor << " caret " << state.caret << " count " << state.selected;
    }
};

class ListBoxInputTest : public ListBoxFixture {
protected:
    void SetUp() override {
        ListBoxFixture::SetUp();
        SetActiveWindow(owner);
    }
    HWND makeFilled(DWORD style, int count) {
        makeList(style);
        ask(LB_SETITEMHEIGHT, 0, 20);
        fill(count);
        settle();
        return list;
    }
    [[nodiscard]] ChoiceState state() const {
        return {ask(LB_GETCURSEL), ask(LB_GETANCHORINDEX), ask(LB_GETCARETINDEX), ask(LB_GETSELCOUNT)};
    }
    void clickWith(int modifier, int index) {
        user.keyDown(modifier);
        clickItem(index);
        user.keyUp(modifier);
        settle();
    }
};

TEST_F(ListBoxInputTest, movesSelectionAnchorAndFocusItemByClickAndArrow) {
    struct Row {
        const char* name;
        DWORD style;
        ChoiceState before;
        ChoiceState clicked;
        ChoiceState stepped;
    };
    const Row rows[] = {
        {"single", 0, {-1, -1, 0, -1}, {1, 1, 1, -1}, {2, 2, 2, -1}},
        {"no selection", LBS_NOSEL, {-1, -1, 0, -1}, {1, 1, 1, -1}, {2, 2, 2, -1}},
        {"multiple", LBS_MULTIPLESEL, {0, -1, 0, 0}, {1, 1, 1, 1}, {2, 1, 2, 1}},
        {"extended", LBS_EXTENDEDSEL, {0, -1, 0, 0}, {1, 1, 1, 1}, {2, 2, 2, 1}},
    };
    for (const Row& row : rows) {
        makeFilled(plain | row.style, 4);
        EXPECT_EQ(state(), row.before) << row.name;
        clickItem(1);
        EXPECT_EQ(state(), row.clicked) << row.name;
        pressKey(VK_DOWN);
        EXPECT_EQ(state(), row.stepped) << row.name;
        DestroyWindow(list);
    }
}

TEST_F(ListBoxInputTest, tellsOfAClickWhenTheButtonGoesUp) {
    makeFilled(plain, 4);
    const POINT point = at(10, 30);
    user.moveTo(point.x, point.y);
    user.press();
    settle();
    EXPECT_EQ(ask(LB_GETCURSEL), 1);
    EXPECT_EQ(GetCapture(), list);
    EXPECT_EQ(takeCodes(), Indexes{LBN_SETFOCUS});
    user.release();
    settle();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(takeCodes(), Indexes{LBN_SELCHANGE});
    user.press();
    user.release();
    settle();
    EXPECT_EQ(takeCodes(), Indexes{LBN_DBLCLK});
}

TEST_F(ListBoxInputTest, letsGoOfTheMouseAndTellsWhenTheFocusIsTakenAway) {
    makeFilled(plain, 4);
    ask(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
    EXPECT_EQ(GetCapture(), list);
    takeCodes();
    SetFocus(nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(takeCodes(), (Indexes{LBN_SELCHANGE, LBN_KILLFOCUS}));
}

// A folder is entered at the press: the button that goes up chooses nothing in it.
TEST_F(ListBoxInputTest, forgetsAPressWhenTheItemsAreReplaced) {
    makeFilled(plain, 4);
    const POINT point = at(10, 30);
    user.moveTo(point.x, point.y);
    user.press();
    settle();
    takeCodes();
    ask(LB_RESETCONTENT);
    fill(4);
    EXPECT_EQ(GetCapture(), nullptr);
    user.release();
    settle();
    EXPECT_EQ(ask(LB_GETCURSEL), LB_ERR);
    EXPECT_EQ(takeCodes(), Indexes{});
}

TEST_F(ListBoxInputTest, saysNothingWithoutTheStyleAndOnGroundBelowTheItems) {
    makeFilled(LBS_NOINTEGRALHEIGHT, 2);
    clickItem(1);
    EXPECT_EQ(ask(LB_GETCURSEL), 1);
    EXPECT_EQ(takeCodes(), Indexes{});
    const POINT ground = at(10, 90);
    user.click(ground.x, ground.y);
    settle();
    EXPECT_EQ(ask(LB_GETCURSEL), 1);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ListBoxInputTest, followsTheDraggedMouseAndScrollsAtTheEdge) {
    makeFilled(plain | WS_VSCROLL, 30);
    const POINT from = at(10, 10);
    const POINT to = at(10, 70);
    user.moveTo(from.x, from.y);
    user.press();
    user.moveTo(to.x, to.y);
    settle();
    EXPECT_EQ(ask(LB_GETCURSEL), 3);
    const POINT below = at(10, 120);
    user.moveTo(below.x, below.y);
    settle();
    EXPECT_GT(ask(LB_GETTOPINDEX), 0);
    wait(500);
    const LRESULT reached = ask(LB_GETTOPINDEX);
    EXPECT_GT(reached, 5);
    EXPECT_EQ(ask(LB_GETCURSEL), reached + 4);
    const POINT above = at(10, -20);
    user.moveTo(above.x, above.y);
    settle();
    wait(2000);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 0);
    EXPECT_EQ(ask(LB_GETCURSEL), 0);
    takeCodes();
    user.release();
    settle();
    EXPECT_EQ(takeCodes(), Indexes{LBN_SELCHANGE});
    wait(500);
    EXPECT_EQ(ask(LB_GETTOPINDEX), 0);
}

TEST_F(ListBoxInputTest, takesTheSelectionAwayWithCtrlAndAClick) {
    makeFilled(plain, 4);
    clickItem(2);
    takeCodes();
    clickWith(VK_CONTROL, 2);
    EXPECT_EQ(ask(LB_GETCURSEL), -1);
    EXPECT_EQ(takeCodes(), Indexes{LBN_SELCANCEL});
    clickWith(VK_CONTROL, 1);
    EXPECT_EQ(ask(LB_GETCURSEL), 1);
    EXPECT_EQ(takeCodes(), Indexes{LBN_SELCHANGE});
}

TEST_F(ListBoxInputTest, togglesItemsOfAMultipleList) {
    makeFilled(plain | LBS_MULTIPLESEL, 5);
    clickItem(1);
    clickItem(3);
    EXPECT_EQ(selection(), (Indexes{1, 3}));
    clickItem(1);
    EXPECT_EQ(selection(), Indexes{3});
    takeCodes();
    pressKey(VK_HOME);
    EXPECT_EQ(takeCodes(), Indexes{LBN_SELCHANGE}) << "each arrow tells, though nothing is selected by it";
    EXPECT_EQ(selection(), Indexes{3});
    pressKey(VK_SPACE);
    EXPECT_EQ(selection(), (Indexes{0, 3}));
}

TEST_F(ListBoxInputTest, extendsASelectionWithShiftAndCtrl) {
    makeFilled(plain | LBS_EXTENDEDSEL, 5);
    clickItem(1);
    clickWith(VK_SHIFT, 3);
    EXPECT_EQ(selection(), (Indexes{1, 2, 3}));
    clickWith(VK_CONTROL, 2);
    EXPECT_EQ(selection(), (Indexes{1, 3}));
    clickItem(4);
    EXPECT_EQ(selection(), Indexes{4});
    user.keyWith(VK_SHIFT, VK_UP);
    user.keyWith(VK_SHIFT, VK_UP);
    settle();
    EXPECT_EQ(selection(), (Indexes{2, 3, 4}));
    user.keyWith(VK_CONTROL, VK_HOME);
    settle();
    EXPECT_EQ(ask(LB_GETCARETINDEX), 0);
    EXPECT_EQ(selection(), (Indexes{2, 3, 4}));
    user.keyWith(VK_CONTROL, VK_SPACE);
    settle();
    EXPECT_EQ(selection(), (Indexes{0, 2, 3, 4}));
}

TEST_F(ListBoxInputTest, givesBackWhatADraggedRangeLeavesAgain) {
    makeFilled(plain | LBS_EXTENDEDSEL, 5);
    clickItem(3);
    user.keyDown(VK_CONTROL);
    const POINT first = at(10, 10);
    const POINT last = at(10, 90);
    const POINT second = at(10, 30);
    user.moveTo(first.x, first.y);
    user.press();
    user.moveTo(last.x, last.y);
    settle();
    EXPECT_EQ(selection(), (Indexes{0, 1, 2, 3, 4}));
    user.moveTo(second.x, second.y);
    settle();
    EXPECT_EQ(selection(), (Indexes{0, 1, 3}));
    user.release();
    user.keyUp(VK_CONTROL);
    settle();
}

TEST_F(ListBoxInputTest, walksByKeysAndTellsOfChangesOnly) {
    makeFilled(plain | WS_VSCROLL, 30);
    SetFocus(list);
    takeCodes();
    struct Row {
        int key;
        LRESULT current;
        LRESULT top;
        bool tells;
    };
    const Row rows[] = {
        {VK_DOWN, 0, 0, true},  {VK_DOWN, 1, 0, true},    {VK_RIGHT, 2, 0, true}, {VK_LEFT, 1, 0, true},
        {VK_NEXT, 5, 1, true},  {VK_NEXT, 9, 5, true},    {VK_PRIOR, 5, 5, true}, {VK_PRIOR, 1, 1, true},
        {VK_END, 29, 25, true}, {VK_DOWN, 29, 25, false}, {VK_UP, 28, 25, true},  {VK_HOME, 0, 0, true},
        {VK_UP, 0, 0, false},   {VK_SHIFT, 0, 0, false},
    };
    int number = 0;
    for (const Row& row : rows) {
        pressKey(row.key);
        EXPECT_EQ(ask(LB_GETCURSEL), row.current) << "row " << number;
        EXPECT_EQ(ask(LB_GETTOPINDEX), row.top) << "row " << number;
        EXPECT_EQ(takeCodes(), row.tells ? Indexes{LBN_SELCHANGE} : Indexes{}) << "row " << number;
        ++number;
    }
}

TEST_F(ListBoxInputTest, findsWhatIsTyped) {
    makeList(plain);
    for (const char* text : {"beta", "alpha", "Alto", "gamma", "alpine"})
        add(text);
    SetFocus(list);
    const auto typed = [this](const char* text) {
        user.type(text);
        settle();
        return ask(LB_GETCURSEL);
    };
    EXPECT_EQ(typed("a"), 1);
    EXPECT_EQ(typed("lpi"), 4) << "quickly typed letters belong together";
    wait(1500);
    EXPECT_EQ(typed("a"), 1) << "after a pause the search begins anew, behind the last match";
    EXPECT_EQ(typed("a"), 2) << "one letter again and again steps on";
    EXPECT_EQ(typed("a"), 4);
    wait(1500);
    takeCodes();
    EXPECT_EQ(typed("x"), 4);
    EXPECT_EQ(takeCodes(), Indexes{});
}

TEST_F(ListBoxInputTest, asksTheOwnerAboutKeysWhenItWantsThem) {
    LRESULT answer = -2;
    std::vector<std::pair<int, int>> asked;
    const auto handler = [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        EXPECT_EQ(lParam, reinterpret_cast<LPARAM>(list));
        asked.emplace_back(LOWORD(wParam), HIWORD(wParam));
        return answer;
    };
    recorder.onMessage(WM_VKEYTOITEM, handler);
    recorder.onMessage(WM_CHARTOITEM, handler);
    makeFilled(plain | LBS_WANTKEYBOARDINPUT, 4);
    ask(LB_SETCURSEL, 1);
    ask(WM_KEYDOWN, VK_DOWN);
    EXPECT_EQ(ask(LB_GETCURSEL), 1) << "-2: the owner did all";
    EXPECT_EQ(asked, (std::vector<std::pair<int, int>>{{VK_DOWN, 1}}));
    answer = 3;
    ask(WM_KEYDOWN, VK_UP);
    EXPECT_EQ(ask(LB_GETCURSEL), 3) << "the owner chose the item";
    answer = -1;
    ask(WM_KEYDOWN, VK_UP);
    EXPECT_EQ(ask(LB_GETCURSEL), 2);
    DestroyWindow(list);
    makeFilled(plain | LBS_WANTKEYBOARDINPUT | LBS_OWNERDRAWFIXED, 4);
    asked.clear();
    answer = 2;
    ask(WM_CHAR, 'q');
    EXPECT_EQ(ask(LB_GETCURSEL), 2);
    EXPECT_EQ(asked, (std::vector<std::pair<int, int>>{{'q', 0}}));
}

TEST_F(ListBoxInputTest, answersTheDialogThatItWantsArrowsAndCharacters) {
    makeList(plain);
    EXPECT_EQ(ask(WM_GETDLGCODE), DLGC_WANTARROWS | DLGC_WANTCHARS);
}

TEST_F(ListBoxInputTest, survivesBeingDestroyedInItsNotifications) {
    for (const int code : {LBN_SETFOCUS, LBN_SELCHANGE, LBN_DBLCLK}) {
        makeFilled(plain | WS_VSCROLL, 30);
        onCode = [&](int came) {
            if (came == code)
                DestroyWindow(list);
        };
        const POINT point = at(10, 30);
        user.doubleClick(point.x, point.y);
        settle();
        EXPECT_EQ(IsWindow(list), FALSE) << code;
        EXPECT_EQ(GetCapture(), nullptr) << code;
        onCode = {};
        screen.advance(2000);
        settle();
    }
    makeFilled(plain, 4);
    SetFocus(list);
    onCode = [&](int came) {
        if (came == LBN_SELCHANGE)
            DestroyWindow(list);
    };
    pressKey(VK_DOWN);
    EXPECT_EQ(IsWindow(list), FALSE);
    onCode = {};
}

} // namespace
