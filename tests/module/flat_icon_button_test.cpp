// The flat icon button's looks by pixels, its hover and clicks by events.
#include "controls/flat_icon_button.h"
#include "support/desktop_fixture.h"

#include <algorithm>
#include <vector>

HINSTANCE ModuleInstance() { return nullptr; }

namespace {

constexpr int kButtonId = 7;
constexpr COLORREF kIconColor = RGB(200, 30, 30);
constexpr COLORREF kHotColor = RGB(30, 30, 200);

HICON makeIcon(COLORREF color, int size) {
    const HDC screenDC = ::GetDC(nullptr);
    const HDC dc = ::CreateCompatibleDC(screenDC);
    const HBITMAP picture = ::CreateCompatibleBitmap(screenDC, size, size);
    const HGDIOBJ former = ::SelectObject(dc, picture);
    const HBRUSH brush = ::CreateSolidBrush(color);
    const RECT all{0, 0, size, size};
    ::FillRect(dc, &all, brush);
    ::SelectObject(dc, former);
    const std::vector<BYTE> opaque(static_cast<std::size_t>(size) * 4, 0);
    const HBITMAP mask = ::CreateBitmap(size, size, 1, 1, opaque.data());
    ICONINFO info{TRUE, 0, 0, mask, picture};
    const HICON icon = ::CreateIconIndirect(&info);
    for (const HGDIOBJ object :
         {static_cast<HGDIOBJ>(brush), static_cast<HGDIOBJ>(picture), static_cast<HGDIOBJ>(mask)})
        ::DeleteObject(object);
    ::DeleteDC(dc);
    ::ReleaseDC(nullptr, screenDC);
    return icon;
}

class Parent : public CWnd {
public:
    int clicks = 0;

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (LOWORD(wParam) == kButtonId && HIWORD(wParam) == BN_CLICKED)
            ++clicks;
        return CWnd::OnCommand(wParam, lParam);
    }
};

class FlatIconButtonTest : public vndk::test::DesktopFixture {
protected:
    static constexpr int left = 50, top = 40, width = 60, height = 30;
    static constexpr int iconSize = 16;

    void make(DWORD style = BS_PUSHBUTTON, LPCSTR caption = "") {
        ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(CS_DBLCLKS), "parent", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300,
                                    nullptr, nullptr));
        ::CreateWindowExA(0, "BUTTON", caption, WS_CHILD | WS_VISIBLE | WS_TABSTOP | style, left, top, width, height,
                          parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kButtonId}), nullptr, nullptr);
        ASSERT_TRUE(button.SubclassDlgItem(kButtonId, &parent));
        settle();
    }
    void TearDown() override { parent.DestroyWindow(); }

    std::uint32_t at(int x, int y) { return pixel(left + x, top + y); }
    static std::uint32_t color(int index) { return rgbOf(::GetSysColor(index)); }
    void hover() {
        user.moveTo(left + width / 2, top + height / 2);
        settle();
    }
    void leave() {
        user.moveTo(left + width + 50, top);
        settle();
    }
    /// The colours of the frame at the middle of the left and of the right side.
    void expectFrame(std::uint32_t leftColor, std::uint32_t rightColor, const char* state) {
        EXPECT_EQ(at(0, height / 2), leftColor) << state;
        EXPECT_EQ(at(width - 1, height / 2), rightColor) << state;
        EXPECT_EQ(at(width / 2, 0), leftColor) << state;
        EXPECT_EQ(at(width / 2, height - 1), rightColor) << state;
    }

    Parent parent;
    CFlatIconButton button;
};

TEST_F(FlatIconButtonTest, ShowsItsFlatBorderOnlyUnderTheMouseAndSunkenWhilePressed) {
    make();
    const std::uint32_t face = color(COLOR_3DFACE);
    expectFrame(face, face, "at rest");
    hover();
    EXPECT_EQ(::GetCapture(), button.m_hWnd);
    expectFrame(color(COLOR_BTNHILIGHT), color(COLOR_BTNSHADOW), "under the mouse");
    user.press();
    settle();
    expectFrame(color(COLOR_BTNSHADOW), color(COLOR_BTNHILIGHT), "pressed");
    user.release();
    settle();
    EXPECT_EQ(parent.clicks, 1);
    leave();
    EXPECT_EQ(::GetCapture(), nullptr);
    // The release took the capture away, which leaves the button lit until the mouse comes and goes once more.
    hover();
    leave();
    expectFrame(face, face, "left");
}

TEST_F(FlatIconButtonTest, DoesNotLightUpUnderAButtonHeldFromOutside) {
    make();
    user.moveTo(left + width + 50, top);
    user.press();
    hover();
    expectFrame(color(COLOR_3DFACE), color(COLOR_3DFACE), "dragged onto");
    EXPECT_EQ(::GetCapture(), nullptr);
    user.release();
    settle();
}

TEST_F(FlatIconButtonTest, TakesADoubleClickAsTwoClicks) {
    make();
    user.doubleClick(left + 5, top + 5);
    settle();
    EXPECT_EQ(parent.clicks, 2);
}

TEST_F(FlatIconButtonTest, LosesItsLightWithTheFocus) {
    make();
    button.SetFocus();
    hover();
    parent.SetFocus();
    settle();
    expectFrame(color(COLOR_3DFACE), color(COLOR_3DFACE), "without focus");
}

