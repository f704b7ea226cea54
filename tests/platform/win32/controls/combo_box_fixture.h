// A window with a combo box in it.
#pragma once

#include "control_fixture.h"

#include "win32/combobox.h"
#include "win32/draw.h"
#include "win32/edit.h"
#include "win32/fonts.h"
#include "win32/listbox.h"

namespace vndk::test {

using Codes = std::vector<int>;

class ComboBoxFixture : public ControlFixture {
protected:
    static constexpr DWORD bars = WS_VSCROLL;

    void SetUp() override {
        ControlFixture::SetUp();
        SetActiveWindow(owner);
        SetFocus(owner);
    }
    HWND makeCombo(DWORD style, int height = 100, int width = 100) {
        combo = make("COMBOBOX", style, 5, 5, width, height);
        info = {};
        info.cbSize = sizeof info;
        GetComboBoxInfo(combo, &info);
        return combo;
    }
    LRESULT ask(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return SendMessage(combo, message, wParam, lParam);
    }
    LRESULT add(const std::string& text) const { return ask(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())); }
    void fill(int count) const {
        for (int i = 0; i < count; ++i)
            add("item " + std::to_string(i));
    }
    [[nodiscard]] std::string field() const { return textOf(combo); }
    [[nodiscard]] std::string itemText(LRESULT index) const {
        char text[100] = "(none)";
        ask(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text));
        return text;
    }
    [[nodiscard]] bool dropped() const { return ask(CB_GETDROPPEDSTATE) != 0; }
    [[nodiscard]] int height() const { return clientRect(combo).bottom; }
    /// Relative to the owner.
    [[nodiscard]] RECT droppedRect() const {
        RECT rect{};
        ask(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&rect));
        OffsetRect(&rect, -left, -top);
        return rect;
    }
    void pressKey(int key) {
        user.key(key);
        settle();
    }
    void clickAt(HWND window, int x, int y) {
        const POINT point = onScreen(window, x, y);
        user.click(point.x, point.y);
        screen.advance(1000);
        settle();
    }
    void clickButton() { clickAt(combo, info.rcButton.left + 5, 10); }
    /// Middle of an item of the open list, on the screen.
    [[nodiscard]] POINT itemPoint(int index) const {
        RECT rect{};
        SendMessage(info.hwndList, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&rect));
        return onScreen(info.hwndList, rect.left + 10, (rect.top + rect.bottom) / 2);
    }
    HFONT makeFont(int cellHeight) {
        return CreateFont(cellHeight, 0, 0, 0, FW_NORMAL, 0, 0, 0, 0, 0, 0, 0, 0, "Arial");
    }
    [[nodiscard]] static int heightOf(HFONT font) {
        const HDC dc = CreateCompatibleDC(nullptr);
        const HGDIOBJ former = SelectObject(dc, font);
        TEXTMETRIC metrics{};
        GetTextMetrics(dc, &metrics);
        SelectObject(dc, former);
        DeleteDC(dc);
        return metrics.tmHeight;
    }

    HWND combo = nullptr;
    COMBOBOXINFO info{};
};

struct ComboKind {
    const char* name;
    DWORD style;
};
inline const ComboKind comboKinds[] = {
    {"simple", CBS_SIMPLE}, {"drop-down", CBS_DROPDOWN}, {"drop-down list", CBS_DROPDOWNLIST}};

} // namespace vndk::test
