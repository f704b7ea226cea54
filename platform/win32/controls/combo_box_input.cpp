// Mouse, keyboard and focus; what the edit control would do with keys that belong to the list.
#include "controls/combo_box.h"

#include "win32/draw.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/listbox.h"
#include "win32/paint.h"

#include <climits>
#include <cstdlib>
#include <utility>

namespace vndk::win32 {

namespace {

POINT pointOf(LPARAM lParam) { return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}; }

bool isKey(UINT message) { return message == WM_KEYDOWN || message == WM_SYSKEYDOWN; }

} // namespace

// ---- Mouse ---------------------------------------------------------------------------------------------------------

ComboBox::Handled ComboBox::handleMouse(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
        press(pointOf(lParam));
        return TRUE;
    case WM_MOUSEMOVE:
        if (pressedButton_)
            dragFromButton(pointOf(lParam));
        return TRUE;
    case WM_LBUTTONUP:
        if (pressedButton_) {
            releaseButton();
            if (alive() && dropped_)
                SetCapture(list_);
        }
        return TRUE;
    case WM_CAPTURECHANGED:
        releaseButton();
        return 0;
    case WM_MOUSEWHEEL:
        return wheel(wParam, lParam) ? Handled(TRUE) : std::nullopt;
    default:
        return std::nullopt;
    }
}

void ComboBox::press(POINT point) {
    if (!focused_) {
        SetFocus(window());
        if (!alive())
            return;
    }
    const RECT client = clientRect();
    const RECT button = buttonRect();
    const RECT& active = hasEdit() ? button : client;
    if (!dropsDown() || PtInRect(&active, point) == FALSE)
        return;
    if (dropped_) {
        close(Close::leave);
        return;
    }
    pressedButton_ = true;
    buttonDown_ = true;
    SetCapture(window());
    invalidate(&button);
    drop();
}

