// Which window is active and which has the focus.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/window_position.h"

namespace {

using namespace vndk::test;

class ActivationTest : public DesktopFixture {
protected:
    void SetUp() override { recorder.registerClass(); }
    void TearDown() override { EXPECT_EQ(vndk::win32::verifyWindows(), ""); }

    HWND create(DWORD style, HWND parent = nullptr, int x = 20, int y = 30) {
        const HWND window =
            CreateWindow(MessageRecorder::className, "text", style, x, y, 200, 100, parent, nullptr, nullptr, nullptr);
        settle();
        recorder.clear();
        return window;
    }
    HWND createTop(int x = 20) { return create(WS_OVERLAPPEDWINDOW | WS_VISIBLE, nullptr, x); }
    HWND createChild(HWND parent, int x = 10, int y = 10) { return create(WS_CHILD | WS_VISIBLE, parent, x, y); }
    static WPARAM asWParam(HWND window) { return reinterpret_cast<WPARAM>(window); }

    MessageRecorder recorder;
};

TEST_F(ActivationTest, FocusGoesFromOneToTheOther) {
    const HWND top = createTop();
    const HWND a = createChild(top);
    const HWND b = createChild(top);
    EXPECT_EQ(SetFocus(a), top);
    recorder.clear();
    EXPECT_EQ(SetFocus(b), a);
    EXPECT_TRUE(recorder.saw({{WM_KILLFOCUS, sent | wparam, asWParam(b)}, {WM_SETFOCUS, sent | wparam, asWParam(a)}}));
    EXPECT_EQ(SetFocus(b), b);
    EXPECT_TRUE(recorder.saw({}));
    EXPECT_EQ(SetFocus(nullptr), b);
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(ActivationTest, FocusIsRefused) {
    const HWND top = createTop();
    const HWND child = createChild(top);
    const HWND disabled = create(WS_CHILD | WS_VISIBLE | WS_DISABLED, top);
    const HWND inside = createChild(disabled);
    const HWND dead = createChild(top);
    DestroyWindow(dead);
    SetFocus(child);
    struct {
        const char* name;
        HWND window;
    } const rows[] = {{"disabled", disabled}, {"in a disabled window", inside}, {"dead", dead}};
    for (const auto& row : rows) {
        EXPECT_EQ(SetFocus(row.window), nullptr) << row.name;
        EXPECT_EQ(GetFocus(), child) << row.name;
    }
}

TEST_F(ActivationTest, FocusInAnotherTopLevelWindowActivatesIt) {
    const HWND first = createTop();
    const HWND firstChild = createChild(first);
    const HWND second = createTop(300);
    const HWND secondChild = createChild(second);
    SetFocus(firstChild);
    recorder.clear();
    SetFocus(secondChild);
    EXPECT_TRUE(recorder.saw({{WM_NCACTIVATE, sent | wparam, 0},
                              {WM_ACTIVATE, sent | wparam | lparam, WA_INACTIVE, reinterpret_cast<LPARAM>(second)},
                              {WM_WINDOWPOSCHANGING, sent},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_WINDOWPOSCHANGED, sent},
                              {WM_NCACTIVATE, sent | wparam, 1},
                              {WM_ACTIVATE, sent | wparam | lparam, WA_ACTIVE, reinterpret_cast<LPARAM>(first)},
                              {WM_KILLFOCUS, sent | defwinproc},
                              {WM_SETFOCUS, sent | defwinproc},
                              {WM_KILLFOCUS, sent | wparam, asWParam(secondChild)},
                              {WM_SETFOCUS, sent | wparam, asWParam(second)}}));
    EXPECT_EQ(GetActiveWindow(), second);
}

TEST_F(ActivationTest, HiddenChildKeepsTheFocusWhenItIsHiddenByPosition) {
    const HWND top = createTop();
    const HWND child = createChild(top);
    SetFocus(child);
    SetWindowPos(child, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(GetFocus(), child);
}

TEST_F(ActivationTest, HiddenChildGivesTheFocusToItsParentWithShowWindow) {
    const HWND top = createTop();
    const HWND child = createChild(top);
    SetFocus(child);
    recorder.clear();
    ShowWindow(child, SW_HIDE);
    EXPECT_EQ(GetFocus(), top);
    EXPECT_EQ(recorder.count(WM_KILLFOCUS, child), 1);
}

TEST_F(ActivationTest, MinimizingTakesTheFocusAndRestoringGivesItToTheWindow) {
    const HWND top = createTop();
    const HWND child = createChild(top);
    SetFocus(child);
    ShowWindow(top, SW_SHOWMINIMIZED);
    EXPECT_NE(GetFocus(), child);
    EXPECT_EQ(SetFocus(child), nullptr) << "nothing in a minimised window can have it";
    ShowWindow(top, SW_RESTORE);
    EXPECT_EQ(GetFocus(), top);
}

TEST_F(ActivationTest, RestoredWindowPutsTheFocusWhereItsHandlerWants) {
    const HWND top = createTop();
    const HWND child = createChild(top);
    recorder.onMessage(WM_ACTIVATE, [&](HWND window, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        if (window != top || LOWORD(wParam) == WA_INACTIVE || HIWORD(wParam) != 0)
            return std::nullopt;
        SetFocus(child);
        return 0;
    });
    ShowWindow(top, SW_SHOWMINIMIZED);
    ShowWindow(top, SW_RESTORE);
    EXPECT_EQ(GetFocus(), child);
}

TEST_F(ActivationTest, HidingTheOnlyWindowLeavesNoneActive) {
    const HWND top = createTop();
    ShowWindow(top, SW_HIDE);
    EXPECT_EQ(GetActiveWindow(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GetForegroundWindow(), nullptr);
}

TEST_F(ActivationTest, PopupTakesTheActivationAndGivesItBackToItsOwner) {
    const HWND other = createTop(400);
    const HWND owner = createTop();
    const HWND popup = create(WS_POPUP | WS_VISIBLE, owner);
    EXPECT_EQ(GetActiveWindow(), popup);
    EXPECT_EQ(GetLastActivePopup(owner), popup);
    DestroyWindow(popup);
    EXPECT_EQ(GetActiveWindow(), owner);
    EXPECT_EQ(GetFocus(), owner);
    EXPECT_EQ(GetLastActivePopup(owner), owner);
    ShowWindow(owner, SW_MINIMIZE);
    EXPECT_EQ(GetActiveWindow(), other) << "a minimised window hands on to the next";
}

TEST_F(ActivationTest, ForegroundIsForTopLevelWindows) {
    const HWND first = createTop();
    const HWND second = createTop(300);
    const HWND child = createChild(first);
    EXPECT_FALSE(SetForegroundWindow(nullptr));
    EXPECT_FALSE(SetForegroundWindow(child));
    EXPECT_EQ(GetForegroundWindow(), second);
    EXPECT_TRUE(SetForegroundWindow(first));
    EXPECT_EQ(GetForegroundWindow(), first);
    EXPECT_EQ(SetActiveWindow(child), first);
    EXPECT_EQ(SetActiveWindow(second), first);
    EXPECT_EQ(GetActiveWindow(), second);
}

TEST_F(ActivationTest, WindowCanRefuseToBecomeInactive) {
    const HWND first = createTop();
    recorder.onMessage(WM_NCACTIVATE, [&](HWND window, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        return window == first && wParam == FALSE ? std::optional<LRESULT>(FALSE) : std::nullopt;
    });
    const HWND second = create(WS_OVERLAPPEDWINDOW);
    EXPECT_FALSE(SetForegroundWindow(second));
    EXPECT_EQ(GetActiveWindow(), first);
}

TEST_F(ActivationTest, DisablingTakesFocusAndCaptureOfTheWindow) {
    const HWND top = createTop();
    const HWND child = createChild(top);
    SetFocus(child);
    SetCapture(child);
    recorder.clear();
    EXPECT_FALSE(EnableWindow(child, FALSE));
    EXPECT_EQ(GetFocus(), nullptr);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(recorder.count(WM_CANCELMODE), 1);
    EXPECT_EQ(recorder.count(WM_ENABLE), 1);
    EXPECT_TRUE(EnableWindow(child, FALSE));
    EXPECT_EQ(recorder.count(WM_ENABLE), 1);
    EXPECT_TRUE(EnableWindow(child, TRUE));
    EXPECT_EQ(recorder.count(WM_ENABLE), 2);
}

TEST_F(ActivationTest, ClickOnAnInactiveWindowActivatesItBeforeItHearsOfTheClick) {
    const HWND first = createTop();
    createTop(300);
    const POINT point = onScreen(first, 50, 30);
    user.moveTo(point.x, point.y);
    settle();
    recorder.clear();
    recorder.notice({WM_NCHITTEST});
    user.press();
    settle();
    std::vector<UINT> order;
    for (const RecordedMessage& each : recorder.messages())
        if (each.window == first &&
            (each.message == WM_NCHITTEST || each.message == WM_MOUSEACTIVATE || each.message == WM_ACTIVATE ||
             each.message == WM_SETFOCUS || each.message == WM_SETCURSOR || each.message == WM_LBUTTONDOWN))
            order.push_back(each.message);
    EXPECT_EQ(order, (std::vector<UINT>{WM_NCHITTEST, WM_MOUSEACTIVATE, WM_ACTIVATE, WM_SETFOCUS, WM_SETCURSOR,
                                        WM_LBUTTONDOWN}));
    EXPECT_EQ(GetActiveWindow(), first);
}

TEST_F(ActivationTest, ClickOnAChildAsksItAndByDefaultItsParent) {
    const HWND top = createTop();
    const HWND child = createChild(top);
    recorder.setParent(top);
    const POINT point = onScreen(child, 5, 5);
    user.moveTo(point.x, point.y);
    settle();
    recorder.clear();
    recorder.notice({WM_NCHITTEST});
    user.press();
    settle();
    EXPECT_TRUE(recorder.saw({{WM_NCHITTEST, sent},
                              {WM_PARENTNOTIFY, sent | parent | wparam, WM_LBUTTONDOWN},
                              {WM_MOUSEACTIVATE, sent | wparam, asWParam(top)},
                              {WM_MOUSEACTIVATE, sent | parent | defwinproc},
                              {WM_SETCURSOR, sent},
                              {WM_SETCURSOR, sent | parent | defwinproc},
                              {WM_LBUTTONDOWN, posted}}));
    EXPECT_EQ(GetFocus(), top) << "a click alone doesn't move the focus";
}

TEST_F(ActivationTest, MouseActivationCanBeDeclined) {
    struct {
        LRESULT answer;
        bool activates;
        bool delivers;
    } const rows[] = {{MA_ACTIVATE, true, true},
                      {MA_ACTIVATEANDEAT, true, false},
                      {MA_NOACTIVATE, false, true},
                      {MA_NOACTIVATEANDEAT, false, false}};
    for (const auto& row : rows) {
        const HWND window = createTop();
        const HWND active = createTop(300);
        recorder.onMessage(WM_MOUSEACTIVATE,
                           [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return row.answer; });
        const POINT point = onScreen(window, 50, 30);
        user.click(point.x, point.y);
        settle();
        EXPECT_EQ(GetActiveWindow(), row.activates ? window : active) << row.answer;
        EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, window), row.delivers ? 1 : 0) << row.answer;
        recorder.onMessage(WM_MOUSEACTIVATE, nullptr);
        DestroyWindow(window);
        DestroyWindow(active);
    }
}

TEST_F(ActivationTest, MouseOverTheFrameIsTested) {
    const HWND top = createTop();
    recorder.notice({WM_NCHITTEST});
    user.moveTo(windowRect(top).left + 80, windowRect(top).top + 10);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_NCHITTEST, sent},
                              {WM_SETCURSOR, sent | lparam, 0, MAKELPARAM(HTCAPTION, WM_MOUSEMOVE)},
                              {WM_NCMOUSEMOVE, posted | wparam, HTCAPTION}}));
}

TEST_F(ActivationTest, ClickBesideAModalWindowBeeps) {
    const HWND owner = createTop();
    const HWND popup = create(WS_POPUP | WS_VISIBLE | WS_CAPTION, owner, 400, 300);
    EnableWindow(owner, FALSE);
    const POINT point = onScreen(owner, 50, 30);
    user.click(point.x, point.y);
    settle();
    EXPECT_EQ(GetActiveWindow(), popup);
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, owner), 0);
    EXPECT_GE(screen.beeps(), 1);
}

} // namespace
