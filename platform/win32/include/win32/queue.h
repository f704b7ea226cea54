// The thread's message queue, timers, and the clock.
//
// Order in which messages come: sent ones are delivered at once; then posted ones, then the quit message, then input,
// then WM_PAINT, then timers. GetMessage waits on the screen's events.
#pragma once

#include "win32/messages.h"

/// 0 for WM_QUIT, -1 for a bad window, else non-zero. A range of 0, 0 takes all messages; a window takes its own and
/// its children's.
BOOL GetMessageA(MSG* message, HWND window, UINT first, UINT last);
constexpr UINT PM_NOREMOVE = 0;
constexpr UINT PM_REMOVE = 1;
constexpr UINT PM_NOYIELD = 2;
BOOL PeekMessageA(MSG* message, HWND window, UINT first, UINT last, UINT flags);
/// Posts the characters of a key message. Non-zero when it was one.
BOOL TranslateMessage(const MSG* message);
LRESULT DispatchMessageA(const MSG* message);
VNDK_TEXT_CALL(GetMessage);
VNDK_TEXT_CALL(PeekMessage);
VNDK_TEXT_CALL(DispatchMessage);
BOOL WaitMessage();
void PostQuitMessage(int exitCode);
DWORD GetMessagePos();
LONG GetMessageTime();
LPARAM GetMessageExtraInfo();
BOOL InSendMessage();

constexpr UINT QS_KEY = 0x0001;
constexpr UINT QS_MOUSEMOVE = 0x0002;
constexpr UINT QS_MOUSEBUTTON = 0x0004;
constexpr UINT QS_POSTMESSAGE = 0x0008;
constexpr UINT QS_TIMER = 0x0010;
constexpr UINT QS_PAINT = 0x0020;
constexpr UINT QS_SENDMESSAGE = 0x0040;
constexpr UINT QS_MOUSE = QS_MOUSEMOVE | QS_MOUSEBUTTON;
constexpr UINT QS_INPUT = QS_MOUSE | QS_KEY;
constexpr UINT QS_ALLINPUT = QS_INPUT | QS_POSTMESSAGE | QS_TIMER | QS_PAINT | QS_SENDMESSAGE;
/// Low word: what came since the last call; high word: what is in the queue.
DWORD GetQueueStatus(UINT flags);

using TIMERPROC = void(CALLBACK*)(HWND window, UINT message, UINT_PTR id, DWORD time);
constexpr UINT USER_TIMER_MINIMUM = 0x0000000A;
/// The timer's id, 0 on failure. With a window the id given is kept and an equal one reset; without, a new id is made.
UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT milliseconds, TIMERPROC procedure);
BOOL KillTimer(HWND window, UINT_PTR id);
DWORD GetTickCount();

// Filters. The newest hook is called first and passes on with CallNextHookEx.
VNDK_DECLARE_HANDLE(HHOOK);
using HOOKPROC = LRESULT(CALLBACK*)(int code, WPARAM wParam, LPARAM lParam);
constexpr int WH_MSGFILTER = -1;      // lParam: MSG*; code: MSGF_*; non-zero eats the message
constexpr int WH_GETMESSAGE = 3;      // lParam: MSG*, may be changed
constexpr int WH_CALLWNDPROC = 4;     // lParam: CWPSTRUCT*
constexpr int WH_CBT = 5;             // code HCBT_*
constexpr int WH_CALLWNDPROCRET = 12; // lParam: CWPRETSTRUCT*
constexpr int MSGF_DIALOGBOX = 0;
constexpr int MSGF_MESSAGEBOX = 1;
constexpr int MSGF_MENU = 2;
constexpr int MSGF_MOVE = 3; // moving, sizing, and the buttons of a caption
constexpr int MSGF_SCROLLBAR = 5;
constexpr int HC_ACTION = 0;
constexpr int HCBT_MOVESIZE = 0;
constexpr int HCBT_MINMAX = 1;
constexpr int HCBT_CREATEWND = 3; // wParam: the window; non-zero refuses it
constexpr int HCBT_DESTROYWND = 4;
constexpr int HCBT_ACTIVATE = 5;
constexpr int HCBT_SYSCOMMAND = 8;
constexpr int HCBT_SETFOCUS = 9;
struct CWPSTRUCT {
    LPARAM lParam;
    WPARAM wParam;
    UINT message;
    HWND hwnd;
};
struct CWPRETSTRUCT {
    LRESULT lResult;
    LPARAM lParam;
    WPARAM wParam;
    UINT message;
    HWND hwnd;
};
/// lParam of HCBT_CREATEWND. The hook may change place and size.
struct CBT_CREATEWNDA {
    CREATESTRUCTA* lpcs;
    HWND hwndInsertAfter;
};
using CBT_CREATEWND = CBT_CREATEWNDA;
using LPCBT_CREATEWND = CBT_CREATEWND*;
/// lParam of HCBT_ACTIVATE.
struct CBTACTIVATESTRUCT {
    BOOL fMouse;
    HWND hWndActive; // the one before
};
HHOOK SetWindowsHookExA(int kind, HOOKPROC procedure, HINSTANCE instance, DWORD thread);
BOOL UnhookWindowsHookEx(HHOOK hook);
LRESULT CallNextHookEx(HHOOK hook, int code, WPARAM wParam, LPARAM lParam);
BOOL CallMsgFilterA(MSG* message, int code);
VNDK_TEXT_CALL(SetWindowsHookEx);
VNDK_TEXT_CALL(CallMsgFilter);
DWORD GetCurrentThreadId();
