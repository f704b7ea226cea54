// CFileDialog: the common dialog for the name of a file.
//
//     CFileDialog dialog(TRUE, "dwg", nullptr, OFN_FILEMUSTEXIST, "Drawings (*.dwg)|*.dwg||", this);
//     if (dialog.DoModal() == IDOK)
//         open(dialog.GetPathName());
#pragma once

#include "mfc/dialog.h"
#include "win32/commdlg.h"

#include <array>

class CFileDialog : public CDialog {
    DECLARE_DYNAMIC(CFileDialog)

public:
    /// `filter`: texts and masks, each closed by a bar, one more at the end. The parent may be null: the main window.
    explicit CFileDialog(BOOL openFileDialog, LPCSTR defExt = nullptr, LPCSTR fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT, LPCSTR filter = nullptr,
                         CWnd* parent = nullptr);

    int DoModal() override;
    /// In full, with drive letter.
    [[nodiscard]] CString GetPathName() const { return {m_path.data()}; }
    /// Without its folder.
    [[nodiscard]] CString GetFileName() const { return {m_path.data() + m_ofn.nFileOffset}; }

    OPENFILENAME m_ofn{};

private:
    CWnd* m_pAsked = nullptr; // the parent that was given; not owned
    BOOL m_bOpenFileDialog;
    CString m_filter;
    CString m_extension;
    std::array<char, MAX_PATH> m_path{};
};
