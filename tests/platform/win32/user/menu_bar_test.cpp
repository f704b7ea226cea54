// Menu bars and system menus.
#include "menu_fixture.h"

namespace {

using namespace vndk::test;
using namespace vndk::win32;

class MenuBarTest : public MenuFixture {
protected:
    /// Menu (a popup with One and Two), Enabled, Disabled.
    void SetUp() override {
        MenuFixture::SetUp();
        sub = CreatePopupMenu();
        AppendMenu(sub, MF_STRING, 11, "&One");
        AppendMenu(sub, MF_STRING, 12, "&Two");
        bar = CreateMenu();
        AppendMenu(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(sub), "&Menu");
        AppendMenu(bar, MF_STRING, 2, "&Enabled");
        AppendMenu(bar, MF_STRING | MF_GRAYED, 3, "&Disabled");
        SetMenu(window, bar);
        settle();
        recorder.clear();
    }
    bool popupOpen() const {
        RECT rect{};
        return GetMenuItemRect(window, sub, 0, &rect) != FALSE;
    }
    /// Presses keys and picks items in what the window's own message loop starts.
    bool run() { return script.finish(); }
    POINT itemPoint(UINT position) const { return middleOf(window, bar, position); }

    HMENU bar = nullptr;
    HMENU sub = nullptr;
};

TEST_F(MenuBarTest, EscapeLeavesThePopupFirstAndThenTheBar) {
    script.press(VK_MENU);
    script.expect("menu mode", [] { return menuTracked(); });
    script.press('M');
    script.expect("the popup is open", [this] { return popupOpen(); });
    script.press(VK_ESCAPE);
    script.expect("menu mode stays", [this] { return !popupOpen() && menuTracked(); });
    script.press(VK_ESCAPE);
    EXPECT_TRUE(run()) << script.failure();
    EXPECT_FALSE(menuTracked());
    EXPECT_TRUE(commands.empty());
}

TEST_F(MenuBarTest, KeysReachItsItems) {
    struct Case {
        const char* name;
        std::function<void(UserScript&)> steps;
        std::vector<int> wanted;
    };
    const UserKeys alt{.alt = true};
    const Case cases[] = {
        {"Alt and a letter", [&](UserScript& user) { user.press('M', alt).press(VK_RETURN); }, {11}},
        {"Alt and the letter of a command", [&](UserScript& user) { user.press('E', alt); }, {2}},
        {"F10 and arrows",
         [](UserScript& user) { user.press(VK_F10).press(VK_DOWN).press(VK_DOWN).press(VK_RETURN); },
         {12}},
        {"along the bar", [](UserScript& user) { user.press(VK_F10).press(VK_RIGHT).press(VK_RETURN); }, {2}},
        {"letters in the popup", [&](UserScript& user) { user.press('M', alt).press('T'); }, {12}},
        {"a disabled item", [](UserScript& user) { user.press(VK_F10).press('D').press(VK_ESCAPE); }, {}},
        {"Alt twice", [](UserScript& user) { user.press(VK_MENU).press(VK_MENU); }, {}},
        {"a letter that marks nothing", [&](UserScript& user) { user.press('Q', alt); }, {}},
    };
    for (const Case& each : cases) {
        commands.clear();
        each.steps(script);
        EXPECT_TRUE(run()) << each.name << ": " << script.failure();
        settle();
        EXPECT_EQ(commands, each.wanted) << each.name;
        EXPECT_FALSE(menuTracked()) << each.name;
    }
}

TEST_F(MenuBarTest, ClicksOpenAndPick) {
    script.pick({"Menu", "Two"});
    EXPECT_TRUE(run()) << script.failure();
    EXPECT_EQ(commands, (std::vector<int>{12}));
}

TEST_F(MenuBarTest, PressDragAndReleasePicks) {
    const POINT item = itemPoint(0);
    user.moveTo(item.x, item.y);
    user.press();
    script.expect("open while the button is held", [this] { return popupOpen(); });
    script.call([this] {
        const POINT two = middleOf(window, sub, 1);
        user.moveTo(two.x, two.y);
        user.release();
    });
    EXPECT_TRUE(run()) << script.failure();
    EXPECT_EQ(commands, (std::vector<int>{12}));
}

TEST_F(MenuBarTest, SecondClickClosesThePopup) {
    const POINT item = itemPoint(0);
    script.call([this, item] { user.click(item.x, item.y); });
    script.expect("open", [this] { return popupOpen(); });
    script.call([this, item] { user.click(item.x, item.y); });
    EXPECT_TRUE(run()) << script.failure();
    settle();
    EXPECT_FALSE(menuTracked());
}

TEST_F(MenuBarTest, PopupsFollowThePointerAlongTheBar) {
    const HMENU other = CreatePopupMenu();
    AppendMenu(other, MF_STRING, 31, "x");
    ModifyMenu(bar, 1, MF_BYPOSITION | MF_POPUP, reinterpret_cast<UINT_PTR>(other), "Other");
    DrawMenuBar(window);
    const POINT first = itemPoint(0);
    const POINT second = itemPoint(1);
    script.call([this, first] { user.click(first.x, first.y); });
    script.call([this, second] { user.moveTo(second.x, second.y); });
    script.expect("the other popup", [this, other] {
        RECT rect{};
        return !popupOpen() && GetMenuItemRect(window, other, 0, &rect) != FALSE;
    });
    script.press(VK_LEFT);
    script.expect("and back by key", [this] { return popupOpen(); });
    script.press(VK_ESCAPE).press(VK_ESCAPE);
    EXPECT_TRUE(run()) << script.failure();
}

TEST_F(MenuBarTest, NarrowWindowsHaveSeveralRows) {
    SetWindowPos(window, nullptr, 0, 0, 400, 300, SWP_NOMOVE | SWP_NOZORDER);
    RECT first{};
    RECT last{};
    GetMenuItemRect(window, bar, 0, &first);
    GetMenuItemRect(window, bar, 2, &last);
    EXPECT_EQ(first.top, last.top);
    const int clientTop = onScreen(window, 0, 0).y;
    SetWindowPos(window, nullptr, 0, 0, 130, 300, SWP_NOMOVE | SWP_NOZORDER);
    GetMenuItemRect(window, bar, 2, &last);
    EXPECT_GT(last.top, first.top);
    EXPECT_GT(onScreen(window, 0, 0).y, clientTop) << "the client area makes room";
    EXPECT_EQ(MenuItemFromPoint(window, bar, {last.left + 2, last.top + 2}), 2);
    EXPECT_EQ(MenuItemFromPoint(window, bar, {0, 0}), -1);
}

TEST_F(MenuBarTest, ItemsCanStandAtTheRightEnd) {
    ModifyMenu(bar, 1, MF_BYPOSITION | MF_RIGHTJUSTIFY, 2, "Enabled");
    DrawMenuBar(window);
    RECT first{};
    RECT last{};
    GetMenuItemRect(window, bar, 0, &first);
    GetMenuItemRect(window, bar, 2, &last);
    EXPECT_EQ(last.right, windowRect(window).right - (first.left - windowRect(window).left));
}

TEST_F(MenuBarTest, OwnerDrawnItemsAreMeasuredBeforeTheyAreDrawn) {
    recorder.onMessage(WM_MEASUREITEM, [](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemWidth = 40;
        reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = 30;
        return TRUE;
    });
    int drawn = 0;
    recorder.onMessage(WM_DRAWITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        EXPECT_EQ(reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->rcItem.bottom -
                      reinterpret_cast<const DRAWITEMSTRUCT*>(lParam)->rcItem.top,
                  30);
        ++drawn;
        return TRUE;
    });
    const int clientTop = onScreen(window, 0, 0).y;
    AppendMenu(bar, MF_OWNERDRAW, 50, nullptr);
    DrawMenuBar(window);
    settle();
    EXPECT_GT(drawn, 0);
    EXPECT_EQ(onScreen(window, 0, 0).y, clientTop + 12) << "the row grew";
    RECT first{};
    GetMenuItemRect(window, bar, 0, &first);
    EXPECT_EQ(first.bottom - first.top, 30) << "as high as its row";
}

