// Frames: their sizes, hit tests, mouse and look.
#include "support/desktop_fixture.h"
#include "support/message_recorder.h"
#include "user/window_position.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/metrics.h"

#include <algorithm>

namespace {

using namespace vndk::test;

class FrameTest : public DesktopFixture {
protected:
    static constexpr int left = 100;
    static constexpr int top = 80;
    static constexpr int width = 300;
    static constexpr int height = 200;

    void SetUp() override { recorder.registerClass(); }
    void TearDown() override { EXPECT_EQ(vndk::win32::verifyWindows(), ""); }

    HWND create(DWORD style = WS_OVERLAPPEDWINDOW, DWORD exStyle = 0, HWND parent = nullptr,
                LPCSTR className = MessageRecorder::className) {
        const HWND window = CreateWindowEx(exStyle, className, "text", style | WS_VISIBLE, left, top, width, height,
                                           parent, nullptr, nullptr, nullptr);
        settle();
        recorder.clear();
        return window;
    }
    static LRESULT hitTest(HWND window, int x, int y) { return SendMessage(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)); }
    /// The middle of the first place in the caption that answers `part`.
    static POINT find(HWND window, LRESULT part) {
        const RECT rect = windowRect(window);
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                if (hitTest(window, x, y) == part)
                    return {x + 4, y + 4};
        ADD_FAILURE() << "no part " << part;
        return {0, 0};
    }
    [[nodiscard]] std::vector<UINT> messagesAmong(std::initializer_list<UINT> wanted) const {
        std::vector<UINT> found;
        for (const RecordedMessage& each : recorder.messages())
            if (std::find(wanted.begin(), wanted.end(), each.message) != wanted.end())
                found.push_back(each.message);
        return found;
    }

    MessageRecorder recorder;
};

TEST_F(FrameTest, AModalFrameShowsAnIconOnlyWhenItWasGivenOne) {
    const HWND window = create(WS_POPUP | WS_CAPTION | WS_SYSMENU, WS_EX_DLGMODALFRAME);
    constexpr int x = left + 13, y = top + 12;
    const auto caption = [&] {
        std::vector<std::uint32_t> pixels;
        for (int at = left + 3; at < left + 40; ++at)
            pixels.push_back(pixel(at, y));
        return pixels;
    };
    const auto bare = caption();
    EXPECT_EQ(hitTest(window, x, y), HTCAPTION);
    SendMessage(window, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(LoadIcon(nullptr, IDI_ERROR)));
    settle();
    EXPECT_NE(caption(), bare);
    EXPECT_EQ(hitTest(window, x, y), HTSYSMENU);
    SendMessage(window, WM_SETICON, ICON_SMALL, 0);
    settle();
    EXPECT_EQ(caption(), bare);
}

TEST_F(FrameTest, StylesMakeTheClientAreaSmaller) {
    struct {
        const char* name;
        DWORD style;
        DWORD exStyle;
        int side;
        int above;
    } const rows[] = {
        {"bare", WS_POPUP, 0, 0, 0},
        {"border", WS_POPUP | WS_BORDER, 0, 1, 1},
        {"dialog frame", WS_POPUP | WS_DLGFRAME, 0, 3, 3},
        {"modal dialog frame", WS_POPUP | WS_CAPTION, WS_EX_DLGMODALFRAME, 3, 22},
        {"caption", WS_POPUP | WS_CAPTION, 0, 3, 22},
        {"small caption", WS_POPUP | WS_CAPTION, WS_EX_TOOLWINDOW, 3, 19},
        {"overlapped", WS_OVERLAPPEDWINDOW, 0, 4, 23},
        {"client edge", WS_POPUP, WS_EX_CLIENTEDGE, 2, 2},
        {"static edge", WS_POPUP, WS_EX_STATICEDGE, 1, 1},
        {"all at once", WS_OVERLAPPEDWINDOW, WS_EX_CLIENTEDGE | WS_EX_DLGMODALFRAME, 6, 25},
    };
    for (const auto& row : rows) {
        RECT rect{100, 100, 200, 200};
        ASSERT_TRUE(AdjustWindowRectEx(&rect, row.style, FALSE, row.exStyle)) << row.name;
        EXPECT_EQ(rect.left, 100 - row.side) << row.name;
        EXPECT_EQ(rect.bottom, 200 + row.side) << row.name;
        EXPECT_EQ(rect.top, 100 - row.above) << row.name;
        const HWND window = create(row.style, row.exStyle);
        EXPECT_EQ(clientRect(window).right, width - 2 * row.side) << row.name;
        EXPECT_EQ(onScreen(window, 0, 0).y, top + row.above) << row.name;
        DestroyWindow(window);
    }
    RECT withMenu{0, 0, 10, 10};
    AdjustWindowRect(&withMenu, WS_OVERLAPPEDWINDOW, TRUE);
    EXPECT_EQ(withMenu.top, -23 - GetSystemMetrics(SM_CYMENU));
    EXPECT_FALSE(AdjustWindowRect(nullptr, 0, FALSE));
}

