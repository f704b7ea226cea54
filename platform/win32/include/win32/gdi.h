// Drawing: device contexts, pens, brushes, bitmaps, regions, and the figures painted with them.
//
//     HDC memory = CreateCompatibleDC(nullptr);
//     HBITMAP bitmap = CreateCompatibleBitmap(screen, 32, 32);
//     HGDIOBJ old = SelectObject(memory, bitmap);
//     Rectangle(memory, 0, 0, 32, 32);                         // selected pen around, selected brush inside
//     BitBlt(screen, x, y, 32, 32, memory, 0, 0, SRCCOPY);
//     SelectObject(memory, old);                               // before either of them is deleted
//     DeleteObject(bitmap);
//     DeleteDC(memory);
//
// Units and coordinates. All units are pixels (MM_TEXT is the one map mode), y grows downward. "Logical" points are
// what the calls take; the context's window and viewport origins turn them into device points, which count from the
// context's own (0, 0): a window's client corner or a bitmap's first pixel. Coordinates beyond +-2^27 are brought back
// to that limit. Rectangles are half open: right and bottom lie outside.
//
// Ownership. What a Create call answers belongs to the caller, who gives it back with DeleteObject or DeleteDC. Stock
// objects belong to nobody. Objects that a context has selected stay the caller's; they can't be deleted until they
// are selected out again.
//
// Errors. A dead handle or one of another kind gives 0, FALSE, null or the value named at the call (CLR_INVALID,
// ERROR, GDI_ERROR, HGDI_ERROR), and GetLastError() is ERROR_INVALID_HANDLE. Nonsense arguments give the same values
// with ERROR_INVALID_PARAMETER, sizes that memory won't hold ERROR_NOT_ENOUGH_MEMORY. Painting that falls outside of
// the clip is no error.
#pragma once

#include "win32/types.h"

// ---- Objects -------------------------------------------------------------------------------------------------------

// Kinds of object (GetObjectType, GetCurrentObject).
constexpr UINT OBJ_PEN = 1;
constexpr UINT OBJ_BRUSH = 2;
constexpr UINT OBJ_DC = 3;
constexpr UINT OBJ_PAL = 5;
constexpr UINT OBJ_FONT = 6;
constexpr UINT OBJ_BITMAP = 7;
constexpr UINT OBJ_REGION = 8;
constexpr UINT OBJ_MEMDC = 10;

constexpr int WHITE_BRUSH = 0;
constexpr int LTGRAY_BRUSH = 1;
constexpr int GRAY_BRUSH = 2;
constexpr int DKGRAY_BRUSH = 3;
constexpr int BLACK_BRUSH = 4;
constexpr int NULL_BRUSH = 5;
constexpr int HOLLOW_BRUSH = NULL_BRUSH;
constexpr int WHITE_PEN = 6;
constexpr int BLACK_PEN = 7;
constexpr int NULL_PEN = 8;
constexpr int OEM_FIXED_FONT = 10;
constexpr int ANSI_FIXED_FONT = 11;
constexpr int ANSI_VAR_FONT = 12;
constexpr int SYSTEM_FONT = 13;
constexpr int DEVICE_DEFAULT_FONT = 14;
constexpr int DEFAULT_PALETTE = 15;
constexpr int SYSTEM_FIXED_FONT = 16;
constexpr int DEFAULT_GUI_FONT = 17;
constexpr int DC_BRUSH = 18; // solid in the colour that SetDCBrushColor gave the context
constexpr int DC_PEN = 19;

constexpr UINT PS_SOLID = 0;
constexpr UINT PS_DASH = 1;
constexpr UINT PS_DOT = 2;
constexpr UINT PS_DASHDOT = 3;
constexpr UINT PS_DASHDOTDOT = 4;
constexpr UINT PS_NULL = 5;
constexpr UINT PS_INSIDEFRAME = 6;

constexpr UINT BS_SOLID = 0;
constexpr UINT BS_NULL = 1;
constexpr UINT BS_HOLLOW = BS_NULL;
constexpr UINT BS_HATCHED = 2;
constexpr UINT BS_PATTERN = 3;
constexpr UINT BS_DIBPATTERN = 5;
constexpr UINT BS_DIBPATTERNPT = 6;

