// Scroll bars: values, the messages that the user causes, the bars of frames.
#include "control_fixture.h"
#include "controls/scroll_model.h"
#include "win32/draw.h"
#include "win32/error.h"
#include "win32/metrics.h"
#include "win32/scrollbar.h"
#include "win32/user_script.h"

#include <climits>

namespace vndk::win32 {
namespace {

using test::ControlFixture;

// ---- Values --------------------------------------------------------------------------------------------------------

SCROLLINFO infoOf(UINT mask, int minimum, int maximum, UINT page, int position) {
    return {sizeof(SCROLLINFO), mask, minimum, maximum, page, position, 0};
}

TEST(ScrollModel, PageAndPositionAreMadeToFit) {
    struct Row {
        const char* name;
        int minimum, maximum;
        UINT page;
        int position;
        UINT expectedPage;
        int expectedPosition;
        bool scrolls;
    };
    const Row rows[] = {
        {"inside", 0, 100, 10, 50, 10, 50, true},
        {"behind the last page", 0, 100, 10, 95, 10, 91, true},
        {"before the begin", -5, 5, 0, -9, 0, -5, true},
        {"page as large as the range", 0, 9, 10, 3, 10, 0, false},
        {"page larger than the range", 0, 9, 0xFFFFFFFF, 3, 10, 0, false},
        {"nothing to scroll", 7, 7, 0, 30, 0, 7, false},
        {"the largest range", 0, INT_MAX, 0, INT_MAX, 0, INT_MAX, true},
        {"ends too far apart", INT_MIN, INT_MAX, 0, 5, 0, 0, false},
        {"ends the wrong way round", 10, 5, 0, 7, 0, 0, false},
        {"the lowest numbers", INT_MIN, -1, 1, 4, 1, -1, true},
    };
    for (const Row& row : rows) {
        ScrollState state;
        applyScrollInfo(state, infoOf(SIF_ALL, row.minimum, row.maximum, row.page, row.position));
        EXPECT_EQ(state.page, row.expectedPage) << row.name;
        EXPECT_EQ(state.position, row.expectedPosition) << row.name;
        EXPECT_EQ(canScroll(state), row.scrolls) << row.name;
    }
}

TEST(ScrollModel, ThumbStandsForPageAndPosition) {
    ScrollState state;
    applyScrollInfo(state, infoOf(SIF_ALL, 0, 99, 25, 0));
    // 232 pixels: two arrows of 16 leave 200 for the shaft; a quarter of it is the thumb.
    ScrollLayout layout = layoutScrollBar(state, 232, 16, true);
    EXPECT_EQ(layout.thumbBegin, 16);
    EXPECT_EQ(layout.thumbEnd, 66);
    state.position = highestPosition(state);
    layout = layoutScrollBar(state, 232, 16, true);
    EXPECT_EQ(layout.thumbEnd, 216);
    EXPECT_EQ(partAt(layout, -1), ScrollPart::none);
    EXPECT_EQ(partAt(layout, 15), ScrollPart::lineUp);
    EXPECT_EQ(partAt(layout, 16), ScrollPart::pageUp);
    EXPECT_EQ(partAt(layout, 166), ScrollPart::thumb);
    EXPECT_EQ(partAt(layout, 216), ScrollPart::lineDown);
    EXPECT_EQ(partAt(layout, 232), ScrollPart::none);
}

TEST(ScrollModel, EveryPositionSurvivesTheWayThroughPixelsWhenThereAreEnough) {
    ScrollState state;
    applyScrollInfo(state, infoOf(SIF_ALL, -20, 60, 10, 0));
    for (int position = -20; position <= highestPosition(state); ++position) {
        state.position = position;
        const ScrollLayout layout = layoutScrollBar(state, 400, 16, true);
        EXPECT_EQ(positionAt(state, layout, layout.thumbBegin - layout.shaftBegin()), position);
    }
}

TEST(ScrollModel, ShortAndOddBarsHaveNoThumbAndStaySound) {
    ScrollState state;
    applyScrollInfo(state, infoOf(SIF_ALL, 0, INT_MAX, 1, INT_MAX / 2));
    for (int length = -5; length < 60; ++length) {
        const ScrollLayout layout = layoutScrollBar(state, length, 16, true);
        EXPECT_LE(layout.shaftBegin(), layout.shaftEnd()) << length;
        if (layout.hasThumb) {
            EXPECT_GE(layout.thumbBegin, layout.shaftBegin()) << length;
            EXPECT_LE(layout.thumbEnd, layout.shaftEnd()) << length;
        }
    }
    EXPECT_FALSE(layoutScrollBar(state, 35, 16, true).hasThumb);
    EXPECT_FALSE(layoutScrollBar(state, 200, 16, false).hasThumb);
}

// ---- The control ---------------------------------------------------------------------------------------------------

class ScrollBarTest : public ControlFixture {
protected:
    void SetUp() override {
        ControlFixture::SetUp();
        const auto note = [this](HWND, UINT, WPARAM wParam, LPARAM lParam) -> std::optional<LRESULT> {
            scrolls.push_back({LOWORD(wParam), static_cast<SHORT>(HIWORD(wParam))});
            from = reinterpret_cast<HWND>(lParam);
            if (onScroll)
                onScroll(LOWORD(wParam), HIWORD(wParam));
            return std::nullopt;
        };
        recorder.onMessage(WM_HSCROLL, note);
        recorder.onMessage(WM_VSCROLL, note);
    }
    /// 0 to 99 with a page of 25 on a bar of 232 pixels: the thumb is 50 of them long.
    HWND makeBar(DWORD style = SBS_VERT) {
        const HWND bar =
            (style & SBS_VERT) != 0 ? make("SCROLLBAR", style, 0, 0, 16, 232) : make("SCROLLBAR", style, 0, 0, 232, 16);
        const SCROLLINFO info = infoOf(SIF_ALL, 0, 99, 25, 0);
        SetScrollInfo(bar, SB_CTL, &info, TRUE);
        settle();
        return bar;
    }
    std::vector<Scroll> takeScrolls() { return std::exchange(scrolls, {}); }

