// (c:_bInsertFile ...) while ATTDIA is on: the dialog "Edit Attribute" on the new reference, on a desktop in memory.
#include "mfc/afx.h"
#include "module/file_insertion_fixture.h"
#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/user_script.h"

using testing::ElementsAre;
using testing::HasSubstr;
using vndk::win32::UserScript;

namespace {

constexpr const char* kTitle = "Edit Attribute";
constexpr int kList = 220;
constexpr int kOk = 223;

class InsertFileDialogTest : public FileInsertionTest {
protected:
    InsertFileDialogTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        application.WriteProfileInt("Vondrake", "DoNotShow", 1);
        EXPECT_TRUE(frame.CreateEx(0, AfxRegisterWndClass(0), "frame", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 800, 600,
                                   nullptr, nullptr));
        host.setMainWindow(frame.m_hWnd);
    }
    ~InsertFileDialogTest() override {
        host.setMainWindow(nullptr);
        frame.DestroyWindow();
    }
    void SetUp() override {
        ModuleTest::SetUp();
        run("(setvar \"ATTDIA\" 1)");
    }

    static HWND list() { return ::GetDlgItem(::FindWindowA(nullptr, kTitle), kList); }
    static std::vector<std::string> rows() {
        std::vector<std::string> found;
        for (int row = 0; row < ListView_GetItemCount(list()); ++row) {
            char prompt[300] = "", value[300] = "";
            ListView_GetItemText(list(), row, 0, prompt, sizeof prompt);
            ListView_GetItemText(list(), row, 1, value, sizeof value);
            found.push_back(std::string(prompt) + "=" + value);
        }
        return found;
    }

    /// Inserts the file and types these lines, while a user takes steps in the dialog.
    void insertBy(const std::string& path, const std::function<void(UserScript&)>& steps,
                  const std::string& lines = {}) {
        UserScript user(screen);
        user.in(kTitle).waitForWindow();
        user.expect("no object is open but the definition", [this] {
            const AcDbObjectPointer<AcDbEntity> free(references().back(), AcDb::kForWrite);
            return static_cast<bool>(free);
        });
        steps(user);
        user.waitUntilGone();
        insert(path, lines);
        EXPECT_TRUE(user.finish()) << user.failure();
        EXPECT_FALSE(problem);
    }
    /// Replaces the value of the first row and of those below it, and leaves the box by Enter.
    static void fillIn(UserScript& user, std::initializer_list<const char*> texts) {
        user.expect("the first row stands where it is clicked", [] {
            RECT rect{LVIR_BOUNDS, 0, 0, 0};
            ::SendMessageA(list(), LVM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&rect));
            return ::PtInRect(&rect, POINT{150, 24}) != FALSE;
        });
        user.clickAt(kList, {150, 24});
        for (const char* const text : texts)
            user.type(text).press(VK_DOWN);
    }

    CWinApp application{"insert-file-test"};
    vndk::screen::MemoryScreen screen{800, 600};
    vndk::win32::Desktop desktop{screen};
    CFrameWnd frame;
};

TEST_F(InsertFileDialogTest, AsksOnceForAllValuesWhenAllAttributesExist) {
    const size_t objects = liveObjects();
    insertBy(
        desk(),
        [&](UserScript& user) {
            user.expect("a row for each attribute", [] {
                return rows() == std::vector<std::string>{"Who works here=nobody", "Room=study", "Asset number=0000"};
            });
            fillIn(user, {"Schr\xF6"
                          "der",
                          "K\xFC"
                          "che & Bad"});
            user.click(kOk);
        },
        "(setq seen 5)");
    EXPECT_THAT(output, HasSubstr("\n5\n"));
    EXPECT_THAT(output, testing::Not(HasSubstr("Room <study>"))) << "the command line asks nothing";
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=Schr\xF6"
                                          "der|Schr\xF6"
                                          "der",
                                          "ROOM=K\xFC"
                                          "che & Bad|K\xFC"
                                          "che & Bad",
                                          "ASSET=0000|0000"));
    run("U");
    EXPECT_EQ(liveObjects(), objects) << "the insertion and the values are one step";
    run("REDO");
    EXPECT_EQ(lastValues().size(), 3U);
    ASSERT_EQ(database().saveAs((folder / "saved.dwg").c_str()), Acad::eOk);
    AcDbDatabase drawing(false, true);
    ASSERT_EQ(drawing.readDwgFile((folder / "saved.dwg").c_str()), Acad::eOk);
    ASSERT_EQ(references(drawing).size(), 1U);
    EXPECT_EQ(values(references(drawing)[0]), lastValues());
}

TEST_F(InsertFileDialogTest, CancelKeepsTheReferenceWithTheDefinitionsTexts) {
    insertBy(desk(), [](UserScript& user) {
        fillIn(user, {"never"});
        user.click(IDCANCEL);
    });
    EXPECT_THAT(lastValues(), ElementsAre("OWNER=nobody|nobody", "ROOM=study|study", "ASSET=0000|0000"));
    // The same at a second insertion, of the block that is there now, by the key.
    insertBy(desk(), [](UserScript& user) { user.press(VK_ESCAPE); });
    EXPECT_EQ(references().size(), 2U);
}

TEST_F(InsertFileDialogTest, FormulasRunOnTheValuesOfTheDialogOnly) {
    const std::string path = file("wide.dwg", {defineWide("900")});
    const auto position = [this] { return AcDbObjectPointer<VNDKAttribute>(modelSpace().back())->position(); };
    insertBy(path, [](UserScript& user) { user.click(IDCANCEL); });
    EXPECT_EQ(position(), AcGePoint3d(6, 7, 3)) << "nobody gave a value";
    insertBy(path, [](UserScript& user) { user.click(kOk); });
    EXPECT_EQ(position(), AcGePoint3d(21, 2, 3));
}

TEST_F(InsertFileDialogTest, WithoutRowsNoDialogComes) {
    AcDbAttributeDefinition* const constant = define("C", "1");
    constant->setConstant(true);
    insert(file("none.dwg", {constant}));
    EXPECT_EQ(references().size(), 1U) << "the call came back by itself";
    EXPECT_EQ(::FindWindowA(nullptr, kTitle), nullptr);
}

} // namespace
