// What the main menu and the keys type for the user.
#pragma once

#include "win32/types.h"

#include <string>

namespace vndk::host {

class Host;

/// One item: the command's lines, or part of a line that the user's answers go on from.
struct MenuCommand {
    UINT id;
    const char* text;
    const char* command; ///< the name on which it depends whether the item can act
};

/// Null for an id that types nothing.
const MenuCommand* findMenuCommand(UINT id);
/// Whether what it types could do something now.
bool canAct(const MenuCommand& row, Host& host);

/// The list of all commands and keys, for the text window; lines end with '\n'.
std::string commandsAndKeys(Host& host);

} // namespace vndk::host
