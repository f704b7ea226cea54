// The commands that (command ...) has begun and that wait for more values.
//
// Such a command runs on a stack of its own. It goes on whenever it gets values, until it asks for one that isn't
// there; LISP goes on meanwhile. When the expression that began it has ended, the user answers for it.
#pragma once

#include "ed/command_line.h"
#include "ed/fiber.h"

#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace vndk::host {

/// What a prompt gets when it is answered by a value: strings are taken as if they were typed.
Answer answerFromValue(lisp::Value value);

/// One of them. It runs in its fiber until it needs an answer that isn't there.
struct SuspendedCommand {
    std::unique_ptr<Fiber> fiber;
    size_t depth = 0; // commands that run below it
    std::deque<lisp::Value> values;
    bool cancel = false;
    // What it asks for while it waits, and what it gets then.
    bool wantsUser = false; // a PAUSE stood in place of the answer
    bool asksUser = false;  // the user is being asked in its name
    PromptRequest request;  // its texts lie on the fiber's stack
    TextForm form = TextForm::Word;
    std::optional<Answer> answer;
};

class SuspendedCommands {
public:
    explicit SuspendedCommands(CommandLine& line) : line_(line) {}

    /// True when a command waits that values given now would go to.
    bool waits() const { return waiting() != nullptr; }
    /// Gives the values to the command that waits; what it leaves begins other commands. False: a name is unknown.
    bool give(std::deque<lisp::Value> values);
    /// Cancels the command that waits, if any.
    void cancelWaiting();

    /// The expression that began commands above `depth` has ended: the user answers until they have ended too.
    void finish(size_t depth);
    /// The same for an expression that failed: they are cancelled.
    void cancel(size_t depth);

    /// For a prompt of such a command: its next value, or what the user gives in its place. Called in its fiber.
    static Answer take(SuspendedCommand& command, const PromptRequest& request, TextForm form);

private:
    SuspendedCommand* waiting() const;
    bool begin(const lisp::Value& name);
    std::deque<lisp::Value> resume(SuspendedCommand& command);
    void askUser(SuspendedCommand& command);

    CommandLine& line_;
    std::vector<std::unique_ptr<SuspendedCommand>> commands_; // the innermost one last
};

} // namespace vndk::host
