// An edit box for a distance in the units of the drawing. It refuses characters that no distance holds, knows its value
// while the user types, and writes its text anew, as the drawing would, when it is left. A text that is no distance
// gives way to the last good one.
//
//     m_lengthEdit.SubclassDlgItem(IDC_LENGTH, this);
//     m_lengthEdit.SetUp(CDistanceEdit::CharsOfUnits(), "Length of the wall");
#pragma once

#include "mfc/afx.h"

class CDistanceEdit : public CEdit {
public:
    ~CDistanceEdit() override;

    /// Which characters may be typed, and the tool tip's text. REQUIRES: the window exists.
    void SetUp(const CString& strValidChars, const CString& strToolTip);
    /// The characters of a distance in the present units of the drawing.
    static CString CharsOfUnits();

    /// The text's value; that of the last good text where it has none, and 0 for an empty box.
    [[nodiscard]] double CurrentValue() const;
    /// The same as of the last key.
    [[nodiscard]] double Value() const { return m_value; }

    BOOL PreTranslateMessage(MSG* pMsg) override;

protected:
    void OnChar(UINT nChar, UINT nRepCnt, UINT nFlags);
    void OnEnterBox();
    void OnLeaveBox();
    void OnDestroy();

    DECLARE_MESSAGE_MAP()

private:
    CString m_validChars; ///< besides Backspace, which is always taken
    double m_value = 0;
    CToolTipCtrl m_toolTip;
    CString m_lastGoodText;
};
