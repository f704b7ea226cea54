// The symbols of one interpreter. Names don't differ by case and are kept in capitals.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "lisp/value.h"

namespace vndk::lisp {

/// A name with its value. Functions and variables share the one place; an unbound symbol's value is nil.
class Symbol {
public:
    enum class Kind : std::uint8_t { Variable, Constant };

    explicit Symbol(std::string name, Kind kind = Kind::Variable) : name_(std::move(name)), kind_(kind) {}
    Symbol(const Symbol&) = delete;
    Symbol& operator=(const Symbol&) = delete;

    const std::string& name() const { return name_; }
    /// A constant (T) refuses assignment; whoever assigns asks first.
    bool isConstant() const { return kind_ == Kind::Constant; }
    const Value& value() const { return value_; }
    void setValue(Value value) { value_ = std::move(value); }
    Value exchangeValue(Value value) {
        value_.swap(value);
        return value;
    }

private:
    std::string name_;
    Value value_;
    Kind kind_;
};

class SymbolTable {
public:
    SymbolTable();
    ~SymbolTable();
    SymbolTable(const SymbolTable&) = delete;
    SymbolTable& operator=(const SymbolTable&) = delete;

    /// The symbol of this name, made when there is none. Stays valid as long as the table.
    Symbol& intern(std::string_view name);
    /// Null when no text ever named it.
    Symbol* find(std::string_view name) const;

private:
    std::size_t slotOf(std::string_view name, std::uint32_t hash) const;
    void grow();

    std::deque<Symbol> symbols_;
    std::vector<Symbol*> slots_;
    std::size_t used_ = 0;
};

} // namespace vndk::lisp