constexpr int HS_HORIZONTAL = 0; // -----
constexpr int HS_VERTICAL = 1;   // |||||
constexpr int HS_FDIAGONAL = 2;  // \\\\\.
constexpr int HS_BDIAGONAL = 3;  // /////
constexpr int HS_CROSS = 4;      // +++++
constexpr int HS_DIAGCROSS = 5;  // xxxxx

struct LOGPEN {
    UINT lopnStyle;
    POINT lopnWidth; // y isn't used
    COLORREF lopnColor;
};

struct LOGBRUSH {
    UINT lbStyle;
    COLORREF lbColor;
    ULONG_PTR lbHatch; // HS_ value, or the bitmap of a pattern
};

struct BITMAP {
    LONG bmType; // 0
    LONG bmWidth;
    LONG bmHeight;
    LONG bmWidthBytes; // of a row
    WORD bmPlanes;     // 1
    WORD bmBitsPixel;
    LPVOID bmBits; // null but for a section
};

const inline HGDIOBJ HGDI_ERROR = reinterpret_cast<HGDIOBJ>(~UINT_PTR{0});
constexpr DWORD GDI_ERROR = 0xFFFFFFFF;
constexpr COLORREF CLR_INVALID = 0xFFFFFFFF;
constexpr COLORREF CLR_NONE = 0xFFFFFFFF;
constexpr COLORREF CLR_DEFAULT = 0xFF000000;

/// `width` 0 stands for 1. Dashed styles are for width 1 (as on the platform, wider ones are drawn solid).
HPEN CreatePen(int style, int width, COLORREF color);
HPEN CreatePenIndirect(const LOGPEN* pen);
HBRUSH CreateSolidBrush(COLORREF color);
HBRUSH CreateHatchBrush(int hatch, COLORREF color);
/// The bitmap is copied: it may be deleted while the brush is in use. Any size; the pattern is laid out from the brush
/// origin. A monochrome bitmap paints its 0 bits in the context's text colour and its 1 bits in the background colour.
HBRUSH CreatePatternBrush(HBITMAP pattern);
HBRUSH CreateBrushIndirect(const LOGBRUSH* brush);
/// Null for an unknown number. The palette isn't there, either.
HGDIOBJ GetStockObject(int number);

/// TRUE for a stock object, which stays as it is. FALSE, and the object stays, while a context has it selected.
BOOL DeleteObject(HGDIOBJ object);
/// Fills LOGPEN, LOGBRUSH, LOGFONTA, BITMAP or, for a section and a large enough buffer, DIBSECTION. The number of
/// bytes written (with a null buffer: the number needed), 0 when the buffer is too small.
int GetObjectA(HANDLE object, int size, LPVOID buffer);
VNDK_TEXT_CALL(GetObject);
/// An OBJ_ number, also for device contexts; 0 for a dead handle.
DWORD GetObjectType(HGDIOBJ object);
/// The object selected before; null when it can't be selected: a bitmap goes into a memory context only, and into one
/// at a time. For a region (which is copied): SIMPLEREGION and the like, HGDI_ERROR on failure.
HGDIOBJ SelectObject(HDC dc, HGDIOBJ object);
/// OBJ_PEN, OBJ_BRUSH, OBJ_FONT or OBJ_BITMAP. A window's context has no bitmap.
HGDIOBJ GetCurrentObject(HDC dc, UINT type);
/// TRUE for an object that lives; brushes need no realising here.
BOOL UnrealizeObject(HGDIOBJ object);

// ---- Device contexts -----------------------------------------------------------------------------------------------

constexpr int TRANSPARENT = 1;
constexpr int OPAQUE = 2;

constexpr UINT TA_NOUPDATECP = 0;
constexpr UINT TA_UPDATECP = 1;
constexpr UINT TA_LEFT = 0;
constexpr UINT TA_RIGHT = 2;
constexpr UINT TA_CENTER = 6;
constexpr UINT TA_TOP = 0;
constexpr UINT TA_BOTTOM = 8;
constexpr UINT TA_BASELINE = 24;
constexpr UINT TA_RTLREADING = 256;

