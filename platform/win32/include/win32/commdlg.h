// The common dialogs for the name of a file.
//
//     char name[MAX_PATH] = "";
//     OPENFILENAMEA wanted{};
//     wanted.lStructSize = sizeof wanted;
//     wanted.hwndOwner = owner;
//     wanted.lpstrFilter = "Drawings (*.dwg)\0*.dwg\0All files\0*.*\0";
//     wanted.lpstrFile = name;
//     wanted.nMaxFile = sizeof name;
//     wanted.lpstrDefExt = "dwg";
//     wanted.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY;
//     if (GetOpenFileNameA(&wanted)) ...                    // name: in full, with drive letter
//
// The user types names in either form, goes through folders by mouse and keyboard and makes new ones. Not done: several
// files at once, templates and hooks of the caller, the read-only box. The working folder stays as it is.
#pragma once

#include "win32/types.h"

using LPOFNHOOKPROC = UINT_PTR(CALLBACK*)(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam);

struct OPENFILENAMEA {
    DWORD lStructSize;
    HWND hwndOwner;
    HINSTANCE hInstance;
    LPCSTR lpstrFilter; // pairs of text and masks ("*.dwg;*.bak"), each closed by NUL, one more at the end
    LPSTR lpstrCustomFilter;
    DWORD nMaxCustFilter;
    DWORD nFilterIndex; // from 1; out: the one that was chosen
    LPSTR lpstrFile;    // in: a name to begin with, may have a folder; out: the name in full
    DWORD nMaxFile;
    LPSTR lpstrFileTitle; // out: the name without its folder; may be null
    DWORD nMaxFileTitle;
    LPCSTR lpstrInitialDir; // null: that of lpstrFile, else the working folder
    LPCSTR lpstrTitle;      // null: "Open" or "Save As"
    DWORD Flags;
    WORD nFileOffset;    // out: where the name without its folder begins
    WORD nFileExtension; // out: where its extension begins, 0 without one
    LPCSTR lpstrDefExt;  // for names without one; no dot
    LPARAM lCustData;
    LPOFNHOOKPROC lpfnHook;
    LPCSTR lpTemplateName;
};
using OPENFILENAME = OPENFILENAMEA;
using LPOPENFILENAME = OPENFILENAMEA*;

constexpr DWORD OFN_READONLY = 0x00000001;
constexpr DWORD OFN_OVERWRITEPROMPT = 0x00000002;
constexpr DWORD OFN_HIDEREADONLY = 0x00000004;
constexpr DWORD OFN_NOCHANGEDIR = 0x00000008;
constexpr DWORD OFN_PATHMUSTEXIST = 0x00000800;
constexpr DWORD OFN_FILEMUSTEXIST = 0x00001000; // implies OFN_PATHMUSTEXIST
constexpr DWORD OFN_EXPLORER = 0x00080000;

constexpr DWORD CDERR_STRUCTSIZE = 0x0001;
constexpr DWORD CDERR_INITIALIZATION = 0x0002;
constexpr DWORD FNERR_BUFFERTOOSMALL = 0x3003;

// Ids of the dialog's controls.
constexpr int cmb1 = 0x0470; // kinds of files
constexpr int cmb2 = 0x0471; // the folder and those above it
constexpr int edt1 = 0x0480; // the name
constexpr int lst1 = 0x0460; // what is in the folder
constexpr int psh1 = 0x0400; // one folder up
constexpr int psh2 = 0x0401; // new folder

/// FALSE when the user gave up, and on an error, which CommDlgExtendedError tells.
BOOL GetOpenFileNameA(OPENFILENAMEA* wanted);
BOOL GetSaveFileNameA(OPENFILENAMEA* wanted);
VNDK_TEXT_CALL(GetOpenFileName);
VNDK_TEXT_CALL(GetSaveFileName);
/// 0 after a dialog that the user ended in either way.
DWORD CommDlgExtendedError();
