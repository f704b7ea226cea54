#include "gs/styles.h"

#include "db/database.h"
#include "db/open.h"
#include "gs/palette.h"

#include <algorithm>
#include <cmath>

namespace vndk::gs {

namespace {

constexpr uint32_t kWeightsHidden = 0x200; // in the header's FLAGS
constexpr double kWeightOfPixel = 25;      // hundredths of a millimetre; the usual weight is one pixel wide
constexpr int kMostPixels = 9;

LinePattern readPattern(AcDbObjectId linetype) {
    LinePattern pattern;
    const AcDbObjectPointer<AcDbLinetypeTableRecord> record(linetype);
    if (!record)
        return pattern;
    for (const AcDbLinetypeTableRecord::Dash& dash : record->data().dashes) {
        if (!std::isfinite(dash.length))
            return {};
        pattern.dashes.push_back(dash.length);
        pattern.length += std::fabs(dash.length);
    }
    // A pattern without gaps is an unbroken line.
    const bool broken = std::any_of(pattern.dashes.begin(), pattern.dashes.end(), [](double d) { return d < 0; });
    return broken ? pattern : LinePattern();
}

} // namespace

Styles::Styles(AcDbDatabase& database, std::uint32_t background)
    : database_(database), background_(background), showsWeights_(!(database.header().FLAGS & kWeightsHidden)),
      scale_(database.header().LTSCALE) {
    const AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId());
    if (table) [[maybe_unused]]
        const Acad::ErrorStatus status = table->getAt("0", layerZero_); // null if the drawing has none
}

Surroundings Styles::outermost() const {
    Surroundings around;
    around.color = colorOfIndex(7, background_);
    around.layer = layerZero_;
    around.linetype = database_.continuousLinetypeId();
    return around;
}

const Styles::Layer& Styles::layerOf(AcDbObjectId id) {
    const auto [place, isNew] = layers_.try_emplace(id);
    if (isNew)
        if (const AcDbObjectPointer<AcDbLayerTableRecord> record(id); record) {
            Layer& layer = place->second;
            layer.off = record->isOff();
            layer.frozen =
                record->isFrozen() || std::find(frozenHere_.begin(), frozenHere_.end(), id) != frozenHere_.end();
            layer.zero = record->name() == "0";
            layer.color = record->color();
            layer.linetype = record->linetypeObjectId();
            layer.weight = static_cast<AcDb::LineWeight>(record->lineWeight());
        }
    return place->second;
}

/// What stands in an external reference has the linetypes of its own drawing.
bool Styles::isByLayer(AcDbObjectId linetype) const {
    return linetype == database_.byLayerLinetypeId() ||
           (!linetype.isNull() && linetype == linetype.database()->byLayerLinetypeId());
}

bool Styles::isByBlock(AcDbObjectId linetype) const {
    return linetype == database_.byBlockLinetypeId() ||
           (!linetype.isNull() && linetype == linetype.database()->byBlockLinetypeId());
}

const LinePattern* Styles::patternOf(AcDbObjectId linetype) {
    const auto [place, isNew] = patterns_.try_emplace(linetype);
    if (isNew)
        place->second = readPattern(linetype);
    return place->second.dashes.empty() ? nullptr : &place->second;
}

int Styles::widthOf(AcDb::LineWeight weight) const {
    if (!showsWeights_ || weight <= 0)
        return 1;
    return std::clamp(static_cast<int>(std::lround(static_cast<short>(weight) / kWeightOfPixel)), 1, kMostPixels);
}

Style Styles::resolve(const Look& look, const Surroundings& around) {
    Style style;
    Surroundings& inner = style.inner;
    inner.nested = true;
    const Layer& own = layerOf(look.layer);
    const bool takesOuter = around.nested && (own.zero || look.layer == layerZero_);
    inner.layer = takesOuter ? around.layer : look.layer;
    const Layer& layer = takesOuter ? layerOf(around.layer) : own;
    style.frozen = layer.frozen;
    style.visible = !layer.off && !layer.frozen;

    switch (look.color.colorMethod()) {
    case AcCmEntityColor::kByBlock:
        inner.color = around.color;
        break;
    case AcCmEntityColor::kByColor:
        inner.color = 0xFF000000 | look.color.rgb();
        break;
    case AcCmEntityColor::kByACI:
        inner.color = colorOfIndex(look.color.colorIndex(), background_);
        break;
    default:
        inner.color = colorOfIndex(layer.color, background_);
    }
    if (isByLayer(look.linetype))
        inner.linetype = layer.linetype;
    else
        inner.linetype = isByBlock(look.linetype) ? around.linetype : look.linetype;
    if (look.weight == AcDb::kLnWtByLayer)
        inner.weight = layer.weight;
    else
        inner.weight = look.weight == AcDb::kLnWtByBlock ? around.weight : look.weight;

    style.color = inner.color;
    style.pattern = patternOf(inner.linetype);
    style.patternScale = scale_ * look.linetypeScale;
    style.width = widthOf(inner.weight);
    return style;
}

} // namespace vndk::gs
