// The pointer's way to the windows.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/input_queue.h"
#include "win32/icons.h"
#include "win32/metrics.h"

#include <string>
#include <vector>

namespace {

using namespace vndk::test;

class MouseTest : public DesktopFixture {
protected:
    void SetUp() override {
        recorder.registerClass();
        frame = CreateWindow(MessageRecorder::className, "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 40, 40, 300, 200,
                             nullptr, nullptr, nullptr, nullptr);
        child = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 20, 30, 100, 80, frame, nullptr,
                             nullptr, nullptr);
        recorder.setParent(frame);
        const POINT origin = onScreen(child, 0, 0);
        inChild = {origin.x + 5, origin.y + 6};
        user.moveTo(700, 500);
        settle();
        recorder.clear();
    }
    static LPARAM at(const POINT& point) { return MAKELPARAM(point.x, point.y); }
    void press(const POINT& point) {
        user.moveTo(point.x, point.y);
        settle();
        recorder.clear();
        user.press();
        settle();
    }

    MessageRecorder recorder;
    HWND frame = nullptr;
    HWND child = nullptr;
    POINT inChild{};
};

TEST_F(MouseTest, MovesAskWhereAndShowTheCursorFirst) {
    recorder.notice({WM_NCHITTEST});
    user.moveTo(inChild.x, inChild.y);
    settle();
    const auto childParam = reinterpret_cast<WPARAM>(child);
    const LPARAM cause = MAKELPARAM(HTCLIENT, WM_MOUSEMOVE);
    EXPECT_TRUE(recorder.saw({{WM_NCHITTEST, sent | lparam, 0, at(inChild)},
                              {WM_SETCURSOR, sent | wparam | lparam, childParam, cause},
                              {WM_SETCURSOR, sent | parent | defwinproc | wparam | lparam, childParam, cause},
                              {WM_MOUSEMOVE, posted | wparam | lparam, 0, MAKELPARAM(5, 6)}}));
    user.moveTo(150, 50);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_NCHITTEST, sent | parent},
                              {WM_SETCURSOR, sent | parent | lparam, 0, MAKELPARAM(HTCAPTION, WM_MOUSEMOVE)},
                              {WM_NCMOUSEMOVE, posted | parent | wparam | lparam, HTCAPTION, MAKELPARAM(150, 50)}}));
}

TEST_F(MouseTest, APressTellsParentsAsksForActivationAndShowsTheCursor) {
    const HWND sibling = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 150, 30, 50, 50, frame,
                                      nullptr, nullptr, nullptr);
    SetFocus(sibling);
    user.moveTo(inChild.x, inChild.y);
    settle();
    recorder.notice({WM_NCHITTEST});
    recorder.clear();
    user.press();
    settle();
    const LPARAM cause = MAKELPARAM(HTCLIENT, WM_LBUTTONDOWN);
    EXPECT_TRUE(recorder.saw({{WM_NCHITTEST, sent},
                              {WM_PARENTNOTIFY, sent | parent | wparam | lparam, WM_LBUTTONDOWN, MAKELPARAM(25, 36)},
                              {WM_MOUSEACTIVATE, sent | wparam | lparam, reinterpret_cast<WPARAM>(frame), cause},
                              {WM_MOUSEACTIVATE, sent | parent | defwinproc},
                              {WM_SETCURSOR, sent | lparam, 0, cause},
                              {WM_SETCURSOR, sent | parent | defwinproc},
                              {WM_LBUTTONDOWN, posted | wparam | lparam, MK_LBUTTON, MAKELPARAM(5, 6)}}));
}

TEST_F(MouseTest, ButtonsAndModifiersTravelWithTheMessages) {
    const struct {
        User::Button button;
        UINT down, up;
        WPARAM held;
    } cases[] = {{User::Button::left, WM_LBUTTONDOWN, WM_LBUTTONUP, MK_LBUTTON},
                 {User::Button::right, WM_RBUTTONDOWN, WM_RBUTTONUP, MK_RBUTTON},
                 {User::Button::middle, WM_MBUTTONDOWN, WM_MBUTTONUP, MK_MBUTTON}};
    user.moveTo(inChild.x, inChild.y);
    user.keyDown(VK_SHIFT);
    user.keyDown(VK_CONTROL);
    settle();
    constexpr WPARAM modifiers = MK_SHIFT | MK_CONTROL;
    for (const auto& row : cases) {
        std::vector<std::pair<UINT, WPARAM>> seen;
        recorder.clear();
        user.press(row.button);
        user.release(row.button);
        settle();
        for (const RecordedMessage& message : recorder.messages())
            if (message.window == child && message.message >= WM_MOUSEFIRST && message.message <= WM_MOUSELAST)
                seen.emplace_back(message.message, message.wParam);
        EXPECT_EQ(seen, (std::vector<std::pair<UINT, WPARAM>>{{row.down, row.held | modifiers}, {row.up, modifiers}}));
    }
}

