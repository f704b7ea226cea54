#include "user/activation.h"
#include "user/desktop_state.h"
#include "user/input_queue.h"
#include "user/input_state.h"
#include "user/keyboard_layout.h"
#include "win32/error.h"

#include <algorithm>
#include <cstring>

namespace vndk::win32 {

using screen::Event;

namespace {

constexpr BYTE downBit = 0x80;
constexpr BYTE heldOnlyBit = 0x40; // down only because an event said so; never shown to programs
constexpr BYTE toggleBit = 0x01;

constexpr UINT leftShift = 0xA0; // up to right Alt, 0xA5
constexpr UINT rightControl = 0xA3;
constexpr UINT rightAlt = 0xA5;

bool isDown(const KeyStates& states, int key) { return (states[static_cast<std::size_t>(key)] & downBit) != 0; }

constexpr LPARAM contextBit = LPARAM{1} << 29; // Alt is down
constexpr LPARAM previousBit = LPARAM{1} << 30;
constexpr LPARAM releasedBit = LPARAM{1} << 31;

bool isSystemKey(const InputState& input, const KeyStates& before, UINT key, bool down) {
    const bool control = isDown(before, VK_CONTROL);
    if (key == VK_MENU)
        return !control && (down || input.altAlone);
    return key == VK_F10 || (isDown(before, VK_MENU) && !control);
}

MSG keyMessage(const InputState& input, const KeyStates& before, const Event& event, HWND target, bool focused) {
    const UINT key = commonKey(event.key);
    const bool down = event.kind == Event::Kind::keyDown;
    const bool system = isSystemKey(input, before, key, down) || !focused;
    LPARAM lParam = 1 | scanBits(event.key);
    if (system && focused && (key == VK_MENU ? down : isDown(before, VK_MENU)))
        lParam |= contextBit;
    if (!down || event.repeat || isDown(input.keys, static_cast<int>(key)))
        lParam |= previousBit;
    if (!down)
        lParam |= releasedBit;
    const UINT message = system ? (down ? WM_SYSKEYDOWN : WM_SYSKEYUP) : (down ? WM_KEYDOWN : WM_KEYUP);
    return {target, message, key, lParam, event.time, input.pointer};
}

void noteTaken(InputState& input, const InputEntry& entry, const MSG& message) {
    const UINT key = commonKey(entry.event.key);
    const bool down = entry.event.kind == Event::Kind::keyDown;
    if (down)
        input.altAlone = key == VK_MENU && (input.altAlone || !isDown(input.keys, VK_MENU));
    noteKey(input.keys, entry.event.key, down);
    noteHeld(input.keys, entry.event.held);
    input.takenKey = {message, entry.text, true};
}

} // namespace

UINT commonKey(UINT key) {
    if (key < leftShift || key > rightAlt)
        return key;
    return VK_SHIFT + (key - leftShift) / 2;
}

LPARAM scanBits(UINT key) {
    const KeyPlace place = placeOfKey(commonKey(key));
    const bool extended = place.extended || key == rightControl || key == rightAlt;
    return static_cast<LPARAM>(place.scanCode << 16 | (extended ? 1U << 24 : 0U));
}

void noteKey(KeyStates& states, UINT key, bool down) {
    const auto note = [&states, down](UINT one) {
        BYTE& state = states[one & 0xFF];
        if (down && (state & downBit) == 0)
            state ^= toggleBit;
        state &= static_cast<BYTE>(~(downBit | heldOnlyBit));
        if (down)
            state |= downBit;
    };
    note(key);
    if (commonKey(key) != key)
        note(commonKey(key));
}

void noteHeld(KeyStates& states, const screen::Held& held) {
    const auto note = [&states](int key, bool down) {
        BYTE& state = states[static_cast<std::size_t>(key)];
        if (down && (state & downBit) == 0)
            state |= downBit | heldOnlyBit;
        else if (!down && (state & heldOnlyBit) != 0)
            state &= static_cast<BYTE>(~(downBit | heldOnlyBit));
    };
    note(VK_SHIFT, held.shift);
    note(VK_CONTROL, held.control);
    note(VK_MENU, held.alt);
    note(VK_LBUTTON, held.left);
    note(VK_RBUTTON, held.right);
    note(VK_MBUTTON, held.middle);
}

Taken takeKey(InputState& input, const InputEntry& entry, MSG& message, const MessageFilter& filter, bool remove) {
    const DesktopState& state = *currentState();
    const bool focused = state.activation->focus != nullptr;
    const HWND target = focused ? state.activation->focus : state.activation->active;
    KeyStates before = input.keys;
    noteHeld(before, entry.event.held);
    MSG made{};
    if (entry.event.kind == Event::Kind::character)
        made = {target, WM_CHAR, static_cast<BYTE>(entry.text[0]), 1, entry.event.time, input.pointer};
    else
        made = keyMessage(input, entry.event.kind == Event::Kind::keyDown ? before : input.keys, entry.event, target,
                          focused);
    if (target == nullptr) {
        if (entry.event.kind != Event::Kind::character)
            noteTaken(input, entry, made);
        dropEntry(input, entry.number);
        return Taken::dropped;
    }
    if (!filter.takesMessage(made.message) || !filter.takesWindow(target))
        return Taken::no;
    message = made;
    if (remove) {
        if (entry.event.kind != Event::Kind::character)
            noteTaken(input, entry, made);
        dropEntry(input, entry.number);
    }
    return Taken::yes;
}

namespace {

// What a key types without the screen's help.
std::string typedByKey(const KeyStates& keys, UINT key) {
    const bool shift = isDown(keys, VK_SHIFT);
    if (isDown(keys, VK_CONTROL)) {
        const int control = isDown(keys, VK_MENU) ? -1 : controlCharacterOf(key, shift);
        return control >= 0 ? std::string(1, static_cast<char>(control)) : std::string();
    }
    const bool capitals = key >= 'A' && key <= 'Z' && (keys[VK_CAPITAL] & toggleBit) != 0;
    const char typed = characterOfKey(key, shift != capitals);
    return typed != 0 ? std::string(1, typed) : std::string();
}

bool isSame(const MSG& a, const MSG& b) {
    return a.hwnd == b.hwnd && a.message == b.message && a.wParam == b.wParam && a.lParam == b.lParam &&
           a.time == b.time;
}

// Keys that type control characters: screens deliver none for them.
bool typesControl(UINT key) {
    const char plain = characterOfKey(key, false);
    return plain > 0 && plain < ' ';
}

std::string textOf(const InputState& input, const MSG& message) {
    const auto key = static_cast<UINT>(message.wParam & 0xFF);
    const bool fromScreen = input.takenKey.valid && isSame(input.takenKey.message, message);
    const bool control = isDown(input.keys, VK_CONTROL) && !isDown(input.keys, VK_MENU);
    if (fromScreen && !input.takenKey.text.empty() && !control)
        return input.takenKey.text;
    // A screen that types tells by its silence that a key types nothing (yet), as an accent does before its letter.
    const bool silent = fromScreen && input.screenTypes && message.message == WM_KEYDOWN;
    return silent && !control && !typesControl(key) ? std::string() : typedByKey(input.keys, key);
}

// Characters come before whatever the next key does.
void postCharacters(QueueState& queue, const MSG& key, const std::string& text) {
    const UINT message = key.message == WM_SYSKEYDOWN ? WM_SYSCHAR : WM_CHAR;
    auto place = std::find_if(queue.posted.begin(), queue.posted.end(), [](const MSG& posted) {
        return posted.message == WM_KEYDOWN || posted.message == WM_KEYUP || posted.message == WM_SYSKEYDOWN ||
               posted.message == WM_SYSKEYUP;
    });
    for (const char typed : text) {
        place = queue.posted.insert(place, {key.hwnd, message, static_cast<BYTE>(typed), key.lParam, key.time, key.pt});
        ++place;
    }
    queue.changed |= QS_POSTMESSAGE;
}

} // namespace

} // namespace vndk::win32

