#include "ed/suspended_commands.h"

#include "lisp/printer.h"

#include <utility>

namespace vndk::host {

namespace {

constexpr std::string_view kPause = "\\";

} // namespace

Answer answerFromValue(lisp::Value value) {
    Answer answer;
    answer.kind = value.isString() ? Answer::Kind::Text : Answer::Kind::Value;
    if (value.isString())
        answer.text = value.text();
    else
        answer.value = std::move(value);
    return answer;
}

Answer SuspendedCommands::take(SuspendedCommand& command, const PromptRequest& request, TextForm form) {
    for (;;) {
        Answer answer;
        answer.kind = Answer::Kind::Cancel;
        if (command.cancel)
            return answer;
        if (command.answer) {
            answer = std::move(*command.answer);
            command.answer.reset();
            return answer;
        }
        command.wantsUser = false;
        if (!command.values.empty()) {
            lisp::Value value = std::move(command.values.front());
            command.values.pop_front();
            command.wantsUser = value.isString() && value.text() == kPause;
            if (!command.wantsUser)
                return answerFromValue(std::move(value));
        }
        command.request = request;
        command.form = form;
        command.fiber->yield();
    }
}

SuspendedCommand* SuspendedCommands::waiting() const {
    if (commands_.empty())
        return nullptr;
    SuspendedCommand& last = *commands_.back();
    // A command that calls from within its own fiber begins another one.
    return !last.fiber->inside() && !last.asksUser && line_.depth() == last.depth + 1 ? &last : nullptr;
}

bool SuspendedCommands::give(std::deque<lisp::Value> values) {
    SuspendedCommand* command = waiting();
    while (!values.empty()) {
        if (!command) {
            const lisp::Value name = std::move(values.front());
            values.pop_front();
            if (name.isString() && name.text().empty())
                continue; // Enter repeats nothing here
            if (!begin(name))
                return false;
            command = commands_.back().get();
        }
        command->values = std::move(values);
        const SuspendedCommand* const fed = command;
        values = resume(*command);
        if (!commands_.empty() && commands_.back().get() == fed)
            break; // it waits for more
        command = nullptr;
    }
    return true;
}

void SuspendedCommands::cancelWaiting() {
    if (SuspendedCommand* const command = waiting()) {
        command->cancel = true;
        resume(*command);
    }
}

/// Makes a command ready to run on a stack of its own.
bool SuspendedCommands::begin(const lisp::Value& name) {
    const std::string typed =
        name.isString() ? std::string(name.text()) : lisp::toText(name, lisp::PrintStyle::Display, 80);
    const auto call = name.isString() ? line_.findCall(typed) : std::nullopt;
    if (!call) {
        line_.reportUnknown(typed);
        return false;
    }
    auto begun = std::make_unique<SuspendedCommand>();
    SuspendedCommand* const feeder = begun.get();
    feeder->depth = line_.depth();
    feeder->fiber = std::make_unique<Fiber>([this, call, feeder] { line_.execute(*call, feeder); });
    commands_.push_back(std::move(begun));
    return true;
}

/// Lets a command run until it needs something or ends; gives the values that it left when it ended.
std::deque<lisp::Value> SuspendedCommands::resume(SuspendedCommand& command) {
    for (;;) {
        command.fiber->resume();
        if (command.fiber->finished()) {
            auto left = std::move(command.values);
            std::erase_if(commands_, [&](const auto& item) { return item.get() == &command; });
            return left;
        }
        if (!command.wantsUser)
            return {};
        askUser(command);
    }
}

/// Lets the user answer for a command.
void SuspendedCommands::askUser(SuspendedCommand& command) {
    const bool former = std::exchange(command.asksUser, true);
    command.answer = line_.takeOuter(command.form, command.request);
    command.asksUser = former;
}

void SuspendedCommands::finish(size_t depth) {
    while (!commands_.empty() && commands_.back()->depth >= depth) {
        SuspendedCommand& last = *commands_.back();
        askUser(last);
        resume(last);
    }
}

void SuspendedCommands::cancel(size_t depth) {
    while (!commands_.empty() && commands_.back()->depth >= depth) {
        commands_.back()->cancel = true;
        resume(*commands_.back());
    }
}

} // namespace vndk::host
