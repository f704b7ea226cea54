#include "palette/directory_scanner.h"

namespace {

/// A search of the system's, closed at its end.
class CFileSearch {
public:
    explicit CFileSearch(const CString& pattern) : m_hSearch(::FindFirstFileA(pattern, &m_data)) {}
    ~CFileSearch() {
        if (m_hSearch != INVALID_HANDLE_VALUE)
            ::FindClose(m_hSearch);
    }
    CFileSearch(const CFileSearch&) = delete;
    CFileSearch& operator=(const CFileSearch&) = delete;

    [[nodiscard]] bool Found() const { return m_hSearch != INVALID_HANDLE_VALUE; }
    bool Next() { return ::FindNextFileA(m_hSearch, &m_data) != FALSE; }

    [[nodiscard]] bool IsFolder() const { return (m_data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0; }
    [[nodiscard]] bool IsNamed(const char* name) const { return std::string_view(m_data.cFileName) == name; }
    [[nodiscard]] const WIN32_FIND_DATAA& Data() const { return m_data; }

private:
    WIN32_FIND_DATAA m_data{};
    HANDLE m_hSearch;
};

std::uint64_t LongNumber(DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; }

} // namespace

void CDirectoryScanner::TrimTrailingSeparators(CString& path) {
    for (;;) {
        CString copy = path;
        copy.TrimRight();
        int i = copy.ReverseFind('\\');
        if (i < 0)
            i = copy.ReverseFind('/');
        if (i < 0 || i != copy.GetLength() - 1)
            return;
        path = copy.Left(i);
    }
}

bool CDirectoryScanner::ScanFolders(const char* path, bool listSubfolders) {
    m_strRoot = path;
    TrimTrailingSeparators(m_strRoot);
    if (m_strRoot.IsEmpty())
        return false;
    if (listSubfolders)
        ListSubfolders(m_folders, m_strRoot);
    m_folders.push_back(m_strRoot);
    return true;
}

bool CDirectoryScanner::ScanFiles(const char* mask, bool includeFiles, bool includeFolders) {
    return ListMatching(m_strRoot, mask, includeFiles, includeFolders) != 0;
}

bool CDirectoryScanner::ClearFolders() {
    m_folders.clear();
    return true;
}

bool CDirectoryScanner::ClearFiles() {
    m_files.clear();
    return true;
}

bool CDirectoryScanner::ListSubfolders(std::vector<CString>& folders, const char* path) {
    try {
        CFileSearch search(CString(path) + "\\*.");
        for (bool more = search.Found(); more; more = search.Next())
            if (search.IsFolder() && !search.IsNamed(".") && !search.IsNamed(".."))
                folders.push_back(CString(path) + "\\" + search.Data().cFileName);
        return true;
    } catch (...) {
        return false;
    }
}

int CDirectoryScanner::ListMatching(const CString& path, const CString& mask, bool includeFiles, bool includeFolders) {
    try {
        CString folder = path;
        TrimTrailingSeparators(folder);
        folder += '\\';
        CFileSearch search(folder + mask);
        for (bool more = search.Found(); more; more = search.Next()) {
            const bool isFolder = search.IsFolder();
            if ((isFolder && search.IsNamed(".")) || search.IsNamed(".."))
                continue;
            if (isFolder ? !includeFolders : !includeFiles)
                continue;
            const WIN32_FIND_DATAA& data = search.Data();
            m_files.push_back({folder + data.cFileName, isFolder, data.dwFileAttributes, data.ftCreationTime,
                               data.ftLastWriteTime, LongNumber(data.nFileSizeHigh, data.nFileSizeLow)});
        }
        return 1;
    } catch (...) {
        return 0;
    }
}
