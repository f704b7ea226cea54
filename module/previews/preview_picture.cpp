#include "previews/preview_picture.h"

#include <cstdlib>
#include <cstring>

namespace {

constexpr std::size_t kHeaderSize = sizeof(BITMAPINFOHEADER);
constexpr std::uint64_t kMostColours = 256; // that a table of which black and white are exchanged may have
constexpr std::int64_t kMostPixels = kMostPreviewBytes / 4; // of the bitmap that is made for the screen

BITMAPINFOHEADER HeaderOf(std::span<const BYTE> picture) {
    BITMAPINFOHEADER header;
    std::memcpy(&header, picture.data(), sizeof header);
    return header;
}

std::uint64_t ColourCount(const BITMAPINFOHEADER& header) {
    if (header.biClrUsed != 0)
        return header.biClrUsed;
    return header.biBitCount <= 8 ? 1U << header.biBitCount : kMostColours + 1;
}

std::uint64_t RowsOffset(const BITMAPINFOHEADER& header) {
    if (header.biBitCount <= 8)
        return kHeaderSize + sizeof(RGBQUAD) * ColourCount(header);
    const std::uint64_t masks = header.biCompression == BI_BITFIELDS ? 3 : 0;
    return kHeaderSize + sizeof(RGBQUAD) * (header.biClrUsed + masks);
}

/// Both sides of a picture that can be shown; its rows may begin at the top.
bool HasSize(const BITMAPINFOHEADER& header) {
    const std::int64_t width = header.biWidth;
    const std::int64_t height = std::abs(std::int64_t{header.biHeight});
    return width > 0 && height > 0 && width <= kMostPixels && width * height <= kMostPixels;
}

/// Of run-length coded rows, what the header says of them.
std::uint64_t RowsSize(const BITMAPINFOHEADER& header) {
    if (header.biCompression == BI_RLE4 || header.biCompression == BI_RLE8)
        return header.biSizeImage;
    const std::uint64_t bits = std::uint64_t(header.biWidth) * header.biBitCount;
    return (bits + 31) / 32 * 4 * static_cast<std::uint64_t>(std::abs(std::int64_t{header.biHeight}));
}

/// A real number cut toward zero.
int Cut(double value) { return static_cast<int>(value); }

/// Topmost row of the list on which a picture may begin.
constexpr int kFloor = 18;

} // namespace

std::optional<std::size_t> FindPreviewRows(std::span<const BYTE> picture) {
    if (picture.size() < kHeaderSize)
        return {};
    const BITMAPINFOHEADER header = HeaderOf(picture);
    if (header.biSize != kHeaderSize || !HasSize(header))
        return {};
    const std::uint64_t rows = RowsOffset(header);
    const std::uint64_t colours = ColourCount(header);
    const std::uint64_t table = colours <= kMostColours ? kHeaderSize + sizeof(RGBQUAD) * colours : kHeaderSize;
    if (rows > picture.size() || table > picture.size() || RowsSize(header) > picture.size() - rows)
        return {};
    return static_cast<std::size_t>(rows);
}

void ExchangeBlackAndWhite(std::span<BYTE> picture) {
    const std::uint64_t colours = ColourCount(HeaderOf(picture));
    if (colours > kMostColours)
        return;
    for (std::size_t i = 0; i < colours; ++i) {
        BYTE* pEntry = &picture[kHeaderSize + i * sizeof(RGBQUAD)];
        const bool white = pEntry[0] == 255 && pEntry[1] == 255 && pEntry[2] == 255;
        const bool black = pEntry[0] == 0 && pEntry[1] == 0 && pEntry[2] == 0;
        if (white || black)
            std::memset(pEntry, white ? 0 : 255, 3);
        pEntry[3] = 0;
    }
}

CPreviewPlace PlacePreview(int W, int H, int x0, int y0, int w, int h) {
    int x = x0, y = y0, dW = W, dH = H;
    if (W < w && H == h)
        return {x0 + (w - W) / 2, y, dW, dH};
    if (H < h && W == w)
        return {x, y0 + (h - H) / 2, dW, dH};
    if (H > h) {
        dH = h;
        dW = Cut(double(W) / H * h);
        x = (w - dW) / 2;
    } else if (H < h) {
        const double r = double(H) / W;
        dW = r <= 1.0 ? w : Cut(h / r);
        dH = r <= 1.0 ? Cut(w * r) : h;
        x = x0 + (w - dW) / 2;
        y = y0 + (h - dH) / 2;
    }
    if (dW > w) {
        dH = Cut(double(dH) / dW * w);
        dW = w;
        x = 1;
        y += (h - dH) / 2;
    }
    if (dH > h) {
        dW = Cut(double(dW) * h / dH);
        dH = h;
    }
    return {x, y < kFloor ? kFloor : y, dW, dH};
}