TEST_F(MenuBarTest, OwnerIsAskedOnceWhenTheBarIsDrawnForTheFirstTime) {
    int asked = 0;
    recorder.onMessage(WM_MEASUREITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        ++asked;
        reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemWidth = 40;
        reinterpret_cast<MEASUREITEMSTRUCT*>(lParam)->itemHeight = 30;
        return TRUE;
    });
    const int clientTop = onScreen(window, 0, 0).y;
    const HMENU drawnByOwner = CreateMenu();
    AppendMenu(drawnByOwner, MF_OWNERDRAW, 50, nullptr);
    SetMenu(window, drawnByOwner);
    settle();
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(onScreen(window, 0, 0).y, clientTop + 12) << "the frame makes room";
    SetMenu(window, bar);
    DestroyMenu(drawnByOwner);
}

// ---- System menu ---------------------------------------------------------------------------------------------------

TEST_F(MenuBarTest, AltAndBlankOpenTheSystemMenu) {
    script.press(VK_SPACE, {.alt = true}).press('N');
    EXPECT_TRUE(run()) << script.failure();
    EXPECT_EQ(systemCommands, (std::vector<int>{SC_MINIMIZE}));
    EXPECT_TRUE(commands.empty());
}

TEST_F(MenuBarTest, KeysGoOnFromTheBarToTheSystemMenuAndBack) {
    script.press(VK_F10).press(VK_LEFT);
    script.expect("the system menu is open", [this] {
        RECT rect{};
        return GetMenuItemRect(window, GetSystemMenu(window, FALSE), 0, &rect) != FALSE;
    });
    script.press(VK_RIGHT).press(VK_RIGHT).press(VK_RETURN);
    EXPECT_TRUE(run()) << script.failure();
    EXPECT_EQ(commands, (std::vector<int>{2}));
}

