// The update region of one window, and the messages that paint it.
#include "paint_fixture.h"

#include "win32/error.h"

#include <climits>

namespace {

using namespace vndk::test;

class PaintTest : public PaintFixture {};

TEST_F(PaintTest, RegionsAreAddedAndTakenOffInClientCoordinates) {
    const HWND window = createFrame();
    const struct {
        RECT rect;
        UINT flags;
        const char* left;
    } steps[] = {
        {{0, 0, 100, 100}, RDW_INVALIDATE, "0,0,100,100"},
        {{0, 0, 100, 50}, RDW_VALIDATE, "0,50,100,100"},
        {{-20, -20, 10, 60}, RDW_INVALIDATE, "0,0,10,50 0,50,100,100"},
        {{0, 0, 10, 50}, RDW_VALIDATE, "0,50,100,100"},
        {{5, 5, 5, 90}, RDW_INVALIDATE, "0,50,100,100"},
        {{90, 90, 20, 20}, RDW_INVALIDATE, "0,50,100,100"},
        {{0, 0, 500, 500}, RDW_ERASE, "0,50,100,100"},
        {{0, 0, 500, 500}, RDW_INVALIDATE | RDW_VALIDATE, "0,0,292,173"},
        {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, RDW_VALIDATE, "empty"},
        {{INT_MIN, INT_MIN, INT_MAX, INT_MAX}, RDW_INVALIDATE, "0,0,292,173"},
    };
    ASSERT_EQ(whole(window), "0,0,292,173");
    for (const auto& step : steps) {
        redraw(window, step.rect, step.flags);
        EXPECT_EQ(invalid(window), step.left) << textOf(step.rect) << " with " << step.flags;
    }
}

TEST_F(PaintTest, InvalidWindowsPaintFrameAndGroundInBeginPaint) {
    const HWND window = createFrame();
    redraw(window, allInvalid);
    settle();
    EXPECT_TRUE(recorder.saw(
        {{WM_PAINT, posted}, {WM_NCPAINT, sent | wparam | defwinproc, 1}, {WM_ERASEBKGND, sent | defwinproc}}));
    InvalidateRect(window, nullptr, FALSE);
    settle();
    EXPECT_TRUE(recorder.saw({{WM_PAINT, posted}})) << "neither frame nor ground was asked for";
}

TEST_F(PaintTest, ErasingNowLeavesThePaintingForLater) {
    const HWND window = createFrame();
    redraw(window, allInvalid | RDW_ERASENOW);
    EXPECT_TRUE(recorder.saw({{WM_NCPAINT, sent | wparam, 1}, {WM_ERASEBKGND, sent}}));
    EXPECT_EQ(invalid(window), whole(window));
    settle();
    EXPECT_TRUE(recorder.saw({{WM_PAINT, posted}}));
}

TEST_F(PaintTest, ErasingNowCoversWhatIsLeftAfterValidating) {
    const HWND window = createFrame();
    redraw(window, {0, 0, 100, 100}, RDW_INVALIDATE | RDW_ERASE);
    recorder.onMessage(WM_ERASEBKGND, [&](HWND, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        RECT box{};
        GetClipBox(reinterpret_cast<HDC>(wParam), &box);
        EXPECT_EQ(textOf(box), "0,50,100,100");
        return 1;
    });
    redraw(window, {0, 0, 100, 50}, RDW_VALIDATE | RDW_ERASENOW);
    EXPECT_TRUE(recorder.saw({{WM_ERASEBKGND, sent}}));
    EXPECT_EQ(invalid(window), "0,50,100,100");
}

TEST_F(PaintTest, AnInvalidFrameAloneIsAPaintWithoutARegion) {
    const HWND window = createFrame();
    redraw(window, {-4, -4, -3, -3}, RDW_INVALIDATE | RDW_FRAME);
    RECT rect{1, 1, 1, 1};
    EXPECT_EQ(invalid(window), "empty");
    EXPECT_TRUE(GetUpdateRect(window, &rect, FALSE));
    EXPECT_EQ(textOf(rect), "0,0,0,0");
    EXPECT_TRUE(recorder.saw({}));
    settle();
    EXPECT_EQ(recorder.count(WM_PAINT), 1);
    EXPECT_EQ(recorder.count(WM_NCPAINT), 1);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE));

    redraw(window, {-4, -4, -3, -3}, RDW_INVALIDATE | RDW_FRAME);
    recorder.clear();
    GetUpdateRect(window, nullptr, TRUE);
    EXPECT_EQ(recorder.count(WM_NCPAINT), 1);
    EXPECT_FALSE(GetUpdateRect(window, nullptr, FALSE)) << "asking with erase made it valid";
    EXPECT_EQ(settle(), 0);
}

