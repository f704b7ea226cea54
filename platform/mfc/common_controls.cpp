#include "mfc/common_controls.h"

#include "win32/window.h"

IMPLEMENT_DYNAMIC(CHeaderCtrl, CWnd)
IMPLEMENT_DYNAMIC(CListCtrl, CWnd)
IMPLEMENT_DYNAMIC(CTreeCtrl, CWnd)
IMPLEMENT_DYNAMIC(CTabCtrl, CWnd)
IMPLEMENT_DYNAMIC(CToolTipCtrl, CWnd)
IMPLEMENT_DYNAMIC(CRichEditCtrl, CWnd)

namespace {

/// The platform takes texts it doesn't change through a pointer that could.
LPSTR unchanged(LPCSTR text) { return const_cast<LPSTR>(text); }

HIMAGELIST handleOf(const CImageList* list) { return list != nullptr ? list->GetSafeHandle() : nullptr; }

TOOLINFO toolOf(CWnd* window, UINT_PTR id) {
    TOOLINFO tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = id != 0 ? window->m_hWnd : ::GetParent(window->m_hWnd);
    tool.uFlags = id != 0 ? 0 : TTF_IDISHWND;
    tool.uId = id != 0 ? id : reinterpret_cast<UINT_PTR>(window->m_hWnd);
    return tool;
}

} // namespace

BOOL AfxInitRichEdit() { return TRUE; }

int CListCtrl::InsertItem(int index, LPCSTR text) {
    LVITEM item{};
    item.mask = LVIF_TEXT;
    item.iItem = index;
    item.pszText = unchanged(text);
    return InsertItem(&item);
}

int CListCtrl::InsertItem(int index, LPCSTR text, int image) {
    LVITEM item{};
    item.mask = LVIF_TEXT | LVIF_IMAGE;
    item.iItem = index;
    item.pszText = unchanged(text);
    item.iImage = image;
    return InsertItem(&item);
}

CString CListCtrl::GetItemText(int index, int subItem) const {
    LVITEM item{};
    item.iSubItem = subItem;
    CString text;
    // The control tells only how much it copied: a full buffer may have cut the text.
    for (int size = 128;; size *= 2) {
        item.cchTextMax = size;
        item.pszText = text.GetBuffer(size);
        const LRESULT length =
            SendMessage(LVM_GETITEMTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item));
        text.ReleaseBuffer(length > 0 ? static_cast<int>(length) : 0);
        if (length < size - 1)
            return text;
    }
}

BOOL CListCtrl::SetItemText(int index, int subItem, LPCSTR text) {
    LVITEM item{};
    item.iSubItem = subItem;
    item.pszText = unchanged(text);
    return static_cast<BOOL>(SendMessage(LVM_SETITEMTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)));
}

DWORD_PTR CListCtrl::GetItemData(int index) const {
    LVITEM item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    GetItem(&item);
    return static_cast<DWORD_PTR>(item.lParam);
}

BOOL CListCtrl::SetItemData(int index, DWORD_PTR data) {
    LVITEM item{};
    item.mask = LVIF_PARAM;
    item.iItem = index;
    item.lParam = static_cast<LPARAM>(data);
    return SetItem(&item);
}

BOOL CListCtrl::SetItemState(int index, UINT state, UINT mask) {
    LVITEM item{};
    item.state = state;
    item.stateMask = mask;
    return static_cast<BOOL>(
        SendMessage(LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&item)));
}

BOOL CListCtrl::GetItemRect(int index, LPRECT rect, int part) const {
    rect->left = part;
    return static_cast<BOOL>(SendMessage(LVM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect)));
}

BOOL CListCtrl::GetSubItemRect(int index, int subItem, int part, CRect& rect) const {
    rect.top = subItem;
    rect.left = part;
    return static_cast<BOOL>(SendMessage(LVM_GETSUBITEMRECT, static_cast<WPARAM>(index),
                                         reinterpret_cast<LPARAM>(static_cast<LPRECT>(rect))));
}

int CListCtrl::InsertColumn(int index, LPCSTR heading, int format, int width, int subItem) {
    LVCOLUMN column{};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.pszText = unchanged(heading);
    column.fmt = format;
    if (width != -1) {
        column.mask |= LVCF_WIDTH;
        column.cx = width;
    }
    if (subItem != -1) {
        column.mask |= LVCF_SUBITEM;
        column.iSubItem = subItem;
    }
    return InsertColumn(index, &column);
}

CHeaderCtrl* CListCtrl::GetHeaderCtrl() const {
    CWnd* header = FromHandle(reinterpret_cast<HWND>(SendMessage(LVM_GETHEADER)), RUNTIME_CLASS(CHeaderCtrl),
                              []() -> std::unique_ptr<CWnd> { return std::make_unique<CHeaderCtrl>(); });
    return static_cast<CHeaderCtrl*>(header);
}

CImageList* CListCtrl::SetImageList(CImageList* list, int kind) {
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(
        SendMessage(LVM_SETIMAGELIST, static_cast<WPARAM>(kind), reinterpret_cast<LPARAM>(handleOf(list)))));
}

