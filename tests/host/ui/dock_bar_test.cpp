// The host's dock bar, by a user's events: sides, edge, gripper, menu, and what the profile keeps.
#include "ui/adui_dock_control_bar.h"

#include "platform/temp_folder.h"
#include "support/desktop_fixture.h"
#include "win32/user_script.h"

#include <algorithm>
#include <memory>
#include <string>

namespace {

using vndk::test::DesktopFixture;
using vndk::win32::UserScript;

constexpr UINT kOwnCommand = 0x9001;
constexpr int kWidth = 150;
constexpr int kGripper = 6; // a point in it, from the top
constexpr GUID kTool = {0x12345678, 0x9ABC, 0xDEF0, {1, 2, 3, 4, 5, 6, 7, 8}};

class Palette : public CAdUiDockControlBar {
public:
    CRect room;
    bool mayClose = true;
    bool frameTakesFocus = true;
    bool emptyMenu = false;
    int ownCommands = 0;

    BOOL Make(CFrameWnd& frame, DWORD sides = CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT) {
        const BOOL made = Create(AfxRegisterWndClass(CS_DBLCLKS), "Palette", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN,
                                 CRect(0, 0, kWidth, 300), &frame, 403);
        SetToolID(&kTool);
        EnableDocking(sides);
        return made;
    }

protected:
    bool CanFrameworkTakeFocus() override { return frameTakesFocus; }
    void SizeChanged(CRect* lpRect, BOOL, int) override { room = *lpRect; }
    bool OnClosing() override { return mayClose; }
    void OnUserSizing(UINT, LPRECT rect) override { rect->bottom = std::min<int>(rect->bottom, rect->top + 350); }
    void GetFloatingMinSize(long* width, long* height) override {
        *width = 120;
        *height = 180;
    }
    BOOL AddCustomMenuItems(LPARAM hMenu) override {
        CMenu* const menu = CMenu::FromHandle(reinterpret_cast<HMENU>(hMenu));
        if (emptyMenu)
            while (menu->GetMenuItemCount() > 0)
                menu->RemoveMenu(0, MF_BYPOSITION);
        else
            menu->AppendMenu(MF_STRING, kOwnCommand, "Own");
        return TRUE;
    }
    void OnOwnCommand() { ++ownCommands; }
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Palette, CAdUiDockControlBar)
ON_COMMAND(kOwnCommand, &Palette::OnOwnCommand)
END_MESSAGE_MAP()

/// A frame with its middle and one palette.
struct Workbench {
    Workbench() {
        EXPECT_TRUE(frame.Create(AfxRegisterWndClass(0), "frame", WS_POPUP | WS_VISIBLE | WS_CLIPCHILDREN,
                                 CRect(0, 0, 800, 600)));
        EXPECT_TRUE(middle.CWnd::Create("STATIC", "", WS_CHILD | WS_VISIBLE, CRect(), &frame, AFX_IDW_PANE_FIRST));
        frame.EnableDocking(CBRS_ALIGN_ANY);
        EXPECT_TRUE(bar.Make(frame));
    }
    ~Workbench() { frame.DestroyWindow(); }

    CFrameWnd frame;
    CStatic middle;
    Palette bar;
};

class DockBarTest : public DesktopFixture {
protected:
    DockBarTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        open();
    }
    ~DockBarTest() override { work.reset(); }

    /// A program that starts anew.
    void open() {
        work.reset();
        work = std::make_unique<Workbench>();
        bar().RestoreControlBar(AFX_IDW_DOCKBAR_LEFT);
        settle();
    }
    Palette& bar() { return work->bar; }
    CRect place() { return windowRect(bar().m_hWnd); }
    CRect floatingRect() {
        CRect rect;
        bar().GetFloatingRect(&rect);
        return rect;
    }
    void expectPlace(const CRect& wanted, const char* what) {
        const CRect is = place();
        EXPECT_TRUE(is == wanted) << what << ": " << is.left << ' ' << is.top << ' ' << is.right << ' ' << is.bottom;
    }
    std::string kept() {
        return std::string(application.GetProfileString("DockBars", "{12345678-9ABC-DEF0-0102-030405060708}").View());
    }
    void keep(const char* text) {
        application.WriteProfileString("DockBars", "{12345678-9ABC-DEF0-0102-030405060708}", text);
    }
    void drag(POINT from, POINT to) {
        user.drag(from, to);
        settle();
        wait(600); // no double click with the next
    }
    /// Right click on the gripper, then the item.
    void pick(std::string_view item) {
        UserScript script(screen);
        script.inWindow(bar().m_hWnd).rightClickAt(0, {20, kGripper}).pick({item});
        EXPECT_TRUE(script.finish()) << script.failure();
        settle();
    }