TEST_F(PaintTest, APartOfTheFrameComesAsARegionOnTheScreen) {
    const HWND window = createFrame();
    std::string seen;
    recorder.onMessage(WM_NCPAINT, [&](HWND painted, UINT, WPARAM wParam, LPARAM) -> std::optional<LRESULT> {
        const auto region = reinterpret_cast<HRGN>(wParam);
        seen = textOf(region);
        const HDC dc = GetDCEx(painted, region, DCX_WINDOW | DCX_INTERSECTRGN);
        RECT box{};
        GetClipBox(dc, &box);
        EXPECT_EQ(textOf(box), "0,0,5,27") << "the context counts from the window's corner";
        EXPECT_EQ(ReleaseDC(painted, dc), 1);
        EXPECT_EQ(textOf(region), seen) << "the region stays the sender's";
        return 0;
    });
    redraw(window, {-10, -30, 1, 4}, RDW_INVALIDATE | RDW_FRAME);
    settle();
    EXPECT_EQ(seen, "40,40,45,67");
}

TEST_F(PaintTest, ProceduresThatDoNothingGetTheFrameOnceAndThePaintAgain) {
    const HWND window = createFrame();
    recorder.onMessage(WM_PAINT, [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return 0; });
    redraw(window, allInvalid);
    EXPECT_EQ(desktop->settle(5), 5) << "it never ends by itself";
    EXPECT_TRUE(recorder.saw({{WM_PAINT, posted},
                              {WM_NCPAINT, sent | wparam, 1},
                              {WM_ERASEBKGND, sent},
                              {WM_PAINT, posted},
                              {WM_PAINT, posted},
                              {WM_PAINT, posted},
                              {WM_PAINT, posted}}));
    ValidateRect(window, nullptr);
    EXPECT_EQ(settle(), 0);
}

TEST_F(PaintTest, PaintsWithoutARegionComeOnce) {
    const HWND window = createFrame();
    recorder.onMessage(WM_PAINT, [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return 0; });
    const struct {
        UINT flags;
        int paints;
    } cases[] = {{RDW_INTERNALPAINT, 1},
                 {RDW_INTERNALPAINT | RDW_UPDATENOW, 1},
                 {RDW_INTERNALPAINT | RDW_NOINTERNALPAINT, 1},
                 {RDW_NOINTERNALPAINT, 0},
                 {RDW_VALIDATE, 0}};
    for (const auto& row : cases) {
        recorder.clear();
        redraw(window, row.flags);
        EXPECT_EQ(invalid(window), "empty");
        settle();
        EXPECT_EQ(recorder.count(WM_PAINT), row.paints) << row.flags;
    }
    redraw(window, RDW_INTERNALPAINT);
    redraw(window, RDW_VALIDATE);
    EXPECT_EQ(settle(), 1) << "validating doesn't take it back";
    redraw(window, RDW_INTERNALPAINT);
    redraw(window, RDW_NOINTERNALPAINT);
    EXPECT_EQ(settle(), 0);
}

TEST_F(PaintTest, AskingForTheRegionWithEraseErases) {
    const HWND window = createFrame();
    redraw(window, {0, 0, 40, 40}, RDW_INVALIDATE | RDW_ERASE);
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(GetUpdateRgn(window, region, TRUE), SIMPLEREGION);
    EXPECT_EQ(textOf(region), "0,0,40,40");
    EXPECT_TRUE(recorder.saw({{WM_ERASEBKGND, sent}}));
    RECT rect{};
    EXPECT_TRUE(GetUpdateRect(window, &rect, TRUE));
    EXPECT_EQ(textOf(rect), "0,0,40,40");
    EXPECT_TRUE(recorder.saw({})) << "it is erased already";
    DeleteObject(region);
}

