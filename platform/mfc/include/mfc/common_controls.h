// The common controls as objects: list view, header, tree view, tabs, tool tips, rich edit.
#pragma once

#include "mfc/image_list.h"
#include "mfc/wnd.h"
#include "win32/header.h"
#include "win32/listview.h"
#include "win32/richedit.h"
#include "win32/tab.h"
#include "win32/tooltip.h"
#include "win32/treeview.h"

class CEdit;

class CHeaderCtrl : public CWnd {
    DECLARE_DYNAMIC(CHeaderCtrl)

public:
    [[nodiscard]] int GetItemCount() const { return static_cast<int>(SendMessage(HDM_GETITEMCOUNT)); }
};

class CListCtrl : public CWnd {
    DECLARE_DYNAMIC(CListCtrl)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create(WC_LISTVIEW, nullptr, style, rect, parent, id);
    }
    [[nodiscard]] int GetItemCount() const { return static_cast<int>(SendMessage(LVM_GETITEMCOUNT)); }
    int InsertItem(const LVITEM* item) {
        return static_cast<int>(SendMessage(LVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(item)));
    }
    int InsertItem(int index, LPCSTR text);
    int InsertItem(int index, LPCSTR text, int image);
    BOOL GetItem(LVITEM* item) const {
        return static_cast<BOOL>(SendMessage(LVM_GETITEM, 0, reinterpret_cast<LPARAM>(item)));
    }
    BOOL SetItem(const LVITEM* item) {
        return static_cast<BOOL>(SendMessage(LVM_SETITEM, 0, reinterpret_cast<LPARAM>(item)));
    }
    BOOL DeleteItem(int index) { return static_cast<BOOL>(SendMessage(LVM_DELETEITEM, static_cast<WPARAM>(index))); }
    BOOL DeleteAllItems() { return static_cast<BOOL>(SendMessage(LVM_DELETEALLITEMS)); }
    [[nodiscard]] CString GetItemText(int index, int subItem) const;
    BOOL SetItemText(int index, int subItem, LPCSTR text);
    [[nodiscard]] DWORD_PTR GetItemData(int index) const;
    BOOL SetItemData(int index, DWORD_PTR data);
    [[nodiscard]] UINT GetItemState(int index, UINT mask) const {
        return static_cast<UINT>(SendMessage(LVM_GETITEMSTATE, static_cast<WPARAM>(index), mask));
    }
    BOOL SetItemState(int index, UINT state, UINT mask);
    [[nodiscard]] int GetNextItem(int index, UINT flags) const {
        return static_cast<int>(
            SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(index), MAKELPARAM(static_cast<int>(flags), 0)));
    }
    BOOL GetItemRect(int index, LPRECT rect, int part) const;
    BOOL GetSubItemRect(int index, int subItem, int part, CRect& rect) const;
    int HitTest(LVHITTESTINFO* info) const {
        return static_cast<int>(SendMessage(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(info)));
    }
    int SubItemHitTest(LVHITTESTINFO* info) const {
        return static_cast<int>(SendMessage(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(info)));
    }
    BOOL EnsureVisible(int index, BOOL partialOk) {
        return static_cast<BOOL>(SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), partialOk));
    }
    int InsertColumn(int index, const LVCOLUMN* column) {
        return static_cast<int>(
            SendMessage(LVM_INSERTCOLUMN, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(column)));
    }
    int InsertColumn(int index, LPCSTR heading, int format = LVCFMT_LEFT, int width = -1, int subItem = -1);
    BOOL DeleteColumn(int index) {
        return static_cast<BOOL>(SendMessage(LVM_DELETECOLUMN, static_cast<WPARAM>(index)));
    }
    [[nodiscard]] int GetColumnWidth(int index) const {
        return static_cast<int>(SendMessage(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(index)));
    }
    BOOL SetColumnWidth(int index, int width) {
        return static_cast<BOOL>(SendMessage(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(index), MAKELPARAM(width, 0)));
    }
    [[nodiscard]] CHeaderCtrl* GetHeaderCtrl() const;
    /// The former list.
    CImageList* SetImageList(CImageList* list, int kind);
    DWORD SetExtendedStyle(DWORD style) {
        return static_cast<DWORD>(SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, static_cast<LPARAM>(style)));
    }
    CSize SetIconSpacing(int x, int y);
    [[nodiscard]] COLORREF GetBkColor() const { return static_cast<COLORREF>(SendMessage(LVM_GETBKCOLOR)); }
    BOOL SetBkColor(COLORREF color) {
        return static_cast<BOOL>(SendMessage(LVM_SETBKCOLOR, 0, static_cast<LPARAM>(color)));
    }
    BOOL SetTextColor(COLORREF color) {
        return static_cast<BOOL>(SendMessage(LVM_SETTEXTCOLOR, 0, static_cast<LPARAM>(color)));
    }
    BOOL SetTextBkColor(COLORREF color) {
        return static_cast<BOOL>(SendMessage(LVM_SETTEXTBKCOLOR, 0, static_cast<LPARAM>(color)));
    }

    /// For LVS_OWNERDRAWFIXED.
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class CTreeCtrl : public CWnd {
    DECLARE_DYNAMIC(CTreeCtrl)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create(WC_TREEVIEW, nullptr, style, rect, parent, id);
    }
    HTREEITEM InsertItem(const TVINSERTSTRUCT* insert) {
        return reinterpret_cast<HTREEITEM>(SendMessage(TVM_INSERTITEM, 0, reinterpret_cast<LPARAM>(insert)));
    }
    HTREEITEM InsertItem(LPCSTR text, HTREEITEM parent = TVI_ROOT, HTREEITEM after = TVI_LAST);
    BOOL DeleteItem(HTREEITEM item) {
        return static_cast<BOOL>(SendMessage(TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(item)));
    }
    BOOL DeleteAllItems() { return DeleteItem(TVI_ROOT); }
    BOOL Expand(HTREEITEM item, UINT code) {
        return static_cast<BOOL>(SendMessage(TVM_EXPAND, code, reinterpret_cast<LPARAM>(item)));
    }
    [[nodiscard]] HTREEITEM GetNextItem(HTREEITEM item, UINT code) const {
        return reinterpret_cast<HTREEITEM>(SendMessage(TVM_GETNEXTITEM, code, reinterpret_cast<LPARAM>(item)));
    }
    [[nodiscard]] HTREEITEM GetRootItem() const { return GetNextItem(nullptr, TVGN_ROOT); }
    [[nodiscard]] HTREEITEM GetChildItem(HTREEITEM item) const { return GetNextItem(item, TVGN_CHILD); }
    [[nodiscard]] HTREEITEM GetNextSiblingItem(HTREEITEM item) const { return GetNextItem(item, TVGN_NEXT); }
    [[nodiscard]] HTREEITEM GetParentItem(HTREEITEM item) const { return GetNextItem(item, TVGN_PARENT); }
    [[nodiscard]] HTREEITEM GetSelectedItem() const { return GetNextItem(nullptr, TVGN_CARET); }
    BOOL SelectItem(HTREEITEM item) {
        return static_cast<BOOL>(SendMessage(TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(item)));
    }
    [[nodiscard]] UINT GetCount() const { return static_cast<UINT>(SendMessage(TVM_GETCOUNT)); }
    [[nodiscard]] DWORD_PTR GetItemData(HTREEITEM item) const;
    BOOL SetItemData(HTREEITEM item, DWORD_PTR data);
    [[nodiscard]] CString GetItemText(HTREEITEM item) const;
    BOOL SetItemImage(HTREEITEM item, int image, int selectedImage);
    BOOL GetItem(TVITEM* item) const {
        return static_cast<BOOL>(SendMessage(TVM_GETITEM, 0, reinterpret_cast<LPARAM>(item)));
    }
    BOOL SetItem(const TVITEM* item) {
        return static_cast<BOOL>(SendMessage(TVM_SETITEM, 0, reinterpret_cast<LPARAM>(item)));
    }
    HTREEITEM HitTest(POINT point, UINT* flags = nullptr) const;
    BOOL EnsureVisible(HTREEITEM item) {
        return static_cast<BOOL>(SendMessage(TVM_ENSUREVISIBLE, 0, reinterpret_cast<LPARAM>(item)));
    }
    [[nodiscard]] CImageList* GetImageList(UINT kind) const;
    CImageList* SetImageList(CImageList* list, int kind);
};

