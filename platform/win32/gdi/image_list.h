// What stands behind the handle of an image list.
//
// Pictures lie one below the other in one bitmap, their masks in the same way in a second, monochrome one. Both have
// room for more pictures than there are.
#pragma once

#include "gdi/device_context.h"
#include "win32/imagelist.h"

#include <array>

namespace vndk::win32 {

/// Sizes of one image up to this can be.
constexpr int largestImage = 4096;
constexpr int overlayCount = 15;

class ImageList {
public:
    /// Null, with the error set, when the sizes can't be or memory is short.
    static std::unique_ptr<ImageList> create(int width, int height, UINT flags, int initial, int grow);
    ~ImageList();
    ImageList(const ImageList&) = delete;
    ImageList& operator=(const ImageList&) = delete;
    [[nodiscard]] std::unique_ptr<ImageList> duplicate() const;

    [[nodiscard]] int width() const { return width_; }
    [[nodiscard]] int height() const { return height_; }
    [[nodiscard]] int count() const { return count_; }
    /// Images that there is room for.
    [[nodiscard]] int capacity() const { return capacity_; }
    [[nodiscard]] bool has(int index) const { return index >= 0 && index < count_; }
    [[nodiscard]] bool masked() const { return (flags_ & ILC_MASK) != 0; }
    [[nodiscard]] HBITMAP imageBitmap() const { return image_; }
    [[nodiscard]] HBITMAP maskBitmap() const { return mask_; }
    /// Of an image within the bitmaps.
    [[nodiscard]] RECT placeOf(int index) const;

    /// Drops or appends images (black, not transparent). False, with the error set, when memory is short.
    bool setCount(int count);
    /// Removes an image; those behind it move up.
    void remove(int index);
    /// Takes another size; all images go.
    bool setSize(int width, int height);
    /// `to` gets what `from` has; with `swap` also the other way.
    void copy(int to, int from, bool swap);

    // Pixels of an image, row by row: colours 0x00RRGGBB, masks 0 or 1 (transparent). REQUIRES: the index is there.
    void writeRow(int index, int y, const std::uint32_t* argb, const std::uint8_t* mask);
    void readRow(int index, int y, std::uint32_t* argb, std::uint8_t* mask) const;

    COLORREF background = CLR_NONE;
    std::array<int, overlayCount> overlays{}; // by overlay number less 1: index of the image plus 1; 0: none

private:
    ImageList() = default;
    bool reserve(int capacity);
    [[nodiscard]] HBITMAP makeStrip(int capacity, bool monochrome) const;
    void release();

    UINT flags_ = 0;
    int width_ = 0;
    int height_ = 0;
    int count_ = 0;
    int capacity_ = 0;
    int grow_ = 0;
    HBITMAP image_ = nullptr;
    HBITMAP mask_ = nullptr;
};

/// Null with ERROR_INVALID_HANDLE for a dead handle.
[[nodiscard]] ImageList* requireImageList(HIMAGELIST list);
HIMAGELIST newImageList(std::unique_ptr<ImageList> list);

} // namespace vndk::win32
