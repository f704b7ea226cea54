// CFrameWnd: a program's main window: menu, accelerators, update queries for its menus, commands routed on to the
// application.
#pragma once

#include "mfc/wnd.h"

class CFrameWnd : public CWnd {
    DECLARE_DYNAMIC(CFrameWnd)

public:
    ~CFrameWnd() override;

    /// Where the platform is to choose place and size.
    static const CRect rectDefault;

    virtual BOOL Create(LPCSTR className, LPCSTR title, DWORD style = WS_OVERLAPPEDWINDOW,
                        const RECT& rect = rectDefault, CWnd* parent = nullptr, UINT menuId = 0, DWORD exStyle = 0);
    using CWnd::Create;
    /// The keys that stand for commands.
    BOOL LoadAccelTable(UINT id);

    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;

    /// Items that nobody handles are shown disabled.
    BOOL m_bAutoMenuEnable = TRUE;

protected:
    void OnInitMenuPopup(CMenu* menu, UINT index, BOOL systemMenu);
    void OnClose();

    DECLARE_MESSAGE_MAP()

private:
    HACCEL m_hAccelTable = nullptr;
};
