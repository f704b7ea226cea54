// Rich edit: the class "RICHEDIT". It reads rich text by EM_STREAMIN and shows it with its fonts, sizes, colours,
// paragraph formats; the messages of the plain edit control work too.
//
// Positions count characters; a paragraph's end is one.
#pragma once

#include "win32/edit.h"
#include "win32/window.h"

inline constexpr char RICHEDIT_CLASS10A[] = "RICHEDIT";
inline constexpr char RICHEDIT_CLASSA[] = "RichEdit20A";

struct CHARRANGE {
    LONG cpMin;
    LONG cpMax; // -1: the end
};
struct TEXTRANGEA {
    CHARRANGE chrg;
    LPSTR lpstrText; // has room for the range and a NUL
};
using TEXTRANGE = TEXTRANGEA;
struct FINDTEXTA {
    CHARRANGE chrg;
    LPCSTR lpstrText;
};

using EDITSTREAMCALLBACK = DWORD(CALLBACK*)(DWORD_PTR cookie, LPBYTE buffer, LONG count, LONG* done);
struct EDITSTREAM {
    DWORD_PTR dwCookie;
    DWORD dwError; // what the callback answered; -16: not rich text
    EDITSTREAMCALLBACK pfnCallback;
};
constexpr WPARAM SF_TEXT = 0x0001;
constexpr WPARAM SF_RTF = 0x0002;
constexpr WPARAM SFF_SELECTION = 0x8000;
constexpr WPARAM SFF_PLAINRTF = 0x4000;

constexpr UINT EM_CANPASTE = WM_USER + 50;
constexpr UINT EM_DISPLAYBAND = WM_USER + 51;
constexpr UINT EM_EXGETSEL = WM_USER + 52;       // lParam: CHARRANGE*
constexpr UINT EM_EXLIMITTEXT = WM_USER + 53;    // lParam: characters, 0: 64 K
constexpr UINT EM_EXLINEFROMCHAR = WM_USER + 54; // lParam: position
constexpr UINT EM_EXSETSEL = WM_USER + 55;       // lParam: CHARRANGE*
constexpr UINT EM_FINDTEXT = WM_USER + 56;
constexpr UINT EM_FORMATRANGE = WM_USER + 57;
constexpr UINT EM_GETCHARFORMAT = WM_USER + 58; // wParam: of the selection or the default
constexpr UINT EM_GETEVENTMASK = WM_USER + 59;
constexpr UINT EM_GETPARAFORMAT = WM_USER + 61;
constexpr UINT EM_GETSELTEXT = WM_USER + 62; // lParam: buffer; the length
constexpr UINT EM_HIDESELECTION = WM_USER + 63;
constexpr UINT EM_PASTESPECIAL = WM_USER + 64;
constexpr UINT EM_REQUESTRESIZE = WM_USER + 65;
constexpr UINT EM_SELECTIONTYPE = WM_USER + 66;
constexpr UINT EM_SETBKGNDCOLOR = WM_USER + 67; // wParam: the system's, lParam: COLORREF; the former
constexpr UINT EM_SETCHARFORMAT = WM_USER + 68; // wParam: SCF_
constexpr UINT EM_SETEVENTMASK = WM_USER + 69;
constexpr UINT EM_SETPARAFORMAT = WM_USER + 71;
constexpr UINT EM_SETTARGETDEVICE = WM_USER + 72;
constexpr UINT EM_STREAMIN = WM_USER + 73;  // wParam: SF_, lParam: EDITSTREAM*; the characters read
constexpr UINT EM_STREAMOUT = WM_USER + 74; // the bytes written
constexpr UINT EM_GETTEXTRANGE = WM_USER + 75;
constexpr UINT EM_FINDWORDBREAK = WM_USER + 76;
constexpr UINT EM_SETOPTIONS = WM_USER + 77;
constexpr UINT EM_GETOPTIONS = WM_USER + 78;
constexpr UINT EM_FINDTEXTEX = WM_USER + 79;

