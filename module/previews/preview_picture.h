// The bitmap that a drawing's file holds as its picture: a header of 40 bytes, a colour table, rows.
#pragma once

#include "mfc/afx.h"

#include <optional>
#include <span>

/// Thumbnails have some 200 x 150 pixels, seldom as many as 700 x 500. What is larger than this was made to do harm,
/// and isn't read.
constexpr DWORD kMostPreviewBytes = 16 << 20;

/// Where the rows of the picture begin, from the start of its data. Nothing when table or rows don't fit into the
/// data, and for a picture of a size or kind that no drawing is saved with.
std::optional<std::size_t> FindPreviewRows(std::span<const BYTE> picture);

/// Exchanges pure black and pure white in the colour table, and clears the fourth byte of its entries. Pictures of
/// more than 256 colours stay as they are. REQUIRES: FindPreviewRows has found rows.
void ExchangeBlackAndWhite(std::span<BYTE> picture);

/// Where a picture of W by H goes in a box of w by h at (x0, y0).
struct CPreviewPlace {
    int x, y, width, height;
};
CPreviewPlace PlacePreview(int W, int H, int x0, int y0, int w, int h);
