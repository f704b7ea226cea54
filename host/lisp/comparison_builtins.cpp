// =, /=, <, >, <=, >=, eq, equal, not, null.
#include <cmath>
#include <compare>
#include <functional>
#include <vector>

#include "arguments.h"
#include "equality.h"
#include "evaluator.h"

namespace vndk::lisp {

namespace {

bool same(const Value& a, const Value& b) {
    return a.isNumber() && b.isNumber() ? a.number() == b.number() : a.identical(b);
}

Value numericEqual(Evaluator&, Arguments args) {
    for (std::size_t i = 1; i < args.size(); ++i)
        if (!same(args[i - 1], args[i]))
            return Value();
    return Value::t();
}

Value notEqual(Evaluator&, Arguments args) {
    for (std::size_t i = 1; i < args.size(); ++i)
        if (same(args[i - 1], args[i]))
            return Value();
    return Value::t();
}

std::partial_ordering order(const Value& a, const Value& b) {
    if (a.isString() && b.isString())
        return a.text() <=> b.text();
    if (a.isString())
        throwBadArgument("stringp", b);
    return asNumber(a) <=> asNumber(b);
}

template <class Holds>
Value ordered(Arguments args, Holds holds) {
    for (std::size_t i = 1; i < args.size(); ++i)
        if (!holds(order(args[i - 1], args[i])))
            return Value();
    return Value::t();
}

Value less(Evaluator&, Arguments args) {
    return ordered(args, [](auto ordering) { return ordering < 0; });
}

Value greater(Evaluator&, Arguments args) {
    return ordered(args, [](auto ordering) { return ordering > 0; });
}

Value lessOrEqual(Evaluator&, Arguments args) {
    return ordered(args, [](auto ordering) { return ordering <= 0; });
}

Value greaterOrEqual(Evaluator&, Arguments args) {
    return ordered(args, [](auto ordering) { return ordering >= 0; });
}

Value eq(Evaluator&, Arguments args) { return Value::truth(args[0].identical(args[1])); }

Value equal(Evaluator& evaluator, Arguments args) {
    const double fuzz = given(args, 2) ? asNumber(args[2]) : 0.0;
    return Value::truth(isEqual(evaluator, args[0], args[1], fuzz));
}

Value isNull(Evaluator&, Arguments args) { return Value::truth(args[0].isNil()); }

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"=", 1, any, numericEqual}, {"/=", 1, any, notEqual},       {"<", 1, any, less}, {">", 1, any, greater},
    {"<=", 1, any, lessOrEqual}, {">=", 1, any, greaterOrEqual}, {"EQ", 2, 2, eq},    {"EQUAL", 2, 3, equal},
    {"NULL", 1, 1, isNull},      {"NOT", 1, 1, isNull},
};

} // namespace

bool isEqual(Evaluator& evaluator, const Value& first, const Value& second, double fuzz) {
    struct Pair {
        const Value* a;
        const Value* b;
    };
    // What is still to be compared; a member stays valid because the lists are not changed meanwhile.
    std::vector<Pair> open{{&first, &second}};
    while (!open.empty()) {
        const Value* a = open.back().a;
        const Value* b = open.back().b;
        open.pop_back();
        for (; a->isCons() && b->isCons() && !a->identical(*b); a = &a->cdr(), b = &b->cdr()) {
            evaluator.spend();
            open.push_back({&a->car(), &b->car()});
        }
        if (a->isNumber() && b->isNumber()) {
            if (!(std::fabs(a->number() - b->number()) <= fuzz))
                return false;
        } else if (!a->identical(*b)) {
            return false;
        }
    }
    return true;
}

std::span<const Builtin> comparisonBuiltins() { return builtins; }

} // namespace vndk::lisp
