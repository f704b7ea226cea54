// The list of drawings on real folders, by real clicks and keys, and what it has the host do.
#include "module/palette/palette_fixture.h"
#include "palette/dwg_list_box.h"
#include "palette/host_helpers.h"
#include "previews/dwg_thumbnail.h"
#include "resources/resource.h"
#include "support/message_recorder.h"
#include "win32/user_script.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <random>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

std::vector<std::string> g_attached;

} // namespace

// In place of the way to the host's external references.
void AttachXref(CString strPath, CString strFileName) {
    g_attached.push_back(std::string(strPath) + " as " + std::string(strFileName));
}

namespace {

constexpr int kListId = 202;
constexpr int kLeft = 10, kTop = 20, kWidth = 202, kHeight = 400; // a frame of one pixel around

class DwgListBoxTest : public PaletteTest {
protected:
    DwgListBoxTest() {
        g_attached.clear();
        ::CreateWindowExA(0, "LISTBOX", "",
                          WS_CHILD | WS_VISIBLE | WS_BORDER | WS_VSCROLL | WS_TABSTOP | LBS_NOTIFY |
                              LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT,
                          kLeft, kTop, kWidth, kHeight, parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kListId}),
                          nullptr, nullptr);
        EXPECT_TRUE(list.SubclassDlgItem(kListId, &parent));
        list.LoadImages();
    }
    ~DwgListBoxTest() override { parent.DestroyWindow(); }

    void addFolders(std::initializer_list<const char*> names) {
        for (const char* name : names)
            std::filesystem::create_directories(std::filesystem::path(folder / "t") / name);
    }
    void addDrawings(std::initializer_list<const char*> names) {
        for (const char* name : names)
            folder.write(std::string("t/") + name, thumbnailFile({{2, plainPicture(20, 14, {255, 0, 0})}}));
    }
    /// Folders in brackets.
    std::vector<std::string> rows() {
        std::vector<std::string> found;
        for (int row = 0; row < list.GetCount(); ++row) {
            CString text;
            list.GetText(row, text);
            found.push_back(list.GetItemData(row) == 0 ? "[" + std::string(text) + "]" : std::string(text));
        }
        return found;
    }
    std::vector<int> heights() {
        std::vector<int> found;
        for (int row = 0; row < list.GetCount(); ++row)
            found.push_back(list.GetItemHeight(row));
        return found;
    }
    /// Entries whose file has been read.
    std::vector<std::string> readEntries() {
        std::vector<std::string> names;
        for (POSITION at = list.m_listEntries.GetHeadPosition(); at;)
            if (auto* entry = static_cast<CDwgThumbnail*>(list.m_listEntries.GetNext(at)); entry->loaded)
                names.emplace_back(entry->name);
        return names;
    }
    /// The height that a drawing's row has in the client area as it is.
    int tall() {
        CRect rc;
        list.GetClientRect(rc);
        return 126 * rc.Width() / 180 + 19;
    }
    POINT middle(int row) {
        CRect rc;
        list.GetItemRect(row, rc);
        return onScreen(list.m_hWnd, 60, rc.top + 8);
    }
    void click(int row, vndk::test::User::Button button = vndk::test::User::Button::left) {
        const POINT point = middle(row);
        user.click(point.x, point.y, button);
        deliver();
    }
    void doubleClick(int row) {
        const POINT point = middle(row);
        user.doubleClick(point.x, point.y);
        deliver();
    }
    /// Opens the menu on a row and picks an entry of it.
    void pickFromMenu(int row, const char* text) {
        CRect rc;
        list.GetItemRect(row, rc);
        vndk::win32::UserScript script(screen);
        script.inWindow(parent.m_hWnd).rightClickAt(kListId, POINT{60, rc.top + 8});
        script.pick({text});
        EXPECT_TRUE(script.finish()) << script.failure();
        deliver();
    }
    /// Of the host's LISP.
    std::string valueOf(const std::string& symbol) {
        output.clear();
        host.runText("!" + symbol + "\n");
        const std::size_t end = output.find_last_not_of('\n');
        const std::size_t begin = output.rfind('\n', end) + 1;
        return output.substr(begin, end + 1 - begin);
    }
    /// The host keeps what c:_bInsertFile is called with.
    void catchInsertion() {
        host.runText("(defun c:_bInsertFile (name point) (setq got (list name point)) (princ))\n(setq got nil)\n");
    }

    CDwgListBox list;
};

