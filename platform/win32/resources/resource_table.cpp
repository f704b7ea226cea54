#include "win32/resource_table.h"

#include "win32/codepage.h"

#include <algorithm>
#include <tuple>

namespace vndk::win32 {

namespace {

constexpr std::size_t kSmallestHeader = 32; // both keys numbers

// Reads little-endian values inside a range; a read past its end answers zero and marks the cursor as failed for good.
class Cursor {
public:
    Cursor(std::span<const std::uint8_t> bytes, std::size_t at) : bytes_(bytes), at_(at) {}

    std::uint16_t word() {
        if (!need(2))
            return 0;
        const auto value = static_cast<std::uint16_t>(bytes_[at_] | (bytes_[at_ + 1] << 8));
        at_ += 2;
        return value;
    }

    std::uint32_t dword() {
        const std::uint32_t low = word();
        return low | (static_cast<std::uint32_t>(word()) << 16);
    }

    void alignTo4(std::size_t origin) { at_ += (4 - (at_ - origin) % 4) % 4; }
    [[nodiscard]] std::size_t at() const { return at_; }
    [[nodiscard]] bool failed() const { return failed_; }

private:
    bool need(std::size_t count) {
        failed_ = failed_ || at_ > bytes_.size() || bytes_.size() - at_ < count;
        return !failed_;
    }

    std::span<const std::uint8_t> bytes_;
    std::size_t at_;
    bool failed_ = false;
};

ResourceKey readKey(Cursor& cursor) {
    std::uint16_t unit = cursor.word();
    if (unit == 0xFFFF)
        return ResourceKey(cursor.word());
    std::string text;
    for (; unit != 0 && !cursor.failed(); unit = cursor.word())
        text += byteFromCharacter(unit).value_or('?');
    return ResourceKey(text);
}

Status damaged(std::size_t offset, const char* what) {
    return {ERROR_INVALID_DATA, "The compiled resources are damaged at byte " + std::to_string(offset) + ": " + what +
                                    ". Build or install the library again."};
}

auto order(const ResourceEntry& entry) { return std::tie(entry.type, entry.name); }

} // namespace

ResourceKey::ResourceKey(std::string_view text1252) : text_(text1252) {
    std::transform(text_.begin(), text_.end(), text_.begin(), upper1252);
}

std::strong_ordering ResourceKey::operator<=>(const ResourceKey& other) const {
    if (const auto byNumber = number_ <=> other.number_; byNumber != 0)
        return byNumber;
    return text_.compare(other.text_) <=> 0;
}

Status ResourceTable::parse(std::span<const std::uint8_t> bytes, ResourceTable& table) {
    table.entries_.clear();
    std::vector<ResourceEntry> entries;
    for (std::size_t at = 0; at < bytes.size();) {
        Cursor cursor(bytes, at);
        const std::size_t dataSize = cursor.dword();
        const std::size_t headerSize = cursor.dword();
        if (cursor.failed() || headerSize < kSmallestHeader || headerSize > bytes.size() - at)
            return damaged(at, "an entry's header doesn't fit");
        const std::size_t dataAt = at + headerSize;
        if (dataSize > bytes.size() - dataAt)
            return damaged(at, "an entry's data doesn't fit");

        // Everything else of the header has to lie in front of the data.
        Cursor header(bytes.first(dataAt), at + 8);
        ResourceKey type = readKey(header);
        ResourceKey name = readKey(header);
        header.alignTo4(at);
        header.dword(); // data version
        header.word();  // memory flags
        const std::uint16_t language = header.word();
        if (header.failed())
            return damaged(at, "an entry's type or name doesn't end");

        // A file begins with an empty entry of type 0 that only marks the format.
        if (type != ResourceKey(0))
            entries.push_back({std::move(type), std::move(name), language, bytes.subspan(dataAt, dataSize)});
        const std::size_t end = dataAt + dataSize;
        at = end + (4 - end % 4) % 4;
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const ResourceEntry& a, const ResourceEntry& b) { return order(a) < order(b); });
    table.entries_ = std::move(entries);
    return {};
}

const ResourceEntry* ResourceTable::find(const ResourceKey& type, const ResourceKey& name) const {
    const auto wanted = std::tie(type, name);
    const auto at = std::lower_bound(entries_.begin(), entries_.end(), wanted,
                                     [](const ResourceEntry& entry, const auto& key) { return order(entry) < key; });
    return at != entries_.end() && order(*at) == wanted ? &*at : nullptr;
}

bool ResourceTable::hasType(const ResourceKey& type) const {
    const auto at =
        std::lower_bound(entries_.begin(), entries_.end(), type,
                         [](const ResourceEntry& entry, const ResourceKey& key) { return entry.type < key; });
    return at != entries_.end() && at->type == type;
}

bool ResourceTable::owns(const ResourceEntry* entry) const {
    return std::any_of(entries_.begin(), entries_.end(), [entry](const ResourceEntry& own) { return &own == entry; });
}

std::optional<std::string> stringOfBlock(std::span<const std::uint8_t> block, unsigned index) {
    Cursor cursor(block, 0);
    for (unsigned i = 0; i < index; ++i) {
        const std::uint16_t skipped = cursor.word();
        if (cursor.failed())
            return std::nullopt;
        cursor = Cursor(block, cursor.at() + std::size_t{2} * skipped);
    }
    std::uint16_t length = cursor.word();
    if (cursor.failed() || block.size() - cursor.at() < std::size_t{2} * length)
        return std::nullopt;
    std::string text;
    text.reserve(length);
    for (; length > 0; --length)
        text += byteFromCharacter(cursor.word()).value_or('?');
    return text;
}

} // namespace vndk::win32
