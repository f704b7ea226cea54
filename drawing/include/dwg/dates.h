#pragma once
/// Dates as drawing files keep them.

#include "dwg/header_variables.h"

namespace vndk::dwg {

/// The present moment in universal time.
JulianTime currentTime();

} // namespace vndk::dwg
