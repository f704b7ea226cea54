// The codes within texts of drawings. Private to this room.
#pragma once

#include <string>
#include <string_view>

namespace vndk::gi {

/// A text as it is read, with the lines that codes draw along all of it.
struct PlainText {
    std::string text; // code page 1252
    bool underlined = false, overlined = false;
};

/// Replaces %%d, %%p, %%c, %%%, %%nnn (a character's number) and \U+hhhh, drops %%u and %%o and notes them.
PlainText withoutCodes(std::string_view text);

/// Takes \U+hhhh from the front of a text. False: it isn't there.
bool takeUnicode(std::string_view& rest, std::string& out);
/// Takes a code that begins with two percent signs from the front. False: it isn't one.
bool takePercentCode(std::string_view& rest, PlainText& plain);

} // namespace vndk::gi
