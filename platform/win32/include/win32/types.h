// The platform's basic types with the widths that its published interface gives them, whatever the compiler's `long`
// is.
//
// Text is 8-bit in code page 1252. Handles are opaque pointers, each of its own type, so that mixing two kinds of
// handle doesn't compile; only HANDLE itself (files, searches, memory) is untyped, as on the platform.
#pragma once

#include <cstdint>

// Calling conventions carry no meaning on this processor; module code spells them out all the same.
#define WINAPI
#define APIENTRY
#define CALLBACK

using BOOL = int;
using BYTE = std::uint8_t;
using CHAR = char;
using SHORT = std::int16_t;
using WORD = std::uint16_t;
using WCHAR = char16_t;
using INT = int;
using UINT = unsigned int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using DWORD = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;

using INT_PTR = std::intptr_t;
using UINT_PTR = std::uintptr_t;
using LONG_PTR = std::intptr_t;
using ULONG_PTR = std::uintptr_t;
using DWORD_PTR = std::uintptr_t;
using WPARAM = UINT_PTR;
using LPARAM = LONG_PTR;
using LRESULT = LONG_PTR;

using LPVOID = void*;
using LPCVOID = const void*;
using LPSTR = char*;
using LPCSTR = const char*;
using LPCTSTR = LPCSTR;
using LPTSTR = LPSTR;
using LPDWORD = DWORD*;
using LPBYTE = BYTE*;

constexpr BOOL TRUE = 1;
constexpr BOOL FALSE = 0;

/// Longest path that the interface's fixed buffers hold, with the closing NUL.
constexpr int MAX_PATH = 260;

using HANDLE = void*;
using HGLOBAL = HANDLE;

#define VNDK_DECLARE_HANDLE(name)                                                                                      \
    struct name##__;                                                                                                   \
    using name = name##__*

VNDK_DECLARE_HANDLE(HINSTANCE);
VNDK_DECLARE_HANDLE(HRSRC);
VNDK_DECLARE_HANDLE(HWND);
using HMODULE = HINSTANCE;

/// What a failed FindFirstFileA answers.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(~UINT_PTR{0});

constexpr WORD LOWORD(DWORD_PTR value) { return static_cast<WORD>(value & 0xFFFF); }
constexpr WORD HIWORD(DWORD_PTR value) { return static_cast<WORD>((value >> 16) & 0xFFFF); }
constexpr LONG MAKELONG(WORD low, WORD high) { return static_cast<LONG>(low | (static_cast<DWORD>(high) << 16)); }
