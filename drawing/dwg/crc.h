#pragma once
/// The 16-bit checksum of drawing files: reflected polynomial 0xA001, no final xor.

#include <cstddef>
#include <cstdint>

namespace vndk::dwg {

/// The seed of every checksum in a file.
constexpr uint16_t kCrcSeed = 0xC0C1;

/// The checksum of `size` bytes, continued from `seed`.
uint16_t crc16(uint16_t seed, const uint8_t* data, size_t size);

} // namespace vndk::dwg
