// Windows: classes, creation, place, order, style, text, properties; sending and posting of messages.
//
// Coordinates are pixels. Of a top-level window they are screen coordinates, of a child they count from the parent's
// client area. A handle that is dead or no window's makes every call answer 0, FALSE or null with
// ERROR_INVALID_WINDOW_HANDLE. A window procedure that throws is cut off there: the exception is logged and the message
// answers 0.
#pragma once

#include "win32/messages.h"
#include "win32/types.h"

using WNDPROC = LRESULT(CALLBACK*)(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND window, LPARAM lParam);

constexpr DWORD ERROR_INVALID_WINDOW_HANDLE = 1400;
constexpr DWORD ERROR_INVALID_MENU_HANDLE = 1401;
constexpr DWORD ERROR_CANNOT_FIND_WND_CLASS = 1407;
constexpr DWORD ERROR_CLASS_ALREADY_EXISTS = 1410;
constexpr DWORD ERROR_CLASS_DOES_NOT_EXIST = 1411;
constexpr DWORD ERROR_CLASS_HAS_WINDOWS = 1412;
constexpr DWORD ERROR_INVALID_INDEX = 1413;
constexpr DWORD ERROR_CONTROL_ID_NOT_FOUND = 1421;
constexpr DWORD ERROR_TLW_WITH_WSCHILD = 1406;

constexpr UINT CS_VREDRAW = 0x0001;
constexpr UINT CS_HREDRAW = 0x0002;
constexpr UINT CS_DBLCLKS = 0x0008;
constexpr UINT CS_OWNDC = 0x0020;
constexpr UINT CS_CLASSDC = 0x0040;
constexpr UINT CS_PARENTDC = 0x0080;
constexpr UINT CS_NOCLOSE = 0x0200;
constexpr UINT CS_SAVEBITS = 0x0800;
constexpr UINT CS_GLOBALCLASS = 0x4000;

constexpr DWORD WS_OVERLAPPED = 0x00000000;
constexpr DWORD WS_POPUP = 0x80000000;
constexpr DWORD WS_CHILD = 0x40000000;
constexpr DWORD WS_CHILDWINDOW = WS_CHILD;
constexpr DWORD WS_MINIMIZE = 0x20000000;
constexpr DWORD WS_VISIBLE = 0x10000000;
constexpr DWORD WS_DISABLED = 0x08000000;
constexpr DWORD WS_CLIPSIBLINGS = 0x04000000;
constexpr DWORD WS_CLIPCHILDREN = 0x02000000;
constexpr DWORD WS_MAXIMIZE = 0x01000000;
constexpr DWORD WS_CAPTION = 0x00C00000;
constexpr DWORD WS_BORDER = 0x00800000;
constexpr DWORD WS_DLGFRAME = 0x00400000;
constexpr DWORD WS_VSCROLL = 0x00200000;
constexpr DWORD WS_HSCROLL = 0x00100000;
constexpr DWORD WS_SYSMENU = 0x00080000;
constexpr DWORD WS_THICKFRAME = 0x00040000;
constexpr DWORD WS_SIZEBOX = WS_THICKFRAME;
constexpr DWORD WS_GROUP = 0x00020000;
constexpr DWORD WS_TABSTOP = 0x00010000;
constexpr DWORD WS_MINIMIZEBOX = 0x00020000;
constexpr DWORD WS_MAXIMIZEBOX = 0x00010000;
constexpr DWORD WS_OVERLAPPEDWINDOW =
    WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX;
constexpr DWORD WS_POPUPWINDOW = WS_POPUP | WS_BORDER | WS_SYSMENU;

constexpr DWORD WS_EX_DLGMODALFRAME = 0x00000001;
constexpr DWORD WS_EX_NOPARENTNOTIFY = 0x00000004;
constexpr DWORD WS_EX_TOPMOST = 0x00000008;
constexpr DWORD WS_EX_TRANSPARENT = 0x00000020;
constexpr DWORD WS_EX_MDICHILD = 0x00000040;
constexpr DWORD WS_EX_TOOLWINDOW = 0x00000080;
constexpr DWORD WS_EX_WINDOWEDGE = 0x00000100;
constexpr DWORD WS_EX_CLIENTEDGE = 0x00000200;
constexpr DWORD WS_EX_CONTEXTHELP = 0x00000400;
constexpr DWORD WS_EX_RIGHT = 0x00001000;
constexpr DWORD WS_EX_LEFTSCROLLBAR = 0x00004000;
constexpr DWORD WS_EX_CONTROLPARENT = 0x00010000;
constexpr DWORD WS_EX_STATICEDGE = 0x00020000;
constexpr DWORD WS_EX_APPWINDOW = 0x00040000;
constexpr DWORD WS_EX_NOACTIVATE = 0x08000000;
constexpr DWORD WS_EX_OVERLAPPEDWINDOW = WS_EX_WINDOWEDGE | WS_EX_CLIENTEDGE;

