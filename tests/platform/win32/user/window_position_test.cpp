// Place, size, order and visibility of windows.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/window_position.h"
#include "win32/error.h"
#include "win32/metrics.h"

#include <algorithm>
#include <random>

namespace {

using namespace vndk::test;

constexpr UINT sameClient = SWP_NOCLIENTSIZE | SWP_NOCLIENTMOVE;
constexpr UINT inPlace = SWP_NOSIZE | SWP_NOMOVE;
constexpr UINT background = SWP_NOACTIVATE | SWP_NOZORDER;

class WindowPositionTest : public DesktopFixture {
protected:
    void SetUp() override { recorder.registerClass(); }
    void TearDown() override { EXPECT_EQ(vndk::win32::verifyWindows(), ""); }

    HWND create(DWORD style, HWND parent = nullptr, DWORD exStyle = 0) {
        return CreateWindowEx(exStyle, MessageRecorder::className, "text", style, 20, 30, 200, 100, parent, nullptr,
                              nullptr, nullptr);
    }
    /// Painted and quiet.
    HWND createShown(DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE, HWND parent = nullptr) {
        const HWND window = create(style, parent);
        rest();
        return window;
    }
    void rest() {
        settle();
        recorder.clear();
    }
    static std::vector<HWND> order(HWND parent = GetDesktopWindow()) {
        std::vector<HWND> windows;
        for (HWND each = GetTopWindow(parent); each != nullptr; each = GetWindow(each, GW_HWNDNEXT))
            windows.push_back(each);
        return windows;
    }
    /// The same without windows that the test didn't make.
    static bool inFront(HWND first, HWND second) {
        const std::vector<HWND> windows = order();
        return std::find(windows.begin(), windows.end(), first) < std::find(windows.begin(), windows.end(), second);
    }

    MessageRecorder recorder;
};

TEST_F(WindowPositionTest, ShowingByPositionActivatesWithoutShowWindowMessage) {
    const HWND window = create(WS_OVERLAPPEDWINDOW);
    recorder.clear();
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_SHOWWINDOW | inPlace);
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent | wparam, SWP_SHOWWINDOW | inPlace},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_ACTIVATEAPP, sent | wparam, 1},
                              {WM_NCACTIVATE, sent | wparam, 1},
                              {WM_ACTIVATE, sent | wparam, 1},
                              {WM_SETFOCUS, sent | defwinproc},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_WINDOWPOSCHANGED, sent | wparam, SWP_SHOWWINDOW | inPlace | sameClient}}));
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_EQ(GetFocus(), window);
}

TEST_F(WindowPositionTest, FirstShowWindowOfAnOverlappedWindowTellsItsSize) {
    const HWND window = create(WS_OVERLAPPEDWINDOW);
    recorder.clear();
    EXPECT_FALSE(ShowWindow(window, SW_HIDE));
    EXPECT_TRUE(
        recorder.saw({{WM_SHOWWINDOW, sent | wparam, 0}, {WM_SIZE, sent | wparam, SIZE_RESTORED}, {WM_MOVE, sent}}));
    EXPECT_FALSE(ShowWindow(window, SW_HIDE));
    EXPECT_TRUE(recorder.saw({})) << "the second time nothing changes";
}

TEST_F(WindowPositionTest, HidingTheActiveWindowDeactivatesIt) {
    const HWND window = createShown();
    EXPECT_TRUE(ShowWindow(window, SW_HIDE));
    EXPECT_TRUE(recorder.saw({{WM_SHOWWINDOW, sent | wparam, 0},
                              {WM_WINDOWPOSCHANGING, sent | wparam, SWP_HIDEWINDOW | inPlace},
                              {WM_WINDOWPOSCHANGED, sent | wparam, SWP_HIDEWINDOW | inPlace | sameClient},
                              {WM_NCACTIVATE, sent | wparam, 0},
                              {WM_ACTIVATE, sent | wparam, 0},
                              {WM_ACTIVATEAPP, sent | wparam, 0},
                              {WM_KILLFOCUS, sent | wparam, 0}}));
    EXPECT_EQ(GetActiveWindow(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(WindowPositionTest, HidingByPositionLeavesTheWindowActive) {
    const HWND window = createShown();
    SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | inPlace);
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent | wparam, SWP_HIDEWINDOW | inPlace},
                              {WM_WINDOWPOSCHANGED, sent | wparam, SWP_HIDEWINDOW | inPlace | sameClient}}));
    EXPECT_FALSE(IsWindowVisible(window));
    EXPECT_EQ(GetActiveWindow(), window);
}

