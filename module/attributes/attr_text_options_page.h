// The face "Text Options" of the Enhanced Attribute Editor: style, justification, size and angles of one attribute.
// Numbers and angles are shown and read in the units of the drawing.
#pragma once

#include "attributes/attribute_page.h"

class CAttrTextOptionsPage : public CAttributePage {
public:
    ~CAttrTextOptionsPage() override;

    void LoadFromAttribute() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnRotationLeft();
    void OnHeightLeft();
    void OnWidthFactorLeft();
    void OnObliqueLeft();
    void OnBackwards();
    void OnUpsideDown();
    void OnStyleChange();
    void OnJustificationChange();

    DECLARE_MESSAGE_MAP()

private:
    struct NumberBox;
    static const NumberBox kHeight, kWidthFactor, kRotation, kOblique;

    void Clear();
    void ShowNumber(const NumberBox& box, const AcDbText* pText);
    /// Writes what stands in the box. What is no number, or none that the attribute takes, gives way to its present
    /// value.
    void TakeNumber(const NumberBox& box);
    void ShowJustification(const AcDbText* pText);
    void FillStyleCombo(AcDbObjectId current);

    // In the drawing's present units. Empty when the number has no text.
    static CString FormatReal(double dValue);
    static CString FormatAngle(double dRadians);
    // False when the text is none, and the value is left alone.
    static bool ParseDistance(const CString& strText, double& dValue);
    static bool ParseAngle(const CString& strText, double& dRadians);

    /// Sets the modes of a row of the list and, for the rows that have one, the point. Texts of the last nine rows
    /// keep their alignment point.
    static void ApplyJustification(int nRow, AcDbText* pText, const AcGePoint3d& point);

    CEdit m_widthFactorEdit;
    CButton m_upsideDownCheck;
    CComboBox m_styleCombo;
    CEdit m_rotationEdit;
    CComboBox m_justifyCombo;
    CEdit m_heightEdit;
    CButton m_backwardsCheck;
    CEdit m_obliqueEdit;
};
