// Menus and their items behind the published calls.
#include "user/menu_change.h"
#include "win32/codepage.h"
#include "win32/error.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace vndk::win32 {

namespace {

// Nobody nests menus so deeply; what goes beyond isn't searched.
constexpr int deepestMenu = 64;

constexpr UINT typeBits = MFT_BITMAP | MFT_MENUBARBREAK | MFT_MENUBREAK | MFT_OWNERDRAW | MFT_RADIOCHECK |
                          MFT_SEPARATOR | MFT_RIGHTORDER | MFT_RIGHTJUSTIFY;
constexpr UINT stateBits = MFS_GRAYED | MFS_CHECKED | MFS_HILITE | MFS_DEFAULT;
constexpr UINT notFound = 0xFFFFFFFF;

MenuPlace findCommandBelow(Menu& menu, UINT id, int depth) {
    MenuPlace popup; // a popup's own number counts only when no item has it
    for (std::size_t i = 0; i < menu.items.size(); ++i) {
        const MenuItem& item = menu.items[i];
        if (item.subMenu == nullptr) {
            if (item.id == id)
                return {&menu, static_cast<int>(i)};
            continue;
        }
        MenuState* state = menuState();
        Menu* sub = state != nullptr && depth < deepestMenu ? state->menus.find(item.subMenu) : nullptr;
        if (sub != nullptr)
            if (const MenuPlace found = findCommandBelow(*sub, id, depth + 1))
                return found;
        if (item.id == id && !popup)
            popup = {&menu, static_cast<int>(i)};
    }
    return popup;
}

// Would `sub` contain `menu`, at any depth?
bool containsMenu(HMENU sub, HMENU menu) {
    std::vector<HMENU> open{sub};
    std::set<HMENU> seen;
    while (!open.empty()) {
        const HMENU next = open.back();
        open.pop_back();
        if (next == menu)
            return true;
        if (!seen.insert(next).second)
            continue;
        if (const Menu* found = menuState()->menus.find(next))
            for (const MenuItem& item : found->items)
                if (item.subMenu != nullptr)
                    open.push_back(item.subMenu);
    }
    return false;
}

// What a call of the AppendMenu family describes. False with an error when its sub-menu isn't one.
bool itemFromFlags(HMENU menu, UINT flags, UINT_PTR idOrPopup, LPCSTR content, MenuItem& item) {
    item.type = flags & typeBits;
    item.state = flags & stateBits;
    item.id = static_cast<UINT>(idOrPopup);
    if ((flags & MF_POPUP) != 0 && !takeSubMenu(menu, reinterpret_cast<HMENU>(idOrPopup), item))
        return false;
    if (item.ownerDrawn())
        item.data = item.typeData = reinterpret_cast<ULONG_PTR>(content);
    else if ((item.type & MFT_BITMAP) != 0)
        item.bitmap = reinterpret_cast<HBITMAP>(const_cast<char*>(content));
    else if (content == nullptr && !item.separator())
        item.type |= MFT_SEPARATOR;
    else if (!item.separator())
        item.text = content;
    settleItem(item);
    return true;
}

bool insertItem(HMENU handle, UINT before, bool byPosition, MenuItem item) {
    Menu* menu = findMenu(handle);
    if (menu == nullptr)
        return false;
    MenuPlace place{menu, static_cast<int>(menu->items.size())};
    if (byPosition && before < menu->items.size())
        place.position = static_cast<int>(before);
    else if (!byPosition && before != notFound)
        if (const MenuPlace found = findCommand(*menu, before))
            place = found;
    constexpr std::size_t mostItems = 65535;
    if (place.menu->items.size() >= mostItems) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return false;
    }
    if (place.menu->selected >= place.position)
        ++place.menu->selected;
    place.menu->items.insert(place.menu->items.begin() + place.position, std::move(item));
    menuChanged(*place.menu);
    return true;
}

