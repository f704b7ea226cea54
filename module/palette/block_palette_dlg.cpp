#include "palette/block_palette_dlg.h"

#include "ads/ads.h"
#include "ap/document.h"
#include "frame/module.h"
#include "objects/library.h"
#include "palette/host_helpers.h"
#include "previews/preview_dlg.h"
#include "resources/resource.h"

namespace {

constexpr int kPageDwgs = 0;
constexpr int kPageBlocks = 1;
constexpr int kPageGrips = 2;

const char* const kGripTexts[] = {
    "Left/Right",
    "Top/Bottom",
    "Any",
    "Left/Right\nStretching",
    "Top/Bottom\nStretching",
    "Any\nStretching",
    "Rotate\nAround",
    "Rotation\nStretching",
    "Rotate,\nRadius",
    "Rotation, Radius\nStretching",
    "Line Multi\nDirection",
    "Line Single\nDirection",
    "Rectangle\nFormation",
};

} // namespace

BEGIN_MESSAGE_MAP(CBlockPaletteDlg, CDialog)
ON_BN_CLICKED(IDC_PREVIEW, &CBlockPaletteDlg::OnPreview)
ON_BN_CLICKED(IDC_UP_LEVEL, &CBlockPaletteDlg::OnUpOneLevel)
ON_COMMAND(ID_SHOW_IN_PREVIEW, &CBlockPaletteDlg::OnPreview)
ON_UPDATE_COMMAND_UI_RANGE(0, 0xFFFF, &CBlockPaletteDlg::OnUpdateCommand)
ON_NOTIFY(TCN_SELCHANGE, IDC_TABS, &CBlockPaletteDlg::OnSelchangeTab)
ON_NOTIFY(NM_CLICK, IDC_GRIPS, &CBlockPaletteDlg::OnClickGripList)
ON_NOTIFY(NM_DBLCLK, IDC_GRIPS, &CBlockPaletteDlg::OnDblclkGripList)
ON_NOTIFY(NM_DBLCLK, IDC_BLOCKS, &CBlockPaletteDlg::OnDblclkBlockList)
ON_WM_SIZE()
ON_WM_DESTROY()
END_MESSAGE_MAP()

CBlockPaletteDlg::CBlockPaletteDlg(CWnd* pParent) : CDialog(IDD_BLOCK_PALETTE, pParent) {}

CBlockPaletteDlg::~CBlockPaletteDlg() = default;

void CBlockPaletteDlg::DoDataExchange(CDataExchange* pDX) {
    CDialog::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_UP_LEVEL, m_btnUpLevel);
    DDX_Control(pDX, IDC_PREVIEW, m_btnPreview);
    DDX_Control(pDX, IDC_BLOCKS, m_listBlocks);
    DDX_Control(pDX, IDC_GRIPS, m_listGrips);
    DDX_Control(pDX, IDC_DRAWINGS, m_listDwgs);
    DDX_Control(pDX, IDC_FOLDERS, m_comboFolders);
    DDX_Control(pDX, IDC_TABS, m_tabs);
}

BOOL CBlockPaletteDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    m_tabs.InsertItem(kPageDwgs, "Dwgs");
    m_tabs.InsertItem(kPageBlocks, "Blocks");
    m_listDwgs.m_pCombo = &m_comboFolders;
    m_comboFolders.m_pListBox = &m_listDwgs;
    m_listDwgs.LoadImages();
    m_comboFolders.CreateTree();
    CString strDirectory;
    if (const CWinApp* pApp = AfxGetModuleState()->m_pCurrentWinApp)
        strDirectory = pApp->GetProfileString(LoadResString(IDS_VONDRAKE), "Directory", "");
    m_comboFolders.SelectPath(strDirectory);
    m_listDwgs.FillList(strDirectory);
    m_gripImages.Create(51, 70, ILC_COLOR16 | ILC_MASK, 1, 1);
    for (LPCSTR pszText : kGripTexts)
        AddGripItem(pszText);
    m_listBlocks.SetBkColor(RGB(0, 0, 0)); // before Init, which gives it to the images
    m_listBlocks.Init(this);
    ShowActivePage();
    m_btnUpLevel.SetIcons(IDI_UP_LEVEL, IDI_UP_LEVEL);
    m_btnUpLevel.SetFlat(1);
    m_btnUpLevel.SetToolTip("Up One Level", 1);
    m_btnPreview.SetIcons(IDI_PREVIEW, IDI_PREVIEW);
    m_btnPreview.SetFlat(1);
    m_btnPreview.SetToolTip("Preview a block or drawing", 1);
    return TRUE;
}

