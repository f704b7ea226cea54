#include "mfc/frame.h"

#include "mfc/dock_bar.h"
#include "mfc/menu.h"
#include "mfc/message_map.h"
#include "mfc/module_state.h"
#include "mfc/winapp.h"
#include "win32/accelerators.h"
#include "win32/queue.h"
#include "win32/resources.h"

IMPLEMENT_DYNAMIC(CFrameWnd, CWnd)

BEGIN_MESSAGE_MAP(CFrameWnd, CWnd)
ON_WM_INITMENUPOPUP()
ON_WM_SIZE()
ON_WM_ACTIVATE()
ON_WM_CLOSE()
ON_MESSAGE(WM_IDLEUPDATECMDUI, &CFrameWnd::OnIdleUpdateCmdUI)
END_MESSAGE_MAP()

const CRect CFrameWnd::rectDefault(CW_USEDEFAULT, CW_USEDEFAULT, 0, 0);

CFrameWnd::CFrameWnd() = default;

CFrameWnd::~CFrameWnd() {
    for (CControlBar* bar : m_controlBars)
        bar->m_pDockSite = nullptr;
    if (m_hAccelTable != nullptr)
        DestroyAcceleratorTable(m_hAccelTable);
}

BOOL CFrameWnd::Create(LPCSTR className, LPCSTR title, DWORD style, const RECT& rect, CWnd* parent, UINT menuId,
                       DWORD exStyle) {
    HMENU menu = nullptr;
    if (menuId != 0) {
        const LPCSTR name = MAKEINTRESOURCE(menuId);
        menu = ::LoadMenuA(AfxFindResourceHandle(name, RT_MENU), name);
        if (menu == nullptr)
            return FALSE;
    }
    const bool choose = rect.left == CW_USEDEFAULT;
    const int width = choose ? CW_USEDEFAULT : rect.right - rect.left;
    const int height = choose ? CW_USEDEFAULT : rect.bottom - rect.top;
    const BOOL made = CreateEx(exStyle, className, title, style, rect.left, rect.top, width, height,
                               parent != nullptr ? parent->m_hWnd : nullptr, menu);
    if (made == FALSE && menu != nullptr)
        ::DestroyMenu(menu);
    return made;
}

BOOL CFrameWnd::LoadAccelTable(UINT id) {
    const LPCSTR name = MAKEINTRESOURCE(id);
    m_hAccelTable = LoadAcceleratorsA(AfxFindResourceHandle(name, MAKEINTRESOURCE(9)), name);
    return m_hAccelTable != nullptr;
}

BOOL CFrameWnd::PreTranslateMessage(MSG* message) {
    if (CWnd::PreTranslateMessage(message) != FALSE)
        return TRUE;
    return m_hAccelTable != nullptr && TranslateAcceleratorA(m_hWnd, m_hAccelTable, message) != 0;
}

BOOL CFrameWnd::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) {
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) != FALSE)
        return TRUE;
    CWinApp* app = AfxGetApp();
    return app != nullptr && app->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) != FALSE;
}

void CFrameWnd::OnInitMenuPopup(CMenu* menu, UINT, BOOL systemMenu) {
    if (systemMenu != FALSE || menu == nullptr)
        return;
    CCmdUI state;
    state.m_pMenu = menu;
    state.m_nIndexMax = menu->GetMenuItemCount();
    for (state.m_nIndex = 0; state.m_nIndex < state.m_nIndexMax; ++state.m_nIndex) {
        state.m_nID = menu->GetMenuItemID(static_cast<int>(state.m_nIndex));
        constexpr UINT popup = 0xFFFFFFFF;
        if (state.m_nID != 0 && state.m_nID != popup)
            state.DoUpdate(this, m_bAutoMenuEnable != FALSE && state.m_nID < 0xF000);
    }
}

void CFrameWnd::OnSize(UINT type, int width, int height) {
    CWnd::OnSize(type, width, height);
    if (type != SIZE_MINIMIZED)
        RecalcLayout();
}

void CFrameWnd::OnClose() {
    if (AfxGetMainWnd() == this)
        PostQuitMessage(0);
    DestroyWindow();
}
