// Headers, colour tables and run lengths of device-independent bitmaps.
#include "gdi/dib.h"

#include "win32/error.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

namespace vndk::win32 {

namespace {

constexpr DWORD coreHeaderBytes = sizeof(BITMAPCOREHEADER);
constexpr DWORD infoHeaderBytes = sizeof(BITMAPINFOHEADER);
constexpr DWORD longestHeader = 124; // the latest published version

bool isContiguous(std::uint32_t mask) {
    return mask != 0 && std::has_single_bit((std::uint64_t{mask} >> std::countr_zero(mask)) + 1);
}

/// The masks follow a header of 40 bytes and are part of longer ones: at the same place.
bool readMasks(const std::uint8_t* base, PixelFormat& format) {
    std::uint32_t masks[3];
    std::memcpy(masks, base + infoHeaderBytes, sizeof masks);
    const std::uint64_t limit = std::uint64_t{1} << format.bits;
    if (!std::all_of(std::begin(masks), std::end(masks), [=](std::uint32_t m) { return isContiguous(m) && m < limit; }))
        return false;
    if ((masks[0] & masks[1]) != 0 || (masks[0] & masks[2]) != 0 || (masks[1] & masks[2]) != 0)
        return false;
    format.red = masks[0];
    format.green = masks[1];
    format.blue = masks[2];
    return true;
}

bool readFormat(const BITMAPINFOHEADER& header, const std::uint8_t* base, PixelFormat& format) {
    const int bits = header.biBitCount;
    format.bits = bits;
    switch (header.biCompression) {
    case BI_RGB:
        if (bits == 16) {
            format.red = 0x7C00;
            format.green = 0x03E0;
            format.blue = 0x001F;
        }
        return bits == 1 || bits == 4 || bits == 8 || bits == 16 || bits == 24 || bits == 32;
    case BI_BITFIELDS:
        return (bits == 16 || bits == 32) && readMasks(base, format);
    case BI_RLE8:
        return bits == 8 && header.biHeight > 0;
    case BI_RLE4:
        return bits == 4 && header.biHeight > 0;
    default:
        return false;
    }
}

BITMAPINFOHEADER readHeader(const std::uint8_t* base) {
    BITMAPINFOHEADER header{};
    std::memcpy(&header.biSize, base, sizeof header.biSize);
    if (header.biSize != coreHeaderBytes) {
        std::memcpy(&header, base, infoHeaderBytes);
        return header;
    }
    BITMAPCOREHEADER core;
    std::memcpy(&core, base, sizeof core);
    header.biWidth = core.bcWidth;
    header.biHeight = core.bcHeight;
    header.biPlanes = core.bcPlanes;
    header.biBitCount = core.bcBitCount;
    return header;
}

std::size_t tableEntries(const BITMAPINFOHEADER& header) {
    if (header.biBitCount > 8)
        return header.biClrUsed <= 256 ? header.biClrUsed : 0; // a hint for displays with a palette
    const std::size_t all = std::size_t{1} << header.biBitCount;
    return header.biClrUsed == 0 ? all : std::min<std::size_t>(header.biClrUsed, all);
}

std::size_t tableOffset(const BITMAPINFOHEADER& header) {
    const bool masksFollow = header.biSize == infoHeaderBytes && header.biCompression == BI_BITFIELDS;
    return header.biSize + (masksFollow ? 12U : 0U);
}

ColorTable readColors(const BITMAPINFOHEADER& header, const std::uint8_t* base) {
    ColorTable colors(std::size_t{1} << header.biBitCount, 0);
    const std::size_t entryBytes = header.biSize == coreHeaderBytes ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD);
    const std::uint8_t* entry = base + tableOffset(header);
    for (std::size_t index = 0; index < tableEntries(header); ++index, entry += entryBytes)
        colors[index] = (std::uint32_t{entry[2]} << 16) | (std::uint32_t{entry[1]} << 8) | entry[0];
    return colors;
}

bool parse(const std::uint8_t* base, Dib& dib) {
    BITMAPINFOHEADER& header = dib.header;
    header = readHeader(base);
    const bool knownHeader =
        header.biSize == coreHeaderBytes || (header.biSize >= infoHeaderBytes && header.biSize <= longestHeader);
    if (!knownHeader || header.biPlanes != 1 || header.biWidth < 1 || header.biHeight == 0)
        return false;
    const std::int64_t height = std::abs(std::int64_t{header.biHeight});
    if (!readFormat(header, base, dib.format) || height > maxBitmapBytes)
        return false;
    const auto stride = dibStride(header.biWidth, dib.format.bits);
    if (!stride || *stride > static_cast<std::size_t>(maxBitmapBytes / height))
        return false;
    dib.width = header.biWidth;
    dib.height = static_cast<int>(height);
    dib.bottomUp = header.biHeight > 0;
    dib.stride = *stride;
    if (dib.format.indexed())
        dib.colors = readColors(header, base);
    header.biSize = infoHeaderBytes;
    return true;
}

ColorTable makeStandardColors(int bits) {
    if (bits == 1)
        return {0x000000, 0xFFFFFF};
    ColorTable colors{0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
                      0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF};
    if (bits == 4)
        return colors;
    for (std::uint32_t red = 0; red < 6; ++red)
        for (std::uint32_t green = 0; green < 6; ++green)
            for (std::uint32_t blue = 0; blue < 6; ++blue)
                colors.push_back((red * 0x33 << 16) | (green * 0x33 << 8) | blue * 0x33);
    for (std::uint32_t gray = 0; colors.size() < 256; ++gray)
        colors.push_back((gray * 10 + 8) * 0x010101);
    return colors;
}

/// Writes into the rows of a picture, never outside of them.
class RunWriter {
public:
    RunWriter(const Dib& dib, std::vector<std::uint8_t>& rows) : dib_(dib), rows_(rows) {}

