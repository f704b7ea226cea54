#include "gdi/packed_dib.h"

#include "win32/error.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace vndk::win32 {

namespace {

/// More than any header with its masks and table takes, so that none is read beyond its end.
constexpr std::size_t largestHeader = 2048;

std::nullopt_t damaged() {
    SetLastError(ERROR_INVALID_DATA);
    return std::nullopt;
}

} // namespace

std::optional<PackedDib> readPackedDib(std::span<const std::uint8_t> bytes, std::optional<std::size_t> rowsAt) {
    alignas(BITMAPINFO) std::array<std::uint8_t, largestHeader> start{};
    const std::size_t known = std::min(bytes.size(), start.size());
    if (known > 0)
        std::memcpy(start.data(), bytes.data(), known);
    const auto& info = *reinterpret_cast<const BITMAPINFO*>(start.data());
    auto dib = parseDib(&info, DIB_RGB_COLORS);
    if (!dib)
        return damaged();
    const std::size_t headerBytes = dibHeaderBytes(info);
    const std::size_t at = rowsAt.value_or(headerBytes);
    if (headerBytes > bytes.size() || at < headerBytes || at > bytes.size())
        return damaged();
    return PackedDib{std::move(*dib), bytes.subspan(at)};
}

std::optional<PackedPicture> PackedPicture::read(PackedDib packed) {
    PackedPicture picture;
    picture.dib_ = std::move(packed.dib);
    picture.rows_ = packed.rows;
    Dib& dib = picture.dib_;
    if (dib.compressed()) {
        picture.decoded_ = decodeRunLengths(dib, packed.rows.data(), packed.rows.size());
        dib.header.biCompression = BI_RGB;
    } else if (packed.rows.size() / dib.stride < static_cast<std::size_t>(dib.height)) {
        return damaged();
    }
    return picture;
}

} // namespace vndk::win32
