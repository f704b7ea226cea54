// The list that is edited in place, alone in a window that behaves as a dialog, by real keys, clicks and drags.
#include "attributes/attribute_list_owner.h"
#include "attributes/edit_list_ctrl.h"
#include "support/desktop_fixture.h"

#include <gmock/gmock.h>

#include <array>
#include <set>
#include <vector>

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace {

constexpr int kListId = 220;
constexpr int kButtonId = 223;

/// Answers keys as a dialog does.
class Parent : public CWnd {
public:
    std::vector<int> commands;

    BOOL PreTranslateMessage(MSG* pMsg) override { return PreTranslateInput(pMsg); }

protected:
    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override {
        if (LOWORD(wParam) == IDOK || LOWORD(wParam) == IDCANCEL)
            commands.push_back(LOWORD(wParam));
        return CWnd::OnCommand(wParam, lParam);
    }
};

struct Owner : CAttributeListOwner {
    void ShowRow(int nRow) override { shown.push_back(nRow); }
    void EnableApply() override { applicable = true; }

    std::vector<int> shown;
    bool applicable = false;
};

class EditListTest : public vndk::test::DesktopFixture {
protected:
    static constexpr int kPromptWidth = 100;
    static constexpr int kDataWidth = 120;

    /// A list with these values in column 1, to the right of which some ground is left.
    void make(const std::vector<std::string>& values) {
        ASSERT_TRUE(parent.CreateEx(0, AfxRegisterWndClass(CS_DBLCLKS), "parent", WS_POPUP | WS_VISIBLE, 0, 0, 400, 300,
                                    nullptr, nullptr));
        const DWORD style =
            WS_CHILD | WS_VISIBLE | WS_BORDER | WS_TABSTOP | LVS_REPORT | LVS_SINGLESEL | LVS_SHOWSELALWAYS;
        ASSERT_TRUE(list.Create(style, CRect(10, 10, 310, 130), &parent, kListId));
        ASSERT_TRUE(
            button.Create("OK", WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(10, 200, 60, 220), &parent, kButtonId));
        list.InsertColumn(0, "Description", LVCFMT_LEFT, kPromptWidth);
        list.InsertColumn(1, "Data", LVCFMT_LEFT, kDataWidth);
        list.SetExtendedStyle(LVS_EX_GRIDLINES);
        for (int row = 0; row < static_cast<int>(values.size()); ++row) {
            list.InsertItem(row, ("Prompt " + std::to_string(row)).c_str());
            list.SetItemText(row, 1, values[static_cast<std::size_t>(row)].c_str());
        }
        list.SetFocus();
        deliver();
    }
    void TearDown() override { parent.DestroyWindow(); }

    /// Delivers all that waits through the framework's filters.
    void deliver() {
        MSG message{};
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE)
            AfxPumpMessage();
        settle();
    }

    POINT cell(int row, int column) {
        CRect rect;
        list.GetItemRect(row, rect, LVIR_BOUNDS);
        const int x = column == 0 ? 20 : kPromptWidth + (column - 1) * kDataWidth + kDataWidth / 2;
        return onScreen(list.m_hWnd, x, (rect.top + rect.bottom) / 2);
    }
    void clickAt(POINT point) {
        user.click(point.x, point.y);
        deliver();
    }
    void clickCell(int row, int column) { clickAt(cell(row, column)); }
    void press(int key) {
        user.key(key);
        deliver();
    }
    void type(std::string_view text) {
        user.type(text);
        deliver();
    }

    [[nodiscard]] bool open() { return list.m_edit.GetSafeHwnd() != nullptr && list.m_edit.IsWindowVisible(); }
    [[nodiscard]] std::string boxText() {
        CString text;
        list.m_edit.GetWindowText(text);
        return std::string(text.View());
    }
    [[nodiscard]] std::string value(int row) { return std::string(list.GetItemText(row, 1).View()); }
    [[nodiscard]] std::vector<std::string> values() {
        std::vector<std::string> all;
        for (int row = 0; row < list.GetItemCount(); ++row)
            all.push_back(value(row));
        return all;
    }
    [[nodiscard]] std::array<int, 2> selection() {
        std::array<int, 2> range{};
        list.m_edit.GetSel(range[0], range[1]);
        return range;
    }
    /// The box as it should lie over its cell, in the list's coordinates.
    void expectOver(int row, const char* when) {
        ASSERT_TRUE(open()) << when;
        EXPECT_EQ(list.m_editRow, row) << when;
        CRect rect;
        list.GetItemRect(row, rect, LVIR_BOUNDS);
        CRect box;
        list.m_edit.GetWindowRect(box);
        list.ScreenToClient(box);
        EXPECT_EQ(box, CRect(kPromptWidth + 6, rect.top + 2, kPromptWidth + kDataWidth, rect.bottom - 1)) << when;
        EXPECT_EQ(CWnd::GetFocus(), &list.m_edit) << when;
        EXPECT_EQ(boxText(), value(row)) << when;
    }

    Parent parent;
    CEditListCtrl list;
    CButton button;
    Owner owner;
};

