#pragma once
/// The handles among the values of an extension record, which is kept as it stands in a file otherwise.

#include <cstdint>
#include <functional>

#include "db/opaque_fields.h"

namespace vndk::dwg {

bool isXrecord(const AcDbOpaqueFields& fields);

/// Stores what `turn` gives for each handle that names an object of the drawing (handles of group codes 320 to 329 are
/// arbitrary: nobody turns them). False: the values aren't of the format's form; nothing is changed then.
bool turnXrecordHandles(AcDbOpaqueFields& fields, const std::function<uint64_t(uint64_t)>& turn);

} // namespace vndk::dwg