constexpr int R2_BLACK = 1;        // 0
constexpr int R2_NOTMERGEPEN = 2;  // ~(D | P)
constexpr int R2_MASKNOTPEN = 3;   // D & ~P
constexpr int R2_NOTCOPYPEN = 4;   // ~P
constexpr int R2_MASKPENNOT = 5;   // P & ~D
constexpr int R2_NOT = 6;          // ~D
constexpr int R2_XORPEN = 7;       // D ^ P
constexpr int R2_NOTMASKPEN = 8;   // ~(D & P)
constexpr int R2_MASKPEN = 9;      // D & P
constexpr int R2_NOTXORPEN = 10;   // ~(D ^ P)
constexpr int R2_NOP = 11;         // D
constexpr int R2_MERGENOTPEN = 12; // D | ~P
constexpr int R2_COPYPEN = 13;     // P
constexpr int R2_MERGEPENNOT = 14; // P | ~D
constexpr int R2_MERGEPEN = 15;    // D | P
constexpr int R2_WHITE = 16;       // 1

constexpr int BLACKONWHITE = 1;
constexpr int WHITEONBLACK = 2;
constexpr int COLORONCOLOR = 3;
constexpr int HALFTONE = 4;
constexpr int STRETCH_ANDSCANS = BLACKONWHITE;
constexpr int STRETCH_ORSCANS = WHITEONBLACK;
constexpr int STRETCH_DELETESCANS = COLORONCOLOR;
constexpr int STRETCH_HALFTONE = HALFTONE;

constexpr int ALTERNATE = 1;
constexpr int WINDING = 2;

constexpr int AD_COUNTERCLOCKWISE = 1;
constexpr int AD_CLOCKWISE = 2;

constexpr int MM_TEXT = 1;

constexpr int DRIVERVERSION = 0;
constexpr int TECHNOLOGY = 2;
constexpr int HORZSIZE = 4; // millimetres
constexpr int VERTSIZE = 6;
constexpr int HORZRES = 8; // pixels
constexpr int VERTRES = 10;
constexpr int BITSPIXEL = 12;
constexpr int PLANES = 14;
constexpr int NUMBRUSHES = 16;
constexpr int NUMPENS = 18;
constexpr int NUMMARKERS = 20;
constexpr int NUMFONTS = 22;
constexpr int NUMCOLORS = 24;
constexpr int PDEVICESIZE = 26;
constexpr int CURVECAPS = 28;
constexpr int LINECAPS = 30;
constexpr int POLYGONALCAPS = 32;
constexpr int TEXTCAPS = 34;
constexpr int CLIPCAPS = 36;
constexpr int RASTERCAPS = 38;
constexpr int ASPECTX = 40;
constexpr int ASPECTY = 42;
constexpr int ASPECTXY = 44;
constexpr int LOGPIXELSX = 88; // pixels per inch
constexpr int LOGPIXELSY = 90;
constexpr int SIZEPALETTE = 104;
constexpr int NUMRESERVED = 106;
constexpr int COLORRES = 108;
constexpr int VREFRESH = 116;
constexpr int DESKTOPVERTRES = 117;
constexpr int DESKTOPHORZRES = 118;
constexpr int BLTALIGNMENT = 119;

constexpr int DT_RASDISPLAY = 1; // an answer to TECHNOLOGY

// RASTERCAPS
constexpr int RC_BITBLT = 0x0001;
constexpr int RC_BITMAP64 = 0x0008;
constexpr int RC_DI_BITMAP = 0x0080;
constexpr int RC_PALETTE = 0x0100;
constexpr int RC_DIBTODEV = 0x0200;
constexpr int RC_STRETCHBLT = 0x0800;
constexpr int RC_FLOODFILL = 0x1000;
constexpr int RC_STRETCHDIB = 0x2000;

struct DEVMODEA;

/// A context without a place: it paints into the bitmap selected into it, at first a monochrome one of 1 x 1 pixel.
/// Null stands for the screen.
HDC CreateCompatibleDC(HDC dc);
/// `driver` "DISPLAY": a context onto the whole screen. Null with ERROR_INVALID_PARAMETER for any other.
HDC CreateDCA(LPCSTR driver, LPCSTR device, LPCSTR output, const DEVMODEA* mode);
VNDK_TEXT_CALL(CreateDC);
/// Not for contexts that a window gave (ReleaseDC, EndPaint): FALSE.
BOOL DeleteDC(HDC dc);

/// The number of the level saved, from 1; 0 on failure.
int SaveDC(HDC dc);
/// Negative: counted back from now (-1 is the last one). Positive: the number that SaveDC gave. Levels saved later are
/// dropped with it. FALSE, and nothing changes, when there is no such level.
BOOL RestoreDC(HDC dc, int level);

