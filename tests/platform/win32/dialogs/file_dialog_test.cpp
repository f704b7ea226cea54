// The dialogs for the names of files, used by a user.
#include "platform/temp_folder.h"
#include "support/desktop_fixture.h"
#include "win32/commdlg.h"
#include "win32/dialog.h"
#include "win32/drive_map.h"
#include "win32/edit.h"
#include "win32/error.h"
#include "win32/files.h"
#include "win32/listview.h"
#include "win32/messagebox.h"
#include "win32/user_script.h"

#include <filesystem>
#include <string>

namespace {

using vndk::test::DesktopFixture;
using vndk::win32::DriveMap;
using vndk::win32::UserScript;
namespace fs = std::filesystem;

class FileDialogTest : public DesktopFixture {
protected:
    FileDialogTest() {
        DriveMap own;
        EXPECT_TRUE(own.map('C', folder_.path()).ok());
        former_ = std::exchange(DriveMap::current(), own);
        folder_.write("b.dwg", "b");
        folder_.write("a.DWG", "a");
        folder_.write("notes.txt", "notes");
        folder_.write(".hidden.dwg", "h");
        folder_.write("Plans/site.dwg", std::string(3000, 's'));
        wanted_.lStructSize = sizeof wanted_;
        wanted_.lpstrFilter = "Drawings (*.dwg)\0*.dwg\0All files (*.*)\0*.*\0";
        wanted_.lpstrFile = name_;
        wanted_.nMaxFile = sizeof name_;
        wanted_.lpstrInitialDir = "C:\\";
        wanted_.lpstrDefExt = "dwg";
    }
    ~FileDialogTest() override { DriveMap::current() = former_; }

    /// The names in the list, joined by blanks.
    static std::string listed() {
        const HWND list = GetDlgItem(GetActiveWindow(), lst1);
        std::string names;
        const auto count = static_cast<int>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0));
        for (int i = 0; i < count; ++i) {
            char text[260] = "";
            LVITEMA item{};
            item.pszText = text;
            item.cchTextMax = sizeof text;
            SendMessageA(list, LVM_GETITEMTEXT, static_cast<WPARAM>(i), reinterpret_cast<LPARAM>(&item));
            names += (names.empty() ? "" : " ") + std::string(text);
        }
        return names;
    }
    bool open(UserScript& user) {
        const BOOL chosen = GetOpenFileNameA(&wanted_);
        EXPECT_EQ(user.failure(), "");
        return chosen != FALSE;
    }
    bool save(UserScript& user) {
        const BOOL chosen = GetSaveFileNameA(&wanted_);
        EXPECT_EQ(user.failure(), "");
        return chosen != FALSE;
    }

    TempFolder folder_;
    DriveMap former_ = DriveMap::standard();
    OPENFILENAMEA wanted_{};
    char name_[MAX_PATH] = "";
};

TEST_F(FileDialogTest, ListsFoldersAndWhatTheKindFits) {
    UserScript user(screen);
    user.in("Open").waitForWindow().call([] { EXPECT_EQ(listed(), "Plans a.DWG b.dwg"); });
    // All files by the combo, others by a mask.
    user.click(cmb1).press(VK_DOWN).press(VK_RETURN).expect("all files",
                                                            [] { return listed() == "Plans a.DWG b.dwg notes.txt"; });
    user.doubleClick(edt1).type("n*.txt").click(IDOK).expect("by mask", [] { return listed() == "Plans notes.txt"; });
    user.click(IDCANCEL);
    EXPECT_FALSE(open(user));
    EXPECT_EQ(CommDlgExtendedError(), 0U);
    EXPECT_STREQ(name_, "");
}