TEST_F(EditListTest, AClickOnAValueLaysTheBoxOverItWithTheWholeTextSelected) {
    make({"one", "two", "three"});
    EXPECT_EQ(list.m_edit.GetSafeHwnd(), nullptr) << "made at its first use";
    clickCell(1, 1);
    expectOver(1, "first click");
    EXPECT_EQ(selection(), (std::array{0, 3}));
    EXPECT_EQ(list.m_edit.GetDlgCtrlID(), 110);
    EXPECT_EQ(list.m_edit.GetStyle() & ~WS_VISIBLE, 0x44000080U);
    EXPECT_EQ(list.m_edit.SendMessage(WM_GETFONT), list.SendMessage(WM_GETFONT));
    type("x");
    EXPECT_EQ(boxText(), "x") << "the first key replaces all";
    const HWND box = list.m_edit.m_hWnd;
    clickCell(2, 1);
    expectOver(2, "second click");
    EXPECT_EQ(list.m_edit.m_hWnd, box) << "the same box, moved";
    EXPECT_THAT(values(), ElementsAre("one", "x", "three"));
}

TEST_F(EditListTest, TheTextStaysInItsPlaceWhenTheBoxOpens) {
    make({"one", "J\xFCgGroyp"});
    list.FitRowsToEdit();
    settle();
    const auto cellPixels = [&] {
        CRect rect;
        list.GetItemRect(1, rect, LVIR_BOUNDS);
        const POINT origin = onScreen(list.m_hWnd, kPromptWidth, rect.top);
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < rect.Height(); ++y)
            for (int x = 1; x < kDataWidth - 1; ++x)
                pixels.push_back(pixel(origin.x + x, origin.y + y));
        return pixels;
    };
    const auto before = cellPixels();
    clickCell(1, 1);
    EXPECT_NE(cellPixels(), before) << "the text is selected";
    button.SetFocus();
    settle();
    ASSERT_TRUE(open());
    EXPECT_EQ(cellPixels(), before) << "letters and grid lines alike";
}

TEST_F(EditListTest, TheCellFollowsEachKey) {
    make({"one", "two"});
    clickCell(0, 1);
    type("a");
    EXPECT_EQ(value(0), "a");
    type("b");
    EXPECT_EQ(value(0), "ab");
    press(VK_BACK);
    press(VK_BACK);
    EXPECT_EQ(value(0), "");
    user.key('O', 0xF6);
    user.key('S', 0xDF);
    deliver();
    EXPECT_EQ(value(0), "\xF6\xDF");
    EXPECT_EQ(value(1), "two");
}

TEST_F(EditListTest, TypingTheOpeningTextAgainBringsItBackIntoTheCell) {
    make({"ab", "two"});
    clickCell(0, 1);
    type("x");
    EXPECT_EQ(value(0), "x");
    press(VK_BACK);
    type("ab");
    EXPECT_EQ(boxText(), "ab");
    EXPECT_EQ(value(0), "ab");
}

TEST_F(EditListTest, OtherClicksOpenNothing) {
    make({"one", "two"});
    owner.shown.clear();
    list.m_ownerDlg = &owner;
    clickCell(0, 0);
    EXPECT_FALSE(open());
    EXPECT_NE(list.GetItemState(0, LVIS_SELECTED), 0U) << "a click on the prompt selects its row";
    clickAt(onScreen(list.m_hWnd, kPromptWidth + kDataWidth + 20, 25));
    EXPECT_FALSE(open()) << "right of the columns the row's prompt is hit";
    clickAt(onScreen(list.m_hWnd, kPromptWidth + 20, 100));
    EXPECT_FALSE(open()) << "below the last row";
    EXPECT_THAT(owner.shown, IsEmpty());

    clickCell(1, 1);
    clickCell(0, 0);
    EXPECT_TRUE(open()) << "a box on another row stays where it is";
    EXPECT_EQ(list.m_editRow, 1);
    EXPECT_EQ(CWnd::GetFocus(), &list);
}

