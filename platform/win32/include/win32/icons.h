// Icons, cursors, and loading of pictures from resources and files.
//
//     HICON icon = static_cast<HICON>(LoadImage(instance, MAKEINTRESOURCE(246), IMAGE_ICON, 0, 0, 0));
//     DrawIconEx(dc, x, y, icon, 16, 16, 0, nullptr, DI_NORMAL);
//     DestroyIcon(icon);
//
// A cursor is an icon with a hot spot, and either may stand for the other. A picture has two parts: colours, and a mask
// whose 1 bits show the background (through XOR with the colours: what is white there inverts). 32-bit pictures carry
// alpha in place of the mask.
//
// Ownership. What a Create, Copy or Load call answers belongs to the caller (DestroyIcon, DestroyCursor, DeleteObject),
// but for shared ones: the system's own pictures, LoadIcon, LoadCursor and LR_SHARED give the same handle each time,
// which stays for good, and destroying it does nothing.
//
// Errors: null or FALSE. Dead handles set ERROR_INVALID_HANDLE (icons: ERROR_INVALID_CURSOR_HANDLE); missing resources
// ERROR_RESOURCE_NAME_NOT_FOUND and its kin, missing files ERROR_FILE_NOT_FOUND; damaged pictures ERROR_INVALID_DATA;
// nonsense arguments ERROR_INVALID_PARAMETER.
#pragma once

#include "win32/gdi.h"
#include "win32/resources.h"
#include "win32/types.h"

inline const LPCSTR RT_GROUP_CURSOR = MAKEINTRESOURCE(12);
inline const LPCSTR RT_GROUP_ICON = MAKEINTRESOURCE(14);

// Cursors of the system (with a null instance).
inline const LPCSTR IDC_ARROW = MAKEINTRESOURCE(32512);
inline const LPCSTR IDC_IBEAM = MAKEINTRESOURCE(32513);
inline const LPCSTR IDC_WAIT = MAKEINTRESOURCE(32514);
inline const LPCSTR IDC_CROSS = MAKEINTRESOURCE(32515);
inline const LPCSTR IDC_UPARROW = MAKEINTRESOURCE(32516);
inline const LPCSTR IDC_SIZE = MAKEINTRESOURCE(32640);
inline const LPCSTR IDC_SIZENWSE = MAKEINTRESOURCE(32642);
inline const LPCSTR IDC_SIZENESW = MAKEINTRESOURCE(32643);
inline const LPCSTR IDC_SIZEWE = MAKEINTRESOURCE(32644);
inline const LPCSTR IDC_SIZENS = MAKEINTRESOURCE(32645);
inline const LPCSTR IDC_SIZEALL = MAKEINTRESOURCE(32646);
inline const LPCSTR IDC_NO = MAKEINTRESOURCE(32648);
inline const LPCSTR IDC_HAND = MAKEINTRESOURCE(32649);
inline const LPCSTR IDC_APPSTARTING = MAKEINTRESOURCE(32650);
inline const LPCSTR IDC_HELP = MAKEINTRESOURCE(32651);

// Icons of the system (with a null instance).
inline const LPCSTR IDI_APPLICATION = MAKEINTRESOURCE(32512);
inline const LPCSTR IDI_HAND = MAKEINTRESOURCE(32513);
inline const LPCSTR IDI_ERROR = IDI_HAND;
inline const LPCSTR IDI_QUESTION = MAKEINTRESOURCE(32514);
inline const LPCSTR IDI_EXCLAMATION = MAKEINTRESOURCE(32515);
inline const LPCSTR IDI_WARNING = IDI_EXCLAMATION;
inline const LPCSTR IDI_ASTERISK = MAKEINTRESOURCE(32516);
inline const LPCSTR IDI_INFORMATION = IDI_ASTERISK;
inline const LPCSTR IDI_WINLOGO = MAKEINTRESOURCE(32517);

struct ICONINFO {
    BOOL fIcon;     // FALSE: a cursor
    DWORD xHotspot; // of an icon: the middle, whatever is given
    DWORD yHotspot;
    HBITMAP hbmMask;  // without colours twice as high: the mask (AND) above the inversion (XOR)
    HBITMAP hbmColor; // null for a picture without colours
};

