// What makes names mean something: setq, set, defun, lambda, eval, read.
#include "arguments.h"
#include "evaluator.h"
#include "lisp/reader.h"

namespace vndk::lisp {

namespace {

void assign(Symbol& symbol, Value value) {
    if (symbol.isConstant())
        throwError("cannot assign to the constant " + symbol.name());
    symbol.setValue(std::move(value));
}

Value setq(Evaluator& evaluator, const Value& args) {
    Value value;
    for (const Value* rest = &args; rest->isCons(); rest = &rest->cdr()) {
        if (!rest->car().isSymbol())
            throwError("syntax error");
        Symbol& symbol = rest->car().symbol();
        rest = &rest->cdr();
        if (!rest->isCons())
            throwTooFew();
        value = evaluator.evaluate(rest->car());
        assign(symbol, value);
    }
    return value;
}

Value set(Evaluator&, Arguments args) {
    assign(asSymbol(args[0]), args[1]);
    return args[1];
}

Value defun(Evaluator& evaluator, const Value& args) {
    if (!args.car().isSymbol())
        throwError("syntax error");
    Symbol& symbol = args.car().symbol();
    assign(symbol, evaluator.makeLambda(symbol.name(), args.cdr().car(), args.cdr().cdr()));
    return args.car();
}

Value lambda(Evaluator& evaluator, const Value& args) {
    return evaluator.makeLambda("-lambda-", args.car(), args.cdr());
}

Value eval(Evaluator& evaluator, Arguments args) { return evaluator.evaluate(args[0]); }

Value read(Evaluator& evaluator, Arguments args) {
    if (args.empty())
        return Value();
    Reader reader(evaluator.symbols());
    reader.feed(asString(args[0]));
    Value form;
    Reader::Status status = reader.next(form);
    if (status == Reader::Status::NeedMore)
        status = reader.finish();
    if (status == Reader::Status::Error)
        throwError(reader.error());
    return form;
}

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"SETQ", 0, any, nullptr, setq},     {"SET", 2, 2, set},   {"DEFUN", 2, any, nullptr, defun},
    {"LAMBDA", 1, any, nullptr, lambda}, {"EVAL", 1, 1, eval}, {"READ", 0, 1, read},
};

} // namespace

std::span<const Builtin> definitionBuiltins() { return builtins; }

} // namespace vndk::lisp