constexpr int CW_USEDEFAULT = static_cast<int>(0x80000000U);

struct WNDCLASSA {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground; // a brush, or a system colour's number + 1
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
};
using WNDCLASS = WNDCLASSA;

struct WNDCLASSEXA {
    UINT cbSize;
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCSTR lpszMenuName;
    LPCSTR lpszClassName;
    HICON hIconSm;
};
using WNDCLASSEX = WNDCLASSEXA;

/// 0 when the name is taken (ERROR_CLASS_ALREADY_EXISTS) or an argument is bad. Names compare without regard to case.
ATOM RegisterClassA(const WNDCLASSA* windowClass);
ATOM RegisterClassExA(const WNDCLASSEXA* windowClass);
BOOL UnregisterClassA(LPCSTR name, HINSTANCE instance);
BOOL GetClassInfoA(HINSTANCE instance, LPCSTR name, WNDCLASSA* windowClass);
int GetClassNameA(HWND window, LPSTR buffer, int size);
VNDK_TEXT_CALL(RegisterClass);
VNDK_TEXT_CALL(RegisterClassEx);
VNDK_TEXT_CALL(UnregisterClass);
VNDK_TEXT_CALL(GetClassInfo);
VNDK_TEXT_CALL(GetClassName);

/// The class is a name or an atom. For a child `menu` is its id. Null when the class is missing, the parent is dead, or
/// WM_NCCREATE or WM_CREATE refused.
HWND CreateWindowExA(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, int x, int y, int width, int height,
                     HWND parent, HMENU menu, HINSTANCE instance, LPVOID parameter);
inline HWND CreateWindowA(LPCSTR className, LPCSTR name, DWORD style, int x, int y, int width, int height, HWND parent,
                          HMENU menu, HINSTANCE instance, LPVOID parameter) {
    return CreateWindowExA(0, className, name, style, x, y, width, height, parent, menu, instance, parameter);
}
VNDK_TEXT_CALL(CreateWindowEx);
VNDK_TEXT_CALL(CreateWindow);
BOOL DestroyWindow(HWND window);
BOOL IsWindow(HWND window);

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
LRESULT CallWindowProcA(WNDPROC procedure, HWND window, UINT message, WPARAM wParam, LPARAM lParam);
VNDK_TEXT_CALL(DefWindowProc);
VNDK_TEXT_CALL(CallWindowProc);

inline const HWND HWND_DESKTOP = nullptr;
inline const HWND HWND_TOP = nullptr;
inline const HWND HWND_BOTTOM = reinterpret_cast<HWND>(UINT_PTR{1});
inline const HWND HWND_TOPMOST = reinterpret_cast<HWND>(~UINT_PTR{0});
inline const HWND HWND_NOTOPMOST = reinterpret_cast<HWND>(~UINT_PTR{1});
inline const HWND HWND_BROADCAST = reinterpret_cast<HWND>(UINT_PTR{0xFFFF});

constexpr UINT SWP_NOSIZE = 0x0001;
constexpr UINT SWP_NOMOVE = 0x0002;
constexpr UINT SWP_NOZORDER = 0x0004;
constexpr UINT SWP_NOREDRAW = 0x0008;
constexpr UINT SWP_NOACTIVATE = 0x0010;
constexpr UINT SWP_FRAMECHANGED = 0x0020;
constexpr UINT SWP_DRAWFRAME = SWP_FRAMECHANGED;
constexpr UINT SWP_SHOWWINDOW = 0x0040;
constexpr UINT SWP_HIDEWINDOW = 0x0080;
constexpr UINT SWP_NOCOPYBITS = 0x0100;
constexpr UINT SWP_NOOWNERZORDER = 0x0200;
constexpr UINT SWP_NOREPOSITION = SWP_NOOWNERZORDER;
constexpr UINT SWP_NOSENDCHANGING = 0x0400;
// Seen in WM_WINDOWPOSCHANGED only: the client area kept its size, its place; the state (normal, minimised...) changes.
constexpr UINT SWP_NOCLIENTSIZE = 0x0800;
constexpr UINT SWP_NOCLIENTMOVE = 0x1000;
constexpr UINT SWP_DEFERERASE = 0x2000;
constexpr UINT SWP_ASYNCWINDOWPOS = 0x4000;
constexpr UINT SWP_STATECHANGED = 0x8000;

