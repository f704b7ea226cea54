// Items, selection and text by program; sizes.
#include "combo_box_fixture.h"

using namespace vndk::test;

namespace {

class ComboBoxTest : public ComboBoxFixture {};

TEST_F(ComboBoxTest, hasAnEditControlAndAListByItsStyle) {
    for (const ComboKind& kind : comboKinds) {
        makeCombo(kind.style | bars);
        char name[20] = "";
        GetClassName(info.hwndList, name, sizeof name);
        EXPECT_STREQ(name, "ComboLBox") << kind.name;
        EXPECT_EQ(GetWindowLong(info.hwndList, GWL_ID), 1000) << kind.name;
        EXPECT_EQ(info.hwndCombo, combo);
        if (kind.style == CBS_DROPDOWNLIST) {
            EXPECT_EQ(info.hwndItem, combo);
            EXPECT_EQ(GetWindow(combo, GW_CHILD), nullptr);
        } else {
            EXPECT_EQ(GetWindow(combo, GW_CHILD), info.hwndItem) << kind.name;
            EXPECT_EQ(GetWindowLong(info.hwndItem, GWL_ID), 1001) << kind.name;
        }
        EXPECT_EQ(info.stateButton, kind.style == CBS_SIMPLE ? STATE_SYSTEM_INVISIBLE : 0) << kind.name;
        EXPECT_EQ(IsWindowVisible(info.hwndList) != FALSE, kind.style == CBS_SIMPLE) << kind.name;
        DestroyWindow(combo);
        EXPECT_EQ(IsWindow(info.hwndList), FALSE) << kind.name;
    }
    info.cbSize = 1;
    EXPECT_EQ(GetComboBoxInfo(makeCombo(CBS_DROPDOWN), nullptr), FALSE);
    EXPECT_EQ(GetComboBoxInfo(owner, &info), FALSE);
}

TEST_F(ComboBoxTest, showsTheSelectionAtOnceAndTellsNobody) {
    for (const ComboKind& kind : comboKinds) {
        makeCombo(kind.style);
        add("alpha");
        add("beta");
        for (const int index : {0, 1}) {
            EXPECT_EQ(ask(CB_SETCURSEL, static_cast<WPARAM>(index)), index) << kind.name;
            EXPECT_EQ(field(), index == 0 ? "alpha" : "beta") << kind.name;
        }
        EXPECT_EQ(ask(CB_SETCURSEL, 2), CB_ERR) << kind.name;
        EXPECT_EQ(ask(CB_GETCURSEL), CB_ERR) << kind.name << ": a number that no item has takes the selection away";
        EXPECT_EQ(field(), "") << kind.name;
        EXPECT_EQ(ask(CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("BE")), 1) << kind.name;
        EXPECT_EQ(field(), "beta") << kind.name;
        EXPECT_EQ(takeCodes(), Codes{}) << kind.name;
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxTest, passesItemMessagesToItsList) {
    makeCombo(CBS_DROPDOWNLIST | CBS_SORT);
    EXPECT_EQ(add("beta"), 0);
    EXPECT_EQ(add("alpha"), 0);
    EXPECT_EQ(ask(CB_INSERTSTRING, 1, reinterpret_cast<LPARAM>("zz")), 1);
    EXPECT_EQ(ask(CB_GETCOUNT), 3);
    EXPECT_EQ(ask(CB_GETLBTEXTLEN, 0), 5);
    EXPECT_EQ(itemText(1), "zz");
    EXPECT_EQ(ask(CB_GETLBTEXTLEN, 3), CB_ERR);
    EXPECT_NE(ask(CB_SETITEMDATA, 1, 77), CB_ERR);
    EXPECT_EQ(ask(CB_GETITEMDATA, 1), 77);
    EXPECT_EQ(ask(CB_FINDSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("Z")), 1);
    EXPECT_EQ(ask(CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>("Z")), CB_ERR);
    ask(CB_SETCURSEL, 2);
    EXPECT_EQ(ask(CB_DELETESTRING, 0), 2);
    EXPECT_EQ(ask(CB_GETCURSEL), 1);
    EXPECT_EQ(field(), "beta");
    EXPECT_EQ(ask(CB_DELETESTRING, 1), 1);
    EXPECT_EQ(ask(CB_GETCURSEL), CB_ERR);
    EXPECT_EQ(ask(CB_DELETESTRING, 1), CB_ERR);
}

TEST_F(ComboBoxTest, emptiesFieldAndListTogether) {
    for (const ComboKind& kind : comboKinds) {
        makeCombo(kind.style);
        fill(3);
        ask(CB_SETCURSEL, 1);
        EXPECT_EQ(ask(CB_RESETCONTENT), CB_OKAY);
        EXPECT_EQ(ask(CB_GETCOUNT), 0) << kind.name;
        EXPECT_EQ(ask(CB_GETCURSEL), CB_ERR) << kind.name;
        EXPECT_EQ(field(), "") << kind.name;
        EXPECT_EQ(takeCodes(), Codes{}) << kind.name;
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxTest, hasATextOfItsOwnOnlyWithAnEditControl) {
    makeCombo(CBS_DROPDOWN);
    EXPECT_NE(SetWindowText(combo, "typed"), FALSE);
    EXPECT_EQ(field(), "typed");
    EXPECT_EQ(takeCodes(), Codes{}) << "the program's text is no edit";
    EXPECT_EQ(ask(CB_SETEDITSEL, 0, MAKELPARAM(1, 3)), TRUE);
    DWORD first = 0;
    DWORD last = 0;
    EXPECT_EQ(ask(CB_GETEDITSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last)), MAKELRESULT(1, 3));
    EXPECT_EQ(first, 1U);
    EXPECT_EQ(last, 3U);
    EXPECT_EQ(ask(CB_LIMITTEXT, 2), TRUE);
    DestroyWindow(combo);
    makeCombo(CBS_DROPDOWNLIST);
    add("item");
    ask(CB_SETCURSEL, 0);
    EXPECT_EQ(ask(WM_SETTEXT, 0, reinterpret_cast<LPARAM>("typed")), CB_ERR);
    EXPECT_EQ(field(), "item");
    EXPECT_EQ(ask(CB_GETEDITSEL), CB_ERR);
    EXPECT_EQ(ask(CB_SETEDITSEL, 0, 0), CB_ERR);
    char small[3];
    EXPECT_EQ(ask(WM_GETTEXT, sizeof small, reinterpret_cast<LPARAM>(small)), 2);
    EXPECT_STREQ(small, "it");
}

TEST_F(ComboBoxTest, changesTheCaseOfItemsWhenAsked) {
    makeCombo(CBS_DROPDOWNLIST | CBS_UPPERCASE);
    add("\xE4h");
    EXPECT_EQ(itemText(0), "\xC4H");
}

// ---- Sizes ---------------------------------------------------------------------------------------------------------

TEST_F(ComboBoxTest, isAsHighAsItsFieldAndGivesTheRestToTheList) {
    for (const DWORD style : {CBS_DROPDOWN, CBS_DROPDOWNLIST}) {
        makeCombo(style);
        const int line = heightOf(static_cast<HFONT>(GetStockObject(SYSTEM_FONT)));
        EXPECT_EQ(height(), line + 8);
        EXPECT_EQ(ask(CB_GETITEMHEIGHT, static_cast<WPARAM>(-1)), line + 2);
        EXPECT_EQ(ask(CB_GETITEMHEIGHT, 0), line);
        const RECT whole{5, 5, 105, 105};
        RECT rect = droppedRect();
        EXPECT_NE(EqualRect(&rect, &whole), FALSE);
        for (int item = 1; item < 40; ++item) {
            EXPECT_EQ(ask(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), item), CB_OKAY);
            EXPECT_EQ(height(), item + 6);
        }
        EXPECT_EQ(ask(CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), 0), CB_ERR);
        MoveWindow(combo, 5, 5, 120, 200, TRUE);
        EXPECT_EQ(height(), 45) << "a new height is the list's";
        EXPECT_EQ(droppedRect().bottom, 205);
        MoveWindow(combo, 5, 5, 120, 10, TRUE);
        EXPECT_EQ(height(), 45);
        EXPECT_EQ(droppedRect().bottom, 205);
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxTest, followsItsFont) {
    for (const DWORD style : {CBS_DROPDOWN, CBS_DROPDOWNLIST}) {
        makeCombo(style);
        const int former = height();
        for (const int cell : {10, 8, 29, 10}) {
            const HFONT font = makeFont(cell);
            SendMessage(combo, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
            EXPECT_EQ(height(), heightOf(font) + 8) << cell;
            EXPECT_EQ(droppedRect().bottom, 105 + height() - former) << cell;
            SendMessage(combo, WM_SETFONT, 0, FALSE);
            DeleteObject(font);
        }
        DestroyWindow(combo);
    }
}

TEST_F(ComboBoxTest, keepsTheFieldThatItsOwnerMeasured) {
    const HFONT large = makeFont(30);
    for (const DWORD style : {DWORD{0}, CBS_OWNERDRAWFIXED}) {
        makeCombo(CBS_DROPDOWNLIST | style);
        const int before = info.rcItem.bottom;
        SendMessage(combo, WM_SETFONT, reinterpret_cast<WPARAM>(large), FALSE);
        GetComboBoxInfo(combo, &info);
        EXPECT_EQ(info.rcItem.bottom == before, style == CBS_OWNERDRAWFIXED) << style;
        DestroyWindow(combo);
    }
    DeleteObject(large);
}

TEST_F(ComboBoxTest, dropsAListThatIsNeverNarrowerThanItself) {
    makeCombo(CBS_DROPDOWN);
    MoveWindow(combo, 5, 5, 102, 100, TRUE);
    EXPECT_EQ(ask(CB_GETDROPPEDWIDTH), 102);
    for (const int width : {-1, 0, 99})
        EXPECT_EQ(ask(CB_SETDROPPEDWIDTH, static_cast<WPARAM>(width)), 102) << width;
    EXPECT_EQ(ask(CB_SETDROPPEDWIDTH, 200), 200);
    EXPECT_EQ(ask(CB_GETDROPPEDWIDTH), 200);
    EXPECT_EQ(droppedRect().right, 205);
    MoveWindow(combo, 5, 5, 300, 100, TRUE);
    EXPECT_EQ(ask(CB_GETDROPPEDWIDTH), 300);
}

TEST_F(ComboBoxTest, dropsAsManyWholeItemsAsThereAreAndFit) {
    makeCombo(CBS_DROPDOWN);
    const int field = height();
    const auto item = static_cast<int>(ask(CB_GETITEMHEIGHT, 0));
    DestroyWindow(combo);
    for (const int items : {0, 1, 2, 10})
        for (const int asked : {10, 24, 41, 60, 90, 100, 155}) {
            makeCombo(CBS_DROPDOWN, asked);
            fill(items);
            ask(CB_SHOWDROPDOWN, TRUE);
            const int room = std::max(asked - field - 2, 0);
            const int shown = std::max(std::min(room, items * item) / item, 1);
            EXPECT_EQ(clientRect(info.hwndList).bottom, shown * item) << items << " items, " << asked;
            DestroyWindow(combo);
        }
    makeCombo(CBS_DROPDOWN | CBS_NOINTEGRALHEIGHT, 100);
    fill(2);
    ask(CB_SHOWDROPDOWN, TRUE);
    EXPECT_EQ(clientRect(info.hwndList).bottom, 100 - field - 2);
}

TEST_F(ComboBoxTest, keepsFieldAndListTogetherInTheSimpleStyle) {
    makeCombo(CBS_SIMPLE | CBS_NOINTEGRALHEIGHT, 120);
    EXPECT_EQ(height(), 120);
    const RECT list = windowRect(info.hwndList);
    EXPECT_EQ(list.top - top - 5, ask(CB_GETITEMHEIGHT, static_cast<WPARAM>(-1)) + 6);
    EXPECT_EQ(list.bottom - top - 5, 120);
    DestroyWindow(combo);
    makeCombo(CBS_SIMPLE, 120);
    EXPECT_EQ(clientRect(info.hwndList).bottom % ask(CB_GETITEMHEIGHT, 0), 0) << "whole items";
    EXPECT_EQ(windowRect(info.hwndList).bottom, windowRect(combo).bottom);
    EXPECT_EQ(ask(CB_SHOWDROPDOWN, TRUE), TRUE);
    EXPECT_FALSE(dropped());
    EXPECT_EQ(ask(CB_SETDROPPEDWIDTH, 300), CB_ERR);
    EXPECT_EQ(ask(CB_SETEXTENDEDUI, TRUE), CB_ERR);
}

TEST_F(ComboBoxTest, standsHostileArguments) {
    for (const ComboKind& kind : comboKinds)
        for (const DWORD drawn : {DWORD{0}, CBS_OWNERDRAWVARIABLE}) {
            makeCombo(kind.style | drawn | bars);
            fill(3);
            for (UINT message = CB_GETEDITSEL; message <= CB_GETCOMBOBOXINFO; ++message)
                for (const WPARAM wParam : {WPARAM{0x7FFFFFFF}, WPARAM{0x80000000}, ~WPARAM{0}, WPARAM{0}})
                    ask(message, message == CB_GETEDITSEL ? 0 : wParam, 0);
            settle();
            MoveWindow(combo, 0, 0, 0, 0, TRUE);
            ask(CB_SHOWDROPDOWN, TRUE);
            settle();
            DestroyWindow(combo);
        }
}

} // namespace
