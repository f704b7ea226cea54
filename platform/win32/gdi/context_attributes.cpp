// The attributes of device contexts: colours, modes, origins, and what the device can do.
#include "gdi/device_context.h"

#include <algorithm>
#include <limits>
#include <utility>

using namespace vndk::win32;

namespace {

/// Sets an attribute if its value is in the range; answers the one before.
template <typename T>
T change(HDC dc, T ContextState::*attribute, T value, T lowest, T highest, T failure) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return failure;
    if (value < lowest || value > highest) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return failure;
    }
    return std::exchange(context->state.*attribute, value);
}

template <typename T>
T read(HDC dc, T ContextState::*attribute, T failure) {
    const DeviceContext* context = requireContext(dc);
    return context == nullptr ? failure : context->state.*attribute;
}

COLORREF changeColor(HDC dc, COLORREF ContextState::*attribute, COLORREF color) {
    // Only the colour's own three bytes count: the highest one is for palettes.
    return change<COLORREF>(dc, attribute, color & 0x00FFFFFF, 0, 0x00FFFFFF, CLR_INVALID);
}

BOOL changePoint(HDC dc, POINT ContextState::*attribute, POINT value, POINT* former) {
    DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const POINT before = std::exchange(context->state.*attribute, value);
    if (former != nullptr)
        *former = before;
    return TRUE;
}

BOOL shiftPoint(HDC dc, POINT ContextState::*attribute, int dx, int dy, POINT* former) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    const POINT now = context->state.*attribute;
    return changePoint(dc, attribute, {limited(std::int64_t{now.x} + dx), limited(std::int64_t{now.y} + dy)}, former);
}

BOOL readPoint(HDC dc, POINT ContextState::*attribute, POINT* point) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (point == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *point = context->state.*attribute;
    return TRUE;
}

template <typename Convert>
BOOL eachPoint(HDC dc, POINT* points, int count, Convert convert) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (count < 0 || (points == nullptr && count > 0)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::transform(points, points + count, points, [&](POINT point) { return convert(*context, point); });
    return TRUE;
}

constexpr int pixelsPerInch = 96;

int millimetres(int pixels) { return (pixels * 254 + pixelsPerInch * 5) / (pixelsPerInch * 10); }

} // namespace

COLORREF SetBkColor(HDC dc, COLORREF color) { return changeColor(dc, &ContextState::backgroundColor, color); }
COLORREF GetBkColor(HDC dc) { return read(dc, &ContextState::backgroundColor, CLR_INVALID); }
COLORREF SetTextColor(HDC dc, COLORREF color) { return changeColor(dc, &ContextState::textColor, color); }
COLORREF GetTextColor(HDC dc) { return read(dc, &ContextState::textColor, CLR_INVALID); }
COLORREF SetDCBrushColor(HDC dc, COLORREF color) { return changeColor(dc, &ContextState::brushColor, color); }
COLORREF GetDCBrushColor(HDC dc) { return read(dc, &ContextState::brushColor, CLR_INVALID); }
COLORREF SetDCPenColor(HDC dc, COLORREF color) { return changeColor(dc, &ContextState::penColor, color); }
COLORREF GetDCPenColor(HDC dc) { return read(dc, &ContextState::penColor, CLR_INVALID); }

COLORREF GetNearestColor(HDC dc, COLORREF color) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return CLR_INVALID;
    return colorFromArgb(argbFromPixel(context->surface(), context->pixelOf(color)));
}

int SetBkMode(HDC dc, int mode) { return change(dc, &ContextState::backgroundMode, mode, TRANSPARENT, OPAQUE, 0); }
int GetBkMode(HDC dc) { return read(dc, &ContextState::backgroundMode, 0); }
int SetROP2(HDC dc, int rop) { return change(dc, &ContextState::rop2, rop, R2_BLACK, R2_WHITE, 0); }
int GetROP2(HDC dc) { return read(dc, &ContextState::rop2, 0); }
int SetStretchBltMode(HDC dc, int mode) {
    return change(dc, &ContextState::stretchMode, mode, BLACKONWHITE, HALFTONE, 0);
}
int GetStretchBltMode(HDC dc) { return read(dc, &ContextState::stretchMode, 0); }
int SetPolyFillMode(HDC dc, int mode) { return change(dc, &ContextState::polyFillMode, mode, ALTERNATE, WINDING, 0); }
int GetPolyFillMode(HDC dc) { return read(dc, &ContextState::polyFillMode, 0); }
int SetArcDirection(HDC dc, int direction) {
    return change(dc, &ContextState::arcDirection, direction, AD_COUNTERCLOCKWISE, AD_CLOCKWISE, 0);
}
int GetArcDirection(HDC dc) { return read(dc, &ContextState::arcDirection, 0); }
UINT SetTextAlign(HDC dc, UINT align) { return change<UINT>(dc, &ContextState::textAlign, align, 0, 0x1FF, GDI_ERROR); }
UINT GetTextAlign(HDC dc) { return read(dc, &ContextState::textAlign, GDI_ERROR); }

