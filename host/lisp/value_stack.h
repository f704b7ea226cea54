// The stack on which arguments are gathered. Its storage never moves, so spans into it stay valid while it grows.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <span>

#include "lisp/value.h"

namespace vndk::lisp {

class ValueStack {
public:
    /// Memory is only touched, and so only used, as far as the stack has grown.
    explicit ValueStack(std::size_t capacity)
        : storage_(static_cast<Value*>(::operator new(capacity * sizeof(Value)))), top_(storage_),
          end_(storage_ + capacity) {}
    ~ValueStack() {
        shrink(0);
        ::operator delete(storage_);
    }
    ValueStack(const ValueStack&) = delete;
    ValueStack& operator=(const ValueStack&) = delete;

    std::size_t size() const { return static_cast<std::size_t>(top_ - storage_); }
    /// False when the stack is full.
    [[nodiscard]] bool push(Value&& value) {
        if (top_ == end_)
            return false;
        new (top_) Value(std::move(value));
        ++top_;
        return true;
    }
    /// REQUIRES: `size` is not above size().
    void shrink(std::size_t size) {
        while (top_ != storage_ + size)
            (--top_)->~Value();
    }
    std::span<const Value> from(std::size_t start) const { return {storage_ + start, top_}; }

private:
    Value* storage_;
    Value* top_;
    Value* end_;
};

} // namespace vndk::lisp
