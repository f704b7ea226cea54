// Bitmaps behind handles: those like the screen's and monochrome ones.
#include "gdi/device_context.h"
#include "gdi/dib.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace vndk::win32 {

namespace {

const ColorTable& monochromeColors() {
    static const ColorTable& colors = *new ColorTable{0x000000, 0xFFFFFF};
    return colors;
}

PixelFormat deviceFormat(bool monochrome) {
    PixelFormat format;
    if (monochrome) {
        format.bits = 1;
        format.monochrome = true;
    }
    return format;
}

/// Of a row in the interface's form for device bitmaps: padded to 2 bytes.
std::size_t wordAlignedStride(int width, int bits) {
    return (static_cast<std::size_t>(width) * static_cast<std::size_t>(bits) + 15) / 16 * 2;
}

} // namespace

std::optional<std::size_t> dibStride(std::int64_t width, int bits) {
    if (width < 1 || width > maxBitmapBytes * 8)
        return {};
    return static_cast<std::size_t>((width * bits + 31) / 32 * 4);
}

bool BitmapObject::allocate(int width, int height, const PixelFormat& format) {
    const auto stride = dibStride(width, format.bits);
    if (!stride || height < 1 || *stride > static_cast<std::size_t>(maxBitmapBytes) / static_cast<std::size_t>(height))
        return false;
    byteCount_ = *stride * static_cast<std::size_t>(height);
    bytes_.reset(static_cast<std::uint8_t*>(std::calloc(byteCount_, 1)));
    if (bytes_ == nullptr)
        return false;
    surface_ = {bytes_.get(), static_cast<std::ptrdiff_t>(*stride), width, height, format, nullptr};
    return true;
}

std::unique_ptr<BitmapObject> BitmapObject::createDevice(int width, int height, bool monochrome) {
    std::unique_ptr<BitmapObject> bitmap(new BitmapObject);
    if (!bitmap->allocate(width, height, deviceFormat(monochrome)))
        return nullptr;
    if (monochrome)
        bitmap->surface_.colors = &monochromeColors();
    return bitmap;
}

std::unique_ptr<BitmapObject> BitmapObject::createSection(const BITMAPINFOHEADER& header, const PixelFormat& format,
                                                          ColorTable colors) {
    std::unique_ptr<BitmapObject> bitmap(new BitmapObject);
    if (!bitmap->allocate(header.biWidth, std::abs(header.biHeight), format))
        return nullptr;
    bitmap->header_ = header;
    bitmap->colors_ = std::move(colors);
    Surface& surface = bitmap->surface_;
    if (!bitmap->colors_.empty())
        surface.colors = &bitmap->colors_;
    if (header.biHeight > 0) {
        surface.top += surface.stride * (surface.height - 1);
        surface.stride = -surface.stride;
    }
    return bitmap;
}

std::unique_ptr<BitmapObject> BitmapObject::clone() const {
    auto copy =
        isSection() ? createSection(header_, surface_.format, colors_) : createDevice(width(), height(), monochrome());
    if (copy != nullptr)
        std::memcpy(copy->bytes(), bytes(), byteCount_);
    return copy;
}