constexpr WPARAM SCF_SELECTION = 0x0001;
constexpr WPARAM SCF_WORD = 0x0002;
constexpr WPARAM SCF_DEFAULT = 0x0000;
constexpr WPARAM SCF_ALL = 0x0004;

constexpr DWORD CFM_BOLD = 0x00000001;
constexpr DWORD CFM_ITALIC = 0x00000002;
constexpr DWORD CFM_UNDERLINE = 0x00000004;
constexpr DWORD CFM_STRIKEOUT = 0x00000008;
constexpr DWORD CFM_PROTECTED = 0x00000010;
constexpr DWORD CFM_CHARSET = 0x08000000;
constexpr DWORD CFM_OFFSET = 0x10000000;
constexpr DWORD CFM_FACE = 0x20000000;
constexpr DWORD CFM_COLOR = 0x40000000;
constexpr DWORD CFM_SIZE = 0x80000000;
constexpr DWORD CFE_BOLD = 0x0001;
constexpr DWORD CFE_ITALIC = 0x0002;
constexpr DWORD CFE_UNDERLINE = 0x0004;
constexpr DWORD CFE_STRIKEOUT = 0x0008;
constexpr DWORD CFE_PROTECTED = 0x0010;
constexpr DWORD CFE_AUTOCOLOR = 0x40000000;

struct CHARFORMATA {
    UINT cbSize;
    DWORD dwMask;
    DWORD dwEffects;
    LONG yHeight; // twentieths of a point
    LONG yOffset;
    COLORREF crTextColor;
    BYTE bCharSet;
    BYTE bPitchAndFamily;
    char szFaceName[32];
};
using CHARFORMAT = CHARFORMATA;

constexpr DWORD PFM_STARTINDENT = 0x00000001;
constexpr DWORD PFM_RIGHTINDENT = 0x00000002;
constexpr DWORD PFM_OFFSET = 0x00000004;
constexpr DWORD PFM_ALIGNMENT = 0x00000008;
constexpr DWORD PFM_TABSTOPS = 0x00000010;
constexpr DWORD PFM_NUMBERING = 0x00000020;
constexpr WORD PFA_LEFT = 1;
constexpr WORD PFA_RIGHT = 2;
constexpr WORD PFA_CENTER = 3;
constexpr int MAX_TAB_STOPS = 32;
struct PARAFORMAT {
    UINT cbSize;
    DWORD dwMask;
    WORD wNumbering;
    WORD wReserved;
    LONG dxStartIndent; // twentieths of a point, also the others
    LONG dxRightIndent;
    LONG dxOffset;
    WORD wAlignment;
    SHORT cTabCount;
    LONG rgxTabs[MAX_TAB_STOPS];
};

constexpr DWORD ENM_NONE = 0x00000000;
constexpr DWORD ENM_CHANGE = 0x00000001;
constexpr DWORD ENM_UPDATE = 0x00000002;
constexpr DWORD ENM_SCROLL = 0x00000004;
constexpr DWORD ENM_KEYEVENTS = 0x00010000;
constexpr DWORD ENM_MOUSEEVENTS = 0x00020000;
constexpr DWORD ENM_SELCHANGE = 0x00080000;
constexpr UINT EN_MSGFILTER = 0x0700;
constexpr UINT EN_REQUESTRESIZE = 0x0701;
constexpr UINT EN_SELCHANGE = 0x0702;
constexpr WORD SEL_EMPTY = 0x0000;
constexpr WORD SEL_TEXT = 0x0001;
constexpr WORD SEL_MULTICHAR = 0x0004;
struct SELCHANGE {
    NMHDR nmhdr;
    CHARRANGE chrg;
    WORD seltyp;
};
struct MSGFILTER {
    NMHDR nmhdr;
    UINT msg;
    WPARAM wParam;
    LPARAM lParam;
};
