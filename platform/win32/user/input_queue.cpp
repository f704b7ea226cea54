// What the screen delivers, until a program takes it as messages.
#include "user/input_queue.h"

#include "user/desktop_state.h"
#include "user/input_state.h"
#include "user/painting.h"
#include "user/window_position.h"
#include "win32/codepage.h"

#include <algorithm>

namespace vndk::win32 {

using screen::Event;

std::shared_ptr<InputState> makeInputState() { return std::make_shared<InputState>(); }

namespace {

bool isMouse(const Event& event) {
    return event.kind == Event::Kind::mouseMove || event.kind == Event::Kind::mouseDown ||
           event.kind == Event::Kind::mouseUp || event.kind == Event::Kind::wheel ||
           event.kind == Event::Kind::mouseLeave;
}

UINT statusBit(const Event& event) {
    switch (event.kind) {
    case Event::Kind::mouseMove:
    case Event::Kind::mouseLeave:
        return QS_MOUSEMOVE;
    case Event::Kind::mouseDown:
    case Event::Kind::mouseUp:
    case Event::Kind::wheel:
        return QS_MOUSEBUTTON;
    default:
        return QS_KEY;
    }
}

void enqueue(DesktopState& state, const Event& event) {
    std::deque<InputEntry>& events = state.input->events;
    state.queue->changed |= statusBit(event);
    // Only the last place of a pointer on its way counts.
    if (event.kind == Event::Kind::mouseMove && !events.empty() && events.back().event.kind == Event::Kind::mouseMove)
        events.back().event = event;
    else
        events.push_back({state.input->nextNumber++, event, {}});
}

void swapSides(Event& event) {
    std::swap(event.held.left, event.held.right);
    if (event.button == screen::MouseButton::left)
        event.button = screen::MouseButton::right;
    else if (event.button == screen::MouseButton::right)
        event.button = screen::MouseButton::left;
}

void collectMouse(DesktopState& state, Event event) {
    InputState& input = *state.input;
    if (input.swapButtons)
        swapSides(event);
    // Messages have 16 bits for each; whoever takes differences needn't fear to overflow.
    event.x = clampCoordinate(event.x);
    event.y = clampCoordinate(event.y);
    if (input.pointerClip && event.kind != Event::Kind::mouseLeave) {
        const RECT& clip = *input.pointerClip;
        const int x = std::clamp<int>(event.x, clip.left, std::max(clip.left, clip.right - 1));
        const int y = std::clamp<int>(event.y, clip.top, std::max(clip.top, clip.bottom - 1));
        if (x != event.x || y != event.y)
            state.screen.moveCursor(x, y);
        event.x = x;
        event.y = y;
    }
    if (event.kind != Event::Kind::mouseLeave)
        input.pointer = {event.x, event.y};
    if (event.kind == Event::Kind::mouseDown || event.kind == Event::Kind::mouseUp) {
        const UINT key = event.button == screen::MouseButton::left    ? VK_LBUTTON
                         : event.button == screen::MouseButton::right ? VK_RBUTTON
                                                                      : VK_MBUTTON;
        const bool down = event.kind == Event::Kind::mouseDown;
        noteKey(input.keysNow, key, down);
        if (down)
            input.pressed[key] = 1;
    }
    noteHeld(input.keysNow, event.held);
    enqueue(state, event);
}

void collectKey(DesktopState& state, const Event& event) {
    InputState& input = *state.input;
    if (event.key == 0 || event.key > 0xFF)
        return;
    const bool down = event.kind == Event::Kind::keyDown;
    noteKey(input.keysNow, event.key, down);
    noteHeld(input.keysNow, event.held);
    if (down)
        input.pressed[event.key] = 1;
    enqueue(state, event);
}

// A character belongs to the key that went down just before it, if that is still waiting; else it comes alone.
void collectCharacter(DesktopState& state, const Event& event) {
    InputState& input = *state.input;
    input.screenTypes = true;
    const char byte = byteFromCharacter(event.character).value_or('?');
    for (auto entry = input.events.rbegin(); entry != input.events.rend(); ++entry) {
        if (isMouse(entry->event))
            continue;
        if (entry->event.kind == Event::Kind::keyDown) {
            entry->text += byte;
            return;
        }
        break;
    }
    enqueue(state, event);
    input.events.back().text = std::string(1, byte);
}

// Another program has the keyboard: what is held will be let go without our seeing it.
void loseKeyboard(DesktopState& state) {
    InputState& input = *state.input;
    for (KeyStates* states : {&input.keys, &input.keysNow})
        for (BYTE& key : *states)
            key &= 0x01;
    input.altAlone = false;
    ReleaseCapture();
}

// The user closes the frame around the whole desktop: as if the program's main window were closed.
void askToClose(DesktopState& state) {
    for (const Window* window : state.root->children)
        if (window->owner == nullptr && (window->style & WS_VISIBLE) != 0) {
            if ((window->style & WS_DISABLED) != 0)
                state.screen.beep();
            else
                postInput(window->handle, WM_SYSCOMMAND, SC_CLOSE, 0);
            return;
        }
}

void collect(DesktopState& state, const Event& event) {
    switch (event.kind) {
    case Event::Kind::mouseMove:
    case Event::Kind::mouseDown:
    case Event::Kind::mouseUp:
    case Event::Kind::wheel:
    case Event::Kind::mouseLeave:
        collectMouse(state, event);
        break;
    case Event::Kind::keyDown:
    case Event::Kind::keyUp:
        collectKey(state, event);
        break;
    case Event::Kind::character:
        collectCharacter(state, event);
        break;
    case Event::Kind::resized:
        state.painting->showAll = true;
        setScreenTarget(screenTarget(state));
        refreshContexts();
        desktopResized();
        break;
    case Event::Kind::deactivated:
        loseKeyboard(state);
        break;
    case Event::Kind::closeAsked:
        askToClose(state);
        break;
    case Event::Kind::exposed:
        state.painting->showAll = true;
        break;
    case Event::Kind::activated:
        break;
    }
}

} // namespace

void collectScreenEvents() {
    DesktopState* state = currentState();
    if (state == nullptr || state->ending)
        return;
    Event event;
    while (currentState() == state && state->screen.nextEvent(event))
        collect(*state, event);
}

void repeatPress(UINT message, POINT point) {
    DesktopState* state = currentState();
    if (state == nullptr)
        return;
    std::deque<InputEntry>& events = state->input->events;
    const WPARAM keys = heldKeys();
    Event event;
    event.kind = Event::Kind::mouseDown;
    event.time = state->queue->messageTime;
    event.x = point.x;
    event.y = point.y;
    event.button = message == WM_RBUTTONDOWN   ? screen::MouseButton::right
                   : message == WM_MBUTTONDOWN ? screen::MouseButton::middle
                                               : screen::MouseButton::left;
    event.held = {(keys & MK_SHIFT) != 0,   (keys & MK_CONTROL) != 0, GetKeyState(VK_MENU) < 0,
                  (keys & MK_LBUTTON) != 0, (keys & MK_RBUTTON) != 0, (keys & MK_MBUTTON) != 0};
    const UINT number = events.empty() ? state->input->nextNumber++ : events.front().number - 1;
    events.push_front({number, event, {}});
}

void dropEntry(InputState& input, UINT number) {
    std::erase_if(input.events, [number](const InputEntry& entry) { return entry.number == number; });
}

bool takeInput(MSG& message, const MessageFilter& filter, bool remove) {
    DesktopState* state = currentState();
    if (state == nullptr || filter.threadOnly)
        return false;
    // Taking a mouse event sends messages, whose handlers may take further ones: so no iterator is kept.
    std::size_t index = 0;
    while (currentState() == state && index < state->input->events.size()) {
        InputState& input = *state->input;
        const InputEntry entry = input.events[index];
        const Taken taken = isMouse(entry.event) ? takeMouse(input, entry, message, filter, remove)
                                                 : takeKey(input, entry, message, filter, remove);
        if (taken == Taken::yes)
            return true;
        if (taken == Taken::no)
            ++index;
    }
    return false;
}

UINT inputStatus(const InputState& input) {
    UINT bits = 0;
    for (const InputEntry& entry : input.events)
        bits |= statusBit(entry.event);
    return bits;
}

} // namespace vndk::win32
