// Scrolling of a window's pixels.
#include "paint_fixture.h"
#include "win32/draw.h"

#include <algorithm>
#include <climits>

namespace {

using namespace vndk::test;

class ScrollTest : public PaintFixture {
protected:
    void SetUp() override {
        PaintFixture::SetUp();
        window = create(WS_POPUP | WS_VISIBLE, nullptr, 100, 100, 100, 80);
        quiet();
    }
    /// Each pixel tells its place.
    static COLORREF mark(int x, int y) { return RGB(x, y, 77); }
    void paintMarks() {
        const HDC dc = GetDC(window);
        for (int y = 0; y < 80; ++y)
            for (int x = 0; x < 100; ++x)
                SetPixelV(dc, x, y, mark(x, y));
        ReleaseDC(window, dc);
    }
    [[nodiscard]] bool shows(int x, int y, COLORREF color) { return pixel(100 + x, 100 + y) == rgbOf(color); }
    std::string scroll(int dx, int dy, const RECT* area, const RECT* clip, UINT flags, RECT* box = nullptr) {
        const HRGN region = CreateRectRgn(0, 0, 0, 0);
        ScrollWindowEx(window, dx, dy, area, clip, region, box, flags);
        const std::string text = textOf(region);
        DeleteObject(region);
        return text;
    }
    HWND window = nullptr;
};

TEST_F(ScrollTest, EveryPixelComesFromWhereItWasOrIsUncovered) {
    const RECT whole{0, 0, 100, 80};
    const RECT part{10, 10, 60, 50};
    const RECT clip{20, 0, 100, 40};
    const struct {
        int dx, dy;
        const RECT* area;
        const RECT* clip;
    } cases[] = {{5, 0, nullptr, nullptr}, {0, -7, nullptr, nullptr},  {-3, 4, nullptr, nullptr},
                 {5, 5, &part, nullptr},   {0, 30, &part, nullptr},    {4, -4, nullptr, &clip},
                 {-6, 3, &part, &clip},    {200, 0, nullptr, nullptr}, {0, INT_MIN, nullptr, nullptr}};
    for (const auto& row : cases) {
        paintMarks();
        RECT box{};
        const RECT area = row.area != nullptr ? *row.area : whole;
        const RECT limit = row.clip != nullptr ? *row.clip : whole;
        const HRGN uncovered = CreateRectRgn(0, 0, 0, 0);
        EXPECT_NE(ScrollWindowEx(window, row.dx, row.dy, row.area, row.clip, uncovered, &box, 0), 0);
        for (int y = 0; y < 80; ++y)
            for (int x = 0; x < 100; ++x) {
                const POINT from{x - std::max(row.dx, -1000), y - std::max(row.dy, -1000)};
                const POINT here{x, y};
                const bool comes = PtInRect(&limit, here) != FALSE && PtInRect(&area, from) != FALSE;
                const bool leaves = PtInRect(&limit, here) != FALSE && PtInRect(&area, here) != FALSE && !comes;
                const COLORREF wanted = comes ? mark(from.x, from.y) : mark(x, y);
                ASSERT_EQ(PtInRegion(uncovered, x, y) != FALSE, leaves)
                    << row.dx << ',' << row.dy << " at " << x << ',' << y;
                ASSERT_TRUE(leaves || shows(x, y, wanted)) << row.dx << ',' << row.dy << " at " << x << ',' << y;
            }
        RECT bounds{};
        GetRgnBox(uncovered, &bounds);
        EXPECT_EQ(textOf(box), textOf(bounds));
        DeleteObject(uncovered);
        EXPECT_EQ(invalid(window), "empty") << "nobody asked for that";
    }
}

TEST_F(ScrollTest, WhatIsUncoveredIsInvalidWhenAsked) {
    EXPECT_EQ(scroll(0, 10, nullptr, nullptr, SW_INVALIDATE), "0,0,100,10");
    EXPECT_EQ(invalid(window), "0,0,100,10");
    settle();
    EXPECT_EQ(recorder.count(WM_ERASEBKGND), 0);
    scroll(0, 10, nullptr, nullptr, SW_INVALIDATE | SW_ERASE);
    settle();
    EXPECT_EQ(recorder.count(WM_ERASEBKGND), 1);
    EXPECT_TRUE(ScrollWindow(window, -5, 0, nullptr, nullptr));
    EXPECT_EQ(invalid(window), "95,0,100,80");
}

TEST_F(ScrollTest, WhatWasInvalidScrollsAlong) {
    const RECT rect{10, 10, 20, 20};
    InvalidateRect(window, &rect, FALSE);
    scroll(5, 30, nullptr, nullptr, 0);
    EXPECT_EQ(invalid(window), "15,40,25,50");
    const RECT upper{0, 0, 100, 45};
    scroll(0, -40, &upper, &upper, 0);
    EXPECT_EQ(invalid(window), "15,0,25,5 15,45,25,50") << "only the part that lies in the scrolled area";
}

TEST_F(ScrollTest, CoveredPixelsAreNotScrolled) {
    paintMarks();
    create(WS_POPUP | WS_VISIBLE, nullptr, 120, 120, 10, 10);
    settle();
    EXPECT_EQ(scroll(0, 15, nullptr, nullptr, 0), "0,0,100,15 20,35,30,45");
}

TEST_F(ScrollTest, ChildrenScrollAlongWhenAsked) {
    const HWND child = create(WS_CHILD | WS_VISIBLE, window, 10, 10, 20, 20);
    const HWND outside = create(WS_CHILD | WS_VISIBLE, window, 70, 60, 20, 20);
    quiet();
    const RECT area{0, 0, 50, 80};
    const HDC dc = GetDC(child);
    SetPixel(dc, 3, 3, RGB(255, 0, 0));
    scroll(0, 8, &area, nullptr, SW_SCROLLCHILDREN);
    EXPECT_EQ(textOf(windowRect(child)), "110,118,130,138");
    EXPECT_EQ(textOf(windowRect(outside)), "170,160,190,180");
    EXPECT_TRUE(shows(13, 21, RGB(255, 0, 0))) << "its pixels went along";
    EXPECT_TRUE(recorder.saw({{WM_MOVE, sent | lparam, 0, MAKELPARAM(10, 18)}}));
    SetPixel(dc, 0, 0, RGB(0, 255, 0));
    EXPECT_TRUE(shows(10, 18, RGB(0, 255, 0))) << "its context went along";
    ReleaseDC(child, dc);
    scroll(0, 8, &area, nullptr, 0);
    EXPECT_EQ(textOf(windowRect(child)), "110,118,130,138") << "not asked";
}

TEST_F(ScrollTest, ContextsScrollWithinTheirClip) {
    paintMarks();
    const HDC dc = GetDC(window);
    IntersectClipRect(dc, 0, 0, 50, 80);
    const HRGN region = CreateRectRgn(0, 0, 0, 0);
    RECT box{};
    EXPECT_TRUE(ScrollDC(dc, 10, 0, nullptr, nullptr, region, &box));
    EXPECT_EQ(textOf(box), "0,0,10,80");
    EXPECT_TRUE(shows(15, 7, mark(5, 7)));
    EXPECT_TRUE(shows(50, 7, mark(50, 7))) << "beyond the clip";
    ReleaseDC(window, dc);
    EXPECT_FALSE(ScrollDC(dc, 10, 0, nullptr, nullptr, region, nullptr)) << "a context that was given back";
    DeleteObject(region);
}

TEST_F(ScrollTest, TheCaretMovesWithItsText) {
    CreateCaret(window, nullptr, 2, 10);
    SetCaretPos(20, 20);
    ShowCaret(window);
    const std::uint32_t inverted = pixel(120, 120);
    const std::uint32_t plain = pixel(140, 140);
    EXPECT_NE(inverted, plain);
    scroll(0, 15, nullptr, nullptr, 0);
    POINT place{};
    GetCaretPos(&place);
    EXPECT_EQ(place.y, 35);
    EXPECT_EQ(pixel(120, 135), inverted);
    EXPECT_EQ(pixel(120, 122), plain) << "nothing of it stays behind";
    DestroyCaret();
    EXPECT_EQ(pixel(120, 135), plain);
}

} // namespace
