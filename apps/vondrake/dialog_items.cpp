#include "dialog_items.h"

#include "dialog_controls.h"
#include "win32/codepage.h"
#include "win32/combobox.h"
#include "win32/header.h"
#include "win32/listbox.h"
#include "win32/listview.h"
#include "win32/tab.h"
#include "win32/treeview.h"
#include "win32/window.h"

#include <algorithm>
#include <array>

namespace vndk::app {

namespace {

using Buffer = std::array<char, 4096>; // longer texts are shown as far as this

win32::UserPlace trouble(std::string sentence) { return {.trouble = std::move(sentence)}; }

DWORD styleOf(HWND window) { return static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)); }

int sendCount(HWND control, UINT message) {
    return std::max(static_cast<int>(SendMessageA(control, message, 0, 0)), 0);
}

/// The middle of what can be seen of a rectangle.
win32::UserPlace middleOf(HWND window, const RECT& rect) {
    RECT client{};
    GetClientRect(window, &client);
    const LONG left = std::max(rect.left, client.left);
    const LONG top = std::max(rect.top, client.top);
    const LONG right = std::min(rect.right, client.right);
    const LONG bottom = std::min(rect.bottom, client.bottom);
    if (left >= right || top >= bottom)
        return trouble("the item is out of sight");
    return {.window = window, .point = {(left + right) / 2, (top + bottom) / 2}};
}

bool keepsTexts(HWND control, DWORD drawn, DWORD hasStrings) {
    return (styleOf(control) & drawn) == 0 || (styleOf(control) & hasStrings) != 0;
}

/// Text of a list box or combo box, which have the same messages under other numbers.
std::string stringOf(HWND control, int row, UINT lengthMessage, UINT textMessage) {
    const auto index = static_cast<WPARAM>(row);
    const auto length = static_cast<int>(SendMessageA(control, lengthMessage, index, 0));
    if (length < 0)
        return {};
    std::string text(static_cast<size_t>(length) + 1, '\0');
    SendMessageA(control, textMessage, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<size_t>(length));
    return text;
}

std::string branchText(HWND tree, HTREEITEM item) {
    Buffer buffer{};
    TVITEMA asked{};
    asked.mask = TVIF_TEXT;
    asked.hItem = item;
    asked.pszText = buffer.data();
    asked.cchTextMax = static_cast<int>(buffer.size());
    return TreeView_GetItem(tree, &asked) != FALSE && asked.pszText ? asked.pszText : "";
}

bool isExpanded(HWND tree, HTREEITEM item) {
    return (SendMessageA(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), TVIS_EXPANDED) & TVIS_EXPANDED) != 0;
}

// Rows by their text, else by one that differs in case.
int findRow(HWND control, const std::string& text) {
    int close = -1;
    for (int row = 0; row < rowCount(control); ++row) {
        const std::string found = rowText(control, row);
        if (found == text)
            return row;
        if (close == -1 && win32::compareNoCase(found, text) == 0)
            close = row;
    }
    return close;
}

HTREEITEM findBranch(HWND tree, HTREEITEM parent, const std::string& text) {
    HTREEITEM close = nullptr;
    HTREEITEM item = parent ? TreeView_GetChild(tree, parent) : TreeView_GetRoot(tree);
    for (; item; item = TreeView_GetNextItem(tree, item, TVGN_NEXT)) {
        const std::string found = branchText(tree, item);
        if (found == text)
            return item;
        if (!close && win32::compareNoCase(found, text) == 0)
            close = item;
    }
    return close;
}

win32::UserPlace placeInHeader(HWND list, int column) {
    const HWND header = ListView_GetHeader(list);
    RECT rect{};
    if (!header || Header_GetItemRect(header, column, &rect) == FALSE)
        return trouble("there is no header for column " + std::to_string(column + 1));
    return middleOf(header, rect);
}

