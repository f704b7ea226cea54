// VNDKATTDEF: makes a definition with formulas of an attribute definition.
#pragma once

namespace vndk::host {
class Host;
}

namespace vndk::app {

/// Registers the command with the host.
void addConvertCommand(host::Host& host);

} // namespace vndk::app
