// System colours, rectangles, and the parts that windows and controls are drawn of.
//
//     RECT button{10, 10, 85, 33};
//     DrawFrameControl(dc, &button, DFC_BUTTON, DFCS_BUTTONPUSH);
//     DrawText(dc, "&Insert", -1, &button, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
//
// Rectangles are in logical points and half open: right and bottom lie outside. Errors: 0 or FALSE; a dead context sets
// ERROR_INVALID_HANDLE, a null pointer ERROR_INVALID_PARAMETER.
#pragma once

#include "win32/gdi.h"
#include "win32/types.h"

// ---- System colours ------------------------------------------------------------------------------------------------

constexpr int COLOR_SCROLLBAR = 0;
constexpr int COLOR_BACKGROUND = 1;
constexpr int COLOR_DESKTOP = COLOR_BACKGROUND;
constexpr int COLOR_ACTIVECAPTION = 2;
constexpr int COLOR_INACTIVECAPTION = 3;
constexpr int COLOR_MENU = 4;
constexpr int COLOR_WINDOW = 5;
constexpr int COLOR_WINDOWFRAME = 6;
constexpr int COLOR_MENUTEXT = 7;
constexpr int COLOR_WINDOWTEXT = 8;
constexpr int COLOR_CAPTIONTEXT = 9;
constexpr int COLOR_ACTIVEBORDER = 10;
constexpr int COLOR_INACTIVEBORDER = 11;
constexpr int COLOR_APPWORKSPACE = 12;
constexpr int COLOR_HIGHLIGHT = 13;
constexpr int COLOR_HIGHLIGHTTEXT = 14;
constexpr int COLOR_BTNFACE = 15;
constexpr int COLOR_3DFACE = COLOR_BTNFACE;
constexpr int COLOR_BTNSHADOW = 16;
constexpr int COLOR_3DSHADOW = COLOR_BTNSHADOW;
constexpr int COLOR_GRAYTEXT = 17;
constexpr int COLOR_BTNTEXT = 18;
constexpr int COLOR_INACTIVECAPTIONTEXT = 19;
constexpr int COLOR_BTNHIGHLIGHT = 20;
constexpr int COLOR_BTNHILIGHT = COLOR_BTNHIGHLIGHT;
constexpr int COLOR_3DHIGHLIGHT = COLOR_BTNHIGHLIGHT;
constexpr int COLOR_3DHILIGHT = COLOR_BTNHIGHLIGHT;
constexpr int COLOR_3DDKSHADOW = 21;
constexpr int COLOR_3DLIGHT = 22;
constexpr int COLOR_INFOTEXT = 23;
constexpr int COLOR_INFOBK = 24;
constexpr int COLOR_HOTLIGHT = 26;
constexpr int COLOR_GRADIENTACTIVECAPTION = 27;
constexpr int COLOR_GRADIENTINACTIVECAPTION = 28;

/// 0 (which is black, too) for an index that isn't known.
COLORREF GetSysColor(int index);
/// A brush that belongs to the system and stays for good; it follows SetSysColors. Null for an unknown index.
HBRUSH GetSysColorBrush(int index);
/// Nothing is repainted and nobody is told. FALSE, and nothing changes, when an index isn't known.
BOOL SetSysColors(int count, const INT* indexes, const COLORREF* colors);

// ---- Rectangles ----------------------------------------------------------------------------------------------------
// Results that don't fit into 32 bits wrap. A rectangle is empty when its right isn't above its left, or its bottom
// isn't above its top. Null pointers give FALSE and change nothing.

BOOL SetRect(RECT* rect, int left, int top, int right, int bottom);
BOOL SetRectEmpty(RECT* rect);
BOOL CopyRect(RECT* target, const RECT* source);
BOOL InflateRect(RECT* rect, int dx, int dy);
BOOL OffsetRect(RECT* rect, int dx, int dy);
/// FALSE, and an empty target, when they have nothing in common.
BOOL IntersectRect(RECT* target, const RECT* first, const RECT* second);
/// The smallest rectangle around both; an empty one doesn't count. FALSE when both are empty.
BOOL UnionRect(RECT* target, const RECT* first, const RECT* second);
/// The first without the second, where that leaves a rectangle; else the first. FALSE when nothing is left.
BOOL SubtractRect(RECT* target, const RECT* first, const RECT* second);
BOOL EqualRect(const RECT* first, const RECT* second);
BOOL IsRectEmpty(const RECT* rect);
BOOL PtInRect(const RECT* rect, POINT point);

// ---- Text in a rectangle -------------------------------------------------------------------------------------------

