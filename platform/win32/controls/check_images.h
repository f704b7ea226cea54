// The pictures of check boxes in lists and trees.
#pragma once

#include "win32/types.h"

namespace vndk::win32 {

/// A list of small icons: clear, checked. With `blankFirst`, as trees count state images, an empty one comes before
/// them. The caller destroys it.
[[nodiscard]] HIMAGELIST createCheckImages(bool blankFirst);

} // namespace vndk::win32