class CTabCtrl : public CWnd {
    DECLARE_DYNAMIC(CTabCtrl)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create(WC_TABCONTROL, nullptr, style, rect, parent, id);
    }
    [[nodiscard]] int GetItemCount() const { return static_cast<int>(SendMessage(TCM_GETITEMCOUNT)); }
    int InsertItem(int index, const TCITEM* item) {
        return static_cast<int>(
            SendMessage(TCM_INSERTITEM, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item)));
    }
    int InsertItem(int index, LPCSTR text);
    BOOL DeleteAllItems() { return static_cast<BOOL>(SendMessage(TCM_DELETEALLITEMS)); }
    [[nodiscard]] int GetCurSel() const { return static_cast<int>(SendMessage(TCM_GETCURSEL)); }
    int SetCurSel(int index) { return static_cast<int>(SendMessage(TCM_SETCURSEL, static_cast<WPARAM>(index))); }
    BOOL GetItemRect(int index, LPRECT rect) const {
        return static_cast<BOOL>(
            SendMessage(TCM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect)));
    }
    void AdjustRect(BOOL larger, LPRECT rect) {
        SendMessage(TCM_ADJUSTRECT, static_cast<WPARAM>(larger), reinterpret_cast<LPARAM>(rect));
    }
};

class CToolTipCtrl : public CWnd {
    DECLARE_DYNAMIC(CToolTipCtrl)

public:
    using CWnd::Create;
    BOOL Create(CWnd* parent, DWORD style = 0);
    /// With an id, the tool is `rect` of the window; without, the whole window.
    BOOL AddTool(CWnd* window, LPCSTR text = LPSTR_TEXTCALLBACK, LPCRECT rect = nullptr, UINT_PTR id = 0);
    void DelTool(CWnd* window, UINT_PTR id = 0);
    void UpdateTipText(LPCSTR text, CWnd* window, UINT_PTR id = 0);
    [[nodiscard]] CString GetText(CWnd* window, UINT_PTR id = 0) const;
    [[nodiscard]] int GetToolCount() const { return static_cast<int>(SendMessage(TTM_GETTOOLCOUNT)); }
    void Activate(BOOL activate) { SendMessage(TTM_ACTIVATE, static_cast<WPARAM>(activate)); }
    void RelayEvent(MSG* message) { SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(message)); }
    void SetDelayTime(DWORD which, int milliseconds) { SendMessage(TTM_SETDELAYTIME, which, milliseconds); }
    void Pop() { SendMessage(TTM_POP); }
};

class CRichEditCtrl : public CWnd {
    DECLARE_DYNAMIC(CRichEditCtrl)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create(RICHEDIT_CLASS10A, nullptr, style, rect, parent, id);
    }
    long StreamIn(int format, EDITSTREAM& stream) {
        return static_cast<long>(
            SendMessage(EM_STREAMIN, static_cast<WPARAM>(format), reinterpret_cast<LPARAM>(&stream)));
    }
    [[nodiscard]] int GetLineCount() const { return static_cast<int>(SendMessage(EM_GETLINECOUNT)); }
    void GetSel(CHARRANGE& range) const { SendMessage(EM_EXGETSEL, 0, reinterpret_cast<LPARAM>(&range)); }
    void SetSel(CHARRANGE& range) { SendMessage(EM_EXSETSEL, 0, reinterpret_cast<LPARAM>(&range)); }
    COLORREF SetBackgroundColor(BOOL system, COLORREF color) {
        return static_cast<COLORREF>(
            SendMessage(EM_SETBKGNDCOLOR, static_cast<WPARAM>(system), static_cast<LPARAM>(color)));
    }
};

/// The control's class exists from the start: TRUE.
BOOL AfxInitRichEdit();
