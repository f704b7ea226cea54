// Lineweights as drawing files code them: a table of widths in hundredths of a millimetre, and special codes.
#pragma once

#include "db/entity.h"

namespace vndk::dwg {
struct HeaderVariables;
}

/// The weight of a code 0 to 31; unknown codes give the default weight.
AcDb::LineWeight acdbLineWeightOfCode(unsigned code);
/// The code of a weight; widths that the table lacks give the next smaller one.
unsigned acdbLineWeightCode(AcDb::LineWeight weight);
/// The weight that new entities get.
AcDb::LineWeight acdbCurrentLineWeight(const vndk::dwg::HeaderVariables& header);
