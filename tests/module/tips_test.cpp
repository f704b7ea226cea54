// The tips that greet the user, by events on a screen in memory.
#include "mfc/afx.h"
#include "module/module_fixture.h"
#include "platform/temp_folder.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/user_script.h"

#include <cstdlib>
#include <filesystem>
#include <functional>

using testing::HasSubstr;
using testing::StartsWith;
using vndk::win32::UserScript;

namespace {

constexpr const char* kTitle = "Getting Started Tips";
constexpr int kText = 269;
constexpr int kDoNotShow = 270;
constexpr const char* kLoadLines = "\nVondrake Free version loaded.\nType BLOCKS to activate the dockable dialog box.";

class TipsTest : public ModuleTest {
protected:
    TipsTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        setenv("TMPDIR", folder.path().c_str(), 1);
    }
    ~TipsTest() override { unsetenv("TMPDIR"); }
    void SetUp() override {}

    int doNotShow() { return static_cast<int>(application.GetProfileInt("Vondrake", "DoNotShow", -1)); }

    /// Loads the module while a user takes the steps, and unloads it again.
    void greet(const std::function<void(UserScript&)>& steps) {
        output.clear();
        UserScript user(screen);
        user.in(kTitle);
        steps(user);
        loadModule();
        EXPECT_TRUE(user.finish()) << user.failure();
        host.linker().unloadModule("VNDKKeldmoor.arx");
        EXPECT_THAT(output, HasSubstr(kLoadLines));
    }

    TempFolder folder;
    CWinApp application{"tips-test"};
    vndk::screen::MemoryScreen screen{800, 600};
    vndk::win32::Desktop desktop{screen};
};

TEST_F(TipsTest, ShowTheRichTextAndCloseByTheDefaultButton) {
    greet([&](UserScript& user) {
        user.expect("the text is there", [] {
            const HWND text = ::GetDlgItem(::FindWindowA(nullptr, kTitle), kText);
            char begin[64] = "";
            ::GetWindowTextA(text, begin, sizeof begin);
            return std::string(begin).starts_with("Vondrake Freeware Version\r\nThank You\r\nThank you for");
        });
        user.click(IDOK).waitUntilGone();
    });
    EXPECT_EQ(doNotShow(), -1) << "OK alone writes nothing";
    EXPECT_THAT(folder.read("readme.rtf"), StartsWith("{\\rtf1"));
}

TEST_F(TipsTest, StayAwayOnceTheBoxWasTicked) {
    greet([](UserScript& user) { user.click(kDoNotShow).press(VK_RETURN).waitUntilGone(); });
    EXPECT_EQ(doNotShow(), 1);
    // No dialog waits for anybody: the load ends by itself.
    loadModule();
    EXPECT_EQ(::FindWindowA(nullptr, kTitle), nullptr);
    EXPECT_THAT(output, HasSubstr(kLoadLines));
}

TEST_F(TipsTest, TheBoxWritesAtOnceAndClearingItWritesNought) {
    greet([&](UserScript& user) {
        user.click(kDoNotShow).expect("1 is written", [&] { return doNotShow() == 1; });
        user.click(kDoNotShow).expect("0 is written", [&] { return doNotShow() == 0; });
        user.press(VK_ESCAPE).waitUntilGone();
    });
    EXPECT_EQ(doNotShow(), 0);
}

TEST_F(TipsTest, NeedNoMouse) {
    const auto focusOn = [](int id) {
        return [id] { return ::GetFocus() == ::GetDlgItem(::FindWindowA(nullptr, kTitle), id); };
    };
    greet([&](UserScript& user) {
        user.expect("the focus is on OK", focusOn(IDOK));
        user.press(VK_TAB).expect("the focus is on the text", focusOn(kText));
        user.press(VK_NEXT).expect("Page Down scrolls", [] {
            const HWND text = ::GetDlgItem(::FindWindowA(nullptr, kTitle), kText);
            return ::GetScrollPos(text, SB_VERT) > 0;
        });
        user.press(VK_TAB).expect("the focus is on the box", focusOn(kDoNotShow));
        user.press(VK_SPACE).expect("the box is ticked", [&] { return doNotShow() == 1; });
        user.press(VK_TAB).press(VK_SPACE).waitUntilGone();
    });
}

TEST_F(TipsTest, FindTheirTemporaryFolderWithAndWithoutSeparator) {
    for (const char* const end : {"", "/"}) {
        std::filesystem::remove(folder / "readme.rtf");
        setenv("TMPDIR", (folder.path() + end).c_str(), 1);
        greet([](UserScript& user) { user.click(IDOK).waitUntilGone(); });
        EXPECT_TRUE(std::filesystem::exists(folder / "readme.rtf")) << "folder ends in \"" << end << '"';
    }
}

TEST_F(TipsTest, ShowTheTextAlsoWhenTheirFileCannotBeWritten) {
    // A second name of somebody's file lies where the tips' own file should, in a folder that is everybody's.
    const std::string other = folder.write("other", "somebody's");
    std::filesystem::create_directory(folder / "shared");
    std::filesystem::permissions(folder / "shared", std::filesystem::perms(01777));
    std::filesystem::create_hard_link(other, folder / "shared/readme.rtf");
    for (const char* const temporary : {"missing", "shared", "no name in the code page \u4e2d"}) {
        setenv("TMPDIR", (folder / temporary).c_str(), 1);
        greet([](UserScript& user) {
            user.expect("the text is there", [] {
                return ::GetWindowTextLengthA(::GetDlgItem(::FindWindowA(nullptr, kTitle), kText)) > 500;
            });
            user.click(IDOK).waitUntilGone();
        });
    }
    EXPECT_EQ(folder.read("other"), "somebody's");
}

} // namespace
