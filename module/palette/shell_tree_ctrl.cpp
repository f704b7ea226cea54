#include "palette/shell_tree_ctrl.h"

#include "palette/tree_combo_box.h"
#include "resources/resource.h"

#include <vector>

namespace {

// The images of IDB_SHELL_IMAGES.
enum ShellImage {
    kClosedFolder,
    kOpenFolder,
    kNetwork,
    kDesktop,
    kComputer,
    kFloppyDisk,
    kHardDisk,
    kCompactDisc,
    kControlPanel,
    kDocuments
};

/// The host asks by it whether a window keeps the focus that it has.
constexpr UINT WM_ACAD_KEEPFOCUS = 0x7101;

struct PathPart {
    CString label;
    CString path;
};

/// The way to a folder. The drive has its backslash in its path, the others have none at their end. The two backslashes
/// of a network's path belong to its first part.
std::vector<PathPart> SplitPath(CString path) {
    std::vector<PathPart> parts;
    if (!path.IsEmpty() && path[path.GetLength() - 1] != '\\')
        path += '\\';
    int nStart = 0;
    while (nStart < path.GetLength() && path[nStart] == '\\')
        ++nStart;
    for (int nEnd = 0; (nEnd = path.Find('\\', nStart)) >= 0; nStart = nEnd + 1) {
        if (nEnd == nStart)
            continue;
        const bool first = parts.empty();
        parts.push_back({first ? path.Left(nEnd) : path.Mid(nStart, nEnd - nStart), path.Left(nEnd + first)});
    }
    return parts;
}

} // namespace

BEGIN_MESSAGE_MAP(CShellTreeCtrl, CTreeCtrl)
ON_WM_MOUSEMOVE()
ON_NOTIFY_REFLECT(TVN_ITEMEXPANDED, &CShellTreeCtrl::OnItemExpanded)
ON_WM_LBUTTONDOWN()
ON_WM_KILLFOCUS()
ON_WM_DESTROY()
ON_MESSAGE(WM_ACAD_KEEPFOCUS, &CShellTreeCtrl::OnKeepFocus)
END_MESSAGE_MAP()

CShellTreeCtrl::~CShellTreeCtrl() = default;

// Rows.

void CShellTreeCtrl::LoadImages() {
    CBitmap strip;
    strip.LoadBitmap(IDB_SHELL_IMAGES);
    m_images.Create(16, 16, ILC_COLOR24, 10, 5);
    m_images.Add(&strip, RGB(0, 0, 0));
    SetImageList(&m_images, TVSIL_NORMAL);
}

HTREEITEM CShellTreeCtrl::InsertDataItem(CTreeItemData* pData, HTREEITEM hParent, bool bLastOnPath) {
    if (!pData)
        return nullptr;
    CString label = pData->m_strLabel;
    TVINSERTSTRUCT insert{};
    insert.hParent = hParent;
    insert.hInsertAfter = TVI_LAST;
    insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
    insert.item.pszText = label.GetBuffer(0);
    insert.item.iImage = insert.item.iSelectedImage = bLastOnPath ? kOpenFolder : pData->m_nImage;
    insert.item.lParam = reinterpret_cast<LPARAM>(pData);
    return InsertItem(&insert);
}

HTREEITEM CShellTreeCtrl::InsertFixed(const char* pszLabel, HTREEITEM hParent, int nImage) {
    return InsertDataItem(new CTreeItemData(pszLabel, pszLabel, nImage, nImage), hParent, false);
}

void CShellTreeCtrl::FillRoot(CTreeComboBox* pCombo) {
    m_pCombo = pCombo;
    HTREEITEM hDesktop = InsertFixed("Desktop", TVI_ROOT, kDesktop);
    HTREEITEM hComputer = InsertFixed("My Computer", hDesktop, kComputer);
    InsertDrives(hComputer);
    InsertFixed("Control Panel", hComputer, kControlPanel);
    InsertFixed("My Network Places", hDesktop, kNetwork);
    InsertFixed("My Documents", hDesktop, kDocuments);
    Expand(hDesktop, TVE_EXPAND);
    Expand(hComputer, TVE_EXPAND);
    SelectItemQuiet(hDesktop);
}

