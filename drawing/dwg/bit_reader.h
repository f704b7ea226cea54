#pragma once
/// Reads the bit codes of a drawing file. Methods are named as the codes of the format are.
///
/// A read past the end, or an invalid code, returns zero and sets failed() for good; nothing outside is ever
/// touched. So a whole record is read first and failed() is asked once behind it. A count from the file is to be
/// checked against remaining() before anything is allocated for it.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace vndk::dwg {

/// A handle reference as stored: a code and a value that some codes count from the holder's own handle.
struct HandleRef {
    uint8_t code = 0;
    uint64_t value = 0;

    /// The handle that is meant, for a reference in the object with handle `own`. 0 is null.
    uint64_t absolute(uint64_t own) const {
        switch (code) {
        case 6:
            return own + 1;
        case 8:
            return own - 1;
        case 10:
            return own + value;
        case 12:
            return own - value;
        default:
            return value;
        }
    }
};

class BitReader {
public:
    /// Reads the bits [firstBit, endBit) of `data`, which has to hold endBit bits and to outlive the reader.
    BitReader(const uint8_t* data, size_t firstBit, size_t endBit)
        : data_(data), position_(firstBit), end_(endBit), byteEnd_((endBit + 7) / 8) {}

    bool B() { return take(1) != 0; }
    unsigned BB() { return static_cast<unsigned>(take(2)); }
    unsigned BITS4() { return static_cast<unsigned>(take(4)); }
    uint8_t RC() { return static_cast<uint8_t>(take(8)); }
    uint16_t RS() { return __builtin_bswap16(static_cast<uint16_t>(take(16))); }
    uint32_t RL() { return __builtin_bswap32(static_cast<uint32_t>(take(32))); }
    uint64_t RLL() {
        const uint64_t low = RL();
        return low | static_cast<uint64_t>(RL()) << 32;
    }
    double RD() { return std::bit_cast<double>(RLL()); }

    uint16_t BS() {
        switch (BB()) {
        case 0:
            return RS();
        case 1:
            return RC();
        case 2:
            return 0;
        default:
            return 256;
        }
    }
    uint32_t BL() {
        switch (BB()) {
        case 0:
            return RL();
        case 1:
            return RC();
        case 2:
            return 0;
        default:
            return static_cast<uint32_t>(fail());
        }
    }
    double BD() {
        switch (BB()) {
        case 0:
            return RD();
        case 1:
            return 1.0;
        case 2:
            return 0.0;
        default:
            return static_cast<double>(fail());
        }
    }
    /// A double of which only the bytes that differ from `standard` are stored.
    double DD(double standard);
    /// Text in the drawing's code page. One trailing NUL, which some writers count, is dropped.
    std::string TV();
    HandleRef H();
    int64_t MC();
    uint64_t UMC();
    uint32_t MS();
    void bytes(void* out, size_t count);

    /// Counted in bits from the start of the data, not from the first bit.
    size_t position() const { return position_; }
    size_t remaining() const { return end_ - position_; }
    /// Going outside of the reader's range is a failure.
    void seek(size_t bit) {
        if (bit > end_)
            fail();
        else
            position_ = bit;
    }
    void skip(size_t bits) {
        if (bits > remaining())
            fail();
        else
            position_ += bits;
    }
    bool failed() const { return failed_; }
    /// For callers that find a value impossible: the reader then says so as if the code itself were invalid.
    uint64_t fail() {
        failed_ = true;
        position_ = end_;
        return 0;
    }

    /// The next `count` bits, the first one highest. REQUIRES: 1 <= count <= 56.
    uint64_t take(unsigned count) {
        if (count > end_ - position_)
            return fail();
        const size_t byte = position_ >> 3;
        const unsigned used = position_ & 7;
        position_ += count;
        return (word(byte) << used) >> (64 - count);
    }

private:
    uint64_t word(size_t byte) const {
        if (byte + 8 <= byteEnd_) {
            uint64_t raw;
            std::memcpy(&raw, data_ + byte, 8);
            return __builtin_bswap64(raw);
        }
        uint64_t value = 0;
        for (unsigned shift = 56; byte < byteEnd_; ++byte, shift -= 8)
            value |= static_cast<uint64_t>(data_[byte]) << shift;
        return value;
    }

    const uint8_t* data_;
    size_t position_;
    size_t end_;
    size_t byteEnd_;
    bool failed_ = false;
};

inline double BitReader::DD(double standard) {
    uint64_t raw = std::bit_cast<uint64_t>(standard);
    switch (BB()) {
    case 0:
        return standard;
    case 1:
        raw = (raw & 0xFFFFFFFF00000000u) | RL();
        break;
    case 2: {
        const uint64_t middle = RS();
        raw = (raw & 0xFFFF000000000000u) | middle << 32 | RL();
        break;
    }
    default:
        return RD();
    }
    return failed_ ? standard : std::bit_cast<double>(raw);
}

inline HandleRef BitReader::H() {
    HandleRef ref;
    ref.code = static_cast<uint8_t>(take(4));
    const unsigned count = static_cast<unsigned>(take(4));
    if (count > 8) {
        fail();
        return {};
    }
    if (count > 4)
        ref.value = take((count - 4) * 8) << 32 | take(32);
    else if (count > 0)
        ref.value = take(count * 8);
    return ref;
}

inline uint64_t BitReader::UMC() {
    uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        const uint64_t byte = take(8);
        value |= (byte & 0x7F) << shift;
        if (!(byte & 0x80))
            return value;
    }
    return fail();
}

inline int64_t BitReader::MC() {
    int64_t value = 0;
    for (unsigned shift = 0; shift < 56; shift += 7) {
        const int64_t byte = static_cast<int64_t>(take(8));
        if (!(byte & 0x80)) {
            value |= (byte & 0x3F) << shift;
            return (byte & 0x40) ? -value : value;
        }
        value |= (byte & 0x7F) << shift;
    }
    return static_cast<int64_t>(fail());
}

inline uint32_t BitReader::MS() {
    const uint32_t low = RS();
    if (!(low & 0x8000))
        return low;
    const uint32_t high = RS();
    if (high & 0x8000)
        return static_cast<uint32_t>(fail());
    return (low & 0x7FFF) | high << 15;
}

} // namespace vndk::dwg
