// The list view: items with pictures, as icons, small icons, a list in columns, or a report with sub-items.
//
//     LVITEM item{};
//     item.mask = LVIF_TEXT | LVIF_IMAGE;
//     item.iItem = SendMessage(list, LVM_GETITEMCOUNT, 0, 0);
//     item.pszText = name;
//     item.iImage = 0;
//     SendMessage(list, LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(&item));
//
// Indexes count from 0; -1 means "none", or "all" where a message says so. Units are pixels. Rectangles and hit tests
// are in client coordinates; positions of items (LVM_GETITEMPOSITION) are view coordinates in icon and small icon view,
// that is client coordinates plus LVM_GETORIGIN, and client coordinates else. Texts are copied; LPSTR_TEXTCALLBACK,
// I_IMAGECALLBACK and I_INDENTCALLBACK make the list ask with LVN_GETDISPINFO. Image lists given with LVM_SETIMAGELIST
// belong to the list view from then on, unless it has LVS_SHAREIMAGELISTS.
//
// Notifications. Items changed by program are notified as those changed by the user are: LVN_ITEMCHANGING (a non-zero
// answer refuses), then LVN_ITEMCHANGED, for text, image, lParam and state; only changes of sub-items tell no state.
// LVN_INSERTITEM, LVN_DELETEITEM and LVN_DELETEALLITEMS come for every call, too. Sorting, moving, scrolling and
// columns aren't notified. With LVS_OWNERDATA there are no LVN_ITEMCHANGING; a state set for all items gives one
// LVN_ITEMCHANGED for item -1.
#pragma once

#include "win32/commctrl.h"
#include "win32/gdi.h"
#include "win32/window.h"

inline constexpr LPCSTR WC_LISTVIEWA = "SysListView32";
inline constexpr LPCSTR WC_LISTVIEW = WC_LISTVIEWA;

constexpr DWORD LVS_ICON = 0x0000;
constexpr DWORD LVS_REPORT = 0x0001;
constexpr DWORD LVS_SMALLICON = 0x0002;
constexpr DWORD LVS_LIST = 0x0003;
constexpr DWORD LVS_TYPEMASK = 0x0003;
constexpr DWORD LVS_SINGLESEL = 0x0004;
constexpr DWORD LVS_SHOWSELALWAYS = 0x0008;
constexpr DWORD LVS_SORTASCENDING = 0x0010;
constexpr DWORD LVS_SORTDESCENDING = 0x0020;
constexpr DWORD LVS_SHAREIMAGELISTS = 0x0040;
constexpr DWORD LVS_NOLABELWRAP = 0x0080;
constexpr DWORD LVS_AUTOARRANGE = 0x0100;
constexpr DWORD LVS_EDITLABELS = 0x0200;
constexpr DWORD LVS_OWNERDRAWFIXED = 0x0400; // report view only
constexpr DWORD LVS_ALIGNTOP = 0x0000;
constexpr DWORD LVS_ALIGNLEFT = 0x0800;
constexpr DWORD LVS_ALIGNMASK = 0x0C00;
constexpr DWORD LVS_OWNERDATA = 0x1000;
constexpr DWORD LVS_NOSCROLL = 0x2000;
constexpr DWORD LVS_NOCOLUMNHEADER = 0x4000;
constexpr DWORD LVS_NOSORTHEADER = 0x8000;
constexpr DWORD LVS_TYPESTYLEMASK = 0xFC00;

constexpr DWORD LVS_EX_GRIDLINES = 0x00000001;
constexpr DWORD LVS_EX_SUBITEMIMAGES = 0x00000002;
constexpr DWORD LVS_EX_CHECKBOXES = 0x00000004;
constexpr DWORD LVS_EX_TRACKSELECT = 0x00000008;
constexpr DWORD LVS_EX_HEADERDRAGDROP = 0x00000010;
constexpr DWORD LVS_EX_FULLROWSELECT = 0x00000020;
constexpr DWORD LVS_EX_ONECLICKACTIVATE = 0x00000040;
constexpr DWORD LVS_EX_TWOCLICKACTIVATE = 0x00000080;
constexpr DWORD LVS_EX_FLATSB = 0x00000100;
constexpr DWORD LVS_EX_REGIONAL = 0x00000200;
constexpr DWORD LVS_EX_INFOTIP = 0x00000400;
constexpr DWORD LVS_EX_UNDERLINEHOT = 0x00000800;
constexpr DWORD LVS_EX_UNDERLINECOLD = 0x00001000;
constexpr DWORD LVS_EX_MULTIWORKAREAS = 0x00002000;
constexpr DWORD LVS_EX_LABELTIP = 0x00004000;

