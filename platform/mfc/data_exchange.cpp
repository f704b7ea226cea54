#include "mfc/data_exchange.h"

#include "mfc/wnd.h"
#include "win32/button.h"
#include "win32/combobox.h"
#include "win32/dialog.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/listbox.h"
#include "win32/messagebox.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>

HWND CDataExchange::PrepareCtrl(int id) {
    const HWND control = ::GetDlgItem(m_pDlgWnd->m_hWnd, id);
    if (control == nullptr) {
        std::fprintf(stderr, "mfc: the dialog has no control %d\n", id);
        AfxThrowNotSupportedException();
    }
    m_hWndLastControl = control;
    m_bEditLastControl = FALSE;
    return control;
}

HWND CDataExchange::PrepareEditCtrl(int id) {
    const HWND control = PrepareCtrl(id);
    m_bEditLastControl = TRUE;
    return control;
}

void CDataExchange::Fail() {
    if (m_bSaveAndValidate != FALSE && m_hWndLastControl != nullptr) {
        ::SetFocus(m_hWndLastControl);
        if (m_bEditLastControl != FALSE)
            ::SendMessageA(m_hWndLastControl, EM_SETSEL, 0, -1);
    }
    AfxThrowUserException();
}

namespace {

CString textOf(HWND control) {
    CString text;
    const int length = GetWindowTextLengthA(control);
    GetWindowTextA(control, text.GetBuffer(length + 1), length + 1);
    text.ReleaseBuffer();
    return text;
}

/// Setting an equal text would lose the user's selection and make the edit flicker.
void setText(HWND control, const CString& text) {
    if (textOf(control) != text)
        SetWindowTextA(control, text);
}

[[noreturn]] void refuse(CDataExchange* exchange, const CString& reason) {
    AfxMessageBox(LPCSTR(reason), MB_OK | MB_ICONEXCLAMATION);
    exchange->Fail();
}

/// The text as a number of its whole length; blanks around it don't count.
template <typename T, typename Parse>
bool parseNumber(const CString& text, T& value, Parse parse) {
    const char* begin = text;
    char* end = nullptr;
    errno = 0;
    const auto parsed = parse(begin, &end);
    while (*end == ' ' || *end == '\t')
        ++end;
    if (end == begin || *end != '\0' || errno == ERANGE)
        return false;
    value = static_cast<T>(parsed);
    return true;
}

/// The string of a list as both kinds of boxes hand it out.
CString selectedString(HWND box, UINT getSelection, UINT getLength, UINT getText) {
    const LRESULT index = SendMessageA(box, getSelection, 0, 0);
    if (index < 0)
        return {};
    CString text;
    const LRESULT length = SendMessageA(box, getLength, static_cast<WPARAM>(index), 0);
    if (length > 0)
        SendMessageA(box, getText, static_cast<WPARAM>(index),
                     reinterpret_cast<LPARAM>(text.GetBuffer(static_cast<int>(length) + 1)));
    text.ReleaseBuffer();
    return text;
}

} // namespace

void DDX_Control(CDataExchange* exchange, int id, CWnd& control) {
    if (control.m_hWnd != nullptr)
        return;
    const HWND window = exchange->PrepareCtrl(id);
    if (control.SubclassWindow(window) == FALSE)
        AfxThrowNotSupportedException();
}

void DDX_Text(CDataExchange* exchange, int id, CString& value) {
    const HWND control = exchange->PrepareEditCtrl(id);
    if (exchange->m_bSaveAndValidate != FALSE)
        value = textOf(control);
    else
        setText(control, value);
}

void DDX_Text(CDataExchange* exchange, int id, int& value) {
    const HWND control = exchange->PrepareEditCtrl(id);
    CString text;
    if (exchange->m_bSaveAndValidate == FALSE) {
        text.Format("%d", value);
        setText(control, text);
        return;
    }
    long parsed = 0;
    const auto parse = [](const char* begin, char** end) { return std::strtol(begin, end, 10); };
    if (!parseNumber(textOf(control), parsed, parse) || parsed < INT_MIN || parsed > INT_MAX)
        refuse(exchange, "Please enter a whole number.");
    value = static_cast<int>(parsed);
}

void DDX_Text(CDataExchange* exchange, int id, UINT& value) {
    const HWND control = exchange->PrepareEditCtrl(id);
    CString text;
    if (exchange->m_bSaveAndValidate == FALSE) {
        text.Format("%u", value);
        setText(control, text);
        return;
    }
    long long parsed = 0;
    const auto parse = [](const char* begin, char** end) { return std::strtoll(begin, end, 10); };
    if (!parseNumber(textOf(control), parsed, parse) || parsed < 0 || parsed > UINT_MAX)
        refuse(exchange, "Please enter a whole number that isn't negative.");
    value = static_cast<UINT>(parsed);
}

