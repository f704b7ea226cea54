// The published calls that fill and change image lists.
#include "gdi/dib.h"
#include "gdi/icon.h"
#include "gdi/image_list.h"

#include <algorithm>

using namespace vndk::win32;

namespace {

constexpr UINT mostImages = 1U << 20;
constexpr std::uint32_t colorBits = 0x00FFFFFF;

bool refuse() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

/// A list that has an image of that index.
ImageList* requireImage(HIMAGELIST handle, int index) {
    ImageList* list = requireImageList(handle);
    if (list != nullptr && !list->has(index)) {
        refuse();
        return nullptr;
    }
    return list;
}

/// The bitmap behind a handle. Not one of the list's own, which may be made anew while images are added to it.
const BitmapObject* requireForeignBitmap(const ImageList* list, HBITMAP handle) {
    if (list == nullptr)
        return nullptr;
    if (handle != nullptr && (handle == list->imageBitmap() || handle == list->maskBitmap())) {
        refuse();
        return nullptr;
    }
    return requireObject<BitmapObject>(handle);
}

/// A row of a bitmap between two columns; what the bitmap doesn't have is 0.
void readRow(const Surface& surface, int y, int left, std::vector<std::uint32_t>& argb) {
    std::fill(argb.begin(), argb.end(), 0U);
    const int count = std::min(static_cast<int>(argb.size()), surface.width - left);
    if (y < surface.height && count > 0)
        loadArgb(surface, left, y, count, argb.data());
}

/// Copies one image out of bitmaps. `mask` may be null: nothing is transparent.
void storeImage(ImageList& list, int index, const BitmapObject& image, const BitmapObject* mask, int left) {
    const auto width = static_cast<std::size_t>(list.width());
    std::vector<std::uint32_t> pixels(width);
    std::vector<std::uint32_t> maskPixels(width);
    std::vector<std::uint8_t> transparent(width);
    for (int y = 0; y < list.height(); ++y) {
        readRow(image.surface(), y, left, pixels);
        if (mask != nullptr)
            readRow(mask->surface(), y, left, maskPixels);
        for (std::size_t x = 0; x < width; ++x) {
            transparent[x] = (maskPixels[x] & colorBits) != 0 ? 1 : 0;
            if (transparent[x] != 0 && list.masked())
                pixels[x] = 0;
        }
        list.writeRow(index, y, pixels.data(), transparent.data());
    }
}

/// As many images as the bitmap is wide; the index of the first, -1 on failure.
int append(ImageList& list, const BitmapObject& image, const BitmapObject* mask) {
    const int first = list.count();
    const int added = image.width() / list.width();
    if (added == 0) {
        refuse();
        return -1;
    }
    if (!list.setCount(first + added))
        return -1;
    for (int index = 0; index < added; ++index)
        storeImage(list, first + index, image, mask, index * list.width());
    return first;
}

/// The pixels of a colour become black in the bitmap; `mask` gets ones there.
void takeOut(const BitmapObject& image, COLORREF color, const BitmapObject& mask) {
    const Surface& surface = image.surface();
    std::uint32_t wanted = argbFromColor(color) & colorBits;
    // In 16 bits a colour stands for all that are stored as it is.
    if (!surface.format.indexed() && surface.format.bits < 24)
        wanted = argbFromPixel(surface, pixelFromArgb(surface, wanted)) & colorBits;
    const std::uint32_t black = pixelFromArgb(surface, 0);
    const auto width = static_cast<std::size_t>(surface.width);
    std::vector<std::uint32_t> pixels(width);
    std::vector<std::uint32_t> argb(width);
    std::vector<std::uint32_t> bits(width);
    for (int y = 0; y < surface.height; ++y) {
        loadPixels(surface, 0, y, surface.width, pixels.data());
        if (surface.format.isArgb())
            argb = pixels;
        else
            loadArgb(surface, 0, y, surface.width, argb.data());
        for (std::size_t x = 0; x < width; ++x) {
            bits[x] = (argb[x] & colorBits) == wanted ? 1 : 0;
            if (bits[x] != 0)
                pixels[x] = black;
        }
        storePixels(surface, 0, y, surface.width, pixels.data());
        storePixels(mask.surface(), 0, y, surface.width, bits.data());
    }
}

COLORREF firstPixel(const BitmapObject& bitmap) {
    std::uint32_t argb = 0;
    loadArgb(bitmap.surface(), 0, 0, 1, &argb);
    return colorFromArgb(argb & colorBits);
}

void storeIcon(ImageList& list, int index, const IconImage& icon) {
    const IconImage fitted = icon.stretched(list.width(), list.height());
    const std::uint32_t ground = list.masked() || list.background == CLR_NONE ? 0 : argbFromColor(list.background);
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(list.width()));
    std::vector<std::uint8_t> transparent(pixels.size());
    for (int y = 0; y < fitted.height; ++y) {
        for (int x = 0; x < fitted.width; ++x) {
            const std::size_t from = fitted.index(x, y);
            const auto to = static_cast<std::size_t>(x);
            const bool shows = fitted.alpha ? fitted.pixels[from] >> 24 >= 0x80 : fitted.mask[from] == 0;
            pixels[to] = shows ? fitted.pixels[from] & colorBits : ground;
            transparent[to] = shows ? 0 : 1;
        }
        list.writeRow(index, y, pixels.data(), transparent.data());
    }
}