constexpr int LVSIL_NORMAL = 0;
constexpr int LVSIL_SMALL = 1;
constexpr int LVSIL_STATE = 2;

// LVITEM::mask
constexpr UINT LVIF_TEXT = 0x0001;
constexpr UINT LVIF_IMAGE = 0x0002;
constexpr UINT LVIF_PARAM = 0x0004;
constexpr UINT LVIF_STATE = 0x0008;
constexpr UINT LVIF_INDENT = 0x0010;
constexpr UINT LVIF_NORECOMPUTE = 0x0800; // LVM_GETITEM: don't ask the parent, answer the placeholder
constexpr UINT LVIF_DI_SETITEM = 0x1000;  // answer to LVN_GETDISPINFO: keep what was given

// LVITEM::state
constexpr UINT LVIS_FOCUSED = 0x0001;
constexpr UINT LVIS_SELECTED = 0x0002;
constexpr UINT LVIS_CUT = 0x0004;
constexpr UINT LVIS_DROPHILITED = 0x0008;
constexpr UINT LVIS_GLOW = 0x0010;
constexpr UINT LVIS_ACTIVATING = 0x0020;
constexpr UINT LVIS_OVERLAYMASK = 0x0F00;
constexpr UINT LVIS_STATEIMAGEMASK = 0xF000;

struct LVITEMA {
    UINT mask;
    int iItem;
    int iSubItem; // 0: the item itself
    UINT state;
    UINT stateMask; // which bits of `state` are meant
    LPSTR pszText;
    int cchTextMax; // size of the buffer when text is asked for
    int iImage;
    LPARAM lParam;
    int iIndent; // in widths of a small image; report view
};
using LVITEM = LVITEMA;
using LV_ITEM = LVITEMA;
using LPLVITEM = LVITEMA*;
using LPCLVITEM = const LVITEMA*;

// LVM_GETNEXTITEM
constexpr UINT LVNI_ALL = 0x0000;
constexpr UINT LVNI_FOCUSED = 0x0001;
constexpr UINT LVNI_SELECTED = 0x0002;
constexpr UINT LVNI_CUT = 0x0004;
constexpr UINT LVNI_DROPHILITED = 0x0008;
constexpr UINT LVNI_ABOVE = 0x0100;
constexpr UINT LVNI_BELOW = 0x0200;
constexpr UINT LVNI_TOLEFT = 0x0400;
constexpr UINT LVNI_TORIGHT = 0x0800;

// LVFINDINFO::flags
constexpr UINT LVFI_PARAM = 0x0001;
constexpr UINT LVFI_STRING = 0x0002;
constexpr UINT LVFI_SUBSTRING = 0x0004; // the same as LVFI_PARTIAL
constexpr UINT LVFI_PARTIAL = 0x0008;
constexpr UINT LVFI_WRAP = 0x0020;
constexpr UINT LVFI_NEARESTXY = 0x0040; // icon and small icon view

struct LVFINDINFOA {
    UINT flags;
    LPCSTR psz;
    LPARAM lParam;
    POINT pt;
    UINT vkDirection; // with LVFI_NEARESTXY
};
using LVFINDINFO = LVFINDINFOA;
using LV_FINDINFO = LVFINDINFOA;
using LPFINDINFO = LVFINDINFOA*;

// LVM_GETITEMRECT
constexpr int LVIR_BOUNDS = 0;
constexpr int LVIR_ICON = 1;
constexpr int LVIR_LABEL = 2;
constexpr int LVIR_SELECTBOUNDS = 3;

