// Groups of icons or cursors: the same picture in several sizes and depths, of which one is chosen.
#pragma once

#include "gdi/icon.h"

#include <optional>
#include <span>
#include <vector>

namespace vndk::win32 {

struct GroupEntry {
    int width = 0;
    int height = 0;
    int bits = 0;           // per pixel; 0: not told
    std::uint32_t id = 0;   // of the resource with the picture; of a file the offset of its data
    std::uint32_t size = 0; // bytes
    POINT hot{0, 0};        // of a cursor in a file
};

/// The entries of a group resource; empty, with ERROR_INVALID_DATA, when it is damaged or has none.
[[nodiscard]] std::vector<GroupEntry> readIconGroup(std::span<const std::uint8_t> bytes, bool cursor);
/// The same of an icon or cursor file.
[[nodiscard]] std::vector<GroupEntry> readIconFileEntries(std::span<const std::uint8_t> bytes, bool cursor);

/// The entry nearest to a size, of these the one with most colours (`monochrome`: with fewest). Sizes 0: the first
/// entry's. REQUIRES: there is an entry.
[[nodiscard]] const GroupEntry& chooseEntry(const std::vector<GroupEntry>& entries, int width, int height,
                                            bool monochrome);

} // namespace vndk::win32