TEST_F(WindowPositionTest, NewSizeAsksForLimitsAndTheClientArea) {
    const HWND window = createShown();
    constexpr UINT flags = SWP_NOMOVE | background;
    SetWindowPos(window, nullptr, 0, 0, 250, 150, flags);
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent | wparam, flags},
                              {WM_GETMINMAXINFO, sent | defwinproc},
                              {WM_NCCALCSIZE, sent | wparam, 1},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_WINDOWPOSCHANGED, sent | wparam, flags | SWP_NOCLIENTMOVE},
                              {WM_SIZE, sent | defwinproc | wparam, SIZE_RESTORED}}));
}

TEST_F(WindowPositionTest, MoveDoesNotAskForTheClientArea) {
    const HWND window = createShown();
    constexpr UINT flags = SWP_NOSIZE | background;
    SetWindowPos(window, nullptr, 70, 80, 0, 0, flags);
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent | wparam, flags},
                              {WM_WINDOWPOSCHANGED, sent | wparam, flags | SWP_NOCLIENTSIZE},
                              {WM_MOVE, sent | defwinproc}}));
    const RECT rect = windowRect(window);
    EXPECT_EQ(rect.left, 70);
    EXPECT_EQ(rect.top, 80);
}

TEST_F(WindowPositionTest, FrameChangeRecalculatesInPlace) {
    const HWND window = createShown();
    constexpr UINT flags = inPlace | background | SWP_FRAMECHANGED;
    SetWindowPos(window, nullptr, 0, 0, 0, 0, flags);
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent | wparam, flags},
                              {WM_NCCALCSIZE, sent | wparam, 1},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_WINDOWPOSCHANGED, sent | wparam, flags | sameClient}}));
}

TEST_F(WindowPositionTest, NothingToDoIsNotTold) {
    const HWND window = createShown();
    SetWindowPos(window, nullptr, 0, 0, 0, 0, inPlace | background);
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent}}));
    SetWindowPos(window, nullptr, 0, 0, 0, 0, inPlace | background | SWP_NOSENDCHANGING);
    EXPECT_TRUE(recorder.saw({}));
}

TEST_F(WindowPositionTest, ShowingAChildNeitherActivatesNorRaises) {
    const HWND top = createShown();
    const HWND child = create(WS_CHILD, top);
    rest();
    const UINT flags = SWP_SHOWWINDOW | inPlace | background;
    EXPECT_FALSE(ShowWindow(child, SW_SHOW));
    EXPECT_TRUE(recorder.saw({{WM_SHOWWINDOW, sent | wparam, 1},
                              {WM_WINDOWPOSCHANGING, sent | wparam, flags},
                              {WM_WINDOWPOSCHANGED, sent | wparam, flags | sameClient}}));
    EXPECT_EQ(GetFocus(), top);
    EXPECT_TRUE(ShowWindow(child, SW_SHOW));
    EXPECT_TRUE(recorder.saw({}));
}

TEST_F(WindowPositionTest, ChildOfAHiddenParentOnlyTakesTheWish) {
    const HWND top = create(WS_OVERLAPPEDWINDOW);
    const HWND child = create(WS_CHILD, top);
    recorder.clear();
    ShowWindow(child, SW_SHOW);
    EXPECT_TRUE(recorder.saw({{WM_SHOWWINDOW, sent | wparam, 1}}));
    EXPECT_NE(GetWindowLong(child, GWL_STYLE) & static_cast<LONG>(WS_VISIBLE), 0);
    EXPECT_FALSE(IsWindowVisible(child));
    ShowWindow(child, SW_HIDE);
    EXPECT_TRUE(recorder.saw({{WM_SHOWWINDOW, sent | wparam, 0}}));
}

