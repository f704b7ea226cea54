// Checked access to a built-in's arguments; a wrong type throws the error that names it.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "builtin.h"
#include "lisp/value.h"

namespace vndk::lisp {

std::int32_t asInt(const Value& value);
double asNumber(const Value& value);
std::string_view asString(const Value& value);
Symbol& asSymbol(const Value& value);
/// A pair or nil.
const Value& asList(const Value& value);
std::uint64_t asEname(const Value& value);

struct Point {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    /// Two coordinates were given.
    bool flat = false;
};
Point asPoint(const Value& value);
Value pointValue(const Point& point);

/// The argument is there and not nil.
inline bool given(Arguments args, std::size_t index) { return index < args.size() && !args[index].isNil(); }

} // namespace vndk::lisp
