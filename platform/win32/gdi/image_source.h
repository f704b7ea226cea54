// Where pictures are loaded from: the bytes of resources and files, and bitmaps out of them.
#pragma once

#include "win32/icons.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace vndk::win32 {

/// Nothing, with the error set, when the resource is missing.
[[nodiscard]] std::optional<std::span<const std::uint8_t>> resourceBytes(HINSTANCE instance, LPCSTR name, LPCSTR type);
/// The file of a path as the platform writes it; nothing, with the error set, when it can't be read.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> fileBytes(LPCSTR path);

/// LoadImage for IMAGE_BITMAP.
HBITMAP loadBitmap(HINSTANCE instance, LPCSTR name, int width, int height, UINT flags);

} // namespace vndk::win32
