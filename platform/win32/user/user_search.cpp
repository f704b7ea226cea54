#include "user/user_search.h"

#include "user/desktop_state.h"
#include "user/menu.h"
#include "win32/codepage.h"
#include "win32/input.h"

namespace vndk::win32 {

namespace {

std::string className(HWND window) {
    const Window* found = findWindow(window);
    return found != nullptr ? found->windowClass->name : std::string();
}

// Depth first; a visible one goes before all hidden ones.
HWND findControl(const Window& parent, int id, bool visibleOnly) {
    for (const Window* child : parent.children) {
        if (visibleOnly && (child->style & WS_VISIBLE) == 0)
            continue;
        if (isChild(*child) && static_cast<int>(child->id) == id)
            return child->handle;
        if (const HWND found = findControl(*child, id, visibleOnly))
            return found;
    }
    return nullptr;
}

std::string plainLabel(const std::string& itemText) {
    std::string label;
    const std::string marked = splitMenuText(itemText).label;
    for (std::size_t i = 0; i < marked.size(); ++i) {
        if (marked[i] == '&' && ++i == marked.size())
            break;
        label += marked[i];
    }
    return label;
}

FoundMenuItem itemWithText(HMENU menu, const std::string& text) {
    MenuState* state = menuState();
    const Menu* found = state != nullptr ? state->menus.find(menu) : nullptr;
    for (std::size_t i = 0; found != nullptr && i < found->items.size(); ++i)
        if (!found->items[i].separator() && plainLabel(found->items[i].text) == text)
            return {menu, static_cast<UINT>(i)};
    return {};
}

} // namespace

HWND topLevelWindow(const std::string& titleOrClass) {
    if (titleOrClass.empty())
        return GetActiveWindow();
    for (HWND window = GetTopWindow(nullptr); window != nullptr; window = GetWindow(window, GW_HWNDNEXT)) {
        if (IsWindowVisible(window) == FALSE)
            continue;
        const bool matches = titleOrClass.front() == '#' ? compareNoCase(className(window), titleOrClass) == 0
                                                         : findWindow(window)->text == titleOrClass;
        if (matches)
            return window;
    }
    return nullptr;
}

HWND findControl(HWND window, int id) {
    if (id == 0)
        return window;
    const Window* parent = findWindow(window);
    if (parent == nullptr)
        return nullptr;
    const HWND visible = findControl(*parent, id, true);
    return visible != nullptr ? visible : findControl(*parent, id, false);
}

bool enabledWithParents(HWND window) {
    for (const Window* found = findWindow(window); found != nullptr; found = found->parent)
        if ((found->style & WS_DISABLED) != 0)
            return false;
    return true;
}

// Labels let clicks through to what they stand on.
bool reachable(HWND control, POINT point) {
    const HWND there = WindowFromPoint(point);
    return there == control || IsChild(control, there) != FALSE || there == GetAncestor(control, GA_PARENT);
}

FoundMenuItem shownItem(HWND window, const std::string& text) {
    bool popups = false;
    for (HWND popup = GetTopWindow(nullptr); popup != nullptr; popup = GetWindow(popup, GW_HWNDNEXT)) {
        if (className(popup) != "#32768" || IsWindowVisible(popup) == FALSE)
            continue;
        popups = true;
        if (const FoundMenuItem found = itemWithText(reinterpret_cast<HMENU>(send(popup, MN_GETHMENU)), text);
            found.menu)
            return found;
    }
    return popups || window == nullptr ? FoundMenuItem{} : itemWithText(GetMenu(window), text);
}

} // namespace vndk::win32
