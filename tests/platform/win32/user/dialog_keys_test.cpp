// The keyboard of dialogs.
#include "dialog_fixture.h"
#include "win32/static.h"

namespace {

using namespace vndk::test;

class DialogKeysTest : public DialogFixture {
protected:
    /// Notes all WM_COMMAND of buttons' clicks.
    Answer noting() {
        return [this](HWND, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
            if (message == WM_COMMAND && HIWORD(wParam) == BN_CLICKED)
                commands.push_back(LOWORD(wParam));
            return message == WM_INITDIALOG;
        };
    }
    HWND createShown(DialogBuilder builder) {
        commands.clear();
        const HWND dialog = create(builder, nullptr, noting());
        settleDialog(dialog);
        return dialog;
    }
    static DialogBuilder shown() { return DialogBuilder(WS_POPUP | WS_VISIBLE); }

    std::vector<int> commands;
};

TEST_F(DialogKeysTest, TabGoesThroughTheTabStopsAndSelectsText) {
    const HWND dialog = createShown(shown()
                                        .control("Edit", "one", WS_TABSTOP, 1)
                                        .control("Button", "no stop", 0, 2)
                                        .control("Edit", "three", WS_TABSTOP, 3)
                                        .control("Edit", "off", WS_TABSTOP | WS_DISABLED, 4)
                                        .control("Button", "five", WS_TABSTOP, 5));
    std::vector<int> order;
    for (int i = 0; i < 3; ++i) {
        pressIn(dialog, VK_TAB);
        order.push_back(focusId());
    }
    EXPECT_EQ(order, (std::vector<int>{3, 5, 1}));
    pressIn(dialog, VK_TAB, VK_SHIFT);
    EXPECT_EQ(focusId(), 5);
    pressIn(dialog, VK_TAB, VK_SHIFT);
    DWORD end = 0;
    SendDlgItemMessage(dialog, 3, EM_GETSEL, 0, reinterpret_cast<LPARAM>(&end));
    EXPECT_EQ(end, 5U);
}

TEST_F(DialogKeysTest, PlainWindowsHaveTabStopsToo) {
    const HWND window = createOwner();
    const auto add = [window](DWORD style, int id) {
        return CreateWindow("Button", "", WS_CHILD | WS_VISIBLE | style, 0, 0, 20, 20, window,
                            reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), nullptr, nullptr);
    };
    add(WS_TABSTOP, 1);
    add(0, 2);
    add(WS_TABSTOP, 3);
    MSG message{window, WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
    SetFocus(nullptr);
    EXPECT_TRUE(IsDialogMessage(window, &message));
    EXPECT_EQ(focusId(), 1);
    EXPECT_TRUE(IsDialogMessage(window, &message));
    EXPECT_EQ(focusId(), 3);
}

TEST_F(DialogKeysTest, ArrowsStayInTheGroup) {
    const HWND dialog = createShown(shown()
                                        .control("Button", "a", WS_TABSTOP | WS_GROUP, 1)
                                        .control("Static", "label", 0, 9)
                                        .control("Button", "b", 0, 2)
                                        .control("Button", "c", WS_GROUP | WS_TABSTOP, 3));
    pressIn(dialog, VK_RIGHT);
    EXPECT_EQ(focusId(), 2) << "labels are passed over";
    pressIn(dialog, VK_DOWN);
    EXPECT_EQ(focusId(), 1);
    pressIn(dialog, VK_UP);
    EXPECT_EQ(focusId(), 2);
    EXPECT_TRUE(commands.empty()) << "push buttons are not pressed by it";
}

TEST_F(DialogKeysTest, ArrowsCheckRadioButtons) {
    const HWND dialog = createShown(shown()
                                        .control("Button", "a", WS_TABSTOP | WS_GROUP | BS_AUTORADIOBUTTON, 1)
                                        .control("Button", "b", BS_AUTORADIOBUTTON, 2)
                                        .control("Button", "c", BS_AUTORADIOBUTTON, 3)
                                        .control("Edit", "", WS_GROUP | WS_TABSTOP, 4));
    CheckRadioButton(dialog, 1, 3, 1);
    EXPECT_EQ(commands, (std::vector<int>{1})) << "the first focus chose it";
    commands.clear();
    pressIn(dialog, VK_DOWN);
    EXPECT_EQ(focusId(), 2);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 2), 1U);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 1), 0U);
    EXPECT_EQ(commands, (std::vector<int>{2}));
    pressIn(dialog, VK_TAB);
    EXPECT_EQ(focusId(), 4);
    pressIn(dialog, VK_TAB, VK_SHIFT);
    EXPECT_EQ(focusId(), 2) << "back to the one that is checked";
}