constexpr int SW_HIDE = 0;
constexpr int SW_SHOWNORMAL = 1;
constexpr int SW_NORMAL = 1;
constexpr int SW_SHOWMINIMIZED = 2;
constexpr int SW_SHOWMAXIMIZED = 3;
constexpr int SW_MAXIMIZE = 3;
constexpr int SW_SHOWNOACTIVATE = 4;
constexpr int SW_SHOW = 5;
constexpr int SW_MINIMIZE = 6;
constexpr int SW_SHOWMINNOACTIVE = 7;
constexpr int SW_SHOWNA = 8;
constexpr int SW_RESTORE = 9;
constexpr int SW_SHOWDEFAULT = 10;

/// Non-zero when the window was visible before.
BOOL ShowWindow(HWND window, int command);
BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags);
BOOL MoveWindow(HWND window, int x, int y, int width, int height, BOOL repaint);
HDWP BeginDeferWindowPos(int count);
HDWP DeferWindowPos(HDWP positions, HWND window, HWND insertAfter, int x, int y, int width, int height, UINT flags);
BOOL EndDeferWindowPos(HDWP positions);
BOOL BringWindowToTop(HWND window);

constexpr UINT WPF_SETMINPOSITION = 0x0001;
constexpr UINT WPF_RESTORETOMAXIMIZED = 0x0002;
struct WINDOWPLACEMENT {
    UINT length;
    UINT flags;
    UINT showCmd;
    POINT ptMinPosition;
    POINT ptMaxPosition;
    RECT rcNormalPosition;
};
BOOL GetWindowPlacement(HWND window, WINDOWPLACEMENT* placement);
BOOL SetWindowPlacement(HWND window, const WINDOWPLACEMENT* placement);
/// Hides the visible popups that a window owns, or shows those again that were hidden so.
BOOL ShowOwnedPopups(HWND owner, BOOL show);
BOOL OpenIcon(HWND window);
BOOL CloseWindow(HWND window);

BOOL IsWindowVisible(HWND window); // its own bit and those of all its ancestors
BOOL IsWindowEnabled(HWND window);
BOOL IsIconic(HWND window);
BOOL IsZoomed(HWND window);
BOOL IsChild(HWND parent, HWND window);
/// Non-zero when the window was disabled before.
BOOL EnableWindow(HWND window, BOOL enable);

BOOL GetWindowRect(HWND window, RECT* rect); // screen coordinates
BOOL GetClientRect(HWND window, RECT* rect); // origin 0, 0
BOOL ClientToScreen(HWND window, POINT* point);
BOOL ScreenToClient(HWND window, POINT* point);
/// Null windows stand for the screen. The shift: y in the high word, x in the low.
int MapWindowPoints(HWND from, HWND to, POINT* points, UINT count);
BOOL AdjustWindowRect(RECT* rect, DWORD style, BOOL menu);
BOOL AdjustWindowRectEx(RECT* rect, DWORD style, BOOL menu, DWORD exStyle);

/// The innermost visible window under a point of the screen that doesn't answer HTTRANSPARENT; disabled ones are passed
/// over for their parent.
HWND WindowFromPoint(POINT point);
constexpr UINT CWP_ALL = 0;
constexpr UINT CWP_SKIPINVISIBLE = 1;
constexpr UINT CWP_SKIPDISABLED = 2;
constexpr UINT CWP_SKIPTRANSPARENT = 4;
HWND ChildWindowFromPoint(HWND parent, POINT point);
HWND ChildWindowFromPointEx(HWND parent, POINT point, UINT flags);
HWND RealChildWindowFromPoint(HWND parent, POINT point);

