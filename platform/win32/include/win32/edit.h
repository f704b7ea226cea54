// Edit controls, class "EDIT": one line of text, or many with ES_MULTILINE.
//
// Positions are characters counted from 0. Lines of a multi-line control end with CR LF in the text; both count as
// characters. Where a line is wrapped, the text holds nothing (unless EM_FMTLINES asked for soft breaks).
//
// Notifications go to the parent by WM_COMMAND. Typing, cutting, pasting, undoing, WM_CLEAR and EM_REPLACESEL send
// EN_UPDATE, before the new text is painted, and EN_CHANGE after that. WM_SETTEXT sends both from a single-line control
// and none from a multi-line one. Setting selection, limit, margins or the read-only state sends none.
#pragma once

#include "win32/types.h"

constexpr DWORD ES_LEFT = 0x0000;
constexpr DWORD ES_CENTER = 0x0001;
constexpr DWORD ES_RIGHT = 0x0002;
constexpr DWORD ES_MULTILINE = 0x0004;
constexpr DWORD ES_UPPERCASE = 0x0008;
constexpr DWORD ES_LOWERCASE = 0x0010;
constexpr DWORD ES_PASSWORD = 0x0020;
constexpr DWORD ES_AUTOVSCROLL = 0x0040;
constexpr DWORD ES_AUTOHSCROLL = 0x0080; // without it typing stops at the edge, or many lines are wrapped there
constexpr DWORD ES_NOHIDESEL = 0x0100;
constexpr DWORD ES_OEMCONVERT = 0x0400;
constexpr DWORD ES_READONLY = 0x0800;
constexpr DWORD ES_WANTRETURN = 0x1000;
constexpr DWORD ES_NUMBER = 0x2000; // digits only may be typed

constexpr UINT EM_GETSEL = 0x00B0;      // wParam, lParam: DWORD*; the result has both in 16 bits, or -1
constexpr UINT EM_SETSEL = 0x00B1;      // wParam: begin, lParam: end (the caret); 0, -1: all; -1: none
constexpr UINT EM_GETRECT = 0x00B2;     // lParam: RECT*, of the text, client coordinates
constexpr UINT EM_SETRECT = 0x00B3;     // lParam: const RECT*; wParam 1: relative to the present one
constexpr UINT EM_SETRECTNP = 0x00B4;   // the same without painting
constexpr UINT EM_SCROLL = 0x00B5;      // wParam: SB_LINEUP, SB_PAGEDOWN...; low word: lines, high word TRUE
constexpr UINT EM_LINESCROLL = 0x00B6;  // wParam: characters, lParam: lines
constexpr UINT EM_SCROLLCARET = 0x00B7; // scrolls until the caret shows
constexpr UINT EM_GETMODIFY = 0x00B8;
constexpr UINT EM_SETMODIFY = 0x00B9;    // wParam: the flag
constexpr UINT EM_GETLINECOUNT = 0x00BA; // 1 at least
constexpr UINT EM_LINEINDEX = 0x00BB;    // wParam: line, -1: that of the caret; its first character, or -1
constexpr UINT EM_SETHANDLE = 0x00BC;    // wParam: HLOCAL with new text, which the control takes over; many lines only
constexpr UINT EM_GETHANDLE = 0x00BD;    // an HLOCAL with the text, the control's own; null for a single line
constexpr UINT EM_GETTHUMB = 0x00BE;     // position of the vertical scroll bar
constexpr UINT EM_LINELENGTH = 0x00C1;   // wParam: a character of the line; -1: what the selection leaves of its
                                         // lines
constexpr UINT EM_REPLACESEL = 0x00C2;   // wParam: can be undone, lParam: text
constexpr UINT EM_GETLINE = 0x00C4;   // wParam: line, lParam: buffer with its size as first WORD; never closed by NUL
constexpr UINT EM_LIMITTEXT = 0x00C5; // wParam: most characters that can be typed; 0: no limit
constexpr UINT EM_SETLIMITTEXT = EM_LIMITTEXT;
constexpr UINT EM_CANUNDO = 0x00C6;
constexpr UINT EM_UNDO = 0x00C7;            // undoing twice does it again
constexpr UINT EM_FMTLINES = 0x00C8;        // wParam: WM_GETTEXT gives CR CR LF where lines are wrapped
constexpr UINT EM_LINEFROMCHAR = 0x00C9;    // wParam: character, -1: begin of the selection
constexpr UINT EM_SETTABSTOPS = 0x00CB;     // wParam: count, lParam: const int*, in quarters of the average width
constexpr UINT EM_SETPASSWORDCHAR = 0x00CC; // wParam: character, 0: shows the text
constexpr UINT EM_EMPTYUNDOBUFFER = 0x00CD;
constexpr UINT EM_GETFIRSTVISIBLELINE = 0x00CE; // of a single-line control: the first visible character
constexpr UINT EM_SETREADONLY = 0x00CF;         // wParam: the flag
constexpr UINT EM_SETWORDBREAKPROC = 0x00D0;    // lParam: EDITWORDBREAKPROC, null: our own
constexpr UINT EM_GETWORDBREAKPROC = 0x00D1;
constexpr UINT EM_GETPASSWORDCHAR = 0x00D2;
constexpr UINT EM_SETMARGINS = 0x00D3; // wParam: EC_*, lParam: left in the low word, right in the high; pixels
constexpr UINT EM_GETMARGINS = 0x00D4;
constexpr UINT EM_GETLIMITTEXT = 0x00D5;
constexpr UINT EM_POSFROMCHAR = 0x00D6; // wParam: character; x in the low word, y in the high, or -1
constexpr UINT EM_CHARFROMPOS = 0x00D7; // lParam: point; character in the low word, line in the high, or -1
constexpr UINT EM_SETIMESTATUS = 0x00D8;
constexpr UINT EM_GETIMESTATUS = 0x00D9;

constexpr WPARAM EC_LEFTMARGIN = 0x0001;
constexpr WPARAM EC_RIGHTMARGIN = 0x0002;
constexpr WPARAM EC_USEFONTINFO = 0xFFFF; // also as margin: the font's own

constexpr WORD EN_SETFOCUS = 0x0100;
constexpr WORD EN_KILLFOCUS = 0x0200;
constexpr WORD EN_CHANGE = 0x0300;
constexpr WORD EN_UPDATE = 0x0400;
constexpr WORD EN_ERRSPACE = 0x0500;
constexpr WORD EN_MAXTEXT = 0x0501; // the limit, or the edge without ES_AUTOHSCROLL, cut an insertion short
constexpr WORD EN_HSCROLL = 0x0601;
constexpr WORD EN_VSCROLL = 0x0602;

/// Where words end. `code` is one of WB_; `current` a position in `text`, `count` its length.
using EDITWORDBREAKPROCA = int(CALLBACK*)(LPSTR text, int current, int count, int code);
using EDITWORDBREAKPROC = EDITWORDBREAKPROCA;
constexpr int WB_LEFT = 0;        // begin of the word left of the position
constexpr int WB_RIGHT = 1;       // begin of the word right of it
constexpr int WB_ISDELIMITER = 2; // non-zero when the character there separates words
