// What the common controls share: custom drawing, texts and images given on demand, messages that all of them know.
//
// The controls' classes exist on every desktop from the start; InitCommonControls does nothing and may be called.
#pragma once

#include "win32/imagelist.h"
#include "win32/messages.h"
#include "win32/types.h"

// Classes that InitCommonControlsEx names.
constexpr DWORD ICC_LISTVIEW_CLASSES = 0x00000001;
constexpr DWORD ICC_TREEVIEW_CLASSES = 0x00000002;
constexpr DWORD ICC_BAR_CLASSES = 0x00000004;
constexpr DWORD ICC_TAB_CLASSES = 0x00000008;
constexpr DWORD ICC_UPDOWN_CLASS = 0x00000010;
constexpr DWORD ICC_PROGRESS_CLASS = 0x00000020;
constexpr DWORD ICC_HOTKEY_CLASS = 0x00000040;
constexpr DWORD ICC_ANIMATE_CLASS = 0x00000080;
constexpr DWORD ICC_WIN95_CLASSES = 0x000000FF;
constexpr DWORD ICC_DATE_CLASSES = 0x00000100;
constexpr DWORD ICC_USEREX_CLASSES = 0x00000200;
constexpr DWORD ICC_COOL_CLASSES = 0x00000400;

struct INITCOMMONCONTROLSEX {
    DWORD dwSize;
    DWORD dwICC;
};
inline void InitCommonControls() {}
inline BOOL InitCommonControlsEx(const INITCOMMONCONTROLSEX* classes) { return classes != nullptr ? TRUE : FALSE; }

// Messages of all common controls.
constexpr UINT CCM_FIRST = 0x2000;
constexpr UINT CCM_SETBKCOLOR = CCM_FIRST + 1;
constexpr UINT CCM_SETCOLORSCHEME = CCM_FIRST + 2;
constexpr UINT CCM_GETCOLORSCHEME = CCM_FIRST + 3;
constexpr UINT CCM_GETDROPTARGET = CCM_FIRST + 4;
constexpr UINT CCM_SETUNICODEFORMAT = CCM_FIRST + 5;
constexpr UINT CCM_GETUNICODEFORMAT = CCM_FIRST + 6;
constexpr UINT CCM_SETVERSION = CCM_FIRST + 7; // the last version set; version 5 is what the controls behave like
constexpr UINT CCM_GETVERSION = CCM_FIRST + 8;
constexpr UINT CCM_SETNOTIFYWINDOW = CCM_FIRST + 9;

// WM_NOTIFYFORMAT: which kind of text the notifications carry. Here it is always 8-bit text, whatever a parent answers.
constexpr LRESULT NFR_ANSI = 1;
constexpr LRESULT NFR_UNICODE = 2;
constexpr LPARAM NF_QUERY = 3;   // a control that is being made asks its parent
constexpr LPARAM NF_REQUERY = 4; // a parent makes the control ask again

// Placeholders: the control asks its parent each time (…N_GETDISPINFO).
inline const LPSTR LPSTR_TEXTCALLBACKA = reinterpret_cast<LPSTR>(~UINT_PTR{0});
inline const LPSTR LPSTR_TEXTCALLBACK = LPSTR_TEXTCALLBACKA;
constexpr int I_IMAGECALLBACK = -1;
constexpr int I_IMAGENONE = -2;
constexpr int I_INDENTCALLBACK = -1;
constexpr int I_CHILDRENCALLBACK = -1;

/// State images are numbered from 1; 0 means none.
constexpr UINT INDEXTOSTATEIMAGEMASK(UINT index) { return index << 12; }

// ---- Custom drawing (NM_CUSTOMDRAW) --------------------------------------------------------------------------------

// What the parent answers.
constexpr LRESULT CDRF_DODEFAULT = 0x00000000;
constexpr LRESULT CDRF_NEWFONT = 0x00000002; // another font was selected into the context
constexpr LRESULT CDRF_SKIPDEFAULT = 0x00000004;
constexpr LRESULT CDRF_NOTIFYPOSTPAINT = 0x00000010;
constexpr LRESULT CDRF_NOTIFYITEMDRAW = 0x00000020;
constexpr LRESULT CDRF_NOTIFYSUBITEMDRAW = 0x00000020;
constexpr LRESULT CDRF_NOTIFYPOSTERASE = 0x00000040;

// When it is asked.
constexpr DWORD CDDS_PREPAINT = 0x00000001;
constexpr DWORD CDDS_POSTPAINT = 0x00000002;
constexpr DWORD CDDS_PREERASE = 0x00000003;
constexpr DWORD CDDS_POSTERASE = 0x00000004;
constexpr DWORD CDDS_ITEM = 0x00010000;
constexpr DWORD CDDS_ITEMPREPAINT = CDDS_ITEM | CDDS_PREPAINT;
constexpr DWORD CDDS_ITEMPOSTPAINT = CDDS_ITEM | CDDS_POSTPAINT;
constexpr DWORD CDDS_ITEMPREERASE = CDDS_ITEM | CDDS_PREERASE;
constexpr DWORD CDDS_ITEMPOSTERASE = CDDS_ITEM | CDDS_POSTERASE;
constexpr DWORD CDDS_SUBITEM = 0x00020000;

// States of the item drawn.
constexpr UINT CDIS_SELECTED = 0x0001;
constexpr UINT CDIS_GRAYED = 0x0002;
constexpr UINT CDIS_DISABLED = 0x0004;
constexpr UINT CDIS_CHECKED = 0x0008;
constexpr UINT CDIS_FOCUS = 0x0010;
constexpr UINT CDIS_DEFAULT = 0x0020;
constexpr UINT CDIS_HOT = 0x0040;
constexpr UINT CDIS_MARKED = 0x0080;
constexpr UINT CDIS_INDETERMINATE = 0x0100;

struct NMCUSTOMDRAW {
    NMHDR hdr;
    DWORD dwDrawStage;
    HDC hdc;
    RECT rc; // client coordinates
    DWORD_PTR dwItemSpec;
    UINT uItemState;
    LPARAM lItemlParam;
};
using LPNMCUSTOMDRAW = NMCUSTOMDRAW*;

// ---- Notifications that several controls send ----------------------------------------------------------------------

struct NMKEY {
    NMHDR hdr;
    UINT nVKey;
    UINT uFlags;
};
using LPNMKEY = NMKEY*;

struct NMMOUSE {
    NMHDR hdr;
    DWORD_PTR dwItemSpec;
    DWORD_PTR dwItemData;
    POINT pt;
    LPARAM dwHitInfo;
};
using NMCLICK = NMMOUSE;
using LPNMMOUSE = NMMOUSE*;
using LPNMCLICK = NMCLICK*;

struct NMCHAR {
    NMHDR hdr;
    UINT ch;
    DWORD dwItemPrev;
    DWORD dwItemNext;
};
using LPNMCHAR = NMCHAR*;
