// Modal loops.
#include "mfc/module_state.h"
#include "mfc/winapp.h"
#include "mfc/wnd.h"
#include "win32/dialog.h"
#include "win32/queue.h"

namespace {

/// Messages that change nothing on the screen bring no new idle time.
bool startsIdle(const MSG& message) {
    return message.message != WM_PAINT && message.message != WM_SYSTIMER && message.message != WM_MOUSEMOVE &&
           message.message != WM_NCMOUSEMOVE;
}

} // namespace

int CWnd::RunModalLoop(DWORD flags) {
    bool idle = true;
    LONG idleCount = 0;
    const bool kick = (flags & MLF_NOKICKIDLE) == 0 && (GetStyle() & DS_NOIDLEMSG) == 0;
    bool showOnIdle = (flags & MLF_SHOWONIDLE) != 0 && (GetStyle() & WS_VISIBLE) == 0;
    const HWND window = m_hWnd;
    const HWND parent = ::GetParent(window);
    m_bInModalLoop = true;
    m_bContinueModal = true;
    m_nModalResult = -1;
    MSG message{};
    for (;;) {
        while (idle && PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) == FALSE) {
            if (showOnIdle) {
                ShowWindow(SW_SHOWNORMAL);
                UpdateWindow();
                showOnIdle = false;
            }
            if ((flags & MLF_NOIDLEMSG) == 0 && parent != nullptr && idleCount == 0)
                ::SendMessageA(parent, WM_ENTERIDLE, MSGF_DIALOGBOX, reinterpret_cast<LPARAM>(window));
            if (!kick || SendMessage(WM_KICKIDLE, MSGF_DIALOGBOX, idleCount++) == 0)
                idle = false;
            if (ContinueModal() == FALSE)
                break;
        }
        if (ContinueModal() == FALSE)
            break;
        do {
            if (!AfxPumpMessage()) {
                m_nModalResult = -1;
                m_bContinueModal = false;
                m_bInModalLoop = false;
                return -1; // the program is ending; the quit message waits for the outer loop
            }
            const MSG& handled = *AfxGetLastPumped();
            if (showOnIdle && (handled.message == WM_SYSTIMER || handled.message == WM_SYSKEYDOWN)) {
                ShowWindow(SW_SHOWNORMAL);
                UpdateWindow();
                showOnIdle = false;
            }
            if (ContinueModal() == FALSE)
                break;
            if (startsIdle(handled)) {
                idle = true;
                idleCount = 0;
            }
        } while (PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE) != FALSE);
        if (ContinueModal() == FALSE)
            break;
    }
    m_bInModalLoop = false;
    return m_nModalResult;
}

BOOL CWnd::ContinueModal() { return m_bContinueModal && IsWindow(m_hWnd) != FALSE; }

void CWnd::EndModalLoop(int result) {
    m_nModalResult = result;
    if (m_bContinueModal) {
        m_bContinueModal = false;
        PostMessage(WM_NULL);
    }
}
