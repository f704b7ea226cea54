// The macros of message maps. Each entry names a member function; its type is checked when the map is compiled, and the
// parameters are unpacked by the type of the handler.
#pragma once

#include "mfc/cmd_target.h"
#include "mfc/geometry.h"
#include "win32/messages.h"

#include <type_traits>

class CDC;
class CMenu;
class CWnd;

/// Messages that a control gets back from its parent carry this added to their number.
constexpr UINT WM_REFLECT_BASE = 0xBC00;

/// What a reflected message brings beside its parameters.
struct AFX_REFLECT {
    LRESULT result = 0;
};

namespace afx {

[[nodiscard]] CWnd* wndFromWParam(WPARAM value);
[[nodiscard]] CWnd* wndFromLParam(LPARAM value);
[[nodiscard]] CMenu* menuFromHandle(HMENU menu);
/// A context for the length of the handler.
[[nodiscard]] CDC* contextFromHandle(HDC dc);

template <typename>
struct MemberOf;
template <typename C, typename R, typename... A>
struct MemberOf<R (C::*)(A...)> {
    using Class = C;
    using Result = R;
};
template <typename C, typename R, typename... A>
struct MemberOf<R (C::*)(A...) const> {
    using Class = C;
    using Result = R;
};

/// Calls a member and stores what it answers, 0 for nothing.
template <auto Handler, typename... A>
BOOL answer(CCmdTarget* target, const AFX_CALL& call, A... arguments) {
    using Member = MemberOf<decltype(Handler)>;
    auto* object = static_cast<typename Member::Class*>(target);
    LRESULT result = 0;
    if constexpr (std::is_void_v<typename Member::Result>)
        (object->*Handler)(arguments...);
    else if constexpr (std::is_pointer_v<typename Member::Result>)
        result = reinterpret_cast<LRESULT>((object->*Handler)(arguments...));
    else
        result = static_cast<LRESULT>((object->*Handler)(arguments...));
    if (call.pResult != nullptr)
        *call.pResult = result;
    return TRUE;
}

// One function for each way of unpacking, named after what the handler gets.
template <auto H>
BOOL plain(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c);
}
template <auto H>
BOOL raw(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, c.wParam, c.lParam);
}
template <auto H>
BOOL flag(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<BOOL>(c.wParam));
}
template <auto H>
BOOL window(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, wndFromWParam(c.wParam));
}
template <auto H>
BOOL windowFromL(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, wndFromLParam(c.lParam));
}
template <auto H>
BOOL number(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT_PTR>(c.wParam));
}
template <auto H>
BOOL pointer(CCmdTarget* t, const AFX_CALL& c);
template <auto H>
BOOL mouse(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(c.wParam), CPoint(c.lParam));
}
template <auto H>
BOOL hitTest(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, CPoint(c.lParam));
}
template <auto H>
BOOL key(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(c.wParam), static_cast<UINT>(LOWORD(static_cast<DWORD_PTR>(c.lParam))),
                     static_cast<UINT>(HIWORD(static_cast<DWORD_PTR>(c.lParam))));
}
template <auto H>
BOOL size(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(c.wParam), static_cast<int>(LOWORD(static_cast<DWORD_PTR>(c.lParam))),
                     static_cast<int>(HIWORD(static_cast<DWORD_PTR>(c.lParam))));
}
template <auto H>
BOOL move(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, GET_X_LPARAM(c.lParam), GET_Y_LPARAM(c.lParam));
}
template <auto H>
BOOL activate(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(LOWORD(c.wParam)), wndFromLParam(c.lParam),
                     static_cast<BOOL>(HIWORD(c.wParam)));
}
template <auto H>
BOOL mouseActivate(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, wndFromWParam(c.wParam), static_cast<UINT>(LOWORD(static_cast<DWORD_PTR>(c.lParam))),
                     static_cast<UINT>(HIWORD(static_cast<DWORD_PTR>(c.lParam))));
}
template <auto H>
BOOL scroll(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(LOWORD(c.wParam)),
                     static_cast<UINT>(static_cast<int>(static_cast<SHORT>(HIWORD(c.wParam)))),
                     wndFromLParam(c.lParam));
}
template <auto H>
BOOL wheel(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(LOWORD(c.wParam)), static_cast<short>(HIWORD(c.wParam)), CPoint(c.lParam));
}
template <auto H>
BOOL setCursor(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, wndFromWParam(c.wParam), static_cast<UINT>(LOWORD(static_cast<DWORD_PTR>(c.lParam))),
                     static_cast<UINT>(HIWORD(static_cast<DWORD_PTR>(c.lParam))));
}
template <auto H>
BOOL contextMenu(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, wndFromWParam(c.wParam), CPoint(c.lParam));
}
template <auto H>
BOOL erase(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, contextFromHandle(reinterpret_cast<HDC>(c.wParam)));
}
template <auto H>
BOOL color(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, contextFromHandle(reinterpret_cast<HDC>(c.wParam)), wndFromLParam(c.lParam),
                     c.nMessage - WM_CTLCOLORMSGBOX);
}
template <auto H>
BOOL reflectedColor(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, contextFromHandle(reinterpret_cast<HDC>(c.wParam)),
                     c.nMessage - WM_REFLECT_BASE - WM_CTLCOLORMSGBOX);
}
template <auto H>
BOOL initMenuPopup(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, menuFromHandle(reinterpret_cast<HMENU>(c.wParam)),
                     static_cast<UINT>(LOWORD(static_cast<DWORD_PTR>(c.lParam))),
                     static_cast<BOOL>(HIWORD(static_cast<DWORD_PTR>(c.lParam))));
}
template <auto H>
BOOL show(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<BOOL>(c.wParam), static_cast<UINT>(c.lParam));
}
template <auto H>
BOOL sysCommand(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(c.wParam), c.lParam);
}

