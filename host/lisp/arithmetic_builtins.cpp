// Arithmetic. Integers have 32 bits and wrap around; a real among the operands makes the result real.
#include <cmath>
#include <limits>
#include <numeric>

#include "arguments.h"
#include "evaluator.h"
#include "lisp/printer.h"

namespace vndk::lisp {

namespace {

std::int32_t wrap(std::int64_t number) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(static_cast<std::uint64_t>(number)));
}

bool allInts(Arguments args) {
    bool ints = true;
    for (const Value& arg : args) {
        asNumber(arg);
        ints = ints && arg.isInt();
    }
    return ints;
}

/// Folds integers as integers up to the first real, and from there on as reals.
template <class OnInts, class OnReals>
Value fold(Arguments args, OnInts onInts, OnReals onReals) {
    asNumber(args[0]);
    Value total = args[0];
    for (const Value& arg : args.subspan(1)) {
        asNumber(arg);
        total = total.isInt() && arg.isInt() ? Value::integer(onInts(total.integer(), arg.integer()))
                                             : Value::real(onReals(total.number(), arg.number()));
    }
    return total;
}

Value add(Evaluator&, Arguments args) {
    if (args.empty())
        return Value::integer(0);
    return fold(
        args, [](std::int64_t a, std::int64_t b) { return wrap(a + b); }, std::plus<double>());
}

Value subtract(Evaluator&, Arguments args) {
    if (args.empty())
        return Value::integer(0);
    if (args.size() == 1)
        return allInts(args) ? Value::integer(wrap(-std::int64_t{args[0].integer()})) : Value::real(-args[0].real());
    return fold(
        args, [](std::int64_t a, std::int64_t b) { return wrap(a - b); }, std::minus<double>());
}

Value multiply(Evaluator&, Arguments args) {
    if (args.empty())
        return Value::integer(0);
    return fold(
        args, [](std::int64_t a, std::int64_t b) { return wrap(a * b); }, std::multiplies<double>());
}

template <class T>
T nonZero(T divisor) {
    if (divisor == 0)
        throwError("divide by zero");
    return divisor;
}

Value divide(Evaluator&, Arguments args) {
    if (args.empty())
        return Value::integer(0);
    return fold(
        args, [](std::int64_t a, std::int64_t b) { return wrap(a / nonZero(b)); },
        [](double a, double b) { return a / nonZero(b); });
}

Value remainder(Evaluator&, Arguments args) {
    return fold(
        args, [](std::int64_t a, std::int64_t b) { return wrap(a % nonZero(b)); },
        [](double a, double b) { return std::fmod(a, nonZero(b)); });
}

Value maximum(Evaluator&, Arguments args) {
    return fold(
        args, [](std::int32_t a, std::int32_t b) { return std::max(a, b); },
        [](double a, double b) { return std::max(a, b); });
}

Value minimum(Evaluator&, Arguments args) {
    return fold(
        args, [](std::int32_t a, std::int32_t b) { return std::min(a, b); },
        [](double a, double b) { return std::min(a, b); });
}

Value shifted(const Value& value, int by) {
    asNumber(value);
    return value.isInt() ? Value::integer(wrap(std::int64_t{value.integer()} + by)) : Value::real(value.real() + by);
}

Value increment(Evaluator&, Arguments args) { return shifted(args[0], 1); }

Value decrement(Evaluator&, Arguments args) { return shifted(args[0], -1); }

Value absolute(Evaluator&, Arguments args) {
    asNumber(args[0]);
    if (args[0].isInt())
        return Value::integer(wrap(std::abs(std::int64_t{args[0].integer()})));
    return Value::real(std::fabs(args[0].real()));
}

/// The integer below towards zero; a real that no integer can hold stays a real.
Value fix(Evaluator&, Arguments args) {
    const double whole = std::trunc(asNumber(args[0]));
    if (std::abs(whole) > std::numeric_limits<std::int32_t>::max() || std::isnan(whole))
        return Value::real(whole);
    return Value::integer(static_cast<std::int32_t>(whole));
}

Value toFloat(Evaluator&, Arguments args) { return Value::real(asNumber(args[0])); }

[[noreturn]] void throwUndefined(const Value& argument) {
    throwError("function undefined for argument: " + toText(argument, PrintStyle::Readable));
}

Value squareRoot(Evaluator&, Arguments args) {
    const double number = asNumber(args[0]);
    if (number < 0)
        throwUndefined(args[0]);
    return Value::real(std::sqrt(number));
}

Value power(Evaluator&, Arguments args) {
    const bool ints = allInts(args);
    const double result = std::pow(args[0].number(), args[1].number());
    if (std::isnan(result) || (args[0].number() == 0 && args[1].number() < 0))
        throwUndefined(args[0]);
    if (ints && args[1].integer() >= 0 && std::fabs(result) <= std::numeric_limits<std::int32_t>::max())
        return Value::integer(static_cast<std::int32_t>(result));
    return Value::real(result);
}

Value exponential(Evaluator&, Arguments args) { return Value::real(std::exp(asNumber(args[0]))); }

Value logarithm(Evaluator&, Arguments args) {
    const double number = asNumber(args[0]);
    if (number <= 0)
        throwUndefined(args[0]);
    return Value::real(std::log(number));
}

Value sine(Evaluator&, Arguments args) { return Value::real(std::sin(asNumber(args[0]))); }

Value cosine(Evaluator&, Arguments args) { return Value::real(std::cos(asNumber(args[0]))); }

Value arcTangent(Evaluator&, Arguments args) {
    const double y = asNumber(args[0]);
    return Value::real(args.size() == 1 ? std::atan(y) : std::atan2(y, asNumber(args[1])));
}

Value greatestDivisor(Evaluator&, Arguments args) {
    const std::int64_t a = asInt(args[0]);
    return Value::integer(wrap(std::gcd(a, std::int64_t{asInt(args[1])})));
}

template <class Operation>
Value foldBits(Arguments args, std::int32_t neutral, Operation operation) {
    for (const Value& arg : args)
        neutral = operation(neutral, asInt(arg));
    return Value::integer(neutral);
}

Value bitAnd(Evaluator&, Arguments args) { return foldBits(args, args.empty() ? 0 : -1, std::bit_and<std::int32_t>()); }

Value bitOr(Evaluator&, Arguments args) { return foldBits(args, 0, std::bit_or<std::int32_t>()); }

Value bitNot(Evaluator&, Arguments args) { return Value::integer(~asInt(args[0])); }

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"+", 0, any, add},         {"-", 0, any, subtract},   {"*", 0, any, multiply},    {"/", 0, any, divide},
    {"REM", 1, any, remainder}, {"MAX", 1, any, maximum},  {"MIN", 1, any, minimum},   {"1+", 1, 1, increment},
    {"1-", 1, 1, decrement},    {"ABS", 1, 1, absolute},   {"FIX", 1, 1, fix},         {"FLOAT", 1, 1, toFloat},
    {"SQRT", 1, 1, squareRoot}, {"EXPT", 2, 2, power},     {"EXP", 1, 1, exponential}, {"LOG", 1, 1, logarithm},
    {"SIN", 1, 1, sine},        {"COS", 1, 1, cosine},     {"ATAN", 1, 2, arcTangent}, {"GCD", 2, 2, greatestDivisor},
    {"LOGAND", 0, any, bitAnd}, {"LOGIOR", 0, any, bitOr}, {"~", 1, 1, bitNot},
};

} // namespace

std::span<const Builtin> arithmeticBuiltins() { return builtins; }

} // namespace vndk::lisp
