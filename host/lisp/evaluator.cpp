#include "evaluator.h"

#include <cstdlib>
#include <limits>

#include "heap.h"
#include "lisp/printer.h"
#include "lisp/reader.h"

namespace vndk::lisp {

namespace {

const char* stackPosition() { return static_cast<const char*>(__builtin_frame_address(0)); }

void checkCount(const Builtin& builtin, std::size_t count) {
    if (count < static_cast<std::size_t>(builtin.least))
        throwTooFew();
    if (builtin.most != Builtin::anyNumber && count > static_cast<std::size_t>(builtin.most))
        throwTooMany();
}

/// Counts unevaluated arguments only as far as the check needs.
void checkSpecialCount(const Builtin& builtin, const Value& args) {
    std::size_t count = 0;
    const auto enough = static_cast<std::size_t>(builtin.most == Builtin::anyNumber ? builtin.least : builtin.most + 1);
    for (const Value* rest = &args; rest->isCons() && count < enough; rest = &rest->cdr())
        ++count;
    checkCount(builtin, count);
}

} // namespace

/// One level of nested evaluation, on the machine's stack and in the count.
class Evaluator::Level {
public:
    explicit Level(Evaluator& evaluator) : depth_(evaluator.depth_) {
        // The stack grows downwards; the distance counts in both directions because a frame may be inlined.
        const auto used = static_cast<std::size_t>(std::abs(evaluator.stackBase_ - stackPosition()));
        if (depth_ >= evaluator.limits_.depth || used > evaluator.limits_.stackBytes)
            throwError("stack overflow");
        ++depth_;
    }
    ~Level() { --depth_; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

private:
    std::size_t& depth_;
};

Evaluator::Evaluator(HostLink& host, const Limits& limits)
    : host_(host), limits_(limits), errorSymbol_(symbols_.intern("*ERROR*")), lambdaSymbol_(symbols_.intern("LAMBDA")),
      values_(limits.arguments) {
    for (auto table :
         {controlBuiltins, definitionBuiltins, arithmeticBuiltins, comparisonBuiltins, predicateBuiltins, listBuiltins,
          applyBuiltins, stringBuiltins, unitBuiltins, geometryBuiltins, outputBuiltins, hostBuiltins, errorBuiltins})
        for (const Builtin& builtin : table())
            symbols_.intern(builtin.name).setValue(Value::builtin(builtin));
    symbols_.intern("PI").setValue(Value::real(3.14159265358979323846));
    symbols_.intern("PAUSE").setValue(Value::string("\\"));
}

void Evaluator::beginOutermost() {
    stackBase_ = stackPosition();
    broken_.store(false, std::memory_order_relaxed);
    stepsLeft_ = limits_.steps ? limits_.steps : std::numeric_limits<std::uint64_t>::max();
}

void Evaluator::stopOrGoOn() {
    if (broken_.exchange(false, std::memory_order_relaxed))
        throw LispError{{FailureKind::Break, "Function cancelled"}};
    // Each later step stops as well, so that no program can catch its way around the limit.
    stepsLeft_ = 1;
    throw LispError{{FailureKind::Limit, "too many evaluation steps"}};
}

Failure Evaluator::handle(Failure failure, const Mark& mark) {
    const Value handler = errorSymbol_.value();
    values_.shrink(mark.values);
    depth_ = mark.depth;
    if (failure.handled || !(handler.isFunction() || handler.isCons()) || failure.kind == FailureKind::Limit)
        return failure;
    try {
        // The handler itself is unbound while it runs: an error inside it is reported, not handled again.
        bind(errorSymbol_, Value());
        const Value message = Value::string(failure.message);
        call(handler, {&message, 1});
        failure.handled = true;
        return failure;
    } catch (LispError& error) {
        return std::move(error.failure);
    } catch (const std::exception&) {
        return failure;
    }
}

void Evaluator::bind(Symbol& symbol, Value value) {
    if (symbol.isConstant())
        throwError("cannot bind the constant " + symbol.name());
    bindings_.push_back({&symbol, symbol.exchangeValue(std::move(value))});
}

void Evaluator::undoBindings(std::size_t count) {
    while (bindings_.size() > count) {
        bindings_.back().symbol->setValue(std::move(bindings_.back().former));
        bindings_.pop_back();
    }
}

void Evaluator::undoTo(const Mark& mark) {
    undoBindings(mark.bindings);
    values_.shrink(mark.values);
    depth_ = mark.depth;
}

Value Evaluator::evaluate(const Value& form) {
    if (form.isSymbol())
        return form.symbol().value();
    return form.isCons() ? evaluateCall(form) : form;
}

Value Evaluator::evaluateAll(const Value& forms) {
    Value result;
    for (const Value* rest = &forms; rest->isCons(); rest = &rest->cdr())
        result = evaluate(rest->car());
    return result;
}

Value Evaluator::evaluateCall(const Value& form) {
    const Level level(*this);
    spend();
    const Value& head = form.car();
    // A copy: the call may redefine the function that is running.
    const Value function = head.isSymbol() ? head.symbol().value() : evaluate(head);
    if (function.type() == Type::Builtin && function.builtin().special) {
        checkSpecialCount(function.builtin(), form.cdr());
        return function.builtin().special(*this, form.cdr());
    }
    if (function.isNil())
        return apply(function, head, {});
    const std::size_t start = values_.size();
    for (const Value* rest = &form.cdr(); rest->isCons(); rest = &rest->cdr())
        if (!values_.push(evaluate(rest->car())))
            throwError("stack overflow");
    Value result = apply(function, head, values_.from(start));
    values_.shrink(start);
    return result;
}

Value Evaluator::apply(const Value& function, const Value& name, Arguments args) {
    switch (function.type()) {
    case Type::Builtin:
        return callBuiltin(function.builtin(), args);
    case Type::Lambda:
        return callLambda(function, args);
    case Type::External:
        return callExternal(function, args);
    case Type::Nil:
        throwError("no function definition: " + toText(name, PrintStyle::Readable, 200));
    default:
        if (function.isCons() && function.car().isSymbol() && &function.car().symbol() == &lambdaSymbol_)
            return callLambda(resolve(function), args);
        throwError("bad function: " + toText(function, PrintStyle::Readable, 200));
    }
}

Value Evaluator::call(const Value& function, Arguments args) {
    const Level level(*this);
    spend();
    return apply(resolve(function), function, args);
}

Value Evaluator::resolve(const Value& function) {
    if (function.isSymbol())
        return function.symbol().value();
    if (function.isCons() && function.car().isSymbol() && &function.car().symbol() == &lambdaSymbol_) {
        if (!function.cdr().isCons())
            throwTooFew();
        return makeLambda("-lambda-", function.cdr().car(), function.cdr().cdr());
    }
    return function;
}

Value Evaluator::callBuiltin(const Builtin& builtin, Arguments args) {
    if (builtin.special)
        throwError(std::string("bad function: ") + builtin.name);
    checkCount(builtin, args.size());
    return builtin.function(*this, args);
}

Value Evaluator::callLambda(const Value& function, Arguments args) {
    const LambdaCell& lambda = function.lambda();
    if (args.size() < lambda.parameters.size())
        throwTooFew();
    if (args.size() > lambda.parameters.size())
        throwTooMany();
    const std::size_t start = bindings_.size();
    for (std::size_t i = 0; i < args.size(); ++i)
        bind(*lambda.parameters[i], args[i]);
    for (Symbol* local : lambda.locals)
        bind(*local, Value());
    Value result = evaluateAll(lambda.body);
    undoBindings(start);
    return result;
}

Value Evaluator::callExternal(const Value& function, Arguments args) {
    ExternalCell& external = function.external();
    if (external.ended || !external.function)
        throwError("no function definition: " + external.name);
    struct Running {
        explicit Running(ExternalCell& cell) : cell_(cell) { ++cell_.running; }
        ~Running() {
            if (--cell_.running == 0 && cell_.ended)
                cell_.function = nullptr;
        }
        ExternalCell& cell_;
    } const running(external);
    return valueOrThrow(external.function(args));
}

Value Evaluator::makeLambda(std::string name, const Value& parameters, const Value& body) {
    auto lambda = std::make_unique<LambdaCell>();
    lambda->name = std::move(name);
    std::vector<Symbol*>* names = &lambda->parameters;
    const Value* rest = &parameters;
    for (; rest->isCons(); rest = &rest->cdr()) {
        if (!rest->car().isSymbol() || rest->car().symbol().isConstant())
            throwError("bad formal argument list: " + toText(parameters, PrintStyle::Readable, 200));
        Symbol& symbol = rest->car().symbol();
        if (symbol.name() == "/")
            names = &lambda->locals;
        else
            names->push_back(&symbol);
    }
    if (!rest->isNil())
        throwError("bad formal argument list: " + toText(parameters, PrintStyle::Readable, 200));
    lambda->body = body;
    return Heap::makeLambda(std::move(lambda));
}

Value Evaluator::evaluateText(std::string_view text, std::string_view source) {
    Reader reader(symbols_);
    reader.feed(text);
    Value form;
    Value result;
    const auto place = [&](std::size_t line) {
        return source.empty() ? std::string() : std::string(source) + ", line " + std::to_string(line);
    };
    for (;;) {
        Reader::Status status = reader.next(form);
        if (status == Reader::Status::NeedMore) {
            status = reader.finish();
            if (status == Reader::Status::NeedMore)
                return result;
        }
        if (status == Reader::Status::Error)
            throw LispError{{FailureKind::Error, reader.error(), place(reader.line())}};
        try {
            result = evaluate(form);
        } catch (LispError& error) {
            if (error.failure.place.empty())
                error.failure.place = place(reader.formLine());
            throw;
        }
    }
}

} // namespace vndk::lisp
