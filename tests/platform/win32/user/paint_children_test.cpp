// How painting of parents and children goes together.
#include "paint_fixture.h"

namespace {

using namespace vndk::test;

class PaintChildrenTest : public PaintFixture {
protected:
    void begin(DWORD parentStyle = 0, DWORD childStyle = WS_BORDER) {
        parentWindow = createFrame(parentStyle);
        child = createChild(parentWindow, childStyle);
    }
    HWND parentWindow = nullptr;
    HWND child = nullptr;
};

TEST_F(PaintChildrenTest, InvalidationReachesChildrenThatAreNotClipped) {
    begin();
    redraw(parentWindow, {0, 0, 50, 50}, allInvalid);
    EXPECT_EQ(invalid(parentWindow), "0,0,50,50");
    EXPECT_EQ(invalid(child), "0,0,39,38") << "in the child's coordinates, within its border";
    quiet();
    redraw(parentWindow, {0, 0, 50, 50}, allInvalid | RDW_NOCHILDREN);
    EXPECT_EQ(invalid(child), "empty");
    quiet();
    SetWindowLong(parentWindow, GWL_STYLE, GetWindowLong(parentWindow, GWL_STYLE) | WS_CLIPCHILDREN);
    redraw(parentWindow, {0, 0, 50, 50}, allInvalid);
    EXPECT_EQ(invalid(child), "empty");
    redraw(parentWindow, {0, 0, 50, 50}, allInvalid | RDW_ALLCHILDREN);
    EXPECT_EQ(invalid(child), "0,0,39,38");
}

TEST_F(PaintChildrenTest, ErasingNowStaysWithTheWindowUnlessAsked) {
    begin();
    redraw(parentWindow, allInvalid);
    redraw(parentWindow, RDW_ERASENOW);
    EXPECT_TRUE(recorder.saw({{WM_NCPAINT, sent | parent}, {WM_ERASEBKGND, sent | parent}}));
    redraw(parentWindow, allInvalid);
    redraw(parentWindow, RDW_ERASENOW | RDW_ALLCHILDREN);
    EXPECT_TRUE(recorder.saw(
        {{WM_NCPAINT, sent | parent}, {WM_ERASEBKGND, sent | parent}, {WM_NCPAINT, sent}, {WM_ERASEBKGND, sent}}));
}

TEST_F(PaintChildrenTest, UpdatingNowReachesTheChildrenOfClippingWindows) {
    begin(WS_CLIPCHILDREN);
    redraw(parentWindow, allInvalid | RDW_ALLCHILDREN);
    redraw(parentWindow, RDW_UPDATENOW);
    EXPECT_EQ(recorder.count(WM_PAINT, parentWindow), 1);
    EXPECT_EQ(recorder.count(WM_PAINT, child), 1);
    recorder.clear();
    redraw(parentWindow, allInvalid | RDW_ALLCHILDREN);
    redraw(parentWindow, RDW_UPDATENOW | RDW_NOCHILDREN);
    EXPECT_EQ(recorder.count(WM_PAINT, child), 0);
}

TEST_F(PaintChildrenTest, ParentsPaintBeforeTheirChildren) {
    begin();
    redraw(parentWindow, allInvalid);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_PAINT, posted | parent},
                              {WM_NCPAINT, sent | parent | defwinproc},
                              {WM_ERASEBKGND, sent | parent | defwinproc},
                              {WM_PAINT, posted},
                              {WM_NCPAINT, sent | defwinproc},
                              {WM_ERASEBKGND, sent | defwinproc}}));
}

TEST_F(PaintChildrenTest, AChildPaintedFirstIsTakenOutOfItsParent) {
    begin();
    redraw(child, allInvalid);
    redraw(parentWindow, {0, 0, 100, 100}, allInvalid);
    recorder.clear();
    redraw(child, RDW_UPDATENOW);
    EXPECT_EQ(recorder.count(WM_PAINT, child), 1);
    EXPECT_EQ(invalid(parentWindow), "0,0,100,10 0,10,10,50 60,10,100,50 0,50,100,100");

    quiet();
    redraw(parentWindow, {10, 10, 60, 50}, RDW_INVALIDATE | RDW_ERASE);
    redraw(child, RDW_UPDATENOW);
    EXPECT_EQ(invalid(parentWindow), "empty");
    recorder.clear();
    settle();
    EXPECT_EQ(recorder.count(WM_PAINT), 0);
}

TEST_F(PaintChildrenTest, AChildWaitsForTheParentThatPaintsOverIt) {
    begin();
    redraw(parentWindow, allInvalid);
    MSG message{};
    EXPECT_FALSE(PeekMessage(&message, child, WM_PAINT, WM_PAINT, PM_REMOVE));
    redraw(parentWindow, RDW_VALIDATE | RDW_NOCHILDREN | RDW_NOFRAME);
    ASSERT_TRUE(PeekMessage(&message, child, WM_PAINT, WM_PAINT, PM_REMOVE));
    EXPECT_EQ(message.hwnd, child);

    quiet();
    SetWindowLong(parentWindow, GWL_STYLE, GetWindowLong(parentWindow, GWL_STYLE) | WS_CLIPCHILDREN);
    redraw(parentWindow, allInvalid | RDW_ALLCHILDREN);
    EXPECT_TRUE(PeekMessage(&message, child, WM_PAINT, WM_PAINT, PM_REMOVE)) << "a clipping parent is no obstacle";
}

TEST_F(PaintChildrenTest, ValidatingAParentValidatesItsChildren) {
    begin();
    const RECT childRect{10, 10, 60, 50};
    InvalidateRect(child, nullptr, TRUE);
    EXPECT_TRUE(ValidateRect(parentWindow, &childRect));
    EXPECT_EQ(invalid(child), "empty");
    InvalidateRect(child, nullptr, TRUE);
    const HRGN region = CreateRectRgnIndirect(&childRect);
    EXPECT_TRUE(ValidateRgn(parentWindow, region));
    EXPECT_EQ(invalid(child), "empty");
    InvalidateRect(child, nullptr, TRUE);
    redraw(parentWindow, RDW_VALIDATE | RDW_NOCHILDREN);
    EXPECT_EQ(invalid(child), whole(child));
    DeleteObject(region);
}

TEST_F(PaintChildrenTest, TransparentChildrenPaintAfterWhatTheyShow) {
    begin(WS_CLIPCHILDREN);
    const HWND glass = create(WS_CHILD | WS_VISIBLE, parentWindow, 0, 0, 100, 100, WS_EX_TRANSPARENT);
    SetWindowPos(glass, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    quiet();
    redraw(parentWindow, allInvalid | RDW_ALLCHILDREN);
    settle();
    std::vector<HWND> order;
    for (const RecordedMessage& message : recorder.messages())
        if (message.message == WM_PAINT)
            order.push_back(message.window);
    EXPECT_EQ(order, (std::vector<HWND>{parentWindow, child, glass}));
}

TEST_F(PaintChildrenTest, NothingIsPaintedInMinimizedWindows) {
    begin();
    ShowWindow(parentWindow, SW_SHOWMINIMIZED);
    quiet();
    redraw(child, allInvalid);
    redraw(parentWindow, allInvalid | RDW_ALLCHILDREN);
    settle();
    EXPECT_EQ(recorder.count(WM_PAINT, child), 0);
}

} // namespace
