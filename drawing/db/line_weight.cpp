#include "db/line_weight.h"

#include "dwg/header_variables.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr short kWidths[] = {0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                             53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr unsigned kByLayerCode = 29;
constexpr unsigned kByBlockCode = 30;
constexpr unsigned kDefaultCode = 31;

} // namespace

AcDb::LineWeight acdbLineWeightOfCode(unsigned code) {
    if (code < std::size(kWidths))
        return static_cast<AcDb::LineWeight>(kWidths[code]);
    if (code == kByLayerCode)
        return AcDb::kLnWtByLayer;
    return code == kByBlockCode ? AcDb::kLnWtByBlock : AcDb::kLnWtByLwDefault;
}

unsigned acdbLineWeightCode(AcDb::LineWeight weight) {
    switch (weight) {
    case AcDb::kLnWtByLayer:
        return kByLayerCode;
    case AcDb::kLnWtByBlock:
        return kByBlockCode;
    case AcDb::kLnWtByLwDefault:
        return kDefaultCode;
    default:
        break;
    }
    const auto* const above = std::upper_bound(std::begin(kWidths), std::end(kWidths), static_cast<short>(weight));
    return above == std::begin(kWidths) ? 0 : static_cast<unsigned>(above - std::begin(kWidths) - 1);
}

AcDb::LineWeight acdbCurrentLineWeight(const vndk::dwg::HeaderVariables& header) {
    return acdbLineWeightOfCode(header.FLAGS & 0x1F);
}
