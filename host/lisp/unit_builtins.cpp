// rtos, angtos, distof, angtof. What a call leaves out is taken from the drawing's variables.
#include "arguments.h"
#include "evaluator.h"
#include "ge/unit_text.h"

namespace vndk::lisp {

namespace {

/// An optional argument, else the variable, else the value that a new drawing has.
int setting(Evaluator& evaluator, Arguments args, std::size_t index, const char* variable, int otherwise) {
    if (given(args, index))
        return asInt(args[index]);
    const Outcome<Value> value = evaluator.host().getVariable(variable);
    return value && value.value().isInt() ? value.value().integer() : otherwise;
}

ge::UnitForm unitForm(Evaluator& evaluator) {
    return setting(evaluator, {}, 0, "UNITMODE", 0) == 0 ? ge::UnitForm::Read : ge::UnitForm::Typed;
}

Value textOrThrow(const std::optional<std::string>& text, Arguments args) {
    if (!text)
        throwBadArgument("fixnump:", args.size() > 1 ? args[1] : Value());
    return Value::string(*text);
}

Value rtos(Evaluator& evaluator, Arguments args) {
    const double length = asNumber(args[0]);
    const int mode = setting(evaluator, args, 1, "LUNITS", 2);
    const int precision = setting(evaluator, args, 2, "LUPREC", 4);
    const int zeroes = setting(evaluator, {}, 0, "DIMZIN", 0);
    return textOrThrow(ge::lengthText(length, mode, precision, zeroes, unitForm(evaluator)), args);
}

Value angtos(Evaluator& evaluator, Arguments args) {
    const double angle = asNumber(args[0]);
    const int mode = setting(evaluator, args, 1, "AUNITS", 0);
    const int precision = setting(evaluator, args, 2, "AUPREC", 0);
    return textOrThrow(ge::angleText(angle, mode, precision, unitForm(evaluator)), args);
}

Value realOrNil(const std::optional<double>& number) { return number ? Value::real(*number) : Value(); }

/// (distof text [mode]): every form is understood in every mode; the mode is only checked.
Value distof(Evaluator&, Arguments args) {
    if (given(args, 1) && (asInt(args[1]) < 1 || asInt(args[1]) > 5))
        throwBadArgument("fixnump:", args[1]);
    return realOrNil(ge::lengthFromText(asString(args[0])));
}

Value angtof(Evaluator& evaluator, Arguments args) {
    const int mode = setting(evaluator, args, 1, "AUNITS", 0);
    return realOrNil(ge::angleFromText(asString(args[0]), mode));
}

constexpr Builtin builtins[] = {
    {"RTOS", 1, 3, rtos},
    {"ANGTOS", 1, 3, angtos},
    {"DISTOF", 1, 2, distof},
    {"ANGTOF", 1, 2, angtof},
};

} // namespace

std::span<const Builtin> unitBuiltins() { return builtins; }

} // namespace vndk::lisp
