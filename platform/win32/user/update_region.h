// What of a window's pixels is out of date.
#pragma once

#include "user/painting.h"

namespace vndk::win32 {

/// The rectangle with its corners brought to where arithmetic with screen coordinates is safe.
[[nodiscard]] RECT saturated(const RECT& rect);
/// The same for each rectangle of a region, shifted.
[[nodiscard]] Region shifted(const Region& region, int dx, int dy);

/// Marks a part of the screen in a window and, as RDW_ flags and styles say, in its children; sends nothing. Null: all
/// of the window.
void mark(Window& window, const Region* screenRegion, UINT flags);
/// WM_PAINT is due: something that shows is invalid, or a paint was asked for.
[[nodiscard]] bool needsPaint(const Window& window);
/// What is being painted in a window needn't be painted any more in parents that would paint over it.
void validateParents(const Window& window, const Region& painted);
/// The update region of client area and frame in screen coordinates.
[[nodiscard]] Region invalidOnScreen(const Window& window);

} // namespace vndk::win32
