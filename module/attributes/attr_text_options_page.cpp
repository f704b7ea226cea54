#include "attributes/attr_text_options_page.h"

#include "ads/ads.h"
#include "attributes/attribute_access.h"
#include "resources/resource.h"

#include <iterator>

namespace {

using PointSetter = Acad::ErrorStatus (AcDbText::*)(const AcGePoint3d&);

/// A row of the list of justifications.
struct Justification {
    AcDb::TextHorzMode horizontal;
    AcDb::TextVertMode vertical;
    PointSetter setPoint; // null: the row leaves the text's points alone
};

constexpr Justification g_justifications[] = {
    {AcDb::kTextLeft, AcDb::kTextBase, &AcDbText::setPosition},
    {AcDb::kTextAlign, AcDb::kTextBase, &AcDbText::setAlignmentPoint},
    {AcDb::kTextFit, AcDb::kTextBase, &AcDbText::setAlignmentPoint},
    {AcDb::kTextCenter, AcDb::kTextBase, &AcDbText::setAlignmentPoint},
    {AcDb::kTextMid, AcDb::kTextBase, &AcDbText::setAlignmentPoint},
    {AcDb::kTextRight, AcDb::kTextBase, &AcDbText::setAlignmentPoint},
    {AcDb::kTextLeft, AcDb::kTextTop, nullptr},
    {AcDb::kTextCenter, AcDb::kTextTop, nullptr},
    {AcDb::kTextRight, AcDb::kTextTop, nullptr},
    {AcDb::kTextLeft, AcDb::kTextVertMid, nullptr},
    {AcDb::kTextCenter, AcDb::kTextVertMid, nullptr},
    {AcDb::kTextRight, AcDb::kTextVertMid, nullptr},
    {AcDb::kTextLeft, AcDb::kTextBottom, nullptr},
    {AcDb::kTextCenter, AcDb::kTextBottom, nullptr},
    {AcDb::kTextRight, AcDb::kTextBottom, nullptr},
};

/// The row of a text's modes. Aligned, fitted and middle texts have theirs whatever the vertical mode; so have others
/// whose vertical mode is none of the list. -1 for a horizontal mode that no row has.
int JustificationRow(AcDb::TextHorzMode horizontal, AcDb::TextVertMode vertical) {
    const bool bVertical =
        horizontal == AcDb::kTextLeft || horizontal == AcDb::kTextCenter || horizontal == AcDb::kTextRight;
    int nBase = -1;
    for (int nRow = 0; nRow < static_cast<int>(std::size(g_justifications)); ++nRow) {
        const Justification& row = g_justifications[nRow];
        if (row.horizontal != horizontal)
            continue;
        if (row.vertical == AcDb::kTextBase)
            nBase = nRow;
        if (bVertical && row.vertical == vertical)
            return nRow;
    }
    return nBase;
}

} // namespace

/// An edit box, what of the attribute it shows, and in which units.
struct CAttrTextOptionsPage::NumberBox {
    CEdit CAttrTextOptionsPage::*edit;
    double (AcDbText::*get)() const;
    Acad::ErrorStatus (AcDbText::*set)(double);
    CString (*format)(double);
    bool (*parse)(const CString&, double&);
};

const CAttrTextOptionsPage::NumberBox CAttrTextOptionsPage::kHeight = {
    &CAttrTextOptionsPage::m_heightEdit, &AcDbText::height, &AcDbText::setHeight, FormatReal, ParseDistance};
const CAttrTextOptionsPage::NumberBox CAttrTextOptionsPage::kWidthFactor = {
    &CAttrTextOptionsPage::m_widthFactorEdit, &AcDbText::widthFactor, &AcDbText::setWidthFactor, FormatReal,
    ParseDistance};
const CAttrTextOptionsPage::NumberBox CAttrTextOptionsPage::kRotation = {
    &CAttrTextOptionsPage::m_rotationEdit, &AcDbText::rotation, &AcDbText::setRotation, FormatAngle, ParseAngle};
const CAttrTextOptionsPage::NumberBox CAttrTextOptionsPage::kOblique = {
    &CAttrTextOptionsPage::m_obliqueEdit, &AcDbText::oblique, &AcDbText::setOblique, FormatAngle, ParseAngle};

BEGIN_MESSAGE_MAP(CAttrTextOptionsPage, CDialog)
ON_EN_KILLFOCUS(IDC_ROTATION, &CAttrTextOptionsPage::OnRotationLeft)
ON_EN_KILLFOCUS(IDC_HEIGHT, &CAttrTextOptionsPage::OnHeightLeft)
ON_EN_KILLFOCUS(IDC_WIDTH_FACTOR, &CAttrTextOptionsPage::OnWidthFactorLeft)
ON_EN_KILLFOCUS(IDC_OBLIQUE_ANGLE, &CAttrTextOptionsPage::OnObliqueLeft)
ON_BN_CLICKED(IDC_BACKWARDS, &CAttrTextOptionsPage::OnBackwards)
ON_BN_CLICKED(IDC_UPSIDE_DOWN, &CAttrTextOptionsPage::OnUpsideDown)
ON_CBN_SELCHANGE(IDC_TEXT_STYLE, &CAttrTextOptionsPage::OnStyleChange)
ON_CBN_SELCHANGE(IDC_JUSTIFICATION, &CAttrTextOptionsPage::OnJustificationChange)
END_MESSAGE_MAP()

CAttrTextOptionsPage::~CAttrTextOptionsPage() = default;

