// The keyboard in menus.
#include "user/menu_tracker.h"
#include "win32/codepage.h"
#include "win32/input.h"

#include <cstdlib>
#include <vector>

namespace vndk::win32 {

namespace {

int middleOf(const RECT& rect) { return (rect.top + rect.bottom) / 2; }

} // namespace

bool MenuTracker::handleKey(const MSG& message) {
    if (message.message == WM_CHAR || message.message == WM_SYSCHAR) {
        typeAt(deepest(), static_cast<char>(message.wParam));
        return true;
    }
    if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN)
        return true;
    switch (static_cast<int>(message.wParam)) {
    case VK_MENU:
    case VK_F10:
        ending_ = true;
        return true;
    case VK_UP:
        levels_.back().window != nullptr ? moveSelection(-1) : openSelected();
        return true;
    case VK_DOWN:
        levels_.back().window != nullptr ? moveSelection(1) : openSelected();
        return true;
    case VK_LEFT:
        goLeft();
        return true;
    case VK_RIGHT:
        goRight();
        return true;
    case VK_HOME:
        selectEnd(false);
        return true;
    case VK_END:
        selectEnd(true);
        return true;
    case VK_ESCAPE:
        escape();
        return true;
    case VK_RETURN:
        enter();
        return true;
    default:
        return false; // may become a character
    }
}

// To the next item that isn't a line, going round.
void MenuTracker::moveSelection(int step) {
    const Menu* menu = menuAt(deepest());
    if (menu == nullptr || menu->items.empty())
        return;
    const auto count = static_cast<int>(menu->items.size());
    int at = menu->selected != noItem ? menu->selected : step > 0 ? -1 : count;
    for (int tried = 0; tried < count; ++tried) {
        at = (at + step + count) % count;
        if (!menu->items[static_cast<std::size_t>(at)].separator()) {
            selectAt(deepest(), at, SelectedBy::keys);
            return;
        }
    }
}

void MenuTracker::selectEnd(bool last) {
    if (Menu* menu = menuAt(deepest())) {
        const int former = menu->selected;
        menu->selected = noItem;
        repaintItem(deepest(), former);
        moveSelection(last ? -1 : 1);
    }
}

void MenuTracker::selectFirst(std::size_t level) {
    if (level == deepest())
        selectEnd(false);
}

void MenuTracker::openWithFirst(std::size_t level, int position) {
    cancelDelay();
    if (openSub(level, position) && alive())
        selectFirst(level + 1);
}

void MenuTracker::openSelected() {
    const std::size_t level = deepest();
    if (const Menu* menu = alive() ? menuAt(level) : nullptr)
        openWithFirst(level, menu->selected);
}

// The item of the column to the right (or left) that stands at the same height.
bool MenuTracker::changeColumn(int step) {
    const std::size_t level = deepest();
    const Menu* menu = menuAt(level);
    const MenuItem* from = menu != nullptr ? itemAt(level, menu->selected) : nullptr;
    if (from == nullptr || levels_[level].window == nullptr)
        return false;
    int best = noItem;
    int bestAcross = 0;
    int bestDown = 0;
    for (std::size_t i = 0; i < menu->items.size(); ++i) {
        const MenuItem& item = menu->items[i];
        const int across = (item.rect.left - from->rect.left) * step;
        const int down = std::abs(middleOf(item.rect) - middleOf(from->rect));
        if (across <= 0 || item.separator())
            continue;
        if (best == noItem || across < bestAcross || (across == bestAcross && down < bestDown)) {
            best = static_cast<int>(i);
            bestAcross = across;
            bestDown = down;
        }
    }
    if (best != noItem)
        selectAt(level, best, SelectedBy::keys);
    return best != noItem;
}

void MenuTracker::goRight() {
    const std::size_t level = deepest();
    const Menu* menu = menuAt(level);
    const MenuItem* item = menu != nullptr ? itemAt(level, menu->selected) : nullptr;
    if (levels_[level].window == nullptr) {
        goSideways(1);
    } else if (item != nullptr && item->subMenu != nullptr && !item->grayed()) {
        openWithFirst(level, menu->selected);
    } else if (!changeColumn(1)) {
        goSideways(1);
    }
}

