// Fonts and plain text output.
//
//     LOGFONTA description{};
//     description.lfHeight = -MulDiv(8, GetDeviceCaps(dc, LOGPIXELSY), 72);
//     std::strcpy(description.lfFaceName, "MS Sans Serif");
//     HGDIOBJ old = SelectObject(dc, CreateFontIndirect(&description));
//     TextOut(dc, 10, 10, "Block", 5);
//     DeleteObject(SelectObject(dc, old));
//
// Text is 8-bit in code page 1252; every byte is one character. Sizes are pixels, and text isn't anti-aliased. Points
// are logical ones of the context. Of a string's box, the text alignment (SetTextAlign) says which corner lies at the
// point given: its upper left one at first. The box is as wide as the characters' advances together and as high as
// tmHeight.
//
// Every face name finds a face: unknown names by pitch and family, and then a sans-serif one. When the font files are
// not installed, all text is 0 pixels wide and nothing of it is painted.
//
// A font is a drawing object: what CreateFont answers belongs to the caller (DeleteObject), and is selected into
// contexts with SelectObject.
//
// Errors: 0 or FALSE. A dead context or font sets ERROR_INVALID_HANDLE, a null pointer or a negative count
// ERROR_INVALID_PARAMETER.
#pragma once

#include "win32/types.h"

constexpr int LF_FACESIZE = 32;

// lfWeight. From FW_SEMIBOLD on, the bold face is taken.
constexpr int FW_DONTCARE = 0;
constexpr int FW_THIN = 100;
constexpr int FW_EXTRALIGHT = 200;
constexpr int FW_LIGHT = 300;
constexpr int FW_NORMAL = 400;
constexpr int FW_REGULAR = FW_NORMAL;
constexpr int FW_MEDIUM = 500;
constexpr int FW_SEMIBOLD = 600;
constexpr int FW_DEMIBOLD = FW_SEMIBOLD;
constexpr int FW_BOLD = 700;
constexpr int FW_EXTRABOLD = 800;
constexpr int FW_HEAVY = 900;
constexpr int FW_BLACK = FW_HEAVY;

constexpr BYTE ANSI_CHARSET = 0;
constexpr BYTE DEFAULT_CHARSET = 1;
constexpr BYTE SYMBOL_CHARSET = 2;
constexpr BYTE OEM_CHARSET = 255;

constexpr BYTE OUT_DEFAULT_PRECIS = 0;
constexpr BYTE OUT_STRING_PRECIS = 1;
constexpr BYTE OUT_CHARACTER_PRECIS = 2;
constexpr BYTE OUT_STROKE_PRECIS = 3;
constexpr BYTE OUT_TT_PRECIS = 4;
constexpr BYTE OUT_DEVICE_PRECIS = 5;
constexpr BYTE OUT_RASTER_PRECIS = 6;
constexpr BYTE OUT_TT_ONLY_PRECIS = 7;
constexpr BYTE OUT_OUTLINE_PRECIS = 8;

constexpr BYTE CLIP_DEFAULT_PRECIS = 0;
constexpr BYTE CLIP_CHARACTER_PRECIS = 1;
constexpr BYTE CLIP_STROKE_PRECIS = 2;
constexpr BYTE CLIP_LH_ANGLES = 0x10;

constexpr BYTE DEFAULT_QUALITY = 0;
constexpr BYTE DRAFT_QUALITY = 1;
constexpr BYTE PROOF_QUALITY = 2;
constexpr BYTE NONANTIALIASED_QUALITY = 3;
constexpr BYTE ANTIALIASED_QUALITY = 4;

// The lower bits of lfPitchAndFamily...
constexpr BYTE DEFAULT_PITCH = 0;
constexpr BYTE FIXED_PITCH = 1;
constexpr BYTE VARIABLE_PITCH = 2;
// ...and the upper ones.
constexpr BYTE FF_DONTCARE = 0x00;
constexpr BYTE FF_ROMAN = 0x10;
constexpr BYTE FF_SWISS = 0x20;
constexpr BYTE FF_MODERN = 0x30;
constexpr BYTE FF_SCRIPT = 0x40;
constexpr BYTE FF_DECORATIVE = 0x50;

// tmPitchAndFamily. TMPF_FIXED_PITCH is set when the widths differ, whatever its name says.
constexpr BYTE TMPF_FIXED_PITCH = 0x01;
constexpr BYTE TMPF_VECTOR = 0x02;
constexpr BYTE TMPF_TRUETYPE = 0x04;
constexpr BYTE TMPF_DEVICE = 0x08;