// LVHITTESTINFO::flags
constexpr UINT LVHT_NOWHERE = 0x0001;
constexpr UINT LVHT_ONITEMICON = 0x0002;
constexpr UINT LVHT_ONITEMLABEL = 0x0004;
constexpr UINT LVHT_ONITEMSTATEICON = 0x0008;
constexpr UINT LVHT_ONITEM = LVHT_ONITEMICON | LVHT_ONITEMLABEL | LVHT_ONITEMSTATEICON;
constexpr UINT LVHT_ABOVE = 0x0008;
constexpr UINT LVHT_BELOW = 0x0010;
constexpr UINT LVHT_TORIGHT = 0x0020;
constexpr UINT LVHT_TOLEFT = 0x0040;

struct LVHITTESTINFO {
    POINT pt;
    UINT flags;
    int iItem;
    int iSubItem; // LVM_SUBITEMHITTEST
};
using LV_HITTESTINFO = LVHITTESTINFO;
using LPLVHITTESTINFO = LVHITTESTINFO*;

// LVM_ARRANGE
constexpr UINT LVA_DEFAULT = 0x0000;
constexpr UINT LVA_ALIGNLEFT = 0x0001;
constexpr UINT LVA_ALIGNTOP = 0x0002;
constexpr UINT LVA_SNAPTOGRID = 0x0005;

// LVCOLUMN::mask
constexpr UINT LVCF_FMT = 0x0001;
constexpr UINT LVCF_WIDTH = 0x0002;
constexpr UINT LVCF_TEXT = 0x0004;
constexpr UINT LVCF_SUBITEM = 0x0008;
constexpr UINT LVCF_IMAGE = 0x0010;
constexpr UINT LVCF_ORDER = 0x0020;

// LVCOLUMN::fmt. Column 0 is always left aligned.
constexpr int LVCFMT_LEFT = 0x0000;
constexpr int LVCFMT_RIGHT = 0x0001;
constexpr int LVCFMT_CENTER = 0x0002;
constexpr int LVCFMT_JUSTIFYMASK = 0x0003;
constexpr int LVCFMT_IMAGE = 0x0800;
constexpr int LVCFMT_BITMAP_ON_RIGHT = 0x1000;
constexpr int LVCFMT_COL_HAS_IMAGES = 0x8000;

struct LVCOLUMNA {
    UINT mask;
    int fmt;
    int cx;
    LPSTR pszText;
    int cchTextMax;
    int iSubItem;
    int iImage;
    int iOrder;
};
using LVCOLUMN = LVCOLUMNA;
using LV_COLUMN = LVCOLUMNA;
using LPLVCOLUMN = LVCOLUMNA*;

// LVM_SETCOLUMNWIDTH
constexpr int LVSCW_AUTOSIZE = -1;
constexpr int LVSCW_AUTOSIZE_USEHEADER = -2;

// LVM_SETITEMCOUNT of a list with LVS_OWNERDATA
constexpr DWORD LVSICF_NOINVALIDATEALL = 0x0001;
constexpr DWORD LVSICF_NOSCROLL = 0x0002;

using PFNLVCOMPARE = int(CALLBACK*)(LPARAM first, LPARAM second, LPARAM sort);

// LVM_SETBKIMAGE (only LVBKIF_SOURCE_NONE can be set)
constexpr ULONG LVBKIF_SOURCE_NONE = 0x00000000;
constexpr ULONG LVBKIF_SOURCE_HBITMAP = 0x00000001;
constexpr ULONG LVBKIF_SOURCE_URL = 0x00000002;
constexpr ULONG LVBKIF_SOURCE_MASK = 0x00000003;
struct LVBKIMAGEA {
    ULONG ulFlags;
    HBITMAP hbm;
    LPSTR pszImage;
    UINT cchImageMax;
    int xOffsetPercent;
    int yOffsetPercent;
};
using LVBKIMAGE = LVBKIMAGEA;

