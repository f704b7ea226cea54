// The platform's controls as objects: each member sends one message. Owner-drawn ones override DrawItem and its kin,
// which are reached by reflection.
#pragma once

#include "mfc/wnd.h"
#include "win32/button.h"
#include "win32/combobox.h"
#include "win32/edit.h"
#include "win32/listbox.h"
#include "win32/scrollbar.h"
#include "win32/static.h"

class CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)

public:
    using CWnd::Create;
    BOOL Create(LPCSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF) {
        return CWnd::Create("STATIC", text, style, rect, parent, id);
    }
    HICON SetIcon(HICON icon) {
        return reinterpret_cast<HICON>(SendMessage(STM_SETICON, reinterpret_cast<WPARAM>(icon)));
    }
    [[nodiscard]] HICON GetIcon() const { return reinterpret_cast<HICON>(SendMessage(STM_GETICON)); }
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)

public:
    using CWnd::Create;
    BOOL Create(LPCSTR caption, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create("BUTTON", caption, style, rect, parent, id);
    }
    [[nodiscard]] UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    void SetState(BOOL highlight) { SendMessage(BM_SETSTATE, static_cast<WPARAM>(highlight)); }
    [[nodiscard]] int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
    [[nodiscard]] UINT GetButtonStyle() const { return GetStyle() & 0xFFFF; }
    void SetButtonStyle(UINT style, BOOL redraw = TRUE) { SendMessage(BM_SETSTYLE, style, redraw); }
    /// REQUIRES: overridden by owner-drawn buttons.
    virtual void DrawItem(LPDRAWITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class CEdit : public CWnd {
    DECLARE_DYNAMIC(CEdit)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create("EDIT", nullptr, style, rect, parent, id);
    }
    void SetSel(int begin, int end, BOOL noScroll = FALSE);
    void GetSel(int& begin, int& end) const;
    void ReplaceSel(LPCSTR text, BOOL canUndo = FALSE) {
        SendMessage(EM_REPLACESEL, static_cast<WPARAM>(canUndo), reinterpret_cast<LPARAM>(text));
    }
    void LimitText(int characters = 0) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(characters)); }
    [[nodiscard]] BOOL GetModify() const { return static_cast<BOOL>(SendMessage(EM_GETMODIFY)); }
    void SetModify(BOOL modified = TRUE) { SendMessage(EM_SETMODIFY, static_cast<WPARAM>(modified)); }
    BOOL SetReadOnly(BOOL readOnly = TRUE) {
        return static_cast<BOOL>(SendMessage(EM_SETREADONLY, static_cast<WPARAM>(readOnly)));
    }
    [[nodiscard]] int GetLineCount() const { return static_cast<int>(SendMessage(EM_GETLINECOUNT)); }
    [[nodiscard]] int LineIndex(int line = -1) const {
        return static_cast<int>(SendMessage(EM_LINEINDEX, static_cast<WPARAM>(line)));
    }
    void LineScroll(int lines, int characters = 0) {
        SendMessage(EM_LINESCROLL, static_cast<WPARAM>(characters), lines);
    }
    BOOL Undo() { return static_cast<BOOL>(SendMessage(EM_UNDO)); }
    void Clear() { SendMessage(WM_CLEAR); }
    void Copy() { SendMessage(WM_COPY); }
    void Cut() { SendMessage(WM_CUT); }
    void Paste() { SendMessage(WM_PASTE); }
};

