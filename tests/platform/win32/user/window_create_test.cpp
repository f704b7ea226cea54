// How windows begin and end.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/window_position.h"
#include "win32/error.h"

#include <string>

namespace {

using namespace vndk::test;

class WindowCreateTest : public DesktopFixture {
protected:
    void SetUp() override { recorder.registerClass(); }
    void TearDown() override { EXPECT_EQ(vndk::win32::verifyWindows(), ""); }

    HWND create(DWORD style, HWND parent = nullptr, DWORD exStyle = 0) {
        return CreateWindowEx(exStyle, MessageRecorder::className, "text", style, 20, 30, 200, 100, parent, nullptr,
                              nullptr, nullptr);
    }
    /// A child in a parent that isn't recorded yet.
    HWND createParent(DWORD style = WS_OVERLAPPEDWINDOW | WS_VISIBLE) {
        const HWND made = create(style);
        recorder.setParent(made);
        settle();
        recorder.clear();
        return made;
    }

    MessageRecorder recorder;
};

constexpr UINT shownInPlace = SWP_SHOWWINDOW | SWP_NOSIZE | SWP_NOMOVE;
constexpr UINT sameClient = SWP_NOCLIENTSIZE | SWP_NOCLIENTMOVE;

TEST_F(WindowCreateTest, HiddenOverlappedWindowIsAskedForLimitsAndHearsNoSize) {
    recorder.watchHooks();
    ASSERT_NE(create(WS_OVERLAPPEDWINDOW), nullptr);
    EXPECT_TRUE(recorder.saw({{HCBT_CREATEWND, hook},
                              {WM_GETMINMAXINFO, sent},
                              {WM_NCCREATE, sent},
                              {WM_NCCALCSIZE, sent | wparam, 0},
                              {WM_CREATE, sent}}));
}

TEST_F(WindowCreateTest, HiddenChildHearsItsSizeBeforeItsParentHearsOfIt) {
    const HWND parentWindow = createParent();
    const HWND child = create(WS_CHILD, parentWindow);
    EXPECT_TRUE(
        recorder.saw({{WM_NCCREATE, sent},
                      {WM_NCCALCSIZE, sent | wparam, 0},
                      {WM_CREATE, sent},
                      {WM_SIZE, sent | wparam | lparam, SIZE_RESTORED, MAKELPARAM(200, 100)},
                      {WM_MOVE, sent | lparam, 0, MAKELPARAM(20, 30)},
                      {WM_PARENTNOTIFY, sent | parent | wparam | lparam, WM_CREATE, reinterpret_cast<LPARAM>(child)}}));
}

TEST_F(WindowCreateTest, VisibleChildIsShownAfterItsParentHeardOfIt) {
    const HWND parentWindow = createParent();
    create(WS_CHILD | WS_VISIBLE, parentWindow);
    constexpr UINT background = SWP_NOACTIVATE | SWP_NOZORDER;
    EXPECT_TRUE(recorder.saw({{WM_NCCREATE, sent},
                              {WM_NCCALCSIZE, sent | wparam, 0},
                              {WM_CREATE, sent},
                              {WM_SIZE, sent | wparam, SIZE_RESTORED},
                              {WM_MOVE, sent},
                              {WM_PARENTNOTIFY, sent | parent | wparam, WM_CREATE},
                              {WM_SHOWWINDOW, sent | wparam, 1},
                              {WM_WINDOWPOSCHANGING, sent | wparam, shownInPlace | background},
                              {WM_WINDOWPOSCHANGED, sent | wparam, shownInPlace | background | sameClient}}));
}

TEST_F(WindowCreateTest, ParentNotificationsCanBeDeclinedAndClimb) {
    const HWND top = createParent();
    const HWND middle = create(WS_CHILD, top);
    recorder.clear();
    create(WS_CHILD, middle);
    EXPECT_EQ(recorder.count(WM_PARENTNOTIFY, middle), 1);
    EXPECT_EQ(recorder.count(WM_PARENTNOTIFY, top), 1);
    recorder.clear();
    create(WS_CHILD, middle, WS_EX_NOPARENTNOTIFY);
    EXPECT_EQ(recorder.count(WM_PARENTNOTIFY), 0);
}

TEST_F(WindowCreateTest, PopupIsNotAskedForLimits) {
    create(WS_POPUP);
    const std::vector<ExpectedMessage> born{{WM_NCCREATE, sent},
                                            {WM_NCCALCSIZE, sent | wparam, 0},
                                            {WM_CREATE, sent},
                                            {WM_SIZE, sent | wparam, SIZE_RESTORED},
                                            {WM_MOVE, sent}};
    EXPECT_TRUE(recorder.saw(born));
    const HWND parentWindow = createParent();
    create(WS_CHILD | WS_POPUP, parentWindow);
    EXPECT_TRUE(recorder.saw(born)) << "a popup with WS_CHILD doesn't notify its parent";
}

TEST_F(WindowCreateTest, VisibleOverlappedWindowBecomesActiveAndThenHearsItsSize) {
    const HWND window = create(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    EXPECT_TRUE(recorder.saw({{WM_GETMINMAXINFO, sent},
                              {WM_NCCREATE, sent},
                              {WM_NCCALCSIZE, sent | wparam, 0},
                              {WM_CREATE, sent},
                              {WM_SHOWWINDOW, sent | wparam, 1},
                              {WM_WINDOWPOSCHANGING, sent | wparam, shownInPlace},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_WINDOWPOSCHANGING, sent | wparam | optional, SWP_NOSIZE | SWP_NOMOVE},
                              {WM_ACTIVATEAPP, sent | wparam, 1},
                              {WM_NCACTIVATE, sent | wparam, 1},
                              {WM_ACTIVATE, sent | wparam, WA_ACTIVE},
                              {WM_SETFOCUS, sent | wparam | defwinproc, 0},
                              {WM_NCPAINT, sent | optional},
                              {WM_ERASEBKGND, sent | optional},
                              {WM_WINDOWPOSCHANGED, sent},
                              {WM_SIZE, sent | wparam, SIZE_RESTORED},
                              {WM_MOVE, sent}}));
    EXPECT_EQ(GetActiveWindow(), window);
    EXPECT_EQ(GetFocus(), window);
}

TEST_F(WindowCreateTest, CreationCanBeRefused) {
    struct {
        const char* name;
        UINT message;
        LRESULT answer;
        int destroyed; // WM_DESTROY only after WM_CREATE
    } const rows[] = {{"WM_NCCREATE answers 0", WM_NCCREATE, 0, 0}, {"WM_CREATE answers -1", WM_CREATE, -1, 1}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const HWND parentWindow = createParent();
        recorder.onMessage(row.message, [&](HWND, UINT, WPARAM, LPARAM) { return row.answer; });
        EXPECT_EQ(create(WS_CHILD, parentWindow), nullptr);
        EXPECT_EQ(recorder.count(WM_DESTROY), row.destroyed);
        EXPECT_EQ(recorder.count(WM_NCDESTROY), 1);
        EXPECT_EQ(GetWindow(parentWindow, GW_CHILD), nullptr);
        recorder.onMessage(row.message, nullptr);
    }
}

TEST_F(WindowCreateTest, BadArgumentsGiveNullAndAnError) {
    const HWND dead = create(WS_POPUP);
    DestroyWindow(dead);
    struct {
        const char* name;
        LPCSTR className;
        DWORD style;
        HWND parent;
        DWORD error;
    } const rows[] = {
        {"unknown class", "NoSuchClass", WS_POPUP, nullptr, ERROR_CANNOT_FIND_WND_CLASS},
        {"no class", nullptr, WS_POPUP, nullptr, ERROR_CANNOT_FIND_WND_CLASS},
        {"empty class", "", WS_POPUP, nullptr, ERROR_CANNOT_FIND_WND_CLASS},
        {"child without parent", MessageRecorder::className, WS_CHILD, nullptr, ERROR_TLW_WITH_WSCHILD},
        {"child of a dead window", MessageRecorder::className, WS_CHILD, dead, ERROR_INVALID_WINDOW_HANDLE},
        {"popup of a dead window", MessageRecorder::className, WS_POPUP, dead, ERROR_INVALID_WINDOW_HANDLE},
    };
    for (const auto& row : rows) {
        SetLastError(0);
        EXPECT_EQ(CreateWindow(row.className, "x", row.style, 0, 0, 10, 10, row.parent, nullptr, nullptr, nullptr),
                  nullptr)
            << row.name;
        EXPECT_EQ(GetLastError(), row.error) << row.name;
    }
}

TEST_F(WindowCreateTest, SizesAreBroughtIntoRange) {
    struct {
        const char* name;
        int width;
        int height;
        SIZE expected;
    } const rows[] = {{"negative", -5, -1, {0, 0}},
                      {"too large", 100000, 2147483647, {32767, 32767}},
                      {"smallest number", -2147483647, 7, {0, 7}}};
    for (const auto& row : rows) {
        const HWND window = CreateWindow(MessageRecorder::className, "", WS_POPUP, 0, 0, row.width, row.height, nullptr,
                                         nullptr, nullptr, nullptr);
        EXPECT_EQ(windowRect(window).right, row.expected.cx) << row.name;
        EXPECT_EQ(windowRect(window).bottom, row.expected.cy) << row.name;
    }
}

TEST_F(WindowCreateTest, PopupOfAChildIsOwnedByItsTopLevelWindow) {
    const HWND top = createParent();
    const HWND child = create(WS_CHILD, top);
    const HWND popup = create(WS_POPUP, child);
    EXPECT_EQ(GetWindow(popup, GW_OWNER), top);
    EXPECT_EQ(GetParent(popup), top);
    EXPECT_EQ(GetAncestor(popup, GA_PARENT), GetDesktopWindow());
    EXPECT_EQ(GetAncestor(popup, GA_ROOTOWNER), top);
    EXPECT_FALSE(IsChild(top, popup));
}

TEST_F(WindowCreateTest, ChildrenFollowEachOtherAsTheyWereMade) {
    const HWND parentWindow = createParent();
    const HWND first = create(WS_CHILD, parentWindow);
    const HWND second = create(WS_CHILD, parentWindow);
    EXPECT_EQ(GetWindow(parentWindow, GW_CHILD), first);
    EXPECT_EQ(GetWindow(first, GW_HWNDNEXT), second);
    EXPECT_EQ(GetWindow(second, GW_HWNDPREV), first);
}

TEST_F(WindowCreateTest, ActiveWindowIsHiddenAndDeactivatedBeforeItIsDestroyed) {
    const HWND window = create(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    settle();
    recorder.clear();
    EXPECT_TRUE(DestroyWindow(window));
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent},
                              {WM_WINDOWPOSCHANGED, sent},
                              {WM_NCACTIVATE, sent | wparam, 0},
                              {WM_ACTIVATE, sent | wparam, WA_INACTIVE},
                              {WM_ACTIVATEAPP, sent | wparam, 0},
                              {WM_KILLFOCUS, sent | wparam, 0},
                              {WM_DESTROY, sent},
                              {WM_NCDESTROY, sent}}));
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(GetActiveWindow(), nullptr);
    EXPECT_EQ(GetFocus(), nullptr);
}

