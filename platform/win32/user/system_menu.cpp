#include "user/system_menu.h"

#include "user/menu_bar.h"
#include "user/menu_change.h"
#include "win32/paint.h"

namespace vndk::win32 {

namespace {

// A dialog's frame only moves and closes.
bool onlyMoves(const Window& window) { return (window.style & (WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX)) == 0; }

void enable(HMENU menu, UINT command, bool enabled) {
    if (const MenuPlace place = findCommand(*findMenu(menu), command)) {
        UINT& state = place.item().state;
        state = enabled ? state & ~MFS_GRAYED : state | MFS_GRAYED;
    }
}

} // namespace

HMENU makeSystemMenu(const Window& window) {
    const HMENU menu = CreatePopupMenu();
    if (menu == nullptr)
        return nullptr;
    const bool small = onlyMoves(window);
    if (!small)
        AppendMenuA(menu, MF_STRING, SC_RESTORE, "&Restore");
    AppendMenuA(menu, MF_STRING, SC_MOVE, "&Move");
    if (!small) {
        AppendMenuA(menu, MF_STRING, SC_SIZE, "&Size");
        AppendMenuA(menu, MF_STRING, SC_MINIMIZE, "Mi&nimize");
        AppendMenuA(menu, MF_STRING, SC_MAXIMIZE, "Ma&ximize");
        AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
    }
    AppendMenuA(menu, MF_STRING, SC_CLOSE, "&Close\tAlt+F4");
    SetMenuDefaultItem(menu, SC_CLOSE, FALSE);
    findMenu(menu)->system = true;
    return menu;
}

void updateSystemMenu(HWND handle) {
    const HMENU menu = GetSystemMenu(handle, FALSE);
    const Window* window = findWindow(handle);
    if (menu == nullptr || window == nullptr)
        return;
    const bool normal = window->showState == ShowState::normal;
    const bool minimized = window->showState == ShowState::minimized;
    const bool maximized = window->showState == ShowState::maximized;
    enable(menu, SC_RESTORE, !normal);
    enable(menu, SC_MOVE, !maximized);
    enable(menu, SC_SIZE, normal && (window->style & WS_THICKFRAME) != 0);
    enable(menu, SC_MINIMIZE, !minimized && (window->style & WS_MINIMIZEBOX) != 0);
    enable(menu, SC_MAXIMIZE, !maximized && (window->style & WS_MAXIMIZEBOX) != 0);
    if ((window->windowClass->style & CS_NOCLOSE) != 0)
        enable(menu, SC_CLOSE, false);
}

bool closeEnabled(HWND handle) {
    const Window* window = findWindow(handle);
    MenuState* state = menuState();
    Menu* menu = window != nullptr && state != nullptr ? state->menus.find(window->systemMenu) : nullptr;
    if (menu == nullptr)
        return window != nullptr; // Nobody has changed it.
    const MenuPlace place = findCommand(*menu, SC_CLOSE);
    return place && !place.item().grayed();
}

void systemMenuChanged(HMENU menu) {
    const MenuState* state = menuState();
    const Menu* changed = state != nullptr ? state->menus.find(menu) : nullptr;
    if (changed == nullptr || !changed->system)
        return;
    std::vector<HWND> owners;
    currentState()->windows.forEach([&](HWND handle, const Window& window) {
        if (window.systemMenu == menu)
            owners.push_back(handle);
    });
    for (const HWND owner : owners)
        RedrawWindow(owner, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_NOCHILDREN | RDW_NOERASE);
}

} // namespace vndk::win32

HMENU GetSystemMenu(HWND handle, BOOL revert) {
    using namespace vndk::win32;
    Window* window = findWindow(handle);
    if (window == nullptr)
        return nullptr;
    if (revert != FALSE) {
        if (IsMenu(window->systemMenu) != FALSE)
            DestroyMenu(window->systemMenu);
        window->systemMenu = nullptr;
        return nullptr;
    }
    if ((window->style & WS_SYSMENU) == 0)
        return nullptr;
    if (IsMenu(window->systemMenu) == FALSE)
        window->systemMenu = makeSystemMenu(*window);
    return window->systemMenu;
}
