// The one seam between our windows and the system: a picture, input events, the cursor, the clipboard, the clock.
//
//     std::unique_ptr<Screen> screen = openWindow({.title = "vondrake"}, error);    // screen/sdl.h
//     Surface surface = screen->surface();                    // draw into surface.pixels
//     screen->present(changed);                               // only these rectangles are shown anew
//     while (screen->nextEvent(event)) ...                    // what the user did since
//
// Whoever implements Screen keeps these promises:
//  - Units are desktop pixels with the origin at the top left. A backend that shows each of them as 2x2 pixels of the
//    system's screen divides and multiplies by itself; nobody above knows.
//  - Everything is called on the thread that made the screen.
//  - Text is UTF-8. Characters are Unicode code points.
//  - Nothing throws. What can't be done (no clipboard, no cursor) is left out quietly, except where a result is named.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::screen {

struct Rect {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
};

/// Pixels of the desktop, top row first, without gaps between rows: 0xFFRRGGBB each. Owned by the screen; valid until
/// the next call of nextEvent or wait (a resize makes a new one).
struct Surface {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
};

/// Keys by the place and meaning that the platform above gives them; the numbers are those of its virtual key codes
/// (0x08 Backspace, 0x09 Tab, 0x0D Return, 0x1B Escape, 0x20 Space, 0x25 to 0x28 arrows, 'A' to 'Z', '0' to '9',
/// 0x70 F1 and so on). 0: a key that has no such code.
using KeyCode = std::uint16_t;

enum class MouseButton : std::uint8_t { left, right, middle };

/// Modifier keys and buttons that are down after the event.
struct Held {
    bool shift = false;
    bool control = false;
    bool alt = false;
    bool left = false;
    bool right = false;
    bool middle = false;

    bool operator==(const Held&) const = default;
};

struct Event {
    enum class Kind : std::uint8_t {
        mouseMove,  // x, y
        mouseDown,  // x, y, button
        mouseUp,    // x, y, button
        wheel,      // x, y, delta: 120 for each notch, positive away from the user; horizontal wheels are dropped
        mouseLeave, // the pointer left the screen
        keyDown,    // key, repeat
        keyUp,      // key
        character,  // the code point that the last key or composition produced; control characters don't come
        resized,    // the surface has a new size
        activated,  // the system gave us the keyboard
        deactivated,
        closeAsked, // the user asked the system to close the window
        exposed,    // the whole picture has to be presented again
    };
    Kind kind = Kind::mouseMove;
    std::uint32_t time = 0; // milliseconds of clock()
    int x = 0;
    int y = 0;
    MouseButton button = MouseButton::left;
    int delta = 0;
    KeyCode key = 0;
    bool repeat = false;
    char32_t character = 0;
    Held held;
};

/// A pointer's picture: width x height pixels 0xAARRGGBB, not premultiplied; the hot spot lies inside.
/// `inverted` (same size, or empty) marks pixels that invert what is behind them; a backend that can't invert shows
/// them black.
struct CursorImage {
    int width = 0;
    int height = 0;
    int hotX = 0;
    int hotY = 0;
    std::vector<std::uint32_t> pixels;
    std::vector<bool> inverted;
};

class Screen {
public:
    virtual ~Screen() = default;
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    [[nodiscard]] virtual Surface surface() = 0;
    /// Shows these parts of the surface. Parts outside are clipped; an empty list shows nothing.
    virtual void present(std::span<const Rect> changed) = 0;

    /// Takes the next event, oldest first. False when there is none; never waits.
    virtual bool nextEvent(Event& event) = 0;
    /// Waits until there is an event or `milliseconds` have gone (negative: no limit). A memory
    /// screen doesn't wait: it moves its clock on.
    virtual void wait(int milliseconds) = 0;

    /// Null hides the pointer. The image is copied.
    virtual void setCursor(const CursorImage* cursor) = 0;
    /// Moves the pointer; a mouseMove event may follow.
    virtual void moveCursor(int x, int y) = 0;

    [[nodiscard]] virtual std::string clipboardText() = 0;
    /// False when the system refused.
    virtual bool setClipboardText(std::string_view text) = 0;

    /// Milliseconds, never going back; wraps after 49 days.
    [[nodiscard]] virtual std::uint32_t clock() = 0;

    virtual void setTitle(std::string_view title) = 0;
    virtual void beep() = 0;

protected:
    Screen() = default;
};

} // namespace vndk::screen