    std::vector<Scroll> scrolls;
    HWND from = nullptr;
    std::function<void(int code, int position)> onScroll;
};

TEST_F(ScrollBarTest, ControlBeginsWithAnEmptyRange) {
    const HWND bar = make("SCROLLBAR", SBS_HORZ, 0, 0, 200, 16);
    int low = -1;
    int high = -1;
    EXPECT_TRUE(GetScrollRange(bar, SB_CTL, &low, &high));
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 0);
    EXPECT_EQ(SetScrollPos(bar, SB_CTL, 30, TRUE), 0);
    EXPECT_EQ(GetScrollPos(bar, SB_CTL), 0);
}

TEST_F(ScrollBarTest, DisabledControlKeepsWhatIsSet) {
    const HWND bar = makeBar();
    EXPECT_TRUE(EnableScrollBar(bar, SB_CTL, ESB_DISABLE_BOTH));
    EXPECT_FALSE(IsWindowEnabled(bar));
    SetScrollPos(bar, SB_CTL, 30, TRUE);
    EXPECT_EQ(GetScrollPos(bar, SB_CTL), 30);
    EXPECT_FALSE(EnableScrollBar(bar, SB_CTL, ESB_DISABLE_BOTH)) << "nothing changes";
    EXPECT_TRUE(EnableScrollBar(bar, SB_CTL, ESB_DISABLE_LTUP));
    EXPECT_TRUE(IsWindowEnabled(bar));
}

TEST_F(ScrollBarTest, RangeThatFitsDisablesOnlyWhenAsked) {
    const HWND bar = makeBar();
    SCROLLINFO info = infoOf(SIF_RANGE | SIF_PAGE, 0, 9, 10, 0);
    SetScrollInfo(bar, SB_CTL, &info, TRUE);
    EXPECT_TRUE(IsWindowEnabled(bar));
    info.fMask |= SIF_DISABLENOSCROLL;
    SetScrollInfo(bar, SB_CTL, &info, TRUE);
    EXPECT_FALSE(IsWindowEnabled(bar));
    info.nMax = 50;
    SetScrollInfo(bar, SB_CTL, &info, TRUE);
    EXPECT_TRUE(IsWindowEnabled(bar));
}

TEST_F(ScrollBarTest, MessagesAnswerAsTheCallsDo) {
    const HWND bar = makeBar();
    EXPECT_EQ(SendMessage(bar, SBM_SETPOS, 40, FALSE), 0);
    EXPECT_EQ(SendMessage(bar, SBM_SETPOS, 50, FALSE), 40);
    EXPECT_EQ(SendMessage(bar, SBM_GETPOS, 0, 0), 50);
    EXPECT_EQ(SendMessage(bar, SBM_SETRANGE, 0, 199), 0) << "the position stayed";
    EXPECT_EQ(SendMessage(bar, SBM_SETRANGE, 0, 40), 50) << "the position had to move";
    int low = -1;
    int high = -1;
    SendMessage(bar, SBM_GETRANGE, reinterpret_cast<WPARAM>(&low), reinterpret_cast<LPARAM>(&high));
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 40);
    EXPECT_EQ(SendMessage(bar, SBM_GETRANGE, 0, 0), 0);
    EXPECT_EQ(SendMessage(bar, WM_GETDLGCODE, 0, 0), DLGC_WANTARROWS);
}

