#pragma once
/// What a multiline style, which is kept as it stands in a file otherwise, holds of linetypes.

#include <cstddef>

#include "db/opaque_fields.h"

namespace vndk::dwg {

bool isMlineStyle(const AcDbOpaqueFields& fields);

/// A multiline style names linetypes by their places in the table. How many of the table's records, from the first on,
/// have to keep their places for it; 0 when its lines are ByLayer and ByBlock. All of them when it can't be read.
size_t linetypePlaces(const AcDbOpaqueFields& style);

} // namespace vndk::dwg
