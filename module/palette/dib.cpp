// Packed device-independent bitmaps.
#include "palette/block_icon_list.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

WORD ColorTableSize(const BITMAPINFOHEADER* dib) { return static_cast<WORD>(DibNumColors(dib) * sizeof(RGBQUAD)); }

} // namespace

UINT DibNumColors(const BITMAPINFOHEADER* dib) {
    if (dib->biClrUsed != 0)
        return dib->biClrUsed;
    switch (dib->biBitCount) {
    case 1:
        return 2;
    case 4:
        return 16;
    case 8:
        return 256;
    default:
        return 0;
    }
}

bool IsWholeDib(const BYTE* bytes, std::size_t count) {
    BITMAPINFOHEADER dib;
    if (count < sizeof dib)
        return false;
    std::memcpy(&dib, bytes, sizeof dib);
    constexpr int kLargestSide = 4096; // of a picture that shall be an icon
    const std::int64_t height = std::llabs(dib.biHeight);
    if (dib.biSize < sizeof dib || dib.biCompression != BI_RGB || dib.biSizeImage == 0 || dib.biWidth <= 0 ||
        dib.biWidth > kLargestSide || height == 0 || height > kLargestSide || dib.biBitCount > 32)
        return false;
    // A table that its 16-bit size can't tell leads the rows astray.
    const std::uint64_t table = std::uint64_t{DibNumColors(&dib)} * sizeof(RGBQUAD);
    const std::int64_t row = (std::int64_t{dib.biWidth} * dib.biBitCount + 31) / 32 * 4;
    return table == ColorTableSize(&dib) && row * height <= std::int64_t{dib.biSizeImage} &&
           std::uint64_t{dib.biSize} + table + dib.biSizeImage <= count;
}

HGLOBAL CopyDibToGlobal(const BITMAPINFOHEADER* dib) {
    const SIZE_T size = SIZE_T{dib->biSize} + ColorTableSize(dib) + dib->biSizeImage;
    const HGLOBAL copy = ::GlobalAlloc(GHND, size);
    if (void* target = ::GlobalLock(copy)) {
        std::memcpy(target, dib, size);
        ::GlobalUnlock(copy);
    }
    return copy;
}

HBITMAP DibToBitmap(HGLOBAL dib) {
    if (!dib)
        return nullptr;
    auto* pHeader = static_cast<BITMAPINFOHEADER*>(::GlobalLock(dib));
    if (!pHeader)
        return nullptr;
    const auto* pBits = reinterpret_cast<const BYTE*>(pHeader) + pHeader->biSize + ColorTableSize(pHeader);
    const HDC hDC = ::GetDC(nullptr);
    const HBITMAP hBitmap =
        ::CreateDIBitmap(hDC, pHeader, CBM_INIT, pBits, reinterpret_cast<const BITMAPINFO*>(pHeader), DIB_RGB_COLORS);
    ::ReleaseDC(nullptr, hDC);
    ::GlobalUnlock(dib);
    return hBitmap;
}