TEST_F(ScrollBarTest, InfoIsCheckedBeforeItIsUsed) {
    const HWND bar = makeBar();
    struct Row {
        const char* name;
        UINT size;
        UINT mask;
        BOOL expected;
    };
    const Row rows[] = {
        {"whole", sizeof(SCROLLINFO), SIF_ALL, TRUE},
        {"without the track position", sizeof(SCROLLINFO) - sizeof(int), SIF_POS, TRUE},
        {"no size", 0, SIF_ALL, FALSE},
        {"wrong size", sizeof(SCROLLINFO) + 4, SIF_ALL, FALSE},
        {"unknown bits", sizeof(SCROLLINFO), 0x100, FALSE},
        {"nothing asked for", sizeof(SCROLLINFO), 0, FALSE},
    };
    for (const Row& row : rows) {
        SCROLLINFO info = infoOf(row.mask, 0, 0, 0, 0);
        info.cbSize = row.size;
        EXPECT_EQ(GetScrollInfo(bar, SB_CTL, &info), row.expected) << row.name;
    }
    EXPECT_FALSE(GetScrollInfo(bar, SB_CTL, nullptr));
    EXPECT_EQ(SetScrollInfo(bar, SB_CTL, nullptr, TRUE), 0);
    EXPECT_EQ(SetScrollInfo(nullptr, SB_CTL, nullptr, TRUE), 0);
    const SCROLLINFO good = infoOf(SIF_ALL, 0, 9, 1, 4);
    EXPECT_EQ(SetScrollInfo(nullptr, SB_VERT, &good, TRUE), 0);
    EXPECT_EQ(SetScrollInfo(bar, 77, &good, TRUE), 0);
    EXPECT_FALSE(SetScrollRange(bar, SB_CTL, -2, INT_MAX, TRUE));
    EXPECT_EQ(GetLastError(), ERROR_INVALID_SCROLLBAR_RANGE);
    EXPECT_FALSE(ShowScrollBar(nullptr, SB_BOTH, TRUE));
    EXPECT_FALSE(EnableScrollBar(nullptr, SB_BOTH, ESB_DISABLE_BOTH));
}

