#include "lisp/interpreter.h"

#include "evaluator.h"
#include "heap.h"

namespace vndk::lisp {

Interpreter::Interpreter(HostLink& host, const Limits& limits)
    : evaluator_(std::make_unique<Evaluator>(host, limits)) {}

Interpreter::~Interpreter() = default;

SymbolTable& Interpreter::symbols() { return evaluator_->symbols(); }

Outcome<Value> Interpreter::evaluate(const Value& form) {
    return evaluator_->guard([&] { return evaluator_->evaluate(form); });
}

Outcome<Value> Interpreter::evaluateText(std::string_view text, std::string_view source) {
    return evaluator_->guard([&] { return evaluator_->evaluateText(text, source); });
}

Outcome<Value> Interpreter::call(const Value& function, std::span<const Value> args) {
    return evaluator_->guard([&] { return evaluator_->call(function, args); });
}

Value Interpreter::variable(std::string_view name) const {
    const Symbol* symbol = evaluator_->symbols().find(name);
    return symbol ? symbol->value() : Value();
}

bool Interpreter::setVariable(std::string_view name, Value value) {
    Symbol& symbol = evaluator_->symbols().intern(name);
    if (symbol.isConstant())
        return false;
    symbol.setValue(std::move(value));
    return true;
}

void Interpreter::defineExternal(std::string_view name, ExternalFunction function) {
    Symbol& symbol = evaluator_->symbols().intern(name);
    symbol.setValue(Value::external(symbol.name(), std::move(function)));
}

bool Interpreter::undefineExternal(std::string_view name) {
    Symbol* symbol = evaluator_->symbols().find(name);
    if (!symbol || symbol->value().type() != Type::External)
        return false;
    const Value former = symbol->exchangeValue(Value());
    former.external().end();
    return true;
}

std::optional<Value> Interpreter::findCommand(std::string_view name) const {
    Value function = variable("C:" + std::string(name));
    if (!function.isFunction())
        return std::nullopt;
    return function;
}

void Interpreter::requestBreak() noexcept { evaluator_->requestBreak(); }

} // namespace vndk::lisp
