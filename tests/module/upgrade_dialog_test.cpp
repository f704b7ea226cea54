// A watched insertion while ATTDIA is on: the dialog "Edit Attribute" on the new reference, on a desktop in memory.
#include "mfc/afx.h"
#include "module/watcher_fixture.h"
#include "platform/temp_folder.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/user_script.h"

using testing::HasSubstr;
using testing::Not;
using vndk::win32::UserScript;

namespace {

constexpr const char* kTitle = "Edit Attribute";
constexpr int kList = 220;
constexpr int kOk = 223;

class UpgradeDialogTest : public WatcherTest {
protected:
    UpgradeDialogTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        application.WriteProfileInt("Vondrake", "DoNotShow", 1);
        EXPECT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600,
                                   nullptr, nullptr));
        host.setMainWindow(frame.m_hWnd);
    }
    ~UpgradeDialogTest() override {
        host.setMainWindow(nullptr);
        frame.DestroyWindow();
    }
    void SetUp() override {
        WatcherTest::SetUp();
        define("A", "one");
        define("B", "two");
        run("(setvar \"ATTDIA\" 1)");
    }

    /// Of the whole drawing: its space is held open while the dialog is up.
    size_t attributeCount() {
        size_t count = 0;
        for (const AcDbStub& stub : database().stubs())
            count += !stub.has(kStubErased) && VNDKAttribute::cast(stub.object) != nullptr;
        return count;
    }

    TempFolder folder;
    CWinApp application{"upgrade-test"};
    vndk::screen::MemoryScreen screen{800, 600};
    vndk::win32::Desktop desktop{screen};
    CFrameWnd frame;
};

TEST_F(UpgradeDialogTest, OneDialogAsksForAllValuesInPlaceOfPrompts) {
    UserScript user(screen);
    user.in(kTitle).waitForWindow();
    user.expect("all attributes exist", [this] { return attributeCount() == 2; });
    user.clickAt(kList, {150, 24}).type("first").press(VK_DOWN).type("second").press(VK_DOWN);
    user.click(kOk).waitUntilGone();
    run("INSERT 1,1");
    EXPECT_TRUE(user.finish()) << user.failure();
    EXPECT_THAT(output, Not(HasSubstr("Prompt <")));
    EXPECT_EQ(drawn(), "intelligent1 'first' 'second'");
    EXPECT_EQ(attreq(), 1);
    run("U");
    EXPECT_EQ(drawn(), "") << "one step, dialog and all";
}

TEST_F(UpgradeDialogTest, CancelLeavesTheDefinitionsTexts) {
    UserScript user(screen);
    user.in(kTitle).waitForWindow().press(VK_ESCAPE).waitUntilGone();
    run("INSERT 1,1");
    EXPECT_TRUE(user.finish()) << user.failure();
    EXPECT_EQ(drawn(), "intelligent1 'one' 'two'");
}

TEST_F(UpgradeDialogTest, NothingIsAskedWhileAttreqIsOff) {
    database().setAttreq(0);
    run("INSERT 1,1"); // no dialog waits for anybody
    EXPECT_EQ(drawn(), "intelligent1 'one' 'two'");
}

} // namespace