TEST_F(DwgListBoxTest, ShowsFoldersThenDrawingsInTheOrderOfSmallLetters) {
    addFolders({"b", "A", "c", "_x", "a.b", "\u00dcbung"});
    addDrawings({"Z.dwg", "a.dwg", "B 1.DWG", "_.dwg", "T\u00fcr.dwg"});
    folder.write("t/note.txt", "");
    addFolders({"old.dwg"});
    list.FillList("T:\\");
    EXPECT_THAT(rows(), ElementsAre("[_x]", "[A]", "[b]", "[c]",
                                    "[\xDC"
                                    "bung]",
                                    "_.dwg", "a.dwg", "B 1.DWG", "T\xFCr.dwg", "Z.dwg"));
    EXPECT_THAT(heights(), ElementsAre(17, 17, 17, 17, 17, tall(), tall(), tall(), tall(), tall()));
    EXPECT_EQ(list.GetCurSel(), -1);
    EXPECT_STREQ(list.m_strDirectory, "T:\\");
    EXPECT_EQ(list.m_listEntries.GetCount(), 10);
    EXPECT_EQ(readEntries().size(), 1U) << "the first that the disk told of, and no other";
    list.FillList("T:\\a\\");
    EXPECT_THAT(rows(), IsEmpty());
}

TEST_F(DwgListBoxTest, KeepsTheFolderItselfOutOfItsRows) {
    addFolders({"dwg/dwg", "dwg/in"});
    for (const char* path : {"T:\\dwg", "T:\\dwg\\", "t:\\DWG\\"}) {
        list.FillList(path);
        EXPECT_THAT(rows(), ElementsAre("[dwg]", "[in]")) << path;
        EXPECT_STREQ(list.m_strDirectory, path);
    }
    for (const char* path : {"T:\\", "T:"}) {
        list.FillList(path);
        EXPECT_THAT(rows(), ElementsAre("[dwg]")) << path;
    }
    for (const char* path : {"", "\\", "Desktop", "T:\\gone", "Q:\\"}) {
        list.FillList(path);
        EXPECT_THAT(rows(), IsEmpty()) << path;
        EXPECT_STREQ(list.m_strDirectory, path);
    }
}

TEST_F(DwgListBoxTest, SortsManyNamesAsARowByRowWalkWould) {
    std::mt19937 random(7);
    std::vector<std::string> names;
    for (int i = 0; i < 400; ++i) {
        std::string name;
        for (unsigned length = 1 + random() % 3; length > 0; --length)
            name += "aAbB_z-9 "[random() % (name.empty() ? 8 : 9)];
        names.push_back(name + "x.dwg");
        folder.write("t/" + names.back(), "");
    }
    list.FillList("T:\\");
    // Told by the system in its order; each before the first row that is greater.
    std::vector<std::pair<std::string, std::string>> walked;
    WIN32_FIND_DATAA data;
    const HANDLE search = ::FindFirstFileA("T:\\*.dwg", &data);
    do {
        CString key(data.cFileName);
        key.MakeLower();
        auto at = walked.begin();
        while (at != walked.end() && !(at->first > std::string(key)))
            ++at;
        walked.insert(at, {std::string(key), data.cFileName});
    } while (::FindNextFileA(search, &data));
    ::FindClose(search);
    std::vector<std::string> expected;
    for (const auto& [key, name] : walked)
        expected.push_back(name);
    EXPECT_EQ(rows(), expected);
    EXPECT_GT(rows().size(), 150U);
}

TEST_F(DwgListBoxTest, GoesIntoAFolderAtAClickAndNotesIt) {
    addFolders({"a/b"});
    addDrawings({"a/b/x.dwg", "y.dwg"});
    list.FillList("T:\\");
    click(0);
    EXPECT_STREQ(list.m_strDirectory, "T:\\a");
    EXPECT_THAT(rows(), ElementsAre("[b]"));
    EXPECT_EQ(profileText("Directory"), "T:\\a");
    EXPECT_EQ(list.GetCurSel(), -1);
    list.UpOneLevel();
    EXPECT_STREQ(list.m_strDirectory, "T:");
    EXPECT_THAT(rows(), ElementsAre("[a]", "y.dwg"));
    click(1);
    EXPECT_EQ(list.GetCurSel(), 1) << "a drawing is selected only";
    EXPECT_STREQ(list.m_strDirectory, "T:");
    list.UpOneLevel();
    EXPECT_STREQ(list.m_strDirectory, "");
    EXPECT_THAT(rows(), IsEmpty());
    list.UpOneLevel();
    EXPECT_EQ(profileText("Directory"), "T:\\a");
    EXPECT_STREQ(list.m_strDirectory, "");
}

