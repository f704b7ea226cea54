// The list view under mouse and keyboard, and the editing of its labels.
#include "list_view_fixture.h"

#include "win32/dialog.h"
#include "win32/edit.h"
#include "win32/metrics.h"

#include <cstring>

namespace vndk::test {
namespace {

class ListViewInputTest : public ListViewFixture {
protected:
    void makeReport(DWORD style = 0) {
        makeList(LVS_REPORT | style, 300, 17 + 10 * 14);
        addColumn(200);
        fill(8);
        SetFocus(list);
        settle();
        takeNotes();
    }
    [[nodiscard]] Lines without(const std::string& word) {
        Lines kept;
        for (const std::string& line : takeNotes())
            if (line.find(word) == std::string::npos)
                kept.push_back(line);
        return kept;
    }
    void press(int key) {
        user.key(key);
        settle();
    }
};

TEST_F(ListViewInputTest, AClickSelectsThenAClickIsTold) {
    makeReport();
    clickOn(2);
    EXPECT_EQ(takeNotes(), (Lines{"changing 2 ->SF", "changed 2 ->SF", "click 2"}));
    clickOn(4);
    EXPECT_EQ(takeNotes(), (Lines{"changing 2 SF>F", "changed 2 SF>F", "changing 4 ->SF", "changing 2 F>-",
                                  "changed 2 F>-", "changed 4 ->SF", "click 4"}));
    EXPECT_EQ(send(LVM_GETSELECTIONMARK), 4);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(ListViewInputTest, TheGroundTakesTheSelectionAway) {
    for (const DWORD style : {DWORD{0}, LVS_SINGLESEL}) {
        makeReport(style);
        clickOn(1);
        takeNotes();
        const POINT right = onScreen(list, 150, 17 + 14 + 7);
        user.click(right.x, right.y);
        settle();
        EXPECT_TRUE(selection().empty()) << style;
        EXPECT_EQ(focus(), 1);
        EXPECT_EQ(takeNotes().back(), "click 1") << "the row under the pointer is told all the same";
    }
}

TEST_F(ListViewInputTest, KeysHeldExtendAndToggle) {
    makeReport();
    clickOn(1);
    user.keyDown(VK_SHIFT);
    clickOn(4);
    user.keyUp(VK_SHIFT);
    EXPECT_EQ(selection(), (std::vector<int>{1, 2, 3, 4}));
    user.keyDown(VK_CONTROL);
    clickOn(2);
    clickOn(6);
    user.keyUp(VK_CONTROL);
    settle();
    EXPECT_EQ(selection(), (std::vector<int>{1, 3, 4, 6}));
    EXPECT_EQ(focus(), 6);
    user.keyDown(VK_SHIFT);
    clickOn(5);
    user.keyUp(VK_SHIFT);
    EXPECT_EQ(selection(), (std::vector<int>{5, 6})) << "from the mark, which the last click set";
}

TEST_F(ListViewInputTest, OfSeveralSelectedItemsOneStaysWhenTheButtonGoesUp) {
    makeReport();
    for (const int index : {1, 2, 3})
        select(index, LVIS_SELECTED);
    const POINT point = labelOf(2);
    user.moveTo(point.x, point.y);
    user.press();
    settle();
    EXPECT_EQ(selection(), (std::vector<int>{1, 2, 3})) << "a drag would take them all";
    user.release();
    settle();
    EXPECT_EQ(selection(), std::vector<int>{2});
}

TEST_F(ListViewInputTest, DraggingIsToldWithTheItemAndTheMouseIsTheParents) {
    for (const bool right : {false, true}) {
        makeReport();
        const POINT from = labelOf(3);
        user.drag(from, {from.x + 20, from.y + 5}, right ? User::Button::right : User::Button::left);
        settle();
        const Lines told = without("chang");
        EXPECT_EQ(told, (right ? Lines{"right drag 3", "right 3"} : Lines{"drag 3"}));
        EXPECT_EQ(selection(), std::vector<int>{3});
        EXPECT_EQ(GetCapture(), nullptr);
    }
}

TEST_F(ListViewInputTest, DoubleClickAndReturnActivate) {
    makeReport();
    const POINT point = labelOf(2);
    user.doubleClick(point.x, point.y);
    settle();
    EXPECT_EQ(without("chang"), (Lines{"click 2", "double 2", "activate 2"}));
    press(VK_RETURN);
    EXPECT_EQ(takeNotes(), (Lines{"key 13", "return", "activate 2"}));
}

TEST_F(ListViewInputTest, TheRightButtonSelectsAndAsksForAMenu) {
    makeReport();
    select(1, LVIS_SELECTED);
    select(3, LVIS_SELECTED);
    recorder.clear();
    clickOn(3, User::Button::right);
    EXPECT_EQ(selection(), (std::vector<int>{1, 3})) << "on a selected item the selection stays";
    EXPECT_EQ(recorder.count(WM_CONTEXTMENU), 1);
    clickOn(5, User::Button::right);
    EXPECT_EQ(selection(), std::vector<int>{5});
    answers[NM_RCLICK] = TRUE;
    recorder.clear();
    clickOn(5, User::Button::right);
    EXPECT_EQ(recorder.count(WM_CONTEXTMENU), 0);
}

TEST_F(ListViewInputTest, KeysMoveFocusAndSelection) {
    makeReport();
    const struct {
        int key;
        int modifier;
        std::vector<int> selected;
        int focus;
    } rows[] = {
        {VK_DOWN, 0, {0}, 0}, // nothing had the focus
        {VK_DOWN, 0, {1}, 1},
        {VK_DOWN, VK_SHIFT, {1, 2}, 2},
        {VK_UP, VK_SHIFT, {1}, 1},
        {VK_DOWN, VK_CONTROL, {1}, 2},
        {VK_SPACE, VK_CONTROL, {1, 2}, 2},
        {VK_SPACE, VK_CONTROL, {1}, 2},
        {VK_END, 0, {7}, 7},
        {VK_DOWN, 0, {7}, 7},
        {VK_HOME, VK_SHIFT, {0, 1, 2, 3, 4, 5, 6, 7}, 0},
        {VK_NEXT, 0, {7}, 7},
        {VK_PRIOR, 0, {0}, 0},
        {VK_LEFT, 0, {0}, 0},
    };
    for (const auto& row : rows) {
        if (row.modifier != 0)
            user.keyWith(row.modifier, row.key);
        else
            user.key(row.key);
        settle();
        EXPECT_EQ(selection(), row.selected) << row.key << " with " << row.modifier;
        EXPECT_EQ(focus(), row.focus) << row.key << " with " << row.modifier;
    }
}

TEST_F(ListViewInputTest, ArrowsFollowTheView) {
    makeList(LVS_ICON | LVS_AUTOARRANGE, 120, 300); // two icons in a row
    send(LVM_SETICONSPACING, 0, MAKELPARAM(52, 64));
    fill(5);
    SetFocus(list);
    const std::pair<int, int> rows[] = {{VK_DOWN, 0}, {VK_DOWN, 2}, {VK_RIGHT, 3}, {VK_UP, 1},
                                        {VK_UP, 1},   {VK_LEFT, 0}, {VK_END, 4},   {VK_HOME, 0}};
    for (const auto& [key, expected] : rows) {
        press(key);
        EXPECT_EQ(focus(), expected) << key;
    }
}

TEST_F(ListViewInputTest, TypingFindsTexts) {
    makeList(LVS_REPORT);
    for (const char* each : {"Door", "Desk", "Chair", "Chest", "Desk lamp"})
        insert(each);
    SetFocus(list);
    settle();
    const std::pair<const char*, int> rows[] = {{"d", 0}, {"d", 1}, {"d", 4}};
    for (const auto& [typed, expected] : rows) { // the same letter steps from match to match
        user.type(typed);
        settle();
        EXPECT_EQ(focus(), expected);
    }
    wait(1100);
    user.type("che");
    settle();
    EXPECT_EQ(focus(), 3);
    char buffer[20] = "";
    EXPECT_EQ(send(LVM_GETISEARCHSTRING, 0, reinterpret_cast<LPARAM>(buffer)), 3);
    EXPECT_STREQ(buffer, "che");
    wait(1100);
    EXPECT_EQ(send(LVM_GETISEARCHSTRING), 0);
    user.type("desk l");
    settle();
    EXPECT_EQ(selection(), std::vector<int>{4}) << "a blank belongs to the text while it is typed";
}

TEST_F(ListViewInputTest, TheRubberBandSelectsWhatItTouches) {
    makeList(LVS_ICON | LVS_AUTOARRANGE, 300, 200);
    send(LVM_SETICONSPACING, 0, MAKELPARAM(60, 60));
    fill(8); // five in a row
    const POINT from = onScreen(list, 110, 100);
    const POINT to = onScreen(list, 2, 30);
    user.moveTo(from.x, from.y);
    user.press();
    user.moveTo(from.x - 10, from.y);
    settle();
    EXPECT_EQ(without("chang"), (Lines{"band"}));
    user.moveTo(to.x, to.y);
    settle();
    EXPECT_EQ(selection(), (std::vector<int>{5, 6}));
    user.moveTo(to.x, from.y - 100);
    settle();
    EXPECT_EQ(selection(), (std::vector<int>{0, 1, 5, 6}));
    user.moveTo(from.x, from.y);
    settle();
    EXPECT_TRUE(selection().empty()) << "what it leaves isn't selected any more";
    user.release();
    settle();
    EXPECT_EQ(GetCapture(), nullptr);
    answers[LVN_MARQUEEBEGIN] = TRUE;
    user.drag(from, to);
    settle();
    EXPECT_TRUE(selection().empty());
}

TEST_F(ListViewInputTest, TheWheelScrollsThreeRows) {
    makeReport();
    fill(30);
    const POINT point = labelOf(3);
    user.moveTo(point.x, point.y);
    user.turnWheel(-120);
    settle();
    EXPECT_EQ(send(LVM_GETTOPINDEX), 3);
    user.turnWheel(120);
    settle();
    EXPECT_EQ(send(LVM_GETTOPINDEX), 0);
}

TEST_F(ListViewInputTest, TheHeaderIsTold) {
    makeReport();
    addColumn(50);
    const POINT second = onScreen(list, 225, 8);
    user.click(second.x, second.y);
    settle();
    EXPECT_EQ(without("chang"), (Lines{"column 1"}));
    const POINT divider = onScreen(list, 199, 8);
    user.drag(divider, {divider.x + 30, divider.y});
    settle();
    EXPECT_EQ(send(LVM_GETCOLUMNWIDTH, 0), 230);
    const POINT moved = onScreen(list, 229, 8);
    user.doubleClick(moved.x, moved.y);
    settle();
    EXPECT_LT(send(LVM_GETCOLUMNWIDTH, 0), 60) << "as wide as its texts";
    answers[HDN_ITEMCHANGING] = TRUE; // the header's words reach the list's parent
    send(LVM_SETCOLUMNWIDTH, 0, MAKELPARAM(100, 0));
    EXPECT_LT(send(LVM_GETCOLUMNWIDTH, 0), 60);
}

TEST_F(ListViewInputTest, FocusIsToldAndAsked) {
    makeList(LVS_REPORT);
    EXPECT_EQ(send(WM_GETDLGCODE), DLGC_WANTARROWS | DLGC_WANTCHARS);
    std::vector<UINT> codes;
    for (const UINT code : {NM_SETFOCUS, NM_KILLFOCUS})
        onNotify[code] = [&codes](NMHDR& header) -> LRESULT {
            codes.push_back(header.code);
            return 0;
        };
    SetFocus(list);
    SetFocus(owner);
    EXPECT_EQ(codes, (std::vector<UINT>{NM_SETFOCUS, NM_KILLFOCUS}));
}

TEST_F(ListViewInputTest, HoveringSelectsWithTheStyle) {
    makeReport();
    ListView_SetExtendedListViewStyle(list, LVS_EX_TRACKSELECT);
    const POINT point = labelOf(3);
    user.moveTo(point.x, point.y);
    settle();
    EXPECT_EQ(send(LVM_GETHOTITEM), 3);
    wait(1000);
    EXPECT_EQ(selection(), std::vector<int>{3});
}

// ---- Labels --------------------------------------------------------------------------------------------------------

class ListViewEditTest : public ListViewInputTest {
protected:
    HWND begin(int index) { return reinterpret_cast<HWND>(send(LVM_EDITLABEL, static_cast<WPARAM>(index))); }
    [[nodiscard]] HWND box() { return reinterpret_cast<HWND>(send(LVM_GETEDITCONTROL)); }
};

TEST_F(ListViewEditTest, ALabelIsEditedWhenStyleAndFocusAllow) {
    makeReport();
    EXPECT_EQ(begin(0), nullptr);
    makeReport(LVS_EDITLABELS);
    SetFocus(owner);
    EXPECT_EQ(begin(0), nullptr);
    SetFocus(list);
    takeNotes();
    const HWND edit = begin(2);
    ASSERT_NE(edit, nullptr);
    EXPECT_EQ(box(), edit);
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(GetTopWindow(list), edit);
    EXPECT_EQ(GetDlgCtrlID(edit), 1);
    EXPECT_EQ(SendMessage(edit, EM_GETLIMITTEXT, 0, 0), MAX_PATH - 1);
    EXPECT_EQ(selection(), std::vector<int>{2});
    char shown[20] = "";
    GetWindowText(edit, shown, 20);
    EXPECT_STREQ(shown, "item 2");
    EXPECT_EQ(without("chang"), (Lines{"begin edit 2"}));
    EXPECT_EQ(begin(-1), nullptr);
    EXPECT_FALSE(IsWindow(edit));
    EXPECT_EQ(takeNotes(), (Lines{"end edit (cancelled)"}));
    EXPECT_EQ(box(), nullptr);
}

TEST_F(ListViewEditTest, TheWayOutDecides) {
    const struct {
        const char* name;
        std::function<void()> leave;
        LRESULT taken;
        const char* told;
        const char* text;
    } rows[] = {
        {"Return", [this] { press(VK_RETURN); }, TRUE, "end edit new", "new"},
        {"Return, refused", [this] { press(VK_RETURN); }, FALSE, "end edit new", "item 1"},
        {"Escape", [this] { press(VK_ESCAPE); }, TRUE, "end edit (cancelled)", "item 1"},
        {"focus", [this] { SetFocus(owner); }, TRUE, "end edit new", "new"},
        {"scrolling", [this] { send(LVM_SCROLL, 0, 14); }, TRUE, "end edit new", "new"},
        {"deletion", [this] { ListView_DeleteItem(list, 7); }, TRUE, "end edit (cancelled)", "item 1"},
        {"column", [this] { send(LVM_SETCOLUMNWIDTH, 0, 50); }, TRUE, "end edit new", "new"},
    };
    for (const auto& row : rows) {
        makeReport(LVS_EDITLABELS);
        fill(10);
        answers[LVN_ENDLABELEDIT] = row.taken;
        const HWND edit = begin(1);
        SetWindowText(edit, "new");
        takeNotes();
        row.leave();
        EXPECT_EQ(takeNotes().front(), row.told) << row.name;
        EXPECT_EQ(text(1), row.text) << row.name;
        EXPECT_FALSE(IsWindow(edit)) << row.name;
        DestroyWindow(list);
    }
}

TEST_F(ListViewEditTest, TheParentMayRefuseOrPrepareTheBox) {
    makeReport(LVS_EDITLABELS);
    onNotify[LVN_BEGINLABELEDIT] = [this](NMHDR&) -> LRESULT {
        EXPECT_TRUE(IsWindow(box()));
        EXPECT_FALSE(IsWindowVisible(box()));
        SendMessage(box(), EM_SETLIMITTEXT, 5, 0);
        return 0;
    };
    const HWND edit = begin(0);
    EXPECT_EQ(SendMessage(edit, EM_GETLIMITTEXT, 0, 0), 5);
    onNotify.clear();
    answers[LVN_BEGINLABELEDIT] = TRUE;
    EXPECT_EQ(begin(1), nullptr);
    EXPECT_EQ(box(), nullptr);
}

TEST_F(ListViewEditTest, ASecondSlowClickOnTheLabelBeginsEditing) {
    makeReport(LVS_EDITLABELS);
    clickOn(3);
    wait(1000);
    EXPECT_EQ(box(), nullptr) << "the first click only selects";
    clickOn(3);
    EXPECT_EQ(box(), nullptr);
    wait(GetDoubleClickTime() + 50);
    EXPECT_NE(box(), nullptr);
    press(VK_ESCAPE);
    const POINT point = labelOf(3);
    user.doubleClick(point.x, point.y);
    wait(1000);
    EXPECT_EQ(box(), nullptr) << "a double click activates";
}

TEST_F(ListViewEditTest, ForeignMessagesDontEndEditing) {
    makeReport(LVS_EDITLABELS);
    send(WM_COMMAND, MAKEWPARAM(0, EN_KILLFOCUS), 0);
    const HWND edit = begin(0);
    send(WM_COMMAND, MAKEWPARAM(1, EN_KILLFOCUS), 0xDEAD);
    EXPECT_TRUE(IsWindow(edit));
    send(WM_COMMAND, MAKEWPARAM(1, EN_KILLFOCUS), reinterpret_cast<LPARAM>(edit));
    EXPECT_FALSE(IsWindow(edit));
}

} // namespace
} // namespace vndk::test