CSize CListCtrl::SetIconSpacing(int x, int y) {
    const auto former = static_cast<DWORD>(SendMessage(LVM_SETICONSPACING, 0, MAKELPARAM(x, y)));
    return {LOWORD(former), HIWORD(former)};
}

BOOL CListCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    if (message != WM_DRAWITEM)
        return CWnd::OnChildNotify(message, wParam, lParam, result);
    DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    return TRUE;
}

HTREEITEM CTreeCtrl::InsertItem(LPCSTR text, HTREEITEM parent, HTREEITEM after) {
    TVINSERTSTRUCT insert{};
    insert.hParent = parent;
    insert.hInsertAfter = after;
    insert.item.mask = TVIF_TEXT;
    insert.item.pszText = unchanged(text);
    return InsertItem(&insert);
}

DWORD_PTR CTreeCtrl::GetItemData(HTREEITEM handle) const {
    TVITEM item{};
    item.mask = TVIF_PARAM;
    item.hItem = handle;
    GetItem(&item);
    return static_cast<DWORD_PTR>(item.lParam);
}

BOOL CTreeCtrl::SetItemData(HTREEITEM handle, DWORD_PTR data) {
    TVITEM item{};
    item.mask = TVIF_PARAM;
    item.hItem = handle;
    item.lParam = static_cast<LPARAM>(data);
    return SetItem(&item);
}

CString CTreeCtrl::GetItemText(HTREEITEM handle) const {
    TVITEM item{};
    item.mask = TVIF_TEXT;
    item.hItem = handle;
    CString text;
    for (int size = 128;; size *= 2) {
        item.cchTextMax = size;
        item.pszText = text.GetBuffer(size);
        item.pszText[0] = '\0';
        GetItem(&item);
        text.ReleaseBuffer();
        if (text.GetLength() < size - 1)
            return text;
    }
}

BOOL CTreeCtrl::SetItemImage(HTREEITEM handle, int image, int selectedImage) {
    TVITEM item{};
    item.mask = TVIF_IMAGE | TVIF_SELECTEDIMAGE;
    item.hItem = handle;
    item.iImage = image;
    item.iSelectedImage = selectedImage;
    return SetItem(&item);
}

HTREEITEM CTreeCtrl::HitTest(POINT point, UINT* flags) const {
    TVHITTESTINFO info{};
    info.pt = point;
    const auto item = reinterpret_cast<HTREEITEM>(SendMessage(TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&info)));
    if (flags != nullptr)
        *flags = info.flags;
    return item;
}

CImageList* CTreeCtrl::GetImageList(UINT kind) const {
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(SendMessage(TVM_GETIMAGELIST, kind)));
}

CImageList* CTreeCtrl::SetImageList(CImageList* list, int kind) {
    return CImageList::FromHandle(reinterpret_cast<HIMAGELIST>(
        SendMessage(TVM_SETIMAGELIST, static_cast<WPARAM>(kind), reinterpret_cast<LPARAM>(handleOf(list)))));
}

int CTabCtrl::InsertItem(int index, LPCSTR text) {
    TCITEM item{};
    item.mask = TCIF_TEXT;
    item.pszText = unchanged(text);
    return InsertItem(index, &item);
}

BOOL CToolTipCtrl::Create(CWnd* parent, DWORD style) {
    const BOOL made = CreateEx(0, TOOLTIPS_CLASS, nullptr, WS_POPUP | style, CW_USEDEFAULT, CW_USEDEFAULT,
                               CW_USEDEFAULT, CW_USEDEFAULT, parent->m_hWnd, nullptr);
    if (made != FALSE)
        SetOwner(parent);
    return made;
}

BOOL CToolTipCtrl::AddTool(CWnd* window, LPCSTR text, LPCRECT rect, UINT_PTR id) {
    TOOLINFO tool = toolOf(window, id);
    if (rect != nullptr)
        tool.rect = *rect;
    tool.lpszText = unchanged(text);
    return static_cast<BOOL>(SendMessage(TTM_ADDTOOL, 0, reinterpret_cast<LPARAM>(&tool)));
}

void CToolTipCtrl::DelTool(CWnd* window, UINT_PTR id) {
    TOOLINFO tool = toolOf(window, id);
    SendMessage(TTM_DELTOOL, 0, reinterpret_cast<LPARAM>(&tool));
}

void CToolTipCtrl::UpdateTipText(LPCSTR text, CWnd* window, UINT_PTR id) {
    TOOLINFO tool = toolOf(window, id);
    tool.lpszText = unchanged(text);
    SendMessage(TTM_UPDATETIPTEXT, 0, reinterpret_cast<LPARAM>(&tool));
}

CString CToolTipCtrl::GetText(CWnd* window, UINT_PTR id) const {
    constexpr int longestTip = 1024;
    TOOLINFO tool = toolOf(window, id);
    CString text;
    tool.lpszText = text.GetBuffer(longestTip);
    tool.lpszText[0] = '\0';
    SendMessage(TTM_GETTEXT, longestTip, reinterpret_cast<LPARAM>(&tool));
    text.ReleaseBuffer();
    return text;
}
