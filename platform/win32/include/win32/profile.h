// Profile (INI) files by the platform's calls; see win32/profile_file.h for the format and its promises. File names
// are taken in both forms. Every call reads the file anew, so changes by others are seen.
#pragma once

#include "win32/types.h"

/// Copies a value, cut to `size - 1` characters, and returns the number copied. Without it `fallback` is copied. A null
/// key lists the section's keys, a null section the sections, each closed by NUL and the list by one more; a list that
/// is cut returns `size - 2`.
DWORD GetPrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR fallback, LPSTR buffer, DWORD size, LPCSTR file);

/// The decimal number that the value begins with (a sign is taken, too); 0 when it begins with none; `fallback` when
/// the key is missing.
UINT GetPrivateProfileIntA(LPCSTR section, LPCSTR key, INT fallback, LPCSTR file);

/// A null value removes the key, a null key the section. FALSE with the last error set when the file cannot be written
/// or the text cannot be kept; the old file then stays as it was.
BOOL WritePrivateProfileStringA(LPCSTR section, LPCSTR key, LPCSTR value, LPCSTR file);

/// The section's lines as "key=value", each closed by NUL and the list by one more; comments are left out. A list that
/// is cut returns `size - 2`; a missing section gives 0.
DWORD GetPrivateProfileSectionA(LPCSTR section, LPSTR buffer, DWORD size, LPCSTR file);
/// The names of all sections, in the same form.
DWORD GetPrivateProfileSectionNamesA(LPSTR buffer, DWORD size, LPCSTR file);
/// Replaces all lines of a section by "key=value" texts, each closed by NUL and the list by one more; null removes it.
BOOL WritePrivateProfileSectionA(LPCSTR section, LPCSTR lines, LPCSTR file);

VNDK_TEXT_CALL(GetPrivateProfileString);
VNDK_TEXT_CALL(GetPrivateProfileInt);
VNDK_TEXT_CALL(WritePrivateProfileString);
VNDK_TEXT_CALL(GetPrivateProfileSection);
VNDK_TEXT_CALL(GetPrivateProfileSectionNames);
VNDK_TEXT_CALL(WritePrivateProfileSection);
