// The program with a window.
#pragma once

#include "ed/host.h"
#include "exit_status.h"
#include "mfc/winapp.h"
#include "options.h"
#include "screen/screen.h"

namespace vndk::app {

/// Runs until the user quits. Opens options.drawings, or a new drawing, and loads the module into the host. Drawings
/// that can't be opened are told of in a box, and the window stays with the others.
ExitStatus runDesktop(CWinApp& application, host::Host& host, const Options& options, screen::Screen& screen);

} // namespace vndk::app