TEST_F(ScrollBarTest, ArrowRepeatsWhileItIsHeldAndThePointerIsOnIt) {
    const HWND bar = makeBar();
    // The loop runs inside of the press, so the rest of the story is told by timers: each message is one step.
    onScroll = [&](int code, int) {
        if (code == SB_ENDSCROLL)
            return;
        SetScrollPos(bar, SB_CTL, GetScrollPos(bar, SB_CTL) + 1, TRUE);
        if (scrolls.size() == 3)
            user.release();
    };
    user.moveTo(left + 8, top + 224);
    user.press();
    settle();
    EXPECT_EQ(takeScrolls(),
              (std::vector<Scroll>{{SB_LINEDOWN, 0}, {SB_LINEDOWN, 0}, {SB_LINEDOWN, 0}, {SB_ENDSCROLL, 0}}));
    EXPECT_EQ(GetScrollPos(bar, SB_CTL), 3);
    EXPECT_EQ(from, bar);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ScrollBarTest, PageAreaStopsWhereThePointerIs) {
    const HWND bar = makeBar();
    onScroll = [&](int code, int) {
        if (code == SB_PAGEDOWN)
            SetScrollPos(bar, SB_CTL, GetScrollPos(bar, SB_CTL) + 25, TRUE);
        // The pointer is at offset 150: the second page has put the thumb below it (116 to 166).
        if (code == SB_PAGEDOWN && scrolls.size() == 2)
            SetTimer(owner, 1, 1000, nullptr);
    };
    recorder.onMessage(WM_TIMER, [this](HWND, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        KillTimer(owner, 1);
        user.release();
        return 0;
    });
    user.moveTo(left + 8, top + 150);
    user.press();
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_PAGEDOWN, 0}, {SB_PAGEDOWN, 0}, {SB_ENDSCROLL, 0}}));
}

TEST_F(ScrollBarTest, ThumbIsDraggedTrackedAndPut) {
    const HWND bar = makeBar();
    int tracked = -1;
    int positionMeanwhile = -1;
    onScroll = [&](int code, int) {
        if (code != SB_THUMBTRACK)
            return;
        SCROLLINFO info = infoOf(SIF_ALL, 0, 0, 0, 0);
        GetScrollInfo(bar, SB_CTL, &info);
        tracked = info.nTrackPos;
        positionMeanwhile = info.nPos;
    };
    // The thumb's way is 150 pixels for 75 positions.
    user.drag({left + 8, top + 20}, {left + 8, top + 20 + 60});
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_THUMBTRACK, 30}, {SB_THUMBPOSITION, 30}, {SB_ENDSCROLL, 0}}));
    EXPECT_EQ(tracked, 30);
    EXPECT_EQ(positionMeanwhile, 0) << "a bar never moves by itself";
    EXPECT_EQ(GetScrollPos(bar, SB_CTL), 0);
}

TEST_F(ScrollBarTest, ThumbSnapsBackFarFromTheBar) {
    makeBar(SBS_HORZ);
    // Moves that wait together are one: each is made when the one before has been told.
    const POINT ways[] = {{60, 400}, {80, 8}, {80, 500}};
    std::size_t way = 0;
    onScroll = [&](int code, int) {
        if (code != SB_THUMBTRACK)
            return;
        if (way == std::size(ways)) {
            user.release();
            return;
        }
        user.moveTo(left + ways[way].x, top + ways[way].y);
        ++way;
    };
    user.moveTo(left + 20, top + 8);
    user.press();
    user.moveTo(left + 60, top + 8);
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_THUMBTRACK, 20},
                                                  {SB_THUMBTRACK, 0},
                                                  {SB_THUMBTRACK, 30},
                                                  {SB_THUMBTRACK, 0},
                                                  {SB_THUMBPOSITION, 0},
                                                  {SB_ENDSCROLL, 0}}));
}

TEST_F(ScrollBarTest, LosingTheCaptureEndsTheDrag) {
    makeBar();
    onScroll = [&](int code, int) {
        if (code == SB_THUMBTRACK)
            ReleaseCapture();
    };
    user.moveTo(left + 8, top + 20);
    user.press();
    user.moveTo(left + 8, top + 60);
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_THUMBTRACK, 20}, {SB_THUMBPOSITION, 0}, {SB_ENDSCROLL, 0}}));
}

TEST_F(ScrollBarTest, WindowMayDieInItsOwnMessage) {
    const HWND bar = makeBar();
    onScroll = [&](int, int) { DestroyWindow(bar); };
    user.moveTo(left + 8, top + 224);
    user.press();
    user.release();
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_LINEDOWN, 0}}));
    EXPECT_FALSE(IsWindow(bar));
}

