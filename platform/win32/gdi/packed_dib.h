// Bitmaps as resources and files hold them: a header, a colour table and rows behind each other, of anybody's making.
#pragma once

#include "gdi/dib.h"

#include <optional>
#include <span>
#include <vector>

namespace vndk::win32 {

struct PackedDib {
    Dib dib;
    std::span<const std::uint8_t> rows; // to the end of the data
};

/// Nothing, with ERROR_INVALID_DATA, when header or table don't fit into the bytes or make no sense. `rowsAt`: where
/// the rows begin, if not behind the table.
[[nodiscard]] std::optional<PackedDib> readPackedDib(std::span<const std::uint8_t> bytes,
                                                     std::optional<std::size_t> rowsAt = {});

/// The picture of a packed bitmap, run lengths decoded. The surface lives as long as this object and the bytes.
class PackedPicture {
public:
    /// Nothing, with ERROR_INVALID_DATA, when rows are missing.
    static std::optional<PackedPicture> read(PackedDib packed);

    [[nodiscard]] Dib& dib() { return dib_; }
    [[nodiscard]] Surface surface() const {
        return dib_.surface(decoded_.empty() ? rows_.data() : decoded_.data(), dib_.height);
    }

private:
    Dib dib_;
    std::span<const std::uint8_t> rows_;
    std::vector<std::uint8_t> decoded_;
};

} // namespace vndk::win32