struct LOGFONTA {
    LONG lfHeight;      // negative: height of the em; positive: of the cell; 0: the default, a cell of 16 pixels
    LONG lfWidth;       // average width of a character; 0: as the height gives it
    LONG lfEscapement;  // tenths of a degree, counterclockwise; rounded to a quarter turn
    LONG lfOrientation; // taken to be the same
    LONG lfWeight;
    BYTE lfItalic;
    BYTE lfUnderline;
    BYTE lfStrikeOut;
    BYTE lfCharSet;
    BYTE lfOutPrecision;
    BYTE lfClipPrecision;
    BYTE lfQuality;
    BYTE lfPitchAndFamily;
    CHAR lfFaceName[LF_FACESIZE];
};
using LOGFONT = LOGFONTA;
using LPLOGFONT = LOGFONTA*;

struct TEXTMETRICA {
    LONG tmHeight; // of the cell: ascent and descent
    LONG tmAscent;
    LONG tmDescent;
    LONG tmInternalLeading; // what the cell is higher than the em
    LONG tmExternalLeading; // space to the next line's cell
    LONG tmAveCharWidth;    // as the face declares it, at this size
    LONG tmMaxCharWidth;
    LONG tmWeight;
    LONG tmOverhang; // 0
    LONG tmDigitizedAspectX;
    LONG tmDigitizedAspectY;
    BYTE tmFirstChar;
    BYTE tmLastChar;
    BYTE tmDefaultChar;
    BYTE tmBreakChar; // the blank
    BYTE tmItalic;
    BYTE tmUnderlined;
    BYTE tmStruckOut;
    BYTE tmPitchAndFamily;
    BYTE tmCharSet;
};
using TEXTMETRIC = TEXTMETRICA;
using LPTEXTMETRIC = TEXTMETRICA*;

/// Null only for a null pointer, or when there are too many objects.
HFONT CreateFontIndirectA(const LOGFONTA* description);
HFONT CreateFontA(int height, int width, int escapement, int orientation, int weight, DWORD italic, DWORD underline,
                  DWORD strikeOut, DWORD charSet, DWORD outPrecision, DWORD clipPrecision, DWORD quality,
                  DWORD pitchAndFamily, LPCSTR faceName);
VNDK_TEXT_CALL(CreateFontIndirect);
VNDK_TEXT_CALL(CreateFont);

// Of the font that the context has selected.
BOOL GetTextMetricsA(HDC dc, TEXTMETRICA* metrics);
/// The name that the font was asked for by. With a null buffer the size needed; else the characters copied, the closing
/// NUL counted in.
int GetTextFaceA(HDC dc, int size, LPSTR buffer);
VNDK_TEXT_CALL(GetTextMetrics);
VNDK_TEXT_CALL(GetTextFace);

BOOL GetTextExtentPoint32A(HDC dc, LPCSTR text, int count, SIZE* size);
BOOL GetTextExtentPointA(HDC dc, LPCSTR text, int count, SIZE* size);
/// `fit`, if not null, gets the number of characters that go into `maxExtent` pixels (all of them when it is null);
/// `extents`, if not null, the width up to and with each of these; `size` that of the whole text.
BOOL GetTextExtentExPointA(HDC dc, LPCSTR text, int count, int maxExtent, INT* fit, INT* extents, SIZE* size);
/// Advances of the characters `first` to `last`, both from 0 to 255.
BOOL GetCharWidth32A(HDC dc, UINT first, UINT last, INT* widths);
BOOL GetCharWidthA(HDC dc, UINT first, UINT last, INT* widths);
VNDK_TEXT_CALL(GetTextExtentPoint32);
VNDK_TEXT_CALL(GetTextExtentPoint);
VNDK_TEXT_CALL(GetTextExtentExPoint);
VNDK_TEXT_CALL(GetCharWidth32);
VNDK_TEXT_CALL(GetCharWidth);

constexpr UINT ETO_OPAQUE = 0x0002;  // fills the rectangle with the background colour first
constexpr UINT ETO_CLIPPED = 0x0004; // paints text only within the rectangle

/// Paints in the context's text colour. In OPAQUE mode the text's box is filled with the background colour first.
BOOL TextOutA(HDC dc, int x, int y, LPCSTR text, int count);
/// The rectangle may be null when no flag asks for it; the text may be null when `count` is 0. `advances`, if not null,
/// holds the distance from each character to the next in place of the font's.
BOOL ExtTextOutA(HDC dc, int x, int y, UINT flags, const RECT* rect, LPCSTR text, UINT count, const INT* advances);
VNDK_TEXT_CALL(TextOut);
VNDK_TEXT_CALL(ExtTextOut);

/// number * numerator / denominator with a 64-bit product, rounded to nearest and halves away from zero; -1 when the
/// result doesn't fit or the denominator is 0.
int MulDiv(int number, int numerator, int denominator);
