// What the host does for LISP: variables, commands, files, entities, prompts.
#include "arguments.h"
#include "evaluator.h"

namespace vndk::lisp {

namespace {

Value getvar(Evaluator& evaluator, Arguments args) {
    const std::string_view name = args[0].isSymbol() ? args[0].symbol().name() : asString(args[0]);
    return valueOrThrow(evaluator.host().getVariable(name));
}

Value setvar(Evaluator& evaluator, Arguments args) {
    const std::string_view name = args[0].isSymbol() ? args[0].symbol().name() : asString(args[0]);
    return valueOrThrow(evaluator.host().setVariable(name, args[1]));
}

Value command(Evaluator& evaluator, Arguments args) { return valueOrThrow(evaluator.host().command(args)); }

Value alert(Evaluator& evaluator, Arguments args) {
    valueOrThrow(evaluator.host().alert(asString(args[0])));
    return Value();
}

/// (load file [onfailure]): the second argument is for a file that can't be had, not for errors in it.
Value load(Evaluator& evaluator, Arguments args) {
    const std::string_view name = asString(args[0]);
    Outcome<std::string> text = evaluator.host().loadFile(name);
    if (text)
        return evaluator.evaluateText(text.value(), name);
    if (args.size() < 2)
        throw LispError{std::move(text.failure())};
    return args[1].isFunction() ? evaluator.call(args[1], {}) : args[1];
}

Value entget(Evaluator& evaluator, Arguments args) { return valueOrThrow(evaluator.host().entget(asEname(args[0]))); }

Value entlast(Evaluator& evaluator, Arguments) { return valueOrThrow(evaluator.host().entlast()); }

Value entnext(Evaluator& evaluator, Arguments args) {
    std::optional<std::uint64_t> ename;
    if (given(args, 0))
        ename = asEname(args[0]);
    return valueOrThrow(evaluator.host().entnext(ename));
}

Value entdel(Evaluator& evaluator, Arguments args) { return valueOrThrow(evaluator.host().entdel(asEname(args[0]))); }

/// Prompts take a base point and a text, either or both left out.
struct PromptArguments {
    Value base;
    std::string_view text;
};

PromptArguments promptArguments(Arguments args) {
    PromptArguments result;
    for (const Value& arg : args) {
        if (arg.isString()) {
            result.text = arg.text();
        } else if (!arg.isNil()) {
            asPoint(arg);
            result.base = arg;
        }
    }
    return result;
}

std::string_view promptText(Arguments args) { return given(args, 0) ? asString(args[0]) : std::string_view(); }

Value getpoint(Evaluator& evaluator, Arguments args) {
    const PromptArguments prompt = promptArguments(args);
    return valueOrThrow(evaluator.host().getPoint(prompt.base, prompt.text));
}

Value getdist(Evaluator& evaluator, Arguments args) {
    const PromptArguments prompt = promptArguments(args);
    return valueOrThrow(evaluator.host().getDist(prompt.base, prompt.text));
}

Value getangle(Evaluator& evaluator, Arguments args) {
    const PromptArguments prompt = promptArguments(args);
    return valueOrThrow(evaluator.host().getAngle(prompt.base, prompt.text));
}

Value getreal(Evaluator& evaluator, Arguments args) { return valueOrThrow(evaluator.host().getReal(promptText(args))); }

Value getint(Evaluator& evaluator, Arguments args) { return valueOrThrow(evaluator.host().getInt(promptText(args))); }

Value getkword(Evaluator& evaluator, Arguments args) {
    return valueOrThrow(evaluator.host().getKeyword(promptText(args)));
}

/// (getstring [blanks] [prompt]): a first argument that isn't nil and no prompt lets the answer hold blanks.
Value getstring(Evaluator& evaluator, Arguments args) {
    const bool promptOnly = args.size() == 1 && args[0].isString();
    const bool blanks = !promptOnly && given(args, 0);
    return valueOrThrow(evaluator.host().getString(blanks ? HostLink::Blanks::Allowed : HostLink::Blanks::EndAnswer,
                                                   promptText(promptOnly || args.empty() ? args : args.subspan(1))));
}

/// (getfiled title default extension flags)
Value getfiled(Evaluator& evaluator, Arguments args) {
    const auto textAt = [&](std::size_t index) {
        return args[index].isString() ? args[index].text() : std::string_view();
    };
    const int flags = args[3].isInt() ? args[3].integer() : 0;
    return valueOrThrow(evaluator.host().getFileName(textAt(0), textAt(1), textAt(2), flags));
}

Value initget(Evaluator& evaluator, Arguments args) {
    const int bits = !args.empty() && args[0].isInt() ? args[0].integer() : 0;
    const Arguments keywords = !args.empty() && !args[0].isString() ? args.subspan(1) : args;
    return valueOrThrow(evaluator.host().initGet(bits, promptText(keywords)));
}

constexpr int any = Builtin::anyNumber;
constexpr Builtin builtins[] = {
    {"GETVAR", 1, 1, getvar},     {"SETVAR", 2, 2, setvar},       {"COMMAND", 0, any, command},
    {"ALERT", 1, 1, alert},       {"LOAD", 1, 2, load},           {"ENTGET", 1, 2, entget},
    {"ENTLAST", 0, 0, entlast},   {"ENTNEXT", 0, 1, entnext},     {"ENTDEL", 1, 1, entdel},
    {"GETPOINT", 0, 2, getpoint}, {"GETDIST", 0, 2, getdist},     {"GETANGLE", 0, 2, getangle},
    {"GETREAL", 0, 1, getreal},   {"GETINT", 0, 1, getint},       {"GETKWORD", 0, 1, getkword},
    {"INITGET", 0, 2, initget},   {"GETSTRING", 0, 2, getstring}, {"GETFILED", 4, 4, getfiled},
};

} // namespace

std::span<const Builtin> hostBuiltins() { return builtins; }

} // namespace vndk::lisp
