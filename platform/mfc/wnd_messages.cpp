// A message's way: window procedure, maps, parents, reflection.
#include "mfc/dc.h"
#include "mfc/exception.h"
#include "mfc/menu.h"
#include "mfc/message_map.h"
#include "mfc/module_state.h"
#include "mfc/winapp.h"
#include "mfc/wnd.h"
#include "win32/dialog.h"
#include "win32/gdi.h"

#include <cstdio>
#include <exception>

namespace {

/// The message that is being handled, for Default() and SendChildNotifyLastMsg.
MSG lastMessage{};

class LastMessageScope {
public:
    explicit LastMessageScope(const MSG& message) : former_(lastMessage) { lastMessage = message; }
    ~LastMessageScope() { lastMessage = former_; }
    LastMessageScope(const LastMessageScope&) = delete;
    LastMessageScope& operator=(const LastMessageScope&) = delete;

private:
    MSG former_;
};

/// Learns only whether a command is enabled.
class CTestCmdUI : public CCmdUI {
public:
    BOOL m_bEnabled = TRUE;
    void Enable(BOOL bOn) override {
        m_bEnabled = bOn;
        m_bEnableChanged = TRUE;
    }
    void SetCheck(int) override {}
    void SetRadio(BOOL) override {}
    void SetText(LPCSTR) override {}
};

bool isControlColor(UINT message) { return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC; }

} // namespace

namespace afx {

CWnd* wndFromWParam(WPARAM value) { return CWnd::FromHandle(reinterpret_cast<HWND>(value)); }
CWnd* wndFromLParam(LPARAM value) { return CWnd::FromHandle(reinterpret_cast<HWND>(value)); }
CMenu* menuFromHandle(HMENU menu) { return CMenu::FromHandle(menu); }
CDC* contextFromHandle(HDC dc) { return CDC::FromHandle(dc); }

} // namespace afx

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
ON_WM_NCDESTROY()
ON_WM_DRAWITEM()
ON_WM_MEASUREITEM()
ON_WM_CTLCOLOR()
END_MESSAGE_MAP()

const MSG* CWnd::GetCurrentMessage() { return &lastMessage; }

LRESULT AfxCallWndProc(CWnd* object, UINT message, WPARAM wParam, LPARAM lParam) {
    MSG now{};
    now.hwnd = object->m_hWnd;
    now.message = message;
    now.wParam = wParam;
    now.lParam = lParam;
    const LastMessageScope scope(now);
    try {
        return object->WindowProc(message, wParam, lParam);
    } catch (const std::exception& problem) {
        std::fprintf(stderr, "mfc: a handler of message 0x%04X threw: %s\n", message, problem.what());
    } catch (CException* problem) {
        std::fprintf(stderr, "mfc: a handler of message 0x%04X threw a %s\n", message,
                     problem->GetRuntimeClass()->m_lpszClassName);
        if (CWinApp* app = AfxGetApp(); app != nullptr && message != WM_PAINT && message != WM_CREATE)
            app->ProcessWndProcException(problem);
        problem->Delete();
    } catch (CObject* problem) {
        std::fprintf(stderr, "mfc: a handler of message 0x%04X threw a %s\n", message,
                     problem->GetRuntimeClass()->m_lpszClassName);
        delete problem;
    } catch (...) {
        std::fprintf(stderr, "mfc: a handler of message 0x%04X threw\n", message);
    }
    if (message == WM_PAINT)
        ::ValidateRect(now.hwnd, nullptr); // or it would come for ever
    return message == WM_CREATE ? -1 : 0;
}

LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    CWnd* object = CWnd::FromHandlePermanent(window);
    if (object == nullptr)
        return DefWindowProcA(window, message, wParam, lParam);
    return AfxCallWndProc(object, message, wParam, lParam);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    LRESULT result = 0;
    if (OnWndMsg(message, wParam, lParam, &result) == FALSE)
        result = DefWindowProc(message, wParam, lParam);
    return result;
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message == WM_COMMAND) {
        if (OnCommand(wParam, lParam) == FALSE)
            return FALSE;
        *result = 1;
        return TRUE;
    }
    if (message == WM_NOTIFY)
        return reinterpret_cast<NMHDR*>(lParam)->hwndFrom != nullptr && OnNotify(wParam, lParam, result) != FALSE;
    const AFX_MSGMAP_ENTRY* entry = FindMessageEntry(message, 0, 0);
    if (entry == nullptr)
        return FALSE;
    AFX_CALL call;
    call.nMessage = message;
    call.wParam = wParam;
    call.lParam = lParam;
    call.pResult = result;
    return entry->pfnInvoke(this, call);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    const WNDPROC super = *GetSuperWndProcAddr();
    return super != nullptr ? CallWindowProcA(super, m_hWnd, message, wParam, lParam)
                            : DefWindowProcA(m_hWnd, message, wParam, lParam);
}

