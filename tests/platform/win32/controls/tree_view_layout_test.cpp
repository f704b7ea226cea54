// Geometry, scrolling and painting of the tree view. The default font is 13 high, which makes rows of 16.
#include "tree_view_fixture.h"

#include "win32/draw.h"
#include "win32/metrics.h"
#include "win32/scrollbar.h"

namespace vndk::test {
namespace {

using Numbers = std::vector<int>;

class TreeViewLayoutTest : public TreeViewFixture {
protected:
    [[nodiscard]] std::uint32_t at(int x, int y) {
        const POINT point = onScreen(tree, x, y);
        return pixel(point.x, point.y);
    }
    [[nodiscard]] int count(const RECT& rect, COLORREF color) {
        int found = 0;
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                found += at(x, y) == rgbOf(color) ? 1 : 0;
        return found;
    }
    [[nodiscard]] int topRow() {
        int row = 0;
        for (HTREEITEM item = next(nullptr, TVGN_ROOT); item != next(nullptr, TVGN_FIRSTVISIBLE);
             item = next(item, TVGN_NEXTVISIBLE))
            ++row;
        return row;
    }
};

TEST_F(TreeViewLayoutTest, HeightsAreEvenUnlessTheStyleAllowsOdd) {
    const struct {
        DWORD style;
        int given;
        LRESULT height;
    } rows[] = {
        {0, 9, 8}, {0, 3, 2}, {0, 4, 4}, {0, 1, 1}, {TVS_NONEVENHEIGHT, 9, 9}, {0, -1, 16}, {TVS_NONEVENHEIGHT, 3, 3}};
    makeTree();
    LRESULT former = 16;
    DWORD style = 0;
    for (const auto& row : rows) {
        if (row.style != style) {
            makeTree(row.style);
            style = row.style;
            former = send(TVM_GETITEMHEIGHT);
        }
        EXPECT_EQ(send(TVM_SETITEMHEIGHT, static_cast<WPARAM>(row.given)), former) << row.given;
        EXPECT_EQ(send(TVM_GETITEMHEIGHT), row.height) << row.given;
        former = row.height;
    }
}

TEST_F(TreeViewLayoutTest, LabelsStandBehindIndentStateAndPicture) {
    makeTree(0);
    fill();
    expand(root);
    const auto labelLeft = [this](HTREEITEM item) { return rect(item, true).at(0); };
    EXPECT_EQ(send(TVM_GETINDENT), 19);
    EXPECT_EQ(labelLeft(root), 0);
    EXPECT_EQ(labelLeft(a), 19);
    SetWindowLong(tree, GWL_STYLE, static_cast<LONG>(WS_CHILD | WS_VISIBLE | TVS_HASLINES | TVS_LINESATROOT));
    EXPECT_EQ(labelLeft(root), 19);
    const HIMAGELIST images = ImageList_Create(20, 24, ILC_COLOR24, 1, 1);
    ImageList_SetImageCount(images, 1);
    EXPECT_EQ(send(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images)), 0);
    EXPECT_EQ(send(TVM_GETINDENT), 23);
    EXPECT_EQ(send(TVM_GETITEMHEIGHT), 24);
    EXPECT_EQ(labelLeft(root), 23 + 20 + 3);
    EXPECT_EQ(send(TVM_SETIMAGELIST, TVSIL_NORMAL, 0), reinterpret_cast<LRESULT>(images));
    ImageList_Destroy(images);
    send(TVM_SETINDENT, 40);
    EXPECT_EQ(labelLeft(a), 80);
    send(TVM_SETINDENT, 0);
    EXPECT_EQ(send(TVM_GETINDENT), 5) << "the smallest there is";
    EXPECT_EQ(rect(root, false), (Numbers{0, 0, 200, 16}));
}

TEST_F(TreeViewLayoutTest, PointsHitParts) {
    makeTree(TVS_HASBUTTONS | TVS_LINESATROOT | TVS_CHECKBOXES);
    const HIMAGELIST images = ImageList_Create(16, 16, ILC_COLOR24, 1, 1);
    ImageList_SetImageCount(images, 1);
    send(TVM_SETIMAGELIST, TVSIL_NORMAL, reinterpret_cast<LPARAM>(images));
    fill();
    expand(root);
    const struct {
        POINT point;
        HTREEITEM item;
        UINT flags;
    } rows[] = {
        {{5, 8}, root, TVHT_ONITEMBUTTON},
        {{25, 8}, root, TVHT_ONITEMSTATEICON},
        {{40, 8}, root, TVHT_ONITEMICON},
        {{58, 8}, root, TVHT_ONITEMLABEL},
        {{150, 8}, root, TVHT_ONITEMRIGHT},
        {{5, 24}, a, TVHT_ONITEMINDENT},
        {{25, 24}, a, TVHT_ONITEMBUTTON},
        {{25, 40}, b, TVHT_ONITEMINDENT},
        {{5, 150}, nullptr, TVHT_NOWHERE},
        {{-1, 8}, nullptr, TVHT_TOLEFT},
        {{300, -1}, nullptr, TVHT_TORIGHT | TVHT_ABOVE},
        {{5, 400}, nullptr, TVHT_BELOW},
    };
    for (const auto& row : rows) {
        TVHITTESTINFO info{};
        info.pt = row.point;
        EXPECT_EQ(TreeView_HitTest(tree, &info), row.item) << row.point.x << "," << row.point.y;
        EXPECT_EQ(info.flags, row.flags) << row.point.x << "," << row.point.y;
        EXPECT_EQ(info.hItem, row.item);
    }
    DestroyWindow(tree);
    ImageList_Destroy(images);
}

TEST_F(TreeViewLayoutTest, BarsComeWhenRowsOrTextsDontFit) {
    makeTree(0, 100, 80);
    for (int index = 0; index < 5; ++index)
        add(TVI_ROOT, "item");
    EXPECT_EQ(send(TVM_GETVISIBLECOUNT), 5);
    EXPECT_TRUE((GetWindowLong(tree, GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL)) == 0);
    for (int index = 0; index < 15; ++index)
        add(TVI_ROOT, "item");
    EXPECT_TRUE((GetWindowLong(tree, GWL_STYLE) & WS_VSCROLL) != 0);
    const HTREEITEM wide = add(TVI_ROOT, std::string(40, 'W'));
    EXPECT_TRUE((GetWindowLong(tree, GWL_STYLE) & WS_HSCROLL) != 0);
    SCROLLINFO info{sizeof(SCROLLINFO), SIF_ALL, 0, 0, 0, 0, 0};
    EXPECT_TRUE(GetScrollInfo(tree, SB_VERT, &info));
    EXPECT_EQ(info.nMax, 20);
    EXPECT_EQ(info.nPage, 4U) << "the level bar takes a row";
    TreeView_DeleteItem(tree, wide);
    EXPECT_TRUE((GetWindowLong(tree, GWL_STYLE) & WS_HSCROLL) == 0);
    send(WM_VSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(topRow(), 5);
    send(WM_VSCROLL, SB_BOTTOM);
    EXPECT_EQ(topRow(), 15);
    TreeView_DeleteAllItems(tree);
    EXPECT_TRUE((GetWindowLong(tree, GWL_STYLE) & WS_VSCROLL) == 0);
    makeTree(TVS_NOSCROLL, 100, 80);
    for (int index = 0; index < 15; ++index)
        add(TVI_ROOT, std::string(40, 'W'));
    EXPECT_TRUE((GetWindowLong(tree, GWL_STYLE) & (WS_VSCROLL | WS_HSCROLL)) == 0);
}

TEST_F(TreeViewLayoutTest, OpeningBringsAsManyChildrenIntoViewAsFit) {
    makeTree(TVS_HASBUTTONS, 200, 80);
    for (int index = 0; index < 4; ++index)
        add(TVI_ROOT, "item");
    const HTREEITEM last = add(TVI_ROOT, "last");
    for (int index = 0; index < 3; ++index)
        add(last, "child");
    expand(last);
    EXPECT_EQ(topRow(), 3) << "all of three";
    expand(last, TVE_COLLAPSE);
    for (int index = 0; index < 20; ++index)
        add(last, "child");
    send(WM_VSCROLL, SB_TOP);
    expand(last);
    EXPECT_EQ(topRow(), 4) << "the item itself stays";
}

TEST_F(TreeViewLayoutTest, ItemsMayBeSeveralRowsHigh) {
    makeTree(0);
    TVINSERTSTRUCT insert{};
    insert.hParent = TVI_ROOT;
    insert.hInsertAfter = TVI_LAST;
    insert.itemex.mask = TVIF_INTEGRAL;
    insert.itemex.iIntegral = 3;
    const HTREEITEM high = TreeView_InsertItem(tree, &insert);
    const HTREEITEM below = add(TVI_ROOT, "below");
    EXPECT_EQ(rect(high, false), (Numbers{0, 0, 200, 48}));
    EXPECT_EQ(rect(below, false), (Numbers{0, 48, 200, 64}));
    TVHITTESTINFO info{};
    info.pt = {1, 40};
    EXPECT_EQ(TreeView_HitTest(tree, &info), high);
}

TEST_F(TreeViewLayoutTest, ColoursAreTheSystemsUntilTheyAreSet) {
    makeTree(0);
    const struct {
        UINT set;
        UINT get;
        LRESULT atFirst;
    } rows[] = {{TVM_SETBKCOLOR, TVM_GETBKCOLOR, -1},
                {TVM_SETTEXTCOLOR, TVM_GETTEXTCOLOR, -1},
                {TVM_SETLINECOLOR, TVM_GETLINECOLOR, static_cast<LRESULT>(CLR_DEFAULT)},
                {TVM_SETINSERTMARKCOLOR, TVM_GETINSERTMARKCOLOR, static_cast<LRESULT>(CLR_DEFAULT)}};
    for (const auto& row : rows) {
        EXPECT_EQ(send(row.get), row.atFirst) << row.get;
        EXPECT_EQ(send(row.set, 0, RGB(1, 2, 3)), row.atFirst) << row.set;
        EXPECT_EQ(send(row.get), static_cast<LRESULT>(RGB(1, 2, 3))) << row.get;
        EXPECT_EQ(send(row.set, 0, row.atFirst), static_cast<LRESULT>(RGB(1, 2, 3))) << row.set;
        EXPECT_EQ(send(row.get), row.atFirst) << row.get;
    }
    send(TVM_SETBKCOLOR, 0, RGB(10, 200, 30));
    settle();
    EXPECT_EQ(at(150, 100), rgbOf(RGB(10, 200, 30)));
}

TEST_F(TreeViewLayoutTest, TheSelectionIsShownByFocusAndStyle) {
    for (const DWORD style : {DWORD{0}, TVS_SHOWSELALWAYS, TVS_SHOWSELALWAYS | TVS_FULLROWSELECT}) {
        makeTree(style);
        fill();
        TreeView_SelectItem(tree, tail);
        SetFocus(tree);
        settle();
        EXPECT_GT(count({0, 16, 60, 32}, GetSysColor(COLOR_HIGHLIGHT)), 100) << style;
        EXPECT_EQ(at(150, 24) == rgbOf(GetSysColor(COLOR_HIGHLIGHT)), (style & TVS_FULLROWSELECT) != 0) << style;
        SetFocus(owner);
        settle();
        EXPECT_EQ(count({0, 16, 60, 32}, GetSysColor(COLOR_BTNFACE)) > 100, (style & TVS_SHOWSELALWAYS) != 0) << style;
    }
}

TEST_F(TreeViewLayoutTest, ButtonsAndLinesAreDrawn) {
    makeTree(TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT);
    fill();
    settle();
    const std::uint32_t edge = rgbOf(GetSysColor(COLOR_BTNSHADOW));
    const std::uint32_t sign = rgbOf(GetSysColor(COLOR_WINDOWTEXT));
    EXPECT_EQ(at(5, 4), edge);
    EXPECT_EQ(at(13, 12), edge);
    EXPECT_EQ(at(9, 8), sign);
    EXPECT_EQ(at(9, 6), sign) << "plus";
    expand(root);
    settle();
    EXPECT_EQ(at(9, 8), sign);
    EXPECT_NE(at(9, 6), sign) << "minus";
    EXPECT_GT(count({9, 16, 10, 48}, GetSysColor(COLOR_BTNSHADOW)), 10) << "from root to tail";
    EXPECT_EQ(count({9, 16, 10, 48}, GetSysColor(COLOR_BTNSHADOW)), 16) << "every other pixel";
}

TEST_F(TreeViewLayoutTest, CustomDrawingGoesFromTreeToItems) {
    makeTree(0);
    fill();
    Lines stages;
    onNotify[NM_CUSTOMDRAW] = [&](NMHDR& header) -> LRESULT {
        auto& draw = reinterpret_cast<NMTVCUSTOMDRAW&>(header);
        const auto item = nameOf(reinterpret_cast<HTREEITEM>(draw.nmcd.dwItemSpec));
        switch (draw.nmcd.dwDrawStage) {
        case CDDS_PREPAINT:
            stages.push_back("tree");
            return CDRF_NOTIFYITEMDRAW | CDRF_NOTIFYPOSTPAINT;
        case CDDS_ITEMPREPAINT:
            stages.push_back(item + " at level " + std::to_string(draw.iLevel));
            draw.clrTextBk = RGB(90, 91, 92);
            return item == "a" ? CDRF_SKIPDEFAULT : CDRF_NOTIFYPOSTPAINT;
        case CDDS_ITEMPOSTPAINT:
            stages.push_back("after " + item);
            return 0;
        default:
            stages.push_back("after tree");
            return 0;
        }
    };
    expand(root);
    InvalidateRect(tree, nullptr, TRUE);
    settle();
    EXPECT_EQ(stages, (Lines{"tree", "root at level 0", "after root", "a at level 1", "b at level 1", "after b",
                             "tail at level 0", "after tail", "after tree"}));
    EXPECT_GT(count({0, 0, 40, 16}, RGB(90, 91, 92)), 50);
    EXPECT_EQ(count({0, 16, 60, 32}, RGB(90, 91, 92)), 0);
}

} // namespace
} // namespace vndk::test
