// The LISP value: 16 bytes, cheap to copy, shared by reference counting.
//
// Values are immutable, so data never holds a cycle and counting frees everything. Copying, freeing, comparing and
// printing never recurse, whatever the depth of a list. Values and their counters belong to the host's one LISP
// thread. A symbol is owned by the symbol table of its interpreter: a value that holds one must not outlive it.
//
//     Value point = Value::list({Value::real(1.0), Value::real(2.0), Value::real(0.0)});
//     for (const Value* rest = &point; rest->isCons(); rest = &rest->cdr())
//         use(rest->car().real());
#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "lisp/outcome.h"

namespace vndk::lisp {

class Symbol;
class Value;
struct Builtin;
struct Cell;
struct ConsCell;
struct StringCell;
struct LambdaCell;
struct ExternalCell;

/// A function that compiled code registers with an interpreter; its arguments are evaluated.
using ExternalFunction = std::function<Outcome<Value>(std::span<const Value>)>;

/// Those from String on live on the heap and are counted.
enum class Type : std::uint8_t {
    Nil,
    Symbol,
    Int,
    Real,
    Ename,
    PickSet,
    Builtin,
    String,
    CaughtError,
    Cons,
    Lambda,
    External,
};

class Value {
public:
    /// nil.
    Value() noexcept { payload_.bits = 0; }
    Value(const Value& other) noexcept : payload_(other.payload_), type_(other.type_) { retain(); }
    Value(Value&& other) noexcept : payload_(other.payload_), type_(other.type_) { other.type_ = Type::Nil; }
    Value& operator=(const Value& other) noexcept {
        Value copy(other);
        swap(copy);
        return *this;
    }
    Value& operator=(Value&& other) noexcept {
        Value taken(std::move(other));
        swap(taken);
        return *this;
    }
    ~Value() { release(); }

    static Value integer(std::int32_t number) noexcept;
    static Value real(double number) noexcept;
    static Value symbol(Symbol& symbol) noexcept;
    static Value builtin(const Builtin& builtin) noexcept;
    /// An entity name: 64 bits whose meaning only the host knows.
    static Value ename(std::uint64_t id) noexcept;
    /// A selection set: 64 bits whose meaning only the host knows.
    static Value pickSet(std::uint64_t id) noexcept;
    /// Copies `text` (8-bit, may hold any byte). Throws std::bad_alloc when the heap's limit is reached.
    static Value string(std::string_view text);
    /// What vl-catch-all-apply returns for a failed call.
    static Value caughtError(std::string_view message);
    static Value cons(Value car, Value cdr);
    static Value list(std::initializer_list<Value> items);
    static Value list(std::span<const Value> items);
    static Value external(std::string name, ExternalFunction function);
    /// The symbol T, the same one in every interpreter.
    static Value t() noexcept;
    /// T or nil.
    static Value truth(bool condition) noexcept { return condition ? t() : Value(); }
    /// The nameless symbol that (princ) returns, so that a function can end without an echo.
    static Value quiet() noexcept;

    Type type() const noexcept { return type_; }
    bool isNil() const noexcept { return type_ == Type::Nil; }
    bool isSymbol() const noexcept { return type_ == Type::Symbol; }
    bool isInt() const noexcept { return type_ == Type::Int; }
    bool isReal() const noexcept { return type_ == Type::Real; }
    bool isNumber() const noexcept { return isInt() || isReal(); }
    bool isString() const noexcept { return type_ == Type::String; }
    bool isCons() const noexcept { return type_ == Type::Cons; }
    bool isEname() const noexcept { return type_ == Type::Ename; }
    bool isPickSet() const noexcept { return type_ == Type::PickSet; }
    bool isFunction() const noexcept {
        return type_ == Type::Builtin || type_ == Type::Lambda || type_ == Type::External;
    }
    bool isQuiet() const noexcept;

