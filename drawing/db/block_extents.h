// The box around the contents of a block. Private to the drawing layer.
#pragma once

#include "db/object_id.h"
#include "ge/extents.h"

#include <unordered_map>

namespace vndk::db {

/// In the block's coordinates, the base point at the origin. Empty for an empty block, a null id, and where blocks nest
/// without end.
AcDbExtents blockExtents(AcDbObjectId block);

/// While one lives each block is measured once. REQUIRES: no block changes meanwhile.
class BlockExtentsMemory {
public:
    BlockExtentsMemory();
    ~BlockExtentsMemory();
    BlockExtentsMemory(const BlockExtentsMemory&) = delete;
    BlockExtentsMemory& operator=(const BlockExtentsMemory&) = delete;

private:
    friend AcDbExtents blockExtents(AcDbObjectId block);
    std::unordered_map<AcDbObjectId, AcDbExtents> known_;
    BlockExtentsMemory* former_;
};

} // namespace vndk::db
