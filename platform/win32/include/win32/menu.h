// Menus: their items, bars of windows, and popup menus that are tracked.
//
//     HMENU menu = LoadMenu(instance, MAKEINTRESOURCE(250));
//     TrackPopupMenu(GetSubMenu(menu, 0), TPM_LEFTALIGN, point.x, point.y, 0, window, nullptr);
//     DestroyMenu(menu); // with its sub-menus
//
// Items are named by command (MF_BYCOMMAND: the first item with that id, sub-menus included) or by position. A menu
// owns its sub-menus; a window owns its bar. A handle that is dead or no menu's makes every call answer 0, FALSE, -1 or
// null with ERROR_INVALID_MENU_HANDLE; an item that isn't there, with ERROR_MENU_ITEM_NOT_FOUND or (positions)
// ERROR_INVALID_PARAMETER.
#pragma once

#include "win32/messages.h"
#include "win32/types.h"

constexpr DWORD ERROR_MENU_ITEM_NOT_FOUND = 1456;
constexpr DWORD ERROR_POPUP_ALREADY_ACTIVE = 1446;

constexpr UINT MF_BYCOMMAND = 0x0000;
constexpr UINT MF_BYPOSITION = 0x0400;
constexpr UINT MF_INSERT = 0x0000;
constexpr UINT MF_ENABLED = 0x0000;
constexpr UINT MF_GRAYED = 0x0001;
constexpr UINT MF_DISABLED = 0x0002;
constexpr UINT MF_BITMAP = 0x0004;
constexpr UINT MF_UNCHECKED = 0x0000;
constexpr UINT MF_CHECKED = 0x0008;
constexpr UINT MF_POPUP = 0x0010;
constexpr UINT MF_MENUBARBREAK = 0x0020; // a new column, a line between
constexpr UINT MF_MENUBREAK = 0x0040;    // a new column
constexpr UINT MF_UNHILITE = 0x0000;
constexpr UINT MF_HILITE = 0x0080;
constexpr UINT MF_CHANGE = 0x0080;
constexpr UINT MF_APPEND = 0x0100;
constexpr UINT MF_OWNERDRAW = 0x0100;
constexpr UINT MF_DELETE = 0x0200;
constexpr UINT MF_USECHECKBITMAPS = 0x0200;
constexpr UINT MF_SEPARATOR = 0x0800;
constexpr UINT MF_STRING = 0x0000;
constexpr UINT MF_REMOVE = 0x1000;
constexpr UINT MF_DEFAULT = 0x1000;
constexpr UINT MF_SYSMENU = 0x2000;
constexpr UINT MF_HELP = 0x4000;
constexpr UINT MF_RIGHTJUSTIFY = 0x4000; // in a bar: from here on at the right end
constexpr UINT MF_MOUSESELECT = 0x8000;
constexpr UINT MF_END = 0x0080; // in templates: the last item of a menu

constexpr UINT MFT_STRING = MF_STRING;
constexpr UINT MFT_BITMAP = MF_BITMAP;
constexpr UINT MFT_MENUBARBREAK = MF_MENUBARBREAK;
constexpr UINT MFT_MENUBREAK = MF_MENUBREAK;
constexpr UINT MFT_OWNERDRAW = MF_OWNERDRAW;
constexpr UINT MFT_RADIOCHECK = 0x0200;
constexpr UINT MFT_SEPARATOR = MF_SEPARATOR;
constexpr UINT MFT_RIGHTORDER = 0x2000;
constexpr UINT MFT_RIGHTJUSTIFY = MF_RIGHTJUSTIFY;

constexpr UINT MFS_GRAYED = 0x0003;
constexpr UINT MFS_DISABLED = MFS_GRAYED;
constexpr UINT MFS_CHECKED = MF_CHECKED;
constexpr UINT MFS_HILITE = MF_HILITE;
constexpr UINT MFS_ENABLED = MF_ENABLED;
constexpr UINT MFS_UNCHECKED = MF_UNCHECKED;
constexpr UINT MFS_UNHILITE = MF_UNHILITE;
constexpr UINT MFS_DEFAULT = MF_DEFAULT;

