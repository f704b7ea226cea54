// Numbers from text, without regard to the locale.
#pragma once

#include <optional>
#include <string_view>

#include "lisp/value.h"

namespace vndk::lisp {

/// The whole of `token` as an integer, or as a real when it has a point or an exponent or needs more than 32 bits.
/// Nothing when it is no number.
std::optional<Value> numberFromText(std::string_view token);

/// The number that `text` starts with, as a C program's atof reads it; 0 when there is none.
double leadingReal(std::string_view text);

} // namespace vndk::lisp
