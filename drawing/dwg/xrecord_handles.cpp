#include "dwg/xrecord_handles.h"

#include <optional>
#include <string_view>

#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"

namespace vndk::dwg {

namespace {

constexpr size_t kCodeSize = 2;
constexpr size_t kHandleSize = 8;

struct CodeRange {
    unsigned first, last;
};

template <size_t N>
constexpr bool isIn(unsigned code, const CodeRange (&ranges)[N]) {
    for (const CodeRange& range : ranges)
        if (code >= range.first && code <= range.last)
            return true;
    return false;
}

constexpr CodeRange kTexts[] = {{0, 4},     {6, 9},     {100, 102}, {300, 309},
                                {410, 419}, {430, 439}, {470, 479}, {1000, 1003}};
constexpr CodeRange kPoints[] = {{10, 39}, {110, 139}, {210, 239}, {1010, 1039}};
constexpr CodeRange kReals[] = {{40, 59}, {140, 149}, {160, 169}, {460, 469}, {1040, 1042}};
constexpr CodeRange kShorts[] = {{60, 79}, {170, 179}, {270, 279}, {370, 389}, {400, 409}, {1070, 1070}};
constexpr CodeRange kLongs[] = {{90, 99}, {420, 429}, {440, 459}, {1071, 1071}};
constexpr CodeRange kBytes[] = {{280, 299}};
constexpr CodeRange kBinaries[] = {{310, 319}, {1004, 1004}};
constexpr CodeRange kHandles[] = {{5, 5}, {105, 105}, {320, 369}, {390, 399}, {480, 489}, {1005, 1005}};
/// Those that keep their meaning in another drawing only when they are turned.
constexpr CodeRange kTurned[] = {{330, 369}, {390, 399}, {480, 489}, {1005, 1005}};

unsigned byteAt(std::string_view bytes, size_t i) {
    return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
}

/// Bytes of the value behind a code; none for a code that isn't known.
std::optional<size_t> valueSize(unsigned code, std::string_view value) {
    if (isIn(code, kHandles) || isIn(code, kReals))
        return 8;
    if (isIn(code, kTexts))
        return 3 + (byteAt(value, 0) | byteAt(value, 1) << 8);
    if (isIn(code, kPoints))
        return 24;
    if (isIn(code, kShorts))
        return 2;
    if (isIn(code, kLongs))
        return 4;
    if (isIn(code, kBytes))
        return 1;
    if (isIn(code, kBinaries))
        return 1 + byteAt(value, 0);
    return {};
}

/// True if all items could be told apart.
bool turnItems(std::string& items, const std::function<uint64_t(uint64_t)>& turn) {
    for (size_t at = 0; at < items.size();) {
        const std::string_view rest = std::string_view(items).substr(at);
        const unsigned code = byteAt(rest, 0) | byteAt(rest, 1) << 8;
        if (rest.size() < kCodeSize)
            return false;
        const std::optional<size_t> size = valueSize(code, rest.substr(kCodeSize));
        if (!size || rest.size() < kCodeSize + *size)
            return false;
        at += kCodeSize;
        if (isIn(code, kTurned)) {
            uint64_t handle = 0;
            for (size_t i = kHandleSize; i-- > 0;)
                handle = handle << 8 | byteAt(items, at + i);
            handle = turn(handle);
            for (size_t i = 0; i < kHandleSize; ++i)
                items[at + i] = static_cast<char>(handle >> (8 * i));
        }
        at += *size;
    }
    return true;
}

} // namespace

bool isXrecord(const AcDbOpaqueFields& fields) { return fields.typeName == "XRECORD"; }

bool turnXrecordHandles(AcDbOpaqueFields& fields, const std::function<uint64_t(uint64_t)>& turn) {
    const auto* const data = reinterpret_cast<const uint8_t*>(fields.bits.data());
    BitReader reader(data, 0, fields.bitCount);
    const uint32_t size = reader.BL();
    if (reader.failed() || size > reader.remaining() / 8)
        return false;
    const size_t begin = reader.position();
    std::string items(size, '\0');
    reader.bytes(items.data(), size);
    const std::string former = items;
    if (!turnItems(items, turn))
        return false;
    if (items == former)
        return true;
    BitWriter writer;
    writer.copyBits(data, 0, begin);
    writer.bytes(items.data(), items.size());
    writer.copyBits(data, reader.position(), fields.bitCount);
    fields.bits.assign(reinterpret_cast<const char*>(writer.data().data()), writer.data().size());
    return true;
}

} // namespace vndk::dwg
