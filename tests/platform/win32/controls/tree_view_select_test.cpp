// Selecting, opening and closing in the tree view, by program and by keyboard and mouse.
#include "tree_view_fixture.h"

#include "win32/edit.h"

namespace vndk::test {
namespace {

class TreeViewSelectTest : public TreeViewFixture {};

TEST_F(TreeViewSelectTest, SelectionTellsFormerAndNewItem) {
    makeTree();
    fill();
    const struct {
        HTREEITEM item;
        Lines told;
    } steps[] = {
        {nullptr, {}},
        {root, {"selecting ->root", "selected ->root"}},
        {root, {}},
        {tail, {"selecting root>tail", "selected root>tail"}},
        {nullptr, {"selecting tail>-", "selected tail>-"}},
    };
    for (const auto& step : steps) {
        EXPECT_TRUE(TreeView_SelectItem(tree, step.item));
        EXPECT_EQ(takeNotes(), step.told) << nameOf(step.item);
        EXPECT_EQ(caret(), step.item);
    }
    TreeView_SelectItem(tree, root);
    answers[TVN_SELCHANGING] = TRUE;
    EXPECT_FALSE(TreeView_SelectItem(tree, tail));
    EXPECT_EQ(caret(), root);
    EXPECT_EQ(state(root), TVIS_SELECTED);
}

TEST_F(TreeViewSelectTest, TheSourceOfASelectionIsTold) {
    makeTree(TVS_DISABLEDRAGDROP);
    fill();
    std::vector<UINT> actions;
    onNotify[TVN_SELCHANGED] = [&](NMHDR& header) -> LRESULT {
        actions.push_back(reinterpret_cast<NMTREEVIEW&>(header).action);
        return 0;
    };
    TreeView_SelectItem(tree, root);
    clickOn(tail);
    press(VK_UP);
    EXPECT_EQ(actions, (std::vector<UINT>{TVC_UNKNOWN, TVC_BYMOUSE, TVC_BYKEYBOARD}));
}

TEST_F(TreeViewSelectTest, SelectingOpensTheParents) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, a2);
    EXPECT_EQ(rows(), (Lines{"root", "a", "a1", "a2", "b", "tail"}));
    EXPECT_EQ(takeNotes(), (Lines{"selecting ->a2", "will open root", "did open root", "will open a", "did open a",
                                  "selected ->a2"}));
}

TEST_F(TreeViewSelectTest, OpeningByProgramIsToldTheFirstTime) {
    makeTree();
    fill();
    std::vector<UINT> states;
    for (const UINT code : {TVN_ITEMEXPANDING, TVN_ITEMEXPANDED})
        onNotify[code] = [&](NMHDR& header) -> LRESULT {
            states.push_back(reinterpret_cast<NMTREEVIEW&>(header).itemNew.state);
            return 0;
        };
    EXPECT_TRUE(expand(root));
    EXPECT_EQ(takeNotes(), (Lines{"will open root", "did open root"}));
    EXPECT_EQ(states, (std::vector<UINT>{0, TVIS_EXPANDED})) << "opened once comes after the handler";
    EXPECT_EQ(state(root), TVIS_EXPANDED | TVIS_EXPANDEDONCE);
    EXPECT_FALSE(expand(root));
    EXPECT_TRUE(expand(root, TVE_COLLAPSE));
    EXPECT_FALSE(expand(root, TVE_COLLAPSE));
    EXPECT_TRUE(expand(root, TVE_TOGGLE));
    EXPECT_TRUE(takeNotes().empty()) << "after the first time the program knows what it does";
    EXPECT_FALSE(expand(b)) << "there is nothing below";
    EXPECT_TRUE(expand(root, TVE_COLLAPSE | TVE_COLLAPSERESET));
    EXPECT_EQ(state(root), 0U);
    EXPECT_EQ(TreeView_GetCount(tree), 2U);
    EXPECT_FALSE(expand(nullptr));
}