    TempFolder folder;
    CWinApp application{"dock-bar-test"};
    std::unique_ptr<Workbench> work;
};

TEST_F(DockBarTest, StandsAtItsSideWithAnEdgeTowardsTheMiddle) {
    expectPlace({0, 0, kWidth, 600}, "left");
    EXPECT_TRUE(bar().room == CRect(0, 13, kWidth - 4, 600)) << "the edge lies at the right";
    EXPECT_TRUE(CRect(windowRect(work->middle.m_hWnd)) == CRect(kWidth, 0, 800, 600));
    drag({kWidth - 2, 300}, {kWidth + 58, 320});
    expectPlace({0, 0, kWidth + 60, 600}, "wider");
    drag({40, kGripper}, {790, 300});
    expectPlace({800 - kWidth - 60, 0, 800, 600}, "as wide at the right");
    EXPECT_TRUE(CRect(clientRect(bar().m_hWnd)) == CRect(0, 0, kWidth + 56, 600));
    drag({800 - kWidth - 58, 300}, {5, 300});
    expectPlace({100, 0, 800, 600}, "something is left to the middle");
    drag({102, 300}, {799, 300});
    expectPlace({740, 0, 800, 600}, "and to the bar");
    work->frame.MoveWindow(0, 0, 130, 600);
    expectPlace({100, 0, 130, 600}, "in a small frame");
}

TEST_F(DockBarTest, AnEdgeThatIsDraggedShowsWhereItWouldBe) {
    UserScript script(screen);
    const std::uint32_t ground = pixel(400, 300);
    script.call([&] {
        user.moveTo(kWidth - 2, 300);
        user.press();
        user.moveTo(401, 300);
    });
    script.expect("an inverted strip",
                  [&] { return pixel(400, 300) == (ground ^ 0xFFFFFF) && pixel(404, 300) == ground; });
    script.call([&] {
        user.key(VK_ESCAPE);
        user.release();
    });
    EXPECT_TRUE(script.finish()) << script.failure();
    settle();
    EXPECT_EQ(pixel(400, 300), ground);
    expectPlace({0, 0, kWidth, 600}, "given up");
}

TEST_F(DockBarTest, TheGripperTogglesAndItsButtonCloses) {
    EXPECT_EQ(pixel(kWidth - 4 - 6, 6), rgbOf(RGB(0, 0, 0))) << "the cross of the close button";
    user.doubleClick(60, kGripper);
    settle();
    ASSERT_TRUE(bar().IsFloating());
    EXPECT_TRUE(CRect(clientRect(bar().m_hWnd)) == CRect(0, 0, kWidth, 300));
    wait(600);
    const CRect window = floatingRect();
    user.doubleClick(place().left + 60, place().top + kGripper);
    settle();
    expectPlace({0, 0, kWidth, 600}, "back");
    EXPECT_TRUE(floatingRect() == window);
    wait(600);
    bar().mayClose = false;
    user.click(kWidth - 4 - 6, 6);
    settle();
    EXPECT_TRUE(bar().IsWindowVisible()) << "the bar said no";
    bar().mayClose = true;
    wait(600);
    user.drag({kWidth - 4 - 6, 6}, {60, 300});
    settle();
    EXPECT_TRUE(bar().IsWindowVisible()) << "released elsewhere";
    wait(600);
    user.click(kWidth - 4 - 6, 6);
    settle();
    EXPECT_FALSE(bar().IsWindowVisible());
    EXPECT_EQ(windowRect(work->middle.m_hWnd).left, 0);
    bar().RestoreControlBar(AFX_IDW_DOCKBAR_RIGHT);
    settle();
    expectPlace({0, 0, kWidth, 600}, "where it was");
}

