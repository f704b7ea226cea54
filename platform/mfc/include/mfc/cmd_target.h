// CCmdTarget: whoever takes commands and notifications through a message map.
//
//     BEGIN_MESSAGE_MAP(CTipsDlg, CDialog)              // in one source file; DECLARE_MESSAGE_MAP() in the class
//         ON_BN_CLICKED(IDC_DONT_SHOW, &CTipsDlg::OnDontShow)
//         ON_WM_DESTROY()
//     END_MESSAGE_MAP()
//
// A map is searched from its top; the base class's map comes after. The macros stand in message_map.h.
#pragma once

#include "mfc/object.h"
#include "win32/messages.h"

class CCmdTarget;
class CCmdUI;
struct IDispatch;

/// One message or command on its way through the maps.
struct AFX_CALL {
    UINT nMessage = 0; ///< window message, WM_COMMAND or WM_NOTIFY
    UINT nID = 0;      ///< of a command or control
    int nCode = 0;     ///< of a notification; CN_COMMAND or CN_UPDATE_COMMAND_UI of a command
    WPARAM wParam = 0;
    LPARAM lParam = 0;
    void* pExtra = nullptr; ///< AFX_NOTIFY for notifications, CCmdUI for updates, AFX_REFLECT for reflected messages
    LRESULT* pResult = nullptr; ///< where the handler's answer goes; never null for window messages
};

/// Calls the handler. FALSE: it wants the search to go on.
using AFX_INVOKE = BOOL (*)(CCmdTarget* target, const AFX_CALL& call);

struct AFX_MSGMAP_ENTRY {
    UINT nMessage; ///< 0 closes the map
    UINT nCode;
    UINT nID;
    UINT nLastID;
    AFX_INVOKE pfnInvoke;
    const UINT* pRegistered = nullptr; ///< a number made by RegisterWindowMessage, in place of nMessage
};

struct AFX_MSGMAP {
    const AFX_MSGMAP* (*pfnGetBaseMap)(); ///< null at the root
    const AFX_MSGMAP_ENTRY* lpEntries;
};

struct AFX_NOTIFY {
    LRESULT* pResult;
    NMHDR* pNMHDR;
};

constexpr int CN_COMMAND = 0;
constexpr int CN_UPDATE_COMMAND_UI = -1;

#define DECLARE_MESSAGE_MAP()                                                                                          \
protected:                                                                                                             \
    static const AFX_MSGMAP* GetThisMessageMap();                                                                      \
    const AFX_MSGMAP* GetMessageMap() const override;                                                                  \
                                                                                                                       \
private:

class CCmdTarget : public CObject {
    DECLARE_DYNAMIC(CCmdTarget)

public:
    CCmdTarget() = default;
    CCmdTarget(const CCmdTarget&) = delete;
    CCmdTarget& operator=(const CCmdTarget&) = delete;

    /// Routes a command (`nCode` CN_COMMAND), the query of its state (CN_UPDATE_COMMAND_UI, `pExtra` a CCmdUI) or a
    /// control's notification. TRUE when a handler took it.
    virtual BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo);

    /// The entry for a message in this object's maps; null when there is none.
    [[nodiscard]] const AFX_MSGMAP_ENTRY* FindMessageEntry(UINT nMessage, UINT nCode, UINT nID) const;

    /// The object by which other programs drive this one; null when it has none. With `bAddRef` one reference is the
    /// caller's.
    IDispatch* GetIDispatch(BOOL bAddRef);
    /// Gives it that object, which has to outlive it.
    void EnableAutomation(IDispatch* pDispatch) { m_pDispatch = pDispatch; }

protected:
    static const AFX_MSGMAP* GetThisMessageMap();
    [[nodiscard]] virtual const AFX_MSGMAP* GetMessageMap() const;

private:
    IDispatch* m_pDispatch = nullptr; ///< not owned
};

class CMenu;
class CWnd;

/// The state of one command: handed to ON_UPDATE_COMMAND_UI handlers, which set it on a menu item or a control.
class CCmdUI {
public:
    CCmdUI() = default;
    virtual ~CCmdUI() = default;
    CCmdUI(const CCmdUI&) = delete;
    CCmdUI& operator=(const CCmdUI&) = delete;

    UINT m_nID = 0;
    UINT m_nIndex = 0;           ///< of the menu item
    CMenu* m_pMenu = nullptr;    ///< not owned
    CMenu* m_pSubMenu = nullptr; ///< not owned
    CWnd* m_pOther = nullptr;    ///< the control, when it is none of a menu; not owned
    UINT m_nIndexMax = 0;
    BOOL m_bContinueRouting = FALSE;

    virtual void Enable(BOOL bOn = TRUE);
    virtual void SetCheck(int nCheck = 1);
    virtual void SetRadio(BOOL bOn = TRUE);
    virtual void SetText(LPCSTR lpszText);
    void ContinueRouting() { m_bContinueRouting = TRUE; }

    /// Asks the target. With `bDisableIfNoHndler` an id that nobody handles is disabled.
    BOOL DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler);

    BOOL m_bEnableChanged = FALSE;
};
