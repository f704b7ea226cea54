// Dialogs: windows made from templates, their loop, the keyboard inside of them, and calls on their controls by id.
//
//     INT_PTR CALLBACK answer(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam) {
//         if (message == WM_COMMAND && LOWORD(wParam) == IDOK)
//             return EndDialog(dialog, IDOK);
//         return message == WM_INITDIALOG;
//     }
//     INT_PTR result = DialogBoxParam(instance, MAKEINTRESOURCE(262), owner, answer, 0);
//
// Places and sizes in a template are dialog units: a fourth of the dialog font's average character width and an eighth
// of its height. A dialog procedure answers non-zero when it dealt with a message; the message's own result is what it
// left with SetWindowLongPtr(DWL_MSGRESULT). A control is found by its id among the dialog's own children only; of
// several with one id the first counts. A missing one answers 0 with ERROR_CONTROL_ID_NOT_FOUND.
#pragma once

#include "win32/messages.h"
#include "win32/types.h"
#include "win32/window.h"

#include <cstdint>
#include <span>
#include <string>

using DLGPROC = INT_PTR(CALLBACK*)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

// Ids with a meaning of their own: Enter without a default button sends IDOK, Escape sends IDCANCEL.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
constexpr int IDCLOSE = 8;
constexpr int IDHELP = 9;
constexpr int IDC_STATIC = -1;

constexpr DWORD DS_ABSALIGN = 0x0001; // the template's place counts from the screen, not from the owner
constexpr DWORD DS_SYSMODAL = 0x0002; // topmost
constexpr DWORD DS_3DLOOK = 0x0004;
constexpr DWORD DS_FIXEDSYS = 0x0008;     // the fixed system font
constexpr DWORD DS_NOFAILCREATE = 0x0010; // controls that can't be made are left out
constexpr DWORD DS_LOCALEDIT = 0x0020;
constexpr DWORD DS_SETFONT = 0x0040; // the template names a font
constexpr DWORD DS_MODALFRAME = 0x0080;
constexpr DWORD DS_NOIDLEMSG = 0x0100; // no WM_ENTERIDLE to the owner
constexpr DWORD DS_SETFOREGROUND = 0x0200;
constexpr DWORD DS_CONTROL = 0x0400; // a part of another dialog: its controls are tabbed through with that one's
constexpr DWORD DS_CENTER = 0x0800;  // in the middle of the work area
constexpr DWORD DS_CENTERMOUSE = 0x1000;
constexpr DWORD DS_CONTEXTHELP = 0x2000;
constexpr DWORD DS_SHELLFONT = DS_SETFONT | DS_FIXEDSYS;

constexpr UINT DM_GETDEFID = WM_USER + 0;   // high word DC_HASDEFID when there is one, low word its id
constexpr UINT DM_SETDEFID = WM_USER + 1;   // wParam: the id
constexpr UINT DM_REPOSITION = WM_USER + 2; // moves the dialog into the work area
constexpr WORD DC_HASDEFID = 0x534B;

// Heads of a DIALOG template and of each of its controls, as in memory: 18 bytes, not aligned beyond 4.
#pragma pack(push, 2)
struct DLGTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    WORD cdit;
    SHORT x;
    SHORT y;
    SHORT cx;
    SHORT cy;
};
struct DLGITEMTEMPLATE {
    DWORD style;
    DWORD dwExtendedStyle;
    SHORT x;
    SHORT y;
    SHORT cx;
    SHORT cy;
    WORD id;
};
#pragma pack(pop)
using LPDLGTEMPLATE = DLGTEMPLATE*;
using LPCDLGTEMPLATE = const DLGTEMPLATE*;

/// A dialog that isn't waited for. The procedure gets WM_SETFONT and then WM_INITDIALOG, with `parameter` in lParam.
/// Null when the template is missing (the resource's error) or damaged (ERROR_INVALID_DATA), the owner is dead, or a
/// control's class is missing and the template hasn't DS_NOFAILCREATE. Child dialogs get the parent itself, all others
/// its top-level window as owner.
HWND CreateDialogParamA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
/// From a template in memory. One that lies in a registered instance's resources is checked against its end there; any
/// other has to be whole.
HWND CreateDialogIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND owner, DLGPROC procedure,
                                LPARAM parameter);
/// Runs the dialog until EndDialog; the owner is disabled meanwhile. Its result, 0 when the owner is dead, -1 when the
/// dialog can't be made. It is shown when the queue is empty for the first time. A WM_QUIT ends it and stays in the
/// queue.
INT_PTR DialogBoxParamA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure, LPARAM parameter);
INT_PTR DialogBoxIndirectParamA(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND owner, DLGPROC procedure,
                                LPARAM parameter);
