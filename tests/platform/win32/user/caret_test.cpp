// The blinking mark in a text.
#include "paint_fixture.h"

namespace {

using namespace vndk::test;

class CaretTest : public PaintFixture {
protected:
    void SetUp() override {
        PaintFixture::SetUp();
        window = create(WS_POPUP | WS_VISIBLE, nullptr, 100, 100, 100, 80);
        quiet();
    }
    void TearDown() override { DestroyCaret(); }
    /// Is the pixel of the client area other than the ground?
    bool inverted(int x, int y) { return pixel(100 + x, 100 + y) == 0; }
    HWND window = nullptr;
};

TEST_F(CaretTest, ItIsHiddenUntilItIsShownAsOftenAsItWasHidden) {
    EXPECT_FALSE(ShowCaret(window)) << "there is none";
    ASSERT_TRUE(CreateCaret(window, nullptr, 2, 10));
    SetCaretPos(20, 30);
    EXPECT_FALSE(inverted(20, 30));
    EXPECT_TRUE(ShowCaret(window));
    EXPECT_TRUE(inverted(20, 30));
    EXPECT_TRUE(inverted(21, 39));
    EXPECT_FALSE(inverted(22, 39));
    EXPECT_FALSE(inverted(20, 40));
    HideCaret(window);
    HideCaret(window);
    EXPECT_FALSE(inverted(20, 30));
    ShowCaret(window);
    EXPECT_FALSE(inverted(20, 30));
    ShowCaret(nullptr);
    EXPECT_TRUE(inverted(20, 30));
    EXPECT_FALSE(HideCaret(GetDesktopWindow())) << "another window's";
    EXPECT_TRUE(DestroyCaret());
    EXPECT_FALSE(inverted(20, 30));
    EXPECT_FALSE(DestroyCaret());
}

TEST_F(CaretTest, ItBlinksAndShowsAtOnceWhereItGoes) {
    CreateCaret(window, nullptr, 1, 10);
    ShowCaret(window);
    const UINT time = GetCaretBlinkTime();
    EXPECT_TRUE(inverted(0, 0));
    wait(time + 10);
    EXPECT_FALSE(inverted(0, 0));
    SetCaretPos(5, 0);
    EXPECT_TRUE(inverted(5, 0));
    wait(time + 10);
    EXPECT_FALSE(inverted(5, 0));
    wait(time);
    EXPECT_TRUE(inverted(5, 0));
    POINT place{};
    EXPECT_TRUE(GetCaretPos(&place));
    EXPECT_EQ(place.x, 5);
    EXPECT_FALSE(GetCaretPos(nullptr));
}

TEST_F(CaretTest, PaintingAndMovingLeaveNoTracesOfIt) {
    CreateCaret(window, nullptr, 4, 20);
    ShowCaret(window);
    const RECT upper{0, 0, 100, 10};
    for (int i = 0; i < 3; ++i) {
        InvalidateRect(window, i == 1 ? &upper : nullptr, TRUE);
        settle();
        EXPECT_TRUE(inverted(0, 0)) << i;
        EXPECT_TRUE(inverted(3, 19)) << i;
        EXPECT_FALSE(inverted(4, 19)) << i;
    }
    SetWindowPos(window, nullptr, 150, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    EXPECT_TRUE(inverted(50, 0));
    HideCaret(window);
    for (int x = 0; x < 100; ++x)
        EXPECT_FALSE(inverted(50 + x, 5)) << x;
    ShowCaret(window);
    settle();
    EXPECT_TRUE(inverted(50, 0));
    DestroyWindow(window);
    EXPECT_FALSE(DestroyCaret()) << "it went with its window";
}

TEST_F(CaretTest, CoveredItPaintsOnNobodyElse) {
    CreateCaret(window, nullptr, 4, 20);
    ShowCaret(window);
    const HWND cover = create(WS_POPUP | WS_VISIBLE, nullptr, 100, 100, 50, 10);
    settle();
    wait(GetCaretBlinkTime() * 2 + 20);
    EXPECT_FALSE(inverted(0, 5));
    DestroyWindow(cover);
    settle();
    HideCaret(window);
    EXPECT_FALSE(inverted(0, 5));
    EXPECT_FALSE(inverted(0, 15));
}

TEST_F(CaretTest, OddSizesAndPlacesAreHarmless) {
    EXPECT_TRUE(CreateCaret(window, nullptr, 0, 0));
    ShowCaret(window);
    EXPECT_TRUE(inverted(0, 0));
    EXPECT_FALSE(inverted(1, 0)) << "as thin as a border";
    EXPECT_TRUE(SetCaretPos(0x7FFFFFFF, -0x7FFFFFFF));
    EXPECT_TRUE(CreateCaret(window, nullptr, 0x7FFFFFFF, -5));
    ShowCaret(window);
    const HBITMAP picture = CreateBitmap(3, 5, 1, 1, nullptr);
    EXPECT_TRUE(CreateCaret(window, picture, 1, 1));
    ShowCaret(window);
    DestroyCaret();
    DeleteObject(picture);
    EXPECT_FALSE(CreateCaret(nullptr, nullptr, 1, 1));
}

} // namespace
