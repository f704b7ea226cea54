// TEXT: lines of text, each an entity of its own.
#include "commands/commands.h"
#include "commands/text_placement.h"
#include "db/database.h"

namespace vndk::host {

CommandResult textCommand(CommandContext& ctx) {
    TextPlacement placement(ctx);
    if (placement.ask() != PromptStatus::Normal)
        return ctx.stopped();
    for (;; placement.nextLine()) {
        std::string line;
        if (ctx.prompts().getString("\nEnter text: ", TextForm::Line, line) != PromptStatus::Normal)
            return ctx.stopped();
        if (line.empty())
            return CommandResult::Done;
        auto text = std::make_unique<AcDbText>();
        if (text->setTextString(line.c_str()) != Acad::eOk)
            return ctx.fail("The text is too long for one line.");
        placement.apply(*text);
        const AcDbObjectId id = addToSpace(ctx, std::move(text));
        if (id.isNull())
            return CommandResult::Failed;
        memoryOf(ctx).lastText = id;
    }
}

} // namespace vndk::host
