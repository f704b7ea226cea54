// The plain attribute dialog: prompts and values of one block reference, and OK. Nothing is written before OK.
//
//     CEditAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
//     if (dlg.SelectBlock(nullptr))
//         dlg.DoModal();
//
// Its references and rows are those of CAttributeDlg.
#pragma once

#include "attributes/attribute_dlg.h"
#include "attributes/edit_list_ctrl.h"

class CEditAttributeDlg : public CAttributeDlg {
public:
    explicit CEditAttributeDlg(CWnd* pParent);
    ~CEditAttributeDlg() override;

    /// Reads the rows of a reference that is given open, or with null of one that the user picks. A reference that is
    /// given is closed, whatever comes of it. True when there is a row, and the dialog may then be run.
    bool SelectBlock(VNDKBlockReference* pRef);

    BOOL OnInitDialog() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnOK() override;
    void OnListNotify(NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()

private:
    void ReadReference(AcDbBlockTableRecord* pBlock) override;
    void ReadDefinitions(AcDbBlockTableRecord* pBlock);
    void ReadIntelligentValues();
    void ReadPlainValues();
    void SetValue(int nRow, char* pszValue);

    /// Writes the list's values. False when the reference, or an attribute of an Intelligent Block, doesn't open.
    bool CommitAttributes();
    bool WriteReference();
    bool WriteIntelligentValues();
    void WritePlainValues();
    [[nodiscard]] bool HasRow(int nRow) const { return nRow < m_prompts.GetSize(); }

    CEditListCtrl m_list;
    CString m_blockLabel;
};

/// The commands "DDATTE" and "DDATTE2": the dialog on a reference that the user picks.
void EditAttributes();
/// The LISP function "c:ddatte": the same. Gives no value.
int EditAttributesFunction();
