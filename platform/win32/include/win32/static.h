// Static controls, class "STATIC": texts, frames, filled rectangles, pictures, etched lines.
#pragma once

#include "win32/types.h"

// Kinds: the low five bits of the style.
constexpr DWORD SS_LEFT = 0x0000;
constexpr DWORD SS_CENTER = 0x0001;
constexpr DWORD SS_RIGHT = 0x0002;
constexpr DWORD SS_ICON = 0x0003;
constexpr DWORD SS_BLACKRECT = 0x0004;
constexpr DWORD SS_GRAYRECT = 0x0005;
constexpr DWORD SS_WHITERECT = 0x0006;
constexpr DWORD SS_BLACKFRAME = 0x0007;
constexpr DWORD SS_GRAYFRAME = 0x0008;
constexpr DWORD SS_WHITEFRAME = 0x0009;
constexpr DWORD SS_USERITEM = 0x000A;
constexpr DWORD SS_SIMPLE = 0x000B;
constexpr DWORD SS_LEFTNOWORDWRAP = 0x000C;
constexpr DWORD SS_OWNERDRAW = 0x000D;
constexpr DWORD SS_BITMAP = 0x000E;
constexpr DWORD SS_ENHMETAFILE = 0x000F;
constexpr DWORD SS_ETCHEDHORZ = 0x0010;
constexpr DWORD SS_ETCHEDVERT = 0x0011;
constexpr DWORD SS_ETCHEDFRAME = 0x0012;
constexpr DWORD SS_TYPEMASK = 0x001F;

constexpr DWORD SS_REALSIZECONTROL = 0x0040; // a bitmap is stretched to the control, which keeps its size
constexpr DWORD SS_NOPREFIX = 0x0080;        // '&' is an ordinary character
constexpr DWORD SS_NOTIFY = 0x0100;          // takes clicks and sends STN_ notifications
constexpr DWORD SS_CENTERIMAGE = 0x0200;     // a picture stands in the middle, a single line of text half way down
constexpr DWORD SS_RIGHTJUST = 0x0400;       // the lower right corner stays when a picture sizes the control
constexpr DWORD SS_REALSIZEIMAGE = 0x0800;   // an icon from the resources keeps the size that it is stored in
constexpr DWORD SS_SUNKEN = 0x1000;
constexpr DWORD SS_EDITCONTROL = 0x2000; // breaks lines as an edit control does
constexpr DWORD SS_ENDELLIPSIS = 0x4000;
constexpr DWORD SS_PATHELLIPSIS = 0x8000;
constexpr DWORD SS_WORDELLIPSIS = 0xC000;
constexpr DWORD SS_ELLIPSISMASK = 0xC000;

// Pictures stay the caller's. Each of the setting messages answers the picture that was there before.
constexpr UINT STM_SETICON = 0x0170; // wParam: the icon
constexpr UINT STM_GETICON = 0x0171;
constexpr UINT STM_SETIMAGE = 0x0172; // wParam: IMAGE_BITMAP, IMAGE_ICON or IMAGE_CURSOR, lParam: the handle
constexpr UINT STM_GETIMAGE = 0x0173; // wParam: the same

// Notifications, sent by WM_COMMAND with SS_NOTIFY only; all of them caused by the user or EnableWindow.
constexpr WORD STN_CLICKED = 0;
constexpr WORD STN_DBLCLK = 1;
constexpr WORD STN_ENABLE = 2;
constexpr WORD STN_DISABLE = 3;
