// What stands behind the handles of icons and cursors.
#pragma once

#include "gdi/device_context.h"
#include "win32/icons.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vndk::win32 {

/// A picture with its mask, top row first. Where the mask is 0, the picture's colour is shown; where it is 1, the
/// background is combined with it by XOR.
struct IconImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> pixels; // 0xAARRGGBB
    std::vector<std::uint8_t> mask;    // 0 or 1 each
    bool alpha = false;                // the pixels' alpha counts in place of the mask
    bool colored = true;               // false: black and white only, so there is no bitmap of colours
    bool cursor = false;
    POINT hot{0, 0};
    bool shared = false; // DestroyIcon leaves it alone

    /// All pixels transparent.
    static IconImage blank(int width, int height);
    [[nodiscard]] std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x);
    }
    /// Decides by the alpha values found whether they count: not when all are alike, as in pictures that programs drew.
    void findAlpha();
    /// Each pixel from the nearest one; the hot spot moves along.
    [[nodiscard]] IconImage stretched(int newWidth, int newHeight) const;
};

/// Sizes from 1 to this can be made.
constexpr int largestIcon = 4096;

/// Null with ERROR_NOT_ENOUGH_MEMORY when there are too many.
HICON newIcon(IconImage image);
/// Null with ERROR_INVALID_CURSOR_HANDLE for a dead handle. Valid until an icon is made or destroyed.
[[nodiscard]] IconImage* requireIcon(HICON icon);
/// How many icons live, shared ones included.
[[nodiscard]] std::size_t iconCount();

/// Paints over the rectangle (surface points), stretched. `flags`: DI_IMAGE, DI_MASK or both.
void paintIcon(DeviceContext& dc, const IconImage& icon, const RECT& place, UINT flags);

/// One picture as it lies in a resource or an icon file. Nothing, with ERROR_INVALID_DATA, when it is damaged.
[[nodiscard]] std::optional<IconImage> decodeIcon(std::span<const std::uint8_t> bytes, bool cursor);

/// A picture out of a bitmap; nothing, with the error set, when it can't be.
[[nodiscard]] std::optional<IconImage> iconFromBitmaps(const ICONINFO& info);

/// A picture that belongs to the system, by its number; nothing when there is none.
[[nodiscard]] std::optional<IconImage> stockPicture(int number, bool cursor);

/// The shared icons and cursors of a library that goes away.
void forgetSharedIcons(HINSTANCE instance);

} // namespace vndk::win32
