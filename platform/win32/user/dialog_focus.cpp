// Which control of a dialog has the focus, and which button is drawn as the default one.
#include "user/dialog.h"

#include "win32/button.h"
#include "win32/edit.h"
#include "win32/input.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

bool hasCode(HWND control, LRESULT code) { return control != nullptr && (dialogCode(control) & code) != 0; }

bool isFocusable(HWND control) {
    const Window* window = findWindow(control);
    return window != nullptr && isUsable(*window);
}

// Of a group of radio buttons the checked one stands for all.
HWND checkedOfGroup(HWND control) {
    if (!hasCode(control, DLGC_RADIOBUTTON) || send(control, BM_GETCHECK) == BST_CHECKED)
        return control;
    for (const HWND member : groupOf(control))
        if (isFocusable(member) && hasCode(member, DLGC_RADIOBUTTON) && send(member, BM_GETCHECK) == BST_CHECKED)
            return member;
    return control;
}

void setButtonKind(HWND button, DWORD kind) { send(button, BM_SETSTYLE, kind, TRUE); }

HWND findById(HWND dialog, int id) {
    for (const HWND control : controlsInOrder(dialog))
        if (GetDlgCtrlID(control) == id)
            return control;
    return nullptr;
}

HWND firstDefaultLook(HWND dialog) {
    for (const HWND control : controlsInOrder(dialog))
        if (hasCode(control, DLGC_DEFPUSHBUTTON))
            return control;
    return nullptr;
}

} // namespace

LRESULT dialogCode(HWND control) { return send(control, WM_GETDLGCODE); }

bool isPushButton(HWND control) { return hasCode(control, DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON); }

void focusControl(HWND control) {
    if (hasCode(control, DLGC_HASSETSEL))
        send(control, EM_SETSEL, 0, -1);
    SetFocus(control);
}

void focusInDialog(HWND dialog, HWND control) {
    focusControl(control);
    updateDefaultLook(dialog, control);
}

HWND firstFocus(HWND dialog) {
    const HWND stop = GetNextDlgTabItem(dialog, nullptr, FALSE);
    return stop != nullptr ? checkedOfGroup(stop) : GetNextDlgGroupItem(dialog, nullptr, FALSE);
}

std::optional<int> defaultIdOf(HWND dialog) {
    const auto info = dialogInfo(dialog);
    if (info != nullptr && info->defaultId)
        return info->defaultId;
    const HWND button = firstDefaultLook(dialog);
    return button != nullptr ? std::optional(GetDlgCtrlID(button)) : std::nullopt;
}

void updateDefaultLook(HWND dialog, HWND focus) {
    const auto info = dialogInfo(dialog);
    const HWND former = info != nullptr && hasCode(info->defaultLook, DLGC_DEFPUSHBUTTON) ? info->defaultLook
                                                                                          : firstDefaultLook(dialog);
    HWND wanted = focus;
    if (!isPushButton(focus)) {
        // The look goes back to the default button; a plain window keeps no id of one, so nothing changes there.
        wanted = info != nullptr && info->defaultId ? findById(dialog, *info->defaultId) : former;
    }
    if (wanted == former)
        return;
    if (former != nullptr)
        setButtonKind(former, BS_PUSHBUTTON);
    if (hasCode(wanted, DLGC_UNDEFPUSHBUTTON))
        setButtonKind(wanted, BS_DEFPUSHBUTTON);
    if (info != nullptr)
        info->defaultLook = wanted;
}

void setDefaultId(HWND dialog, int id) {
    const auto info = dialogInfo(dialog);
    if (info == nullptr)
        return;
    const HWND former = firstDefaultLook(dialog);
    const HWND button = findById(dialog, id);
    info->defaultId = id;
    if (former == button)
        return;
    if (former != nullptr)
        setButtonKind(former, BS_PUSHBUTTON);
    if (hasCode(button, DLGC_UNDEFPUSHBUTTON))
        setButtonKind(button, BS_DEFPUSHBUTTON);
    info->defaultLook = button;
}

void saveFocus(HWND dialog) {
    const HWND focus = GetFocus();
    const auto info = dialogInfo(dialog);
    if (info != nullptr && focus != nullptr && IsChild(dialog, focus))
        info->savedFocus = focus;
}

void restoreFocus(HWND dialog, RestoredFocus which) {
    const auto info = dialogInfo(dialog);
    if (info == nullptr || info->ended || IsIconic(dialog))
        return;
    if (which == RestoredFocus::saved && IsChild(dialog, info->savedFocus) && isFocusable(info->savedFocus)) {
        SetFocus(info->savedFocus);
        return;
    }
    if (const HWND first = firstFocus(dialog))
        focusInDialog(dialog, first);
    else if (which == RestoredFocus::saved)
        SetFocus(dialog);
}

} // namespace vndk::win32
