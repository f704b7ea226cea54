// Scroll bars: those in the frames of windows, and the control of class "SCROLLBAR".
//
//     SCROLLINFO info{sizeof(SCROLLINFO), SIF_RANGE | SIF_PAGE, 0, rows - 1, visibleRows, 0, 0};
//     SetScrollInfo(window, SB_VERT, &info, TRUE);
//
// A bar goes from nMin to nMax, both included. With a page of nPage the highest position is nMax - max(nPage - 1, 0).
// Positions outside are moved to the nearest end. None of the calls sends a scroll message; those come from the user
// alone: WM_HSCROLL or WM_VSCROLL, with an SB_ code in the low word of wParam and, for the two thumb codes, the
// position in the high word (16 bits; SIF_TRACKPOS has all 32). lParam is the control, or null for a bar of the
// window's frame. A bar never moves by itself: whoever gets the message sets the new position.
#pragma once

#include "win32/types.h"

// Styles of the control.
constexpr DWORD SBS_HORZ = 0x0000;
constexpr DWORD SBS_VERT = 0x0001;
constexpr DWORD SBS_TOPALIGN = 0x0002;
constexpr DWORD SBS_LEFTALIGN = 0x0002;
constexpr DWORD SBS_BOTTOMALIGN = 0x0004;
constexpr DWORD SBS_RIGHTALIGN = 0x0004;
constexpr DWORD SBS_SIZEBOXTOPLEFTALIGN = 0x0002;
constexpr DWORD SBS_SIZEBOXBOTTOMRIGHTALIGN = 0x0004;
constexpr DWORD SBS_SIZEBOX = 0x0008;
constexpr DWORD SBS_SIZEGRIP = 0x0010;

// Which bar a call means.
constexpr int SB_HORZ = 0; // of the frame
constexpr int SB_VERT = 1; // of the frame
constexpr int SB_CTL = 2;  // the window is a scroll bar control
constexpr int SB_BOTH = 3;

// What the user did: low word of wParam of WM_HSCROLL and WM_VSCROLL.
constexpr int SB_LINEUP = 0;
constexpr int SB_LINELEFT = 0;
constexpr int SB_LINEDOWN = 1;
constexpr int SB_LINERIGHT = 1;
constexpr int SB_PAGEUP = 2;
constexpr int SB_PAGELEFT = 2;
constexpr int SB_PAGEDOWN = 3;
constexpr int SB_PAGERIGHT = 3;
constexpr int SB_THUMBPOSITION = 4; // the thumb was let go
constexpr int SB_THUMBTRACK = 5;    // the thumb is being dragged
constexpr int SB_TOP = 6;
constexpr int SB_LEFT = 6;
constexpr int SB_BOTTOM = 7;
constexpr int SB_RIGHT = 7;
constexpr int SB_ENDSCROLL = 8; // the last of each series

// Messages of the control; each does what the call named beside it does.
constexpr UINT SBM_SETPOS = 0x00E0;           // SetScrollPos: wParam position, lParam redraw; the former position
constexpr UINT SBM_GETPOS = 0x00E1;           // GetScrollPos
constexpr UINT SBM_SETRANGE = 0x00E2;         // wParam minimum, lParam maximum; the former position when it changed
constexpr UINT SBM_GETRANGE = 0x00E3;         // GetScrollRange: wParam and lParam are int*
constexpr UINT SBM_ENABLE_ARROWS = 0x00E4;    // EnableScrollBar: wParam ESB_*
constexpr UINT SBM_SETRANGEREDRAW = 0x00E6;   // as SBM_SETRANGE, and paints
constexpr UINT SBM_SETSCROLLINFO = 0x00E9;    // SetScrollInfo: wParam redraw, lParam const SCROLLINFO*
constexpr UINT SBM_GETSCROLLINFO = 0x00EA;    // GetScrollInfo: lParam SCROLLINFO*
constexpr UINT SBM_GETSCROLLBARINFO = 0x00EB; // GetScrollBarInfo: lParam SCROLLBARINFO*

