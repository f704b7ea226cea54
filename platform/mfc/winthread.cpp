#include "mfc/dc.h"
#include "mfc/image_list.h"
#include "mfc/menu.h"
#include "mfc/module_state.h"
#include "mfc/winapp.h"
#include "mfc/wnd.h"
#include "win32/icons.h"
#include "win32/queue.h"

IMPLEMENT_DYNAMIC(CWinThread, CCmdTarget)

namespace {

MSG lastPumped{};

template <typename Filter>
bool pump(Filter filter) {
    MSG message{};
    if (GetMessageA(&message, nullptr, 0, 0) <= 0) {
        PostQuitMessage(static_cast<int>(message.wParam));
        return false;
    }
    lastPumped = message;
    if (!filter(message)) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return true;
}

} // namespace

const MSG* AfxGetLastPumped() { return &lastPumped; }

bool AfxPumpMessage() {
    if (CWinApp* app = AfxGetApp())
        return app->PumpMessage() != FALSE;
    return pump([](MSG& message) { return CWnd::WalkPreTranslateTree(nullptr, &message) != FALSE; });
}

BOOL CWinThread::PumpMessage() {
    return pump([this](MSG& message) { return PreTranslateMessage(&message) != FALSE; });
}

BOOL CWinThread::PreTranslateMessage(MSG* message) {
    const HWND mainWindow = m_pMainWnd != nullptr ? m_pMainWnd->m_hWnd : nullptr;
    if (CWnd::WalkPreTranslateTree(mainWindow, message) != FALSE)
        return TRUE;
    // A window that isn't the main window's descendant leaves the accelerators to the main window.
    if (mainWindow == nullptr || message->hwnd == nullptr)
        return FALSE;
    const CWnd* window = CWnd::FromHandle(message->hwnd);
    return window->GetTopLevelParent() != m_pMainWnd && m_pMainWnd->PreTranslateMessage(message) != FALSE;
}

BOOL CWinThread::OnIdle(LONG count) {
    if (count == 0 && m_pMainWnd != nullptr && m_pMainWnd->m_hWnd != nullptr) {
        m_pMainWnd->SendMessage(WM_IDLEUPDATECMDUI, TRUE);
        m_pMainWnd->SendMessageToDescendants(WM_IDLEUPDATECMDUI, TRUE, 0, TRUE, TRUE);
    }
    if (count == 1) {
        CWnd::DeleteTempMap();
        CGdiObject::DeleteTempMap();
        CDC::DeleteTempMap();
        CMenu::DeleteTempMap();
        CImageList::DeleteTempMap();
    }
    return count < 1;
}

int CWinThread::Run() {
    LONG idleCount = 0;
    bool idle = true;
    for (;;) {
        MSG message{};
        while (idle && PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) == FALSE)
            idle = OnIdle(idleCount++) != FALSE;
        do {
            if (PumpMessage() == FALSE) {
                PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE);
                return ExitInstance();
            }
            if (lastPumped.message != WM_PAINT && lastPumped.message != WM_SYSTIMER) {
                idle = true;
                idleCount = 0;
            }
        } while (PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE);
    }
}

HICON CWinApp::LoadIcon(UINT id) const {
    return LoadIconA(AfxFindResourceHandle(MAKEINTRESOURCE(id), MAKEINTRESOURCE(14)), MAKEINTRESOURCE(id));
}

HCURSOR CWinApp::LoadCursor(UINT id) const {
    return LoadCursorA(AfxFindResourceHandle(MAKEINTRESOURCE(id), MAKEINTRESOURCE(12)), MAKEINTRESOURCE(id));
}

HCURSOR CWinApp::LoadStandardCursor(LPCSTR name) const { return LoadCursorA(nullptr, name); }