TEST_F(WindowCreateTest, ChildrenHearOfTheEndAfterTheirParentAndAreGoneBeforeIt) {
    const HWND parentWindow = createParent(WS_OVERLAPPEDWINDOW);
    create(WS_CHILD, parentWindow);
    recorder.clear();
    DestroyWindow(parentWindow);
    EXPECT_TRUE(recorder.saw(
        {{WM_DESTROY, sent | parent}, {WM_DESTROY, sent}, {WM_NCDESTROY, sent}, {WM_NCDESTROY, sent | parent}}));
}

TEST_F(WindowCreateTest, DestroyedChildTellsItsParentFirst) {
    const HWND parentWindow = createParent();
    const HWND child = create(WS_CHILD | WS_VISIBLE, parentWindow);
    settle();
    recorder.clear();
    DestroyWindow(child);
    EXPECT_TRUE(recorder.saw({{WM_PARENTNOTIFY, sent | parent | wparam, WM_DESTROY},
                              {WM_SHOWWINDOW, sent | wparam, 0},
                              {WM_WINDOWPOSCHANGING, sent},
                              {WM_ERASEBKGND, sent | parent | optional},
                              {WM_WINDOWPOSCHANGED, sent},
                              {WM_DESTROY, sent},
                              {WM_NCDESTROY, sent}}));
}