TEST_F(MouseTest, OnlyTheLastOfSeveralMovesComes) {
    for (int i = 0; i < 50; ++i)
        user.moveTo(inChild.x + i, inChild.y);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSEMOVE), 1);
    recorder.clear();
    user.moveTo(inChild.x, inChild.y);
    user.press();
    user.moveTo(inChild.x + 1, inChild.y);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSEMOVE), 2) << "none is lost around a press";
}

TEST_F(MouseTest, DoubleClicksDependOnClassTimeAndPlace) {
    recorder.registerClass("Doubling", CS_DBLCLKS);
    const HWND doubling =
        CreateWindow("Doubling", "", WS_POPUP | WS_VISIBLE, 500, 100, 100, 100, nullptr, nullptr, nullptr, nullptr);
    settle();
    const struct {
        const char* name;
        HWND window;
        std::uint32_t wait;
        int dx;
        bool doubled;
    } cases[] = {{"at once", doubling, 0, 0, true},
                 {"near and in time", doubling, 500, 2, true},
                 {"too late", doubling, 501, 0, false},
                 {"too far", doubling, 0, 3, false},
                 {"a class that doesn't want them", child, 0, 0, false}};
    for (const auto& row : cases) {
        const POINT point = onScreen(row.window, 10, 10);
        screen.advance(1000);
        user.click(point.x, point.y);
        settle();
        recorder.clear();
        screen.advance(row.wait);
        user.click(point.x + row.dx, point.y);
        settle();
        EXPECT_EQ(recorder.count(WM_LBUTTONDBLCLK), row.doubled ? 1 : 0) << row.name;
        EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, row.window), row.doubled ? 0 : 1) << row.name;
        EXPECT_EQ(recorder.count(WM_LBUTTONUP, row.window), 1) << row.name;
    }
    const POINT point = onScreen(doubling, 50, 50);
    screen.advance(1000);
    for (int i = 0; i < 4; ++i)
        user.click(point.x, point.y);
    recorder.clear();
    settle();
    EXPECT_EQ(recorder.count(WM_LBUTTONDBLCLK), 2) << "a third click begins anew";
    recorder.clear();
    screen.advance(1000);
    user.click(point.x, point.y);
    user.click(point.x, point.y, User::Button::right);
    user.click(point.x, point.y);
    settle();
    EXPECT_EQ(recorder.count(WM_LBUTTONDBLCLK), 0) << "another button came between";
}

TEST_F(MouseTest, WheelsTurnWhatHasTheFocus) {
    SetFocus(frame);
    user.moveTo(700, 500);
    settle();
    recorder.clear();
    user.keyDown(VK_SHIFT);
    user.turnWheel(-240);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSEWHEEL, frame), 1);
    const RecordedMessage& message = recorder.messages().back();
    EXPECT_EQ(static_cast<short>(HIWORD(message.wParam)), -240);
    EXPECT_EQ(LOWORD(message.wParam), MK_SHIFT);
    EXPECT_EQ(message.lParam, MAKELPARAM(700, 500)) << "on the screen";
}

TEST_F(MouseTest, DisabledWindowsGetNothing) {
    EnableWindow(child, FALSE);
    recorder.clear();
    user.click(inChild.x, inChild.y);
    settle();
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, child), 0);
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, frame), 1) << "its parent does";
    const HWND popup = CreateWindow(MessageRecorder::className, "", WS_POPUP | WS_VISIBLE, 500, 300, 50, 50, frame,
                                    nullptr, nullptr, nullptr);
    EnableWindow(frame, FALSE);
    settle();
    SetActiveWindow(nullptr);
    recorder.clear();
    user.click(inChild.x, inChild.y);
    settle();
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN), 0);
    EXPECT_EQ(recorder.count(WM_LBUTTONUP), 0);
    EXPECT_GE(screen.beeps(), 1) << "a window waits in front of it";
    EXPECT_EQ(GetActiveWindow(), popup);
}

TEST_F(MouseTest, RefusedActivationsEatTheClick) {
    const struct {
        LRESULT answer;
        bool active, delivered;
    } cases[] = {{MA_ACTIVATE, true, true},
                 {MA_ACTIVATEANDEAT, true, false},
                 {MA_NOACTIVATE, false, true},
                 {MA_NOACTIVATEANDEAT, false, false}};
    const HWND other = CreateWindow(MessageRecorder::className, "", WS_POPUP | WS_VISIBLE, 500, 300, 50, 50, nullptr,
                                    nullptr, nullptr, nullptr);
    for (const auto& row : cases) {
        SetActiveWindow(other);
        recorder.onMessage(WM_MOUSEACTIVATE,
                           [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return row.answer; });
        press(inChild);
        EXPECT_EQ(GetActiveWindow() == frame, row.active) << row.answer;
        EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, child), row.delivered ? 1 : 0) << row.answer;
        user.release();
        settle();
    }
}

