// A cursor as the screen shows it.
#pragma once

#include "screen/screen.h"
#include "win32/types.h"

#include <optional>

namespace vndk::win32 {

/// The picture of a cursor or icon with its hot spot; nothing for a dead handle.
[[nodiscard]] std::optional<screen::CursorImage> cursorImage(HCURSOR cursor);

} // namespace vndk::win32
