// Files and folders: search by mask, attributes, drives, the temporary folder.
//
// Paths are taken in both forms (see win32/drive_map.h) and answered with drive letters. Names that the platform
// couldn't hold are hidden from searches, so no name found ever carries a double quote.
#pragma once

#include "win32/types.h"

#include <string_view>

constexpr DWORD FILE_ATTRIBUTE_READONLY = 0x01; // nobody may write it
constexpr DWORD FILE_ATTRIBUTE_HIDDEN = 0x02;   // its name begins with a dot
constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
constexpr DWORD FILE_ATTRIBUTE_ARCHIVE = 0x20; // every file that isn't a folder
constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;

/// Hundreds of nanoseconds since 1 January 1601, UTC.
struct FILETIME {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
};

struct WIN32_FIND_DATAA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime; // the last change of content, for most file systems keep no creation time
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    DWORD dwReserved0;
    DWORD dwReserved1;
    CHAR cFileName[MAX_PATH];
    CHAR cAlternateFileName[14]; // always empty: there are no short names
};

/// Begins a search: the path's last component is a mask ('*', '?', case doesn't count). Names come in alphabetical
/// order; "." and ".." are among them except in a drive's root. INVALID_HANDLE_VALUE when nothing is found
/// (ERROR_FILE_NOT_FOUND) or the folder cannot be read (ERROR_PATH_NOT_FOUND, ERROR_ACCESS_DENIED and others).
HANDLE FindFirstFileA(LPCSTR pattern, WIN32_FIND_DATAA* data);
/// FALSE with ERROR_NO_MORE_FILES at the end.
BOOL FindNextFileA(HANDLE search, WIN32_FIND_DATAA* data);
BOOL FindClose(HANDLE search);

/// INVALID_FILE_ATTRIBUTES with the last error set when there is no such file.
DWORD GetFileAttributesA(LPCSTR path);

/// Bit 0 stands for drive A.
DWORD GetLogicalDrives();

/// The folder for temporary files (TMPDIR, or else /tmp) with a closing separator. Returns its length, or the size
/// that the buffer needs when it is too small.
DWORD GetTempPathA(DWORD size, LPSTR buffer);

namespace vndk::win32 {

/// Does a name fit a search mask? By the platform's rules: "*.*" fits all names, "*." those without an extension, '?'
/// fits one character or, before a dot or the end, none. Both in code page 1252.
[[nodiscard]] bool matchesMask(std::string_view name, std::string_view mask);

} // namespace vndk::win32
