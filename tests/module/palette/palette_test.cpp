// The palette in the program's window: its bar, its pages, and what a double click inserts.
#include "ads/ads.h"
#include "mfc/afx.h"
#include "module/module_fixture.h"
#include "objects/library.h"
#include "platform/temp_folder.h"
#include "support/desktop_fixture.h"
#include "ui/main_frame.h"
#include "win32/drive_map.h"
#include "win32/listview.h"
#include "win32/tab.h"
#include "win32/user_script.h"

#include <map>
#include <memory>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using vndk::win32::UserScript;

namespace {

constexpr int kTabs = 200, kFolders = 201, kDrawings = 202, kGrips = 203, kBlocks = 204, kPreview = 207, kUpLevel = 208;
constexpr int kBar = 403;
constexpr const char* kToolEntry = "{E818D0AA-0E31-4789-B8E2-2C13048B6E10}";

/// 32 x 32 in 8 bits, all of one colour, as the host keeps the pictures of blocks.
AcDbBlockTableRecord::PreviewIcon icon(COLORREF color, DWORD colorsUsed = 0) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = header.biHeight = 32;
    header.biPlanes = 1;
    header.biBitCount = 8;
    header.biSizeImage = 32 * 32;
    header.biClrUsed = colorsUsed;
    AcDbBlockTableRecord::PreviewIcon bytes(sizeof header + 1024 + header.biSizeImage, 0);
    std::memcpy(bytes.data(), &header, sizeof header);
    bytes[sizeof header] = GetBValue(color);
    bytes[sizeof header + 1] = GetGValue(color);
    bytes[sizeof header + 2] = GetRValue(color);
    return bytes;
}

/// Prompts wait for the user while the windows live on; between commands nobody is waited for.
class PatientUser : public vndk::host::PromptSource {
public:
    bool wait(vndk::host::InputQueue& queue, const vndk::host::PromptRequest& request) override {
        while (request.kind != vndk::host::PromptRequest::Kind::Command && queue.empty())
            if (!AfxPumpMessage())
                return false;
        return !queue.empty();
    }
};

