// The plain attribute dialog: prompts and values of one block reference, and OK. Nothing is written before OK.
//
//     CEditAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
//     if (dlg.SelectBlock(nullptr))
//         dlg.DoModal();
//
// It works on references whose class is exactly AcDbBlockReference or VNDKBlockReference. Row r pairs the r-th
// definition of the block that isn't constant with the r-th attribute of the reference that isn't constant. No object
// stays open while the dialog is on the screen.
#pragma once

#include "attributes/edit_list_ctrl.h"
#include "db/block_reference.h"
#include "db/block_table.h"
#include "objects/block_reference.h"

class CEditAttributeDlg : public CDialog {
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
    void OnDestroy();
    void OnListNotify(NMHDR* pNMHDR, LRESULT* pResult);

    DECLARE_MESSAGE_MAP()

private:
    /// Asks until a block reference is picked, which is then open for read. False: nothing is open.
    bool PickReference();
    bool ReadReference();
    void ReadDefinitions(AcDbBlockTableRecord* pBlock);
    void ReadIntelligentValues();
    void ReadPlainValues();
    void SetValue(int nRow, char* pszValue);
    void CloseReference();

    /// Writes the list's values. False when the reference, or an attribute of an Intelligent Block, doesn't open.
    bool CommitAttributes();
    bool WriteReference();
    bool WriteIntelligentValues();
    void WritePlainValues();
    [[nodiscard]] bool HasRow(int nRow) const { return nRow < m_prompts.GetSize(); }

    CEditListCtrl m_list;
    CString m_blockLabel;
    AcDbBlockReference* m_pBlockRef = nullptr;       ///< a plain reference, while it is open
    VNDKBlockReference* m_pIntelligentRef = nullptr; ///< an Intelligent Block's, while it is open
    HICON m_hIcon = nullptr;
    CStringArray m_prompts;
    CStringArray m_values;
    CArray<int> m_fieldLengths;
    ads_name m_entName{};
};

/// The commands "DDATTE" and "DDATTE2": the dialog on a reference that the user picks.
void EditAttributes();
/// The LISP function "c:ddatte": the same. Gives no value.
int EditAttributesFunction();