/// The bitmaps are copied; they stay the caller's.
HICON CreateIconIndirect(const ICONINFO* info);
/// Masks in rows padded to 2 bytes, top row first. `planes` 1, `bitsPerPixel` 1 or 32.
HICON CreateIcon(HINSTANCE instance, int width, int height, BYTE planes, BYTE bitsPerPixel, const BYTE* andBits,
                 const BYTE* xorBits);
HCURSOR CreateCursor(HINSTANCE instance, int hotX, int hotY, int width, int height, const void* andBits,
                     const void* xorBits);
/// One picture of a group, as it lies in a resource: in front of a cursor's stands its hot spot. `version` 0x00030000.
HICON CreateIconFromResource(const BYTE* bits, DWORD size, BOOL icon, DWORD version);
/// Sizes 0: the picture's own, or the system's with LR_DEFAULTSIZE. The picture is stretched.
HICON CreateIconFromResourceEx(const BYTE* bits, DWORD size, BOOL icon, DWORD version, int width, int height,
                               UINT flags);
/// A copy of its own, whether the original is shared or not.
HICON CopyIcon(HICON icon);
inline HCURSOR CopyCursor(HCURSOR cursor) { return CopyIcon(cursor); }
/// TRUE for a shared icon, which stays.
BOOL DestroyIcon(HICON icon);
BOOL DestroyCursor(HCURSOR cursor);
/// Both bitmaps are copies that the caller has to delete.
BOOL GetIconInfo(HICON icon, ICONINFO* info);

constexpr UINT DI_MASK = 0x0001;
constexpr UINT DI_IMAGE = 0x0002;
constexpr UINT DI_NORMAL = 0x0003;
constexpr UINT DI_COMPAT = 0x0004;
constexpr UINT DI_DEFAULTSIZE = 0x0008;

/// In the system's size (SM_CXICON x SM_CYICON).
BOOL DrawIcon(HDC dc, int x, int y, HICON icon);
/// Sizes 0: the picture's own, or the system's with DI_DEFAULTSIZE. With a brush, the picture is put together on that
/// ground first. `step` must be 0: animated cursors aren't there.
BOOL DrawIconEx(HDC dc, int x, int y, HICON icon, int width, int height, UINT step, HBRUSH brush, UINT flags);

constexpr UINT IMAGE_BITMAP = 0;
constexpr UINT IMAGE_ICON = 1;
constexpr UINT IMAGE_CURSOR = 2;

constexpr UINT LR_DEFAULTCOLOR = 0x0000;
constexpr UINT LR_MONOCHROME = 0x0001;
constexpr UINT LR_LOADFROMFILE = 0x0010;    // the name is a path; the instance must be null
constexpr UINT LR_LOADTRANSPARENT = 0x0020; // a bitmap of up to 8 bits: its first pixel's colour becomes COLOR_WINDOW
constexpr UINT LR_DEFAULTSIZE = 0x0040;     // sizes 0 stand for the system's sizes of icons and cursors
constexpr UINT LR_LOADMAP3DCOLORS = 0x1000; // the three grays of a table become 3DSHADOW, 3DFACE, 3DLIGHT
constexpr UINT LR_CREATEDIBSECTION = 0x2000;
constexpr UINT LR_SHARED = 0x8000; // of icons and cursors in resources

/// Loads a bitmap, icon or cursor. Sizes 0 without LR_DEFAULTSIZE: of a bitmap its own, of icons and cursors that of
/// the group's first picture. Else the best picture of the group is stretched to that size.
HANDLE LoadImageA(HINSTANCE instance, LPCSTR name, UINT kind, int width, int height, UINT flags);
/// Shared, in the system's size.
HICON LoadIconA(HINSTANCE instance, LPCSTR name);
HCURSOR LoadCursorA(HINSTANCE instance, LPCSTR name);
/// The caller deletes it.
HBITMAP LoadBitmapA(HINSTANCE instance, LPCSTR name);
VNDK_TEXT_CALL(LoadImage);
VNDK_TEXT_CALL(LoadIcon);
VNDK_TEXT_CALL(LoadCursor);
VNDK_TEXT_CALL(LoadBitmap);