TEST_F(WindowPositionTest, ShowNaShowsInTheBackground) {
    const HWND first = createShown();
    const HWND window = create(WS_OVERLAPPEDWINDOW);
    recorder.clear();
    ShowWindow(window, SW_SHOWNA);
    EXPECT_TRUE(
        recorder.saw({{WM_SHOWWINDOW, sent | wparam, 1},
                      {WM_WINDOWPOSCHANGING, sent | wparam, SWP_SHOWWINDOW | SWP_NOACTIVATE | inPlace},
                      {WM_NCPAINT, sent | optional},
                      {WM_ERASEBKGND, sent | optional},
                      {WM_WINDOWPOSCHANGED, sent | wparam, SWP_SHOWWINDOW | SWP_NOACTIVATE | inPlace | sameClient},
                      {WM_SIZE, sent | wparam, SIZE_RESTORED},
                      {WM_MOVE, sent}}));
    EXPECT_EQ(GetActiveWindow(), first);
}

TEST_F(WindowPositionTest, SetRedrawTurnsTheVisibleBitAlone) {
    const HWND shown = createShown();
    SendMessage(shown, WM_SETREDRAW, FALSE, 0);
    EXPECT_FALSE(IsWindowVisible(shown));
    SendMessage(shown, WM_SETREDRAW, TRUE, 0);
    EXPECT_TRUE(IsWindowVisible(shown));
    const HWND hidden = create(WS_POPUP);
    recorder.clear();
    SendMessage(hidden, WM_SETREDRAW, TRUE, 0);
    EXPECT_TRUE(IsWindowVisible(hidden)) << "also of a window that was hidden before";
    EXPECT_TRUE(recorder.saw({{WM_SETREDRAW, sent}}));
}

TEST_F(WindowPositionTest, MaximizingTakesTheWholeDesktopAndRestoringTheOldPlace) {
    const HWND window = createShown();
    const RECT before = windowRect(window);
    ShowWindow(window, SW_SHOWMAXIMIZED);
    EXPECT_TRUE(recorder.saw({{WM_GETMINMAXINFO, sent},
                              {WM_WINDOWPOSCHANGING, sent},
                              {WM_GETMINMAXINFO, sent | optional | defwinproc},
                              {WM_NCCALCSIZE, sent | wparam, 1},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_WINDOWPOSCHANGED, sent},
                              {WM_MOVE, sent | defwinproc},
                              {WM_SIZE, sent | defwinproc | wparam, SIZE_MAXIMIZED}}));
    EXPECT_TRUE(IsZoomed(window));
    const int border = GetSystemMetrics(SM_CXFRAME);
    const RECT large = windowRect(window);
    EXPECT_EQ(large.left, -border);
    EXPECT_EQ(large.top, -border);
    EXPECT_EQ(large.right, screenWidth + border);
    EXPECT_EQ(large.bottom, screenHeight + border);
    rest();
    ShowWindow(window, SW_RESTORE);
    EXPECT_FALSE(IsZoomed(window));
    const RECT after = windowRect(window);
    EXPECT_TRUE(std::equal(&after.left, &after.left + 4, &before.left));
}

