// Popup menus and their user.
#include "menu_fixture.h"
#include "user/menu_popup.h"
#include "win32/draw.h"

namespace {

using namespace vndk::test;
using namespace vndk::win32;
using vndk::screen::MouseButton;

class MenuTrackTest : public MenuFixture {
protected:
    void SetUp() override {
        MenuFixture::SetUp();
        menu = makePopup();
        more = GetSubMenu(menu, 3);
    }
    void TearDown() override {
        EXPECT_TRUE(script.finish()) << script.failure();
        DestroyMenu(menu);
        MenuFixture::TearDown();
    }
    BOOL track(UINT flags = TPM_RETURNCMD, int x = 200, int y = 150) {
        return TrackPopupMenu(menu, flags, x, y, 0, window, nullptr);
    }
    /// Clicks on an item once its menu is shown.
    void clickItem(HMENU in, UINT position, MouseButton button = MouseButton::left) {
        whenIdle([this, in, position, button] {
            const POINT at = middleOf(window, in, position);
            user.click(at.x, at.y, button);
        });
    }

    HMENU menu = nullptr;
    HMENU more = nullptr;
};

TEST_F(MenuTrackTest, OwnerHearsOfAllThatHappens) {
    clickItem(menu, 0);
    EXPECT_EQ(track(0), TRUE);
    EXPECT_TRUE(commands.empty()) << "posted, not sent";
    settle();
    EXPECT_EQ(commands, (std::vector<int>{1}));
    std::vector<UINT> order;
    for (const RecordedMessage& each : recorder.messages())
        switch (each.message) {
        case WM_ENTERMENULOOP:
        case WM_INITMENU:
        case WM_INITMENUPOPUP:
        case WM_MENUSELECT:
        case WM_UNINITMENUPOPUP:
        case WM_EXITMENULOOP:
        case WM_COMMAND:
            order.push_back(each.message);
            break;
        default:
            break;
        }
    EXPECT_EQ(order, (std::vector<UINT>{WM_ENTERMENULOOP, WM_INITMENU, WM_INITMENUPOPUP, WM_MENUSELECT,
                                        WM_UNINITMENUPOPUP, WM_MENUSELECT, WM_EXITMENULOOP, WM_COMMAND}));
}

TEST_F(MenuTrackTest, CommandIsReturnedWhenAskedFor) {
    clickItem(menu, 4);
    EXPECT_EQ(track(TPM_RETURNCMD), 5);
    settle();
    EXPECT_TRUE(commands.empty());
}

TEST_F(MenuTrackTest, WithoutNotificationsTheOwnerHearsNothing) {
    clickItem(menu, 4);
    EXPECT_EQ(track(TPM_RETURNCMD | TPM_NONOTIFY), 5);
    for (const UINT message : {WM_ENTERMENULOOP, WM_INITMENU, WM_INITMENUPOPUP, WM_MENUSELECT, WM_EXITMENULOOP})
        EXPECT_EQ(recorder.count(message), 0) << nameOfMessage(message);
}

TEST_F(MenuTrackTest, KeysMoveSelectAndPick) {
    struct Case {
        const char* name;
        std::vector<int> keys;
        BOOL picked;
    };
    const Case cases[] = {
        {"first", {VK_DOWN, VK_RETURN}, 1},
        {"last, going round upward", {VK_UP, VK_RETURN}, 5},
        {"a line is passed over, a disabled item not picked", {VK_DOWN, VK_DOWN, VK_RETURN, VK_ESCAPE}, 0},
        {"going round downward", {VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN}, 1},
        {"end", {VK_END, VK_RETURN}, 5},
        {"home", {VK_END, VK_HOME, VK_RETURN}, 1},
        {"mnemonic", {'L'}, 5},
        {"mnemonic of a disabled item", {'F', VK_ESCAPE}, 0},
        {"into a popup", {'M', VK_DOWN, VK_RETURN}, 42},
        {"into a popup by arrow", {VK_UP, VK_UP, VK_RIGHT, VK_RETURN}, 41},
        {"into a popup and back", {'M', VK_LEFT, VK_DOWN, VK_RETURN}, 5},
        {"Escape closes one menu after the other", {'M', VK_ESCAPE, VK_HOME, VK_RETURN}, 1},
        {"Escape", {VK_ESCAPE}, 0},
        {"Enter without a selection", {VK_RETURN}, 0},
        {"Alt", {VK_MENU}, 0},
        {"F10", {VK_F10}, 0},
    };
    for (const Case& each : cases) {
        for (const int key : each.keys)
            script.press(key);
        EXPECT_EQ(track(), each.picked) << each.name;
        EXPECT_TRUE(script.finish()) << each.name << ": " << script.failure();
    }
}

TEST_F(MenuTrackTest, PointingOpensAPopupAfterAWhile) {
    whenIdle([this] {
        const POINT at = middleOf(window, menu, 3);
        user.moveTo(at.x, at.y);
    });
    whenIdle([this] {
        RECT rect{};
        EXPECT_FALSE(GetMenuItemRect(window, more, 0, &rect)) << "not at once";
    });
    script.pause(500);
    clickItem(more, 1);
    EXPECT_EQ(track(), 42);
}

TEST_F(MenuTrackTest, PointingAtAnotherItemClosesAPopupAfterAWhile) {
    clickItem(menu, 3);
    script.expect("the popup is open", [this] {
        RECT rect{};
        return GetMenuItemRect(window, more, 0, &rect) != FALSE;
    });
    whenIdle([this] {
        const POINT at = middleOf(window, menu, 0);
        user.moveTo(at.x, at.y);
    });
    script.pause(500);
    script.expect("the popup is closed", [this] {
        RECT rect{};
        return GetMenuItemRect(window, more, 0, &rect) == FALSE;
    });
    script.press(VK_RETURN);
    EXPECT_EQ(track(), 1);
}

TEST_F(MenuTrackTest, OnTheWayIntoAPopupOtherItemsMayBeCrossed) {
    clickItem(menu, 3);
    whenIdle([this] {
        const POINT crossed = middleOf(window, menu, 4);
        user.moveTo(crossed.x, crossed.y);
    });
    clickItem(more, 0);
    EXPECT_EQ(track(), 41);
}

TEST_F(MenuTrackTest, DisabledItemsAndLinesStayUnpicked) {
    for (const UINT position : {1U, 2U})
        clickItem(menu, position);
    script.expect("still open", [] { return popup() != nullptr; });
    script.press(VK_ESCAPE);
    EXPECT_EQ(track(), 0);
}

TEST_F(MenuTrackTest, PressOutsideEndsTheMenuAndGoesItsWay) {
    int clicks = 0;
    recorder.onMessage(WM_LBUTTONDOWN, [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        EXPECT_EQ(popup(), nullptr) << "the menu is gone by then";
        ++clicks;
        return 0;
    });
    whenIdle([this] { user.click(120, 380); });
    EXPECT_EQ(track(), 0);
    settle();
    EXPECT_EQ(clicks, 1);
}

TEST_F(MenuTrackTest, RightButtonPicksOnlyWhereItMay) {
    clickItem(menu, 0, MouseButton::right);
    script.press(VK_ESCAPE);
    EXPECT_EQ(track(TPM_RETURNCMD | TPM_LEFTBUTTON), 0);
    EXPECT_EQ(recorder.count(WM_MENURBUTTONUP), 1);
    script.finish();
    clickItem(menu, 0, MouseButton::right);
    EXPECT_EQ(track(TPM_RETURNCMD | TPM_RIGHTBUTTON), 1);
}

TEST_F(MenuTrackTest, ButtonThatOpenedTheMenuCanPickByBeingLetGo) {
    user.moveTo(200, 150);
    user.press(MouseButton::right);
    settle();
    whenIdle([this] {
        const POINT at = middleOf(window, menu, 4);
        user.moveTo(at.x, at.y);
        user.release(MouseButton::right);
    });
    EXPECT_EQ(track(TPM_RETURNCMD | TPM_RIGHTBUTTON), 5);
}

TEST_F(MenuTrackTest, LettingGoAtTheSamePlacePicksNothing) {
    user.moveTo(210, 160);
    user.press(MouseButton::right);
    settle();
    whenIdle([this] { user.release(MouseButton::right); });
    script.expect("still open", [] { return popup() != nullptr; });
    script.press(VK_ESCAPE);
    // The menu opens so that the pointer is over its first item.
    EXPECT_EQ(track(TPM_RETURNCMD | TPM_RIGHTBUTTON, 200, 150), 0);
}

TEST_F(MenuTrackTest, EndsWithoutACommandWhenItsGroundGoes) {
    struct Case {
        const char* name;
        std::function<void()> action;
    };
    const Case cases[] = {
        {"EndMenu", [] { EndMenu(); }},
        {"capture taken", [] { ReleaseCapture(); }},
        {"cancel mode", [this] { SendMessage(window, WM_CANCELMODE, 0, 0); }},
        {"popup's window destroyed", [] { DestroyWindow(popup()); }},
        {"menu destroyed", [this] { DestroyMenu(menu); }},
        {"owner destroyed", [this] { DestroyWindow(window); }},
    };
    for (const Case& each : cases) {
        whenIdle(each.action);
        EXPECT_EQ(track(), 0) << each.name;
        EXPECT_EQ(popup(), nullptr) << each.name;
        EXPECT_TRUE(script.finish());
        if (IsMenu(menu) == FALSE)
            menu = makePopup();
    }
}

TEST_F(MenuTrackTest, MenuMayChangeInAnyOfItsMessages) {
    for (const UINT message : {WM_INITMENU, WM_INITMENUPOPUP, WM_MENUSELECT, WM_ENTERIDLE}) {
        for (const bool destroy : {false, true}) {
            recorder.onMessage(message, [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
                if (destroy)
                    DestroyMenu(menu);
                else
                    while (DeleteMenu(menu, 0, MF_BYPOSITION) != FALSE) {
                    }
                return 0;
            });
            script.press(VK_DOWN).press(VK_RETURN);
            track();
            script.finish();
            recorder.onMessage(message, nullptr);
            DestroyMenu(menu);
            menu = makePopup();
        }
    }
    more = GetSubMenu(menu, 3);
}

TEST_F(MenuTrackTest, InitMenuPopupMayFillTheMenu) {
    const HMENU empty = CreatePopupMenu();
    EXPECT_EQ(TrackPopupMenu(empty, TPM_RETURNCMD, 10, 10, 0, window, nullptr), 0) << "nothing to show";
    recorder.onMessage(WM_INITMENUPOPUP, [&](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        AppendMenu(reinterpret_cast<HMENU>(wParam), MF_STRING, 8, "new");
        return 0;
    });
    script.press(VK_DOWN).press(VK_RETURN);
    EXPECT_EQ(TrackPopupMenu(empty, TPM_RETURNCMD, 10, 10, 0, window, nullptr), 8);
    DestroyMenu(empty);
}

TEST_F(MenuTrackTest, OneMenuAtATime) {
    BOOL second = TRUE;
    DWORD error = 0;
    whenIdle([&] {
        second = track();
        error = GetLastError();
    });
    script.press(VK_ESCAPE);
    track();
    EXPECT_FALSE(second);
    EXPECT_EQ(error, ERROR_POPUP_ALREADY_ACTIVE);
}

TEST_F(MenuTrackTest, OwnerAnswersForUnknownCharacters) {
    struct Case {
        const char* name;
        LRESULT answer;
        std::vector<int> more;
        BOOL picked;
    };
    const Case cases[] = {
        {"ignored, with a beep", MAKELRESULT(0, MNC_IGNORE), {VK_ESCAPE}, 0},
        {"close", MAKELRESULT(0, MNC_CLOSE), {}, 0},
        {"execute", MAKELRESULT(4, MNC_EXECUTE), {}, 5},
        {"select", MAKELRESULT(4, MNC_SELECT), {VK_RETURN}, 5},
        {"execute what isn't there", MAKELRESULT(99, MNC_EXECUTE), {VK_ESCAPE}, 0},
    };
    for (const Case& each : cases) {
        recorder.onMessage(WM_MENUCHAR, [&](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
            EXPECT_EQ(LOWORD(wParam), 'z');
            EXPECT_EQ(reinterpret_cast<HMENU>(lParam), menu);
            return each.answer;
        });
        script.type("z");
        for (const int key : each.more)
            script.press(key);
        EXPECT_EQ(track(), each.picked) << each.name;
        EXPECT_TRUE(script.finish()) << each.name << ": " << script.failure();
    }
    EXPECT_EQ(screen.beeps(), 1);
}

TEST_F(MenuTrackTest, SelectionTellsWhatIsSelected) {
    script.press(VK_DOWN).press('M').press(VK_ESCAPE).press(VK_ESCAPE);
    track();
    std::vector<std::pair<WPARAM, HMENU>> selections;
    for (const RecordedMessage& each : recorder.messages())
        if (each.message == WM_MENUSELECT)
            selections.emplace_back(each.wParam, reinterpret_cast<HMENU>(each.lParam));
    ASSERT_GE(selections.size(), 4U);
    EXPECT_EQ(selections[0], std::pair(MAKEWPARAM(1, MF_HILITE), menu));
    EXPECT_EQ(selections[1], std::pair(MAKEWPARAM(3, MF_HILITE | MF_POPUP), menu)) << "a popup by its position";
    EXPECT_EQ(selections[2], std::pair(MAKEWPARAM(41, MF_HILITE), more));
    EXPECT_EQ(selections.back(), std::pair(MAKEWPARAM(0, 0xFFFF), HMENU{}));
}

// ---- Places and looks ----------------------------------------------------------------------------------------------

TEST_F(MenuTrackTest, PopupsStayOnTheScreenAndOffTheExcludedRectangle) {
    struct Case {
        const char* name;
        POINT at;
        UINT flags;
        RECT exclude;
        POINT wanted;
    };
    const SIZE size{100, 60};
    const RECT none{};
    const Case cases[] = {
        {"at the point", {50, 70}, 0, none, {50, 70}},
        {"right aligned", {250, 70}, TPM_RIGHTALIGN, none, {150, 70}},
        {"centred", {250, 170}, TPM_CENTERALIGN | TPM_VCENTERALIGN, none, {200, 140}},
        {"bottom aligned", {50, 170}, TPM_BOTTOMALIGN, none, {50, 110}},
        {"turned over at the right edge", {780, 70}, 0, none, {680, 70}},
        {"turned over at the lower edge", {50, 590}, 0, none, {50, 530}},
        {"outside of the screen", {-40, 2000}, 0, none, {0, 540}},
        {"below a button", {50, 120}, TPM_VERTICAL, {50, 100, 90, 120}, {50, 120}},
        {"above a button", {50, 590}, TPM_VERTICAL, {50, 570, 90, 590}, {50, 510}},
        {"right of an item", {150, 100}, TPM_HORIZONTAL, {50, 100, 150, 117}, {150, 100}},
        {"left of an item", {780, 100}, TPM_HORIZONTAL, {680, 100, 780, 117}, {580, 100}},
    };
    for (const Case& each : cases) {
        const POINT found = placePopup(size, each.at, each.flags, &each.exclude);
        EXPECT_EQ(found.x, each.wanted.x) << each.name;
        EXPECT_EQ(found.y, each.wanted.y) << each.name;
    }
}

TEST_F(MenuTrackTest, LongMenusGoOnInFurtherColumns) {
    const HMENU tall = CreatePopupMenu();
    for (UINT i = 1; i <= 100; ++i)
        AppendMenu(tall, MF_STRING, i, "item");
    whenIdle([&] {
        for (UINT i = 0; i < 100; ++i) {
            RECT rect{};
            ASSERT_TRUE(GetMenuItemRect(window, tall, i, &rect));
            EXPECT_GE(rect.top, 0) << i;
            EXPECT_LE(rect.bottom, screenHeight) << i;
            EXPECT_LE(rect.right, screenWidth) << i;
        }
    });
    script.press(VK_DOWN).press(VK_RIGHT).press(VK_LEFT).press(VK_RETURN);
    EXPECT_EQ(TrackPopupMenu(tall, TPM_RETURNCMD, 0, 0, 0, window, nullptr), 1) << "to the next column and back";
    DestroyMenu(tall);
}

TEST_F(MenuTrackTest, SelectedItemIsHighlighted) {
    RECT rect{};
    script.press(VK_DOWN);
    whenIdle([&] { GetMenuItemRect(window, menu, 0, &rect); });
    script.expect("highlighted",
                  [&] { return pixel(rect.right - 5, rect.top + 2) == rgbOf(GetSysColor(COLOR_HIGHLIGHT)); });
    script.press(VK_DOWN);
    script.expect("and back", [&] { return pixel(rect.right - 5, rect.top + 2) == rgbOf(GetSysColor(COLOR_MENU)); });
    script.press(VK_ESCAPE);
    track();
    EXPECT_TRUE(script.finish()) << script.failure();
    settle();
    EXPECT_NE(pixel(rect.right - 5, rect.top + 2), rgbOf(GetSysColor(COLOR_HIGHLIGHT))) << "nothing of it is left";
}

TEST_F(MenuTrackTest, OwnerMeasuresAndDrawsItsItems) {
    AppendMenu(menu, MF_OWNERDRAW | MF_CHECKED, 70, reinterpret_cast<LPCSTR>(UINT_PTR{1234}));
    recorder.onMessage(WM_MEASUREITEM, [](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        auto* asked = reinterpret_cast<MEASUREITEMSTRUCT*>(lParam);
        EXPECT_EQ(asked->CtlType, ODT_MENU);
        EXPECT_EQ(asked->itemID, 70U);
        EXPECT_EQ(asked->itemData, 1234U);
        asked->itemWidth = 90;
        asked->itemHeight = 33;
        return TRUE;
    });
    int drawn = 0;
    UINT lastState = 0;
    recorder.onMessage(WM_DRAWITEM, [&](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        const auto* asked = reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        EXPECT_EQ(reinterpret_cast<HMENU>(asked->hwndItem), menu);
        EXPECT_EQ(asked->itemID, 70U);
        EXPECT_EQ(asked->itemData, 1234U);
        EXPECT_EQ(asked->rcItem.bottom - asked->rcItem.top, 33);
        EXPECT_GE(asked->rcItem.right - asked->rcItem.left, 90);
        lastState = asked->itemState;
        ++drawn;
        return TRUE;
    });
    script.press(VK_UP);
    script.expect("drawn as selected", [&] { return lastState == (ODS_SELECTED | ODS_CHECKED); });
    script.press(VK_RETURN);
    EXPECT_EQ(track(), 70);
    EXPECT_GE(drawn, 2);
    EXPECT_EQ(recorder.count(WM_MEASUREITEM), 1);
}

TEST_F(MenuTrackTest, ChecksAndBulletsAreDrawnInTheFirstColumn) {
    const auto darkPixels = [this](UINT position) {
        RECT rect{};
        GetMenuItemRect(window, menu, position, &rect);
        int count = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.left + 15; ++x)
                count += pixel(x, y) == rgbOf(GetSysColor(COLOR_MENUTEXT)) ? 1 : 0;
        return count;
    };
    CheckMenuItem(menu, 0, MF_BYPOSITION | MF_CHECKED);
    CheckMenuRadioItem(menu, 4, 4, 4, MF_BYPOSITION);
    int check = 0;
    int bullet = 0;
    int nothing = -1;
    whenIdle([&] {
        check = darkPixels(0);
        bullet = darkPixels(4);
        nothing = darkPixels(3);
    });
    script.press(VK_ESCAPE);
    track();
    EXPECT_GT(check, 5);
    EXPECT_GT(bullet, 5);
    EXPECT_EQ(nothing, 0);
}

} // namespace
