#include "ed/command_line.h"

#include "ads/external_functions.h"
#include "db/symbol_table.h"
#include "ed/display.h"
#include "ed/host.h"
#include "ed/suspended_commands.h"
#include "lisp/interpreter.h"
#include "lisp/printer.h"

#include <cassert>
#include <utility>

namespace vndk::host {

using Kind = Answer::Kind;

/// A command that has begun and not ended.
struct CommandLine::Running {
    std::string name;
    SuspendedCommand* feeder; // null: its prompts ask the user
    bool cancelled = false;
    bool inputEnded = false;
    bool refused = false; // it got an answer that ends it
};

namespace {

AnswerForm answerForm(TextForm form, bool evaluatesText) {
    switch (form) {
    case TextForm::Word:
        return AnswerForm::Word;
    case TextForm::Name:
        return AnswerForm::Name;
    case TextForm::FileName:
        return AnswerForm::LineOrExpression;
    case TextForm::Line:
        break;
    }
    return evaluatesText ? AnswerForm::LineOrExpression : AnswerForm::Line;
}

class SetWhile {
public:
    explicit SetWhile(bool& flag) : flag_(flag), former_(std::exchange(flag, true)) {}
    ~SetWhile() { flag_ = former_; }
    SetWhile(const SetWhile&) = delete;
    SetWhile& operator=(const SetWhile&) = delete;

private:
    bool& flag_;
    bool former_;
};

} // namespace

CommandLine::CommandLine(Host& host) : host_(host), suspended_(std::make_unique<SuspendedCommands>(*this)) {}

CommandLine::~CommandLine() = default;

// The outer loop.

StepResult CommandLine::step() {
    StepResult result;
    if (stepping_)
        return result;
    {
        const SetWhile guard(stepping_);
        problem_.reset();
        expressionRefused_ = false;
        Answer answer = takeTyped(AnswerForm::Word, {"\nCommand: ", PromptRequest::Kind::Command});
        result.ran = answer.kind != Kind::End;
        beganLine_ = answer.line;
        if (result.ran)
            runAnswer(std::move(answer));
        // Values that a prompt's command left go on as if typed.
        while (!fed_.empty()) {
            const auto values = std::exchange(fed_, {});
            command(std::vector<lisp::Value>(values.begin(), values.end()));
            suspended_->finish(0);
        }
        cancelFed_ = false;
    }
    result.problem = std::move(problem_);
    problem_.reset();
    const bool failed = std::exchange(abandoned_, false) || result.problem;
    if (failed && invalidAnswers_ == InvalidAnswers::FailCommand)
        input_.dropLine();
    host_.documents().releaseClosed();
    return result;
}

std::optional<Problem> CommandLine::run() {
    std::optional<Problem> first;
    for (;;) {
        StepResult result = step();
        if (result.problem && !first)
            first = std::move(result.problem);
        if (!result.ran)
            return first;
    }
}

void CommandLine::runAnswer(Answer answer) {
    if (answer.kind == Kind::Cancel || answer.kind == Kind::Value)
        return;
    if (answer.text.empty()) {
        if (lastCommand_.empty())
            return;
        answer.text = lastCommand_;
    }
    host_.freshLine();
    host_.print("Command: ");
    echo(answer);
    if (answer.kind == Kind::Expression)
        runExpression(answer.text);
    else if (answer.text[0] == '!')
        runExpression(answer.text.substr(1));
    else
        runName(answer.text);
}

void CommandLine::echo(const Answer& answer) {
    host_.print(answer.text);
    host_.print("\n");
}

void CommandLine::report(Problem::Kind kind, std::string message) {
    if (!problem_)
        problem_ = Problem{kind, std::move(message), beganLine_};
}

std::optional<CommandLine::Call> CommandLine::findCall(std::string_view typed) const {
    if (AcEdCommand* const command = host_.commands().lookupTyped(typed))
        return Call{command, {}};
    const VariableRow* const row = SystemVariables::find(typed);
    AcEdCommand* const setvar = row ? host_.commands().lookupTyped("SETVAR") : nullptr;
    return setvar ? std::optional(Call{setvar, row->name}) : std::nullopt;
}

void CommandLine::runName(const std::string& typed) {
    const std::string name = typed[0] == '\'' ? typed.substr(1) : typed;
    const auto call = findCall(name);
    // A function of LISP goes before a variable's name.
    if ((!call || !call->variable.empty()) && runLispCommand(name))
        return;
    if (!call)
        return reportUnknown(acdbFoldName(name));
    lastCommand_ = name;
    execute(*call, nullptr);
}

void CommandLine::reportUnknown(const std::string& name) {
    host_.editor().reactors().tell([&](AcEditorReactor& r) { r.unknownCommand(name.c_str()); });
    const std::string message = "Unknown command \"" + name + "\".  Press F1 for help.";
    host_.freshLine();
    host_.print(message + "\n");
    report(Problem::Kind::UnknownCommand, message);
}

std::string CommandLine::commandNames() const {
    std::string names;
    for (const Running* running : running_)
        names += (names.empty() ? "" : "'") + running->name;
    return names;
}

// LISP.

void CommandLine::runExpression(const std::string& text) {
    AcApDocument* const document = host_.documents().curDocument();
    if (!document) {
        host_.print("There is no drawing. Open one or make a new one first.\n");
        return report(Problem::Kind::LispError, "There is no drawing to evaluate an expression in.");
    }
    host_.editor().reactors().tell([&](AcEditorReactor& r) { r.lispWillStart(text.c_str()); });
    const size_t depth = running_.size();
    finishLisp(document->lisp().evaluateText(text), depth);
}

bool CommandLine::runLispCommand(const std::string& typed) {
    AcApDocument* const document = host_.documents().curDocument();
    if (!document)
        return false;
    auto function = document->lisp().findCommand(typed);
    if (!function && typed.size() > 1 && typed[0] == '_')
        function = document->lisp().findCommand(typed.substr(1));
    if (!function)
        return false;
    lastCommand_ = typed;
    const std::string text = "(C:" + acdbFoldName(typed) + ")";
    host_.editor().reactors().tell([&](AcEditorReactor& r) { r.lispWillStart(text.c_str()); });
    const size_t depth = running_.size();
    finishLisp(document->lisp().call(*function, {}), depth);
    return true;
}

/// Ends an expression that began while `depth` commands ran: prints what it gave.
void CommandLine::finishLisp(lisp::Outcome<lisp::Value> result, size_t depth) {
    if (result)
        suspended_->finish(depth);
    else
        suspended_->cancel(depth);
    closeExpressionGroup();
    auto& reactors = host_.editor().reactors();
    if (result) {
        reactors.tell([](AcEditorReactor& r) { r.lispEnded(); });
        if (result.value().isQuiet())
            return;
        host_.freshLine();
        host_.print(lisp::toText(result.value(), lisp::PrintStyle::Readable));
        host_.print("\n");
        return;
    }
    reactors.tell([](AcEditorReactor& r) { r.lispCancelled(); });
    const std::string message = lisp::formatFailure(result.failure());
    if (!message.empty()) {
        host_.freshLine();
        host_.print(message + "\n");
    }
    if (result.failure().kind != lisp::FailureKind::Quit)
        report(Problem::Kind::LispError, message.empty() ? result.failure().message : message);
}

void CommandLine::openExpressionGroup(const char* name) {
    AcApDocument* const document = host_.documents().curDocument();
    if (groupDocument_ || !running_.empty() || !document)
        return;
    document->database()->undo().beginGroup(name);
    groupDocument_ = document;
}

void CommandLine::closeExpressionGroup() {
    if (AcApDocument* const document = std::exchange(groupDocument_, nullptr))
        document->database()->undo().endGroup();
}

// Commands.

CommandResult CommandLine::runCommand(std::string_view typedName) {
    const auto call = findCall(typedName);
    return call ? execute(*call, nullptr) : CommandResult::Failed;
}

CommandResult CommandLine::execute(const Call& call, SuspendedCommand* feeder) {
    const AcEdCommand& command = *call.command;
    const bool wasStepping = std::exchange(stepping_, true);
    // The row may be removed while its command runs.
    Running running{command.globalName(), feeder};
    AcApDocument* const document = host_.documents().curDocument();
    if (running_.empty() && !host_.externals().call())
        closeExpressionGroup();
    const bool grouped = document && (!command.builtIn() || command.builtIn()->undo == BuiltInCommand::Undo::Group);
    if (grouped)
        document->database()->undo().beginGroup(running.name);
    running_.push_back(&running);
    if (running_.size() == 1 && document && !keepsPickedFirst(command))
        document->pickedFirst.clear();
    host_.editor().reactors().tell([&](AcEditorReactor& r) { r.commandWillStart(running.name.c_str()); });
    const CommandResult result = runFunction(call, running);
    tellEnd(running, result);
    std::erase(running_, &running);
    if (running_.empty()) {
        host_.variables().saveProfile();
        if (Display* const display = host_.display())
            display->highlight({});
    }
    if (grouped)
        document->database()->undo().endGroup();
    if (!feeder)
        stepping_ = wasStepping;
    return result;
}

bool CommandLine::keepsPickedFirst(const AcEdCommand& command) const {
    return (command.commandFlags() & (ACRX_CMD_USEPICKSET | ACRX_CMD_TRANSPARENT)) != 0 &&
           host_.variables().getShort("PICKFIRST") != 0;
}

CommandResult CommandLine::runFunction(const Call& call, Running& running) {
    const AcEdCommand& command = *call.command;
    const BuiltInCommand* const row = command.builtIn();
    AcApDocument* const document = host_.documents().curDocument();
    // A module's command may ask until it gets an answer, which it never does without a drawing.
    if (!document && !(row && row->worksWithoutDrawing)) {
        host_.print("There is no drawing. Open one or make a new one first.\n");
        report(Problem::Kind::CommandFailed, running.name + " needs a drawing, and none is open.");
        return CommandResult::Failed;
    }
    if (const AcRxFunctionPtr function = command.functionAddr()) {
        function();
        return running.cancelled ? CommandResult::Cancelled : CommandResult::Done;
    }
    assert(row && "a command has a function or is the host's own");
    CommandContext context(host_, document, call.variable);
    return row->run(context);
}

void CommandLine::tellEnd(const Running& running, CommandResult result) {
    const char* const name = running.name.c_str();
    auto& reactors = host_.editor().reactors();
    switch (result) {
    case CommandResult::Done:
        reactors.tell([name](AcEditorReactor& r) { r.commandEnded(name); });
        break;
    case CommandResult::Cancelled:
        host_.freshLine();
        host_.print("*Cancel*\n");
        reactors.tell([name](AcEditorReactor& r) { r.commandCancelled(name); });
        break;
    case CommandResult::Failed:
        reactors.tell([name](AcEditorReactor& r) { r.commandFailed(name); });
        report(Problem::Kind::CommandFailed, running.name + " failed.");
        break;
    }
    // A cancel that was typed is the user's will; an end of the input in the middle of a command isn't.
    if (running.inputEnded)
        report(Problem::Kind::CommandCancelled, running.name + " was still asking when the input ended.");
}

// Answers.

Answer CommandLine::ask(const PromptRequest& request, TextForm form) {
    Answer answer;
    if (answerRefused())
        answer.kind = Kind::Cancel;
    else
        answer = take(request, form);
    const bool ended = answer.kind == Kind::End;
    if (ExternalFunctions::Call* const call = host_.externals().call(); call && running_.empty()) {
        call->inputEnded = ended;
    } else if (!running_.empty()) {
        running_.back()->cancelled = ended || answer.kind == Kind::Cancel;
        running_.back()->inputEnded = ended;
    }
    return answer;
}

Answer CommandLine::take(const PromptRequest& request, TextForm form) {
    SuspendedCommand* const feeder = running_.empty() ? nullptr : running_.back()->feeder;
    const bool silent = feeder && host_.variables().getShort("CMDECHO") == 0;
    // A prompt that brings its own line end leaves no empty line behind an answer that ended one.
    if (!silent)
        host_.print(request.text.substr(host_.atLineStart() && request.text.starts_with('\n') ? 1 : 0));
    Answer answer = feeder ? SuspendedCommands::take(*feeder, request, form) : takeOuter(form, request);
    if (!silent && answer.kind == Kind::Text)
        echo(answer);
    return answer;
}

/// Takes an answer as it was typed or sent, waiting for the user if need be.
Answer CommandLine::takeTyped(AnswerForm form, const PromptRequest& request) {
    if (abandoned_) {
        Answer cancel;
        cancel.kind = Kind::Cancel;
        return cancel;
    }
    PromptRequest asked = request;
    asked.form = form;
    host_.documents().deliverSentText();
    while (input_.empty() && source_ && source_->wait(input_, asked))
        host_.documents().deliverSentText();
    Answer answer = input_.take(form);
    const PromptRequest more{.text = "(_> ", .form = AnswerForm::Line};
    while (answer.kind == Kind::Expression && source_ && !isWholeExpression(answer.text) &&
           (!input_.empty() || source_->wait(input_, more)))
        answer.text += "\n" + input_.take(AnswerForm::Line).text;
    return answer;
}

/// Takes an answer of the user. Expressions have been evaluated and transparent commands run.
Answer CommandLine::takeOuter(TextForm form, const PromptRequest& request) {
    for (;;) {
        if (std::exchange(cancelFed_, false)) {
            Answer cancel;
            cancel.kind = Kind::Cancel;
            return cancel;
        }
        if (!fed_.empty()) {
            lisp::Value value = std::move(fed_.front());
            fed_.pop_front();
            return answerFromValue(std::move(value));
        }
        const bool evaluatesText = form != TextForm::Line || host_.variables().getShort("TEXTEVAL") == 1;
        Answer answer = takeTyped(answerForm(form, evaluatesText), request);
        if (!evaluatesText)
            return answer;
        if ((form == TextForm::Word || form == TextForm::Name) && runTransparent(answer))
            continue;
        if (evaluate(answer))
            return answer;
    }
}

bool CommandLine::runTransparent(const Answer& answer) {
    if (answer.kind != Kind::Text || answer.text.size() < 2 || answer.text[0] != '\'')
        return false;
    const auto call = findCall(std::string_view(answer.text).substr(1));
    if (!call || !(call->command->commandFlags() & ACRX_CMD_TRANSPARENT))
        return false;
    execute(*call, nullptr);
    return true;
}

/// Replaces an expression by its value. False: it has none that answers a prompt, so the prompt asks again.
bool CommandLine::evaluate(Answer& answer) {
    const bool variable = answer.kind == Kind::Text && answer.text.size() > 1 && answer.text[0] == '!';
    AcApDocument* const document = host_.documents().curDocument();
    if ((answer.kind != Kind::Expression && !variable) || !document)
        return true;
    auto result = document->lisp().evaluateText(variable ? answer.text.substr(1) : answer.text);
    if (!result) {
        const std::string message = lisp::formatFailure(result.failure());
        host_.freshLine();
        host_.print(message + "\n");
        report(Problem::Kind::LispError, message);
        answer.kind = Kind::Cancel;
        return invalidAnswers_ == InvalidAnswers::FailCommand;
    }
    if (result.value().isNil() || result.value().isQuiet())
        return false;
    const size_t line = answer.line;
    answer = answerFromValue(std::move(result.value()));
    answer.line = line;
    return true;
}

bool CommandLine::complain(std::string_view complaint, std::string_view answer) {
    host_.freshLine();
    host_.print(std::string(complaint) + "\n");
    if (invalidAnswers_ == InvalidAnswers::AskAgain)
        return true;
    std::string message = running_.empty() ? std::string() : running_.back()->name + ": ";
    message += "\"" + std::string(answer.substr(0, 80)) + "\" is no answer here. " + std::string(complaint);
    report(Problem::Kind::InvalidAnswer, std::move(message));
    answerRefused() = true;
    return false;
}

/// Whether the running command, or the expression outside of any, has got an answer that ends it. One that asks on all
/// the same would take the commands behind it for answers.
bool& CommandLine::answerRefused() { return running_.empty() ? expressionRefused_ : running_.back()->refused; }

// (command ...).

bool CommandLine::command(std::span<const lisp::Value> values, Caller caller) {
    const size_t depth = running_.size();
    // An expression typed at a prompt of a command: the values answer that prompt.
    const bool answersPrompt = !suspended_->waits() && depth > 0 && caller == Caller::Lisp;
    if (values.empty()) {
        cancelFed_ = answersPrompt;
        suspended_->cancelWaiting();
        return true;
    }
    if (answersPrompt) {
        fed_.insert(fed_.end(), values.begin(), values.end());
        return true;
    }
    if (!suspended_->give({values.begin(), values.end()}))
        return false;
    // A module goes on when its commands have ended.
    if (caller == Caller::Module)
        suspended_->finish(depth);
    return true;
}

} // namespace vndk::host