TEST_F(TreeViewSelectTest, TheParentCanRefuseToOpenOrFillIn) {
    makeTree();
    fill();
    answers[TVN_ITEMEXPANDING] = TRUE;
    EXPECT_FALSE(expand(root));
    EXPECT_EQ(state(root), 0U);
    EXPECT_EQ(takeNotes(), (Lines{"will open root"}));
    answers.clear();
    TVITEM promised{};
    promised.mask = TVIF_CHILDREN;
    promised.hItem = tail;
    promised.cChildren = 1;
    TreeView_SetItem(tree, &promised);
    EXPECT_FALSE(expand(tail)) << "the promise wasn't kept";
    EXPECT_EQ(state(tail) & TVIS_EXPANDED, 0U);
    onNotify[TVN_ITEMEXPANDING] = [this](NMHDR&) -> LRESULT {
        add(tail, "filled in");
        return 0;
    };
    EXPECT_TRUE(expand(tail));
    EXPECT_EQ(rows().back(), "filled in");
}

TEST_F(TreeViewSelectTest, ClosingTakesTheSelectionOut) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, a1);
    takeNotes();
    EXPECT_TRUE(expand(root, TVE_COLLAPSE));
    EXPECT_EQ(caret(), root);
    EXPECT_EQ(takeNotes(), (Lines{"selecting a1>root", "selected a1>root"}));
    EXPECT_EQ(rows(), (Lines{"root", "tail"}));
    expand(root);
    EXPECT_EQ(rows(), (Lines{"root", "a", "a1", "a2", "b", "tail"})) << "what was open below is open again";
}

TEST_F(TreeViewSelectTest, HiddenItemsHaveNoRectangle) {
    makeTree();
    fill();
    EXPECT_TRUE(expand(a)) << "also while its parent is closed";
    for (const HTREEITEM item : {a, a1, a2, b})
        EXPECT_TRUE(rect(item, false).empty()) << nameOf(item);
    expand(root);
    EXPECT_EQ(rect(a1, false), (std::vector<int>{0, 32, 200, 48}));
}

TEST_F(TreeViewSelectTest, EnsuringVisibilityTellsScrollingFromOpening) {
    makeTree(TVS_HASBUTTONS, 200, 80);
    fill();
    for (int index = 0; index < 10; ++index)
        add(TVI_ROOT, "more");
    const HTREEITEM last = add(TVI_ROOT, "last");
    EXPECT_TRUE(TreeView_EnsureVisible(tree, last)) << "scrolled only";
    EXPECT_FALSE(TreeView_EnsureVisible(tree, last)) << "it is in view";
    EXPECT_FALSE(TreeView_EnsureVisible(tree, a1)) << "opened";
    EXPECT_EQ(rect(a1, false).size(), 4U);
    EXPECT_GE(rect(a1, false)[1], 0);
    EXPECT_TRUE(TreeView_Select(tree, last, TVGN_FIRSTVISIBLE));
    EXPECT_EQ(next(nullptr, TVGN_FIRSTVISIBLE), next(nullptr, TVGN_FIRSTVISIBLE));
    EXPECT_LE(rect(last, false)[3], 80);
}

TEST_F(TreeViewSelectTest, DropTargetsLookSelectedAndDontMoveTheSelection) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, root);
    takeNotes();
    EXPECT_TRUE(TreeView_Select(tree, tail, TVGN_DROPHILITE));
    EXPECT_EQ(next(nullptr, TVGN_DROPHILITE), tail);
    EXPECT_EQ(state(tail), TVIS_DROPHILITED);
    EXPECT_TRUE(TreeView_Select(tree, nullptr, TVGN_DROPHILITE));
    EXPECT_EQ(state(tail), 0U);
    EXPECT_EQ(caret(), root);
    EXPECT_TRUE(takeNotes().empty());
}

TEST_F(TreeViewSelectTest, SingleExpansionOpensWhatIsEnteredAndClosesWhatIsLeft) {
    makeTree(TVS_SINGLEEXPAND);
    fill();
    add(tail, "t1");
    TreeView_SelectItem(tree, root);
    EXPECT_EQ(takeNotes(),
              (Lines{"selecting ->root", "selected ->root", "single ->root", "will open root", "did open root"}));
    TreeView_SelectItem(tree, a);
    EXPECT_EQ(rows(), (Lines{"root", "a", "a1", "a2", "b", "tail"})) << "an ancestor stays open";
    TreeView_SelectItem(tree, tail);
    EXPECT_EQ(rows(), (Lines{"root", "tail", "t1"}));
    answers[TVN_SINGLEEXPAND] = TVNRET_SKIPOLD | TVNRET_SKIPNEW;
    TreeView_SelectItem(tree, root);
    EXPECT_EQ(rows(), (Lines{"root", "tail", "t1"}));
}

