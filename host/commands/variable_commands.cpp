// SETVAR: lists and sets system variables.
#include "commands/command_tools.h"
#include "commands/commands.h"
#include "commands/wildcard.h"
#include "ed/host.h"

#include <algorithm>

namespace vndk::host {

namespace {

PromptStatus listVariables(CommandContext& ctx) {
    std::string pattern;
    const PromptStatus status = ctx.prompts().getString("\nEnter variable(s) to list <*>: ", TextForm::Word, pattern);
    if (status != PromptStatus::Normal)
        return status;
    std::vector<const VariableRow*> rows;
    for (const VariableRow& row : SystemVariables::rows())
        if (matchesWildcard(row.name, pattern.empty() ? "*" : pattern))
            rows.push_back(&row);
    std::sort(rows.begin(), rows.end(),
              [](const auto* a, const auto* b) { return std::string_view(a->name) < b->name; });
    for (const VariableRow* row : rows) {
        VariableValue value;
        if (ctx.host().variables().get(row->name, value) != VariableError::None)
            continue;
        std::string name = row->name;
        name.append(name.size() < 16 ? 16 - name.size() : 1, ' ');
        ctx.print("\n" + name + SystemVariables::text(value) +
                  (row->access == VariableAccess::ReadOnly ? "  (read only)" : ""));
    }
    ctx.print("\n");
    return status;
}

/// Asks for a value of the variable's type. None: the old one stays.
PromptStatus askValue(CommandContext& ctx, const VariableRow& row, VariableValue& value) {
    const bool isText = row.type == VariableType::Text;
    const std::string prompt = std::string("\nEnter new value for ") + row.name + (isText ? ", or . for none" : "") +
                               " <" + SystemVariables::text(value) + ">: ";
    Prompts& prompts = ctx.prompts();
    PromptStatus status = PromptStatus::Error;
    switch (row.type) {
    case VariableType::Short: {
        int number = 0;
        status = prompts.getInt(prompt, number);
        // A number beyond a short would come out as another one.
        if (status == PromptStatus::Normal && number != static_cast<short>(number))
            value = static_cast<double>(number);
        else if (status == PromptStatus::Normal)
            value = static_cast<short>(number);
        return status;
    }
    case VariableType::Real: {
        double number = 0;
        status = prompts.getReal(prompt, number);
        if (status == PromptStatus::Normal)
            value = number;
        return status;
    }
    case VariableType::Text: {
        std::string text;
        status = prompts.getString(prompt, TextForm::Line, text);
        if (status == PromptStatus::Normal && text.empty())
            return PromptStatus::None;
        if (status == PromptStatus::Normal)
            value = text == "." ? std::string() : text;
        return status;
    }
    case VariableType::Point2:
    case VariableType::Point3: {
        AcGePoint3d point;
        status = prompts.getPoint(prompt, point);
        if (status == PromptStatus::Normal)
            value = point;
        return status;
    }
    }
    return status;
}

} // namespace

CommandResult setvarCommand(CommandContext& ctx) {
    std::string name = ctx.variable();
    if (name.empty() &&
        ctx.prompts().getString("\nEnter variable name or [?]: ", TextForm::Word, name) != PromptStatus::Normal)
        return ctx.stopped();
    if (name.empty())
        return CommandResult::Done;
    if (name == "?")
        return listVariables(ctx) == PromptStatus::Normal ? CommandResult::Done : ctx.stopped();
    SystemVariables& variables = ctx.host().variables();
    const VariableRow* const row = SystemVariables::find(name);
    VariableValue value;
    VariableError error = row ? variables.get(name, value) : VariableError::Unknown;
    if (error != VariableError::None)
        return ctx.fail(SystemVariables::explain(name, error));
    if (row->access == VariableAccess::ReadOnly) {
        ctx.print(std::string("\n") + row->name + " = " + SystemVariables::text(value) + " (read only)");
        return CommandResult::Done;
    }
    const PromptStatus status = askValue(ctx, *row, value);
    if (status == PromptStatus::None)
        return CommandResult::Done;
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    error = variables.set(name, value);
    return error == VariableError::None ? CommandResult::Done : ctx.fail(SystemVariables::explain(name, error));
}

} // namespace vndk::host