BOOL SetBrushOrgEx(HDC dc, int x, int y, POINT* former) {
    return changePoint(dc, &ContextState::brushOrigin, {limited(x), limited(y)}, former);
}
BOOL GetBrushOrgEx(HDC dc, POINT* origin) { return readPoint(dc, &ContextState::brushOrigin, origin); }

int SetMapMode(HDC dc, int mode) {
    if (requireContext(dc) == nullptr)
        return 0;
    if (mode == MM_TEXT)
        return MM_TEXT;
    SetLastError(ERROR_INVALID_PARAMETER);
    return 0;
}
int GetMapMode(HDC dc) { return requireContext(dc) == nullptr ? 0 : MM_TEXT; }

BOOL SetViewportOrgEx(HDC dc, int x, int y, POINT* former) {
    return changePoint(dc, &ContextState::viewportOrigin, {limited(x), limited(y)}, former);
}
BOOL OffsetViewportOrgEx(HDC dc, int dx, int dy, POINT* former) {
    return shiftPoint(dc, &ContextState::viewportOrigin, dx, dy, former);
}
BOOL GetViewportOrgEx(HDC dc, POINT* origin) { return readPoint(dc, &ContextState::viewportOrigin, origin); }
BOOL SetWindowOrgEx(HDC dc, int x, int y, POINT* former) {
    return changePoint(dc, &ContextState::windowOrigin, {limited(x), limited(y)}, former);
}
BOOL OffsetWindowOrgEx(HDC dc, int dx, int dy, POINT* former) {
    return shiftPoint(dc, &ContextState::windowOrigin, dx, dy, former);
}
BOOL GetWindowOrgEx(HDC dc, POINT* origin) { return readPoint(dc, &ContextState::windowOrigin, origin); }

BOOL DPtoLP(HDC dc, POINT* points, int count) {
    return eachPoint(dc, points, count,
                     [](const DeviceContext& context, POINT point) { return context.toLogical(point); });
}
BOOL LPtoDP(HDC dc, POINT* points, int count) {
    return eachPoint(dc, points, count,
                     [](const DeviceContext& context, POINT point) { return context.toDevice(point); });
}

int GetDeviceCaps(HDC dc, int index) {
    if (requireContext(dc) == nullptr)
        return 0;
    const PixelTarget screen = screenTarget();
    switch (index) {
    case TECHNOLOGY:
        return DT_RASDISPLAY;
    case HORZSIZE:
        return millimetres(screen.width);
    case VERTSIZE:
        return millimetres(screen.height);
    case HORZRES:
    case DESKTOPHORZRES:
        return screen.width;
    case VERTRES:
    case DESKTOPVERTRES:
        return screen.height;
    case BITSPIXEL:
        return 32;
    case PLANES:
    case VREFRESH: // 1: the hardware's default
        return 1;
    case NUMBRUSHES:
    case NUMPENS:
    case NUMCOLORS:
        return -1; // no limit
    case CLIPCAPS:
        return 1;
    case RASTERCAPS:
        return RC_BITBLT | RC_BITMAP64 | RC_DI_BITMAP | RC_DIBTODEV | RC_STRETCHBLT | RC_FLOODFILL | RC_STRETCHDIB;
    case ASPECTX:
    case ASPECTY:
        return 36;
    case ASPECTXY:
        return 51;
    case LOGPIXELSX:
    case LOGPIXELSY:
        return pixelsPerInch;
    default:
        return 0;
    }
}

BOOL GetDCOrgEx(HDC dc, POINT* origin) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return FALSE;
    if (origin == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    *origin = context->origin();
    return TRUE;
}

HWND WindowFromDC(HDC dc) {
    const DeviceContext* context = requireContext(dc);
    return context == nullptr ? nullptr : context->window();
}

BOOL GdiFlush() { return TRUE; }
