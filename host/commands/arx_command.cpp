// ARX: loads and unloads modules, lists them and their commands.
#include "commands/commands.h"
#include "ed/host.h"

namespace vndk::host {

namespace {

CommandResult listModules(CommandContext& ctx) {
    ctx.print("\nLoaded modules:");
    for (const LoadedApplication* application : ctx.host().linker().applications())
        ctx.print("\n  " + application->name);
    ctx.print("\n");
    return CommandResult::Done;
}

CommandResult listCommands(CommandContext& ctx) {
    ctx.print("\nCommands of modules:");
    std::string group;
    for (const AcEdCommand* command : ctx.host().commands().commands()) {
        if (command->builtIn())
            continue;
        if (group != command->groupName())
            ctx.print("\n  Group: " + (group = command->groupName()));
        ctx.print("\n    " + std::string(command->globalName()) + "  " + command->localName());
    }
    ctx.print("\n");
    return CommandResult::Done;
}

CommandResult loadOrUnload(CommandContext& ctx, bool load) {
    std::string name;
    const char* const prompt = load ? "\nEnter module file name to load: " : "\nEnter module file name to unload: ";
    if (ctx.prompts().getString(prompt, TextForm::FileName, name) != PromptStatus::Normal)
        return ctx.stopped();
    if (name.empty())
        return ctx.fail("No file name was given.");
    AcRxDynamicLinker& linker = ctx.host().linker();
    if (!(load ? linker.loadModule(name.c_str(), false, true) : linker.unloadModule(name.c_str(), true)))
        return ctx.fail(linker.lastError());
    ctx.print("\n" + name + (load ? " successfully loaded." : " successfully unloaded.") + "\n");
    return CommandResult::Done;
}

} // namespace

CommandResult arxCommand(CommandContext& ctx) {
    ctx.prompts().initGet(0, "? Load Unload Commands");
    const PromptStatus status = ctx.prompts().getKeyword("\nEnter an option [?/Load/Unload/Commands]: ");
    if (status == PromptStatus::None)
        return CommandResult::Done;
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    const std::string keyword = ctx.prompts().keyword();
    if (keyword == "?")
        return listModules(ctx);
    return keyword == "Commands" ? listCommands(ctx) : loadOrUnload(ctx, keyword == "Load");
}

} // namespace vndk::host