class PaletteBarTest : public ModuleTest {
protected:
    PaletteBarTest() {
        application.SetProfileFile((folder / "profile.ini").c_str());
        application.WriteProfileInt("Vondrake", "DoNotShow", 1);
        EXPECT_TRUE(vndk::win32::DriveMap::current().map('T', folder.path()).ok());
    }
    void SetUp() override {
        openFrame();
        ModuleTest::SetUp();
    }
    void TearDown() override {
        host.linker().unloadModule("VNDKKeldmoor.arx", false);
        ModuleTest::TearDown();
        frame.reset();
    }
    void openFrame() {
        frame = std::make_unique<vndk::host::MainFrame>(host);
        ASSERT_TRUE(frame->open());
        frame->EnableDocking(CBRS_ALIGN_ANY);
        host.setPrint([this](std::string_view text) { output += text; });
        host.commandLine().setSource(&patience);
        desktop.settle();
    }
    /// A prompt that the lines leave open is cancelled: nobody would ever answer it.
    std::string run(const std::string& lines) {
        return ModuleTest::run(lines + "\n" + vndk::host::InputQueue::kCancel);
    }
    void openPalette() {
        run("BLOCKS");
        desktop.settle();
        ASSERT_NE(bar(), nullptr);
    }
    HWND bar() {
        CControlBar* const found = frame->GetControlBar(kBar);
        return found ? found->m_hWnd : nullptr;
    }
    HWND dialog() { return ::GetWindow(bar(), GW_CHILD); }
    HWND item(int id) { return ::GetDlgItem(dialog(), id); }
    /// The item's place in the dialog.
    CRect placeOf(int id) {
        CRect rect;
        ::GetWindowRect(item(id), rect);
        ::MapWindowPoints(nullptr, dialog(), reinterpret_cast<POINT*>(&rect), 2);
        return rect;
    }
    std::vector<int> shownItems() {
        std::vector<int> shown;
        for (const int id : {kTabs, kFolders, kDrawings, kGrips, kBlocks, kPreview, kUpLevel})
            if ((::GetWindowLongA(item(id), GWL_STYLE) & static_cast<LONG>(WS_VISIBLE)) != 0)
                shown.push_back(id);
        return shown;
    }
    void clickTab(int index) {
        RECT rect{};
        ::SendMessageA(item(kTabs), TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
        UserScript user(screen);
        user.inWindow(dialog()).clickAt(kTabs, {(rect.left + rect.right) / 2, (rect.top + rect.bottom) / 2});
        EXPECT_TRUE(user.finish()) << user.failure();
        desktop.settle();
    }
    std::vector<std::string> blockNames() {
        std::vector<std::string> names;
        const int count = static_cast<int>(::SendMessageA(item(kBlocks), LVM_GETITEMCOUNT, 0, 0));
        for (int index = 0; index < count; ++index) {
            char text[256] = "";
            LVITEM row{};
            row.pszText = text;
            row.cchTextMax = sizeof text;
            ::SendMessageA(item(kBlocks), LVM_GETITEMTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&row));
            names.emplace_back(text);
        }
        return names;
    }
    int imageOf(int row) {
        LVITEM wanted{};
        wanted.mask = LVIF_IMAGE;
        wanted.iItem = row;
        ::SendMessageA(item(kBlocks), LVM_GETITEM, 0, reinterpret_cast<LPARAM>(&wanted));
        return wanted.iImage;
    }
    /// Middle of the picture of a block, on the screen.
    POINT pictureOf(int row) {
        RECT rect{LVIR_ICON, 0, 0, 0};
        ::SendMessageA(item(kBlocks), LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
        POINT middle{(rect.left + rect.right) / 2, rect.top + 18};
        ::ClientToScreen(item(kBlocks), &middle);
        return middle;
    }
    /// Pixels of an item that differ from the dialog's ground.
    int inkOf(int id) {
        RECT rect{};
        ::GetWindowRect(item(id), &rect);
        int ink = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                ink += pixel({x, y}) != 0xD4D0C8U ? 1 : 0;
        return ink;
    }
    std::uint32_t pixel(POINT at) {
        const vndk::screen::Surface surface = screen.surface();
        return surface.pixels[static_cast<std::size_t>(at.y) * static_cast<std::size_t>(surface.width) +
                              static_cast<std::size_t>(at.x)] &
               0xFFFFFF;
    }
    /// A double click on the first block, then the answer to the prompt.
    void doubleClickBlock(const std::string& answer) {
        output.clear();
        const POINT at = pictureOf(0);
        POINT local = at;
        ::ScreenToClient(item(kBlocks), &local);
        UserScript user(screen);
        user.inWindow(dialog()).doubleClickAt(kBlocks, local).pause(50);
        user.call([&] { host.commandLine().input().feed(answer); });
        EXPECT_TRUE(user.finish()) << user.failure();
        desktop.settle();
        host.pump(); // what was sent
        desktop.settle();
    }
    AcDbObjectId addIconBlock(const char* name, const AcDbBlockTableRecord::PreviewIcon& picture) {
        const AcDbObjectId id = addBlock(name);
        const AcDbObjectPointer<AcDbBlockTableRecord> record(id, AcDb::kForWrite);
        EXPECT_EQ(record->setPreviewIcon(picture), Acad::eOk);
        return id;
    }

    TempFolder folder;
    CWinApp application{"palette-bar-test"};
    vndk::screen::MemoryScreen screen{1024, 768};
    vndk::win32::Desktop desktop{screen};
    PatientUser patience;
    std::unique_ptr<vndk::host::MainFrame> frame;
};

TEST_F(PaletteBarTest, ComesUpDockedLeftAndASecondCommandBringsItBack) {
    openPalette();
    const HWND first = bar();
    CRect place;
    ::GetWindowRect(first, place);
    EXPECT_EQ(place.left, 0);
    EXPECT_EQ(place.Width(), 150);
    char title[32] = "";
    ::GetWindowTextA(first, title, sizeof title);
    EXPECT_STREQ(title, "Vondrake");
    frame->ShowControlBar(frame->GetControlBar(kBar), FALSE, FALSE);
    run("BLOCKS");
    EXPECT_EQ(bar(), first);
    EXPECT_TRUE(::IsWindowVisible(first));
    CRect again;
    ::GetWindowRect(first, again);
    EXPECT_TRUE(again == place);
    frame->DockControlBar(frame->GetControlBar(kBar), AFX_IDW_DOCKBAR_TOP);
    frame->FloatControlBar(frame->GetControlBar(kBar), CPoint(300, 50));
    run("BLOCKS");
    EXPECT_TRUE(frame->GetControlBar(kBar)->IsFloating());
    ASSERT_TRUE(acrxUnloadModule("VNDKKeldmoor.arx"));
    EXPECT_FALSE(::IsWindow(first)) << "the bar ends with the module";
    EXPECT_EQ(frame->GetControlBar(kBar), nullptr);
}

TEST_F(PaletteBarTest, LaysItsControlsOutByTheSizeAlone) {
    openPalette();
    CControlBar* const palette = frame->GetControlBar(kBar);
    for (const int width : {150, 60, 400, 399}) {
        palette->SetWindowPos(nullptr, 0, 0, width, 500, SWP_NOMOVE | SWP_NOZORDER);
        CRect client;
        palette->GetClientRect(client);
        CRect whole;
        ::GetWindowRect(dialog(), whole);
        palette->ScreenToClient(whole);
        // Of the room below the gripper 3 come off at the left; the top's and the bottom's 5 cancel out.
        const int room = client.Height() - 13;
        EXPECT_TRUE(whole == CRect(CPoint(2, 15), CSize(client.Width() - 3, room - 6))) << width;
        const int cx = whole.Width();
        const int cy = whole.Height();
        RECT tab{};
        ::SendMessageA(item(kTabs), TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&tab));
        const int b = tab.bottom;
        const auto at = [](int x, int y, int w, int h) { return CRect(x, y, x + std::max(w, 0), y + std::max(h, 0)); };
        EXPECT_TRUE(placeOf(kTabs) == at(0, 0, cx, cy));
        EXPECT_EQ(placeOf(kFolders).TopLeft(), CPoint(4, b + 4)) << "a combo's own height is its field's";
        EXPECT_EQ(placeOf(kFolders).Width(), std::max(cx - 58, 0));
        EXPECT_TRUE(placeOf(kGrips) == at(4, b + 4, cx - 8, cy - 8 - b));
        EXPECT_TRUE(placeOf(kDrawings) == at(4, b + 30, cx - 8, cy - 34 - b));
        EXPECT_TRUE(placeOf(kBlocks) == at(4, b + 30, cx - 8, cy - 34 - b));
        EXPECT_TRUE(placeOf(kUpLevel) == at(cx - 52, b + 4, 24, 24));
        EXPECT_TRUE(placeOf(kPreview) == at(cx - 28, b + 4, 24, 24));
        desktop.settle();
        if (width > 100) {
            EXPECT_GT(inkOf(kUpLevel), 20) << "the icon is there, " << width;
            EXPECT_GT(inkOf(kPreview), 20) << "the icon is there, " << width;
        }
    }
}

