#include "lisp/value.h"

#include "heap.h"
#include "lisp/symbol_table.h"

namespace vndk::lisp {

namespace {

Symbol& symbolT() {
    static Symbol& symbol = []() -> Symbol& {
        auto* made = new Symbol("T", Symbol::Kind::Constant);
        made->setValue(Value::symbol(*made));
        return *made;
    }();
    return symbol;
}

Symbol& namelessSymbol() {
    static Symbol& symbol = *new Symbol("", Symbol::Kind::Constant);
    return symbol;
}

} // namespace

std::string formatFailure(const Failure& failure) {
    if (failure.handled)
        return {};
    std::string text = "; error: " + failure.message;
    if (!failure.place.empty())
        text += " (" + failure.place + ")";
    return text;
}

Value Value::ename(std::uint64_t id) noexcept {
    Value value;
    value.type_ = Type::Ename;
    value.payload_.bits = id;
    return value;
}

Value Value::pickSet(std::uint64_t id) noexcept {
    Value value;
    value.type_ = Type::PickSet;
    value.payload_.bits = id;
    return value;
}

Value Value::string(std::string_view text) { return Heap::instance().makeString(Type::String, text); }

Value Value::caughtError(std::string_view message) { return Heap::instance().makeString(Type::CaughtError, message); }

Value Value::cons(Value car, Value cdr) {
    return Heap::adopt(Type::Cons, Heap::instance().makePair(std::move(car), std::move(cdr)));
}

Value Value::list(std::span<const Value> items) {
    Value result;
    for (std::size_t i = items.size(); i-- > 0;)
        result = cons(items[i], std::move(result));
    return result;
}

Value Value::list(std::initializer_list<Value> items) {
    return list(std::span<const Value>(items.begin(), items.size()));
}

Value Value::external(std::string name, ExternalFunction function) {
    auto cell = std::make_unique<ExternalCell>();
    cell->name = std::move(name);
    cell->function = std::move(function);
    return Heap::makeExternal(std::move(cell));
}

Value Value::t() noexcept { return symbol(symbolT()); }

Value Value::quiet() noexcept { return symbol(namelessSymbol()); }

bool Value::isQuiet() const noexcept { return isSymbol() && payload_.symbol == &namelessSymbol(); }

const LambdaCell& Value::lambda() const noexcept {
    assert(type_ == Type::Lambda && "lambda() of another type");
    return *static_cast<const LambdaCell*>(payload_.cell);
}

ExternalCell& Value::external() const noexcept {
    assert(type_ == Type::External && "external() of another type");
    return *static_cast<ExternalCell*>(payload_.cell);
}

bool Value::identical(const Value& other) const noexcept {
    if (type_ != other.type_)
        return false;
    switch (type_) {
    case Type::Nil:
        return true;
    case Type::Int:
        return payload_.integer == other.payload_.integer;
    case Type::Real:
        return payload_.real == other.payload_.real;
    case Type::String:
        return text() == other.text();
    default:
        return payload_.bits == other.payload_.bits;
    }
}

void ListBuilder::append(Value item) {
    ConsCell* cell = Heap::instance().makePair(std::move(item), Value());
    Value pair = Heap::adopt(Type::Cons, cell);
    if (tail_)
        tail_->cdr = std::move(pair);
    else
        head_ = std::move(pair);
    tail_ = cell;
}

Value ListBuilder::finish(Value tail) {
    assert((tail_ || tail.isNil()) && "a dotted tail needs an element before it");
    if (tail_)
        tail_->cdr = std::move(tail);
    tail_ = nullptr;
    return std::move(head_);
}

} // namespace vndk::lisp
