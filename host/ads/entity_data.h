// Entities as lists of DXF group codes, and the walk over them by name.
#pragma once

#include "db/object_id.h"

class AcDbDatabase;
struct resbuf;

namespace vndk::host {

/// The data of an entity (or of another object), by DXF group codes: -1 name, 0 type, 5 handle, 330 owner, 100 class
/// marks, 8 layer, and what its class has. Owned by the caller; null for an erased or unknown object. Values that are
/// their standard (colour ByLayer, linetype ByLayer, scale 1, normal z) are left out as in DXF.
resbuf* entityData(AcDbObjectId id);

/// The entity behind `id` in its space, in the sequence of its owner (attributes and vertices follow their owner), or
/// the first one of the current space for null. Erased ones are passed over. Null at the end.
AcDbObjectId nextEntity(const AcDbDatabase& database, AcDbObjectId id);

/// Erases the entity or brings it back. False when that is refused.
bool toggleErased(AcDbObjectId id);

} // namespace vndk::host
