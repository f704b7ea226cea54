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

using ATOM = WORD;
using COLORREF = DWORD; // 0x00BBGGRR
using HRESULT = LONG;

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
VNDK_DECLARE_HANDLE(HDC);
VNDK_DECLARE_HANDLE(HBRUSH);
VNDK_DECLARE_HANDLE(HPEN);
VNDK_DECLARE_HANDLE(HFONT);
VNDK_DECLARE_HANDLE(HBITMAP);
VNDK_DECLARE_HANDLE(HRGN);
VNDK_DECLARE_HANDLE(HPALETTE);
VNDK_DECLARE_HANDLE(HICON);
VNDK_DECLARE_HANDLE(HMENU);
VNDK_DECLARE_HANDLE(HACCEL);
VNDK_DECLARE_HANDLE(HDWP);
VNDK_DECLARE_HANDLE(HIMAGELIST);
VNDK_DECLARE_HANDLE(HTREEITEM);
using HMODULE = HINSTANCE;
using HCURSOR = HICON;  // the platform lets one stand for the other
using HGDIOBJ = HANDLE; // a pen, brush, font, bitmap, region or palette

/// What a failed FindFirstFileA answers.
inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(~UINT_PTR{0});

struct POINT {
    LONG x;
    LONG y;
};

struct POINTS {
    SHORT x;
    SHORT y;
};

struct SIZE {
    LONG cx;
    LONG cy;
};

/// Half open: `right` and `bottom` lie outside.
struct RECT {
    LONG left;
    LONG top;
    LONG right;
    LONG bottom;
};

using LPPOINT = POINT*;
using LPSIZE = SIZE*;
using LPRECT = RECT*;
using LPCRECT = const RECT*;

constexpr COLORREF RGB(int red, int green, int blue) {
    return static_cast<COLORREF>((red & 0xFF) | ((green & 0xFF) << 8) | ((blue & 0xFF) << 16));
}
constexpr BYTE GetRValue(COLORREF color) { return static_cast<BYTE>(color); }
constexpr BYTE GetGValue(COLORREF color) { return static_cast<BYTE>(color >> 8); }
constexpr BYTE GetBValue(COLORREF color) { return static_cast<BYTE>(color >> 16); }

// Calls that take or give text carry an A for 8-bit text. The name without it is the same function.
#define VNDK_TEXT_CALL(name) inline constexpr auto& name = name##A

constexpr BYTE LOBYTE(DWORD_PTR value) { return static_cast<BYTE>(value & 0xFF); }
constexpr BYTE HIBYTE(DWORD_PTR value) { return static_cast<BYTE>((value >> 8) & 0xFF); }
constexpr WORD MAKEWORD(BYTE low, BYTE high) { return static_cast<WORD>(low | (high << 8)); }
constexpr WORD LOWORD(DWORD_PTR value) { return static_cast<WORD>(value & 0xFFFF); }
constexpr WORD HIWORD(DWORD_PTR value) { return static_cast<WORD>((value >> 16) & 0xFFFF); }
constexpr LONG MAKELONG(WORD low, WORD high) { return static_cast<LONG>(low | (static_cast<DWORD>(high) << 16)); }
constexpr WPARAM MAKEWPARAM(int low, int high) {
    return static_cast<DWORD>(MAKELONG(static_cast<WORD>(low), static_cast<WORD>(high)));
}
constexpr LPARAM MAKELPARAM(int low, int high) { return static_cast<LPARAM>(MAKEWPARAM(low, high)); }
constexpr LRESULT MAKELRESULT(int low, int high) { return MAKELPARAM(low, high); }
/// The coordinates of a mouse message; negative ones are kept.
constexpr int GET_X_LPARAM(LPARAM value) { return static_cast<SHORT>(LOWORD(static_cast<DWORD_PTR>(value))); }
constexpr int GET_Y_LPARAM(LPARAM value) { return static_cast<SHORT>(HIWORD(static_cast<DWORD_PTR>(value))); }