using namespace vndk::win32;

BOOL TranslateMessage(const MSG* message) {
    DesktopState* state = message != nullptr ? currentState() : nullptr;
    if (state == nullptr)
        return FALSE;
    switch (message->message) {
    case WM_KEYUP:
    case WM_SYSKEYUP:
        return TRUE;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
        if (const std::string text = textOf(*state->input, *message); !text.empty())
            postCharacters(*state->queue, *message, text);
        if (state->input->takenKey.valid && isSame(state->input->takenKey.message, *message))
            state->input->takenKey.text.clear();
        return TRUE;
    default:
        return FALSE;
    }
}

SHORT GetKeyState(int key) {
    const DesktopState* state = currentState();
    if (state == nullptr || key < 0 || key > 0xFF)
        return 0;
    const BYTE found = state->input->keys[static_cast<std::size_t>(key)];
    return static_cast<SHORT>(((found & downBit) != 0 ? 0xFF80 : 0) | (found & toggleBit));
}

SHORT GetAsyncKeyState(int key) {
    collectScreenEvents();
    DesktopState* state = currentState();
    if (state == nullptr || key < 0 || key > 0xFF)
        return 0;
    const auto index = static_cast<std::size_t>(key);
    BYTE& pressed = state->input->pressed[index];
    const bool down = (state->input->keysNow[index] & downBit) != 0;
    const SHORT result = static_cast<SHORT>((down ? 0x8000 : 0) | (pressed != 0 ? 1 : 0));
    pressed = 0;
    return result;
}

