// What the shell knows about files: the names that it shows for them.
#pragma once

#include "win32/files.h"
#include "win32/types.h"

struct SHFILEINFOA {
    HICON hIcon; // always null: the shell has no icons here
    int iIcon;
    DWORD dwAttributes; // SFGAO_* when SHGFI_ATTRIBUTES is asked
    CHAR szDisplayName[MAX_PATH];
    CHAR szTypeName[80];
};
using SHFILEINFO = SHFILEINFOA;

constexpr UINT SHGFI_DISPLAYNAME = 0x000000200;
constexpr UINT SHGFI_TYPENAME = 0x000000400;
constexpr UINT SHGFI_ATTRIBUTES = 0x000000800;
/// The path needn't exist; what it is comes from the attributes given.
constexpr UINT SHGFI_USEFILEATTRIBUTES = 0x000000010;

constexpr DWORD SFGAO_READONLY = 0x00040000;
constexpr DWORD SFGAO_FILESYSTEM = 0x40000000;
constexpr DWORD SFGAO_FOLDER = 0x20000000;
constexpr DWORD SFGAO_HASSUBFOLDER = 0x80000000;

/// Fills what the flags ask for. A drive shows as its folder's name with the letter ("home (C:)", "File system (Z:)"),
/// a file or folder as its name on the disk. 0 with the last error set when the path doesn't exist, the structure is
/// too small or a flag asks for what isn't there (icons).
DWORD_PTR SHGetFileInfoA(LPCSTR path, DWORD attributes, SHFILEINFOA* info, UINT size, UINT flags);
VNDK_TEXT_CALL(SHGetFileInfo);