TEST_F(DockBarTest, ItsMenuMovesItAndTakesItsOwnersItems) {
    pick("Dock Right");
    expectPlace({800 - kWidth, 0, 800, 600}, "right");
    pick("Own");
    EXPECT_EQ(bar().ownCommands, 1);
    pick("Float");
    EXPECT_TRUE(bar().IsFloating());
    pick("Dock Left");
    pick("Allow Docking");
    ASSERT_TRUE(bar().IsFloating()) << "a bar that mustn't dock floats";
    drag({place().left + 60, place().top + kGripper}, {2, 300});
    EXPECT_TRUE(bar().IsFloating());
    pick("Allow Docking");
    drag({place().left + 60, place().top + kGripper}, {2, 300});
    EXPECT_FALSE(bar().IsFloating());
    bar().emptyMenu = true;
    user.click(60, kGripper, vndk::test::User::Button::right);
    EXPECT_LT(settle(), 100) << "a menu without items doesn't come up";
    bar().emptyMenu = false;
    pick("Hide");
    EXPECT_FALSE(bar().IsWindowVisible());
}

TEST_F(DockBarTest, AFloatingWindowKeepsItsLimits) {
    bar().RestoreControlBar(AFX_IDW_DOCKBAR_LEFT);
    pick("Float");
    CRect window = floatingRect();
    drag({window.right - 2, window.bottom - 2}, {window.left + 10, window.top + 10});
    EXPECT_TRUE(floatingRect() == CRect(window.TopLeft(), CSize(120, 180))) << "the least that the bar wants";
    window = floatingRect();
    drag({window.left + 60, window.bottom - 2}, {window.left + 60, 590});
    EXPECT_EQ(floatingRect().Height(), 350) << "the bar has a say while it is sized";
    EXPECT_EQ(bar().room.top, 13);
}

TEST_F(DockBarTest, StandsInAnotherProgramWhereItWasLeft) {
    pick("Float");
    drag({place().left + 60, place().top - 8}, {420, 200});
    const CRect window = floatingRect();
    drag({window.right - 2, window.bottom - 2}, {window.right + 28, window.bottom + 18});
    open();
    ASSERT_TRUE(bar().IsFloating());
    EXPECT_TRUE(floatingRect() == CRect(window.left, window.top, window.right + 30, window.bottom + 20));
    pick("Dock Right");
    drag({800 - kWidth + 2, 300}, {800 - kWidth - 38, 300});
    pick("Hide");
    open();
    expectPlace({800 - kWidth - 40, 0, 800, 600}, "right, and seen");
    pick("Float");
    EXPECT_TRUE(floatingRect() == CRect(window.left, window.top, window.right + 30, window.bottom + 20));
    pick("Allow Docking");
    open();
    user.doubleClick(place().left + 60, place().top + kGripper);
    settle();
    EXPECT_TRUE(bar().IsFloating()) << "nor may it dock in the next program";
}

TEST_F(DockBarTest, EntriesOfTheProfileThatMakeNoSenseHarmNothing) {
    for (const char* const text :
         {"", "left", "nowhere 150 150 0 0 0 0 1", "left 0 150 0 0 0 0 1", "left -5 150 0 0 0 0 1",
          "left 150 150 9 9 0 0 1", "right 150 150 999999 0 0 0 1", "left a b c d e f g", "top 150 150 0 0 0 0 1"}) {
        keep(text);
        open();
        expectPlace({0, 0, kWidth, 600}, text);
    }
    keep("right 30000 30000 0 0 0 0 1");
    open();
    expectPlace({100, 0, 800, 600}, "wider than the frame");
    keep("floating 150 150 5000 -3000 5200 -2700 1");
    open();
    EXPECT_TRUE(floatingRect() == CRect(760, 0, 960, 300)) << "beyond the screen";
}

TEST_F(DockBarTest, LeavesTheFocusToTheFrameUnlessItWantsIt) {
    work->frame.SetFocus();
    user.click(60, kGripper);
    settle();
    EXPECT_EQ(GetFocus(), work->frame.m_hWnd);
    bar().frameTakesFocus = false;
    wait(600);
    user.click(60, kGripper);
    settle();
    EXPECT_EQ(GetFocus(), bar().m_hWnd);
}

} // namespace
