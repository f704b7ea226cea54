// The points by which an entity can be stretched.
#pragma once

#include "db/entity.h"

#include <vector>

namespace vndk::objects {

/// Ends, vertices, centres, corners and insertion points of an entity, in world coordinates; none for kinds that
/// have no such points. The entity must be open for read.
std::vector<AcGePoint3d> definingPoints(const AcDbEntity& entity);

} // namespace vndk::objects
