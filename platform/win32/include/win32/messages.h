// Numbers of the window messages, and the structures that travel with them. Messages of a control's own stand with the
// control.
#pragma once

#include "win32/types.h"

// Life of a window.
constexpr UINT WM_NULL = 0x0000;
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_MOVE = 0x0003;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_ACTIVATE = 0x0006;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_ENABLE = 0x000A;
constexpr UINT WM_SETREDRAW = 0x000B;
constexpr UINT WM_SETTEXT = 0x000C;
constexpr UINT WM_GETTEXT = 0x000D;
constexpr UINT WM_GETTEXTLENGTH = 0x000E;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_QUERYENDSESSION = 0x0011;
constexpr UINT WM_QUIT = 0x0012;
constexpr UINT WM_QUERYOPEN = 0x0013;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_SYSCOLORCHANGE = 0x0015;
constexpr UINT WM_SHOWWINDOW = 0x0018;
constexpr UINT WM_SETTINGCHANGE = 0x001A;
constexpr UINT WM_ACTIVATEAPP = 0x001C;
constexpr UINT WM_CANCELMODE = 0x001F;
constexpr UINT WM_SETCURSOR = 0x0020;
constexpr UINT WM_MOUSEACTIVATE = 0x0021;
constexpr UINT WM_CHILDACTIVATE = 0x0022;
constexpr UINT WM_GETMINMAXINFO = 0x0024;
constexpr UINT WM_NEXTDLGCTL = 0x0028;
constexpr UINT WM_DRAWITEM = 0x002B;
constexpr UINT WM_MEASUREITEM = 0x002C;
constexpr UINT WM_DELETEITEM = 0x002D;
constexpr UINT WM_VKEYTOITEM = 0x002E;
constexpr UINT WM_CHARTOITEM = 0x002F;
constexpr UINT WM_SETFONT = 0x0030;
constexpr UINT WM_GETFONT = 0x0031;
constexpr UINT WM_QUERYDRAGICON = 0x0037;
constexpr UINT WM_COMPAREITEM = 0x0039;
constexpr UINT WM_WINDOWPOSCHANGING = 0x0046;
constexpr UINT WM_WINDOWPOSCHANGED = 0x0047;
constexpr UINT WM_NOTIFY = 0x004E;
constexpr UINT WM_HELP = 0x0053;
constexpr UINT WM_NOTIFYFORMAT = 0x0055;
constexpr UINT WM_CONTEXTMENU = 0x007B;
constexpr UINT WM_STYLECHANGING = 0x007C;
constexpr UINT WM_STYLECHANGED = 0x007D;
constexpr UINT WM_DISPLAYCHANGE = 0x007E;
constexpr UINT WM_GETICON = 0x007F;
constexpr UINT WM_SETICON = 0x0080;

// Non-client area.
constexpr UINT WM_NCCREATE = 0x0081;
constexpr UINT WM_NCDESTROY = 0x0082;
constexpr UINT WM_NCCALCSIZE = 0x0083;
constexpr UINT WM_NCHITTEST = 0x0084;
constexpr UINT WM_NCPAINT = 0x0085;
constexpr UINT WM_NCACTIVATE = 0x0086;
constexpr UINT WM_GETDLGCODE = 0x0087;
constexpr UINT WM_NCMOUSEMOVE = 0x00A0;
constexpr UINT WM_NCLBUTTONDOWN = 0x00A1;
constexpr UINT WM_NCLBUTTONUP = 0x00A2;
constexpr UINT WM_NCLBUTTONDBLCLK = 0x00A3;
constexpr UINT WM_NCRBUTTONDOWN = 0x00A4;
constexpr UINT WM_NCRBUTTONUP = 0x00A5;
constexpr UINT WM_NCRBUTTONDBLCLK = 0x00A6;
constexpr UINT WM_NCMBUTTONDOWN = 0x00A7;
constexpr UINT WM_NCMBUTTONUP = 0x00A8;
constexpr UINT WM_NCMBUTTONDBLCLK = 0x00A9;

// Keyboard.
constexpr UINT WM_KEYFIRST = 0x0100;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_DEADCHAR = 0x0103;
constexpr UINT WM_SYSKEYDOWN = 0x0104;
constexpr UINT WM_SYSKEYUP = 0x0105;
constexpr UINT WM_SYSCHAR = 0x0106;
constexpr UINT WM_SYSDEADCHAR = 0x0107;
constexpr UINT WM_KEYLAST = 0x0108;

constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_COMMAND = 0x0111;
constexpr UINT WM_SYSCOMMAND = 0x0112;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_HSCROLL = 0x0114;
constexpr UINT WM_VSCROLL = 0x0115;
constexpr UINT WM_INITMENU = 0x0116;
constexpr UINT WM_INITMENUPOPUP = 0x0117;
constexpr UINT WM_SYSTIMER = 0x0118;
constexpr UINT WM_MENUSELECT = 0x011F;
constexpr UINT WM_MENUCHAR = 0x0120;
constexpr UINT WM_ENTERIDLE = 0x0121;
constexpr UINT WM_MENURBUTTONUP = 0x0122;
constexpr UINT WM_UNINITMENUPOPUP = 0x0125;
constexpr UINT WM_CHANGEUISTATE = 0x0127;
constexpr UINT WM_UPDATEUISTATE = 0x0128;
constexpr UINT WM_QUERYUISTATE = 0x0129;
constexpr UINT WM_CTLCOLORMSGBOX = 0x0132;
constexpr UINT WM_CTLCOLOREDIT = 0x0133;
constexpr UINT WM_CTLCOLORLISTBOX = 0x0134;
constexpr UINT WM_CTLCOLORBTN = 0x0135;
constexpr UINT WM_CTLCOLORDLG = 0x0136;
constexpr UINT WM_CTLCOLORSCROLLBAR = 0x0137;
constexpr UINT WM_CTLCOLORSTATIC = 0x0138;

// Mouse.
constexpr UINT WM_MOUSEFIRST = 0x0200;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_RBUTTONUP = 0x0205;
constexpr UINT WM_RBUTTONDBLCLK = 0x0206;
constexpr UINT WM_MBUTTONDOWN = 0x0207;
constexpr UINT WM_MBUTTONUP = 0x0208;
constexpr UINT WM_MBUTTONDBLCLK = 0x0209;
constexpr UINT WM_MOUSEWHEEL = 0x020A;
constexpr UINT WM_MOUSELAST = 0x020A;
constexpr UINT WM_PARENTNOTIFY = 0x0210;
constexpr UINT WM_ENTERMENULOOP = 0x0211;
constexpr UINT WM_EXITMENULOOP = 0x0212;
constexpr UINT WM_NEXTMENU = 0x0213;
constexpr UINT WM_SIZING = 0x0214;
constexpr UINT WM_CAPTURECHANGED = 0x0215;
constexpr UINT WM_MOVING = 0x0216;
constexpr UINT WM_ENTERSIZEMOVE = 0x0231;
constexpr UINT WM_EXITSIZEMOVE = 0x0232;
constexpr UINT WM_MOUSEHOVER = 0x02A1;
constexpr UINT WM_MOUSELEAVE = 0x02A3;

// Clipboard.
constexpr UINT WM_CUT = 0x0300;
constexpr UINT WM_COPY = 0x0301;
constexpr UINT WM_PASTE = 0x0302;
constexpr UINT WM_CLEAR = 0x0303;
constexpr UINT WM_UNDO = 0x0304;
constexpr UINT WM_PRINT = 0x0317;
constexpr UINT WM_PRINTCLIENT = 0x0318;

constexpr UINT WM_USER = 0x0400;
constexpr UINT WM_APP = 0x8000;

// wParam of WM_SIZE.
constexpr WPARAM SIZE_RESTORED = 0;
constexpr WPARAM SIZE_MINIMIZED = 1;
constexpr WPARAM SIZE_MAXIMIZED = 2;
constexpr WPARAM SIZE_MAXSHOW = 3;
constexpr WPARAM SIZE_MAXHIDE = 4;

// Low word of wParam of WM_ACTIVATE.
constexpr WORD WA_INACTIVE = 0;
constexpr WORD WA_ACTIVE = 1;
constexpr WORD WA_CLICKACTIVE = 2;

// Results of WM_MOUSEACTIVATE.
constexpr LRESULT MA_ACTIVATE = 1;
constexpr LRESULT MA_ACTIVATEANDEAT = 2;
constexpr LRESULT MA_NOACTIVATE = 3;
constexpr LRESULT MA_NOACTIVATEANDEAT = 4;

// wParam of WM_SIZING.
constexpr WPARAM WMSZ_LEFT = 1;
constexpr WPARAM WMSZ_RIGHT = 2;
constexpr WPARAM WMSZ_TOP = 3;
constexpr WPARAM WMSZ_TOPLEFT = 4;
constexpr WPARAM WMSZ_TOPRIGHT = 5;
constexpr WPARAM WMSZ_BOTTOM = 6;
constexpr WPARAM WMSZ_BOTTOMLEFT = 7;
constexpr WPARAM WMSZ_BOTTOMRIGHT = 8;

