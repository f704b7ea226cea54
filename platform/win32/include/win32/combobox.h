// Combo boxes, class "COMBOBOX": a selection field, and a list that drops down from it or stands below.
//
//     HWND combo = CreateWindow("COMBOBOX", "", WS_CHILD | WS_VISIBLE | WS_VSCROLL | CBS_DROPDOWNLIST, 0, 0, 120, 200,
//                               parent, menuFromId(100), nullptr, nullptr);
//
// CBS_SIMPLE: edit control and list, both always there. CBS_DROPDOWN: edit control, list on demand. CBS_DROPDOWNLIST: a
// field that shows the selected item, list on demand. The edit control is the combo box's first child, class "EDIT", id
// 1001; the list is of class "ComboLBox", id 1000.
//
// Height. For the two styles that drop down, the height asked for (at creation and later) is the one together with the
// list; the window itself is always as high as the selection field needs: its item height + 6. The list shows as many
// whole items as fit, and no more than there are; at least one. With CBS_NOINTEGRALHEIGHT it takes all that was asked
// for.
//
// Items, their texts, data and sorting are those of a list box (win32/listbox.h): the CB_ messages pass on to it, and
// their failures are the same numbers. Owner drawing sends the parent WM_MEASUREITEM, WM_DRAWITEM, WM_COMPAREITEM and
// WM_DELETEITEM with ODT_COMBOBOX and the combo box's id and handle; WM_MEASUREITEM with itemID -1 asks for the
// selection field. The field is drawn with ODS_COMBOBOXEDIT, and with itemID -1 while nothing is selected.
//
// Notifications go to the parent by WM_COMMAND. What the program does sends none, but for CB_SHOWDROPDOWN
// (CBN_DROPDOWN; CBN_SELENDCANCEL, CBN_CLOSEUP). Orders:
//  - the list drops: CBN_DROPDOWN, then it shows;
//  - a click on an item: CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE;
//  - an arrow key while the list is closed, or in CBS_SIMPLE: CBN_SELENDOK, CBN_SELCHANGE; while it is open only
//    CBN_SELCHANGE;
//  - Return, F4, Alt with an arrow on the open list: CBN_SELENDOK, CBN_CLOSEUP;
//  - Escape on the open list: CBN_SELENDCANCEL, CBN_CLOSEUP; the selection is the one from before it dropped (when
//  arrow
//    keys had changed it, another CBN_SELCHANGE tells so);
//  - a click elsewhere: CBN_SELENDCANCEL, CBN_CLOSEUP;
//  - the focus goes: CBN_SELENDCANCEL, CBN_CLOSEUP if the list was open, CBN_KILLFOCUS.
// While CBN_SELCHANGE is handled, the list has the new selection, and a field without edit control shows it; an edit
// control gets the text when the handler has returned. CBN_EDITUPDATE and CBN_EDITCHANGE come from typing only.
#pragma once

#include "win32/scrollbar.h" // STATE_SYSTEM_ values
#include "win32/types.h"

constexpr DWORD CBS_SIMPLE = 0x0001;
constexpr DWORD CBS_DROPDOWN = 0x0002;
constexpr DWORD CBS_DROPDOWNLIST = 0x0003;
constexpr DWORD CBS_OWNERDRAWFIXED = 0x0010;
constexpr DWORD CBS_OWNERDRAWVARIABLE = 0x0020;
constexpr DWORD CBS_AUTOHSCROLL = 0x0040;
constexpr DWORD CBS_OEMCONVERT = 0x0080; // no effect: there is one code page
constexpr DWORD CBS_SORT = 0x0100;
constexpr DWORD CBS_HASSTRINGS = 0x0200;
constexpr DWORD CBS_NOINTEGRALHEIGHT = 0x0400;
constexpr DWORD CBS_DISABLENOSCROLL = 0x0800;
constexpr DWORD CBS_UPPERCASE = 0x2000;
constexpr DWORD CBS_LOWERCASE = 0x4000;

constexpr LRESULT CB_OKAY = 0;
constexpr LRESULT CB_ERR = -1;
constexpr LRESULT CB_ERRSPACE = -2;

// The edit control; CB_ERR where there is none.
constexpr UINT CB_GETEDITSEL = 0x0140; // wParam, lParam: DWORD*; the result has both in 16 bits
constexpr UINT CB_LIMITTEXT = 0x0141;  // wParam: most characters that can be typed, 0: no limit; TRUE always
constexpr UINT CB_SETEDITSEL = 0x0142; // lParam: begin in the low word (-1: none), end in the high (-1: the end); TRUE

