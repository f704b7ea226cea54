// The system menu of windows.
#pragma once

#include "user/menu.h"

namespace vndk::win32 {

/// A new menu with the commands that the window's frame offers.
HMENU makeSystemMenu(const Window& window);

} // namespace vndk::win32
