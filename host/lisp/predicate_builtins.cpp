// Questions about a value: numberp, listp, atom, boundp, type, ...
#include "arguments.h"
#include "evaluator.h"

namespace vndk::lisp {

namespace {

Value isMinus(Evaluator&, Arguments args) { return Value::truth(asNumber(args[0]) < 0); }

Value isZero(Evaluator&, Arguments args) { return Value::truth(asNumber(args[0]) == 0); }

Value isNumber(Evaluator&, Arguments args) { return Value::truth(args[0].isNumber()); }

Value isList(Evaluator&, Arguments args) { return Value::truth(args[0].isCons() || args[0].isNil()); }

Value isAtom(Evaluator&, Arguments args) { return Value::truth(!args[0].isCons()); }

Value isPair(Evaluator&, Arguments args) { return Value::truth(args[0].isCons()); }

Value isBound(Evaluator&, Arguments args) { return Value::truth(!asSymbol(args[0]).value().isNil()); }

const char* typeName(Type type) {
    switch (type) {
    case Type::Symbol:
        return "SYM";
    case Type::Int:
        return "INT";
    case Type::Real:
        return "REAL";
    case Type::Ename:
        return "ENAME";
    case Type::PickSet:
        return "PICKSET";
    case Type::Builtin:
        return "SUBR";
    case Type::String:
        return "STR";
    case Type::CaughtError:
        return "%CATCH-ALL-APPLY-ERROR%";
    case Type::Cons:
        return "LIST";
    case Type::Lambda:
        return "USUBR";
    case Type::External:
        return "EXRXSUBR";
    case Type::Nil:
        break;
    }
    return nullptr;
}

Value typeOf(Evaluator& evaluator, Arguments args) {
    const char* name = typeName(args[0].type());
    return name ? Value::symbol(evaluator.symbols().intern(name)) : Value();
}

constexpr Builtin builtins[] = {
    {"MINUSP", 1, 1, isMinus}, {"ZEROP", 1, 1, isZero},    {"NUMBERP", 1, 1, isNumber}, {"LISTP", 1, 1, isList},
    {"ATOM", 1, 1, isAtom},    {"VL-CONSP", 1, 1, isPair}, {"BOUNDP", 1, 1, isBound},   {"TYPE", 1, 1, typeOf},
};

} // namespace

std::span<const Builtin> predicateBuiltins() { return builtins; }

} // namespace vndk::lisp
