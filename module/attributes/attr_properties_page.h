// The face "Properties" of the Enhanced Attribute Editor: layer, linetype, colour and lineweight of one attribute.
#pragma once

#include "attributes/attribute_page.h"
#include "ui/acui.h"

class CAttrPropertiesPage : public CAttributePage {
public:
    ~CAttrPropertiesPage() override;

    void LoadFromAttribute() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnColorChange();
    void OnLayerChange();
    void OnLinetypeChange();
    void OnLineWeightChange();

    DECLARE_MESSAGE_MAP()

private:
    void Clear();
    void FillLayerCombo(AcDbObjectId current);
    void FillLinetypeCombo(AcDbObjectId current);

    CAcUiColorComboBox m_colorCombo;
    CComboBox m_layerCombo;
    CComboBox m_linetypeCombo;
    CAcUiPlotStyleTablesComboBox m_plotStyleCombo; ///< always disabled: the plot style can't be changed here
    CAcUiLineWeightComboBox m_lineWeightCombo;
};