constexpr UINT SIF_RANGE = 0x0001;
constexpr UINT SIF_PAGE = 0x0002;
constexpr UINT SIF_POS = 0x0004;
constexpr UINT SIF_DISABLENOSCROLL = 0x0008; // a bar with nothing to scroll is disabled and not hidden
constexpr UINT SIF_TRACKPOS = 0x0010;        // read only
constexpr UINT SIF_ALL = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS;

struct SCROLLINFO {
    UINT cbSize; // sizeof(SCROLLINFO), or without nTrackPos
    UINT fMask;
    int nMin;
    int nMax;
    UINT nPage;
    int nPos;
    int nTrackPos; // where the user drags the thumb at present
};
using LPSCROLLINFO = SCROLLINFO*;
using LPCSCROLLINFO = const SCROLLINFO*;

/// Sets what `info->fMask` names. Of a frame it also shows or hides the bar, as the range and the page allow scrolling
/// or not; the window's style follows. The position that now holds; 0 for a bad argument.
int SetScrollInfo(HWND window, int bar, const SCROLLINFO* info, BOOL redraw);
/// Reads what `info->fMask` names. FALSE for a bad argument, or a window that has had no scroll bars so far.
BOOL GetScrollInfo(HWND window, int bar, SCROLLINFO* info);
/// The position before; 0 for a bad argument.
int SetScrollPos(HWND window, int bar, int position, BOOL redraw);
/// 0 for a bad argument, too.
int GetScrollPos(HWND window, int bar);
/// A frame's bar is hidden when both ends are equal, and shown otherwise. FALSE, with ERROR_INVALID_SCROLLBAR_RANGE,
/// when the ends lie more than 0x7FFFFFFF apart.
BOOL SetScrollRange(HWND window, int bar, int minimum, int maximum, BOOL redraw);
/// 0, 0 for a window that has had no scroll bars so far. Null pointers are passed over.
BOOL GetScrollRange(HWND window, int bar, int* minimum, int* maximum);
/// Shows or hides bars of the frame (SB_BOTH: both), or a scroll bar control.
BOOL ShowScrollBar(HWND window, int bar, BOOL show);

constexpr UINT ESB_ENABLE_BOTH = 0x0000;
constexpr UINT ESB_DISABLE_LTUP = 0x0001;
constexpr UINT ESB_DISABLE_LEFT = 0x0001;
constexpr UINT ESB_DISABLE_UP = 0x0001;
constexpr UINT ESB_DISABLE_RTDN = 0x0002;
constexpr UINT ESB_DISABLE_RIGHT = 0x0002;
constexpr UINT ESB_DISABLE_DOWN = 0x0002;
constexpr UINT ESB_DISABLE_BOTH = 0x0003;
/// Disables one or both arrows. FALSE when nothing has changed.
BOOL EnableScrollBar(HWND window, UINT bar, UINT arrows);

constexpr DWORD ERROR_HAS_NO_SCROLLBARS = 1447; // last error: the window's frame never had scroll bars
constexpr DWORD ERROR_INVALID_SCROLLBAR_RANGE = 1448;

constexpr LONG OBJID_VSCROLL = -5;
constexpr LONG OBJID_HSCROLL = -6;
constexpr LONG OBJID_CLIENT = -4;
constexpr int CCHILDREN_SCROLLBAR = 5;
constexpr DWORD STATE_SYSTEM_UNAVAILABLE = 0x00000001;
constexpr DWORD STATE_SYSTEM_PRESSED = 0x00000008;
constexpr DWORD STATE_SYSTEM_INVISIBLE = 0x00008000;
constexpr DWORD STATE_SYSTEM_OFFSCREEN = 0x00010000;

struct SCROLLBARINFO {
    DWORD cbSize;
    RECT rcScrollBar;  // screen coordinates
    int dxyLineButton; // length of an arrow
    int xyThumbTop;    // from the bar's begin
    int xyThumbBottom;
    int reserved;
    DWORD rgstate[CCHILDREN_SCROLLBAR + 1]; // bar, first arrow, page before, thumb, page behind, second arrow
};

/// `object`: OBJID_HSCROLL or OBJID_VSCROLL of a frame, OBJID_CLIENT for a control. FALSE for a bad argument.
BOOL GetScrollBarInfo(HWND window, LONG object, SCROLLBARINFO* info);