void CBlockPaletteDlg::AddGripItem(LPCSTR pszText) {
    LVITEM item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE | LVIF_INDENT;
    item.iItem = m_listGrips.GetItemCount();
    item.iImage = item.iItem;
    item.pszText = const_cast<LPSTR>(pszText);
    m_listGrips.InsertItem(&item);
}

void CBlockPaletteDlg::OnOK() {}

void CBlockPaletteDlg::OnCancel() { m_comboFolders.m_tree.ShowWindow(SW_HIDE); }

void CBlockPaletteDlg::OnUpdateCommand(CCmdUI* pCmdUI) {
    if (CWnd* pOwner = GetOwner())
        pCmdUI->DoUpdate(pOwner, FALSE);
}

void CBlockPaletteDlg::OnSize(UINT nType, int cx, int cy) {
    CDialog::OnSize(nType, cx, cy);
    if (!m_tabs.GetSafeHwnd()) // while the dialog is being made
        return;
    m_tabs.MoveWindow(0, 0, cx, cy);
    CRect rcTab;
    m_tabs.GetItemRect(0, rcTab);
    const int nBottom = rcTab.bottom;
    m_comboFolders.MoveWindow(4, nBottom + 4, cx - 58, 30 - (nBottom + 4));
    m_listGrips.MoveWindow(4, nBottom + 4, cx - 8, cy - 8 - nBottom);
    m_listDwgs.MoveWindow(4, nBottom + 30, cx - 8, cy - 34 - nBottom);
    m_listBlocks.MoveWindow(4, nBottom + 30, cx - 8, cy - 34 - nBottom);
    m_btnUpLevel.MoveWindow(cx - 52, nBottom + 4, 24, 24);
    m_btnPreview.MoveWindow(cx - 28, nBottom + 4, 24, 24);
    // The tabs lie in front of the buttons: painted later, they would wipe off what was only moved.
    m_btnUpLevel.Invalidate();
    m_btnPreview.Invalidate();
}

void CBlockPaletteDlg::SelectTab(int nTab) { m_tabs.SetCurSel(nTab); }

void CBlockPaletteDlg::RegenerateGrips() {
    if (acDocManagerPtr()->curDocument())
        ads_regen();
    SendToCommandLine("(_refresh) ");
}

void CBlockPaletteDlg::LeaveGripPage() {
    if (!m_listGrips.IsWindowVisible())
        return;
    RegenerateGrips();
    m_listGrips.ShowWindow(SW_HIDE);
}

void CBlockPaletteDlg::ShowActivePage() {
    m_TabIndex = m_tabs.GetCurSel();
    FocusCommandLine();
    switch (m_tabs.GetCurSel()) {
    case kPageDwgs:
        LeaveGripPage();
        m_btnPreview.ShowWindow(SW_SHOW);
        m_comboFolders.ShowWindow(SW_SHOW);
        m_listDwgs.ShowWindow(SW_SHOW);
        m_btnUpLevel.ShowWindow(SW_SHOW);
        m_listBlocks.ShowWindow(SW_HIDE);
        break;
    case kPageBlocks:
        LeaveGripPage();
        m_comboFolders.ShowWindow(SW_HIDE);
        m_btnPreview.ShowWindow(SW_SHOW);
        m_listDwgs.ShowWindow(SW_HIDE);
        m_btnUpLevel.ShowWindow(SW_HIDE);
        m_listBlocks.ShowWindow(SW_SHOW);
        break;
    case kPageGrips:
        m_listGrips.ShowWindow(SW_SHOW);
        m_comboFolders.ShowWindow(SW_HIDE);
        m_btnPreview.ShowWindow(SW_HIDE);
        m_listDwgs.ShowWindow(SW_HIDE);
        m_btnUpLevel.ShowWindow(SW_HIDE);
        m_listBlocks.ShowWindow(SW_HIDE);
        RegenerateGrips();
        break;
    default:
        break;
    }
}

