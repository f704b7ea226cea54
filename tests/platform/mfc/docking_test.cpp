// Bars of a frame window: where the layout puts them, and how a user moves them about.
#include "mfc/afx.h"
#include "support/desktop_fixture.h"
#include "win32/user_script.h"

#include <memory>

namespace {

using vndk::test::DesktopFixture;

constexpr int kWidth = 120; // of the bar, docked
const CSize kFloating(160, 200);
constexpr UINT kBarCommand = 0x8100;

/// A tool box of fixed width with nothing in it.
class ToolBox : public CControlBar {
public:
    BOOL Make(CFrameWnd& frame, UINT id) {
        m_dwStyle = CBRS_LEFT | CBRS_SIZE_DYNAMIC;
        return CWnd::Create(AfxRegisterWndClass(CS_DBLCLKS), "Tools", WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50),
                            &frame, id);
    }
    CSize CalcDynamicLayout(int length, DWORD mode) override {
        if ((mode & LM_MRUWIDTH) != 0)
            return kFloating;
        CSize size = CControlBar::CalcDynamicLayout(length, mode);
        ((mode & LM_VERTDOCK) != 0 ? size.cx : size.cy) = kWidth;
        return size;
    }
    void OnUpdateCmdUI(CFrameWnd*, BOOL) override { ++updates; }
    int updates = 0;
};

class Frame : public CFrameWnd {
public:
    int commands = 0;

protected:
    void OnBarCommand() { ++commands; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Frame, CFrameWnd)
ON_COMMAND(kBarCommand, &Frame::OnBarCommand)
END_MESSAGE_MAP()

class DockingTest : public DesktopFixture {
protected:
    void SetUp() override {
        ASSERT_TRUE(frame.Create(AfxRegisterWndClass(0), "frame", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN,
                                 CRect(0, 0, screenWidth, screenHeight)));
        ASSERT_TRUE(middle.CWnd::Create("STATIC", "", WS_CHILD | WS_VISIBLE, CRect(), &frame, AFX_IDW_PANE_FIRST));
        frame.EnableDocking(CBRS_ALIGN_ANY);
        ASSERT_TRUE(tools.Make(frame, 700));
        tools.EnableDocking(CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT);
        frame.DockControlBar(&tools, AFX_IDW_DOCKBAR_LEFT);
        settle();
    }
    void TearDown() override {
        if (frame.m_hWnd != nullptr)
            frame.DestroyWindow();
    }

    static RECT rectOf(const CWnd& window) { return windowRect(window.m_hWnd); }
    void expectAt(const CWnd& window, RECT wanted, const char* what) {
        EXPECT_TRUE(CRect(rectOf(window)) == CRect(wanted))
            << what << ": " << rectOf(window).left << ' ' << rectOf(window).top << ' ' << rectOf(window).right << ' '
            << rectOf(window).bottom;
    }
    [[nodiscard]] CFrameWnd* floatingFrame() const {
        return tools.IsFloating() != FALSE ? tools.GetParentFrame() : nullptr;
    }
    /// A point on the caption of the floating frame.
    [[nodiscard]] POINT caption() const {
        const RECT rect = rectOf(*floatingFrame());
        return {rect.left + 40, rect.top + 10};
    }

