// The controls' classes, which exist on every desktop from the start.
#pragma once

namespace vndk::win32 {

/// Registers all of them in the current desktop.
void registerControls();

} // namespace vndk::win32
