#include "dwg/mline_style.h"

#include "dwg/bit_reader.h"

#include <algorithm>

namespace vndk::dwg {

bool isMlineStyle(const AcDbOpaqueFields& fields) { return fields.typeName == "MLINESTYLE"; }

size_t linetypePlaces(const AcDbOpaqueFields& style) {
    constexpr uint16_t kFirstWithoutPlace = 32766; // ByBlock, ByLayer
    constexpr size_t kSpecials = 2;                // ByBlock and ByLayer stand before the table's entries
    BitReader r(reinterpret_cast<const uint8_t*>(style.bits.data()), 0, style.bitCount);
    r.TV();
    r.TV();
    r.BS(); // flags
    r.BS(); // fill colour
    r.BD();
    r.BD(); // angles of the ends
    size_t places = 0;
    for (unsigned lines = r.RC(); lines > 0 && !r.failed(); --lines) {
        r.BD(); // offset
        r.BS(); // colour
        const uint16_t linetype = r.BS();
        if (linetype < kFirstWithoutPlace)
            places = std::max(places, linetype + kSpecials + 1);
    }
    return r.failed() ? SIZE_MAX : places;
}

} // namespace vndk::dwg
