// Icons and cursors: made of bitmaps, taken apart again, destroyed.
#include "gdi/icon.h"

#include "kernel/handle_table.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr std::size_t mostIcons = 65536;
constexpr std::uint32_t colorBits = 0x00FFFFFF;

/// Never destroyed: libraries give icons back as late as in their statics' destructors.
HandleTable<IconImage, HICON>& icons() {
    static auto& table = *new HandleTable<IconImage, HICON>{HandleKind::icon};
    return table;
}

bool validSize(int width, int height) {
    return width >= 1 && height >= 1 && width <= largestIcon && height <= largestIcon;
}

/// The bits of a mask, from row `firstRow` of the bitmap on; what the bitmap doesn't have is 0.
void readMask(const BitmapObject& bitmap, int firstRow, IconImage& image) {
    const Surface& surface = bitmap.surface();
    const int columns = std::min(image.width, surface.width);
    std::vector<std::uint32_t> row(static_cast<std::size_t>(columns));
    for (int y = 0; y < image.height && firstRow + y < surface.height; ++y) {
        loadArgb(surface, 0, firstRow + y, columns, row.data());
        std::transform(row.begin(), row.end(), image.mask.begin() + static_cast<std::ptrdiff_t>(image.index(0, y)),
                       [](std::uint32_t argb) { return (argb & colorBits) != 0 ? 1 : 0; });
    }
}

void readPixels(const BitmapObject& bitmap, int firstRow, IconImage& image) {
    for (int y = 0; y < image.height; ++y)
        loadArgb(bitmap.surface(), 0, firstRow + y, image.width, image.pixels.data() + image.index(0, y));
}

void writePixels(const BitmapObject& bitmap, int firstRow, const IconImage& image) {
    for (int y = 0; y < image.height; ++y)
        storeArgb(bitmap.surface(), 0, firstRow + y, image.width, image.pixels.data() + image.index(0, y));
}

void writeMask(const BitmapObject& bitmap, const IconImage& image) {
    std::vector<std::uint32_t> row(static_cast<std::size_t>(image.width));
    for (int y = 0; y < image.height; ++y) {
        std::copy_n(image.mask.begin() + static_cast<std::ptrdiff_t>(image.index(0, y)), image.width, row.begin());
        storePixels(bitmap.surface(), 0, y, image.width, row.data());
    }
}

std::optional<IconImage> refuse() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return {};
}

POINT hotSpotWithin(const IconImage& image, DWORD x, DWORD y) {
    return {static_cast<LONG>(std::min<DWORD>(x, static_cast<DWORD>(image.width - 1))),
            static_cast<LONG>(std::min<DWORD>(y, static_cast<DWORD>(image.height - 1)))};
}

/// Bits in rows padded to 2 bytes as a bitmap that is deleted when this goes.
class TemporaryBitmap {
public:
    TemporaryBitmap(int width, int height, UINT bits, const void* rows)
        : handle_(CreateBitmap(width, height, 1, bits, rows)) {}
    ~TemporaryBitmap() { DeleteObject(handle_); }
    TemporaryBitmap(const TemporaryBitmap&) = delete;
    TemporaryBitmap& operator=(const TemporaryBitmap&) = delete;
    [[nodiscard]] HBITMAP handle() const { return handle_; }

private:
    HBITMAP handle_;
};

HICON createFromBits(const ICONINFO& model, int width, int height, UINT colorBitsPerPixel, const void* andBits,
                     const void* xorBits) {
    if (!validSize(width, height) || andBits == nullptr || xorBits == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    const TemporaryBitmap mask(width, height, 1, andBits);
    const TemporaryBitmap color(width, height, colorBitsPerPixel, xorBits);
    ICONINFO info = model;
    info.hbmMask = mask.handle();
    info.hbmColor = color.handle();
    auto image = iconFromBitmaps(info);
    if (!image)
        return nullptr;
    image->colored = colorBitsPerPixel != 1;
    return newIcon(std::move(*image));
}

} // namespace

IconImage IconImage::blank(int width, int height) {
    IconImage image;
    image.width = width;
    image.height = height;
    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    image.pixels.assign(count, 0);
    image.mask.assign(count, 1);
    return image;
}

void IconImage::findAlpha() {
    const std::uint32_t first = pixels.front() >> 24;
    alpha = (first != 0 && first != 0xFF) ||
            std::any_of(pixels.begin(), pixels.end(), [=](std::uint32_t pixel) { return pixel >> 24 != first; });
}

