#include "mfc/controls.h"

#include "mfc/message_map.h"

IMPLEMENT_DYNAMIC(CStatic, CWnd)
IMPLEMENT_DYNAMIC(CButton, CWnd)
IMPLEMENT_DYNAMIC(CEdit, CWnd)
IMPLEMENT_DYNAMIC(CListBox, CWnd)
IMPLEMENT_DYNAMIC(CComboBox, CWnd)
IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

namespace {

/// What owner-drawn boxes are asked for goes to their virtual functions. False: the message is none of these.
template <typename Box>
bool dispatchOwnerDraw(Box& box, UINT message, LPARAM lParam, LRESULT* result) {
    switch (message) {
    case WM_DRAWITEM:
        box.DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        return true;
    case WM_MEASUREITEM:
        box.MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
        return true;
    case WM_COMPAREITEM:
        *result = box.CompareItem(reinterpret_cast<LPCOMPAREITEMSTRUCT>(lParam));
        return true;
    case WM_DELETEITEM:
        box.DeleteItem(reinterpret_cast<LPDELETEITEMSTRUCT>(lParam));
        return true;
    default:
        return false;
    }
}

} // namespace

BOOL CStatic::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return dispatchOwnerDraw(*this, message, lParam, result) ? TRUE
                                                             : CWnd::OnChildNotify(message, wParam, lParam, result);
}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return dispatchOwnerDraw(*this, message, lParam, result) ? TRUE
                                                             : CWnd::OnChildNotify(message, wParam, lParam, result);
}

void CEdit::SetSel(int begin, int end, BOOL noScroll) {
    SendMessage(EM_SETSEL, static_cast<WPARAM>(begin), end);
    if (noScroll == FALSE)
        SendMessage(EM_SCROLLCARET);
}

void CEdit::GetSel(int& begin, int& end) const {
    DWORD first = 0;
    DWORD last = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    begin = static_cast<int>(first);
    end = static_cast<int>(last);
}

void CListBox::GetText(int index, CString& text) const {
    const int length = GetTextLen(index);
    text.Empty();
    if (length <= 0)
        return;
    SendMessage(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.GetBuffer(length + 1)));
    text.ReleaseBuffer();
}

UINT CListBox::ItemFromPoint(POINT point, BOOL& outside) const {
    const auto answer = static_cast<DWORD>(SendMessage(LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y)));
    outside = HIWORD(answer) != 0;
    return LOWORD(answer);
}

void CComboBox::GetLBText(int index, CString& text) const {
    const auto length = static_cast<int>(SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(index)));
    text.Empty();
    if (length <= 0)
        return;
    SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.GetBuffer(length + 1)));
    text.ReleaseBuffer();
}