/// The list's depth for a bitmap's.
UINT depthFlags(const BitmapObject& bitmap) {
    const int bits = bitmap.surface().format.bits;
    return bits < 4 ? ILC_COLOR4 : static_cast<UINT>(bits);
}

} // namespace

HIMAGELIST ImageList_Create(int width, int height, UINT flags, int initial, int grow) {
    return newImageList(ImageList::create(width, height, flags, initial, grow));
}

HIMAGELIST ImageList_Duplicate(HIMAGELIST list) {
    const ImageList* original = requireImageList(list);
    return original == nullptr ? nullptr : newImageList(original->duplicate());
}

HIMAGELIST ImageList_LoadImageA(HINSTANCE instance, LPCSTR name, int width, int grow, COLORREF mask, UINT kind,
                                UINT flags) {
    if (kind != IMAGE_BITMAP || width < 0) {
        refuse();
        return nullptr;
    }
    auto handle = static_cast<HBITMAP>(LoadImageA(instance, name, IMAGE_BITMAP, 0, 0, flags));
    if (handle == nullptr)
        return nullptr;
    const auto& bitmap = *objectOf<BitmapObject>(handle);
    const int imageWidth = width > 0 ? width : bitmap.height();
    const UINT maskFlag = mask != CLR_NONE ? ILC_MASK : 0U;
    HIMAGELIST list =
        ImageList_Create(imageWidth, bitmap.height(), depthFlags(bitmap) | maskFlag, bitmap.width() / imageWidth, grow);
    const int added = mask != CLR_NONE ? ImageList_AddMasked(list, handle, mask) : ImageList_Add(list, handle, nullptr);
    DeleteObject(handle);
    if (added >= 0)
        return list;
    if (list != nullptr)
        ImageList_Destroy(list);
    return nullptr;
}

int ImageList_GetImageCount(HIMAGELIST list) {
    const ImageList* found = requireImageList(list);
    return found == nullptr ? 0 : found->count();
}

BOOL ImageList_SetImageCount(HIMAGELIST list, UINT count) {
    ImageList* found = requireImageList(list);
    if (found == nullptr)
        return FALSE;
    return (count <= mostImages || refuse()) && found->setCount(static_cast<int>(count)) ? TRUE : FALSE;
}

BOOL ImageList_GetIconSize(HIMAGELIST list, int* width, int* height) {
    const ImageList* found = requireImageList(list);
    if (found == nullptr || ((width == nullptr || height == nullptr) && !refuse()))
        return FALSE;
    *width = found->width();
    *height = found->height();
    return TRUE;
}

BOOL ImageList_SetIconSize(HIMAGELIST list, int width, int height) {
    ImageList* found = requireImageList(list);
    if (found == nullptr || (width == found->width() && height == found->height()))
        return FALSE;
    return found->setSize(width, height) ? TRUE : FALSE;
}

