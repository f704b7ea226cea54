// What writes to the command line: princ, prin1, print, terpri, prompt.
#include "arguments.h"
#include "evaluator.h"
#include "lisp/printer.h"

namespace vndk::lisp {

namespace {

Value put(Evaluator& evaluator, Arguments args, PrintStyle style) {
    if (args.empty())
        return Value::quiet();
    if (given(args, 1))
        throwError("writing to a file is not available here");
    evaluator.host().print(toText(args[0], style));
    return args[0];
}

Value princ(Evaluator& evaluator, Arguments args) { return put(evaluator, args, PrintStyle::Display); }

Value prin1(Evaluator& evaluator, Arguments args) { return put(evaluator, args, PrintStyle::Readable); }

Value print(Evaluator& evaluator, Arguments args) {
    if (args.empty())
        return Value::quiet();
    evaluator.host().print("\n");
    Value result = put(evaluator, args, PrintStyle::Readable);
    evaluator.host().print(" ");
    return result;
}

Value terpri(Evaluator& evaluator, Arguments) {
    evaluator.host().print("\n");
    return Value();
}

Value prompt(Evaluator& evaluator, Arguments args) {
    evaluator.host().print(asString(args[0]));
    return Value();
}

constexpr Builtin builtins[] = {
    {"PRINC", 0, 2, princ},   {"PRIN1", 0, 2, prin1},   {"PRINT", 0, 2, print},
    {"TERPRI", 0, 0, terpri}, {"PROMPT", 1, 1, prompt},
};

} // namespace

std::span<const Builtin> outputBuiltins() { return builtins; }

} // namespace vndk::lisp
