// ORTHO and OSNAP: what helps to point.
#include "commands/commands.h"
#include "ed/host.h"
#include "ed/object_snap.h"

namespace vndk::host {

namespace {

std::string shownModes(int modes) {
    std::string text;
    for (int mode = kSnapEnd; mode <= kSnapNearest && (modes & kSnapOff) == 0; mode *= 2)
        if ((modes & mode) != 0)
            text += (text.empty() ? "" : ",") + std::string(snapName(mode));
    return text.empty() ? "None" : text;
}

} // namespace

CommandResult orthoCommand(CommandContext& ctx) {
    SystemVariables& variables = ctx.host().variables();
    const bool on = variables.getShort("ORTHOMODE") != 0;
    ctx.prompts().initGet(0, "ON OFF");
    const PromptStatus status =
        ctx.prompts().getKeyword(std::string("\nEnter mode [ON/OFF] <") + (on ? "ON" : "OFF") + ">: ");
    if (status == PromptStatus::None)
        return CommandResult::Done;
    if (status != PromptStatus::Normal)
        return ctx.stopped();
    variables.set("ORTHOMODE", static_cast<short>(ctx.prompts().keyword() == "ON"));
    return CommandResult::Done;
}

CommandResult osnapCommand(CommandContext& ctx) {
    SystemVariables& variables = ctx.host().variables();
    for (;;) {
        std::string text;
        const std::string now = shownModes(variables.getShort("OSMODE"));
        ctx.print("\nCurrent osnap modes: " + now);
        if (ctx.prompts().getString("\nEnter list of object snap modes: ", TextForm::Word, text) !=
            PromptStatus::Normal)
            return ctx.stopped();
        const auto modes = text.empty() ? std::optional(0) : snapModesOf(text);
        if (modes) {
            variables.set("OSMODE", static_cast<short>((*modes & kSnapOff) != 0 ? 0 : *modes));
            return CommandResult::Done;
        }
        if (!ctx.host().commandLine().complain(
                "Requires names such as END,MID,CEN,INS,NOD,QUA,INT,PER,TAN,NEA or NONE.", text))
            return CommandResult::Failed;
    }
}

} // namespace vndk::host