TEST_F(ScrollBarTest, KeysScrollAndKeyUpEnds) {
    const HWND bar = makeBar(SBS_HORZ | WS_TABSTOP);
    SetFocus(bar);
    struct Row {
        int key;
        int code;
    };
    const Row rows[] = {{VK_LEFT, SB_LINELEFT},  {VK_UP, SB_LINELEFT},    {VK_RIGHT, SB_LINERIGHT},
                        {VK_DOWN, SB_LINERIGHT}, {VK_PRIOR, SB_PAGELEFT}, {VK_NEXT, SB_PAGERIGHT},
                        {VK_HOME, SB_LEFT},      {VK_END, SB_RIGHT}};
    for (const Row& row : rows) {
        user.key(row.key);
        settle();
        EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{row.code, 0}, {SB_ENDSCROLL, 0}})) << "key " << row.key;
    }
}

TEST_F(ScrollBarTest, DisabledArrowDoesNotReact) {
    const HWND bar = makeBar();
    EnableScrollBar(bar, SB_CTL, ESB_DISABLE_UP);
    user.click(left + 8, top + 8);
    settle();
    EXPECT_TRUE(takeScrolls().empty());
    user.click(left + 8, top + 224);
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_LINEDOWN, 0}, {SB_ENDSCROLL, 0}}));
}

TEST_F(ScrollBarTest, MenuOfARightClickScrolls) {
    makeBar();
    UserScript script(screen);
    script.inWindow(owner).rightClickAt(controlId, {8, 116}).pick({"Page Down"});
    script.rightClickAt(controlId, {8, 16 + 25 + 60}).pick({"Scroll Here"});
    EXPECT_TRUE(script.finish()) << script.failure();
    EXPECT_EQ(takeScrolls(),
              (std::vector<Scroll>{{SB_PAGEDOWN, 0}, {SB_ENDSCROLL, 0}, {SB_THUMBPOSITION, 30}, {SB_ENDSCROLL, 0}}));
}

TEST_F(ScrollBarTest, SizeGripSizesTheWindowAroundIt) {
    SetWindowLong(owner, GWL_STYLE, GetWindowLong(owner, GWL_STYLE) | static_cast<LONG>(WS_THICKFRAME));
    make("SCROLLBAR", SBS_SIZEGRIP, 380, 280, 16, 16);
    const RECT before = windowRect(owner);
    user.drag({left + 388, top + 288}, {left + 418, top + 308});
    settle();
    const RECT after = windowRect(owner);
    EXPECT_EQ(after.right - before.right, 30);
    EXPECT_EQ(after.bottom - before.bottom, 20);
}

TEST_F(ScrollBarTest, AlignStylesGiveTheStandardBreadth) {
    struct Row {
        const char* name;
        DWORD style;
        RECT expected;
    };
    const Row rows[] = {
        {"top", SBS_HORZ | SBS_TOPALIGN, {10, 20, 110, 36}},
        {"bottom", SBS_HORZ | SBS_BOTTOMALIGN, {10, 64, 110, 80}},
        {"left", SBS_VERT | SBS_LEFTALIGN, {10, 20, 26, 80}},
        {"right", SBS_VERT | SBS_RIGHTALIGN, {94, 20, 110, 80}},
        {"box", SBS_SIZEBOX | SBS_SIZEBOXBOTTOMRIGHTALIGN, {94, 64, 110, 80}},
    };
    for (const Row& row : rows) {
        const HWND bar = make("SCROLLBAR", row.style, 10, 20, 100, 60);
        RECT rect = windowRect(bar);
        OffsetRect(&rect, -left, -top);
        EXPECT_TRUE(EqualRect(&rect, &row.expected))
            << row.name << ": " << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom;
        DestroyWindow(bar);
    }
}

TEST_F(ScrollBarTest, ShaftIsCheckeredAndArrowsAreFaces) {
    makeBar();
    const std::uint32_t face = rgbOf(GetSysColor(COLOR_BTNFACE));
    const std::uint32_t light = rgbOf(GetSysColor(COLOR_BTNHIGHLIGHT));
    // Below the thumb, which ends at 66.
    const std::uint32_t first = pixel(left + 4, top + 100);
    EXPECT_TRUE(first == face || first == light) << std::hex << first;
    for (int step = 0; step < 6; ++step) {
        EXPECT_EQ(pixel(left + 4 + step, top + 100), step % 2 == 0 ? first : face + light - first) << step;
        EXPECT_EQ(pixel(left + 4, top + 100 + step), step % 2 == 0 ? first : face + light - first) << step;
    }
    EXPECT_EQ(pixel(left + 4, top + 40), face) << "thumb";
    EXPECT_EQ(pixel(left + 4, top + 12), face) << "arrow";
    EXPECT_EQ(pixel(left + 15, top + 65), rgbOf(GetSysColor(COLOR_3DDKSHADOW))) << "the thumb's corner";
}

