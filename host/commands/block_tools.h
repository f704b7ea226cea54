// What commands on blocks share.
#pragma once

#include "commands/command_tools.h"
#include "ge/matrix3d.h"

namespace vndk::host {

/// The answer `?` to the question for a block: asks for a pattern and lists the blocks that fit it.
PromptStatus listBlocks(CommandContext& ctx);
/// Whether a block that is there is to be redefined; Enter is No. `status` isn't Normal when the question was given up.
bool askRedefine(const CommandContext& ctx, const std::string& name, PromptStatus& status);
/// Copies the objects into the record and transforms the copies. On a failure the copies are erased again.
Acad::ErrorStatus copyInto(AcDbDatabase& database, const std::vector<AcDbObjectId>& objects, AcDbObjectId record,
                           const AcGeMatrix3d& move);

/// Gives a block the picture that lists of blocks show. False: the block can't be opened or has nothing to be seen.
bool giveIcon(AcDbObjectId block);

} // namespace vndk::host