HWND GetDesktopWindow();
/// The parent of a child, the owner of a top-level popup.
HWND GetParent(HWND window);
/// The former parent.
HWND SetParent(HWND window, HWND parent);
constexpr UINT GA_PARENT = 1;
constexpr UINT GA_ROOT = 2;
constexpr UINT GA_ROOTOWNER = 3;
HWND GetAncestor(HWND window, UINT which);
constexpr UINT GW_HWNDFIRST = 0;
constexpr UINT GW_HWNDLAST = 1;
constexpr UINT GW_HWNDNEXT = 2;
constexpr UINT GW_HWNDPREV = 3;
constexpr UINT GW_OWNER = 4;
constexpr UINT GW_CHILD = 5;
HWND GetWindow(HWND window, UINT which);
HWND GetTopWindow(HWND parent);
inline HWND GetNextWindow(HWND window, UINT which) { return GetWindow(window, which); }
HWND GetLastActivePopup(HWND window);
BOOL EnumChildWindows(HWND parent, WNDENUMPROC visit, LPARAM lParam);
BOOL EnumWindows(WNDENUMPROC visit, LPARAM lParam);
HWND FindWindowA(LPCSTR className, LPCSTR name);
HWND FindWindowExA(HWND parent, HWND after, LPCSTR className, LPCSTR name);
VNDK_TEXT_CALL(FindWindow);
VNDK_TEXT_CALL(FindWindowEx);

// Numbers kept with a window; indexes from 0 on are the class's extra bytes.
constexpr int GWL_WNDPROC = -4;
constexpr int GWL_HINSTANCE = -6;
constexpr int GWL_HWNDPARENT = -8;
constexpr int GWL_ID = -12;
constexpr int GWL_STYLE = -16;
constexpr int GWL_EXSTYLE = -20;
constexpr int GWL_USERDATA = -21;
constexpr int GWLP_WNDPROC = GWL_WNDPROC;
constexpr int GWLP_USERDATA = GWL_USERDATA;
constexpr int DWL_MSGRESULT = 0;
constexpr int DWL_DLGPROC = 8;
constexpr int DWL_USER = 16;
constexpr int DLGWINDOWEXTRA = 48;
LONG GetWindowLongA(HWND window, int index);
LONG SetWindowLongA(HWND window, int index, LONG value);
/// Pointer-sized; for pointers, procedures and handles these have to be used.
LONG_PTR GetWindowLongPtrA(HWND window, int index);
LONG_PTR SetWindowLongPtrA(HWND window, int index, LONG_PTR value);
VNDK_TEXT_CALL(GetWindowLong);
VNDK_TEXT_CALL(SetWindowLong);
VNDK_TEXT_CALL(GetWindowLongPtr);
VNDK_TEXT_CALL(SetWindowLongPtr);

constexpr int GCL_MENUNAME = -8;
constexpr int GCL_HBRBACKGROUND = -10;
constexpr int GCL_HCURSOR = -12;
constexpr int GCL_HICON = -14;
constexpr int GCL_HMODULE = -16;
constexpr int GCL_CBWNDEXTRA = -18;
constexpr int GCL_CBCLSEXTRA = -20;
constexpr int GCL_WNDPROC = -24;
constexpr int GCL_STYLE = -26;
constexpr int GCW_ATOM = -32;
constexpr int GCL_HICONSM = -34;
ULONG_PTR GetClassLongPtrA(HWND window, int index);
ULONG_PTR SetClassLongPtrA(HWND window, int index, LONG_PTR value);
VNDK_TEXT_CALL(GetClassLongPtr);
VNDK_TEXT_CALL(SetClassLongPtr);

BOOL SetPropA(HWND window, LPCSTR name, HANDLE value);
HANDLE GetPropA(HWND window, LPCSTR name);
HANDLE RemovePropA(HWND window, LPCSTR name);
VNDK_TEXT_CALL(SetProp);
VNDK_TEXT_CALL(GetProp);
VNDK_TEXT_CALL(RemoveProp);

BOOL SetWindowTextA(HWND window, LPCSTR text);
int GetWindowTextA(HWND window, LPSTR buffer, int size);
int GetWindowTextLengthA(HWND window);
VNDK_TEXT_CALL(SetWindowText);
VNDK_TEXT_CALL(GetWindowText);
VNDK_TEXT_CALL(GetWindowTextLength);

LRESULT SendMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// Null posts to the thread. FALSE for a dead window or a full queue (10,000 messages).
BOOL PostMessageA(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
VNDK_TEXT_CALL(SendMessage);
VNDK_TEXT_CALL(PostMessage);
/// The same number for the same name until the program ends, from 0xC000 on.
UINT RegisterWindowMessageA(LPCSTR name);
VNDK_TEXT_CALL(RegisterWindowMessage);
