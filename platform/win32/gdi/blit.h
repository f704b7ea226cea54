// Pictures moved, stretched, mirrored and combined: the engine under BitBlt, StretchBlt and their kin.
#pragma once

#include "gdi/device_context.h"
#include "gdi/pixel_converter.h"
#include "gdi/raster_ops.h"

namespace vndk::win32 {

/// One axis of a blit. Sizes of different sign mirror; a negative size counts from `target` (or `source`) leftward or
/// upward, that place included.
struct BlitAxis {
    int target = 0;
    int targetSize = 0;
    int source = 0;
    int sourceSize = 0;

    /// The same number of pixels in the same direction.
    [[nodiscard]] bool plain() const { return targetSize == sourceSize; }
    [[nodiscard]] int firstTarget() const { return targetSize >= 0 ? target : target + targetSize + 1; }
    [[nodiscard]] int endTarget() const { return targetSize >= 0 ? target + targetSize : target + 1; }
};

/// Source pixels that a target pixel is made of: from `first` to `end` (outside).
struct BlitSamples {
    int first = 0;
    int end = 0;
};

/// `stretchMode` as in SetStretchBltMode. REQUIRES: both sizes aren't 0; `place` lies within the target's part.
[[nodiscard]] BlitSamples samplesOf(const BlitAxis& axis, int place, int stretchMode);

struct BlitMask {
    Surface surface; // one bit
    int x = 0;       // the mask's pixel for the target's upper left one
    int y = 0;
    TernaryTable background = 0; // the operation where the mask is 0
};

struct BlitJob {
    BlitAxis columns; // points of the surfaces
    BlitAxis rows;
    TernaryTable table = 0;
    const Surface* source = nullptr; // may be null when the table doesn't use it
    MonochromeRule rule;
    int stretchMode = COLORONCOLOR;
    const BlitMask* mask = nullptr;
};

/// Paints through the context's clip, with its brush as the pattern. What lies outside of the source isn't painted.
/// Source and target may be the same pixels. False when there isn't enough memory.
bool blit(const DeviceContext& context, const BlitJob& job);

} // namespace vndk::win32
