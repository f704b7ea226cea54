// How the program ends.
#pragma once

namespace vndk::app {

enum ExitStatus : int {
    kAllWell = 0,
    kCommandFailed = 1, ///< a command or an expression, or the module couldn't be loaded, or the output be written
    kWrongUsage = 2,    ///< wrong arguments, or a script that can't be read
    kDrawingFailed = 3, ///< a drawing couldn't be read or written
};

} // namespace vndk::app