// The sub-menu of the item that was taken out; null when it had none.
HMENU takeOut(const MenuPlace& place) {
    const HMENU sub = place.item().subMenu;
    Menu& menu = *place.menu;
    menu.items.erase(menu.items.begin() + place.position);
    if (menu.selected == place.position)
        menu.selected = noItem;
    else if (menu.selected > place.position)
        --menu.selected;
    menuChanged(menu);
    return sub;
}

void setState(const MenuPlace& place, UINT mask, UINT bits) {
    MenuItem& item = place.item();
    if ((item.state & mask) == bits)
        return;
    item.state = (item.state & ~mask) | bits;
    menuChanged(*place.menu);
}

MenuPlace placeOf(HMENU menu, UINT item, UINT flags) { return findItem(menu, item, (flags & MF_BYPOSITION) != 0); }

} // namespace

std::shared_ptr<MenuState> makeMenuState() { return std::make_shared<MenuState>(); }

MenuState* menuState() {
    DesktopState* state = currentState();
    return state != nullptr ? state->menus.get() : nullptr;
}

Menu* findMenu(HMENU handle) {
    MenuState* state = menuState();
    Menu* menu = state != nullptr ? state->menus.find(handle) : nullptr;
    if (menu == nullptr)
        SetLastError(ERROR_INVALID_MENU_HANDLE);
    return menu;
}

MenuPlace findCommand(Menu& menu, UINT id) { return findCommandBelow(menu, id, 0); }

MenuPlace findItem(HMENU handle, UINT item, bool byPosition) {
    Menu* menu = findMenu(handle);
    if (menu == nullptr)
        return {};
    if (byPosition) {
        if (item < menu->items.size())
            return {menu, static_cast<int>(item)};
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    const MenuPlace found = findCommand(*menu, item);
    if (!found)
        SetLastError(ERROR_MENU_ITEM_NOT_FOUND);
    return found;
}

void settleItem(MenuItem& item) {
    item.asked.reset();
    // Nobody can pick a line.
    if (item.separator())
        item.state |= MFS_GRAYED;
}

bool takeSubMenu(HMENU menu, HMENU sub, MenuItem& item) {
    if (sub != nullptr) {
        Menu* found = findMenu(sub);
        if (found == nullptr)
            return false;
        if (containsMenu(sub, menu)) {
            SetLastError(ERROR_INVALID_PARAMETER);
            return false;
        }
        found->popup = true;
    }
    item.subMenu = sub;
    return true;
}

HMENU addMenu(bool popup) {
    MenuState* state = menuState();
    constexpr std::size_t mostMenus = 65536;
    if (state == nullptr || state->menus.size() >= mostMenus) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    auto made = std::make_unique<Menu>();
    Menu& menu = *made;
    menu.popup = popup;
    menu.handle = state->menus.add(std::move(made));
    return menu.handle;
}

MenuText splitMenuText(const std::string& text) {
    const std::size_t tab = text.find('\t');
    if (tab == std::string::npos)
        return {text, {}};
    return {text.substr(0, tab), text.substr(tab + 1)};
}

char mnemonicOf(const std::string& text) {
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != '&')
            continue;
        if (text[i + 1] != '&')
            return upper1252(text[i + 1]);
        ++i;
    }
    return 0;
}

} // namespace vndk::win32

using namespace vndk::win32;

HMENU CreateMenu() { return addMenu(false); }
HMENU CreatePopupMenu() { return addMenu(true); }

BOOL IsMenu(HMENU menu) {
    MenuState* state = menuState();
    return state != nullptr && state->menus.find(menu) != nullptr ? TRUE : FALSE;
}

