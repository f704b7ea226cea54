// Tab controls: the class "SysTabControl32".
//
// TCM_SETCURSEL sends no notification; TCM_SETCURFOCUS and the user's clicks and keys send TCN_SELCHANGING (non-zero
// refuses) and TCN_SELCHANGE.
#pragma once

#include "win32/commctrl.h"
#include "win32/window.h"

inline constexpr char WC_TABCONTROLA[] = "SysTabControl32";
inline constexpr const char* WC_TABCONTROL = WC_TABCONTROLA;

constexpr DWORD TCS_TABS = 0x0000;
constexpr DWORD TCS_SINGLELINE = 0x0000;
constexpr DWORD TCS_RIGHTJUSTIFY = 0x0000;
constexpr DWORD TCS_SCROLLOPPOSITE = 0x0001;
constexpr DWORD TCS_BOTTOM = 0x0002;
constexpr DWORD TCS_RIGHT = 0x0002; // with TCS_VERTICAL
constexpr DWORD TCS_MULTISELECT = 0x0004;
constexpr DWORD TCS_FLATBUTTONS = 0x0008;
constexpr DWORD TCS_FORCEICONLEFT = 0x0010;
constexpr DWORD TCS_FORCELABELLEFT = 0x0020;
constexpr DWORD TCS_HOTTRACK = 0x0040;
constexpr DWORD TCS_VERTICAL = 0x0080;
constexpr DWORD TCS_BUTTONS = 0x0100;
constexpr DWORD TCS_MULTILINE = 0x0200;
constexpr DWORD TCS_FIXEDWIDTH = 0x0400;
constexpr DWORD TCS_RAGGEDRIGHT = 0x0800;
constexpr DWORD TCS_FOCUSONBUTTONDOWN = 0x1000;
constexpr DWORD TCS_OWNERDRAWFIXED = 0x2000;
constexpr DWORD TCS_TOOLTIPS = 0x4000;
constexpr DWORD TCS_FOCUSNEVER = 0x8000;

constexpr UINT TCIF_TEXT = 0x0001;
constexpr UINT TCIF_IMAGE = 0x0002;
constexpr UINT TCIF_RTLREADING = 0x0004;
constexpr UINT TCIF_PARAM = 0x0008;
constexpr UINT TCIF_STATE = 0x0010;
constexpr DWORD TCIS_BUTTONPRESSED = 0x0001;
constexpr DWORD TCIS_HIGHLIGHTED = 0x0002;

struct TCITEMA {
    UINT mask;
    DWORD dwState;
    DWORD dwStateMask;
    LPSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
};
using TCITEM = TCITEMA;
using TC_ITEM = TCITEMA;

constexpr UINT TCHT_NOWHERE = 0x0001;
constexpr UINT TCHT_ONITEMICON = 0x0002;
constexpr UINT TCHT_ONITEMLABEL = 0x0004;
constexpr UINT TCHT_ONITEM = TCHT_ONITEMICON | TCHT_ONITEMLABEL;
struct TCHITTESTINFO {
    POINT pt;
    UINT flags;
};

constexpr UINT TCM_FIRST = 0x1300;
constexpr UINT TCM_GETIMAGELIST = TCM_FIRST + 2;
constexpr UINT TCM_SETIMAGELIST = TCM_FIRST + 3; // the former list
constexpr UINT TCM_GETITEMCOUNT = TCM_FIRST + 4;
constexpr UINT TCM_GETITEMA = TCM_FIRST + 5;
constexpr UINT TCM_SETITEMA = TCM_FIRST + 6;
constexpr UINT TCM_INSERTITEMA = TCM_FIRST + 7; // the new index or -1
constexpr UINT TCM_DELETEITEM = TCM_FIRST + 8;
constexpr UINT TCM_DELETEALLITEMS = TCM_FIRST + 9;
constexpr UINT TCM_GETITEMRECT = TCM_FIRST + 10;
constexpr UINT TCM_GETCURSEL = TCM_FIRST + 11;
constexpr UINT TCM_SETCURSEL = TCM_FIRST + 12; // the former selection, -1 when out of range
constexpr UINT TCM_HITTEST = TCM_FIRST + 13;
constexpr UINT TCM_SETITEMEXTRA = TCM_FIRST + 14;
constexpr UINT TCM_ADJUSTRECT = TCM_FIRST + 40; // wParam: TRUE display area to window
constexpr UINT TCM_SETITEMSIZE = TCM_FIRST + 41;
constexpr UINT TCM_REMOVEIMAGE = TCM_FIRST + 42;
constexpr UINT TCM_SETPADDING = TCM_FIRST + 43;
constexpr UINT TCM_GETROWCOUNT = TCM_FIRST + 44;
constexpr UINT TCM_GETTOOLTIPS = TCM_FIRST + 45;
constexpr UINT TCM_SETTOOLTIPS = TCM_FIRST + 46;
constexpr UINT TCM_GETCURFOCUS = TCM_FIRST + 47;
constexpr UINT TCM_SETCURFOCUS = TCM_FIRST + 48;
constexpr UINT TCM_SETMINTABWIDTH = TCM_FIRST + 49;
constexpr UINT TCM_DESELECTALL = TCM_FIRST + 50;
constexpr UINT TCM_HIGHLIGHTITEM = TCM_FIRST + 51;
constexpr UINT TCM_SETEXTENDEDSTYLE = TCM_FIRST + 52;
constexpr UINT TCM_GETEXTENDEDSTYLE = TCM_FIRST + 53;
constexpr UINT TCM_GETITEM = TCM_GETITEMA;
constexpr UINT TCM_SETITEM = TCM_SETITEMA;
constexpr UINT TCM_INSERTITEM = TCM_INSERTITEMA;

constexpr UINT TCN_FIRST = 0U - 550U;
constexpr UINT TCN_KEYDOWN = TCN_FIRST - 0U;
constexpr UINT TCN_SELCHANGE = TCN_FIRST - 1U;
constexpr UINT TCN_SELCHANGING = TCN_FIRST - 2U;
constexpr UINT TCN_GETOBJECT = TCN_FIRST - 3U;
constexpr UINT TCN_FOCUSCHANGE = TCN_FIRST - 4U;
struct NMTCKEYDOWN {
    NMHDR hdr;
    WORD wVKey;
    UINT flags;
};