constexpr UINT MIIM_STATE = 0x0001;
constexpr UINT MIIM_ID = 0x0002;
constexpr UINT MIIM_SUBMENU = 0x0004;
constexpr UINT MIIM_CHECKMARKS = 0x0008;
constexpr UINT MIIM_TYPE = 0x0010; // type and text (or bitmap) together
constexpr UINT MIIM_DATA = 0x0020;
constexpr UINT MIIM_STRING = 0x0040;
constexpr UINT MIIM_BITMAP = 0x0080;
constexpr UINT MIIM_FTYPE = 0x0100;

struct MENUITEMINFOA {
    UINT cbSize; // with or without hbmpItem
    UINT fMask;
    UINT fType;
    UINT fState;
    UINT wID;
    HMENU hSubMenu;
    HBITMAP hbmpChecked;
    HBITMAP hbmpUnchecked;
    ULONG_PTR dwItemData;
    LPSTR dwTypeData;
    UINT cch;
    HBITMAP hbmpItem;
};
using MENUITEMINFO = MENUITEMINFOA;
using LPMENUITEMINFO = MENUITEMINFOA*;
using LPCMENUITEMINFO = const MENUITEMINFOA*;

inline const HBITMAP HBMMENU_CALLBACK = reinterpret_cast<HBITMAP>(~UINT_PTR{0}); // the owner draws it

/// Null with the resource's error, or ERROR_INVALID_DATA when the template is damaged.
HMENU LoadMenuA(HINSTANCE instance, LPCSTR name);
/// A MENU or MENUEX template. One that lies in a registered instance's resources is checked against its end there; any
/// other has to be whole.
HMENU LoadMenuIndirectA(const void* menuTemplate);
VNDK_TEXT_CALL(LoadMenu);
VNDK_TEXT_CALL(LoadMenuIndirect);
HMENU CreateMenu();
HMENU CreatePopupMenu();
BOOL DestroyMenu(HMENU menu);
BOOL IsMenu(HMENU menu);

// `idOrPopup` is the sub-menu's handle with MF_POPUP. `content` is text (copied), with MF_BITMAP a bitmap (not owned),
// with MF_OWNERDRAW a number that WM_MEASUREITEM and WM_DRAWITEM carry. Null content makes a separator.
BOOL AppendMenuA(HMENU menu, UINT flags, UINT_PTR idOrPopup, LPCSTR content);
/// Inserts before an item; position -1, or one that doesn't exist, appends.
BOOL InsertMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR idOrPopup, LPCSTR content);
/// A sub-menu that is replaced is destroyed.
BOOL ModifyMenuA(HMENU menu, UINT item, UINT flags, UINT_PTR idOrPopup, LPCSTR content);
VNDK_TEXT_CALL(AppendMenu);
VNDK_TEXT_CALL(InsertMenu);
VNDK_TEXT_CALL(ModifyMenu);
/// Takes an item out; its sub-menu lives on.
BOOL RemoveMenu(HMENU menu, UINT item, UINT flags);
/// Takes an item out and destroys its sub-menu.
BOOL DeleteMenu(HMENU menu, UINT item, UINT flags);

BOOL InsertMenuItemA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info);
BOOL GetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, MENUITEMINFOA* info);
BOOL SetMenuItemInfoA(HMENU menu, UINT item, BOOL byPosition, const MENUITEMINFOA* info);
VNDK_TEXT_CALL(InsertMenuItem);
VNDK_TEXT_CALL(GetMenuItemInfo);
VNDK_TEXT_CALL(SetMenuItemInfo);

int GetMenuItemCount(HMENU menu);             // -1 on failure
UINT GetMenuItemID(HMENU menu, int position); // -1 for a popup, 0 for a separator without id
HMENU GetSubMenu(HMENU menu, int position);   // null when the item has none
/// Length of the text without NUL, also with a null buffer; copies up to size - 1 characters.
int GetMenuStringA(HMENU menu, UINT item, LPSTR buffer, int size, UINT flags);
VNDK_TEXT_CALL(GetMenuString);
/// MF_ flags; of a popup the low byte, with the number of its items in the high byte. -1 when it isn't there.
UINT GetMenuState(HMENU menu, UINT item, UINT flags);

