#include "gs/selection.h"

#include <algorithm>

namespace vndk::gs {

const std::vector<uint32_t>& Selection::candidates(const PixelRect& place) {
    Raster probe(place);
    const double margin = ListPainter(probe, lists_, styles_, painting_).margin();
    return lists_.partsIn(
        record_, true, BoxProjector(toDevice_, painting_.lens ? &*painting_.lens : nullptr),
        {place.left - margin, place.top - margin, place.right + 1 + margin, place.bottom + 1 + margin});
}

bool Selection::isIn(const PixelRect& place, bool touching, uint32_t part) {
    Raster probe(place);
    ListPainter painter(probe, lists_, styles_, painting_);
    painter.drawPart(painter.level(lists_.of(record_, true), toDevice_), part);
    return probe.touchedInside() && (touching || !probe.touchedOutside());
}

AcDbObjectId Selection::topAt(const PixelRect& place) {
    const std::vector<uint32_t>& parts = candidates(place);
    const auto found = std::find_if(parts.rbegin(), parts.rend(), [&](uint32_t p) { return isIn(place, true, p); });
    return found == parts.rend() ? AcDbObjectId() : lists_.of(record_, true).parts[*found].entity;
}

void Selection::find(const PixelRect& place, bool touching, std::vector<AcDbObjectId>& found) {
    for (const uint32_t part : candidates(place))
        if (isIn(place, touching, part))
            found.push_back(lists_.of(record_, true).parts[part].entity);
}

} // namespace vndk::gs
