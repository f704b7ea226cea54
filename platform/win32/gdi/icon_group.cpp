#include "gdi/icon_group.h"

#include <algorithm>
#include <bit>
#include <tuple>

namespace vndk::win32 {

namespace {

constexpr std::size_t directoryBytes = 6;      // reserved 0, kind, number of entries
constexpr std::size_t resourceEntryBytes = 14; // ends in the number of a resource
constexpr std::size_t fileEntryBytes = 16;     // ends in an offset

int byteAt(std::span<const std::uint8_t> bytes, std::size_t at) { return bytes[at]; }
int wordAt(std::span<const std::uint8_t> bytes, std::size_t at) { return bytes[at] | (bytes[at + 1] << 8); }
std::uint32_t dwordAt(std::span<const std::uint8_t> bytes, std::size_t at) {
    return static_cast<std::uint32_t>(wordAt(bytes, at)) | (static_cast<std::uint32_t>(wordAt(bytes, at + 2)) << 16);
}

/// A byte can't tell 256.
int sizeFromByte(int value) { return value == 0 ? 256 : value; }

/// Old tools leave the depth out and tell the number of colours; 0 of these are too many for the byte.
int depthOf(int bits, int colors) {
    return bits != 0 || colors == 0 ? bits : static_cast<int>(std::bit_width(unsigned(colors) - 1));
}

GroupEntry iconEntry(std::span<const std::uint8_t> entry) {
    GroupEntry result;
    result.width = sizeFromByte(byteAt(entry, 0));
    result.height = sizeFromByte(byteAt(entry, 1));
    result.bits = depthOf(wordAt(entry, 6), byteAt(entry, 2));
    result.size = dwordAt(entry, 8);
    return result;
}

/// Calls `read` for each of the entries, which are `entryBytes` long.
template <typename Read>
std::vector<GroupEntry> readEntries(std::span<const std::uint8_t> bytes, bool cursor, std::size_t entryBytes,
                                    Read read) {
    std::vector<GroupEntry> entries;
    const int kind = cursor ? 2 : 1;
    if (bytes.size() >= directoryBytes && wordAt(bytes, 0) == 0 && wordAt(bytes, 2) == kind) {
        const auto count = static_cast<std::size_t>(wordAt(bytes, 4));
        if ((bytes.size() - directoryBytes) / entryBytes >= count)
            for (std::size_t index = 0; index < count; ++index)
                entries.push_back(read(bytes.subspan(directoryBytes + index * entryBytes, entryBytes)));
    }
    if (entries.empty())
        SetLastError(ERROR_INVALID_DATA);
    return entries;
}

} // namespace

std::vector<GroupEntry> readIconGroup(std::span<const std::uint8_t> bytes, bool cursor) {
    return readEntries(bytes, cursor, resourceEntryBytes, [cursor](std::span<const std::uint8_t> entry) {
        GroupEntry result = iconEntry(entry);
        if (cursor) {
            result.width = wordAt(entry, 0);
            result.height = wordAt(entry, 2) / 2; // colours and mask are counted
            result.bits = wordAt(entry, 6);
        }
        result.id = static_cast<std::uint32_t>(wordAt(entry, 12));
        return result;
    });
}

std::vector<GroupEntry> readIconFileEntries(std::span<const std::uint8_t> bytes, bool cursor) {
    return readEntries(bytes, cursor, fileEntryBytes, [cursor](std::span<const std::uint8_t> entry) {
        GroupEntry result = iconEntry(entry);
        if (cursor) {
            result.bits = depthOf(0, byteAt(entry, 2));
            result.hot = {wordAt(entry, 4), wordAt(entry, 6)};
        }
        result.id = dwordAt(entry, 12);
        return result;
    });
}

const GroupEntry& chooseEntry(const std::vector<GroupEntry>& entries, int width, int height, bool monochrome) {
    const int wantedWidth = width > 0 ? width : entries.front().width;
    const int wantedHeight = height > 0 ? height : entries.front().height;
    const auto rank = [&](const GroupEntry& entry) {
        const std::int64_t off =
            std::abs(std::int64_t{entry.width} - wantedWidth) + std::abs(std::int64_t{entry.height} - wantedHeight);
        return std::tuple(off, monochrome ? entry.bits : -entry.bits);
    };
    return *std::min_element(entries.begin(), entries.end(),
                             [&](const GroupEntry& a, const GroupEntry& b) { return rank(a) < rank(b); });
}

} // namespace vndk::win32
