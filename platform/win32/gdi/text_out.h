// Painting of text, for the calls that put it in place.
#pragma once

#include "gdi/device_context.h"
#include "gdi/font.h"

#include <string_view>

namespace vndk::win32 {

/// Characters of a line and, where `advances` isn't null, the distance from each to the next.
struct TextRun {
    std::string_view text;
    const INT* advances = nullptr;

    /// Along the line, in pixels.
    [[nodiscard]] int width(const Font& font) const;
};

/// Paints a run in the context's font and text colour, in OPAQUE mode on its background colour. `at` (surface) is the
/// upper left corner of the text's box; painting is kept within `clip` (surface) if that isn't null. Turned fonts turn
/// about that corner.
void paintRun(DeviceContext& dc, POINT at, const TextRun& run, const RECT* clip = nullptr);

/// The same with the pen at `pen`, from which the box's corner lies at (left, top) in the upright text.
void paintRunFromPen(DeviceContext& dc, POINT pen, int left, int top, const TextRun& run, const RECT* clip);

} // namespace vndk::win32
