// The LISP of one document: its symbols, its functions, and their evaluation.
//
//     Interpreter lisp(hostLink);
//     lisp.defineExternal("c:_hello", [](std::span<const Value>) -> Outcome<Value> { return Value::t(); });
//     Outcome<Value> result = lisp.evaluateText("(c:_hello)");
//
// Variables are bound dynamically. Nothing that a program does ends the host: endless recursion, endless lists and
// wrong data come back as failures, and all bindings made by the failed program are undone. When the symbol *ERROR*
// holds a function, it is called with the message while those bindings still stand, and the failure is `handled`.
// No exception leaves this class.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "lisp/host_link.h"
#include "lisp/symbol_table.h"
#include "lisp/value.h"

namespace vndk::lisp {

class Evaluator;

struct Limits {
    /// Machine stack that nested evaluation may use, measured from the outermost call.
    std::size_t stackBytes = 4u << 20;
    /// Nested calls; more is a "stack overflow" error.
    std::size_t depth = 20'000;
    /// Evaluation steps of one outermost call; 0 sets no limit.
    std::uint64_t steps = 0;
    /// Evaluated arguments of all calls under way together. Memory is used only as far as they are needed.
    std::size_t arguments = 1u << 21;
    /// Longest string that a program can make.
    std::size_t stringLength = 64u << 20;
};

class Interpreter {
public:
    /// `host` must outlive the interpreter.
    explicit Interpreter(HostLink& host, const Limits& limits = {});
    ~Interpreter();
    Interpreter(const Interpreter&) = delete;
    Interpreter& operator=(const Interpreter&) = delete;

    SymbolTable& symbols();

    Outcome<Value> evaluate(const Value& form);
    /// Evaluates all forms of `text` and returns the last one's value, nil when there is none. Forms before a wrong
    /// one have been evaluated. Failures name `source` and the line unless `source` is empty.
    Outcome<Value> evaluateText(std::string_view text, std::string_view source = {});
    /// Calls a function value, a symbol that names a function, or a lambda list.
    Outcome<Value> call(const Value& function, std::span<const Value> args);

    /// nil when nothing is bound.
    Value variable(std::string_view name) const;
    /// False when the name is a constant.
    bool setVariable(std::string_view name, Value value);

    /// Makes `function` callable under `name`, replacing what stood there.
    void defineExternal(std::string_view name, ExternalFunction function);
    /// Ends the external function everywhere, also where a program has kept a copy, so that the code behind it can be
    /// unloaded. False when the name is no external function.
    bool undefineExternal(std::string_view name);
    /// The function C:`name`, which the command line runs as a command; nothing when there is none.
    std::optional<Value> findCommand(std::string_view name) const;

    /// Ends the running evaluation at its next step with FailureKind::Break. May be called from a signal handler or
    /// another thread. Without a running evaluation it does nothing.
    void requestBreak() noexcept;

private:
    std::unique_ptr<Evaluator> evaluator_;
};

} // namespace vndk::lisp