// Items: as the LB_ message of that name.
constexpr UINT CB_ADDSTRING = 0x0143;
constexpr UINT CB_DELETESTRING = 0x0144;
constexpr UINT CB_DIR = 0x0145; // not supported: CB_ERR
constexpr UINT CB_GETCOUNT = 0x0146;
constexpr UINT CB_GETLBTEXT = 0x0148;
constexpr UINT CB_GETLBTEXTLEN = 0x0149;
constexpr UINT CB_INSERTSTRING = 0x014A;
constexpr UINT CB_RESETCONTENT = 0x014B; // empties the field, too
constexpr UINT CB_FINDSTRING = 0x014C;
constexpr UINT CB_FINDSTRINGEXACT = 0x0158;
constexpr UINT CB_GETITEMDATA = 0x0150;
constexpr UINT CB_SETITEMDATA = 0x0151;
constexpr UINT CB_SETLOCALE = 0x0159;
constexpr UINT CB_GETLOCALE = 0x015A;
constexpr UINT CB_INITSTORAGE = 0x0161;

// Selection; the field follows at once, and nothing is notified.
constexpr UINT CB_GETCURSEL = 0x0147;
constexpr UINT CB_SETCURSEL = 0x014E;    // wParam: index, -1: none (answers CB_ERR); the index
constexpr UINT CB_SELECTSTRING = 0x014D; // as CB_FINDSTRING, and selects what it finds

// The list's place and state.
constexpr UINT CB_SHOWDROPDOWN = 0x014F;          // wParam: show; TRUE always
constexpr UINT CB_GETDROPPEDSTATE = 0x0157;       // TRUE while the list is open
constexpr UINT CB_GETDROPPEDCONTROLRECT = 0x0152; // lParam: RECT*, screen coordinates: field and list together; TRUE
constexpr UINT CB_GETDROPPEDWIDTH = 0x015F;       // never less than the combo box
constexpr UINT CB_SETDROPPEDWIDTH = 0x0160;       // wParam: least width of the list; the width that now holds
constexpr UINT CB_SETITEMHEIGHT = 0x0153; // wParam: index, -1: the selection field; lParam: height. As LB_SETITEMHEIGHT
constexpr UINT CB_GETITEMHEIGHT = 0x0154; // wParam: index, -1: the selection field
constexpr UINT CB_SETEXTENDEDUI = 0x0155; // wParam: Down opens the list, F4 doesn't, a click doesn't close it; 0
constexpr UINT CB_GETEXTENDEDUI = 0x0156;
constexpr UINT CB_GETTOPINDEX = 0x015B;
constexpr UINT CB_SETTOPINDEX = 0x015C;
constexpr UINT CB_GETHORIZONTALEXTENT = 0x015D;
constexpr UINT CB_SETHORIZONTALEXTENT = 0x015E;
constexpr UINT CB_GETCOMBOBOXINFO = 0x0164; // lParam: COMBOBOXINFO*; as GetComboBoxInfo

constexpr WORD CBN_ERRSPACE = 0xFFFF;
constexpr WORD CBN_SELCHANGE = 1;
constexpr WORD CBN_DBLCLK = 2; // of CBS_SIMPLE's list
constexpr WORD CBN_SETFOCUS = 3;
constexpr WORD CBN_KILLFOCUS = 4;
constexpr WORD CBN_EDITCHANGE = 5; // after the new text was painted
constexpr WORD CBN_EDITUPDATE = 6; // before
constexpr WORD CBN_DROPDOWN = 7;
constexpr WORD CBN_CLOSEUP = 8;
constexpr WORD CBN_SELENDOK = 9;
constexpr WORD CBN_SELENDCANCEL = 10;

struct COMBOBOXINFO {
    DWORD cbSize;      // sizeof(COMBOBOXINFO), set by the caller
    RECT rcItem;       // the selection field, client coordinates
    RECT rcButton;     // empty for CBS_SIMPLE
    DWORD stateButton; // 0, STATE_SYSTEM_PRESSED or, for CBS_SIMPLE, STATE_SYSTEM_INVISIBLE
    HWND hwndCombo;
    HWND hwndItem; // the edit control; of CBS_DROPDOWNLIST the combo box itself
    HWND hwndList;
};

/// FALSE when the window is no combo box, or `cbSize` isn't right (ERROR_INVALID_PARAMETER).
BOOL GetComboBoxInfo(HWND combo, COMBOBOXINFO* info);
