// The order of windows that have the same parent.
//
// Of top-level windows the topmost ones (WS_EX_TOPMOST) stand in front of all others, and a window stands in front of
// its owner: when one is raised, its owned windows and its owner come along.
#include "user/desktop_state.h"
#include "user/window_position.h"

#include <algorithm>
#include <cassert>

namespace vndk::win32 {

namespace {

using Order = std::vector<Window*>;

bool isTopmost(const Window& window) { return (window.exStyle & WS_EX_TOPMOST) != 0; }

bool isSpecial(HWND insertAfter) {
    return insertAfter == HWND_TOP || insertAfter == HWND_BOTTOM || insertAfter == HWND_TOPMOST ||
           insertAfter == HWND_NOTOPMOST;
}

bool ownedBy(const Window& window, const Window& owner) {
    const Window* each = &window;
    for (int step = 0; each != nullptr && step < 100; ++step) {
        each = ownerOf(*each);
        if (each == &owner)
            return true;
    }
    return false;
}

/// The window with all that it owns, in their present order, itself last.
Order groupOf(const Order& order, Window& window) {
    Order group;
    for (Window* each : order)
        if (each != &window && ownedBy(*each, window))
            group.push_back(each);
    group.push_back(&window);
    return group;
}

/// Where the band that `topmost` names begins.
Order::iterator bandBegin(Order& order, bool topmost) {
    return topmost ? order.begin()
                   : std::find_if(order.begin(), order.end(), [](const Window* each) { return !isTopmost(*each); });
}

void setTopmost(const Order& group, bool topmost) {
    for (Window* each : group)
        each->exStyle = topmost ? each->exStyle | WS_EX_TOPMOST : each->exStyle & ~WS_EX_TOPMOST;
}

/// Where in `order`, which doesn't hold the window, it has to go.
Order::iterator destination(Order& order, const Window& window, HWND insertAfter) {
    const bool topmost = isTopmost(window);
    const auto begin = bandBegin(order, topmost);
    const auto end = topmost ? bandBegin(order, false) : order.end();
    if (insertAfter == HWND_BOTTOM)
        return end;
    if (insertAfter == HWND_TOP || insertAfter == HWND_TOPMOST || insertAfter == HWND_NOTOPMOST)
        return begin;
    const auto after =
        std::find_if(order.begin(), order.end(), [&](const Window* each) { return each->handle == insertAfter; });
    if (after == order.end())
        return begin;
    return std::clamp(after + 1, begin, end);
}

void takeOut(Order& order, const Order& group) {
    std::erase_if(order, [&](Window* each) { return std::find(group.begin(), group.end(), each) != group.end(); });
}

/// The owner follows right behind the last of its group, when it stood in front of it or is to be raised too.
void bringOwnerBehind(Order& order, Window& window, bool raise) {
    Window* owner = ownerOf(window);
    for (int step = 0; owner != nullptr && step < 100; owner = ownerOf(*owner), ++step) {
        if (isTopmost(*owner) != isTopmost(window) && !isTopmost(*owner))
            return; // Owned windows may be topmost alone; their owner stays where it is.
        const auto at = std::find(order.begin(), order.end(), owner);
        const bool inFront = std::any_of(at, order.end(), [&](const Window* each) { return ownedBy(*each, *owner); });
        if (!raise && !inFront)
            return;
        const Order group = groupOf(order, *owner);
        const auto first = std::find_first_of(order.begin(), order.end(), group.begin(), group.end());
        const auto place = first - order.begin();
        takeOut(order, group);
        order.insert(order.begin() + place, group.begin(), group.end());
    }
}

Order reordered(Window& window, HWND insertAfter, bool moveOwners) {
    Order order = window.parent->children;
    const bool topLevel = isTopLevel(window);
    const Order group = topLevel ? groupOf(order, window) : Order{&window};
    takeOut(order, group);
    const auto place = destination(order, window, insertAfter);
    const auto inserted = order.insert(place, group.begin(), group.end());
    // Owned windows that keep out of the topmost band fall back to the front of their own.
    std::stable_partition(inserted, inserted + static_cast<std::ptrdiff_t>(group.size()),
                          [](const Window* each) { return isTopmost(*each); });
    if (topLevel && moveOwners)
        bringOwnerBehind(order, window, insertAfter == HWND_TOP || insertAfter == HWND_TOPMOST);
    std::stable_partition(order.begin(), order.end(), [](const Window* each) { return isTopmost(*each); });
    return order;
}

/// A window that stops being topmost takes its owners and all that they own along.
void makeOrdinary(Window& window) {
    Window* root = &window;
    for (Window* owner = ownerOf(window); owner != nullptr; owner = ownerOf(*owner))
        root = owner;
    setTopmost(groupOf(window.parent->children, *root), false);
}

void applyTopmost(Window& window, HWND insertAfter) {
    if (!isTopLevel(window))
        return;
    const Window* after = isSpecial(insertAfter) ? nullptr : findWindow(insertAfter);
    if (insertAfter == HWND_TOPMOST)
        setTopmost(groupOf(window.parent->children, window), true);
    else if (insertAfter == HWND_NOTOPMOST || insertAfter == HWND_BOTTOM || (after != nullptr && !isTopmost(*after)))
        if (isTopmost(window))
            makeOrdinary(window);
}

} // namespace

Window* ownerOf(const Window& window) {
    Window* owner = window.owner != nullptr ? findWindow(window.owner) : nullptr;
    return owner != nullptr && isTopLevel(*owner) ? owner : nullptr;
}

bool reorder(Window& window, HWND insertAfter, bool moveOwners) {
    assert(window.parent != nullptr && "the desktop window has no place among others");
    if (insertAfter == HWND_NOTOPMOST && !isTopmost(window))
        return false;
    const DWORD before = window.exStyle;
    applyTopmost(window, insertAfter);
    Order order = reordered(window, insertAfter, moveOwners);
    const bool changed = order != window.parent->children || before != window.exStyle;
    window.parent->children = std::move(order);
    return changed;
}

bool inPlace(const Window& window, HWND insertAfter) {
    if (window.parent == nullptr || insertAfter == window.handle)
        return true;
    if (insertAfter == HWND_TOPMOST && !isTopmost(window))
        return false;
    if (insertAfter == HWND_NOTOPMOST || (insertAfter == HWND_BOTTOM && isTopmost(window)))
        return !isTopmost(window);
    const Window* after = isSpecial(insertAfter) ? nullptr : findWindow(insertAfter);
    if (after != nullptr && isTopmost(window) && !isTopmost(*after))
        return false;
    return reordered(const_cast<Window&>(window), insertAfter, true) == window.parent->children;
}

void linkWindow(Window& window, Window& parent) {
    window.parent = &parent;
    // A dialog's controls follow each other as they were made; top-level windows come up in front.
    if (isTopLevel(window)) {
        const Order& order = parent.children;
        const auto place = std::find_if(order.begin(), order.end(),
                                        [&](const Window* each) { return isTopmost(window) || !isTopmost(*each); });
        parent.children.insert(place, &window);
    } else {
        parent.children.push_back(&window);
    }
}

void unlinkWindow(Window& window) {
    if (window.parent != nullptr)
        std::erase(window.parent->children, &window);
    window.parent = nullptr;
}

} // namespace vndk::win32
