// Keys by number: their places (scan codes), names, and what they type on an American keyboard.
#pragma once

#include "win32/types.h"

namespace vndk::win32 {

struct KeyPlace {
    UINT scanCode = 0;
    bool extended = false; // one of the keys that came with the larger keyboards: arrows, Insert and so on
};

/// No scan code for a number that no key has.
[[nodiscard]] KeyPlace placeOfKey(UINT key);
/// 0 when there is none.
[[nodiscard]] UINT keyAtPlace(UINT scanCode);
/// What a key types on an American keyboard; 0 for none. Letters are small unless `shift`.
[[nodiscard]] char characterOfKey(UINT key, bool shift);
/// The character that a key types together with Ctrl; -1 for none.
[[nodiscard]] int controlCharacterOf(UINT key, bool shift);
/// Null when the place has no key.
[[nodiscard]] const char* nameOfPlace(const KeyPlace& place);

} // namespace vndk::win32