TEST_F(WindowPositionTest, MinimizedWindowsStandInARowAndComeBack) {
    const HWND first = createShown();
    const HWND second = createShown();
    ShowWindow(first, SW_MINIMIZE);
    ShowWindow(second, SW_MINIMIZE);
    EXPECT_TRUE(IsIconic(first));
    EXPECT_EQ(windowRect(first).bottom, screenHeight);
    EXPECT_EQ(windowRect(first).left, 0);
    EXPECT_EQ(windowRect(second).left, windowRect(first).right);
    EXPECT_EQ(clientRect(first).right, 0);
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    ASSERT_TRUE(GetWindowPlacement(first, &placement));
    EXPECT_EQ(placement.showCmd, static_cast<UINT>(SW_SHOWMINIMIZED));
    EXPECT_EQ(placement.rcNormalPosition.left, 20);
    ShowWindow(first, SW_RESTORE);
    EXPECT_FALSE(IsIconic(first));
    EXPECT_EQ(windowRect(first).left, 20);
    EXPECT_EQ(GetActiveWindow(), first);
}

TEST_F(WindowPositionTest, MinimizedWindowRemembersThatItWasMaximized) {
    const HWND window = createShown();
    ShowWindow(window, SW_SHOWMAXIMIZED);
    ShowWindow(window, SW_MINIMIZE);
    EXPECT_FALSE(IsZoomed(window));
    ShowWindow(window, SW_RESTORE);
    EXPECT_TRUE(IsZoomed(window));
    ShowWindow(window, SW_SHOWNORMAL);
    EXPECT_FALSE(IsZoomed(window));
    EXPECT_FALSE(IsIconic(window));
}

TEST_F(WindowPositionTest, PopupsHideWhileTheirOwnerIsMinimized) {
    const HWND owner = createShown();
    const HWND popup = createShown(WS_POPUP | WS_VISIBLE, owner);
    const HWND hidden = create(WS_POPUP, owner);
    ShowWindow(owner, SW_MINIMIZE);
    EXPECT_FALSE(IsWindowVisible(popup));
    ShowWindow(owner, SW_RESTORE);
    EXPECT_TRUE(IsWindowVisible(popup));
    EXPECT_FALSE(IsWindowVisible(hidden));
}

TEST_F(WindowPositionTest, ChildrenAreMaximizedInTheirParent) {
    const HWND top = createShown();
    const HWND child = createShown(WS_CHILD | WS_VISIBLE | WS_CAPTION | WS_THICKFRAME, top);
    ShowWindow(child, SW_SHOWMAXIMIZED);
    const RECT rect = windowRect(child);
    const POINT origin = onScreen(top, 0, 0);
    EXPECT_EQ(rect.left, origin.x - GetSystemMetrics(SM_CXFRAME));
    EXPECT_EQ(rect.right - rect.left, clientRect(top).right + 2 * GetSystemMetrics(SM_CXFRAME));
}

TEST_F(WindowPositionTest, LimitsAreKept) {
    const HWND window = createShown();
    SetWindowPos(window, nullptr, 0, 0, 10, 10, SWP_NOMOVE | background);
    EXPECT_EQ(windowRect(window).right - windowRect(window).left, GetSystemMetrics(SM_CXMINTRACK));
    recorder.onMessage(WM_GETMINMAXINFO, [](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        reinterpret_cast<MINMAXINFO*>(lParam)->ptMaxTrackSize = {300, 200};
        return 0;
    });
    SetWindowPos(window, nullptr, 0, 0, 1000, 1000, SWP_NOMOVE | background);
    EXPECT_EQ(windowRect(window).right - windowRect(window).left, 300);
    EXPECT_EQ(windowRect(window).bottom - windowRect(window).top, 200);
}

TEST_F(WindowPositionTest, HandlerOfPositionChangingDecides) {
    const HWND window = createShown(WS_POPUP | WS_VISIBLE);
    recorder.onMessage(WM_WINDOWPOSCHANGING, [](HWND, UINT, WPARAM, LPARAM lParam) -> std::optional<LRESULT> {
        reinterpret_cast<WINDOWPOS*>(lParam)->x = 111;
        return 0;
    });
    SetWindowPos(window, nullptr, 5, 6, 0, 0, SWP_NOSIZE | background);
    EXPECT_EQ(windowRect(window).left, 111);
    EXPECT_EQ(windowRect(window).top, 6);
}