TEST_F(FileDialogTest, GoesThroughFoldersByMouseAndKeyboard) {
    UserScript user(screen);
    const POINT first{20, 28};
    user.in("Open").doubleClickAt(lst1, first).expect("into the folder", [] { return listed() == "site.dwg"; });
    user.click(psh1).expect("up again", [] { return listed() == "Plans a.DWG b.dwg"; });
    user.clickAt(lst1, first).press(VK_RETURN).expect("by Enter", [] { return listed() == "site.dwg"; });
    user.clickAt(lst1, first).press(VK_BACK).expect("by Backspace", [] { return listed() == "Plans a.DWG b.dwg"; });
    user.doubleClick(edt1).type("Plans").press(VK_RETURN).expect("by name", [] { return listed() == "site.dwg"; });
    user.clickAt(lst1, first).click(IDOK);
    ASSERT_TRUE(open(user));
    EXPECT_STREQ(name_, "C:\\Plans\\site.dwg");
    EXPECT_STREQ(name_ + wanted_.nFileOffset, "site.dwg");
    EXPECT_STREQ(name_ + wanted_.nFileExtension, "dwg");
}

TEST_F(FileDialogTest, TakesTypedNamesOfBothForms) {
    for (const std::string& typed : {std::string("b"), std::string("B.DWG"), std::string("C:\\b.dwg"),
                                     std::string("Plans\\..\\b"), folder_ / "b.dwg", std::string("\"b.dwg\"")}) {
        UserScript user(screen);
        name_[0] = '\0';
        user.in("Open").doubleClick(edt1).type(typed).click(IDOK);
        EXPECT_TRUE(open(user)) << typed;
        EXPECT_EQ(std::string(name_), "C:\\b.dwg") << typed;
    }
}

TEST_F(FileDialogTest, RefusesWhatIsntThere) {
    wanted_.Flags = OFN_FILEMUSTEXIST;
    wanted_.lpstrTitle = "Choose";
    UserScript user(screen);
    for (const char* const typed : {"none", "Nowhere\\b", "a<b", "Q:\\b"})
        user.in("Choose").doubleClick(edt1).type(typed).click(IDOK).in("Choose").press(VK_RETURN).pause(50);
    user.in("Choose").doubleClick(edt1).type("b").click(IDOK);
    ASSERT_TRUE(open(user));
    EXPECT_STREQ(name_, "C:\\b.dwg");
}

TEST_F(FileDialogTest, AsksBeforeAFileIsReplaced) {
    wanted_.Flags = OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST;
    std::string start = "C:\\Plans\\site.dwg";
    start.copy(name_, start.size());
    UserScript user(screen);
    user.in("Save As").waitForWindow().call([] { EXPECT_EQ(listed(), "site.dwg"); });
    user.click(IDOK).in("Save As").click(IDNO).in("Save As").doubleClick(edt1).type("site2").click(IDOK);
    ASSERT_TRUE(save(user));
    EXPECT_STREQ(name_, "C:\\Plans\\site2.dwg");
    UserScript again(screen);
    again.in("Save As").doubleClick(edt1).type("site").click(IDOK).in("Save As").click(IDYES);
    ASSERT_TRUE(save(again));
    EXPECT_STREQ(name_, "C:\\Plans\\site.dwg");
}

TEST_F(FileDialogTest, MakesFoldersAndNamesThem) {
    UserScript user(screen);
    user.in("Save As").click(psh2).expect("the folder", [this] { return fs::is_directory(folder_ / "New Folder"); });
    user.type("Site\n").expect("its name", [this] { return fs::is_directory(folder_ / "Site"); });
    user.click(psh2).press(VK_ESCAPE).expect("its first name stays",
                                             [this] { return fs::is_directory(folder_ / "New Folder"); });
    user.doubleClick(edt1).type("Site\\plan").click(IDOK);
    ASSERT_TRUE(save(user));
    EXPECT_STREQ(name_, "C:\\Site\\plan.dwg");
    EXPECT_FALSE(fs::exists(folder_ / "Site/plan.dwg")) << "only a name is asked for";
}

TEST_F(FileDialogTest, TellsErrorsOfTheCaller) {
    wanted_.lStructSize = 10;
    EXPECT_FALSE(GetOpenFileNameA(&wanted_));
    EXPECT_EQ(CommDlgExtendedError(), CDERR_STRUCTSIZE);
    wanted_.lStructSize = sizeof wanted_;
    wanted_.nMaxFile = 5;
    UserScript user(screen);
    user.in("Open").doubleClick(edt1).type("b").click(IDOK);
    EXPECT_FALSE(open(user));
    EXPECT_EQ(CommDlgExtendedError(), FNERR_BUFFERTOOSMALL);
    EXPECT_STREQ(name_, "");
}

} // namespace