constexpr UINT LVM_FIRST = 0x1000;
constexpr UINT LVM_GETBKCOLOR = LVM_FIRST + 0;
constexpr UINT LVM_SETBKCOLOR = LVM_FIRST + 1; // CLR_NONE: the parent's background shows
constexpr UINT LVM_GETIMAGELIST = LVM_FIRST + 2;
constexpr UINT LVM_SETIMAGELIST = LVM_FIRST + 3; // the former list
constexpr UINT LVM_GETITEMCOUNT = LVM_FIRST + 4;
constexpr UINT LVM_GETITEMA = LVM_FIRST + 5; // the buffer takes the text, or pszText points at another
constexpr UINT LVM_SETITEMA = LVM_FIRST + 6;
constexpr UINT LVM_INSERTITEMA = LVM_FIRST + 7; // the new index or -1
constexpr UINT LVM_DELETEITEM = LVM_FIRST + 8;
constexpr UINT LVM_DELETEALLITEMS = LVM_FIRST + 9;
constexpr UINT LVM_GETCALLBACKMASK = LVM_FIRST + 10;
constexpr UINT LVM_SETCALLBACKMASK = LVM_FIRST + 11;
constexpr UINT LVM_GETNEXTITEM = LVM_FIRST + 12;
constexpr UINT LVM_FINDITEMA = LVM_FIRST + 13;
constexpr UINT LVM_GETITEMRECT = LVM_FIRST + 14; // LVIR_ in `left`
constexpr UINT LVM_SETITEMPOSITION = LVM_FIRST + 15;
constexpr UINT LVM_GETITEMPOSITION = LVM_FIRST + 16;
constexpr UINT LVM_GETSTRINGWIDTHA = LVM_FIRST + 17;
constexpr UINT LVM_HITTEST = LVM_FIRST + 18;
constexpr UINT LVM_ENSUREVISIBLE = LVM_FIRST + 19;
constexpr UINT LVM_SCROLL = LVM_FIRST + 20; // pixels; list view: wParam counts columns; report: lines are rounded to
constexpr UINT LVM_REDRAWITEMS = LVM_FIRST + 21;
constexpr UINT LVM_ARRANGE = LVM_FIRST + 22;
constexpr UINT LVM_EDITLABELA = LVM_FIRST + 23; // the edit control
constexpr UINT LVM_GETEDITCONTROL = LVM_FIRST + 24;
constexpr UINT LVM_GETCOLUMNA = LVM_FIRST + 25;
constexpr UINT LVM_SETCOLUMNA = LVM_FIRST + 26;
constexpr UINT LVM_INSERTCOLUMNA = LVM_FIRST + 27;
constexpr UINT LVM_DELETECOLUMN = LVM_FIRST + 28;
constexpr UINT LVM_GETCOLUMNWIDTH = LVM_FIRST + 29;
constexpr UINT LVM_SETCOLUMNWIDTH = LVM_FIRST + 30;
constexpr UINT LVM_GETHEADER = LVM_FIRST + 31; // null while there was neither report view nor a column
constexpr UINT LVM_CREATEDRAGIMAGE = LVM_FIRST + 33;
constexpr UINT LVM_GETVIEWRECT = LVM_FIRST + 34;
constexpr UINT LVM_GETTEXTCOLOR = LVM_FIRST + 35;
constexpr UINT LVM_SETTEXTCOLOR = LVM_FIRST + 36;
constexpr UINT LVM_GETTEXTBKCOLOR = LVM_FIRST + 37;
constexpr UINT LVM_SETTEXTBKCOLOR = LVM_FIRST + 38;
constexpr UINT LVM_GETTOPINDEX = LVM_FIRST + 39;
constexpr UINT LVM_GETCOUNTPERPAGE = LVM_FIRST + 40;
constexpr UINT LVM_GETORIGIN = LVM_FIRST + 41;
constexpr UINT LVM_UPDATE = LVM_FIRST + 42;
constexpr UINT LVM_SETITEMSTATE = LVM_FIRST + 43; // item -1: all
constexpr UINT LVM_GETITEMSTATE = LVM_FIRST + 44;
constexpr UINT LVM_GETITEMTEXTA = LVM_FIRST + 45; // the length
constexpr UINT LVM_SETITEMTEXTA = LVM_FIRST + 46;
constexpr UINT LVM_SETITEMCOUNT = LVM_FIRST + 47;
constexpr UINT LVM_SORTITEMS = LVM_FIRST + 48;
constexpr UINT LVM_SETITEMPOSITION32 = LVM_FIRST + 49;
constexpr UINT LVM_GETSELECTEDCOUNT = LVM_FIRST + 50;
constexpr UINT LVM_GETITEMSPACING = LVM_FIRST + 51;
constexpr UINT LVM_GETISEARCHSTRINGA = LVM_FIRST + 52;
constexpr UINT LVM_SETICONSPACING = LVM_FIRST + 53;           // the former spacing; -1: the system's
constexpr UINT LVM_SETEXTENDEDLISTVIEWSTYLE = LVM_FIRST + 54; // wParam: mask, 0 for all; the former styles
constexpr UINT LVM_GETEXTENDEDLISTVIEWSTYLE = LVM_FIRST + 55;
constexpr UINT LVM_GETSUBITEMRECT = LVM_FIRST + 56; // sub-item in `top`, LVIR_ in `left`
constexpr UINT LVM_SUBITEMHITTEST = LVM_FIRST + 57;
constexpr UINT LVM_SETCOLUMNORDERARRAY = LVM_FIRST + 58;
constexpr UINT LVM_GETCOLUMNORDERARRAY = LVM_FIRST + 59;
constexpr UINT LVM_SETHOTITEM = LVM_FIRST + 60;
constexpr UINT LVM_GETHOTITEM = LVM_FIRST + 61;
constexpr UINT LVM_SETHOTCURSOR = LVM_FIRST + 62;
constexpr UINT LVM_GETHOTCURSOR = LVM_FIRST + 63;
constexpr UINT LVM_APPROXIMATEVIEWRECT = LVM_FIRST + 64;
constexpr UINT LVM_SETWORKAREAS = LVM_FIRST + 65;
constexpr UINT LVM_GETSELECTIONMARK = LVM_FIRST + 66;
constexpr UINT LVM_SETSELECTIONMARK = LVM_FIRST + 67; // the former mark
constexpr UINT LVM_SETBKIMAGEA = LVM_FIRST + 68;
constexpr UINT LVM_GETBKIMAGEA = LVM_FIRST + 69;
constexpr UINT LVM_GETWORKAREAS = LVM_FIRST + 70;
constexpr UINT LVM_SETHOVERTIME = LVM_FIRST + 71;
constexpr UINT LVM_GETHOVERTIME = LVM_FIRST + 72;
constexpr UINT LVM_GETNUMBEROFWORKAREAS = LVM_FIRST + 73;
constexpr UINT LVM_SETTOOLTIPS = LVM_FIRST + 74;
constexpr UINT LVM_GETITEMW = LVM_FIRST + 75;
constexpr UINT LVM_SETITEMW = LVM_FIRST + 76;
constexpr UINT LVM_INSERTITEMW = LVM_FIRST + 77;
constexpr UINT LVM_GETTOOLTIPS = LVM_FIRST + 78;
constexpr UINT LVM_SORTITEMSEX = LVM_FIRST + 81; // the procedure gets indexes
constexpr UINT LVM_FINDITEMW = LVM_FIRST + 83;
constexpr UINT LVM_GETSTRINGWIDTHW = LVM_FIRST + 87;
constexpr UINT LVM_GETCOLUMNW = LVM_FIRST + 95;
constexpr UINT LVM_SETCOLUMNW = LVM_FIRST + 96;
constexpr UINT LVM_INSERTCOLUMNW = LVM_FIRST + 97;
constexpr UINT LVM_GETITEMTEXTW = LVM_FIRST + 115;
constexpr UINT LVM_SETITEMTEXTW = LVM_FIRST + 116;
constexpr UINT LVM_GETISEARCHSTRINGW = LVM_FIRST + 117;
constexpr UINT LVM_EDITLABELW = LVM_FIRST + 118;
constexpr UINT LVM_SETBKIMAGEW = LVM_FIRST + 138;
constexpr UINT LVM_GETBKIMAGEW = LVM_FIRST + 139;
constexpr UINT LVM_GETITEM = LVM_GETITEMA;
constexpr UINT LVM_SETITEM = LVM_SETITEMA;
constexpr UINT LVM_INSERTITEM = LVM_INSERTITEMA;
constexpr UINT LVM_FINDITEM = LVM_FINDITEMA;
constexpr UINT LVM_GETSTRINGWIDTH = LVM_GETSTRINGWIDTHA;
constexpr UINT LVM_EDITLABEL = LVM_EDITLABELA;
constexpr UINT LVM_GETCOLUMN = LVM_GETCOLUMNA;
constexpr UINT LVM_SETCOLUMN = LVM_SETCOLUMNA;
constexpr UINT LVM_INSERTCOLUMN = LVM_INSERTCOLUMNA;
constexpr UINT LVM_GETITEMTEXT = LVM_GETITEMTEXTA;
constexpr UINT LVM_SETITEMTEXT = LVM_SETITEMTEXTA;
constexpr UINT LVM_GETISEARCHSTRING = LVM_GETISEARCHSTRINGA;
constexpr UINT LVM_SETBKIMAGE = LVM_SETBKIMAGEA;
constexpr UINT LVM_GETBKIMAGE = LVM_GETBKIMAGEA;

