#include "dwg/extended_data.h"

namespace vndk::dwg {

namespace {

/// The length field of a group holds more, but other programs hold 16 KB for one object.
constexpr size_t kLongestGroup = 0x7F00;
constexpr size_t kTextHead = 4; // code, length, two bytes of the code page

/// Bytes of the item at the start of `items`, its code included; 0 for a damaged one.
size_t itemSize(std::string_view items) {
    const auto byte = [&](size_t i) { return i < items.size() ? static_cast<unsigned char>(items[i]) : 0u; };
    size_t size = 0;
    const unsigned code = byte(0);
    if (code == 0)
        size = kTextHead + byte(1);
    else if (code == 4)
        size = 2 + byte(1);
    else if (code == 1 || code == 70)
        size = 3;
    else if (code == 2)
        size = 2;
    else if (code == 3 || code == 5 || (code >= 40 && code <= 42))
        size = 9;
    else if (code >= 10 && code <= 15)
        size = 25;
    else if (code == 71)
        size = 5;
    return size <= items.size() ? size : 0;
}

using Convert = std::string (*)(std::string_view, uint16_t);

/// Converts the texts that aren't in code page 1252. One that would get too long stays as it is.
std::string withTexts(std::string_view items, Convert convert) {
    std::string out;
    while (!items.empty()) {
        const size_t size = itemSize(items);
        if (size == 0)
            break;
        const auto codePage = size >= kTextHead ? static_cast<uint16_t>(static_cast<unsigned char>(items[2]) << 8 |
                                                                        static_cast<unsigned char>(items[3]))
                                                : kCodePage1252;
        std::string text;
        if (items[0] == 0 && codePage != kCodePage1252 && isKnownCodePage(codePage))
            text = convert(items.substr(kTextHead, size - kTextHead), codePage);
        if (text.empty() || text.size() > 255) {
            out.append(items.substr(0, size));
        } else {
            out.push_back(0);
            out.push_back(static_cast<char>(text.size()));
            out.append(items.substr(2, 2));
            out.append(text);
        }
        items.remove_prefix(size);
    }
    out.append(items);
    return out;
}

/// Whether any conversion can be needed: almost all drawings have none.
bool hasForeignText(std::string_view items) {
    while (const size_t size = itemSize(items)) {
        if (items[0] == 0 && (items[2] != 0 || static_cast<unsigned char>(items[3]) != kCodePage1252))
            return true;
        items.remove_prefix(size);
    }
    return false;
}

/// The bytes of whole items that go into one group.
size_t groupLength(std::string_view items) {
    if (items.size() <= kLongestGroup)
        return items.size();
    size_t length = 0;
    for (size_t size; (size = itemSize(items.substr(length))) != 0 && length + size <= kLongestGroup;)
        length += size;
    return length > 0 ? length : std::min<size_t>(items.size(), 0xFFFF);
}

} // namespace

void readExtendedData(BitReader& reader, uint64_t own, AcDbDatabase& database, AcDbXData& data) {
    while (const uint16_t size = reader.BS()) {
        AcDbXDataGroup& group = data.groups.emplace_back();
        group.application = database.idOf(reader.H().absolute(own));
        group.items.resize(size_t{size} * 8 <= reader.remaining() ? size : 0);
        reader.bytes(group.items.data(), group.items.size());
        if (reader.failed())
            return;
        if (hasForeignText(group.items))
            group.items = withTexts(group.items, textFromDrawing);
    }
}

void writeExtendedData(BitWriter& writer, const AcDbXData& data) {
    for (const AcDbXDataGroup& group : data.groups) {
        if (group.application.isNull())
            continue;
        std::string converted;
        std::string_view items = group.items;
        if (hasForeignText(items))
            items = converted = withTexts(items, textToDrawing);
        while (!items.empty()) {
            const size_t length = groupLength(items);
            writer.BS(static_cast<uint16_t>(length));
            writer.H(5, group.application.handle().value());
            writer.bytes(items.data(), length);
            items.remove_prefix(length);
        }
    }
    writer.BS(0);
}

std::string itemsOf(const AcDbXData& data, AcDbObjectId application) {
    std::string items;
    for (const AcDbXDataGroup& group : data.groups)
        if (group.application == application)
            items += group.items;
    return items;
}

} // namespace vndk::dwg
