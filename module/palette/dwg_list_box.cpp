#include "palette/dwg_list_box.h"

#include "ads/ads.h"
#include "frame/module.h"
#include "palette/directory_scanner.h"
#include "palette/host_helpers.h"
#include "palette/tree_combo_box.h"
#include "previews/dwg_thumbnail.h"
#include "resources/resource.h"

namespace {

constexpr DWORD_PTR kFolderRow = 0;
constexpr DWORD_PTR kDrawingRow = 1;

constexpr int kThinRow = 17; // pixels

const char* const kShowPreviews = "ShowPreviews";

CString Joined(const CString& strFolder, const CString& strName) {
    const bool closed = !strFolder.IsEmpty() && strFolder[strFolder.GetLength() - 1] == '\\';
    return closed ? strFolder + strName : strFolder + "\\" + strName;
}

CString LastPart(const CString& strPath) { return strPath.Mid(strPath.ReverseFind('\\') + 1); }

CString LowerCase(CString text) {
    text.MakeLower();
    return text;
}

CWinApp* ProfileApp() { return AfxGetModuleState()->m_pCurrentWinApp; }

int ReadShowPreviews() {
    const CWinApp* pApp = ProfileApp();
    return pApp ? static_cast<int>(pApp->GetProfileInt(LoadResString(IDS_VONDRAKE), kShowPreviews, 1)) : 1;
}

} // namespace

BEGIN_MESSAGE_MAP(CDwgListBox, CListBox)
ON_UPDATE_COMMAND_UI_RANGE(0, 0xFFFF, &CDwgListBox::OnUpdateCommand)
ON_WM_DESTROY()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONDBLCLK()
ON_WM_RBUTTONDOWN()
ON_WM_RBUTTONUP()
ON_WM_CONTEXTMENU()
ON_WM_SIZE()
ON_COMMAND(ID_SHOW_IN_PREVIEW, &CDwgListBox::OnPreview)
ON_COMMAND(ID_OPEN_DRAWING, &CDwgListBox::OnOpenDrawing)
ON_COMMAND(ID_INSERT_XREF, &CDwgListBox::OnInsertXref)
ON_COMMAND(ID_INSERT_INTELLIGENT_BLOCK, &CDwgListBox::OnInsertBlock)
ON_COMMAND(ID_SHOW_PREVIEWS, &CDwgListBox::OnShowPreviews)
END_MESSAGE_MAP()

CDwgListBox::CDwgListBox() = default;

CDwgListBox::~CDwgListBox() { FreeEntries(); }

void CDwgListBox::LoadImages() {
    m_images.Create(16, 16, ILC_COLOR24, 10, 5);
    for (const UINT id : {IDB_FOLDER, IDB_DRAWING_FILE}) {
        CBitmap bitmap;
        bitmap.LoadBitmap(id);
        m_images.Add(&bitmap, RGB(0, 0, 0));
    }
}

void CDwgListBox::FreeEntries() {
    while (!m_listEntries.IsEmpty())
        delete m_listEntries.RemoveHead();
}

// Filling.

void CDwgListBox::FillList(CString folder) {
    m_bShowPreviews = ReadShowPreviews();
    if (m_bShowPreviews == 0)
        SetItemHeights(kThinRow);
    SendMessage(LB_RESETCONTENT);
    FreeEntries();
    m_strDirectory = folder;
    CDirectoryScanner scanner;
    scanner.ClearFolders();
    if (!scanner.ScanFolders(folder, true))
        return;
    FillFolders(scanner);
    scanner.ClearFiles();
    scanner.ScanFiles("*.dwg", true, false);
    FillDrawings(scanner);
    scanner.ClearFiles();
    SetCurSel(-1);
    FitItemHeight(0);
}

void CDwgListBox::FillFolders(const CDirectoryScanner& scanner) {
    for (const CString& strPath : scanner.m_folders) {
        if (strPath == scanner.m_strRoot)
            continue; // the scanner names the folder itself, too
        const CString strName = LastPart(strPath);
        const int nPlace = FindPlace(0, strName);
        const int nRow = nPlace >= 0 ? InsertString(nPlace, strName) : AddString(strName);
        SetItemData(nRow, kFolderRow);
        SetItemHeight(nRow, kThinRow);
        m_listEntries.AddTail(new CDwgThumbnail(nullptr, CString()));
    }
}

