// ATTDEF: the pattern of an attribute, by prompts.
#include "commands/commands.h"
#include "commands/text_placement.h"
#include "db/database.h"

namespace vndk::host {

namespace {

constexpr struct {
    const char* keyword;
    int bit;
} kModes[] = {{"Invisible", 1}, {"Constant", 2}, {"Verify", 4}, {"Preset", 8}};

PromptStatus askModes(CommandContext& ctx, int& modes) {
    for (;;) {
        std::string line = "\nCurrent attribute modes:";
        for (const auto& mode : kModes)
            line += std::string("  ") + mode.keyword + (modes & mode.bit ? "=Y" : "=N");
        ctx.print(line);
        ctx.prompts().initGet(0, "Invisible Constant Verify Preset");
        const PromptStatus status =
            ctx.prompts().getKeyword("\nEnter an option to change [Invisible/Constant/Verify/Preset] <done>: ");
        if (status != PromptStatus::Normal)
            return status == PromptStatus::None ? PromptStatus::Normal : status;
        for (const auto& mode : kModes)
            if (ctx.prompts().keyword() == mode.keyword)
                modes ^= mode.bit;
    }
}

PromptStatus askTag(CommandContext& ctx, std::string& tag) {
    for (;;) {
        const PromptStatus status = ctx.prompts().getString("\nEnter attribute tag name: ", TextForm::Word, tag);
        if (status != PromptStatus::Normal)
            return status;
        if (tag.empty()) {
            ctx.print("\nTag cannot be null.");
        } else if (tag.find(' ') != std::string::npos) {
            ctx.print("\nTag cannot contain blanks.");
        } else {
            tag = acdbFoldName(tag);
            return status;
        }
    }
}

} // namespace

CommandResult attdefCommand(CommandContext& ctx) {
    constexpr int kConstant = 2;
    int& modes = memoryOf(ctx).attributeModes;
    std::string tag, prompt, value;
    if (askModes(ctx, modes) != PromptStatus::Normal)
        return ctx.stopped();
    if (askTag(ctx, tag) != PromptStatus::Normal)
        return ctx.stopped();
    const bool constant = modes & kConstant;
    if (!constant &&
        ctx.prompts().getString("\nEnter attribute prompt: ", TextForm::Line, prompt) != PromptStatus::Normal)
        return ctx.stopped();
    const char* const question = constant ? "\nEnter attribute value: " : "\nEnter default attribute value: ";
    if (ctx.prompts().getString(question, TextForm::Line, value) != PromptStatus::Normal)
        return ctx.stopped();
    TextPlacement placement(ctx);
    if (placement.ask() != PromptStatus::Normal)
        return ctx.stopped();

    auto definition = std::make_unique<AcDbAttributeDefinition>();
    definition->setTag(tag.c_str());
    definition->setPrompt(prompt.c_str());
    if (definition->setTextString(value.c_str()) != Acad::eOk)
        return ctx.fail("The value is too long for an attribute.");
    definition->setInvisible(modes & 1);
    definition->setConstant(constant);
    definition->setVerifiable(modes & 4);
    definition->setPreset(modes & 8);
    placement.apply(*definition);
    const AcDbObjectId id = addToSpace(ctx, std::move(definition));
    if (id.isNull())
        return CommandResult::Failed;
    memoryOf(ctx).lastText = id;
    return CommandResult::Done;
}

} // namespace vndk::host