/// The former state (MF_CHECKED or 0); -1 when it isn't there.
DWORD CheckMenuItem(HMENU menu, UINT item, UINT flags);
/// The former state (MF_ENABLED, MF_GRAYED, MF_DISABLED); -1 when it isn't there.
BOOL EnableMenuItem(HMENU menu, UINT item, UINT flags);
BOOL CheckMenuRadioItem(HMENU menu, UINT first, UINT last, UINT check, UINT flags);
BOOL SetMenuItemBitmaps(HMENU menu, UINT item, UINT flags, HBITMAP unchecked, HBITMAP checked);
/// Item -1: none.
BOOL SetMenuDefaultItem(HMENU menu, UINT item, UINT byPosition);
constexpr UINT GMDI_USEDISABLED = 0x0001;
constexpr UINT GMDI_GOINTOPOPUPS = 0x0002;
UINT GetMenuDefaultItem(HMENU menu, UINT byPosition, UINT flags);
BOOL SetMenuContextHelpId(HMENU menu, DWORD id);
DWORD GetMenuContextHelpId(HMENU menu);

/// The bar of a top-level window; the former menu isn't destroyed. Fails for a child window.
BOOL SetMenu(HWND window, HMENU menu);
/// Of a child window: its id.
HMENU GetMenu(HWND window);
/// The window's own copy of the system menu; `revert` throws it away and answers null.
HMENU GetSystemMenu(HWND window, BOOL revert);
/// After a change of the bar's items: lays it out and paints it anew.
BOOL DrawMenuBar(HWND window);
BOOL HiliteMenuItem(HWND window, HMENU menu, UINT item, UINT flags);
/// Screen coordinates. For a bar `window` is its owner; of a popup menu it may be null, and only one that is shown has
/// places.
BOOL GetMenuItemRect(HWND window, HMENU menu, UINT position, RECT* rect);
/// The position of the item at a point of the screen; -1 when there is none.
int MenuItemFromPoint(HWND window, HMENU menu, POINT point);

constexpr UINT TPM_LEFTBUTTON = 0x0000;
constexpr UINT TPM_RIGHTBUTTON = 0x0002; // the right button picks too
constexpr UINT TPM_LEFTALIGN = 0x0000;
constexpr UINT TPM_CENTERALIGN = 0x0004;
constexpr UINT TPM_RIGHTALIGN = 0x0008;
constexpr UINT TPM_TOPALIGN = 0x0000;
constexpr UINT TPM_VCENTERALIGN = 0x0010;
constexpr UINT TPM_BOTTOMALIGN = 0x0020;
constexpr UINT TPM_HORIZONTAL = 0x0000; // which direction gives way before the excluded rectangle
constexpr UINT TPM_VERTICAL = 0x0040;
constexpr UINT TPM_NONOTIFY = 0x0080;
constexpr UINT TPM_RETURNCMD = 0x0100;
constexpr UINT TPM_RECURSE = 0x0001;
constexpr UINT TPM_HORPOSANIMATION = 0x0400; // accepted; nothing is animated
constexpr UINT TPM_HORNEGANIMATION = 0x0800;
constexpr UINT TPM_VERPOSANIMATION = 0x1000;
constexpr UINT TPM_VERNEGANIMATION = 0x2000;
constexpr UINT TPM_NOANIMATION = 0x4000;

struct TPMPARAMS {
    UINT cbSize;
    RECT rcExclude; // screen coordinates that the menu mustn't cover
};

/// Shows a popup menu at a point of the screen and waits until an item is picked or the menu is left. The owner gets
/// WM_ENTERMENULOOP, WM_INITMENU, WM_INITMENUPOPUP, WM_MENUSELECT, WM_UNINITMENUPOPUP, WM_EXITMENULOOP and, posted,
/// WM_COMMAND. Non-zero when it was shown; with TPM_RETURNCMD the id picked, or 0, and no WM_COMMAND. One menu is
/// tracked at a time (ERROR_POPUP_ALREADY_ACTIVE), unless TPM_RECURSE is given.
BOOL TrackPopupMenu(HMENU menu, UINT flags, int x, int y, int reserved, HWND owner, const RECT* rect);
BOOL TrackPopupMenuEx(HMENU menu, UINT flags, int x, int y, HWND owner, TPMPARAMS* parameters);
/// Leaves the menu that is tracked, without a command.
BOOL EndMenu();

// High word of the answer to WM_MENUCHAR.
constexpr WORD MNC_IGNORE = 0;
constexpr WORD MNC_CLOSE = 1;
constexpr WORD MNC_EXECUTE = 2;
constexpr WORD MNC_SELECT = 3;

/// Sent to a popup menu's window (class "#32768"): the menu that it shows.
constexpr UINT MN_GETHMENU = 0x01E1;
