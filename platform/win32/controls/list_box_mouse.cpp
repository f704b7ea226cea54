// Mouse: presses, dragging with scrolling at the edges, double clicks.
#include "controls/list_box.h"

#include "user/message_queue.h"
#include "win32/draw.h"
#include "win32/input.h"

#include <algorithm>
#include <utility>

namespace vndk::win32 {

namespace {

constexpr UINT_PTR dragScrollTimer = 2;
constexpr UINT dragScrollPeriod = 50; // milliseconds

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

} // namespace

ListBox::Handled ListBox::handleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        settleLayout();
        if (alive())
            press(pointOf(lParam), wParam, message == WM_LBUTTONDBLCLK);
        return 0;
    case WM_MOUSEMOVE:
        if (tracking_.active)
            drag(pointOf(lParam));
        return 0;
    case WM_LBUTTONUP:
        if (tracking_.active)
            drag(pointOf(lParam));
        if (alive())
            release();
        return 0;
    case WM_CAPTURECHANGED:
        release();
        return 0;
    case WM_SYSTIMER:
        if (wParam != dragScrollTimer)
            return std::nullopt;
        dragTick();
        return 0;
    default:
        return std::nullopt;
    }
}

void ListBox::takeFocus() {
    if (!focused_)
        SetFocus(window());
}

void ListBox::press(POINT point, WPARAM keys, bool twice) {
    takeFocus();
    if (!alive())
        return;
    const int index = itemAt(point);
    if (index < 0)
        return;
    release();
    if (!alive() || !valid(index))
        return;
    tracking_ = {};
    tracking_.notification = LBN_SELCHANGE;
    tracking_.point = point;
    typed_.clear();
    if (!pressSelects(index, keys))
        return;
    if (twice) {
        // The second press ends what the first began: whoever opens a dialog now shall not find the mouse captured.
        notifyOwner(LBN_DBLCLK);
        return;
    }
    tracking_.active = true;
    SetCapture(window());
}

/// False when the window is gone.
bool ListBox::pressSelects(int index, WPARAM keys) {
    hideCaret();
    caretPlaced_ = true;
    if (!alive())
        return false;
    if (singleChoice()) {
        if ((keys & MK_CONTROL) != 0 && index == current_) {
            tracking_.notification = LBN_SELCANCEL;
            selectSingle(-1);
        } else {
            selectSingle(index);
        }
        anchor_ = current_;
    } else if (hasBits(LBS_EXTENDEDSEL)) {
        pressExtended(index, keys);
    } else {
        select(index, !items_[index].selected);
        anchor_ = index;
    }
    if (alive())
        showCaretAt(index);
    return alive();
}

void ListBox::pressExtended(int index, WPARAM keys) {
    const bool shift = (keys & MK_SHIFT) != 0;
    tracking_.range = true;
    tracking_.additive = (keys & MK_CONTROL) != 0;
    addMode_ = false;
    if (!shift || !valid(anchor_))
        anchor_ = index;
    if (tracking_.additive) {
        tracking_.selects = shift ? items_[anchor_].selected : !items_[index].selected;
        for (int i = items_.nextSelected(0); i >= 0; i = items_.nextSelected(i + 1))
            tracking_.before.push_back(i);
        selectRange(std::min(anchor_, index), std::max(anchor_, index), tracking_.selects);
    } else {
        selectOnly(std::min(anchor_, index), std::max(anchor_, index));
    }
}

void ListBox::drag(POINT point) {
    tracking_.point = point;
    watchDragScroll(point);
    if (dragScrollAt(point) == DragScroll::none)
        dragTo(nearestItem(point));
}

/// The selection follows the mouse to an item.
void ListBox::dragTo(int index) {
    if (!valid(index) || index == caret_ || tracking_.notification == LBN_SELCANCEL)
        return;
    if (!singleChoice() && !tracking_.range)
        return;
    const int former = caret_;
    hideCaret();
    if (!alive())
        return;
    if (singleChoice()) {
        selectSingle(index);
        anchor_ = index;
    } else if (!tracking_.additive) {
        selectOnly(std::min(anchor_, index), std::max(anchor_, index));
    } else {
        // What the range has left again gets back what it was.
        const std::vector<int> before = tracking_.before;
        for (int i = std::min({former, anchor_}); i <= std::max({former, anchor_}) && alive(); ++i)
            if (valid(i) && (i < std::min(anchor_, index) || i > std::max(anchor_, index)))
                select(i, std::binary_search(before.begin(), before.end(), i));
        if (alive())
            selectRange(std::min(anchor_, index), std::max(anchor_, index), tracking_.selects);
    }
    if (alive())
        showCaretAt(index);
}

/// The button went up, or the mouse was taken away.
void ListBox::release() {
    if (!tracking_.active)
        return;
    const WORD notification = tracking_.notification;
    stopTracking();
    if (GetCapture() == window())
        ReleaseCapture();
    if (alive() && !hasBits(LBS_NOSEL))
        notifyOwner(notification);
}

void ListBox::stopTracking() {
    stopDragScroll();
    tracking_ = {};
}

ListBox::DragScroll ListBox::dragScrollAt(POINT point) const {
    const RECT client = clientRect();
    const LONG along = multiColumn() ? point.x : point.y;
    const LONG end = multiColumn() ? client.right : client.bottom;
    return along < 0 ? DragScroll::back : along >= end ? DragScroll::forward : DragScroll::none;
}

void ListBox::watchDragScroll(POINT point) {
    tracking_.point = point;
    const bool outside = dragScrollAt(point) != DragScroll::none;
    if (!outside)
        stopDragScroll();
    else if (!tracking_.scrollTimer) {
        tracking_.scrollTimer = true;
        setSystemTimer(window(), dragScrollTimer, dragScrollPeriod, nullptr);
        dragTick();
    }
}

void ListBox::stopDragScroll() {
    if (std::exchange(tracking_.scrollTimer, false))
        killSystemTimer(window(), dragScrollTimer);
}

/// One step toward the edge that the mouse has left.
void ListBox::dragTick() {
    const DragScroll direction = dragScrollAt(tracking_.point);
    if (!tracking_.scrollTimer || direction == DragScroll::none || count() == 0)
        return;
    const int step = multiColumn() ? rowsPerColumn() : 1;
    int index = direction == DragScroll::back ? top_ - step : lastWholeItem() + step;
    if (multiColumn())
        index = direction == DragScroll::back ? caret_ - step : caret_ + step;
    index = std::clamp(index, 0, count() - 1);
    ensureVisible(index);
    if (alive())
        dragTo(index);
}

} // namespace vndk::win32
