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

/// A paragraph text without its formats: breaks (\P) become line feeds, fractions a/b; what only changes the look goes.
std::string plainParagraph(std::string_view contents);

} // namespace vndk::gi