TEST_F(PaletteBarTest, EachTabShowsItsPageAndSendsTheFocusToTheCommandLine) {
    openPalette();
    EXPECT_THAT(shownItems(), ElementsAre(kTabs, kFolders, kDrawings, kPreview, kUpLevel));
    EXPECT_EQ(m_TabIndex, 0);
    for (const int tab : {1, 0}) {
        ::SetFocus(item(kPreview));
        clickTab(tab);
        EXPECT_EQ(m_TabIndex, tab);
        const HWND line = acedGetAcadDockCmdLine()->m_hWnd;
        EXPECT_TRUE(::GetFocus() == line || ::IsChild(line, ::GetFocus())) << tab;
        if (tab == 1)
            EXPECT_THAT(shownItems(), ElementsAre(kTabs, kBlocks, kPreview));
        else
            EXPECT_THAT(shownItems(), ElementsAre(kTabs, kFolders, kDrawings, kPreview, kUpLevel));
    }
    EXPECT_EQ(::SendMessageA(item(kGrips), LVM_GETITEMCOUNT, 0, 0), 13);
    clickTab(1);
    run("WBLOCK T:out\n*");
    EXPECT_EQ(m_TabIndex, 0) << "writing the drawing out selects the first page";
    EXPECT_THAT(shownItems(), ElementsAre(kTabs, kFolders, kDrawings, kPreview, kUpLevel));
}

