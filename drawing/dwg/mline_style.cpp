#include "dwg/mline_style.h"

#include "dwg/bit_reader.h"

#include <algorithm>

namespace vndk::dwg {

bool isMlineStyle(const AcDbOpaqueFields& fields) { return fields.typeName == "MLINESTYLE"; }

std::optional<MlineStyle> mlineStyle(const AcDbOpaqueFields& fields) {
    constexpr uint16_t kFirstWithoutPlace = 32766; // ByBlock, ByLayer
    constexpr size_t kSpecials = 2;                // ByBlock and ByLayer stand before the table's entries
    BitReader r(reinterpret_cast<const uint8_t*>(fields.bits.data()), 0, fields.bitCount);
    MlineStyle style;
    r.TV();
    r.TV();
    style.flags = r.BS();
    style.fillColor = static_cast<short>(r.BS());
    r.BD();
    r.BD(); // angles of the ends
    for (unsigned lines = r.RC(); lines > 0 && !r.failed(); --lines) {
        MlineStyle::Line line;
        line.offset = r.BD();
        line.color = static_cast<short>(r.BS());
        const uint16_t linetype = r.BS();
        if (linetype < kFirstWithoutPlace)
            line.linetypePlace = linetype + kSpecials;
        style.lines.push_back(line);
    }
    return r.failed() ? std::nullopt : std::optional(style);
}

size_t linetypePlaces(const AcDbOpaqueFields& fields) {
    const std::optional<MlineStyle> style = mlineStyle(fields);
    if (!style)
        return SIZE_MAX;
    size_t places = 0;
    for (const MlineStyle::Line& line : style->lines)
        if (line.linetypePlace != SIZE_MAX)
            places = std::max(places, line.linetypePlace + 1);
    return places;
}

} // namespace vndk::dwg