/// The handler takes one pointer; its type is the parameter's own.
template <typename>
struct FirstOf;
template <typename C, typename R, typename P, typename... A>
struct FirstOf<R (C::*)(P, A...)> {
    using Type = P;
};
template <auto H>
BOOL pointer(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, reinterpret_cast<typename FirstOf<decltype(H)>::Type>(c.lParam));
}
template <auto H>
BOOL numberAndPointer(CCmdTarget* t, const AFX_CALL& c);
template <typename>
struct SecondOf;
template <typename C, typename R, typename P, typename Q>
struct SecondOf<R (C::*)(P, Q)> {
    using Type = Q;
};
template <auto H>
BOOL numberAndPointer(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<UINT>(c.wParam),
                     reinterpret_cast<typename SecondOf<decltype(H)>::Type>(c.lParam));
}

template <auto H>
BOOL flagAndPointer(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, static_cast<BOOL>(c.wParam),
                     reinterpret_cast<typename SecondOf<decltype(H)>::Type>(c.lParam));
}

template <auto H>
BOOL command(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c);
}
template <auto H>
BOOL commandWithId(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c, c.nID);
}
/// An extended handler says itself whether the command goes on.
template <auto H>
BOOL extendedCommand(CCmdTarget* t, const AFX_CALL& c) {
    return (static_cast<typename MemberOf<decltype(H)>::Class*>(t)->*H)(c.nID);
}
template <auto H>
BOOL update(CCmdTarget* t, const AFX_CALL& c) {
    auto* state = static_cast<CCmdUI*>(c.pExtra);
    state->m_bContinueRouting = FALSE;
    answer<H>(t, c, state);
    const BOOL goOn = state->m_bContinueRouting;
    state->m_bContinueRouting = FALSE;
    return !goOn;
}
template <auto H>
BOOL notification(CCmdTarget* t, const AFX_CALL& c) {
    auto* notify = static_cast<AFX_NOTIFY*>(c.pExtra);
    return answer<H>(t, c, notify->pNMHDR, notify->pResult);
}
template <auto H>
BOOL notificationWithId(CCmdTarget* t, const AFX_CALL& c) {
    auto* notify = static_cast<AFX_NOTIFY*>(c.pExtra);
    return answer<H>(t, c, c.nID, notify->pNMHDR, notify->pResult);
}
template <auto H>
BOOL extendedNotification(CCmdTarget* t, const AFX_CALL& c) {
    auto* notify = static_cast<AFX_NOTIFY*>(c.pExtra);
    return (static_cast<typename MemberOf<decltype(H)>::Class*>(t)->*H)(notify->pNMHDR, notify->pResult);
}
/// A reflected notification ends with a plain handler; an extended one answers whether the parent is passed over.
template <auto H>
BOOL reflectedCommand(CCmdTarget* t, const AFX_CALL& c) {
    return answer<H>(t, c);
}
template <auto H>
BOOL extendedReflectedCommand(CCmdTarget* t, const AFX_CALL& c) {
    LRESULT consumed = 0;
    AFX_CALL inner = c;
    inner.pResult = &consumed;
    answer<H>(t, inner);
    return consumed != 0;
}

} // namespace afx

