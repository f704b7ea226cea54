// LIST, and REGEN, which has little to do without a window.
#include "ads/ads.h"
#include "commands/commands.h"
#include "commands/list_text.h"
#include "commands/selection.h"
#include "db/database.h"

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

CommandResult regenCommand(CommandContext& ctx) {
    ctx.print(ctx.database().tilemode() ? "\nRegenerating model.\n" : "\nRegenerating layout.\n");
    ads_regen();
    return CommandResult::Done;
}

} // namespace vndk::host
