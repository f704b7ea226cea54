// The command line: takes typed text, runs commands and LISP, feeds prompts.
//
//     host.commandLine().input().feed("LINE 0,0 10,10\n\n(c:_bInsert \"DESK\" (list 1 2 0))\n");
//     while (host.commandLine().step().ran) ...
//
// Each step runs one command or expression to its end; prompts within take their answers from the same input. At the
// command prompt: a name runs a command, that of a system variable SETVAR on it, `(` or `!` begins LISP, an empty
// answer repeats the last command, code 27 does nothing. A command runs on the caller's stack, with its prompts nested,
// unless LISP's (command ...) started it: that one waits on a stack of its own while LISP goes on, and takes further
// answers from later calls or, when the expression has ended, from the typed input.
#pragma once

#include "ed/builtin_commands.h"
#include "ed/input.h"

#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

class AcApDocument;

namespace vndk::host {

class Host;
class SuspendedCommands;
struct SuspendedCommand;

/// Why a command or an expression didn't do its work.
struct Problem {
    enum class Kind { UnknownCommand, CommandFailed, CommandCancelled, LispError, InvalidAnswer, DrawingFailed };
    Kind kind;
    std::string message; ///< as it was printed, without line ends
    size_t line;         ///< line of the typed text in which the command or expression began, from 1
};

/// What happens when an answer can't be taken by its prompt.
enum class InvalidAnswers {
    AskAgain,    ///< as at a keyboard
    FailCommand, ///< as in a batch run: the command ends, failed
};

struct StepResult {
    bool ran = false;               ///< false: there is no more input
    std::optional<Problem> problem; ///< the first one of this step
};

class CommandLine {
public:
    explicit CommandLine(Host& host);
    ~CommandLine();
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;

    InputQueue& input() { return input_; }
    /// Not owned; null for none.
    void setSource(PromptSource* source) { source_ = source; }
    /// True when somebody is there to be asked in dialogs, and hasn't typed the answer ahead.
    bool asksUser() const { return source_ && input_.empty() && fed_.empty(); }
    void setInvalidAnswers(InvalidAnswers rule) { invalidAnswers_ = rule; }
    InvalidAnswers invalidAnswers() const { return invalidAnswers_; }

    /// Runs the next command or expression. A run within a step (from a window's message loop) is refused.
    StepResult step();
    /// Steps until the input is used up; gives the first problem.
    std::optional<Problem> run();

    /// True within step().
    bool isStepping() const { return stepping_; }
    /// True while a command of any kind runs.
    bool commandActive() const { return !running_.empty(); }
    /// Global name of the running command, outermost first, joined by apostrophes as CMDNAMES shows them.
    std::string commandNames() const;

    /// Runs a command by name at once, on the caller's stack, in its own undo group unless one is open.
    CommandResult runCommand(std::string_view typedName);
    /// (command ...) of LISP and acedCommand: gives values to the command that asks, or starts commands with them; a
    /// module's command that calls it starts another one. No values: cancels. False: a name is unknown.
    enum class Caller { Lisp, Module };
    bool command(std::span<const lisp::Value> values, Caller caller = Caller::Lisp);

    /// For Prompts: prints the prompt and takes an answer. Expressions come back as values; transparent commands
    /// have been run.
    Answer ask(const PromptRequest& request, TextForm form);
    /// Prints the complaint about an answer. False: the prompt shouldn't ask again.
    bool complain(std::string_view complaint, std::string_view answer);
    /// Keeps the first problem of a step.
    void report(Problem::Kind kind, std::string message);

    /// Gives up the step that runs: until it ends, every prompt that would take typed input is cancelled.
    void abandonStep() { abandoned_ = stepping_; }
    /// Line of the typed text in which the command or expression that runs began, from 1.
    size_t beganLine() const { return beganLine_; }

    /// Opens the undo group of the expression that runs at the command line, unless a command is running.
    void openExpressionGroup(const char* name);

private:
    struct Running;
    friend class SuspendedCommands;

    /// What a typed name leads to.
    struct Call {
        AcEdCommand* command;
        std::string variable; // for SETVAR, when its name was typed in place of the command's
    };

    void runAnswer(Answer answer);
    std::optional<Call> findCall(std::string_view typed) const;
    void runName(const std::string& typed);
    void reportUnknown(const std::string& name);
    void runExpression(const std::string& text);
    bool runLispCommand(const std::string& typed);
    void finishLisp(lisp::Outcome<lisp::Value> result, size_t depth);
    CommandResult execute(const Call& call, SuspendedCommand* feeder);
    bool keepsPickedFirst(const AcEdCommand& command) const;
    CommandResult runFunction(const Call& call, Running& running);
    void tellEnd(const Running& running, CommandResult result);

    Answer take(const PromptRequest& request, TextForm form);
    Answer takeTyped(AnswerForm form, const PromptRequest& request);
    Answer takeOuter(TextForm form, const PromptRequest& request);
    bool evaluate(Answer& answer);
    bool runTransparent(const Answer& answer);
    void echo(const Answer& answer);
    bool& answerRefused();

    /// Commands that run now, one within the other.
    size_t depth() const { return running_.size(); }
    void closeExpressionGroup();

    Host& host_;
    InputQueue input_;
    PromptSource* source_ = nullptr;
    InvalidAnswers invalidAnswers_ = InvalidAnswers::AskAgain;
    std::vector<Running*> running_;
    std::unique_ptr<SuspendedCommands> suspended_;
    std::deque<lisp::Value> fed_; // values for the next prompt, or for commands to begin
    std::optional<Problem> problem_;
    std::string lastCommand_;
    size_t beganLine_ = 0;
    AcApDocument* groupDocument_ = nullptr;
    bool cancelFed_ = false; // (command) at a prompt
    bool expressionRefused_ = false;
    bool stepping_ = false;
    bool abandoned_ = false;
};

} // namespace vndk::host
