// The exceptions that carry a LISP error up to the catcher. They never leave this folder.
#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "lisp/outcome.h"
#include "lisp/value.h"

namespace vndk::lisp {

struct LispError {
    Failure failure;
};

[[noreturn]] void throwError(std::string message);
/// "bad argument type: <expected> <value>"; `expected` brings its own colon where the field's text has one.
[[noreturn]] void throwBadArgument(std::string_view expected, const Value& value);
[[noreturn]] void throwTooFew();
[[noreturn]] void throwTooMany();

/// The outcome's value, or its failure thrown on.
template <class T>
T valueOrThrow(Outcome<T> outcome) {
    if (!outcome)
        throw LispError{std::move(outcome.failure())};
    return std::move(outcome.value());
}

} // namespace vndk::lisp