void DDX_Text(CDataExchange* exchange, int id, double& value) {
    const HWND control = exchange->PrepareEditCtrl(id);
    CString text;
    if (exchange->m_bSaveAndValidate == FALSE) {
        text.Format("%.15g", value);
        setText(control, text);
        return;
    }
    double parsed = 0;
    const auto parse = [](const char* begin, char** end) { return std::strtod(begin, end); };
    if (!parseNumber(textOf(control), parsed, parse))
        refuse(exchange, "Please enter a number.");
    value = parsed;
}

void DDX_Check(CDataExchange* exchange, int id, int& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate != FALSE)
        value = static_cast<int>(SendMessageA(control, BM_GETCHECK, 0, 0));
    else
        SendMessageA(control, BM_SETCHECK, static_cast<WPARAM>(value), 0);
}

void DDX_Radio(CDataExchange* exchange, int id, int& value) {
    HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate != FALSE)
        value = -1;
    int index = 0;
    do {
        if ((SendMessageA(control, WM_GETDLGCODE, 0, 0) & DLGC_RADIOBUTTON) != 0) {
            if (exchange->m_bSaveAndValidate == FALSE)
                SendMessageA(control, BM_SETCHECK, index == value ? 1 : 0, 0);
            else if (SendMessageA(control, BM_GETCHECK, 0, 0) != 0)
                value = index;
            ++index;
        }
        control = ::GetWindow(control, GW_HWNDNEXT);
    } while (control != nullptr && (GetWindowLongA(control, GWL_STYLE) & static_cast<LONG>(WS_GROUP)) == 0);
}

void DDX_LBIndex(CDataExchange* exchange, int id, int& index) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate != FALSE)
        index = static_cast<int>(SendMessageA(control, LB_GETCURSEL, 0, 0));
    else
        SendMessageA(control, LB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void DDX_LBString(CDataExchange* exchange, int id, CString& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate != FALSE)
        value = selectedString(control, LB_GETCURSEL, LB_GETTEXTLEN, LB_GETTEXT);
    else
        SendMessageA(control, LB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(LPCSTR(value)));
}

void DDX_CBIndex(CDataExchange* exchange, int id, int& index) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate != FALSE)
        index = static_cast<int>(SendMessageA(control, CB_GETCURSEL, 0, 0));
    else
        SendMessageA(control, CB_SETCURSEL, static_cast<WPARAM>(index), 0);
}

void DDX_CBString(CDataExchange* exchange, int id, CString& value) {
    const HWND control = exchange->PrepareCtrl(id);
    if (exchange->m_bSaveAndValidate != FALSE)
        value = textOf(control);
    else if (SendMessageA(control, CB_SELECTSTRING, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(LPCSTR(value))) ==
             CB_ERR)
        setText(control, value);
}

void DDV_MaxChars(CDataExchange* exchange, const CString& value, int count) {
    if (exchange->m_bSaveAndValidate != FALSE && value.GetLength() > count) {
        CString reason;
        reason.Format("Please enter no more than %d characters.", count);
        refuse(exchange, reason);
    }
    if (exchange->m_bSaveAndValidate == FALSE && exchange->m_hWndLastControl != nullptr &&
        exchange->m_bEditLastControl != FALSE)
        ::SendMessageA(exchange->m_hWndLastControl, EM_LIMITTEXT, static_cast<WPARAM>(count), 0);
}

void DDV_MinMaxInt(CDataExchange* exchange, int value, int minimum, int maximum) {
    if (exchange->m_bSaveAndValidate == FALSE || (value >= minimum && value <= maximum))
        return;
    CString reason;
    reason.Format("Please enter a whole number between %d and %d.", minimum, maximum);
    refuse(exchange, reason);
}

void DDV_MinMaxUInt(CDataExchange* exchange, UINT value, UINT minimum, UINT maximum) {
    if (exchange->m_bSaveAndValidate == FALSE || (value >= minimum && value <= maximum))
        return;
    CString reason;
    reason.Format("Please enter a whole number between %u and %u.", minimum, maximum);
    refuse(exchange, reason);
}

void DDV_MinMaxDouble(CDataExchange* exchange, const double& value, double minimum, double maximum) {
    if (exchange->m_bSaveAndValidate == FALSE || (value >= minimum && value <= maximum))
        return;
    CString reason;
    reason.Format("Please enter a number between %.15g and %.15g.", minimum, maximum);
    refuse(exchange, reason);
}