constexpr UINT DT_TOP = 0x00000000;
constexpr UINT DT_LEFT = 0x00000000;
constexpr UINT DT_CENTER = 0x00000001;
constexpr UINT DT_RIGHT = 0x00000002;
constexpr UINT DT_VCENTER = 0x00000004; // this and DT_BOTTOM with DT_SINGLELINE only
constexpr UINT DT_BOTTOM = 0x00000008;
constexpr UINT DT_WORDBREAK = 0x00000010;
constexpr UINT DT_SINGLELINE = 0x00000020; // line ends are characters like others
constexpr UINT DT_EXPANDTABS = 0x00000040;
constexpr UINT DT_TABSTOP = 0x00000080; // bits 8 to 15: characters of average width to a tab stop
constexpr UINT DT_NOCLIP = 0x00000100;
constexpr UINT DT_EXTERNALLEADING = 0x00000200;
constexpr UINT DT_CALCRECT = 0x00000400;      // measures: right and bottom of the rectangle are set, nothing is painted
constexpr UINT DT_NOPREFIX = 0x00000800;      // '&' is a character like others
constexpr UINT DT_EDITCONTROL = 0x00002000;   // a last line that is only partly visible isn't painted; words break
constexpr UINT DT_PATH_ELLIPSIS = 0x00004000; // of what doesn't fit, the middle gives way to "..."
constexpr UINT DT_END_ELLIPSIS = 0x00008000;  // of what doesn't fit, the end
constexpr UINT DT_MODIFYSTRING = 0x00010000;  // writes the shortened text to the buffer
constexpr UINT DT_WORD_ELLIPSIS = 0x00040000; // a word that doesn't fit ends in "..."
constexpr UINT DT_NOFULLWIDTHCHARBREAK = 0x00080000;
constexpr UINT DT_HIDEPREFIX = 0x00100000; // '&' is taken out, nothing is underlined
constexpr UINT DT_PREFIXONLY = 0x00200000; // only the underline is painted

struct DRAWTEXTPARAMS {
    UINT cbSize;
    int iTabLength;     // characters of average width; counts with DT_TABSTOP
    int iLeftMargin;    // pixels
    int iRightMargin;   // pixels
    UINT uiLengthDrawn; // set: characters that were handled
};

/// Paints text with the context's font and colours. `count` -1: the text ends in NUL. The height of the text in pixels;
/// with DT_VCENTER or DT_BOTTOM the distance from the rectangle's top to the text's bottom. With DT_MODIFYSTRING the
/// buffer must have room for four characters more. `count` 0 does nothing and answers 0; an empty text that ends in NUL
/// answers 1, and with DT_CALCRECT makes the rectangle empty.
int DrawTextA(HDC dc, LPCSTR text, int count, RECT* rect, UINT format);
/// The same with margins and tab width; `params` may be null.
int DrawTextExA(HDC dc, LPSTR text, int count, RECT* rect, UINT format, DRAWTEXTPARAMS* params);
VNDK_TEXT_CALL(DrawText);
VNDK_TEXT_CALL(DrawTextEx);

/// Paints text in columns. Tab stops are distances from `tabOrigin` in pixels, rising; a single one is the distance of
/// all; none: every 8 average widths. Text behind a tab to a negative stop ends there, its sign taken off. The size of
/// the text, height in the high word.
LONG TabbedTextOutA(HDC dc, int x, int y, LPCSTR text, int count, int tabCount, const INT* tabs, int tabOrigin);
DWORD GetTabbedTextExtentA(HDC dc, LPCSTR text, int count, int tabCount, const INT* tabs);
VNDK_TEXT_CALL(TabbedTextOut);
VNDK_TEXT_CALL(GetTabbedTextExtent);

// ---- Pictures and text in a state ----------------------------------------------------------------------------------

using DRAWSTATEPROC = BOOL (*)(HDC dc, LPARAM data, WPARAM wData, int width, int height);

constexpr UINT DST_COMPLEX = 0x0000;    // the procedure draws it
constexpr UINT DST_TEXT = 0x0001;       // data: the text; wData: its length, 0 when it ends in NUL
constexpr UINT DST_PREFIXTEXT = 0x0002; // the same, with '&' marks
constexpr UINT DST_ICON = 0x0003;       // data: an icon
constexpr UINT DST_BITMAP = 0x0004;     // data: a bitmap
constexpr UINT DSS_NORMAL = 0x0000;
constexpr UINT DSS_UNION = 0x0010;    // dithered
constexpr UINT DSS_DISABLED = 0x0020; // embossed
constexpr UINT DSS_MONO = 0x0080;     // in the colour of the brush
constexpr UINT DSS_HIDEPREFIX = 0x0200;
constexpr UINT DSS_PREFIXONLY = 0x0400;
constexpr UINT DSS_RIGHT = 0x8000; // text is aligned to the right

/// `brush` is used with DSS_MONO, `procedure` with DST_COMPLEX; with DST_TEXT and DST_PREFIXTEXT it may draw in place
/// of the system. Width or height 0 stands for the picture's own (not with DST_COMPLEX).
BOOL DrawStateA(HDC dc, HBRUSH brush, DRAWSTATEPROC procedure, LPARAM data, WPARAM wData, int x, int y, int width,
                int height, UINT flags);
VNDK_TEXT_CALL(DrawState);

