// Accelerator tables: keys that stand for commands.
#pragma once

#include "win32/messages.h"
#include "win32/types.h"

constexpr BYTE FVIRTKEY = 0x01; // `key` is a virtual key; else a character
constexpr BYTE FNOINVERT = 0x02;
constexpr BYTE FSHIFT = 0x04;
constexpr BYTE FCONTROL = 0x08;
constexpr BYTE FALT = 0x10;

struct ACCEL {
    BYTE fVirt;
    WORD key;
    WORD cmd;
};
using LPACCEL = ACCEL*;

/// The table stays the instance's: nothing is to be destroyed, though DestroyAcceleratorTable is allowed. Null with the
/// resource's error, or ERROR_INVALID_DATA when it is damaged.
HACCEL LoadAcceleratorsA(HINSTANCE instance, LPCSTR name);
VNDK_TEXT_CALL(LoadAccelerators);
/// From 1 to 32767 entries.
HACCEL CreateAcceleratorTableA(const ACCEL* entries, int count);
VNDK_TEXT_CALL(CreateAcceleratorTable);
BOOL DestroyAcceleratorTable(HACCEL table);
/// Entries copied; their number when `entries` is null.
int CopyAcceleratorTableA(HACCEL table, ACCEL* entries, int count);
VNDK_TEXT_CALL(CopyAcceleratorTable);
/// Non-zero when the key message matched an entry: the window then got WM_INITMENU and WM_INITMENUPOPUP of the menu
/// that holds the command, and WM_COMMAND (WM_SYSCOMMAND for one of the system menu) with 1 in the high word of wParam.
/// A menu item that is disabled, or a disabled window, gets no command; the key counts as used all the same.
int TranslateAcceleratorA(HWND window, HACCEL table, MSG* message);
VNDK_TEXT_CALL(TranslateAccelerator);
