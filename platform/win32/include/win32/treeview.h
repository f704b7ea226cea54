// The tree view: rows in levels that open and close.
//
//     TVINSERTSTRUCT insert{};
//     insert.hParent = TVI_ROOT;
//     insert.hInsertAfter = TVI_LAST;
//     insert.item.mask = TVIF_TEXT;
//     insert.item.pszText = name;
//     HTREEITEM root = reinterpret_cast<HTREEITEM>(SendMessage(tree, TVM_INSERTITEM, 0, (LPARAM)&insert));
//
// Handles of items that were deleted are recognised: every message given one fails. Units are pixels, rectangles are in
// client coordinates. Texts are copied; LPSTR_TEXTCALLBACK, I_IMAGECALLBACK and I_CHILDRENCALLBACK make the tree ask
// with TVN_GETDISPINFO. Image lists stay the caller's, but for the one of the check boxes.
//
// Notifications. TVM_SELECTITEM with TVGN_CARET tells TVN_SELCHANGING and TVN_SELCHANGED; TVM_EXPAND tells
// TVN_ITEMEXPANDING and TVN_ITEMEXPANDED the first time an item is expanded, then no more until TVE_COLLAPSERESET;
// TVM_DELETEITEM tells TVN_DELETEITEM for each item that goes, children first. TVM_SETITEM, insertion, sorting and
// scrolling tell nothing.
#pragma once

#include "win32/commctrl.h"
#include "win32/gdi.h"
#include "win32/window.h"

#include <cstring>

inline constexpr LPCSTR WC_TREEVIEWA = "SysTreeView32";
inline constexpr LPCSTR WC_TREEVIEW = WC_TREEVIEWA;

constexpr DWORD TVS_HASBUTTONS = 0x0001;
constexpr DWORD TVS_HASLINES = 0x0002;
constexpr DWORD TVS_LINESATROOT = 0x0004;
constexpr DWORD TVS_EDITLABELS = 0x0008;
constexpr DWORD TVS_DISABLEDRAGDROP = 0x0010;
constexpr DWORD TVS_SHOWSELALWAYS = 0x0020;
constexpr DWORD TVS_RTLREADING = 0x0040;
constexpr DWORD TVS_NOTOOLTIPS = 0x0080;
constexpr DWORD TVS_CHECKBOXES = 0x0100;
constexpr DWORD TVS_TRACKSELECT = 0x0200;
constexpr DWORD TVS_SINGLEEXPAND = 0x0400;
constexpr DWORD TVS_INFOTIP = 0x0800;
constexpr DWORD TVS_FULLROWSELECT = 0x1000; // without TVS_HASLINES
constexpr DWORD TVS_NOSCROLL = 0x2000;
constexpr DWORD TVS_NONEVENHEIGHT = 0x4000;
constexpr DWORD TVS_NOHSCROLL = 0x8000;

// TVITEM::mask
constexpr UINT TVIF_TEXT = 0x0001;
constexpr UINT TVIF_IMAGE = 0x0002;
constexpr UINT TVIF_PARAM = 0x0004;
constexpr UINT TVIF_STATE = 0x0008;
constexpr UINT TVIF_HANDLE = 0x0010;
constexpr UINT TVIF_SELECTEDIMAGE = 0x0020;
constexpr UINT TVIF_CHILDREN = 0x0040;
constexpr UINT TVIF_INTEGRAL = 0x0080;
constexpr UINT TVIF_DI_SETITEM = 0x1000; // answer to TVN_GETDISPINFO: keep what was given

// TVITEM::state
constexpr UINT TVIS_SELECTED = 0x0002;
constexpr UINT TVIS_CUT = 0x0004;
constexpr UINT TVIS_DROPHILITED = 0x0008;
constexpr UINT TVIS_BOLD = 0x0010;
constexpr UINT TVIS_EXPANDED = 0x0020;
constexpr UINT TVIS_EXPANDEDONCE = 0x0040;
constexpr UINT TVIS_EXPANDPARTIAL = 0x0080;
constexpr UINT TVIS_OVERLAYMASK = 0x0F00;
constexpr UINT TVIS_STATEIMAGEMASK = 0xF000;
constexpr UINT TVIS_USERMASK = 0xF000;

