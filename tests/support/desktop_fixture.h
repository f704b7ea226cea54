// A desktop in memory with a user in front of it, for tests of everything that has windows.
//
//     class ButtonTest : public vndk::test::DesktopFixture {};
//     TEST_F(ButtonTest, ...) {
//         const HWND window = CreateWindowEx(...);
//         user.click(20, 30);   // only queues the events
//         settle();             // delivers them, and all messages and paints that follow
//         EXPECT_EQ(pixel(20, 30), ...);
//     }
#pragma once

#include "screen/memory.h"
#include "win32/desktop.h"
#include "win32/input.h"
#include "win32/paint.h"
#include "win32/queue.h"
#include "win32/window.h"

#include <gtest/gtest.h>

#include <memory>
#include <string_view>

namespace vndk::test {

/// Queues what a user does, in screen coordinates.
class User {
public:
    using Event = screen::Event;
    using Button = screen::MouseButton;

    explicit User(screen::MemoryScreen& screen) : screen_(screen) {}

    void moveTo(int x, int y) {
        at_ = {x, y};
        post(Event::Kind::mouseMove);
    }
    void press(Button button = Button::left) {
        hold(button, true);
        post(Event::Kind::mouseDown, button);
    }
    void release(Button button = Button::left) {
        hold(button, false);
        post(Event::Kind::mouseUp, button);
    }
    void click(int x, int y, Button button = Button::left) {
        moveTo(x, y);
        press(button);
        release(button);
    }
    void doubleClick(int x, int y, Button button = Button::left) {
        click(x, y, button);
        press(button);
        release(button);
    }
    void drag(POINT from, POINT to, Button button = Button::left) {
        moveTo(from.x, from.y);
        press(button);
        moveTo(to.x, to.y);
        release(button);
    }
    /// 120 for a notch away from the user.
    void turnWheel(int delta) {
        Event event = make(Event::Kind::wheel);
        event.delta = delta;
        screen_.post(event);
    }

    /// `character`: what the key types; 0 for keys that type nothing.
    void keyDown(int key, char32_t character = 0) {
        holdKey(key, true);
        Event event = make(Event::Kind::keyDown);
        event.key = static_cast<screen::KeyCode>(key);
        screen_.post(event);
        if (character == 0)
            return;
        event.kind = Event::Kind::character;
        event.character = character;
        screen_.post(event);
    }
    void keyUp(int key) {
        holdKey(key, false);
        Event event = make(Event::Kind::keyUp);
        event.key = static_cast<screen::KeyCode>(key);
        screen_.post(event);
    }
    void key(int code, char32_t character = 0) {
        keyDown(code, character);
        keyUp(code);
    }
    /// A key while another (VK_SHIFT, VK_CONTROL, VK_MENU) is held.
    void keyWith(int modifier, int code, char32_t character = 0) {
        keyDown(modifier);
        key(code, character);
        keyUp(modifier);
    }
    /// Letters, digits and blanks, each with its own key.
    void type(std::string_view text) {
        for (const char each : text) {
            const bool small = each >= 'a' && each <= 'z';
            const bool capital = each >= 'A' && each <= 'Z';
            if (capital)
                keyDown(VK_SHIFT);
            key(small ? each - 'a' + 'A' : each, static_cast<unsigned char>(each));
            if (capital)
                keyUp(VK_SHIFT);
        }
    }

private:
    Event make(Event::Kind kind) const {
        Event event;
        event.kind = kind;
        event.x = at_.x;
        event.y = at_.y;
        event.held = held_;
        return event;
    }
    void post(Event::Kind kind, Button button = Button::left) {
        Event event = make(kind);
        event.button = button;
        screen_.post(event);
    }
    void hold(Button button, bool down) {
        (button == Button::left ? held_.left : button == Button::right ? held_.right : held_.middle) = down;
    }
    void holdKey(int key, bool down) {
        if (key == VK_SHIFT)
            held_.shift = down;
        if (key == VK_CONTROL)
            held_.control = down;
        if (key == VK_MENU)
            held_.alt = down;
    }

    screen::MemoryScreen& screen_;
    POINT at_{0, 0};
    screen::Held held_;
};

class DesktopFixture : public testing::Test {
protected:
    static constexpr int screenWidth = 800;
    static constexpr int screenHeight = 600;
    static constexpr int settleLimit = 100000; // messages

    /// Delivers everything that waits, timers that are not due left alone. The number of messages dispatched. Windows
    /// that never come to rest fail the test.
    int settle() {
        const int dispatched = desktop->settle(settleLimit);
        EXPECT_LT(dispatched, settleLimit) << "the windows don't come to rest";
        return dispatched;
    }
    /// Lets time go by: timers that come due are delivered.
    void wait(std::uint32_t milliseconds) {
        constexpr std::uint32_t step = 10;
        for (std::uint32_t gone = 0; gone < milliseconds; gone += step) {
            screen.advance(step);
            settle();
        }
    }
    /// 0xRRGGBB of the desktop's picture.
    [[nodiscard]] std::uint32_t pixel(int x, int y) {
        const screen::Surface surface = screen.surface();
        if (x < 0 || y < 0 || x >= surface.width || y >= surface.height)
            return 0xFFFFFFFF;
        return surface.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(surface.width) +
                              static_cast<std::size_t>(x)] &
               0xFFFFFF;
    }
    /// The same of a COLORREF.
    [[nodiscard]] static constexpr std::uint32_t rgbOf(COLORREF color) {
        return (static_cast<std::uint32_t>(GetRValue(color)) << 16) |
               (static_cast<std::uint32_t>(GetGValue(color)) << 8) | GetBValue(color);
    }
    [[nodiscard]] static RECT windowRect(HWND window) {
        RECT rect{};
        GetWindowRect(window, &rect);
        return rect;
    }
    [[nodiscard]] static RECT clientRect(HWND window) {
        RECT rect{};
        GetClientRect(window, &rect);
        return rect;
    }
    /// A point of the client area, on the screen.
    [[nodiscard]] static POINT onScreen(HWND window, int x, int y) {
        POINT point{x, y};
        ClientToScreen(window, &point);
        return point;
    }

    screen::MemoryScreen screen{screenWidth, screenHeight};
    std::unique_ptr<win32::Desktop> desktop = std::make_unique<win32::Desktop>(screen);
    User user{screen};
};

} // namespace vndk::test
