// The fonts behind text styles.
#pragma once

#include "db/object_id.h"
#include "win32/fonts.h"
#include "win32/glyph_outline.h"

#include <string_view>

namespace vndk::gs {

/// The description of the face that comes nearest to the style's font file; the plain face for a style that can't be
/// opened. Lives as long as the program.
const LOGFONTA& fontOfStyle(AcDbObjectId style);
/// The same for a face that is named beside its properties, or for a font file.
const LOGFONTA& fontOfFace(std::string_view face, bool bold, bool italic);
/// The same for a font file's name, with or without its folder.
const LOGFONTA& fontOfFile(std::string_view fileName);
/// The letter's outline; `font` is one of those that the functions above give.
const win32::GlyphOutline& outlineOf(char letter, const LOGFONTA& font);
/// The advances together, in units of the height of capital letters.
double widthOf(std::string_view letters, const LOGFONTA& font);

} // namespace vndk::gs
