// CWnd: a window as an object.
//
// The object doesn't own the window's life, nor the window the object's: DestroyWindow ends the window and leaves the
// object, the object's destructor destroys a window that is still attached. Objects that live on the heap and end with
// their window override PostNcDestroy with `delete this`.
//
// FromHandle answers the object that is attached to a window, or a temporary one, valid until the framework is idle
// again; its members work, its virtual functions are those of CWnd.
#pragma once

#include "mfc/cmd_target.h"
#include "mfc/geometry.h"
#include "mfc/string.h"
#include "win32/paint.h"
#include "win32/window.h"

#include <memory>

class CDataExchange;
class CDC;
class CFont;
class CFrameWnd;
class CMenu;

constexpr UINT WM_SIZEPARENT = 0x0361; // lParam: AFX_SIZEPARENTPARAMS; a bar takes its room
constexpr UINT WM_KICKIDLE = 0x036A;   // sent by modal loops when they are idle
constexpr UINT WM_INITIALUPDATE = 0x0364;
constexpr UINT WM_IDLEUPDATECMDUI = 0x0363; // wParam: disable what has no handler

// CWnd::RunModalLoop.
constexpr DWORD MLF_NOIDLEMSG = 1;
constexpr DWORD MLF_NOKICKIDLE = 2;
constexpr DWORD MLF_SHOWONIDLE = 4;

// CWnd::RepositionBars.
constexpr UINT reposDefault = 0;
constexpr UINT reposQuery = 1; // only measures what is left

/// A parent's client area while its bars take their room from it, one after the other.
struct AFX_SIZEPARENTPARAMS {
    HDWP hDWP = nullptr; ///< where bars note their places; null while only measuring
    RECT rect{};         ///< what is left
    BOOL bStretch = TRUE;
};

class CWnd : public CCmdTarget {
    DECLARE_DYNAMIC(CWnd)

public:
    CWnd() = default;
    ~CWnd() override;

    HWND m_hWnd = nullptr;
    HWND m_hWndOwner = nullptr; ///< whoever gets notifications instead of the parent; null: the parent

    static const CWnd wndTop;
    static const CWnd wndBottom;
    static const CWnd wndTopMost;
    static const CWnd wndNoTopMost;

    [[nodiscard]] HWND GetSafeHwnd() const { return m_hWnd; }
    operator HWND() const { return m_hWnd; }
    /// Null for null; else see above.
    [[nodiscard]] static CWnd* FromHandle(HWND window);
    [[nodiscard]] static CWnd* FromHandlePermanent(HWND window);
    /// The same for a class derived from CWnd, whose temporary objects `make` gives; null when the object that is
    /// attached is none of that class.
    [[nodiscard]] static CWnd* FromHandle(HWND window, const CRuntimeClass* wanted, std::unique_ptr<CWnd> (*make)());
    static void DeleteTempMap();
    /// The window's messages stay with its own procedure. FALSE when either is attached already.
    BOOL Attach(HWND window);
    HWND Detach();

