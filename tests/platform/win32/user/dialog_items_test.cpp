// Calls on controls by id, and the order of controls.
#include "dialog_fixture.h"

namespace {

using namespace vndk::test;

class DialogItemsTest : public DialogFixture {
protected:
    /// A group a, b, c (disabled), d with ids 1 to 4 and, behind it, the begin of another group with id 5.
    HWND createGroup() {
        return create(DialogBuilder(WS_POPUP)
                          .control("Button", "a", WS_GROUP, 1)
                          .control("Button", "b", 0, 2)
                          .control("Button", "c", WS_DISABLED, 3)
                          .control("Button", "d", 0, 4)
                          .control("Button", "e", WS_GROUP, 5));
    }
};

TEST_F(DialogItemsTest, NumbersAreReadFromTheBeginOfTheText) {
    struct Case {
        const char* text;
        bool isSigned;
        bool good;
        UINT value;
    };
    const Case cases[] = {
        {"42", true, true, 42},
        {"  7", true, true, 7},
        {"-7", true, true, static_cast<UINT>(-7)},
        {"-7", false, false, 0},
        {"+7", true, true, 7},
        {"12abc", true, true, 12},
        {"abc", true, false, 0},
        {"", true, false, 0},
        {"-", true, false, 0},
        {"2147483647", true, true, 2147483647},
        {"2147483648", true, false, 0},
        {"-2147483648", true, true, 0x80000000U},
        {"-2147483649", true, false, 0},
        {"4294967295", false, true, 4294967295U},
        {"4294967296", false, false, 0},
        {"99999999999999999999999999", false, false, 0},
    };
    const HWND dialog = create(DialogBuilder(WS_POPUP).control("Edit", "", ES_AUTOHSCROLL, 10));
    for (const Case& each : cases) {
        SetDlgItemText(dialog, 10, each.text);
        BOOL translated = 7;
        EXPECT_EQ(GetDlgItemInt(dialog, 10, &translated, each.isSigned ? TRUE : FALSE), each.value) << each.text;
        EXPECT_EQ(translated, each.good ? TRUE : FALSE) << each.text;
    }
    BOOL translated = TRUE;
    EXPECT_EQ(GetDlgItemInt(dialog, 11, &translated, TRUE), 0U);
    EXPECT_FALSE(translated);
}

TEST_F(DialogItemsTest, NumbersAreWrittenSignedOrNot) {
    const HWND dialog = create(DialogBuilder(WS_POPUP).control("Edit", "", ES_AUTOHSCROLL, 10));
    char text[20];
    SetDlgItemInt(dialog, 10, static_cast<UINT>(-5), TRUE);
    EXPECT_EQ(GetDlgItemText(dialog, 10, text, sizeof text), 2U);
    EXPECT_STREQ(text, "-5");
    SetDlgItemInt(dialog, 10, static_cast<UINT>(-5), FALSE);
    GetDlgItemText(dialog, 10, text, sizeof text);
    EXPECT_STREQ(text, "4294967291");
    EXPECT_EQ(GetDlgItemText(dialog, 10, text, 4), 3U) << "cut";
    EXPECT_STREQ(text, "429");
    EXPECT_EQ(GetDlgItemText(dialog, 99, text, sizeof text), 0U);
    EXPECT_STREQ(text, "");
}

TEST_F(DialogItemsTest, MissingControlsAndDialogsAreFailures) {
    const HWND dialog = create(DialogBuilder(WS_POPUP).control("Edit", "", 0, 10));
    EXPECT_EQ(GetDlgItem(dialog, 11), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_CONTROL_ID_NOT_FOUND);
    EXPECT_EQ(GetDlgItem(nullptr, 10), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_FALSE(SetDlgItemText(dialog, 11, "x"));
    EXPECT_EQ(SendDlgItemMessage(dialog, 11, WM_GETTEXTLENGTH, 0, 0), 0);
    EXPECT_FALSE(CheckDlgButton(dialog, 11, BST_CHECKED));
    EXPECT_EQ(GetDlgCtrlID(nullptr), 0);
}

TEST_F(DialogItemsTest, RadioButtonsBetweenTwoIdsExcludeEachOther) {
    const HWND dialog = create(DialogBuilder(WS_POPUP)
                                   .control("Button", "a", BS_RADIOBUTTON, 1)
                                   .control("Button", "b", BS_RADIOBUTTON, 2)
                                   .control("Button", "x", BS_CHECKBOX, 7)
                                   .control("Button", "c", BS_RADIOBUTTON, 3)
                                   .control("Button", "d", BS_RADIOBUTTON, 4));
    CheckDlgButton(dialog, 7, BST_CHECKED);
    CheckDlgButton(dialog, 4, BST_CHECKED);
    EXPECT_TRUE(CheckRadioButton(dialog, 1, 3, 2));
    EXPECT_TRUE(CheckRadioButton(dialog, 1, 3, 3));
    EXPECT_EQ(IsDlgButtonChecked(dialog, 1), 0U);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 2), 0U);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 3), 1U);
    EXPECT_EQ(IsDlgButtonChecked(dialog, 4), 1U) << "outside of the range";
    EXPECT_EQ(IsDlgButtonChecked(dialog, 7), 1U) << "no radio button";
    EXPECT_FALSE(CheckRadioButton(dialog, 1, 99, 2));
}

