/// The order in which the entities of a block are drawn.
#pragma once

#include "db/object_id.h"

#include <vector>

class AcDbBlockTableRecord;

namespace vndk::dwg {

/// The entities of the block, what lies above behind what it covers: in the order of the block, or of the handles by
/// which a table of the block's extension dictionary ("ACAD_SORTENTS") sorts them. One that the table doesn't have is
/// sorted by its own handle. A table that can't be read counts as none.
std::vector<AcDbObjectId> drawOrder(const AcDbBlockTableRecord& block);

} // namespace vndk::dwg
