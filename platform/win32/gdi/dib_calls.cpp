// Device-independent bitmaps made, read, written and painted.
#include "gdi/blit.h"
#include "gdi/dib.h"
#include "gdi/objects.h"

#include <algorithm>
#include <cstring>

using namespace vndk::win32;

namespace {

template <typename Result>
Result badParameter(Result failure) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return failure;
}

/// Rows of a picture, decoded if need be.
class DibRows {
public:
    /// `rows` rows from `bits`; run lengths always give the whole picture.
    DibRows(const Dib& dib, const void* bits, int rows) : dib_(dib) {
        if (!dib.compressed()) {
            surface_ = dib.surface(bits, rows);
            return;
        }
        decoded_ = decodeRunLengths(dib, static_cast<const std::uint8_t*>(bits), dib.header.biSizeImage);
        dib_.header.biCompression = BI_RGB;
        surface_ = dib_.surface(decoded_.data(), dib.height);
    }
    DibRows(const DibRows&) = delete;
    DibRows& operator=(const DibRows&) = delete;

    [[nodiscard]] const Surface& surface() const { return surface_; }

private:
    Dib dib_;
    std::vector<std::uint8_t> decoded_;
    Surface surface_;
};

/// The rows asked for that the picture has.
int rowsWithin(const Dib& dib, UINT start, UINT rows) {
    const auto height = static_cast<UINT>(dib.height);
    return start >= height ? 0 : static_cast<int>(std::min(rows, height - start));
}

/// The row of a bitmap that a picture's row `row` (in the order of its memory) stands for.
int bitmapRow(const Dib& dib, int row, int bitmapHeight) { return dib.bottomUp ? bitmapHeight - 1 - row : row; }

/// The row of a surface made of a picture's first rows that holds its memory's row `row`.
int surfaceRow(const Dib& dib, const Surface& surface, int row) {
    return dib.bottomUp ? surface.height - 1 - row : row;
}

/// Copies `rows` rows between a bitmap and a picture's rows.
class RowTransfer {
public:
    RowTransfer(const Dib& dib, const Surface& picture, const Surface& bitmap)
        : dib_(dib), picture_(picture), bitmap_(bitmap), width_(std::min(picture.width, bitmap.width)),
          row_(static_cast<std::size_t>(width_)) {}

    /// `first` is the picture's row of memory row 0 of the surface.
    int toBitmap(int first, int rows, int skipped) { return transfer(first, rows, skipped, picture_, bitmap_, true); }
    int fromBitmap(int first, int rows) { return transfer(first, rows, 0, bitmap_, picture_, false); }

private:
    int transfer(int first, int rows, int skipped, const Surface& from, const Surface& to, bool toBitmap) {
        const PixelConverter converter(from, to, MonochromeRule{});
        int done = 0;
        for (int row = 0; row < rows; ++row) {
            const int onBitmap = bitmapRow(dib_, first + row, bitmap_.height);
            if (onBitmap < 0 || onBitmap >= bitmap_.height)
                continue;
            const int onPicture = surfaceRow(dib_, picture_, row + skipped);
            loadPixels(from, 0, toBitmap ? onPicture : onBitmap, width_, row_.data());
            converter.convert(row_.data(), width_);
            storePixels(to, 0, toBitmap ? onBitmap : onPicture, width_, row_.data());
            ++done;
        }
        return done;
    }

    const Dib& dib_;
    const Surface& picture_;
    const Surface& bitmap_;
    int width_;
    std::vector<std::uint32_t> row_;
};

int setRows(BitmapObject& bitmap, const Dib& dib, UINT start, UINT rows, const void* bits) {
    const int count = rowsWithin(dib, start, rows);
    if (count == 0)
        return 0;
    const DibRows picture(dib, bits, count);
    const int skipped = dib.compressed() ? static_cast<int>(start) : 0;
    RowTransfer(dib, picture.surface(), bitmap.surface()).toBitmap(static_cast<int>(start), count, skipped);
    return count;
}

// ---- GetDIBits -----------------------------------------------------------------------------------------------------

