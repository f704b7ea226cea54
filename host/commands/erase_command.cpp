// ERASE.
#include "commands/commands.h"
#include "commands/selection.h"

namespace vndk::host {

CommandResult eraseCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    if (const PromptStatus status = SelectionPrompt(ctx).ask(objects); status != PromptStatus::Normal)
        return stoppedBy(status);
    size_t locked = 0, refused = 0;
    for (const AcDbObjectId id : objects) {
        if (isOnLockedLayer(id))
            ++locked;
        else if (!eraseEntity(id))
            ++refused;
    }
    if (locked > 0)
        ctx.print("\n" + std::to_string(locked) + (locked == 1 ? " was" : " were") + " on a locked layer.");
    if (refused > 0)
        return ctx.fail(std::to_string(refused) + " objects can't be erased: something else has them open.");
    return CommandResult::Done;
}

} // namespace vndk::host
