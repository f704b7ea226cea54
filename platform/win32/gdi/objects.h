// What stands behind the handles of pens, brushes, fonts, bitmaps and regions.
//
//     if (const BitmapObject* bitmap = objectOf<BitmapObject>(handle))
//         loadArgb(bitmap->surface(), 0, y, width, row);
#pragma once

#include "gdi/font_object.h"
#include "gdi/region.h"
#include "gdi/surface.h"
#include "win32/error.h"
#include "win32/gdi.h"

#include <cstdlib>
#include <memory>
#include <variant>

namespace vndk::win32 {

struct PenObject {
    UINT style = PS_SOLID;
    int width = 1; // never less than 1
    COLORREF color = 0;
    bool fromContext = false; // DC_PEN: the context has the colour
};

/// Pixels with their format. A section's rows stay where they are as long as the object lives.
class BitmapObject {
public:
    /// One bit (0 black, 1 white) or 32 bits, top row first. Null when there isn't enough memory.
    /// REQUIRES: width and height from 1.
    static std::unique_ptr<BitmapObject> createDevice(int width, int height, bool monochrome);
    /// Zeroed rows in the order that biHeight gives. Null when there isn't enough memory.
    /// REQUIRES: `header`, `format` and `colors` as parseDib (gdi/dib.h) gives them.
    static std::unique_ptr<BitmapObject> createSection(const BITMAPINFOHEADER& header, const PixelFormat& format,
                                                       ColorTable colors);
    [[nodiscard]] std::unique_ptr<BitmapObject> clone() const;

    BitmapObject(const BitmapObject&) = delete;
    BitmapObject& operator=(const BitmapObject&) = delete;

    [[nodiscard]] const Surface& surface() const { return surface_; }
    [[nodiscard]] int width() const { return surface_.width; }
    [[nodiscard]] int height() const { return surface_.height; }
    [[nodiscard]] bool monochrome() const { return surface_.format.monochrome; }
    [[nodiscard]] bool isSection() const { return header_.biSize != 0; }
    /// Of a section; biSize is 0 for others.
    [[nodiscard]] const BITMAPINFOHEADER& header() const { return header_; }
    /// The first byte in memory; of `byteCount()`.
    [[nodiscard]] std::uint8_t* bytes() const { return bytes_.get(); }
    [[nodiscard]] std::size_t byteCount() const { return byteCount_; }
    /// Empty but for sections of up to 8 bits; there it has 2^bits entries, and must keep them.
    [[nodiscard]] ColorTable& colors() { return colors_; }

private:
    BitmapObject() = default;
    bool allocate(int width, int height, const PixelFormat& format);

    struct Free {
        void operator()(std::uint8_t* memory) const { std::free(memory); }
    };
    std::unique_ptr<std::uint8_t, Free> bytes_;
    std::size_t byteCount_ = 0;
    ColorTable colors_;
    Surface surface_;
    BITMAPINFOHEADER header_{};
};

struct BrushObject {
    UINT style = BS_SOLID; // BS_SOLID, BS_NULL, BS_HATCHED, BS_PATTERN
    COLORREF color = 0;
    int hatch = 0;
    std::shared_ptr<const BitmapObject> pattern;
    bool fromContext = false; // DC_BRUSH: the context has the colour
};

struct RegionObject {
    Region region;
};

struct GdiObject {
    std::variant<PenObject, BrushObject, FontObject, std::unique_ptr<BitmapObject>, RegionObject> body;
    int selections = 0; // by contexts and their saved levels
    bool stock = false; // DeleteObject leaves it alone
};

/// Null with ERROR_NOT_ENOUGH_MEMORY when there are too many.
HGDIOBJ newObject(GdiObject object);
/// The same for a bitmap; null stays null with ERROR_NOT_ENOUGH_MEMORY.
HBITMAP newBitmap(std::unique_ptr<BitmapObject> bitmap);
/// Null for a dead or foreign handle; sets no error.
GdiObject* findObject(HGDIOBJ handle);
/// The object if it is of kind T; else null with ERROR_INVALID_HANDLE. T as in objectOf.
template <typename T>
T* requireObject(HGDIOBJ handle);
/// How many objects live, stock objects included: tests find leaks by it.
std::size_t objectCount();
/// The monochrome bitmap of 1 x 1 pixel that memory contexts begin with.
HBITMAP stockBitmap();

/// Null for a handle of no such object; sets no error. T: PenObject, BrushObject, FontObject, BitmapObject or
/// RegionObject.
template <typename T>
T* objectOf(HGDIOBJ handle) {
    GdiObject* object = findObject(handle);
    if (object == nullptr)
        return nullptr;
    if constexpr (std::is_same_v<T, BitmapObject>) {
        auto* bitmap = std::get_if<std::unique_ptr<BitmapObject>>(&object->body);
        return bitmap == nullptr ? nullptr : bitmap->get();
    } else {
        return std::get_if<T>(&object->body);
    }
}

template <typename T>
T* requireObject(HGDIOBJ handle) {
    T* object = objectOf<T>(handle);
    if (object == nullptr)
        SetLastError(ERROR_INVALID_HANDLE);
    return object;
}

/// A solid brush that belongs to the system: DeleteObject leaves it alone. Its colour may be changed in the object.
HBRUSH newSystemBrush(COLORREF color);

/// An object as a context has it selected: while one of these exists, it can't be deleted.
class Selection {
public:
    Selection() = default;
    explicit Selection(HGDIOBJ handle) : handle_(handle), object_(findObject(handle)) { retain(); }
    Selection(const Selection& other) : handle_(other.handle_), object_(other.object_) { retain(); }
    Selection& operator=(const Selection& other) {
        Selection copy(other);
        std::swap(handle_, copy.handle_);
        std::swap(object_, copy.object_);
        return *this;
    }
    ~Selection() {
        if (object_ != nullptr)
            --object_->selections;
    }

    [[nodiscard]] HGDIOBJ handle() const { return handle_; }
    /// Null when nothing is selected.
    template <typename T>
    [[nodiscard]] T* get() const {
        if (object_ == nullptr)
            return nullptr;
        if constexpr (std::is_same_v<T, BitmapObject>) {
            auto* bitmap = std::get_if<std::unique_ptr<BitmapObject>>(&object_->body);
            return bitmap == nullptr ? nullptr : bitmap->get();
        } else {
            return std::get_if<T>(&object_->body);
        }
    }

private:
    void retain() {
        if (object_ != nullptr)
            ++object_->selections;
    }
    HGDIOBJ handle_ = nullptr;
    GdiObject* object_ = nullptr;
};

} // namespace vndk::win32
