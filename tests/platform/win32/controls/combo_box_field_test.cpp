// The field: typing, focus, owner drawing, pixels.
#include "combo_box_fixture.h"

using namespace vndk::test;

namespace {

class ComboBoxFieldTest : public ComboBoxFixture {
protected:
    [[nodiscard]] std::pair<DWORD, DWORD> editSelection() const {
        DWORD first = 99;
        DWORD last = 99;
        SendMessage(info.hwndItem, EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
        return {first, last};
    }
    [[nodiscard]] std::uint32_t colorAt(int x, int y) {
        const POINT point = onScreen(combo, x, y);
        return pixel(point.x, point.y);
    }
};

using Selection = std::pair<DWORD, DWORD>;

TEST_F(ComboBoxFieldTest, tellsOfTypedTextWhichIsNoItem) {
    makeCombo(CBS_DROPDOWN);
    fill(3);
    ask(CB_SETCURSEL, 1);
    SetFocus(combo);
    takeCodes();
    user.type("x");
    settle();
    EXPECT_EQ(field(), "x") << "it replaces what was selected";
    EXPECT_EQ(takeCodes(), (Codes{CBN_EDITUPDATE, CBN_EDITCHANGE}));
    EXPECT_EQ(ask(CB_GETCURSEL), CB_ERR);
}

TEST_F(ComboBoxFieldTest, takesCharactersThatAreSentToTheComboBox) {
    makeCombo(CBS_SIMPLE);
    SetWindowText(combo, "Word");
    EXPECT_EQ(editSelection(), (Selection{0, 0}));
    ask(CB_SETEDITSEL, 0, MAKELPARAM(0, -1));
    EXPECT_EQ(editSelection(), (Selection{0, 4}));
    ask(WM_CHAR, 'A');
    EXPECT_EQ(field(), "A");
    EXPECT_EQ(editSelection(), (Selection{1, 1}));
}

TEST_F(ComboBoxFieldTest, selectsItsTextWithTheFocusAndNothingWithout) {
    makeCombo(CBS_DROPDOWN);
    SetWindowText(combo, "Word");
    SetFocus(combo);
    EXPECT_EQ(GetFocus(), info.hwndItem);
    EXPECT_EQ(editSelection(), (Selection{0, 4}));
    EXPECT_EQ(takeCodes(), Codes{CBN_SETFOCUS});
    SetFocus(owner);
    EXPECT_EQ(editSelection(), (Selection{0, 0}));
}

TEST_F(ComboBoxFieldTest, goesFromTypedTextToTheItemThatBeginsWithIt) {
    makeCombo(CBS_DROPDOWN, 150);
    for (const char* text : {"alpha", "beta", "gamma"})
        add(text);
    SetFocus(combo);
    user.type("be");
    settle();
    takeCodes();
    pressKey(VK_DOWN);
    EXPECT_EQ(field(), "beta");
    EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDOK, CBN_SELCHANGE}));
    pressKey(VK_DOWN);
    EXPECT_EQ(field(), "gamma");
    SetWindowText(combo, "al");
    ask(CB_SHOWDROPDOWN, TRUE);
    EXPECT_EQ(SendMessage(info.hwndList, LB_GETCURSEL, 0, 0), 0);
    EXPECT_EQ(field(), "al") << "the list points at the item, the text stays until it is chosen";
    takeCodes();
    pressKey(VK_RETURN);
    EXPECT_EQ(field(), "alpha");
    EXPECT_EQ(ask(CB_GETCURSEL), 0);
    EXPECT_EQ(takeCodes(), (Codes{CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
}

TEST_F(ComboBoxFieldTest, leavesKeysOfTheTextToTheEditControl) {
    makeCombo(CBS_DROPDOWN);
    fill(3);
    ask(CB_SETCURSEL, 1);
    SetFocus(combo);
    takeCodes();
    pressKey(VK_HOME);
    pressKey(VK_RIGHT);
    EXPECT_EQ(editSelection(), (Selection{1, 1}));
    EXPECT_EQ(ask(CB_GETCURSEL), 1);
    EXPECT_EQ(takeCodes(), Codes{});
}

TEST_F(ComboBoxFieldTest, choosesInTheSimpleListByClickAndDoubleClick) {
    makeCombo(CBS_SIMPLE, 150);
    fill(4);
    takeCodes();
    const POINT item = itemPoint(1);
    user.click(item.x, item.y);
    settle();
    EXPECT_EQ(GetFocus(), info.hwndItem);
    EXPECT_EQ(field(), "item 1");
    EXPECT_EQ(takeCodes(), (Codes{CBN_SETFOCUS, CBN_SELENDOK, CBN_SELCHANGE}));
    user.press();
    user.release();
    settle();
    EXPECT_EQ(takeCodes(), Codes{CBN_DBLCLK});
}

// ---- Owner drawing -------------------------------------------------------------------------------------------------

struct DrawnField {
    int item;
    UINT state;
    ULONG_PTR data;
    bool operator==(const DrawnField&) const = default;
    friend void PrintTo(const DrawnField& drawn, std::ostream* out) {
        *out << "item " << drawn.item << " state " << drawn.state << " data " << drawn.data;
    }
};

TEST_F(ComboBoxFieldTest, asksItsParentToMeasureAndDrawInItsOwnName) {
    std::vector<int> measured;
    recorder.onMessage(WM_MEASUREITEM, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        auto& item = *reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        EXPECT_EQ(wParam, static_cast<WPARAM>(controlId));
        EXPECT_EQ(item.CtlType, ODT_COMBOBOX);
        EXPECT_EQ(item.CtlID, static_cast<UINT>(controlId));
        measured.push_back(static_cast<int>(item.itemID));
        item.itemHeight = item.itemID == static_cast<UINT>(-1) ? 30 : 20 + item.itemID;
        return TRUE;
    });
    std::vector<DrawnField> drawn;
    recorder.onMessage(WM_DRAWITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        EXPECT_EQ(item.CtlType, ODT_COMBOBOX);
        if (combo == nullptr)
            return TRUE;
        EXPECT_EQ(item.hwndItem, combo);
        if ((item.itemState & ODS_COMBOBOXEDIT) != 0) {
            EXPECT_NE(EqualRect(&item.rcItem, &info.rcItem), FALSE);
            drawn.push_back({static_cast<int>(item.itemID), item.itemState, item.itemData});
        }
        return TRUE;
    });
    makeCombo(CBS_DROPDOWNLIST | CBS_OWNERDRAWVARIABLE, 200);
    EXPECT_EQ(measured, Codes{-1});
    EXPECT_EQ(height(), 36);
    for (int i = 0; i < 3; ++i)
        ask(CB_ADDSTRING, 0, 70 + i);
    EXPECT_EQ(measured, (Codes{-1, 0, 1, 2}));
    EXPECT_EQ(ask(CB_GETITEMHEIGHT, 2), 22);
    drawn.clear();
    InvalidateRect(combo, nullptr, TRUE);
    settle();
    EXPECT_EQ(std::exchange(drawn, {}), (std::vector<DrawnField>{{-1, ODS_COMBOBOXEDIT, 0}}));
    ask(CB_SETCURSEL, 1);
    settle();
    EXPECT_EQ(std::exchange(drawn, {}), (std::vector<DrawnField>{{1, ODS_COMBOBOXEDIT, 71}}));
    SetFocus(combo);
    settle();
    const UINT focused = ODS_COMBOBOXEDIT | ODS_SELECTED | ODS_FOCUS;
    EXPECT_EQ(std::exchange(drawn, {}), (std::vector<DrawnField>{{1, focused, 71}}));
    ask(CB_SHOWDROPDOWN, TRUE);
    EXPECT_EQ(clientRect(info.hwndList).bottom, 20 + 21 + 22);
}

