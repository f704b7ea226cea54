// List boxes, class "LISTBOX": rows of text or of what the owner draws.
//
//     HWND list = CreateWindow("LISTBOX", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | LBS_NOTIFY, 0, 0, 120, 80, parent,
//                              menuFromId(100), nullptr, nullptr);
//     LRESULT row = SendMessage(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>("first"));
//
// Items count from 0. An index that names no item gives LB_ERR, and nothing changes. A list holds strings, of which it
// keeps copies, unless it is owner-drawn without LBS_HASSTRINGS: then what is passed as text is the item's data and is
// neither read nor owned. A null text counts as empty.
//
// "Single", "multiple" and "extended" selection: no style, LBS_MULTIPLESEL, LBS_EXTENDEDSEL. Multiple and extended
// lists are called multiple-choice below.
//
// Notifications go to the parent by WM_COMMAND. LBN_SELCHANGE, LBN_SELCANCEL and LBN_DBLCLK come from the user alone
// and only with LBS_NOTIFY: no message of the program sends one. A change made with the mouse is notified when the
// button goes up (or the focus or the capture is lost), one made with a key at once.
//
// Owner-drawn lists send their parent, with the list's id in wParam:
//  - WM_MEASUREITEM once at creation (LBS_OWNERDRAWFIXED), or for each item as it comes in (LBS_OWNERDRAWVARIABLE);
//    itemHeight begins with the height of a line of text;
//  - WM_DRAWITEM with one of ODA_DRAWENTIRE, ODA_SELECT, ODA_FOCUS; item by item with its rectangle of LB_GETITEMRECT,
//    into a context that reaches the whole client area. Attributes of the context are put back after each item;
//  - WM_COMPAREITEM where a place is sought in a sorted list without strings: item 1 is one of the list, item 2 the one
//    sought with itemID2 -1;
//  - WM_DELETEITEM for each item that goes away, also when the list does.
#pragma once

#include "win32/types.h"

constexpr DWORD LBS_NOTIFY = 0x0001;
constexpr DWORD LBS_SORT = 0x0002;     // LB_ADDSTRING finds the place by itself
constexpr DWORD LBS_NOREDRAW = 0x0004; // as after WM_SETREDRAW with FALSE
constexpr DWORD LBS_MULTIPLESEL = 0x0008;
constexpr DWORD LBS_OWNERDRAWFIXED = 0x0010;
constexpr DWORD LBS_OWNERDRAWVARIABLE = 0x0020;
constexpr DWORD LBS_HASSTRINGS = 0x0040; // implied without owner drawing
constexpr DWORD LBS_USETABSTOPS = 0x0080;
constexpr DWORD LBS_NOINTEGRALHEIGHT = 0x0100; // without it the window shrinks to whole items
constexpr DWORD LBS_MULTICOLUMN = 0x0200;      // scrolled sideways by columns
constexpr DWORD LBS_WANTKEYBOARDINPUT = 0x0400;
constexpr DWORD LBS_EXTENDEDSEL = 0x0800;
constexpr DWORD LBS_DISABLENOSCROLL = 0x1000; // a bar without use is disabled, not hidden
constexpr DWORD LBS_NODATA = 0x2000; // nothing but a count; with LBS_OWNERDRAWFIXED, neither sorted nor strings
constexpr DWORD LBS_NOSEL = 0x4000;
constexpr DWORD LBS_COMBOBOX = 0x8000;                                          // the list of a combo box
constexpr DWORD LBS_STANDARD = LBS_NOTIFY | LBS_SORT | 0x00200000 | 0x00800000; // WS_VSCROLL, WS_BORDER

constexpr LRESULT LB_OKAY = 0;
constexpr LRESULT LB_ERR = -1;
constexpr LRESULT LB_ERRSPACE = -2;