struct TVITEMA {
    UINT mask;
    HTREEITEM hItem;
    UINT state;
    UINT stateMask;
    LPSTR pszText;
    int cchTextMax;
    int iImage;
    int iSelectedImage;
    int cChildren; // 0, 1 or I_CHILDRENCALLBACK
    LPARAM lParam;
};
using TVITEM = TVITEMA;
using TV_ITEM = TVITEMA;
using LPTVITEM = TVITEMA*;

struct TVITEMEXA {
    UINT mask;
    HTREEITEM hItem;
    UINT state;
    UINT stateMask;
    LPSTR pszText;
    int cchTextMax;
    int iImage;
    int iSelectedImage;
    int cChildren;
    LPARAM lParam;
    int iIntegral; // height in rows
};
using TVITEMEX = TVITEMEXA;
using LPTVITEMEX = TVITEMEXA*;

inline const HTREEITEM TVI_ROOT = reinterpret_cast<HTREEITEM>(static_cast<ULONG_PTR>(-0x10000LL));
inline const HTREEITEM TVI_FIRST = reinterpret_cast<HTREEITEM>(static_cast<ULONG_PTR>(-0x0FFFFLL));
inline const HTREEITEM TVI_LAST = reinterpret_cast<HTREEITEM>(static_cast<ULONG_PTR>(-0x0FFFELL));
inline const HTREEITEM TVI_SORT = reinterpret_cast<HTREEITEM>(static_cast<ULONG_PTR>(-0x0FFFDLL));

struct TVINSERTSTRUCTA {
    HTREEITEM hParent;
    HTREEITEM hInsertAfter;
    union {
        TVITEMEXA itemex;
        TVITEMA item;
    };
};
using TVINSERTSTRUCT = TVINSERTSTRUCTA;
using TV_INSERTSTRUCT = TVINSERTSTRUCTA;
using LPTVINSERTSTRUCT = TVINSERTSTRUCTA*;

// TVM_EXPAND
constexpr UINT TVE_COLLAPSE = 0x0001;
constexpr UINT TVE_EXPAND = 0x0002;
constexpr UINT TVE_TOGGLE = 0x0003;
constexpr UINT TVE_EXPANDPARTIAL = 0x4000;
constexpr UINT TVE_COLLAPSERESET = 0x8000;

constexpr int TVSIL_NORMAL = 0;
constexpr int TVSIL_STATE = 2;

// TVM_GETNEXTITEM, TVM_SELECTITEM
constexpr UINT TVGN_ROOT = 0x0000;
constexpr UINT TVGN_NEXT = 0x0001;
constexpr UINT TVGN_PREVIOUS = 0x0002;
constexpr UINT TVGN_PARENT = 0x0003;
constexpr UINT TVGN_CHILD = 0x0004;
constexpr UINT TVGN_FIRSTVISIBLE = 0x0005;
constexpr UINT TVGN_NEXTVISIBLE = 0x0006;
constexpr UINT TVGN_PREVIOUSVISIBLE = 0x0007;
constexpr UINT TVGN_DROPHILITE = 0x0008;
constexpr UINT TVGN_CARET = 0x0009;
constexpr UINT TVGN_LASTVISIBLE = 0x000A;
constexpr UINT TVSI_NOSINGLEEXPAND = 0x8000; // with TVGN_CARET

