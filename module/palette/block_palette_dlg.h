// The dialog inside the dock bar: the tabs "Dwgs" and "Blocks" with their lists, the folder combo and two buttons.
//
// A third page, of grips, takes part in layout and switching, but no tab leads to it.
#pragma once

#include "controls/flat_icon_button.h"
#include "frame/palette_views.h"
#include "palette/block_icon_list.h"
#include "palette/dwg_list_box.h"
#include "palette/tree_combo_box.h"

class CPreviewDlg;

class CBlockPaletteDlg : public CDialog, public CPaletteView {
public:
    explicit CBlockPaletteDlg(CWnd* pParent = nullptr);
    ~CBlockPaletteDlg() override;

    void SelectTab(int nTab) override;
    void ShowActivePage() override;
    /// Shows the selected drawing or block in a window of its own, one at a time, and returns when that has closed.
    void OnPreview();

    CFlatIconButton m_btnUpLevel;
    CFlatIconButton m_btnPreview;
    CBlockIconList m_listBlocks;
    CListCtrl m_listGrips;
    CDwgListBox m_listDwgs;
    CTreeComboBox m_comboFolders;
    CTabCtrl m_tabs;
    CImageList m_gripImages;              ///< no list uses it
    CPreviewDlg* m_pPreviewDlg = nullptr; ///< owned; while it runs

    BOOL OnInitDialog() override;
    /// Enter in a list, which would close the dialog.
    void OnOK() override;
    /// Leaves the dialog open and hides the folder tree.
    void OnCancel() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnUpdateCommand(CCmdUI* pCmdUI);
    void OnSize(UINT nType, int cx, int cy);
    void OnDestroy();
    void OnSelchangeTab(NMHDR* pNMHDR, LRESULT* pResult);
    void OnClickGripList(NMHDR* pNMHDR, LRESULT* pResult);
    void OnDblclkGripList(NMHDR* pNMHDR, LRESULT* pResult);
    void OnDblclkBlockList(NMHDR* pNMHDR, LRESULT* pResult);
    void OnUpOneLevel();

    DECLARE_MESSAGE_MAP()

private:
    void AddGripItem(LPCSTR pszText);
    /// The drawing is drawn anew, and the host told to refresh what depends on the grip page.
    void RegenerateGrips();
    void LeaveGripPage();
    /// The preview of what is selected on that page, or null.
    CPreviewDlg* NewDrawingPreview();
    CPreviewDlg* NewBlockPreview();
};
