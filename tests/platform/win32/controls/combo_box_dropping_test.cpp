// The list that drops down: opening, choosing, closing, and what is notified.
#include "combo_box_fixture.h"

using namespace vndk::test;

namespace {

class ComboBoxDroppingTest : public ComboBoxFixture {
protected:
    static constexpr DWORD dropStyles[] = {CBS_DROPDOWN | WS_VSCROLL, CBS_DROPDOWNLIST | WS_VSCROLL};

    /// Focus, five items, the third selected; notifications begin here.
    void makeReady(DWORD style, int items = 5) {
        makeCombo(style, 200);
        fill(items);
        ask(CB_SETCURSEL, 2);
        SetFocus(combo);
        settle();
        takeCodes();
    }
    [[nodiscard]] HWND focusOf(DWORD style) const {
        return (style & CBS_DROPDOWNLIST) == CBS_DROPDOWNLIST ? combo : info.hwndItem;
    }
};

TEST_F(ComboBoxDroppingTest, opensOnAPressOfTheButtonAndClosesOnAChoice) {
    makeCombo(CBS_DROPDOWN | bars, 150, 200);
    fill(16);
    takeCodes();
    const LPARAM onButton = MAKELPARAM((info.rcButton.left + info.rcButton.right) / 2, 10);
    EXPECT_NE(ask(WM_LBUTTONDOWN, MK_LBUTTON, onButton), 0);
    EXPECT_TRUE(dropped());
    EXPECT_EQ(GetFocus(), info.hwndItem);
    EXPECT_EQ(takeCodes(), (Codes{CBN_SETFOCUS, CBN_DROPDOWN}));
    GetComboBoxInfo(combo, &info);
    EXPECT_EQ(info.stateButton, STATE_SYSTEM_PRESSED);
    EXPECT_NE(ask(WM_LBUTTONUP, 0, onButton), 0);
    EXPECT_TRUE(dropped());
    const LPARAM second = MAKELPARAM(10, ask(CB_GETITEMHEIGHT, 0) * 3 / 2);
    EXPECT_EQ(SendMessage(info.hwndList, WM_MOUSEMOVE, 0, second), 0);
    EXPECT_EQ(SendMessage(info.hwndList, WM_LBUTTONDOWN, MK_LBUTTON, second), 0);
    EXPECT_TRUE(dropped());
    EXPECT_EQ(takeCodes(), Codes{});
    EXPECT_EQ(SendMessage(info.hwndList, WM_LBUTTONUP, 0, second), 0);
    EXPECT_FALSE(dropped());
    EXPECT_EQ(ask(CB_GETCURSEL), 1);
    EXPECT_EQ(field(), "item 1");
    EXPECT_EQ(GetFocus(), info.hwndItem);
    EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ComboBoxDroppingTest, highlightsWhatThePointerIsOver) {
    for (const DWORD style : dropStyles) {
        makeReady(style);
        clickButton();
        ASSERT_TRUE(dropped());
        const POINT fourth = itemPoint(3);
        user.moveTo(fourth.x, fourth.y);
        settle();
        EXPECT_EQ(SendMessage(info.hwndList, LB_GETCURSEL, 0, 0), 3);
        EXPECT_EQ(takeCodes(), Codes{CBN_DROPDOWN}) << "pointing chooses nothing";
        user.press();
        user.release();
        settle();
        EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
        EXPECT_EQ(field(), "item 3");
        DestroyWindow(combo);
        screen.advance(1000);
    }
}

TEST_F(ComboBoxDroppingTest, choosesWithOneDragFromTheButton) {
    makeReady(CBS_DROPDOWNLIST);
    const POINT button = onScreen(combo, info.rcButton.left + 5, 10);
    user.moveTo(button.x, button.y);
    user.press();
    settle();
    ASSERT_TRUE(dropped());
    const POINT first = itemPoint(0);
    user.moveTo(first.x, first.y);
    user.release();
    settle();
    EXPECT_FALSE(dropped());
    EXPECT_EQ(field(), "item 0");
    EXPECT_EQ(takeCodes(), (Codes{CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
}

TEST_F(ComboBoxDroppingTest, tellsOfAChoiceOfTheSameItem) {
    makeReady(CBS_DROPDOWNLIST);
    clickButton();
    const POINT same = itemPoint(2);
    user.click(same.x, same.y);
    settle();
    EXPECT_EQ(takeCodes(), (Codes{CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
}

TEST_F(ComboBoxDroppingTest, givesTheSelectionBackOnEscape) {
    for (const DWORD style : dropStyles) {
        makeReady(style);
        ask(CB_SHOWDROPDOWN, TRUE);
        const POINT first = itemPoint(0);
        user.moveTo(first.x, first.y);
        settle();
        pressKey(VK_ESCAPE);
        EXPECT_FALSE(dropped());
        EXPECT_EQ(ask(CB_GETCURSEL), 2);
        EXPECT_EQ(field(), "item 2");
        EXPECT_EQ(takeCodes(), (Codes{CBN_DROPDOWN, CBN_SELENDCANCEL, CBN_CLOSEUP}));
        // What arrow keys changed was told, so its end is told, too.
        ask(CB_SHOWDROPDOWN, TRUE);
        pressKey(VK_DOWN);
        EXPECT_EQ(field(), "item 3");
        EXPECT_EQ(takeCodes(), (Codes{CBN_DROPDOWN, CBN_SELCHANGE}));
        pressKey(VK_ESCAPE);
        EXPECT_EQ(field(), "item 2");
        EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDCANCEL, CBN_CLOSEUP, CBN_SELCHANGE}));
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxDroppingTest, opensAndClosesByKeys) {
    for (const DWORD style : dropStyles) {
        makeReady(style);
        pressKey(VK_F4);
        EXPECT_TRUE(dropped());
        pressKey(VK_F4);
        EXPECT_FALSE(dropped());
        EXPECT_EQ(takeCodes(), (Codes{CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP}));
        user.keyWith(VK_MENU, VK_DOWN);
        settle();
        EXPECT_TRUE(dropped());
        pressKey(VK_DOWN);
        pressKey(VK_RETURN);
        EXPECT_FALSE(dropped());
        EXPECT_EQ(field(), "item 3");
        EXPECT_EQ(takeCodes(), (Codes{CBN_DROPDOWN, CBN_SELCHANGE, CBN_SELENDOK, CBN_CLOSEUP}));
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxDroppingTest, keepsReturnAndEscapeFromTheDialogWhileItIsOpen) {
    for (const DWORD style : dropStyles) {
        makeReady(style);
        MSG key{focusOf(style), WM_KEYDOWN, VK_RETURN, 0, 0, {}};
        const auto code = [&] { return SendMessage(focusOf(style), WM_GETDLGCODE, 0, reinterpret_cast<LPARAM>(&key)); };
        EXPECT_EQ(code() & DLGC_WANTMESSAGE, 0);
        ask(CB_SHOWDROPDOWN, TRUE);
        EXPECT_NE(code() & DLGC_WANTMESSAGE, 0);
        key.wParam = VK_TAB;
        EXPECT_EQ(code() & DLGC_WANTMESSAGE, 0);
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxDroppingTest, changesTheSelectionByArrowsWhileItIsClosed) {
    makeReady(CBS_DROPDOWNLIST);
    struct Row {
        int key;
        int current;
        bool tells;
    };
    const Row rows[] = {{VK_DOWN, 3, true}, {VK_RIGHT, 4, true}, {VK_DOWN, 4, false}, {VK_UP, 3, true},
                        {VK_HOME, 0, true}, {VK_LEFT, 0, false}, {VK_END, 4, true},   {VK_PRIOR, 0, true}};
    for (const Row& row : rows) {
        pressKey(row.key);
        EXPECT_EQ(ask(CB_GETCURSEL), row.current) << row.key;
        EXPECT_EQ(takeCodes(), row.tells ? (Codes{CBN_SELENDOK, CBN_SELCHANGE}) : Codes{}) << row.key;
    }
    user.type("i");
    settle();
    EXPECT_EQ(ask(CB_GETCURSEL), 1) << "a letter goes to the next item that begins with it";
    EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDOK, CBN_SELCHANGE}));
}

// In the handler the list has the new selection; an edit control has still the old text, a plain field the new one.
TEST_F(ComboBoxDroppingTest, updatesTheEditControlAfterTheHandler) {
    struct Row {
        DWORD style;
        std::vector<std::string> fields;
    };
    const Row rows[] = {
        {CBS_SIMPLE, {"", "alpha"}}, {CBS_DROPDOWN, {"", "alpha"}}, {CBS_DROPDOWNLIST, {"alpha", "beta"}}};
    for (const Row& row : rows) {
        makeCombo(row.style, 150);
        add("alpha");
        add("beta");
        SetFocus(combo);
        std::vector<std::string> fields;
        std::vector<std::string> chosen;
        onCode = [&](int code) {
            if (code != CBN_SELCHANGE)
                return;
            fields.push_back(field());
            chosen.push_back(itemText(ask(CB_GETCURSEL)));
        };
        ask(WM_KEYDOWN, VK_DOWN);
        ask(WM_KEYDOWN, VK_DOWN);
        EXPECT_EQ(fields, row.fields) << row.style;
        EXPECT_EQ(chosen, (std::vector<std::string>{"alpha", "beta"})) << row.style;
        EXPECT_EQ(field(), "beta") << row.style;
        onCode = {};
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxDroppingTest, closesOnAPressElsewhereWhichThenDoesItsOwnWork) {
    makeReady(CBS_DROPDOWNLIST);
    const HWND button = make("BUTTON", 0, 250, 5, 60, 24, "Other", 0, 7);
    clickButton();
    ASSERT_TRUE(dropped());
    const POINT first = itemPoint(0);
    user.moveTo(first.x, first.y);
    settle();
    takeCodes();
    clickAt(button, 10, 10);
    EXPECT_FALSE(dropped());
    EXPECT_EQ(ask(CB_GETCURSEL), 2);
    EXPECT_EQ(GetFocus(), button);
    const Codes expected{CBN_SELENDCANCEL, CBN_CLOSEUP, CBN_SELENDCANCEL, CBN_KILLFOCUS, 0};
    EXPECT_EQ(takeCodes(), expected) << "0 is the button's click";
    clickButton();
    ASSERT_TRUE(dropped());
    clickButton();
    EXPECT_FALSE(dropped()) << "a press on the combo box only closes";
}

TEST_F(ComboBoxDroppingTest, putsTheCaretWhereAPressInTheTextClosedTheList) {
    makeReady(CBS_DROPDOWN);
    clickButton();
    ASSERT_TRUE(dropped());
    clickAt(combo, info.rcButton.left - 5, 10);
    EXPECT_FALSE(dropped());
    EXPECT_EQ(ask(CB_GETEDITSEL), MAKELRESULT(6, 6)) << "behind the last character";
}

TEST_F(ComboBoxDroppingTest, closesWhenTheFocusGoes) {
    for (const DWORD style : dropStyles) {
        makeReady(style);
        SetFocus(owner);
        EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDCANCEL, CBN_KILLFOCUS}));
        SetFocus(combo);
        ask(CB_SHOWDROPDOWN, TRUE);
        EXPECT_EQ(takeCodes(), (Codes{CBN_SETFOCUS, CBN_DROPDOWN}));
        SetFocus(owner);
        EXPECT_FALSE(dropped());
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDCANCEL, CBN_CLOSEUP, CBN_KILLFOCUS}));
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxDroppingTest, standsBelowItselfOrAboveWhereThereIsMoreRoom) {
    makeReady(CBS_DROPDOWNLIST);
    ask(CB_SHOWDROPDOWN, TRUE);
    EXPECT_EQ(windowRect(info.hwndList).top, windowRect(combo).bottom);
    EXPECT_EQ(windowRect(info.hwndList).left, windowRect(combo).left);
    EXPECT_EQ(windowRect(info.hwndList).right, windowRect(combo).right);
    ask(CB_SHOWDROPDOWN, FALSE);
    SetWindowPos(owner, nullptr, screenWidth - 60, screenHeight - 60, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    ask(CB_SHOWDROPDOWN, TRUE);
    EXPECT_EQ(windowRect(info.hwndList).bottom, windowRect(combo).top);
    EXPECT_EQ(windowRect(info.hwndList).right, screenWidth);
}

TEST_F(ComboBoxDroppingTest, scrollsTheOpenListByItsBarAndTheWheel) {
    makeReady(CBS_DROPDOWNLIST | bars, 40);
    clickButton();
    ASSERT_TRUE(dropped());
    const HWND list = info.hwndList;
    const LRESULT before = SendMessage(list, LB_GETTOPINDEX, 0, 0);
    EXPECT_EQ(before, 2) << "the selected item comes to the top";
    const RECT frame = windowRect(list);
    user.click(frame.right - 8, frame.bottom - 8);
    settle();
    EXPECT_EQ(SendMessage(list, LB_GETTOPINDEX, 0, 0), before + 1);
    EXPECT_TRUE(dropped());
    EXPECT_EQ(GetCapture(), list);
    user.turnWheel(-120);
    settle();
    EXPECT_EQ(SendMessage(list, LB_GETTOPINDEX, 0, 0), before + 4);
    EXPECT_EQ(takeCodes(), Codes{CBN_DROPDOWN});
    ask(CB_SHOWDROPDOWN, FALSE);
    takeCodes();
    user.turnWheel(-120);
    settle();
    EXPECT_EQ(ask(CB_GETCURSEL), 3) << "closed, the wheel steps through the items";
    EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDOK, CBN_SELCHANGE}));
}

