// Patterns over names, as prompts for lists of names take them.
//
//   #  one digit      @  one letter      .  one other character     *  any text, also none     ?  any character
//   ~  in front: all but      [abc] [a-z] one of these      [~abc] none of these      `  takes the next as it stands
//   ,  separates patterns of which one has to fit
#pragma once

#include <string_view>

namespace vndk::host {

/// Without regard to case.
bool matchesWildcard(std::string_view name, std::string_view patterns);
/// True if the text has a character with a meaning of its own (commas aside).
bool hasWildcard(std::string_view text);

} // namespace vndk::host