// Each setter answers the value before. CLR_INVALID on failure.
COLORREF SetBkColor(HDC dc, COLORREF color);
COLORREF GetBkColor(HDC dc);
COLORREF SetTextColor(HDC dc, COLORREF color);
COLORREF GetTextColor(HDC dc);
COLORREF SetDCBrushColor(HDC dc, COLORREF color);
COLORREF GetDCBrushColor(HDC dc);
COLORREF SetDCPenColor(HDC dc, COLORREF color);
COLORREF GetDCPenColor(HDC dc);
/// The colour that the context's pixels can show for `color`.
COLORREF GetNearestColor(HDC dc, COLORREF color);

// 0 on failure, also for a value that doesn't exist.
int SetBkMode(HDC dc, int mode);
int GetBkMode(HDC dc);
int SetROP2(HDC dc, int rop);
int GetROP2(HDC dc);
int SetStretchBltMode(HDC dc, int mode);
int GetStretchBltMode(HDC dc);
int SetPolyFillMode(HDC dc, int mode);
int GetPolyFillMode(HDC dc);
int SetArcDirection(HDC dc, int direction);
int GetArcDirection(HDC dc);
/// GDI_ERROR on failure.
UINT SetTextAlign(HDC dc, UINT align);
UINT GetTextAlign(HDC dc);

/// Where a pattern begins, in device points. The place before goes to `former` if that isn't null.
BOOL SetBrushOrgEx(HDC dc, int x, int y, POINT* former);
BOOL GetBrushOrgEx(HDC dc, POINT* origin);

/// MM_TEXT is the only mode: MM_TEXT answers MM_TEXT, others 0 with ERROR_INVALID_PARAMETER.
int SetMapMode(HDC dc, int mode);
int GetMapMode(HDC dc);
// device point = logical point - window origin + viewport origin.
BOOL SetViewportOrgEx(HDC dc, int x, int y, POINT* former);
BOOL OffsetViewportOrgEx(HDC dc, int dx, int dy, POINT* former);
BOOL GetViewportOrgEx(HDC dc, POINT* origin);
BOOL SetWindowOrgEx(HDC dc, int x, int y, POINT* former);
BOOL OffsetWindowOrgEx(HDC dc, int dx, int dy, POINT* former);
BOOL GetWindowOrgEx(HDC dc, POINT* origin);
BOOL DPtoLP(HDC dc, POINT* points, int count);
BOOL LPtoDP(HDC dc, POINT* points, int count);

/// 0 for an index that isn't known.
int GetDeviceCaps(HDC dc, int index);
/// The place of the context's (0, 0) on the screen; (0, 0) for a memory context.
BOOL GetDCOrgEx(HDC dc, POINT* origin);
/// Null for a context that belongs to no window.
HWND WindowFromDC(HDC dc);
/// Painting is never held back: TRUE.
BOOL GdiFlush();

// ---- Regions and clipping ------------------------------------------------------------------------------------------

// What calls answer about a region.
constexpr int ERROR = 0;
constexpr int RGN_ERROR = ERROR;
constexpr int NULLREGION = 1;
constexpr int SIMPLEREGION = 2; // one rectangle
constexpr int COMPLEXREGION = 3;

// CombineRgn and ExtSelectClipRgn
constexpr int RGN_AND = 1;
constexpr int RGN_OR = 2;
constexpr int RGN_XOR = 3;
constexpr int RGN_DIFF = 4; // the first without the second
constexpr int RGN_COPY = 5;

constexpr DWORD RDH_RECTANGLES = 1;

struct RGNDATAHEADER {
    DWORD dwSize;   // of this header
    DWORD iType;    // RDH_RECTANGLES
    DWORD nCount;   // of rectangles
    DWORD nRgnSize; // of the rectangles in bytes
    RECT rcBound;
};

struct RGNDATA {
    RGNDATAHEADER rdh;
    char Buffer[1]; // the rectangles, sorted by top, then left
};

