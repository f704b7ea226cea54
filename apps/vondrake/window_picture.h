// The window's picture without a screen.
#pragma once

#include "ed/host.h"
#include "exit_status.h"
#include "mfc/winapp.h"
#include "options.h"

namespace vndk::app {

/// Opens the window on options.drawings in memory and writes what it shows, when it has come to rest for the first
/// time, into the PNG file options.picture.
ExitStatus makeWindowPicture(CWinApp& application, host::Host& host, const Options& options);

} // namespace vndk::app
