#include "gdi/raster_ops.h"

#include "win32/gdi.h"

#include <algorithm>
#include <cassert>

namespace vndk::win32 {

namespace {

/// The table of a mix mode: bit (2 P + D).
unsigned mixTable(int rop2) {
    assert(rop2 >= R2_BLACK && rop2 <= R2_WHITE && "a mix mode is checked where it is set");
    return static_cast<unsigned>(rop2 - R2_BLACK);
}

std::uint32_t spread(unsigned table, int bit) { return (table >> bit & 1) != 0 ? 0xFFFFFFFF : 0; }

/// The part of a ternary operation that stays when pattern and source are given: D' = (D & keep) ^ flip.
class Ternary {
public:
    explicit Ternary(TernaryTable table) {
        for (int index = 0; index < 4; ++index) {
            flip_[index] = spread(table, 2 * index);
            keep_[index] = flip_[index] ^ spread(table, 2 * index + 1);
        }
    }

    [[nodiscard]] std::uint32_t operator()(std::uint32_t pattern, std::uint32_t source, std::uint32_t target) const {
        const std::uint32_t keep =
            choose(pattern, choose(source, keep_[3], keep_[2]), choose(source, keep_[1], keep_[0]));
        const std::uint32_t flip =
            choose(pattern, choose(source, flip_[3], flip_[2]), choose(source, flip_[1], flip_[0]));
        return (target & keep) ^ flip;
    }

private:
    static std::uint32_t choose(std::uint32_t by, std::uint32_t ones, std::uint32_t zeros) {
        return zeros ^ (by & (ones ^ zeros));
    }
    std::uint32_t keep_[4]; // by 2 P + S
    std::uint32_t flip_[4];
};

/// One loop for each choice of operands, so that each can be made fast by the compiler.
template <typename Source, typename Pattern>
void combineWith(const TernaryRow& row, const Ternary& operation, Source source, Pattern pattern) {
    for (int index = 0; index < row.count; ++index)
        row.destination[index] = operation(pattern(index), source(index), row.destination[index]);
}

template <typename Operation>
void withSource(const TernaryRow& row, Operation operation) {
    std::transform(row.destination, row.destination + row.count, row.source, row.destination, operation);
}

} // namespace

PixelMix mixOf(int rop2, std::uint32_t pixel) {
    const unsigned table = mixTable(rop2);
    const std::uint32_t onClear = (~pixel & spread(table, 0)) | (pixel & spread(table, 2));
    const std::uint32_t onSet = (~pixel & spread(table, 1)) | (pixel & spread(table, 3));
    return {onClear ^ onSet, onClear};
}

void mixPixels(const Surface& surface, int x, int y, int count, PixelMix mix) {
    if (mix.copies()) {
        fillPixels(surface, x, y, count, mix.flip);
        return;
    }
    if (surface.format.bits == 32) {
        const std::uint32_t keep = mix.keep & ~surface.format.always;
        const std::uint32_t flip = mix.flip | surface.format.always;
        std::uint32_t* row = surface.row32(y) + x;
        std::transform(row, row + count, row, [=](std::uint32_t old) { return (old & keep) ^ flip; });
        return;
    }
    constexpr int chunk = 256;
    std::uint32_t pixels[chunk];
    for (int done = 0; done < count; done += chunk) {
        const int length = std::min(count - done, chunk);
        loadPixels(surface, x + done, y, length, pixels);
        std::transform(pixels, pixels + length, pixels, [=](std::uint32_t old) { return (old & mix.keep) ^ mix.flip; });
        storePixels(surface, x + done, y, length, pixels);
    }
}

TernaryTable ternaryFromMix(int rop2) {
    const unsigned table = mixTable(rop2);
    return static_cast<TernaryTable>((table & 3) * 0x05 | (table >> 2) * 0x50);
}

void combineRow(TernaryTable table, const TernaryRow& row) {
    using Pixel = std::uint32_t;
    switch (table) {
    case ternaryTable(SRCCOPY):
        std::copy_n(row.source, row.count, row.destination);
        return;
    case ternaryTable(PATCOPY):
        std::copy_n(row.pattern, row.count, row.destination);
        return;
    case ternaryTable(BLACKNESS):
    case ternaryTable(WHITENESS):
        std::fill_n(row.destination, row.count, table == 0 ? 0 : 0xFFFFFFFF);
        return;
    case ternaryTable(SRCAND):
        withSource(row, [](Pixel target, Pixel source) { return target & source; });
        return;
    case ternaryTable(SRCPAINT):
        withSource(row, [](Pixel target, Pixel source) { return target | source; });
        return;
    case ternaryTable(SRCINVERT):
        withSource(row, [](Pixel target, Pixel source) { return target ^ source; });
        return;
    case ternaryTable(DSTINVERT):
        std::transform(row.destination, row.destination + row.count, row.destination,
                       [](Pixel target) { return ~target; });
        return;
    default:
        break;
    }
    const Ternary operation(table);
    const auto none = [](int /*index*/) { return Pixel{0}; };
    const auto source = [&row](int index) { return row.source[index]; };
    const auto pattern = [&row](int index) { return row.pattern[index]; };
    if (row.source != nullptr && row.pattern != nullptr)
        combineWith(row, operation, source, pattern);
    else if (row.source != nullptr)
        combineWith(row, operation, source, none);
    else if (row.pattern != nullptr)
        combineWith(row, operation, none, pattern);
    else
        combineWith(row, operation, none, none);
}

} // namespace vndk::win32