// Results of WM_NCHITTEST.
constexpr int HTERROR = -2;
constexpr int HTTRANSPARENT = -1;
constexpr int HTNOWHERE = 0;
constexpr int HTCLIENT = 1;
constexpr int HTCAPTION = 2;
constexpr int HTSYSMENU = 3;
constexpr int HTGROWBOX = 4;
constexpr int HTSIZE = HTGROWBOX;
constexpr int HTMENU = 5;
constexpr int HTHSCROLL = 6;
constexpr int HTVSCROLL = 7;
constexpr int HTMINBUTTON = 8;
constexpr int HTMAXBUTTON = 9;
constexpr int HTLEFT = 10;
constexpr int HTRIGHT = 11;
constexpr int HTTOP = 12;
constexpr int HTTOPLEFT = 13;
constexpr int HTTOPRIGHT = 14;
constexpr int HTBOTTOM = 15;
constexpr int HTBOTTOMLEFT = 16;
constexpr int HTBOTTOMRIGHT = 17;
constexpr int HTBORDER = 18;
constexpr int HTCLOSE = 20;
constexpr int HTHELP = 21;

// wParam of WM_SYSCOMMAND; its low four bits are the system's own.
constexpr UINT SC_SIZE = 0xF000;
constexpr UINT SC_MOVE = 0xF010;
constexpr UINT SC_MINIMIZE = 0xF020;
constexpr UINT SC_MAXIMIZE = 0xF030;
constexpr UINT SC_NEXTWINDOW = 0xF040;
constexpr UINT SC_PREVWINDOW = 0xF050;
constexpr UINT SC_CLOSE = 0xF060;
constexpr UINT SC_VSCROLL = 0xF070;
constexpr UINT SC_HSCROLL = 0xF080;
constexpr UINT SC_MOUSEMENU = 0xF090;
constexpr UINT SC_KEYMENU = 0xF100;
constexpr UINT SC_RESTORE = 0xF120;
constexpr UINT SC_CONTEXTHELP = 0xF180;

// wParam of mouse messages.
constexpr WPARAM MK_LBUTTON = 0x01;
constexpr WPARAM MK_RBUTTON = 0x02;
constexpr WPARAM MK_SHIFT = 0x04;
constexpr WPARAM MK_CONTROL = 0x08;
constexpr WPARAM MK_MBUTTON = 0x10;
constexpr int WHEEL_DELTA = 120;

// Answers to WM_GETDLGCODE.
constexpr LRESULT DLGC_WANTARROWS = 0x0001;
constexpr LRESULT DLGC_WANTTAB = 0x0002;
constexpr LRESULT DLGC_WANTALLKEYS = 0x0004;
constexpr LRESULT DLGC_WANTMESSAGE = 0x0004;
constexpr LRESULT DLGC_HASSETSEL = 0x0008;
constexpr LRESULT DLGC_DEFPUSHBUTTON = 0x0010;
constexpr LRESULT DLGC_UNDEFPUSHBUTTON = 0x0020;
constexpr LRESULT DLGC_RADIOBUTTON = 0x0040;
constexpr LRESULT DLGC_WANTCHARS = 0x0080;
constexpr LRESULT DLGC_STATIC = 0x0100;
constexpr LRESULT DLGC_BUTTON = 0x2000;

// WM_SHOWWINDOW's lParam.
constexpr LPARAM SW_PARENTCLOSING = 1;
constexpr LPARAM SW_OTHERZOOM = 2;
constexpr LPARAM SW_PARENTOPENING = 3;
constexpr LPARAM SW_OTHERUNZOOM = 4;

// WM_SETICON, WM_GETICON.
constexpr WPARAM ICON_SMALL = 0;
constexpr WPARAM ICON_BIG = 1;

// WM_NCCALCSIZE's result.
constexpr LRESULT WVR_ALIGNTOP = 0x10;
constexpr LRESULT WVR_ALIGNLEFT = 0x20;
constexpr LRESULT WVR_ALIGNBOTTOM = 0x40;
constexpr LRESULT WVR_ALIGNRIGHT = 0x80;
constexpr LRESULT WVR_HREDRAW = 0x100;
constexpr LRESULT WVR_VREDRAW = 0x200;
constexpr LRESULT WVR_REDRAW = 0x300;
constexpr LRESULT WVR_VALIDRECTS = 0x400;

// WM_PRINT's lParam.
constexpr LPARAM PRF_CHECKVISIBLE = 0x01;
constexpr LPARAM PRF_NONCLIENT = 0x02;
constexpr LPARAM PRF_CLIENT = 0x04;
constexpr LPARAM PRF_ERASEBKGND = 0x08;
constexpr LPARAM PRF_CHILDREN = 0x10;

