// Files and folders: search by mask, attributes, making, moving, deleting, drives, the temporary folder.
//
// Paths are taken in both forms (see win32/drive_map.h) and answered with drive letters. Names that the platform
// couldn't hold are hidden from searches, so no name found ever carries a double quote; so is what is neither a file
// nor a folder.
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
/// FILE_ATTRIBUTE_READONLY takes everybody's right to write away or gives it to the owner; the other attributes can't
/// be changed and are passed over.
BOOL SetFileAttributesA(LPCSTR path, DWORD attributes);

struct WIN32_FILE_ATTRIBUTE_DATA {
    DWORD dwFileAttributes;
    FILETIME ftCreationTime; // the last change of content
    FILETIME ftLastAccessTime;
    FILETIME ftLastWriteTime;
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
};
enum GET_FILEEX_INFO_LEVELS { GetFileExInfoStandard };
BOOL GetFileAttributesExA(LPCSTR path, GET_FILEEX_INFO_LEVELS level, LPVOID data);

/// The security attributes aren't looked at: pass null.
BOOL CreateDirectoryA(LPCSTR path, LPVOID security);
/// Only an empty folder.
BOOL RemoveDirectoryA(LPCSTR path);
/// ERROR_ACCESS_DENIED for a folder and for a file that is read-only.
BOOL DeleteFileA(LPCSTR path);
/// Renames a file or folder, or moves it; never over an existing one (ERROR_ALREADY_EXISTS).
BOOL MoveFileA(LPCSTR from, LPCSTR to);
/// Content and attributes. The target is replaced unless `failIfExists` (ERROR_FILE_EXISTS); at each moment the old
/// or the new file is whole.
BOOL CopyFileA(LPCSTR from, LPCSTR to, BOOL failIfExists);

/// The path in full, with drive letter, "." and ".." resolved; the file needn't exist. `namePart` gets the place of
/// its last component in the buffer, null when it has none. Returns the length, or the size that the buffer needs when
/// it is too small, or 0 on failure.
DWORD GetFullPathNameA(LPCSTR path, DWORD size, LPSTR buffer, LPSTR* namePart);

/// Bit 0 stands for drive A.
DWORD GetLogicalDrives();
/// The roots ("C:\\") of all drives, each closed by NUL and the list by one more. Returns the length without the last
/// NUL, or the size that the buffer needs when it is too small.
DWORD GetLogicalDriveStringsA(DWORD size, LPSTR buffer);

constexpr UINT DRIVE_UNKNOWN = 0;
constexpr UINT DRIVE_NO_ROOT_DIR = 1;
constexpr UINT DRIVE_REMOVABLE = 2;
constexpr UINT DRIVE_FIXED = 3;
constexpr UINT DRIVE_REMOTE = 4;
constexpr UINT DRIVE_CDROM = 5;
constexpr UINT DRIVE_RAMDISK = 6;
/// By the file system that the drive's folder lies on. Null asks about the working folder's drive; DRIVE_NO_ROOT_DIR
/// for a path that is no drive's root.
UINT GetDriveTypeA(LPCSTR root);

/// The folder for temporary files (TMPDIR, or else /tmp) with a closing separator. Returns its length, or the size
/// that the buffer needs when it is too small.
DWORD GetTempPathA(DWORD size, LPSTR buffer);
/// A name in `folder` made of up to three characters of `prefix`, a number in hexadecimal and ".tmp", into a buffer of
/// MAX_PATH. With number 0 a free one is found and an empty file of that name is made. Returns the number, 0 on
/// failure.
UINT GetTempFileNameA(LPCSTR folder, LPCSTR prefix, UINT number, LPSTR name);

VNDK_TEXT_CALL(FindFirstFile);
VNDK_TEXT_CALL(FindNextFile);
VNDK_TEXT_CALL(GetFileAttributes);
VNDK_TEXT_CALL(SetFileAttributes);
VNDK_TEXT_CALL(GetFileAttributesEx);
VNDK_TEXT_CALL(CreateDirectory);
VNDK_TEXT_CALL(RemoveDirectory);
VNDK_TEXT_CALL(DeleteFile);
VNDK_TEXT_CALL(MoveFile);
VNDK_TEXT_CALL(CopyFile);
VNDK_TEXT_CALL(GetFullPathName);
VNDK_TEXT_CALL(GetLogicalDriveStrings);
VNDK_TEXT_CALL(GetDriveType);
VNDK_TEXT_CALL(GetTempPath);
VNDK_TEXT_CALL(GetTempFileName);
using WIN32_FIND_DATA = WIN32_FIND_DATAA;

namespace vndk::win32 {

/// Does a name fit a search mask? By the platform's rules: "*.*" fits all names, "*." those without an extension, '?'
/// fits one character or, before a dot or the end, none. Both in code page 1252.
[[nodiscard]] bool matchesMask(std::string_view name, std::string_view mask);

} // namespace vndk::win32
