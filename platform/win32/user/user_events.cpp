#include "user/user_events.h"

#include "win32/codepage.h"
#include "win32/input.h"

namespace vndk::win32 {

using screen::Event;
using screen::MouseButton;

namespace {

bool& heldButton(screen::Held& held, MouseButton button) {
    switch (button) {
    case MouseButton::left:
        return held.left;
    case MouseButton::right:
        return held.right;
    case MouseButton::middle:
        break;
    }
    return held.middle;
}

// The one character of a UTF-8 text of up to three bytes, which is all that a code page of 8 bits needs.
char32_t characterOf(char byte) {
    const std::string utf8 = toUtf8(std::string_view(&byte, 1));
    const auto part = [&utf8](std::size_t index) { return static_cast<unsigned char>(utf8[index]); };
    switch (utf8.size()) {
    case 1:
        return part(0);
    case 2:
        return (char32_t{part(0)} & 0x1F) << 6 | (char32_t{part(1)} & 0x3F);
    default:
        return (char32_t{part(0)} & 0x0F) << 12 | (char32_t{part(1)} & 0x3F) << 6 | (char32_t{part(2)} & 0x3F);
    }
}

} // namespace

void UserEvents::post(Event event, UserKeys keys) {
    event.x = at_.x;
    event.y = at_.y;
    event.held = buttons_;
    event.held.shift = keys.shift;
    event.held.control = keys.control;
    event.held.alt = keys.alt;
    screen_.post(event);
}

void UserEvents::moveTo(POINT point, UserKeys keys) {
    at_ = point;
    Event event;
    event.kind = Event::Kind::mouseMove;
    post(event, keys);
}

void UserEvents::press(MouseButton button, UserKeys keys) {
    heldButton(buttons_, button) = true;
    Event event;
    event.kind = Event::Kind::mouseDown;
    event.button = button;
    post(event, keys);
}

void UserEvents::release(MouseButton button, UserKeys keys) {
    heldButton(buttons_, button) = false;
    Event event;
    event.kind = Event::Kind::mouseUp;
    event.button = button;
    post(event, keys);
}

void UserEvents::click(MouseButton button, UserKeys keys) {
    press(button, keys);
    release(button, keys);
}

void UserEvents::turnWheel(int delta) {
    Event event;
    event.kind = Event::Kind::wheel;
    event.delta = delta;
    post(event, {});
}

void UserEvents::postKey(Event::Kind kind, int key, UserKeys keys) {
    Event event;
    event.kind = kind;
    event.key = static_cast<screen::KeyCode>(key);
    post(event, keys);
}

void UserEvents::holdKeys(UserKeys keys) {
    UserKeys down;
    const auto hold = [&](bool wanted, bool& state, int key) {
        if (!wanted)
            return;
        state = true;
        postKey(Event::Kind::keyDown, key, down);
    };
    hold(keys.shift, down.shift, VK_SHIFT);
    hold(keys.control, down.control, VK_CONTROL);
    hold(keys.alt, down.alt, VK_MENU);
}

void UserEvents::releaseKeys(UserKeys keys) {
    UserKeys down = keys;
    const auto let = [&](bool& state, int key) {
        if (!state)
            return;
        state = false;
        postKey(Event::Kind::keyUp, key, down);
    };
    let(down.alt, VK_MENU);
    let(down.control, VK_CONTROL);
    let(down.shift, VK_SHIFT);
}

void UserEvents::pressKey(int key, UserKeys keys) {
    holdKeys(keys);
    postKey(Event::Kind::keyDown, key, keys);
    postKey(Event::Kind::keyUp, key, keys);
    releaseKeys(keys);
}

void UserEvents::typeCharacter(char character) {
    if (character == '\n' || character == '\r' || character == '\t') {
        pressKey(character == '\t' ? VK_TAB : VK_RETURN, {});
        return;
    }
    const SHORT found = VkKeyScanA(character);
    const bool hasKey = found != -1 && HIBYTE(static_cast<WORD>(found)) <= 1;
    const int key = hasKey ? LOBYTE(static_cast<WORD>(found)) : 0;
    const UserKeys keys{.shift = hasKey && HIBYTE(static_cast<WORD>(found)) == 1};
    Event typed;
    typed.kind = Event::Kind::character;
    typed.character = characterOf(character);
    holdKeys(keys);
    if (key != 0)
        postKey(Event::Kind::keyDown, key, keys);
    post(typed, keys);
    if (key != 0)
        postKey(Event::Kind::keyUp, key, keys);
    releaseKeys(keys);
}

} // namespace vndk::win32
