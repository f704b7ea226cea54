// CDialog: a dialog made from a template.
//
//     CTipsDlg dialog(parent);
//     if (dialog.DoModal() == IDOK) ...
#pragma once

#include "mfc/data_exchange.h"
#include "mfc/wnd.h"
#include "win32/dialog.h"

class CDialog : public CWnd {
    DECLARE_DYNAMIC(CDialog)

public:
    /// For Create.
    CDialog() = default;
    /// For DoModal. The parent (null: the main window) is disabled while the dialog runs.
    explicit CDialog(UINT templateId, CWnd* parent = nullptr);
    explicit CDialog(LPCSTR templateName, CWnd* parent = nullptr);
    ~CDialog() override;

    /// A modeless dialog. FALSE when template or window can't be made.
    BOOL Create(UINT templateId, CWnd* parent = nullptr);
    BOOL Create(LPCSTR templateName, CWnd* parent = nullptr);
    using CWnd::Create;
    BOOL CreateIndirect(const DLGTEMPLATE* dialogTemplate, CWnd* parent = nullptr, LPVOID init = nullptr);

    /// What EndDialog was given; -1 when the dialog can't be made.
    virtual int DoModal();
    void EndDialog(int result);

    virtual BOOL OnInitDialog();
    virtual void OnOK();
    virtual void OnCancel();
    virtual void OnSetFont(CFont*) {}

    void NextDlgCtrl() const { SendMessage(WM_NEXTDLGCTL, 0, FALSE); }
    void PrevDlgCtrl() const { SendMessage(WM_NEXTDLGCTL, 1, FALSE); }
    void GotoDlgCtrl(CWnd* control) { SendMessage(WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control->m_hWnd), TRUE); }
    void SetDefID(UINT id) { SendMessage(DM_SETDEFID, id); }
    [[nodiscard]] DWORD GetDefID() const { return static_cast<DWORD>(SendMessage(DM_GETDEFID)); }
    void MapDialogRect(LPRECT rect) const { ::MapDialogRect(m_hWnd, rect); }

    BOOL PreTranslateMessage(MSG* message) override;
    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;

protected:
    virtual void PreInitDialog() {}
    LRESULT HandleInitDialog(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

    LPCSTR m_lpszTemplateName = nullptr; ///< a number, or text that must stay valid
    CWnd* m_pParentWnd = nullptr;

private:
    bool m_bAutoCenter = false;
    [[nodiscard]] HWND SafeOwner();
    static bool WantsCentering(const DLGTEMPLATE* dialogTemplate);
    BOOL CreateFrom(HINSTANCE instance, const DLGTEMPLATE* dialogTemplate, HWND parent, LPVOID init);
    static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
};
