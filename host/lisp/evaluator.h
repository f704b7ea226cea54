// The evaluator: walks forms, binds variables dynamically, and keeps within the limits.
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include "builtin.h"
#include "error.h"
#include "lisp/host_link.h"
#include "lisp/interpreter.h"
#include "lisp/symbol_table.h"
#include "value_stack.h"

namespace vndk::lisp {

class Evaluator {
public:
    Evaluator(HostLink& host, const Limits& limits);

    HostLink& host() { return host_; }
    SymbolTable& symbols() { return symbols_; }
    const Limits& limits() const { return limits_; }

    Value evaluate(const Value& form);
    /// The last value of a list of forms, nil when it is empty.
    Value evaluateAll(const Value& forms);
    /// Reads and evaluates all of `text`. Errors get the place in `source` unless it is empty.
    Value evaluateText(std::string_view text, std::string_view source);
    /// Calls a function, a function's symbol or a lambda list with evaluated arguments.
    Value call(const Value& function, Arguments args);

    /// Makes a function from (parameters . body).
    Value makeLambda(std::string name, const Value& parameters, const Value& body);

    /// Counts one step of work; throws when the user breaks or the steps are used up.
    void spend() {
        if (--stepsLeft_ == 0 || broken_.load(std::memory_order_relaxed))
            stopOrGoOn();
    }
    void requestBreak() noexcept { broken_.store(true, std::memory_order_relaxed); }

    /// Binds a variable until the bindings are undone to an earlier mark. Errors leave the bindings in place, so that
    /// an *error* function sees them; whoever catches the error undoes them.
    void bind(Symbol& symbol, Value value);
    struct Mark {
        std::size_t bindings;
        std::size_t values;
        std::size_t depth;
    };
    Mark mark() const { return {bindings_.size(), values_.size(), depth_}; }
    void undoTo(const Mark& mark);
    void undoBindings(std::size_t count);

    /// Runs `work` for a caller outside: errors become failures, *error* is called, everything is undone.
    template <class Work>
    Outcome<Value> guard(Work work);

private:
    class Level;
    struct Binding {
        Symbol* symbol;
        Value former;
    };

    Value evaluateCall(const Value& form);
    Value apply(const Value& function, const Value& name, Arguments args);
    Value callBuiltin(const Builtin& builtin, Arguments args);
    Value callLambda(const Value& function, Arguments args);
    Value callExternal(const Value& function, Arguments args);
    Value resolve(const Value& function);
    void beginOutermost();
    [[gnu::cold]] void stopOrGoOn();
    Failure handle(Failure failure, const Mark& mark);

    HostLink& host_;
    Limits limits_;
    SymbolTable symbols_;
    Symbol& errorSymbol_;
    Symbol& lambdaSymbol_;
    ValueStack values_;
    std::vector<Binding> bindings_;
    std::size_t depth_ = 0;
    std::size_t entries_ = 0;
    const char* stackBase_ = nullptr;
    std::uint64_t stepsLeft_ = 0;
    std::atomic<bool> broken_ = false;
};

template <class Work>
Outcome<Value> Evaluator::guard(Work work) {
    if (entries_ == 0)
        beginOutermost();
    const Mark start = mark();
    ++entries_;
    Outcome<Value> outcome = Value();
    try {
        outcome = work();
    } catch (LispError& error) {
        outcome = handle(std::move(error.failure), start);
    } catch (const std::bad_alloc&) {
        outcome = handle({FailureKind::Error, "out of memory"}, start);
    } catch (const std::exception& error) {
        outcome = handle({FailureKind::Error, error.what()}, start);
    }
    undoTo(start);
    --entries_;
    return outcome;
}

} // namespace vndk::lisp
