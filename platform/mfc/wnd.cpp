// The members of CWnd that ask or tell the platform one thing.
#include "mfc/wnd.h"

#include "mfc/data_exchange.h"
#include "mfc/dc.h"
#include "mfc/dialog.h"
#include "mfc/frame.h"
#include "mfc/gdi_object.h"
#include "mfc/menu.h"
#include "mfc/module_state.h"
#include "mfc/winapp.h"
#include "win32/button.h"
#include "win32/combobox.h"
#include "win32/dialog.h"
#include "win32/dialog_init.h"
#include "win32/gdi.h"
#include "win32/input.h"
#include "win32/listbox.h"
#include "win32/messagebox.h"
#include "win32/metrics.h"
#include "win32/queue.h"
#include "win32/resources.h"
#include "win32/scrollbar.h"

#include <algorithm>
#include <string>

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessageA(m_hWnd, message, wParam, lParam);
}

BOOL CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::PostMessageA(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::SendDlgItemMessage(int id, UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendDlgItemMessageA(m_hWnd, id, message, wParam, lParam);
}

void CWnd::SendMessageToDescendants(UINT message, WPARAM wParam, LPARAM lParam, BOOL deep, BOOL onlyPermanent) const {
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CWnd* object = FromHandlePermanent(child);
        if (object != nullptr)
            AfxCallWndProc(object, message, wParam, lParam);
        else if (onlyPermanent == FALSE)
            ::SendMessageA(child, message, wParam, lParam);
        if (deep != FALSE && ::GetTopWindow(child) != nullptr)
            FromHandle(child)->SendMessageToDescendants(message, wParam, lParam, deep, onlyPermanent);
    }
}

void CWnd::GetWindowText(CString& text) const {
    const int length = ::GetWindowTextLengthA(m_hWnd);
    ::GetWindowTextA(m_hWnd, text.GetBuffer(length + 1), length + 1);
    text.ReleaseBuffer();
}

void CWnd::SetFont(CFont* font, BOOL redraw) {
    SendMessage(WM_SETFONT, reinterpret_cast<WPARAM>(font != nullptr ? font->GetSafeHandle() : nullptr), redraw);
}

CFont* CWnd::GetFont() const { return CFont::FromHandle(reinterpret_cast<HFONT>(SendMessage(WM_GETFONT))); }

HICON CWnd::SetIcon(HICON icon, BOOL big) {
    return reinterpret_cast<HICON>(
        SendMessage(WM_SETICON, big != FALSE ? ICON_BIG : ICON_SMALL, reinterpret_cast<LPARAM>(icon)));
}

CMenu* CWnd::GetMenu() const { return CMenu::FromHandle(::GetMenu(m_hWnd)); }
BOOL CWnd::SetMenu(CMenu* menu) { return ::SetMenu(m_hWnd, menu != nullptr ? menu->m_hMenu : nullptr); }
CMenu* CWnd::GetSystemMenu(BOOL revert) const { return CMenu::FromHandle(::GetSystemMenu(m_hWnd, revert)); }

namespace {

BOOL modifyStyle(HWND window, int index, DWORD remove, DWORD add, UINT flags) {
    const auto old = static_cast<DWORD>(GetWindowLongA(window, index));
    const DWORD changed = (old & ~remove) | add;
    if (changed == old)
        return FALSE;
    SetWindowLongA(window, index, static_cast<LONG>(changed));
    if (flags != 0)
        ::SetWindowPos(window, nullptr, 0, 0, 0, 0, SWP_NOSIZE | SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | flags);
    return TRUE;
}

} // namespace

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT flags) {
    return modifyStyle(m_hWnd, GWL_STYLE, remove, add, flags);
}

BOOL CWnd::ModifyStyleEx(DWORD remove, DWORD add, UINT flags) {
    return modifyStyle(m_hWnd, GWL_EXSTYLE, remove, add, flags);
}

int CWnd::GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
int CWnd::SetDlgCtrlID(int id) { return static_cast<int>(SetWindowLongPtrA(m_hWnd, GWL_ID, id)); }

BOOL CWnd::SetWindowPos(const CWnd* insertAfter, int x, int y, int width, int height, UINT flags) {
    return ::SetWindowPos(m_hWnd, insertAfter != nullptr ? insertAfter->m_hWnd : nullptr, x, y, width, height, flags);
}