void MenuTracker::goLeft() {
    const std::size_t level = deepest();
    if (levels_[level].window == nullptr) {
        goSideways(-1);
    } else if (!changeColumn(-1)) {
        const std::size_t first = kind_ == MenuKind::bar ? 1 : 0;
        if (level > first)
            closeBelow(level - 1);
        else
            goSideways(-1);
    }
}

// To the neighbour on the bar, whose popup opens when one was open; beyond the bar's ends to the system menu.
void MenuTracker::goSideways(int step) {
    if (kind_ == MenuKind::popup)
        return;
    Menu* bar = menuAt(0);
    if (bar == nullptr)
        return;
    const auto count = static_cast<int>(bar->items.size());
    int next = bar->selected + step;
    while (next >= 0 && next < count && bar->items[static_cast<std::size_t>(next)].separator())
        next += step;
    const bool toSystem = next < 0 || next >= count;
    const bool hasSystem = (GetWindowLongA(owner_, GWL_STYLE) & static_cast<LONG>(WS_SYSMENU)) != 0;
    if (kind_ == MenuKind::system || (toSystem && hasSystem)) {
        if (kind_ == MenuKind::system && GetMenuItemCount(GetMenu(owner_)) <= 0)
            return;
        outcome_.leftSideways = true;
        ending_ = true;
        return;
    }
    if (toSystem)
        next = next < 0 ? count - 1 : 0;
    const bool popupOpen = levels_.size() > 1;
    closeBelow(0);
    if (!alive())
        return;
    selectAt(0, next, SelectedBy::keys);
    if (popupOpen && alive())
        openWithFirst(0, next);
}

// A popup closes; of a bar the mode stays until the bar itself is left.
void MenuTracker::escape() {
    const std::size_t level = deepest();
    if (level == 0)
        ending_ = true;
    else
        closeBelow(level - 1);
}

void MenuTracker::enter() {
    const std::size_t level = deepest();
    const Menu* menu = menuAt(level);
    const MenuItem* item = menu != nullptr ? itemAt(level, menu->selected) : nullptr;
    if (item == nullptr)
        ending_ = true;
    else if (item->subMenu != nullptr)
        openWithFirst(level, menu->selected);
    else
        pick(level, menu->selected);
}

void MenuTracker::type(char character) {
    if (alive())
        typeAt(deepest(), character);
}

void MenuTracker::typeAt(std::size_t level, char character) {
    const Menu* menu = menuAt(level);
    if (menu == nullptr || static_cast<unsigned char>(character) <= ' ')
        return;
    const char wanted = upper1252(character);
    // All that are marked by it, in order from behind the selected one.
    std::vector<int> marked;
    const auto count = static_cast<int>(menu->items.size());
    for (int i = 1; i <= count; ++i) {
        const int position = (menu->selected + i + count) % count;
        const MenuItem& item = menu->items[static_cast<std::size_t>(position)];
        if (!item.separator() && !item.ownerDrawn() && mnemonicOf(splitMenuText(item.text).label) == wanted)
            marked.push_back(position);
    }
    if (marked.empty()) {
        askOwner(level, character);
        return;
    }
    const int position = marked.front();
    selectAt(level, position, SelectedBy::keys);
    if (!alive() || marked.size() > 1)
        return;
    enter();
}

void MenuTracker::askOwner(std::size_t level, char character) {
    const HMENU menu = levels_[level].menu;
    const UINT flags =
        (levels_[level].window != nullptr ? MF_POPUP : 0U) | (kind_ == MenuKind::system ? MF_SYSMENU : 0U);
    const LRESULT answer = send(owner_, WM_MENUCHAR, MAKEWPARAM(static_cast<BYTE>(character), static_cast<int>(flags)),
                                reinterpret_cast<LPARAM>(menu));
    if (!alive() || level >= levels_.size() || levels_[level].menu != menu)
        return;
    const int position = LOWORD(static_cast<DWORD_PTR>(answer));
    switch (HIWORD(static_cast<DWORD_PTR>(answer))) {
    case MNC_CLOSE:
        ending_ = true;
        break;
    case MNC_EXECUTE:
        selectAt(level, position, SelectedBy::keys);
        if (alive())
            enter();
        break;
    case MNC_SELECT:
        selectAt(level, position, SelectedBy::keys);
        break;
    default:
        MessageBeep(0);
        break;
    }
}

} // namespace vndk::win32
