// What the two attribute dialogs share: the block reference that they work on, its rows, and the icon in the caption.
//
// They work on references whose class is exactly AcDbBlockReference or VNDKBlockReference. Row r pairs the r-th
// definition of the block that isn't constant with the r-th attribute of the reference that isn't constant. No object
// stays open while the dialog is on the screen: the reference is reached again through its name.
#pragma once

#include "db/block_reference.h"
#include "db/block_table.h"
#include "mfc/afx.h"
#include "objects/block_reference.h"

class CAttributeDlg : public CDialog {
public:
    CAttributeDlg(UINT nTemplateId, CWnd* pParent);
    ~CAttributeDlg() override;

    BOOL OnInitDialog() override;

protected:
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

protected:
    /// Asks until a block reference is picked, which is then open for read. False: nothing is open.
    bool PickReference();
    /// Works on a reference that is open.
    void TakeReference(AcDbBlockReference* pReference);
    /// Reads the rows of the open reference and closes it, whatever comes of it. True when there is a row.
    bool ReadRows();
    /// Opens the reference for write. Null, and nothing is open, when that can't be done.
    AcDbBlockReference* OpenReference();
    void CloseReference();
    static void FlushGraphics();

    AcDbBlockReference* m_pBlockRef = nullptr;       ///< a plain reference, while it is open
    VNDKBlockReference* m_pIntelligentRef = nullptr; ///< an Intelligent Block's, while it is open
    CStringArray m_prompts;
    CStringArray m_values; ///< as read
    CArray<int> m_fieldLengths;
    ads_name m_entName{};

private:
    /// Reads what is wanted of the open reference and its block.
    virtual void ReadReference(AcDbBlockTableRecord* pBlock) = 0;

    HICON m_hIcon = nullptr;
};
