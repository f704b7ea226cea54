#include "attributes/attr_properties_page.h"

#include "attributes/attribute_access.h"
#include "resources/resource.h"

BEGIN_MESSAGE_MAP(CAttrPropertiesPage, CDialog)
ON_CBN_SELCHANGE(IDC_COLOR, &CAttrPropertiesPage::OnColorChange)
ON_CBN_SELCHANGE(IDC_LAYER, &CAttrPropertiesPage::OnLayerChange)
ON_CBN_SELCHANGE(IDC_LINETYPE, &CAttrPropertiesPage::OnLinetypeChange)
ON_CBN_SELCHANGE(IDC_LINEWEIGHT, &CAttrPropertiesPage::OnLineWeightChange)
END_MESSAGE_MAP()

CAttrPropertiesPage::~CAttrPropertiesPage() = default;

void CAttrPropertiesPage::DoDataExchange(CDataExchange* pDX) {
    CAttributePage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_COLOR, m_colorCombo);
    DDX_Control(pDX, IDC_LAYER, m_layerCombo);
    DDX_Control(pDX, IDC_LINETYPE, m_linetypeCombo);
    DDX_Control(pDX, IDC_PLOT_STYLE, m_plotStyleCombo);
    DDX_Control(pDX, IDC_LINEWEIGHT, m_lineWeightCombo);
}

void CAttrPropertiesPage::LoadFromAttribute() {
    AcDbText* const pText = OpenChecked<AcDbText>(m_attributeId, AcDb::kForRead);
    EnableControls(pText != nullptr);
    m_plotStyleCombo.EnableWindow(FALSE);
    m_plotStyleCombo.SetCurSel(-1);
    if (!pText) {
        Clear();
        return;
    }
    int nColor = m_colorCombo.FindItemByColorIndex(pText->colorIndex());
    if (nColor == -1)
        nColor = m_colorCombo.AddColorToMRU(pText->colorIndex());
    m_colorCombo.SetCurSel(nColor);
    m_lineWeightCombo.SetCurSel(m_lineWeightCombo.FindItemByLineWeight(pText->lineWeight()));
    FillLayerCombo(pText->layerId());
    FillLinetypeCombo(pText->linetypeId());
    pText->close();
}

void CAttrPropertiesPage::Clear() {
    m_colorCombo.SetCurSel(-1);
    m_lineWeightCombo.SetCurSel(-1);
    m_layerCombo.ResetContent();
    m_linetypeCombo.ResetContent();
}

void CAttrPropertiesPage::FillLayerCombo(AcDbObjectId current) {
    if (const AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase())
        FillFromTable(m_layerCombo, pDatabase->layerTableId(), current);
}

void CAttrPropertiesPage::FillLinetypeCombo(AcDbObjectId current) {
    if (const AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase())
        FillFromTable(m_linetypeCombo, pDatabase->linetypeTableId(), current);
}

// Changes.

void CAttrPropertiesPage::OnColorChange() {
    const int nColor = m_colorCombo.GetItemColorIndex(m_colorCombo.GetCurSel());
    ChangeAttribute([nColor](AcDbText* pText) { return pText->setColorIndex(static_cast<short>(nColor)); });
}

void CAttrPropertiesPage::OnLayerChange() {
    const AcDbObjectId id = SelectedRecord(m_layerCombo);
    ChangeAttribute([id](AcDbText* pText) { return pText->setLayer(id); });
}

void CAttrPropertiesPage::OnLinetypeChange() {
    const AcDbObjectId id = SelectedRecord(m_linetypeCombo);
    ChangeAttribute([id](AcDbText* pText) { return pText->setLinetype(id); });
}

void CAttrPropertiesPage::OnLineWeightChange() {
    const AcDb::LineWeight weight = m_lineWeightCombo.GetCurrentItemLineWeight();
    ChangeAttribute([weight](AcDbText* pText) { return pText->setLineWeight(weight); });
}