    /// Makes this object the window's: messages come to WindowProc first. Calls PreSubclassWindow.
    BOOL SubclassWindow(HWND window);
    BOOL SubclassDlgItem(UINT id, CWnd* parent);
    HWND UnsubclassWindow();
    virtual void PreSubclassWindow() {}

    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, int x, int y, int width, int height,
                  HWND parent, HMENU menuOrId, LPVOID parameter = nullptr);
    BOOL CreateEx(DWORD exStyle, LPCSTR className, LPCSTR name, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                  LPVOID parameter = nullptr);
    virtual BOOL Create(LPCSTR className, LPCSTR name, DWORD style, const RECT& rect, CWnd* parent, UINT id,
                        void* context = nullptr);
    virtual BOOL PreCreateWindow(CREATESTRUCT& create);
    virtual BOOL DestroyWindow();
    virtual void PostNcDestroy() {}

    // Messages.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    /// `children`: to every window below, `deep` to theirs too.
    void SendMessageToDescendants(UINT message, WPARAM wParam = 0, LPARAM lParam = 0, BOOL deep = TRUE,
                                  BOOL onlyPermanent = FALSE) const;
    virtual BOOL PreTranslateMessage(MSG* message);
    [[nodiscard]] static const MSG* GetCurrentMessage();

    // Text, font, icon, menu.
    void SetWindowText(LPCSTR text) { ::SetWindowTextA(m_hWnd, text); }
    void GetWindowText(CString& text) const;
    int GetWindowText(LPSTR buffer, int size) const { return ::GetWindowTextA(m_hWnd, buffer, size); }
    [[nodiscard]] int GetWindowTextLength() const { return ::GetWindowTextLengthA(m_hWnd); }
    void SetFont(CFont* font, BOOL redraw = TRUE);
    [[nodiscard]] CFont* GetFont() const;
    HICON SetIcon(HICON icon, BOOL big);
    [[nodiscard]] CMenu* GetMenu() const;
    BOOL SetMenu(CMenu* menu);
    [[nodiscard]] CMenu* GetSystemMenu(BOOL revert) const;

    // Style and state.
    [[nodiscard]] DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE)); }
    [[nodiscard]] DWORD GetExStyle() const { return static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_EXSTYLE)); }
    /// With `flags` not 0 the frame is brought up to date by SetWindowPos with them. TRUE when something changed.
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0);
    [[nodiscard]] BOOL IsWindowVisible() const { return ::IsWindowVisible(m_hWnd); }
    [[nodiscard]] BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
    [[nodiscard]] BOOL IsIconic() const { return ::IsIconic(m_hWnd); }
    [[nodiscard]] BOOL IsZoomed() const { return ::IsZoomed(m_hWnd); }
    BOOL EnableWindow(BOOL enable = TRUE) { return ::EnableWindow(m_hWnd, enable); }
    BOOL ShowWindow(int command) { return ::ShowWindow(m_hWnd, command); }
    [[nodiscard]] int GetDlgCtrlID() const;
    int SetDlgCtrlID(int id);

    // Place.
    void GetWindowRect(LPRECT rect) const { ::GetWindowRect(m_hWnd, rect); }
    void GetClientRect(LPRECT rect) const { ::GetClientRect(m_hWnd, rect); }
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE) {
        ::MoveWindow(m_hWnd, x, y, width, height, repaint);
    }
    void MoveWindow(LPCRECT rect, BOOL repaint = TRUE) {
        MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top, repaint);
    }
    BOOL SetWindowPos(const CWnd* insertAfter, int x, int y, int width, int height, UINT flags);
    void BringWindowToTop() { ::BringWindowToTop(m_hWnd); }
    void CenterWindow(CWnd* alternate = nullptr);
    void ClientToScreen(LPPOINT point) const { ::ClientToScreen(m_hWnd, point); }
    void ClientToScreen(LPRECT rect) const { ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<LPPOINT>(rect), 2); }
    void ScreenToClient(LPPOINT point) const { ::ScreenToClient(m_hWnd, point); }
    void ScreenToClient(LPRECT rect) const { ::MapWindowPoints(nullptr, m_hWnd, reinterpret_cast<LPPOINT>(rect), 2); }
    void MapWindowPoints(CWnd* to, LPRECT rect) const;
    /// Lets the children whose ids are in the range take their room from the client area (WM_SIZEPARENT) and gives what
    /// is left to `leftOver`. With reposQuery nothing moves, and `result` gets what would be left.
    void RepositionBars(UINT first, UINT last, UINT leftOver, UINT flag = reposDefault, LPRECT result = nullptr,
                        BOOL stretch = TRUE);
    virtual void CalcWindowRect(LPRECT clientRect, UINT adjustType = 0);

    // Painting.
    void Invalidate(BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, nullptr, erase); }
    void InvalidateRect(LPCRECT rect, BOOL erase = TRUE) { ::InvalidateRect(m_hWnd, rect, erase); }
    void UpdateWindow() { ::UpdateWindow(m_hWnd); }
    BOOL RedrawWindow(LPCRECT rect = nullptr, HRGN region = nullptr,
                      UINT flags = RDW_INVALIDATE | RDW_UPDATENOW | RDW_ERASE) {
        return ::RedrawWindow(m_hWnd, rect, region, flags);
    }
    void SetRedraw(BOOL redraw = TRUE) { SendMessage(WM_SETREDRAW, static_cast<WPARAM>(redraw)); }
    /// The caller gives it back with ReleaseDC.
    [[nodiscard]] CDC* GetDC() const;
    int ReleaseDC(CDC* dc) const;

    // Focus, mouse, timers. All of these answer a FromHandle object or null.
    CWnd* SetFocus();
    [[nodiscard]] static CWnd* GetFocus();
    CWnd* SetCapture();
    [[nodiscard]] static CWnd* GetCapture();
    CWnd* SetActiveWindow();
    [[nodiscard]] static CWnd* GetActiveWindow();
    [[nodiscard]] static CWnd* GetForegroundWindow();
    BOOL SetForegroundWindow();
    [[nodiscard]] static CWnd* WindowFromPoint(POINT point);
    UINT_PTR SetTimer(UINT_PTR id, UINT milliseconds, void(CALLBACK* procedure)(HWND, UINT, UINT_PTR, DWORD) = nullptr);
    BOOL KillTimer(UINT_PTR id);

    // Family.
    [[nodiscard]] CWnd* GetParent() const { return FromHandle(::GetParent(m_hWnd)); }
    /// m_hWndOwner, else the parent.
    [[nodiscard]] CWnd* GetOwner() const {
        return FromHandle(m_hWndOwner != nullptr ? m_hWndOwner : ::GetParent(m_hWnd));
    }
    void SetOwner(CWnd* owner) { m_hWndOwner = owner != nullptr ? owner->m_hWnd : nullptr; }
    /// Up through parents to the first window that isn't a child.
    [[nodiscard]] CWnd* GetParentOwner() const;
    [[nodiscard]] CWnd* GetTopLevelParent() const;
    [[nodiscard]] CFrameWnd* GetParentFrame() const;
    [[nodiscard]] CFrameWnd* GetTopLevelFrame() const;
    CWnd* SetParent(CWnd* parent);
    [[nodiscard]] CWnd* GetWindow(UINT which) const { return FromHandle(::GetWindow(m_hWnd, which)); }
    [[nodiscard]] CWnd* GetNextWindow(UINT which = GW_HWNDNEXT) const { return GetWindow(which); }
    [[nodiscard]] CWnd* GetTopWindow() const { return FromHandle(::GetTopWindow(m_hWnd)); }
    [[nodiscard]] BOOL IsChild(const CWnd* window) const { return ::IsChild(m_hWnd, window->m_hWnd); }
    [[nodiscard]] CWnd* GetLastActivePopup() const { return FromHandle(::GetLastActivePopup(m_hWnd)); }
    [[nodiscard]] static CWnd* GetDesktopWindow();
    [[nodiscard]] CWnd* ChildWindowFromPoint(POINT point) const;

    // Dialog items, on any parent.
    [[nodiscard]] CWnd* GetDlgItem(int id) const;
    void SetDlgItemText(int id, LPCSTR text);
    int GetDlgItemText(int id, CString& text) const;
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);
    [[nodiscard]] UINT GetDlgItemInt(int id, BOOL* translated = nullptr, BOOL isSigned = TRUE) const;
    void CheckDlgButton(int id, UINT check);
    void CheckRadioButton(int first, int last, int checked);
    [[nodiscard]] UINT IsDlgButtonChecked(int id) const;
    [[nodiscard]] int GetCheckedRadioButton(int first, int last) const;
    [[nodiscard]] CWnd* GetNextDlgTabItem(CWnd* control, BOOL previous = FALSE) const;
    /// Fills list and combo boxes from the dialog-init rows of a resource. TRUE too when there is none.
    BOOL ExecuteDlgInit(LPCSTR resourceName);
    void UpdateDialogControls(CCmdTarget* target, BOOL disableIfNoHandler);
    virtual void DoDataExchange(CDataExchange*) {}
    /// TRUE in: from controls to members when `saveAndValidate`, else the other way. FALSE when a value was refused;
    /// the user has been told.
    BOOL UpdateData(BOOL saveAndValidate = TRUE);

    // Scroll bars.
    int SetScrollPos(int bar, int position, BOOL redraw = TRUE);
    [[nodiscard]] int GetScrollPos(int bar) const;
    void SetScrollRange(int bar, int minimum, int maximum, BOOL redraw = TRUE);
    void ShowScrollBar(UINT bar, BOOL show = TRUE);

    int MessageBox(LPCSTR text, LPCSTR caption = nullptr, UINT type = 0) const;

    // Modal loops.
    /// Runs until ContinueModal answers FALSE and returns what EndModalLoop was given, -1 when the program is ending.
    int RunModalLoop(DWORD flags = 0);
    virtual BOOL ContinueModal();
    virtual void EndModalLoop(int result);

    /// From `first` up to `stop` (null: to the top) each attached object's PreTranslateMessage; TRUE when one took it.
    static BOOL WalkPreTranslateTree(HWND stop, MSG* message);

    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);

