// What a LISP operation gives back: a value, or a failure with a kind and a message for people.
//
//     Outcome<Value> result = interpreter.evaluateText("(+ 1 2)");
//     if (!result)
//         console.print(formatFailure(result.failure()));
#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace vndk::lisp {

enum class FailureKind {
    Error,     ///< The program or its data is wrong.
    Cancelled, ///< The user cancelled a prompt. LISP code may catch it.
    Break,     ///< The user interrupted the evaluation. LISP code cannot catch it.
    Quit,      ///< (quit) or (exit).
    Limit,     ///< A limit of the interpreter (steps) was reached. LISP code cannot catch it.
};

struct Failure {
    FailureKind kind = FailureKind::Error;
    /// Without the leading "; error: ", as an *error* function receives it.
    std::string message;
    /// File and line when the text came from a file ("tools.lsp, line 12"), else empty.
    std::string place = {};
    /// True when a user's *error* function has already been told; there is nothing left to print.
    bool handled = false;
};

/// The line the command line prints for `failure`: "; error: divide by zero", with its place when there is one.
/// Empty when an *error* function has handled it.
std::string formatFailure(const Failure& failure);

template <class T>
class [[nodiscard]] Outcome {
public:
    Outcome(T value) : content_(std::in_place_index<0>, std::move(value)) {}
    Outcome(Failure failure) : content_(std::in_place_index<1>, std::move(failure)) {}

    explicit operator bool() const { return content_.index() == 0; }
    /// REQUIRES: the outcome is a value.
    T& value() {
        assert(*this && "value() of a failed outcome");
        return *std::get_if<0>(&content_);
    }
    const T& value() const {
        assert(*this && "value() of a failed outcome");
        return *std::get_if<0>(&content_);
    }
    /// REQUIRES: the outcome is a failure.
    Failure& failure() {
        assert(!*this && "failure() of a good outcome");
        return *std::get_if<1>(&content_);
    }
    const Failure& failure() const {
        assert(!*this && "failure() of a good outcome");
        return *std::get_if<1>(&content_);
    }

private:
    std::variant<T, Failure> content_;
};

} // namespace vndk::lisp