TEST_F(FrameTest, ScrollBarsTakeTheirBreadthOnlyWhenThereIsRoom) {
    const HWND window = create(WS_POPUP | WS_VSCROLL | WS_HSCROLL);
    EXPECT_EQ(clientRect(window).right, width - GetSystemMetrics(SM_CXVSCROLL));
    EXPECT_EQ(clientRect(window).bottom, height - GetSystemMetrics(SM_CYHSCROLL));
    SetWindowPos(window, nullptr, 0, 0, 10, 8, SWP_NOMOVE);
    EXPECT_EQ(clientRect(window).right, 10);
    EXPECT_EQ(clientRect(window).bottom, 8);
}

TEST_F(FrameTest, HitTestNamesTheParts) {
    const HWND window = create();
    const int right = left + width;
    const int bottom = top + height;
    struct {
        const char* name;
        int x;
        int y;
        LRESULT part;
    } const rows[] = {{"client", left + 50, top + 50, HTCLIENT},
                      {"caption", left + 100, top + 10, HTCAPTION},
                      {"line below the caption", left + 100, top + 22, HTCAPTION},
                      {"left side", left + 1, top + 100, HTLEFT},
                      {"right side", right - 1, top + 100, HTRIGHT},
                      {"top side", left + 100, top + 3, HTTOP},
                      {"bottom side", left + 100, bottom - 1, HTBOTTOM},
                      {"first pixel", left, top, HTTOPLEFT},
                      {"top right", right - 1, top + 6, HTTOPRIGHT},
                      {"bottom left", left + 5, bottom - 1, HTBOTTOMLEFT},
                      {"last pixel", right - 1, bottom - 1, HTBOTTOMRIGHT},
                      {"icon", left + 10, top + 12, HTSYSMENU},
                      {"close button", right - 12, top + 12, HTCLOSE},
                      {"outside", right, top + 50, HTNOWHERE}};
    for (const auto& row : rows)
        EXPECT_EQ(hitTest(window, row.x, row.y), row.part) << row.name;
    const HWND fixed = create(WS_POPUP | WS_CAPTION);
    EXPECT_EQ(hitTest(fixed, left + 1, top + 100), HTBORDER);
    EXPECT_EQ(hitTest(fixed, left, top), HTBORDER);
    ShowWindow(window, SW_SHOWMAXIMIZED);
    EXPECT_EQ(hitTest(window, 0, 300), HTCLIENT);
    EXPECT_EQ(hitTest(window, -2, 300), HTBORDER) << "a maximised window can't be sized";
}