LRESULT CWnd::Default() { return DefWindowProc(lastMessage.message, lastMessage.wParam, lastMessage.lParam); }

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT id = LOWORD(wParam);
    const auto control = reinterpret_cast<HWND>(lParam);
    int code = HIWORD(wParam);
    if (control == nullptr) {
        // A command of a menu or a key: its state is asked for once, and a disabled one goes nowhere.
        if (id == 0)
            return FALSE;
        CTestCmdUI state;
        state.m_nID = id;
        OnCmdMsg(id, CN_UPDATE_COMMAND_UI, &state, nullptr);
        if (state.m_bEnabled == FALSE)
            return TRUE;
        code = CN_COMMAND;
    } else {
        if (ReflectLastMsg(control) != FALSE)
            return TRUE;
        if (id == 0)
            return FALSE;
    }
    return OnCmdMsg(id, code, nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM, LPARAM lParam, LRESULT* result) {
    auto* header = reinterpret_cast<NMHDR*>(lParam);
    if (ReflectLastMsg(header->hwndFrom, result) != FALSE)
        return TRUE;
    AFX_NOTIFY notify{result, header};
    const auto id = static_cast<UINT>(GetWindowLongPtrA(header->hwndFrom, GWL_ID)) & 0xFFFF;
    const int code = MAKELONG(static_cast<WORD>(header->code), WM_NOTIFY);
    return OnCmdMsg(id, code, &notify, nullptr);
}

BOOL CWnd::ReflectLastMsg(HWND child, LRESULT* result) {
    CWnd* object = FromHandlePermanent(child);
    return object != nullptr && object->SendChildNotifyLastMsg(result) != FALSE;
}

BOOL CWnd::SendChildNotifyLastMsg(LRESULT* result) {
    LRESULT unused = 0;
    return OnChildNotify(lastMessage.message, lastMessage.wParam, lastMessage.lParam,
                         result != nullptr ? result : &unused);
}

BOOL CWnd::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    return ReflectChildNotify(message, wParam, lParam, result);
}

BOOL CWnd::ReflectChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    AFX_CALL call;
    call.nMessage = message + WM_REFLECT_BASE;
    call.wParam = wParam;
    call.lParam = lParam;
    call.pResult = result;
    if (message == WM_COMMAND)
        call.nCode = HIWORD(wParam);
    AFX_NOTIFY notify{result, reinterpret_cast<NMHDR*>(lParam)};
    if (message == WM_NOTIFY) {
        call.nCode = static_cast<int>(notify.pNMHDR->code);
        call.pExtra = &notify;
        call.pResult = nullptr; // the handler writes its answer itself
    }
    const AFX_MSGMAP_ENTRY* entry = FindMessageEntry(call.nMessage, static_cast<UINT>(call.nCode), 0);
    if (entry == nullptr)
        return FALSE;
    const BOOL handled = entry->pfnInvoke(this, call);
    // The answer to a colour message is a brush; none means that the parent's handling goes on.
    if (isControlColor(message))
        return *result != 0;
    return handled;
}

BOOL CWnd::PreTranslateMessage(MSG*) { return FALSE; }

BOOL CWnd::WalkPreTranslateTree(HWND stop, MSG* message) {
    for (HWND window = message->hwnd; window != nullptr; window = ::GetParent(window)) {
        CWnd* object = FromHandlePermanent(window);
        if (object != nullptr && object->PreTranslateMessage(message) != FALSE)
            return TRUE;
        if (window == stop)
            break;
    }
    return FALSE;
}

BOOL CWnd::PreTranslateInput(MSG* message) {
    const bool key = message->message >= WM_KEYFIRST && message->message <= WM_KEYLAST;
    const bool mouse = message->message >= WM_MOUSEFIRST && message->message <= WM_MOUSELAST;
    return (key || mouse) && IsDialogMessageA(m_hWnd, message) != FALSE;
}

void CWnd::OnDrawItem(int, DRAWITEMSTRUCT* item) {
    LRESULT result = 0;
    if (item->CtlType != ODT_MENU && ReflectLastMsg(item->hwndItem, &result) != FALSE)
        return;
    Default();
}

void CWnd::OnMeasureItem(int, MEASUREITEMSTRUCT* item) {
    if (item->CtlType != ODT_MENU) {
        CWnd* control = GetDlgItem(static_cast<int>(item->CtlID));
        LRESULT result = 0;
        if (control != nullptr && control->SendChildNotifyLastMsg(&result) != FALSE)
            return;
    }
    Default();
}

int CWnd::OnCompareItem(int, COMPAREITEMSTRUCT* items) {
    LRESULT result = 0;
    if (ReflectLastMsg(items->hwndItem, &result) != FALSE)
        return static_cast<int>(result);
    return static_cast<int>(Default());
}

void CWnd::OnDeleteItem(int, DELETEITEMSTRUCT* item) {
    LRESULT result = 0;
    if (ReflectLastMsg(item->hwndItem, &result) == FALSE)
        Default();
}

HBRUSH CWnd::OnCtlColor(CDC*, CWnd* control, UINT) {
    LRESULT result = 0;
    if (control != nullptr && control->SendChildNotifyLastMsg(&result) != FALSE)
        return reinterpret_cast<HBRUSH>(result);
    return reinterpret_cast<HBRUSH>(Default());
}
