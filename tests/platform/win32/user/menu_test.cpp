// Menus and their items, as the calls see them.
#include "support/desktop_fixture.h"
#include "win32/error.h"
#include "win32/menu.h"

#include <string>

namespace {

using namespace vndk::test;

constexpr UINT missing = 0xFFFFFFFF;

class MenuTest : public DesktopFixture {
protected:
    static std::string textOf(HMENU menu, UINT item, UINT flags = MF_BYPOSITION) {
        char text[64];
        GetMenuString(menu, item, text, sizeof text, flags);
        return text;
    }
    /// All texts, with '-' for lines and '>' behind popups.
    static std::string layoutOf(HMENU menu) {
        std::string layout;
        for (int i = 0; i < GetMenuItemCount(menu); ++i) {
            const bool line = (GetMenuState(menu, static_cast<UINT>(i), MF_BYPOSITION) & MF_SEPARATOR) != 0 &&
                              GetSubMenu(menu, i) == nullptr;
            layout += line ? "-" : textOf(menu, static_cast<UINT>(i));
            layout += GetSubMenu(menu, i) != nullptr ? "> " : " ";
        }
        return layout;
    }

    HMENU menu = CreatePopupMenu();
};

TEST_F(MenuTest, ItemsAreFoundByCommandInSubMenusToo) {
    const HMENU sub = CreatePopupMenu();
    AppendMenu(sub, MF_STRING, 102, "inner");
    AppendMenu(menu, MF_STRING, 0x1234, "outer");
    AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "popup");
    EXPECT_EQ(GetMenuItemID(menu, 0), 0x1234U);
    EXPECT_EQ(GetMenuItemID(menu, 1), missing) << "a popup has no command";
    EXPECT_EQ(GetMenuItemID(menu, 2), missing);
    EXPECT_EQ(GetMenuItemID(menu, -1), missing);
    for (const UINT command : {0x1234U, 102U}) {
        MENUITEMINFO info{};
        info.cbSize = sizeof info;
        info.fMask = MIIM_ID;
        EXPECT_TRUE(GetMenuItemInfo(menu, command, FALSE, &info)) << command;
        EXPECT_EQ(info.wID, command);
    }
    EXPECT_EQ(GetMenuState(menu, 103, MF_BYCOMMAND), missing);
    EXPECT_EQ(GetLastError(), ERROR_MENU_ITEM_NOT_FOUND);
    EXPECT_EQ(GetSubMenu(menu, 1), sub);
    EXPECT_EQ(GetSubMenu(menu, 0), nullptr);
    EXPECT_EQ(GetSubMenu(menu, 7), nullptr);
    EXPECT_EQ(textOf(menu, 102, MF_BYCOMMAND), "inner");
}

TEST_F(MenuTest, ItemsComeWhereTheyAreInserted) {
    AppendMenu(menu, MF_STRING, 1, "a");
    AppendMenu(menu, MF_STRING, 3, "c");
    InsertMenu(menu, 3, MF_BYCOMMAND, 2, "b");
    InsertMenu(menu, 0, MF_BYPOSITION | MF_SEPARATOR, 0, nullptr);
    InsertMenu(menu, missing, MF_BYPOSITION, 4, "d");
    InsertMenu(menu, 99, MF_BYCOMMAND, 5, "e");
    EXPECT_EQ(layoutOf(menu), "- a b c d e ");
    ModifyMenu(menu, 2, MF_BYCOMMAND, 20, "B");
    EXPECT_TRUE(RemoveMenu(menu, 0, MF_BYPOSITION));
    EXPECT_TRUE(DeleteMenu(menu, 3, MF_BYCOMMAND));
    EXPECT_FALSE(DeleteMenu(menu, 3, MF_BYCOMMAND));
    EXPECT_EQ(layoutOf(menu), "a B d e ");
    EXPECT_EQ(GetMenuItemID(menu, 1), 20U);
}

TEST_F(MenuTest, RemovedPopupLivesOnAndDeletedOneDies) {
    for (const bool destroy : {false, true}) {
        const HMENU sub = CreatePopupMenu();
        AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
        EXPECT_TRUE(destroy ? DeleteMenu(menu, 0, MF_BYPOSITION) : RemoveMenu(menu, 0, MF_BYPOSITION));
        EXPECT_EQ(IsMenu(sub) != FALSE, !destroy);
    }
    const HMENU sub = CreatePopupMenu();
    AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
    ModifyMenu(menu, 0, MF_BYPOSITION, 1, "plain");
    EXPECT_FALSE(IsMenu(sub)) << "the popup that is replaced goes";
}

