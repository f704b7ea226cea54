// The box around the contents of a block. Private to the drawing layer.
#pragma once

#include "db/object_id.h"
#include "ge/extents.h"

namespace vndk::db {

/// In the block's coordinates, the base point at the origin. Empty for an empty block, a null id, and where blocks nest
/// without end.
AcDbExtents blockExtents(AcDbObjectId block);

} // namespace vndk::db
