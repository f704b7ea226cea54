// The tree that drops down below the combo box of folders: Desktop, My Computer, the drives, and the way to the folders
// that were visited. It is no browser of the disk.
#pragma once

#include "mfc/afx.h"

class CTreeComboBox;

/// What a row stands for. Owned by the tree; it hangs on the row as its item data.
class CTreeItemData {
public:
    CTreeItemData(const char* pszLabel, const CString& strPath, int nImage, int nOpenImage)
        : m_nImage(nImage), m_nOpenImage(nOpenImage), m_strLabel(pszLabel), m_strPath(strPath) {}
    virtual ~CTreeItemData() = default;

    int m_nImage;     ///< while the row is closed
    int m_nOpenImage; ///< while it is open
    CString m_strLabel;
    CString m_strPath; ///< of a row that stands for no folder its label
};

/// From the tree to the combo box: a row was picked. wParam: its CTreeItemData, or null.
constexpr UINT WM_TREEITEMPICKED = WM_USER + 102;

class CShellTreeCtrl : public CTreeCtrl {
public:
    ~CShellTreeCtrl() override;

    void LoadImages();
    /// Makes the rows that are always there; `pCombo` is the owner, which gets the picks.
    void FillRoot(CTreeComboBox* pCombo);
    void FreeAllItems();
    /// Makes the row of that path the current one, and the rows that lead to it, where they are missing. Nothing for
    /// an empty path.
    void SelectPath(CString path);
    /// The row for `pData`, which the tree takes over, as the last one of `hParent`; null for null data.
    HTREEITEM InsertDataItem(CTreeItemData* pData, HTREEITEM hParent, bool bLastOnPath);
    /// Makes a row the current one without telling the combo box.
    void SelectItemQuiet(HTREEITEM hItem);
    void HideAndNotify();
    void NotifyCombo();
    /// Goes to the next or previous row that shows, and picks it.
    void StepVisible(bool bForward);
    /// Shows the tree there, as far as it has place on the screen.
    void DropAt(int left, int top, int width, int height);
    [[nodiscard]] CTreeItemData* DataOf(HTREEITEM hItem) const;
    /// The row of that path, without regard to case, at `hItem`, below it or behind it.
    HTREEITEM FindItemDeep(HTREEITEM hItem, const CString& path) const;
    /// The same at `hItem` or behind it.
    HTREEITEM FindItemAmongSiblings(HTREEITEM hItem, const CString& path) const;

    BOOL PreTranslateMessage(MSG* pMsg) override;

    HTREEITEM m_hSelected = nullptr; ///< the current row; the highlight may be on another
    CImageList m_images;
    CTreeComboBox* m_pCombo = nullptr; ///< not owned

protected:
    void OnMouseMove(UINT nFlags, CPoint point);
    void OnItemExpanded(NMHDR* pNMHDR, LRESULT* pResult);
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnKillFocus(CWnd* pNewWnd);
    void OnDestroy();
    LRESULT OnKeepFocus(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    HTREEITEM InsertFixed(const char* pszLabel, HTREEITEM hParent, int nImage);
    void InsertDrives(HTREEITEM hParent);
    /// Deletes the data of a row, of all below it and of all that follow it.
    void FreeItemData(HTREEITEM hItem);
};
