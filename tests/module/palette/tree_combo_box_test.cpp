// The combo box that drops down a tree, by keys, clicks and pixels, with the list of drawings beside it.
#include "module/palette/palette_fixture.h"
#include "palette/dwg_list_box.h"
#include "palette/host_helpers.h"
#include "palette/tree_combo_box.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

// The list's way to the host's external references isn't taken here.
void AttachXref(CString, CString) {}

namespace {

constexpr int kComboId = 201, kListId = 202;
constexpr int kLeft = 20, kTop = 20, kWidth = 180;

/// Hands keys to the controls as a dialog does, and nothing more.
class TreeComboBoxTest : public PaletteTest {
protected:
    TreeComboBoxTest() {
        vndk::win32::DriveMap& drives = vndk::win32::DriveMap::current();
        EXPECT_TRUE(drives.map('U', folder.path()).ok());
        ::CreateWindowExA(0, "COMBOBOX", "",
                          WS_CHILD | WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_OWNERDRAWVARIABLE,
                          kLeft, kTop, kWidth, 103, parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kComboId}), nullptr,
                          nullptr);
        ::CreateWindowExA(0, "LISTBOX", "", WS_CHILD | WS_VISIBLE | LBS_OWNERDRAWVARIABLE | LBS_HASSTRINGS, kLeft, 200,
                          kWidth, 100, parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kListId}), nullptr, nullptr);
        EXPECT_TRUE(combo.SubclassDlgItem(kComboId, &parent));
        EXPECT_TRUE(list.SubclassDlgItem(kListId, &parent));
        combo.m_pListBox = &list;
        list.m_pCombo = &combo;
        combo.CreateTree();
        parent.ShowWindow(SW_SHOW);
        settle();
    }
    ~TreeComboBoxTest() override { parent.DestroyWindow(); }

    CShellTreeCtrl& tree() { return combo.m_tree; }
    /// "label=path" of the rows below one, each level indented by a dot.
    std::vector<std::string> rows(HTREEITEM item = nullptr, const std::string& indent = "") {
        std::vector<std::string> found;
        for (item = indent.empty() ? tree().GetRootItem() : item; item; item = tree().GetNextSiblingItem(item)) {
            const CTreeItemData* data = tree().DataOf(item);
            found.push_back(indent + std::string(tree().GetItemText(item)) +
                            (data->m_strLabel == data->m_strPath ? "" : "=" + std::string(data->m_strPath)));
            for (const std::string& each : below(item, indent))
                found.push_back(each);
        }
        return found;
    }
    std::vector<std::string> below(HTREEITEM item, const std::string& indent) {
        HTREEITEM child = tree().GetChildItem(item);
        return child ? rows(child, indent + ".") : std::vector<std::string>();
    }
    std::string current() {
        const CTreeItemData* data = tree().DataOf(tree().m_hSelected);
        return data ? std::string(data->m_strPath) : "none";
    }
    int imageOf(HTREEITEM item) {
        TVITEM row{};
        row.mask = TVIF_IMAGE;
        row.hItem = item;
        tree().GetItem(&row);
        return row.iImage;
    }
    bool dropped() { return tree().IsWindowVisible() != FALSE; }
    void clickCombo() {
        user.click(kLeft + 30, kTop + 8);
        deliver();
    }
    POINT onRow(HTREEITEM item) {
        RECT rc{};
        *reinterpret_cast<HTREEITEM*>(&rc) = item;
        EXPECT_TRUE(tree().SendMessage(TVM_GETITEMRECT, TRUE, reinterpret_cast<LPARAM>(&rc)));
        return onScreen(tree().m_hWnd, (rc.left + rc.right) / 2, (rc.top + rc.bottom) / 2);
    }
    HTREEITEM find(const char* path) { return tree().FindItemDeep(tree().GetRootItem(), path); }
    void press(int key) {
        user.key(key);
        deliver();
    }

    CTreeComboBox combo;
    CDwgListBox list;
};

