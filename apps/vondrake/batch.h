// Batch mode: the lines of a script at the host's command line.
#pragma once

#include "exit_status.h"
#include "options.h"

class CWinApp;

namespace vndk::host {
class Host;
}

namespace vndk::app {

/// Opens the drawing, loads the module and runs the script, of which open dialogs take their steps. Complains on
/// standard error.
ExitStatus runBatch(CWinApp& application, host::Host& host, const Options& options);

} // namespace vndk::app