TEST_F(ComboBoxFieldTest, passesComparingAndDeletingOnInItsOwnName) {
    int compared = 0;
    std::vector<ULONG_PTR> deleted;
    recorder.onMessage(WM_COMPAREITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& pair = *reinterpret_cast<const COMPAREITEMSTRUCT*>(lParam);
        EXPECT_EQ(pair.hwndItem, combo);
        EXPECT_EQ(pair.CtlType, ODT_COMBOBOX);
        ++compared;
        return pair.itemData1 < pair.itemData2 ? -1 : 1;
    });
    recorder.onMessage(WM_DELETEITEM, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
        const auto& item = *reinterpret_cast<const DELETEITEMSTRUCT*>(lParam);
        EXPECT_EQ(wParam, static_cast<WPARAM>(controlId));
        EXPECT_EQ(item.hwndItem, combo);
        deleted.push_back(item.itemData);
        return TRUE;
    });
    makeCombo(CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_SORT);
    for (const LPARAM value : {5, 3, 4})
        ask(CB_ADDSTRING, 0, value);
    EXPECT_GT(compared, 1);
    EXPECT_EQ(ask(CB_GETITEMDATA, 0), 3);
    EXPECT_EQ(ask(CB_GETITEMDATA, 2), 5);
    DestroyWindow(combo);
    EXPECT_EQ(deleted, (std::vector<ULONG_PTR>{5, 4, 3}));
}

// ---- Pixels --------------------------------------------------------------------------------------------------------

TEST_F(ComboBoxFieldTest, paintsASunkenEdgeAButtonAndTheField) {
    makeCombo(CBS_DROPDOWNLIST);
    settle();
    const std::uint32_t window = rgbOf(GetSysColor(COLOR_WINDOW));
    const std::uint32_t face = rgbOf(GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(colorAt(0, 0), rgbOf(GetSysColor(COLOR_BTNSHADOW)));
    EXPECT_EQ(colorAt(99, height() - 1), rgbOf(GetSysColor(COLOR_BTNHIGHLIGHT)));
    EXPECT_EQ(colorAt(30, 10), window);
    EXPECT_EQ(colorAt(info.rcButton.left + 4, 5), face);
    EXPECT_EQ(info.rcButton.right, 98);
    SetFocus(combo);
    settle();
    EXPECT_EQ(colorAt(30, 10), rgbOf(GetSysColor(COLOR_HIGHLIGHT)));
    EXPECT_EQ(colorAt(2, 10), window) << "one pixel of ground around the field";
    EnableWindow(combo, FALSE);
    settle();
    EXPECT_EQ(colorAt(2, 10), face);
}

TEST_F(ComboBoxFieldTest, paintsNothingWhileRedrawIsOff) {
    makeCombo(CBS_DROPDOWNLIST);
    fill(2);
    settle();
    ask(WM_SETREDRAW, FALSE);
    ask(CB_SETCURSEL, 1);
    RECT update{};
    EXPECT_EQ(GetUpdateRect(combo, &update, FALSE), FALSE);
    ask(WM_SETREDRAW, TRUE);
    EXPECT_NE(GetUpdateRect(combo, &update, FALSE), FALSE);
}

} // namespace
