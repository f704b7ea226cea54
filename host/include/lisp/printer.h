// The text of LISP values.
#pragma once

#include <cstddef>
#include <string>

#include "lisp/value.h"

namespace vndk::lisp {

enum class PrintStyle {
    Display,  ///< princ: strings as they are.
    Readable, ///< prin1: strings in quotes with escapes, so that the reader gets them back.
};

/// Longest text that toText makes; what goes beyond is cut and ends in "...". A list that shares its parts can have a
/// text that no memory holds, so there has to be an end.
inline constexpr std::size_t defaultTextLimit = 64u << 20;

std::string toText(const Value& value, PrintStyle style, std::size_t limit = defaultTextLimit);

/// A real in the command line's form: six significant digits, always with a point ("1.0", "0.5", "1.0e+20").
std::string realText(double number);

} // namespace vndk::lisp