void CShellTreeCtrl::InsertDrives(HTREEITEM hParent) {
    char letter = 'A';
    for (DWORD drives = ::GetLogicalDrives(); drives != 0; drives >>= 1, ++letter) {
        if ((drives & 1) == 0)
            continue;
        CString root;
        root.Format("%c:\\", letter);
        SHFILEINFO info{};
        CString label;
        if (::SHGetFileInfoA(root, 0, &info, sizeof info, SHGFI_DISPLAYNAME) != 0)
            label = info.szDisplayName;
        else
            label.Format("Drive (%c:)", letter);
        const UINT nType = ::GetDriveTypeA(root);
        const int nImage = nType == DRIVE_REMOVABLE ? kFloppyDisk : nType == DRIVE_CDROM ? kCompactDisc : kHardDisk;
        InsertDataItem(new CTreeItemData(label, root, nImage, nImage), hParent, false);
    }
}

void CShellTreeCtrl::FreeItemData(HTREEITEM hItem) {
    for (; hItem; hItem = GetNextSiblingItem(hItem)) {
        delete DataOf(hItem);
        SetItemData(hItem, 0);
        FreeItemData(GetChildItem(hItem));
    }
}

void CShellTreeCtrl::FreeAllItems() {
    if (!m_hWnd)
        return;
    FreeItemData(GetRootItem());
    m_hSelected = nullptr;
    DeleteAllItems();
}

CTreeItemData* CShellTreeCtrl::DataOf(HTREEITEM hItem) const {
    return hItem ? reinterpret_cast<CTreeItemData*>(GetItemData(hItem)) : nullptr;
}

// Finding and selecting.

HTREEITEM CShellTreeCtrl::FindItemDeep(HTREEITEM hItem, const CString& path) const {
    for (; hItem; hItem = GetNextSiblingItem(hItem)) {
        const CTreeItemData* pData = DataOf(hItem);
        if (pData && pData->m_strPath.CompareNoCase(path) == 0)
            return hItem;
        if (HTREEITEM hFound = FindItemDeep(GetChildItem(hItem), path))
            return hFound;
    }
    return nullptr;
}

HTREEITEM CShellTreeCtrl::FindItemAmongSiblings(HTREEITEM hItem, const CString& path) const {
    for (; hItem; hItem = GetNextSiblingItem(hItem)) {
        const CTreeItemData* pData = DataOf(hItem);
        if (pData && pData->m_strPath.CompareNoCase(path) == 0)
            return hItem;
    }
    return nullptr;
}

void CShellTreeCtrl::SelectPath(CString path) {
    const std::vector<PathPart> parts = SplitPath(path);
    if (parts.empty())
        return;
    HTREEITEM hItem = FindItemDeep(GetRootItem(), parts[0].path);
    HTREEITEM hLast = hItem;
    std::size_t i = 0;
    for (; hItem && i < parts.size(); ++i) {
        HTREEITEM hFound = FindItemAmongSiblings(hItem, parts[i].path);
        if (!hFound)
            break;
        hLast = hFound;
        hItem = GetChildItem(hFound);
    }
    for (; i < parts.size(); ++i)
        hLast = InsertDataItem(new CTreeItemData(parts[i].label, parts[i].path, kClosedFolder, kOpenFolder),
                               hLast ? hLast : TVI_ROOT, i + 1 == parts.size());
    SelectItemQuiet(hLast);
}

void CShellTreeCtrl::SelectItemQuiet(HTREEITEM hItem) {
    m_hSelected = hItem;
    SelectItem(hItem);
}

void CShellTreeCtrl::StepVisible(bool bForward) {
    HTREEITEM hNext = GetNextItem(m_hSelected, bForward ? TVGN_NEXTVISIBLE : TVGN_PREVIOUSVISIBLE);
    if (!hNext)
        return;
    SelectItemQuiet(hNext);
    NotifyCombo();
}