class CListBox : public CWnd {
    DECLARE_DYNAMIC(CListBox)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create("LISTBOX", nullptr, style, rect, parent, id);
    }
    [[nodiscard]] int GetCount() const { return static_cast<int>(SendMessage(LB_GETCOUNT)); }
    [[nodiscard]] int GetCurSel() const { return static_cast<int>(SendMessage(LB_GETCURSEL)); }
    int SetCurSel(int index) { return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(index))); }
    [[nodiscard]] int GetTopIndex() const { return static_cast<int>(SendMessage(LB_GETTOPINDEX)); }
    int SetTopIndex(int index) { return static_cast<int>(SendMessage(LB_SETTOPINDEX, static_cast<WPARAM>(index))); }
    [[nodiscard]] DWORD_PTR GetItemData(int index) const {
        return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(index)));
    }
    int SetItemData(int index, DWORD_PTR data) {
        return static_cast<int>(SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data)));
    }
    int GetItemRect(int index, LPRECT rect) const {
        return static_cast<int>(
            SendMessage(LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect)));
    }
    void GetText(int index, CString& text) const;
    [[nodiscard]] int GetTextLen(int index) const {
        return static_cast<int>(SendMessage(LB_GETTEXTLEN, static_cast<WPARAM>(index)));
    }
    int SetItemHeight(int index, UINT height) {
        return static_cast<int>(
            SendMessage(LB_SETITEMHEIGHT, static_cast<WPARAM>(index), MAKELPARAM(static_cast<int>(height), 0)));
    }
    [[nodiscard]] int GetItemHeight(int index) const {
        return static_cast<int>(SendMessage(LB_GETITEMHEIGHT, static_cast<WPARAM>(index)));
    }
    int AddString(LPCSTR text) {
        return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)));
    }
    int InsertString(int index, LPCSTR text) {
        return static_cast<int>(
            SendMessage(LB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
    int DeleteString(UINT index) { return static_cast<int>(SendMessage(LB_DELETESTRING, index)); }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    int FindString(int after, LPCSTR text) const {
        return static_cast<int>(SendMessage(LB_FINDSTRING, static_cast<WPARAM>(after), reinterpret_cast<LPARAM>(text)));
    }
    UINT ItemFromPoint(POINT point, BOOL& outside) const;

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}
    virtual void MeasureItem(LPMEASUREITEMSTRUCT) {}
    virtual int CompareItem(LPCOMPAREITEMSTRUCT) { return 0; }
    virtual void DeleteItem(LPDELETEITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class CComboBox : public CWnd {
    DECLARE_DYNAMIC(CComboBox)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create("COMBOBOX", nullptr, style, rect, parent, id);
    }
    [[nodiscard]] int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    [[nodiscard]] int GetCurSel() const { return static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int index) { return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(index))); }
    [[nodiscard]] DWORD_PTR GetItemData(int index) const {
        return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(index)));
    }
    int SetItemData(int index, DWORD_PTR data) {
        return static_cast<int>(SendMessage(CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data)));
    }
    int SetItemHeight(int index, UINT height) {
        return static_cast<int>(
            SendMessage(CB_SETITEMHEIGHT, static_cast<WPARAM>(index), MAKELPARAM(static_cast<int>(height), 0)));
    }
    void GetLBText(int index, CString& text) const;
    int AddString(LPCSTR text) {
        return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text)));
    }
    int InsertString(int index, LPCSTR text) {
        return static_cast<int>(
            SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
    int DeleteString(UINT index) { return static_cast<int>(SendMessage(CB_DELETESTRING, index)); }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    int FindStringExact(int after, LPCSTR text) const {
        return static_cast<int>(
            SendMessage(CB_FINDSTRINGEXACT, static_cast<WPARAM>(after), reinterpret_cast<LPARAM>(text)));
    }
    int SelectString(int after, LPCSTR text) {
        return static_cast<int>(
            SendMessage(CB_SELECTSTRING, static_cast<WPARAM>(after), reinterpret_cast<LPARAM>(text)));
    }
    void ShowDropDown(BOOL show = TRUE) { SendMessage(CB_SHOWDROPDOWN, static_cast<WPARAM>(show)); }
    [[nodiscard]] BOOL GetDroppedState() const { return static_cast<BOOL>(SendMessage(CB_GETDROPPEDSTATE)); }
    [[nodiscard]] int GetDroppedWidth() const { return static_cast<int>(SendMessage(CB_GETDROPPEDWIDTH)); }

    virtual void DrawItem(LPDRAWITEMSTRUCT) {}
    virtual void MeasureItem(LPMEASUREITEMSTRUCT) {}
    virtual int CompareItem(LPCOMPAREITEMSTRUCT) { return 0; }
    virtual void DeleteItem(LPDELETEITEMSTRUCT) {}

protected:
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)

public:
    using CWnd::Create;
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id) {
        return CWnd::Create("SCROLLBAR", nullptr, style, rect, parent, id);
    }
    int SetScrollPos(int position, BOOL redraw = TRUE) { return ::SetScrollPos(m_hWnd, SB_CTL, position, redraw); }
    [[nodiscard]] int GetScrollPos() const { return ::GetScrollPos(m_hWnd, SB_CTL); }
    void SetScrollRange(int minimum, int maximum, BOOL redraw = TRUE) {
        ::SetScrollRange(m_hWnd, SB_CTL, minimum, maximum, redraw);
    }
};
