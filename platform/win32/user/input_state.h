// Keys, buttons, pointer, capture, cursor and caret.
#pragma once

#include "screen/screen.h"
#include "user/message_queue.h"
#include "user/window.h"
#include "win32/input.h"

#include <array>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace vndk::win32 {

/// What came from the screen and waits to be taken.
struct InputEntry {
    UINT number = 0; // tells entries apart
    screen::Event event;
    std::string text; // of a key or a character event: what it types, code page 1252
};

/// The upper bit is set while a key is down, the lowest one toggles with each press.
using KeyStates = std::array<BYTE, 256>;

/// The last key message that was taken, with the text that the screen delivered for it.
struct TakenKey {
    MSG message{};
    std::string text;
    bool valid = false;
};

struct LastClick {
    HWND window = nullptr;
    UINT message = 0;
    LRESULT hitTest = 0;
    POINT point{0, 0};
    DWORD time = 0;
};

struct MouseTracking {
    HWND window = nullptr;
    DWORD flags = 0;
    DWORD hoverTime = 0;
    POINT hoverPoint{0, 0};
};

struct Caret {
    HWND window = nullptr;
    HBITMAP bitmap = nullptr;
    bool gray = false;
    int width = 0;
    int height = 0;
    POINT place{0, 0};
    int hidden = 0;     // ShowCaret takes one off
    int suspended = 0;  // by the window manager, while it paints
    bool shown = false; // its pixels are inverted now
    bool blinkOn = true;
};

struct InputState {
    std::deque<InputEntry> events;
    UINT nextNumber = 1;
    KeyStates keys{};         // as of the last message taken
    KeyStates keysNow{};      // as of the last event collected
    KeyStates pressed{};      // went down since GetAsyncKeyState was asked last
    bool screenTypes = false; // the screen delivers characters, so keys without any type nothing
    bool altAlone = false;    // nothing was pressed since Alt went down
    TakenKey takenKey;

    POINT pointer{0, 0}; // as of the last event collected
    std::optional<RECT> pointerClip;
    HWND capture = nullptr;
    LastClick lastClick;
    UINT doubleClickTime = 500;
    bool swapButtons = false;
    MouseTracking tracking;

    HCURSOR cursor = nullptr;
    int cursorShown = 0; // visible from 0 on
    Caret caret;
    LONG_PTR extraInfo = 0;
};

/// The next message that input makes and that fits; entries before it stay. False when there is none.
bool takeInput(MSG& message, const MessageFilter& filter, bool remove);
/// Is there an entry of the queue that could give such a message? QS_KEY, QS_MOUSEMOVE, QS_MOUSEBUTTON.
[[nodiscard]] UINT inputStatus(const InputState& input);

// ---- Keyboard ------------------------------------------------------------------------------------------------------

/// Bits 16 to 24 of a key message's lParam.
[[nodiscard]] LPARAM scanBits(UINT key);
/// Notes a key event in a set of states.
void noteKey(KeyStates& states, UINT key, bool down);
/// Modifier keys and buttons that an event says are held count as down, until an event says otherwise.
void noteHeld(KeyStates& states, const screen::Held& held);
/// Left and right Shift, Ctrl and Alt are the same key to programs.
[[nodiscard]] UINT commonKey(UINT key);
/// Takes an entry out of the queue; nothing happens when it has gone already.
void dropEntry(InputState& input, UINT number);
/// no: it doesn't fit and stays; dropped: it has gone without a message.
enum class Taken : std::uint8_t { no, yes, dropped };
Taken takeKey(InputState& input, const InputEntry& entry, MSG& message, const MessageFilter& filter, bool remove);

// ---- Mouse ---------------------------------------------------------------------------------------------------------

/// Makes the message of a mouse event. With `remove` the windows are asked and told all that goes with it (hit test,
/// cursor, activation); `dropped` when the message was eaten on that way.
Taken takeMouse(InputState& input, const InputEntry& entry, MSG& message, const MessageFilter& filter, bool remove);
/// WM_MOUSELEAVE to the window that wants it, when the pointer is over another one.
void trackPointer(HWND over, LRESULT hitTest, POINT point);

/// Shows the current cursor on the screen, or none.
void showCurrentCursor();

// ---- Caret ---------------------------------------------------------------------------------------------------------

/// Takes the caret off the pixels of a window and its children (null: all windows) until it is resumed as often. False
/// when there is none there, and nothing to resume.
[[nodiscard]] bool pauseCaret(const Window* window);
void resumeCaret();

/// While one of these lives, no caret is on the pixels of a window and its children. A null window stands for all.
class CaretPause {
public:
    explicit CaretPause(const Window* window) : paused_(pauseCaret(window)) {}
    ~CaretPause() {
        if (paused_)
            resumeCaret();
    }
    CaretPause(const CaretPause&) = delete;
    CaretPause& operator=(const CaretPause&) = delete;

private:
    bool paused_;
};

} // namespace vndk::win32
