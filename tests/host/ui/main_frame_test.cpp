// The main window: drawings in tabs, menu and keys, modes, and the questions before something is lost.
#include "frame_fixture.h"

#include "dwg/drawing_reader.h"
#include "ui/canvas.h"
#include "ui/document_tabs.h"
#include "ui/status_line.h"
#include "ui/text_window.h"
#include "win32/drive_map.h"
#include "win32/messagebox.h"

#include <filesystem>

namespace {

using vndk::test::FrameFixture;
namespace fs = std::filesystem;

constexpr int kOrthoKey = VK_F1 + 7;
constexpr int kSnapKey = VK_F1 + 2;

class MainFrameTest : public FrameFixture {
protected:
    std::string tabText(int index) {
        char text[260] = "";
        TCITEM item{};
        item.mask = TCIF_TEXT;
        item.pszText = text;
        item.cchTextMax = sizeof text;
        SendMessageA(frame_.tabs().tabs().m_hWnd, TCM_GETITEM, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(&item));
        return text;
    }
    int tabCount() { return frame_.tabs().tabs().GetItemCount(); }
    int drawings() { return host_.documents().documentCount(); }
    std::string dosName(const std::string& path) { return vndk::win32::DriveMap::current().toDos(path).value_or(""); }
    Acad::ErrorStatus open(const std::string& path) { return host_.documents().appContextOpenDocument(path.c_str()); }
};

TEST_F(MainFrameTest, DrawingsStandInTabsAndTheTitle) {
    ASSERT_EQ(open(savedDrawing("plan.dwg")), Acad::eOk);
    user().expect("the tabs", [this] { return tabCount() == 2 && frame_.tabs().tabs().GetCurSel() == 1; });
    user().expect("the title", [this] { return title() == dosName(folder_ / "plan.dwg") + " - vondrake"; });
    user().type("CIRCLE 1,1 1\n").expect("the mark", [this] { return tabText(1) == "plan.dwg *"; });
    user().type("QSAVE\n").expect("no mark", [this] { return tabText(1) == "plan.dwg"; });
    user().press(VK_TAB, {.control = true}).expect("the other drawing", [this] {
        return frame_.tabs().tabs().GetCurSel() == 0 && title() == "Drawing1.dwg - vondrake" &&
               screen.title() == title();
    });
    user().press(VK_TAB, {.shift = true, .control = true}).expect("back", [this] {
        return frame_.tabs().tabs().GetCurSel() == 1;
    });
    // By mouse, while a prompt waits: that ends first.
    user().type("CIRCLE ").clickPlace("the first tab", [this] {
        return vndk::win32::UserPlace{frame_.tabs().tabs().m_hWnd, {20, 10}};
    });
    user().expect("the first drawing", [this] { return title() == "Drawing1.dwg - vondrake"; });
    user().type("CIRCLE 1,1 1\n").expect("a circle in it", [this] { return entityCount() == 1; });
    play();
}

TEST_F(MainFrameTest, ClosingAsksAboutChanges) {
    const std::string path = savedDrawing("plan.dwg");
    ASSERT_EQ(open(path), Acad::eOk);
    const auto size = fs::file_size(path);
    user().type("CIRCLE 1,1 1\n").press(VK_F4, {.control = true});
    user().in("vondrake").click(IDCANCEL).inWindow(frame_.m_hWnd);
    user().expect("it stays open", [this] { return drawings() == 2; });
    user().press(VK_F4, {.control = true}).in("vondrake").click(IDYES).inWindow(frame_.m_hWnd);
    user().expect("it is closed", [this] { return drawings() == 1 && tabCount() == 1; });
    // Nothing has changed in the one that is left.
    user().press(VK_F4, {.control = true}).expect("no drawing", [this] { return drawings() == 0; });
    user().expect("the bare title", [this] { return title() == "vondrake"; });
    user().press('N', {.control = true}).expect("a new drawing", [this] { return drawings() == 1; });
    play();
    EXPECT_GT(fs::file_size(path), size);
    EXPECT_TRUE(fs::exists(folder_ / "plan.bak"));
}

TEST_F(MainFrameTest, LeavingAsksForEachDrawing) {
    const std::string path = savedDrawing("plan.dwg");
    ASSERT_EQ(open(path), Acad::eOk);
    const auto size = fs::file_size(path);
    user().type("CIRCLE 1,1 1\n").press(VK_TAB, {.control = true}).type("CIRCLE 2,2 1\n");
    user().pick({"File", "Exit"});
    user().in("vondrake").click(IDNO).in("vondrake").click(IDCANCEL).inWindow(frame_.m_hWnd);
    user().expect("the program goes on", [this] { return !host_.quitRequested() && drawings() == 2; });
    user().call([this] { frame_.PostMessage(WM_CLOSE); });
    user().in("vondrake").click(IDNO).in("vondrake").click(IDNO);
    user().inWindow(frame_.m_hWnd).expect("it ends", [this] { return host_.quitRequested(); });
    play();
    EXPECT_EQ(fs::file_size(path), size);
}

TEST_F(MainFrameTest, ADrawingIsOpenOnceByWhateverName) {
    const std::string path = savedDrawing("plan.dwg");
    fs::create_symlink(path, folder_ / "link.dwg");
    ASSERT_EQ(open(path), Acad::eOk);
    AcApDocument* const first = host_.documents().curDocument();
    ASSERT_EQ(host_.documents().appContextNewDocument(nullptr), Acad::eOk);
    for (const std::string& name : {folder_ / "link.dwg", folder_ / "PLAN.DWG", dosName(path)}) {
        ASSERT_EQ(open(name), Acad::eOk) << name;
        EXPECT_EQ(host_.documents().curDocument(), first) << name;
    }
    EXPECT_EQ(drawings(), 3);
}

TEST_F(MainFrameTest, AFileThatCantBeOpenedIsToldInABox) {
    folder_.write("broken.dwg", "AC1015 and nothing behind it");
    host_.variables().set("FILEDIA", static_cast<short>(0));
    user().type("OPEN\n").type(folder_ / "broken.dwg").type("\n");
    user().in("vondrake").click(IDOK).inWindow(frame_.m_hWnd);
    user().expect("the others stay", [this] { return drawings() == 1; });
    user().type("CIRCLE 1,1 1\n").expect("and work", [this] { return entityCount() == 1; });
    play();
}

TEST_F(MainFrameTest, ADrawingOfAnotherProgramIsOfferedForReading) {
    const std::string path = savedDrawing("plan.dwg");
    AcDbDatabase other(false);
    ASSERT_TRUE(vndk::dwg::lockDrawing(other, path));
    host_.variables().set("FILEDIA", static_cast<short>(0));
    user().type("OPEN\n").type(path).type("\n").in("vondrake").click(IDNO);
    user().in("vondrake").click(IDOK).inWindow(frame_.m_hWnd);
    user().expect("it isn't open", [this] { return drawings() == 1; });
    user().type("OPEN\n").type(path).type("\n").in("vondrake").click(IDYES).inWindow(frame_.m_hWnd);
    user().expect("it is open", [this] { return drawings() == 2 && document().isReadOnly(); });
    user().expect("and says so", [this] { return title().find("(read-only)") != std::string::npos; });
    play();
}

TEST_F(MainFrameTest, MenusTypeCommandsAndCancelWhatWaits) {
    user().type("LINE 0,0 ").pick({"Draw", "Circle"}).type("5,5 2\n");
    user().expect("the circle alone", [this] { return entityCount() == 1; });
    user().press('Z', {.control = true}).expect("nothing", [this] { return entityCount() == 0; });
    user().press('Y', {.control = true}).expect("the circle", [this] { return entityCount() == 1; });
    play();
    EXPECT_NE(history().find("_CIRCLE"), std::string::npos);
}

TEST_F(MainFrameTest, ItemsAreGreyWhileTheyCantAct) {
    const HMENU edit = GetSubMenu(GetMenu(frame_.m_hWnd), 1);
    const auto grey = [&](UINT position) { return (GetMenuState(edit, position, MF_BYPOSITION) & MF_GRAYED) != 0; };
    SendMessageA(frame_.m_hWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(edit), 1);
    EXPECT_TRUE(grey(0)) << "nothing to undo";
    EXPECT_TRUE(grey(1)) << "nothing to redo";
    user().type("CIRCLE 5,5 2\n");
    play();
    SendMessageA(frame_.m_hWnd, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(edit), 1);
    EXPECT_FALSE(grey(0));
    EXPECT_TRUE(grey(1));
}

TEST_F(MainFrameTest, StatusLineShowsUnitsAndTurnsModes) {
    const HWND status = frame_.statusLine().m_hWnd;
    const auto clickMode = [&](int mode) {
        user().clickPlace("a mode", [this, status, mode] {
            return vndk::win32::UserPlace{status, frame_.statusLine().modeRect(mode).CenterPoint()};
        });
    };
    clickMode(0);
    user().expect("ortho", [this] { return host_.variables().getShort("ORTHOMODE") == 1; });
    user().press(kOrthoKey).expect("no ortho", [this] { return host_.variables().getShort("ORTHOMODE") == 0; });
    const short snaps = host_.variables().getShort("OSMODE");
    user().press(kSnapKey).expect("no snaps",
                                  [this, snaps] { return host_.variables().getShort("OSMODE") == (snaps ^ 16384); });
    clickMode(1);
    user().expect("snaps", [this, snaps] { return host_.variables().getShort("OSMODE") == snaps; });
    clickMode(2);
    user().expect("paper space", [this] { return host_.variables().getShort("TILEMODE") == 0; });
    play();
    const auto shownIn = [&](short units, short precision) {
        host_.variables().set("LUNITS", units);
        host_.variables().set("LUPREC", precision);
        frame_.statusLine().showCursor({15.5, 2, 0});
        return frame_.statusLine().coordinates();
    };
    EXPECT_EQ(shownIn(2, 2), "15.50, 2.00, 0.00");
    EXPECT_EQ(shownIn(4, 1), "1'-3 1/2\", 2\", 0\"");
}

TEST_F(MainFrameTest, LayoutLeavesNothingOut) {
    for (const auto& [width, height] : {std::pair(1280, 800), std::pair(800, 600), std::pair(320, 200)}) {
        screen.resize(width, height);
        settle();
        const RECT frame = clientRect(frame_.m_hWnd);
        const LONG top = onScreen(frame_.m_hWnd, 0, 0).y;
        LONG bottom = top;
        for (const HWND part : {frame_.tabs().m_hWnd, frame_.canvas().m_hWnd}) {
            EXPECT_EQ(windowRect(part).top, bottom) << width;
            bottom = windowRect(part).bottom;
        }
        EXPECT_LE(bottom, windowRect(frame_.statusLine().m_hWnd).top);
        EXPECT_EQ(windowRect(frame_.statusLine().m_hWnd).bottom, top + frame.bottom) << width;
        EXPECT_EQ(windowRect(frame_.statusLine().m_hWnd).right, width);
    }
}

TEST_F(MainFrameTest, HelpListsCommandsAndKeys) {
    user().press(VK_F1).expect("the text window", [this] { return frame_.textWindow().isOpen(); });
    play();
    EXPECT_NE(history().find("CIRCLE"), std::string::npos);
    EXPECT_NE(history().find("Ctrl+Shift+S"), std::string::npos);
}

} // namespace