BOOL GetKeyboardState(BYTE* states) {
    const DesktopState* state = currentState();
    if (state == nullptr || states == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::transform(state->input->keys.begin(), state->input->keys.end(), states,
                   [](BYTE key) { return static_cast<BYTE>(key & (downBit | toggleBit)); });
    return TRUE;
}

BOOL SetKeyboardState(BYTE* states) {
    DesktopState* state = currentState();
    if (state == nullptr || states == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    std::transform(states, states + state->input->keys.size(), state->input->keys.begin(),
                   [](BYTE key) { return static_cast<BYTE>(key & (downBit | toggleBit)); });
    return TRUE;
}

int GetKeyNameTextA(LONG lParam, LPSTR buffer, int size) {
    if (buffer == nullptr || size <= 0) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    buffer[0] = '\0';
    const auto bits = static_cast<DWORD>(lParam);
    const char* name = nameOfPlace({(bits >> 16) & 0xFF, (bits & (1U << 24)) != 0});
    if (name == nullptr)
        return 0;
    const std::size_t length = std::min(std::strlen(name), static_cast<std::size_t>(size) - 1);
    std::memcpy(buffer, name, length);
    buffer[length] = '\0';
    return static_cast<int>(length);
}

SHORT VkKeyScanA(CHAR character) {
    constexpr int shiftState = 0x100;
    constexpr int controlState = 0x200;
    // Digits and signs stand on the main keys as well as on the number pad, whose keys have higher numbers but stand
    // in between: so the pad is asked last.
    const auto matches = [character](UINT key, bool shift) {
        return character != 0 && characterOfKey(key, shift) == character;
    };
    for (const bool pad : {false, true})
        for (UINT key = 1; key <= 0xFF; ++key) {
            if ((key >= VK_NUMPAD0 && key <= VK_DIVIDE) != pad)
                continue;
            if (matches(key, false))
                return static_cast<SHORT>(key);
            if (matches(key, true))
                return static_cast<SHORT>(key | shiftState);
        }
    if (character >= 1 && character <= 26)
        return static_cast<SHORT>(('A' + character - 1) | controlState);
    return -1;
}

UINT MapVirtualKeyA(UINT code, UINT kind) {
    switch (kind) {
    case MAPVK_VK_TO_VSC:
        return placeOfKey(commonKey(code)).scanCode;
    case MAPVK_VSC_TO_VK:
        return keyAtPlace(code);
    case MAPVK_VK_TO_CHAR: {
        const bool letter = code >= 'A' && code <= 'Z';
        return static_cast<BYTE>(characterOfKey(code, letter));
    }
    default:
        return 0;
    }
}