TEST_F(WindowPositionTest, ChildrenCountFromTheirParentAndMoveAlong) {
    const HWND top = createShown();
    const HWND child = createShown(WS_CHILD | WS_VISIBLE, top);
    const HWND inner = createShown(WS_CHILD | WS_VISIBLE, child);
    SetWindowPos(top, nullptr, 120, 230, 0, 0, SWP_NOSIZE | background);
    const POINT origin = onScreen(top, 0, 0);
    EXPECT_EQ(windowRect(child).left, origin.x + 20);
    EXPECT_EQ(windowRect(inner).top, origin.y + 60);
    POINT point{0, 0};
    EXPECT_EQ(MapWindowPoints(inner, top, &point, 1), MAKELONG(40, 60));
    EXPECT_EQ(point.x, 40);
    EXPECT_EQ(point.y, 60);
    EXPECT_EQ(MapWindowPoints(nullptr, inner, &point, 1),
              MAKELONG(static_cast<WORD>(-origin.x - 40), static_cast<WORD>(-origin.y - 60)));
}

TEST_F(WindowPositionTest, OrderFollowsTheWish) {
    const HWND top = createShown();
    const HWND a = create(WS_CHILD | WS_VISIBLE, top);
    const HWND b = create(WS_CHILD | WS_VISIBLE, top);
    const HWND c = create(WS_CHILD | WS_VISIBLE, top);
    constexpr UINT flags = inPlace | SWP_NOACTIVATE;
    struct {
        const char* name;
        HWND window;
        HWND after;
        std::vector<HWND> expected;
    } const rows[] = {{"to the top", c, HWND_TOP, {c, a, b}},
                      {"to the bottom", c, HWND_BOTTOM, {a, b, c}},
                      {"behind another", a, b, {b, a, c}},
                      {"behind itself", a, a, {b, a, c}},
                      {"behind the last", b, c, {a, c, b}},
                      {"where it stands", c, a, {a, c, b}},
                      {"topmost among children", b, HWND_TOPMOST, {b, a, c}}};
    for (const auto& row : rows) {
        EXPECT_TRUE(SetWindowPos(row.window, row.after, 0, 0, 0, 0, flags)) << row.name;
        EXPECT_EQ(order(top), row.expected) << row.name;
    }
    EXPECT_FALSE(SetWindowPos(a, top, 0, 0, 0, 0, flags)) << "behind a window with another parent";
    DestroyWindow(b);
    EXPECT_FALSE(SetWindowPos(a, b, 0, 0, 0, 0, flags)) << "behind a dead one";
    EXPECT_EQ(order(top), (std::vector<HWND>{a, c}));
}

TEST_F(WindowPositionTest, TopmostWindowsStayInFront) {
    const HWND topmost = create(WS_POPUP | WS_VISIBLE, nullptr, WS_EX_TOPMOST);
    const HWND plain = create(WS_POPUP | WS_VISIBLE);
    EXPECT_TRUE(inFront(topmost, plain));
    SetWindowPos(plain, HWND_TOP, 0, 0, 0, 0, inPlace);
    EXPECT_TRUE(inFront(topmost, plain));
    SetWindowPos(plain, HWND_TOPMOST, 0, 0, 0, 0, inPlace);
    EXPECT_TRUE(inFront(plain, topmost));
    EXPECT_NE(GetWindowLong(plain, GWL_EXSTYLE) & static_cast<LONG>(WS_EX_TOPMOST), 0);
    SetWindowPos(plain, HWND_NOTOPMOST, 0, 0, 0, 0, inPlace);
    EXPECT_TRUE(inFront(topmost, plain));
    SetWindowPos(topmost, HWND_BOTTOM, 0, 0, 0, 0, inPlace | SWP_NOACTIVATE);
    EXPECT_EQ(GetWindowLong(topmost, GWL_EXSTYLE) & static_cast<LONG>(WS_EX_TOPMOST), 0);
    EXPECT_TRUE(inFront(plain, topmost));
}