/// Corners in any order; equal ones give the empty region.
HRGN CreateRectRgn(int left, int top, int right, int bottom);
HRGN CreateRectRgnIndirect(const RECT* rect);
/// The pixels that Ellipse covers in that rectangle.
HRGN CreateEllipticRgn(int left, int top, int right, int bottom);
HRGN CreateEllipticRgnIndirect(const RECT* rect);
HRGN CreateRoundRectRgn(int left, int top, int right, int bottom, int ellipseWidth, int ellipseHeight);
HRGN CreatePolygonRgn(const POINT* points, int count, int fillMode);
HRGN CreatePolyPolygonRgn(const POINT* points, const INT* counts, int polygons, int fillMode);
/// From the rectangles that GetRegionData gave; `transform` must be null.
HRGN ExtCreateRegion(const void* transform, DWORD size, const RGNDATA* data);
BOOL SetRectRgn(HRGN region, int left, int top, int right, int bottom);
/// `target` must exist and may be one of the sources. RGN_COPY doesn't look at the second.
int CombineRgn(HRGN target, HRGN first, HRGN second, int mode);
/// ERROR (which is FALSE) when one of them is no region.
BOOL EqualRgn(HRGN first, HRGN second);
int OffsetRgn(HRGN region, int dx, int dy);
BOOL PtInRegion(HRGN region, int x, int y);
/// Does a pixel of the rectangle lie in the region?
BOOL RectInRegion(HRGN region, const RECT* rect);
int GetRgnBox(HRGN region, RECT* box);
/// The number of bytes written; with a null buffer the number needed; 0 when the buffer is too small.
DWORD GetRegionData(HRGN region, DWORD size, RGNDATA* data);

BOOL FillRgn(HDC dc, HRGN region, HBRUSH brush);
/// Paints a border inside of the region, `width` and `height` pixels thick.
BOOL FrameRgn(HDC dc, HRGN region, HBRUSH brush, int width, int height);
BOOL PaintRgn(HDC dc, HRGN region);
BOOL InvertRgn(HDC dc, HRGN region);

// The clip region counts in device points, is copied in and out, and lies on top of what of its window a context may
// paint at all. The calls answer the kind of the resulting clip, ERROR on failure.
int SelectClipRgn(HDC dc, HRGN region); // null takes the clip away: SIMPLEREGION
int ExtSelectClipRgn(HDC dc, HRGN region, int mode);
int IntersectClipRect(HDC dc, int left, int top, int right, int bottom); // logical points
int ExcludeClipRect(HDC dc, int left, int top, int right, int bottom);   // logical points
int OffsetClipRgn(HDC dc, int dx, int dy);
/// The bounds, in logical points, of what painting can reach.
int GetClipBox(HDC dc, RECT* box);
/// 1 with a copy in `region`, 0 when there is no clip, -1 on failure.
int GetClipRgn(HDC dc, HRGN region);
BOOL PtVisible(HDC dc, int x, int y);
BOOL RectVisible(HDC dc, const RECT* rect);

// ---- Bitmaps -------------------------------------------------------------------------------------------------------

constexpr DWORD BI_RGB = 0;
constexpr DWORD BI_RLE8 = 1;
constexpr DWORD BI_RLE4 = 2;
constexpr DWORD BI_BITFIELDS = 3; // 16 and 32 bits: three masks follow the header

constexpr UINT DIB_RGB_COLORS = 0;
constexpr UINT DIB_PAL_COLORS = 1; // the table holds 16-bit numbers: not supported, the calls fail

constexpr DWORD CBM_INIT = 4;

struct BITMAPCOREHEADER {
    DWORD bcSize; // 12
    WORD bcWidth;
    WORD bcHeight;
    WORD bcPlanes;
    WORD bcBitCount;
};

struct BITMAPINFOHEADER {
    DWORD biSize; // 40 or more
    LONG biWidth;
    LONG biHeight; // positive: the bottom row comes first; negative: the top row
    WORD biPlanes;
    WORD biBitCount; // 1, 4, 8, 16, 24, 32
    DWORD biCompression;
    DWORD biSizeImage; // bytes of the rows; may be 0 for BI_RGB
    LONG biXPelsPerMeter;
    LONG biYPelsPerMeter;
    DWORD biClrUsed; // entries of the colour table; 0: as many as the depth allows
    DWORD biClrImportant;
};

struct RGBQUAD {
    BYTE rgbBlue;
    BYTE rgbGreen;
    BYTE rgbRed;
    BYTE rgbReserved;
};

struct RGBTRIPLE {
    BYTE rgbtBlue;
    BYTE rgbtGreen;
    BYTE rgbtRed;
};

/// Rows are padded to 4 bytes each.
struct BITMAPINFO {
    BITMAPINFOHEADER bmiHeader;
    RGBQUAD bmiColors[1]; // or the three masks of BI_BITFIELDS
};

#pragma pack(push, 2)
struct BITMAPFILEHEADER {
    WORD bfType; // "BM"
    DWORD bfSize;
    WORD bfReserved1;
    WORD bfReserved2;
    DWORD bfOffBits; // of the rows from the file's start
};
#pragma pack(pop)
static_assert(sizeof(BITMAPFILEHEADER) == 14);