namespace {

/// Rows as CreateBitmap and SetBitmapBits take them, seen as a surface. Indexed ones get the standard colours.
Surface surfaceOnRows(const void* bits, int width, int height, int bitsPerPixel) {
    Surface rows;
    rows.top = static_cast<std::uint8_t*>(const_cast<void*>(bits));
    rows.stride = static_cast<std::ptrdiff_t>(wordAlignedStride(width, bitsPerPixel));
    rows.width = width;
    rows.height = height;
    rows.format.bits = bitsPerPixel;
    if (bitsPerPixel == 16) {
        rows.format.red = 0xF800;
        rows.format.green = 0x07E0;
        rows.format.blue = 0x001F;
    }
    if (rows.format.indexed())
        rows.colors = &standardColors(bitsPerPixel);
    return rows;
}

void copyRows(const Surface& from, const Surface& to, int count) {
    std::vector<std::uint32_t> row(static_cast<std::size_t>(to.width));
    for (int y = 0; y < count; ++y) {
        loadArgb(from, 0, y, to.width, row.data());
        storeArgb(to, 0, y, to.width, row.data());
    }
}

bool isSize(int width, int height) {
    if (width >= 0 && height >= 0)
        return true;
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

/// Copies between a bitmap and rows in the interface's form, up to `size` bytes.
template <typename Copy>
LONG eachRow(const BitmapObject& bitmap, std::size_t size, Copy copy) {
    const std::size_t stride = wordAlignedStride(bitmap.width(), bitmap.surface().format.bits);
    std::size_t done = 0;
    for (int y = 0; y < bitmap.height() && done < size; ++y) {
        const std::size_t length = std::min(stride, size - done);
        copy(bitmap.surface().row(y), done, length);
        done += length;
    }
    return static_cast<LONG>(done);
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

HBITMAP CreateBitmap(int width, int height, UINT planes, UINT bitsPerPixel, const void* bits) {
    if (!isSize(width, height))
        return nullptr;
    if (width == 0 || height == 0)
        return stockBitmap();
    const UINT depth = planes <= 32 && bitsPerPixel <= 32 ? planes * bitsPerPixel : 0;
    constexpr std::array<UINT, 6> depths{1, 4, 8, 16, 24, 32};
    if (std::find(depths.begin(), depths.end(), depth) == depths.end()) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto bitmap = BitmapObject::createDevice(width, height, depth == 1);
    if (bitmap != nullptr && bits != nullptr)
        copyRows(surfaceOnRows(bits, width, height, static_cast<int>(depth)), bitmap->surface(), height);
    return newBitmap(std::move(bitmap));
}

HBITMAP CreateBitmapIndirect(const BITMAP* bitmap) {
    if (bitmap == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return CreateBitmap(bitmap->bmWidth, bitmap->bmHeight, bitmap->bmPlanes, bitmap->bmBitsPixel, bitmap->bmBits);
}

HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr || !isSize(width, height))
        return nullptr;
    if (width == 0 || height == 0)
        return stockBitmap();
    const auto* selected = context->state.bitmap.get<BitmapObject>();
    if (selected == nullptr || !selected->isSection())
        return newBitmap(BitmapObject::createDevice(width, height, selected != nullptr && selected->monochrome()));
    BITMAPINFOHEADER header = selected->header();
    header.biWidth = width;
    header.biHeight = selected->header().biHeight > 0 ? height : -height;
    header.biSizeImage = 0;
    return newBitmap(BitmapObject::createSection(header, selected->surface().format,
                                                 selected->surface().colors != nullptr ? *selected->surface().colors
                                                                                       : ColorTable{}));
}

LONG GetBitmapBits(HBITMAP bitmap, LONG size, LPVOID bits) {
    const auto* object = requireObject<BitmapObject>(bitmap);
    if (object == nullptr)
        return 0;
    const std::size_t needed =
        wordAlignedStride(object->width(), object->surface().format.bits) * static_cast<std::size_t>(object->height());
    if (bits == nullptr)
        return static_cast<LONG>(needed);
    // A negative size is taken for the whole, as the published call does.
    const std::size_t limit = size < 0 ? needed : static_cast<std::size_t>(size);
    return eachRow(*object, limit, [bits](std::uint8_t* row, std::size_t done, std::size_t length) {
        std::memcpy(static_cast<std::uint8_t*>(bits) + done, row, length);
    });
}

LONG SetBitmapBits(HBITMAP bitmap, DWORD size, const void* bits) {
    auto* object = requireObject<BitmapObject>(bitmap);
    if (object == nullptr)
        return 0;
    if (bits == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    return eachRow(*object, size, [bits](std::uint8_t* row, std::size_t done, std::size_t length) {
        std::memcpy(row, static_cast<const std::uint8_t*>(bits) + done, length);
    });
}
