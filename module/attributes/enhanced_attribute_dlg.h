// The Enhanced Attribute Editor: values, text options and properties of the attributes of one block reference.
//
//     CEnhancedAttributeDlg dlg(CWnd::FromHandle(adsw_acadMainWnd()));
//     if (dlg.SelectBlock())
//         dlg.DoModal();
//
// Its references and rows are those of CAttributeDlg. Values typed in the list are written by Apply and OK, changes on
// the two pages at once.
#pragma once

#include "attributes/attr_properties_page.h"
#include "attributes/attr_text_options_page.h"
#include "attributes/attribute_dlg.h"
#include "attributes/attribute_list_owner.h"
#include "attributes/edit_list_ctrl.h"
#include "controls/flat_icon_button.h"

class CEnhancedAttributeDlg : public CAttributeDlg, public CAttributeListOwner {
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

    DECLARE_MESSAGE_MAP()

private:
    void ReadReference(AcDbBlockTableRecord* pBlock) override;
    void ReadDefinitions(AcDbBlockTableRecord* pBlock);
    void ReadIntelligentAttributes();
    void ReadPlainAttributes();

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
    CStringArray m_tags;
    CArray<AcDbObjectId> m_attributeIds; ///< with m_values shorter than the prompts where attributes are missing
    bool m_anotherBlock = false;
};

/// The commands "EATTEDIT", "-EATTEDIT", "_EATTEDIT" and "EA": the editor on one reference after the other, as long as
/// the user wants another.
void EditAttributesEnhanced();
