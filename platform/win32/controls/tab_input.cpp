// Mouse and keyboard of a tab control.
#include "controls/tab_control.h"

#include "win32/draw.h"
#include "win32/input.h"
#include "win32/tooltip.h"

namespace vndk::win32 {

void TabControl::pressArrow(bool right) {
    if (!right)
        scrollTo(first_ - 1);
    else if (itemRect(count() - 1).right > arrowRect(false).left)
        scrollTo(first_ + 1);
}

void TabControl::onButtonDown(POINT point) {
    if (scrolls()) {
        for (const bool right : {false, true}) {
            const RECT arrow = arrowRect(right);
            if (PtInRect(&arrow, point) != FALSE) {
                pressArrow(right);
                return;
            }
        }
    }
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if (hasStyle(TCS_FOCUSONBUTTONDOWN) || (index >= 0 && index == selected_ && !hasStyle(TCS_FOCUSNEVER))) {
        SetFocus(window());
        if (!alive())
            return;
    }
    if (index < 0)
        return;
    if (!buttons()) {
        if (index != selected_)
            select(index);
        return;
    }
    pressed_ = index;
    pressedOver_ = true;
    SetCapture(window());
    changed();
}

void TabControl::onButtonUp(POINT point) {
    if (pressed_ >= 0) {
        UINT flags = 0;
        const int index = std::exchange(pressed_, -1);
        const bool over = hitTest(point, flags) == index;
        ReleaseCapture();
        if (!alive())
            return;
        changed();
        if (over && index != selected_)
            select(index);
    }
    if (alive())
        notify(NM_CLICK);
}

void TabControl::setHot(int index) {
    if (index == hot_)
        return;
    hot_ = index;
    changed();
}

void TabControl::onMouseMove(POINT point) {
    UINT flags = 0;
    const int index = hitTest(point, flags);
    if (pressed_ >= 0 && pressedOver_ != (index == pressed_)) {
        pressedOver_ = index == pressed_;
        changed();
    }
    if (!hasStyle(TCS_HOTTRACK))
        return;
    setHot(index);
    if (index >= 0) {
        TRACKMOUSEEVENT track{sizeof track, TME_LEAVE, window(), 0};
        TrackMouseEvent(&track);
    }
}

void TabControl::onKey(WPARAM key, LPARAM lParam) {
    NMTCKEYDOWN data{};
    data.wVKey = static_cast<WORD>(key);
    data.flags = static_cast<UINT>(lParam);
    notify(TCN_KEYDOWN, data);
    if (!alive())
        return;
    int target = focus_;
    switch (key) {
    case VK_LEFT:
        --target;
        break;
    case VK_RIGHT:
        ++target;
        break;
    case VK_HOME:
        target = 0;
        break;
    case VK_END:
        target = count() - 1;
        break;
    case VK_SPACE:
    case VK_RETURN:
        if (buttons() && valid(focus_) && focus_ != selected_)
            select(focus_);
        return;
    default:
        return;
    }
    if (valid(target) && target != focus_)
        setFocusItem(target);
}

bool TabControl::handleInput(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    result = 0;
    if (toolTips_ != nullptr && message >= WM_MOUSEFIRST && message <= WM_MOUSELAST) {
        MSG relayed{};
        relayed.hwnd = window();
        relayed.message = message;
        relayed.wParam = wParam;
        relayed.lParam = lParam;
        SendMessageA(toolTips_, TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(&relayed));
        if (!alive())
            return true;
    }
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        onButtonDown(point);
        return true;
    case WM_LBUTTONUP:
        onButtonUp(point);
        return true;
    case WM_RBUTTONUP:
        // The context menu follows, unless the parent has dealt with the click.
        return notify(NM_RCLICK) != 0 || !alive();
    case WM_MOUSEMOVE:
        onMouseMove(point);
        return true;
    case WM_MOUSELEAVE:
        setHot(-1);
        return true;
    case WM_CAPTURECHANGED:
        if (pressed_ >= 0) {
            pressed_ = -1;
            changed();
        }
        return true;
    case WM_KEYDOWN:
        onKey(wParam, lParam);
        return true;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        changed();
        return true;
    case WM_GETDLGCODE:
        result = DLGC_WANTARROWS | DLGC_WANTCHARS;
        return true;
    default:
        return false;
    }
}

} // namespace vndk::win32
