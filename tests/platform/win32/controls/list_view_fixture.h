// List views in a window, with short ways to fill and to ask them.
#pragma once

#include "notify_fixture.h"

#include "win32/header.h"
#include "win32/imagelist.h"
#include "win32/listview.h"

namespace vndk::test {

class ListViewFixture : public NotifyFixture {
protected:
    static constexpr UINT all = LVIS_SELECTED | LVIS_FOCUSED;

    /// Takes the place of the one made before, which would lie over the new one.
    HWND makeList(DWORD style, int width = 300, int height = 200) {
        if (IsWindow(list))
            DestroyWindow(list);
        list = make(WC_LISTVIEW, style, 0, 0, width, height);
        takeNotes();
        return list;
    }
    int insert(const std::string& text, int index = 0x7FFF, LPARAM data = 0) {
        std::string buffer = text;
        LVITEM item{};
        item.mask = LVIF_TEXT | LVIF_PARAM;
        item.iItem = index;
        item.pszText = buffer.data();
        item.lParam = data;
        return ListView_InsertItem(list, &item);
    }
    void fill(int count) {
        for (int index = 0; index < count; ++index)
            insert("item " + std::to_string(index), index, index);
        settle();
        takeNotes();
    }
    int addColumn(int width, int format = LVCFMT_LEFT, const std::string& text = "column") {
        std::string buffer = text;
        LVCOLUMN column{};
        column.mask = LVCF_WIDTH | LVCF_FMT | LVCF_TEXT;
        column.cx = width;
        column.fmt = format;
        column.pszText = buffer.data();
        return ListView_InsertColumn(list, 1000, &column);
    }
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
        return SendMessage(list, message, wParam, lParam);
    }
    [[nodiscard]] std::string text(int index, int subItem = 0) {
        char buffer[300] = "untouched";
        ListView_GetItemText(list, index, subItem, buffer, sizeof(buffer));
        return buffer;
    }
    [[nodiscard]] std::vector<std::string> texts() {
        std::vector<std::string> found;
        for (int index = 0; index < ListView_GetItemCount(list); ++index)
            found.push_back(text(index));
        return found;
    }
    void select(int index, UINT state = all) { ListView_SetItemState(list, index, state, all); }
    [[nodiscard]] std::vector<int> selection() {
        std::vector<int> found;
        for (int index = -1; (index = ListView_GetNextItem(list, index, LVNI_SELECTED)) >= 0;)
            found.push_back(index);
        return found;
    }
    [[nodiscard]] int focus() { return ListView_GetNextItem(list, -1, LVNI_FOCUSED); }
    [[nodiscard]] std::vector<int> rect(int index, int part) {
        RECT found{};
        if (ListView_GetItemRect(list, index, &found, part) == FALSE)
            return {};
        return {found.left, found.top, found.right, found.bottom};
    }
    [[nodiscard]] std::vector<int> subRect(int index, int subItem, int part) {
        RECT found{};
        if (ListView_GetSubItemRect(list, index, subItem, part, &found) == FALSE)
            return {};
        return {found.left, found.top, found.right, found.bottom};
    }
    /// In the middle of an item's label, on the screen.
    [[nodiscard]] POINT labelOf(int index) {
        RECT found{};
        ListView_GetItemRect(list, index, &found, LVIR_LABEL);
        return onScreen(list, found.left + 3, (found.top + found.bottom) / 2);
    }
    void clickOn(int index, User::Button button = User::Button::left) {
        const POINT point = labelOf(index);
        user.click(point.x, point.y, button);
        settle();
    }
    /// Selected and focused bits as letters.
    static std::string bits(UINT state) {
        std::string shown = state & LVIS_SELECTED ? "S" : "";
        shown += state & LVIS_FOCUSED ? "F" : "";
        return shown.empty() ? "-" : shown;
    }
    std::string describe(NMHDR& header) override {
        const auto& told = reinterpret_cast<NMLISTVIEW&>(header);
        // Not every notification is long enough to have an item.
        const auto index = [&] { return " " + std::to_string(told.iItem); };
        switch (header.code) {
        case LVN_ITEMCHANGING:
        case LVN_ITEMCHANGED: {
            const std::string name = header.code == LVN_ITEMCHANGING ? "changing" : "changed";
            if ((told.uChanged & LVIF_STATE) != 0)
                return name + index() + " " + bits(told.uOldState) + ">" + bits(told.uNewState);
            return name + index() + "." + std::to_string(told.iSubItem);
        }
        case LVN_INSERTITEM:
            return "insert" + index();
        case LVN_DELETEITEM:
            return "delete" + index();
        case LVN_DELETEALLITEMS:
            return "delete all";
        case LVN_COLUMNCLICK:
            return "column " + std::to_string(told.iSubItem);
        case LVN_BEGINDRAG:
            return "drag" + index();
        case LVN_BEGINRDRAG:
            return "right drag" + index();
        case LVN_MARQUEEBEGIN:
            return "band";
        case LVN_ITEMACTIVATE:
            return "activate" + index();
        case LVN_KEYDOWN:
            return "key " + std::to_string(reinterpret_cast<NMLVKEYDOWN&>(header).wVKey);
        case LVN_ODSTATECHANGED: {
            const auto& range = reinterpret_cast<NMLVODSTATECHANGE&>(header);
            return "range " + std::to_string(range.iFrom) + "-" + std::to_string(range.iTo);
        }
        case LVN_BEGINLABELEDIT:
            return "begin edit " + std::to_string(reinterpret_cast<NMLVDISPINFO&>(header).item.iItem);
        case LVN_ENDLABELEDIT: {
            const char* given = reinterpret_cast<NMLVDISPINFO&>(header).item.pszText;
            return std::string("end edit ") + (given != nullptr ? given : "(cancelled)");
        }
        case NM_CLICK:
            return "click" + index();
        case NM_DBLCLK:
            return "double" + index();
        case NM_RCLICK:
            return "right" + index();
        case NM_RETURN:
            return "return";
        default:
            return "";
        }
    }

    /// `size` x `size` pictures, each of one colour.
    static HIMAGELIST images(int size, std::initializer_list<COLORREF> colors) {
        const HIMAGELIST made = ImageList_Create(size, size, ILC_COLOR24, static_cast<int>(colors.size()), 1);
        const HDC desktop = GetDC(nullptr);
        const HDC memory = CreateCompatibleDC(desktop);
        const HBITMAP bitmap = CreateCompatibleBitmap(desktop, size, size);
        for (const COLORREF color : colors) {
            const HGDIOBJ former = SelectObject(memory, bitmap);
            const HBRUSH brush = CreateSolidBrush(color);
            const RECT whole{0, 0, size, size};
            FillRect(memory, &whole, brush);
            DeleteObject(brush);
            SelectObject(memory, former);
            ImageList_Add(made, bitmap, nullptr);
        }
        DeleteObject(bitmap);
        DeleteDC(memory);
        ReleaseDC(nullptr, desktop);
        return made;
    }

    HWND list = nullptr;
};

} // namespace vndk::test
