// Tree views in a window, with short ways to fill and to ask them.
#pragma once

#include "notify_fixture.h"

#include "win32/imagelist.h"
#include "win32/treeview.h"

#include <map>

namespace vndk::test {

class TreeViewFixture : public NotifyFixture {
protected:
    /// Takes the place of the one made before, which would lie over the new one.
    void makeTree(DWORD style = TVS_HASBUTTONS | TVS_LINESATROOT, int width = 200, int height = 160) {
        if (IsWindow(tree))
            DestroyWindow(tree);
        tree = make(WC_TREEVIEW, style, 0, 0, width, height);
        names.clear();
        takeNotes();
    }
    HTREEITEM add(HTREEITEM parent, const std::string& name, HTREEITEM after = TVI_LAST) {
        std::string buffer = name;
        TVINSERTSTRUCT insert{};
        insert.hParent = parent;
        insert.hInsertAfter = after;
        insert.item.mask = TVIF_TEXT | TVIF_PARAM;
        insert.item.pszText = buffer.data();
        insert.item.lParam = static_cast<LPARAM>(name.size());
        const HTREEITEM item = TreeView_InsertItem(tree, &insert);
        names[item] = name;
        return item;
    }
    /// root ( a ( a1 a2 ) b ), tail
    void fill() {
        root = add(TVI_ROOT, "root");
        a = add(root, "a");
        a1 = add(a, "a1");
        a2 = add(a, "a2");
        b = add(root, "b");
        tail = add(TVI_ROOT, "tail");
        settle();
        takeNotes();
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessage(tree, message, wParam, lParam);
    }
    bool expand(HTREEITEM item, UINT code = TVE_EXPAND) { return TreeView_Expand(tree, item, code) != FALSE; }
    HTREEITEM next(HTREEITEM item, UINT which) { return TreeView_GetNextItem(tree, item, which); }
    HTREEITEM caret() { return TreeView_GetSelection(tree); }
    UINT state(HTREEITEM item) { return TreeView_GetItemState(tree, item, ~0U); }
    [[nodiscard]] std::string nameOf(HTREEITEM item) {
        const auto found = names.find(item);
        return item == nullptr ? "-" : found != names.end() ? found->second : "?";
    }
    [[nodiscard]] std::string text(HTREEITEM item) {
        char buffer[300] = "untouched";
        TVITEM wanted{};
        wanted.mask = TVIF_TEXT;
        wanted.hItem = item;
        wanted.pszText = buffer;
        wanted.cchTextMax = sizeof(buffer);
        TreeView_GetItem(tree, &wanted);
        return buffer;
    }
    /// The rows on show, from top to bottom.
    [[nodiscard]] Lines rows() {
        Lines found;
        for (HTREEITEM item = next(nullptr, TVGN_ROOT); item != nullptr; item = next(item, TVGN_NEXTVISIBLE))
            found.push_back(nameOf(item));
        return found;
    }
    [[nodiscard]] std::vector<int> rect(HTREEITEM item, bool textOnly) {
        RECT found{};
        if (TreeView_GetItemRect(tree, item, &found, textOnly ? TRUE : FALSE) == FALSE)
            return {};
        return {found.left, found.top, found.right, found.bottom};
    }
    [[nodiscard]] POINT labelOf(HTREEITEM item) {
        const std::vector<int> found = rect(item, true);
        return onScreen(tree, found.at(0) + 3, (found.at(1) + found.at(3)) / 2);
    }
    void clickOn(HTREEITEM item, User::Button button = User::Button::left) {
        const POINT point = labelOf(item);
        user.click(point.x, point.y, button);
        settle();
    }
    void press(int key) {
        user.key(key);
        settle();
    }
    std::string describe(NMHDR& header) override {
        const auto& told = reinterpret_cast<NMTREEVIEW&>(header);
        const auto pair = [&] { return " " + nameOf(told.itemOld.hItem) + ">" + nameOf(told.itemNew.hItem); };
        const auto way = [&] { return std::string(told.action == TVE_EXPAND ? " open " : " close "); };
        switch (header.code) {
        case TVN_SELCHANGING:
            return "selecting" + pair();
        case TVN_SELCHANGED:
            return "selected" + pair();
        case TVN_ITEMEXPANDING:
            return "will" + way() + nameOf(told.itemNew.hItem);
        case TVN_ITEMEXPANDED:
            return "did" + way() + nameOf(told.itemNew.hItem);
        case TVN_DELETEITEM:
            return "delete " + nameOf(told.itemOld.hItem);
        case TVN_SINGLEEXPAND:
            return "single" + pair();
        case TVN_BEGINDRAG:
            return "drag " + nameOf(told.itemNew.hItem);
        case TVN_BEGINRDRAG:
            return "right drag " + nameOf(told.itemNew.hItem);
        case TVN_KEYDOWN:
            return "key " + std::to_string(reinterpret_cast<NMTVKEYDOWN&>(header).wVKey);
        case TVN_BEGINLABELEDIT:
            return "begin edit " + nameOf(reinterpret_cast<NMTVDISPINFO&>(header).item.hItem);
        case TVN_ENDLABELEDIT: {
            const char* given = reinterpret_cast<NMTVDISPINFO&>(header).item.pszText;
            return std::string("end edit ") + (given != nullptr ? given : "(cancelled)");
        }
        case NM_CLICK:
            return "click";
        case NM_DBLCLK:
            return "double";
        case NM_RCLICK:
            return "right";
        case NM_RETURN:
            return "return";
        default:
            return "";
        }
    }

    HWND tree = nullptr;
    std::map<HTREEITEM, std::string> names;
    HTREEITEM root = nullptr;
    HTREEITEM a = nullptr;
    HTREEITEM a1 = nullptr;
    HTREEITEM a2 = nullptr;
    HTREEITEM b = nullptr;
    HTREEITEM tail = nullptr;
};

} // namespace vndk::test