TEST_F(ComboBoxDroppingTest, opensByDownInTheExtendedInterface) {
    makeReady(CBS_DROPDOWNLIST);
    EXPECT_EQ(ask(CB_GETEXTENDEDUI), FALSE);
    EXPECT_EQ(ask(CB_SETEXTENDEDUI, TRUE), CB_OKAY);
    EXPECT_EQ(ask(CB_GETEXTENDEDUI), TRUE);
    pressKey(VK_UP);
    pressKey(VK_F4);
    EXPECT_EQ(takeCodes(), Codes{});
    pressKey(VK_DOWN);
    EXPECT_TRUE(dropped());
    EXPECT_EQ(ask(CB_GETCURSEL), 2);
}

TEST_F(ComboBoxDroppingTest, isFilledInTheDropDownNotification) {
    makeCombo(CBS_DROPDOWNLIST, 200);
    onCode = [this](int code) {
        if (code == CBN_DROPDOWN)
            fill(4);
    };
    ask(CB_SHOWDROPDOWN, TRUE);
    EXPECT_EQ(clientRect(info.hwndList).bottom, 4 * ask(CB_GETITEMHEIGHT, 0));
    onCode = {};
}

TEST_F(ComboBoxDroppingTest, survivesBeingDestroyedInItsNotifications) {
    for (const DWORD style : dropStyles)
        for (const int code : {CBN_SETFOCUS, CBN_DROPDOWN, CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}) {
            makeCombo(style, 200);
            fill(5);
            onCode = [&](int came) {
                if (came == code)
                    DestroyWindow(combo);
            };
            clickButton();
            if (IsWindow(combo) != FALSE) {
                const POINT item = itemPoint(1);
                user.click(item.x, item.y);
                settle();
            }
            EXPECT_EQ(IsWindow(combo), FALSE) << code;
            EXPECT_EQ(IsWindow(info.hwndList), FALSE) << code;
            EXPECT_EQ(GetCapture(), nullptr) << code;
            onCode = {};
            screen.advance(1000);
            SetFocus(owner);
        }
}

// A subclass that eats the press, and shows something else instead, never meets the list.
TEST_F(ComboBoxDroppingTest, leavesDroppingToASubclass) {
    makeReady(CBS_DROPDOWNLIST);
    recorder.watch(combo);
    int presses = 0;
    recorder.onMessage(WM_LBUTTONDOWN, [&](HWND window, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (window != combo)
            return std::nullopt;
        ++presses;
        return 0;
    });
    clickButton();
    EXPECT_EQ(presses, 1);
    EXPECT_FALSE(dropped());
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(takeCodes(), Codes{});
}

} // namespace