TEST_F(DialogKeysTest, EscapeAndEnterAreCommands) {
    struct Case {
        const char* name;
        DialogBuilder builder;
        int key;
        std::vector<int> wanted;
    };
    const DialogBuilder withDefault = shown()
                                          .control("Edit", "", WS_TABSTOP, 1)
                                          .control("Button", "Go", WS_TABSTOP | BS_DEFPUSHBUTTON, 20)
                                          .control("Button", "Other", WS_TABSTOP, 21);
    const Case cases[] = {
        {"Enter presses the default button", withDefault, VK_RETURN, {20}},
        {"Escape cancels without a button", withDefault, VK_ESCAPE, {IDCANCEL}},
        {"Enter without a default button", shown().control("Edit", "", WS_TABSTOP, 1), VK_RETURN, {IDOK}},
        {"disabled default button",
         shown().control("Edit", "", WS_TABSTOP, 1).control("Button", "", BS_DEFPUSHBUTTON | WS_DISABLED, 20),
         VK_RETURN,
         {}},
        {"disabled cancel button",
         shown().control("Edit", "", WS_TABSTOP, 1).control("Button", "", WS_DISABLED, IDCANCEL),
         VK_ESCAPE,
         {}},
        {"Enter on a button that isn't the default one",
         shown().control("Button", "", WS_TABSTOP, 30).control("Button", "", WS_TABSTOP | BS_DEFPUSHBUTTON, 31),
         VK_RETURN,
         {30}},
    };
    for (const Case& each : cases) {
        const HWND dialog = createShown(each.builder);
        pressIn(dialog, each.key);
        EXPECT_EQ(commands, each.wanted) << each.name;
        DestroyWindow(dialog);
    }
}

TEST_F(DialogKeysTest, SingleLineEditLeavesItsKeysToTheDialog) {
    for (const DWORD style : {0U, ES_WANTRETURN}) {
        const HWND dialog = createShown(shown()
                                            .control("Edit", "", WS_TABSTOP | style, 100)
                                            .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK));
        pressIn(dialog, VK_ESCAPE);
        pressIn(dialog, VK_RETURN);
        EXPECT_EQ(commands, (std::vector<int>{IDCANCEL, IDOK}));
        pressIn(dialog, VK_TAB);
        EXPECT_EQ(focusId(), IDOK);
        DestroyWindow(dialog);
    }
}

TEST_F(DialogKeysTest, DefaultLookMovesWithTheFocus) {
    const HWND dialog = createShown(shown()
                                        .control("Edit", "", WS_TABSTOP, 100)
                                        .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK)
                                        .control("Button", "Cancel", WS_TABSTOP, IDCANCEL));
    pressIn(dialog, VK_TAB);
    pressIn(dialog, VK_TAB);
    EXPECT_EQ(focusId(), IDCANCEL);
    EXPECT_TRUE(looksDefault(dialog, IDCANCEL));
    EXPECT_FALSE(looksDefault(dialog, IDOK));
    pressIn(dialog, VK_RETURN);
    EXPECT_EQ(commands, (std::vector<int>{IDCANCEL}));
    pressIn(dialog, VK_TAB);
    EXPECT_TRUE(looksDefault(dialog, IDOK));
    EXPECT_FALSE(looksDefault(dialog, IDCANCEL));
}