/// The format of a bitmap as a header tells it.
void describeBitmap(const BitmapObject& bitmap, BITMAPINFOHEADER& header) {
    const PixelFormat& format = bitmap.surface().format;
    const DWORD size = header.biSize;
    header = {};
    header.biSize = size;
    header.biWidth = bitmap.width();
    header.biHeight = bitmap.isSection() ? bitmap.header().biHeight : bitmap.height();
    header.biPlanes = 1;
    header.biBitCount = static_cast<WORD>(format.bits);
    header.biCompression = bitmap.isSection() ? bitmap.header().biCompression : BI_RGB;
    header.biSizeImage = static_cast<DWORD>(bitmap.byteCount());
}

void writeColors(const ColorTable& colors, BITMAPINFO* info) {
    auto* entry = reinterpret_cast<std::uint8_t*>(info) + info->bmiHeader.biSize;
    for (const std::uint32_t color : colors) {
        const RGBQUAD quad{static_cast<BYTE>(color), static_cast<BYTE>(color >> 8), static_cast<BYTE>(color >> 16), 0};
        std::memcpy(entry, &quad, sizeof quad);
        entry += sizeof quad;
    }
}

/// The table for a picture taken from a bitmap: the bitmap's own where the depths agree.
const ColorTable& tableFor(const BitmapObject& bitmap, int bits) {
    const Surface& surface = bitmap.surface();
    return surface.colors != nullptr && surface.format.bits == bits ? *surface.colors : standardColors(bits);
}

void writeMasks(const PixelFormat& format, BITMAPINFO* info) {
    const std::uint32_t masks[3] = {format.red, format.green, format.blue};
    std::memcpy(reinterpret_cast<std::uint8_t*>(info) + sizeof(BITMAPINFOHEADER), masks, sizeof masks);
}

/// Masks are an answer here, not a question: those of the bitmap, or else of eight bits each (five, six and five).
void chooseMasks(const BitmapObject& bitmap, BITMAPINFO* info) {
    const BITMAPINFOHEADER& header = info->bmiHeader;
    if (header.biCompression != BI_BITFIELDS)
        return;
    PixelFormat format = bitmap.surface().format;
    if (format.bits != header.biBitCount) {
        format = PixelFormat{};
        if (header.biBitCount == 16) {
            format.red = 0xF800;
            format.green = 0x07E0;
            format.blue = 0x001F;
        }
    }
    writeMasks(format, info);
}

/// Fills in the header alone.
int answerHeader(const BitmapObject& bitmap, BITMAPINFO* info) {
    BITMAPINFOHEADER& header = info->bmiHeader;
    if (header.biBitCount == 0) {
        describeBitmap(bitmap, header);
        return bitmap.height();
    }
    const auto stride = dibStride(header.biWidth, header.biBitCount);
    if (!stride || std::abs(std::int64_t{header.biHeight}) > maxBitmapBytes)
        return badParameter(0);
    header.biSizeImage = static_cast<DWORD>(*stride * static_cast<std::size_t>(std::abs(header.biHeight)));
    return bitmap.height();
}

// ---- Painting ------------------------------------------------------------------------------------------------------

BlitJob jobOf(const DeviceContext& context, const Surface& source) {
    BlitJob job;
    job.source = &source;
    job.stretchMode = context.state.stretchMode;
    job.rule = {context.state.textColor, context.state.backgroundColor, {}};
    return job;
}

} // namespace