// Notifications; lParam is an NMLISTVIEW where nothing else is said.
constexpr UINT LVN_FIRST = 0U - 100U;
constexpr UINT LVN_ITEMCHANGING = LVN_FIRST - 0U; // non-zero refuses the change
constexpr UINT LVN_ITEMCHANGED = LVN_FIRST - 1U;
constexpr UINT LVN_INSERTITEM = LVN_FIRST - 2U;
constexpr UINT LVN_DELETEITEM = LVN_FIRST - 3U;      // the item is still there
constexpr UINT LVN_DELETEALLITEMS = LVN_FIRST - 4U;  // non-zero: no LVN_DELETEITEM for each
constexpr UINT LVN_BEGINLABELEDITA = LVN_FIRST - 5U; // NMLVDISPINFO; non-zero: no editing
constexpr UINT LVN_ENDLABELEDITA = LVN_FIRST - 6U;   // NMLVDISPINFO, null text: cancelled; non-zero takes the text
constexpr UINT LVN_COLUMNCLICK = LVN_FIRST - 8U;     // iItem -1, iSubItem: the column
constexpr UINT LVN_BEGINDRAG = LVN_FIRST - 9U;
constexpr UINT LVN_BEGINRDRAG = LVN_FIRST - 11U;
constexpr UINT LVN_ODCACHEHINT = LVN_FIRST - 13U;    // NMLVCACHEHINT
constexpr UINT LVN_ITEMACTIVATE = LVN_FIRST - 14U;   // NMITEMACTIVATE
constexpr UINT LVN_ODSTATECHANGED = LVN_FIRST - 15U; // NMLVODSTATECHANGE
constexpr UINT LVN_HOTTRACK = LVN_FIRST - 21U;       // non-zero: no tracking
constexpr UINT LVN_GETDISPINFOA = LVN_FIRST - 50U;   // NMLVDISPINFO
constexpr UINT LVN_SETDISPINFOA = LVN_FIRST - 51U;
constexpr UINT LVN_ODFINDITEMA = LVN_FIRST - 52U;  // NMLVFINDITEM; the index or -1
constexpr UINT LVN_KEYDOWN = LVN_FIRST - 55U;      // NMLVKEYDOWN
constexpr UINT LVN_MARQUEEBEGIN = LVN_FIRST - 56U; // NMLISTVIEW of nothing; non-zero: no rubber band
constexpr UINT LVN_GETINFOTIPA = LVN_FIRST - 57U;
constexpr UINT LVN_BEGINLABELEDIT = LVN_BEGINLABELEDITA;
constexpr UINT LVN_ENDLABELEDIT = LVN_ENDLABELEDITA;
constexpr UINT LVN_GETDISPINFO = LVN_GETDISPINFOA;
constexpr UINT LVN_SETDISPINFO = LVN_SETDISPINFOA;
constexpr UINT LVN_ODFINDITEM = LVN_ODFINDITEMA;
constexpr UINT LVN_GETINFOTIP = LVN_GETINFOTIPA;

