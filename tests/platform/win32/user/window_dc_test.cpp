// What a window's context may paint on, and how it keeps up with its window.
#include "paint_fixture.h"

#include <algorithm>

namespace {

using namespace vndk::test;

constexpr COLORREF red = RGB(255, 0, 0);
constexpr COLORREF blue = RGB(0, 0, 255);

class WindowDcTest : public PaintFixture {
protected:
    static void fill(HDC dc, COLORREF color, const RECT& rect = {-1000, -1000, 2000, 2000}) {
        const HBRUSH brush = CreateSolidBrush(color);
        FillRect(dc, &rect, brush);
        DeleteObject(brush);
    }
    static void fill(HWND window, COLORREF color) {
        const HDC dc = GetDC(window);
        fill(dc, color);
        ReleaseDC(window, dc);
    }
    HWND popup(int x, int y, int width, int height, DWORD style = 0) {
        const HWND made = create(WS_POPUP | WS_VISIBLE | style, nullptr, x, y, width, height);
        quiet();
        return made;
    }
    /// Pixels of one colour on the screen, as a rectangle around them.
    std::string areaOf(COLORREF color) {
        RECT area{1000, 1000, 0, 0};
        for (int y = 0; y < screenHeight; ++y)
            for (int x = 0; x < screenWidth; ++x)
                if (pixel(x, y) == rgbOf(color))
                    area = {std::min<LONG>(area.left, x), std::min<LONG>(area.top, y),
                            std::max<LONG>(area.right, x + 1), std::max<LONG>(area.bottom, y + 1)};
        return textOf(area);
    }
};

TEST_F(WindowDcTest, ContextsPaintTheClientAreaOrTheWholeWindow) {
    const HWND window = createFrame();
    fill(window, red);
    POINT corner = onScreen(window, 0, 0);
    EXPECT_EQ(areaOf(red), textOf({corner.x, corner.y, corner.x + 292, corner.y + 173}));
    const HDC dc = GetWindowDC(window);
    fill(dc, blue);
    ReleaseDC(window, dc);
    EXPECT_EQ(areaOf(blue), "40,40,340,240");
}

TEST_F(WindowDcTest, ChildrenAreClippedByTheirParentsAndParentsByTheirStyle) {
    const HWND parentWindow = popup(100, 100, 200, 100);
    const HWND child = create(WS_CHILD | WS_VISIBLE, parentWindow, 150, 50, 100, 100);
    quiet();
    fill(child, red);
    EXPECT_EQ(areaOf(red), "250,150,300,200");
    fill(parentWindow, blue);
    EXPECT_EQ(pixel(260, 160), rgbOf(blue)) << "painted over";
    fill(child, red);
    SetWindowLong(parentWindow, GWL_STYLE, GetWindowLong(parentWindow, GWL_STYLE) | WS_CLIPCHILDREN);
    fill(parentWindow, blue);
    EXPECT_EQ(areaOf(red), "250,150,300,200") << "left out";
    ShowWindow(child, SW_HIDE);
    fill(parentWindow, blue);
    EXPECT_EQ(pixel(260, 160), rgbOf(blue)) << "a hidden child is no hole";
}

TEST_F(WindowDcTest, SiblingsKeepOutOfEachOthersWayByStyle) {
    const HWND parentWindow = popup(100, 100, 200, 100);
    const HWND lower = create(WS_CHILD | WS_VISIBLE, parentWindow, 0, 0, 60, 60);
    const HWND upper = create(WS_CHILD | WS_VISIBLE, parentWindow, 30, 30, 60, 60);
    SetWindowPos(upper, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
    quiet();
    fill(lower, red);
    EXPECT_EQ(pixel(140, 140), rgbOf(red));
    fill(upper, blue);
    SetWindowLong(lower, GWL_STYLE, GetWindowLong(lower, GWL_STYLE) | WS_CLIPSIBLINGS);
    fill(lower, red);
    EXPECT_EQ(pixel(140, 140), rgbOf(blue));
    EXPECT_EQ(pixel(120, 120), rgbOf(red));
}

TEST_F(WindowDcTest, ContextsFollowTheirWindowWhileTheyAreOut) {
    const HWND window = popup(100, 100, 50, 50);
    const HDC dc = GetDC(window);
    const RECT dot{0, 0, 1, 1};
    SetWindowPos(window, nullptr, 200, 300, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    fill(dc, red, dot);
    EXPECT_EQ(areaOf(red), "200,300,201,301");
    const HWND cover = popup(190, 290, 30, 30);
    fill(dc, red);
    EXPECT_EQ(areaOf(red), "200,300,250,350");
    EXPECT_NE(pixel(205, 305), rgbOf(red)) << "covered";
    ShowWindow(window, SW_HIDE);
    fill(dc, blue);
    EXPECT_EQ(areaOf(blue), textOf({1000, 1000, 0, 0})) << "hidden";
    DestroyWindow(cover);
    DestroyWindow(window);
    fill(dc, blue);
    EXPECT_EQ(areaOf(blue), textOf({1000, 1000, 0, 0})) << "dead";
    EXPECT_EQ(ReleaseDC(window, dc), 0);
}

TEST_F(WindowDcTest, OwnContextsKeepTheirAttributesAndClassContextsAreShared) {
    recorder.registerClass("OwnContext", CS_OWNDC);
    recorder.registerClass("ClassContext", CS_CLASSDC);
    const auto make = [](LPCSTR name, int x) {
        return CreateWindow(name, "", WS_POPUP | WS_VISIBLE, x, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
    };
    const HWND own = make("OwnContext", 0);
    const HDC ownDc = GetDC(own);
    SetTextColor(ownDc, red);
    ReleaseDC(own, ownDc);
    EXPECT_EQ(GetDC(own), ownDc);
    EXPECT_EQ(GetTextColor(ownDc), red);

    const HWND first = make("ClassContext", 100);
    const HWND second = make("ClassContext", 200);
    settle();
    const HDC shared = GetDC(first);
    SetTextColor(shared, red);
    EXPECT_EQ(GetDC(second), shared);
    EXPECT_EQ(GetTextColor(shared), red);
    fill(shared, blue);
    EXPECT_EQ(areaOf(blue), "200,0,250,50") << "it belongs to the window that asked last";
    DestroyWindow(second);
    settle();
    EXPECT_EQ(GetDC(first), shared);
    EXPECT_EQ(GetTextColor(shared), red);
    const HWND plain = popup(300, 300, 10, 10);
    const HDC cached = GetDC(plain);
    SetTextColor(cached, red);
    ReleaseDC(plain, cached);
    const HDC again = GetDC(plain);
    EXPECT_EQ(GetTextColor(again), RGB(0, 0, 0)) << "fresh each time";
    ReleaseDC(plain, again);
}

TEST_F(WindowDcTest, RegionsOfTheCallerLimitTheContext) {
    const HWND window = popup(100, 100, 100, 100);
    const struct {
        DWORD flags;
        const char* area;
    } cases[] = {{DCX_CACHE | DCX_INTERSECTRGN, "110,110,120,120"}, {DCX_CACHE, "100,100,200,200"}};
    for (const auto& row : cases) {
        const HRGN region = CreateRectRgn(110, 110, 120, 120);
        const HDC dc = GetDCEx(window, region, row.flags);
        fill(dc, red);
        EXPECT_EQ(areaOf(red), row.area) << row.flags;
        ReleaseDC(window, dc);
        fill(window, RGB(255, 255, 255));
        DeleteObject(region);
    }
    const HDC dc = GetDCEx(window, CreateRectRgn(100, 100, 200, 150), DCX_CACHE | DCX_EXCLUDERGN);
    fill(dc, blue);
    EXPECT_EQ(areaOf(blue), "100,150,200,200");
    ReleaseDC(window, dc);
}

TEST_F(WindowDcTest, ParentContextsReachBeyondTheChild) {
    recorder.registerClass("ParentContext", CS_PARENTDC);
    const HWND parentWindow = popup(100, 100, 200, 100);
    const HWND child = CreateWindow("ParentContext", "", WS_CHILD | WS_VISIBLE, 50, 50, 20, 20, parentWindow, nullptr,
                                    nullptr, nullptr);
    quiet();
    const HDC dc = GetDC(child);
    fill(dc, red, {-10, -10, 5, 5});
    ReleaseDC(child, dc);
    EXPECT_EQ(areaOf(red), "140,140,155,155");
}

TEST_F(WindowDcTest, TheScreensContextPaintsOverAllWindows) {
    popup(100, 100, 100, 100);
    const HDC dc = GetDC(nullptr);
    fill(dc, red, {90, 90, 210, 210});
    ReleaseDC(nullptr, dc);
    EXPECT_EQ(areaOf(red), "90,90,210,210");
}

TEST_F(WindowDcTest, ShapedWindowsPaintAndHitWithinTheirShape) {
    const HWND window = popup(100, 100, 100, 100);
    EXPECT_EQ(SetWindowRgn(window, CreateEllipticRgn(0, 0, 100, 100), TRUE), 1);
    settle();
    fill(window, red);
    EXPECT_NE(pixel(102, 102), rgbOf(red));
    EXPECT_EQ(pixel(150, 150), rgbOf(red));
    EXPECT_NE(WindowFromPoint({102, 102}), window);
    EXPECT_EQ(WindowFromPoint({150, 150}), window);
    const HRGN copy = CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(GetWindowRgn(window, copy), COMPLEXREGION);
    EXPECT_EQ(SetWindowRgn(window, nullptr, TRUE), 1);
    EXPECT_EQ(GetWindowRgn(window, copy), ERROR);
    settle();
    fill(window, red);
    EXPECT_EQ(pixel(102, 102), rgbOf(red));
    DeleteObject(copy);
}

TEST_F(WindowDcTest, OnlyWhatWasPaintedIsPresented) {
    const HWND window = popup(100, 100, 200, 200);
    (void)screen.takePresented();
    settle();
    EXPECT_EQ(screen.takePresented(), 0u) << "nothing changed";
    const HDC dc = GetDC(window);
    fill(dc, red, {10, 10, 20, 15});
    ReleaseDC(window, dc);
    settle();
    EXPECT_EQ(screen.takePresented(), 50u);
    InvalidateRect(window, nullptr, TRUE);
    settle();
    EXPECT_EQ(screen.takePresented(), 50u) << "all was painted, but only this looks different now";
    SetWindowPos(window, nullptr, 110, 100, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    settle();
    EXPECT_EQ(screen.takePresented(), 210u * 200u);
    vndk::screen::Event exposed;
    exposed.kind = vndk::screen::Event::Kind::exposed;
    screen.post(exposed);
    settle();
    EXPECT_EQ(screen.takePresented(), static_cast<std::uint64_t>(screenWidth * screenHeight));
}

} // namespace
