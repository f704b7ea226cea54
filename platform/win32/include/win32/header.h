// The header control: a row of titles over columns, whose dividers can be dragged.
//
//     HDITEM title{};
//     title.mask = HDI_TEXT | HDI_FORMAT | HDI_WIDTH;
//     title.pszText = text;
//     title.fmt = HDF_LEFT | HDF_STRING;
//     title.cxy = 100;
//     SendMessage(header, HDM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&title));
//
// An item has an index, given by the order of insertion at HDM_INSERTITEM, and an order, its place from the left.
// Changes by program (HDM_SETITEM) are notified as those by the user are: HDN_ITEMCHANGING, which a non-zero answer
// refuses, then HDN_ITEMCHANGED. Insertions, deletions and changes of the order by program are not notified.
// Pointers in items are copied; widths and rectangles are pixels in client coordinates.
#pragma once

#include "win32/commctrl.h"
#include "win32/gdi.h"
#include "win32/window.h"

inline constexpr LPCSTR WC_HEADERA = "SysHeader32";
inline constexpr LPCSTR WC_HEADER = WC_HEADERA;

constexpr DWORD HDS_HORZ = 0x0000;
constexpr DWORD HDS_BUTTONS = 0x0002; // items can be clicked
constexpr DWORD HDS_HOTTRACK = 0x0004;
constexpr DWORD HDS_HIDDEN = 0x0008;    // HDM_LAYOUT answers a height of 0
constexpr DWORD HDS_DRAGDROP = 0x0040;  // items can be dragged to another place
constexpr DWORD HDS_FULLDRAG = 0x0080;  // widths change while the divider is dragged
constexpr DWORD HDS_FILTERBAR = 0x0100; // not supported

// HDITEM::mask
constexpr UINT HDI_WIDTH = 0x0001;
constexpr UINT HDI_HEIGHT = HDI_WIDTH;
constexpr UINT HDI_TEXT = 0x0002;
constexpr UINT HDI_FORMAT = 0x0004;
constexpr UINT HDI_LPARAM = 0x0008;
constexpr UINT HDI_BITMAP = 0x0010;
constexpr UINT HDI_IMAGE = 0x0020;
constexpr UINT HDI_DI_SETITEM = 0x0040; // answer to HDN_GETDISPINFO: keep what was given
constexpr UINT HDI_ORDER = 0x0080;
constexpr UINT HDI_FILTER = 0x0100;

// HDITEM::fmt
constexpr int HDF_LEFT = 0x0000;
constexpr int HDF_RIGHT = 0x0001;
constexpr int HDF_CENTER = 0x0002;
constexpr int HDF_JUSTIFYMASK = 0x0003;
constexpr int HDF_RTLREADING = 0x0004;
constexpr int HDF_IMAGE = 0x0800;
constexpr int HDF_BITMAP_ON_RIGHT = 0x1000;
constexpr int HDF_BITMAP = 0x2000;
constexpr int HDF_STRING = 0x4000;
constexpr int HDF_OWNERDRAW = 0x8000; // WM_DRAWITEM with ODT_HEADER

constexpr UINT ODT_HEADER = 100;

struct HDITEMA {
    UINT mask;
    int cxy; // width
    LPSTR pszText;
    HBITMAP hbm; // stays the caller's
    int cchTextMax;
    int fmt;
    LPARAM lParam;
    int iImage;
    int iOrder;
    UINT type; // filters aren't supported
    LPVOID pvFilter;
};
using HDITEM = HDITEMA;
using HD_ITEM = HDITEMA;
using LPHDITEM = HDITEMA*;

struct HDLAYOUT {
    RECT* prc; // in: the space; out: what is left below the header
    struct WINDOWPOS* pwpos;
};
using HD_LAYOUT = HDLAYOUT;

constexpr UINT HHT_NOWHERE = 0x0001;
constexpr UINT HHT_ONHEADER = 0x0002;
constexpr UINT HHT_ONDIVIDER = 0x0004;
constexpr UINT HHT_ONDIVOPEN = 0x0008; // on the divider of an item of no width
constexpr UINT HHT_ABOVE = 0x0100;
constexpr UINT HHT_BELOW = 0x0200;
constexpr UINT HHT_TORIGHT = 0x0400;
constexpr UINT HHT_TOLEFT = 0x0800;

struct HDHITTESTINFO {
    POINT pt;
    UINT flags;
    int iItem;
};
using HD_HITTESTINFO = HDHITTESTINFO;
using LPHDHITTESTINFO = HDHITTESTINFO*;

constexpr UINT HDM_FIRST = 0x1200;
constexpr UINT HDM_GETITEMCOUNT = HDM_FIRST + 0;
constexpr UINT HDM_INSERTITEMA = HDM_FIRST + 1; // the new index; -1 on failure
constexpr UINT HDM_DELETEITEM = HDM_FIRST + 2;
constexpr UINT HDM_GETITEMA = HDM_FIRST + 3;
constexpr UINT HDM_SETITEMA = HDM_FIRST + 4;
constexpr UINT HDM_LAYOUT = HDM_FIRST + 5;
constexpr UINT HDM_HITTEST = HDM_FIRST + 6; // the item's index or -1
constexpr UINT HDM_GETITEMRECT = HDM_FIRST + 7;
constexpr UINT HDM_SETIMAGELIST = HDM_FIRST + 8; // the former list; the list stays the caller's
constexpr UINT HDM_GETIMAGELIST = HDM_FIRST + 9;
constexpr UINT HDM_INSERTITEMW = HDM_FIRST + 10;
constexpr UINT HDM_GETITEMW = HDM_FIRST + 11;
constexpr UINT HDM_SETITEMW = HDM_FIRST + 12;
constexpr UINT HDM_ORDERTOINDEX = HDM_FIRST + 15; // the same number when it is out of range
constexpr UINT HDM_CREATEDRAGIMAGE = HDM_FIRST + 16;
constexpr UINT HDM_GETORDERARRAY = HDM_FIRST + 17;
constexpr UINT HDM_SETORDERARRAY = HDM_FIRST + 18;
constexpr UINT HDM_SETHOTDIVIDER = HDM_FIRST + 19;
constexpr UINT HDM_SETBITMAPMARGIN = HDM_FIRST + 20;
constexpr UINT HDM_GETBITMAPMARGIN = HDM_FIRST + 21;
constexpr UINT HDM_SETFILTERCHANGETIMEOUT = HDM_FIRST + 22;
constexpr UINT HDM_EDITFILTER = HDM_FIRST + 23;
constexpr UINT HDM_CLEARFILTER = HDM_FIRST + 24;
constexpr UINT HDM_INSERTITEM = HDM_INSERTITEMA;
constexpr UINT HDM_GETITEM = HDM_GETITEMA;
constexpr UINT HDM_SETITEM = HDM_SETITEMA;

