#include "previews/preview_dlg.h"

#include "ads/ads.h"
#include "frame/module.h"
#include "palette/host_helpers.h"
#include "resources/resource.h"

namespace {

const char* const kModeKey = "nInterfaceMode";
constexpr UINT kControlId = 1100;
constexpr int kGrowBy = 8;

} // namespace

BEGIN_MESSAGE_MAP(CPreviewDlg, CResizableDlg)
ON_WM_SIZE()
ON_WM_DESTROY()
ON_COMMAND(IDC_ZOOM, &CPreviewDlg::OnZoom)
ON_COMMAND(IDC_PAN, &CPreviewDlg::OnPan)
ON_COMMAND(IDC_ORBIT, &CPreviewDlg::OnOrbit)
ON_COMMAND(IDC_OPEN, &CPreviewDlg::OnOpen)
ON_NOTIFY(TCN_SELCHANGE, IDC_TABS, &CPreviewDlg::OnSelchangeTab)
END_MESSAGE_MAP()

CPreviewDlg::CPreviewDlg(CWnd* pParent) : CResizableDlg(IDD_PREVIEW, pParent) { m_controls.SetSize(0, kGrowBy); }

void CPreviewDlg::SetDrawing(const CString& strName, const CString& strPath) {
    m_strName = strName;
    m_strPath = strPath;
}

void CPreviewDlg::DoDataExchange(CDataExchange* pDX) {
    CResizableDlg::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_OPEN, m_btnOpen);
    DDX_Control(pDX, IDC_TABS, m_tabs);
    DDX_Control(pDX, IDCANCEL, m_btnClose);
    DDX_Control(pDX, IDC_GOURAUD_SHADED_EDGES, m_btnGouraudShadedEdges);
    DDX_Control(pDX, IDC_FLAT_SHADED_EDGES, m_btnFlatShadedEdges);
    DDX_Control(pDX, IDC_GOURAUD_SHADED, m_btnGouraudShaded);
    DDX_Control(pDX, IDC_FLAT_SHADED, m_btnFlatShaded);
    DDX_Control(pDX, IDC_HIDDEN, m_btnHidden);
    DDX_Control(pDX, IDC_WIREFRAME_3D, m_btnWireframe3d);
    DDX_Control(pDX, IDC_WIREFRAME_2D, m_btnWireframe2d);
    DDX_Control(pDX, IDC_ZOOM, m_btnZoom);
    DDX_Control(pDX, IDC_PAN, m_btnPan);
    DDX_Control(pDX, IDC_ORBIT, m_btnOrbit);
}

BOOL CPreviewDlg::OnInitDialog() {
    CResizableDlg::OnInitDialog();
    mProfileSection = LoadResString(IDS_VONDRAKE);
    SetUpButtons();
    const LPCSTR pszIcon = MAKEINTRESOURCE(IDI_PREVIEW);
    m_hIcon = static_cast<HICON>(
        ::LoadImageA(AfxFindResourceHandle(pszIcon, RT_GROUP_ICON), pszIcon, IMAGE_ICON, 0, 0, LR_DEFAULTSIZE));
    SendMessage(WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(m_hIcon));
    CRect rect;
    GetSavedRect(rect);
    SetWindowPos(nullptr, rect.left, rect.top, rect.Width(), rect.Height(), SWP_NOACTIVATE);

    CGsPreviewCtrl* pCtrl = AddControl();
    if (!m_strPath.IsEmpty()) {
        pCtrl->LoadDrawing(m_strPath);
        m_tabs.InsertItem(0, m_strName);
    } else if (!m_strName.IsEmpty()) {
        m_btnOpen.SetWindowText(LoadResString(IDS_INSERT));
        pCtrl->LoadBlock(m_strName);
        m_tabs.InsertItem(0, m_strName);
    }
    const UINT nMode = AfxGetApp()->GetProfileInt(mProfileSection, kModeKey, CGsPreviewCtrl::kZoom);
    const bool bFlat = nMode == CGsPreviewCtrl::kPan || nMode == CGsPreviewCtrl::kZoom;
    pCtrl->mMode = bFlat ? static_cast<int>(nMode) : CGsPreviewCtrl::kOrbit;
    pCtrl->DrawOrbitGadgetNow(!bFlat);
    Layout();
    return TRUE;
}

void CPreviewDlg::SetUpButtons() {
    const struct {
        CFlatIconButton& button;
        UINT nIcon;
        const char* pszTip;
    } buttons[] = {{m_btnZoom, IDI_ZOOM, "Zoom"},
                   {m_btnPan, IDI_PAN, "Pan"},
                   {m_btnOrbit, IDI_ORBIT, "Orbit"},
                   {m_btnWireframe2d, IDI_WIREFRAME_2D, "2D Wireframe"},
                   {m_btnWireframe3d, IDI_WIREFRAME_3D, "3D Wireframe"},
                   {m_btnHidden, IDI_HIDDEN, "Hidden"},
                   {m_btnFlatShaded, IDI_FLAT_SHADED, "Flat Shaded"},
                   {m_btnGouraudShaded, IDI_GOURAUD_SHADED, "Gouraund Shaded"},
                   {m_btnFlatShadedEdges, IDI_FLAT_SHADED_EDGES, "Flat Shaded, Edges On"},
                   {m_btnGouraudShadedEdges, IDI_GOURAUD_SHADED_EDGES, "Gouraund Shaded, Edges On"}};
    for (const auto& [button, nIcon, pszTip] : buttons)
        button.SetIcons(nIcon, nIcon);
    for (const auto& [button, nIcon, pszTip] : buttons)
        button.SetFlat(TRUE);
    for (const auto& [button, nIcon, pszTip] : buttons)
        button.SetToolTip(pszTip, TRUE);
}