/// The mouse may go on from the button into the list without being let go.
void ComboBox::dragFromButton(POINT point) {
    const RECT button = buttonRect();
    const bool down = PtInRect(&button, point) != FALSE;
    if (down != buttonDown_) {
        buttonDown_ = down;
        invalidate(&button);
    }
    if (!dropped_)
        return;
    ClientToScreen(window(), &point);
    RECT inside{};
    GetClientRect(list_, &inside);
    MapWindowPoints(list_, nullptr, reinterpret_cast<POINT*>(&inside), 2);
    if (PtInRect(&inside, point) == FALSE)
        return;
    releaseButton();
    if (!alive() || !dropped_)
        return;
    SetCapture(list_);
    ScreenToClient(list_, &point);
    SendMessageA(list_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

void ComboBox::releaseButton() {
    if (!pressedButton_)
        return;
    pressedButton_ = false;
    buttonDown_ = false;
    const RECT button = buttonRect();
    invalidate(&button);
    if (GetCapture() == window())
        ReleaseCapture();
}

/// True when the wheel was for us.
bool ComboBox::wheel(WPARAM wParam, LPARAM lParam) {
    if (dropped_ || !dropsDown()) {
        askList(WM_MOUSEWHEEL, wParam, lParam);
        return true;
    }
    if ((LOWORD(wParam) & (MK_CONTROL | MK_SHIFT)) != 0 || extended_)
        return false;
    wheelRest_ += static_cast<SHORT>(HIWORD(wParam));
    const int steps = wheelRest_ / WHEEL_DELTA;
    wheelRest_ -= steps * WHEEL_DELTA;
    for (int step = 0; step < std::abs(steps) && alive(); ++step)
        keyToList(WM_KEYDOWN, steps > 0 ? VK_UP : VK_DOWN, 0);
    return true;
}

// ---- Keyboard ------------------------------------------------------------------------------------------------------

ComboBox::Handled ComboBox::handleKeys(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
    case WM_CHAR:
        if (hasEdit())
            return SendMessageA(edit_, message, wParam, lParam);
        if (message == WM_CHAR) {
            if (!std::exchange(dropCharacter_, false) && static_cast<BYTE>(wParam) >= ' ')
                keyToList(message, wParam, lParam);
            return 0;
        }
        return keyDown(message, wParam, lParam) ? Handled(0) : std::nullopt;
    case WM_KEYUP:
    case WM_DEADCHAR:
        return hasEdit() ? Handled(SendMessageA(edit_, message, wParam, lParam)) : std::nullopt;
    case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS | dialogCode(lParam);
    case WM_SETFOCUS:
        if (hasEdit() && edit_ != nullptr) {
            SetFocus(edit_);
            if (alive())
                SendMessageA(edit_, EM_SETSEL, 0, INT_MAX);
        } else {
            gainFocus();
        }
        return 0;
    case WM_KILLFOCUS:
        if (!hasEdit())
            loseFocus(reinterpret_cast<HWND>(wParam));
        return 0;
    default:
        return std::nullopt;
    }
}

/// Return and Escape close an open list and nothing else: no dialog shall take them.
LRESULT ComboBox::dialogCode(LPARAM lParam) const {
    const auto* message = reinterpret_cast<const MSG*>(lParam);
    const bool closes = dropped_ && message != nullptr && isKey(message->message) &&
                        (message->wParam == VK_RETURN || message->wParam == VK_ESCAPE);
    return closes ? DLGC_WANTMESSAGE : 0;
}

/// True when the key was for the list, open or not.
bool ComboBox::keyDown(UINT message, WPARAM key, LPARAM lParam) {
    dropCharacter_ = false;
    if (message == WM_SYSKEYDOWN) {
        const bool opens = key == VK_DOWN || key == VK_UP;
        if (opens && dropsDown())
            toggle();
        return opens && dropsDown();
    }
    switch (key) {
    case VK_F4:
        if (extended_ || !dropsDown())
            return false;
        toggle();
        return true;
    case VK_RETURN:
    case VK_ESCAPE:
        return closingKey(key);
    case VK_DOWN:
        if (extended_ && !dropped_) {
            drop();
            return true;
        }
        break;
    case VK_UP:
    case VK_PRIOR:
    case VK_NEXT:
        break;
    case VK_LEFT:
    case VK_RIGHT:
    case VK_HOME:
    case VK_END:
        if (hasEdit())
            return false;
        break;
    default:
        return false;
    }
    if (!extended_ || dropped_)
        keyToList(message, key, lParam);
    return true;
}

bool ComboBox::closingKey(WPARAM key) {
    if (!dropped_)
        return false;
    dropCharacter_ = true;
    close(key == VK_RETURN ? Close::choose : Close::giveBack);
    return true;
}

void ComboBox::keyToList(UINT message, WPARAM wParam, LPARAM lParam) {
    // Typed text that an item begins with is taken for that item first.
    if (message == WM_KEYDOWN && hasEdit() && hasStrings() && editText() != itemText(current())) {
        matchListToEdit(true);
        if (alive() && current() >= 0) {
            const bool wasGoing = std::exchange(keyGoesToList_, true);
            selectionMade();
            keyGoesToList_ = wasGoing;
            return;
        }
    }
    if (!alive())
        return;
    const bool wasGoing = std::exchange(keyGoesToList_, true);
    askList(message, wParam, lParam);
    keyGoesToList_ = wasGoing;
}

void ComboBox::toggle() {
    if (dropped_)
        close(Close::choose);
    else
        drop();
}

// ---- Focus ---------------------------------------------------------------------------------------------------------

void ComboBox::gainFocus() {
    if (focused_)
        return;
    focused_ = true;
    fieldChanged();
    if (!dropsDown() && list_ != nullptr)
        InvalidateRect(list_, nullptr, FALSE);
    notifyCommand(CBN_SETFOCUS);
}

/// `next`: who gets the focus.
void ComboBox::loseFocus(HWND next) {
    if (!focused_ || (next != nullptr && (next == window() || next == edit_ || next == list_)))
        return;
    finish(Close::leave);
    if (!alive())
        return;
    focused_ = false;
    if (edit_ != nullptr)
        SendMessageA(edit_, EM_SETSEL, 0, 0);
    if (!alive())
        return;
    fieldChanged();
    if (!dropsDown() && list_ != nullptr)
        InvalidateRect(list_, nullptr, FALSE);
    notifyCommand(CBN_KILLFOCUS);
}

// ---- The edit control's messages -----------------------------------------------------------------------------------

LRESULT CALLBACK ComboBox::editProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam) {
    const std::shared_ptr<ComboBox> combo = controlOf<ComboBox>(GetParent(edit));
    if (combo == nullptr || combo->formerEditProcedure_ == nullptr)
        return DefWindowProcA(edit, message, wParam, lParam);
    if (const Handled handled = combo->handleEditMessage(message, wParam, lParam))
        return *handled;
    const WNDPROC former = combo->formerEditProcedure_;
    const LRESULT result = CallWindowProcA(former, edit, message, wParam, lParam);
    if (message == WM_GETDLGCODE)
        return result | combo->dialogCode(lParam);
    if (message == WM_SETFOCUS && combo->alive())
        combo->gainFocus();
    if (message == WM_KILLFOCUS && combo->alive())
        combo->loseFocus(reinterpret_cast<HWND>(wParam));
    if (message == WM_NCDESTROY)
        combo->edit_ = nullptr;
    return result;
}

ComboBox::Handled ComboBox::handleEditMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        return keyDown(message, wParam, lParam) ? Handled(0) : std::nullopt;
    case WM_CHAR:
        return std::exchange(dropCharacter_, false) ? Handled(0) : std::nullopt;
    case WM_MOUSEWHEEL:
        return wheel(wParam, lParam) ? Handled(0) : std::nullopt;
    case WM_LBUTTONDOWN:
        // A press into the text of an open combo box that doesn't track the mouse closes the list first.
        if (dropped_)
            close(Close::leave);
        return std::nullopt;
    default:
        return std::nullopt;
    }
}

} // namespace vndk::win32
