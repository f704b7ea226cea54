// Timers, of programs and of the window manager itself.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/message_queue.h"

#include <vector>

namespace {

using namespace vndk::test;

int calls = 0;
UINT_PTR lastId = 0;

void CALLBACK countCall(HWND, UINT message, UINT_PTR id, DWORD) {
    EXPECT_EQ(message, WM_TIMER);
    ++calls;
    lastId = id;
}

void CALLBACK killItself(HWND window, UINT, UINT_PTR id, DWORD) {
    ++calls;
    EXPECT_TRUE(KillTimer(window, id));
}

void CALLBACK throwing(HWND, UINT, UINT_PTR, DWORD) { throw 1; }

class TimerTest : public DesktopFixture {
protected:
    void SetUp() override {
        calls = 0;
        recorder.registerClass();
        window = CreateWindow(MessageRecorder::className, "", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr,
                              nullptr, nullptr);
        settle();
        recorder.clear();
    }
    MessageRecorder recorder;
    HWND window = nullptr;
};

TEST_F(TimerTest, NumbersOfAWindowAreKeptAndResetTheSameTimer) {
    EXPECT_EQ(SetTimer(window, 0x19, 100, nullptr), 0x19u);
    screen.advance(90);
    EXPECT_EQ(SetTimer(window, 0x19, 100, nullptr), 0x19u) << "starts anew";
    screen.advance(90);
    EXPECT_EQ(settle(), 0);
    screen.advance(10);
    EXPECT_EQ(settle(), 1);
    EXPECT_TRUE(recorder.saw({{WM_TIMER, posted | wparam | lparam, 0x19, 0}}));
    EXPECT_TRUE(KillTimer(window, 0x19));
    EXPECT_FALSE(KillTimer(window, 0x19));
    wait(500);
    EXPECT_EQ(recorder.count(WM_TIMER), 0);
}

TEST_F(TimerTest, TimersWithoutAWindowGetNumbersOfTheirOwn) {
    const UINT_PTR first = SetTimer(nullptr, 5, 50, &countCall);
    const UINT_PTR second = SetTimer(nullptr, 5, 50, &countCall);
    EXPECT_NE(first, 0u);
    EXPECT_NE(first, second);
    EXPECT_EQ(SetTimer(nullptr, first, 80, &countCall), first) << "one that exists is reset";
    wait(60);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(lastId, second);
    EXPECT_TRUE(KillTimer(nullptr, first));
    EXPECT_TRUE(KillTimer(nullptr, second));
}

TEST_F(TimerTest, MissedPeriodsDontPileUpAndTheLongestWaitComesFirst) {
    SetTimer(window, 1, 50, nullptr);
    SetTimer(window, 2, 30, nullptr);
    screen.advance(1000);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_TIMER, posted | wparam, 2}, {WM_TIMER, posted | wparam, 1}}));
    EXPECT_EQ(settle(), 0);
}

TEST_F(TimerTest, PeriodsAreLimited) {
    SetTimer(window, 1, 0, nullptr);
    screen.advance(9);
    EXPECT_EQ(settle(), 0);
    screen.advance(1);
    EXPECT_EQ(settle(), 1);
    SetTimer(window, 1, 0xFFFFFFFF, nullptr);
    screen.advance(0x70000000);
    EXPECT_EQ(settle(), 0);
}

TEST_F(TimerTest, ProceduresAreCalledInsteadOfTheWindow) {
    SetTimer(window, 1, 10, &countCall);
    wait(30);
    EXPECT_EQ(calls, 3);
    EXPECT_EQ(recorder.count(WM_TIMER), 0);
    SetTimer(window, 1, 10, &killItself);
    calls = 0;
    wait(50);
    EXPECT_EQ(calls, 1);
    SetTimer(window, 1, 10, &throwing);
    wait(20);
}

TEST_F(TimerTest, KilledBetweenTheQueueAndDispatchingTheProcedureIsNotCalled) {
    SetTimer(window, 1, 10, &countCall);
    screen.advance(10);
    MSG message{};
    ASSERT_TRUE(PeekMessage(&message, nullptr, WM_TIMER, WM_TIMER, PM_REMOVE));
    KillTimer(window, 1);
    DispatchMessage(&message);
    EXPECT_EQ(calls, 0);
    message.lParam = 0x1234;
    DispatchMessage(&message); // A procedure that nobody gave is never jumped to.
}

TEST_F(TimerTest, TimersGoWithTheirWindow) {
    SetTimer(window, 1, 10, nullptr);
    DestroyWindow(window);
    screen.advance(50);
    EXPECT_EQ(settle(), 0);
    EXPECT_EQ(SetTimer(window, 1, 10, nullptr), 0u);
    EXPECT_FALSE(KillTimer(window, 1));
}

TEST_F(TimerTest, TheClockMayWrap) {
    screen.advance(0xFFFFFFFF - GetTickCount() - 20);
    SetTimer(window, 1, 100, nullptr);
    screen.advance(90);
    EXPECT_EQ(settle(), 0);
    screen.advance(10);
    EXPECT_EQ(settle(), 1);
}

TEST_F(TimerTest, TheSystemsTimersHaveNumbersOfTheirOwn) {
    SetTimer(window, 7, 50, nullptr);
    vndk::win32::setSystemTimer(window, 7, 20, nullptr);
    screen.advance(20);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_SYSTIMER, posted | wparam, 7}}));
    KillTimer(window, 7);
    screen.advance(20);
    settle();
    EXPECT_EQ(recorder.count(WM_SYSTIMER), 1);
    vndk::win32::killSystemTimer(window, 7);
    screen.advance(20);
    EXPECT_EQ(settle(), 0);
}

} // namespace