/// What GetObjectA tells of a section.
struct DIBSECTION {
    BITMAP dsBm;
    BITMAPINFOHEADER dsBmih;
    DWORD dsBitfields[3];
    HANDLE dshSection; // null: its memory is its own
    DWORD dsOffset;
};

/// Bits, when given, lie in rows padded to 2 bytes, top row first. One plane and one bit make a monochrome bitmap (0 is
/// black); any other depth a bitmap like the screen's, with 32 bits. Width or height 0 answers a monochrome stock
/// bitmap of 1 x 1 pixel.
HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits);
HBITMAP CreateBitmapIndirect(const BITMAP* bitmap);
/// As the context's own pixels are: monochrome for a memory context that has a monochrome bitmap selected.
HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height);
/// A bitmap whose rows the caller can read and write; they are zero at first and stay valid until the bitmap is
/// deleted. `section` must be null. BI_RGB and BI_BITFIELDS. The colour table is copied.
HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD offset);
/// A bitmap like the screen's of the size in `header`. With CBM_INIT its pixels come from `bits`, described by `info`.
/// A monochrome bitmap only when the context has one selected.
HBITMAP CreateDIBitmap(HDC dc, const BITMAPINFOHEADER* header, DWORD flags, const void* bits, const BITMAPINFO* info,
                       UINT usage);

/// Copies rows into a bitmap. Row 0 is the first one of the picture that `info` describes: the bottom row, or the top
/// row when biHeight is negative. Of BI_RLE4 and BI_RLE8 biSizeImage bounds what is read. The number of rows set; 0 on
/// failure.
int SetDIBits(HDC dc, HBITMAP bitmap, UINT startRow, UINT rows, const void* bits, const BITMAPINFO* info, UINT usage);
/// Copies rows out, converted to the format that the header asks for, and fills in the colour table. With null bits
/// only the header is filled, and, if its biBitCount is 0, with the bitmap's own format. The number of rows; 0 on
/// failure.
int GetDIBits(HDC dc, HBITMAP bitmap, UINT startRow, UINT rows, void* bits, BITMAPINFO* info, UINT usage);
/// Paints `rows` rows of a picture, of which the first given is `startRow` (as in SetDIBits). (sourceX, sourceY) counts
/// from the picture's lower left corner, or from the upper left one when its rows come from the top. The number of
/// rows; 0 on failure.
int SetDIBitsToDevice(HDC dc, int x, int y, DWORD width, DWORD height, int sourceX, int sourceY, UINT startRow,
                      UINT rows, const void* bits, const BITMAPINFO* info, UINT usage);
/// Paints a part of a picture in another size; negative sizes mirror. (sourceX, sourceY) counts from the picture's
/// lower left corner when its rows come from the bottom. The picture's height; 0 on failure.
int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY, int sourceWidth,
                  int sourceHeight, const void* bits, const BITMAPINFO* info, UINT usage, DWORD rop);

/// Rows padded to 2 bytes, top row first. The number of bytes; with a null buffer the number needed.
LONG GetBitmapBits(HBITMAP bitmap, LONG size, LPVOID bits);
LONG SetBitmapBits(HBITMAP bitmap, DWORD size, const void* bits);
/// Of the section selected into the context. The number of entries; 0 for a bitmap without a table.
UINT GetDIBColorTable(HDC dc, UINT start, UINT count, RGBQUAD* colors);
UINT SetDIBColorTable(HDC dc, UINT start, UINT count, const RGBQUAD* colors);

// ---- Painting ------------------------------------------------------------------------------------------------------

// Ternary raster operations. Bits 16 to 23 are the truth table over pattern (4), source (2) and destination (1).
constexpr DWORD SRCCOPY = 0x00CC0020;
constexpr DWORD SRCPAINT = 0x00EE0086;    // S | D
constexpr DWORD SRCAND = 0x008800C6;      // S & D
constexpr DWORD SRCINVERT = 0x00660046;   // S ^ D
constexpr DWORD SRCERASE = 0x00440328;    // S & ~D
constexpr DWORD NOTSRCCOPY = 0x00330008;  // ~S
constexpr DWORD NOTSRCERASE = 0x001100A6; // ~(S | D)
constexpr DWORD MERGECOPY = 0x00C000CA;   // P & S
constexpr DWORD MERGEPAINT = 0x00BB0226;  // ~S | D
constexpr DWORD PATCOPY = 0x00F00021;     // P
constexpr DWORD PATPAINT = 0x00FB0A09;    // P | ~S | D
constexpr DWORD PATINVERT = 0x005A0049;   // P ^ D
constexpr DWORD DSTINVERT = 0x00550009;   // ~D
constexpr DWORD BLACKNESS = 0x00000042;
constexpr DWORD WHITENESS = 0x00FF0062;

