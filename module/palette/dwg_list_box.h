// The list of the tab "Dwgs": the folders of a folder of the disk, then its drawings with their thumbnails.
//
// A row's item data tells its kind: 0 a folder, 1 a drawing. Folders stand before drawings; both are in the order of
// their names in small letters, by bytes. A click goes into a folder; a double click inserts a drawing.
#pragma once

#include "mfc/afx.h"

class CDirectoryScanner;
class CTreeComboBox;

class CDwgListBox : public CListBox {
public:
    CDwgListBox();
    ~CDwgListBox() override;

    /// Shows that folder, which is read anew. A folder that is empty, doesn't exist or can't be read shows as an empty
    /// list.
    void FillList(CString folder);
    /// Shows the folder above; from a drive without a closing backslash, and from nothing, an empty list.
    void UpOneLevel();
    /// Makes the images of folder rows. Once.
    void LoadImages();
    /// What a double click does, on the row in m_nHitIndex: goes into the folder, or asks for a point and has the host
    /// insert the drawing there.
    void ActivateRow();
    /// The row under a point of the client area; -1 if there is none.
    int HitTestRow(POINT pt) const;
    /// Of the rows of drawings.
    void SetItemHeights(int height);
    /// Gives the rows of drawings the height that keeps the proportion of the pictures, as long as they are shown. 0
    /// stands for the width of the client area.
    void FitItemHeight(int width);
    void FreeEntries();

    BOOL OnCmdMsg(UINT nID, int nCode, void* pExtra, void* pHandlerInfo) override;
    BOOL PreTranslateMessage(MSG* pMsg) override;
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItem) override;

    CObList m_listEntries; ///< owned: a CDwgThumbnail for each row, in the order in which the rows were made
    int m_nItemHeight = 159;
    int m_nHitIndex = -1; ///< the row on which the last double click or command acted
    CToolTipCtrl m_toolTip;
    CImageList m_images;
    CString m_strDirectory;            ///< the folder on show, as it was given
    CTreeComboBox* m_pCombo = nullptr; ///< not owned
    int m_bShowPreviews = 1;

protected:
    void OnUpdateCommand(CCmdUI* pCmdUI);
    void OnDestroy();
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonDblClk(UINT nFlags, CPoint point);
    void OnRButtonDown(UINT nFlags, CPoint point);
    void OnRButtonUp(UINT nFlags, CPoint point);
    void OnContextMenu(CWnd* pWnd, CPoint point);
    void OnSize(UINT nType, int cx, int cy);
    void OnPreview();
    void OnOpenDrawing();
    void OnInsertXref();
    void OnInsertBlock();
    void OnShowPreviews();

    DECLARE_MESSAGE_MAP()

private:
    /// The row before which a name belongs among the rows from `nFirst` on, which are in order; -1: at the end.
    int FindPlace(int nFirst, const CString& strName) const;
    void FillFolders(const CDirectoryScanner& scanner);
    void FillDrawings(const CDirectoryScanner& scanner);
    void SwitchPreviews(int bShow);
    void GoToFolder(CString path);
    [[nodiscard]] CString RowText(int nRow) const;
    [[nodiscard]] CString RowPath(int nRow) const;
    /// Takes the selected row into m_nHitIndex. FALSE without one.
    BOOL TakeSelectedRow();
    [[nodiscard]] BOOL IsDrawing(int nRow) const;

    void DrawRow(CDC& dc, const CRect& rc, int nRow, COLORREF textColor);
    void DrawThumbnail(CDC& dc, const CRect& rc, const CString& strName, int nTextHeight);

    int m_nSizes = 0; ///< how often WM_SIZE came
};
