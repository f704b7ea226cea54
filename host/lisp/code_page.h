// Capitals of code page 1252, the text inside the host.
#pragma once

#include <string>
#include <string_view>

namespace vndk::lisp {

inline char upperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

char upperCase(char c);
char lowerCase(char c);

} // namespace vndk::lisp