// Notifications; lParam is an NMHEADER where nothing else is said.
constexpr UINT HDN_FIRST = 0U - 300U;
constexpr UINT HDN_ITEMCHANGINGA = HDN_FIRST - 0U; // non-zero refuses the change
constexpr UINT HDN_ITEMCHANGEDA = HDN_FIRST - 1U;
constexpr UINT HDN_ITEMCLICKA = HDN_FIRST - 2U;
constexpr UINT HDN_ITEMDBLCLICKA = HDN_FIRST - 3U;
constexpr UINT HDN_DIVIDERDBLCLICKA = HDN_FIRST - 5U;
constexpr UINT HDN_BEGINTRACKA = HDN_FIRST - 6U; // non-zero: the divider doesn't move
constexpr UINT HDN_ENDTRACKA = HDN_FIRST - 7U;
constexpr UINT HDN_TRACKA = HDN_FIRST - 8U;       // while it moves, without HDS_FULLDRAG; non-zero ends it
constexpr UINT HDN_GETDISPINFOA = HDN_FIRST - 9U; // NMHDDISPINFO
constexpr UINT HDN_BEGINDRAG = HDN_FIRST - 10U;   // non-zero: the item isn't dragged
constexpr UINT HDN_ENDDRAG = HDN_FIRST - 11U;     // non-zero: it stays where it was
constexpr UINT HDN_FILTERCHANGE = HDN_FIRST - 12U;
constexpr UINT HDN_FILTERBTNCLICK = HDN_FIRST - 13U;
constexpr UINT HDN_ITEMCHANGING = HDN_ITEMCHANGINGA;
constexpr UINT HDN_ITEMCHANGED = HDN_ITEMCHANGEDA;
constexpr UINT HDN_ITEMCLICK = HDN_ITEMCLICKA;
constexpr UINT HDN_ITEMDBLCLICK = HDN_ITEMDBLCLICKA;
constexpr UINT HDN_DIVIDERDBLCLICK = HDN_DIVIDERDBLCLICKA;
constexpr UINT HDN_BEGINTRACK = HDN_BEGINTRACKA;
constexpr UINT HDN_ENDTRACK = HDN_ENDTRACKA;
constexpr UINT HDN_TRACK = HDN_TRACKA;
constexpr UINT HDN_GETDISPINFO = HDN_GETDISPINFOA;

struct NMHEADERA {
    NMHDR hdr;
    int iItem;
    int iButton;    // 0: left
    HDITEMA* pitem; // what changes; may be null
};
using NMHEADER = NMHEADERA;
using HD_NOTIFY = NMHEADERA;
using LPNMHEADER = NMHEADERA*;

struct NMHDDISPINFOA {
    NMHDR hdr;
    int iItem;
    UINT mask;
    LPSTR pszText;
    int cchTextMax;
    int iImage;
    LPARAM lParam;
};
using NMHDDISPINFO = NMHDDISPINFOA;
using LPNMHDDISPINFO = NMHDDISPINFOA*;

inline int Header_GetItemCount(HWND header) { return static_cast<int>(SendMessageA(header, HDM_GETITEMCOUNT, 0, 0)); }
inline int Header_InsertItem(HWND header, int index, const HDITEM* item) {
    return static_cast<int>(
        SendMessageA(header, HDM_INSERTITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item)));
}
inline BOOL Header_DeleteItem(HWND header, int index) {
    return static_cast<BOOL>(SendMessageA(header, HDM_DELETEITEM, static_cast<WPARAM>(index), 0));
}
inline BOOL Header_GetItem(HWND header, int index, HDITEM* item) {
    return static_cast<BOOL>(
        SendMessageA(header, HDM_GETITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item)));
}
inline BOOL Header_SetItem(HWND header, int index, const HDITEM* item) {
    return static_cast<BOOL>(
        SendMessageA(header, HDM_SETITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item)));
}
inline BOOL Header_Layout(HWND header, HDLAYOUT* layout) {
    return static_cast<BOOL>(SendMessageA(header, HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(layout)));
}
inline BOOL Header_GetItemRect(HWND header, int index, RECT* rect) {
    return static_cast<BOOL>(
        SendMessageA(header, HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect)));
}
inline HIMAGELIST Header_SetImageList(HWND header, HIMAGELIST images) {
    return reinterpret_cast<HIMAGELIST>(SendMessageA(header, HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(images)));
}
inline int Header_OrderToIndex(HWND header, int order) {
    return static_cast<int>(SendMessageA(header, HDM_ORDERTOINDEX, static_cast<WPARAM>(order), 0));
}