TEST_F(MenuTest, DestroyedMenuTakesItsPopupsAlong) {
    const HMENU sub = CreatePopupMenu();
    const HMENU deepest = CreatePopupMenu();
    AppendMenu(sub, MF_POPUP, reinterpret_cast<UINT_PTR>(deepest), "deepest");
    AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
    EXPECT_TRUE(DestroyMenu(menu));
    EXPECT_FALSE(IsMenu(menu) || IsMenu(sub) || IsMenu(deepest));
    EXPECT_FALSE(DestroyMenu(menu));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_MENU_HANDLE);
}

TEST_F(MenuTest, NoMenuContainsItself) {
    const HMENU sub = CreatePopupMenu();
    AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
    EXPECT_FALSE(AppendMenu(sub, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), "round"));
    EXPECT_FALSE(AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), "self"));
    EXPECT_FALSE(AppendMenu(menu, MF_POPUP, 12345, "nothing"));
    EXPECT_EQ(GetMenuItemCount(menu), 1);
}

TEST_F(MenuTest, StatesTellWhatTheyWere) {
    AppendMenu(menu, MF_STRING | MF_GRAYED, 1, "a");
    AppendMenu(menu, MF_STRING | MF_CHECKED, 2, "b");
    EXPECT_EQ(EnableMenuItem(menu, 1, MF_BYCOMMAND | MF_ENABLED), static_cast<BOOL>(MF_GRAYED));
    EXPECT_EQ(EnableMenuItem(menu, 1, MF_BYCOMMAND | MF_DISABLED), static_cast<BOOL>(MF_ENABLED));
    EXPECT_EQ(GetMenuState(menu, 1, MF_BYCOMMAND), MF_DISABLED);
    EXPECT_EQ(EnableMenuItem(menu, 9, MF_BYCOMMAND | MF_ENABLED), -1);
    EXPECT_EQ(CheckMenuItem(menu, 2, MF_BYCOMMAND | MF_UNCHECKED), MF_CHECKED);
    EXPECT_EQ(CheckMenuItem(menu, 1, MF_BYPOSITION | MF_CHECKED), MF_UNCHECKED);
    EXPECT_EQ(GetMenuState(menu, 2, MF_BYCOMMAND), MF_CHECKED);
    EXPECT_EQ(CheckMenuItem(menu, 9, MF_BYCOMMAND | MF_CHECKED), missing);
}

TEST_F(MenuTest, StateOfAPopupHoldsTheNumberOfItsItems) {
    const HMENU sub = CreatePopupMenu();
    for (UINT i = 0; i < 3; ++i)
        AppendMenu(sub, MF_STRING, i + 1, "x");
    AppendMenu(menu, MF_POPUP | MF_GRAYED, reinterpret_cast<UINT_PTR>(sub), "sub");
    EXPECT_EQ(GetMenuState(menu, 0, MF_BYPOSITION), 0x300U | MF_POPUP | MF_GRAYED);
}

TEST_F(MenuTest, RadioItemsExcludeEachOther) {
    for (UINT i = 1; i <= 4; ++i)
        AppendMenu(menu, MF_STRING, i, "x");
    CheckMenuItem(menu, 4, MF_BYCOMMAND | MF_CHECKED);
    EXPECT_TRUE(CheckMenuRadioItem(menu, 1, 3, 2, MF_BYCOMMAND));
    EXPECT_TRUE(CheckMenuRadioItem(menu, 0, 2, 2, MF_BYPOSITION));
    EXPECT_EQ(GetMenuState(menu, 2, MF_BYCOMMAND), 0U);
    EXPECT_EQ(GetMenuState(menu, 3, MF_BYCOMMAND), MFS_CHECKED | MFT_RADIOCHECK);
    EXPECT_EQ(GetMenuState(menu, 4, MF_BYCOMMAND), MFS_CHECKED);
    EXPECT_FALSE(CheckMenuRadioItem(menu, 1, 3, 9, MF_BYCOMMAND));
}