TEST_F(DialogKeysTest, ClickMovesTheDefaultLookToo) {
    const HWND dialog = createShown(shown()
                                        .control("Edit", "", WS_TABSTOP, 100)
                                        .control("Button", "OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK)
                                        .control("Button", "Other", WS_TABSTOP, 30));
    const POINT middle = onScreen(GetDlgItem(dialog, 30), 10, 5);
    user.click(middle.x, middle.y);
    settleDialog(dialog);
    EXPECT_EQ(commands, (std::vector<int>{30}));
    EXPECT_TRUE(looksDefault(dialog, 30));
    EXPECT_FALSE(looksDefault(dialog, IDOK));
}

// ---- Mnemonics -----------------------------------------------------------------------------------------------------

TEST_F(DialogKeysTest, MarkedLettersReachControls) {
    struct Case {
        const char* name;
        char letter;
        bool alt;
        int focus; // 0: as it was
        std::vector<int> wanted;
    };
    // Begins with the focus on a button, which doesn't want letters for itself.
    const DialogBuilder builder = shown()
                                      .control("Button", "&Start", WS_TABSTOP | WS_GROUP, 1)
                                      .control("Static", "&Name", 0, 2)
                                      .control("Edit", "no &x", WS_TABSTOP, 3)
                                      .control("Button", "&Check", WS_TABSTOP | BS_AUTOCHECKBOX, 4)
                                      .control("Button", "&Twice", WS_TABSTOP, 5)
                                      .control("Button", "also &t", WS_TABSTOP, 6)
                                      .control("Button", "&Off", WS_TABSTOP | WS_DISABLED, 7)
                                      .control("Button", "&Kind", BS_GROUPBOX, 8)
                                      .control("Button", "first", WS_TABSTOP | WS_GROUP | BS_AUTORADIOBUTTON, 9)
                                      .control("Static", "a && &b", SS_NOPREFIX, 10)
                                      .control("Edit", "", WS_TABSTOP, 11);
    const Case cases[] = {
        {"label leads to the next control", 'N', true, 3, {}},
        {"bare letter", 'n', false, 3, {}},
        {"check box is clicked", 'C', true, 4, {4}},
        {"button is clicked", 'S', true, 1, {1}},
        {"two that are marked: only the focus", 'T', true, 5, {}},
        {"disabled", 'O', true, 0, {}},
        {"text of an edit is no mark", 'X', true, 0, {}},
        {"group box leads into its group, where the focus chooses", 'K', true, 9, {9}},
        {"label without prefixes", 'B', true, 0, {}},
        {"nothing is marked", 'Z', true, 0, {}},
    };
    for (const Case& each : cases) {
        const HWND dialog = createShown(builder);
        commands.clear();
        ASSERT_EQ(focusId(), 1);
        if (each.alt)
            user.keyWith(VK_MENU, each.letter);
        else
            user.key(each.letter - 'a' + 'A', static_cast<unsigned char>(each.letter));
        settleDialog(dialog);
        EXPECT_EQ(focusId(), each.focus != 0 ? each.focus : 1) << each.name;
        EXPECT_EQ(commands, each.wanted) << each.name;
        DestroyWindow(dialog);
    }
}

TEST_F(DialogKeysTest, MarkedGroupBoxLeadsToTheRadioButtonThatIsChecked) {
    const HWND dialog = createShown(shown()
                                        .control("Button", "here", WS_TABSTOP | WS_GROUP, 100)
                                        .control("Button", "&Kind", BS_GROUPBOX, 8)
                                        .control("Button", "first", WS_TABSTOP | WS_GROUP | BS_AUTORADIOBUTTON, 9)
                                        .control("Button", "second", BS_AUTORADIOBUTTON, 10));
    CheckRadioButton(dialog, 9, 10, 10);
    user.keyWith(VK_MENU, 'K');
    settleDialog(dialog);
    EXPECT_EQ(focusId(), 10);
    EXPECT_TRUE(commands.empty()) << "nothing was chosen anew";
}

TEST_F(DialogKeysTest, MarkedRadioButtonIsClickedOnce) {
    for (const DWORD kind : {BS_RADIOBUTTON, BS_AUTORADIOBUTTON}) {
        const HWND dialog = createShown(shown()
                                            .control("Button", "here", WS_TABSTOP | WS_GROUP, 100)
                                            .control("Button", "&First", WS_TABSTOP | WS_GROUP | kind, 9)
                                            .control("Button", "&Second", kind, 10));
        for (const int expected : {10, 9}) {
            commands.clear();
            user.keyWith(VK_MENU, expected == 9 ? 'F' : 'S');
            settleDialog(dialog);
            EXPECT_EQ(focusId(), expected);
            EXPECT_EQ(commands, (std::vector<int>{expected}));
            EXPECT_EQ(IsDlgButtonChecked(dialog, expected), kind == BS_AUTORADIOBUTTON ? BST_CHECKED : BST_UNCHECKED);
        }
        DestroyWindow(dialog);
    }
}

TEST_F(DialogKeysTest, LettersTypedIntoAnEditStayThere) {
    const HWND dialog = createShown(
        shown().control("Edit", "", WS_TABSTOP, 100).control("Button", "&OK", WS_TABSTOP | BS_DEFPUSHBUTTON, IDOK));
    user.type("o");
    settleDialog(dialog);
    char text[8];
    GetDlgItemText(dialog, 100, text, sizeof text);
    EXPECT_STREQ(text, "o");
    EXPECT_TRUE(commands.empty());
    user.keyWith(VK_MENU, 'O');
    settleDialog(dialog);
    EXPECT_EQ(commands, (std::vector<int>{IDOK}));
}

TEST_F(DialogKeysTest, DisabledLabelsAndHiddenControlsAreNoTargets) {
    const HWND dialog = createShown(shown()
                                        .control("Button", "here", WS_TABSTOP, 1)
                                        .control("Static", "&Name", 0, 2)
                                        .control("Edit", "", WS_TABSTOP | WS_DISABLED, 3)
                                        .control("Edit", "", WS_TABSTOP, 4));
    user.keyWith(VK_MENU, 'N');
    settleDialog(dialog);
    EXPECT_EQ(focusId(), 4) << "the next one that can be used";
}

// ---- Who wants which key -------------------------------------------------------------------------------------------

TEST_F(DialogKeysTest, ControlsKeepTheKeysThatTheyWant) {
    static LRESULT code;
    static std::vector<WPARAM> keys;
    WNDCLASSA greedy{};
    greedy.lpszClassName = "Greedy";
    greedy.lpfnWndProc = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        if (message == WM_GETDLGCODE)
            return code;
        if (message == WM_KEYDOWN)
            keys.push_back(wParam);
        return DefWindowProc(window, message, wParam, lParam);
    };
    RegisterClass(&greedy);
    struct Case {
        const char* name;
        LRESULT code;
        std::vector<WPARAM> kept;
    };
    const Case cases[] = {
        {"nothing", 0, {}},
        {"tab", DLGC_WANTTAB, {VK_TAB}},
        {"arrows", DLGC_WANTARROWS, {VK_LEFT}},
        {"all", DLGC_WANTALLKEYS, {VK_TAB, VK_LEFT, VK_RETURN, VK_ESCAPE}},
        {"characters", DLGC_WANTCHARS, {}},
    };
    for (const Case& each : cases) {
        const HWND dialog = createShown(shown().control("Greedy", "", WS_TABSTOP, 1));
        code = each.code;
        keys.clear();
        for (const int key : {VK_TAB, VK_LEFT, VK_RETURN, VK_ESCAPE})
            pressIn(dialog, key);
        EXPECT_EQ(keys, each.kept) << each.name;
        DestroyWindow(dialog);
        code = 0;
    }
}

