// SDL's key codes as the numbers that screen events carry.
#pragma once

#include "screen/screen.h"

#include <SDL_keyboard.h>

namespace vndk::screen {

/// 0 for a key without such a number.
[[nodiscard]] KeyCode keyCodeOf(const SDL_Keysym& key);

} // namespace vndk::screen