struct NMLISTVIEW {
    NMHDR hdr;
    int iItem; // -1: all, or none
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged; // LVIF_
    POINT ptAction;
    LPARAM lParam;
};
using NM_LISTVIEW = NMLISTVIEW;
using LPNMLISTVIEW = NMLISTVIEW*;

constexpr UINT LVKF_ALT = 0x0001;
constexpr UINT LVKF_CONTROL = 0x0002;
constexpr UINT LVKF_SHIFT = 0x0004;

/// LVN_ITEMACTIVATE, NM_CLICK, NM_DBLCLK, NM_RCLICK, NM_RDBLCLK
struct NMITEMACTIVATE {
    NMHDR hdr;
    int iItem;
    int iSubItem;
    UINT uNewState;
    UINT uOldState;
    UINT uChanged;
    POINT ptAction;
    LPARAM lParam;
    UINT uKeyFlags; // LVKF_
};
using LPNMITEMACTIVATE = NMITEMACTIVATE*;

struct NMLVDISPINFOA {
    NMHDR hdr;
    LVITEMA item;
};
using NMLVDISPINFO = NMLVDISPINFOA;
using LV_DISPINFO = NMLVDISPINFOA;
using LPNMLVDISPINFO = NMLVDISPINFOA*;

struct NMLVKEYDOWN {
    NMHDR hdr;
    WORD wVKey;
    UINT flags;
};
using LV_KEYDOWN = NMLVKEYDOWN;
using LPNMLVKEYDOWN = NMLVKEYDOWN*;

