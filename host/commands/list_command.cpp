// LIST.
#include "commands/commands.h"
#include "commands/list_text.h"
#include "commands/selection.h"

namespace vndk::host {

CommandResult listCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    if (const PromptStatus status = SelectionPrompt(ctx).ask(objects); status != PromptStatus::Normal)
        return stoppedBy(status);
    for (const AcDbObjectId id : objects) {
        const AcDbObjectPointer<AcDbEntity> entity(id);
        if (entity)
            ctx.print(listText(ctx, *entity));
    }
    return CommandResult::Done;
}

} // namespace vndk::host
