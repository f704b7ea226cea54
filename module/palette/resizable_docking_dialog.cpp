#include "palette/resizable_docking_dialog.h"

#include "ads/ads.h"
#include "ap/document.h"
#include "frame/module.h"
#include "frame/palette_bar.h"
#include "resources/resource.h"

IMPLEMENT_DYNAMIC(CResizableDockingDialog, CAdUiDockControlBar)

BEGIN_MESSAGE_MAP(CResizableDockingDialog, CAdUiDockControlBar)
ON_WM_CREATE()
ON_WM_SHOWWINDOW()
ON_WM_DESTROY()
END_MESSAGE_MAP()

namespace {

constexpr UINT kBarId = 403;
constexpr int kWidth = 150; // at first
constexpr int kHeight = 500;

constexpr GUID kToolId = {0xE818D0AA, 0x0E31, 0x4789, {0xB8, 0xE2, 0x2C, 0x13, 0x04, 0x8B, 0x6E, 0x10}};

} // namespace

CResizableDockingDialog::CResizableDockingDialog() : CAdUiDockControlBar(ADUI_DOCK_CS_STDMOUSECLICKS) {}

CResizableDockingDialog::~CResizableDockingDialog() { m_dlg.DestroyWindow(); }

BOOL CResizableDockingDialog::Create(CWnd* pParent, LPCSTR title, CRect rect) {
    const LPCSTR className = AfxRegisterWndClass(CS_DBLCLKS, ::LoadCursorA(nullptr, IDC_ARROW), nullptr, nullptr);
    const DWORD dwStyle = WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN;
    return CAdUiDockControlBar::Create(className, title, dwStyle, rect, pParent, kBarId, nullptr) ? 1 : 0;
}

int CResizableDockingDialog::OnCreate(LPCREATESTRUCT lpCreateStruct) {
    if (CAdUiDockControlBar::OnCreate(lpCreateStruct) == -1)
        return -1;
    SetWindowText(LoadResString(IDS_VONDRAKE));
    m_dlg.Create(IDD_BLOCK_PALETTE, this);
    m_dlg.ShowWindow(SW_SHOWNORMAL);
    return 1;
}

bool CResizableDockingDialog::CanFrameworkTakeFocus() { return false; }

void CResizableDockingDialog::SizeChanged(CRect* lpRect, BOOL /*bFloating*/, int /*flags*/) {
    lpRect->left += 3;
    lpRect->top += 5;
    lpRect->bottom += 5;
    m_dlg.MoveWindow(2, 15, lpRect->Width(), lpRect->Height() - 6);
}

void CResizableDockingDialog::OnUserSizing(UINT /*nSide*/, LPRECT /*pRect*/) {}

BOOL CResizableDockingDialog::AddCustomMenuItems(LPARAM hMenu) {
    if (IsWindowVisible()) {
        const auto menu = reinterpret_cast<HMENU>(hMenu);
        ::RemoveMenu(menu, ID_ADUI_ALLOW_DOCKING, MF_BYCOMMAND);
        ::RemoveMenu(menu, ID_ADUI_HIDE_BAR, MF_BYCOMMAND);
    }
    return TRUE;
}

void CResizableDockingDialog::GetFloatingMinSize(long* /*pWidth*/, long* /*pHeight*/) {
    CRect rcFloating;
    GetFloatingRect(&rcFloating);
}

BOOL CResizableDockingDialog::PreTranslateMessage(MSG* pMsg) {
    if (pMsg->message == WM_KEYDOWN && (pMsg->wParam == VK_ESCAPE || pMsg->wParam == VK_CANCEL)) {
        const CWnd* pCancel = GetDlgItem(IDCANCEL);
        if (!pCancel || pCancel->IsWindowEnabled()) {
            SendMessage(WM_COMMAND, IDCANCEL);
            return TRUE;
        }
    }
    return CControlBar::PreTranslateMessage(pMsg);
}

void ShowPalette() {
    if (CResizableDockingDialog* pBar = PaletteBar()) {
        pBar->RestoreControlBar(AFX_IDW_DOCKBAR_LEFT, nullptr);
        pBar->ShowWindow(SW_SHOWNORMAL);
        pBar->RestoreControlBar(AFX_IDW_DOCKBAR_LEFT, nullptr);
        return;
    }
    CreatePaletteBar();
    CResizableDockingDialog* pBar = PaletteBar();
    if (!pBar)
        return;
    acDocManagerPtr()->pushResourceHandle(ModuleResourceHandle());
    const CString strTitle = LoadResString(IDS_VONDRAKE);
    const CPoint place = CFrameWnd::rectDefault.TopLeft();
    pBar->Create(acedGetAcadFrame(), strTitle, CRect(place, CSize(kWidth, kHeight)));
    pBar->SetToolID(&kToolId);
    pBar->EnableDocking(CBRS_ALIGN_LEFT | CBRS_ALIGN_RIGHT);
    pBar->RestoreControlBar(AFX_IDW_DOCKBAR_LEFT, nullptr);
    acDocManagerPtr()->popResourceHandle();
}