TEST_F(FrameTest, CaptionButtonsActWhenTheMouseGoesUpOverThem) {
    const HWND window = create();
    const POINT maximize = find(window, HTMAXBUTTON);
    user.moveTo(maximize.x, maximize.y);
    user.press();
    user.moveTo(maximize.x - 150, maximize.y + 60);
    user.release();
    settle();
    EXPECT_FALSE(IsZoomed(window)) << "let go beside it";
    user.click(maximize.x, maximize.y);
    settle();
    EXPECT_TRUE(IsZoomed(window));
    const POINT restore = find(window, HTMAXBUTTON);
    user.click(restore.x, restore.y);
    settle();
    EXPECT_FALSE(IsZoomed(window));
    const POINT minimize = find(window, HTMINBUTTON);
    user.click(minimize.x, minimize.y);
    settle();
    EXPECT_TRUE(IsIconic(window));
    ShowWindow(window, SW_RESTORE);
    const POINT close = find(window, HTCLOSE);
    user.click(close.x, close.y);
    settle();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(FrameTest, ClassesWithoutCloseKeepTheirButtonStill) {
    recorder.registerClass("NoClose", CS_NOCLOSE);
    const HWND window = create(WS_OVERLAPPEDWINDOW, 0, nullptr, "NoClose");
    const POINT close = find(window, HTCLOSE);
    user.click(close.x, close.y);
    settle();
    user.keyWith(VK_MENU, VK_F4);
    settle();
    EXPECT_TRUE(IsWindow(window));
    EXPECT_EQ(recorder.count(WM_CLOSE), 0);
}

TEST_F(FrameTest, WindowFollowsItsDraggedCaption) {
    const HWND window = create();
    user.drag({left + 100, top + 10}, {left + 130, top + 50});
    settle();
    EXPECT_EQ(windowRect(window).left, left + 30);
    EXPECT_EQ(windowRect(window).top, top + 40);
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(messagesAmong({WM_NCLBUTTONDOWN, WM_SYSCOMMAND, WM_GETMINMAXINFO, WM_ENTERSIZEMOVE, WM_MOVING,
                             WM_WINDOWPOSCHANGED, WM_CAPTURECHANGED, WM_EXITSIZEMOVE}),
              (std::vector<UINT>{WM_NCLBUTTONDOWN, WM_SYSCOMMAND, WM_GETMINMAXINFO, WM_ENTERSIZEMOVE, WM_MOVING,
                                 WM_WINDOWPOSCHANGED, WM_CAPTURECHANGED, WM_EXITSIZEMOVE}));
}

TEST_F(FrameTest, EscapeGivesADraggedWindowItsPlaceBack) {
    const HWND window = create();
    user.moveTo(left + 100, top + 10);
    user.press();
    user.moveTo(left + 160, top + 70);
    user.key(VK_ESCAPE);
    user.release();
    settle();
    EXPECT_EQ(windowRect(window).left, left);
    EXPECT_EQ(windowRect(window).top, top);
}

TEST_F(FrameTest, BorderDragSizesWithinTheLimits) {
    struct {
        const char* name;
        POINT from;
        POINT by;
        RECT expected;
    } const rows[] = {
        {"right side", {left + width - 1, top + 100}, {40, 7}, {left, top, left + width + 40, top + height}},
        {"top side", {left + 100, top + 2}, {9, -20}, {left, top - 20, left + width, top + height}},
        {"top left corner", {left + 1, top + 1}, {10, 20}, {left + 10, top + 20, left + width, top + height}},
        {"below the least width",
         {left + 1, top + 100},
         {290, 0},
         {left + width - GetSystemMetrics(SM_CXMINTRACK), top, left + width, top + height}},
    };
    for (const auto& row : rows) {
        const HWND window = create();
        user.drag(row.from, {row.from.x + row.by.x, row.from.y + row.by.y});
        settle();
        const RECT rect = windowRect(window);
        EXPECT_TRUE(std::equal(&rect.left, &rect.left + 4, &row.expected.left))
            << row.name << ": " << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom;
        DestroyWindow(window);
    }
}

TEST_F(FrameTest, HandlerOfSizingDecides) {
    const HWND window = create();
    recorder.onMessage(WM_SIZING, [](HWND, UINT, WPARAM edge, LPARAM lParam) -> std::optional<LRESULT> {
        EXPECT_EQ(edge, WMSZ_RIGHT);
        reinterpret_cast<RECT*>(lParam)->right = left + 333;
        return TRUE;
    });
    user.drag({left + width - 1, top + 100}, {left + width + 5, top + 100});
    settle();
    EXPECT_EQ(windowRect(window).right, left + 333);
}

TEST_F(FrameTest, WindowCanBeDestroyedWhileItIsDragged) {
    for (const UINT message : {WM_MOVING, WM_ENTERSIZEMOVE, WM_EXITSIZEMOVE, WM_CAPTURECHANGED}) {
        const HWND window = create();
        recorder.onMessage(message, [](HWND dragged, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
            DestroyWindow(dragged);
            return std::nullopt;
        });
        user.drag({left + 100, top + 10}, {left + 130, top + 50});
        settle();
        EXPECT_FALSE(IsWindow(window)) << nameOfMessage(message);
        recorder.onMessage(message, nullptr);
    }
}

TEST_F(FrameTest, KeysMoveAndSizeAWindow) {
    const HWND window = create();
    PostMessage(window, WM_SYSCOMMAND, SC_MOVE, 0);
    user.key(VK_RIGHT);
    user.key(VK_RIGHT);
    user.key(VK_DOWN);
    user.key(VK_RETURN);
    settle();
    EXPECT_EQ(windowRect(window).left, left + 16);
    EXPECT_EQ(windowRect(window).top, top + 8);
    PostMessage(window, WM_SYSCOMMAND, SC_SIZE, 0);
    user.key(VK_RIGHT); // chooses the side
    user.key(VK_RIGHT);
    user.key(VK_RETURN);
    settle();
    EXPECT_EQ(windowRect(window).right - windowRect(window).left, width + 8);
}

TEST_F(FrameTest, DoubleClickOnTheCaptionMaximizesAndRestores) {
    const HWND window = create();
    user.doubleClick(left + 100, top + 10);
    settle();
    EXPECT_TRUE(IsZoomed(window));
    screen.advance(2000);
    user.doubleClick(300, 10);
    settle();
    EXPECT_FALSE(IsZoomed(window));
    const HWND fixed = create(WS_POPUP | WS_CAPTION | WS_SYSMENU);
    screen.advance(2000);
    user.doubleClick(left + 100, top + 10);
    settle();
    EXPECT_FALSE(IsZoomed(fixed));
}

TEST_F(FrameTest, AltF4ClosesTheTopLevelWindow) {
    const HWND window = create();
    const HWND child = create(WS_CHILD, 0, window);
    SetFocus(child);
    user.keyWith(VK_MENU, VK_F4);
    settle();
    EXPECT_FALSE(IsWindow(window));
}

TEST_F(FrameTest, RequestsClimbToTheParent) {
    const HWND window = create();
    const HWND child = create(WS_CHILD, 0, window);
    SetWindowPos(child, nullptr, 0, 0, 100, 50, SWP_NOZORDER | SWP_NOACTIVATE);
    SetFocus(child);
    const POINT point = onScreen(child, 10, 10);
    struct {
        const char* name;
        UINT message;
        std::function<void()> act;
    } const rows[] = {
        {"right click", WM_CONTEXTMENU, [&] { user.click(point.x, point.y, vndk::screen::MouseButton::right); }},
        {"menu key", WM_CONTEXTMENU, [&] { user.key(VK_APPS); }},
        {"Shift+F10", WM_CONTEXTMENU, [&] { user.keyWith(VK_SHIFT, VK_F10); }},
        {"F1", WM_HELP, [&] { user.key(VK_F1); }},
        {"wheel", WM_MOUSEWHEEL, [&] { user.turnWheel(120); }},
    };
    for (const auto& row : rows) {
        recorder.clear();
        row.act();
        settle();
        EXPECT_EQ(recorder.count(row.message, child), 1) << row.name;
        EXPECT_EQ(recorder.count(row.message, window), 1) << row.name;
    }
}

TEST_F(FrameTest, CaptionShowsWhetherTheWindowIsActive) {
    const HWND first = create();
    const POINT inCaption{left + 150, top + 10};
    const auto active = pixel(inCaption.x, inCaption.y);
    const HWND second = CreateWindow(MessageRecorder::className, "", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 450, 300, 200,
                                     100, nullptr, nullptr, nullptr, nullptr);
    settle();
    EXPECT_NE(pixel(inCaption.x, inCaption.y), active);
    SetActiveWindow(first);
    settle();
    EXPECT_EQ(pixel(inCaption.x, inCaption.y), active);
    EXPECT_TRUE(IsWindow(second));
    // The first band of the gradient is the plain colour.
    EXPECT_EQ(pixel(left + 4, top + 4), rgbOf(GetSysColor(COLOR_ACTIVECAPTION)));
}

TEST_F(FrameTest, BordersHaveTheClassicPixels) {
    const HWND window = create();
    struct {
        const char* name;
        int x;
        int y;
        int color;
    } const rows[] = {{"outer light", left, top + 100, COLOR_3DLIGHT},
                      {"inner light", left + 1, top + 100, COLOR_3DHIGHLIGHT},
                      {"border", left + 2, top + 100, COLOR_ACTIVEBORDER},
                      {"face", left + 3, top + 100, COLOR_3DFACE},
                      {"outer dark", left + width - 1, top + 100, COLOR_3DDKSHADOW},
                      {"inner dark", left + width - 2, top + 100, COLOR_3DSHADOW},
                      {"line below the caption", left + 100, top + 22, COLOR_3DFACE}};
    for (const auto& row : rows)
        EXPECT_EQ(pixel(row.x, row.y), rgbOf(GetSysColor(row.color))) << row.name;
    DestroyWindow(window);
    create(WS_POPUP | WS_BORDER);
    EXPECT_EQ(pixel(left, top + 50), rgbOf(GetSysColor(COLOR_WINDOWFRAME)));
}

TEST_F(FrameTest, NewTitleIsPaintedAtOnce) {
    const HWND window = create();
    std::vector<std::uint32_t> before;
    const auto caption = [&] {
        std::vector<std::uint32_t> pixels;
        for (int x = left + 20; x < left + 150; ++x)
            pixels.push_back(pixel(x, top + 12));
        return pixels;
    };
    before = caption();
    SetWindowText(window, "another title");
    EXPECT_NE(caption(), before);
    char text[8];
    EXPECT_EQ(GetWindowText(window, text, sizeof text), 7);
    EXPECT_STREQ(text, "another");
    EXPECT_EQ(GetWindowTextLength(window), 13);
}

TEST_F(FrameTest, PrintedWindowLooksAsOnTheScreen) {
    recorder.registerClass("Printed");
    const HWND window = create();
    SetClassLongPtr(window, GCL_HBRBACKGROUND, COLOR_WINDOW + 1);
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW);
    const HDC screenDC = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screenDC);
    const HBITMAP bitmap = CreateCompatibleBitmap(screenDC, width, height);
    const HGDIOBJ former = SelectObject(memory, bitmap);
    SendMessage(window, WM_PRINT, reinterpret_cast<WPARAM>(memory),
                PRF_NONCLIENT | PRF_CLIENT | PRF_ERASEBKGND | PRF_CHILDREN);
    int different = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            different += rgbOf(GetPixel(memory, x, y)) != pixel(left + x, top + y) ? 1 : 0;
    EXPECT_EQ(different, 0);
    SelectObject(memory, former);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screenDC);
}

