// Menu bars: their place in the frame, painting, and how tracking begins there.
#include "user/menu_bar.h"

#include "user/frame_geometry.h"
#include "user/menu_change.h"
#include "user/menu_layout.h"
#include "user/menu_tracker.h"
#include "user/system_menu.h"
#include "win32/draw.h"
#include "win32/error.h"
#include "win32/gdi.h"
#include "win32/input.h"
#include "win32/metrics.h"
#include "win32/paint.h"

namespace vndk::win32 {

namespace {

constexpr DWORD ERROR_CHILD_WINDOW_MENU = 1436;

Menu* barOf(const Window* window) {
    MenuState* state = menuState();
    return window != nullptr && state != nullptr && hasMenuBar(*window) ? state->menus.find(window->menu) : nullptr;
}

void changeFrame(HWND window) {
    SetWindowPos(window, nullptr, 0, 0, 0, 0,
                 SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

bool someAreUnmeasured(const Menu& menu) {
    for (const MenuItem& item : menu.items)
        if (item.ownerDrawn() && !item.asked)
            return true;
    return false;
}

void postCommand(HWND window, const MenuOutcome& outcome, POINT point) {
    if (!outcome.picked || IsWindow(window) == FALSE)
        return;
    if (outcome.system)
        PostMessageA(window, WM_SYSCOMMAND, outcome.command, MAKELPARAM(point.x, point.y));
    else
        PostMessageA(window, WM_COMMAND, MAKEWPARAM(static_cast<int>(outcome.command), 0), 0);
}

POINT pointer() {
    POINT point{};
    GetCursorPos(&point);
    return point;
}

// Where the system menu hangs: below the caption, or at the corner of a window without one.
POINT systemMenuPlace(const Window& window) {
    const RECT inside = insideFrame(window, window.windowRect);
    return {inside.left, inside.top + captionHeight(window.style, window.exStyle)};
}

enum class Opened : std::uint8_t { no, withFirst };

MenuOutcome runSystemMenu(HWND handle, POINT at, Opened selection) {
    const HMENU menu = GetSystemMenu(handle, FALSE);
    updateSystemMenu(handle);
    if (menu == nullptr || IsWindow(handle) == FALSE)
        return {};
    MenuTracker tracker(menu, MenuKind::system, handle, TPM_LEFTBUTTON);
    if (!tracker.begin() || !tracker.openTop(at, nullptr))
        return {};
    if (selection == Opened::withFirst)
        tracker.select(0, SelectedBy::keys);
    return tracker.run();
}

MenuOutcome runBar(HWND handle, WPARAM character) {
    const Menu* bar = barOf(findWindow(handle));
    if (bar == nullptr || bar->items.empty())
        return {};
    MenuTracker tracker(bar->handle, MenuKind::bar, handle, 0);
    if (!tracker.begin())
        return {};
    if (character != 0)
        tracker.type(static_cast<char>(character));
    else
        tracker.select(0, SelectedBy::keys);
    // Nothing is marked by the character: the user gets out as if no key had been pressed.
    const Menu* now = barOf(findWindow(handle));
    if (now == nullptr || now->selected == noItem)
        return {};
    return tracker.run();
}

// A key at the end of the one menu goes on to the other, until one is left for good.
void runByKeys(HWND handle, bool system, WPARAM character) {
    while (IsWindow(handle) != FALSE) {
        const Window* window = findWindow(handle);
        const MenuOutcome outcome =
            system ? runSystemMenu(handle, systemMenuPlace(*window), Opened::withFirst) : runBar(handle, character);
        if (!outcome.leftSideways) {
            postCommand(handle, outcome, pointer());
            return;
        }
        system = !system;
        character = 0;
    }
}

bool hasSystemMenuStyle(HWND window) {
    return (GetWindowLongA(window, GWL_STYLE) & static_cast<LONG>(WS_SYSMENU)) != 0;
}

} // namespace

bool hasMenuBar(const Window& window) {
    MenuState* state = menuState();
    return (window.style & WS_CHILD) == 0 && window.menu != nullptr && state != nullptr &&
           state->menus.find(window.menu) != nullptr;
}

int menuBarHeight(HWND handle, int width) {
    const Menu* bar = barOf(findWindow(handle));
    return bar != nullptr ? layOutBar(bar->handle, nullptr, width) + 1 : 0;
}

void drawMenuBar(HWND handle, HDC dc, const RECT& area) {
    const Menu* bar = barOf(findWindow(handle));
    if (bar == nullptr)
        return;
    if (someAreUnmeasured(*bar)) {
        layOutBar(bar->handle, handle, widthOf(area));
        // The bar may be higher than the frame has room for.
        changeFrame(handle);
        bar = barOf(findWindow(handle));
    }
    FillRect(dc, &area, GetSysColorBrush(COLOR_MENU));
    const auto count = bar != nullptr ? static_cast<int>(bar->items.size()) : 0;
    for (int i = 0; i < count && barOf(findWindow(handle)) != nullptr; ++i)
        drawMenuItem(findWindow(handle)->menu, i, dc, {area.left, area.top}, handle);
}

bool barContains(HWND handle, POINT point) {
    const Window* window = findWindow(handle);
    return barOf(window) != nullptr && containsPoint(menuBarArea(*window), point);
}

RECT barItemRect(HWND handle, int position) {
    const Window* window = findWindow(handle);
    const Menu* bar = barOf(window);
    if (bar == nullptr || position < 0 || static_cast<std::size_t>(position) >= bar->items.size())
        return {};
    const RECT area = menuBarArea(*window);
    return shifted(bar->items[static_cast<std::size_t>(position)].rect, area.left, area.top);
}

int barItemAt(HWND handle, POINT point) {
    const Menu* bar = barOf(findWindow(handle));
    for (std::size_t i = 0; bar != nullptr && i < bar->items.size(); ++i)
        if (!bar->items[i].separator() && containsPoint(barItemRect(handle, static_cast<int>(i)), point))
            return static_cast<int>(i);
    return noItem;
}

void repaintBarItem(HWND handle, int position) {
    const Window* window = findWindow(handle);
    if (position == noItem || barOf(window) == nullptr || !isVisible(*window))
        return;
    const RECT area = menuBarArea(*window);
    const POINT origin{area.left - window->windowRect.left, area.top - window->windowRect.top};
    const HMENU menu = window->menu;
    const HDC dc = GetWindowDC(handle);
    drawMenuItem(menu, position, dc, origin, handle);
    ReleaseDC(handle, dc);
}

void trackMenuByMouse(HWND handle, int hitTest, POINT screenPoint) {
    const Window* window = findWindow(handle);
    if (window == nullptr || menuTracked())
        return;
    if (hitTest == HTSYSMENU) {
        postCommand(handle, runSystemMenu(handle, systemMenuPlace(*window), Opened::no), screenPoint);
        return;
    }
    if (barOf(window) == nullptr || barItemAt(handle, screenPoint) == noItem)
        return;
    MenuOutcome outcome;
    {
        MenuTracker tracker(window->menu, MenuKind::bar, handle, 0);
        if (!tracker.begin())
            return;
        tracker.press(screenPoint);
        outcome = tracker.run();
    }
    if (outcome.leftSideways)
        runByKeys(handle, true, 0);
    else
        postCommand(handle, outcome, screenPoint);
}

void trackMenuByKey(HWND handle, WPARAM character) {
    const HWND top = GetAncestor(handle, GA_ROOT);
    if (top == nullptr || menuTracked() || IsWindowEnabled(top) == FALSE)
        return;
    const bool hasBar = barOf(findWindow(top)) != nullptr && IsIconic(top) == FALSE;
    if (character == ' ' || !hasBar) {
        if (hasSystemMenuStyle(top) && (character == ' ' || character == 0))
            runByKeys(top, true, 0);
        else if (character != 0)
            MessageBeep(0);
        return;
    }
    runByKeys(top, false, character);
}

void trackSystemMenu(HWND handle, POINT screenPoint) {
    if (findWindow(handle) != nullptr && !menuTracked() && hasSystemMenuStyle(handle))
        postCommand(handle, runSystemMenu(handle, screenPoint, Opened::no), screenPoint);
}

bool menuTracked() {
    const MenuState* state = menuState();
    return state != nullptr && state->tracker != nullptr;
}

void forgetMenus(Window& window) {
    MenuState* state = menuState();
    if (state == nullptr)
        return;
    if (state->tracker != nullptr && state->tracker->owner() == window.handle)
        state->tracker->end();
    const HMENU bar = window.menu;
    const HMENU system = window.systemMenu;
    window.menu = window.systemMenu = nullptr;
    if (bar != nullptr && state->menus.find(bar) != nullptr)
        DestroyMenu(bar);
    if (system != nullptr && state->menus.find(system) != nullptr)
        DestroyMenu(system);
}

void menuChanged(Menu& menu) {
    const auto count = static_cast<int>(menu.items.size());
    if (menu.selected >= count)
        menu.selected = noItem;
    if (menu.popup && menu.window != nullptr)
        InvalidateRect(menu.window, nullptr, FALSE);
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL SetMenu(HWND handle, HMENU menu) {
    Window* window = findWindow(handle);
    if (window == nullptr || (menu != nullptr && findMenu(menu) == nullptr))
        return FALSE;
    if ((window->style & WS_CHILD) != 0) {
        SetLastError(ERROR_CHILD_WINDOW_MENU);
        return FALSE;
    }
    if (Menu* former = menuState()->menus.find(window->menu))
        former->window = nullptr;
    window->menu = menu;
    if (Menu* bar = menu != nullptr ? findMenu(menu) : nullptr) {
        bar->popup = false;
        bar->window = handle;
    }
    if (window->created)
        changeFrame(handle);
    return TRUE;
}

HMENU GetMenu(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return nullptr;
    // Of a child the number stands in its place.
    return (window->style & WS_CHILD) != 0 ? reinterpret_cast<HMENU>(window->id) : window->menu;
}

BOOL DrawMenuBar(HWND handle) {
    const Window* window = findWindow(handle);
    if (window == nullptr)
        return FALSE;
    if (const Menu* bar = barOf(window))
        layOutBar(bar->handle, handle, widthOf(menuBarArea(*window)));
    if (IsWindow(handle) == FALSE)
        return FALSE;
    changeFrame(handle);
    if (IsWindow(handle) != FALSE)
        RedrawWindow(handle, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_NOCHILDREN | RDW_NOERASE);
    return TRUE;
}

BOOL HiliteMenuItem(HWND handle, HMENU menu, UINT item, UINT flags) {
    const MenuPlace place = findItem(menu, item, (flags & MF_BYPOSITION) != 0);
    if (findWindow(handle) == nullptr || !place)
        return FALSE;
    const int position = place.position;
    const bool isBar = place.menu->handle == GetMenu(handle);
    if ((flags & MF_HILITE) != 0)
        place.item().state |= MFS_HILITE;
    else
        place.item().state &= ~MFS_HILITE;
    if (isBar)
        repaintBarItem(handle, position);
    return TRUE;
}

BOOL GetMenuItemRect(HWND handle, HMENU menu, UINT position, RECT* rect) {
    const MenuPlace place = findItem(menu, position, true);
    if (!place || rect == nullptr)
        return FALSE;
    const bool shownAsPopup = place.menu->popup && place.menu->window != nullptr;
    if (shownAsPopup) {
        POINT corner{0, 0};
        ClientToScreen(place.menu->window, &corner);
        *rect = shifted(place.item().rect, corner.x, corner.y);
        return TRUE;
    }
    if (handle == nullptr || GetMenu(handle) != menu || barOf(findWindow(handle)) == nullptr)
        return FALSE;
    *rect = barItemRect(handle, static_cast<int>(position));
    return TRUE;
}

int MenuItemFromPoint(HWND handle, HMENU menu, POINT point) {
    const int count = GetMenuItemCount(menu);
    for (int i = 0; i < count; ++i) {
        RECT rect{};
        if (GetMenuItemRect(handle, menu, static_cast<UINT>(i), &rect) != FALSE && containsPoint(rect, point))
            return i;
    }
    return -1;
}