HBITMAP CreateDIBSection(HDC dc, const BITMAPINFO* info, UINT usage, void** bits, HANDLE section, DWORD /*offset*/) {
    if (bits != nullptr)
        *bits = nullptr;
    if (dc != nullptr && contextOf(dc) == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    if (section != nullptr)
        return badParameter<HBITMAP>(nullptr);
    const auto dib = parseDib(info, usage);
    if (!dib)
        return nullptr;
    if (dib->compressed())
        return badParameter<HBITMAP>(nullptr);
    auto bitmap = BitmapObject::createSection(dib->header, dib->format, dib->colors);
    if (bitmap != nullptr && bits != nullptr)
        *bits = bitmap->bytes();
    return newBitmap(std::move(bitmap));
}

HBITMAP CreateDIBitmap(HDC dc, const BITMAPINFOHEADER* header, DWORD flags, const void* bits, const BITMAPINFO* info,
                       UINT usage) {
    const DeviceContext* context = dc == nullptr ? nullptr : requireContext(dc);
    if (dc != nullptr && context == nullptr)
        return nullptr;
    if (header == nullptr)
        return badParameter<HBITMAP>(nullptr);
    std::int64_t width = header->biWidth;
    std::int64_t height = std::abs(std::int64_t{header->biHeight});
    if (header->biSize == sizeof(BITMAPCOREHEADER)) {
        const auto* core = reinterpret_cast<const BITMAPCOREHEADER*>(header);
        width = core->bcWidth;
        height = core->bcHeight;
    }
    if (width < 0 || height > maxBitmapBytes)
        return badParameter<HBITMAP>(nullptr);
    if (width == 0 || height == 0)
        return stockBitmap();
    const bool filled = (flags & CBM_INIT) != 0 && bits != nullptr;
    const auto dib = filled ? parseDib(info, usage) : std::optional<Dib>{};
    if (filled && !dib)
        return nullptr;
    const auto* selected = context == nullptr ? nullptr : context->state.bitmap.get<BitmapObject>();
    auto bitmap = BitmapObject::createDevice(static_cast<int>(width), static_cast<int>(height),
                                             selected != nullptr && selected->monochrome());
    if (bitmap != nullptr && dib)
        setRows(*bitmap, *dib, 0, static_cast<UINT>(dib->height), bits);
    return newBitmap(std::move(bitmap));
}

int SetDIBits(HDC dc, HBITMAP bitmap, UINT startRow, UINT rows, const void* bits, const BITMAPINFO* info, UINT usage) {
    auto* object = requireObject<BitmapObject>(bitmap);
    if (object == nullptr || (dc != nullptr && requireContext(dc) == nullptr))
        return 0;
    const auto dib = parseDib(info, usage);
    if (!dib)
        return 0;
    return bits == nullptr ? badParameter(0) : setRows(*object, *dib, startRow, rows, bits);
}

int GetDIBits(HDC dc, HBITMAP bitmap, UINT startRow, UINT rows, void* bits, BITMAPINFO* info, UINT usage) {
    const auto* object = requireObject<BitmapObject>(bitmap);
    if (object == nullptr || requireContext(dc) == nullptr)
        return 0;
    if (info == nullptr || info->bmiHeader.biSize < sizeof(BITMAPINFOHEADER) || usage != DIB_RGB_COLORS)
        return badParameter(0);
    if (bits == nullptr || info->bmiHeader.biBitCount == 0)
        return answerHeader(*object, info);
    if (info->bmiHeader.biCompression != BI_RGB && info->bmiHeader.biCompression != BI_BITFIELDS)
        return badParameter(0);
    // What stands in the table is not read: it is filled in here.
    info->bmiHeader.biClrUsed = 0;
    chooseMasks(*object, info);
    if (info->bmiHeader.biBitCount == 1 || info->bmiHeader.biBitCount == 4 || info->bmiHeader.biBitCount == 8)
        writeColors(tableFor(*object, info->bmiHeader.biBitCount), info);
    const auto dib = parseDib(info, usage);
    if (!dib)
        return 0;
    info->bmiHeader.biSizeImage = static_cast<DWORD>(dib->stride * static_cast<std::size_t>(dib->height));
    const int count = rowsWithin(*dib, startRow, rows);
    if (count == 0)
        return 0;
    const Surface picture = dib->surface(bits, count);
    return RowTransfer(*dib, picture, object->surface()).fromBitmap(static_cast<int>(startRow), count);
}

int SetDIBitsToDevice(HDC dc, int x, int y, DWORD width, DWORD height, int sourceX, int sourceY, UINT startRow,
                      UINT rows, const void* bits, const BITMAPINFO* info, UINT usage) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return 0;
    const auto dib = parseDib(info, usage);
    if (!dib)
        return 0;
    if (bits == nullptr)
        return badParameter(0);
    const int count = rowsWithin(*dib, startRow, rows);
    if (count == 0)
        return 0;
    const DibRows picture(*dib, bits, count);
    BlitJob job = jobOf(*context, picture.surface());
    job.table = ternaryTable(SRCCOPY);
    const POINT place = context->toSurface(POINT{x, y});
    const int partWidth = limited(width);
    const int partHeight = limited(height);
    // The upper row of the part, counted within the rows that are there.
    const std::int64_t start = dib->compressed() ? 0 : startRow;
    const std::int64_t upper = dib->bottomUp ? picture.surface().height + start - sourceY - std::int64_t{partHeight}
                                             : std::int64_t{sourceY} - start;
    job.columns = {place.x, partWidth, limited(sourceX), partWidth};
    job.rows = {place.y, partHeight, limited(upper), partHeight};
    blit(*context, job);
    return count;
}

