#include "sdl_keys.h"

#include <algorithm>
#include <iterator>

namespace vndk::screen {

namespace {

struct Row {
    SDL_Keycode sdl;
    KeyCode code;
};

constexpr Row keys[] = {
    {SDLK_BACKSPACE, 0x08},   {SDLK_TAB, 0x09},       {SDLK_CLEAR, 0x0C},        {SDLK_RETURN, 0x0D},
    {SDLK_KP_ENTER, 0x0D},    {SDLK_LSHIFT, 0x10},    {SDLK_RSHIFT, 0x10},       {SDLK_LCTRL, 0x11},
    {SDLK_RCTRL, 0x11},       {SDLK_LALT, 0x12},      {SDLK_PAUSE, 0x13},        {SDLK_CAPSLOCK, 0x14},
    {SDLK_ESCAPE, 0x1B},      {SDLK_SPACE, 0x20},     {SDLK_PAGEUP, 0x21},       {SDLK_PAGEDOWN, 0x22},
    {SDLK_END, 0x23},         {SDLK_HOME, 0x24},      {SDLK_LEFT, 0x25},         {SDLK_UP, 0x26},
    {SDLK_RIGHT, 0x27},       {SDLK_DOWN, 0x28},      {SDLK_PRINTSCREEN, 0x2C},  {SDLK_INSERT, 0x2D},
    {SDLK_DELETE, 0x2E},      {SDLK_HELP, 0x2F},      {SDLK_LGUI, 0x5B},         {SDLK_RGUI, 0x5C},
    {SDLK_APPLICATION, 0x5D}, {SDLK_MENU, 0x5D},      {SDLK_KP_MULTIPLY, 0x6A},  {SDLK_KP_PLUS, 0x6B},
    {SDLK_KP_MINUS, 0x6D},    {SDLK_KP_DIVIDE, 0x6F}, {SDLK_NUMLOCKCLEAR, 0x90}, {SDLK_SCROLLLOCK, 0x91},
    {SDLK_SEMICOLON, 0xBA},   {SDLK_PLUS, 0xBB},      {SDLK_EQUALS, 0xBB},       {SDLK_COMMA, 0xBC},
    {SDLK_MINUS, 0xBD},       {SDLK_PERIOD, 0xBE},    {SDLK_SLASH, 0xBF},        {SDLK_BACKQUOTE, 0xC0},
    {SDLK_LEFTBRACKET, 0xDB}, {SDLK_BACKSLASH, 0xDC}, {SDLK_RIGHTBRACKET, 0xDD}, {SDLK_QUOTE, 0xDE},
};

// The keypad's digits move the cursor unless the number lock is on. From 0 to 9, then the decimal key.
constexpr KeyCode keypadMoves[] = {0x2D, 0x23, 0x28, 0x22, 0x25, 0x0C, 0x27, 0x24, 0x26, 0x21};

KeyCode keypadCode(const SDL_Keysym& key) {
    const bool numbers = (key.mod & KMOD_NUM) != 0;
    if (key.sym == SDLK_KP_PERIOD)
        return numbers ? 0x6E : 0x2E;
    int digit = -1;
    if (key.sym == SDLK_KP_0)
        digit = 0;
    else if (key.sym >= SDLK_KP_1 && key.sym <= SDLK_KP_9)
        digit = key.sym - SDLK_KP_1 + 1;
    if (digit < 0)
        return 0;
    return numbers ? static_cast<KeyCode>(0x60 + digit) : keypadMoves[digit];
}

} // namespace

KeyCode keyCodeOf(const SDL_Keysym& key) {
    const SDL_Keycode sym = key.sym;
    if (sym >= SDLK_a && sym <= SDLK_z)
        return static_cast<KeyCode>('A' + (sym - SDLK_a));
    if (sym >= SDLK_0 && sym <= SDLK_9)
        return static_cast<KeyCode>('0' + (sym - SDLK_0));
    if (sym >= SDLK_F1 && sym <= SDLK_F12)
        return static_cast<KeyCode>(0x70 + (sym - SDLK_F1));
    if (const KeyCode code = keypadCode(key); code != 0)
        return code;
    const auto* row = std::find_if(std::begin(keys), std::end(keys), [sym](const Row& r) { return r.sdl == sym; });
    return row != std::end(keys) ? row->code : 0;
}

} // namespace vndk::screen