TEST_F(TreeComboBoxTest, BeginsWithTheRowsThatAreAlwaysThere) {
    const std::vector<std::string> found = rows();
    ASSERT_GE(found.size(), 8U);
    EXPECT_EQ(found[0], "Desktop");
    EXPECT_EQ(found[1], ".My Computer");
    EXPECT_NE(std::find(found.begin(), found.end(), "..t (T:)=T:\\"), found.end()) << testing::PrintToString(found);
    EXPECT_EQ(found[found.size() - 3], "..Control Panel");
    EXPECT_EQ(found[found.size() - 2], ".My Network Places");
    EXPECT_EQ(found[found.size() - 1], ".My Documents");
    EXPECT_EQ(current(), "Desktop");
    EXPECT_EQ(tree().m_images.GetImageCount(), 10);
    EXPECT_EQ(imageOf(find("T:\\")), 6);
    EXPECT_EQ(imageOf(find("My Documents")), 9);
    EXPECT_FALSE(dropped());
}

TEST_F(TreeComboBoxTest, GrowsOnTheWayToAFolder) {
    const std::size_t before = rows().size();
    combo.SelectPath("t:\\");
    EXPECT_EQ(rows().size(), before) << "a drive has its row";
    EXPECT_EQ(current(), "T:\\");
    combo.SelectPath("T:\\dwg\\old");
    EXPECT_EQ(current(), "T:\\dwg\\old");
    EXPECT_EQ(rows().size(), before + 2);
    EXPECT_THAT(below(find("T:\\"), ""), ElementsAre(".dwg=T:\\dwg", "..old=T:\\dwg\\old"));
    EXPECT_EQ(imageOf(find("T:\\dwg\\old")), 1) << "the last of a path";
    EXPECT_EQ(imageOf(find("T:\\dwg")), 1) << "open, for the way to the row was opened";
    combo.SelectPath("t:\\DWG\\new\\");
    EXPECT_EQ(current(), "t:\\DWG\\new");
    EXPECT_THAT(below(find("T:\\"), ""), ElementsAre(".dwg=T:\\dwg", "..old=T:\\dwg\\old", "..new=t:\\DWG\\new"));
    combo.SelectPath("");
    EXPECT_EQ(current(), "t:\\DWG\\new") << "nothing for an empty path";
}

TEST_F(TreeComboBoxTest, PutsWhatItDoesNotKnowAtTheTop) {
    combo.SelectPath("Q:\\x");
    combo.SelectPath("Desktop");
    combo.SelectPath("\\\\server\\share\\d");
    combo.SelectPath("T:\\\\a");
    const std::vector<std::string> found = rows();
    const std::vector<std::string> end(found.end() - 6, found.end());
    EXPECT_THAT(end, ElementsAre("Q:=Q:\\", ".x=Q:\\x", "Desktop=Desktop\\", "\\\\server=\\\\server\\",
                                 ".share=\\\\server\\share", "..d=\\\\server\\share\\d"));
    EXPECT_THAT(below(find("T:\\"), ""), ElementsAre(".a=T:\\\\a"));
}

TEST_F(TreeComboBoxTest, DropsDownBelowItselfAsHighAsItsRows) {
    combo.SelectPath("T:\\dwg\\old");
    clickCombo();
    ASSERT_TRUE(dropped());
    const RECT rc = windowRect(tree().m_hWnd), box = windowRect(combo.m_hWnd);
    EXPECT_EQ(rc.left, box.left);
    EXPECT_EQ(rc.top, box.bottom + 1);
    EXPECT_EQ(rc.right - rc.left, combo.GetDroppedWidth());
    const auto height = static_cast<int>(tree().SendMessage(TVM_GETITEMHEIGHT));
    EXPECT_EQ(rc.bottom - rc.top, height * static_cast<int>(rows().size()) + 3);
    EXPECT_EQ(::GetFocus(), tree().m_hWnd);
    clickCombo();
    EXPECT_FALSE(dropped()) << "the click closes it, and doesn't open it again";
    clickCombo();
    EXPECT_TRUE(dropped());
    user.click(350, 450);
    deliver();
    EXPECT_FALSE(dropped()) << "a click elsewhere closes it, too";
}

TEST_F(TreeComboBoxTest, StaysOnTheScreen) {
    parent.MoveWindow(screenWidth - 100, screenHeight - 120, 400, 500);
    settle();
    combo.ShowDropDown();
    const RECT rc = windowRect(tree().m_hWnd);
    EXPECT_EQ(rc.bottom, screenHeight - 1);
    EXPECT_EQ(rc.right, screenWidth - 1);
}

