#pragma once
/// Writes the bit codes of a drawing file: the mirror of BitReader, each value in its shortest form.
/// One writer is meant to be used for many records, with clear() between them, so that its memory is kept.

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace vndk::dwg {

class BitWriter {
public:
    void B(bool value) { put(value ? 1 : 0, 1); }
    void BB(unsigned value) { put(value & 3, 2); }
    void BITS4(unsigned value) { put(value & 15, 4); }
    void RC(uint8_t value) { put(value, 8); }
    void RS(uint16_t value) { put(__builtin_bswap16(value), 16); }
    void RL(uint32_t value) { put(__builtin_bswap32(value), 32); }
    void RLL(uint64_t value) {
        RL(static_cast<uint32_t>(value));
        RL(static_cast<uint32_t>(value >> 32));
    }
    void RD(double value);
    void BS(uint16_t value);
    void BL(uint32_t value);
    void BD(double value);
    /// Stores only the bytes in which `value` differs from `standard`.
    void DD(double value, double standard);
    /// Text in the drawing's code page, without a NUL. REQUIRES: at most 65535 bytes.
    void TV(std::string_view text);
    /// A reference with an absolute code (0, 2, 3, 4, 5); handle 0 is null.
    void H(unsigned code, uint64_t handle);
    void MC(int64_t value);
    void UMC(uint64_t value);
    /// REQUIRES: value < 2^30.
    void MS(uint32_t value);
    void bytes(const void* data, size_t count);

    /// The number of bits written so far.
    size_t position() const { return bits_; }
    /// Appends the bits [firstBit, endBit) of `source`.
    void copyBits(const uint8_t* source, size_t firstBit, size_t endBit);
    /// Replaces the 32 bits of an RL that was written at `bit`.
    void patchRL(size_t bit, uint32_t value);
    /// Fills the last byte with zero bits.
    void alignByte() { bits_ = bytes_.size() * 8; }
    const std::vector<uint8_t>& data() const { return bytes_; }
    void clear() {
        bytes_.clear();
        bits_ = 0;
    }
    void reserve(size_t byteCount) { bytes_.reserve(byteCount); }

    /// Appends the low `count` bits of `value`, the highest first. REQUIRES: count <= 32 and no higher bit set.
    void put(uint64_t value, unsigned count) {
        if (count == 0)
            return;
        size_t byte = bits_ >> 3;
        const unsigned used = bits_ & 7;
        bits_ += count;
        bytes_.resize((bits_ + 7) >> 3);
        value <<= 64 - count - used;
        for (; byte < bytes_.size(); ++byte, value <<= 8)
            bytes_[byte] |= static_cast<uint8_t>(value >> 56);
    }

private:
    std::vector<uint8_t> bytes_;
    size_t bits_ = 0;
};

} // namespace vndk::dwg
