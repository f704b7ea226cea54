// How pixels are combined: the 16 mix modes of pens and brushes, and the 256 ternary raster operations.
#pragma once

#include "gdi/surface.h"

#include <cstdint>

namespace vndk::win32 {

/// A mix mode with a given pixel of the pen: new = (old & keep) ^ flip.
struct PixelMix {
    std::uint32_t keep = 0;
    std::uint32_t flip = 0;

    [[nodiscard]] bool copies() const { return keep == 0; }
    [[nodiscard]] bool nothing() const { return keep == 0xFFFFFFFF && flip == 0; }
};

/// REQUIRES: `rop2` from R2_BLACK to R2_WHITE.
[[nodiscard]] PixelMix mixOf(int rop2, std::uint32_t pixel);
/// Mixes into `count` pixels of a row. REQUIRES: all inside of the surface.
void mixPixels(const Surface& surface, int x, int y, int count, PixelMix mix);

/// The truth table of a ternary operation (bits 16 to 23 of the published codes): bit (4 P + 2 S + D).
using TernaryTable = std::uint8_t;

[[nodiscard]] constexpr TernaryTable ternaryTable(DWORD rop) { return static_cast<TernaryTable>(rop >> 16); }
/// The same result as a mix mode with the pattern as the pen.
[[nodiscard]] TernaryTable ternaryFromMix(int rop2);
[[nodiscard]] constexpr bool usesPattern(TernaryTable table) { return (table >> 4) != (table & 0x0F); }
[[nodiscard]] constexpr bool usesSource(TernaryTable table) { return ((table >> 2) & 0x33) != (table & 0x33); }
[[nodiscard]] constexpr bool usesDestination(TernaryTable table) { return ((table >> 1) & 0x55) != (table & 0x55); }

/// Rows of pixels that take part; those that the operation doesn't use may be null. `destination` is read and written.
struct TernaryRow {
    std::uint32_t* destination = nullptr;
    const std::uint32_t* source = nullptr;
    const std::uint32_t* pattern = nullptr;
    int count = 0;
};
void combineRow(TernaryTable table, const TernaryRow& row);

} // namespace vndk::win32