TEST_F(PaintTest, SuppressedErasesAndFramesDontCome) {
    const HWND window = createFrame();
    redraw(window, allInvalid);
    redraw(window, {0, 0, 10, 10}, RDW_VALIDATE | RDW_NOERASE);
    settle();
    EXPECT_EQ(recorder.count(WM_ERASEBKGND), 0);
    EXPECT_EQ(recorder.count(WM_NCPAINT), 1);
    recorder.clear();
    redraw(window, allInvalid);
    redraw(window, RDW_VALIDATE);
    EXPECT_EQ(invalid(window), "empty");
    settle();
    EXPECT_EQ(recorder.count(WM_NCPAINT), 1) << "validating the client area leaves the frame";
    recorder.clear();
    redraw(window, allInvalid);
    redraw(window, RDW_VALIDATE | RDW_NOFRAME);
    EXPECT_EQ(settle(), 0);
    EXPECT_TRUE(recorder.saw({}));
}

TEST_F(PaintTest, UpdateWindowPaintsAtOnceWithoutTheQueue) {
    const HWND window = createFrame();
    EXPECT_TRUE(UpdateWindow(window));
    EXPECT_TRUE(recorder.saw({})) << "nothing is invalid";
    redraw(window, allInvalid);
    EXPECT_TRUE(UpdateWindow(window));
    EXPECT_TRUE(recorder.saw(
        {{WM_PAINT, sent}, {WM_NCPAINT, sent | wparam | defwinproc, 1}, {WM_ERASEBKGND, sent | defwinproc}}));
    EXPECT_EQ(invalid(window), "empty");
    recorder.onMessage(WM_PAINT, [](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return 0; });
    redraw(window, RDW_INVALIDATE | RDW_UPDATENOW);
    EXPECT_EQ(recorder.count(WM_PAINT), 1) << "once, even when it paints nothing";
}