struct NMLVFINDITEMA {
    NMHDR hdr;
    int iStart;
    LVFINDINFOA lvfi;
};
using NMLVFINDITEM = NMLVFINDITEMA;
using LPNMLVFINDITEM = NMLVFINDITEMA*;

struct NMLVCACHEHINT {
    NMHDR hdr;
    int iFrom;
    int iTo;
};
using LPNMLVCACHEHINT = NMLVCACHEHINT*;

struct NMLVODSTATECHANGE {
    NMHDR hdr;
    int iFrom;
    int iTo;
    UINT uNewState;
    UINT uOldState;
};
using LPNMLVODSTATECHANGE = NMLVODSTATECHANGE*;

struct NMLVGETINFOTIPA {
    NMHDR hdr;
    DWORD dwFlags;
    LPSTR pszText;
    int cchTextMax;
    int iItem;
    int iSubItem;
    LPARAM lParam;
};
using NMLVGETINFOTIP = NMLVGETINFOTIPA;
constexpr DWORD LVGIT_UNFOLDED = 0x0001;

struct NMLVCUSTOMDRAW {
    NMCUSTOMDRAW nmcd;
    COLORREF clrText;
    COLORREF clrTextBk;
    int iSubItem;
};
using LPNMLVCUSTOMDRAW = NMLVCUSTOMDRAW*;

