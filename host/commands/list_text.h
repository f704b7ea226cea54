// The facts of an entity as LIST prints them.
#pragma once

#include "commands/command_tools.h"

namespace vndk::host {

/// Several lines, each begun by a line end.
std::string listText(const CommandContext& ctx, const AcDbEntity& entity);

} // namespace vndk::host