// TVHITTESTINFO::flags
constexpr UINT TVHT_NOWHERE = 0x0001; // in the client area, below the last item
constexpr UINT TVHT_ONITEMICON = 0x0002;
constexpr UINT TVHT_ONITEMLABEL = 0x0004;
constexpr UINT TVHT_ONITEMINDENT = 0x0008;
constexpr UINT TVHT_ONITEMBUTTON = 0x0010;
constexpr UINT TVHT_ONITEMRIGHT = 0x0020;
constexpr UINT TVHT_ONITEMSTATEICON = 0x0040;
constexpr UINT TVHT_ONITEM = TVHT_ONITEMICON | TVHT_ONITEMLABEL | TVHT_ONITEMSTATEICON;
constexpr UINT TVHT_ABOVE = 0x0100;
constexpr UINT TVHT_BELOW = 0x0200;
constexpr UINT TVHT_TORIGHT = 0x0400;
constexpr UINT TVHT_TOLEFT = 0x0800;

struct TVHITTESTINFO {
    POINT pt;
    UINT flags;
    HTREEITEM hItem;
};
using TV_HITTESTINFO = TVHITTESTINFO;
using LPTVHITTESTINFO = TVHITTESTINFO*;

/// Below, at or above zero, as `strcmp`.
using PFNTVCOMPARE = int(CALLBACK*)(LPARAM first, LPARAM second, LPARAM sort);

struct TVSORTCB {
    HTREEITEM hParent;
    PFNTVCOMPARE lpfnCompare;
    LPARAM lParam;
};
using TV_SORTCB = TVSORTCB;
using LPTVSORTCB = TVSORTCB*;

constexpr UINT TV_FIRST = 0x1100;
constexpr UINT TVM_INSERTITEMA = TV_FIRST + 0; // the item or null
constexpr UINT TVM_DELETEITEM = TV_FIRST + 1;  // with its children; TVI_ROOT or null: all
constexpr UINT TVM_EXPAND = TV_FIRST + 2;      // non-zero when something changed
constexpr UINT TVM_GETITEMRECT = TV_FIRST + 4; // the item's handle stands in the rectangle's first bytes
constexpr UINT TVM_GETCOUNT = TV_FIRST + 5;
constexpr UINT TVM_GETINDENT = TV_FIRST + 6;
constexpr UINT TVM_SETINDENT = TV_FIRST + 7;
constexpr UINT TVM_GETIMAGELIST = TV_FIRST + 8;
constexpr UINT TVM_SETIMAGELIST = TV_FIRST + 9; // the former list
constexpr UINT TVM_GETNEXTITEM = TV_FIRST + 10;
constexpr UINT TVM_SELECTITEM = TV_FIRST + 11;
constexpr UINT TVM_GETITEMA = TV_FIRST + 12;
constexpr UINT TVM_SETITEMA = TV_FIRST + 13;
constexpr UINT TVM_EDITLABELA = TV_FIRST + 14; // the edit control
constexpr UINT TVM_GETEDITCONTROL = TV_FIRST + 15;
constexpr UINT TVM_GETVISIBLECOUNT = TV_FIRST + 16;
constexpr UINT TVM_HITTEST = TV_FIRST + 17; // the item or null
constexpr UINT TVM_CREATEDRAGIMAGE = TV_FIRST + 18;
constexpr UINT TVM_SORTCHILDREN = TV_FIRST + 19; // wParam non-zero: below its children, too
constexpr UINT TVM_ENSUREVISIBLE = TV_FIRST + 20;
constexpr UINT TVM_SORTCHILDRENCB = TV_FIRST + 21;
constexpr UINT TVM_ENDEDITLABELNOW = TV_FIRST + 22; // wParam non-zero: cancel
constexpr UINT TVM_GETISEARCHSTRINGA = TV_FIRST + 23;
constexpr UINT TVM_SETTOOLTIPS = TV_FIRST + 24;
constexpr UINT TVM_GETTOOLTIPS = TV_FIRST + 25;
constexpr UINT TVM_SETINSERTMARK = TV_FIRST + 26; // wParam non-zero: after the item
constexpr UINT TVM_SETITEMHEIGHT = TV_FIRST + 27; // the former height; -1: the font's
constexpr UINT TVM_GETITEMHEIGHT = TV_FIRST + 28;
constexpr UINT TVM_SETBKCOLOR = TV_FIRST + 29; // -1: the system's; the former colour
constexpr UINT TVM_SETTEXTCOLOR = TV_FIRST + 30;
constexpr UINT TVM_GETBKCOLOR = TV_FIRST + 31;
constexpr UINT TVM_GETTEXTCOLOR = TV_FIRST + 32;
constexpr UINT TVM_SETSCROLLTIME = TV_FIRST + 33;
constexpr UINT TVM_GETSCROLLTIME = TV_FIRST + 34;
constexpr UINT TVM_SETINSERTMARKCOLOR = TV_FIRST + 37;
constexpr UINT TVM_GETINSERTMARKCOLOR = TV_FIRST + 38;
constexpr UINT TVM_GETITEMSTATE = TV_FIRST + 39;
constexpr UINT TVM_SETLINECOLOR = TV_FIRST + 40;
constexpr UINT TVM_GETLINECOLOR = TV_FIRST + 41;
constexpr UINT TVM_INSERTITEMW = TV_FIRST + 50;
constexpr UINT TVM_GETITEMW = TV_FIRST + 62;
constexpr UINT TVM_SETITEMW = TV_FIRST + 63;
constexpr UINT TVM_GETISEARCHSTRINGW = TV_FIRST + 64;
constexpr UINT TVM_EDITLABELW = TV_FIRST + 65;
constexpr UINT TVM_INSERTITEM = TVM_INSERTITEMA;
constexpr UINT TVM_GETITEM = TVM_GETITEMA;
constexpr UINT TVM_SETITEM = TVM_SETITEMA;
constexpr UINT TVM_EDITLABEL = TVM_EDITLABELA;
constexpr UINT TVM_GETISEARCHSTRING = TVM_GETISEARCHSTRINGA;

