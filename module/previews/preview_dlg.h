// The preview window: one block of the current drawing or one drawing file, with buttons for what the mouse does, and
// one that inserts the block or opens the drawing.
//
//     CPreviewDlg dlg(pPalette);
//     dlg.SetDrawing("Door.dwg", "C:\\Blocks\\Door.dwg");
//     dlg.DoModal();
#pragma once

#include "controls/flat_icon_button.h"
#include "previews/gs_preview_ctrl.h"
#include "previews/resizable_dlg.h"

class CBlockPaletteDlg;

class CPreviewDlg : public CResizableDlg {
public:
    explicit CPreviewDlg(CWnd* pParent);

    void SetDrawing(const CString& strName, const CString& strPath);
    void SetBlock(const CString& strName) { m_strName = strName; }

    BOOL OnInitDialog() override;
    BOOL PreTranslateMessage(MSG* pMsg) override;

    CBlockPaletteDlg* m_pOwnerDlg = nullptr; ///< not owned

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnSize(UINT nType, int cx, int cy);
    void OnDestroy();
    void OnZoom();
    void OnPan();
    void OnOrbit();
    void OnOpen();
    void OnSelchangeTab(NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()

private:
    void SetUpButtons();
    CGsPreviewCtrl* AddControl();
    void SetMode(int nMode);
    void Layout();
    void InsertBlock(const CGsPreviewCtrl& ctrl);

    CButton m_btnOpen;
    CTabCtrl m_tabs; ///< one tab a control
    CButton m_btnClose;
    CFlatIconButton m_btnGouraudShadedEdges;
    CFlatIconButton m_btnFlatShadedEdges;
    CFlatIconButton m_btnGouraudShaded;
    CFlatIconButton m_btnFlatShaded;
    CFlatIconButton m_btnHidden;
    CFlatIconButton m_btnWireframe3d;
    CFlatIconButton m_btnWireframe2d;
    CFlatIconButton m_btnZoom;
    CFlatIconButton m_btnPan;
    CFlatIconButton m_btnOrbit;
    CArray<CGsPreviewCtrl*> m_controls; ///< owned
    HICON m_hIcon = nullptr;
    CString m_strName; ///< the block's, or the file's
    CString m_strPath; ///< full; empty for a block
};
