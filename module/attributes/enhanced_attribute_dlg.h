// The Enhanced Attribute Editor: values, text options and properties of the attributes of one block reference.
//
//     CEnhancedAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
//     if (dlg.SelectBlock())
//         dlg.DoModal();
//
// It works on references whose class is exactly AcDbBlockReference or VNDKBlockReference. Row r pairs the r-th
// definition of the block that isn't constant with the r-th attribute of the reference that isn't constant. Values
// typed in the list are written by Apply and OK, changes on the two pages at once. No object stays open while the
// dialog is on the screen.
#pragma once

#include "attributes/attr_properties_page.h"
#include "attributes/attr_text_options_page.h"
#include "attributes/attribute_list_owner.h"
#include "attributes/edit_list_ctrl.h"
#include "controls/flat_icon_button.h"
#include "db/block_table.h"
#include "objects/block_reference.h"

class CEnhancedAttributeDlg : public CDialog, public CAttributeListOwner {
public:
    explicit CEnhancedAttributeDlg(CWnd* pParent);
    ~CEnhancedAttributeDlg() override;

    /// Asks for a block reference and reads its rows. True when there is a row, and the dialog may then be run.
    bool SelectBlock();
    /// True after DoModal when the user wants to go on with another block.
    [[nodiscard]] bool WantsAnotherBlock() const { return m_anotherBlock; }

    /// Brings tag and pages to a row.
    void ShowRow(int nRow) override;
    void EnableApply() override { m_btnApply.EnableWindow(TRUE); }
    /// Shows the drawing as it is now. Then there is something to apply, or nothing.
    void UpdateBlockGraphics(bool bEnableApply);

    BOOL OnInitDialog() override;
    void OnOK() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnTabChange(NMHDR* pNMHDR, LRESULT* pResult);
    void OnApply();
    void OnSelectBlock();
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

private:
    bool ReadReference();
    void ReadDefinitions(AcDbBlockTableRecord* pBlock);
    void ReadIntelligentAttributes();
    void ReadPlainAttributes();
    void CloseReference();

    void InitList();
    void PlacePages();
    [[nodiscard]] bool HasAttribute(int nRow) const { return nRow < m_attributeIds.GetSize(); }

    /// Writes the list's values. False when the reference doesn't open; an attribute that doesn't is passed over.
    bool CommitAttributes();
    bool WriteReference();
    void WriteValue(int nRow);

    CButton m_btnApply;
    CEditListCtrl m_list;
    CFlatIconButton m_btnSelectBlock;
    CTabCtrl m_tabCtrl;
    CString m_blockName;
    CString m_tagName;
    CAttrPropertiesPage m_pageProperties;
    CAttrTextOptionsPage m_pageTextOptions;
    HICON m_hIcon = nullptr;
    CStringArray m_prompts;
    CStringArray m_tags;
    CStringArray m_values; ///< as read; like the next two it is shorter than the prompts where attributes are missing
    CArray<int> m_fieldLengths;
    CArray<AcDbObjectId> m_attributeIds;
    ads_name m_entName{};
    AcDbBlockReference* m_pBlockRef = nullptr;       ///< a plain reference, while it is open
    VNDKBlockReference* m_pIntelligentRef = nullptr; ///< an Intelligent Block's, while it is open
    bool m_anotherBlock = false;
};

/// The commands "EATTEDIT", "-EATTEDIT", "_EATTEDIT" and "EA": the editor on one reference after the other, as long as
/// the user wants another.
void EditAttributesEnhanced();