inline HWND CreateDialogA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure) {
    return CreateDialogParamA(instance, name, owner, procedure, 0);
}
inline HWND CreateDialogIndirectA(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND owner,
                                  DLGPROC procedure) {
    return CreateDialogIndirectParamA(instance, dialogTemplate, owner, procedure, 0);
}
inline INT_PTR DialogBoxA(HINSTANCE instance, LPCSTR name, HWND owner, DLGPROC procedure) {
    return DialogBoxParamA(instance, name, owner, procedure, 0);
}
inline INT_PTR DialogBoxIndirectA(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND owner,
                                  DLGPROC procedure) {
    return DialogBoxIndirectParamA(instance, dialogTemplate, owner, procedure, 0);
}
VNDK_TEXT_CALL(CreateDialogParam);
VNDK_TEXT_CALL(CreateDialogIndirectParam);
VNDK_TEXT_CALL(DialogBoxParam);
VNDK_TEXT_CALL(DialogBoxIndirectParam);
VNDK_TEXT_CALL(CreateDialog);
VNDK_TEXT_CALL(CreateDialogIndirect);
VNDK_TEXT_CALL(DialogBox);
VNDK_TEXT_CALL(DialogBoxIndirect);

/// Hides the dialog and lets DialogBox return `result` after the present message. A modeless one is hidden only.
BOOL EndDialog(HWND dialog, INT_PTR result);
LRESULT DefDlgProcA(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);
VNDK_TEXT_CALL(DefDlgProc);

/// TRUE when the message was the dialog's keyboard (tab, arrows, Enter, Escape, mnemonics) or was dispatched to one of
/// its windows: nothing is left to do with it then. Works for any window that has children.
BOOL IsDialogMessageA(HWND dialog, MSG* message);
VNDK_TEXT_CALL(IsDialogMessage);

HWND GetDlgItem(HWND dialog, int id);
int GetDlgCtrlID(HWND control);
BOOL SetDlgItemTextA(HWND dialog, int id, LPCSTR text);
/// Number of characters copied, without the closing NUL.
UINT GetDlgItemTextA(HWND dialog, int id, LPSTR buffer, int size);
BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned);
/// Passes over leading blanks and stops at the first character that is no digit. No digit at all, or a number too
/// large, is a failure: 0 with *translated FALSE.
UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned);
LRESULT SendDlgItemMessageA(HWND dialog, int id, UINT message, WPARAM wParam, LPARAM lParam);
VNDK_TEXT_CALL(SetDlgItemText);
VNDK_TEXT_CALL(GetDlgItemText);
VNDK_TEXT_CALL(SendDlgItemMessage);
/// `check` is a BST_ value.
BOOL CheckDlgButton(HWND dialog, int id, UINT check);
UINT IsDlgButtonChecked(HWND dialog, int id);
/// Checks `check` and unchecks all other radio buttons from the control with id `first` to that with id `last`.
BOOL CheckRadioButton(HWND dialog, int first, int last, int check);

/// The next control with WS_TABSTOP that is visible and enabled, wrapping around; `control` itself when there is no
/// other. Windows with WS_EX_CONTROLPARENT are entered. Null `control` starts at the first (or, backward, last) one.
HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);
/// The next visible and enabled control of the group of `control`: from one with WS_GROUP to before the next with it.
HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous);

/// From dialog units to pixels, rounded. FALSE when it isn't a dialog.
BOOL MapDialogRect(HWND dialog, RECT* rect);
/// Units of the system font: x in the low word, y in the high word.
LONG GetDialogBaseUnits();

namespace vndk::win32 {

/// CreateDialogIndirectParam for bytes of known length: whatever they hold, nothing beyond them is read.
HWND createDialog(HINSTANCE instance, std::span<const std::uint8_t> dialogTemplate, HWND owner, DLGPROC procedure,
                  LPARAM parameter);

/// Font and size that a template asks for, for those who have to lay out by it before the window exists.
struct DialogTemplateFacts {
    DWORD style = 0;
    DWORD exStyle = 0;
    int controls = 0;
    RECT units{};      // place and size in dialog units
    int pointSize = 0; // 0: the template names no font
    std::string caption;
    std::string fontFace;
};
/// False with ERROR_INVALID_DATA when the template is damaged anywhere.
bool readDialogTemplate(std::span<const std::uint8_t> dialogTemplate, DialogTemplateFacts& facts);

} // namespace vndk::win32