IconImage IconImage::stretched(int newWidth, int newHeight) const {
    if (newWidth == width && newHeight == height)
        return *this;
    IconImage result = blank(newWidth, newHeight);
    result.alpha = alpha;
    result.colored = colored;
    result.cursor = cursor;
    result.hot = {static_cast<LONG>(std::int64_t{hot.x} * newWidth / width),
                  static_cast<LONG>(std::int64_t{hot.y} * newHeight / height)};
    for (int y = 0; y < newHeight; ++y) {
        const int fromY = static_cast<int>(std::int64_t{y} * height / newHeight);
        for (int x = 0; x < newWidth; ++x) {
            const std::size_t from = index(static_cast<int>(std::int64_t{x} * width / newWidth), fromY);
            result.pixels[result.index(x, y)] = pixels[from];
            result.mask[result.index(x, y)] = mask[from];
        }
    }
    return result;
}

HICON newIcon(IconImage image) {
    if (icons().size() >= mostIcons) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return icons().add(std::make_unique<IconImage>(std::move(image)));
}

IconImage* requireIcon(HICON icon) {
    IconImage* image = icons().find(icon);
    if (image == nullptr)
        SetLastError(ERROR_INVALID_CURSOR_HANDLE);
    return image;
}

std::size_t iconCount() { return icons().size(); }

std::optional<IconImage> iconFromBitmaps(const ICONINFO& info) {
    const auto* mask = requireObject<BitmapObject>(info.hbmMask);
    if (mask == nullptr)
        return {};
    const bool colored = info.hbmColor != nullptr;
    const auto* color = colored ? requireObject<BitmapObject>(info.hbmColor) : mask;
    if (color == nullptr)
        return {};
    const int width = color->width();
    const int height = colored ? color->height() : mask->height() / 2;
    if (!validSize(width, height))
        return refuse();
    IconImage image = IconImage::blank(width, height);
    std::fill(image.mask.begin(), image.mask.end(), std::uint8_t{0});
    readMask(*mask, 0, image);
    readPixels(*color, colored ? 0 : height, image);
    image.colored = colored;
    image.cursor = info.fIcon == FALSE;
    image.hot = image.cursor ? hotSpotWithin(image, info.xHotspot, info.yHotspot) : POINT{width / 2, height / 2};
    if (color->surface().format.isArgb())
        image.findAlpha();
    return image;
}

} // namespace vndk::win32

using namespace vndk::win32;

HICON CreateIconIndirect(const ICONINFO* info) {
    if (info == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto image = iconFromBitmaps(*info);
    return image ? newIcon(std::move(*image)) : nullptr;
}

HICON CreateIcon(HINSTANCE /*instance*/, int width, int height, BYTE planes, BYTE bitsPerPixel, const BYTE* andBits,
                 const BYTE* xorBits) {
    const bool known = planes == 1 && (bitsPerPixel == 1 || bitsPerPixel == 32);
    if (!known) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    ICONINFO model{};
    model.fIcon = TRUE;
    return createFromBits(model, width, height, bitsPerPixel, andBits, xorBits);
}

HCURSOR CreateCursor(HINSTANCE /*instance*/, int hotX, int hotY, int width, int height, const void* andBits,
                     const void* xorBits) {
    if (hotX < 0 || hotY < 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    ICONINFO model{};
    model.xHotspot = static_cast<DWORD>(hotX);
    model.yHotspot = static_cast<DWORD>(hotY);
    return createFromBits(model, width, height, 1, andBits, xorBits);
}

HICON CopyIcon(HICON icon) {
    const IconImage* image = requireIcon(icon);
    if (image == nullptr)
        return nullptr;
    IconImage copy = *image;
    copy.shared = false;
    return newIcon(std::move(copy));
}

BOOL DestroyIcon(HICON icon) {
    const IconImage* image = requireIcon(icon);
    if (image == nullptr)
        return FALSE;
    if (!image->shared)
        icons().remove(icon);
    return TRUE;
}

BOOL DestroyCursor(HCURSOR cursor) { return DestroyIcon(cursor); }

BOOL GetIconInfo(HICON icon, ICONINFO* info) {
    const IconImage* image = requireIcon(icon);
    if (image == nullptr)
        return FALSE;
    if (info == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const int maskHeight = image->colored ? image->height : 2 * image->height;
    HBITMAP mask = newBitmap(BitmapObject::createDevice(image->width, maskHeight, true));
    HBITMAP color =
        image->colored ? newBitmap(BitmapObject::createDevice(image->width, image->height, false)) : nullptr;
    if (mask == nullptr || (image->colored && color == nullptr)) {
        DeleteObject(mask);
        DeleteObject(color);
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return FALSE;
    }
    writeMask(*objectOf<BitmapObject>(mask), *image);
    writePixels(*objectOf<BitmapObject>(image->colored ? color : mask), image->colored ? 0 : image->height, *image);
    *info = {image->cursor ? FALSE : TRUE, static_cast<DWORD>(image->hot.x), static_cast<DWORD>(image->hot.y), mask,
             color};
    return TRUE;
}