void CBlockPaletteDlg::OnSelchangeTab(NMHDR* /*pNMHDR*/, LRESULT* pResult) {
    *pResult = 0;
    ShowActivePage();
}

void CBlockPaletteDlg::OnClickGripList(NMHDR* /*pNMHDR*/, LRESULT* pResult) { *pResult = 0; }

void CBlockPaletteDlg::OnDblclkGripList(NMHDR* /*pNMHDR*/, LRESULT* pResult) {
    FocusCommandLine();
    const int nRow = m_listGrips.GetNextItem(-1, LVNI_SELECTED);
    SendToCommandLine("(c:_grip " + IntToText(nRow) + ") ");
    *pResult = 0;
}

void CBlockPaletteDlg::OnDblclkBlockList(NMHDR* /*pNMHDR*/, LRESULT* pResult) {
    const int nRow = m_listBlocks.GetNextItem(-1, LVNI_SELECTED);
    FocusCommandLine();
    ads_point point;
    if (acedGetPoint(nullptr, LoadResString(IDS_SPECIFY_INSERTION_POINT), point) != RTNORM)
        return;
    SendInsertion("c:_bInsert", m_listBlocks.GetItemText(nRow, 0), point);
    *pResult = 0;
}

void CBlockPaletteDlg::OnUpOneLevel() {
    m_listDwgs.UpOneLevel();
    m_comboFolders.SelectPath(m_listDwgs.m_strDirectory);
}

// The preview.

void CBlockPaletteDlg::OnPreview() {
    if (m_pPreviewDlg)
        return;
    CPreviewDlg* pDlg = m_tabs.GetCurSel() == kPageDwgs ? NewDrawingPreview() : NewBlockPreview();
    if (!pDlg)
        return;
    m_pPreviewDlg = pDlg;
    const HWND hPalette = m_hWnd;
    pDlg->DoModal();
    delete pDlg;
    // The palette can go while its preview runs.
    if (::IsWindow(hPalette))
        m_pPreviewDlg = nullptr;
}

/// Ends the preview's run, after which it is deleted.
void CBlockPaletteDlg::OnDestroy() {
    if (m_pPreviewDlg) {
        m_pPreviewDlg->EndDialog(IDCANCEL);
        m_pPreviewDlg = nullptr;
    }
    CDialog::OnDestroy();
}

CPreviewDlg* CBlockPaletteDlg::NewDrawingPreview() {
    const int nRow = m_listDwgs.GetCurSel();
    m_listDwgs.m_nHitIndex = static_cast<short>(nRow);
    CString strText;
    m_listDwgs.GetText(nRow, strText);
    if (strText.IsEmpty())
        return nullptr;
    auto* pDlg = new CPreviewDlg(this);
    pDlg->m_pOwnerDlg = this;
    pDlg->SetDrawing(strText, m_listDwgs.m_strDirectory + "\\" + strText);
    return pDlg;
}

CPreviewDlg* CBlockPaletteDlg::NewBlockPreview() {
    const int nRow = m_listBlocks.GetNextItem(-1, LVNI_SELECTED);
    const CString strName = nRow == -1 ? CString() : m_listBlocks.GetItemText(nRow, 0);
    if (strName.IsEmpty())
        return nullptr;
    auto* pDlg = new CPreviewDlg(this);
    pDlg->m_pOwnerDlg = this;
    pDlg->SetBlock(strName);
    return pDlg;
}