TEST_F(TreeComboBoxTest, PicksTheRowUnderTheMouse) {
    std::filesystem::create_directories(folder / "t/dwg");
    folder.write("t/dwg/a.dwg", "");
    combo.SelectPath("T:\\dwg");
    combo.SelectPath("T:\\gone");
    clickCombo();
    const POINT point = onRow(find("T:\\dwg"));
    user.moveTo(point.x, point.y);
    deliver();
    EXPECT_EQ(tree().GetSelectedItem(), find("T:\\dwg")) << "the highlight follows the mouse";
    EXPECT_EQ(current(), "T:\\gone");
    user.click(point.x, point.y);
    deliver();
    EXPECT_FALSE(dropped());
    EXPECT_EQ(current(), "T:\\dwg");
    EXPECT_STREQ(list.m_strDirectory, "T:\\dwg");
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_EQ(profileText("Directory"), "T:\\dwg");
    EXPECT_EQ(find("T:\\gone"), nullptr) << "what the tree had learnt is gone";
    EXPECT_EQ(::GetFocus(), combo.m_hWnd);
}

TEST_F(TreeComboBoxTest, TakesKeysInTheOpenTree) {
    clickCombo();
    press(VK_DOWN);
    EXPECT_EQ(current(), "Desktop");
    press(VK_ESCAPE);
    EXPECT_FALSE(dropped());
    EXPECT_EQ(current(), "Desktop") << "nothing is picked";
    EXPECT_EQ(profileText("Directory"), "");
    combo.SetFocus();
    deliver();
    user.keyDown(VK_MENU);
    user.key(VK_DOWN);
    user.keyUp(VK_MENU);
    deliver();
    ASSERT_TRUE(dropped());
    const HTREEITEM drive = find("T:\\");
    tree().SelectItem(drive);
    press(VK_RETURN);
    EXPECT_FALSE(dropped());
    EXPECT_EQ(current(), "T:\\");
    EXPECT_STREQ(list.m_strDirectory, "T:\\");
}

TEST_F(TreeComboBoxTest, StepsThroughTheRowsByKeysWithoutOpening) {
    combo.SetFocus();
    deliver();
    press(VK_DOWN);
    EXPECT_EQ(current(), "My Computer\\");
    EXPECT_STREQ(list.m_strDirectory, "My Computer") << "no folder, so nothing is listed";
    EXPECT_EQ(list.GetCount(), 0);
    EXPECT_EQ(profileText("Directory"), "My Computer");
    combo.SelectPath("T:\\");
    press(VK_RIGHT);
    EXPECT_EQ(current(), "U:\\");
    press(VK_LEFT);
    EXPECT_EQ(current(), "T:\\");
    press(VK_UP);
    EXPECT_NE(current(), "T:\\");
    EXPECT_FALSE(dropped());
    EXPECT_EQ(::GetFocus(), combo.m_hWnd);
}

TEST_F(TreeComboBoxTest, ShowsTheCurrentRowInTheClosedBox) {
    const auto picture = [&] {
        settle();
        std::vector<std::uint32_t> pixels;
        for (int y = kTop; y < kTop + 20; ++y)
            for (int x = kLeft; x < kLeft + 24; ++x)
                pixels.push_back(pixel(x, y));
        return pixels;
    };
    const auto desktopIcon = picture();
    combo.SelectPath("T:\\a\\b");
    const auto lastOfPath = picture();
    EXPECT_NE(lastOfPath, desktopIcon);
    combo.SelectPath("T:\\a");
    EXPECT_EQ(picture(), lastOfPath) << "an open folder, whichever image the row has";
    const std::uint32_t lit = rgbOf(::GetSysColor(COLOR_HIGHLIGHT));
    combo.SetFocus();
    settle();
    int found = 0;
    for (int x = kLeft + 20; x < kLeft + 60; ++x)
        found += pixel(x, kTop + 8) == lit;
    EXPECT_GT(found, 3) << "lit with the focus";
}

TEST_F(TreeComboBoxTest, KeepsTheFocusAndEndsWithItsParent) {
    EXPECT_EQ(tree().SendMessage(0x7101), 1);
    clickCombo();
    parent.DestroyWindow();
    EXPECT_EQ(tree().m_hWnd, nullptr);
    EXPECT_EQ(combo.m_hWnd, nullptr);
}

} // namespace
