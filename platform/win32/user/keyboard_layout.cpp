#include "user/keyboard_layout.h"

#include "win32/input.h"

#include <algorithm>
#include <iterator>

namespace vndk::win32 {

namespace {

struct KeyRow {
    UINT key;
    UINT scanCode;
    bool extended;
    char plain;
    char shifted;
    const char* name;
};

constexpr UINT oem1 = 0xBA; // ;:
constexpr UINT oemPlus = 0xBB;
constexpr UINT oemComma = 0xBC;
constexpr UINT oemMinus = 0xBD;
constexpr UINT oemPeriod = 0xBE;
constexpr UINT oem2 = 0xBF;   // /?
constexpr UINT oem3 = 0xC0;   // `~
constexpr UINT oem4 = 0xDB;   // [{
constexpr UINT oem5 = 0xDC;   // \|
constexpr UINT oem6 = 0xDD;   // ]}
constexpr UINT oem7 = 0xDE;   // '"
constexpr UINT oem102 = 0xE2; // beside the left Shift of European keyboards

// Where two keys share a scan code the one of the small keyboard stands first.
constexpr KeyRow rows[] = {
    {VK_ESCAPE, 0x01, false, 27, 27, "Esc"},
    {'1', 0x02, false, '1', '!', "1"},
    {'2', 0x03, false, '2', '@', "2"},
    {'3', 0x04, false, '3', '#', "3"},
    {'4', 0x05, false, '4', '$', "4"},
    {'5', 0x06, false, '5', '%', "5"},
    {'6', 0x07, false, '6', '^', "6"},
    {'7', 0x08, false, '7', '&', "7"},
    {'8', 0x09, false, '8', '*', "8"},
    {'9', 0x0A, false, '9', '(', "9"},
    {'0', 0x0B, false, '0', ')', "0"},
    {oemMinus, 0x0C, false, '-', '_', "-"},
    {oemPlus, 0x0D, false, '=', '+', "="},
    {VK_BACK, 0x0E, false, 8, 8, "Backspace"},
    {VK_TAB, 0x0F, false, 9, 9, "Tab"},
    {'Q', 0x10, false, 'q', 'Q', "Q"},
    {'W', 0x11, false, 'w', 'W', "W"},
    {'E', 0x12, false, 'e', 'E', "E"},
    {'R', 0x13, false, 'r', 'R', "R"},
    {'T', 0x14, false, 't', 'T', "T"},
    {'Y', 0x15, false, 'y', 'Y', "Y"},
    {'U', 0x16, false, 'u', 'U', "U"},
    {'I', 0x17, false, 'i', 'I', "I"},
    {'O', 0x18, false, 'o', 'O', "O"},
    {'P', 0x19, false, 'p', 'P', "P"},
    {oem4, 0x1A, false, '[', '{', "["},
    {oem6, 0x1B, false, ']', '}', "]"},
    {VK_RETURN, 0x1C, false, 13, 13, "Enter"},
    {VK_CONTROL, 0x1D, false, 0, 0, "Ctrl"},
    {'A', 0x1E, false, 'a', 'A', "A"},
    {'S', 0x1F, false, 's', 'S', "S"},
    {'D', 0x20, false, 'd', 'D', "D"},
    {'F', 0x21, false, 'f', 'F', "F"},
    {'G', 0x22, false, 'g', 'G', "G"},
    {'H', 0x23, false, 'h', 'H', "H"},
    {'J', 0x24, false, 'j', 'J', "J"},
    {'K', 0x25, false, 'k', 'K', "K"},
    {'L', 0x26, false, 'l', 'L', "L"},
    {oem1, 0x27, false, ';', ':', ";"},
    {oem7, 0x28, false, '\'', '"', "'"},
    {oem3, 0x29, false, '`', '~', "`"},
    {VK_SHIFT, 0x2A, false, 0, 0, "Shift"},
    {oem5, 0x2B, false, '\\', '|', "\\"},
    {'Z', 0x2C, false, 'z', 'Z', "Z"},
    {'X', 0x2D, false, 'x', 'X', "X"},
    {'C', 0x2E, false, 'c', 'C', "C"},
    {'V', 0x2F, false, 'v', 'V', "V"},
    {'B', 0x30, false, 'b', 'B', "B"},
    {'N', 0x31, false, 'n', 'N', "N"},
    {'M', 0x32, false, 'm', 'M', "M"},
    {oemComma, 0x33, false, ',', '<', ","},
    {oemPeriod, 0x34, false, '.', '>', "."},
    {oem2, 0x35, false, '/', '?', "/"},
    {VK_MULTIPLY, 0x37, false, '*', '*', "Num *"},
    {VK_MENU, 0x38, false, 0, 0, "Alt"},
    {VK_SPACE, 0x39, false, ' ', ' ', "Space"},
    {VK_CAPITAL, 0x3A, false, 0, 0, "Caps Lock"},
    {VK_F1, 0x3B, false, 0, 0, "F1"},
    {VK_F2, 0x3C, false, 0, 0, "F2"},
    {VK_F1 + 2, 0x3D, false, 0, 0, "F3"},
    {VK_F4, 0x3E, false, 0, 0, "F4"},
    {VK_F5, 0x3F, false, 0, 0, "F5"},
    {VK_F6, 0x40, false, 0, 0, "F6"},
    {VK_F1 + 6, 0x41, false, 0, 0, "F7"},
    {VK_F1 + 7, 0x42, false, 0, 0, "F8"},
    {VK_F1 + 8, 0x43, false, 0, 0, "F9"},
    {VK_F10, 0x44, false, 0, 0, "F10"},
    {VK_PAUSE, 0x45, false, 0, 0, "Pause"},
    {VK_SCROLL, 0x46, false, 0, 0, "Scroll Lock"},
    {VK_NUMPAD0 + 7, 0x47, false, '7', '7', "Num 7"},
    {VK_NUMPAD0 + 8, 0x48, false, '8', '8', "Num 8"},
    {VK_NUMPAD9, 0x49, false, '9', '9', "Num 9"},
    {VK_SUBTRACT, 0x4A, false, '-', '-', "Num -"},
    {VK_NUMPAD0 + 4, 0x4B, false, '4', '4', "Num 4"},
    {VK_NUMPAD0 + 5, 0x4C, false, '5', '5', "Num 5"},
    {VK_CLEAR, 0x4C, false, 0, 0, "Num 5"},
    {VK_NUMPAD0 + 6, 0x4D, false, '6', '6', "Num 6"},
    {VK_ADD, 0x4E, false, '+', '+', "Num +"},
    {VK_NUMPAD0 + 1, 0x4F, false, '1', '1', "Num 1"},
    {VK_NUMPAD0 + 2, 0x50, false, '2', '2', "Num 2"},
    {VK_NUMPAD0 + 3, 0x51, false, '3', '3', "Num 3"},
    {VK_NUMPAD0, 0x52, false, '0', '0', "Num 0"},
    {VK_DECIMAL, 0x53, false, '.', '.', "Num Del"},
    {oem102, 0x56, false, '\\', '|', "\\"},
    {VK_F1 + 10, 0x57, false, 0, 0, "F11"},
    {VK_F12, 0x58, false, 0, 0, "F12"},
    {VK_DIVIDE, 0x35, true, '/', '/', "Num /"},
    {VK_NUMLOCK, 0x45, true, 0, 0, "Num Lock"},
    {VK_CANCEL, 0x46, true, 3, 3, "Break"},
    {VK_HOME, 0x47, true, 0, 0, "Home"},
    {VK_UP, 0x48, true, 0, 0, "Up"},
    {VK_PRIOR, 0x49, true, 0, 0, "Page Up"},
    {VK_LEFT, 0x4B, true, 0, 0, "Left"},
    {VK_RIGHT, 0x4D, true, 0, 0, "Right"},
    {VK_END, 0x4F, true, 0, 0, "End"},
    {VK_DOWN, 0x50, true, 0, 0, "Down"},
    {VK_NEXT, 0x51, true, 0, 0, "Page Down"},
    {VK_INSERT, 0x52, true, 0, 0, "Insert"},
    {VK_DELETE, 0x53, true, 0, 0, "Delete"},
    {VK_LWIN, 0x5B, true, 0, 0, "Left Windows"},
    {VK_APPS, 0x5D, true, 0, 0, "Application"},
};

const KeyRow* rowOf(UINT key) {
    const auto* found =
        std::find_if(std::begin(rows), std::end(rows), [key](const KeyRow& row) { return row.key == key; });
    return found != std::end(rows) ? found : nullptr;
}

} // namespace

KeyPlace placeOfKey(UINT key) {
    const KeyRow* row = rowOf(key);
    return row != nullptr ? KeyPlace{row->scanCode, row->extended} : KeyPlace{};
}

UINT keyAtPlace(UINT scanCode) {
    for (const KeyRow& row : rows)
        if (!row.extended && row.scanCode == scanCode)
            return row.key;
    for (const KeyRow& row : rows)
        if (row.scanCode == scanCode)
            return row.key;
    return 0;
}

char characterOfKey(UINT key, bool shift) {
    const KeyRow* row = rowOf(key);
    return row == nullptr ? '\0' : shift ? row->shifted : row->plain;
}

int controlCharacterOf(UINT key, bool shift) {
    if (key >= 'A' && key <= 'Z')
        return static_cast<int>(key - 'A') + 1;
    switch (key) {
    case VK_BACK:
        return 127;
    case VK_RETURN:
        return 10;
    case VK_ESCAPE:
    case oem4:
        return 27;
    case oem5:
    case oem102:
        return 28;
    case oem6:
        return 29;
    case VK_CANCEL:
        return 3;
    case VK_SPACE:
        return ' ';
    case '6':
        return shift ? 30 : -1;
    case oemMinus:
        return shift ? 31 : -1;
    default:
        return -1;
    }
}

const char* nameOfPlace(const KeyPlace& place) {
    for (const KeyRow& row : rows)
        if (row.scanCode == place.scanCode && row.extended == place.extended)
            return row.name;
    return nullptr;
}

} // namespace vndk::win32
