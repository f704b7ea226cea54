// The combo box of folders of the tab "Dwgs", which drops down a tree. It shows the tree's current row.
#pragma once

#include "palette/shell_tree_ctrl.h"

class CDwgListBox;

class CTreeComboBox : public CComboBox {
public:
    CTreeComboBox();
    ~CTreeComboBox() override;

    /// Makes the tree, hidden. Once, when the combo box has its window.
    void CreateTree();
    /// Makes the tree show that path as the current one. Neither the list of drawings nor the profile changes.
    void SelectPath(CString path);
    void ShowDropDown();

    BOOL PreTranslateMessage(MSG* pMsg) override;
    void DrawItem(LPDRAWITEMSTRUCT lpDrawItem) override;
    void MeasureItem(LPMEASUREITEMSTRUCT lpMeasureItem) override;

    CToolTipCtrl m_toolTip;
    CDwgListBox* m_pListBox = nullptr; ///< not owned
    int m_nIconWidth = 16;             ///< pixels
    CShellTreeCtrl m_tree;

protected:
    void OnLButtonDown(UINT nFlags, CPoint point);
    void OnLButtonDblClk(UINT nFlags, CPoint point);
    void OnDropDown();
    void OnDestroy();
    LRESULT OnTreeItemPicked(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    void ToggleTree();
    BOOL TranslateKey(const MSG& msg);
    void DrawCurrent(CDC& dc, CRect rc, UINT nState);
};