TEST_F(WindowPositionTest, OwnedWindowsStayInFrontOfTheirOwner) {
    const HWND owner = create(WS_POPUP | WS_VISIBLE);
    const HWND popup = create(WS_POPUP | WS_VISIBLE, owner);
    const HWND other = create(WS_POPUP | WS_VISIBLE);
    SetWindowPos(owner, HWND_TOP, 0, 0, 0, 0, inPlace);
    EXPECT_TRUE(inFront(popup, owner));
    EXPECT_TRUE(inFront(owner, other));
    SetWindowPos(other, HWND_TOP, 0, 0, 0, 0, inPlace);
    SetWindowPos(popup, HWND_TOP, 0, 0, 0, 0, inPlace);
    EXPECT_TRUE(inFront(popup, owner));
    EXPECT_TRUE(inFront(owner, other)) << "the owner comes along";
    SetWindowPos(popup, HWND_BOTTOM, 0, 0, 0, 0, inPlace | SWP_NOACTIVATE);
    EXPECT_TRUE(inFront(popup, owner));
}

TEST_F(WindowPositionTest, RandomOrderKeepsItsPromises) {
    std::mt19937 random(7);
    std::vector<HWND> windows;
    for (int index = 0; index < 12; ++index) {
        const HWND owner = index > 2 && index % 3 == 0 ? windows[random() % windows.size()] : nullptr;
        windows.push_back(create(WS_POPUP | WS_VISIBLE, owner, index % 4 == 1 ? WS_EX_TOPMOST : 0));
    }
    for (int step = 0; step < 400; ++step) {
        const HWND window = windows[random() % windows.size()];
        const HWND places[] = {HWND_TOP, HWND_BOTTOM, HWND_TOPMOST, HWND_NOTOPMOST, windows[random() % windows.size()]};
        SetWindowPos(window, places[random() % 5], 0, 0, 0, 0, inPlace | (random() % 2 != 0 ? SWP_NOACTIVATE : 0));
        ASSERT_EQ(vndk::win32::verifyWindows(), "") << "step " << step;
        for (const HWND each : windows) {
            const HWND owner = GetWindow(each, GW_OWNER);
            const bool higherBand = (GetWindowLong(owner, GWL_EXSTYLE) & static_cast<LONG>(WS_EX_TOPMOST)) != 0 &&
                                    (GetWindowLong(each, GWL_EXSTYLE) & static_cast<LONG>(WS_EX_TOPMOST)) == 0;
            ASSERT_TRUE(owner == nullptr || (!higherBand && inFront(each, owner))) << "step " << step;
        }
    }
}

TEST_F(WindowPositionTest, SeveralWindowsArePlacedInOneGo) {
    const HWND top = createShown();
    const HWND a = create(WS_CHILD | WS_VISIBLE, top);
    const HWND b = create(WS_CHILD | WS_VISIBLE, top);
    HDWP positions = BeginDeferWindowPos(2);
    positions = DeferWindowPos(positions, a, nullptr, 1, 2, 30, 40, background);
    positions = DeferWindowPos(positions, b, nullptr, 5, 6, 70, 80, background);
    EXPECT_TRUE(EndDeferWindowPos(positions));
    EXPECT_FALSE(EndDeferWindowPos(positions)) << "the list is used up";
    EXPECT_EQ(windowRect(b).right - windowRect(b).left, 70);
    DestroyWindow(b);
    positions = BeginDeferWindowPos(1);
    EXPECT_EQ(DeferWindowPos(positions, b, nullptr, 0, 0, 1, 1, 0), nullptr);
    EXPECT_EQ(BeginDeferWindowPos(-1), nullptr);
}