TEST_F(FlatIconButtonTest, DrawsTheRaisedLookLineByLine) {
    make();
    button.SetFlat(0);
    settle();
    struct Row {
        int x, y, colorIndex;
        const char* what;
    };
    const Row rows[] = {{0, 5, COLOR_BTNHILIGHT, "left, outer"},
                        {1, 5, COLOR_3DLIGHT, "left, inner"},
                        {5, 0, COLOR_BTNHILIGHT, "top, outer"},
                        {5, 1, COLOR_3DLIGHT, "top, inner"},
                        {width - 1, 5, COLOR_3DDKSHADOW, "right, outer"},
                        {width - 2, 5, COLOR_BTNSHADOW, "right, inner"},
                        {5, height - 1, COLOR_3DDKSHADOW, "bottom, outer"},
                        {5, height - 2, COLOR_BTNSHADOW, "bottom, inner"},
                        {5, 5, COLOR_3DFACE, "inside"}};
    for (const Row& row : rows)
        EXPECT_EQ(at(row.x, row.y), color(row.colorIndex)) << row.what;
    hover();
    EXPECT_EQ(::GetCapture(), nullptr) << "the raised look doesn't track the mouse";
    user.press();
    settle();
    // The press has brought the focus, and with it the black frame around.
    for (const POINT point : {POINT{1, 5}, POINT{5, 1}, POINT{width - 2, 5}, POINT{5, height - 2}})
        EXPECT_EQ(at(point.x, point.y), color(COLOR_BTNSHADOW)) << "pressed, " << point.x << ',' << point.y;
    user.release();
    settle();
}

TEST_F(FlatIconButtonTest, FramesTheDefaultAndTheFocusedRaisedButton) {
    make(BS_DEFPUSHBUTTON);
    button.SetFlat(0);
    settle();
    EXPECT_EQ(at(0, 5), 0U) << "the default button has a black frame";
    EXPECT_EQ(at(1, 5), color(COLOR_BTNHILIGHT));
    button.SetFocus();
    settle();
    // The focus rectangle lies 3 inside of the frame: 4 from the edge, every other pixel inverted.
    int dots = 0;
    for (int x = 4; x < width - 4; ++x)
        dots += at(x, 4) != color(COLOR_3DFACE);
    EXPECT_GT(dots, (width - 8) / 3);
    button.SetFlat(1);
    settle();
    for (int x = 4; x < width - 4; ++x)
        EXPECT_EQ(at(x, 4), color(COLOR_3DFACE)) << "the flat look shows no focus";
}

TEST_F(FlatIconButtonTest, CentresItsIconAndMovesItWhenPressed) {
    make();
    button.SetIconHandles(makeIcon(kHotColor, iconSize), makeIcon(kIconColor, iconSize));
    settle();
    constexpr int iconLeft = (width - iconSize) / 2;
    constexpr int iconTop = (height - iconSize) / 2;
    EXPECT_EQ(at(iconLeft, iconTop), rgbOf(kIconColor));
    EXPECT_NE(at(iconLeft - 1, iconTop), rgbOf(kIconColor));
    EXPECT_EQ(at(iconLeft + iconSize - 1, iconTop + iconSize - 1), rgbOf(kIconColor));
    hover();
    EXPECT_EQ(at(iconLeft, iconTop), rgbOf(kHotColor));
    user.press();
    settle();
    EXPECT_NE(at(iconLeft, iconTop), rgbOf(kHotColor));
    EXPECT_EQ(at(iconLeft + 1, iconTop + 1), rgbOf(kHotColor));
    EXPECT_EQ(at(iconLeft + iconSize, iconTop + iconSize), rgbOf(kHotColor));
    user.release();
    settle();
}

TEST_F(FlatIconButtonTest, PutsItsIconLeftOfACaption) {
    make(BS_PUSHBUTTON, "Go");
    button.SetIconHandles(makeIcon(kIconColor, iconSize), nullptr);
    settle();
    constexpr int iconTop = (height - iconSize) / 2;
    EXPECT_NE(at(2, iconTop), rgbOf(kIconColor));
    EXPECT_EQ(at(3, iconTop), rgbOf(kIconColor));
    // The text stands in the middle of what is left.
    int first = width;
    int last = 0;
    for (int y = 0; y < height; ++y)
        for (int x = 3 + iconSize; x < width; ++x)
            if (at(x, y) == color(COLOR_BTNTEXT)) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
    ASSERT_LT(first, last) << "there is text";
    EXPECT_NEAR((first + last) / 2, (3 + iconSize + width) / 2, 2);
}

TEST_F(FlatIconButtonTest, DrawsDisabledIconAndTextWithoutTheirColours) {
    make(BS_PUSHBUTTON, "Go");
    button.SetIconHandles(makeIcon(kIconColor, iconSize), nullptr);
    button.EnableWindow(FALSE);
    settle();
    bool shadow = false;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            EXPECT_NE(at(x, y), rgbOf(kIconColor));
            shadow = shadow || at(x, y) == color(COLOR_BTNSHADOW);
        }
    EXPECT_TRUE(shadow);
    user.click(left + 5, top + 5);
    settle();
    EXPECT_EQ(parent.clicks, 0);
}

TEST_F(FlatIconButtonTest, KeepsOneToolTipAndChangesItsText) {
    make();
    const auto tip = [] { return ::FindWindowA(TOOLTIPS_CLASS, nullptr); };
    button.SetToolTip("first", TRUE);
    button.SetToolTip("second", TRUE);
    ASSERT_NE(tip(), nullptr);
    EXPECT_EQ(::SendMessageA(tip(), TTM_GETTOOLCOUNT, 0, 0), 1);
    char text[80] = "";
    TOOLINFO tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = button.m_hWnd;
    tool.uId = 1;
    tool.lpszText = text;
    ::SendMessageA(tip(), TTM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(&tool));
    EXPECT_STREQ(text, "second");
}

TEST_F(FlatIconButtonTest, PaintsWithoutIconAndTakesNullHandles) {
    make();
    button.SetIcons(4711, 0);
    settle();
    EXPECT_EQ(at(width / 2, height / 2), color(COLOR_3DFACE));
}

} // namespace
