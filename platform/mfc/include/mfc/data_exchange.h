// Dialog data exchange: one function for both directions, called from DoDataExchange.
//
//     void CMyDlg::DoDataExchange(CDataExchange* pDX)
//     {
//         CDialog::DoDataExchange(pDX);
//         DDX_Control(pDX, IDC_NAME, m_editName);
//         DDX_Text(pDX, IDC_COUNT, m_nCount);
//         DDV_MinMaxInt(pDX, m_nCount, 1, 99);
//     }
//
// A value that can't be taken is told to the user, the focus goes to its control, and UpdateData answers FALSE.
#pragma once

#include "mfc/exception.h"
#include "mfc/string.h"

class CWnd;

class CDataExchange {
public:
    CDataExchange(CWnd* dialog, BOOL saveAndValidate) : m_bSaveAndValidate(saveAndValidate), m_pDlgWnd(dialog) {}

    BOOL m_bSaveAndValidate; ///< TRUE: from the controls to the members
    CWnd* m_pDlgWnd;
    HWND m_hWndLastControl = nullptr;
    BOOL m_bEditLastControl = FALSE;

    /// Throws CNotSupportedException (a fault of the program) when the dialog has no such control.
    HWND PrepareCtrl(int id);
    HWND PrepareEditCtrl(int id);
    /// Puts the focus on the last control and ends the exchange by a CUserException.
    [[noreturn]] void Fail();
};

/// Makes the object the control's, at the first call.
void DDX_Control(CDataExchange* exchange, int id, CWnd& control);

void DDX_Text(CDataExchange* exchange, int id, CString& value);
void DDX_Text(CDataExchange* exchange, int id, int& value);
void DDX_Text(CDataExchange* exchange, int id, UINT& value);
void DDX_Text(CDataExchange* exchange, int id, double& value);
void DDX_Check(CDataExchange* exchange, int id, int& value);
/// The index of the checked one in the group that begins with `id`; -1 for none.
void DDX_Radio(CDataExchange* exchange, int id, int& value);
void DDX_LBIndex(CDataExchange* exchange, int id, int& index);
void DDX_LBString(CDataExchange* exchange, int id, CString& value);
void DDX_CBIndex(CDataExchange* exchange, int id, int& index);
void DDX_CBString(CDataExchange* exchange, int id, CString& value);

void DDV_MaxChars(CDataExchange* exchange, const CString& value, int count);
void DDV_MinMaxInt(CDataExchange* exchange, int value, int minimum, int maximum);
void DDV_MinMaxUInt(CDataExchange* exchange, UINT value, UINT minimum, UINT maximum);
void DDV_MinMaxDouble(CDataExchange* exchange, const double& value, double minimum, double maximum);
