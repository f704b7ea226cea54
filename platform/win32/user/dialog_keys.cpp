// The keyboard of dialogs: IsDialogMessage.
#include "user/dialog.h"
#include "user/menu.h"
#include "win32/button.h"
#include "win32/codepage.h"
#include "win32/input.h"
#include "win32/queue.h"
#include "win32/static.h"

namespace vndk::win32 {

namespace {

constexpr LRESULT plainLabel = DLGC_STATIC;

bool shiftDown() { return GetKeyState(VK_SHIFT) < 0; }

// The control that has the focus, or that the message is for when none has.
HWND focusedControl(HWND dialog, HWND target) {
    const HWND focus = GetFocus();
    return controlAround(dialog, focus != nullptr && IsChild(dialog, focus) ? focus : target);
}

void moveByTab(HWND dialog, bool previous) {
    if (dialogInfo(dialog) != nullptr) {
        send(dialog, WM_NEXTDLGCTL, previous ? TRUE : FALSE, 0);
        return;
    }
    if (const HWND next = GetNextDlgTabItem(dialog, focusedControl(dialog, nullptr), previous ? TRUE : FALSE))
        focusInDialog(dialog, next);
}

// A radio button takes the focus by being clicked. Given the focus before, it would count that as a click of its own.
void clickRadioButton(HWND dialog, HWND button) {
    send(button, BM_CLICK);
    if (const HWND focus = GetFocus(); focus != nullptr && IsChild(dialog, focus) != FALSE)
        updateDefaultLook(dialog, focus);
}

void clickControl(HWND dialog, HWND control) {
    if ((dialogCode(control) & DLGC_RADIOBUTTON) != 0) {
        clickRadioButton(dialog, control);
        return;
    }
    focusInDialog(dialog, control);
    if (IsWindow(control) != FALSE)
        send(control, BM_CLICK);
}

// Labels are passed over: nobody wants to arrive there with a key.
HWND nextInGroup(HWND dialog, HWND control, bool previous) {
    HWND next = control;
    for (std::size_t tries = groupOf(control).size(); tries > 0; --tries) {
        next = GetNextDlgGroupItem(dialog, next, previous ? TRUE : FALSE);
        if (next == nullptr || next == control || (dialogCode(next) & DLGC_STATIC) == 0)
            return next;
    }
    return control;
}

void moveInGroup(HWND dialog, HWND target, bool previous) {
    const HWND control = focusedControl(dialog, target);
    const HWND next = control != nullptr ? nextInGroup(dialog, control, previous) : nullptr;
    if (next == nullptr || next == control)
        return;
    if ((dialogCode(next) & DLGC_RADIOBUTTON) != 0)
        clickControl(dialog, next);
    else
        focusInDialog(dialog, next);
}

// WM_COMMAND as if the button with this id had been clicked; a disabled button only beeps.
void commandOf(HWND dialog, int id) {
    const HWND button = GetDlgItem(dialog, id);
    if (button != nullptr && IsWindowEnabled(button) == FALSE)
        MessageBeep(0);
    else
        send(dialog, WM_COMMAND, MAKEWPARAM(id, BN_CLICKED), reinterpret_cast<LPARAM>(button));
}

void enter(HWND dialog) {
    const HWND focus = GetFocus();
    if (focus != nullptr && IsChild(dialog, focus) && (dialogCode(focus) & DLGC_DEFPUSHBUTTON) != 0) {
        // The button may lie in a dialog within this one, which is the one that knows it.
        commandOf(GetParent(focus), GetDlgCtrlID(focus));
        return;
    }
    const LRESULT answer = dialogInfo(dialog) != nullptr ? send(dialog, DM_GETDEFID) : 0;
    const bool hasDefault = HIWORD(static_cast<DWORD_PTR>(answer)) == DC_HASDEFID;
    commandOf(dialog, hasDefault ? LOWORD(static_cast<DWORD_PTR>(answer)) : IDOK);
}

// ---- Mnemonics -----------------------------------------------------------------------------------------------------

bool marks(HWND control, char character) {
    const Window* window = findWindow(control);
    if (window == nullptr || !isUsable(*window) || mnemonicOf(window->text) != character)
        return false;
    const DWORD style = window->style;
    const LRESULT code = dialogCode(control);
    // What wants characters holds them as its contents, and no mark.
    if ((code & DLGC_WANTCHARS) != 0)
        return false;
    return (code & plainLabel) == 0 || (code & DLGC_BUTTON) != 0 || (style & SS_NOPREFIX) == 0 ||
           (style & SS_TYPEMASK) == BS_GROUPBOX;
}

// All controls marked by a character, in order from behind the one that has the focus.
std::vector<HWND> markedControls(HWND dialog, HWND from, char character) {
    const auto controls = controlsInOrder(dialog);
    std::size_t start = 0;
    for (std::size_t i = 0; i < controls.size(); ++i)
        if (controls[i] == from)
            start = i + 1;
    std::vector<HWND> marked;
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const HWND control = controls[(start + i) % controls.size()];
        if (marks(control, character))
            marked.push_back(control);
    }
    return marked;
}

// A label's mark means the control behind it; of radio buttons the one that can be reached by Tab.
HWND labelledControl(HWND dialog, HWND label) {
    const auto controls = controlsInOrder(dialog);
    std::size_t at = 0;
    while (at < controls.size() && controls[at] != label)
        ++at;
    for (std::size_t i = 1; i < controls.size(); ++i) {
        const HWND control = controls[(at + i) % controls.size()];
        const Window* window = findWindow(control);
        const LRESULT code = dialogCode(control);
        if (window == nullptr || !isUsable(*window) || (code & DLGC_STATIC) != 0 ||
            (window->exStyle & WS_EX_CONTROLPARENT) != 0)
            continue;
        if ((code & DLGC_RADIOBUTTON) != 0)
            for (const HWND member : groupOf(control))
                if (send(member, BM_GETCHECK) == BST_CHECKED && (dialogCode(member) & DLGC_RADIOBUTTON) != 0)
                    return member;
        return control;
    }
    return nullptr;
}

bool goToMark(HWND dialog, HWND target, char character) {
    const auto marked = markedControls(dialog, focusedControl(dialog, target), upper1252(character));
    if (marked.empty())
        return false;
    const HWND control = marked.front();
    const LRESULT code = dialogCode(control);
    if ((code & DLGC_STATIC) != 0) {
        if (const HWND next = labelledControl(dialog, control))
            focusInDialog(dialog, next);
    } else if ((code & (DLGC_BUTTON | DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0 && marked.size() == 1) {
        clickControl(dialog, control);
    } else {
        focusInDialog(dialog, control);
    }
    return true;
}

// ---- Messages ------------------------------------------------------------------------------------------------------

bool handleKeyDown(HWND dialog, MSG& message) {
    const LRESULT code = send(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    if ((code & DLGC_WANTMESSAGE) != 0)
        return false;
    switch (static_cast<int>(message.wParam)) {
    case VK_TAB:
        if ((code & DLGC_WANTTAB) != 0)
            return false;
        moveByTab(dialog, shiftDown());
        return true;
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
        if ((code & DLGC_WANTARROWS) != 0)
            return false;
        moveInGroup(dialog, message.hwnd, message.wParam == VK_LEFT || message.wParam == VK_UP);
        return true;
    case VK_ESCAPE:
    case VK_CANCEL:
        commandOf(dialog, IDCANCEL);
        return true;
    case VK_RETURN:
        enter(dialog);
        return true;
    default:
        return false;
    }
}

bool handleCharacter(HWND dialog, MSG& message) {
    const LRESULT code = send(message.hwnd, WM_GETDLGCODE, message.wParam, reinterpret_cast<LPARAM>(&message));
    if ((code & (DLGC_WANTCHARS | DLGC_WANTMESSAGE)) != 0)
        return false;
    constexpr WPARAM controlC = 3;
    if (message.wParam == controlC) {
        send(dialog, WM_COPY); // Message boxes copy what they say.
        return true;
    }
    // A blank presses the button that has the focus, and nothing is marked by it.
    return message.wParam > ' ' && goToMark(dialog, message.hwnd, static_cast<char>(message.wParam));
}

bool handleKeyboard(HWND dialog, MSG& message) {
    switch (message.message) {
    case WM_KEYDOWN:
        return handleKeyDown(dialog, message);
    case WM_CHAR:
        return handleCharacter(dialog, message);
    case WM_SYSCHAR:
        return message.wParam > ' ' && goToMark(dialog, message.hwnd, static_cast<char>(message.wParam));
    default:
        return false;
    }
}

} // namespace

bool handleDialogMessage(HWND dialog, MSG& message) {
    if (message.hwnd == nullptr || (message.hwnd != dialog && IsChild(dialog, message.hwnd) == FALSE))
        return false;
    if (handleKeyboard(dialog, message))
        return true;
    const HWND focus = GetFocus();
    TranslateMessage(&message);
    DispatchMessageA(&message);
    // A click moves the default look along with the focus.
    const HWND now = GetFocus();
    if (now != focus && now != nullptr && IsChild(dialog, now) != FALSE)
        updateDefaultLook(dialog, now);
    return true;
}

} // namespace vndk::win32

BOOL IsDialogMessageA(HWND dialog, MSG* message) {
    using namespace vndk::win32;
    if (message == nullptr || findWindow(dialog) == nullptr || dialog == GetDesktopWindow())
        return FALSE;
    if (CallMsgFilterA(message, MSGF_DIALOGBOX) != FALSE)
        return TRUE;
    return handleDialogMessage(dialog, *message) ? TRUE : FALSE;
}
