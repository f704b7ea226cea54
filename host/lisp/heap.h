// The memory of LISP values: pooled pairs, counted strings, and limits that stop a runaway program.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "lisp/symbol_table.h"
#include "lisp/value.h"

namespace vndk::lisp {

/// A function made by defun or lambda.
struct LambdaCell : Cell {
    std::string name;
    std::vector<Symbol*> parameters;
    /// Those after the slash; bound to nil at a call.
    std::vector<Symbol*> locals;
    /// The list of expressions.
    Value body;
};

struct ExternalCell : Cell {
    std::string name;
    /// Empty once the function was undefined.
    ExternalFunction function;
    int running = 0;
    /// Undefined while running: `function` goes when the call returns.
    bool ended = false;

    void end() {
        ended = true;
        if (running == 0)
            function = nullptr;
    }
};

/// One for the process: values may be passed between the interpreters of several documents.
/// Exceeding a limit throws std::bad_alloc, which the evaluator turns into a LISP error.
class Heap {
public:
    static constexpr std::size_t maxPairs = 6'000'000;
    static constexpr std::size_t maxStringBytes = 512u << 20;

    static Heap& instance();

    ConsCell* makePair(Value&& car, Value&& cdr);
    Value makeString(Type type, std::string_view text);
    static Value makeLambda(std::unique_ptr<LambdaCell> lambda);
    static Value makeExternal(std::unique_ptr<ExternalCell> external);
    static Value adopt(Type type, Cell* cell) noexcept;
    void release(Type type, Cell* cell) noexcept;

private:
    void addChunk();
    void freePair(ConsCell* pair) noexcept;
    void freeString(StringCell* string) noexcept;
    void drop(Value&& value, ConsCell*& pending) noexcept;

    ConsCell* free_ = nullptr;
    std::size_t pairs_ = 0;
    std::size_t stringBytes_ = 0;
    std::vector<std::unique_ptr<std::byte[]>> chunks_;
};

} // namespace vndk::lisp