    /// Each REQUIRES that the value is of its type.
    std::int32_t integer() const noexcept {
        assert(isInt() && "integer() of another type");
        return payload_.integer;
    }
    double real() const noexcept {
        assert(isReal() && "real() of another type");
        return payload_.real;
    }
    /// REQUIRES: isNumber().
    double number() const noexcept { return isInt() ? payload_.integer : real(); }
    /// REQUIRES: isEname() or isPickSet().
    std::uint64_t id() const noexcept {
        assert((isEname() || isPickSet()) && "id() of another type");
        return payload_.bits;
    }
    Symbol& symbol() const noexcept {
        assert(isSymbol() && "symbol() of another type");
        return *payload_.symbol;
    }
    const Builtin& builtin() const noexcept { return *payload_.builtin; }
    /// REQUIRES: a string or a caught error. Valid as long as a value holds the string.
    std::string_view text() const noexcept;
    /// REQUIRES: isCons(). Valid as long as a value holds the pair.
    const Value& car() const noexcept;
    const Value& cdr() const noexcept;
    const LambdaCell& lambda() const noexcept;
    ExternalCell& external() const noexcept;

    /// The same object, or the same number, string, symbol or id; pairs only when they are the same pair.
    bool identical(const Value& other) const noexcept;

    void swap(Value& other) noexcept {
        std::swap(payload_, other.payload_);
        std::swap(type_, other.type_);
    }

private:
    friend class ListBuilder;
    friend class Heap;
    union Payload {
        std::int32_t integer;
        double real;
        std::uint64_t bits;
        Symbol* symbol;
        const Builtin* builtin;
        Cell* cell;
    };

    bool counted() const noexcept { return type_ >= Type::String; }
    inline void retain() noexcept;
    inline void release() noexcept;

    Payload payload_;
    Type type_ = Type::Nil;
};

/// The head of everything on the heap. A cell on its way to be freed uses the counter's place as a link.
struct Cell {
    union {
        std::uint64_t references;
        Cell* next;
    };
};

struct ConsCell : Cell {
    Value car;
    Value cdr;
};

/// The characters follow the struct.
struct StringCell : Cell {
    std::size_t length;
    const char* characters() const noexcept { return reinterpret_cast<const char*>(this + 1); }
};

/// Frees a cell whose last reference has gone, and all that only it held.
void releaseCell(Type type, Cell* cell) noexcept;

inline void Value::retain() noexcept {
    if (counted())
        ++payload_.cell->references;
}

inline void Value::release() noexcept {
    if (counted() && --payload_.cell->references == 0)
        releaseCell(type_, payload_.cell);
}

inline Value Value::integer(std::int32_t number) noexcept {
    Value value;
    value.type_ = Type::Int;
    value.payload_.integer = number;
    return value;
}

inline Value Value::real(double number) noexcept {
    Value value;
    value.type_ = Type::Real;
    value.payload_.real = number;
    return value;
}

inline Value Value::symbol(Symbol& symbol) noexcept {
    Value value;
    value.type_ = Type::Symbol;
    value.payload_.symbol = &symbol;
    return value;
}

inline Value Value::builtin(const Builtin& builtin) noexcept {
    Value value;
    value.type_ = Type::Builtin;
    value.payload_.builtin = &builtin;
    return value;
}

inline std::string_view Value::text() const noexcept {
    assert((isString() || type_ == Type::CaughtError) && "text() of another type");
    const auto* cell = static_cast<const StringCell*>(payload_.cell);
    return {cell->characters(), cell->length};
}

inline const Value& Value::car() const noexcept {
    assert(isCons() && "car() of another type");
    return static_cast<const ConsCell*>(payload_.cell)->car;
}

inline const Value& Value::cdr() const noexcept {
    assert(isCons() && "cdr() of another type");
    return static_cast<const ConsCell*>(payload_.cell)->cdr;
}

/// Builds a list from front to back in constant time an element.
class ListBuilder {
public:
    void append(Value item);
    bool empty() const { return head_.isNil(); }
    /// The list, ended by `tail` (nil makes it a proper list). The builder is empty again afterwards.
    /// REQUIRES: `tail` is nil when nothing was appended.
    Value finish(Value tail = Value());

private:
    Value head_;
    ConsCell* tail_ = nullptr;
};

} // namespace vndk::lisp
