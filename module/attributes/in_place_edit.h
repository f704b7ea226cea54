// The edit box that lies over a cell of a CEditListCtrl, which is its parent.
#pragma once

#include "mfc/afx.h"

class CEditListCtrl;

class CInPlaceEdit : public CEdit {
public:
    ~CInPlaceEdit() override;

    /// Enter and the arrows up and down move the box from row to row.
    BOOL PreTranslateMessage(MSG* pMsg) override;

    CString m_openingText;       ///< the cell's text when the box opened
    bool m_commitEnabled = true; ///< false while the program sets the text

protected:
    void OnKillFocus(CWnd* pNewWnd);
    /// Writes what the user made of the text into the cell.
    void CommitIfChanged();

    DECLARE_MESSAGE_MAP()

private:
    [[nodiscard]] CEditListCtrl& List() const;
    /// To the next row down (1) or up (-1) that can be edited, around the ends.
    void MoveBy(int nStep);
};