void CDwgListBox::FillDrawings(const CDirectoryScanner& scanner) {
    const int nFolders = GetCount();
    bool first = false;
    for (const CDirectoryEntry& entry : scanner.m_files) {
        const CString strName = LastPart(entry.m_strPath);
        auto* pEntry = new CDwgThumbnail(&m_strDirectory, strName);
        m_listEntries.AddTail(pEntry);
        const int nPlace = FindPlace(nFolders, strName);
        const int nRow = nPlace >= 0 ? InsertString(nPlace, strName) : AddString(strName);
        SetItemData(nRow, kDrawingRow);
        if (nPlace < 0 && !first && m_bShowPreviews == 1) {
            first = true;
            pEntry->LoadPreview();
            FitItemHeight(0);
        }
        SetItemHeight(nRow, static_cast<UINT>(m_nItemHeight));
    }
}

int CDwgListBox::FindPlace(int nFirst, const CString& strName) const {
    const CString strSought = LowerCase(strName);
    int nEnd = GetCount();
    // The system tells of names in about this order, so most belong at the end.
    if (nEnd == nFirst || !(strSought < LowerCase(RowText(nEnd - 1))))
        return -1;
    --nEnd;
    while (nFirst < nEnd) {
        const int nMiddle = nFirst + (nEnd - nFirst) / 2;
        if (strSought < LowerCase(RowText(nMiddle)))
            nEnd = nMiddle;
        else
            nFirst = nMiddle + 1;
    }
    return nFirst;
}

void CDwgListBox::UpOneLevel() {
    if (!m_strDirectory.IsEmpty())
        FillList(m_strDirectory.Left(m_strDirectory.ReverseFind('\\')));
}

void CDwgListBox::GoToFolder(CString path) {
    FillList(path);
    if (m_pCombo)
        m_pCombo->SelectPath(path);
    SetCurSel(-1);
    if (CWinApp* pApp = ProfileApp())
        pApp->WriteProfileString(LoadResString(IDS_VONDRAKE), "Directory", path);
}

// Rows.

CString CDwgListBox::RowText(int nRow) const {
    CString text;
    GetText(nRow, text);
    return text;
}

CString CDwgListBox::RowPath(int nRow) const { return Joined(m_strDirectory, RowText(nRow)); }

BOOL CDwgListBox::IsDrawing(int nRow) const { return static_cast<LONG_PTR>(GetItemData(nRow)) >= 1; }

int CDwgListBox::HitTestRow(POINT pt) const {
    // Rows above the topmost have no part below 0.
    for (int nRow = pt.y >= 0 ? GetTopIndex() : 0; nRow < GetCount(); ++nRow) {
        CRect rc;
        GetItemRect(nRow, rc);
        if (rc.PtInRect(pt))
            return nRow;
        if (rc.top > pt.y)
            break;
    }
    return -1;
}

void CDwgListBox::SetItemHeights(int height) {
    m_nItemHeight = height;
    const int nCount = GetCount();
    for (int nRow = 0; nRow < nCount; ++nRow)
        if (IsDrawing(nRow))
            SetItemHeight(nRow, LOWORD(static_cast<DWORD>(height)));
    Invalidate();
}

void CDwgListBox::FitItemHeight(int width) {
    if (m_bShowPreviews == 0)
        return;
    if (width == 0) {
        CRect rc;
        GetClientRect(rc);
        width = rc.Width();
    }
    constexpr int kCaption = 19;
    SetItemHeights(126 * width / 180 + kCaption);
}

void CDwgListBox::ActivateRow() {
    if (m_nHitIndex >= 0) {
        CRect rc;
        GetItemRect(m_nHitIndex, rc);
        InvalidateRect(rc);
    }
    CString strPath = RowPath(m_nHitIndex);
    if (!IsDrawing(m_nHitIndex)) {
        if (GetItemData(m_nHitIndex) == kFolderRow)
            GoToFolder(strPath);
        return;
    }
    // While the user is asked the windows live on: what stands in the list may be another folder's afterwards.
    FocusCommandLine();
    ads_point point;
    if (acedGetPoint(nullptr, LoadResString(IDS_SPECIFY_INSERTION_POINT), point) != RTNORM)
        return;
    strPath.Replace('\\', '/');
    SendInsertion("c:_bInsertFile", strPath, point);
}

// Messages.

void CDwgListBox::OnUpdateCommand(CCmdUI* pCmdUI) {
    if (CWnd* pOwner = GetOwner())
        pCmdUI->DoUpdate(pOwner, FALSE);
}

