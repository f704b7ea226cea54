// Contexts of windows, as the painting rooms hand them out.
#pragma once

#include "user/painting.h"

namespace vndk::win32 {

/// A context for a window: its own, its class's, or a fresh one. `flags` as resolved; `clip` counts from the window's
/// corner. Null when there is no room for another.
HDC handOut(Window& window, DWORD flags, std::optional<Region> clip, bool excludeClip);
/// False when it isn't one that was handed out.
bool takeBack(HDC dc);
/// Null when it isn't a window's; valid until the next one is handed out.
[[nodiscard]] HandedContext* handedContext(HDC dc);

} // namespace vndk::win32