// ---- Keys ----------------------------------------------------------------------------------------------------------

TEST_F(TreeViewSelectTest, PlusAndMinusTellEachTime) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, root);
    SetFocus(tree);
    takeNotes();
    const struct {
        int key;
        Lines told;
    } steps[] = {
        {VK_ADD, {"key 107", "will open root", "did open root"}},
        {VK_ADD, {"key 107", "will open root", "did open root"}},
        {VK_SUBTRACT, {"key 109", "will close root", "did close root"}},
        {VK_SUBTRACT, {"key 109", "will close root"}},
        {VK_RETURN, {"key 13", "return"}},
    };
    for (const auto& step : steps) {
        press(step.key);
        EXPECT_EQ(takeNotes(), step.told) << step.key;
    }
    press(VK_MULTIPLY);
    EXPECT_EQ(rows(), (Lines{"root", "a", "a1", "a2", "b", "tail"}));
}

TEST_F(TreeViewSelectTest, ArrowsWalkRowsAndLevels) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, root);
    SetFocus(tree);
    const struct {
        int key;
        const char* caret;
        std::size_t rows;
    } steps[] = {
        {VK_RIGHT, "root", 4}, {VK_RIGHT, "a", 4},    {VK_RIGHT, "a", 6},   {VK_DOWN, "a1", 6}, {VK_LEFT, "a", 6},
        {VK_LEFT, "a", 4},     {VK_LEFT, "root", 4},  {VK_END, "tail", 4},  {VK_UP, "b", 4},    {VK_BACK, "root", 4},
        {VK_NEXT, "tail", 4},  {VK_PRIOR, "root", 4}, {VK_HOME, "root", 4}, {VK_UP, "root", 4},
    };
    for (const auto& step : steps) {
        press(step.key);
        EXPECT_EQ(nameOf(caret()), step.caret) << step.key;
        EXPECT_EQ(rows().size(), step.rows) << step.key;
    }
}

TEST_F(TreeViewSelectTest, TypingFindsRowsThatAreShown) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, root);
    SetFocus(tree);
    user.type("t");
    settle();
    EXPECT_EQ(caret(), tail);
    wait(1100);
    user.type("a");
    settle();
    EXPECT_EQ(caret(), tail) << "a is hidden";
    expand(root);
    wait(1100);
    user.type("a");
    settle();
    EXPECT_EQ(caret(), a);
    answers[TVN_KEYDOWN] = TRUE;
    wait(1100);
    user.type("t");
    settle();
    EXPECT_EQ(caret(), a) << "the parent took the key";
}

TEST_F(TreeViewSelectTest, TheFocusSelectsTheFirstRowWhenNothingIs) {
    makeTree();
    fill();
    SetFocus(tree);
    EXPECT_EQ(caret(), root);
    EXPECT_EQ(send(WM_GETDLGCODE), DLGC_WANTARROWS | DLGC_WANTCHARS);
}

// ---- Mouse ---------------------------------------------------------------------------------------------------------

TEST_F(TreeViewSelectTest, ClicksSelectWhenTheButtonGoesUpAndDragsDont) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, root);
    SetFocus(tree);
    takeNotes();
    const POINT point = labelOf(tail);
    user.moveTo(point.x, point.y);
    user.press();
    settle();
    EXPECT_EQ(caret(), root);
    user.release();
    settle();
    EXPECT_EQ(takeNotes(), (Lines{"click", "selecting root>tail", "selected root>tail"}));
    user.drag(labelOf(root), {labelOf(root).x + 30, labelOf(root).y});
    settle();
    EXPECT_EQ(takeNotes(), (Lines{"drag root"}));
    user.drag(labelOf(root), {labelOf(root).x + 30, labelOf(root).y}, User::Button::right);
    settle();
    EXPECT_EQ(takeNotes(), (Lines{"right drag root", "right"}));
    EXPECT_EQ(caret(), tail);
    answers[NM_CLICK] = TRUE;
    clickOn(root);
    EXPECT_EQ(caret(), tail) << "the parent has done what there was to do";
}

