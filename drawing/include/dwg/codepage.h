#pragma once
/// Text between a drawing's code page, code page 1252 (all text inside the program) and UTF-8 (for people).
///
/// A character that the target can't hold becomes the drawing notation \U+XXXX, and comes back from it where the
/// target can. So nothing is lost between a drawing and the program. Bytes that a code page doesn't define become
/// \U+F7XX on the way in, and the byte XX again on the way out.

#include <cstdint>
#include <string>
#include <string_view>

namespace vndk::dwg {

/// The format's number of code page 1252.
constexpr uint16_t kCodePage1252 = 30;

/// Whether the number is one that the format defines. Text of any other is taken for 1252.
bool isKnownCodePage(uint16_t codePage);
/// For people, for example "ANSI_1252"; empty for an unknown number.
std::string_view codePageName(uint16_t codePage);

/// Text of a drawing with that code page, in 1252.
std::string textFromDrawing(std::string_view text, uint16_t codePage);
/// Text in 1252, for a drawing with that code page.
std::string textToDrawing(std::string_view text, uint16_t codePage);

/// 1252 to UTF-8; \U+XXXX becomes the character.
std::string utf8FromText(std::string_view text);
/// UTF-8 to 1252; what 1252 can't hold becomes \U+XXXX, invalid bytes become '?'.
std::string textFromUtf8(std::string_view utf8);

} // namespace vndk::dwg