TEST_F(MenuTest, ThereIsOneDefaultItem) {
    const HMENU sub = CreatePopupMenu();
    AppendMenu(sub, MF_STRING, 20, "inner");
    AppendMenu(menu, MF_STRING, 10, "a");
    AppendMenu(menu, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "sub");
    EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, 0), missing);
    SetMenuDefaultItem(menu, 10, FALSE);
    SetMenuDefaultItem(menu, 1, TRUE);
    SetMenuDefaultItem(sub, 20, FALSE);
    EXPECT_EQ(GetMenuDefaultItem(menu, TRUE, 0), 1U);
    EXPECT_EQ(GetMenuDefaultItem(menu, FALSE, GMDI_GOINTOPOPUPS), 20U);
    EnableMenuItem(menu, 1, MF_BYPOSITION | MF_GRAYED);
    EXPECT_EQ(GetMenuDefaultItem(menu, TRUE, 0), missing);
    EXPECT_EQ(GetMenuDefaultItem(menu, TRUE, GMDI_USEDISABLED), 1U);
    SetMenuDefaultItem(menu, missing, TRUE);
    EXPECT_EQ(GetMenuDefaultItem(menu, TRUE, GMDI_USEDISABLED), missing);
}

TEST_F(MenuTest, TextsAreCutToTheBuffer) {
    AppendMenu(menu, MF_STRING, 1, "&Open\tCtrl+O");
    char text[6] = "?????";
    EXPECT_EQ(GetMenuString(menu, 1, nullptr, 0, MF_BYCOMMAND), 12);
    EXPECT_EQ(GetMenuString(menu, 1, text, sizeof text, MF_BYCOMMAND), 5);
    EXPECT_STREQ(text, "&Open");
    MENUITEMINFO info{};
    info.cbSize = sizeof info;
    info.fMask = MIIM_TYPE;
    EXPECT_TRUE(GetMenuItemInfo(menu, 1, FALSE, &info));
    EXPECT_EQ(info.cch, 12U) << "with no buffer, the length";
    info.dwTypeData = text;
    info.cch = 3;
    EXPECT_TRUE(GetMenuItemInfo(menu, 1, FALSE, &info));
    EXPECT_STREQ(text, "&O");
    EXPECT_EQ(info.cch, 2U);
}

TEST_F(MenuTest, ItemInfoGoesInAndComesOut) {
    MENUITEMINFO given{};
    given.cbSize = sizeof given;
    given.fMask = MIIM_STRING | MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_DATA | MIIM_BITMAP;
    given.fType = MFT_RADIOCHECK;
    given.fState = MFS_CHECKED | MFS_DEFAULT;
    given.wID = 0x12345;
    given.dwItemData = 99;
    given.hbmpItem = HBMMENU_CALLBACK;
    given.dwTypeData = const_cast<char*>("text");
    ASSERT_TRUE(InsertMenuItem(menu, 0, TRUE, &given));
    char text[10] = "";
    MENUITEMINFO found = given;
    found.fType = found.fState = found.wID = 0;
    found.dwItemData = 0;
    found.hbmpItem = nullptr;
    found.dwTypeData = text;
    found.cch = sizeof text;
    ASSERT_TRUE(GetMenuItemInfo(menu, 0, TRUE, &found));
    EXPECT_EQ(found.fType, given.fType);
    EXPECT_EQ(found.fState, given.fState);
    EXPECT_EQ(found.wID, given.wID);
    EXPECT_EQ(found.dwItemData, given.dwItemData);
    EXPECT_EQ(found.hbmpItem, given.hbmpItem);
    EXPECT_STREQ(text, "text");
}

TEST_F(MenuTest, NonsenseItemInfoIsRefused) {
    AppendMenu(menu, MF_STRING, 1, "a");
    struct Case {
        const char* name;
        UINT size;
        UINT mask;
    };
    const Case cases[] = {
        {"size", 12, MIIM_ID},
        {"unknown mask", sizeof(MENUITEMINFO), 0x8000},
        {"old and new mask together", sizeof(MENUITEMINFO), MIIM_TYPE | MIIM_STRING},
    };
    for (const Case& each : cases) {
        MENUITEMINFO info{};
        info.cbSize = each.size;
        info.fMask = each.mask;
        EXPECT_FALSE(GetMenuItemInfo(menu, 1, FALSE, &info)) << each.name;
        EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER) << each.name;
        EXPECT_FALSE(SetMenuItemInfo(menu, 1, FALSE, &info)) << each.name;
        EXPECT_FALSE(InsertMenuItem(menu, 1, FALSE, &info)) << each.name;
    }
    EXPECT_FALSE(GetMenuItemInfo(menu, 1, FALSE, nullptr));
}

