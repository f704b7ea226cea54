// Tool tips: the class "tooltips_class32". One window serves any number of tools: rectangles of windows, or whole
// windows, each with a text.
//
// A tip shows after the pointer has rested on a tool; the control hears of the pointer by TTM_RELAYEVENT, or by itself
// for tools with TTF_SUBCLASS. Texts are copied; LPSTR_TEXTCALLBACK asks the tool's window by TTN_GETDISPINFO.
#pragma once

#include "win32/commctrl.h"
#include "win32/resources.h"
#include "win32/window.h"

inline constexpr char TOOLTIPS_CLASSA[] = "tooltips_class32";
inline constexpr const char* TOOLTIPS_CLASS = TOOLTIPS_CLASSA;

constexpr DWORD TTS_ALWAYSTIP = 0x01; // also while the owner isn't active
constexpr DWORD TTS_NOPREFIX = 0x02;  // ampersands are shown

constexpr UINT TTF_IDISHWND = 0x0001; // uId is a window: all of it is the tool
constexpr UINT TTF_CENTERTIP = 0x0002;
constexpr UINT TTF_RTLREADING = 0x0004;
constexpr UINT TTF_SUBCLASS = 0x0010;
constexpr UINT TTF_TRACK = 0x0020;
constexpr UINT TTF_ABSOLUTE = 0x0080;
constexpr UINT TTF_TRANSPARENT = 0x0100;
constexpr UINT TTF_DI_SETITEM = 0x8000; // answer to TTN_GETDISPINFO: keep the text

struct TOOLINFOA {
    UINT cbSize; // with or without lParam
    UINT uFlags;
    HWND hwnd;
    UINT_PTR uId;
    RECT rect; // client coordinates of hwnd; not used with TTF_IDISHWND
    HINSTANCE hinst;
    LPSTR lpszText; // text, a string's number in hinst, or LPSTR_TEXTCALLBACK
    LPARAM lParam;
};
using TOOLINFO = TOOLINFOA;
using TTTOOLINFO = TOOLINFOA;
using LPTOOLINFO = TOOLINFOA*;

constexpr WPARAM TTDT_AUTOMATIC = 0;
constexpr WPARAM TTDT_RESHOW = 1;
constexpr WPARAM TTDT_AUTOPOP = 2;
constexpr WPARAM TTDT_INITIAL = 3;

constexpr UINT TTM_ACTIVATE = WM_USER + 1; // wParam: on or off
constexpr UINT TTM_SETDELAYTIME = WM_USER + 3;
constexpr UINT TTM_ADDTOOLA = WM_USER + 4;
constexpr UINT TTM_DELTOOLA = WM_USER + 5;
constexpr UINT TTM_NEWTOOLRECTA = WM_USER + 6;
constexpr UINT TTM_RELAYEVENT = WM_USER + 7; // lParam: MSG*
constexpr UINT TTM_GETTOOLINFOA = WM_USER + 8;
constexpr UINT TTM_SETTOOLINFOA = WM_USER + 9;
constexpr UINT TTM_HITTESTA = WM_USER + 10;
constexpr UINT TTM_GETTEXTA = WM_USER + 11;
constexpr UINT TTM_UPDATETIPTEXTA = WM_USER + 12;
constexpr UINT TTM_GETTOOLCOUNT = WM_USER + 13;
constexpr UINT TTM_ENUMTOOLSA = WM_USER + 14;
constexpr UINT TTM_GETCURRENTTOOLA = WM_USER + 15;
constexpr UINT TTM_WINDOWFROMPOINT = WM_USER + 16;
constexpr UINT TTM_TRACKACTIVATE = WM_USER + 17;
constexpr UINT TTM_TRACKPOSITION = WM_USER + 18;
constexpr UINT TTM_SETTIPBKCOLOR = WM_USER + 19;
constexpr UINT TTM_SETTIPTEXTCOLOR = WM_USER + 20;
constexpr UINT TTM_GETDELAYTIME = WM_USER + 21;
constexpr UINT TTM_GETTIPBKCOLOR = WM_USER + 22;
constexpr UINT TTM_GETTIPTEXTCOLOR = WM_USER + 23;
constexpr UINT TTM_SETMAXTIPWIDTH = WM_USER + 24;
constexpr UINT TTM_GETMAXTIPWIDTH = WM_USER + 25;
constexpr UINT TTM_SETMARGIN = WM_USER + 26;
constexpr UINT TTM_GETMARGIN = WM_USER + 27;
constexpr UINT TTM_POP = WM_USER + 28;
constexpr UINT TTM_UPDATE = WM_USER + 29;
constexpr UINT TTM_GETBUBBLESIZE = WM_USER + 30;
constexpr UINT TTM_ADDTOOL = TTM_ADDTOOLA;
constexpr UINT TTM_DELTOOL = TTM_DELTOOLA;
constexpr UINT TTM_NEWTOOLRECT = TTM_NEWTOOLRECTA;
constexpr UINT TTM_GETTOOLINFO = TTM_GETTOOLINFOA;
constexpr UINT TTM_SETTOOLINFO = TTM_SETTOOLINFOA;
constexpr UINT TTM_HITTEST = TTM_HITTESTA;
constexpr UINT TTM_GETTEXT = TTM_GETTEXTA;
constexpr UINT TTM_UPDATETIPTEXT = TTM_UPDATETIPTEXTA;
constexpr UINT TTM_ENUMTOOLS = TTM_ENUMTOOLSA;
constexpr UINT TTM_GETCURRENTTOOL = TTM_GETCURRENTTOOLA;

struct TTHITTESTINFOA {
    HWND hwnd;
    POINT pt; // client coordinates of hwnd
    TOOLINFOA ti;
};
using TTHITTESTINFO = TTHITTESTINFOA;

constexpr UINT TTN_FIRST = 0U - 520U;
constexpr UINT TTN_GETDISPINFOA = TTN_FIRST - 0U;
constexpr UINT TTN_SHOW = TTN_FIRST - 1U; // non-zero: the owner has placed the tip
constexpr UINT TTN_POP = TTN_FIRST - 2U;
constexpr UINT TTN_GETDISPINFO = TTN_GETDISPINFOA;
constexpr UINT TTN_NEEDTEXT = TTN_GETDISPINFOA;
struct NMTTDISPINFOA {
    NMHDR hdr;
    LPSTR lpszText; // szText at first
    char szText[80];
    HINSTANCE hinst;
    UINT uFlags;
    LPARAM lParam;
};
using NMTTDISPINFO = NMTTDISPINFOA;
using TOOLTIPTEXT = NMTTDISPINFOA;