BOOL CDwgListBox::PreTranslateMessage(MSG* pMsg) {
    if (!m_toolTip.m_hWnd) {
        m_toolTip.Create(this);
        m_toolTip.Activate(FALSE);
    }
    m_toolTip.RelayEvent(pMsg);
    return CWnd::PreTranslateMessage(pMsg);
}

void CDwgListBox::OnDestroy() {
    CWnd::OnDestroy();
    FreeEntries();
}

void CDwgListBox::OnSize(UINT nType, int cx, int cy) {
    // A scroll bar that comes or goes meanwhile brings this message again, with the width that counts.
    const int nSize = ++m_nSizes;
    CListBox::OnSize(nType, cx, cy);
    if (nSize == m_nSizes)
        FitItemHeight(cx);
}

void CDwgListBox::OnLButtonDown(UINT nFlags, CPoint point) {
    CListBox::OnLButtonDown(nFlags, point);
    const int nRow = HitTestRow(point);
    if (GetItemData(nRow) == kFolderRow)
        GoToFolder(RowPath(nRow));
}

void CDwgListBox::OnLButtonDblClk(UINT /*nFlags*/, CPoint point) {
    const int nRow = HitTestRow(point);
    if (nRow == -1)
        return;
    m_nHitIndex = nRow;
    ActivateRow();
}

void CDwgListBox::OnRButtonDown(UINT nFlags, CPoint point) {
    const int nRow = HitTestRow(point);
    if (nRow != -1)
        SetCurSel(nRow);
    CListBox::OnRButtonDown(nFlags, point);
    SendMessage(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(m_hWnd), static_cast<LPARAM>(::GetMessagePos()));
}

// The press has brought the menu already.
void CDwgListBox::OnRButtonUp(UINT /*nFlags*/, CPoint /*point*/) {}

void CDwgListBox::OnContextMenu(CWnd* pWnd, CPoint point) {
    CMenu menu;
    menu.LoadMenu(IDR_DRAWINGS_MENU);
    m_bShowPreviews = ReadShowPreviews();
    if (point == CPoint(-1, -1)) { // the key, which has no place
        CRect rc;
        GetItemRect(GetCurSel(), rc);
        ClientToScreen(rc);
        point = CPoint(rc.left + kThinRow, rc.top + kThinRow);
    }
    if (CMenu* pPopup = menu.GetSubMenu(m_bShowPreviews == 1 ? 1 : 0))
        pPopup->TrackPopupMenu(0, point.x, point.y, pWnd);
}

// Commands.

BOOL CDwgListBox::OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) {
    // The framework asks for the state of a command that was picked just before it routes it.
    if (nCode == CN_UPDATE_COMMAND_UI && (nID == ID_SHOW_PREVIEWS || nID == ID_HIDE_PREVIEWS))
        SwitchPreviews(nID == ID_SHOW_PREVIEWS ? 1 : 0);
    return CCmdTarget::OnCmdMsg(nID, nCode, pExtra, pHandlerInfo);
}

void CDwgListBox::SwitchPreviews(int bShow) {
    m_bShowPreviews = bShow;
    if (CWinApp* pApp = ProfileApp())
        pApp->WriteProfileInt(LoadResString(IDS_VONDRAKE), kShowPreviews, bShow);
    FillList(m_strDirectory);
}

void CDwgListBox::OnShowPreviews() {} // OnCmdMsg has done it

BOOL CDwgListBox::TakeSelectedRow() {
    m_nHitIndex = GetCurSel();
    return m_nHitIndex != -1;
}

void CDwgListBox::OnInsertBlock() {
    if (TakeSelectedRow())
        ActivateRow();
}

void CDwgListBox::OnOpenDrawing() {
    if (TakeSelectedRow() && IsDrawing(m_nHitIndex))
        COleDispatchDriver(OpenDrawing(RowPath(m_nHitIndex)), TRUE).ReleaseDispatch();
}

void CDwgListBox::OnInsertXref() {
    if (TakeSelectedRow() && IsDrawing(m_nHitIndex))
        AttachXref(RowPath(m_nHitIndex), RowText(m_nHitIndex));
}

void CDwgListBox::OnPreview() {
    if (CWnd* pPalette = GetParent())
        pPalette->SendMessage(WM_COMMAND, ID_SHOW_IN_PREVIEW);
}
