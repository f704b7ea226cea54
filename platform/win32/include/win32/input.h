// Keyboard and mouse: focus, activation, capture, cursor, caret, keys, clipboard.
#pragma once

#include "win32/messages.h"

/// The window that had the focus; null when none had, the window is disabled or the call was refused.
HWND SetFocus(HWND window);
HWND GetFocus();
HWND SetActiveWindow(HWND window);
HWND GetActiveWindow();
BOOL SetForegroundWindow(HWND window);
HWND GetForegroundWindow();

/// The window that had the capture.
HWND SetCapture(HWND window);
BOOL ReleaseCapture();
HWND GetCapture();

constexpr DWORD TME_HOVER = 0x00000001;
constexpr DWORD TME_LEAVE = 0x00000002;
constexpr DWORD TME_QUERY = 0x40000000;
constexpr DWORD TME_CANCEL = 0x80000000;
constexpr DWORD HOVER_DEFAULT = 0xFFFFFFFF;
struct TRACKMOUSEEVENT {
    DWORD cbSize;
    DWORD dwFlags;
    HWND hwndTrack;
    DWORD dwHoverTime;
};
BOOL TrackMouseEvent(TRACKMOUSEEVENT* track);
/// True when the button is held and the pointer leaves the drag rectangle around `point` (screen).
BOOL DragDetect(HWND window, POINT point);
UINT GetDoubleClickTime(); // milliseconds
BOOL SetDoubleClickTime(UINT milliseconds);
BOOL SwapMouseButton(BOOL swap);

HCURSOR SetCursor(HCURSOR cursor);
HCURSOR GetCursor();
int ShowCursor(BOOL show);
BOOL GetCursorPos(POINT* point); // screen coordinates
BOOL SetCursorPos(int x, int y);
BOOL ClipCursor(const RECT* rect);

BOOL CreateCaret(HWND window, HBITMAP bitmap, int width, int height);
BOOL DestroyCaret();
BOOL ShowCaret(HWND window);
BOOL HideCaret(HWND window);
BOOL SetCaretPos(int x, int y);
BOOL GetCaretPos(POINT* point);
UINT GetCaretBlinkTime();

constexpr int VK_LBUTTON = 0x01;
constexpr int VK_RBUTTON = 0x02;
constexpr int VK_CANCEL = 0x03;
constexpr int VK_MBUTTON = 0x04;
constexpr int VK_BACK = 0x08;
constexpr int VK_TAB = 0x09;
constexpr int VK_CLEAR = 0x0C;
constexpr int VK_RETURN = 0x0D;
constexpr int VK_SHIFT = 0x10;
constexpr int VK_CONTROL = 0x11;
constexpr int VK_MENU = 0x12;
constexpr int VK_PAUSE = 0x13;
constexpr int VK_CAPITAL = 0x14;
constexpr int VK_ESCAPE = 0x1B;
constexpr int VK_SPACE = 0x20;
constexpr int VK_PRIOR = 0x21;
constexpr int VK_NEXT = 0x22;
constexpr int VK_END = 0x23;
constexpr int VK_HOME = 0x24;
constexpr int VK_LEFT = 0x25;
constexpr int VK_UP = 0x26;
constexpr int VK_RIGHT = 0x27;
constexpr int VK_DOWN = 0x28;
constexpr int VK_INSERT = 0x2D;
constexpr int VK_DELETE = 0x2E;
constexpr int VK_HELP = 0x2F;
constexpr int VK_LWIN = 0x5B;
constexpr int VK_APPS = 0x5D;
constexpr int VK_NUMPAD0 = 0x60;
constexpr int VK_NUMPAD9 = 0x69;
constexpr int VK_MULTIPLY = 0x6A;
constexpr int VK_ADD = 0x6B;
constexpr int VK_SEPARATOR = 0x6C;
constexpr int VK_SUBTRACT = 0x6D;
constexpr int VK_DECIMAL = 0x6E;
constexpr int VK_DIVIDE = 0x6F;
constexpr int VK_F1 = 0x70;
constexpr int VK_F2 = 0x71;
constexpr int VK_F4 = 0x73;
constexpr int VK_F5 = 0x74;
constexpr int VK_F6 = 0x75;
constexpr int VK_F10 = 0x79;
constexpr int VK_F12 = 0x7B;
constexpr int VK_NUMLOCK = 0x90;
constexpr int VK_SCROLL = 0x91;

/// Negative while the key is down; the lowest bit is the toggle. As of the last message taken from the queue.
SHORT GetKeyState(int key);
/// As of now.
SHORT GetAsyncKeyState(int key);
BOOL GetKeyboardState(BYTE* states);
BOOL SetKeyboardState(BYTE* states);
int GetKeyNameTextA(LONG lParam, LPSTR buffer, int size);
SHORT VkKeyScanA(CHAR character);
constexpr UINT MAPVK_VK_TO_VSC = 0;
constexpr UINT MAPVK_VSC_TO_VK = 1;
constexpr UINT MAPVK_VK_TO_CHAR = 2;
UINT MapVirtualKeyA(UINT code, UINT kind);
VNDK_TEXT_CALL(GetKeyNameText);
VNDK_TEXT_CALL(VkKeyScan);
VNDK_TEXT_CALL(MapVirtualKey);

BOOL MessageBeep(UINT kind);

constexpr UINT CF_TEXT = 1;
constexpr UINT CF_BITMAP = 2;
constexpr UINT CF_OEMTEXT = 7;
constexpr UINT CF_UNICODETEXT = 13;
BOOL OpenClipboard(HWND window);
BOOL CloseClipboard();
BOOL EmptyClipboard();
/// Takes over the memory block (GlobalAlloc).
HANDLE SetClipboardData(UINT format, HANDLE data);
/// Owned by the clipboard; valid until it is emptied or closed.
HANDLE GetClipboardData(UINT format);
BOOL IsClipboardFormatAvailable(UINT format);
UINT RegisterClipboardFormatA(LPCSTR name);
VNDK_TEXT_CALL(RegisterClipboardFormat);