TEST_F(DwgListBoxTest, ActsTwiceAtADoubleClickOnAFolder) {
    addFolders({"a/b/c"});
    list.FillList("T:\\");
    doubleClick(0);
    EXPECT_STREQ(list.m_strDirectory, "T:\\a\\b") << "the second press finds the row that is there by then";
}

TEST_F(DwgListBoxTest, HasTheHostInsertADrawing) {
    addFolders({"a b"});
    addDrawings({"a b/T\u00fcr 1.dwg", "root.dwg"});
    catchInsertion();
    list.FillList("T:\\");
    host.commandLine().input().feed("1,2.5,3\n");
    doubleClick(1);
    EXPECT_EQ(valueOf("got"), "(\"T:/root.dwg\" (1.0 2.5 3.0))");
    list.FillList("T:\\a b");
    host.commandLine().input().feed("-7,0\n");
    doubleClick(0);
    EXPECT_EQ(valueOf("got"), "(\"T:/a b/T\xFCr 1.dwg\" (-7.0 0.0 0.0))");

    host.runText("(setq got nil)\n");
    host.commandLine().input().feed("\x1b\n");
    doubleClick(0);
    EXPECT_EQ(valueOf("got"), "nil") << "no point, no insertion";
    EXPECT_EQ(list.m_nHitIndex, 0);
    user.doubleClick(kLeft + 60, kTop + kHeight - 10);
    deliver();
    EXPECT_EQ(valueOf("got"), "nil") << "there is no row";
}

TEST_F(DwgListBoxTest, FitsItsRowsToItsWidth) {
    addDrawings({"a.dwg", "b.dwg"});
    addFolders({"f"});
    list.FillList("T:\\");
    list.FitItemHeight(100);
    EXPECT_THAT(heights(), ElementsAre(17, 89, 89));
    list.FitItemHeight(0);
    EXPECT_THAT(heights(), ElementsAre(17, 159, 159));
    list.MoveWindow(0, 0, 92, 400);
    EXPECT_THAT(heights(), ElementsAre(17, 126 * 90 / 180 + 19, 126 * 90 / 180 + 19));
    // A bar that comes takes room from the rows.
    list.MoveWindow(0, 0, kWidth, 150);
    settle();
    CRect rc;
    list.GetClientRect(rc);
    EXPECT_LT(rc.Width(), kWidth - 2);
    EXPECT_EQ(heights()[1], tall());
}

TEST_F(DwgListBoxTest, ShowsAndHidesPicturesByItsMenu) {
    addDrawings({"a.dwg", "b.dwg"});
    addFolders({"f"});
    list.FillList("T:\\");
    pickFromMenu(1, "Hide Drawing Previews");
    EXPECT_EQ(profileInt("ShowPreviews"), 0);
    EXPECT_THAT(heights(), ElementsAre(17, 17, 17));
    EXPECT_THAT(readEntries(), IsEmpty());
    list.MoveWindow(kLeft, kTop, 120, kHeight);
    settle();
    EXPECT_THAT(heights(), ElementsAre(17, 17, 17));
    EXPECT_THAT(readEntries(), IsEmpty()) << "thin rows read nothing";
    list.MoveWindow(kLeft, kTop, kWidth, kHeight);
    pickFromMenu(1, "Show Drawing Previews");
    EXPECT_EQ(profileInt("ShowPreviews"), 1);
    EXPECT_THAT(heights(), ElementsAre(17, 159, 159));
    EXPECT_EQ(readEntries().size(), 2U);
}

TEST_F(DwgListBoxTest, KnowsThreeKindsOfTheProfilesValue) {
    addDrawings({"a.dwg", "b.dwg"});
    application.WriteProfileInt("Vondrake", "ShowPreviews", 2);
    list.ShowWindow(SW_HIDE);
    list.FillList("T:\\");
    EXPECT_THAT(heights(), ElementsAre(159, 159));
    EXPECT_THAT(readEntries(), IsEmpty()) << "only 1 reads the first at once";
    list.ShowWindow(SW_SHOW);
    pickFromMenu(0, "Show Drawing Previews");
    EXPECT_EQ(profileInt("ShowPreviews"), 1);
}

