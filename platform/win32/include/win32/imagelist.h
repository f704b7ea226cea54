// Image lists: pictures of one size, kept side by side, with a mask each.
//
//     HIMAGELIST images = ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, 10, 5);
//     ImageList_AddMasked(images, strip, RGB(255, 0, 255));    // as many images as the strip is wide
//     ImageList_Draw(images, 0, dc, x, y, ILD_TRANSPARENT);
//     ImageList_Destroy(images);
//
// Images are numbered from 0; removing one moves those behind it up. The list belongs to whom created it; bitmaps and
// icons that are added are copied.
//
// Errors: null, FALSE, 0, or -1 where an index is answered. A dead list sets ERROR_INVALID_HANDLE, an index outside
// ERROR_INVALID_PARAMETER.
#pragma once

#include "win32/gdi.h"
#include "win32/types.h"

constexpr UINT ILC_MASK = 0x00000001;
constexpr UINT ILC_COLOR = 0x00000000;    // the default depth: 4 bits
constexpr UINT ILC_COLORDDB = 0x000000FE; // as the screen
constexpr UINT ILC_COLOR4 = 0x00000004;   // the 16 standard colours
constexpr UINT ILC_COLOR8 = 0x00000008;
constexpr UINT ILC_COLOR16 = 0x00000010;
constexpr UINT ILC_COLOR24 = 0x00000018;
constexpr UINT ILC_COLOR32 = 0x00000020;

constexpr UINT ILD_NORMAL = 0x0000; // the masked part gets the list's background colour, or stays when there is none
constexpr UINT ILD_TRANSPARENT = 0x0001; // the masked part stays
constexpr UINT ILD_BLEND25 = 0x0002;
constexpr UINT ILD_FOCUS = ILD_BLEND25;
constexpr UINT ILD_BLEND50 = 0x0004;
constexpr UINT ILD_SELECTED = ILD_BLEND50;
constexpr UINT ILD_BLEND = ILD_BLEND50;
constexpr UINT ILD_MASK = 0x0010;  // paints the mask alone
constexpr UINT ILD_IMAGE = 0x0020; // paints the colours alone, without the mask
constexpr UINT ILD_OVERLAYMASK = 0x0F00;
constexpr UINT INDEXTOOVERLAYMASK(UINT index) { return index << 8; }

struct IMAGEINFO {
    HBITMAP hbmImage; // the list's own: not to be deleted, nor selected while the list is drawn from
    HBITMAP hbmMask;  // null without ILC_MASK
    int Unused1;
    int Unused2;
    RECT rcImage; // of the image within both
};

struct IMAGELISTDRAWPARAMS {
    DWORD cbSize;
    HIMAGELIST himl;
    int i;
    HDC hdcDst;
    int x;
    int y;
    int cx;      // 0: up to the image's right edge
    int cy;      // 0: up to its lower edge
    int xBitmap; // where in the image to begin
    int yBitmap;
    COLORREF rgbBk; // CLR_NONE, CLR_DEFAULT (the list's) or a colour
    COLORREF rgbFg; // for blends: CLR_NONE (the target's own pixels), CLR_DEFAULT (COLOR_HIGHLIGHT) or a colour
    UINT fStyle;
    DWORD dwRop; // not used
};

/// `flags`: a colour depth, and ILC_MASK. Room for `initial` images at first; it grows by `grow` at a time.
HIMAGELIST ImageList_Create(int width, int height, UINT flags, int initial, int grow);
BOOL ImageList_Destroy(HIMAGELIST list);
HIMAGELIST ImageList_Duplicate(HIMAGELIST list);
/// A list of the images of a bitmap resource or file (`kind` IMAGE_BITMAP) that are `width` wide; with a mask when
/// `mask` isn't CLR_NONE (CLR_DEFAULT: the colour of the first pixel). `flags` as of LoadImage.
HIMAGELIST ImageList_LoadImageA(HINSTANCE instance, LPCSTR name, int width, int grow, COLORREF mask, UINT kind,
                                UINT flags);
VNDK_TEXT_CALL(ImageList_LoadImage);
inline HIMAGELIST ImageList_LoadBitmap(HINSTANCE instance, LPCSTR name, int width, int grow, COLORREF mask) {
    return ImageList_LoadImageA(instance, name, width, grow, mask, 0, 0);
}

int ImageList_GetImageCount(HIMAGELIST list);
/// New images are black; those behind the count are dropped.
BOOL ImageList_SetImageCount(HIMAGELIST list, UINT count);
BOOL ImageList_GetIconSize(HIMAGELIST list, int* width, int* height);
/// Removes all images. FALSE when the size is the list's already.
BOOL ImageList_SetIconSize(HIMAGELIST list, int width, int height);
BOOL ImageList_GetImageInfo(HIMAGELIST list, int index, IMAGEINFO* info);

/// The former colour: CLR_NONE at first.
COLORREF ImageList_SetBkColor(HIMAGELIST list, COLORREF color);
COLORREF ImageList_GetBkColor(HIMAGELIST list);

/// Appends the images of a bitmap that is a multiple of the list's width wide (a rest doesn't count). 1 bits of the
/// mask become transparent; in the list's pictures they are black. The index of the first; -1 on failure.
int ImageList_Add(HIMAGELIST list, HBITMAP image, HBITMAP mask);
/// Pixels of the colour become transparent, and black: in the list and in the caller's bitmap (black also where the
/// list has no mask). CLR_DEFAULT: the colour of the first pixel.
int ImageList_AddMasked(HIMAGELIST list, HBITMAP image, COLORREF mask);
BOOL ImageList_Replace(HIMAGELIST list, int index, HBITMAP image, HBITMAP mask);
/// Index -1 appends. The icon is stretched to the list's size; in a list without a mask it stands on the background
/// colour. The image's index; -1 on failure.
int ImageList_ReplaceIcon(HIMAGELIST list, int index, HICON icon);
inline int ImageList_AddIcon(HIMAGELIST list, HICON icon) { return ImageList_ReplaceIcon(list, -1, icon); }
/// Index -1 removes all: TRUE also when there is none.
BOOL ImageList_Remove(HIMAGELIST list, int index);
inline BOOL ImageList_RemoveAll(HIMAGELIST list) { return ImageList_Remove(list, -1); }

constexpr UINT ILCF_MOVE = 0; // copies over the target
constexpr UINT ILCF_SWAP = 1;
/// Within one list.
BOOL ImageList_Copy(HIMAGELIST target, int targetIndex, HIMAGELIST source, int sourceIndex, UINT flags);
/// Overlays are numbered from 1 to 15.
BOOL ImageList_SetOverlayImage(HIMAGELIST list, int index, int overlay);

BOOL ImageList_Draw(HIMAGELIST list, int index, HDC dc, int x, int y, UINT style);
/// Sizes 0: the image's own. Colours as in IMAGELISTDRAWPARAMS.
BOOL ImageList_DrawEx(HIMAGELIST list, int index, HDC dc, int x, int y, int width, int height, COLORREF background,
                      COLORREF foreground, UINT style);
BOOL ImageList_DrawIndirect(const IMAGELISTDRAWPARAMS* params);

/// An icon of its own, which the caller destroys. `style` ILD_TRANSPARENT or ILD_NORMAL, with an overlay or without.
HICON ImageList_GetIcon(HIMAGELIST list, int index, UINT style);
inline HICON ImageList_ExtractIcon(HINSTANCE /*instance*/, HIMAGELIST list, int index) {
    return ImageList_GetIcon(list, index, 0);
}
