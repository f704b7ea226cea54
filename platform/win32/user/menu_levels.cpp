// The menus that are open one out of the other, and what is selected in them.
#include "user/frame_geometry.h"
#include "user/menu_layout.h"
#include "user/menu_popup.h"
#include "user/menu_tracker.h"
#include "win32/input.h"

namespace vndk::win32 {

namespace {

// A popup overlaps the one that it comes out of by its border.
constexpr int overlap = popupBorder;
constexpr std::size_t mostLevels = 32;

} // namespace

Menu* MenuTracker::menuAt(std::size_t level) const {
    return level < levels_.size() ? menuState()->menus.find(levels_[level].menu) : nullptr;
}

const MenuItem* MenuTracker::itemAt(std::size_t level, int position) const {
    const Menu* menu = menuAt(level);
    return menu != nullptr && position >= 0 && static_cast<std::size_t>(position) < menu->items.size()
               ? &menu->items[static_cast<std::size_t>(position)]
               : nullptr;
}

MenuTracker::Hit MenuTracker::hitTest(POINT point) const {
    for (std::size_t level = levels_.size(); level-- > 0;) {
        const Menu* menu = menuAt(level);
        if (menu == nullptr)
            continue;
        if (levels_[level].window == nullptr) {
            if (barContains(owner_, point))
                return {level, barItemAt(owner_, point), true};
            continue;
        }
        RECT area{};
        GetWindowRect(levels_[level].window, &area);
        if (containsPoint(area, point))
            return {level, popupItemAt(*menu, point), true};
    }
    return {};
}

bool MenuTracker::isOpen(std::size_t level, int position) const {
    const MenuItem* item = itemAt(level, position);
    return item != nullptr && item->subMenu != nullptr && level + 1 < levels_.size() &&
           levels_[level + 1].menu == item->subMenu;
}

void MenuTracker::repaintItem(std::size_t level, int position) const {
    if (level >= levels_.size())
        return;
    if (levels_[level].window == nullptr)
        repaintBarItem(owner_, position);
    else if (const Menu* menu = menuAt(level))
        repaintPopupItem(*menu, position);
}

void MenuTracker::tellSelected(std::size_t level, SelectedBy by) const {
    const Menu* menu = menuAt(level);
    if (menu == nullptr)
        return;
    const MenuItem* item = itemAt(level, menu->selected);
    if (item == nullptr) {
        // Nothing is selected here: what this menu came out of counts.
        if (level > 0)
            tellSelected(level - 1, by);
        return;
    }
    UINT flags = ((item->type | item->state) & 0xFFFF) | MF_HILITE;
    if (by == SelectedBy::mouse)
        flags |= MF_MOUSESELECT;
    if (kind_ == MenuKind::system)
        flags |= MF_SYSMENU;
    UINT what = item->id;
    if (item->subMenu != nullptr) {
        flags |= MF_POPUP;
        what = static_cast<UINT>(menu->selected);
    }
    notify(WM_MENUSELECT, MAKEWPARAM(static_cast<int>(what), static_cast<int>(flags)),
           reinterpret_cast<LPARAM>(menu->handle));
}

void MenuTracker::selectAt(std::size_t level, int position, SelectedBy by) {
    Menu* menu = menuAt(level);
    if (menu == nullptr || menu->selected == position)
        return;
    const int former = menu->selected;
    menu->selected = position;
    repaintItem(level, former);
    repaintItem(level, position);
    tellSelected(level, by);
}

void MenuTracker::select(int position, SelectedBy by) {
    if (alive())
        selectAt(0, position, by);
}

bool MenuTracker::openLevel(HMENU menu, LPARAM position, POINT at, UINT flags, const RECT* exclude) {
    if (levels_.size() >= mostLevels)
        return false;
    notify(WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), position);
    const Menu* found = menuState()->menus.find(menu);
    if (found == nullptr || found->items.empty() || ending_ || IsWindow(owner_) == FALSE)
        return false;
    layOutPopup(menu, notifies() ? owner_ : nullptr);
    found = menuState()->menus.find(menu);
    if (found == nullptr || IsWindow(owner_) == FALSE)
        return false;
    const HWND window = showPopup(menu, owner_, placePopup(found->size, at, flags, exclude));
    if (window == nullptr)
        return false;
    levels_.push_back({menu, window});
    return true;
}

bool MenuTracker::openTop(POINT at, const RECT* exclude) {
    lastPoint_ = at;
    POINT pointer{};
    if (GetCursorPos(&pointer) != FALSE)
        lastPoint_ = pointer;
    const LPARAM position = MAKELPARAM(0, kind_ == MenuKind::system ? TRUE : FALSE);
    return openLevel(top_, position, at, flags_, exclude);
}

bool MenuTracker::openSub(std::size_t level, int position) {
    const MenuItem* item = itemAt(level, position);
    if (item == nullptr || item->subMenu == nullptr || item->grayed())
        return false;
    if (isOpen(level, position))
        return true;
    const HMENU sub = item->subMenu;
    closeBelow(level);
    if (!alive())
        return false;
    const bool bar = levels_[level].window == nullptr;
    RECT from{};
    if (bar) {
        from = barItemRect(owner_, position);
    } else if (GetMenuItemRect(owner_, levels_[level].menu, static_cast<UINT>(position), &from) == FALSE) {
        return false;
    } else {
        from.left += overlap;
        from.right -= overlap;
    }
    const POINT at = bar ? POINT{from.left, from.bottom} : POINT{from.right, from.top - overlap};
    const bool opened = openLevel(sub, MAKELPARAM(position, kind_ == MenuKind::system ? TRUE : FALSE), at,
                                  bar ? TPM_VERTICAL : TPM_HORIZONTAL, &from);
    repaintItem(level, position);
    return opened;
}

void MenuTracker::closeBelow(std::size_t level) {
    while (levels_.size() > level + 1) {
        const HMENU menu = levels_.back().menu;
        levels_.pop_back();
        hidePopup(menu);
        notify(WM_UNINITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
    }
    if (const Menu* menu = menuAt(level))
        repaintItem(level, menu->selected);
}

void MenuTracker::pick(std::size_t level, int position) {
    const MenuItem* item = itemAt(level, position);
    if (item == nullptr || item->separator() || item->grayed())
        return;
    outcome_.picked = true;
    outcome_.command = item->id;
    outcome_.system = kind_ == MenuKind::system || menuAt(level)->system;
    ending_ = true;
}

} // namespace vndk::win32