TEST_F(DialogKeysTest, MessagesOfOtherWindowsAreLeftAlone) {
    const HWND dialog = createShown(shown().control("Edit", "", WS_TABSTOP, 1));
    const HWND other = createOwner();
    MSG message{other, WM_KEYDOWN, VK_TAB, 0, 0, {0, 0}};
    EXPECT_FALSE(IsDialogMessage(dialog, &message));
    message.hwnd = nullptr;
    EXPECT_FALSE(IsDialogMessage(dialog, &message));
    EXPECT_FALSE(IsDialogMessage(dialog, nullptr));
    EXPECT_FALSE(IsDialogMessage(nullptr, &message));
    message.hwnd = GetDlgItem(dialog, 1);
    EXPECT_FALSE(IsDialogMessage(GetDesktopWindow(), &message));
}

TEST_F(DialogKeysTest, PartsOfADialogTakePart) {
    const HWND dialog = createShown(shown().control("Button", "&First", WS_TABSTOP, 1));
    const auto partBytes = DialogBuilder(WS_CHILD | WS_VISIBLE | DS_CONTROL)
                               .control("Static", "&Inner", 0, 10)
                               .control("Edit", "", WS_TABSTOP, 11)
                               .bytes();
    vndk::win32::createDialog(nullptr, partBytes, dialog, nullptr, 0);
    SetFocus(GetDlgItem(dialog, 1));
    pressIn(dialog, VK_TAB);
    EXPECT_EQ(focusId(), 11);
    SetFocus(GetDlgItem(dialog, 1));
    user.keyWith(VK_MENU, 'I');
    settleDialog(dialog);
    EXPECT_EQ(focusId(), 11);
    pressIn(dialog, VK_ESCAPE);
    EXPECT_EQ(commands, (std::vector<int>{IDCANCEL})) << "the outer dialog ends";
}

TEST_F(DialogKeysTest, DialogMayDieOfAKey) {
    for (const int key : {VK_RETURN, VK_ESCAPE, VK_TAB, VK_RIGHT}) {
        const HWND dialog = create(
            shown().control("Button", "a", WS_TABSTOP | WS_GROUP, 1).control("Button", "b", WS_TABSTOP | BS_NOTIFY, 2),
            nullptr, [](HWND window, UINT message, WPARAM wParam, LPARAM) -> INT_PTR {
                if (message == WM_COMMAND && HIWORD(wParam) != BN_KILLFOCUS)
                    DestroyWindow(window);
                return message == WM_INITDIALOG;
            });
        pressIn(dialog, key);
        EXPECT_FALSE(IsWindow(dialog)) << "key " << key;
        if (IsWindow(dialog) != FALSE)
            DestroyWindow(dialog);
    }
}

} // namespace