// ---- Frames --------------------------------------------------------------------------------------------------------

class FrameScrollTest : public ScrollBarTest {
protected:
    HWND makeWindow(DWORD style, int width = 200, int height = 148) {
        const HWND window = CreateWindowEx(0, test::MessageRecorder::className, "", style | WS_CHILD | WS_VISIBLE, 10,
                                           10, width, height, owner, nullptr, nullptr, nullptr);
        settle();
        recorder.clear();
        return window;
    }
};

TEST_F(FrameScrollTest, WindowThatNeverHadBarsHasNoInfo) {
    const HWND window = makeWindow(0);
    SCROLLINFO info = infoOf(SIF_ALL, 0, 0, 0, 0);
    EXPECT_FALSE(GetScrollInfo(window, SB_VERT, &info));
    EXPECT_EQ(GetLastError(), ERROR_HAS_NO_SCROLLBARS);
    int low = 5;
    int high = 5;
    EXPECT_TRUE(GetScrollRange(window, SB_VERT, &low, &high));
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 0);
}

TEST_F(FrameScrollTest, WindowWithEitherBarHasBothRangesFrom0To100) {
    const HWND window = makeWindow(WS_HSCROLL);
    int low = 5;
    int high = 5;
    EXPECT_TRUE(GetScrollRange(window, SB_VERT, &low, &high));
    EXPECT_EQ(low, 0);
    EXPECT_EQ(high, 100);
}

TEST_F(FrameScrollTest, BarsComeAndGoWithTheRange) {
    const HWND window = makeWindow(0);
    EXPECT_EQ(clientRect(window).right, 200);
    const auto has = [&](DWORD bit) { return (static_cast<DWORD>(GetWindowLong(window, GWL_STYLE)) & bit) != 0; };
    SCROLLINFO info = infoOf(SIF_RANGE | SIF_PAGE, 0, 99, 10, 0);
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    EXPECT_TRUE(has(WS_VSCROLL));
    EXPECT_EQ(clientRect(window).right, 184);
    info.nPage = 100;
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    EXPECT_FALSE(has(WS_VSCROLL));
    EXPECT_EQ(clientRect(window).right, 200);
    info.fMask = SIF_PAGE;
    info.nPage = 10;
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    EXPECT_FALSE(has(WS_VSCROLL)) << "a page alone doesn't bring the bar back";
    EXPECT_TRUE(SetScrollRange(window, SB_HORZ, 0, 50, TRUE));
    EXPECT_TRUE(has(WS_HSCROLL));
    EXPECT_TRUE(SetScrollRange(window, SB_HORZ, 0, 0, TRUE));
    EXPECT_FALSE(has(WS_HSCROLL));
    info = infoOf(SIF_RANGE | SIF_DISABLENOSCROLL, 0, 0, 0, 0);
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    EXPECT_TRUE(has(WS_VSCROLL)) << "shown disabled";
}

TEST_F(FrameScrollTest, ShowingABarLaysTheFrameOutAnew) {
    const HWND window = makeWindow(0);
    recorder.ignore({WM_ERASEBKGND, WM_NCPAINT, WM_PAINT});
    using namespace test;
    EXPECT_TRUE(ShowScrollBar(window, SB_BOTH, TRUE));
    constexpr UINT still = SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;
    EXPECT_TRUE(recorder.saw({{WM_WINDOWPOSCHANGING, sent | wparam, still},
                              {WM_NCCALCSIZE, sent | wparam, 1},
                              {WM_WINDOWPOSCHANGED, sent},
                              {WM_SIZE, sent | defwinproc}}));
    EXPECT_TRUE(ShowScrollBar(window, SB_BOTH, TRUE));
    EXPECT_TRUE(recorder.saw({})) << "they show already";
    EXPECT_EQ(clientRect(window).bottom, 132);
}

