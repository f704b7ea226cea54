#include "mfc/dialog.h"

#include "creation_scope.h"

#include "mfc/gdi_object.h"
#include "mfc/message_map.h"
#include "mfc/module_state.h"
#include "mfc/winapp.h"
#include "win32/edit.h"
#include "win32/input.h"
#include "win32/resources.h"

#include <cstddef>
#include <cstring>

IMPLEMENT_DYNAMIC(CDialog, CWnd)

BEGIN_MESSAGE_MAP(CDialog, CWnd)
ON_COMMAND(IDOK, &CDialog::OnOK)
ON_COMMAND(IDCANCEL, &CDialog::OnCancel)
ON_MESSAGE(WM_INITDIALOG, &CDialog::HandleInitDialog)
END_MESSAGE_MAP()

namespace {

/// Null when the resource is missing.
const DLGTEMPLATE* loadTemplate(LPCSTR name, HINSTANCE& instance) {
    instance = AfxFindResourceHandle(name, RT_DIALOG);
    const HRSRC resource = FindResourceA(instance, name, RT_DIALOG);
    return resource != nullptr ? static_cast<const DLGTEMPLATE*>(LockResource(LoadResource(instance, resource)))
                               : nullptr;
}

} // namespace

CDialog::CDialog(UINT templateId, CWnd* parent) : CDialog(MAKEINTRESOURCE(templateId), parent) {}
CDialog::CDialog(LPCSTR templateName, CWnd* parent) : m_lpszTemplateName(templateName), m_pParentWnd(parent) {}

CDialog::~CDialog() {
    if (m_hWnd != nullptr)
        DestroyWindow();
}

INT_PTR CALLBACK CDialog::DialogProc(HWND window, UINT message, WPARAM, LPARAM) {
    if (message != WM_INITDIALOG)
        return FALSE;
    auto* dialog = DYNAMIC_DOWNCAST(CDialog, CWnd::FromHandlePermanent(window));
    return dialog != nullptr ? dialog->OnInitDialog() : TRUE;
}

LRESULT CDialog::HandleInitDialog(WPARAM, LPARAM) {
    PreInitDialog();
    CRect before;
    GetWindowRect(before);
    const LRESULT result = Default();
    CRect after;
    GetWindowRect(after);
    // Whoever has placed or shown the dialog by now knows better.
    if (m_bAutoCenter && m_hWnd != nullptr && before == after && (GetStyle() & (WS_VISIBLE | WS_CHILD)) == 0)
        CenterWindow();
    return result;
}

/// A template that gives no place of its own leaves it to us.
bool CDialog::WantsCentering(const DLGTEMPLATE* dialogTemplate) {
    // An extended template begins with version 1 and the mark 0xFFFF; style and place stand further back in it.
    struct Extended {
        WORD version;
        WORD mark;
        DWORD helpId;
        DWORD exStyle;
        DWORD style;
        WORD items;
        SHORT x;
        SHORT y;
    };
    Extended extended{};
    std::memcpy(&extended, dialogTemplate, sizeof(DLGTEMPLATE));
    DWORD style = dialogTemplate->style;
    POINT place{dialogTemplate->x, dialogTemplate->y};
    if (extended.version == 1 && extended.mark == 0xFFFF) {
        std::memcpy(&extended, dialogTemplate, offsetof(Extended, y) + sizeof extended.y);
        style = extended.style;
        place = {extended.x, extended.y};
    }
    return (style & (DS_CENTER | DS_CENTERMOUSE | DS_ABSALIGN)) == 0 && place.x == 0 && place.y == 0;
}

BOOL CDialog::OnInitDialog() {
    if (m_lpszTemplateName != nullptr && ExecuteDlgInit(m_lpszTemplateName) == FALSE) {
        EndDialog(-1);
        return FALSE;
    }
    if (UpdateData(FALSE) == FALSE) {
        EndDialog(-1);
        return FALSE;
    }
    return TRUE;
}

BOOL CDialog::CreateFrom(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND parent, LPVOID init) {
    if (dialogTemplate == nullptr)
        return FALSE;
    m_bAutoCenter = WantsCentering(dialogTemplate);
    HWND window = nullptr;
    bool attached = false;
    {
        AfxCreationScope scope(this);
        window = CreateDialogIndirectParamA(instance, dialogTemplate, parent, &CDialog::DialogProc,
                                            reinterpret_cast<LPARAM>(init));
        attached = scope.attached();
    }
    if (window == nullptr && !attached)
        PostNcDestroy();
    return window != nullptr;
}

BOOL CDialog::Create(UINT templateId, CWnd* parent) { return Create(MAKEINTRESOURCE(templateId), parent); }

BOOL CDialog::Create(LPCSTR templateName, CWnd* parent) {
    m_lpszTemplateName = templateName;
    if (parent == nullptr)
        parent = AfxGetMainWnd();
    HINSTANCE instance = nullptr;
    const DLGTEMPLATE* dialogTemplate = loadTemplate(templateName, instance);
    return CreateFrom(instance, dialogTemplate, parent != nullptr ? parent->m_hWnd : nullptr, nullptr);
}

