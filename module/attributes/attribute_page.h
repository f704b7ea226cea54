// What the pages of the Enhanced Attribute Editor share: one attribute, which a change is written to at once.
//
// A page is a child of the editor and holds nothing of the attribute but its id. Enter and Escape don't close it.
#pragma once

#include "db/open.h"
#include "db/symbol_table.h"
#include "db/text.h"
#include "mfc/afx.h"

class CAttributePage : public CDialog {
public:
    ~CAttributePage() override;

    /// Shows the attribute m_attributeId. Without one the page is empty and takes nothing.
    virtual void LoadFromAttribute() = 0;

    /// Gives labels that are wider than their place the room at their left.
    void FitLabels();

    BOOL PreTranslateMessage(MSG* pMsg) override;
    void OnOK() override;
    void OnCancel() override;

    AcDbObjectId m_attributeId; ///< the attribute on show; null before the first

protected:
    /// The attribute, which the caller closes; null when it doesn't open or is no text.
    AcDbText* OpenAttributeForWrite();
    /// Calls `change` with the attribute and brings the drawing up to date. False when `change` refuses, and nothing
    /// was written. Without an attribute nothing is done.
    template <class Change>
    bool ChangeAttribute(Change change) {
        AcDbText* const pText = OpenAttributeForWrite();
        if (!pText)
            return true;
        const Acad::ErrorStatus status = change(pText);
        pText->close();
        if (status == Acad::eOk)
            UpdateEditor();
        return status == Acad::eOk;
    }

    /// Greys all controls, or brings them back.
    void EnableControls(bool bEnable);
    /// Fills a combo box with the names of a table's records, their ids as item data, and selects `current`.
    static void FillFromTable(CComboBox& combo, AcDbObjectId tableId, AcDbObjectId current);
    /// The record of the selected row; null for none.
    static AcDbObjectId SelectedRecord(const CComboBox& combo) { return RecordOfRow(combo, combo.GetCurSel()); }

private:
    static void AddRecord(CComboBox& combo, const AcDbSymbolTableIterator& iterator);
    static AcDbObjectId RecordOfRow(const CComboBox& combo, int nRow);
    void UpdateEditor();
};