TEST_F(FrameTest, MaximizedWindowsFollowTheScreen) {
    const HWND window = create();
    ShowWindow(window, SW_SHOWMAXIMIZED);
    const HWND iconic = create();
    ShowWindow(iconic, SW_MINIMIZE);
    settle();
    screen.resize(1000, 700);
    settle();
    EXPECT_EQ(windowRect(GetDesktopWindow()).right, 1000);
    EXPECT_EQ(windowRect(window).right, 1000 + GetSystemMetrics(SM_CXFRAME));
    EXPECT_EQ(windowRect(iconic).bottom, 700);
    EXPECT_EQ(recorder.count(WM_DISPLAYCHANGE, window), 1);
    EXPECT_EQ(pixel(999, 350), pixel(500, 350)) << "all of it is painted";
}

TEST_F(FrameTest, PointFindsTheWindowBehindTransparentAndDisabledOnes) {
    const HWND window = create();
    const HWND behind = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 0, 0, 100, 100, window,
                                     nullptr, nullptr, nullptr);
    const HWND front = CreateWindow(MessageRecorder::className, "", WS_CHILD | WS_VISIBLE, 0, 0, 50, 50, window,
                                    nullptr, nullptr, nullptr);
    SetWindowPos(front, HWND_TOP, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE);
    const POINT point = onScreen(window, 10, 10);
    EXPECT_EQ(WindowFromPoint(point), front);
    recorder.onMessage(WM_NCHITTEST, [&](HWND tested, UINT, WPARAM, LPARAM) -> std::optional<LRESULT> {
        return tested == front ? std::optional<LRESULT>(HTTRANSPARENT) : std::nullopt;
    });
    EXPECT_EQ(WindowFromPoint(point), behind);
    recorder.onMessage(WM_NCHITTEST, nullptr);
    EnableWindow(front, FALSE);
    EXPECT_EQ(WindowFromPoint(point), window) << "the parent of a disabled child";
    EXPECT_EQ(ChildWindowFromPoint(window, {10, 10}), front) << "asks nobody";
    EXPECT_EQ(ChildWindowFromPointEx(window, {10, 10}, CWP_SKIPDISABLED), behind);
    EXPECT_EQ(ChildWindowFromPoint(window, {150, 150}), window);
    EXPECT_EQ(ChildWindowFromPoint(window, {-1, 5}), nullptr);
    EXPECT_EQ(ChildWindowFromPoint(window, {2147483647, 2147483647}), nullptr);
}

} // namespace