TEST_F(WindowPositionTest, NewParentKeepsThePlaceWithin) {
    const HWND first = createShown();
    const HWND second = createShown();
    SetWindowPos(second, nullptr, 300, 300, 0, 0, SWP_NOSIZE | background);
    const HWND child = createShown(WS_CHILD | WS_VISIBLE, first);
    EXPECT_EQ(SetParent(child, second), first);
    EXPECT_EQ(GetParent(child), second);
    EXPECT_EQ(windowRect(child).left, onScreen(second, 20, 30).x);
    EXPECT_TRUE(IsWindowVisible(child));
    EXPECT_EQ(SetParent(second, child), nullptr) << "a window can't stand in its own child";
    EXPECT_EQ(SetParent(child, nullptr), second);
    EXPECT_EQ(GetAncestor(child, GA_PARENT), GetDesktopWindow());
}

TEST_F(WindowPositionTest, OwnerThatMovedIntoAnotherWindowHasNoPlaceInTheOrder) {
    const HWND owner = createShown();
    const HWND popup = createShown(WS_POPUP | WS_VISIBLE, owner);
    const HWND last = createShown(WS_POPUP | WS_VISIBLE, popup);
    ASSERT_NE(SetParent(owner, last), nullptr);
    SetWindowPos(popup, HWND_TOPMOST, 0, 0, 0, 0, inPlace);
    SetWindowPos(popup, HWND_BOTTOM, 0, 0, 0, 0, inPlace);
    SetWindowPos(popup, HWND_TOP, 0, 0, 0, 0, inPlace);
    EXPECT_EQ(GetAncestor(owner, GA_PARENT), last);
    EXPECT_EQ(GetAncestor(last, GA_ROOTOWNER), popup);
    EXPECT_TRUE(inFront(last, popup));
    const std::vector<HWND> windows = order();
    EXPECT_EQ(std::count(windows.begin(), windows.end(), owner), 0);
}

TEST_F(WindowPositionTest, StyleChangesAreAnnounced) {
    const HWND window = createShown();
    const LONG style = GetWindowLong(window, GWL_STYLE);
    EXPECT_EQ(SetWindowLong(window, GWL_STYLE, style & ~static_cast<LONG>(WS_THICKFRAME)), style);
    EXPECT_TRUE(recorder.saw({{WM_STYLECHANGING, sent | wparam, static_cast<WPARAM>(LONG_PTR{GWL_STYLE})},
                              {WM_STYLECHANGED, sent | wparam, static_cast<WPARAM>(LONG_PTR{GWL_STYLE})}}));
}

TEST_F(WindowPositionTest, BadHandlesAndNumbersAreRefused) {
    const HWND dead = create(WS_POPUP);
    DestroyWindow(dead);
    const HWND huge = create(WS_POPUP);
    for (const HWND window : {dead, HWND{}, reinterpret_cast<HWND>(UINT_PTR{12345})}) {
        SetLastError(0);
        EXPECT_FALSE(SetWindowPos(window, nullptr, 0, 0, 1, 1, 0));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
        EXPECT_FALSE(ShowWindow(window, SW_SHOW));
        EXPECT_FALSE(MoveWindow(window, 0, 0, 1, 1, TRUE));
        RECT rect{};
        EXPECT_FALSE(GetWindowRect(window, &rect));
        EXPECT_EQ(GetWindowLong(window, GWL_STYLE), 0);
        WINDOWPLACEMENT placement{};
        EXPECT_FALSE(GetWindowPlacement(window, &placement));
    }
    EXPECT_FALSE(SetWindowPos(GetDesktopWindow(), nullptr, 5, 5, 5, 5, 0));
    EXPECT_FALSE(DestroyWindow(GetDesktopWindow()));
    constexpr int most = 2147483647;
    EXPECT_TRUE(SetWindowPos(huge, nullptr, -most - 1, most, most, -5, background));
    EXPECT_EQ(windowRect(huge).left, -32768);
    EXPECT_EQ(windowRect(huge).top, 32767);
    EXPECT_EQ(windowRect(huge).bottom, 32767);
    EXPECT_FALSE(GetWindowRect(huge, nullptr));
    EXPECT_FALSE(ClientToScreen(huge, nullptr));
}

} // namespace