void CShellTreeCtrl::HideAndNotify() {
    ShowWindow(SW_HIDE);
    NotifyCombo();
}

void CShellTreeCtrl::NotifyCombo() {
    m_pCombo->SendMessage(WM_TREEITEMPICKED, reinterpret_cast<WPARAM>(DataOf(m_hSelected)));
    m_pCombo->SetFocus();
}

// The window.

void CShellTreeCtrl::DropAt(int left, int top, int width, int height) {
    const int nScreenHeight = ::GetSystemMetrics(SM_CYSCREEN);
    const int nScreenWidth = ::GetSystemMetrics(SM_CXSCREEN);
    if (nScreenHeight < top + height)
        height = nScreenHeight - top - 1;
    if (nScreenWidth < left + width)
        left = nScreenWidth - width - 1;
    SetWindowPos(&CWnd::wndNoTopMost, left, top, width, height, SWP_SHOWWINDOW);
    // The frame doesn't look as if it had lost the user.
    CWnd* pParent = GetParent();
    if (CWnd* pFrame = pParent ? pParent->GetParentOwner() : nullptr) {
        pFrame->SendMessage(WM_NCACTIVATE, TRUE);
        pFrame->SendMessage(WM_SETREDRAW, TRUE);
    }
}

void CShellTreeCtrl::OnMouseMove(UINT nFlags, CPoint point) {
    if (HTREEITEM hItem = HitTest(point))
        SelectItem(hItem);
    CTreeCtrl::OnMouseMove(nFlags, point);
}

void CShellTreeCtrl::OnItemExpanded(NMHDR* pNMHDR, LRESULT* pResult) {
    const auto* pNotify = reinterpret_cast<const NMTREEVIEW*>(pNMHDR);
    const CTreeItemData* pData = DataOf(pNotify->itemNew.hItem);
    const bool open = pNotify->action == TVE_EXPAND;
    const int nOpen = pData ? pData->m_nOpenImage : kOpenFolder;
    const int nClosed = pData ? pData->m_nImage : kClosedFolder;
    SetItemImage(pNotify->itemNew.hItem, open ? nOpen : nClosed, open ? nOpen : nClosed);
    *pResult = 0;
}

void CShellTreeCtrl::OnLButtonDown(UINT nFlags, CPoint point) {
    UINT nPlace = 0;
    HTREEITEM hItem = HitTest(point, &nPlace);
    if ((nPlace & TVHT_ONITEMBUTTON) != 0) {
        CTreeCtrl::OnLButtonDown(nFlags, point);
        return;
    }
    m_hSelected = hItem ? hItem : GetSelectedItem();
    HideAndNotify();
}

void CShellTreeCtrl::OnKillFocus(CWnd* pNewWnd) {
    POINT cursor;
    ::GetCursorPos(&cursor);
    const HWND hUnderCursor = ::WindowFromPoint(cursor);
    CTreeCtrl::OnKillFocus(pNewWnd);
    // A click on the combo box closes the tree by itself.
    if (!m_pCombo || hUnderCursor != m_pCombo->m_hWnd)
        ShowWindow(SW_HIDE);
}

void CShellTreeCtrl::OnDestroy() {
    FreeAllItems();
    CTreeCtrl::OnDestroy();
}

LRESULT CShellTreeCtrl::OnKeepFocus(WPARAM /*wParam*/, LPARAM /*lParam*/) { return 1; }

BOOL CShellTreeCtrl::PreTranslateMessage(MSG* pMsg) {
    if (pMsg->hwnd == m_hWnd && pMsg->message == WM_KEYDOWN) {
        if (pMsg->wParam == VK_ESCAPE) {
            ShowWindow(SW_HIDE);
            return TRUE;
        }
        if (pMsg->wParam == VK_RETURN) {
            m_hSelected = GetSelectedItem();
            HideAndNotify();
            return TRUE;
        }
    }
    return CWnd::PreTranslateMessage(pMsg);
}
