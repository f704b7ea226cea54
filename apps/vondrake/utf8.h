// What is valid UTF-8.
#pragma once

#include <cstddef>
#include <string_view>

namespace vndk::app {

/// Length in bytes of the character that `text`, which isn't empty, begins with; 0 if it begins with none.
size_t utf8Length(std::string_view text);
bool isUtf8(std::string_view text);

} // namespace vndk::app
