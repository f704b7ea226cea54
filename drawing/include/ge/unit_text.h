// Lengths and angles as text and back, in the modes of LUNITS and AUNITS.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace vndk::ge {

/// UNITMODE: as people read it, or without blanks, so that it is one answer at a prompt: 1'-5 1/2" or 1'5-1/2",
/// N 45d E or N45dE.
enum class UnitForm { Read, Typed };

/// Modes: 1 scientific, 2 decimal, 3 engineering (feet and decimal inches), 4 architectural (feet and fractional
/// inches), 5 fractional. `precision` is the number of decimals, or for modes 4 and 5 the denominator's power of two;
/// 0 to 8. `zeroes` is DIMZIN: the low two bits tell which zero feet and inches appear, bit 4 drops a leading and
/// bit 8 the trailing zeros of decimals. Nothing for another mode.
std::optional<std::string> lengthText(double length, int mode, int precision, int zeroes,
                                      UnitForm form = UnitForm::Read);

/// Modes: 0 degrees, 1 degrees with minutes and seconds, 2 grads, 3 radians, 4 surveyor's bearing. `angle` in
/// radians, counterclockwise from the x axis; brought into one turn first, and what rounds to a whole turn is 0.
/// Nothing for another mode.
std::optional<std::string> angleText(double angle, int mode, int precision, UnitForm form = UnitForm::Read);

/// A length in any of the modes' forms; nothing when the text is none, or one that no real can hold.
std::optional<double> lengthFromText(std::string_view text);

/// An angle in radians; `mode` is the unit of a bare number. Nothing when the text is no angle.
std::optional<double> angleFromText(std::string_view text, int mode);

} // namespace vndk::ge
