#include "dwg/bit_writer.h"

#include <bit>
#include <cassert>

#include "dwg/bit_reader.h"

namespace vndk::dwg {

void BitWriter::RD(double value) { RLL(std::bit_cast<uint64_t>(value)); }

void BitWriter::BS(uint16_t value) {
    if (value == 0) {
        BB(2);
    } else if (value == 256) {
        BB(3);
    } else if (value < 256) {
        BB(1);
        RC(static_cast<uint8_t>(value));
    } else {
        BB(0);
        RS(value);
    }
}

void BitWriter::BL(uint32_t value) {
    if (value == 0) {
        BB(2);
    } else if (value < 256) {
        BB(1);
        RC(static_cast<uint8_t>(value));
    } else {
        BB(0);
        RL(value);
    }
}

void BitWriter::BD(double value) {
    // Bits are compared, so that a negative zero keeps its sign.
    const uint64_t raw = std::bit_cast<uint64_t>(value);
    if (raw == 0) {
        BB(2);
    } else if (raw == std::bit_cast<uint64_t>(1.0)) {
        BB(1);
    } else {
        BB(0);
        RD(value);
    }
}

void BitWriter::DD(double value, double standard) {
    const uint64_t raw = std::bit_cast<uint64_t>(value);
    const uint64_t different = raw ^ std::bit_cast<uint64_t>(standard);
    if (different == 0) {
        BB(0);
    } else if (different >> 32 == 0) {
        BB(1);
        RL(static_cast<uint32_t>(raw));
    } else if (different >> 48 == 0) {
        BB(2);
        RS(static_cast<uint16_t>(raw >> 32));
        RL(static_cast<uint32_t>(raw));
    } else {
        BB(3);
        RD(value);
    }
}

void BitWriter::TV(std::string_view text) {
    assert(text.size() <= 0xFFFF && "a text of the drawing is longer than its length field can tell");
    BS(static_cast<uint16_t>(text.size()));
    bytes(text.data(), text.size());
}

void BitWriter::H(unsigned code, uint64_t handle) {
    const unsigned count = (static_cast<unsigned>(std::bit_width(handle)) + 7) / 8;
    put(code << 4 | count, 8);
    for (unsigned shift = count * 8; shift > 0; shift -= 8)
        RC(static_cast<uint8_t>(handle >> (shift - 8)));
}

void BitWriter::UMC(uint64_t value) {
    for (; value > 0x7F; value >>= 7)
        RC(static_cast<uint8_t>(value | 0x80));
    RC(static_cast<uint8_t>(value));
}

void BitWriter::MC(int64_t value) {
    uint64_t rest = value < 0 ? 0 - static_cast<uint64_t>(value) : static_cast<uint64_t>(value);
    for (; rest > 0x3F; rest >>= 7)
        RC(static_cast<uint8_t>(rest | 0x80));
    RC(static_cast<uint8_t>(rest | (value < 0 ? 0x40 : 0)));
}

void BitWriter::MS(uint32_t value) {
    assert(value < 1u << 30 && "an object is larger than its size field can tell");
    if (value < 0x8000) {
        RS(static_cast<uint16_t>(value));
        return;
    }
    RS(static_cast<uint16_t>(value | 0x8000));
    RS(static_cast<uint16_t>(value >> 15));
}

void BitWriter::bytes(const void* data, size_t count) { copyBits(static_cast<const uint8_t*>(data), 0, count * 8); }

void BitWriter::copyBits(const uint8_t* source, size_t firstBit, size_t endBit) {
    assert(firstBit <= endBit && "a range of bits ends before it begins");
    size_t count = endBit - firstBit;
    if (firstBit % 8 == 0 && bits_ % 8 == 0) {
        bytes_.insert(bytes_.end(), source + firstBit / 8, source + firstBit / 8 + count / 8);
        bits_ += count / 8 * 8;
        firstBit += count / 8 * 8;
        count %= 8;
    }
    BitReader reader(source, firstBit, endBit);
    for (; count > 32; count -= 32)
        put(reader.take(32), 32);
    if (count > 0)
        put(reader.take(static_cast<unsigned>(count)), static_cast<unsigned>(count));
}

void BitWriter::patchRL(size_t bit, uint32_t value) {
    assert(bit + 32 <= bits_ && "an RL is patched that was not written");
    for (unsigned i = 0; i < 32; i += 8, bit += 8) {
        const unsigned byte = (value >> i) & 0xFF;
        const unsigned used = bit & 7;
        uint8_t* target = &bytes_[bit >> 3];
        target[0] = static_cast<uint8_t>((target[0] & ~(0xFFu >> used)) | byte >> used);
        if (used)
            target[1] = static_cast<uint8_t>((target[1] & (0xFFu >> used)) | byte << (8 - used));
    }
}

} // namespace vndk::dwg
