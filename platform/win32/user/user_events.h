// What a hand on mouse and keyboard does, as events of a screen in memory.
#pragma once

#include "screen/memory.h"
#include "win32/user_script.h"

namespace vndk::win32 {

class UserEvents {
public:
    explicit UserEvents(screen::MemoryScreen& screen) : screen_(screen) {}

    void moveTo(POINT point, UserKeys keys);
    // At the place of the last move.
    void press(screen::MouseButton button, UserKeys keys);
    void release(screen::MouseButton button, UserKeys keys);
    void click(screen::MouseButton button, UserKeys keys);
    void turnWheel(int delta);

    /// Shift, Ctrl and Alt go down, or up again.
    void holdKeys(UserKeys keys);
    void releaseKeys(UserKeys keys);
    void pressKey(int key, UserKeys keys);
    /// The key that types a character of code page 1252; one that no key has comes without one.
    void typeCharacter(char character);

private:
    void post(screen::Event event, UserKeys keys);
    void postKey(screen::Event::Kind kind, int key, UserKeys keys);

    screen::MemoryScreen& screen_;
    POINT at_{0, 0};
    screen::Held buttons_;
};

} // namespace vndk::win32