BOOL CDialog::CreateIndirect(const DLGTEMPLATE* dialogTemplate, CWnd* parent, LPVOID init) {
    if (parent == nullptr)
        parent = AfxGetMainWnd();
    return CreateFrom(AfxGetInstanceHandle(), dialogTemplate, parent != nullptr ? parent->m_hWnd : nullptr, init);
}

/// The top-level window that the dialog is to stand before.
HWND CDialog::SafeOwner() {
    CWnd* parent = m_pParentWnd != nullptr ? m_pParentWnd : AfxGetMainWnd();
    HWND owner = parent != nullptr ? parent->m_hWnd : nullptr;
    while (owner != nullptr && (GetWindowLongA(owner, GWL_STYLE) & static_cast<LONG>(WS_CHILD)) != 0)
        owner = ::GetParent(owner);
    if (owner != nullptr && m_pParentWnd == nullptr)
        owner = ::GetLastActivePopup(owner);
    return owner;
}

int CDialog::DoModal() {
    HINSTANCE instance = nullptr;
    const DLGTEMPLATE* dialogTemplate = loadTemplate(m_lpszTemplateName, instance);
    if (dialogTemplate == nullptr)
        return -1;
    const HWND owner = SafeOwner();
    const bool disabled = owner != nullptr && ::IsWindowEnabled(owner) != FALSE;
    if (disabled)
        ::EnableWindow(owner, FALSE);
    m_nModalResult = -1;
    m_bContinueModal = true;
    // EndDialog within OnInitDialog has ended the loop before it begins.
    if (CreateFrom(instance, dialogTemplate, owner, nullptr) != FALSE && m_bContinueModal) {
        const DWORD quiet = (GetStyle() & DS_NOIDLEMSG) != 0 ? MLF_NOIDLEMSG : 0;
        RunModalLoop(MLF_SHOWONIDLE | quiet);
    }
    m_bContinueModal = false;
    if (m_hWnd != nullptr)
        SetWindowPos(nullptr, 0, 0, 0, 0, SWP_HIDEWINDOW | SWP_NOSIZE | SWP_NOMOVE | SWP_NOACTIVATE | SWP_NOZORDER);
    // The owner takes the activation back before the dialog goes, or another program's window would get it. A dialog
    // that is hidden already found nobody to leave it to, while the owner was disabled.
    if (disabled)
        ::EnableWindow(owner, TRUE);
    if (owner != nullptr && (::GetActiveWindow() == m_hWnd || ::GetActiveWindow() == nullptr))
        ::SetActiveWindow(owner);
    const int result = m_nModalResult;
    DestroyWindow();
    return result;
}

void CDialog::EndDialog(int result) {
    if (m_bInModalLoop || m_bContinueModal)
        EndModalLoop(result);
    ::EndDialog(m_hWnd, result);
}

void CDialog::OnOK() {
    if (UpdateData(TRUE) != FALSE)
        EndDialog(IDOK);
}

void CDialog::OnCancel() { EndDialog(IDCANCEL); }

BOOL CDialog::PreTranslateMessage(MSG* message) {
    if (CWnd::PreTranslateMessage(message) != FALSE)
        return TRUE;
    // Escape in a multi-line edit would close a dialog whose Cancel button is missing or disabled.
    if (message->message == WM_KEYDOWN && (message->wParam == VK_ESCAPE || message->wParam == VK_CANCEL) &&
        (GetWindowLongA(message->hwnd, GWL_STYLE) & static_cast<LONG>(ES_MULTILINE)) != 0) {
        char className[8];
        GetClassNameA(message->hwnd, className, sizeof className);
        const HWND cancel = ::GetDlgItem(m_hWnd, IDCANCEL);
        if (CString(className).CompareNoCase("Edit") == 0 &&
            (cancel == nullptr || ::IsWindowEnabled(cancel) != FALSE)) {
            SendMessage(WM_COMMAND, IDCANCEL);
            return TRUE;
        }
    }
    return PreTranslateInput(message);
}

BOOL CDialog::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) {
    if (CWnd::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) != FALSE)
        return TRUE;
    // Only commands go further: to the owner, then to the application.
    constexpr UINT firstSystemCommand = 0xF000;
    const bool command = nCode == CN_COMMAND || nCode == CN_UPDATE_COMMAND_UI;
    if (!command || (nID & 0x8000) == 0 || nID >= firstSystemCommand)
        return FALSE;
    CWnd* owner = GetParent();
    if (owner != nullptr && owner->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) != FALSE)
        return TRUE;
    CWinApp* app = AfxGetApp();
    return app != nullptr && app->OnCmdMsg(nID, nCode, pExtra, pHandlerInfo) != FALSE;
}
