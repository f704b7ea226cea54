// One window takes all of the mouse.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"

namespace {

using namespace vndk::test;

class CaptureTest : public DesktopFixture {
protected:
    void SetUp() override {
        recorder.registerClass();
        first = CreateWindow(MessageRecorder::className, "", WS_POPUP | WS_VISIBLE, 100, 100, 50, 50, nullptr, nullptr,
                             nullptr, nullptr);
        second = CreateWindow(MessageRecorder::className, "", WS_POPUP | WS_VISIBLE, 300, 300, 50, 50, nullptr, nullptr,
                              nullptr, nullptr);
        settle();
        recorder.clear();
    }
    MessageRecorder recorder;
    HWND first = nullptr;
    HWND second = nullptr;
};

TEST_F(CaptureTest, TheLoserHearsOfTheWinner) {
    recorder.setParent(first);
    EXPECT_EQ(SetCapture(first), nullptr);
    EXPECT_TRUE(recorder.saw({}));
    EXPECT_EQ(SetCapture(first), first);
    EXPECT_TRUE(recorder.saw({})) << "it loses nothing";
    EXPECT_EQ(SetCapture(second), first);
    EXPECT_TRUE(
        recorder.saw({{WM_CAPTURECHANGED, sent | parent | wparam | lparam, 0, reinterpret_cast<LPARAM>(second)}}));
    EXPECT_EQ(GetCapture(), second);
    EXPECT_TRUE(ReleaseCapture());
    EXPECT_TRUE(recorder.saw({{WM_CAPTURECHANGED, sent | lparam, 0, 0}}));
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_TRUE(ReleaseCapture());
    EXPECT_TRUE(recorder.saw({}));
}

TEST_F(CaptureTest, AllMouseMessagesGoToTheHolderWithoutQuestions) {
    recorder.notice({WM_NCHITTEST});
    SetCapture(first);
    user.moveTo(310, 305);
    user.press();
    settle();
    EXPECT_TRUE(recorder.saw({{WM_MOUSEMOVE, posted | wparam | lparam, 0, MAKELPARAM(210, 205)},
                              {WM_LBUTTONDOWN, posted | wparam | lparam, MK_LBUTTON, MAKELPARAM(210, 205)}}));
    user.moveTo(20, 30);
    settle();
    const LPARAM outside = MAKELPARAM(-80, -70);
    EXPECT_TRUE(recorder.saw({{WM_MOUSEMOVE, posted | lparam, 0, outside}}));
    EXPECT_EQ(GET_X_LPARAM(outside), -80);
    user.release();
    ReleaseCapture();
    recorder.clear();
    user.moveTo(310, 305);
    settle();
    EXPECT_EQ(recorder.count(WM_MOUSEMOVE, second), 1);
}

TEST_F(CaptureTest, ItEndsWithItsWindowOrWhenTheKeyboardGoes) {
    SetCapture(first);
    DestroyWindow(first);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(SetCapture(first), nullptr) << "dead";
    SetCapture(second);
    recorder.clear();
    vndk::screen::Event lost;
    lost.kind = vndk::screen::Event::Kind::deactivated;
    screen.post(lost);
    settle();
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(recorder.count(WM_CAPTURECHANGED, second), 1);
    SetCapture(second);
    SendMessage(second, WM_CANCELMODE, 0, 0);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(CaptureTest, TheLoserMayDieOrTakeItBack) {
    SetCapture(first);
    recorder.onMessage(WM_CAPTURECHANGED, [&](HWND window, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        if (window == first)
            DestroyWindow(first);
        return 0;
    });
    SetCapture(second);
    EXPECT_FALSE(IsWindow(first));
    EXPECT_EQ(GetCapture(), second);
}

} // namespace