/// For MaskBlt: the operation where the mask is 1, and the one where it is 0.
constexpr DWORD MAKEROP4(DWORD foreground, DWORD background) { return ((background << 8) & 0xFF000000) | foreground; }

constexpr UINT FLOODFILLBORDER = 0;  // fills up to the colour
constexpr UINT FLOODFILLSURFACE = 1; // fills what has the colour

// Lines are drawn with the selected pen; their last pixel isn't drawn. Where a line passes halfway between two pixels,
// the upper or left one is taken.
BOOL MoveToEx(HDC dc, int x, int y, POINT* former);
BOOL GetCurrentPositionEx(HDC dc, POINT* position);
BOOL LineTo(HDC dc, int x, int y);
/// Doesn't touch the current position. At least two points.
BOOL Polyline(HDC dc, const POINT* points, int count);
BOOL PolylineTo(HDC dc, const POINT* points, DWORD count);
BOOL PolyPolyline(HDC dc, const POINT* points, const DWORD* counts, DWORD polylines);

// Figures are filled with the selected brush, then framed with the selected pen. With NULL_PEN a figure given by a
// rectangle is one pixel smaller at its right and bottom.
BOOL Polygon(HDC dc, const POINT* points, int count);
BOOL PolyPolygon(HDC dc, const POINT* points, const INT* counts, int polygons);
BOOL Rectangle(HDC dc, int left, int top, int right, int bottom);
BOOL RoundRect(HDC dc, int left, int top, int right, int bottom, int ellipseWidth, int ellipseHeight);
BOOL Ellipse(HDC dc, int left, int top, int right, int bottom);
// From the ray through the first point to that through the second, counterclockwise unless SetArcDirection says
// otherwise; equal rays give the whole ellipse.
BOOL Arc(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY);
BOOL Pie(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY);
BOOL Chord(HDC dc, int left, int top, int right, int bottom, int startX, int startY, int endX, int endY);

/// A brush is a handle or, cast to one, a system colour's number plus 1. Nothing is drawn around. 0 on failure, else
/// not 0.
int FillRect(HDC dc, const RECT* rect, HBRUSH brush);
/// A border of one pixel inside of the rectangle.
int FrameRect(HDC dc, const RECT* rect, HBRUSH brush);
BOOL InvertRect(HDC dc, const RECT* rect);
/// Fills an area of equal colour with the selected brush. FALSE when the point can't be painted or has the border's
/// colour (FLOODFILLBORDER) or another than `color` (FLOODFILLSURFACE).
BOOL ExtFloodFill(HDC dc, int x, int y, COLORREF color, UINT kind);
BOOL FloodFill(HDC dc, int x, int y, COLORREF borderColor);

/// The colour painted; CLR_INVALID when the point lies outside of the clip.
COLORREF SetPixel(HDC dc, int x, int y, COLORREF color);
BOOL SetPixelV(HDC dc, int x, int y, COLORREF color);
/// CLR_INVALID outside of the clip or the bitmap.
COLORREF GetPixel(HDC dc, int x, int y);

// A source context is needed only by operations that use a source. A monochrome bitmap as the source shows its 0 bits
// in the target's text colour and its 1 bits in the target's background colour; onto a monochrome bitmap, pixels of the
// source context's background colour become 1 and all others 0. What lies outside of the source's bitmap is not
// painted.
BOOL PatBlt(HDC dc, int x, int y, int width, int height, DWORD rop);
BOOL BitBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, DWORD rop);
/// Sizes of different sign mirror.
BOOL StretchBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, int sourceWidth,
                int sourceHeight, DWORD rop);
/// `mask` is monochrome and must cover the area. Null is BitBlt with the foreground's operation.
BOOL MaskBlt(HDC dc, int x, int y, int width, int height, HDC source, int sourceX, int sourceY, HBITMAP mask, int maskX,
             int maskY, DWORD rop);