win32::UserPlace placeInList(HWND list, int row, int column) {
    const auto rectOf = [list, row, column](RECT& rect) {
        return column == 0 ? ListView_GetItemRect(list, row, &rect, LVIR_LABEL) != FALSE
                           : ListView_GetSubItemRect(list, row, column, LVIR_BOUNDS, &rect) != FALSE;
    };
    ListView_EnsureVisible(list, row, FALSE);
    RECT client{};
    RECT rect{};
    GetClientRect(list, &client);
    if (!rectOf(rect))
        return trouble("the item has no place");
    if (rect.left < client.left || rect.right > client.right) {
        const LONG way = rect.left < client.left ? rect.left : std::min(rect.right - client.right, rect.left);
        SendMessageA(list, LVM_SCROLL, static_cast<WPARAM>(way), 0);
        rectOf(rect);
    }
    return middleOf(list, rect);
}

win32::UserPlace placeInListBox(HWND list, int row) {
    const auto index = static_cast<WPARAM>(row);
    RECT client{};
    RECT rect{};
    GetClientRect(list, &client);
    SendMessageA(list, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect));
    if (rect.top < client.top || rect.bottom > client.bottom || rect.left >= client.right || rect.left < client.left) {
        SendMessageA(list, LB_SETTOPINDEX, index, 0);
        SendMessageA(list, LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&rect));
    }
    return middleOf(list, rect);
}

HTREEITEM branchOf(HWND tree, const ItemName& name) {
    HTREEITEM item = nullptr;
    if (name.texts.empty()) {
        item = TreeView_GetRoot(tree);
        for (int row = 1; item && row < name.row; ++row)
            item = TreeView_GetNextItem(tree, item, TVGN_NEXTVISIBLE);
        return name.row > 0 ? item : nullptr;
    }
    for (const std::string& text : name.texts)
        if ((item = findBranch(tree, item, text)) == nullptr)
            break;
    return item;
}

win32::UserPlace placeInTree(HWND tree, const ItemName& name) {
    const HTREEITEM item = branchOf(tree, name);
    RECT rect{};
    if (!item)
        return trouble("there is no such item");
    TreeView_EnsureVisible(tree, item);
    if (TreeView_GetItemRect(tree, item, &rect, TRUE) == FALSE)
        return trouble("the item is out of sight");
    return middleOf(tree, rect);
}

win32::UserPlace placeInTabs(HWND tabs, int row) {
    RECT rect{};
    SendMessageA(tabs, TCM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&rect));
    return middleOf(tabs, rect);
}

win32::UserPlace placeInCombo(HWND combo, int row) {
    COMBOBOXINFO info{};
    info.cbSize = sizeof info;
    if (GetComboBoxInfo(combo, &info) == FALSE || IsWindowVisible(info.hwndList) == FALSE)
        return trouble("its list isn't open");
    return placeInListBox(info.hwndList, row);
}

} // namespace

int rowCount(HWND control) {
    switch (controlKind(control)) {
    case ControlKind::List:
        return ListView_GetItemCount(control);
    case ControlKind::ListBox:
        return sendCount(control, LB_GETCOUNT);
    case ControlKind::ComboBox:
        return sendCount(control, CB_GETCOUNT);
    case ControlKind::Tabs:
        return sendCount(control, TCM_GETITEMCOUNT);
    default:
        return 0;
    }
}

int columnCount(HWND control) {
    if (controlKind(control) != ControlKind::List || (styleOf(control) & LVS_TYPEMASK) != LVS_REPORT)
        return 1;
    const HWND header = ListView_GetHeader(control);
    return header ? std::max(Header_GetItemCount(header), 1) : 1;
}

