// What the window manager needs of the drawing room: device contexts onto the desktop's pixels, and regions behind
// handles.
#pragma once

#include "gdi/region.h"
#include "win32/types.h"

#include <cstdint>

namespace vndk::win32 {

/// 32-bit pixels 0xFFRRGGBB, top row first. Not owned.
struct PixelTarget {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    int stride = 0; // in pixels
};

/// A device context with all attributes at their defaults. `origin` is where its (0, 0) lies in the target; `visible`
/// is what may be painted, in the target's coordinates, and stays hidden from GetClipRgn.
HDC createWindowDC(const PixelTarget& target, POINT origin, Region visible, HWND window);
/// The same context onto another place, its attributes kept (class and own contexts; a window that moves).
void moveWindowDC(HDC dc, const PixelTarget& target, POINT origin, Region visible);
/// FALSE when it isn't a window's context. Objects selected into it are let go.
bool deleteWindowDC(HDC dc);
/// Null for a memory context.
HWND windowOfDC(HDC dc);
/// Sets pen, brush, font, colours, clip and saved levels back to what createWindowDC gives.
void resetWindowDC(HDC dc);

/// There are contexts onto the whole screen (CreateDCA), which paint without the window manager's knowledge.
[[nodiscard]] bool hasScreenContexts();

/// The desktop's pixels and size, for contexts onto the whole screen (CreateDCA) and GetDeviceCaps; to be called again
/// whenever they change. Contexts made before go on with the new ones. Without it such contexts paint nothing.
void setScreenTarget(const PixelTarget& target);
PixelTarget screenTarget();

/// A region object that the caller of the published interface owns (DeleteObject).
HRGN newRegionHandle(Region region);
/// The region behind a handle; null when there is none. Valid until the object is deleted.
Region* regionOf(HRGN handle);

} // namespace vndk::win32