TEST_F(PaletteBarTest, EscapeEndsAtTheBar) {
    openPalette();
    ::SetFocus(bar());
    MSG escape{};
    escape.hwnd = bar();
    escape.message = WM_KEYDOWN;
    escape.wParam = VK_ESCAPE;
    EXPECT_TRUE(CWnd::FromHandlePermanent(bar())->PreTranslateMessage(&escape));
    escape.wParam = VK_CANCEL;
    EXPECT_TRUE(CWnd::FromHandlePermanent(bar())->PreTranslateMessage(&escape));
    EXPECT_TRUE(::IsWindowVisible(dialog()));
    const HWND button = ::CreateWindowExA(0, "BUTTON", "", WS_CHILD | WS_DISABLED, 0, 0, 5, 5, bar(),
                                          reinterpret_cast<HMENU>(UINT_PTR{IDCANCEL}), nullptr, nullptr);
    escape.wParam = VK_ESCAPE;
    EXPECT_TRUE(CWnd::FromHandlePermanent(bar())->PreTranslateMessage(&escape)) << "taken as a dialog's key";
    ::DestroyWindow(button);
    UserScript user(screen);
    user.inWindow(bar()).rightClickAt(0, {30, 6}).pick({"Dock Right"});
    EXPECT_TRUE(user.finish()) << user.failure();
    desktop.settle();
    CRect place;
    ::GetWindowRect(bar(), place);
    EXPECT_EQ(place.right, 1024);
    const std::string kept(application.GetProfileString("DockBars", kToolEntry).View());
    EXPECT_THAT(kept, testing::StartsWith("right 150 "));
}

TEST_F(PaletteBarTest, ShowsTheNamedBlocksWithTheirPictures) {
    addIconBlock("RED", icon(RGB(255, 0, 0)));
    addBlock("PLAIN");
    addIconBlock("GREEN", icon(RGB(0, 255, 0), 256));
    addBlock("~hidden");
    openPalette();
    clickTab(1);
    EXPECT_THAT(blockNames(), ElementsAre("RED", "PLAIN", "GREEN"));
    EXPECT_EQ(imageOf(0), 1);
    EXPECT_EQ(imageOf(1), 0) << "the stock icon";
    EXPECT_EQ(imageOf(2), 2);
    EXPECT_EQ(pixel(pictureOf(0)), 0xFF0000U);
    EXPECT_EQ(pixel(pictureOf(2)), 0x00FF00U);
    EXPECT_EQ(::SendMessageA(item(kBlocks), LVM_GETBKCOLOR, 0, 0), 0);
}