void CWnd::CenterWindow(CWnd* alternate) {
    CRect own;
    GetWindowRect(own);
    CRect area(0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
    const CRect screen = area;
    CWnd* center = alternate;
    if (center == nullptr)
        center = (GetStyle() & WS_CHILD) != 0 ? GetParent() : FromHandle(::GetWindow(m_hWnd, GW_OWNER));
    if (center != nullptr && center->IsWindowVisible() != FALSE && center->IsIconic() == FALSE) {
        if ((GetStyle() & WS_CHILD) != 0)
            center->GetClientRect(area);
        else
            center->GetWindowRect(area);
    }
    int x = area.CenterPoint().x - own.Width() / 2;
    int y = area.CenterPoint().y - own.Height() / 2;
    if ((GetStyle() & WS_CHILD) == 0) {
        x = std::max(std::min(x, static_cast<int>(screen.right) - own.Width()), 0);
        y = std::max(std::min(y, static_cast<int>(screen.bottom) - own.Height()), 0);
    }
    SetWindowPos(nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void CWnd::MapWindowPoints(CWnd* to, LPRECT rect) const {
    ::MapWindowPoints(m_hWnd, to != nullptr ? to->m_hWnd : nullptr, reinterpret_cast<LPPOINT>(rect), 2);
}

void CWnd::CalcWindowRect(LPRECT clientRect, UINT /*adjustType*/) {
    AdjustWindowRectEx(clientRect, GetStyle(), FALSE, GetExStyle() & ~WS_EX_CLIENTEDGE);
}

CDC* CWnd::GetDC() const { return CDC::FromHandle(::GetDC(m_hWnd)); }
int CWnd::ReleaseDC(CDC* dc) const { return ::ReleaseDC(m_hWnd, dc->m_hDC); }

CWnd* CWnd::SetFocus() { return FromHandle(::SetFocus(m_hWnd)); }
CWnd* CWnd::GetFocus() { return FromHandle(::GetFocus()); }
CWnd* CWnd::SetCapture() { return FromHandle(::SetCapture(m_hWnd)); }
CWnd* CWnd::GetCapture() { return FromHandle(::GetCapture()); }
CWnd* CWnd::SetActiveWindow() { return FromHandle(::SetActiveWindow(m_hWnd)); }
CWnd* CWnd::GetActiveWindow() { return FromHandle(::GetActiveWindow()); }
CWnd* CWnd::GetForegroundWindow() { return FromHandle(::GetForegroundWindow()); }
BOOL CWnd::SetForegroundWindow() { return ::SetForegroundWindow(m_hWnd); }
CWnd* CWnd::WindowFromPoint(POINT point) { return FromHandle(::WindowFromPoint(point)); }

UINT_PTR CWnd::SetTimer(UINT_PTR id, UINT milliseconds, void(CALLBACK* procedure)(HWND, UINT, UINT_PTR, DWORD)) {
    return ::SetTimer(m_hWnd, id, milliseconds, procedure);
}
BOOL CWnd::KillTimer(UINT_PTR id) { return ::KillTimer(m_hWnd, id); }

CWnd* CWnd::GetParentOwner() const {
    HWND window = m_hWnd;
    while ((GetWindowLongA(window, GWL_STYLE) & static_cast<LONG>(WS_CHILD)) != 0) {
        const HWND parent = ::GetParent(window);
        if (parent == nullptr)
            break;
        window = parent;
    }
    return FromHandle(window);
}

CWnd* CWnd::GetTopLevelParent() const {
    HWND window = m_hWnd;
    for (HWND parent = ::GetParent(window); parent != nullptr; parent = ::GetParent(window))
        window = parent;
    return FromHandle(window);
}

CFrameWnd* CWnd::GetParentFrame() const {
    for (HWND window = ::GetParent(m_hWnd); window != nullptr; window = ::GetParent(window))
        if (auto* frame = DYNAMIC_DOWNCAST(CFrameWnd, FromHandlePermanent(window)))
            return frame;
    return nullptr;
}

CFrameWnd* CWnd::GetTopLevelFrame() const {
    CFrameWnd* frame = nullptr;
    for (HWND window = m_hWnd; window != nullptr; window = ::GetParent(window))
        if (auto* found = DYNAMIC_DOWNCAST(CFrameWnd, FromHandlePermanent(window)))
            frame = found;
    return frame;
}

CWnd* CWnd::SetParent(CWnd* parent) {
    return FromHandle(::SetParent(m_hWnd, parent != nullptr ? parent->m_hWnd : nullptr));
}
CWnd* CWnd::GetDesktopWindow() { return FromHandle(::GetDesktopWindow()); }
CWnd* CWnd::ChildWindowFromPoint(POINT point) const { return FromHandle(::ChildWindowFromPoint(m_hWnd, point)); }

CWnd* CWnd::GetDlgItem(int id) const { return FromHandle(::GetDlgItem(m_hWnd, id)); }
void CWnd::SetDlgItemText(int id, LPCSTR text) { ::SetDlgItemTextA(m_hWnd, id, text); }

int CWnd::GetDlgItemText(int id, CString& text) const {
    const CWnd* item = GetDlgItem(id);
    if (item == nullptr)
        text.Empty();
    else
        item->GetWindowText(text);
    return text.GetLength();
}

void CWnd::SetDlgItemInt(int id, UINT value, BOOL isSigned) { ::SetDlgItemInt(m_hWnd, id, value, isSigned); }
UINT CWnd::GetDlgItemInt(int id, BOOL* translated, BOOL isSigned) const {
    return ::GetDlgItemInt(m_hWnd, id, translated, isSigned);
}
void CWnd::CheckDlgButton(int id, UINT check) { ::CheckDlgButton(m_hWnd, id, check); }
void CWnd::CheckRadioButton(int first, int last, int checked) { ::CheckRadioButton(m_hWnd, first, last, checked); }
UINT CWnd::IsDlgButtonChecked(int id) const { return ::IsDlgButtonChecked(m_hWnd, id); }

int CWnd::GetCheckedRadioButton(int first, int last) const {
    for (int id = first; id <= last; ++id)
        if (IsDlgButtonChecked(id) != 0)
            return id;
    return 0;
}

CWnd* CWnd::GetNextDlgTabItem(CWnd* control, BOOL previous) const {
    return FromHandle(::GetNextDlgTabItem(m_hWnd, control != nullptr ? control->m_hWnd : nullptr, previous));
}

BOOL CWnd::UpdateData(BOOL saveAndValidate) {
    CDataExchange exchange(this, saveAndValidate);
    try {
        DoDataExchange(&exchange);
    } catch (CUserException* refused) {
        delete refused; // the user has been told
        return FALSE;
    }
    return TRUE;
}

int CWnd::SetScrollPos(int bar, int position, BOOL redraw) { return ::SetScrollPos(m_hWnd, bar, position, redraw); }
int CWnd::GetScrollPos(int bar) const { return ::GetScrollPos(m_hWnd, bar); }
void CWnd::SetScrollRange(int bar, int minimum, int maximum, BOOL redraw) {
    ::SetScrollRange(m_hWnd, bar, minimum, maximum, redraw);
}
void CWnd::ShowScrollBar(UINT bar, BOOL show) { ::ShowScrollBar(m_hWnd, static_cast<int>(bar), show); }

int CWnd::MessageBox(LPCSTR text, LPCSTR caption, UINT type) const {
    const CWinApp* app = AfxGetApp();
    return ::MessageBoxA(m_hWnd, text, caption == nullptr && app != nullptr ? LPCSTR(app->m_strAppName) : caption,
                         type);
}

CWnd* AfxGetMainWnd() {
    const CWinApp* app = AfxGetApp();
    return app != nullptr ? app->m_pMainWnd : nullptr;
}

int AfxMessageBox(LPCSTR text, UINT type, UINT) {
    const CWinApp* app = AfxGetApp();
    HWND owner = ::GetActiveWindow();
    if (owner == nullptr && AfxGetMainWnd() != nullptr)
        owner = AfxGetMainWnd()->m_hWnd;
    return ::MessageBoxA(owner, text, app != nullptr ? LPCSTR(app->m_strAppName) : "", type);
}

int AfxMessageBox(UINT stringId, UINT type, UINT helpId) {
    CString text;
    text.LoadString(stringId);
    return AfxMessageBox(LPCSTR(text), type, helpId);
}
