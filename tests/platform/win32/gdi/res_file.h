// Compiled resources made by hand, and the pictures in them.
#pragma once

#include "win32/resources.h"

#include <cstdint>
#include <string>
#include <vector>

using Bytes = std::vector<std::uint8_t>;

inline void put16(Bytes& bytes, unsigned value) {
    bytes.push_back(static_cast<std::uint8_t>(value));
    bytes.push_back(static_cast<std::uint8_t>(value >> 8));
}
inline void put32(Bytes& bytes, std::uint32_t value) {
    put16(bytes, value & 0xFFFF);
    put16(bytes, value >> 16);
}
inline void append(Bytes& bytes, const Bytes& more) { bytes.insert(bytes.end(), more.begin(), more.end()); }

/// A compiled resource file, entry by entry.
class ResFile {
public:
    ResFile() { add(0, 0, {}); }

    void add(unsigned type, unsigned name, const Bytes& data) {
        put32(bytes_, static_cast<std::uint32_t>(data.size()));
        put32(bytes_, 32);
        for (const unsigned key : {type, name}) {
            put16(bytes_, 0xFFFF);
            put16(bytes_, key);
        }
        bytes_.resize(bytes_.size() + 16);
        append(bytes_, data);
        bytes_.resize((bytes_.size() + 3) / 4 * 4);
    }
    [[nodiscard]] const Bytes& bytes() const { return bytes_; }

private:
    Bytes bytes_;
};

/// An instance with resources, as long as this object lives.
class TestInstance {
public:
    explicit TestInstance(Bytes resources) : bytes_(std::move(resources)) {
        const auto status = vndk::win32::registerInstance(bytes_, handle_);
        if (!status.ok())
            handle_ = nullptr;
    }
    ~TestInstance() { vndk::win32::unregisterInstance(handle_); }
    TestInstance(const TestInstance&) = delete;
    TestInstance& operator=(const TestInstance&) = delete;
    [[nodiscard]] HINSTANCE handle() const { return handle_; }

private:
    Bytes bytes_;
    HINSTANCE handle_ = nullptr;
};

/// A picture given by indexes into a table of colours 0x00RRGGBB; 24 and 32 bits take the colours themselves.
struct Picture {
    int bits = 8;
    std::vector<std::uint32_t> colors;
    std::vector<std::string> rows; // digits: indexes; for icons ' ' is transparent, with index 0
};

/// Header, table and rows, the bottom row first.
inline Bytes packedBitmap(const Picture& picture, bool icon = false) {
    const auto width = static_cast<unsigned>(picture.rows[0].size());
    const auto height = static_cast<unsigned>(picture.rows.size());
    Bytes bytes;
    put32(bytes, 40);
    put32(bytes, width);
    put32(bytes, icon ? 2 * height : height);
    put16(bytes, 1);
    put16(bytes, static_cast<unsigned>(picture.bits));
    bytes.resize(40);
    if (picture.bits <= 8)
        for (std::size_t index = 0; index < std::size_t{1} << picture.bits; ++index)
            put32(bytes, index < picture.colors.size() ? picture.colors[index] : 0);
    const auto putRows = [&](int bits, auto valueOf) {
        for (auto row = picture.rows.rbegin(); row != picture.rows.rend(); ++row) {
            const std::size_t start = bytes.size();
            bytes.resize(start + (width * static_cast<unsigned>(bits) + 31) / 32 * 4);
            for (std::size_t x = 0; x < width; ++x) {
                const std::uint32_t value = valueOf((*row)[x]);
                if (bits < 8)
                    bytes[start + x * static_cast<unsigned>(bits) / 8] |=
                        static_cast<std::uint8_t>(value << (8 - bits - static_cast<int>(x) * bits % 8));
                else
                    for (std::size_t byte = 0; byte < static_cast<std::size_t>(bits) / 8; ++byte)
                        bytes[start + x * static_cast<unsigned>(bits) / 8 + byte] =
                            static_cast<std::uint8_t>(value >> (8 * byte));
            }
        }
    };
    putRows(picture.bits, [&](char cell) {
        const std::uint32_t index = cell == ' ' ? 0 : static_cast<std::uint32_t>(cell - '0');
        return picture.bits <= 8 ? index : cell == ' ' ? 0 : picture.colors[index];
    });
    if (icon)
        putRows(1, [](char cell) -> std::uint32_t { return cell == ' ' ? 1 : 0; });
    return bytes;
}

inline Bytes packedIcon(const Picture& picture) { return packedBitmap(picture, true); }

inline Bytes packedCursor(const Picture& picture, unsigned hotX, unsigned hotY) {
    Bytes bytes;
    put16(bytes, hotX);
    put16(bytes, hotY);
    append(bytes, packedIcon(picture));
    return bytes;
}

struct GroupMember {
    unsigned width;
    unsigned height;
    unsigned bits;
    unsigned id;
};

inline Bytes iconGroup(const std::vector<GroupMember>& members, bool cursor = false) {
    Bytes bytes;
    put16(bytes, 0);
    put16(bytes, cursor ? 2 : 1);
    put16(bytes, static_cast<unsigned>(members.size()));
    for (const GroupMember& member : members) {
        if (cursor) {
            put16(bytes, member.width);
            put16(bytes, 2 * member.height);
        } else {
            bytes.push_back(static_cast<std::uint8_t>(member.width));
            bytes.push_back(static_cast<std::uint8_t>(member.height));
            put16(bytes, 0);
        }
        put16(bytes, 1);
        put16(bytes, member.bits);
        put32(bytes, 0);
        put16(bytes, member.id);
    }
    return bytes;
}