void CAttrTextOptionsPage::DoDataExchange(CDataExchange* pDX) {
    CAttributePage::DoDataExchange(pDX);
    DDX_Control(pDX, IDC_WIDTH_FACTOR, m_widthFactorEdit);
    DDX_Control(pDX, IDC_UPSIDE_DOWN, m_upsideDownCheck);
    DDX_Control(pDX, IDC_TEXT_STYLE, m_styleCombo);
    DDX_Control(pDX, IDC_ROTATION, m_rotationEdit);
    DDX_Control(pDX, IDC_JUSTIFICATION, m_justifyCombo);
    DDX_Control(pDX, IDC_HEIGHT, m_heightEdit);
    DDX_Control(pDX, IDC_BACKWARDS, m_backwardsCheck);
    DDX_Control(pDX, IDC_OBLIQUE_ANGLE, m_obliqueEdit);
}

void CAttrTextOptionsPage::LoadFromAttribute() {
    AcDbText* const pText = OpenChecked<AcDbText>(m_attributeId, AcDb::kForRead);
    EnableControls(pText != nullptr);
    if (!pText) {
        Clear();
        return;
    }
    for (const NumberBox* pBox : {&kHeight, &kWidthFactor, &kOblique, &kRotation})
        ShowNumber(*pBox, pText);
    m_backwardsCheck.SetCheck(pText->isMirroredInX());
    m_upsideDownCheck.SetCheck(pText->isMirroredInY());
    ShowJustification(pText);
    FillStyleCombo(pText->textStyle());
    pText->close();
}

void CAttrTextOptionsPage::Clear() {
    for (CEdit* pEdit : {&m_heightEdit, &m_widthFactorEdit, &m_obliqueEdit, &m_rotationEdit})
        pEdit->SetWindowText("");
    m_backwardsCheck.SetCheck(BST_UNCHECKED);
    m_upsideDownCheck.SetCheck(BST_UNCHECKED);
    m_justifyCombo.SetCurSel(-1);
    m_styleCombo.ResetContent();
}

void CAttrTextOptionsPage::ShowNumber(const NumberBox& box, const AcDbText* pText) {
    (this->*box.edit).SetWindowText(box.format((pText->*box.get)()));
}

void CAttrTextOptionsPage::ShowJustification(const AcDbText* pText) {
    if (const int nRow = JustificationRow(pText->horizontalMode(), pText->verticalMode()); nRow != -1)
        m_justifyCombo.SetCurSel(nRow);
}

void CAttrTextOptionsPage::FillStyleCombo(AcDbObjectId current) {
    if (const AcDbDatabase* pDatabase = acdbHostApplicationServices()->workingDatabase())
        FillFromTable(m_styleCombo, pDatabase->textStyleTableId(), current);
}

// Changes.

void CAttrTextOptionsPage::TakeNumber(const NumberBox& box) {
    CString strText;
    (this->*box.edit).GetWindowText(strText);
    double dValue = 0;
    if (box.parse(strText, dValue) && ChangeAttribute([&](AcDbText* pText) { return (pText->*box.set)(dValue); }))
        return;
    if (AcDbText* const pText = OpenChecked<AcDbText>(m_attributeId, AcDb::kForRead)) {
        ShowNumber(box, pText);
        pText->close();
    }
}

void CAttrTextOptionsPage::OnRotationLeft() { TakeNumber(kRotation); }

void CAttrTextOptionsPage::OnHeightLeft() { TakeNumber(kHeight); }

void CAttrTextOptionsPage::OnWidthFactorLeft() { TakeNumber(kWidthFactor); }

void CAttrTextOptionsPage::OnObliqueLeft() { TakeNumber(kOblique); }

void CAttrTextOptionsPage::OnBackwards() {
    const bool bChecked = m_backwardsCheck.GetCheck() == BST_CHECKED;
    ChangeAttribute([bChecked](AcDbText* pText) { return pText->mirrorInX(bChecked); });
}

void CAttrTextOptionsPage::OnUpsideDown() {
    const bool bChecked = m_upsideDownCheck.GetCheck() == BST_CHECKED;
    ChangeAttribute([bChecked](AcDbText* pText) { return pText->mirrorInY(bChecked); });
}

void CAttrTextOptionsPage::OnStyleChange() {
    const AcDbObjectId id = SelectedRecord(m_styleCombo);
    ChangeAttribute([id](AcDbText* pText) { return pText->setTextStyle(id); });
}

void CAttrTextOptionsPage::OnJustificationChange() {
    const int nRow = m_justifyCombo.GetCurSel();
    ChangeAttribute([nRow](AcDbText* pText) {
        ApplyJustification(nRow, pText, pText->position());
        return Acad::eOk;
    });
}

void CAttrTextOptionsPage::ApplyJustification(int nRow, AcDbText* pText, const AcGePoint3d& point) {
    if (nRow >= 0 && nRow < static_cast<int>(std::size(g_justifications))) {
        const Justification& row = g_justifications[nRow];
        pText->setHorizontalMode(row.horizontal);
        pText->setVerticalMode(row.vertical);
        if (row.setPoint)
            (pText->*row.setPoint)(point);
    }
    pText->adjustAlignment(acdbHostApplicationServices()->workingDatabase());
}

// Numbers as text.

CString CAttrTextOptionsPage::FormatReal(double dValue) {
    char text[128];
    return acdbRToS(dValue, -1, -1, text) == RTNORM ? CString(text) : CString();
}

CString CAttrTextOptionsPage::FormatAngle(double dRadians) {
    char text[512];
    return acdbAngToS(dRadians, -1, -1, text) == RTNORM ? CString(text) : CString();
}

bool CAttrTextOptionsPage::ParseDistance(const CString& strText, double& dValue) {
    return acdbDisToF(strText, -1, &dValue) == RTNORM;
}

bool CAttrTextOptionsPage::ParseAngle(const CString& strText, double& dRadians) {
    return acdbAngToF(strText, -1, &dRadians) == RTNORM;
}
