// Batch mode: the lines of a script at the host's command line.
#pragma once

#include "exit_status.h"
#include "options.h"

namespace vndk::host {
class Host;
}

namespace vndk::app {

/// Opens the drawing, loads the module and runs the script. Complains on standard error.
ExitStatus runBatch(host::Host& host, const Options& options);

} // namespace vndk::app
