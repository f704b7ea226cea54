// Pens, brushes and stock objects; what all objects have in common.
#include "gdi/objects.h"

#include "kernel/handle_table.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace vndk::win32 {

namespace {

constexpr std::size_t mostObjects = 65536;

constexpr int stockNumbers = DC_PEN + 1;

struct Objects {
    HandleTable<GdiObject, HGDIOBJ> table{HandleKind::gdiObject};
    std::array<HGDIOBJ, stockNumbers> stock{};
    HGDIOBJ bitmap = nullptr;
};

HGDIOBJ addStock(Objects& objects, decltype(GdiObject::body) body) {
    auto object = std::make_unique<GdiObject>();
    object->body = std::move(body);
    object->stock = true;
    return objects.table.add(std::move(object));
}

BrushObject solidBrush(COLORREF color) {
    BrushObject brush;
    brush.color = color;
    return brush;
}

void addStockBrushes(Objects& objects) {
    constexpr std::array<BYTE, 5> grays{255, 192, 128, 64, 0};
    for (std::size_t index = 0; index < grays.size(); ++index)
        objects.stock[WHITE_BRUSH + index] =
            addStock(objects, solidBrush(RGB(grays[index], grays[index], grays[index])));
    BrushObject null;
    null.style = BS_NULL;
    objects.stock[NULL_BRUSH] = addStock(objects, null);
    BrushObject fromContext;
    fromContext.fromContext = true;
    fromContext.color = RGB(255, 255, 255);
    objects.stock[DC_BRUSH] = addStock(objects, fromContext);
}

void addStockPens(Objects& objects) {
    objects.stock[WHITE_PEN] = addStock(objects, PenObject{PS_SOLID, 1, RGB(255, 255, 255), false});
    objects.stock[BLACK_PEN] = addStock(objects, PenObject{PS_SOLID, 1, RGB(0, 0, 0), false});
    objects.stock[NULL_PEN] = addStock(objects, PenObject{PS_NULL, 1, RGB(0, 0, 0), false});
    objects.stock[DC_PEN] = addStock(objects, PenObject{PS_SOLID, 1, RGB(0, 0, 0), true});
}

void addStockFonts(Objects& objects) {
    for (int number : {OEM_FIXED_FONT, ANSI_FIXED_FONT, ANSI_VAR_FONT, SYSTEM_FONT, DEVICE_DEFAULT_FONT,
                       SYSTEM_FIXED_FONT, DEFAULT_GUI_FONT}) {
        FontObject font;
        font.description = stockFontDescription(number);
        objects.stock[static_cast<std::size_t>(number)] = addStock(objects, font);
    }
}

/// Never destroyed: libraries give objects back as late as in their statics' destructors.
Objects& objects() {
    static Objects& instance = [&]() -> Objects& {
        auto& made = *new Objects;
        addStockBrushes(made);
        addStockPens(made);
        addStockFonts(made);
        made.bitmap = addStock(made, BitmapObject::createDevice(1, 1, true));
        return made;
    }();
    return instance;
}

bool badParameter() {
    SetLastError(ERROR_INVALID_PARAMETER);
    return false;
}

// ---- GetObjectA, one function for each kind. Each answers the number of bytes. -------------------------------------

/// `least`: fewer bytes than that are refused.
template <typename T>
int copyOut(const T& value, int size, void* buffer, std::size_t least = sizeof(T)) {
    if (buffer == nullptr)
        return static_cast<int>(sizeof(T));
    if (size <= 0 || static_cast<std::size_t>(size) < least) {
        badParameter();
        return 0;
    }
    const std::size_t length = std::min(static_cast<std::size_t>(size), sizeof(T));
    std::memcpy(buffer, &value, length);
    return static_cast<int>(length);
}

int describe(const PenObject& pen, int size, void* buffer) {
    return copyOut(LOGPEN{pen.style, {pen.width, 0}, pen.color}, size, buffer);
}

int describe(const BrushObject& brush, int size, void* buffer) {
    return copyOut(LOGBRUSH{brush.style, brush.color, static_cast<ULONG_PTR>(brush.hatch)}, size, buffer);
}

int describe(const FontObject& font, int size, void* buffer) { return copyOut(font.description, size, buffer, 1); }

BITMAP bitmapOf(const BitmapObject& bitmap) {
    BITMAP result{};
    const int bits = bitmap.surface().format.bits;
    result.bmWidth = bitmap.width();
    result.bmHeight = bitmap.height();
    result.bmWidthBytes = bitmap.isSection() ? static_cast<LONG>(std::abs(bitmap.surface().stride))
                                             : (bitmap.width() * bits + 15) / 16 * 2;
    result.bmPlanes = 1;
    result.bmBitsPixel = static_cast<WORD>(bits);
    result.bmBits = bitmap.isSection() ? bitmap.bytes() : nullptr;
    return result;
}

DIBSECTION sectionOf(const BitmapObject& bitmap) {
    DIBSECTION result{};
    result.dsBm = bitmapOf(bitmap);
    result.dsBmih = bitmap.header();
    result.dsBmih.biSizeImage = static_cast<DWORD>(bitmap.byteCount());
    const PixelFormat& format = bitmap.surface().format;
    if (format.bits == 16 || format.bits == 32) {
        result.dsBitfields[0] = format.red;
        result.dsBitfields[1] = format.green;
        result.dsBitfields[2] = format.blue;
    }
    return result;
}

int describe(const std::unique_ptr<BitmapObject>& bitmap, int size, void* buffer) {
    if (bitmap->isSection() && buffer != nullptr && size >= static_cast<int>(sizeof(DIBSECTION)))
        return copyOut(sectionOf(*bitmap), size, buffer);
    return copyOut(bitmapOf(*bitmap), size, buffer);
}

int describe(const RegionObject& /*region*/, int /*size*/, void* /*buffer*/) {
    SetLastError(ERROR_INVALID_HANDLE);
    return 0;
}

} // namespace

