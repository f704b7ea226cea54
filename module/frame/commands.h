// The module's commands.
#pragma once

/// Registers the commands of the group "VNDKCOMMANDS" and tells the user that the module is there.
void RegisterCommands();
void UnregisterCommands();
