// The tips that greet the user when the module loads. The text is the module's rich text resource.
#pragma once

#include "mfc/afx.h"

class CGettingStartedDlg : public CDialog {
public:
    explicit CGettingStartedDlg(CWnd* pParent = nullptr);

    BOOL OnInitDialog() override;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    void OnDoNotShow();

    DECLARE_MESSAGE_MAP()

private:
    /// Writes the rich text to "readme.rtf" in the user's temporary folder, over an earlier one, and gives the path. A
    /// missing resource writes nothing. A file that can't be written throws a CFileException.
    static CString WriteReadmeFile();
    void ShowReadme(CFile& file);
    /// The tips straight from the resource, for when the temporary file can't be used.
    void ShowResource();

    CButton m_checkDoNotShow;
    CRichEditCtrl m_richText;
};