// Items. The indexes of what follows and the selection move along. None of these notifies.
constexpr UINT LB_ADDSTRING = 0x0180;    // lParam: text or data; the new index
constexpr UINT LB_INSERTSTRING = 0x0181; // wParam: index, -1: at the end; not sorted; the new index
constexpr UINT LB_DELETESTRING = 0x0182; // wParam: index; the number of items left. The last one: LB_RESETCONTENT
constexpr UINT LB_RESETCONTENT = 0x0184; // removes all
constexpr UINT LB_GETTEXT = 0x0189;      // wParam: index, lParam: buffer; the length. Without strings: the data
constexpr UINT LB_GETTEXTLEN = 0x018A;   // wParam: index
constexpr UINT LB_GETCOUNT = 0x018B;
constexpr UINT LB_DIR = 0x018D;             // not supported: LB_ERR
constexpr UINT LB_ADDFILE = 0x0196;         // not supported: LB_ERR
constexpr UINT LB_GETITEMDATA = 0x0199;     // wParam: index
constexpr UINT LB_SETITEMDATA = 0x019A;     // wParam: index, -1: all; lParam: data; TRUE
constexpr UINT LB_FINDSTRING = 0x018F;      // wParam: index before the first one tried, -1: none; lParam: how the text
                                            // begins. Wraps round; case doesn't count. Empty text is not found
constexpr UINT LB_FINDSTRINGEXACT = 0x01A2; // the same for the whole text
constexpr UINT LB_SETCOUNT = 0x01A7;        // wParam: count; LBS_NODATA only
constexpr UINT LB_INITSTORAGE = 0x01A8;     // wParam: items, lParam: bytes to come; the items made room for so far
constexpr UINT LB_SETLOCALE = 0x01A5;       // wParam: locale; the former one. Sorting follows code page 1252 always
constexpr UINT LB_GETLOCALE = 0x01A6;

// Selection. None of these notifies.
constexpr UINT LB_SELITEMRANGEEX = 0x0183; // multiple-choice; wParam: first, lParam: last; last before first deselects
constexpr UINT LB_SETSEL = 0x0185;         // multiple-choice; wParam: select, lParam: index, -1: all
constexpr UINT LB_SETCURSEL = 0x0186;      // single; wParam: index, -1: none (answers LB_ERR); scrolls to it
constexpr UINT LB_GETSEL = 0x0187;         // wParam: index; above 0: selected
constexpr UINT LB_GETCURSEL = 0x0188;      // multiple-choice: the item with the focus
constexpr UINT LB_SELECTSTRING = 0x018C;   // single; as LB_FINDSTRING, and selects what it finds
constexpr UINT LB_GETSELCOUNT = 0x0190;    // multiple-choice
constexpr UINT LB_GETSELITEMS = 0x0191;    // multiple-choice; wParam: size, lParam: int*; the number written
constexpr UINT LB_SELITEMRANGE = 0x019B;   // multiple-choice; wParam: select, lParam: first in the low word, last
constexpr UINT LB_SETANCHORINDEX = 0x019C; // wParam: where a selection with Shift begins
constexpr UINT LB_GETANCHORINDEX = 0x019D;
constexpr UINT LB_SETCARETINDEX = 0x019E; // wParam: the item with the focus, lParam: TRUE: seen in part is enough
constexpr UINT LB_GETCARETINDEX = 0x019F;

// Geometry, in pixels of the client area.
constexpr UINT LB_GETTOPINDEX = 0x018E;
constexpr UINT LB_SETTABSTOPS = 0x0192; // wParam: count, lParam: const int*, in quarters of the average width; TRUE
constexpr UINT LB_GETHORIZONTALEXTENT = 0x0193;
constexpr UINT LB_SETHORIZONTALEXTENT = 0x0194; // wParam: width that can be scrolled to; needs WS_HSCROLL
constexpr UINT LB_SETCOLUMNWIDTH = 0x0195;
constexpr UINT LB_SETTOPINDEX = 0x0197;   // as far up as the last page allows
constexpr UINT LB_GETITEMRECT = 0x0198;   // wParam: index, lParam: RECT*; also of items that are out of sight
constexpr UINT LB_SETITEMHEIGHT = 0x01A0; // wParam: index (LBS_OWNERDRAWVARIABLE, else ignored), low word of lParam: 1
                                          // to 65535
constexpr UINT LB_GETITEMHEIGHT = 0x01A1;
constexpr UINT LB_ITEMFROMPOINT = 0x01A9; // lParam: point; the nearest item seen, high word 1: outside of the client

constexpr WORD LBN_ERRSPACE = 0xFFFE;
constexpr WORD LBN_SELCHANGE = 1;
constexpr WORD LBN_DBLCLK = 2;
constexpr WORD LBN_SELCANCEL = 3; // the user took the selection of a single list away (Ctrl and a click on it)
constexpr WORD LBN_SETFOCUS = 4;
constexpr WORD LBN_KILLFOCUS = 5;