int StretchDIBits(HDC dc, int x, int y, int width, int height, int sourceX, int sourceY, int sourceWidth,
                  int sourceHeight, const void* bits, const BITMAPINFO* info, UINT usage, DWORD rop) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return 0;
    const TernaryTable table = ternaryTable(rop);
    if (!usesSource(table)) {
        PatBlt(dc, x, y, width, height, rop);
        return 1;
    }
    const auto dib = parseDib(info, usage);
    if (!dib)
        return 0;
    if (bits == nullptr)
        return badParameter(0);
    const DibRows picture(*dib, bits, dib->height);
    BlitJob job = jobOf(*context, picture.surface());
    job.table = table;
    const POINT place = context->toSurface(POINT{x, y});
    const std::int64_t edge = std::int64_t{sourceY} + sourceHeight;
    // Rows count the other way round here: a part that runs downward in the picture's count runs upward in ours.
    const std::int64_t upper = dib->bottomUp ? dib->height - edge - (sourceHeight < 0 ? 2 : 0) : std::int64_t{sourceY};
    job.columns = {place.x, limited(width), limited(sourceX), limited(sourceWidth)};
    job.rows = {place.y, limited(height), limited(upper), limited(sourceHeight)};
    if (sourceWidth != 0 && sourceHeight != 0)
        blit(*context, job);
    return dib->height;
}

UINT GetDIBColorTable(HDC dc, UINT start, UINT count, RGBQUAD* colors) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return 0;
    const auto* bitmap = context->state.bitmap.get<BitmapObject>();
    if (bitmap == nullptr || !bitmap->isSection() || bitmap->surface().colors == nullptr || colors == nullptr)
        return badParameter<UINT>(0);
    const ColorTable& table = *bitmap->surface().colors;
    const UINT entries = start >= table.size() ? 0 : std::min(count, static_cast<UINT>(table.size()) - start);
    for (UINT index = 0; index < entries; ++index) {
        const std::uint32_t color = table[start + index];
        colors[index] = {static_cast<BYTE>(color), static_cast<BYTE>(color >> 8), static_cast<BYTE>(color >> 16), 0};
    }
    return entries;
}

UINT SetDIBColorTable(HDC dc, UINT start, UINT count, const RGBQUAD* colors) {
    const DeviceContext* context = requireContext(dc);
    if (context == nullptr)
        return 0;
    auto* bitmap = context->state.bitmap.get<BitmapObject>();
    if (bitmap == nullptr || bitmap->colors().empty() || colors == nullptr)
        return badParameter<UINT>(0);
    ColorTable& table = bitmap->colors();
    const UINT entries = start >= table.size() ? 0 : std::min(count, static_cast<UINT>(table.size()) - start);
    for (UINT index = 0; index < entries; ++index)
        table[start + index] = argbFromColor(RGB(colors[index].rgbRed, colors[index].rgbGreen, colors[index].rgbBlue));
    return entries;
}