TEST_F(DwgListBoxTest, FillsOnceWhenACommandIsPicked) {
    addDrawings({"a.dwg"});
    list.FillList("T:\\");
    folder.write("t/b.dwg", "");
    vndk::test::MessageRecorder recorder;
    recorder.watch(list.m_hWnd);
    list.SendMessage(WM_COMMAND, ID_HIDE_PREVIEWS);
    EXPECT_EQ(recorder.count(LB_RESETCONTENT), 1);
    EXPECT_EQ(list.GetCount(), 2);
    EXPECT_EQ(list.m_bShowPreviews, 0);
    EXPECT_THAT(parent.commands, IsEmpty());
}

TEST_F(DwgListBoxTest, OffersItsCommandsOnTheRowUnderTheMouse) {
    addFolders({"f"});
    addDrawings({"a.dwg", "b.dwg"});
    catchInsertion();
    list.FillList("T:\\");
    pickFromMenu(2, "Insert as Xref");
    EXPECT_THAT(g_attached, ElementsAre("T:\\b.dwg as b.dwg"));
    EXPECT_EQ(list.GetCurSel(), 2);
    EXPECT_EQ(list.m_nHitIndex, 2);
    host.commandLine().input().feed("5,6\n");
    pickFromMenu(1, "Insert as Intelligent Block");
    EXPECT_EQ(valueOf("got"), "(\"T:/a.dwg\" (5.0 6.0 0.0))");
    pickFromMenu(1, "Show In Preview Window");
    EXPECT_THAT(parent.commands, ElementsAre(UINT{ID_SHOW_IN_PREVIEW}));
    g_attached.clear();
    const int documents = host.documents().documentCount();
    pickFromMenu(0, "Insert as Xref");
    pickFromMenu(0, "Open Drawing");
    EXPECT_THAT(g_attached, IsEmpty()) << "not on a folder";
    EXPECT_EQ(host.documents().documentCount(), documents);
    pickFromMenu(0, "Insert as Intelligent Block");
    EXPECT_STREQ(list.m_strDirectory, "T:\\f") << "there it goes in";
    for (const UINT id : {ID_OPEN_DRAWING, ID_INSERT_XREF, ID_INSERT_INTELLIGENT_BLOCK})
        list.SendMessage(WM_COMMAND, id);
    EXPECT_THAT(g_attached, IsEmpty()) << "nothing is selected";
}

TEST_F(DwgListBoxTest, OpensADrawing) {
    host.runText("LINE 0,0 1,1\n\nSAVEAS 2000 T:\\plan.dwg\nNEW\n\n");
    list.FillList("T:\\");
    const int documents = host.documents().documentCount();
    pickFromMenu(0, "Open Drawing");
    EXPECT_STREQ(host.documents().curDocument()->fileName(), "T:\\plan.dwg");
    EXPECT_LE(host.documents().documentCount(), documents + 1);
}

TEST_F(DwgListBoxTest, SaysWhyADrawingCannotBeOpened) {
    folder.write("t/junk.dwg", "junk");
    list.FillList("T:\\");
    vndk::win32::UserScript script(screen);
    script.inWindow(parent.m_hWnd).rightClickAt(kListId, POINT{60, 8});
    script.pick({"Open Drawing"}).in("palette-test").waitForWindow();
    script.press(VK_RETURN).waitUntilGone();
    EXPECT_TRUE(script.finish()) << script.failure();
}

TEST_F(DwgListBoxTest, KeepsTheSelectionAtARightClickBelowTheRows) {
    addDrawings({"a.dwg"});
    list.FillList("T:\\");
    click(0);
    vndk::win32::UserScript script(screen);
    script.inWindow(parent.m_hWnd).rightClickAt(kListId, POINT{60, kHeight - 20});
    script.pick({"Insert as Xref"});
    EXPECT_TRUE(script.finish()) << script.failure();
    deliver();
    EXPECT_THAT(g_attached, ElementsAre("T:\\a.dwg as a.dwg"));
}

TEST_F(DwgListBoxTest, DrawsRowsByTheirKindAndState) {
    addFolders({"f"});
    addDrawings({"a.dwg"});
    list.FillList("T:\\");
    settle();
    const std::uint32_t window = rgbOf(::GetSysColor(COLOR_WINDOW)), lit = rgbOf(::GetSysColor(COLOR_HIGHLIGHT));
    const auto at = [&](int x, int y) {
        const POINT point = onScreen(list.m_hWnd, x, y);
        return pixel(point.x, point.y);
    };
    EXPECT_NE(at(8, 9), window) << "the folder's icon";
    // The drawing's row begins at 17; its text is 13 or more high, the picture lies below it.
    EXPECT_EQ(at(100, 100), 0x0000FFU);
    EXPECT_EQ(at(190, 19), window);
    click(1);
    list.SetFocus();
    settle();
    EXPECT_EQ(at(190, 19), lit) << "selected, with the focus";
    EXPECT_EQ(at(10, 19), window) << "the icons' column isn't lit";
    EXPECT_EQ(at(100, 100), 0x0000FFU);
    parent.SetFocus();
    list.Invalidate();
    settle();
    EXPECT_EQ(at(190, 19), window) << "selected, without the focus";
}

