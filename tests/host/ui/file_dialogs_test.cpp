// Drawings opened and saved by dialog.
#include "frame_fixture.h"

#include "win32/commdlg.h"
#include "win32/drive_map.h"
#include "win32/messagebox.h"

#include <filesystem>

namespace {

using vndk::test::FrameFixture;
namespace fs = std::filesystem;

class FileDialogsTest : public FrameFixture {
protected:
    void enterName(const std::string& dialog, const std::string& name) {
        user().in(dialog).doubleClick(edt1).type(name).click(IDOK).inWindow(frame_.m_hWnd);
    }
    int drawings() { return host_.documents().documentCount(); }
};

TEST_F(FileDialogsTest, OpensWhatIsChosenOrTyped) {
    savedDrawing("plan.dwg");
    fs::create_directory(folder_ / "more");
    savedDrawing("more/site.dwg");
    user().press('O', {.control = true});
    enterName("Open Drawing", folder_.path());
    user().in("Open Drawing").type("plan\n").inWindow(frame_.m_hWnd);
    user().expect("the drawing", [this] { return drawings() == 2; });
    // The next time it begins in the same place by itself only as far as the user goes there.
    user().type("OPEN\n");
    enterName("Open Drawing", folder_.path());
    user().in("Open Drawing").doubleClickAt(lst1, {20, 28}).doubleClickAt(lst1, {20, 28}).inWindow(frame_.m_hWnd);
    user().expect("the one in the folder", [this] { return drawings() == 3; });
    play();
    EXPECT_TRUE(std::string(document().fileName()).ends_with("site.dwg")) << document().fileName();
    EXPECT_EQ(entityCount(), 1U);
}

TEST_F(FileDialogsTest, CancelOpensNothing) {
    user().press('O', {.control = true}).in("Open Drawing").click(IDCANCEL).inWindow(frame_.m_hWnd);
    user().expect("nothing", [this] { return drawings() == 1; });
    user().type("CIRCLE 1,1 1\n");
    play();
    EXPECT_EQ(entityCount(), 1U);
    EXPECT_NE(history().find("*Cancel*"), std::string::npos);
}

TEST_F(FileDialogsTest, SavesUnderANewNameAndAsksBeforeItReplaces) {
    const std::string old = savedDrawing("old.dwg");
    const auto size = fs::file_size(old);
    user().type("CIRCLE 1,1 1\n9").press(VK_ESCAPE).type("LINE 0,0 1,1\n\n").press('S', {.control = true});
    enterName("Save Drawing As", old);
    user().in("Save Drawing As").click(IDNO).call([&] { EXPECT_EQ(fs::file_size(old), size); });
    enterName("Save Drawing As", folder_ / "new");
    user().expect("the file", [this] { return fs::exists(folder_ / "new.dwg"); });
    // Saving again asks for nothing.
    user().type("CIRCLE 3,3 1\n").press('S', {.control = true}).expect("the former one", [this] {
        return fs::exists(folder_ / "new.bak");
    });
    play();
    EXPECT_EQ(fs::file_size(old), size);
    EXPECT_TRUE(std::string(document().fileName()).ends_with("new.dwg")) << document().fileName();
    EXPECT_FALSE(document().database()->isDirty());
}

TEST_F(FileDialogsTest, Filedia0AsksAtThePromptAndATildeInTheDialog) {
    host_.variables().set("FILEDIA", static_cast<short>(0));
    const std::string plan = savedDrawing("plan.dwg");
    user().type("OPEN\n").expect(
        "the prompt", [this] { return history().find("Enter name of drawing to open") != std::string::npos; });
    user().type("~\n");
    enterName("Open Drawing", plan);
    user().expect("the drawing", [this] { return drawings() == 2; });
    play();
}

TEST_F(FileDialogsTest, InsertsADrawingThatIsChosenAndGivesNamesToLisp) {
    const std::string plan = savedDrawing("plan.dwg");
    user().type("-INSERT ~\n");
    enterName("Select Drawing File", plan);
    user().type("0,0 1 1 0\n").expect("the reference", [this] { return entityCount() == 1; });
    user().type("(strlen (getfiled \"Which one\" \"\" \"dwg\" 0))\n");
    enterName("Which one", plan);
    const std::string length = std::to_string(vndk::win32::DriveMap::current().toDos(plan).value_or("").size());
    user().expect("its name", [this, length] { return history().find("\n" + length + "\n") != std::string::npos; });
    user().type("(null (getfiled \"Which one\" \"\" \"dwg\" 1))\n").in("Which one").click(IDCANCEL);
    user().inWindow(frame_.m_hWnd).expect("none", [this] { return history().ends_with("\nT\n"); });
    play();
}

} // namespace
