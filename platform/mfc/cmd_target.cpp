#include "mfc/cmd_target.h"

#include "mfc/menu.h"
#include "mfc/message_map.h"
#include "mfc/wnd.h"
#include "win32/automation.h"
#include "win32/button.h"
#include "win32/input.h"
#include "win32/menu.h"

IMPLEMENT_DYNAMIC(CCmdTarget, CObject)

namespace {

const AFX_MSGMAP_ENTRY noEntries[] = {{0, 0, 0, 0, nullptr, nullptr}};
const AFX_MSGMAP rootMap = {nullptr, noEntries};

bool fits(const AFX_MSGMAP_ENTRY& entry, UINT message, UINT code, UINT id) {
    if (entry.pRegistered != nullptr)
        return *entry.pRegistered == message;
    if (entry.nLastID > entry.nMessage && entry.nMessage != WM_COMMAND && entry.nMessage != WM_NOTIFY)
        return message >= entry.nMessage && message <= entry.nLastID;
    return entry.nMessage == message && entry.nCode == code && id >= entry.nID && id <= entry.nLastID;
}

} // namespace

const AFX_MSGMAP* CCmdTarget::GetThisMessageMap() { return &rootMap; }
const AFX_MSGMAP* CCmdTarget::GetMessageMap() const { return GetThisMessageMap(); }

const AFX_MSGMAP_ENTRY* CCmdTarget::FindMessageEntry(UINT nMessage, UINT nCode, UINT nID) const {
    for (const AFX_MSGMAP* map = GetMessageMap(); map != nullptr;
         map = map->pfnGetBaseMap != nullptr ? map->pfnGetBaseMap() : nullptr)
        for (const AFX_MSGMAP_ENTRY* entry = map->lpEntries; entry->nMessage != 0; ++entry)
            if (fits(*entry, nMessage, nCode, nID))
                return entry;
    return nullptr;
}

BOOL CCmdTarget::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* /*pHandlerInfo*/) {
    // The upper word of a code tells the message that brought it; plain codes are commands and WM_COMMAND
    // notifications.
    AFX_CALL call;
    call.nMessage = WM_COMMAND;
    int code = nCode;
    if (nCode != CN_UPDATE_COMMAND_UI && HIWORD(static_cast<DWORD>(nCode)) != 0) {
        call.nMessage = HIWORD(static_cast<DWORD>(nCode));
        code = static_cast<SHORT>(LOWORD(static_cast<DWORD>(nCode)));
    }
    const AFX_MSGMAP_ENTRY* entry = FindMessageEntry(call.nMessage, static_cast<UINT>(code), nID);
    if (entry == nullptr)
        return FALSE;
    call.nID = nID;
    call.nCode = code;
    call.pExtra = pExtra;
    return entry->pfnInvoke(this, call);
}

IDispatch* CCmdTarget::GetIDispatch(BOOL bAddRef) {
    if (m_pDispatch != nullptr && bAddRef != FALSE)
        m_pDispatch->AddRef();
    return m_pDispatch;
}

void CCmdUI::Enable(BOOL bOn) {
    m_bEnableChanged = TRUE;
    if (m_pMenu != nullptr) {
        if (m_pSubMenu == nullptr)
            m_pMenu->EnableMenuItem(m_nIndex, MF_BYPOSITION | (bOn != FALSE ? MF_ENABLED : MF_GRAYED));
        return;
    }
    if (m_pOther == nullptr)
        return;
    // A control that goes grey while it has the focus would leave the keyboard without one.
    if (bOn == FALSE && ::GetFocus() == m_pOther->m_hWnd && m_pOther->GetParent() != nullptr)
        m_pOther->GetParent()->SendMessage(WM_NEXTDLGCTL, 0, FALSE);
    m_pOther->EnableWindow(bOn);
}

void CCmdUI::SetCheck(int nCheck) {
    if (m_pMenu != nullptr) {
        if (m_pSubMenu == nullptr)
            m_pMenu->CheckMenuItem(m_nIndex, MF_BYPOSITION | (nCheck != 0 ? MF_CHECKED : MF_UNCHECKED));
    } else if (m_pOther != nullptr && (m_pOther->SendMessage(WM_GETDLGCODE) & DLGC_BUTTON) != 0) {
        m_pOther->SendMessage(BM_SETCHECK, static_cast<WPARAM>(nCheck));
    }
}

void CCmdUI::SetRadio(BOOL bOn) { SetCheck(bOn != FALSE ? 1 : 0); }

void CCmdUI::SetText(LPCSTR lpszText) {
    if (m_pMenu != nullptr && m_pSubMenu == nullptr) {
        const UINT state = m_pMenu->GetMenuState(m_nIndex, MF_BYPOSITION) & ~(MF_BITMAP | MF_OWNERDRAW | MF_SEPARATOR);
        m_pMenu->ModifyMenu(m_nIndex, MF_BYPOSITION | MF_STRING | state, m_nID, lpszText);
    } else if (m_pOther != nullptr) {
        m_pOther->SetWindowText(lpszText);
    }
}

BOOL CCmdUI::DoUpdate(CCmdTarget* pTarget, BOOL bDisableIfNoHndler) {
    if (m_nID == 0 || LOWORD(m_nID) == 0xFFFF)
        return TRUE;
    m_bEnableChanged = FALSE;
    const BOOL handled = pTarget->OnCmdMsg(m_nID, CN_UPDATE_COMMAND_UI, this, nullptr);
    if (bDisableIfNoHndler != FALSE && m_bEnableChanged == FALSE &&
        pTarget->FindMessageEntry(WM_COMMAND, static_cast<UINT>(CN_COMMAND), m_nID) == nullptr)
        Enable(handled);
    return handled;
}