// Notifications; lParam is an NMTREEVIEW where nothing else is said.
constexpr UINT TVN_FIRST = 0U - 400U;
constexpr UINT TVN_SELCHANGINGA = TVN_FIRST - 1U; // action: TVC_; non-zero refuses
constexpr UINT TVN_SELCHANGEDA = TVN_FIRST - 2U;
constexpr UINT TVN_GETDISPINFOA = TVN_FIRST - 3U; // NMTVDISPINFO
constexpr UINT TVN_SETDISPINFOA = TVN_FIRST - 4U;
constexpr UINT TVN_ITEMEXPANDINGA = TVN_FIRST - 5U; // action: TVE_; non-zero refuses
constexpr UINT TVN_ITEMEXPANDEDA = TVN_FIRST - 6U;
constexpr UINT TVN_BEGINDRAGA = TVN_FIRST - 7U;
constexpr UINT TVN_BEGINRDRAGA = TVN_FIRST - 8U;
constexpr UINT TVN_DELETEITEMA = TVN_FIRST - 9U;      // itemOld; its links are gone already
constexpr UINT TVN_BEGINLABELEDITA = TVN_FIRST - 10U; // NMTVDISPINFO; non-zero: no editing
constexpr UINT TVN_ENDLABELEDITA = TVN_FIRST - 11U;   // NMTVDISPINFO, null text: cancelled; non-zero takes the text
constexpr UINT TVN_KEYDOWN = TVN_FIRST - 12U;         // NMTVKEYDOWN; non-zero: not searched for
constexpr UINT TVN_GETINFOTIPA = TVN_FIRST - 13U;
constexpr UINT TVN_SINGLEEXPAND = TVN_FIRST - 15U; // answer: TVNRET_
constexpr UINT TVN_SELCHANGING = TVN_SELCHANGINGA;
constexpr UINT TVN_SELCHANGED = TVN_SELCHANGEDA;
constexpr UINT TVN_GETDISPINFO = TVN_GETDISPINFOA;
constexpr UINT TVN_SETDISPINFO = TVN_SETDISPINFOA;
constexpr UINT TVN_ITEMEXPANDING = TVN_ITEMEXPANDINGA;
constexpr UINT TVN_ITEMEXPANDED = TVN_ITEMEXPANDEDA;
constexpr UINT TVN_BEGINDRAG = TVN_BEGINDRAGA;
constexpr UINT TVN_BEGINRDRAG = TVN_BEGINRDRAGA;
constexpr UINT TVN_DELETEITEM = TVN_DELETEITEMA;
constexpr UINT TVN_BEGINLABELEDIT = TVN_BEGINLABELEDITA;
constexpr UINT TVN_ENDLABELEDIT = TVN_ENDLABELEDITA;
constexpr UINT TVN_GETINFOTIP = TVN_GETINFOTIPA;