BOOL DestroyMenu(HMENU menu) {
    if (findMenu(menu) == nullptr)
        return FALSE;
    std::vector<HMENU> doomed{menu};
    while (!doomed.empty()) {
        const HMENU next = doomed.back();
        doomed.pop_back();
        MenuState* state = menuState();
        const auto taken = state != nullptr ? state->menus.remove(next) : nullptr;
        if (taken == nullptr)
            continue;
        for (const MenuItem& item : taken->items)
            if (item.subMenu != nullptr)
                doomed.push_back(item.subMenu);
        if (taken->popup && taken->window != nullptr)
            DestroyWindow(taken->window);
    }
    return TRUE;
}

BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR idOrPopup, LPCSTR content) {
    MenuItem made;
    if (findMenu(menu) == nullptr || !itemFromFlags(menu, flags, idOrPopup, content, made))
        return FALSE;
    return insertItem(menu, item, (flags & MF_BYPOSITION) != 0, std::move(made)) ? TRUE : FALSE;
}

BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR idOrPopup, LPCSTR content) {
    return InsertMenuA(menu, notFound, flags | MF_BYPOSITION, idOrPopup, content);
}

BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR idOrPopup, LPCSTR content) {
    const MenuPlace place = placeOf(menu, item, flags);
    MenuItem made;
    if (!place || !itemFromFlags(place.menu->handle, flags, idOrPopup, content, made))
        return FALSE;
    const HMENU former = place.item().subMenu;
    place.item() = std::move(made);
    menuChanged(*place.menu);
    const bool replaced = former != nullptr && place.item().subMenu != former;
    if (replaced)
        DestroyMenu(former);
    return TRUE;
}

BOOL RemoveMenu(HMENU menu, UINT item, UINT flags) {
    const MenuPlace place = placeOf(menu, item, flags);
    if (!place)
        return FALSE;
    takeOut(place);
    return TRUE;
}

BOOL DeleteMenu(HMENU menu, UINT item, UINT flags) {
    const MenuPlace place = placeOf(menu, item, flags);
    if (!place)
        return FALSE;
    if (const HMENU sub = takeOut(place))
        DestroyMenu(sub);
    return TRUE;
}

BOOL InsertMenuItemA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info) {
    MenuItem made;
    if (findMenu(menu) == nullptr || !takeItemInfo(menu, info, made))
        return FALSE;
    return insertItem(menu, item, byPosition != FALSE, std::move(made)) ? TRUE : FALSE;
}

int GetMenuItemCount(HMENU menu) {
    const Menu* found = findMenu(menu);
    return found != nullptr ? static_cast<int>(found->items.size()) : -1;
}

UINT GetMenuItemID(HMENU menu, int position) {
    const MenuPlace place = findItem(menu, static_cast<UINT>(position), true);
    return place && place.item().subMenu == nullptr ? place.item().id : notFound;
}

HMENU GetSubMenu(HMENU menu, int position) {
    const MenuPlace place = findItem(menu, static_cast<UINT>(position), true);
    return place && IsMenu(place.item().subMenu) ? place.item().subMenu : nullptr;
}

