// The mouse in menus: pointing selects, a press opens, a release picks.
#include "user/menu_tracker.h"
#include "win32/input.h"
#include "win32/metrics.h"

namespace vndk::win32 {

namespace {

UINT openingDelay() {
    UINT milliseconds = 400;
    SystemParametersInfoA(SPI_GETMENUSHOWDELAY, 0, &milliseconds, 0);
    return milliseconds;
}

} // namespace

bool MenuTracker::handleMouse(const MSG& message) {
    switch (message.message) {
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
        pointerMoved(message.pt);
        return true;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        buttonDown(message.pt, false);
        return true;
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
        buttonDown(message.pt, true);
        return true;
    case WM_LBUTTONUP:
        buttonUp(message.pt, false);
        return true;
    case WM_RBUTTONUP:
        buttonUp(message.pt, true);
        return true;
    default:
        return true; // wheel and middle button do nothing here
    }
}

void MenuTracker::pointerMoved(POINT point) {
    // A menu that opens under a pointer that rests selects nothing.
    if (point.x == lastPoint_.x && point.y == lastPoint_.y)
        return;
    lastPoint_ = point;
    armed_ = true;
    const Hit hit = hitTest(point);
    if (!hit.inside || hit.item == noItem) {
        cancelDelay();
        // The item that a popup came out of stays selected.
        if (levels_[deepest()].window != nullptr || levels_.size() > 1)
            selectAt(deepest(), noItem, SelectedBy::mouse);
        return;
    }
    const bool bar = levels_[hit.level].window == nullptr;
    const bool popupOpen = levels_.size() > hit.level + 1;
    reselectParents(hit.level);
    selectAt(hit.level, hit.item, SelectedBy::mouse);
    if (!alive() || isOpen(hit.level, hit.item)) {
        cancelDelay();
    } else if (bar && popupOpen) {
        // Along the bar the popups follow at once.
        closeBelow(hit.level);
        openSub(hit.level, hit.item);
    } else if (!bar) {
        delayOpening(hit.level, hit.item);
    }
}

// On its way into a popup the pointer may have crossed other items than the one that it came out of.
void MenuTracker::reselectParents(std::size_t level) {
    for (std::size_t above = 0; above < level; ++above) {
        const Menu* menu = menuAt(above);
        for (std::size_t i = 0; menu != nullptr && i < menu->items.size(); ++i)
            if (isOpen(above, static_cast<int>(i))) {
                selectAt(above, static_cast<int>(i), SelectedBy::mouse);
                break;
            }
    }
}

void MenuTracker::press(POINT point) {
    lastPoint_ = point;
    if (alive())
        buttonDown(point, false);
}

void MenuTracker::buttonDown(POINT point, bool right) {
    const Hit hit = hitTest(point);
    armed_ = true;
    if (right && ((flags_ & TPM_RIGHTBUTTON) == 0 || kind_ != MenuKind::popup))
        return;
    cancelDelay();
    if (hit.item == noItem)
        return;
    const bool bar = levels_[hit.level].window == nullptr;
    closesOnRelease_ = bar && isOpen(hit.level, hit.item);
    pressedOnBar_ = bar;
    selectAt(hit.level, hit.item, SelectedBy::mouse);
    if (!alive() || closesOnRelease_)
        return;
    const MenuItem* item = itemAt(hit.level, hit.item);
    if (item != nullptr && item->subMenu != nullptr)
        openSub(hit.level, hit.item);
    else
        closeBelow(hit.level);
}

void MenuTracker::buttonUp(POINT point, bool right) {
    const Hit hit = hitTest(point);
    const bool dragged = pressedOnBar_;
    pressedOnBar_ = false;
    // The button that opened the menu under the pointer picks nothing by being let go.
    if (!armed_)
        return;
    if (right && ((flags_ & TPM_RIGHTBUTTON) == 0 || kind_ != MenuKind::popup)) {
        if (const Menu* menu = hit.item != noItem ? menuAt(hit.level) : nullptr)
            notify(WM_MENURBUTTONUP, static_cast<WPARAM>(hit.item), reinterpret_cast<LPARAM>(menu->handle));
        return;
    }
    if (!hit.inside) {
        // From the bar to nowhere: the user thought better of it. A popup that a held button opened stays.
        if (dragged)
            ending_ = true;
        return;
    }
    const MenuItem* item = itemAt(hit.level, hit.item);
    if (item == nullptr)
        return;
    if (item->subMenu == nullptr) {
        selectAt(hit.level, hit.item, SelectedBy::mouse);
        if (alive())
            pick(hit.level, hit.item);
    } else if (closesOnRelease_ && isOpen(hit.level, hit.item)) {
        ending_ = true;
    } else if (!isOpen(hit.level, hit.item)) {
        openSub(hit.level, hit.item);
    }
}

void MenuTracker::delayOpening(std::size_t level, int position) {
    cancelDelay();
    delayedLevel_ = level;
    delayedItem_ = position;
    timer_ = SetTimer(nullptr, 0, openingDelay(), nullptr);
}

void MenuTracker::cancelDelay() {
    if (timer_ != 0)
        KillTimer(nullptr, timer_);
    timer_ = 0;
}

void MenuTracker::delayPassed() {
    cancelDelay();
    const Menu* menu = menuAt(delayedLevel_);
    if (menu == nullptr || menu->selected != delayedItem_)
        return;
    closeBelow(delayedLevel_);
    if (alive())
        openSub(delayedLevel_, delayedItem_);
}

} // namespace vndk::win32
