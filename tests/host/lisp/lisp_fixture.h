// A LISP with a recording host, and tables of expressions with the text they print.
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "lisp/interpreter.h"
#include "lisp/printer.h"

namespace vndk::lisp {

/// Keeps what LISP asks for and answers from tables.
class RecordingHost : public HostLink {
public:
    std::string output;
    std::vector<std::string> commands;
    std::map<std::string, Value, std::less<>> variables;
    std::map<std::string, std::string, std::less<>> files;

    void print(std::string_view text) override { output += text; }
    Outcome<Value> getVariable(std::string_view name) override {
        const auto found = variables.find(name);
        return found == variables.end() ? Value() : found->second;
    }
    Outcome<Value> setVariable(std::string_view name, const Value& value) override {
        if (variables.find(name) == variables.end())
            return Failure{FailureKind::Error, "unknown variable " + std::string(name)};
        return variables.find(name)->second = value;
    }
    Outcome<Value> command(std::span<const Value> args) override {
        commands.push_back(toText(Value::list(args), PrintStyle::Readable));
        return Value();
    }
    Outcome<std::string> loadFile(std::string_view name) override {
        const auto found = files.find(name);
        if (found == files.end())
            return Failure{FailureKind::Error, "LOAD failed: \"" + std::string(name) + "\""};
        return found->second;
    }
    Outcome<Value> entlast() override { return Value::ename(0x2f); }
    Outcome<Value> entnext(std::optional<std::uint64_t> ename) override {
        return ename ? Value::ename(*ename + 1) : Value::ename(0x10);
    }
    Outcome<Value> getString(Blanks blanks, std::string_view prompt) override {
        output += prompt;
        return Value::string(blanks == Blanks::Allowed ? "with blanks" : "word");
    }
    Outcome<Value> getPoint(const Value&, std::string_view) override {
        return Failure{FailureKind::Cancelled, "Function cancelled"};
    }
};

struct Case {
    const char* expression;
    const char* printed;
};

class LispTest : public testing::Test {
protected:
    RecordingHost host;
    Interpreter lisp{host};

    /// What the command line shows: the value as prin1 writes it, or the error's line.
    std::string run(std::string_view text) {
        const Outcome<Value> result = lisp.evaluateText(text);
        return result ? toText(result.value(), PrintStyle::Readable) : formatFailure(result.failure());
    }

    void check(std::initializer_list<Case> cases) {
        for (const Case& row : cases)
            EXPECT_EQ(run(row.expression), row.printed) << row.expression;
    }
};

} // namespace vndk::lisp
