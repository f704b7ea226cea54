#include "previews/resizable_dlg.h"

namespace {

const char* const kWidthKey = "sizeWidth3";
const char* const kHeightKey = "sizeHeight3";
const char* const kLeftKey = "nTopLeftX3";
const char* const kTopKey = "nTopLeftY3";

// What a stored rectangle may be, in pixels. A window that was dragged beyond comes back small.
constexpr int kDefaultWidth = 450;
constexpr int kDefaultHeight = 340;
constexpr int kLeastPlace = 200;
constexpr int kEdge = 10; // that much of the window has to be on the screen
constexpr int kLeastWidth = 200;
constexpr int kMostWidth = 1000;
constexpr int kLeastHeight = 100;
constexpr int kMostHeight = 900;

int PlaceOnScreen(int nPlace, int nScreen) {
    return nPlace + kEdge > nScreen || nPlace < kLeastPlace ? kLeastPlace : nPlace;
}

int SizeWithin(int nSize, int nLeast, int nMost) { return nSize < nLeast || nSize > nMost ? nLeast : nSize; }

} // namespace

BEGIN_MESSAGE_MAP(CResizableDlg, CDialog)
ON_WM_SIZING()
ON_WM_SIZE()
ON_WM_PAINT()
ON_WM_NCHITTEST()
END_MESSAGE_MAP()

CResizableDlg::CResizableDlg(UINT nTemplateId, CWnd* pParent) : CDialog(nTemplateId, pParent) {}

BOOL CResizableDlg::OnInitDialog() {
    CDialog::OnInitDialog();
    mGripperRect.SetRect(0, 0, 10, 10);
    mGripperWidth = ::GetSystemMetrics(SM_CXVSCROLL);
    mGripperHeight = ::GetSystemMetrics(SM_CYHSCROLL);
    mMinWidth = 350;
    mMinHeight = 100;
    mMaxWidth = 1200;
    mMaxHeight = 1000;
    UpdateGripper();
    return TRUE;
}

// The right and the bottom edge give way, whichever is dragged.
void CResizableDlg::OnSizing(UINT nSide, LPRECT lpRect) {
    const int nWidth = lpRect->right - lpRect->left;
    const int nHeight = lpRect->bottom - lpRect->top;
    if (nWidth < mMinWidth)
        lpRect->right = lpRect->left + mMinWidth;
    if (nHeight < mMinHeight)
        lpRect->bottom = lpRect->top + mMinHeight;
    if (nWidth > mMaxWidth)
        lpRect->right = lpRect->left + mMaxWidth;
    if (nHeight > mMaxHeight)
        lpRect->bottom = lpRect->top + mMaxHeight;
    CDialog::OnSizing(nSide, lpRect);
}

void CResizableDlg::OnSize(UINT nType, int cx, int cy) {
    CDialog::OnSize(nType, cx, cy);
    UpdateGripper();
}

void CResizableDlg::UpdateGripper() {
    if (!mShowGripper)
        return;
    CClientDC dc(this);
    dc.SetBkColor(::GetSysColor(COLOR_3DFACE));
    dc.ExtTextOut(0, 0, ETO_OPAQUE, mGripperRect, nullptr, 0, nullptr);
    GetClientRect(mGripperRect);
    mGripperRect.left = mGripperRect.right - mGripperWidth;
    mGripperRect.top = mGripperRect.bottom - mGripperHeight;
    dc.DrawFrameControl(mGripperRect, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
}

void CResizableDlg::OnPaint() {
    CPaintDC dc(this);
    if (!mShowGripper)
        return;
    UpdateGripper();
    dc.DrawFrameControl(mGripperRect, DFC_SCROLL, DFCS_SCROLLSIZEGRIP);
}

LRESULT CResizableDlg::OnNcHitTest(CPoint point) {
    CPoint client = point;
    ScreenToClient(&client);
    if (mShowGripper && mGripperRect.PtInRect(client) && client.x >= 0 && client.y >= 0)
        return HTBOTTOMRIGHT;
    return CDialog::OnNcHitTest(point);
}

void CResizableDlg::SavePlacement() {
    if (mProfileSection.IsEmpty())
        return;
    CRect rect;
    GetWindowRect(rect);
    if (!::IsWindow(m_hWnd))
        return;
    CWinApp* pApp = AfxGetApp();
    pApp->WriteProfileInt(mProfileSection, kWidthKey, rect.Width());
    pApp->WriteProfileInt(mProfileSection, kHeightKey, rect.Height());
    pApp->WriteProfileInt(mProfileSection, kLeftKey, rect.left);
    pApp->WriteProfileInt(mProfileSection, kTopKey, rect.top);
}

void CResizableDlg::GetSavedRect(LPRECT lpRect) const {
    CRect present;
    GetWindowRect(present);
    const CWinApp* pApp = AfxGetApp();
    const auto stored = [&](const char* pszKey, int nDefault) {
        return static_cast<int>(pApp->GetProfileInt(mProfileSection, pszKey, nDefault));
    };
    const int x = PlaceOnScreen(stored(kLeftKey, present.left), ::GetSystemMetrics(SM_CXSCREEN));
    const int y = PlaceOnScreen(stored(kTopKey, present.top), ::GetSystemMetrics(SM_CYSCREEN));
    const int nWidth = SizeWithin(stored(kWidthKey, kDefaultWidth), kLeastWidth, kMostWidth);
    const int nHeight = SizeWithin(stored(kHeightKey, kDefaultHeight), kLeastHeight, kMostHeight);
    ::SetRect(lpRect, x, y, x + nWidth, y + nHeight);
}
