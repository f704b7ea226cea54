#include "controls/combo_list.h"

#include "controls/combo_box.h"
#include "win32/draw.h"
#include "win32/input.h"

namespace vndk::win32 {

namespace {

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

} // namespace

LRESULT ComboList::handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_NCCREATE:
        if (lParam != 0)
            combo_ = static_cast<HWND>(reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpCreateParams);
        break;
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    default:
        break;
    }
    return ListBox::handle(message, wParam, lParam);
}

std::shared_ptr<ComboBox> ComboList::comboBox() const { return controlOf<ComboBox>(combo_); }

bool ComboList::showsFocus() const {
    const HWND focus = GetFocus();
    return focus != nullptr && (focus == combo_ || GetParent(focus) == combo_);
}

void ComboList::takeFocus() {
    if (!dropsDown() && !showsFocus())
        SetFocus(combo_);
}

int ComboList::heightOfItems(int room) const {
    int height = count() > 0 ? heightOf(0) : itemRect(0).bottom - itemRect(0).top;
    for (int index = 1; index < count() && height + heightOf(index) <= room; ++index)
        height += heightOf(index);
    return height;
}

ListBox::Handled ComboList::handleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!dropsDown())
        return ListBox::handleMouse(message, wParam, lParam);
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        pressed(pointOf(lParam));
        return 0;
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN: {
        const RECT client = clientRect();
        const std::shared_ptr<ComboBox> combo = comboBox();
        if (combo != nullptr && PtInRect(&client, pointOf(lParam)) == FALSE) {
            POINT point = pointOf(lParam);
            ClientToScreen(window(), &point);
            combo->pressedElsewhere(message, point);
        }
        return 0;
    }
    case WM_MOUSEMOVE:
        hovered(pointOf(lParam));
        return 0;
    case WM_LBUTTONUP:
        released(pointOf(lParam));
        return 0;
    case WM_CAPTURECHANGED:
        if (const std::shared_ptr<ComboBox> combo = comboBox(); combo != nullptr && !scrolling_)
            combo->listLostMouse();
        return 0;
    default:
        return ListBox::handleMouse(message, wParam, lParam);
    }
}

void ComboList::pressed(POINT point) {
    const RECT client = clientRect();
    if (PtInRect(&client, point) != FALSE) {
        press(point, 0, false);
        return;
    }
    ClientToScreen(window(), &point);
    RECT frame{};
    GetWindowRect(window(), &frame);
    if (PtInRect(&frame, point) != FALSE) {
        const LRESULT hitTest = SendMessageA(window(), WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
        if (alive())
            pressedOnFrame(hitTest, point);
        return;
    }
    if (const std::shared_ptr<ComboBox> combo = comboBox())
        combo->pressedElsewhere(WM_LBUTTONDOWN, point);
}

/// The captured mouse reports a press on our own scroll bar as one outside of the client area.
void ComboList::pressedOnFrame(LRESULT hitTest, POINT point) {
    scrolling_ = true;
    ReleaseCapture();
    if (alive())
        SendMessageA(window(), WM_NCLBUTTONDOWN, static_cast<WPARAM>(hitTest), MAKELPARAM(point.x, point.y));
    scrolling_ = false;
    if (alive() && IsWindowVisible(window()) != FALSE)
        SetCapture(window());
}

void ComboList::hovered(POINT point) {
    if (tracking()) {
        drag(point);
        return;
    }
    const int index = itemAt(point);
    if (index < 0 || index == current())
        return;
    hideCaret();
    if (alive())
        selectSingle(index);
    if (alive())
        showCaretAt(index);
}

/// Over an item the button chooses it, wherever it was pressed; elsewhere nothing is chosen and the list stays.
void ComboList::released(POINT point) {
    hovered(point);
    if (!alive())
        return;
    stopTracking();
    if (itemAt(point) >= 0)
        notifyOwner(LBN_SELCHANGE);
}

} // namespace vndk::win32