#define BEGIN_MESSAGE_MAP(theClass, baseClass)                                                                         \
    const AFX_MSGMAP* theClass::GetMessageMap() const { return GetThisMessageMap(); }                                  \
    const AFX_MSGMAP* theClass::GetThisMessageMap() {                                                                  \
        using ThisClass [[maybe_unused]] = theClass;                                                                   \
        using TheBaseClass = baseClass;                                                                                \
        static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                                                                                              \
    { 0, 0, 0, 0, nullptr, nullptr }                                                                                   \
    }                                                                                                                  \
    ;                                                                                                                  \
    static const AFX_MSGMAP map = {&TheBaseClass::GetThisMessageMap, entries};                                         \
    return &map;                                                                                                       \
    }

#define AFX_WM_ENTRY(message, way, handler) {message, 0, 0, 0, &afx::way<&ThisClass::handler>, nullptr},

// Commands, and the queries of their state.
#define ON_COMMAND(id, memberFxn) {WM_COMMAND, CN_COMMAND, id, id, &afx::command<memberFxn>, nullptr},
#define ON_COMMAND_EX(id, memberFxn) {WM_COMMAND, CN_COMMAND, id, id, &afx::extendedCommand<memberFxn>, nullptr},
#define ON_COMMAND_RANGE(id, idLast, memberFxn)                                                                        \
    {WM_COMMAND, CN_COMMAND, id, idLast, &afx::commandWithId<memberFxn>, nullptr},
#define ON_UPDATE_COMMAND_UI(id, memberFxn)                                                                            \
    {WM_COMMAND, static_cast<UINT>(CN_UPDATE_COMMAND_UI), id, id, &afx::update<memberFxn>, nullptr},
#define ON_UPDATE_COMMAND_UI_RANGE(id, idLast, memberFxn)                                                              \
    {WM_COMMAND, static_cast<UINT>(CN_UPDATE_COMMAND_UI), id, idLast, &afx::update<memberFxn>, nullptr},

// Notifications of controls.
#define ON_CONTROL(code, id, memberFxn)                                                                                \
    {WM_COMMAND, static_cast<UINT>(code), id, id, &afx::command<memberFxn>, nullptr},
#define ON_CONTROL_RANGE(code, id, idLast, memberFxn)                                                                  \
    {WM_COMMAND, static_cast<UINT>(code), id, idLast, &afx::commandWithId<memberFxn>, nullptr},
#define ON_CONTROL_REFLECT(code, memberFxn)                                                                            \
    {WM_COMMAND + WM_REFLECT_BASE, static_cast<UINT>(code), 0, 0, &afx::reflectedCommand<memberFxn>, nullptr},
#define ON_CONTROL_REFLECT_EX(code, memberFxn)                                                                         \
    {WM_COMMAND + WM_REFLECT_BASE, static_cast<UINT>(code), 0, 0, &afx::extendedReflectedCommand<memberFxn>, nullptr},