TEST_F(WindowCreateTest, OwnedWindowsGoWithTheirOwner) {
    const HWND owner = createParent();
    const HWND popup = create(WS_POPUP, owner);
    const HWND popupOfPopup = create(WS_POPUP, popup);
    DestroyWindow(owner);
    EXPECT_FALSE(IsWindow(popup));
    EXPECT_FALSE(IsWindow(popupOfPopup));
}

// A handler of any message can end the window it is for, its parent, or everything.
TEST_F(WindowCreateTest, WindowCanBeDestroyedFromAnyHandler) {
    const UINT messages[] = {WM_NCCREATE,
                             WM_NCCALCSIZE,
                             WM_CREATE,
                             WM_SIZE,
                             WM_MOVE,
                             WM_SHOWWINDOW,
                             WM_PARENTNOTIFY,
                             WM_WINDOWPOSCHANGING,
                             WM_WINDOWPOSCHANGED,
                             WM_NCACTIVATE,
                             WM_ACTIVATE,
                             WM_SETFOCUS,
                             WM_KILLFOCUS,
                             WM_ACTIVATEAPP,
                             WM_GETMINMAXINFO,
                             WM_DESTROY,
                             WM_NCDESTROY,
                             WM_NCPAINT,
                             WM_ERASEBKGND,
                             WM_PAINT};
    for (const UINT message : messages)
        for (const bool topToo : {false, true}) {
            SCOPED_TRACE(nameOfMessage(message) + (topToo ? ", with the top-level window" : ""));
            const HWND top = create(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
            settle();
            int left = 3;
            recorder.onMessage(message, [&](HWND window, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
                if (left-- > 0)
                    DestroyWindow(topToo ? GetAncestor(window, GA_ROOT) : window);
                return std::nullopt;
            });
            const HWND child = create(WS_CHILD | WS_VISIBLE, top);
            const HWND popup = create(WS_POPUP | WS_VISIBLE | WS_CAPTION, IsWindow(top) != FALSE ? top : nullptr);
            SetFocus(child);
            SetWindowPos(popup, HWND_TOP, 5, 5, 50, 60, SWP_FRAMECHANGED);
            ShowWindow(popup, SW_SHOWMAXIMIZED);
            ShowWindow(popup, SW_HIDE);
            settle();
            for (const HWND window : {child, popup, top})
                DestroyWindow(window);
            recorder.onMessage(message, nullptr);
            EXPECT_EQ(vndk::win32::verifyWindows(), "");
        }
}

TEST_F(WindowCreateTest, ChildThatIsTakenAwayMeanwhileOutlivesItsParent) {
    const HWND top = create(WS_OVERLAPPEDWINDOW);
    const HWND other = create(WS_OVERLAPPEDWINDOW);
    const HWND first = create(WS_CHILD, top);
    const HWND second = create(WS_CHILD, top);
    int ends = 0;
    recorder.onMessage(WM_DESTROY, [&](HWND window, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (window == first)
            EXPECT_EQ(SetParent(second, other), top);
        ends += window == second ? 1 : 0;
        return std::nullopt;
    });
    EXPECT_TRUE(DestroyWindow(top));
    EXPECT_EQ(GetParent(second), other);
    EXPECT_EQ(ends, 0);
    EXPECT_TRUE(DestroyWindow(second));
    EXPECT_FALSE(IsWindow(second));
    EXPECT_EQ(ends, 1);
}

TEST_F(WindowCreateTest, NothingIsMadeInAWindowThatIsRefusedAndGoesAway) {
    HWND refused = nullptr;
    int tries = 0;
    recorder.onMessage(WM_NCCREATE, [&](HWND window, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (refused != nullptr)
            return std::nullopt;
        refused = window;
        return FALSE;
    });
    recorder.onMessage(WM_NCDESTROY, [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (tries++ < 3)
            EXPECT_EQ(create(WS_CHILD, refused), nullptr);
        return std::nullopt;
    });
    EXPECT_EQ(create(WS_POPUP), nullptr);
    EXPECT_EQ(tries, 1);
    EXPECT_FALSE(IsWindow(refused));
}

TEST_F(WindowCreateTest, HookCanRefuseACreationAndADestruction) {
    static int refused;
    refused = HCBT_CREATEWND;
    const HHOOK refusing = SetWindowsHookEx(
        WH_CBT, [](int code, WPARAM, LPARAM) -> LRESULT { return code == refused ? 1 : 0; }, nullptr, 0);
    EXPECT_EQ(create(WS_POPUP), nullptr);
    EXPECT_EQ(recorder.count(WM_NCCREATE) + recorder.count(WM_NCDESTROY), 0);
    refused = HCBT_DESTROYWND;
    const HWND window = create(WS_POPUP);
    EXPECT_FALSE(DestroyWindow(window));
    EXPECT_TRUE(IsWindow(window));
    EXPECT_TRUE(UnhookWindowsHookEx(refusing));
    EXPECT_FALSE(UnhookWindowsHookEx(refusing));
    EXPECT_TRUE(DestroyWindow(window));
}

TEST_F(WindowCreateTest, ClassesAreKnownByNameWithoutRegardToCase) {
    WNDCLASS given{};
    given.lpfnWndProc = &DefWindowProcA;
    given.lpszClassName = "Example";
    given.cbWndExtra = 8;
    const ATOM atom = RegisterClass(&given);
    ASSERT_NE(atom, 0);
    given.lpszClassName = "EXAMPLE";
    EXPECT_EQ(RegisterClass(&given), 0);
    EXPECT_EQ(GetLastError(), ERROR_CLASS_ALREADY_EXISTS);
    WNDCLASS found{};
    EXPECT_TRUE(GetClassInfo(nullptr, "example", &found));
    EXPECT_EQ(found.cbWndExtra, 8);
    const HWND window = CreateWindow(reinterpret_cast<LPCSTR>(UINT_PTR{atom}), "", WS_POPUP, 0, 0, 1, 1, nullptr,
                                     nullptr, nullptr, nullptr);
    char name[5];
    EXPECT_EQ(GetClassName(window, name, sizeof name), 4);
    EXPECT_STREQ(name, "Exam");
    EXPECT_FALSE(UnregisterClass("example", nullptr));
    EXPECT_EQ(GetLastError(), ERROR_CLASS_HAS_WINDOWS);
    DestroyWindow(window);
    EXPECT_TRUE(UnregisterClass("example", nullptr));
    EXPECT_FALSE(UnregisterClass("example", nullptr));
}

TEST_F(WindowCreateTest, DesktopsDontSeeEachOther) {
    const HWND window = create(WS_POPUP);
    {
        vndk::screen::MemoryScreen otherScreen(100, 80);
        vndk::win32::Desktop other(otherScreen);
        EXPECT_EQ(vndk::win32::Desktop::current(), &other);
        EXPECT_EQ(windowRect(GetDesktopWindow()).right, 100);
        EXPECT_EQ(create(WS_POPUP), nullptr) << "the class belongs to the first desktop";
    }
    EXPECT_EQ(vndk::win32::Desktop::current(), desktop.get());
    EXPECT_TRUE(IsWindow(window));
}

TEST(WindowWithoutDesktop, CallsFail) {
    SetLastError(0);
    EXPECT_EQ(GetDesktopWindow(), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_EQ(CreateWindow("Button", "", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr), nullptr);
    EXPECT_EQ(SendMessage(reinterpret_cast<HWND>(UINT_PTR{5}), WM_CLOSE, 0, 0), 0);
    EXPECT_EQ(GetFocus(), nullptr);
}

} // namespace