TEST_F(MouseTest, TransparentHitsGoToWhatLiesBehind) {
    const HWND glass = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 20, 30, 100, 80, frame,
                                    nullptr, nullptr, nullptr);
    SetWindowPos(glass, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    recorder.onMessage(WM_NCHITTEST, [&](HWND window, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return window == glass ? std::optional<LRESULT>(HTTRANSPARENT) : std::nullopt;
    });
    settle();
    press(inChild);
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, glass), 0);
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, child), 1);
}

TEST_F(MouseTest, WindowsMayDieOnTheWayToTheirClick) {
    for (const UINT message : {WM_NCHITTEST, WM_PARENTNOTIFY, WM_MOUSEACTIVATE, WM_SETCURSOR}) {
        const HWND victim = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 150, 30, 50, 50, frame,
                                         nullptr, nullptr, nullptr);
        settle();
        const POINT point = onScreen(victim, 5, 5);
        recorder.onMessage(message, [&](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
            if (wParam != WM_DESTROY) // its own end is told to the parent, too
                DestroyWindow(victim);
            return std::nullopt;
        });
        recorder.clear();
        user.click(point.x, point.y);
        settle();
        EXPECT_FALSE(IsWindow(victim)) << nameOfMessage(message);
        EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, victim), 0) << nameOfMessage(message);
        recorder.onMessage(message, [](HWND, UINT, WPARAM, LPARAM) { return std::optional<LRESULT>(); });
    }
}

TEST_F(MouseTest, PeekingWithoutTakingChangesNothing) {
    user.moveTo(inChild.x, inChild.y);
    settle();
    recorder.clear();
    user.press();
    MSG message{};
    for (int i = 0; i < 2; ++i) {
        ASSERT_TRUE(PeekMessage(&message, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_NOREMOVE));
        EXPECT_EQ(message.message, WM_LBUTTONDOWN);
        EXPECT_EQ(message.hwnd, child);
    }
    EXPECT_EQ(recorder.count(WM_MOUSEACTIVATE), 0);
    EXPECT_FALSE(PeekMessage(&message, nullptr, WM_KEYFIRST, WM_KEYLAST, PM_REMOVE));
    EXPECT_FALSE(PeekMessage(&message, frame, WM_NCLBUTTONDOWN, WM_NCLBUTTONDOWN, PM_REMOVE));
    EXPECT_TRUE(PeekMessage(&message, frame, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE)) << "a child's counts";
}

TEST_F(MouseTest, LeavingAndHoveringAreToldOnce) {
    TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE | TME_HOVER, child, 100};
    user.moveTo(inChild.x, inChild.y);
    settle();
    ASSERT_TRUE(TrackMouseEvent(&track));
    TRACKMOUSEEVENT query{sizeof(TRACKMOUSEEVENT), TME_QUERY, nullptr, 0};
    EXPECT_TRUE(TrackMouseEvent(&query));
    EXPECT_EQ(query.dwFlags, TME_LEAVE | TME_HOVER);
    EXPECT_EQ(query.hwndTrack, child);
    wait(60);
    user.moveTo(inChild.x + 20, inChild.y);
    wait(90);
    EXPECT_EQ(recorder.count(WM_MOUSEHOVER), 0) << "it moved meanwhile";
    wait(20);
    EXPECT_EQ(recorder.count(WM_MOUSEHOVER), 1);
    wait(500);
    EXPECT_EQ(recorder.count(WM_MOUSEHOVER), 1);
    user.moveTo(inChild.x + 25, inChild.y);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSELEAVE), 0);
    user.moveTo(60, 50);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSELEAVE, child), 1);
    user.moveTo(inChild.x, inChild.y);
    user.moveTo(60, 50);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSELEAVE), 1) << "asked once, told once";

    track.dwFlags = TME_LEAVE;
    EXPECT_TRUE(TrackMouseEvent(&track));
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSELEAVE), 2) << "the pointer wasn't there at all";
    user.moveTo(inChild.x, inChild.y);
    settle();
    EXPECT_TRUE(TrackMouseEvent(&track));
    track.dwFlags = TME_LEAVE | TME_CANCEL;
    EXPECT_TRUE(TrackMouseEvent(&track));
    user.moveTo(60, 50);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSELEAVE), 2);
    EXPECT_FALSE(TrackMouseEvent(nullptr));
    DestroyWindow(child);
    track.dwFlags = TME_LEAVE;
    EXPECT_FALSE(TrackMouseEvent(&track));
}