CGsPreviewCtrl* CPreviewDlg::AddControl() {
    auto* pCtrl = new CGsPreviewCtrl;
    m_controls.Add(pCtrl);
    pCtrl->Create("", WS_CHILD | WS_VISIBLE, CRect(0, 0, 10, 10), this, kControlId);
    pCtrl->ModifyStyleEx(0, WS_EX_STATICEDGE, SWP_FRAMECHANGED);
    return pCtrl;
}

void CPreviewDlg::OnDestroy() {
    for (int i = 0; i < m_controls.GetSize(); ++i) {
        m_controls[i]->DestroyWindow();
        delete m_controls[i];
    }
    m_controls.RemoveAll();
    CResizableDlg::OnDestroy();
    ::DestroyIcon(m_hIcon);
}

// Place and size.

void CPreviewDlg::OnSize(UINT nType, int cx, int cy) {
    CResizableDlg::OnSize(nType, cx, cy);
    SavePlacement();
    Layout();
}

void CPreviewDlg::Layout() {
    // The first size comes before the controls are bound.
    if (!m_btnOrbit.GetSafeHwnd())
        return;
    CRect client;
    GetClientRect(client);
    const int w = client.Width();
    const int h = client.Height();
    m_tabs.MoveWindow(CRect(2, 4, w - 80, h - 4));
    for (int i = 0; i < m_controls.GetSize(); ++i)
        m_controls[i]->MoveWindow(CRect(5, 7, w - 83, h - 27));
    m_btnOpen.MoveWindow(CRect(w - 73, 5, w - 4, 29));
    m_btnClose.MoveWindow(CRect(w - 73, 35, w - 4, 59));
    m_btnZoom.MoveWindow(CRect(w - 73, 64, w - 51, 86));
    m_btnPan.MoveWindow(CRect(w - 50, 64, w - 28, 86));
    m_btnOrbit.MoveWindow(CRect(w - 27, 64, w - 5, 86));
    // The picture was drawn anew before they gave way to it.
    m_btnOpen.Invalidate();
    m_btnClose.Invalidate();
    for (CFlatIconButton* pButton : {&m_btnZoom, &m_btnPan, &m_btnOrbit})
        pButton->RedrawWindow(nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

// Buttons and tabs.

void CPreviewDlg::OnZoom() { SetMode(CGsPreviewCtrl::kZoom); }

void CPreviewDlg::OnPan() { SetMode(CGsPreviewCtrl::kPan); }

void CPreviewDlg::OnOrbit() { SetMode(CGsPreviewCtrl::kOrbit); }

void CPreviewDlg::SetMode(int nMode) {
    for (int i = 0; i < m_controls.GetSize(); ++i) {
        m_controls[i]->mMode = nMode;
        m_controls[i]->DrawOrbitGadgetNow(nMode == CGsPreviewCtrl::kOrbit);
        if (i == 0)
            AfxGetApp()->WriteProfileInt(mProfileSection, kModeKey, nMode);
    }
}

void CPreviewDlg::OnSelchangeTab(NMHDR* /*pNMHDR*/, LRESULT* pResult) {
    const int nSelected = m_tabs.GetCurSel();
    for (int i = 0; i < m_controls.GetSize(); ++i)
        m_controls[i]->ShowWindow(i == nSelected ? SW_SHOWNORMAL : SW_HIDE);
    *pResult = 0;
}

BOOL CPreviewDlg::PreTranslateMessage(MSG* pMsg) {
    // The wheel is for the picture under the mouse, though a button that was pushed has the focus.
    for (int i = 0; pMsg->message == WM_MOUSEWHEEL && i < m_controls.GetSize(); ++i)
        if (::WindowFromPoint(pMsg->pt) == m_controls[i]->m_hWnd)
            pMsg->hwnd = m_controls[i]->m_hWnd;
    return CResizableDlg::PreTranslateMessage(pMsg);
}

/// Opens the drawing and ends, or inserts the block and stays.
void CPreviewDlg::OnOpen() {
    const int nSelected = m_tabs.GetCurSel();
    if (nSelected < 0 || nSelected >= m_controls.GetSize())
        return;
    const CGsPreviewCtrl& ctrl = *m_controls[nSelected];
    if (ctrl.ShownName().IsEmpty()) {
        acedAlert(LoadResString(IDS_NOTHING_TO_INSERT));
        return;
    }
    ShowWindow(SW_HIDE);
    if (const CString strPath = ctrl.DrawingPath(); !strPath.IsEmpty()) {
        EndDialog(IDOK);
        COleDispatchDriver(OpenDrawing(strPath), TRUE).ReleaseDispatch();
        return;
    }
    InsertBlock(ctrl);
    ShowWindow(SW_SHOWNORMAL);
}

void CPreviewDlg::InsertBlock(const CGsPreviewCtrl& ctrl) {
    FocusCommandLine();
    ads_point point;
    if (acedGetPoint(nullptr, LoadResString(IDS_SPECIFY_INSERTION_POINT), point) == RTNORM)
        SendInsertion("c:_bInsert", ctrl.ShownName(), point);
}