TEST_F(EditListTest, AColumnWithoutBoxHidesTheOneThatIsOpen) {
    make({"one", "two"});
    list.InsertColumn(2, "More", LVCFMT_LEFT, 60);
    clickCell(0, 1);
    ASSERT_TRUE(open());
    clickAt(onScreen(list.m_hWnd, kPromptWidth + kDataWidth + 30, 25));
    EXPECT_FALSE(open());
    EXPECT_EQ(list.m_editCol, 2);
    list.EditCell(1, 1);
    expectOver(1, "again");
    for (const auto& [row, column] : {std::array{-1, 1}, std::array{1, -1}}) {
        list.EditCell(row, column);
        EXPECT_FALSE(open());
        EXPECT_EQ(list.m_editRow, -1);
        EXPECT_EQ(list.m_editCol, -1);
    }
}

TEST_F(EditListTest, KeysMoveTheBoxFromRowToRowAndAroundTheEnds) {
    make({"one", "two", "three"});
    clickCell(0, 1);
    const struct {
        int key, row;
    } steps[] = {{VK_RETURN, 1}, {VK_RETURN, 2}, {VK_DOWN, 0}, {VK_DOWN, 1}, {VK_UP, 0}, {VK_UP, 2}, {VK_UP, 1}};
    for (const auto& step : steps) {
        press(step.key);
        expectOver(step.row, std::to_string(step.key).c_str());
        EXPECT_EQ(selection(), (std::array{0, static_cast<int>(value(step.row).size())})) << step.key;
    }
    EXPECT_THAT(parent.commands, IsEmpty());
    EXPECT_THAT(values(), ElementsAre("one", "two", "three")) << "moving alone writes nothing";
}

TEST_F(EditListTest, AColumnIsFilledInWithoutTheMouse) {
    make({"one", "two", "three"});
    clickCell(0, 1);
    type("a");
    press(VK_RETURN);
    type("bb");
    press(VK_DOWN);
    type("c");
    press(VK_UP);
    press(VK_UP);
    type("x");
    EXPECT_THAT(values(), ElementsAre("x", "bb", "c"));
}

TEST_F(EditListTest, EnterOnTheLastRowEscapeAndTabAreTheDialogs) {
    make({"one", "two"});
    clickCell(1, 1);
    type("new");
    press(VK_RETURN);
    EXPECT_THAT(parent.commands, ElementsAre(IDOK));
    EXPECT_EQ(list.m_editRow, 1);
    press(VK_ESCAPE);
    EXPECT_THAT(parent.commands, ElementsAre(IDOK, IDCANCEL));
    EXPECT_EQ(value(1), "new") << "the box has no undo of its own";
    press(VK_TAB);
    EXPECT_EQ(CWnd::GetFocus(), &button);
    EXPECT_TRUE(open()) << "losing the focus doesn't close the box";
    EXPECT_EQ(value(1), "new");
}

TEST_F(EditListTest, InAListOfOneRowArrowsOpenItAgainAndEnterIsTheDialogs) {
    make({"one"});
    list.m_ownerDlg = &owner;
    clickCell(0, 1);
    for (const int key : {VK_UP, VK_DOWN}) {
        type("zz");
        press(key);
        expectOver(0, "the only row");
        EXPECT_EQ(selection(), (std::array{0, 2}));
    }
    EXPECT_THAT(owner.shown, ElementsAre(0, 0, 0));
    press(VK_RETURN);
    EXPECT_THAT(parent.commands, ElementsAre(IDOK));
}

TEST_F(EditListTest, LeftRightAndOtherKeysEditTheText) {
    make({"abc"});
    clickCell(0, 1);
    press(VK_LEFT);
    type("x");
    EXPECT_EQ(value(0), "xabc");
    press(VK_END);
    press(VK_LEFT);
    press(VK_DELETE);
    EXPECT_EQ(value(0), "xab");
}

TEST_F(EditListTest, TheItemDataLimitsWhatIsTyped) {
    make({"", "", "longer than five"});
    list.SetItemData(0, 10);
    list.SetItemData(2, 5);
    clickCell(0, 1);
    EXPECT_EQ(list.m_edit.SendMessage(EM_GETLIMITTEXT), 10);
    type("123456789012");
    EXPECT_EQ(value(0), "1234567890");
    clickCell(1, 1);
    EXPECT_EQ(list.m_edit.SendMessage(EM_GETLIMITTEXT), 36000);
    clickCell(2, 1);
    EXPECT_EQ(boxText(), "longer than five") << "a text that is too long already isn't cut";
    press(VK_END);
    type("x");
    EXPECT_EQ(value(2), "longer than five");
}

