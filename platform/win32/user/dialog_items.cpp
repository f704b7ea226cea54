// Calls on a dialog's controls by id.
#include "user/dialog.h"

#include "win32/button.h"
#include "win32/error.h"
#include "win32/fonts.h"

#include <cstdio>
#include <limits>

using namespace vndk::win32;

namespace {

struct ParsedNumber {
    bool valid = false;
    UINT value = 0;
};

// Decimal digits behind blanks (and a sign, if signed), up to the first character that isn't one.
ParsedNumber parseNumber(const char* text, bool isSigned) {
    while (*text == ' ' || *text == '\t')
        ++text;
    const bool negative = isSigned && *text == '-';
    if (isSigned && (*text == '-' || *text == '+'))
        ++text;
    const LONGLONG limit = !isSigned  ? std::numeric_limits<UINT>::max()
                           : negative ? -static_cast<LONGLONG>(std::numeric_limits<INT>::min())
                                      : std::numeric_limits<INT>::max();
    ParsedNumber number;
    LONGLONG value = 0;
    for (; *text >= '0' && *text <= '9'; ++text) {
        value = value * 10 + (*text - '0');
        if (value > limit)
            return {};
        number.valid = true;
    }
    number.value = static_cast<UINT>(negative ? -value : value);
    return number;
}

bool isRadioButton(HWND control) { return (dialogCode(control) & DLGC_RADIOBUTTON) != 0; }

} // namespace

HWND GetDlgItem(HWND dialog, int id) {
    const Window* window = findWindow(dialog);
    if (window == nullptr)
        return nullptr;
    for (const Window* child : window->children)
        if (isChild(*child) && static_cast<int>(child->id) == id)
            return child->handle;
    SetLastError(ERROR_CONTROL_ID_NOT_FOUND);
    return nullptr;
}

int GetDlgCtrlID(HWND control) {
    const Window* window = findWindow(control);
    return window != nullptr ? static_cast<int>(window->id) : 0;
}

BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text) {
    const HWND control = GetDlgItem(dialog, id);
    return control != nullptr ? SetWindowTextA(control, text) : FALSE;
}

UINT GetDlgItemTextA(HWND dialog, int id, LPSTR buffer, int size) {
    if (buffer == nullptr || size <= 0)
        return 0;
    buffer[0] = '\0';
    const HWND control = GetDlgItem(dialog, id);
    return control != nullptr ? static_cast<UINT>(GetWindowTextA(control, buffer, size)) : 0;
}

BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned) {
    char text[16];
    if (isSigned)
        std::snprintf(text, sizeof text, "%d", static_cast<int>(value));
    else
        std::snprintf(text, sizeof text, "%u", value);
    return SetDlgItemTextA(dialog, id, text);
}

UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned) {
    char text[32];
    const UINT length = GetDlgItemTextA(dialog, id, text, sizeof text);
    const ParsedNumber number = length > 0 ? parseNumber(text, isSigned != FALSE) : ParsedNumber{};
    if (translated != nullptr)
        *translated = number.valid ? TRUE : FALSE;
    return number.value;
}

LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND control = GetDlgItem(dialog, id);
    return control != nullptr ? send(control, message, wParam, lParam) : 0;
}

BOOL CheckDlgButton(HWND dialog, int id, UINT check) {
    const HWND control = GetDlgItem(dialog, id);
    if (control == nullptr)
        return FALSE;
    send(control, BM_SETCHECK, check);
    return TRUE;
}

UINT IsDlgButtonChecked(HWND dialog, int id) {
    return static_cast<UINT>(SendDlgItemMessageA(dialog, id, BM_GETCHECK, 0, 0));
}

BOOL CheckRadioButton(HWND dialog, int first, int last, int check) {
    const HWND firstControl = GetDlgItem(dialog, first);
    if (firstControl == nullptr || GetDlgItem(dialog, last) == nullptr)
        return FALSE;
    bool reached = false;
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr; control = GetWindow(control, GW_HWNDNEXT)) {
        reached = reached || control == firstControl;
        if (!reached)
            continue;
        const int id = GetDlgCtrlID(control);
        if (isRadioButton(control))
            send(control, BM_SETCHECK, static_cast<WPARAM>(id == check ? BST_CHECKED : BST_UNCHECKED));
        if (id == last)
            break;
    }
    return TRUE;
}

BOOL MapDialogRect(HWND dialog, RECT* rect) {
    const auto info = dialogInfo(dialog);
    if (info == nullptr || rect == nullptr) {
        SetLastError(rect == nullptr ? ERROR_INVALID_PARAMETER : ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    const auto across = [&](LONG units) { return static_cast<LONG>(MulDiv(units, info->units.cx, 4)); };
    const auto down = [&](LONG units) { return static_cast<LONG>(MulDiv(units, info->units.cy, 8)); };
    *rect = {across(rect->left), down(rect->top), across(rect->right), down(rect->bottom)};
    return TRUE;
}

LONG GetDialogBaseUnits() {
    const SIZE units = dialogUnits(nullptr);
    return MAKELONG(static_cast<WORD>(units.cx), static_cast<WORD>(units.cy));
}