    [[nodiscard]] bool inside() const { return y_ < dib_.height; }
    void put(std::uint32_t index) {
        if (x_ >= dib_.width || !inside())
            return;
        std::uint8_t* row = rows_.data() + static_cast<std::size_t>(y_) * dib_.stride;
        if (dib_.format.bits == 8)
            row[x_] = static_cast<std::uint8_t>(index);
        else
            row[x_ / 2] |= static_cast<std::uint8_t>(x_ % 2 == 0 ? index << 4 : index);
        ++x_;
    }
    void endLine() { move(-x_, 1); }
    void move(int dx, int dy) {
        x_ = std::min(x_ + dx, dib_.width);
        y_ = std::min(y_ + dy, dib_.height);
    }

private:
    const Dib& dib_;
    std::vector<std::uint8_t>& rows_;
    int x_ = 0;
    int y_ = 0;
};

/// Pixel `index` of a run or of literal bytes: with 4 bits each byte holds two.
std::uint32_t pixelOfBytes(const std::uint8_t* bytes, int index, int bits) {
    if (bits == 8)
        return bytes[index];
    return (bytes[index / 2] >> (index % 2 == 0 ? 4 : 0)) & 0x0F;
}

} // namespace

const ColorTable& standardColors(int bits) {
    assert((bits == 1 || bits == 4 || bits == 8) && "only these depths have colour tables");
    static const ColorTable& one = *new ColorTable(makeStandardColors(1));
    static const ColorTable& four = *new ColorTable(makeStandardColors(4));
    static const ColorTable& eight = *new ColorTable(makeStandardColors(8));
    return bits == 1 ? one : bits == 4 ? four : eight;
}

Surface Dib::surface(const void* bits, int rows) const {
    assert(!compressed() && "run lengths are decoded first");
    Surface result;
    result.top = static_cast<std::uint8_t*>(const_cast<void*>(bits));
    result.stride = static_cast<std::ptrdiff_t>(stride);
    result.width = width;
    result.height = rows;
    result.format = format;
    result.colors = colors.empty() ? nullptr : &colors;
    if (bottomUp && rows > 0) {
        result.top += result.stride * (rows - 1);
        result.stride = -result.stride;
    }
    return result;
}

std::size_t dibHeaderBytes(const BITMAPINFO& info) {
    const auto* base = reinterpret_cast<const std::uint8_t*>(&info);
    const BITMAPINFOHEADER header = readHeader(base);
    const std::size_t entryBytes = header.biSize == coreHeaderBytes ? sizeof(RGBTRIPLE) : sizeof(RGBQUAD);
    return tableOffset(header) + entryBytes * tableEntries(header);
}

std::optional<Dib> parseDib(const BITMAPINFO* info, UINT usage) {
    Dib dib;
    if (info == nullptr || usage != DIB_RGB_COLORS || !parse(reinterpret_cast<const std::uint8_t*>(info), dib)) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return {};
    }
    return dib;
}

std::vector<std::uint8_t> decodeRunLengths(const Dib& dib, const std::uint8_t* data, std::size_t size) {
    enum Escape { endOfLine, endOfPicture, delta };
    std::vector<std::uint8_t> rows(dib.stride * static_cast<std::size_t>(dib.height), 0);
    RunWriter writer(dib, rows);
    const int bits = dib.format.bits;
    std::size_t at = 0;
    while (size - at >= 2 && writer.inside()) {
        const int count = data[at];
        const std::uint8_t* second = data + at + 1;
        at += 2;
        if (count > 0) {
            for (int index = 0; index < count; ++index)
                writer.put(pixelOfBytes(second, bits == 4 ? index % 2 : 0, bits));
        } else if (*second == endOfLine) {
            writer.endLine();
        } else if (*second == endOfPicture) {
            break;
        } else if (*second == delta) {
            if (size - at < 2)
                break;
            writer.move(data[at], data[at + 1]);
            at += 2;
        } else {
            const int literal = *second;
            const std::size_t bytes = (static_cast<std::size_t>(literal * bits) + 7) / 8;
            if (size - at < bytes)
                break;
            for (int index = 0; index < literal; ++index)
                writer.put(pixelOfBytes(data + at, index, bits));
            at += std::min(bytes + bytes % 2, size - at); // literal bytes are padded to words
        }
    }
    return rows;
}

} // namespace vndk::win32