TEST_F(MouseTest, LeavingTheScreenIsLeavingTheWindow) {
    user.moveTo(inChild.x, inChild.y);
    settle();
    TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE, child, 0};
    ASSERT_TRUE(TrackMouseEvent(&track));
    vndk::screen::Event left;
    left.kind = vndk::screen::Event::Kind::mouseLeave;
    screen.post(left);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSELEAVE, child), 1);
}

TEST_F(MouseTest, DragsBeginBeyondTheirRectangle) {
    const struct {
        const char* name;
        int dx;
        bool released;
        BOOL drag;
    } cases[] = {{"moved away", 5, false, TRUE}, {"released", 0, true, FALSE}, {"moved a little", 4, true, FALSE}};
    for (const auto& row : cases) {
        press(inChild);
        user.moveTo(inChild.x + row.dx, inChild.y);
        if (row.released)
            user.release();
        EXPECT_EQ(DragDetect(child, inChild), row.drag) << row.name;
        EXPECT_EQ(GetCapture(), nullptr) << row.name;
        if (!row.released)
            user.release();
        settle();
    }
    EXPECT_FALSE(DragDetect(nullptr, inChild));
}

TEST_F(MouseTest, ThePointerCanBeMovedAndConfined) {
    EXPECT_TRUE(SetCursorPos(100, 120));
    POINT point{};
    EXPECT_TRUE(GetCursorPos(&point));
    EXPECT_EQ(point.x, 100);
    EXPECT_EQ(point.y, 120);
    EXPECT_TRUE(SetCursorPos(-50, 100000));
    GetCursorPos(&point);
    EXPECT_EQ(point.x, 0);
    EXPECT_EQ(point.y, screenHeight - 1);
    const RECT limits{50, 60, 150, 160};
    EXPECT_TRUE(ClipCursor(&limits));
    user.moveTo(500, 10);
    settle();
    GetCursorPos(&point);
    EXPECT_EQ(point.x, 149);
    EXPECT_EQ(point.y, 60);
    EXPECT_TRUE(ClipCursor(nullptr));
    user.moveTo(500, 10);
    settle();
    GetCursorPos(&point);
    EXPECT_EQ(point.x, 500);
    EXPECT_FALSE(GetCursorPos(nullptr));
    const RECT reversed{150, 60, 50, 160};
    EXPECT_FALSE(ClipCursor(&reversed));
}

TEST_F(MouseTest, PlacesFarOutAreBroughtIntoRange) {
    constexpr int most = 2147483647;
    recorder.registerClass("Doubling", CS_DBLCLKS);
    const HWND doubling =
        CreateWindow("Doubling", "", WS_POPUP | WS_VISIBLE, 500, 100, 100, 100, nullptr, nullptr, nullptr, nullptr);
    SetCapture(doubling);
    user.click(-most - 1, most);
    user.click(most, -most - 1);
    settle();
    EXPECT_EQ(recorder.count(WM_LBUTTONDOWN, doubling), 2);
    EXPECT_EQ(recorder.count(WM_LBUTTONDBLCLK, doubling), 0);
    POINT point{};
    EXPECT_TRUE(GetCursorPos(&point));
    EXPECT_EQ(point.x, 32767);
    EXPECT_EQ(point.y, -32768);
    ReleaseCapture();
}

TEST_F(MouseTest, TheScreenShowsTheCursorThatWasSet) {
    const HCURSOR arrow = LoadCursor(nullptr, IDC_ARROW);
    const HCURSOR cross = LoadCursor(nullptr, IDC_CROSS);
    SetCursor(arrow);
    ASSERT_NE(screen.cursor(), nullptr);
    const std::vector<std::uint32_t> arrowPixels = screen.cursor()->pixels;
    EXPECT_EQ(SetCursor(cross), arrow);
    EXPECT_EQ(GetCursor(), cross);
    EXPECT_NE(screen.cursor()->pixels, arrowPixels);
    EXPECT_EQ(ShowCursor(FALSE), -1);
    EXPECT_EQ(screen.cursor(), nullptr);
    EXPECT_EQ(ShowCursor(TRUE), 0);
    EXPECT_NE(screen.cursor(), nullptr);
    SetCursor(nullptr);
    EXPECT_EQ(screen.cursor(), nullptr);
}

TEST_F(MouseTest, SwappedButtonsChangeSides) {
    EXPECT_FALSE(SwapMouseButton(TRUE));
    press(inChild);
    EXPECT_EQ(recorder.count(WM_RBUTTONDOWN, child), 1);
    EXPECT_EQ(vndk::win32::heldKeys(), MK_RBUTTON);
    user.release();
    settle();
    EXPECT_TRUE(SwapMouseButton(FALSE));
}

} // namespace
