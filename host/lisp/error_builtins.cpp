// Ending a program and catching what ended one.
#include "arguments.h"
#include "evaluator.h"

namespace vndk::lisp {

namespace {

Value quit(Evaluator&, Arguments) { throw LispError{{FailureKind::Quit, "quit / exit abort"}}; }

/// (vl-catch-all-apply function arguments): a failure comes back as a value. A break by the user and the limit on
/// steps can't be caught, or a program could refuse to end.
Value catchAllApply(Evaluator& evaluator, Arguments args) {
    const Evaluator::Mark mark = evaluator.mark();
    try {
        std::vector<Value> items;
        for (const Value* rest = &asList(args[1]); rest->isCons(); rest = &rest->cdr())
            items.push_back(rest->car());
        return evaluator.call(args[0], items);
    } catch (LispError& error) {
        if (error.failure.kind == FailureKind::Break || error.failure.kind == FailureKind::Limit)
            throw;
        evaluator.undoTo(mark);
        return Value::caughtError(error.failure.message);
    }
}

Value isCaughtError(Evaluator&, Arguments args) { return Value::truth(args[0].type() == Type::CaughtError); }

Value caughtMessage(Evaluator&, Arguments args) {
    if (args[0].type() != Type::CaughtError)
        throwBadArgument("%catch-all-apply-error%-p", args[0]);
    return Value::string(args[0].text());
}

constexpr Builtin builtins[] = {
    {"QUIT", 0, 0, quit},
    {"EXIT", 0, 0, quit},
    {"VL-CATCH-ALL-APPLY", 2, 2, catchAllApply},
    {"VL-CATCH-ALL-ERROR-P", 1, 1, isCaughtError},
    {"VL-CATCH-ALL-ERROR-MESSAGE", 1, 1, caughtMessage},
};

} // namespace

std::span<const Builtin> errorBuiltins() { return builtins; }

} // namespace vndk::lisp
