// Tab controls: selection and focus by messages, mouse and keyboard.
#include "control_fixture.h"

#include "win32/input.h"
#include "win32/static.h"
#include "win32/tab.h"

namespace vndk::test {
namespace {

class TabTest : public ControlFixture {
protected:
    HWND makeTabs(DWORD style, int count, int width = 380) {
        recorder.onMessage(WM_NOTIFY, [this](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
            const UINT code = reinterpret_cast<const NMHDR*>(lParam)->code;
            notified.push_back(code);
            if (code == TCN_SELCHANGING)
                return refuse ? 1 : 0;
            return std::nullopt;
        });
        tabs = make(WC_TABCONTROL, style, 5, 5, width, 120);
        for (int i = 0; i < count; ++i) {
            char text[] = "Tab 0";
            text[4] = static_cast<char>('0' + i);
            TCITEM item{};
            item.mask = TCIF_TEXT;
            item.pszText = text;
            EXPECT_EQ(SendMessage(tabs, TCM_INSERTITEM, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item)), i);
        }
        settle();
        notified.clear();
        return tabs;
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessage(tabs, message, wParam, lParam);
    }
    RECT itemRect(int index) {
        RECT rect{};
        EXPECT_EQ(send(TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect)), TRUE) << index;
        return rect;
    }
    void clickTab(int index) {
        const RECT rect = itemRect(index);
        const POINT point = onScreen(tabs, (rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2);
        user.click(point.x, point.y);
        settle();
    }
    /// Selection and focus.
    void expectState(LRESULT selected, LRESULT focus, const char* when) {
        EXPECT_EQ(send(TCM_GETCURSEL), selected) << when;
        EXPECT_EQ(send(TCM_GETCURFOCUS), focus) << when;
    }
    std::vector<UINT> taken() { return std::exchange(notified, {}); }

    HWND tabs = nullptr;
    bool refuse = false;
    std::vector<UINT> notified;
};

const std::vector<UINT> bothChanges{TCN_SELCHANGING, TCN_SELCHANGE};

TEST_F(TabTest, IsEmptyAtFirstAndSelectsTheFirstTabThatComes) {
    makeTabs(0, 0);
    expectState(-1, -1, "empty");
    EXPECT_EQ(send(TCM_GETITEMCOUNT), 0);
    makeTabs(0, 5);
    expectState(0, 0, "five tabs");
}

TEST_F(TabTest, IsSelectedByMessageWithoutAWord) {
    makeTabs(0, 5);
    EXPECT_EQ(send(TCM_SETCURSEL, 4), 0);
    expectState(4, 4, "selected by message");
    EXPECT_EQ(send(TCM_SETCURSEL, 6), -1);
    expectState(4, 4, "out of range");
    EXPECT_EQ(send(TCM_SETCURSEL, static_cast<WPARAM>(-1)), 4);
    EXPECT_EQ(send(TCM_GETCURSEL), -1);
    EXPECT_EQ(send(TCM_SETCURSEL, 1), -1);
    EXPECT_TRUE(taken().empty());
}

TEST_F(TabTest, AsksAndTellsWhenTheFocusIsSet) {
    makeTabs(0, 5);
    EXPECT_EQ(send(TCM_SETCURFOCUS, 4), 0);
    EXPECT_EQ(taken(), bothChanges);
    expectState(4, 4, "agreed");
    refuse = true;
    EXPECT_EQ(send(TCM_SETCURFOCUS, 0), 0);
    EXPECT_EQ(taken(), std::vector<UINT>{TCN_SELCHANGING});
    expectState(4, 4, "refused");
}

TEST_F(TabTest, KeepsFocusAndSelectionOfButtonsApart) {
    makeTabs(TCS_BUTTONS, 5);
    send(TCM_SETCURFOCUS, 4);
    expectState(0, 4, "focus only");
    EXPECT_EQ(send(TCM_SETCURSEL, 1), 0);
    expectState(1, 4, "selection only");
}

TEST_F(TabTest, FollowsClicksAndArrowKeys) {
    makeTabs(WS_TABSTOP, 3);
    clickTab(2);
    EXPECT_EQ(taken(), (std::vector<UINT>{TCN_SELCHANGING, TCN_SELCHANGE, NM_CLICK}));
    clickTab(2);
    EXPECT_EQ(GetFocus(), tabs) << "a click on the selected tab gives it the focus";
    taken();
    user.key(VK_RIGHT);
    settle();
    EXPECT_EQ(taken(), std::vector<UINT>{TCN_KEYDOWN}) << "no wrapping at the end";
    user.key(VK_LEFT);
    settle();
    EXPECT_EQ(taken(), (std::vector<UINT>{TCN_KEYDOWN, TCN_SELCHANGING, TCN_SELCHANGE}));
    expectState(1, 1, "one to the left");
}

TEST_F(TabTest, HasTheSizesItWasGiven) {
    makeTabs(TCS_FIXEDWIDTH, 5, 700);
    EXPECT_EQ(itemRect(0).right - itemRect(0).left, 96);
    EXPECT_EQ(send(TCM_GETROWCOUNT), 1);
    send(TCM_SETITEMSIZE, 0, MAKELPARAM(50, 20));
    EXPECT_EQ(itemRect(1).right - itemRect(1).left, 50);
    EXPECT_EQ(itemRect(1).bottom - itemRect(1).top, 20);
    EXPECT_EQ(itemRect(1).left, itemRect(0).right);
    send(TCM_SETITEMSIZE, 0, MAKELPARAM(0, 1));
    EXPECT_EQ(itemRect(1).right - itemRect(1).left, 0);
    EXPECT_EQ(itemRect(1).bottom - itemRect(1).top, 1);
}

TEST_F(TabTest, StandsAtTheBottomWhenAskedAndLeavesThePageItsRoom) {
    makeTabs(TCS_BOTTOM, 2);
    const RECT client = clientRect(tabs);
    EXPECT_GT(itemRect(0).top, client.bottom / 2);
    RECT page = client;
    send(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
    EXPECT_LE(page.bottom, itemRect(0).top);
    RECT whole = page;
    send(TCM_ADJUSTRECT, TRUE, reinterpret_cast<LPARAM>(&whole));
    EXPECT_EQ(std::memcmp(&whole, &client, sizeof client), 0) << "both ways fit";
}

TEST_F(TabTest, BreaksIntoRowsOrScrolls) {
    makeTabs(TCS_MULTILINE, 9, 160);
    EXPECT_GT(send(TCM_GETROWCOUNT), 1);
    makeTabs(0, 9, 160);
    EXPECT_EQ(send(TCM_GETROWCOUNT), 1);
    send(TCM_SETCURSEL, 8);
    EXPECT_GE(itemRect(8).left, 0);
    EXPECT_LT(itemRect(8).left, 160) << "the selected tab is scrolled into view";
}

TEST_F(TabTest, KeepsItsSelectionWhenOthersComeAndGo) {
    makeTabs(0, 4);
    send(TCM_SETCURSEL, 2);
    TCITEM item{};
    item.mask = TCIF_PARAM;
    item.lParam = 77;
    send(TCM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&item));
    expectState(3, 3, "inserted before");
    send(TCM_DELETEITEM, 0);
    expectState(2, 2, "deleted before");
    send(TCM_DELETEITEM, 2);
    EXPECT_EQ(send(TCM_GETCURSEL), -1);
    EXPECT_EQ(send(TCM_DELETEITEM, 99), FALSE);
    for (const UINT message : {TCM_INSERTITEM, TCM_GETITEM, TCM_SETITEM, TCM_GETITEMRECT, TCM_HITTEST, TCM_ADJUSTRECT})
        send(message, 0, 0);
}

// A page lies in front of its tabs or behind them, as its dialog made it; neither is painted over, and both get the
// mouse.
TEST_F(TabTest, LeavesPagesTheirPixelsAndTheirMouse) {
    for (const bool inFront : {true, false})
        for (const DWORD style : {DWORD{0}, TCS_BOTTOM}) {
            makeTabs(style, 3);
            RECT page = clientRect(tabs);
            send(TCM_ADJUSTRECT, FALSE, reinterpret_cast<LPARAM>(&page));
            MapWindowPoints(tabs, owner, reinterpret_cast<POINT*>(&page), 2);
            const HWND box =
                CreateWindow("Static", "", WS_CHILD | WS_VISIBLE | SS_BLACKRECT | SS_NOTIFY, page.left, page.top,
                             page.right - page.left, page.bottom - page.top, owner, nullptr, nullptr, nullptr);
            SetWindowPos(box, inFront ? HWND_TOP : HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
            RedrawWindow(owner, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
            settle();
            const POINT inside = onScreen(box, 30, 20);
            const auto check = [&](const char* when) {
                EXPECT_EQ(pixel(inside.x, inside.y), rgbOf(GetSysColor(COLOR_3DDKSHADOW)))
                    << when << ", style " << style << ", in front " << inFront;
            };
            check("at first");
            clickTab(2);
            check("another tab");
            SetFocus(tabs);
            settle();
            check("the focus");
            EXPECT_EQ(WindowFromPoint(inside), box) << style << ", in front " << inFront;
            const RECT rect = itemRect(0);
            EXPECT_EQ(WindowFromPoint(onScreen(tabs, rect.left + 5, (rect.top + rect.bottom) / 2)), tabs);
            DestroyWindow(box);
            DestroyWindow(tabs);
        }
}

TEST_F(TabTest, SurvivesItsEndInANotification) {
    makeTabs(0, 3);
    recorder.onMessage(WM_NOTIFY, [this](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        DestroyWindow(tabs);
        return 0;
    });
    send(TCM_SETCURFOCUS, 2);
    EXPECT_FALSE(IsWindow(tabs));
}

} // namespace
} // namespace vndk::test
