// Buttons, class "BUTTON": push buttons, check boxes, radio buttons, group boxes, owner-drawn buttons.
//
// Notifications go to the parent by WM_COMMAND (code in the high word of wParam). Only the user and BM_CLICK cause
// BN_CLICKED; BM_SETCHECK, BM_SETSTATE, BM_SETSTYLE and BM_SETIMAGE notify nobody.
#pragma once

#include "win32/types.h"

// Kinds: the low four bits of the style.
constexpr DWORD BS_PUSHBUTTON = 0x0000;
constexpr DWORD BS_DEFPUSHBUTTON = 0x0001;
constexpr DWORD BS_CHECKBOX = 0x0002;
constexpr DWORD BS_AUTOCHECKBOX = 0x0003;
constexpr DWORD BS_RADIOBUTTON = 0x0004;
constexpr DWORD BS_3STATE = 0x0005;
constexpr DWORD BS_AUTO3STATE = 0x0006;
constexpr DWORD BS_GROUPBOX = 0x0007;
constexpr DWORD BS_USERBUTTON = 0x0008;
constexpr DWORD BS_AUTORADIOBUTTON = 0x0009;
constexpr DWORD BS_PUSHBOX = 0x000A;
constexpr DWORD BS_OWNERDRAW = 0x000B;
constexpr DWORD BS_TYPEMASK = 0x000F;

// Looks.
constexpr DWORD BS_LEFTTEXT = 0x0020; // text left of the box
constexpr DWORD BS_RIGHTBUTTON = BS_LEFTTEXT;
constexpr DWORD BS_TEXT = 0x0000;
constexpr DWORD BS_ICON = 0x0040;
constexpr DWORD BS_BITMAP = 0x0080;
constexpr DWORD BS_LEFT = 0x0100;
constexpr DWORD BS_RIGHT = 0x0200;
constexpr DWORD BS_CENTER = 0x0300;
constexpr DWORD BS_TOP = 0x0400;
constexpr DWORD BS_BOTTOM = 0x0800;
constexpr DWORD BS_VCENTER = 0x0C00;
constexpr DWORD BS_PUSHLIKE = 0x1000; // a check box or radio button that looks like a push button
constexpr DWORD BS_MULTILINE = 0x2000;
constexpr DWORD BS_NOTIFY = 0x4000; // sends all notifications and not only BN_CLICKED
constexpr DWORD BS_FLAT = 0x8000;

constexpr UINT BM_GETCHECK = 0x00F0; // BST_UNCHECKED, BST_CHECKED or BST_INDETERMINATE
constexpr UINT BM_SETCHECK = 0x00F1; // wParam: the same. Kinds without a check stay at BST_UNCHECKED
constexpr UINT BM_GETSTATE = 0x00F2; // all BST_ bits
constexpr UINT BM_SETSTATE = 0x00F3; // wParam: pushed or not
constexpr UINT BM_SETSTYLE = 0x00F4; // wParam: kind (low word of the style), lParam: redraw
constexpr UINT BM_CLICK = 0x00F5;    // as if the user had clicked
constexpr UINT BM_GETIMAGE = 0x00F6; // wParam: IMAGE_BITMAP or IMAGE_ICON
constexpr UINT BM_SETIMAGE = 0x00F7; // the same, lParam: the handle, which stays the caller's; answers the former one

constexpr WORD BN_CLICKED = 0;
constexpr WORD BN_PAINT = 1;
constexpr WORD BN_HILITE = 2;
constexpr WORD BN_PUSHED = BN_HILITE;
constexpr WORD BN_UNHILITE = 3;
constexpr WORD BN_UNPUSHED = BN_UNHILITE;
constexpr WORD BN_DISABLE = 4;
constexpr WORD BN_DOUBLECLICKED = 5; // also sent by radio and owner-drawn buttons without BS_NOTIFY
constexpr WORD BN_DBLCLK = BN_DOUBLECLICKED;
constexpr WORD BN_SETFOCUS = 6;
constexpr WORD BN_KILLFOCUS = 7;

constexpr LRESULT BST_UNCHECKED = 0x0000;
constexpr LRESULT BST_CHECKED = 0x0001;
constexpr LRESULT BST_INDETERMINATE = 0x0002;
constexpr LRESULT BST_PUSHED = 0x0004;
constexpr LRESULT BST_FOCUS = 0x0008;
