#include "mfc/file_dialog.h"

#include "mfc/message_map.h"
#include "mfc/winapp.h"

#include <algorithm>
#include <string>

IMPLEMENT_DYNAMIC(CFileDialog, CDialog)

CFileDialog::CFileDialog(BOOL openFileDialog, LPCSTR defExt, LPCSTR fileName, DWORD flags, LPCSTR filter, CWnd* parent)
    : m_pAsked(parent), m_bOpenFileDialog(openFileDialog), m_extension(defExt) {
    m_ofn.lStructSize = sizeof m_ofn;
    m_ofn.Flags = flags | OFN_EXPLORER;
    m_ofn.lpstrDefExt = defExt != nullptr ? static_cast<LPCSTR>(m_extension) : nullptr;
    m_ofn.lpstrFile = m_path.data();
    m_ofn.nMaxFile = static_cast<DWORD>(m_path.size());
    const std::string_view name = fileName != nullptr ? fileName : "";
    std::copy_n(name.data(), std::min(name.size(), m_path.size() - 1), m_path.begin());
    // The platform's form of a filter: what bars close here, NULs close there.
    if (filter != nullptr) {
        std::string closed = filter;
        std::replace(closed.begin(), closed.end(), '|', '\0');
        m_filter = CString(std::string_view(closed));
        m_ofn.lpstrFilter = m_filter;
    }
}

int CFileDialog::DoModal() {
    CWnd* const owner = m_pAsked != nullptr ? m_pAsked : AfxGetMainWnd();
    m_ofn.hwndOwner = owner != nullptr ? owner->m_hWnd : nullptr;
    const BOOL chosen = m_bOpenFileDialog != FALSE ? ::GetOpenFileNameA(&m_ofn) : ::GetSaveFileNameA(&m_ofn);
    return chosen != FALSE ? IDOK : IDCANCEL;
}