std::string rowText(HWND control, int row, int column) {
    Buffer buffer{};
    switch (controlKind(control)) {
    case ControlKind::List:
        ListView_GetItemText(control, row, column, buffer.data(), static_cast<int>(buffer.size()));
        return buffer.data();
    case ControlKind::ListBox:
        if (!keepsTexts(control, LBS_OWNERDRAWFIXED | LBS_OWNERDRAWVARIABLE, LBS_HASSTRINGS))
            return {};
        return stringOf(control, row, LB_GETTEXTLEN, LB_GETTEXT);
    case ControlKind::ComboBox:
        if (!keepsTexts(control, CBS_OWNERDRAWFIXED | CBS_OWNERDRAWVARIABLE, CBS_HASSTRINGS))
            return {};
        return stringOf(control, row, CB_GETLBTEXTLEN, CB_GETLBTEXT);
    case ControlKind::Tabs: {
        TCITEMA item{};
        item.mask = TCIF_TEXT;
        item.pszText = buffer.data();
        item.cchTextMax = static_cast<int>(buffer.size());
        SendMessageA(control, TCM_GETITEMA, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return item.pszText ? item.pszText : "";
    }
    default:
        return {};
    }
}

bool rowSelected(HWND control, int row) {
    switch (controlKind(control)) {
    case ControlKind::List:
        return ListView_GetItemState(control, row, LVIS_SELECTED) != 0;
    case ControlKind::ListBox:
        return SendMessageA(control, LB_GETSEL, static_cast<WPARAM>(row), 0) > 0;
    case ControlKind::ComboBox:
        return SendMessageA(control, CB_GETCURSEL, 0, 0) == row;
    case ControlKind::Tabs:
        return SendMessageA(control, TCM_GETCURSEL, 0, 0) == row;
    default:
        return false;
    }
}

std::string columnTitle(HWND list, int column) {
    Buffer buffer{};
    HDITEMA title{};
    title.mask = HDI_TEXT;
    title.pszText = buffer.data();
    title.cchTextMax = static_cast<int>(buffer.size());
    const HWND header = ListView_GetHeader(list);
    return header && Header_GetItem(header, column, &title) != FALSE && title.pszText ? title.pszText : "";
}

void visitShownBranches(HWND tree, const std::function<void(const Branch&)>& visit) {
    const HTREEITEM selected = TreeView_GetSelection(tree);
    Branch branch;
    HTREEITEM item = TreeView_GetRoot(tree);
    while (item) {
        const HTREEITEM child = TreeView_GetChild(tree, item);
        branch.text = branchText(tree, item);
        branch.selected = item == selected;
        branch.hasChildren = child != nullptr;
        branch.expanded = child && isExpanded(tree, item);
        visit(branch);
        if (branch.expanded) {
            ++branch.depth;
            item = child;
            continue;
        }
        HTREEITEM next = TreeView_GetNextItem(tree, item, TVGN_NEXT);
        while (!next && (item = TreeView_GetParent(tree, item)) != nullptr) {
            --branch.depth;
            next = TreeView_GetNextItem(tree, item, TVGN_NEXT);
        }
        item = next;
    }
}

win32::UserPlace placeOfItem(HWND control, const ItemName& name) {
    const ControlKind kind = controlKind(control);
    if (kind == ControlKind::Tree)
        return placeInTree(control, name);
    if (kind != ControlKind::List && kind != ControlKind::ListBox && kind != ControlKind::ComboBox &&
        kind != ControlKind::Tabs)
        return trouble("it has no items");
    if (name.texts.size() > 1)
        return trouble("only in a tree an item has parents");
    if (name.column > columnCount(control))
        return trouble("it has no column " + std::to_string(name.column));
    if (kind == ControlKind::List && name.texts.empty() && name.row == 0)
        return placeInHeader(control, name.column - 1);
    const int row = name.texts.empty() ? name.row - 1 : findRow(control, name.texts.front());
    if (row < 0 || row >= rowCount(control))
        return trouble("there is no such item; it has " + std::to_string(rowCount(control)));
    switch (kind) {
    case ControlKind::List:
        return placeInList(control, row, name.column - 1);
    case ControlKind::ListBox:
        return placeInListBox(control, row);
    case ControlKind::ComboBox:
        return placeInCombo(control, row);
    default:
        return placeInTabs(control, row);
    }
}

} // namespace vndk::app
