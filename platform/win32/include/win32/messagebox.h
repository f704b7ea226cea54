// Message boxes.
#pragma once

#include "win32/dialog.h"

constexpr UINT MB_OK = 0x00000000;
constexpr UINT MB_OKCANCEL = 0x00000001;
constexpr UINT MB_ABORTRETRYIGNORE = 0x00000002;
constexpr UINT MB_YESNOCANCEL = 0x00000003;
constexpr UINT MB_YESNO = 0x00000004;
constexpr UINT MB_RETRYCANCEL = 0x00000005;
constexpr UINT MB_TYPEMASK = 0x0000000F;

constexpr UINT MB_ICONHAND = 0x00000010;
constexpr UINT MB_ICONQUESTION = 0x00000020;
constexpr UINT MB_ICONEXCLAMATION = 0x00000030;
constexpr UINT MB_ICONASTERISK = 0x00000040;
constexpr UINT MB_USERICON = 0x00000080;
constexpr UINT MB_ICONSTOP = MB_ICONHAND;
constexpr UINT MB_ICONERROR = MB_ICONHAND;
constexpr UINT MB_ICONWARNING = MB_ICONEXCLAMATION;
constexpr UINT MB_ICONINFORMATION = MB_ICONASTERISK;
constexpr UINT MB_ICONMASK = 0x000000F0;

constexpr UINT MB_DEFBUTTON1 = 0x00000000;
constexpr UINT MB_DEFBUTTON2 = 0x00000100;
constexpr UINT MB_DEFBUTTON3 = 0x00000200;
constexpr UINT MB_DEFBUTTON4 = 0x00000300;
constexpr UINT MB_DEFMASK = 0x00000F00;

constexpr UINT MB_APPLMODAL = 0x00000000;
constexpr UINT MB_SYSTEMMODAL = 0x00001000; // as MB_APPLMODAL
constexpr UINT MB_TASKMODAL = 0x00002000;   // as MB_APPLMODAL
constexpr UINT MB_HELP = 0x00004000;        // a Help button, which sends WM_HELP to the owner
constexpr UINT MB_SETFOREGROUND = 0x00010000;
constexpr UINT MB_TOPMOST = 0x00040000;
constexpr UINT MB_RIGHT = 0x00080000;

/// Shows text, an icon and buttons in the middle of the owner (or of the work area) and waits for an answer: the id of
/// the button. Escape answers IDCANCEL (IDOK when OK is the only button, nothing when there is no Cancel). Ctrl+C
/// copies title, text and buttons to the clipboard. A null title reads "Error". 0 when the owner is dead or the kind
/// unknown (ERROR_INVALID_PARAMETER), or WM_QUIT came.
int MessageBoxA(HWND owner, LPCSTR text, LPCSTR title, UINT kind);
VNDK_TEXT_CALL(MessageBox);
