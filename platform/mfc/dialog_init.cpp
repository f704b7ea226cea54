// What fills a dialog's lists from its resource, and keeps its controls' states up to date.
#include "win32/dialog_init.h"
#include "mfc/module_state.h"
#include "mfc/wnd.h"
#include "win32/button.h"
#include "win32/combobox.h"
#include "win32/listbox.h"
#include "win32/resources.h"

using vndk::win32::DialogInitRow;

namespace {

bool executeRow(const CWnd& dialog, const DialogInitRow& row) {
    UINT message = row.message;
    if (message == vndk::win32::DIALOG_INIT_LB_ADDSTRING)
        message = LB_ADDSTRING;
    else if (message == vndk::win32::DIALOG_INIT_CB_ADDSTRING)
        message = CB_ADDSTRING;
    if (message != LB_ADDSTRING && message != CB_ADDSTRING)
        return true;
    // Both boxes answer -1 or below when they can't take a row.
    return dialog.SendDlgItemMessage(row.control, message, 0, reinterpret_cast<LPARAM>(row.text.c_str())) >= -1;
}

} // namespace

BOOL CWnd::ExecuteDlgInit(LPCSTR resourceName) {
    const LPCSTR type = MAKEINTRESOURCE(vndk::win32::RT_DLGINIT_NUMBER);
    const HINSTANCE instance = AfxFindResourceHandle(resourceName, type);
    const HRSRC resource = FindResourceA(instance, resourceName, type);
    bool filled = true;
    if (resource != nullptr) {
        const auto* bytes = static_cast<const std::uint8_t*>(LockResource(LoadResource(instance, resource)));
        const bool whole =
            vndk::win32::forEachInitRow({bytes, SizeofResource(instance, resource)}, [&](const DialogInitRow& row) {
                filled = executeRow(*this, row);
                return filled;
            });
        filled = filled && whole;
    }
    if (filled)
        SendMessageToDescendants(WM_INITIALUPDATE, 0, 0, FALSE, FALSE);
    return filled;
}

void CWnd::UpdateDialogControls(CCmdTarget* target, BOOL disableIfNoHandler) {
    for (HWND child = ::GetTopWindow(m_hWnd); child != nullptr; child = ::GetWindow(child, GW_HWNDNEXT)) {
        CWnd* control = FromHandle(child);
        CCmdUI state;
        state.m_nID = static_cast<UINT>(control->GetDlgCtrlID()) & 0xFFFF;
        state.m_pOther = control;
        if (state.m_nID == 0 || state.m_nID == 0xFFFF)
            continue;
        // Only buttons stand for commands; other controls have their own say about being enabled.
        const LRESULT code = control->SendMessage(WM_GETDLGCODE);
        const bool button = (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
        state.DoUpdate(target, disableIfNoHandler != FALSE && button);
    }
}
