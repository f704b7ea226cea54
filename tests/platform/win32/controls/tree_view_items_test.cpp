// What a tree view keeps: items, their order and their relations.
#include "tree_view_fixture.h"

#include <cstring>

namespace vndk::test {
namespace {

class TreeViewItemsTest : public TreeViewFixture {
protected:
    [[nodiscard]] Lines childrenOf(HTREEITEM parent) {
        Lines found;
        for (HTREEITEM item = next(parent, TVGN_CHILD); item != nullptr; item = next(item, TVGN_NEXT))
            found.push_back(nameOf(item));
        return found;
    }
    [[nodiscard]] int childrenFlag(HTREEITEM item) {
        TVITEM wanted{};
        wanted.mask = TVIF_CHILDREN;
        wanted.hItem = item;
        EXPECT_TRUE(TreeView_GetItem(tree, &wanted));
        return wanted.cChildren;
    }
};

TEST_F(TreeViewItemsTest, ItemsGoWhereTheInsertionSays) {
    makeTree();
    const HTREEITEM m = add(TVI_ROOT, "m");
    add(nullptr, "first", TVI_FIRST);
    const HTREEITEM after = add(TVI_ROOT, "after m", m);
    add(TVI_ROOT, "last", TVI_LAST);
    const HTREEITEM child = add(m, "child");
    add(TVI_ROOT, "stranger", child); // no sibling: goes to the end
    EXPECT_EQ(childrenOf(TVI_ROOT), (Lines{"first", "m", "after m", "last", "stranger"}));
    for (const char* each : {"pear", "Apple", "fig"})
        add(after, each, TVI_SORT);
    EXPECT_EQ(childrenOf(after), (Lines{"Apple", "fig", "pear"}));
    EXPECT_EQ(TreeView_GetCount(tree), 9U);
    EXPECT_EQ(add(reinterpret_cast<HTREEITEM>(UINT_PTR{0xDEAD0}), "orphan"), nullptr);
    EXPECT_EQ(TreeView_InsertItem(tree, nullptr), nullptr);
}

TEST_F(TreeViewItemsTest, RelationsAreAnswered) {
    makeTree();
    fill();
    expand(root);
    const struct {
        HTREEITEM item;
        UINT which;
        HTREEITEM found;
    } rows[] = {
        {nullptr, TVGN_ROOT, root},
        {TVI_ROOT, TVGN_ROOT, root},
        {root, TVGN_ROOT, root},
        {a1, TVGN_ROOT, root},
        {a, TVGN_PARENT, root},
        {nullptr, TVGN_PARENT, nullptr},
        {root, TVGN_PARENT, nullptr},
        {nullptr, TVGN_CHILD, root},
        {root, TVGN_CHILD, a},
        {b, TVGN_CHILD, nullptr},
        {a, TVGN_NEXT, b},
        {b, TVGN_NEXT, nullptr},
        {root, TVGN_NEXT, tail},
        {b, TVGN_PREVIOUS, a},
        {a, TVGN_PREVIOUS, nullptr},
        {root, TVGN_NEXTVISIBLE, a},
        {a, TVGN_NEXTVISIBLE, b},
        {b, TVGN_NEXTVISIBLE, tail},
        {tail, TVGN_NEXTVISIBLE, nullptr},
        {tail, TVGN_PREVIOUSVISIBLE, b},
        {a1, TVGN_NEXTVISIBLE, nullptr},
        {nullptr, TVGN_FIRSTVISIBLE, root},
        {nullptr, TVGN_LASTVISIBLE, tail},
        {nullptr, TVGN_CARET, nullptr},
        {nullptr, TVGN_NEXT, nullptr},
        {root, 99, nullptr},
    };
    for (const auto& row : rows)
        EXPECT_EQ(next(row.item, row.which), row.found) << nameOf(row.item) << " " << row.which;
}

TEST_F(TreeViewItemsTest, DeletionTellsChildrenFirstAndDeadHandlesAreRecognised) {
    makeTree();
    fill();
    expand(root);
    takeNotes();
    EXPECT_TRUE(TreeView_DeleteItem(tree, a));
    EXPECT_EQ(takeNotes(), (Lines{"delete a2", "delete a1", "delete a"}));
    EXPECT_EQ(rows(), (Lines{"root", "b", "tail"}));
    EXPECT_EQ(TreeView_GetCount(tree), 3U);
    EXPECT_FALSE(TreeView_DeleteItem(tree, a));
    EXPECT_FALSE(TreeView_SelectItem(tree, a1));
    EXPECT_EQ(text(a), "untouched");
    add(TVI_ROOT, "new"); // its place may be taken again, its handle not
    EXPECT_EQ(text(a), "untouched");
    EXPECT_TRUE(TreeView_DeleteAllItems(tree));
    EXPECT_EQ(TreeView_GetCount(tree), 0U);
    EXPECT_TRUE(TreeView_DeleteItem(tree, nullptr)) << "of an empty tree";
    fill();
    DestroyWindow(tree);
    EXPECT_EQ(takeNotes().size(), 6U);
}

TEST_F(TreeViewItemsTest, TheSelectionLeavesAnItemBeforeItGoes) {
    makeTree();
    fill();
    const struct {
        const char* name;
        std::function<HTREEITEM()> deleted;
        std::function<HTREEITEM()> selected;
        const char* after;
    } rows[] = {
        {"next sibling", [this] { return a1; }, [this] { return a1; }, "a2"},
        {"previous sibling", [this] { return a2; }, [this] { return a2; }, "a1"},
        {"parent's sibling", [this] { return a; }, [this] { return a1; }, "b"},
        {"elsewhere", [this] { return a; }, [this] { return tail; }, "tail"},
    };
    for (const auto& row : rows) {
        makeTree();
        fill();
        TreeView_SelectItem(tree, row.selected());
        answers[TVN_SELCHANGING] = TRUE; // it can't be kept there
        TreeView_DeleteItem(tree, row.deleted());
        EXPECT_TRUE(caret() == nullptr || std::string(row.name) == "elsewhere") << row.name;
        answers.clear();
        makeTree();
        fill();
        TreeView_SelectItem(tree, row.selected());
        TreeView_DeleteItem(tree, row.deleted());
        EXPECT_EQ(nameOf(caret()), row.after) << row.name;
    }
}

TEST_F(TreeViewItemsTest, TheChildrenFlagFollowsTheChildrenUnlessItWasSet) {
    makeTree();
    fill();
    EXPECT_EQ(childrenFlag(a1), 0);
    EXPECT_EQ(childrenFlag(a), 1);
    TreeView_DeleteItem(tree, a1);
    TreeView_DeleteItem(tree, a2);
    EXPECT_EQ(childrenFlag(a), 0);
    TVITEM set{};
    set.mask = TVIF_CHILDREN;
    set.hItem = root;
    set.cChildren = 1;
    TreeView_SetItem(tree, &set);
    TreeView_DeleteItem(tree, a);
    TreeView_DeleteItem(tree, b);
    EXPECT_EQ(childrenFlag(root), 1);
    set.cChildren = I_CHILDRENCALLBACK;
    TreeView_SetItem(tree, &set);
    onNotify[TVN_GETDISPINFO] = [](NMHDR& header) -> LRESULT {
        reinterpret_cast<NMTVDISPINFO&>(header).item.cChildren = 0;
        return 0;
    };
    EXPECT_EQ(childrenFlag(root), 0);
}

TEST_F(TreeViewItemsTest, TextsAreAskedForUntilTheyAreToBeKept) {
    makeTree();
    TVINSERTSTRUCT insert{};
    insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_IMAGE;
    insert.item.pszText = LPSTR_TEXTCALLBACK;
    insert.item.iImage = I_IMAGECALLBACK;
    insert.item.lParam = 12;
    const HTREEITEM item = TreeView_InsertItem(tree, &insert);
    int asked = 0;
    bool keep = false;
    onNotify[TVN_GETDISPINFO] = [&](NMHDR& header) -> LRESULT {
        TVITEM& wanted = reinterpret_cast<NMTVDISPINFO&>(header).item;
        ++asked;
        if ((wanted.mask & TVIF_TEXT) != 0)
            std::strcpy(wanted.pszText, ("data " + std::to_string(wanted.lParam)).c_str());
        wanted.iImage = 4;
        if (keep)
            wanted.mask |= TVIF_DI_SETITEM;
        return 0;
    };
    EXPECT_EQ(text(item), "data 12");
    EXPECT_EQ(text(item), "data 12");
    EXPECT_EQ(asked, 2);
    keep = true;
    EXPECT_EQ(text(item), "data 12");
    EXPECT_EQ(text(item), "data 12");
    EXPECT_EQ(asked, 3);
    TVITEM wanted{};
    wanted.mask = TVIF_IMAGE;
    wanted.hItem = item;
    TreeView_GetItem(tree, &wanted);
    EXPECT_EQ(wanted.iImage, 4);
}

int CALLBACK bySize(LPARAM first, LPARAM second, LPARAM sign) { return static_cast<int>((first - second) * sign); }

TEST_F(TreeViewItemsTest, ChildrenAreSortedByTextOrByComparison) {
    makeTree();
    EXPECT_FALSE(send(TVM_SORTCHILDREN, FALSE, reinterpret_cast<LPARAM>(TVI_ROOT))) << "of an empty tree";
    root = add(TVI_ROOT, "root");
    EXPECT_FALSE(send(TVM_SORTCHILDREN, FALSE, reinterpret_cast<LPARAM>(root)));
    const HTREEITEM inner = add(root, "mm");
    for (const char* each : {"ccc", "Bbbbb", "a"}) {
        add(root, each);
        add(inner, each);
    }
    expand(root);
    expand(inner);
    EXPECT_TRUE(send(TVM_SORTCHILDREN, FALSE, reinterpret_cast<LPARAM>(root)));
    EXPECT_EQ(rows(), (Lines{"root", "a", "Bbbbb", "ccc", "mm", "ccc", "Bbbbb", "a"})) << "this level only";
    EXPECT_TRUE(send(TVM_SORTCHILDREN, TRUE, reinterpret_cast<LPARAM>(TVI_ROOT)));
    EXPECT_EQ(childrenOf(inner), (Lines{"a", "Bbbbb", "ccc"}));
    TVSORTCB sort{root, &bySize, -1};
    EXPECT_TRUE(send(TVM_SORTCHILDRENCB, 0, reinterpret_cast<LPARAM>(&sort)));
    EXPECT_EQ(childrenOf(root), (Lines{"Bbbbb", "ccc", "mm", "a"}));
    EXPECT_EQ(rows(), (Lines{"root", "Bbbbb", "ccc", "mm", "a", "Bbbbb", "ccc", "a"}));
    sort.lpfnCompare = nullptr;
    EXPECT_FALSE(send(TVM_SORTCHILDRENCB, 0, reinterpret_cast<LPARAM>(&sort)));
}

TEST_F(TreeViewItemsTest, CheckBoxesComeWithTheStyle) {
    makeTree();
    fill();
    EXPECT_EQ(state(a), 0U);
    SetWindowLong(tree, GWL_STYLE, GetWindowLong(tree, GWL_STYLE) | static_cast<LONG>(TVS_CHECKBOXES));
    EXPECT_NE(send(TVM_GETIMAGELIST, TVSIL_STATE), 0);
    EXPECT_EQ(state(a1), INDEXTOSTATEIMAGEMASK(1));
    const HTREEITEM late = add(TVI_ROOT, "late");
    EXPECT_EQ(TreeView_GetCheckState(tree, late), 0U);
    TreeView_SetCheckState(tree, late, TRUE);
    EXPECT_EQ(TreeView_GetCheckState(tree, late), 1U);
    TreeView_SelectItem(tree, root);
    SetFocus(tree);
    press(VK_SPACE);
    EXPECT_EQ(TreeView_GetCheckState(tree, root), 1U);
    const std::vector<int> label = rect(tail, true);
    const POINT box = onScreen(tree, label[0] - 8, label[1] + 8);
    user.click(box.x, box.y);
    settle();
    EXPECT_EQ(TreeView_GetCheckState(tree, tail), 1U);
    EXPECT_EQ(caret(), root) << "a click on the box doesn't select";
}

TEST_F(TreeViewItemsTest, NonsenseArgumentsAreAnswered) {
    const auto made = [](UINT_PTR value) { return static_cast<LPARAM>(value); };
    makeTree(TVS_EDITLABELS | TVS_CHECKBOXES | TVS_HASLINES);
    fill();
    for (UINT message = TV_FIRST; message <= TVM_EDITLABELW; ++message) {
        if (message == TVM_DELETEITEM)
            continue;
        for (const WPARAM wParam : {WPARAM{0}, static_cast<WPARAM>(-1), WPARAM{0x7FFFFFFF}})
            send(message, wParam, 0);
    }
    for (const LPARAM bad : {made(0xDEAD0), made(1), made(0x48000001), static_cast<LPARAM>(-5)}) {
        for (const UINT message : {TVM_DELETEITEM, TVM_EXPAND, TVM_EDITLABEL, TVM_ENSUREVISIBLE, TVM_SORTCHILDREN,
                                   TVM_CREATEDRAGIMAGE, TVM_SETINSERTMARK})
            EXPECT_EQ(send(message, TVE_EXPAND, bad), 0) << message;
        for (UINT which = TVGN_NEXT; which <= TVGN_LASTVISIBLE; ++which)
            if (which < TVGN_FIRSTVISIBLE) {
                EXPECT_EQ(send(TVM_GETNEXTITEM, which, bad), 0) << which;
            }
        EXPECT_EQ(send(TVM_SELECTITEM, TVGN_CARET, bad), FALSE);
    }
    settle();
    EXPECT_TRUE(IsWindow(tree));
}

TEST_F(TreeViewItemsTest, EmptyingAnEmptyTreePaintsNothing) {
    makeTree();
    fill();
    TreeView_DeleteAllItems(tree);
    EXPECT_TRUE(GetUpdateRect(tree, nullptr, FALSE));
    settle();
    EXPECT_TRUE(TreeView_DeleteAllItems(tree));
    EXPECT_FALSE(GetUpdateRect(tree, nullptr, FALSE)) << "a handler may do so while the tree is painted";
}

TEST_F(TreeViewItemsTest, AHandlerMayDestroyTheTreeOrItsItems) {
    const UINT codes[] = {TVN_SELCHANGING, TVN_SELCHANGED, TVN_ITEMEXPANDING,  TVN_ITEMEXPANDED, TVN_DELETEITEM,
                          TVN_GETDISPINFO, TVN_KEYDOWN,    TVN_BEGINLABELEDIT, TVN_ENDLABELEDIT, NM_CUSTOMDRAW,
                          NM_CLICK,        NM_SETFOCUS,    NM_KILLFOCUS,       TVN_SINGLEEXPAND};
    for (const bool all : {false, true})
        for (const UINT code : codes) {
            onNotify.clear();
            makeTree(TVS_EDITLABELS | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_SINGLEEXPAND);
            fill();
            add(a, "x");
            TVITEM callback{};
            callback.mask = TVIF_TEXT;
            callback.hItem = b;
            callback.pszText = LPSTR_TEXTCALLBACK;
            TreeView_SetItem(tree, &callback);
            onNotify[code] = [this, all](NMHDR&) -> LRESULT {
                if (all)
                    DestroyWindow(tree);
                else
                    TreeView_DeleteAllItems(tree);
                return 0;
            };
            expand(root);
            if (IsWindow(tree) && !rect(root, true).empty())
                clickOn(root);
            TreeView_SelectItem(tree, a1);
            TreeView_EditLabel(tree, a1);
            SetFocus(owner);
            press(VK_DOWN);
            TreeView_DeleteItem(tree, a);
            expand(root, TVE_COLLAPSE | TVE_COLLAPSERESET);
            if (IsWindow(tree))
                DestroyWindow(tree);
            settle();
        }
}

} // namespace
} // namespace vndk::test