HGDIOBJ newObject(GdiObject object) {
    if (objects().table.size() >= mostObjects) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return objects().table.add(std::make_unique<GdiObject>(std::move(object)));
}

HBITMAP newBitmap(std::unique_ptr<BitmapObject> bitmap) {
    if (bitmap == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return static_cast<HBITMAP>(newObject({std::move(bitmap)}));
}

GdiObject* findObject(HGDIOBJ handle) { return objects().table.find(handle); }
std::size_t objectCount() { return objects().table.size(); }
HBITMAP stockBitmap() { return static_cast<HBITMAP>(objects().bitmap); }
HBRUSH newSystemBrush(COLORREF color) { return static_cast<HBRUSH>(addStock(objects(), solidBrush(color))); }

} // namespace vndk::win32

using namespace vndk::win32;

HPEN CreatePen(int style, int width, COLORREF color) {
    if (style < 0 || style > static_cast<int>(PS_INSIDEFRAME)) {
        badParameter();
        return nullptr;
    }
    // A width below 0 means its amount, as in the published call; far wider than any surface is as good as infinite.
    const int thickness = static_cast<int>(std::clamp<std::int64_t>(std::abs(std::int64_t{width}), 1, 1 << 15));
    return static_cast<HPEN>(newObject({PenObject{static_cast<UINT>(style), thickness, color, false}}));
}

HPEN CreatePenIndirect(const LOGPEN* pen) {
    if (pen == nullptr) {
        badParameter();
        return nullptr;
    }
    return CreatePen(pen->lopnStyle <= PS_INSIDEFRAME ? static_cast<int>(pen->lopnStyle) : -1, pen->lopnWidth.x,
                     pen->lopnColor);
}

HBRUSH CreateSolidBrush(COLORREF color) { return static_cast<HBRUSH>(newObject({solidBrush(color)})); }

HBRUSH CreateHatchBrush(int hatch, COLORREF color) {
    if (hatch < HS_HORIZONTAL || hatch > HS_DIAGCROSS) {
        badParameter();
        return nullptr;
    }
    BrushObject brush = solidBrush(color);
    brush.style = BS_HATCHED;
    brush.hatch = hatch;
    return static_cast<HBRUSH>(newObject({brush}));
}

HBRUSH CreatePatternBrush(HBITMAP pattern) {
    const auto* bitmap = requireObject<BitmapObject>(pattern);
    if (bitmap == nullptr)
        return nullptr;
    BrushObject brush;
    brush.style = BS_PATTERN;
    brush.pattern = bitmap->clone();
    if (brush.pattern == nullptr) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
    return static_cast<HBRUSH>(newObject({brush}));
}

HBRUSH CreateBrushIndirect(const LOGBRUSH* brush) {
    if (brush != nullptr) {
        switch (brush->lbStyle) {
        case BS_SOLID:
            return CreateSolidBrush(brush->lbColor);
        case BS_NULL: {
            BrushObject null;
            null.style = BS_NULL;
            return static_cast<HBRUSH>(newObject({null}));
        }
        case BS_HATCHED:
            return CreateHatchBrush(brush->lbHatch <= HS_DIAGCROSS ? static_cast<int>(brush->lbHatch) : -1,
                                    brush->lbColor);
        case BS_PATTERN:
            return CreatePatternBrush(reinterpret_cast<HBITMAP>(brush->lbHatch));
        default:
            break;
        }
    }
    badParameter();
    return nullptr;
}

HGDIOBJ GetStockObject(int number) {
    if (number >= 0 && number < stockNumbers && objects().stock[static_cast<std::size_t>(number)] != nullptr)
        return objects().stock[static_cast<std::size_t>(number)];
    badParameter();
    return nullptr;
}

BOOL DeleteObject(HGDIOBJ object) {
    const GdiObject* found = findObject(object);
    if (found == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    if (found->stock)
        return TRUE;
    if (found->selections > 0)
        return badParameter();
    objects().table.remove(object);
    return TRUE;
}

int GetObjectA(HANDLE object, int size, LPVOID buffer) {
    const GdiObject* found = findObject(object);
    if (found == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return 0;
    }
    return std::visit([=](const auto& body) { return describe(body, size, buffer); }, found->body);
}

BOOL UnrealizeObject(HGDIOBJ object) {
    if (findObject(object) != nullptr)
        return TRUE;
    SetLastError(ERROR_INVALID_HANDLE);
    return FALSE;
}