protected:
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    /// The default handling of the message that is being handled, with its own parameters.
    LRESULT Default();
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// Notifications that the parent hands back to the control that sent them.
    virtual BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    BOOL ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    BOOL SendChildNotifyLastMsg(LRESULT* result = nullptr);
    static BOOL ReflectLastMsg(HWND child, LRESULT* result = nullptr);
    /// IsDialogMessage for this window, after the filters.
    BOOL PreTranslateInput(MSG* message);
    virtual WNDPROC* GetSuperWndProcAddr() { return &m_pfnSuper; }

    // Handlers with the platform's default behaviour.
    int OnCreate(LPCREATESTRUCT) { return static_cast<int>(Default()); }
    void OnDestroy() { Default(); }
    void OnNcDestroy();
    void OnClose() { Default(); }
    void OnSize(UINT, int, int) { Default(); }
    void OnSizing(UINT, LPRECT) { Default(); }
    void OnMove(int, int) { Default(); }
    void OnMoving(UINT, LPRECT) { Default(); }
    void OnShowWindow(BOOL, UINT) { Default(); }
    void OnEnable(BOOL) { Default(); }
    void OnActivate(UINT, CWnd*, BOOL) { Default(); }
    BOOL OnNcActivate(BOOL) { return static_cast<BOOL>(Default()); }
    void OnSetFocus(CWnd*) { Default(); }
    void OnKillFocus(CWnd*) { Default(); }
    void OnCaptureChanged(CWnd*) { Default(); }
    void OnPaint() { Default(); }
    BOOL OnEraseBkgnd(CDC*) { return static_cast<BOOL>(Default()); }
    void OnNcPaint() { Default(); }
    LRESULT OnNcHitTest(CPoint) { return Default(); }
    void OnNcLButtonDown(UINT, CPoint) { Default(); }
    void OnNcLButtonDblClk(UINT, CPoint) { Default(); }
    void OnNcCalcSize(BOOL, NCCALCSIZE_PARAMS*) { Default(); }
    void OnWindowPosChanging(WINDOWPOS*) { Default(); }
    void OnWindowPosChanged(WINDOWPOS*) { Default(); }
    void OnGetMinMaxInfo(MINMAXINFO*) { Default(); }
    BOOL OnSetCursor(CWnd*, UINT, UINT) { return static_cast<BOOL>(Default()); }
    int OnMouseActivate(CWnd*, UINT, UINT) { return static_cast<int>(Default()); }
    void OnMouseMove(UINT, CPoint) { Default(); }
    BOOL OnMouseWheel(UINT, short, CPoint) { return static_cast<BOOL>(Default()); }
    void OnLButtonDown(UINT, CPoint) { Default(); }
    void OnLButtonUp(UINT, CPoint) { Default(); }
    void OnLButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDown(UINT, CPoint) { Default(); }
    void OnRButtonUp(UINT, CPoint) { Default(); }
    void OnMButtonDown(UINT, CPoint) { Default(); }
    void OnMButtonUp(UINT, CPoint) { Default(); }
    void OnMButtonDblClk(UINT, CPoint) { Default(); }
    void OnRButtonDblClk(UINT, CPoint) { Default(); }
    void OnKeyDown(UINT, UINT, UINT) { Default(); }
    void OnKeyUp(UINT, UINT, UINT) { Default(); }
    void OnChar(UINT, UINT, UINT) { Default(); }
    void OnSysKeyDown(UINT, UINT, UINT) { Default(); }
    void OnSysCommand(UINT, LPARAM) { Default(); }
    UINT OnGetDlgCode() { return static_cast<UINT>(Default()); }
    void OnTimer(UINT_PTR) { Default(); }
    void OnHScroll(UINT, UINT, CWnd*) { Default(); }
    void OnVScroll(UINT, UINT, CWnd*) { Default(); }
    void OnContextMenu(CWnd*, CPoint) { Default(); }
    void OnInitMenuPopup(CMenu*, UINT, BOOL) { Default(); }
    void OnDrawItem(int id, DRAWITEMSTRUCT* item);
    void OnMeasureItem(int id, MEASUREITEMSTRUCT* item);
    int OnCompareItem(int id, COMPAREITEMSTRUCT* items);
    void OnDeleteItem(int id, DELETEITEMSTRUCT* item);
    HBRUSH OnCtlColor(CDC*, CWnd* control, UINT);

    DECLARE_MESSAGE_MAP()

    WNDPROC m_pfnSuper = nullptr; ///< the procedure that was there before; null: DefWindowProc
    int m_nModalResult = 0;
    bool m_bInModalLoop = false;
    bool m_bContinueModal = false;
    bool m_bSubclassed = false; ///< attached with our procedure in place of its own

private:
    friend LRESULT CALLBACK AfxWndProc(HWND, UINT, WPARAM, LPARAM);
    friend class CDialog;
    friend LRESULT AfxCallWndProc(CWnd*, UINT, WPARAM, LPARAM);
    explicit CWnd(HWND special) : m_hWnd(special) {}
    static LRESULT CALLBACK CreationHook(int code, WPARAM wParam, LPARAM lParam);
    friend struct AfxCreationScope;
};

LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
/// WindowProc with the message noted for Default(). What a handler throws is logged and answers 0 (-1 for WM_CREATE).
LRESULT AfxCallWndProc(CWnd* object, UINT message, WPARAM wParam, LPARAM lParam);

/// A window class for these traits, registered once; the name stays valid.
LPCSTR AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr, HBRUSH background = nullptr, HICON icon = nullptr);
int AfxMessageBox(LPCSTR text, UINT type = 0, UINT helpId = 0);
int AfxMessageBox(UINT stringId, UINT type = 0, UINT helpId = 0);
[[nodiscard]] CWnd* AfxGetMainWnd();