#define ON_NOTIFY(code, id, memberFxn)                                                                                 \
    {WM_NOTIFY, static_cast<UINT>(code), id, id, &afx::notification<memberFxn>, nullptr},
#define ON_NOTIFY_RANGE(code, id, idLast, memberFxn)                                                                   \
    {WM_NOTIFY, static_cast<UINT>(code), id, idLast, &afx::notificationWithId<memberFxn>, nullptr},
#define ON_NOTIFY_REFLECT(code, memberFxn)                                                                             \
    {WM_NOTIFY + WM_REFLECT_BASE, static_cast<UINT>(code), 0, 0, &afx::notification<memberFxn>, nullptr},
#define ON_NOTIFY_REFLECT_EX(code, memberFxn)                                                                          \
    {WM_NOTIFY + WM_REFLECT_BASE, static_cast<UINT>(code), 0, 0, &afx::extendedNotification<memberFxn>, nullptr},
#define ON_MESSAGE(message, memberFxn) {message, 0, 0, 0, &afx::raw<memberFxn>, nullptr},
#define ON_REGISTERED_MESSAGE(messageVariable, memberFxn) {0xC000, 0, 0, 0, &afx::raw<memberFxn>, &(messageVariable)},

#define ON_BN_CLICKED(id, memberFxn) ON_CONTROL(BN_CLICKED, id, memberFxn)
#define ON_BN_DOUBLECLICKED(id, memberFxn) ON_CONTROL(BN_DOUBLECLICKED, id, memberFxn)
#define ON_BN_SETFOCUS(id, memberFxn) ON_CONTROL(BN_SETFOCUS, id, memberFxn)
#define ON_BN_KILLFOCUS(id, memberFxn) ON_CONTROL(BN_KILLFOCUS, id, memberFxn)
#define ON_EN_CHANGE(id, memberFxn) ON_CONTROL(EN_CHANGE, id, memberFxn)
#define ON_EN_UPDATE(id, memberFxn) ON_CONTROL(EN_UPDATE, id, memberFxn)
#define ON_EN_SETFOCUS(id, memberFxn) ON_CONTROL(EN_SETFOCUS, id, memberFxn)
#define ON_EN_KILLFOCUS(id, memberFxn) ON_CONTROL(EN_KILLFOCUS, id, memberFxn)
#define ON_LBN_SELCHANGE(id, memberFxn) ON_CONTROL(LBN_SELCHANGE, id, memberFxn)
#define ON_LBN_DBLCLK(id, memberFxn) ON_CONTROL(LBN_DBLCLK, id, memberFxn)
#define ON_CBN_SELCHANGE(id, memberFxn) ON_CONTROL(CBN_SELCHANGE, id, memberFxn)
#define ON_CBN_EDITCHANGE(id, memberFxn) ON_CONTROL(CBN_EDITCHANGE, id, memberFxn)
#define ON_CBN_DROPDOWN(id, memberFxn) ON_CONTROL(CBN_DROPDOWN, id, memberFxn)
#define ON_CBN_CLOSEUP(id, memberFxn) ON_CONTROL(CBN_CLOSEUP, id, memberFxn)
#define ON_CBN_KILLFOCUS(id, memberFxn) ON_CONTROL(CBN_KILLFOCUS, id, memberFxn)
#define ON_CBN_SELENDOK(id, memberFxn) ON_CONTROL(CBN_SELENDOK, id, memberFxn)

