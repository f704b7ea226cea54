// What becomes invalid, and which pixels move, when windows change place, size, order or visibility.
#include "paint_fixture.h"

namespace {

using namespace vndk::test;

constexpr COLORREF red = RGB(255, 0, 0);

class AreaTest : public PaintFixture {
protected:
    HWND popup(int x, int y, int width, int height, DWORD style = 0) {
        const HWND made = create(WS_POPUP | WS_VISIBLE | style, nullptr, x, y, width, height);
        quiet();
        return made;
    }
    static void dot(HWND window, int x, int y) {
        const HDC dc = GetDC(window);
        SetPixel(dc, x, y, red);
        ReleaseDC(window, dc);
    }
    static void place(HWND window, int x, int y, int width, int height, UINT flags = 0) {
        SetWindowPos(window, nullptr, x, y, width, height, SWP_NOZORDER | SWP_NOACTIVATE | flags);
    }
};

TEST_F(AreaTest, MovedWindowsTakeTheirPixelsAlong) {
    const HWND window = popup(100, 100, 50, 50);
    const HWND child = create(WS_CHILD | WS_VISIBLE, window, 10, 10, 20, 20);
    quiet();
    dot(child, 5, 5);
    for (const POINT step : {POINT{3, 2}, POINT{-7, 30}, POINT{200, -100}, POINT{0, 0}}) {
        const RECT at = windowRect(window);
        place(window, at.left + step.x, at.top + step.y, 50, 50);
        EXPECT_EQ(invalid(window), "empty") << step.x << ',' << step.y;
        EXPECT_EQ(invalid(child), "empty") << step.x << ',' << step.y;
        EXPECT_EQ(pixel(at.left + step.x + 15, at.top + step.y + 15), rgbOf(red)) << step.x << ',' << step.y;
    }
    settle();
    EXPECT_EQ(recorder.count(WM_PAINT), 0);
}

TEST_F(AreaTest, WhatWasOffTheScreenOrCoveredIsPainted) {
    const HWND window = popup(-20, 100, 50, 50);
    place(window, 0, 100, 50, 50);
    EXPECT_EQ(invalid(window), "0,0,20,50");
    quiet();
    const HWND cover = popup(40, 100, 10, 50);
    place(window, 0, 200, 50, 50);
    EXPECT_EQ(invalid(window), "40,0,50,50");
    quiet();
    place(window, 0, 300, 50, 50, SWP_NOCOPYBITS);
    EXPECT_EQ(invalid(window), whole(window)) << "the bits were not to be kept";
    DestroyWindow(cover);
}

TEST_F(AreaTest, ResizedWindowsPaintTheDifferenceUnlessTheirClassWantsAll) {
    const HWND window = popup(100, 100, 50, 50);
    place(window, 100, 100, 70, 60);
    EXPECT_EQ(invalid(window), "50,0,70,50 0,50,70,60");
    quiet();
    place(window, 100, 100, 40, 40);
    EXPECT_EQ(invalid(window), "empty");
    recorder.registerClass("Stretching", CS_HREDRAW);
    const HWND stretching =
        CreateWindow("Stretching", "", WS_POPUP | WS_VISIBLE, 300, 100, 50, 50, nullptr, nullptr, nullptr, nullptr);
    quiet();
    place(stretching, 300, 100, 51, 50);
    EXPECT_EQ(invalid(stretching), whole(stretching));
    quiet();
    place(stretching, 300, 100, 51, 60);
    EXPECT_EQ(invalid(stretching), "0,50,51,60") << "its height doesn't matter";
}

TEST_F(AreaTest, FramedWindowsKeepTheirClientPixels) {
    const HWND window = createFrame();
    dot(window, 7, 8);
    place(window, 60, 70, 350, 260);
    const POINT at = onScreen(window, 7, 8);
    EXPECT_EQ(pixel(at.x, at.y), rgbOf(red));
    EXPECT_EQ(invalid(window), "292,0,342,173 0,173,342,233");
    settle();
    EXPECT_EQ(recorder.count(WM_NCPAINT), 1);
}

TEST_F(AreaTest, WhatComesToLightIsPaintedByWhoLiesThere) {
    const HWND back = popup(100, 100, 200, 200);
    const HWND inner = create(WS_CHILD | WS_VISIBLE, back, 100, 0, 100, 200);
    quiet();
    const HWND front = popup(150, 150, 100, 20);
    const HWND far = popup(400, 400, 50, 50);
    const auto expectExposed = [&](const char* how) {
        EXPECT_EQ(invalid(back), "50,50,150,70") << how << ", it doesn't clip its child";
        EXPECT_EQ(invalid(inner), "0,50,50,70") << how;
        EXPECT_EQ(invalid(far), "empty") << how;
        quiet();
    };
    ShowWindow(front, SW_HIDE);
    expectExposed("hidden");
    ShowWindow(front, SW_SHOWNA);
    EXPECT_EQ(invalid(front), whole(front));
    quiet();
    place(front, 500, 100, 100, 20);
    expectExposed("moved");
    place(front, 150, 150, 100, 20);
    quiet();
    SetWindowPos(front, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    expectExposed("lowered");
    SetWindowPos(front, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_EQ(invalid(front), whole(front)) << "raised";
    quiet();
    DestroyWindow(front);
    expectExposed("destroyed");
}

TEST_F(AreaTest, WithoutRedrawNothingChangesOnTheScreen) {
    const HWND back = popup(100, 100, 200, 200);
    const HWND front = popup(150, 150, 50, 50);
    dot(front, 1, 1);
    place(front, 200, 200, 50, 50, SWP_NOREDRAW);
    EXPECT_EQ(invalid(back), "empty");
    EXPECT_EQ(invalid(front), "empty");
    EXPECT_EQ(pixel(151, 151), rgbOf(red));
    dot(front, 1, 1);
    EXPECT_EQ(pixel(201, 201), rgbOf(red)) << "but painting goes to the new place";
}

TEST_F(AreaTest, WhatWasInvalidMovesAlong) {
    const HWND window = popup(100, 100, 50, 50);
    const RECT rect{10, 10, 30, 30};
    InvalidateRect(window, &rect, FALSE);
    place(window, 120, 130, 50, 50);
    EXPECT_EQ(invalid(window), "10,10,30,30");
    place(window, 120, 130, 20, 20);
    EXPECT_EQ(invalid(window), "10,10,20,20") << "cut to the new size";
}

TEST_F(AreaTest, AParentDoesNotWipeOffWhatMovedOntoItsInvalidPart) {
    const HWND window = popup(100, 100, 50, 50);
    const HWND child = create(WS_CHILD | WS_VISIBLE, window, 20, 20, 20, 20);
    quiet();
    dot(child, 15, 5);
    dot(child, 5, 5);
    const RECT rect{0, 0, 10, 10};
    InvalidateRect(child, &rect, FALSE);
    place(window, 100, 100, 80, 50);
    EXPECT_EQ(invalid(window), "50,0,80,50");
    place(child, 55, 20, 20, 20);
    EXPECT_EQ(invalid(window).find("55,20,65,30"), std::string::npos);
    settle();
    EXPECT_EQ(pixel(170, 125), rgbOf(red)) << "what was valid stays";
    EXPECT_NE(pixel(160, 125), rgbOf(red)) << "what wasn't is painted";
}

TEST_F(AreaTest, TheDesktopPaintsItsOwnGround) {
    const HWND window = popup(100, 100, 50, 50);
    dot(window, 5, 5);
    DestroyWindow(window);
    settle();
    EXPECT_EQ(pixel(105, 105), pixel(700, 500));
    screen.resize(1000, 700);
    settle();
    EXPECT_EQ(screen.surface().width, 1000);
    EXPECT_EQ(windowRect(GetDesktopWindow()).right, 1000);
    const vndk::screen::Surface surface = screen.surface();
    EXPECT_EQ(surface.pixels[999 + 699 * 1000], surface.pixels[0]);
}

} // namespace