BOOL ImageList_GetImageInfo(HIMAGELIST list, int index, IMAGEINFO* info) {
    const ImageList* found = requireImage(list, index);
    if (found == nullptr || (info == nullptr && !refuse()))
        return FALSE;
    *info = {found->imageBitmap(), found->maskBitmap(), 0, 0, found->placeOf(index)};
    return TRUE;
}

COLORREF ImageList_SetBkColor(HIMAGELIST list, COLORREF color) {
    ImageList* found = requireImageList(list);
    return found == nullptr ? CLR_NONE : std::exchange(found->background, color);
}

COLORREF ImageList_GetBkColor(HIMAGELIST list) {
    const ImageList* found = requireImageList(list);
    return found == nullptr ? CLR_NONE : found->background;
}

int ImageList_Add(HIMAGELIST list, HBITMAP image, HBITMAP mask) {
    ImageList* found = requireImageList(list);
    const auto* bitmap = requireForeignBitmap(found, image);
    if (bitmap == nullptr)
        return -1;
    const auto* maskBitmap = mask == nullptr ? nullptr : requireForeignBitmap(found, mask);
    if (mask != nullptr && maskBitmap == nullptr)
        return -1;
    return append(*found, *bitmap, maskBitmap);
}

int ImageList_AddMasked(HIMAGELIST list, HBITMAP image, COLORREF mask) {
    ImageList* found = requireImageList(list);
    const auto* bitmap = requireForeignBitmap(found, image);
    if (bitmap == nullptr)
        return -1;
    const auto maskBitmap = BitmapObject::createDevice(bitmap->width(), bitmap->height(), true);
    if (maskBitmap == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return -1;
    }
    takeOut(*bitmap, mask == CLR_DEFAULT ? firstPixel(*bitmap) : mask, *maskBitmap);
    return append(*found, *bitmap, maskBitmap.get());
}

BOOL ImageList_Replace(HIMAGELIST list, int index, HBITMAP image, HBITMAP mask) {
    ImageList* found = requireImage(list, index);
    const auto* bitmap = requireForeignBitmap(found, image);
    if (bitmap == nullptr)
        return FALSE;
    const auto* maskBitmap = mask == nullptr ? nullptr : requireForeignBitmap(found, mask);
    if (mask != nullptr && maskBitmap == nullptr)
        return FALSE;
    storeImage(*found, index, *bitmap, maskBitmap, 0);
    return TRUE;
}

int ImageList_ReplaceIcon(HIMAGELIST list, int index, HICON icon) {
    ImageList* found = index == -1 ? requireImageList(list) : requireImage(list, index);
    const IconImage* image = found == nullptr ? nullptr : requireIcon(icon);
    if (image == nullptr)
        return -1;
    const int place = index == -1 ? found->count() : index;
    if (index == -1 && !found->setCount(place + 1))
        return -1;
    storeIcon(*found, place, *image);
    return place;
}

BOOL ImageList_Remove(HIMAGELIST list, int index) {
    ImageList* found = index == -1 ? requireImageList(list) : requireImage(list, index);
    if (found == nullptr)
        return FALSE;
    if (index == -1)
        found->setCount(0);
    else
        found->remove(index);
    return TRUE;
}

BOOL ImageList_Copy(HIMAGELIST target, int targetIndex, HIMAGELIST source, int sourceIndex, UINT flags) {
    ImageList* found = requireImage(target, targetIndex);
    if (found == nullptr || requireImage(source, sourceIndex) == nullptr)
        return FALSE;
    if (target != source || flags > ILCF_SWAP)
        return refuse() ? TRUE : FALSE;
    found->copy(targetIndex, sourceIndex, flags == ILCF_SWAP);
    return TRUE;
}

BOOL ImageList_SetOverlayImage(HIMAGELIST list, int index, int overlay) {
    ImageList* found = requireImage(list, index);
    if (found == nullptr || ((overlay < 1 || overlay > overlayCount) && !refuse()))
        return FALSE;
    found->overlays[static_cast<std::size_t>(overlay - 1)] = index + 1;
    return TRUE;
}
