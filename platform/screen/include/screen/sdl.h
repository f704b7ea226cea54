// A real window on the system's screen, by SDL.
#pragma once

#include "screen/screen.h"

#include <memory>

namespace vndk::screen {

struct WindowOptions {
    std::string title;
    int width = 1280; // desktop pixels
    int height = 800;
    int scale = 1; // each desktop pixel shows as scale x scale pixels, 1 to 4
};

/// Opens the window. The user can change its size. Null, with a message that says what to do in `error`, when there is
/// no display or the window can't be made.
[[nodiscard]] std::unique_ptr<Screen> openWindow(const WindowOptions& options, std::string& error);

} // namespace vndk::screen
