// The one seam between the text inside (8-bit, code page 1252) and the system's text (UTF-8).
//
// The five bytes that the code page leaves undefined stand for the control characters of the same number, both ways,
// so that every byte string survives the way out and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vndk::win32 {

[[nodiscard]] std::string toUtf8(std::string_view text1252);

/// Nothing when the text isn't valid UTF-8 or holds a character that the code page lacks.
[[nodiscard]] std::optional<std::string> fromUtf8(std::string_view utf8);

/// As fromUtf8, with '?' in place of what cannot be expressed.
[[nodiscard]] std::string fromUtf8Lossy(std::string_view utf8);

/// The byte for a character; nothing when the code page lacks it.
[[nodiscard]] std::optional<char> byteFromCharacter(char32_t character);

/// The character that a byte stands for.
[[nodiscard]] char32_t characterFromByte(char byte);

/// Capital to small letter, also for umlauts and accents.
[[nodiscard]] char lower1252(char byte);
[[nodiscard]] char upper1252(char byte);

/// Below, at or above zero, as `strcmp`, without regard to case.
[[nodiscard]] int compareNoCase(std::string_view a, std::string_view b);

} // namespace vndk::win32
