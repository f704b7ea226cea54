// Window classes and the table of names that they share with registered messages.
#pragma once

#include "user/window.h"

#include <string_view>

namespace vndk::win32 {

/// The number of a name, from 0xC000 on, the same until the program ends; a name "#123" is the number 123. 0 for an
/// empty name, or when 16,384 names are taken.
ATOM atomOf(std::string_view name);
/// The name behind a number made by atomOf, in the writing of its first time; "#123" for a number below 0xC000.
[[nodiscard]] std::string nameOfAtom(ATOM atom);

/// Null when there is no such class. `name` is a text or an atom; null as `instance` fits classes of any module.
WindowClass* findClass(LPCSTR name, HINSTANCE instance);

} // namespace vndk::win32
