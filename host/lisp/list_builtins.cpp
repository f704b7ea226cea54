// Lists: making, taking apart, searching.
#include <string_view>

#include "arguments.h"
#include "equality.h"
#include "evaluator.h"
#include "lisp/printer.h"

namespace vndk::lisp {

namespace {

Value list(Evaluator&, Arguments args) { return Value::list(args); }

Value cons(Evaluator&, Arguments args) { return Value::cons(args[0], args[1]); }

const Value& carOf(const Value& value) { return asList(value).isNil() ? value : value.car(); }

const Value& cdrOf(const Value& value) { return asList(value).isNil() ? value : value.cdr(); }

/// One function for each of car, cdr, caar ... cddddr; the path is walked from its last letter.
template <char... path>
Value walk(Evaluator&, Arguments args) {
    constexpr char letters[] = {path...};
    const Value* value = &args[0];
    for (std::size_t i = sizeof...(path); i-- > 0;)
        value = letters[i] == 'a' ? &carOf(*value) : &cdrOf(*value);
    return *value;
}

Value nth(Evaluator&, Arguments args) {
    const std::int32_t index = asInt(args[0]);
    if (index < 0)
        throwBadArgument("fixnump:", args[0]);
    const Value* rest = &asList(args[1]);
    for (std::int32_t i = 0; i < index && rest->isCons(); ++i)
        rest = &rest->cdr();
    return rest->isCons() ? rest->car() : Value();
}

Value last(Evaluator&, Arguments args) {
    const Value* rest = &asList(args[0]);
    if (rest->isNil())
        return Value();
    while (rest->cdr().isCons())
        rest = &rest->cdr();
    return rest->car();
}

[[noreturn]] void throwBadList(const Value& value) {
    throwError("bad list: " + toText(value, PrintStyle::Readable, 200));
}

Value length(Evaluator&, Arguments args) {
    std::int32_t count = 0;
    const Value* rest = &asList(args[0]);
    for (; rest->isCons(); rest = &rest->cdr())
        ++count;
    if (!rest->isNil())
        throwBadList(args[0]);
    return Value::integer(count);
}

Value reverse(Evaluator&, Arguments args) {
    Value result;
    for (const Value* rest = &asList(args[0]); rest->isCons(); rest = &rest->cdr())
        result = Value::cons(rest->car(), std::move(result));
    return result;
}

Value append(Evaluator&, Arguments args) {
    ListBuilder result;
    for (std::size_t i = 0; i < args.size(); ++i) {
        asList(args[i]);
        if (i + 1 == args.size())
            return result.empty() ? args[i] : result.finish(args[i]);
        for (const Value* rest = &args[i]; rest->isCons(); rest = &rest->cdr())
            result.append(rest->car());
    }
    return Value();
}

Value assoc(Evaluator& evaluator, Arguments args) {
    for (const Value* rest = &asList(args[1]); rest->isCons(); rest = &rest->cdr()) {
        if (!rest->car().isCons())
            throwError("bad association list: " + toText(args[1], PrintStyle::Readable, 200));
        if (isEqual(evaluator, args[0], rest->car().car()))
            return rest->car();
    }
    return Value();
}

Value member(Evaluator& evaluator, Arguments args) {
    for (const Value* rest = &asList(args[1]); rest->isCons(); rest = &rest->cdr())
        if (isEqual(evaluator, args[0], rest->car()))
            return *rest;
    return Value();
}

Value position(Evaluator& evaluator, Arguments args) {
    std::int32_t index = 0;
    for (const Value* rest = &asList(args[1]); rest->isCons(); rest = &rest->cdr(), ++index)
        if (isEqual(evaluator, args[0], rest->car()))
            return Value::integer(index);
    return Value();
}

Value substitute(Evaluator& evaluator, Arguments args) {
    ListBuilder result;
    for (const Value* rest = &asList(args[2]); rest->isCons(); rest = &rest->cdr())
        result.append(isEqual(evaluator, args[1], rest->car()) ? args[0] : rest->car());
    return result.finish();
}

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"LIST", 0, any, list},
    {"CONS", 2, 2, cons},
    {"NTH", 2, 2, nth},
    {"LAST", 1, 1, last},
    {"LENGTH", 1, 1, length},
    {"REVERSE", 1, 1, reverse},
    {"APPEND", 0, any, append},
    {"ASSOC", 2, 2, assoc},
    {"MEMBER", 2, 2, member},
    {"VL-POSITION", 2, 2, position},
    {"SUBST", 3, 3, substitute},
    {"CAR", 1, 1, walk<'a'>},
    {"CDR", 1, 1, walk<'d'>},
    {"CAAR", 1, 1, walk<'a', 'a'>},
    {"CADR", 1, 1, walk<'a', 'd'>},
    {"CDAR", 1, 1, walk<'d', 'a'>},
    {"CDDR", 1, 1, walk<'d', 'd'>},
    {"CAAAR", 1, 1, walk<'a', 'a', 'a'>},
    {"CAADR", 1, 1, walk<'a', 'a', 'd'>},
    {"CADAR", 1, 1, walk<'a', 'd', 'a'>},
    {"CADDR", 1, 1, walk<'a', 'd', 'd'>},
    {"CDAAR", 1, 1, walk<'d', 'a', 'a'>},
    {"CDADR", 1, 1, walk<'d', 'a', 'd'>},
    {"CDDAR", 1, 1, walk<'d', 'd', 'a'>},
    {"CDDDR", 1, 1, walk<'d', 'd', 'd'>},
    {"CAAAAR", 1, 1, walk<'a', 'a', 'a', 'a'>},
    {"CAAADR", 1, 1, walk<'a', 'a', 'a', 'd'>},
    {"CAADAR", 1, 1, walk<'a', 'a', 'd', 'a'>},
    {"CAADDR", 1, 1, walk<'a', 'a', 'd', 'd'>},
    {"CADAAR", 1, 1, walk<'a', 'd', 'a', 'a'>},
    {"CADADR", 1, 1, walk<'a', 'd', 'a', 'd'>},
    {"CADDAR", 1, 1, walk<'a', 'd', 'd', 'a'>},
    {"CADDDR", 1, 1, walk<'a', 'd', 'd', 'd'>},
    {"CDAAAR", 1, 1, walk<'d', 'a', 'a', 'a'>},
    {"CDAADR", 1, 1, walk<'d', 'a', 'a', 'd'>},
    {"CDADAR", 1, 1, walk<'d', 'a', 'd', 'a'>},
    {"CDADDR", 1, 1, walk<'d', 'a', 'd', 'd'>},
    {"CDDAAR", 1, 1, walk<'d', 'd', 'a', 'a'>},
    {"CDDADR", 1, 1, walk<'d', 'd', 'a', 'd'>},
    {"CDDDAR", 1, 1, walk<'d', 'd', 'd', 'a'>},
    {"CDDDDR", 1, 1, walk<'d', 'd', 'd', 'd'>},
};

} // namespace

std::span<const Builtin> listBuiltins() { return builtins; }

} // namespace vndk::lisp
