// BLOCKICON: gives blocks the pictures that lists of blocks show.
#include "commands/block_tools.h"
#include "commands/commands.h"
#include "commands/wildcard.h"
#include "db/database.h"
#include "ed/host.h"

namespace vndk::host {

CommandResult blockiconCommand(CommandContext& ctx) {
    std::string names;
    if (ctx.prompts().getString("\nEnter block names <*>: ", TextForm::Name, names) != PromptStatus::Normal)
        return ctx.stopped();
    size_t found = 0, updated = 0;
    for (const AcDbObjectId id : sortedRecords(ctx.database().blockTableId())) {
        const std::string name = recordName(id);
        // Blocks without a name of their own stand in no list.
        if (name.starts_with('*') || !matchesWildcard(name, names.empty() ? "*" : names))
            continue;
        ++found;
        updated += giveIcon(id);
    }
    if (found == 0 && !names.empty())
        return ctx.fail("No block fits \"" + names + "\".");
    ctx.print("\n" + std::to_string(updated) + (updated == 1 ? " block" : " blocks") + " updated.");
    return CommandResult::Done;
}

} // namespace vndk::host
