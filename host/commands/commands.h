// The host's own commands, one function for each; command_table.cpp gives them their names.
#pragma once

#include "ed/builtin_commands.h"

namespace vndk::host {

// Drawing.
CommandResult arcCommand(CommandContext& ctx);
CommandResult circleCommand(CommandContext& ctx);
CommandResult dimAlignedCommand(CommandContext& ctx);
CommandResult dimLinearCommand(CommandContext& ctx);
CommandResult lineCommand(CommandContext& ctx);
CommandResult planCommand(CommandContext& ctx);
CommandResult plineCommand(CommandContext& ctx);
CommandResult textCommand(CommandContext& ctx);

// Blocks and attributes.
CommandResult attdefCommand(CommandContext& ctx);
CommandResult blockCommand(CommandContext& ctx);
CommandResult eatteditCommand(CommandContext& ctx);
CommandResult insertCommand(CommandContext& ctx);
CommandResult minsertCommand(CommandContext& ctx);

// What is there.
CommandResult eraseCommand(CommandContext& ctx);
CommandResult listCommand(CommandContext& ctx);
CommandResult layerCommand(CommandContext& ctx);
CommandResult purgeCommand(CommandContext& ctx);
CommandResult blockiconCommand(CommandContext& ctx);
CommandResult orthoCommand(CommandContext& ctx);
CommandResult osnapCommand(CommandContext& ctx);
CommandResult panCommand(CommandContext& ctx);
CommandResult redrawCommand(CommandContext& ctx);
CommandResult regenCommand(CommandContext& ctx);
CommandResult setvarCommand(CommandContext& ctx);
CommandResult ucsCommand(CommandContext& ctx);
CommandResult vpointCommand(CommandContext& ctx);
CommandResult zoomCommand(CommandContext& ctx);

// Changing what is there.
CommandResult chpropCommand(CommandContext& ctx);
CommandResult copyCommand(CommandContext& ctx);
CommandResult explodeCommand(CommandContext& ctx);
CommandResult mirrorCommand(CommandContext& ctx);
CommandResult moveCommand(CommandContext& ctx);
CommandResult rotateCommand(CommandContext& ctx);
CommandResult scaleCommand(CommandContext& ctx);

// History.
CommandResult redoCommand(CommandContext& ctx);
CommandResult uCommand(CommandContext& ctx);
CommandResult undoCommand(CommandContext& ctx);

// Files and modules.
CommandResult arxCommand(CommandContext& ctx);
CommandResult closeCommand(CommandContext& ctx);
CommandResult newCommand(CommandContext& ctx);
CommandResult openCommand(CommandContext& ctx);
CommandResult qsaveCommand(CommandContext& ctx);
CommandResult quitCommand(CommandContext& ctx);
CommandResult saveasCommand(CommandContext& ctx);
CommandResult wblockCommand(CommandContext& ctx);
CommandResult xrefCommand(CommandContext& ctx);

} // namespace vndk::host