constexpr UINT TVC_UNKNOWN = 0x0000; // by program
constexpr UINT TVC_BYMOUSE = 0x0001;
constexpr UINT TVC_BYKEYBOARD = 0x0002;

constexpr LRESULT TVNRET_DEFAULT = 0;
constexpr LRESULT TVNRET_SKIPOLD = 1; // don't collapse the item left
constexpr LRESULT TVNRET_SKIPNEW = 2; // don't expand the item entered

constexpr LRESULT TVCDRF_NOIMAGES = 0x00010000; // answer to custom drawing of an item

struct NMTREEVIEWA {
    NMHDR hdr;
    UINT action;
    TVITEMA itemOld;
    TVITEMA itemNew;
    POINT ptDrag; // client coordinates
};
using NMTREEVIEW = NMTREEVIEWA;
using NM_TREEVIEW = NMTREEVIEWA;
using LPNMTREEVIEW = NMTREEVIEWA*;

struct NMTVDISPINFOA {
    NMHDR hdr;
    TVITEMA item;
};
using NMTVDISPINFO = NMTVDISPINFOA;
using TV_DISPINFO = NMTVDISPINFOA;
using LPNMTVDISPINFO = NMTVDISPINFOA*;

struct NMTVKEYDOWN {
    NMHDR hdr;
    WORD wVKey;
    UINT flags;
};
using TV_KEYDOWN = NMTVKEYDOWN;
using LPNMTVKEYDOWN = NMTVKEYDOWN*;

struct NMTVCUSTOMDRAW {
    NMCUSTOMDRAW nmcd;
    COLORREF clrText;
    COLORREF clrTextBk;
    int iLevel;
};
using LPNMTVCUSTOMDRAW = NMTVCUSTOMDRAW*;

struct NMTVGETINFOTIPA {
    NMHDR hdr;
    LPSTR pszText;
    int cchTextMax;
    HTREEITEM hItem;
    LPARAM lParam;
};
using NMTVGETINFOTIP = NMTVGETINFOTIPA;