TEST_F(EditListTest, ACellWithoutLimitTakes36000Characters) {
    make({""});
    clickCell(0, 1);
    ASSERT_TRUE(::OpenClipboard(parent.m_hWnd));
    ::EmptyClipboard();
    const std::string text(36010, 'y');
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
    std::copy_n(text.c_str(), text.size() + 1, static_cast<char*>(::GlobalLock(memory)));
    ::GlobalUnlock(memory);
    ::SetClipboardData(CF_TEXT, memory);
    ::CloseClipboard();
    user.keyWith(VK_CONTROL, 'V', 0x16);
    deliver();
    EXPECT_EQ(value(0).size(), 36000U);
}

TEST_F(EditListTest, ScrollingHidesTheBoxAndKeepsWhatWasTyped) {
    make(std::vector<std::string>(30, "value"));
    clickCell(1, 1);
    type("typed");
    const RECT window = windowRect(list.m_hWnd);
    const int barX = window.right - 1 - ::GetSystemMetrics(SM_CXVSCROLL) / 2;
    const int thumbY = window.top + 1 + ::GetSystemMetrics(SM_CYVSCROLL) + 4;
    user.drag({barX, thumbY}, {barX, thumbY + 30});
    deliver();
    EXPECT_GT(list.SendMessage(LVM_GETTOPINDEX), 0);
    EXPECT_FALSE(open());
    EXPECT_EQ(value(1), "typed");
    EXPECT_EQ(list.m_editRow, 1) << "the place is kept for the next opening";
    EXPECT_EQ(CWnd::GetFocus(), &list);
    list.EditCell(list.m_editRow, list.m_editCol);
    expectOver(1, "opened again, scrolled into view");
    EXPECT_EQ(list.SendMessage(LVM_GETTOPINDEX), 1);
    list.SendMessage(WM_HSCROLL, SB_LINERIGHT);
    EXPECT_FALSE(open());
}

TEST_F(EditListTest, ARowOutOfViewIsScrolledInByTheKeys) {
    make(std::vector<std::string>(30, "value"));
    clickCell(0, 1);
    press(VK_UP);
    expectOver(29, "from the first row to the last");
    CRect box;
    list.m_edit.GetWindowRect(box);
    list.ScreenToClient(box);
    EXPECT_LE(box.bottom, clientRect(list.m_hWnd).bottom);
    press(VK_DOWN);
    expectOver(0, "and back");
}

TEST_F(EditListTest, TheOwnerHearsWhatItShouldAndNoMore) {
    make({"one", "two"});
    list.m_ownerDlg = &owner;
    list.EditCell(1, 1);
    deliver();
    EXPECT_THAT(owner.shown, ElementsAre(1));
    EXPECT_FALSE(owner.applicable) << "opening a box isn't typing";
    press(VK_UP);
    EXPECT_THAT(owner.shown, ElementsAre(1, 0));
    button.SetFocus();
    EXPECT_FALSE(owner.applicable) << "nor is leaving it";
    list.m_edit.SetFocus();
    type("x");
    EXPECT_TRUE(owner.applicable);

    owner = {};
    button.SetFocus();
    deliver();
    clickCell(1, 0);
    EXPECT_TRUE(owner.applicable) << "another selection is a change of items";
    EXPECT_THAT(owner.shown, IsEmpty());
}

TEST_F(EditListTest, LockedRowsAreGreyAndNeverOpen) {
    make({"a", "b", "c", "d"});
    list.m_ownerDlg = &owner;
    list.LockRow(0);
    list.LockRow(3);
    settle();
    const auto inks = [&](int row) {
        std::set<std::uint32_t> found;
        CRect rect;
        list.GetItemRect(row, rect, LVIR_BOUNDS);
        list.ClientToScreen(rect);
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.left + kPromptWidth - 5; ++x)
                found.insert(pixel(x, y));
        return found;
    };
    EXPECT_THAT(inks(3), AllOf(Contains(rgbOf(::GetSysColor(COLOR_GRAYTEXT))), Not(Contains(0U))));
    EXPECT_THAT(inks(1), Contains(0U));

    const POINT locked = cell(0, 1);
    user.click(locked.x, locked.y);
    deliver();
    EXPECT_THAT(owner.shown, ElementsAre(0)) << "the owner shows it all the same";
    EXPECT_FALSE(list.m_edit.GetSafeHwnd() && list.m_edit.IsWindowVisible());
    const POINT free = cell(1, 1);
    user.click(free.x, free.y);
    user.key(VK_DOWN);
    user.key(VK_DOWN); // around the locked ones
    user.key(VK_UP);
    deliver();
    EXPECT_THAT(owner.shown, ElementsAre(0, 1, 2, 1, 2));
    user.key(VK_RETURN);
    deliver();
    EXPECT_THAT(parent.commands, ElementsAre(IDOK)) << "the last row that opens";
}

} // namespace