TEST_F(MenuBarTest, SystemMenuOffersWhatTheWindowCanDo) {
    struct Case {
        const char* name;
        int show;
        UINT grayed;
        UINT enabled;
    };
    const Case cases[] = {
        {"normal", SW_SHOWNORMAL, SC_RESTORE, SC_SIZE},
        {"maximised", SW_SHOWMAXIMIZED, SC_MOVE, SC_RESTORE},
        {"minimised", SW_SHOWMINIMIZED, SC_MINIMIZE, SC_RESTORE},
    };
    const HMENU menu = GetSystemMenu(window, FALSE);
    for (const Case& each : cases) {
        ShowWindow(window, each.show);
        updateSystemMenu(window);
        EXPECT_NE(GetMenuState(menu, each.grayed, MF_BYCOMMAND) & MFS_GRAYED, 0U) << each.name;
        EXPECT_EQ(GetMenuState(menu, each.enabled, MF_BYCOMMAND) & MFS_GRAYED, 0U) << each.name;
    }
}

TEST_F(MenuBarTest, CloseCanBeTakenAway) {
    EXPECT_TRUE(closeEnabled(window));
    EnableMenuItem(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_GRAYED);
    EXPECT_FALSE(closeEnabled(window));
    GetSystemMenu(window, TRUE);
    EXPECT_TRUE(closeEnabled(window));
    DeleteMenu(GetSystemMenu(window, FALSE), SC_CLOSE, MF_BYCOMMAND);
    EXPECT_FALSE(closeEnabled(window));
}

TEST_F(MenuBarTest, DestroyedWindowEndsItsMenu) {
    script.press('M', {.alt = true});
    script.call([this] { DestroyWindow(window); });
    EXPECT_TRUE(run()) << script.failure();
    EXPECT_FALSE(menuTracked());
    EXPECT_FALSE(IsMenu(bar));
}

} // namespace