// The published short forms.
inline HTREEITEM TreeView_InsertItem(HWND tree, const TVINSERTSTRUCT* insert) {
    return reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(insert)));
}
inline BOOL TreeView_DeleteItem(HWND tree, HTREEITEM item) {
    return static_cast<BOOL>(SendMessageA(tree, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(item)));
}
inline BOOL TreeView_DeleteAllItems(HWND tree) { return TreeView_DeleteItem(tree, TVI_ROOT); }
inline BOOL TreeView_Expand(HWND tree, HTREEITEM item, UINT code) {
    return static_cast<BOOL>(SendMessageA(tree, TVM_EXPAND, code, reinterpret_cast<LPARAM>(item)));
}
inline BOOL TreeView_GetItemRect(HWND tree, HTREEITEM item, RECT* rect, BOOL textOnly) {
    const auto asked = reinterpret_cast<LPARAM>(item); // stands where the answer will
    if (rect != nullptr)
        std::memcpy(static_cast<void*>(rect), &asked, sizeof asked);
    return static_cast<BOOL>(
        SendMessageA(tree, TVM_GETITEMRECT, static_cast<WPARAM>(textOnly), reinterpret_cast<LPARAM>(rect)));
}
inline UINT TreeView_GetCount(HWND tree) { return static_cast<UINT>(SendMessageA(tree, TVM_GETCOUNT, 0, 0)); }
inline HTREEITEM TreeView_GetNextItem(HWND tree, HTREEITEM item, UINT code) {
    return reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, code, reinterpret_cast<LPARAM>(item)));
}
inline HTREEITEM TreeView_GetRoot(HWND tree) { return TreeView_GetNextItem(tree, nullptr, TVGN_ROOT); }
inline HTREEITEM TreeView_GetChild(HWND tree, HTREEITEM item) { return TreeView_GetNextItem(tree, item, TVGN_CHILD); }
inline HTREEITEM TreeView_GetParent(HWND tree, HTREEITEM item) { return TreeView_GetNextItem(tree, item, TVGN_PARENT); }
inline HTREEITEM TreeView_GetNextSibling(HWND tree, HTREEITEM item) {
    return TreeView_GetNextItem(tree, item, TVGN_NEXT);
}
inline HTREEITEM TreeView_GetSelection(HWND tree) { return TreeView_GetNextItem(tree, nullptr, TVGN_CARET); }
inline BOOL TreeView_Select(HWND tree, HTREEITEM item, UINT code) {
    return static_cast<BOOL>(SendMessageA(tree, TVM_SELECTITEM, code, reinterpret_cast<LPARAM>(item)));
}
inline BOOL TreeView_SelectItem(HWND tree, HTREEITEM item) { return TreeView_Select(tree, item, TVGN_CARET); }
inline BOOL TreeView_GetItem(HWND tree, TVITEM* item) {
    return static_cast<BOOL>(SendMessageA(tree, TVM_GETITEM, 0, reinterpret_cast<LPARAM>(item)));
}
inline BOOL TreeView_SetItem(HWND tree, const TVITEM* item) {
    return static_cast<BOOL>(SendMessageA(tree, TVM_SETITEM, 0, reinterpret_cast<LPARAM>(item)));
}
inline HTREEITEM TreeView_HitTest(HWND tree, TVHITTESTINFO* info) {
    return reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(info)));
}
inline BOOL TreeView_EnsureVisible(HWND tree, HTREEITEM item) {
    return static_cast<BOOL>(SendMessageA(tree, TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item)));
}
inline HWND TreeView_EditLabel(HWND tree, HTREEITEM item) {
    return reinterpret_cast<HWND>(SendMessageA(tree, TVM_EDITLABEL, 0, reinterpret_cast<LPARAM>(item)));
}
inline UINT TreeView_GetItemState(HWND tree, HTREEITEM item, UINT mask) {
    return static_cast<UINT>(SendMessageA(tree, TVM_GETITEMSTATE, reinterpret_cast<WPARAM>(item), mask));
}
inline void TreeView_SetItemState(HWND tree, HTREEITEM handle, UINT state, UINT mask) {
    TVITEM item{};
    item.mask = TVIF_STATE;
    item.hItem = handle;
    item.state = state;
    item.stateMask = mask;
    TreeView_SetItem(tree, &item);
}
inline UINT TreeView_GetCheckState(HWND tree, HTREEITEM item) {
    return (TreeView_GetItemState(tree, item, TVIS_STATEIMAGEMASK) >> 12) - 1;
}
inline void TreeView_SetCheckState(HWND tree, HTREEITEM item, BOOL checked) {
    TreeView_SetItemState(tree, item, INDEXTOSTATEIMAGEMASK(checked != FALSE ? 2 : 1), TVIS_STATEIMAGEMASK);
}
