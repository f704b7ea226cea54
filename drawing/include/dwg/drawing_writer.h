#pragma once
/// Makes a drawing file from a database.
///
/// Objects that weren't changed since they were read keep their bytes and their places; of those whose neighbours
/// changed only the links are replaced. Changed objects are encoded anew in their old places, new ones follow, erased
/// ones and what they own are left out.

#include <cstdint>
#include <vector>

#include "dwg/error.h"

class AcDbDatabase;

namespace vndk::dwg {

/// The bytes of a whole file in the format of release 15. CannotWrite: the drawing is too large.
Result<std::vector<uint8_t>> writeDrawing(AcDbDatabase& database);

} // namespace vndk::dwg