TEST_F(DialogItemsTest, GroupItemsPassOverDisabledOnesAndGoRound) {
    struct Case {
        int from;
        BOOL previous;
        int to;
    };
    const Case cases[] = {
        {1, FALSE, 2}, {2, FALSE, 4}, {4, FALSE, 1}, {1, TRUE, 4},
        {4, TRUE, 2},  {3, FALSE, 4}, {5, FALSE, 5}, {5, TRUE, 5},
    };
    const HWND dialog = createGroup();
    for (const Case& each : cases)
        EXPECT_EQ(GetDlgCtrlID(GetNextDlgGroupItem(dialog, GetDlgItem(dialog, each.from), each.previous)), each.to)
            << "from " << each.from << (each.previous ? " backward" : " forward");
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgGroupItem(dialog, nullptr, FALSE)), 1);
}

TEST_F(DialogItemsTest, HiddenMembersOfAGroupArePassedOver) {
    const HWND dialog = createGroup();
    ShowWindow(GetDlgItem(dialog, 4), SW_HIDE);
    EXPECT_EQ(GetDlgCtrlID(GetNextDlgGroupItem(dialog, GetDlgItem(dialog, 2), FALSE)), 1);
}

TEST_F(DialogItemsTest, TabItemsArePassedThroughPartsOfTheDialog) {
    const HWND dialog = create(DialogBuilder(WS_POPUP | WS_VISIBLE)
                                   .control("Edit", "", WS_TABSTOP, 1)
                                   .control("Static", "", 0, 2)
                                   .control("Edit", "", WS_TABSTOP | WS_DISABLED, 3));
    const auto partBytes = DialogBuilder(WS_CHILD | WS_VISIBLE | DS_CONTROL)
                               .control("Edit", "", WS_TABSTOP, 11)
                               .control("Edit", "", WS_TABSTOP, 12)
                               .bytes();
    const HWND part = vndk::win32::createDialog(nullptr, partBytes, dialog, nullptr, 0);
    const HWND last = CreateWindow("Button", "", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0, 10, 10, dialog,
                                   reinterpret_cast<HMENU>(UINT_PTR{4}), nullptr, nullptr);
    std::vector<int> forward;
    HWND at = nullptr;
    for (int i = 0; i < 5; ++i)
        forward.push_back(GetDlgCtrlID(at = GetNextDlgTabItem(dialog, at, FALSE)));
    EXPECT_EQ(forward, (std::vector<int>{1, 11, 12, 4, 1}));
    EXPECT_EQ(GetNextDlgTabItem(dialog, GetDlgItem(part, 11), TRUE), GetDlgItem(dialog, 1));
    EXPECT_EQ(GetNextDlgTabItem(dialog, nullptr, TRUE), last);

    ShowWindow(part, SW_HIDE);
    EXPECT_EQ(GetNextDlgTabItem(dialog, GetDlgItem(dialog, 1), FALSE), last) << "a hidden part isn't entered";
    EnableWindow(last, FALSE);
    EXPECT_EQ(GetNextDlgTabItem(dialog, GetDlgItem(dialog, 1), FALSE), GetDlgItem(dialog, 1)) << "no other is left";
}

TEST_F(DialogItemsTest, SearchesRefuseWindowsThatAreNotInTheDialog) {
    const HWND dialog = createGroup();
    const HWND other = createOwner();
    EXPECT_EQ(GetNextDlgTabItem(dialog, other, FALSE), nullptr);
    EXPECT_EQ(GetNextDlgGroupItem(dialog, other, FALSE), nullptr);
    EXPECT_EQ(GetNextDlgTabItem(nullptr, nullptr, FALSE), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
}

} // namespace
