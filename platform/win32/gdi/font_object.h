// What stands behind a font's handle.
#pragma once

#include "win32/fonts.h"

#include <memory>

namespace vndk::win32 {

/// The face at its size, with its glyphs: the text code's own.
class Font;

struct FontObject {
    LOGFONTA description{};
    /// Made by the text code when the font is first measured or drawn with.
    mutable std::shared_ptr<const Font> realized;
};

/// The description of a stock font (SYSTEM_FONT, DEFAULT_GUI_FONT and so on). REQUIRES: `number` is one of them.
[[nodiscard]] LOGFONTA stockFontDescription(int number);

} // namespace vndk::win32
