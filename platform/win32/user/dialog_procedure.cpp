// The window procedure of dialogs, and their class.
#include "user/dialog.h"
#include "user/frame_geometry.h"
#include "win32/button.h"
#include "win32/codepage.h"
#include "win32/combobox.h"
#include "win32/draw.h"
#include "win32/gdi.h"
#include "win32/icons.h"
#include "win32/input.h"
#include "win32/menu.h"

namespace vndk::win32 {

namespace {

// Messages whose result is what the dialog procedure returns, and not what it left in DWL_MSGRESULT.
bool answersDirectly(UINT message) {
    switch (message) {
    case WM_COMPAREITEM:
    case WM_VKEYTOITEM:
    case WM_CHARTOITEM:
    case WM_QUERYDRAGICON:
    case WM_INITDIALOG:
        return true;
    default:
        return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
    }
}

LRESULT eraseBackground(HWND dialog, HDC dc) {
    const auto brush = reinterpret_cast<HBRUSH>(
        send(dialog, WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(dialog)));
    if (IsWindow(dialog) == FALSE || IsIconic(dialog) != FALSE)
        return TRUE;
    RECT area{};
    GetClipBox(dc, &area);
    FillRect(dc, &area, brush != nullptr ? brush : GetSysColorBrush(COLOR_BTNFACE));
    return TRUE;
}

LRESULT close(HWND dialog) {
    const HWND cancel = GetDlgItem(dialog, IDCANCEL);
    if (cancel != nullptr && IsWindowEnabled(cancel) == FALSE)
        MessageBeep(0);
    else
        PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDCANCEL, BN_CLICKED), reinterpret_cast<LPARAM>(cancel));
    return 0;
}

LRESULT nextControl(HWND dialog, WPARAM wParam, bool isHandle) {
    HWND next = nullptr;
    if (isHandle) {
        next = reinterpret_cast<HWND>(wParam);
    } else {
        const HWND focus = GetFocus();
        const HWND from = focus != nullptr && IsChild(dialog, focus) ? focus : nullptr;
        next = GetNextDlgTabItem(dialog, from, wParam != 0 ? TRUE : FALSE);
    }
    if (next != nullptr && IsWindow(next) != FALSE)
        focusInDialog(dialog, next);
    return 0;
}

LRESULT reposition(HWND dialog) {
    RECT rect{};
    GetWindowRect(dialog, &rect);
    const RECT inside = insideWorkArea(rect);
    if ((GetWindowLongA(dialog, GWL_STYLE) & static_cast<LONG>(WS_CHILD)) == 0 && !sameRect(rect, inside))
        SetWindowPos(dialog, nullptr, inside.left, inside.top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    return 0;
}

LRESULT getDefaultId(HWND dialog, const DialogInfo& info) {
    const auto id = info.ended ? std::nullopt : defaultIdOf(dialog);
    return id ? MAKELRESULT(*id, DC_HASDEFID) : 0;
}

// A click beside the list of a combo box closes it.
void closeDroppedList() {
    HWND focus = GetFocus();
    for (int level = 0; focus != nullptr && level < 2; ++level, focus = GetParent(focus)) {
        char name[32];
        if (GetClassNameA(focus, name, sizeof name) > 0 && compareNoCase(name, "ComboBox") == 0) {
            send(focus, CB_SHOWDROPDOWN, FALSE);
            return;
        }
    }
}

LRESULT activated(HWND dialog, WORD how) {
    if (how != WA_INACTIVE)
        restoreFocus(dialog, RestoredFocus::saved);
    else
        saveFocus(dialog);
    return 0;
}

LRESULT defaultHandling(HWND dialog, DialogInfo& info, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ERASEBKGND:
        return eraseBackground(dialog, reinterpret_cast<HDC>(wParam));
    case WM_ACTIVATE:
        return activated(dialog, LOWORD(wParam));
    case WM_SETFOCUS:
        restoreFocus(dialog, RestoredFocus::first);
        return 0;
    case WM_SHOWWINDOW:
        if (wParam == FALSE)
            saveFocus(dialog);
        break;
    case DM_SETDEFID:
        if (!info.ended)
            setDefaultId(dialog, static_cast<int>(wParam));
        return TRUE;
    case DM_GETDEFID:
        return getDefaultId(dialog, info);
    case DM_REPOSITION:
        return reposition(dialog);
    case WM_NEXTDLGCTL:
        return nextControl(dialog, wParam, LOWORD(static_cast<DWORD_PTR>(lParam)) != 0);
    case WM_CLOSE:
        return close(dialog);
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(info.font);
    case WM_INITDIALOG:
        return FALSE;
    case WM_ENTERMENULOOP:
    case WM_LBUTTONDOWN:
    case WM_NCLBUTTONDOWN:
        closeDroppedList();
        break;
    default:
        break;
    }
    return DefWindowProcA(dialog, message, wParam, lParam);
}

} // namespace

std::shared_ptr<DialogInfo> dialogInfo(HWND dialog) {
    const Window* window = findWindow(dialog);
    return window != nullptr ? window->dialog : nullptr;
}

std::shared_ptr<DialogInfo> makeDialogInfo(Window& window) {
    if (window.dialog == nullptr) {
        window.dialog = std::make_shared<DialogInfo>();
        window.dialog->units = dialogUnits(nullptr);
        window.isDialog = true;
    }
    return window.dialog;
}

void registerDialogClass() {
    WNDCLASSA dialogs{};
    dialogs.style = CS_GLOBALCLASS | CS_DBLCLKS | CS_SAVEBITS;
    dialogs.lpfnWndProc = &DefDlgProcA;
    dialogs.cbWndExtra = DLGWINDOWEXTRA;
    dialogs.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    dialogs.lpszClassName = "#32770";
    RegisterClassA(&dialogs);
}

} // namespace vndk::win32

LRESULT DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
    using namespace vndk::win32;
    Window* window = findWindow(dialog);
    if (window == nullptr)
        return 0;
    const auto info = makeDialogInfo(*window);
    const auto procedure = reinterpret_cast<DLGPROC>(GetWindowLongPtrA(dialog, DWL_DLGPROC));
    LRESULT answer = 0;
    if (procedure != nullptr) {
        SetWindowLongPtrA(dialog, DWL_MSGRESULT, 0);
        answer = callProcedure(procedure, dialog, message, wParam, lParam);
    }
    if (IsWindow(dialog) == FALSE || (answer != 0 && answersDirectly(message)))
        return answer;
    if (answer != 0)
        return GetWindowLongPtrA(dialog, DWL_MSGRESULT);
    return defaultHandling(dialog, *info, message, wParam, lParam);
}