int GetMenuStringA(HMENU menu, UINT item, LPSTR buffer, int size, UINT flags) {
    if (buffer != nullptr && size > 0)
        buffer[0] = '\0';
    const MenuPlace place = placeOf(menu, item, flags);
    if (!place)
        return 0;
    const std::string& text = place.item().text;
    if (buffer == nullptr || size <= 0)
        return static_cast<int>(text.size());
    const std::size_t length = std::min(text.size(), static_cast<std::size_t>(size - 1));
    std::memcpy(buffer, text.data(), length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

UINT GetMenuState(HMENU menu, UINT item, UINT flags) {
    const MenuPlace place = placeOf(menu, item, flags);
    if (!place)
        return notFound;
    const MenuItem& found = place.item();
    const UINT bits = found.type | found.state;
    if (found.subMenu == nullptr)
        return bits;
    const Menu* sub = menuState()->menus.find(found.subMenu);
    const auto count = static_cast<UINT>(sub != nullptr ? sub->items.size() : 0);
    return (count << 8) | ((bits | MF_POPUP) & 0xFF);
}

DWORD CheckMenuItem(HMENU menu, UINT item, UINT flags) {
    const MenuPlace place = placeOf(menu, item, flags);
    if (!place)
        return notFound;
    const UINT former = place.item().state & MF_CHECKED;
    setState(place, MF_CHECKED, flags & MF_CHECKED);
    return former;
}

BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags) {
    const MenuPlace place = placeOf(menu, item, flags);
    if (!place)
        return -1;
    constexpr UINT bits = MF_GRAYED | MF_DISABLED;
    const UINT former = place.item().state & bits;
    const HMENU changed = place.menu->handle;
    setState(place, bits, flags & bits);
    if (former != (flags & bits))
        systemMenuChanged(changed);
    return static_cast<BOOL>(former);
}

BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT check, UINT flags) {
    const MenuPlace from = placeOf(menu, first, flags);
    const MenuPlace to = placeOf(menu, last, flags);
    const MenuPlace checked = placeOf(menu, check, flags);
    if (!from || !to || !checked)
        return FALSE;
    if (to.menu != from.menu || checked.menu != from.menu) {
        SetLastError(ERROR_MENU_ITEM_NOT_FOUND);
        return FALSE;
    }
    const auto [low, high] = std::minmax(from.position, to.position);
    for (int i = low; i <= high; ++i) {
        MenuItem& item = from.menu->items[static_cast<std::size_t>(i)];
        if (item.separator() || i == checked.position)
            continue;
        item.type &= ~MFT_RADIOCHECK;
        item.state &= ~MFS_CHECKED;
    }
    checked.item().type |= MFT_RADIOCHECK;
    checked.item().state |= MFS_CHECKED;
    menuChanged(*from.menu);
    return TRUE;
}

BOOL SetMenuItemBitmaps(HMENU menu, UINT item, UINT flags, HBITMAP unchecked, HBITMAP checked) {
    const MenuPlace place = placeOf(menu, item, flags);
    if (!place)
        return FALSE;
    place.item().unchecked = unchecked;
    place.item().checked = checked;
    menuChanged(*place.menu);
    return TRUE;
}

BOOL SetMenuDefaultItem(HMENU menu, UINT item, UINT byPosition) {
    Menu* found = findMenu(menu);
    if (found == nullptr)
        return FALSE;
    const MenuPlace place = item != notFound ? findItem(menu, item, byPosition != 0) : MenuPlace{};
    if (item != notFound && !place)
        return FALSE;
    for (MenuItem& other : found->items)
        other.state &= ~MFS_DEFAULT;
    if (place)
        place.item().state |= MFS_DEFAULT;
    menuChanged(*found);
    return TRUE;
}

UINT GetMenuDefaultItem(HMENU menu, UINT byPosition, UINT flags) {
    const Menu* found = findMenu(menu);
    if (found == nullptr)
        return notFound;
    const auto item = std::find_if(found->items.begin(), found->items.end(),
                                   [](const MenuItem& candidate) { return (candidate.state & MFS_DEFAULT) != 0; });
    if (item == found->items.end() || (item->grayed() && (flags & GMDI_USEDISABLED) == 0))
        return notFound;
    if (IsMenu(item->subMenu) != FALSE && (flags & GMDI_GOINTOPOPUPS) != 0)
        if (const UINT below = GetMenuDefaultItem(item->subMenu, byPosition, flags); below != notFound)
            return below;
    return byPosition != 0 ? static_cast<UINT>(item - found->items.begin()) : item->id;
}

BOOL SetMenuContextHelpId(HMENU menu, DWORD id) {
    Menu* found = findMenu(menu);
    if (found == nullptr)
        return FALSE;
    found->helpId = id;
    return TRUE;
}

DWORD GetMenuContextHelpId(HMENU menu) {
    const Menu* found = findMenu(menu);
    return found != nullptr ? found->helpId : 0;
}
