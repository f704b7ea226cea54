// What a built-in function is, and the tables that list them by topic.
#pragma once

#include <span>

#include "lisp/value.h"

namespace vndk::lisp {

class Evaluator;
using Arguments = std::span<const Value>;

struct Builtin {
    static constexpr int anyNumber = -1;

    const char* name;
    /// How many arguments it takes; the caller of `function` has checked this, and for `special` too.
    int least;
    int most;
    /// Takes evaluated arguments. They stay valid during the call.
    Value (*function)(Evaluator& evaluator, Arguments args);
    /// Takes the list of unevaluated arguments. Exactly one of the two is set.
    Value (*special)(Evaluator& evaluator, const Value& args) = nullptr;
};

std::span<const Builtin> controlBuiltins();
std::span<const Builtin> definitionBuiltins();
std::span<const Builtin> arithmeticBuiltins();
std::span<const Builtin> comparisonBuiltins();
std::span<const Builtin> predicateBuiltins();
std::span<const Builtin> listBuiltins();
std::span<const Builtin> applyBuiltins();
std::span<const Builtin> stringBuiltins();
std::span<const Builtin> unitBuiltins();
std::span<const Builtin> geometryBuiltins();
std::span<const Builtin> outputBuiltins();
std::span<const Builtin> hostBuiltins();
std::span<const Builtin> errorBuiltins();

} // namespace vndk::lisp
