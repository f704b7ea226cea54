// Incremental search: characters typed in quick succession make up the beginning of the text that is looked for.
#pragma once

#include "win32/types.h"

#include <string>

namespace vndk::win32 {

class TypeAhead {
public:
    /// Adds a character; a pause before it begins a new search. `now` is in milliseconds.
    void add(char character, DWORD now) {
        if (!isRunning(now))
            text_.clear();
        text_.push_back(character);
        last_ = now;
    }
    /// Of a search that a pause hasn't ended yet.
    [[nodiscard]] bool isRunning(DWORD now) const { return !text_.empty() && now - last_ < pause; }
    [[nodiscard]] const std::string& text() const { return text_; }
    /// The same character again and again steps from match to match.
    [[nodiscard]] bool repeatsOneCharacter() const {
        return text_.find_first_not_of(text_.front()) == std::string::npos;
    }
    void clear() { text_.clear(); }

private:
    static constexpr DWORD pause = 1000;

    std::string text_;
    DWORD last_ = 0;
};

} // namespace vndk::win32