TEST_F(PaletteBarTest, PicturesThatAreNotWholeShowTheStockIcon) {
    const AcDbBlockTableRecord::PreviewIcon good = icon(RGB(255, 0, 0));
    const auto with = [&](std::size_t offset, std::int32_t value, std::size_t size) {
        AcDbBlockTableRecord::PreviewIcon bytes = good;
        std::memcpy(bytes.data() + offset, &value, size);
        return bytes;
    };
    const std::map<std::string, AcDbBlockTableRecord::PreviewIcon> pictures = {
        {"A no bytes of the rows", {good.begin(), good.begin() + 1064}},
        {"B a cut header", {good.begin(), good.begin() + 20}},
        {"C one byte short", {good.begin(), good.end() - 1}},
        {"D no size", with(20, 0, 4)},
        {"E a size beyond the bytes", with(20, 0x7FFFFFFF, 4)},
        {"F rows longer than the size", with(4, 4000, 4)},
        {"G no width", with(4, 0, 4)},
        {"H a negative width", with(4, -32, 4)},
        {"I the least height", with(8, INT32_MIN, 4)},
        {"J a colour table of 65 KB", with(32, 0x4000, 4)},
        {"K a large colour table", with(32, -1, 4)},
        {"L a long header", with(0, -1, 4)},
        {"M no header", with(0, 0, 4)},
        {"N compressed", with(16, 1, 4)},
        {"O bits that there aren't", with(14, 77, 2)}};
    for (const auto& [name, bytes] : pictures)
        addIconBlock(name.substr(0, 1).c_str(), bytes);
    addIconBlock("Z", good);
    openPalette();
    const std::vector<std::string> names = blockNames();
    ASSERT_EQ(names.size(), pictures.size() + 1);
    int row = 0;
    for (const auto& [name, bytes] : pictures)
        EXPECT_EQ(imageOf(row++), 0) << name;
    EXPECT_EQ(imageOf(row), 1);
}

TEST_F(PaletteBarTest, FollowsTheDocumentAndWhatIsDoneToItsBlocks) {
    addBlock("FIRST");
    openPalette();
    EXPECT_THAT(blockNames(), ElementsAre("FIRST"));
    AcApDocument* const before = host.documents().curDocument();
    host.documents().appContextNewDocument(nullptr);
    EXPECT_THAT(blockNames(), IsEmpty());
    host.documents().activateDocument(before);
    EXPECT_THAT(blockNames(), ElementsAre("FIRST"));
    run("PURGE Blocks * N");
    EXPECT_THAT(blockNames(), IsEmpty());
    addBlock("SECOND");
    EXPECT_THAT(blockNames(), IsEmpty()) << "nothing has happened that the host tells of";
    host.documents().closeDocument(host.documents().curDocument());
    EXPECT_THAT(blockNames(), IsEmpty()) << "the other drawing has none";
    host.documents().closeAll();
    EXPECT_THAT(blockNames(), IsEmpty());
    host.documents().appContextNewDocument(nullptr);
}

TEST_F(PaletteBarTest, ADoubleClickInsertsTheBlockWhereTheUserSays) {
    addBlock("DOOR");
    openPalette();
    clickTab(1);
    doubleClickBlock("1,2,3\n");
    ASSERT_EQ(modelSpace().size(), 1U) << output;
    {
        const AcDbObjectPointer<AcDbBlockReference> reference(modelSpace()[0]);
        ASSERT_TRUE(reference);
        EXPECT_EQ(reference->position(), AcGePoint3d(1, 2, 3));
        EXPECT_EQ(reference->isA(), VNDKBlockReference::desc());
    }
    doubleClickBlock(std::string(1, vndk::host::InputQueue::kCancel) + "\n");
    EXPECT_EQ(modelSpace().size(), 1U) << "Escape at the prompt";
}

TEST_F(PaletteBarTest, IsWhereItWasInTheNextProgram) {
    openPalette();
    UserScript user(screen);
    user.inWindow(bar()).rightClickAt(0, {30, 6}).pick({"Float"});
    EXPECT_TRUE(user.finish()) << user.failure();
    desktop.settle();
    CRect place;
    ::GetWindowRect(bar(), place);
    host.linker().unloadModule("VNDKKeldmoor.arx", false);
    frame.reset();
    openFrame();
    loadModule();
    openPalette();
    CRect again;
    ::GetWindowRect(bar(), again);
    EXPECT_TRUE(frame->GetControlBar(kBar)->IsFloating());
    EXPECT_TRUE(again == place);
}

} // namespace
