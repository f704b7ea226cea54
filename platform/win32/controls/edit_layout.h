// Lines of an edit control's text: where they begin and end, how wide they are, which character stands where. Pure
// arithmetic on the advances of a font; no window, no painting.
//
// Positions are characters from 0. CR LF ends a line and counts as two characters. A line that is too wide for the wrap
// width ends after a blank, or, without one, in the middle of a word; blanks at its end hang over.
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace vndk::win32 {

struct EditMetrics {
    std::array<int, 256> widths{};
    int lineHeight = 1;
    int averageWidth = 1;
    std::vector<int> tabs; // pixels from the line's begin; one: their distance; none: 8 average widths
    char password = '\0';  // shown for every character

    /// Of a character that begins `x` pixels from the line's begin.
    [[nodiscard]] int advance(char character, int x) const;
    [[nodiscard]] int extent(std::string_view text) const;
    /// Characters of `text` that fit into `width` pixels.
    [[nodiscard]] int fit(std::string_view text, int width) const;
    /// The boundary between characters that is nearest to `x`.
    [[nodiscard]] int nearest(std::string_view text, int x) const;
};

struct EditLine {
    int start = 0;
    int length = 0;    // without the break
    int end = 0;       // start of the next line
    int width = 0;     // pixels
    int reach = 0;     // text from here on has no say in where the line ends
    bool soft = false; // ends by wrapping

    bool operator==(const EditLine&) const = default;
};

/// The word's begin at or left of a position, for a program's own rule where to wrap.
using FindBreak = std::function<int(int position)>;

struct EditWrap {
    bool multiLine = false;
    int width = 0; // 0: lines are not wrapped
    FindBreak findBreak;
};

class EditLayout {
public:
    EditLayout() : lines_(1) {}

    void rebuild(std::string_view text, const EditMetrics& measure, const EditWrap& wrap);
    /// The text, which is the new one already, had `removed` characters at `position` replaced by `inserted` ones.
    /// Equal to a rebuild, but only looks at what may have changed.
    void update(std::string_view text, const EditMetrics& measure, const EditWrap& wrap, int position, int removed,
                int inserted);

    [[nodiscard]] int count() const { return static_cast<int>(lines_.size()); }
    /// REQUIRES: 0 <= index < count().
    [[nodiscard]] const EditLine& line(int index) const { return lines_[static_cast<std::size_t>(index)]; }
    /// The line of a position; the last one for positions behind the text.
    [[nodiscard]] int lineOf(int position) const;
    [[nodiscard]] int widest() const;

private:
    std::vector<EditLine> lines_; // one at least; the last one has no break
};

} // namespace vndk::win32