// ---- Edges and parts of controls -----------------------------------------------------------------------------------

constexpr UINT BDR_RAISEDOUTER = 0x0001;
constexpr UINT BDR_SUNKENOUTER = 0x0002;
constexpr UINT BDR_RAISEDINNER = 0x0004;
constexpr UINT BDR_SUNKENINNER = 0x0008;
constexpr UINT BDR_OUTER = BDR_RAISEDOUTER | BDR_SUNKENOUTER;
constexpr UINT BDR_INNER = BDR_RAISEDINNER | BDR_SUNKENINNER;
constexpr UINT EDGE_RAISED = BDR_RAISEDOUTER | BDR_RAISEDINNER;
constexpr UINT EDGE_SUNKEN = BDR_SUNKENOUTER | BDR_SUNKENINNER;
constexpr UINT EDGE_ETCHED = BDR_SUNKENOUTER | BDR_RAISEDINNER;
constexpr UINT EDGE_BUMP = BDR_RAISEDOUTER | BDR_SUNKENINNER;

constexpr UINT BF_LEFT = 0x0001;
constexpr UINT BF_TOP = 0x0002;
constexpr UINT BF_RIGHT = 0x0004;
constexpr UINT BF_BOTTOM = 0x0008;
constexpr UINT BF_TOPLEFT = BF_TOP | BF_LEFT;
constexpr UINT BF_TOPRIGHT = BF_TOP | BF_RIGHT;
constexpr UINT BF_BOTTOMLEFT = BF_BOTTOM | BF_LEFT;
constexpr UINT BF_BOTTOMRIGHT = BF_BOTTOM | BF_RIGHT;
constexpr UINT BF_RECT = BF_LEFT | BF_TOP | BF_RIGHT | BF_BOTTOM;
constexpr UINT BF_MIDDLE = 0x0800; // fills the inside
constexpr UINT BF_SOFT = 0x1000;   // as buttons have it
constexpr UINT BF_ADJUST = 0x2000; // shrinks the rectangle to the inside
constexpr UINT BF_FLAT = 0x4000;
constexpr UINT BF_MONO = 0x8000;

BOOL DrawEdge(HDC dc, RECT* rect, UINT edge, UINT flags);

constexpr UINT DFC_CAPTION = 1;
constexpr UINT DFC_MENU = 2;
constexpr UINT DFC_SCROLL = 3;
constexpr UINT DFC_BUTTON = 4;

constexpr UINT DFCS_CAPTIONCLOSE = 0x0000;
constexpr UINT DFCS_CAPTIONMIN = 0x0001;
constexpr UINT DFCS_CAPTIONMAX = 0x0002;
constexpr UINT DFCS_CAPTIONRESTORE = 0x0003;
constexpr UINT DFCS_CAPTIONHELP = 0x0004;
// Menu parts are a black picture on white (a mask), as the platform gives them.
constexpr UINT DFCS_MENUARROW = 0x0000;
constexpr UINT DFCS_MENUCHECK = 0x0001;
constexpr UINT DFCS_MENUBULLET = 0x0002;
constexpr UINT DFCS_MENUARROWRIGHT = 0x0004;
constexpr UINT DFCS_SCROLLUP = 0x0000;
constexpr UINT DFCS_SCROLLDOWN = 0x0001;
constexpr UINT DFCS_SCROLLLEFT = 0x0002;
constexpr UINT DFCS_SCROLLRIGHT = 0x0003;
constexpr UINT DFCS_SCROLLCOMBOBOX = 0x0005;
constexpr UINT DFCS_SCROLLSIZEGRIP = 0x0008;
constexpr UINT DFCS_SCROLLSIZEGRIPRIGHT = 0x0010;
constexpr UINT DFCS_BUTTONCHECK = 0x0000;
constexpr UINT DFCS_BUTTONRADIOIMAGE = 0x0001;
constexpr UINT DFCS_BUTTONRADIOMASK = 0x0002;
constexpr UINT DFCS_BUTTONRADIO = 0x0004;
constexpr UINT DFCS_BUTTON3STATE = 0x0008;
constexpr UINT DFCS_BUTTONPUSH = 0x0010;
constexpr UINT DFCS_INACTIVE = 0x0100;
constexpr UINT DFCS_PUSHED = 0x0200;
constexpr UINT DFCS_CHECKED = 0x0400;
constexpr UINT DFCS_TRANSPARENT = 0x0800;
constexpr UINT DFCS_HOT = 0x1000;
constexpr UINT DFCS_ADJUSTRECT = 0x2000; // sets the rectangle to the inside of a push button
constexpr UINT DFCS_FLAT = 0x4000;
constexpr UINT DFCS_MONO = 0x8000;

BOOL DrawFrameControl(HDC dc, RECT* rect, UINT kind, UINT state);
/// A dotted line that inverts what is below: a second call with the same rectangle takes it off again. The dots depend
/// on the place in the context's surface.
BOOL DrawFocusRect(HDC dc, const RECT* rect);
