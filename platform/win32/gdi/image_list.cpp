// The store of image lists: pictures kept, appended, moved and removed.
#include "gdi/image_list.h"

#include "gdi/dib.h"
#include "kernel/handle_table.h"

#include <algorithm>
#include <cassert>
#include <cstring>
#include <vector>

namespace vndk::win32 {

namespace {

constexpr std::size_t mostLists = 65536;
constexpr UINT depthBits = 0x000000FE;
constexpr int leastGrow = 4;

/// Never destroyed: libraries give lists back as late as in their statics' destructors.
HandleTable<ImageList, HIMAGELIST>& lists() {
    static auto& table = *new HandleTable<ImageList, HIMAGELIST>{HandleKind::imageList};
    return table;
}

/// Bits for each pixel; 0: as the screen.
int depthOf(UINT flags) {
    switch (flags & depthBits) {
    case ILC_COLOR8:
        return 8;
    case ILC_COLOR16:
        return 16;
    case ILC_COLOR24:
        return 24;
    case ILC_COLOR32:
        return 32;
    case ILC_COLORDDB:
        return 0;
    default:
        return 4;
    }
}

std::unique_ptr<BitmapObject> makeSection(int width, int height, int bits) {
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(bits);
    PixelFormat format;
    format.bits = bits;
    if (bits == 16) {
        format.red = 0x7C00;
        format.green = 0x03E0;
        format.blue = 0x001F;
    }
    return BitmapObject::createSection(header, format, bits <= 8 ? standardColors(bits) : ColorTable{});
}

BitmapObject& bitmapBehind(HBITMAP handle) {
    auto* bitmap = objectOf<BitmapObject>(handle);
    assert(bitmap != nullptr && "a list's bitmaps live as long as the list");
    return *bitmap;
}

/// Rows of equal formats.
void copyRows(const Surface& from, int fromRow, const Surface& to, int toRow, int rows) {
    const auto bytes = static_cast<std::size_t>((from.width * from.format.bits + 7) / 8);
    for (int y = 0; y < rows; ++y)
        std::memcpy(to.row(toRow + y), from.row(fromRow + y), bytes);
}

void fillRows(const Surface& surface, int firstRow, int rows) {
    for (int y = 0; y < rows; ++y)
        fillPixels(surface, 0, firstRow + y, surface.width, 0);
}

bool refuse(DWORD error) {
    SetLastError(error);
    return false;
}

} // namespace

std::unique_ptr<ImageList> ImageList::create(int width, int height, UINT flags, int initial, int grow) {
    const bool sizesFit = width >= 1 && height >= 1 && width <= largestImage && height <= largestImage;
    if (!sizesFit || initial < 0) {
        refuse(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    auto list = std::unique_ptr<ImageList>(new ImageList);
    list->flags_ = flags;
    list->width_ = width;
    list->height_ = height;
    constexpr int mostGrow = 1 << 16;
    list->grow_ =
        std::clamp((std::clamp(grow, 0, mostGrow) + leastGrow - 1) / leastGrow * leastGrow, leastGrow, mostGrow);
    constexpr int mostInitial = 1 << 24; // what is too much, fails for want of memory
    return list->reserve(std::min(initial, mostInitial) + 1) ? std::move(list) : nullptr;
}

ImageList::~ImageList() { release(); }

void ImageList::release() {
    for (HBITMAP* bitmap : {&image_, &mask_}) {
        if (GdiObject* object = findObject(*bitmap); object != nullptr) {
            object->stock = false;
            DeleteObject(*bitmap);
        }
        *bitmap = nullptr;
    }
    capacity_ = 0;
}

std::unique_ptr<ImageList> ImageList::duplicate() const {
    auto copy = create(width_, height_, flags_, std::max(capacity_ - 1, 0), grow_);
    if (copy == nullptr)
        return nullptr;
    copy->background = background;
    copy->overlays = overlays;
    copy->count_ = count_;
    copyRows(bitmapBehind(image_).surface(), 0, bitmapBehind(copy->image_).surface(), 0, count_ * height_);
    if (masked())
        copyRows(bitmapBehind(mask_).surface(), 0, bitmapBehind(copy->mask_).surface(), 0, count_ * height_);
    return copy;
}

HBITMAP ImageList::makeStrip(int capacity, bool monochrome) const {
    const std::int64_t rows = std::int64_t{capacity} * height_;
    const int bits = depthOf(flags_);
    const std::int64_t stride = (std::int64_t{width_} * (bits == 0 ? 32 : bits) + 31) / 32 * 4;
    if (rows * stride > maxBitmapBytes) {
        refuse(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    const int height = static_cast<int>(rows);
    HBITMAP bitmap = newBitmap(monochrome || bits == 0 ? BitmapObject::createDevice(width_, height, monochrome)
                                                       : makeSection(width_, height, bits));
    // The list hands these out; DeleteObject is not to take them away from it.
    if (GdiObject* object = findObject(bitmap); object != nullptr)
        object->stock = true;
    return bitmap;
}

bool ImageList::reserve(int capacity) {
    if (capacity <= capacity_)
        return true;
    HBITMAP image = makeStrip(capacity, false);
    HBITMAP mask = masked() ? makeStrip(capacity, true) : nullptr;
    const bool made = image != nullptr && (mask != nullptr || !masked());
    if (made && count_ > 0) {
        copyRows(bitmapBehind(image_).surface(), 0, bitmapBehind(image).surface(), 0, count_ * height_);
        if (masked())
            copyRows(bitmapBehind(mask_).surface(), 0, bitmapBehind(mask).surface(), 0, count_ * height_);
    }
    if (made) {
        std::swap(image, image_);
        std::swap(mask, mask_);
        capacity_ = capacity;
    }
    for (HBITMAP old : {image, mask}) {
        if (GdiObject* object = findObject(old); object != nullptr) {
            object->stock = false;
            DeleteObject(old);
        }
    }
    return made;
}

RECT ImageList::placeOf(int index) const { return {0, index * height_, width_, (index + 1) * height_}; }

bool ImageList::setCount(int count) {
    // Many images that come one by one mustn't be copied each time, nor where the room for them runs out.
    constexpr int few = 64;
    int more = count > few ? std::max(grow_, count / 2) : grow_;
    while (count > capacity_ && !reserve(count + more)) {
        if (more == grow_)
            return false;
        more = std::max(grow_, more / 2);
    }
    if (count > count_) {
        fillRows(bitmapBehind(image_).surface(), count_ * height_, (count - count_) * height_);
        if (masked())
            fillRows(bitmapBehind(mask_).surface(), count_ * height_, (count - count_) * height_);
    }
    count_ = count;
    return true;
}

void ImageList::remove(int index) {
    const int rowsBehind = (count_ - index - 1) * height_;
    for (HBITMAP bitmap : {image_, mask_}) {
        if (bitmap == nullptr)
            continue;
        const Surface& surface = bitmapBehind(bitmap).surface();
        copyRows(surface, (index + 1) * height_, surface, index * height_, rowsBehind);
    }
    --count_;
}

bool ImageList::setSize(int width, int height) {
    if (width < 1 || height < 1 || width > largestImage || height > largestImage)
        return refuse(ERROR_INVALID_PARAMETER);
    const auto other = create(width, height, flags_, std::max(capacity_ - 1, 0), grow_);
    if (other == nullptr)
        return false;
    std::swap(image_, other->image_);
    std::swap(mask_, other->mask_);
    capacity_ = other->capacity_;
    width_ = width;
    height_ = height;
    count_ = 0;
    return true;
}

void ImageList::copy(int to, int from, bool swap) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width_));
    std::vector<std::uint32_t> others(static_cast<std::size_t>(width_));
    for (HBITMAP bitmap : {image_, mask_}) {
        if (bitmap == nullptr)
            continue;
        const Surface& surface = bitmapBehind(bitmap).surface();
        for (int y = 0; y < height_; ++y) {
            loadPixels(surface, 0, from * height_ + y, width_, pixels.data());
            loadPixels(surface, 0, to * height_ + y, width_, others.data());
            storePixels(surface, 0, to * height_ + y, width_, pixels.data());
            if (swap)
                storePixels(surface, 0, from * height_ + y, width_, others.data());
        }
    }
}

void ImageList::writeRow(int index, int y, const std::uint32_t* argb, const std::uint8_t* mask) {
    storeArgb(bitmapBehind(image_).surface(), 0, index * height_ + y, width_, argb);
    if (!masked())
        return;
    std::vector<std::uint32_t> bits(mask, mask + width_);
    storePixels(bitmapBehind(mask_).surface(), 0, index * height_ + y, width_, bits.data());
}

void ImageList::readRow(int index, int y, std::uint32_t* argb, std::uint8_t* mask) const {
    loadArgb(bitmapBehind(image_).surface(), 0, index * height_ + y, width_, argb);
    if (!masked()) {
        std::fill_n(mask, width_, std::uint8_t{0});
        return;
    }
    std::vector<std::uint32_t> bits(static_cast<std::size_t>(width_));
    loadPixels(bitmapBehind(mask_).surface(), 0, index * height_ + y, width_, bits.data());
    std::copy(bits.begin(), bits.end(), mask);
}

ImageList* requireImageList(HIMAGELIST list) {
    ImageList* found = lists().find(list);
    if (found == nullptr)
        SetLastError(ERROR_INVALID_HANDLE);
    return found;
}

HIMAGELIST newImageList(std::unique_ptr<ImageList> list) {
    if (list == nullptr)
        return nullptr;
    if (lists().size() >= mostLists) {
        refuse(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return lists().add(std::move(list));
}

} // namespace vndk::win32

using namespace vndk::win32;

BOOL ImageList_Destroy(HIMAGELIST list) {
    if (requireImageList(list) == nullptr)
        return FALSE;
    lists().remove(list);
    return TRUE;
}
