// What buttons and static controls paint alike: a text, enabled or embossed, and a picture.
#pragma once

#include "win32/types.h"

#include <string>

namespace vndk::win32 {

/// Text in a rectangle with DrawText's format bits. A disabled one is embossed: light one pixel lower and further
/// right, then in the shadow's colour.
void paintLabel(HDC dc, const std::string& text, RECT rect, UINT format, bool enabled);
/// Size of the text when it is painted into `width` pixels with these format bits.
[[nodiscard]] SIZE measureLabel(HDC dc, const std::string& text, int width, UINT format);

/// A picture that a program has set: a handle that stays the program's.
struct ControlImage {
    UINT kind = 0; // IMAGE_BITMAP, IMAGE_ICON, IMAGE_CURSOR
    HANDLE handle = nullptr;
};
/// 0 x 0 when the handle is null or dead.
[[nodiscard]] SIZE imageSize(const ControlImage& image);
void paintImage(HDC dc, const ControlImage& image, POINT at, bool enabled);

} // namespace vndk::win32
