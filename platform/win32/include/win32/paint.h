// Painting: contexts of windows, the update region, invalidation, scrolling of pixels.
#pragma once

#include "win32/types.h"

struct PAINTSTRUCT {
    HDC hdc;
    BOOL fErase; // the background was not erased
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};

HDC BeginPaint(HWND window, PAINTSTRUCT* paint);
BOOL EndPaint(HWND window, const PAINTSTRUCT* paint);

/// The client area; null gives the whole screen. Given back with ReleaseDC.
HDC GetDC(HWND window);
/// The whole window, frame included.
HDC GetWindowDC(HWND window);
constexpr DWORD DCX_WINDOW = 0x00000001;
constexpr DWORD DCX_CACHE = 0x00000002;
constexpr DWORD DCX_CLIPCHILDREN = 0x00000008;
constexpr DWORD DCX_CLIPSIBLINGS = 0x00000010;
constexpr DWORD DCX_PARENTCLIP = 0x00000020;
constexpr DWORD DCX_EXCLUDERGN = 0x00000040;
constexpr DWORD DCX_INTERSECTRGN = 0x00000080;
constexpr DWORD DCX_LOCKWINDOWUPDATE = 0x00000400; // paints although LockWindowUpdate holds the window
constexpr DWORD DCX_USESTYLE = 0x00010000;
HDC GetDCEx(HWND window, HRGN clip, DWORD flags);
int ReleaseDC(HWND window, HDC dc);
HWND WindowFromDC(HDC dc);

constexpr UINT RDW_INVALIDATE = 0x0001;
constexpr UINT RDW_INTERNALPAINT = 0x0002;
constexpr UINT RDW_ERASE = 0x0004;
constexpr UINT RDW_VALIDATE = 0x0008;
constexpr UINT RDW_NOINTERNALPAINT = 0x0010;
constexpr UINT RDW_NOERASE = 0x0020;
constexpr UINT RDW_NOCHILDREN = 0x0040;
constexpr UINT RDW_ALLCHILDREN = 0x0080;
constexpr UINT RDW_UPDATENOW = 0x0100;
constexpr UINT RDW_ERASENOW = 0x0200;
constexpr UINT RDW_FRAME = 0x0400;
constexpr UINT RDW_NOFRAME = 0x0800;
/// Rectangle or region in client coordinates; both null: the whole client area. A null window stands for the screen.
BOOL RedrawWindow(HWND window, const RECT* rect, HRGN region, UINT flags);
BOOL InvalidateRect(HWND window, const RECT* rect, BOOL erase);
BOOL InvalidateRgn(HWND window, HRGN region, BOOL erase);
BOOL ValidateRect(HWND window, const RECT* rect);
BOOL ValidateRgn(HWND window, HRGN region);
BOOL UpdateWindow(HWND window);
BOOL GetUpdateRect(HWND window, RECT* rect, BOOL erase);
int GetUpdateRgn(HWND window, HRGN region, BOOL erase);
int ExcludeUpdateRgn(HDC dc, HWND window);
BOOL LockWindowUpdate(HWND window);

constexpr UINT SW_SCROLLCHILDREN = 0x0001;
constexpr UINT SW_INVALIDATE = 0x0002;
constexpr UINT SW_ERASE = 0x0004;
/// NULLREGION, SIMPLEREGION or COMPLEXREGION of what was uncovered; 0 on failure.
int ScrollWindowEx(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip, HRGN update, RECT* updateRect,
                   UINT flags);
BOOL ScrollWindow(HWND window, int dx, int dy, const RECT* scroll, const RECT* clip);
BOOL ScrollDC(HDC dc, int dx, int dy, const RECT* scroll, const RECT* clip, HRGN update, RECT* updateRect);

int SetWindowRgn(HWND window, HRGN region, BOOL redraw);
int GetWindowRgn(HWND window, HRGN region);
