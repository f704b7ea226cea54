// The host's combo boxes for properties: colours, lineweights, plot style tables.
//
//     DDX_Control(pDX, IDC_COLOR, m_colorCombo);
//     m_colorCombo.SetCurSel(m_colorCombo.FindItemByColorIndex(pEntity->colorIndex()));
//
// Each takes over a combo box of a dialog template (CBS_DROPDOWNLIST, CBS_OWNERDRAWFIXED, CBS_HASSTRINGS) and fills it.
// The rows stand in an order of their own, also under CBS_SORT. Rows count from 0, CB_ERR is none. The dialog gets the
// notifications of any combo box; what is selected by program isn't notified.
#pragma once

#include "db/entity.h"
#include "mfc/controls.h"

class CDC;

/// Rows with a picture before the text, and a number behind both.
class CAcUiComboBox : public CComboBox {
    DECLARE_DYNAMIC(CAcUiComboBox)

public:
    void PreSubclassWindow() override;
    void DrawItem(LPDRAWITEMSTRUCT pDraw) override;

protected:
    /// Fills the list; called once, when the control is taken over.
    virtual void AddItems() {}
    /// How wide the pictures are, in pixels; 0 for rows without.
    [[nodiscard]] virtual int ImageWidth() const { return 0; }
    virtual void DrawItemImage(CDC& /*dc*/, const CRect& /*rect*/, int /*cargo*/, COLORREF /*textColor*/) {}

    /// The row's index. `before`: -1 for the end.
    int AddItem(LPCSTR text, int cargo, int before = -1);
    [[nodiscard]] int FindItemByCargo(int cargo) const;
    /// `none` for a row that doesn't exist.
    [[nodiscard]] int GetItemCargo(int item, int none) const;
    /// Makes the list as wide as its longest row.
    void FitDroppedWidth();
};

/// "ByLayer", "ByBlock", the seven named colours, those used recently, and "Select Color...", which asks for one by
/// acedSetColorDialog. A colour that was chosen there counts as used, and is kept in the user's profile.
class CAcUiColorComboBox : public CAcUiComboBox {
    DECLARE_DYNAMIC(CAcUiColorComboBox)

public:
    /// `color`: an index, 0 ByBlock, 256 ByLayer.
    [[nodiscard]] int FindItemByColorIndex(int color) const { return FindItemByCargo(color); }
    /// -1 for a row that is no colour.
    [[nodiscard]] int GetItemColorIndex(int item) const;
    /// Shows a colour among those used recently, of which the oldest goes. The row; that of a colour that is listed
    /// already, CB_ERR for what is no colour.
    int AddColorToMRU(int color);

protected:
    void AddItems() override;
    [[nodiscard]] int ImageWidth() const override;
    void DrawItemImage(CDC& dc, const CRect& rect, int cargo, COLORREF textColor) override;
    BOOL OnSelChange();
    BOOL OnSelEndOk();
    LRESULT OnSetCurSel(WPARAM wParam, LPARAM lParam);
    LRESULT OnSelectColor(WPARAM wParam, LPARAM lParam);

    DECLARE_MESSAGE_MAP()

private:
    int m_shown = CB_ERR; ///< the row to go back to when no colour is chosen
};

/// "ByLayer", "ByBlock", "Default" and the widths that lines can have, each with a line as wide as it says.
class CAcUiLineWeightComboBox : public CAcUiComboBox {
    DECLARE_DYNAMIC(CAcUiLineWeightComboBox)

public:
    [[nodiscard]] int FindItemByLineWeight(AcDb::LineWeight weight) const { return FindItemByCargo(weight); }
    /// ByLayer where there is none.
    [[nodiscard]] AcDb::LineWeight GetItemLineWeight(int item) const;
    [[nodiscard]] AcDb::LineWeight GetCurrentItemLineWeight() const { return GetItemLineWeight(GetCurSel()); }

protected:
    void AddItems() override;
    [[nodiscard]] int ImageWidth() const override;
    void DrawItemImage(CDC& dc, const CRect& rect, int cargo, COLORREF textColor) override;
};

/// The tables of plot styles. The host doesn't plot and has none: one row, "None".
class CAcUiPlotStyleTablesComboBox : public CAcUiComboBox {
    DECLARE_DYNAMIC(CAcUiPlotStyleTablesComboBox)

protected:
    void AddItems() override;
};
