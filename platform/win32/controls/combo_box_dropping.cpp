// The list that drops down: opening, placing, closing.
#include "controls/combo_box.h"

#include "controls/combo_list.h"
#include "user/input_queue.h"
#include "win32/draw.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/listbox.h"
#include "win32/metrics.h"
#include "win32/paint.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

struct VerticalPlace {
    int top;
    int height;
};

/// Below the field when it fits there, else above, else where there is more room.
VerticalPlace placeBeside(const RECT& combo, const RECT& area, int height) {
    const int below = area.bottom - combo.bottom;
    const int above = combo.top - area.top;
    if (height <= below || (height > above && below >= above))
        return {combo.bottom, std::min(height, std::max(below, 0))};
    const int fitting = std::min(height, std::max(above, 0));
    return {combo.top - fitting, fitting};
}

RECT workArea() {
    RECT area{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    SystemParametersInfoA(SPI_GETWORKAREA, 0, &area, 0);
    return area;
}

} // namespace

ComboBox::Handled ComboBox::handleDropping(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case CB_SHOWDROPDOWN:
        if (wParam != 0)
            drop();
        else if (dropped_)
            close(Close::leave);
        return TRUE;
    case CB_GETDROPPEDSTATE:
        return dropped_ ? TRUE : FALSE;
    case CB_GETDROPPEDCONTROLRECT:
        return getDroppedRect(reinterpret_cast<RECT*>(lParam));
    case CB_GETDROPPEDWIDTH:
        return droppedWidth();
    case CB_SETDROPPEDWIDTH:
        return setDroppedWidth(static_cast<int>(wParam));
    case CB_SETEXTENDEDUI:
        if (!dropsDown())
            return CB_ERR;
        extended_ = wParam != 0;
        return CB_OKAY;
    case CB_GETEXTENDEDUI:
        return extended_ ? TRUE : FALSE;
    case CB_GETCOMBOBOXINFO:
        return fillInfo(reinterpret_cast<COMBOBOXINFO*>(lParam));
    default:
        return std::nullopt;
    }
}

int ComboBox::droppedWidth() const {
    RECT rect{};
    GetWindowRect(window(), &rect);
    return std::max<int>(droppedWidth_, rect.right - rect.left);
}

LRESULT ComboBox::setDroppedWidth(int width) {
    if (!dropsDown())
        return CB_ERR;
    droppedWidth_ = std::clamp(width, 0, 0x7FFF);
    if (dropped_)
        placeList();
    return droppedWidth();
}

LRESULT ComboBox::getDroppedRect(RECT* rect) const {
    if (rect == nullptr)
        return FALSE;
    GetWindowRect(window(), rect);
    if (dropsDown()) {
        rect->right = rect->left + droppedWidth();
        rect->bottom += std::max(listHeight_, 0);
    }
    return TRUE;
}

void ComboBox::drop() {
    if (!dropsDown() || dropped_ || dropping_ || list_ == nullptr)
        return;
    dropping_ = true;
    notifyCommand(CBN_DROPDOWN);
    dropping_ = false;
    if (!alive() || list_ == nullptr)
        return;
    announced_ = beforeDrop_ = current();
    if (hasEdit()) {
        textBeforeDrop_ = editText();
        if (textBeforeDrop_ != itemText(announced_))
            matchListToEdit(true);
    }
    if (!alive())
        return;
    dropped_ = true;
    placeList();
    if (!alive() || list_ == nullptr)
        return;
    askList(LB_SETTOPINDEX, static_cast<WPARAM>(std::max(current(), 0)));
    ShowWindow(list_, SW_SHOWNA);
    if (!alive() || !dropped_)
        return;
    fieldChanged();
    // While the button is held, the mouse goes on to the list when it gets there.
    if (!pressedButton_)
        SetCapture(list_);
}

void ComboBox::placeList() {
    const std::shared_ptr<ComboList> list = controlOf<ComboList>(list_);
    if (list == nullptr)
        return;
    RECT combo{};
    GetWindowRect(window(), &combo);
    const int borders = 2 * GetSystemMetrics(SM_CYBORDER);
    const bool exact = (style_ & CBS_NOINTEGRALHEIGHT) != 0;
    const auto heightFor = [&](int room) { return list->heightOfItems(room - borders) + borders; };
    const int wanted = exact ? std::max(listHeight_, heightFor(0)) : heightFor(listHeight_);
    const RECT area = workArea();
    VerticalPlace place = placeBeside(combo, area, wanted);
    if (!exact && place.height < wanted) {
        const int fitting = heightFor(place.height);
        place.top += place.top < combo.top ? place.height - fitting : 0;
        place.height = fitting;
    }
    const int width = droppedWidth();
    const int left = std::max<int>(std::min<int>(combo.left, area.right - width), area.left);
    SetWindowPos(list_, HWND_TOPMOST, left, place.top, width, place.height, SWP_NOACTIVATE);
}

void ComboBox::hideList() {
    dropped_ = false;
    if (GetCapture() == list_ || (pressedButton_ && GetCapture() == window()))
        ReleaseCapture();
    if (alive() && list_ != nullptr)
        ShowWindow(list_, SW_HIDE);
}

/// The notifications of an end, and the list goes if it is open. The selection is told by others.
void ComboBox::finish(Close how) {
    notifyCommand(how == Close::choose ? CBN_SELENDOK : CBN_SELENDCANCEL);
    if (!alive() || !dropped_)
        return;
    const int back = how == Close::giveBack ? beforeDrop_ : announced_;
    hideList();
    if (!alive())
        return;
    if (how != Close::choose && current() != back)
        askList(LB_SETCURSEL, static_cast<WPARAM>(back));
    if (!alive())
        return;
    invalidate();
    notifyCommand(CBN_CLOSEUP);
}

/// Closes the list; the parent hears of a selection that it doesn't know yet.
void ComboBox::close(Close how) {
    const bool wasOpen = dropped_;
    finish(how);
    if (!alive() || !wasOpen || dropped_)
        return;
    const int now = current();
    if (now != announced_)
        announceSelection();
    else if (how == Close::choose && now >= 0)
        showInEdit(now);
    if (alive() && how == Close::giveBack && now == -1 && edit_ != nullptr)
        setText(reinterpret_cast<LPARAM>(textBeforeDrop_.c_str()));
}

void ComboBox::listLostMouse() {
    if (dropped_)
        close(Close::leave);
}

void ComboBox::pressedElsewhere(UINT message, POINT point) {
    // Where a press opens the list, this one has done its work by closing it.
    RECT opens = hasEdit() ? buttonRect() : clientRect();
    MapWindowPoints(window(), nullptr, reinterpret_cast<POINT*>(&opens), 2);
    close(Close::leave);
    if (PtInRect(&opens, point) == FALSE)
        repeatPress(message, point);
}

} // namespace vndk::win32
