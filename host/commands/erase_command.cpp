// ERASE.
#include "commands/commands.h"
#include "commands/object_changes.h"

#include <algorithm>

namespace vndk::host {

CommandResult eraseCommand(CommandContext& ctx) {
    std::vector<AcDbObjectId> objects;
    if (const PromptStatus status = askForObjects(ctx, objects); status != PromptStatus::Normal)
        return stoppedBy(status);
    // What is tied to another object has gone with that one when its turn comes.
    const auto refused = std::count_if(objects.begin(), objects.end(),
                                       [](AcDbObjectId id) { return !id.isErased() && !eraseEntity(id); });
    if (refused > 0)
        return ctx.fail(std::to_string(refused) + " objects can't be erased: something else has them open.");
    return CommandResult::Done;
}

} // namespace vndk::host