struct MSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time; // milliseconds, as GetTickCount
    POINT pt;   // the pointer, in screen coordinates
};
using LPMSG = MSG*;

struct CREATESTRUCTA {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCSTR lpszName;
    LPCSTR lpszClass;
    DWORD dwExStyle;
};
using CREATESTRUCT = CREATESTRUCTA;
using LPCREATESTRUCT = CREATESTRUCT*;

struct WINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
};

struct NCCALCSIZE_PARAMS {
    RECT rgrc[3];
    WINDOWPOS* lppos;
};

struct MINMAXINFO {
    POINT ptReserved;
    POINT ptMaxSize;
    POINT ptMaxPosition;
    POINT ptMinTrackSize;
    POINT ptMaxTrackSize;
};

struct STYLESTRUCT {
    DWORD styleOld;
    DWORD styleNew;
};

constexpr int HELPINFO_WINDOW = 1;
constexpr int HELPINFO_MENUITEM = 2;
/// lParam of WM_HELP.
struct HELPINFO {
    UINT cbSize;
    int iContextType;
    int iCtrlId;
    HANDLE hItemHandle; // the window or the menu
    DWORD_PTR dwContextId;
    POINT MousePos; // screen coordinates
};
using LPHELPINFO = HELPINFO*;

struct NMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
};
using LPNMHDR = NMHDR*;

// Owner drawing.
constexpr UINT ODT_MENU = 1;
constexpr UINT ODT_LISTBOX = 2;
constexpr UINT ODT_COMBOBOX = 3;
constexpr UINT ODT_BUTTON = 4;
constexpr UINT ODT_STATIC = 5;
constexpr UINT ODT_TAB = 101;
constexpr UINT ODT_LISTVIEW = 102;

constexpr UINT ODA_DRAWENTIRE = 1;
constexpr UINT ODA_SELECT = 2;
constexpr UINT ODA_FOCUS = 4;

constexpr UINT ODS_SELECTED = 0x0001;
constexpr UINT ODS_GRAYED = 0x0002;
constexpr UINT ODS_DISABLED = 0x0004;
constexpr UINT ODS_CHECKED = 0x0008;
constexpr UINT ODS_FOCUS = 0x0010;
constexpr UINT ODS_DEFAULT = 0x0020;
constexpr UINT ODS_COMBOBOXEDIT = 0x1000;

struct DRAWITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;
};
using LPDRAWITEMSTRUCT = DRAWITEMSTRUCT*;

struct MEASUREITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemWidth;
    UINT itemHeight;
    ULONG_PTR itemData;
};
using LPMEASUREITEMSTRUCT = MEASUREITEMSTRUCT*;

struct DELETEITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    HWND hwndItem;
    ULONG_PTR itemData;
};
using LPDELETEITEMSTRUCT = DELETEITEMSTRUCT*;

struct COMPAREITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    HWND hwndItem;
    UINT itemID1;
    ULONG_PTR itemData1;
    UINT itemID2;
    ULONG_PTR itemData2;
    DWORD dwLocaleId;
};
using LPCOMPAREITEMSTRUCT = COMPAREITEMSTRUCT*;

// WM_NOTIFY codes that all common controls share.
constexpr UINT NM_FIRST = 0U;
constexpr UINT NM_OUTOFMEMORY = NM_FIRST - 1U;
constexpr UINT NM_CLICK = NM_FIRST - 2U;
constexpr UINT NM_DBLCLK = NM_FIRST - 3U;
constexpr UINT NM_RETURN = NM_FIRST - 4U;
constexpr UINT NM_RCLICK = NM_FIRST - 5U;
constexpr UINT NM_RDBLCLK = NM_FIRST - 6U;
constexpr UINT NM_SETFOCUS = NM_FIRST - 7U;
constexpr UINT NM_KILLFOCUS = NM_FIRST - 8U;
constexpr UINT NM_CUSTOMDRAW = NM_FIRST - 12U;
constexpr UINT NM_HOVER = NM_FIRST - 13U;
constexpr UINT NM_NCHITTEST = NM_FIRST - 14U;
constexpr UINT NM_KEYDOWN = NM_FIRST - 15U;
constexpr UINT NM_RELEASEDCAPTURE = NM_FIRST - 16U;
constexpr UINT NM_SETCURSOR = NM_FIRST - 17U;
constexpr UINT NM_CHAR = NM_FIRST - 18U;
constexpr UINT NM_TOOLTIPSCREATED = NM_FIRST - 19U;
