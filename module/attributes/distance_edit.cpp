#include "attributes/distance_edit.h"

#include "ads/ads.h"

namespace {

constexpr UINT_PTR kToolId = 1;
constexpr UINT kDefaultBeep = static_cast<UINT>(-1);

enum LinearUnits { kScientific = 1, kDecimal, kEngineering, kArchitectural, kFractional };

bool ParseDistance(const CString& strText, double& dValue) { return acdbDisToF(strText, -1, &dValue) == RTNORM; }

} // namespace

BEGIN_MESSAGE_MAP(CDistanceEdit, CEdit)
ON_WM_CHAR()
ON_WM_DESTROY()
ON_CONTROL_REFLECT(EN_SETFOCUS, &CDistanceEdit::OnEnterBox)
ON_CONTROL_REFLECT(EN_KILLFOCUS, &CDistanceEdit::OnLeaveBox)
END_MESSAGE_MAP()

CDistanceEdit::~CDistanceEdit() = default;

void CDistanceEdit::SetUp(const CString& strValidChars, const CString& strToolTip) {
    m_validChars = strValidChars;
    if (m_toolTip.GetSafeHwnd()) {
        m_toolTip.UpdateTipText(strToolTip, this, kToolId);
        return;
    }
    m_toolTip.Create(this);
    CRect rect;
    GetClientRect(rect);
    m_toolTip.AddTool(this, strToolTip, rect, kToolId);
}

CString CDistanceEdit::CharsOfUnits() {
    CString strNumber = "0123456789.+-";
    resbuf units{};
    if (acedGetVar("LUNITS", &units) != RTNORM)
        return strNumber;
    switch (units.resval.rint) {
    case kScientific:
        return strNumber + "Ee";
    case kEngineering:
        return strNumber + " '\"";
    case kArchitectural:
        return strNumber + " '\"/";
    case kFractional:
        return strNumber + " /";
    default:
        return strNumber;
    }
}

double CDistanceEdit::CurrentValue() const {
    CString strText;
    GetWindowText(strText);
    double dValue = 0;
    if (strText.IsEmpty() || (!ParseDistance(strText, dValue) && !ParseDistance(m_lastGoodText, dValue)))
        return 0;
    return dValue;
}

BOOL CDistanceEdit::PreTranslateMessage(MSG* pMsg) {
    if (m_toolTip.GetSafeHwnd())
        m_toolTip.RelayEvent(pMsg);
    return CEdit::PreTranslateMessage(pMsg);
}

void CDistanceEdit::OnChar(UINT nChar, UINT nRepCnt, UINT nFlags) {
    if (nChar != VK_BACK && m_validChars.Find(static_cast<char>(nChar)) == -1) {
        ::MessageBeep(kDefaultBeep);
        return;
    }
    CEdit::OnChar(nChar, nRepCnt, nFlags);
    m_value = CurrentValue();
}

void CDistanceEdit::OnEnterBox() {
    SendMessage(EM_SETSEL, 0, GetWindowTextLength() + 1);
    SendMessage(EM_SCROLLCARET);
}

void CDistanceEdit::OnLeaveBox() {
    CString strText;
    GetWindowText(strText);
    if (strText.IsEmpty())
        return;
    double dValue = 0;
    bool bNumber = ParseDistance(strText, dValue);
    if (bNumber)
        m_lastGoodText = strText;
    else
        bNumber = ParseDistance(m_lastGoodText, dValue);
    char text[256];
    if (bNumber && acdbRToS(dValue, -1, -1, text) == RTNORM)
        m_lastGoodText = text;
    SetWindowText(m_lastGoodText);
}

void CDistanceEdit::OnDestroy() {
    if (m_toolTip.GetSafeHwnd())
        m_toolTip.DelTool(this, kToolId);
    CWnd::OnDestroy();
}
