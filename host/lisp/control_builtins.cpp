// Special forms that direct evaluation: quote, if, cond, while, repeat, foreach, progn, and, or.
#include "arguments.h"
#include "evaluator.h"
#include "lisp/printer.h"

namespace vndk::lisp {

namespace {

Value quote(Evaluator&, const Value& args) { return args.car(); }

Value ifForm(Evaluator& evaluator, const Value& args) {
    const Value& branches = args.cdr();
    if (!evaluator.evaluate(args.car()).isNil())
        return evaluator.evaluate(branches.car());
    return branches.cdr().isCons() ? evaluator.evaluate(branches.cdr().car()) : Value();
}

Value cond(Evaluator& evaluator, const Value& args) {
    for (const Value* rest = &args; rest->isCons(); rest = &rest->cdr()) {
        const Value& clause = rest->car();
        if (!clause.isCons())
            throwError("bad cond clause: " + toText(clause, PrintStyle::Readable, 200));
        Value test = evaluator.evaluate(clause.car());
        if (!test.isNil())
            return clause.cdr().isCons() ? evaluator.evaluateAll(clause.cdr()) : test;
    }
    return Value();
}

Value whileForm(Evaluator& evaluator, const Value& args) {
    Value result;
    while (!evaluator.evaluate(args.car()).isNil()) {
        evaluator.spend();
        result = evaluator.evaluateAll(args.cdr());
    }
    return result;
}

Value repeat(Evaluator& evaluator, const Value& args) {
    const std::int32_t count = asInt(evaluator.evaluate(args.car()));
    Value result;
    for (std::int32_t i = 0; i < count; ++i) {
        evaluator.spend();
        result = evaluator.evaluateAll(args.cdr());
    }
    return result;
}

Value forEach(Evaluator& evaluator, const Value& args) {
    Symbol& variable = asSymbol(args.car());
    const Value items = evaluator.evaluate(args.cdr().car());
    asList(items);
    const std::size_t start = evaluator.mark().bindings;
    evaluator.bind(variable, Value());
    Value result;
    for (const Value* rest = &items; rest->isCons(); rest = &rest->cdr()) {
        evaluator.spend();
        variable.setValue(rest->car());
        result = evaluator.evaluateAll(args.cdr().cdr());
    }
    evaluator.undoBindings(start);
    return result;
}

Value progn(Evaluator& evaluator, const Value& args) { return evaluator.evaluateAll(args); }

Value andForm(Evaluator& evaluator, const Value& args) {
    for (const Value* rest = &args; rest->isCons(); rest = &rest->cdr())
        if (evaluator.evaluate(rest->car()).isNil())
            return Value();
    return Value::t();
}

Value orForm(Evaluator& evaluator, const Value& args) {
    for (const Value* rest = &args; rest->isCons(); rest = &rest->cdr())
        if (!evaluator.evaluate(rest->car()).isNil())
            return Value::t();
    return Value();
}

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"QUOTE", 1, 1, nullptr, quote},       {"FUNCTION", 1, 1, nullptr, quote},    {"IF", 2, 3, nullptr, ifForm},
    {"COND", 0, any, nullptr, cond},       {"WHILE", 1, any, nullptr, whileForm}, {"REPEAT", 1, any, nullptr, repeat},
    {"FOREACH", 2, any, nullptr, forEach}, {"PROGN", 0, any, nullptr, progn},     {"AND", 0, any, nullptr, andForm},
    {"OR", 0, any, nullptr, orForm},
};

} // namespace

std::span<const Builtin> controlBuiltins() { return builtins; }

} // namespace vndk::lisp