TEST_F(FrameScrollTest, MouseOnTheFramesBarScrollsTheWindowItself) {
    const HWND window = makeWindow(WS_VSCROLL);
    // The bar stands at x 194 to 210 of the owner, y 10 to 158.
    user.click(left + 200, top + 14);
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_LINEUP, 0}, {SB_ENDSCROLL, 0}}));
    EXPECT_EQ(from, nullptr);
    user.click(left + 200, top + 150);
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_LINEDOWN, 0}, {SB_ENDSCROLL, 0}}));
    SCROLLINFO info = infoOf(SIF_ALL, 0, 115, 58, 0); // a shaft of 116 pixels, half of it thumb
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    user.drag({left + 200, top + 30}, {left + 200, top + 40});
    settle();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_THUMBTRACK, 10}, {SB_THUMBPOSITION, 10}, {SB_ENDSCROLL, 0}}));
}

TEST_F(FrameScrollTest, SecondPressOfADoubleClickScrollsToo) {
    makeWindow(WS_VSCROLL);
    user.doubleClick(left + 200, top + 14);
    settle();
    EXPECT_EQ(takeScrolls(),
              (std::vector<Scroll>{{SB_LINEUP, 0}, {SB_ENDSCROLL, 0}, {SB_LINEUP, 0}, {SB_ENDSCROLL, 0}}));
}

TEST_F(FrameScrollTest, MenuOfARightClickScrollsTheWindow) {
    makeWindow(WS_VSCROLL);
    UserScript script(screen);
    script.inWindow(owner).rightClickAt(0, {200, 80}).pick({"Bottom"});
    EXPECT_TRUE(script.finish()) << script.failure();
    EXPECT_EQ(takeScrolls(), (std::vector<Scroll>{{SB_BOTTOM, 0}, {SB_ENDSCROLL, 0}}));
}

TEST_F(FrameScrollTest, ThumbFollowsThePositionOnTheScreen) {
    const HWND window = makeWindow(WS_VSCROLL);
    SCROLLINFO info = infoOf(SIF_ALL, 0, 115, 58, 0);
    SetScrollInfo(window, SB_VERT, &info, TRUE);
    settle();
    const std::uint32_t shadow = rgbOf(GetSysColor(COLOR_3DDKSHADOW));
    // The thumb's lower edge: arrow 16, thumb 58 long.
    EXPECT_EQ(pixel(left + 200, top + 10 + 16 + 57), shadow);
    SetScrollPos(window, SB_VERT, 20, TRUE);
    EXPECT_EQ(pixel(left + 200, top + 10 + 16 + 20 + 57), shadow) << "painted at once";
}

TEST_F(FrameScrollTest, BarInfoTellsPlaceAndParts) {
    const HWND window = makeWindow(WS_VSCROLL);
    SCROLLBARINFO info{};
    info.cbSize = sizeof info;
    EXPECT_TRUE(GetScrollBarInfo(window, OBJID_VSCROLL, &info));
    const RECT expected{left + 194, top + 10, left + 210, top + 158};
    EXPECT_TRUE(EqualRect(&info.rcScrollBar, &expected));
    EXPECT_EQ(info.dxyLineButton, 16);
    EXPECT_EQ(info.xyThumbTop, 16);
    EXPECT_EQ(info.rgstate[0], 0U);
    EnableScrollBar(window, SB_VERT, ESB_DISABLE_BOTH);
    GetScrollBarInfo(window, OBJID_VSCROLL, &info);
    EXPECT_EQ(info.rgstate[0], STATE_SYSTEM_UNAVAILABLE);
    EXPECT_FALSE(GetScrollBarInfo(window, OBJID_CLIENT, &info)) << "no scroll bar control";
    info.cbSize = 1;
    EXPECT_FALSE(GetScrollBarInfo(window, OBJID_VSCROLL, &info));
}

} // namespace
} // namespace vndk::win32