// The published short forms.
inline int ListView_GetItemCount(HWND list) { return static_cast<int>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0)); }
inline int ListView_InsertItem(HWND list, const LVITEM* item) {
    return static_cast<int>(SendMessageA(list, LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(item)));
}
inline BOOL ListView_GetItem(HWND list, LVITEM* item) {
    return static_cast<BOOL>(SendMessageA(list, LVM_GETITEM, 0, reinterpret_cast<LPARAM>(item)));
}
inline BOOL ListView_SetItem(HWND list, const LVITEM* item) {
    return static_cast<BOOL>(SendMessageA(list, LVM_SETITEM, 0, reinterpret_cast<LPARAM>(item)));
}
inline BOOL ListView_DeleteItem(HWND list, int index) {
    return static_cast<BOOL>(SendMessageA(list, LVM_DELETEITEM, static_cast<WPARAM>(index), 0));
}
inline BOOL ListView_DeleteAllItems(HWND list) {
    return static_cast<BOOL>(SendMessageA(list, LVM_DELETEALLITEMS, 0, 0));
}
inline int ListView_GetNextItem(HWND list, int start, UINT flags) {
    return static_cast<int>(
        SendMessageA(list, LVM_GETNEXTITEM, static_cast<WPARAM>(start), MAKELPARAM(static_cast<int>(flags), 0)));
}
inline void ListView_SetItemState(HWND list, int index, UINT state, UINT mask) {
    LVITEM item{};
    item.state = state;
    item.stateMask = mask;
    SendMessageA(list, LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}
inline UINT ListView_GetItemState(HWND list, int index, UINT mask) {
    return static_cast<UINT>(SendMessageA(list, LVM_GETITEMSTATE, static_cast<WPARAM>(index), mask));
}
inline void ListView_SetItemText(HWND list, int index, int subItem, LPSTR text) {
    LVITEM item{};
    item.iSubItem = subItem;
    item.pszText = text;
    SendMessageA(list, LVM_SETITEMTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}
inline void ListView_GetItemText(HWND list, int index, int subItem, LPSTR buffer, int size) {
    LVITEM item{};
    item.iSubItem = subItem;
    item.pszText = buffer;
    item.cchTextMax = size;
    SendMessageA(list, LVM_GETITEMTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
}
inline BOOL ListView_GetItemRect(HWND list, int index, RECT* rect, int part) {
    if (rect != nullptr)
        rect->left = part;
    return static_cast<BOOL>(
        SendMessageA(list, LVM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect)));
}
inline BOOL ListView_GetSubItemRect(HWND list, int index, int subItem, int part, RECT* rect) {
    if (rect != nullptr) {
        rect->top = subItem;
        rect->left = part;
    }
    return static_cast<BOOL>(
        SendMessageA(list, LVM_GETSUBITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect)));
}
inline int ListView_HitTest(HWND list, LVHITTESTINFO* info) {
    return static_cast<int>(SendMessageA(list, LVM_HITTEST, 0, reinterpret_cast<LPARAM>(info)));
}
inline int ListView_SubItemHitTest(HWND list, LVHITTESTINFO* info) {
    return static_cast<int>(SendMessageA(list, LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(info)));
}
inline BOOL ListView_EnsureVisible(HWND list, int index, BOOL partialIsEnough) {
    return static_cast<BOOL>(SendMessageA(list, LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), partialIsEnough));
}
inline int ListView_InsertColumn(HWND list, int index, const LVCOLUMN* column) {
    return static_cast<int>(
        SendMessageA(list, LVM_INSERTCOLUMN, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(column)));
}
inline HIMAGELIST ListView_SetImageList(HWND list, HIMAGELIST images, int which) {
    return reinterpret_cast<HIMAGELIST>(
        SendMessageA(list, LVM_SETIMAGELIST, static_cast<WPARAM>(which), reinterpret_cast<LPARAM>(images)));
}
inline DWORD ListView_SetExtendedListViewStyle(HWND list, DWORD styles) {
    return static_cast<DWORD>(SendMessageA(list, LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(styles)));
}
inline HWND ListView_GetHeader(HWND list) { return reinterpret_cast<HWND>(SendMessageA(list, LVM_GETHEADER, 0, 0)); }
inline BOOL ListView_SortItems(HWND list, PFNLVCOMPARE compare, LPARAM sort) {
    return static_cast<BOOL>(
        SendMessageA(list, LVM_SORTITEMS, static_cast<WPARAM>(sort), reinterpret_cast<LPARAM>(compare)));
}
inline UINT ListView_GetCheckState(HWND list, int index) {
    return (ListView_GetItemState(list, index, LVIS_STATEIMAGEMASK) >> 12) - 1;
}
inline void ListView_SetCheckState(HWND list, int index, BOOL checked) {
    ListView_SetItemState(list, index, INDEXTOSTATEIMAGEMASK(checked != FALSE ? 2 : 1), LVIS_STATEIMAGEMASK);
}
