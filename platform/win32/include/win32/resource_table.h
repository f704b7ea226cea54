// Reader of compiled resources (.res). It never reads outside the bytes it is given and allocates no more than a small
// record per 32 bytes of them.
//
//     ResourceTable table;
//     Status status = ResourceTable::parse(bytes, table);
//     if (const ResourceEntry* dialog = table.find(ResourceKey(5), ResourceKey(262))) ... dialog->data ...
//
// Layout of an entry: data size and header size (32 bits each), type and name (either 0xFFFF and a 16-bit number, or
// UTF-16 text that ends in zero), padding to 4, data version (32), memory flags, language (16), version,
// characteristics (32), then at `header size` the data, padded to 4. All little endian.
#pragma once

#include "win32/status.h"

#include <compare>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::win32 {

/// A resource's type or name: a number, or text that compares without regard to case.
class ResourceKey {
public:
    explicit ResourceKey(std::uint16_t number) : number_(number) {}
    explicit ResourceKey(std::string_view text1252);

    std::strong_ordering operator<=>(const ResourceKey& other) const;
    bool operator==(const ResourceKey& other) const = default;

private:
    std::uint16_t number_ = 0;
    std::string text_; // capitals; empty for a number
};

struct ResourceEntry {
    ResourceKey type;
    ResourceKey name;
    std::uint16_t language;
    std::span<const std::uint8_t> data; ///< lies in the bytes that were parsed
};

class ResourceTable {
public:
    /// Reads all entries. The bytes must outlive the table. On failure `table` is empty and the message tells the
    /// offset.
    static Status parse(std::span<const std::uint8_t> bytes, ResourceTable& table);

    /// The first entry, in the order of the file, of this type and name, whatever its language; null when missing.
    [[nodiscard]] const ResourceEntry* find(const ResourceKey& type, const ResourceKey& name) const;
    [[nodiscard]] bool hasType(const ResourceKey& type) const;

    /// True when `entry` points at an entry of this table.
    [[nodiscard]] bool owns(const ResourceEntry* entry) const;
    [[nodiscard]] const std::vector<ResourceEntry>& entries() const { return entries_; }

private:
    std::vector<ResourceEntry> entries_; // by type, then name, then place in the file
};

/// String `index` (0 to 15) of one block of the string table, in code page 1252 ('?' for what it lacks).
/// Nothing when the block ends before that string; an absent string is an empty one.
[[nodiscard]] std::optional<std::string> stringOfBlock(std::span<const std::uint8_t> block, unsigned index);

} // namespace vndk::win32