    Frame frame;
    CStatic middle;
    ToolBox tools;
};

TEST_F(DockingTest, TheMiddleGetsWhatBarsLeaveOver) {
    expectAt(tools, {0, 0, kWidth, screenHeight}, "docked left");
    expectAt(middle, {kWidth, 0, screenWidth, screenHeight}, "middle");
    ToolBox second;
    ASSERT_TRUE(second.Make(frame, 701));
    second.EnableDocking(CBRS_ALIGN_ANY);
    frame.DockControlBar(&second, AFX_IDW_DOCKBAR_TOP);
    expectAt(second, {0, 0, screenWidth, kWidth}, "top takes the whole width");
    expectAt(tools, {0, kWidth, kWidth, screenHeight}, "left below it");
    const CRect before(0, 0, 10, 10);
    frame.DockControlBar(&second, AFX_IDW_DOCKBAR_LEFT, before);
    expectAt(second, {0, 0, kWidth, screenHeight}, "put before the other");
    expectAt(tools, {kWidth, 0, 2 * kWidth, screenHeight}, "the other");
    frame.ShowControlBar(&tools, FALSE, FALSE);
    expectAt(middle, {kWidth, 0, screenWidth, screenHeight}, "a hidden bar takes no room");
    EXPECT_EQ(frame.GetControlBar(701), &second);
    second.DestroyWindow();
    expectAt(middle, {0, 0, screenWidth, screenHeight}, "nor does one that is gone");
    frame.MoveWindow(0, 0, 90, 300);
    frame.ShowControlBar(&tools, TRUE, FALSE);
    expectAt(tools, {0, 0, 90, 300}, "no wider than the frame");
    CRect left;
    frame.RepositionBars(0, 0xFFFF, AFX_IDW_PANE_FIRST, reposQuery, left);
    EXPECT_TRUE(left == CRect(90, 0, 90, 300));
}

TEST_F(DockingTest, IsDraggedFromSideToSide) {
    user.drag({60, 300}, {760, 320});
    settle();
    expectAt(tools, {screenWidth - kWidth, 0, screenWidth, screenHeight}, "right");
    expectAt(middle, {0, 0, screenWidth - kWidth, screenHeight}, "middle");
    EXPECT_EQ(tools.GetBarStyle() & CBRS_ALIGN_ANY, CBRS_ALIGN_RIGHT);
    user.drag({screenWidth - 60, 300}, {400, 20});
    settle();
    ASSERT_NE(floatingFrame(), nullptr) << "the top isn't among its sides";
    expectAt(middle, {0, 0, screenWidth, screenHeight}, "middle");
    EXPECT_TRUE(CRect(clientRect(tools.m_hWnd)) == CRect(CPoint(), kFloating));
    const RECT before = rectOf(*floatingFrame());
    const POINT held = caption();
    user.drag(held, {held.x + 35, held.y + 50});
    settle();
    expectAt(*floatingFrame(), {before.left + 35, before.top + 50, before.right + 35, before.bottom + 50}, "moved on");
    const HWND former = floatingFrame()->m_hWnd;
    user.drag(caption(), {10, 300});
    settle();
    expectAt(tools, {0, 0, kWidth, screenHeight}, "back at the left");
    EXPECT_FALSE(IsWindow(former)) << "the floating frame has ended";
}

TEST_F(DockingTest, ShowsAnOutlineThatComesOffAgain) {
    const std::uint32_t ground = pixel(400, 460);
    const std::uint32_t inverted = ground ^ 0xFFFFFF;
    vndk::win32::UserScript script(screen);
    script.call([&] {
        user.moveTo(60, 300);
        user.press();
        user.moveTo(460, 310);
    });
    // Grabbed in its middle, the floating frame lies around the pointer, 3 pixels thick.
    const int top = 310 - ::GetSystemMetrics(SM_CYSMCAPTION);
    script.expect("a thick outline", [&] { return pixel(400, top + 2) == inverted && pixel(400, top + 3) == ground; });
    script.call([&] { user.moveTo(780, 310); });
    script.expect("a thin one at the side", [&] {
        return pixel(400, top) == ground && pixel(screenWidth - kWidth, 300) == inverted &&
               pixel(screenWidth - kWidth + 1, 300) == ground;
    });
    script.call([&] {
        user.key(VK_ESCAPE);
        user.release();
    });
    EXPECT_TRUE(script.finish()) << script.failure();
    settle();
    expectAt(tools, {0, 0, kWidth, screenHeight}, "given up");
    EXPECT_EQ(pixel(screenWidth - kWidth, 300), ground);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(DockingTest, CtrlKeepsItFloating) {
    user.keyDown(VK_CONTROL);
    user.drag({60, 300}, {780, 320});
    user.keyUp(VK_CONTROL);
    settle();
    EXPECT_NE(floatingFrame(), nullptr);
}

TEST_F(DockingTest, ADoubleClickTogglesAndRemembersBothPlaces) {
    frame.DockControlBar(&tools, AFX_IDW_DOCKBAR_RIGHT);
    settle();
    user.doubleClick(screenWidth - 60, 300);
    settle();
    ASSERT_NE(floatingFrame(), nullptr);
    const POINT held = caption();
    user.drag(held, {300, 200});
    settle();
    const RECT place = rectOf(*floatingFrame());
    user.doubleClick(caption().x, caption().y);
    settle();
    expectAt(tools, {screenWidth - kWidth, 0, screenWidth, screenHeight}, "right, as before");
    wait(1000);
    user.doubleClick(screenWidth - 60, 300);
    settle();
    ASSERT_NE(floatingFrame(), nullptr);
    expectAt(*floatingFrame(), place, "where it floated before");
}

TEST_F(DockingTest, AFloatingBarFillsItsFrameAndHidesWithIt) {
    frame.FloatControlBar(&tools, CPoint(300, 100));
    settle();
    CFrameWnd* const floating = floatingFrame();
    CString title;
    floating->GetWindowText(title);
    EXPECT_STREQ(title, "Tools");
    const RECT rect = rectOf(*floating);
    user.drag({rect.right - 2, rect.bottom - 2}, {rect.right + 38, rect.bottom + 58});
    settle();
    EXPECT_TRUE(CRect(clientRect(tools.m_hWnd)) == CRect(0, 0, kFloating.cx + 40, kFloating.cy + 60));
    tools.SendMessage(WM_COMMAND, kBarCommand);
    EXPECT_EQ(frame.commands, 1) << "what a bar doesn't handle is the frame's";
    frame.SendMessage(WM_IDLEUPDATECMDUI, TRUE);
    EXPECT_EQ(tools.updates, 1);
    tools.SetFocus();
    user.click(rect.right + 38 - 10, rect.top + 10); // the close button
    settle();
    EXPECT_FALSE(IsWindowVisible(tools.m_hWnd));
    EXPECT_FALSE(IsWindowVisible(floating->m_hWnd));
    EXPECT_EQ(GetFocus(), frame.m_hWnd);
    frame.ShowControlBar(&tools, TRUE, TRUE);
    EXPECT_TRUE(tools.IsVisible());
    EXPECT_FALSE(IsWindowVisible(tools.m_hWnd)) << "only at the next idle time";
    frame.SendMessage(WM_IDLEUPDATECMDUI, TRUE);
    EXPECT_TRUE(IsWindowVisible(tools.m_hWnd));
    const HWND gone = floating->m_hWnd;
    tools.DestroyWindow();
    EXPECT_FALSE(IsWindow(gone)) << "a bar takes its floating frame along";
    EXPECT_EQ(tools.m_pDockBar, nullptr);
}

/// The caption's colour left of the title.
TEST_F(DockingTest, FloatingFramesLookActiveTogetherWithTheirOwner) {
    frame.FloatControlBar(&tools, CPoint(300, 100));
    frame.SetActiveWindow();
    settle();
    const auto captionColor = [&] { return pixel(304, 114); };
    const std::uint32_t active = captionColor();
    EXPECT_EQ(active, rgbOf(GetSysColor(COLOR_ACTIVECAPTION)));
    CWnd other;
    ASSERT_TRUE(
        other.CreateEx(0, AfxRegisterWndClass(0), "", WS_POPUP | WS_VISIBLE, 700, 500, 50, 50, nullptr, nullptr));
    settle();
    EXPECT_NE(captionColor(), active);
    floatingFrame()->SetActiveWindow();
    settle();
    EXPECT_EQ(captionColor(), active);
    EXPECT_EQ(GetFocus(), tools.m_hWnd);
    other.DestroyWindow();
}

TEST_F(DockingTest, BarsAndFramesEndInAnyOrder) {
    auto shortLived = std::make_unique<ToolBox>();
    ASSERT_TRUE(shortLived->Make(frame, 702));
    shortLived->EnableDocking(CBRS_ALIGN_ANY);
    frame.FloatControlBar(shortLived.get(), CPoint(200, 200));
    shortLived.reset();
    EXPECT_EQ(frame.GetControlBar(702), nullptr);
    {
        Frame other;
        ASSERT_TRUE(other.Create(AfxRegisterWndClass(0), "other", WS_POPUP | WS_VISIBLE, CRect(0, 0, 300, 300)));
        other.EnableDocking(CBRS_ALIGN_ANY);
        shortLived = std::make_unique<ToolBox>();
        ASSERT_TRUE(shortLived->Make(other, 703));
        other.DockControlBar(shortLived.get(), AFX_IDW_DOCKBAR_BOTTOM);
    }
    EXPECT_EQ(shortLived->m_hWnd, nullptr);
    EXPECT_EQ(shortLived->m_pDockBar, nullptr);
    EXPECT_EQ(shortLived->GetDockingFrame(), nullptr);
}

} // namespace