TEST_F(TreeViewSelectTest, ButtonsAndDoubleClicksOpen) {
    makeTree();
    fill();
    const std::vector<int> label = rect(root, true);
    const POINT button = onScreen(tree, label[0] - 8, label[1] + 8);
    user.click(button.x, button.y);
    settle();
    EXPECT_EQ(rows().size(), 4U);
    EXPECT_NE(caret(), root == caret() ? nullptr : root) << "only the focus selects";
    wait(1000);
    const POINT point = labelOf(a);
    user.doubleClick(point.x, point.y);
    settle();
    EXPECT_EQ(rows().size(), 6U);
    answers[NM_DBLCLK] = TRUE;
    wait(1000);
    user.doubleClick(point.x, point.y);
    settle();
    EXPECT_EQ(rows().size(), 6U);
}

TEST_F(TreeViewSelectTest, TheRightButtonAsksForAMenu) {
    makeTree();
    fill();
    TreeView_SelectItem(tree, root);
    recorder.clear();
    clickOn(tail, User::Button::right);
    EXPECT_EQ(recorder.count(WM_CONTEXTMENU), 1);
    EXPECT_EQ(caret(), root) << "it doesn't select";
    answers[NM_RCLICK] = TRUE;
    recorder.clear();
    clickOn(tail, User::Button::right);
    EXPECT_EQ(recorder.count(WM_CONTEXTMENU), 0);
}

// ---- Labels --------------------------------------------------------------------------------------------------------

TEST_F(TreeViewSelectTest, LabelsAreEditedInPlace) {
    makeTree(TVS_EDITLABELS);
    fill();
    EXPECT_EQ(TreeView_EditLabel(tree, nullptr), nullptr);
    const HWND edit = TreeView_EditLabel(tree, tail);
    ASSERT_TRUE(IsWindow(edit));
    EXPECT_EQ(state(tail) & TVIS_SELECTED, 0U) << "editing doesn't select";
    EXPECT_EQ(GetFocus(), edit);
    EXPECT_EQ(takeNotes().back(), "begin edit tail");
    send(WM_COMMAND, MAKEWPARAM(0, EN_KILLFOCUS), 0);
    EXPECT_TRUE(IsWindow(edit));
    send(WM_COMMAND, MAKEWPARAM(0, EN_KILLFOCUS), reinterpret_cast<LPARAM>(edit));
    EXPECT_FALSE(IsWindow(edit));
    const struct {
        const char* name;
        int key;
        LRESULT taken;
        const char* told;
        const char* text;
    } rows[] = {
        {"escape", VK_ESCAPE, TRUE, "end edit (cancelled)", "tail"},
        {"refused", VK_RETURN, FALSE, "end edit new", "tail"},
        {"taken", VK_RETURN, TRUE, "end edit new", "new"},
    };
    for (const auto& row : rows) {
        answers[TVN_ENDLABELEDIT] = row.taken;
        SetWindowText(TreeView_EditLabel(tree, tail), "new");
        takeNotes();
        press(row.key);
        EXPECT_EQ(takeNotes().front(), row.told) << row.name;
        EXPECT_EQ(text(tail), row.text) << row.name;
    }
    TreeView_EditLabel(tree, tail);
    EXPECT_TRUE(send(TVM_ENDEDITLABELNOW, TRUE));
    EXPECT_EQ(send(TVM_GETEDITCONTROL), 0);
    EXPECT_FALSE(send(TVM_ENDEDITLABELNOW, TRUE));
    answers[TVN_BEGINLABELEDIT] = TRUE;
    EXPECT_EQ(TreeView_EditLabel(tree, tail), nullptr);
    makeTree();
    fill();
    EXPECT_EQ(TreeView_EditLabel(tree, tail), nullptr) << "without the style";
}

TEST_F(TreeViewSelectTest, ASecondSlowClickBeginsEditing) {
    makeTree(TVS_EDITLABELS);
    fill();
    clickOn(tail);
    wait(1000);
    EXPECT_EQ(send(TVM_GETEDITCONTROL), 0);
    clickOn(tail);
    wait(GetDoubleClickTime() + 50);
    EXPECT_NE(send(TVM_GETEDITCONTROL), 0);
}

} // namespace
} // namespace vndk::test
