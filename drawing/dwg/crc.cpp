#include "dwg/crc.h"

#include <array>

namespace vndk::dwg {

namespace {

using CrcTables = std::array<std::array<uint16_t, 256>, 8>;

constexpr CrcTables makeTables() {
    CrcTables tables{};
    for (unsigned i = 0; i < 256; ++i) {
        unsigned crc = i;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) ? (crc >> 1) ^ 0xA001u : crc >> 1;
        tables[0][i] = static_cast<uint16_t>(crc);
    }
    for (unsigned k = 1; k < tables.size(); ++k)
        for (unsigned i = 0; i < 256; ++i) {
            const unsigned before = tables[k - 1][i];
            tables[k][i] = static_cast<uint16_t>((before >> 8) ^ tables[0][before & 0xFF]);
        }
    return tables;
}

// Table k holds the effect of a byte that k more bytes follow, so that eight bytes are taken in one step.
constexpr CrcTables kTables = makeTables();

} // namespace

uint16_t crc16(uint16_t seed, const uint8_t* data, size_t size) {
    unsigned crc = seed;
    for (; size >= 8; size -= 8, data += 8) {
        const unsigned low = crc ^ (data[0] | data[1] << 8);
        crc = kTables[7][low & 0xFF] ^ kTables[6][low >> 8] ^ kTables[5][data[2]] ^ kTables[4][data[3]] ^
              kTables[3][data[4]] ^ kTables[2][data[5]] ^ kTables[1][data[6]] ^ kTables[0][data[7]];
    }
    for (; size > 0; --size)
        crc = (crc >> 8) ^ kTables[0][(crc ^ *data++) & 0xFF];
    return static_cast<uint16_t>(crc);
}

} // namespace vndk::dwg
