// A window with a list box in it.
#pragma once

#include "control_fixture.h"

#include "win32/draw.h"
#include "win32/fonts.h"
#include "win32/listbox.h"
#include "win32/scrollbar.h"

#include <algorithm>

namespace vndk::test {

class ListBoxFixture : public ControlFixture {
protected:
    static constexpr DWORD plain = LBS_NOTIFY | LBS_NOINTEGRALHEIGHT;

    /// Client area of 120 x `height`, at the owner's corner.
    HWND makeList(DWORD style, int height = 100) {
        list = make("LISTBOX", style, 0, 0, 120, height);
        return list;
    }
    LRESULT ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessage(list, message, wParam, lParam);
    }
    LRESULT add(const std::string& text) const { return ask(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())); }
    LRESULT askText(UINT message, WPARAM wParam, const std::string& text) const {
        return ask(message, wParam, reinterpret_cast<LPARAM>(text.c_str()));
    }
    /// Texts "item 0", "item 1" and so on.
    void fill(int count) const {
        for (int i = 0; i < count; ++i)
            add("item " + std::to_string(i));
    }
    [[nodiscard]] std::string textAt(int index) const {
        const LRESULT length = ask(LB_GETTEXTLEN, static_cast<WPARAM>(index));
        if (length < 0)
            return "(none)";
        std::string text(static_cast<std::size_t>(length) + 1, '\0');
        ask(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.data()));
        text.pop_back();
        return text;
    }
    [[nodiscard]] std::vector<std::string> texts() const {
        std::vector<std::string> all;
        for (int i = 0; i < ask(LB_GETCOUNT); ++i)
            all.push_back(textAt(i));
        return all;
    }
    [[nodiscard]] std::vector<int> selection() const {
        std::vector<int> selected;
        for (int i = 0; i < ask(LB_GETCOUNT); ++i)
            if (ask(LB_GETSEL, static_cast<WPARAM>(i)) > 0)
                selected.push_back(i);
        return selected;
    }
    [[nodiscard]] RECT rectOf(int index) const {
        RECT rect{-1, -1, -1, -1};
        ask(LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
        return rect;
    }
    /// A point of the list's client area, on the screen.
    [[nodiscard]] POINT at(int x, int y) const { return onScreen(list, x, y); }
    void clickItem(int index) {
        const RECT rect = rectOf(index);
        const POINT point = at(rect.left + 20, (rect.top + rect.bottom) / 2);
        user.click(point.x, point.y);
        // A second click at once would make a double click of two.
        screen.advance(1000);
        settle();
    }
    void pressKey(int key) {
        user.key(key);
        settle();
    }
    [[nodiscard]] SCROLLINFO scrollInfo(int bar) const {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(list, bar, &info);
        return info;
    }
    [[nodiscard]] bool shows(DWORD bar) const { return (GetWindowLong(list, GWL_STYLE) & bar) != 0; }

    HWND list = nullptr;
};

using Indexes = std::vector<int>;
using Texts = std::vector<std::string>;

} // namespace vndk::test