TEST_F(PaintTest, BeginPaintTellsWhatToPaintAndWhoErases) {
    const HWND window = createFrame();
    bool erases = true;
    recorder.onMessage(WM_ERASEBKGND,
                       [&](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> { return erases ? 1 : 0; });
    PAINTSTRUCT paint{};
    recorder.onMessage(WM_PAINT, [&](HWND painted, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        BeginPaint(painted, &paint);
        RECT box{};
        GetClipBox(paint.hdc, &box);
        EXPECT_EQ(textOf(box), textOf(paint.rcPaint));
        EXPECT_EQ(WindowFromDC(paint.hdc), painted);
        EndPaint(painted, &paint);
        return 0;
    });
    redraw(window, {10, 20, 40, 50}, RDW_INVALIDATE | RDW_ERASE);
    settle();
    EXPECT_EQ(textOf(paint.rcPaint), "10,20,40,50");
    EXPECT_FALSE(paint.fErase);
    erases = false;
    redraw(window, {0, 0, 5, 5}, RDW_INVALIDATE | RDW_ERASE);
    settle();
    EXPECT_TRUE(paint.fErase) << "the ground was left to the painter";
    redraw(window, RDW_INTERNALPAINT);
    settle();
    EXPECT_EQ(textOf(paint.rcPaint), "0,0,0,0") << "nothing to paint";
}

TEST_F(PaintTest, HiddenAndCoveredWindowsAreNotPainted) {
    const HWND window = createFrame();
    ShowWindow(window, SW_HIDE);
    quiet();
    redraw(window, allInvalid);
    EXPECT_EQ(invalid(window), "empty");
    ShowWindow(window, SW_SHOWNA);
    const HWND above = create(WS_POPUP | WS_VISIBLE, nullptr, 0, 0, 500, 400);
    quiet();
    redraw(window, allInvalid);
    settle();
    EXPECT_EQ(recorder.count(WM_PAINT, window), 0);
    DestroyWindow(above);
    recorder.clear();
    settle();
    EXPECT_EQ(recorder.count(WM_PAINT, window), 1) << "it has come to light";
}

TEST_F(PaintTest, WithoutAWindowTheWholeScreenIsInvalid) {
    const HWND window = createFrame();
    const struct {
        const char* name;
        BOOL (*call)();
    } calls[] = {{"InvalidateRect", [] { return InvalidateRect(nullptr, nullptr, FALSE); }},
                 {"ValidateRect", [] { return ValidateRect(nullptr, nullptr); }}};
    for (const auto& row : calls) {
        recorder.clear();
        EXPECT_TRUE(row.call()) << row.name;
        EXPECT_TRUE(recorder.saw({{WM_NCPAINT, sent}, {WM_ERASEBKGND, sent}})) << row.name;
        EXPECT_EQ(invalid(window), whole(window)) << row.name;
        settle();
    }
    EXPECT_FALSE(ValidateRgn(nullptr, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_FALSE(InvalidateRgn(nullptr, nullptr, TRUE));
    EXPECT_FALSE(UpdateWindow(nullptr));
}

TEST_F(PaintTest, LockedWindowsPaintWhenTheyAreUnlocked) {
    const HWND window = createFrame();
    const HWND child = createChild(window);
    EXPECT_TRUE(LockWindowUpdate(window));
    EXPECT_FALSE(LockWindowUpdate(child)) << "one at a time";
    const HDC dc = GetDC(child);
    RECT box{};
    EXPECT_EQ(GetClipBox(dc, &box), NULLREGION);
    ReleaseDC(child, dc);
    InvalidateRect(child, nullptr, TRUE);
    EXPECT_EQ(settle(), 0);
    EXPECT_TRUE(LockWindowUpdate(nullptr));
    recorder.clear();
    settle();
    EXPECT_EQ(recorder.count(WM_PAINT, child), 1);
    EXPECT_EQ(recorder.count(WM_PAINT, window), 1);
}

TEST_F(PaintTest, WindowsMayDieWhileTheyPaint) {
    for (const UINT message : {WM_NCPAINT, WM_ERASEBKGND, WM_PAINT}) {
        const HWND window = createFrame();
        recorder.onMessage(message, [&](HWND painted, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
            DestroyWindow(painted);
            return 0;
        });
        redraw(window, allInvalid);
        settle();
        EXPECT_FALSE(IsWindow(window)) << nameOfMessage(message);
        recorder.onMessage(message, [](HWND, UINT, WPARAM, LPARAM) { return std::optional<LRESULT>(); });
    }
    const HWND window = createFrame();
    recorder.onMessage(WM_ERASEBKGND, [&](HWND painted, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        DestroyWindow(painted);
        return 0;
    });
    PAINTSTRUCT paint{};
    InvalidateRect(window, nullptr, TRUE);
    EXPECT_EQ(BeginPaint(window, &paint), nullptr);
    EXPECT_TRUE(EndPaint(window, &paint));
}

TEST_F(PaintTest, DeadHandlesAndNullsAreRefused) {
    const HWND dead = createFrame();
    DestroyWindow(dead);
    PAINTSTRUCT paint{};
    RECT rect{};
    const HRGN region = CreateRectRgn(0, 0, 10, 10);
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(BeginPaint(dead, &paint), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_INVALID_WINDOW_HANDLE);
    EXPECT_EQ(GetDC(dead), nullptr);
    EXPECT_EQ(GetWindowDC(dead), nullptr);
    EXPECT_FALSE(RedrawWindow(dead, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW));
    EXPECT_FALSE(InvalidateRect(dead, nullptr, TRUE));
    EXPECT_FALSE(UpdateWindow(dead));
    EXPECT_FALSE(GetUpdateRect(dead, &rect, TRUE));
    EXPECT_EQ(GetUpdateRgn(dead, region, TRUE), 0);
    EXPECT_EQ(ScrollWindowEx(dead, 1, 1, nullptr, nullptr, nullptr, nullptr, 0), 0);
    EXPECT_EQ(SetWindowRgn(dead, region, TRUE), 0);
    EXPECT_EQ(ReleaseDC(dead, nullptr), 0);
    const HWND window = createFrame();
    EXPECT_EQ(BeginPaint(window, nullptr), nullptr);
    EXPECT_FALSE(EndPaint(window, nullptr));
    EXPECT_EQ(GetUpdateRgn(window, nullptr, FALSE), 0);
    DeleteObject(region);
    EXPECT_FALSE(RedrawWindow(window, nullptr, region, RDW_INVALIDATE)) << "a dead region isn't the whole window";
    EXPECT_EQ(invalid(window), "empty");
}

} // namespace