TEST_F(MenuTest, LinesCannotBePicked) {
    AppendMenu(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenu(menu, MF_STRING, 5, nullptr);
    for (const UINT position : {0U, 1U}) {
        EXPECT_NE(GetMenuState(menu, position, MF_BYPOSITION) & MF_SEPARATOR, 0U) << position;
        EXPECT_NE(GetMenuState(menu, position, MF_BYPOSITION) & MFS_GRAYED, 0U) << position;
    }
}

TEST_F(MenuTest, DeadHandlesFailEverywhere) {
    const HMENU dead = CreateMenu();
    DestroyMenu(dead);
    for (const HMENU each : {HMENU{}, dead, reinterpret_cast<HMENU>(UINT_PTR{0xDEADBEEF})}) {
        EXPECT_EQ(GetMenuItemCount(each), -1);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_MENU_HANDLE);
        EXPECT_FALSE(AppendMenu(each, MF_STRING, 1, "x"));
        EXPECT_EQ(GetMenuItemID(each, 0), missing);
        EXPECT_EQ(GetSubMenu(each, 0), nullptr);
        EXPECT_FALSE(TrackPopupMenu(each, 0, 0, 0, 0, GetDesktopWindow(), nullptr));
        EXPECT_EQ(MenuItemFromPoint(nullptr, each, {1, 1}), -1);
    }
}

TEST_F(MenuTest, OnlyTopLevelWindowsHaveBars) {
    WNDCLASSA plain{};
    plain.lpfnWndProc = &DefWindowProc;
    plain.lpszClassName = "MenuOwner";
    RegisterClass(&plain);
    const HWND window =
        CreateWindow("MenuOwner", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
    const HWND child = CreateWindow("MenuOwner", "", WS_CHILD, 0, 0, 30, 20, window,
                                    reinterpret_cast<HMENU>(UINT_PTR{321}), nullptr, nullptr);
    const HMENU bar = CreateMenu();
    EXPECT_FALSE(SetMenu(child, bar));
    EXPECT_EQ(GetMenu(child), reinterpret_cast<HMENU>(UINT_PTR{321}));
    EXPECT_TRUE(SetMenu(window, bar));
    EXPECT_EQ(GetMenu(window), bar);
    EXPECT_FALSE(SetMenu(window, reinterpret_cast<HMENU>(UINT_PTR{5})));
    EXPECT_TRUE(SetMenu(window, nullptr));
    EXPECT_TRUE(IsMenu(bar)) << "a bar that is taken off lives on";
    EXPECT_TRUE(SetMenu(window, bar));
    DestroyWindow(window);
    EXPECT_FALSE(IsMenu(bar)) << "a window's bar dies with it";
}

TEST_F(MenuTest, SystemMenuIsTheWindowsOwnUntilItIsReverted) {
    WNDCLASSA plain{};
    plain.lpfnWndProc = &DefWindowProc;
    plain.lpszClassName = "MenuOwner";
    RegisterClass(&plain);
    const HWND window =
        CreateWindow("MenuOwner", "", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr);
    const HMENU system = GetSystemMenu(window, FALSE);
    ASSERT_NE(system, nullptr);
    EXPECT_EQ(GetSystemMenu(window, FALSE), system);
    EXPECT_NE(GetMenuState(system, SC_CLOSE, MF_BYCOMMAND), missing);
    DeleteMenu(system, SC_CLOSE, MF_BYCOMMAND);
    EXPECT_EQ(GetSystemMenu(window, TRUE), nullptr);
    EXPECT_NE(GetMenuState(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND), missing);
    const HWND bare = CreateWindow("MenuOwner", "", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr, nullptr, nullptr);
    EXPECT_EQ(GetSystemMenu(bare, FALSE), nullptr);
}

} // namespace