// Window messages; the handler's name follows from the message's.
#define ON_WM_CREATE() AFX_WM_ENTRY(WM_CREATE, pointer, OnCreate)
#define ON_WM_DESTROY() AFX_WM_ENTRY(WM_DESTROY, plain, OnDestroy)
#define ON_WM_NCDESTROY() AFX_WM_ENTRY(WM_NCDESTROY, plain, OnNcDestroy)
#define ON_WM_CLOSE() AFX_WM_ENTRY(WM_CLOSE, plain, OnClose)
#define ON_WM_SIZE() AFX_WM_ENTRY(WM_SIZE, size, OnSize)
#define ON_WM_SIZING() AFX_WM_ENTRY(WM_SIZING, numberAndPointer, OnSizing)
#define ON_WM_MOVE() AFX_WM_ENTRY(WM_MOVE, move, OnMove)
#define ON_WM_MOVING() AFX_WM_ENTRY(WM_MOVING, numberAndPointer, OnMoving)
#define ON_WM_SHOWWINDOW() AFX_WM_ENTRY(WM_SHOWWINDOW, show, OnShowWindow)
#define ON_WM_ENABLE() AFX_WM_ENTRY(WM_ENABLE, flag, OnEnable)
#define ON_WM_ACTIVATE() AFX_WM_ENTRY(WM_ACTIVATE, activate, OnActivate)
#define ON_WM_NCACTIVATE() AFX_WM_ENTRY(WM_NCACTIVATE, flag, OnNcActivate)
#define ON_WM_SETFOCUS() AFX_WM_ENTRY(WM_SETFOCUS, window, OnSetFocus)
#define ON_WM_KILLFOCUS() AFX_WM_ENTRY(WM_KILLFOCUS, window, OnKillFocus)
#define ON_WM_CAPTURECHANGED() AFX_WM_ENTRY(WM_CAPTURECHANGED, windowFromL, OnCaptureChanged)
#define ON_WM_PAINT() AFX_WM_ENTRY(WM_PAINT, plain, OnPaint)
#define ON_WM_ERASEBKGND() AFX_WM_ENTRY(WM_ERASEBKGND, erase, OnEraseBkgnd)
#define ON_WM_NCPAINT() AFX_WM_ENTRY(WM_NCPAINT, plain, OnNcPaint)
#define ON_WM_NCHITTEST() AFX_WM_ENTRY(WM_NCHITTEST, hitTest, OnNcHitTest)
#define ON_WM_NCLBUTTONDOWN() AFX_WM_ENTRY(WM_NCLBUTTONDOWN, mouse, OnNcLButtonDown)
#define ON_WM_NCLBUTTONDBLCLK() AFX_WM_ENTRY(WM_NCLBUTTONDBLCLK, mouse, OnNcLButtonDblClk)
#define ON_WM_NCCALCSIZE() AFX_WM_ENTRY(WM_NCCALCSIZE, flagAndPointer, OnNcCalcSize)
#define ON_WM_WINDOWPOSCHANGING() AFX_WM_ENTRY(WM_WINDOWPOSCHANGING, pointer, OnWindowPosChanging)
#define ON_WM_WINDOWPOSCHANGED() AFX_WM_ENTRY(WM_WINDOWPOSCHANGED, pointer, OnWindowPosChanged)
#define ON_WM_GETMINMAXINFO() AFX_WM_ENTRY(WM_GETMINMAXINFO, pointer, OnGetMinMaxInfo)
#define ON_WM_SETCURSOR() AFX_WM_ENTRY(WM_SETCURSOR, setCursor, OnSetCursor)
#define ON_WM_MOUSEACTIVATE() AFX_WM_ENTRY(WM_MOUSEACTIVATE, mouseActivate, OnMouseActivate)
#define ON_WM_MOUSEMOVE() AFX_WM_ENTRY(WM_MOUSEMOVE, mouse, OnMouseMove)
#define ON_WM_MOUSEWHEEL() AFX_WM_ENTRY(WM_MOUSEWHEEL, wheel, OnMouseWheel)
#define ON_WM_LBUTTONDOWN() AFX_WM_ENTRY(WM_LBUTTONDOWN, mouse, OnLButtonDown)
#define ON_WM_LBUTTONUP() AFX_WM_ENTRY(WM_LBUTTONUP, mouse, OnLButtonUp)
#define ON_WM_LBUTTONDBLCLK() AFX_WM_ENTRY(WM_LBUTTONDBLCLK, mouse, OnLButtonDblClk)
#define ON_WM_RBUTTONDOWN() AFX_WM_ENTRY(WM_RBUTTONDOWN, mouse, OnRButtonDown)
#define ON_WM_RBUTTONUP() AFX_WM_ENTRY(WM_RBUTTONUP, mouse, OnRButtonUp)
#define ON_WM_MBUTTONDOWN() AFX_WM_ENTRY(WM_MBUTTONDOWN, mouse, OnMButtonDown)
#define ON_WM_MBUTTONUP() AFX_WM_ENTRY(WM_MBUTTONUP, mouse, OnMButtonUp)
#define ON_WM_MBUTTONDBLCLK() AFX_WM_ENTRY(WM_MBUTTONDBLCLK, mouse, OnMButtonDblClk)
#define ON_WM_RBUTTONDBLCLK() AFX_WM_ENTRY(WM_RBUTTONDBLCLK, mouse, OnRButtonDblClk)
#define ON_WM_KEYDOWN() AFX_WM_ENTRY(WM_KEYDOWN, key, OnKeyDown)
#define ON_WM_KEYUP() AFX_WM_ENTRY(WM_KEYUP, key, OnKeyUp)
#define ON_WM_CHAR() AFX_WM_ENTRY(WM_CHAR, key, OnChar)
#define ON_WM_SYSKEYDOWN() AFX_WM_ENTRY(WM_SYSKEYDOWN, key, OnSysKeyDown)
#define ON_WM_SYSCOMMAND() AFX_WM_ENTRY(WM_SYSCOMMAND, sysCommand, OnSysCommand)
#define ON_WM_GETDLGCODE() AFX_WM_ENTRY(WM_GETDLGCODE, plain, OnGetDlgCode)
#define ON_WM_TIMER() AFX_WM_ENTRY(WM_TIMER, number, OnTimer)
#define ON_WM_HSCROLL() AFX_WM_ENTRY(WM_HSCROLL, scroll, OnHScroll)
#define ON_WM_VSCROLL() AFX_WM_ENTRY(WM_VSCROLL, scroll, OnVScroll)
#define ON_WM_CONTEXTMENU() AFX_WM_ENTRY(WM_CONTEXTMENU, contextMenu, OnContextMenu)
#define ON_WM_INITMENUPOPUP() AFX_WM_ENTRY(WM_INITMENUPOPUP, initMenuPopup, OnInitMenuPopup)
#define ON_WM_DRAWITEM() AFX_WM_ENTRY(WM_DRAWITEM, numberAndPointer, OnDrawItem)
#define ON_WM_MEASUREITEM() AFX_WM_ENTRY(WM_MEASUREITEM, numberAndPointer, OnMeasureItem)
#define ON_WM_COMPAREITEM() AFX_WM_ENTRY(WM_COMPAREITEM, numberAndPointer, OnCompareItem)
#define ON_WM_DELETEITEM() AFX_WM_ENTRY(WM_DELETEITEM, numberAndPointer, OnDeleteItem)
// One entry stands for WM_CTLCOLORMSGBOX to WM_CTLCOLORSTATIC.
#define ON_WM_CTLCOLOR() {WM_CTLCOLORMSGBOX, 0, 0, WM_CTLCOLORSTATIC, &afx::color<&ThisClass::OnCtlColor>, nullptr},
#define ON_WM_CTLCOLOR_REFLECT()                                                                                       \
    {WM_REFLECT_BASE + WM_CTLCOLORMSGBOX,        0,      0, WM_REFLECT_BASE + WM_CTLCOLORSTATIC,                       \
     &afx::reflectedColor<&ThisClass::CtlColor>, nullptr},
#define ON_WM_DRAWITEM_REFLECT() {WM_REFLECT_BASE + WM_DRAWITEM, 0, 0, 0, &afx::pointer<&ThisClass::DrawItem>, nullptr},
#define ON_WM_MEASUREITEM_REFLECT()                                                                                    \
    {WM_REFLECT_BASE + WM_MEASUREITEM, 0, 0, 0, &afx::pointer<&ThisClass::MeasureItem>, nullptr},
