// What one folder of the disk holds: its sub-folders, and the entries that match a mask. One level only.
//
//     CDirectoryScanner scanner;
//     if (scanner.ScanFolders("C:\\dwg", true) && scanner.ScanFiles("*.dwg", true, false))
//         ... scanner.m_folders, scanner.m_files ...
#pragma once

#include "mfc/afx.h"

#include <cstdint>
#include <vector>

struct CDirectoryEntry {
    CString m_strPath; ///< the folder, a backslash and the name
    bool m_bDirectory;
    DWORD m_dwAttributes;
    FILETIME m_ftCreation;
    FILETIME m_ftLastWrite;
    std::uint64_t m_nSize; ///< bytes
};

class CDirectoryScanner {
public:
    CDirectoryScanner() = default;
    virtual ~CDirectoryScanner() = default;
    CDirectoryScanner(const CDirectoryScanner&) = delete;
    CDirectoryScanner& operator=(const CDirectoryScanner&) = delete;

    // Both scans add to the lists, in the order in which the system tells of the entries.

    /// Notes the folder, and appends its sub-folders and at last itself to m_folders. A folder that can't be read has
    /// no sub-folders. False for a path that is empty but for separators and white space at its end.
    bool ScanFolders(const char* path, bool listSubfolders);
    /// Appends what matches in the folder noted to m_files. True unless the scan broke off.
    bool ScanFiles(const char* mask, bool includeFiles, bool includeFolders);
    bool ClearFolders();
    bool ClearFiles();

    /// Names without a dot only. False when the scan broke off.
    static bool ListSubfolders(std::vector<CString>& folders, const char* path);
    /// 0 when the scan broke off, otherwise 1.
    int ListMatching(const CString& path, const CString& mask, bool includeFiles, bool includeFolders);
    /// Backslashes at the end; forward slashes only in a path without a backslash. White space behind them goes with
    /// them.
    static void TrimTrailingSeparators(CString& path);

    CString m_strRoot; ///< folder of the last scan, without separators at its end
    std::vector<CString> m_folders;
    std::vector<CDirectoryEntry> m_files;
};
