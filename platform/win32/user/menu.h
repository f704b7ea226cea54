// Menus behind their handles, and the one that is tracked.
#pragma once

#include "kernel/handle_table.h"
#include "user/window.h"
#include "win32/accelerators.h"
#include "win32/menu.h"

#include <optional>
#include <string>
#include <vector>

namespace vndk::win32 {

struct MenuItem {
    UINT type = 0;  // MFT_
    UINT state = 0; // MFS_
    UINT id = 0;
    HMENU subMenu = nullptr;
    std::string text;         // as given: with '&' marks, the shortcut behind a tab
    HBITMAP bitmap = nullptr; // of an item of type MFT_BITMAP, or beside the text
    HBITMAP checked = nullptr;
    HBITMAP unchecked = nullptr;
    ULONG_PTR data = 0;     // the program's
    ULONG_PTR typeData = 0; // what was given in the place of text to an item that the owner draws
    DWORD helpId = 0;

    // Layout, in the popup window's client area or from the bar's corner.
    RECT rect{};
    int tab = 0;               // where shortcuts of its column begin
    std::optional<SIZE> asked; // what the owner answered to WM_MEASUREITEM

    [[nodiscard]] bool separator() const { return (type & MFT_SEPARATOR) != 0; }
    [[nodiscard]] bool ownerDrawn() const { return (type & MFT_OWNERDRAW) != 0; }
    [[nodiscard]] bool grayed() const { return (state & MFS_GRAYED) != 0; }
};

constexpr int noItem = -1;

struct Menu {
    HMENU handle = nullptr;
    bool popup = false;
    bool system = false; // a window's system menu: its commands go as WM_SYSCOMMAND
    std::vector<MenuItem> items;
    HWND window = nullptr; // of a popup: where it is shown; of a bar: whose it is
    int selected = noItem;
    SIZE size{}; // of the popup's client area
    DWORD helpId = 0;
};

struct AcceleratorTable {
    std::vector<ACCEL> entries;
    bool loaded = false; // from resources; shared by all who load it
};

class MenuTracker;

struct MenuState {
    HandleTable<Menu, HMENU> menus{HandleKind::menu};
    HandleTable<AcceleratorTable, HACCEL> accelerators{HandleKind::accelerators};
    MenuTracker* tracker = nullptr; // null while no menu is tracked
};

/// Null without a desktop.
MenuState* menuState();
/// Null with ERROR_INVALID_MENU_HANDLE.
Menu* findMenu(HMENU handle);

struct MenuPlace {
    Menu* menu = nullptr; // null: there is no such item
    int position = noItem;

    [[nodiscard]] MenuItem& item() const { return menu->items[static_cast<std::size_t>(position)]; }
    explicit operator bool() const { return menu != nullptr; }
};
/// The item that a call names by command (searched in sub-menus too, a popup's own id behind all others) or position.
/// Sets the error when there is none.
MenuPlace findItem(HMENU menu, UINT item, bool byPosition);
/// The same without an error, in and below a menu.
MenuPlace findCommand(Menu& menu, UINT id);

/// The text in front of the tab, and what stands behind it.
struct MenuText {
    std::string label;
    std::string shortcut;
};
[[nodiscard]] MenuText splitMenuText(const std::string& text);
/// The character behind the first single '&', in capitals; 0 when there is none.
[[nodiscard]] char mnemonicOf(const std::string& text);

} // namespace vndk::win32
