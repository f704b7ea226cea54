// Any bytes as a packed bitmap, as resources and files hold them: decoded, made a bitmap, and painted.

#include "gdi/packed_dib.h"
#include "win32/gdi.h"

#include <cstring>
#include <vector>

using namespace vndk::win32;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const HDC canvas = [] {
        const HDC dc = CreateCompatibleDC(nullptr);
        SelectObject(dc, CreateBitmap(64, 64, 1, 32, nullptr));
        return dc;
    }();
    const auto packed = readPackedDib({data, size});
    if (!packed || packed->dib.width > 4096 || packed->dib.height > 4096)
        return 0;
    if (const auto picture = PackedPicture::read(*packed)) {
        const Surface surface = picture->surface();
        std::vector<uint32_t> row(static_cast<size_t>(surface.width));
        for (int y = 0; y < surface.height; ++y)
            loadArgb(surface, 0, y, surface.width, row.data());
        std::vector<uint32_t> info((size + 3) / 4); // aligned, as the interface's structures are
        std::memcpy(info.data(), data, size);
        const auto* header = reinterpret_cast<const BITMAPINFO*>(info.data());
        const uint8_t* rows = reinterpret_cast<const uint8_t*>(info.data()) + dibHeaderBytes(*header);
        if (!packed->dib.compressed() || packed->dib.header.biSizeImage <= packed->rows.size())
            StretchDIBits(canvas, 0, 0, 64, 64, 0, 0, surface.width, surface.height, rows, header, DIB_RGB_COLORS,
                          SRCCOPY);
    }
    return 0;
}
