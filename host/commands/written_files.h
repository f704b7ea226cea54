// Before a command writes a drawing: whether the file may be written.
#pragma once

#include "commands/drawing_files.h"
#include "ed/builtin_commands.h"

namespace vndk::host {

/// Says that the name can be no drawing's; Failed.
CommandResult badName(CommandContext& ctx, const std::string& typed);
/// The document that has the file open; null if none.
AcApDocument* documentWith(CommandContext& ctx, const DrawingFile& file);
/// Why no drawing can stand at the path; empty if one can.
std::string obstacleAt(const DrawingFile& file);
/// Asks before a file is replaced. False: it is to stay as it is. EXPERT 2 and more replaces without asking.
bool mayReplace(CommandContext& ctx, const DrawingFile& file, PromptStatus& status);

} // namespace vndk::host