TEST_F(DwgListBoxTest, LivesWithAFolderThatHoldsEverything) {
    constexpr int kFolders = 1000, kDrawings = 10000;
    const std::filesystem::path place = folder / "t";
    const std::string whole = thumbnailFile({{2, plainPicture(4, 4, {1, 2, 3})}});
    for (int i = 0; i < kFolders; ++i)
        std::filesystem::create_directory(place / ("folder " + std::to_string(i)));
    for (int i = 0; i < kDrawings; ++i)
        folder.write("t/drawing " + std::to_string(i) + ".dwg", i % 2 ? "" : whole);
    addDrawings({"T\u00fcr.dwg", "LOUD.DWG", "it's.Dwg", " blank at first.dwg", "two..dots.dwg"});
    folder.write("t/growing.dwg", whole.substr(0, 30));
    folder.write("t/quote\"d.dwg", "");
    std::filesystem::create_symlink(folder / "t/ring.dwg", folder / "t/ring.dwg");
    std::filesystem::create_directory_symlink(folder / "t", folder / "t/up");
    ASSERT_EQ(mkfifo((folder / "t/pipe.dwg").c_str(), 0600), 0);
    folder.write("t/closed.dwg", "");
    std::filesystem::permissions(folder / "t/closed.dwg", std::filesystem::perms::none);
    std::filesystem::permissions(folder / "t/folder 7", std::filesystem::perms::none);
    list.FillList("T:\\");
    EXPECT_EQ(list.GetCount(), kFolders + 1 + kDrawings + 7) << "neither the pipe, the ring nor the impossible name";
    settle();
    // They vanish, one becomes a pipe, one grows to its end, and much of the list is shown page by page.
    for (int i = 0; i < kDrawings; i += 3)
        std::filesystem::remove(place / ("drawing " + std::to_string(i) + ".dwg"));
    ASSERT_EQ(mkfifo((folder / "t/drawing 3.dwg").c_str(), 0600), 0);
    const int growing = list.FindString(-1, "growing.dwg");
    list.SetTopIndex(growing);
    settle();
    EXPECT_THAT(readEntries(), Not(Contains("growing.dwg")));
    folder.write("t/growing.dwg", whole);
    list.Invalidate();
    settle();
    EXPECT_EQ(pixel(kLeft + 100, kTop + 60), 0x030201U);
    const std::size_t before = readEntries().size();
    for (int top = kFolders; top < kFolders + 1200; top += 3) {
        list.SetTopIndex(top);
        settle();
    }
    EXPECT_NEAR(static_cast<double>(readEntries().size() - before), 400, 10) << "those with a picture that were left";
    EXPECT_THAT(readEntries(), Not(Contains("drawing 3.dwg")));
    click(list.GetTopIndex());
    EXPECT_EQ(list.GetCurSel(), list.GetTopIndex());
    list.FillList("T:\\folder 7");
    EXPECT_EQ(list.GetCount(), 0);
    list.FillList("T:\\up\\up\\up");
    EXPECT_GT(list.GetCount(), kDrawings / 2);
    std::filesystem::permissions(folder / "t/folder 7", std::filesystem::perms::owner_all);
    list.DestroyWindow();
    EXPECT_TRUE(list.m_listEntries.IsEmpty());
}

TEST_F(DwgListBoxTest, ListsAndPaintsDamagedFiles) {
    std::mt19937 random(20261123);
    const int count = damagedFileCount(300);
    for (int i = 0; i < count; ++i)
        folder.write("t/" + std::to_string(i) + ".dwg", damagedThumbnailFile(random));
    list.FillList("T:\\");
    ASSERT_EQ(list.GetCount(), count);
    int painted = 0;
    for (int top = 0; top < count; top += 2) {
        list.SetTopIndex(top);
        settle();
    }
    for (POSITION at = list.m_listEntries.GetHeadPosition(); at;)
        painted += static_cast<CDwgThumbnail*>(list.m_listEntries.GetNext(at))->bitmap != nullptr;
    EXPECT_GT(painted, count / 5);
    EXPECT_LT(painted, count);
}

} // namespace
