// Breaking text into lines, and shortening them.
#include "gdi/device_context.h"
#include "gdi/draw_text.h"

#include <algorithm>

namespace vndk::win32 {

namespace {

constexpr std::string_view ellipsis = "...";

bool isBlank(char character) { return character == ' ' || character == '\t'; }

/// Where the character that begins at `x` ends.
int behind(const Font& font, char character, int x, int tabWidth) {
    if (character == '\t' && tabWidth > 0)
        return limited((std::int64_t{x} / tabWidth + 1) * tabWidth);
    return limited(std::int64_t{x} + font.advance(character));
}

/// How many characters from the start fit into `room`.
std::size_t fitting(const Font& font, std::string_view text, int room, int tabWidth) {
    int x = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        x = behind(font, text[index], x, tabWidth);
        if (x > room)
            return index;
    }
    return text.size();
}

/// A piece of a paragraph that goes into one line, and where the next one begins.
struct Piece {
    std::size_t length;
    std::size_t next;
};

/// The first line of a text. Blanks at the break belong to neither line. A word that is too long stays whole, unless
/// words may break.
Piece firstLine(const Font& font, std::string_view text, int room, const TextFormat& format) {
    constexpr std::size_t none = std::string_view::npos;
    std::size_t breakAt = none;
    int x = 0;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const bool blank = isBlank(text[index]);
        if (blank && (index == 0 || !isBlank(text[index - 1]))) {
            breakAt = index;
            if (x > room)
                break;
        }
        x = behind(font, text[index], x, format.tabWidth);
        if (x <= room || blank)
            continue;
        if (breakAt != none && breakAt > 0)
            break;
        if (format.has(DT_EDITCONTROL) && index > 0)
            return {index, index};
    }
    if (x <= room || breakAt == none || breakAt == 0)
        return {text.size(), text.size()};
    std::size_t next = breakAt;
    while (next < text.size() && isBlank(text[next]))
        ++next;
    return {breakAt, next};
}

void shortenEnd(const Font& font, TextLine& line, int room, const TextFormat& format) {
    const std::size_t kept = fitting(font, line.text, room - font.width(ellipsis), format.tabWidth);
    line.text.resize(kept);
    line.text += ellipsis;
    if (line.marked >= static_cast<int>(kept))
        line.marked = -1;
}

/// Keeps what follows the last backslash, and of the rest as much as fits.
void shortenMiddle(const Font& font, TextLine& line, int room, const TextFormat& format) {
    const std::size_t tailAt = line.text.rfind('\\');
    if (tailAt == std::string::npos) {
        shortenEnd(font, line, room, format);
        return;
    }
    const std::string tail = line.text.substr(tailAt);
    const std::string head = line.text.substr(0, tailAt);
    const int headRoom = room - font.width(ellipsis) - font.width(tail);
    const std::size_t kept = fitting(font, head, headRoom, format.tabWidth);
    line.text = head.substr(0, kept).append(ellipsis).append(tail);
    if (line.marked >= static_cast<int>(tailAt))
        line.marked += static_cast<int>(kept + ellipsis.size()) - static_cast<int>(tailAt);
    else if (line.marked >= static_cast<int>(kept))
        line.marked = -1;
    // Where not even the last part fits, its end may give way as well.
    if (format.has(DT_END_ELLIPSIS) && widthWithTabs(font, line.text, format.tabWidth) > room)
        shortenEnd(font, line, room, format);
}

void shorten(const Font& font, TextLine& line, int room, const TextFormat& format, bool last) {
    line.width = widthWithTabs(font, line.text, format.tabWidth);
    const bool end = format.has(DT_WORD_ELLIPSIS) || (last && format.has(DT_END_ELLIPSIS));
    const bool middle = last && format.has(DT_PATH_ELLIPSIS);
    if (line.width <= room || (!end && !middle))
        return;
    if (middle)
        shortenMiddle(font, line, room, format);
    else
        shortenEnd(font, line, room, format);
    line.shortened = true;
    line.width = widthWithTabs(font, line.text, format.tabWidth);
}

/// Characters of `marked` text that stand for the first `shown` characters without the marks.
std::size_t sourceLength(std::string_view marked, std::size_t shown) {
    std::size_t at = 0;
    for (; shown > 0 && at < marked.size(); --shown)
        at += marked[at] == '&' && at + 1 < marked.size() ? 2 : 1;
    return at;
}

/// Lays out one text after the other until the room below is used up.
class Composer {
public:
    Composer(const Font& font, const TextFormat& format, int width, int height)
        : font_(font), format_(format), width_(width), height_(height) {}

    /// `paragraph` lies at `offset` in the source, `end` is behind its line end. False: nothing more shows.
    bool add(std::string_view paragraph, std::size_t offset, std::size_t end, bool lastParagraph) {
        const MarkedText shown =
            format_.has(DT_NOPREFIX) ? MarkedText{std::string(paragraph), -1} : withoutMarks(paragraph);
        const std::string_view text = shown.text;
        const bool wraps = format_.has(DT_WORDBREAK) && !format_.has(DT_SINGLELINE);
        std::size_t start = 0;
        do {
            Piece piece{text.size() - start, text.size() - start};
            const bool cut = wraps && lastThatShows();
            if (wraps && !cut)
                piece = firstLine(font_, text.substr(start), width_, format_);
            const std::size_t next = start + piece.next;
            TextLine line;
            line.text = text.substr(start, piece.length);
            if (shown.marked >= static_cast<int>(start) && shown.marked < static_cast<int>(start + piece.length))
                line.marked = shown.marked - static_cast<int>(start);
            line.end = next >= text.size() ? end : offset + sourceLengthOf(paragraph, next);
            shorten(font_, line, width_, format_, cut || (lastParagraph && next >= text.size()));
            lines_.push_back(std::move(line));
            if (cut)
                return false;
            start = next;
        } while (start < text.size());
        return true;
    }

    std::vector<TextLine> take() { return std::move(lines_); }

private:
    [[nodiscard]] bool lastThatShows() const {
        const std::int64_t lineHeight = font_.metrics().tmHeight;
        return format_.has(DT_END_ELLIPSIS) && height_ >= 0 &&
               (static_cast<std::int64_t>(lines_.size()) + 2) * lineHeight > height_;
    }
    [[nodiscard]] std::size_t sourceLengthOf(std::string_view paragraph, std::size_t shown) const {
        return format_.has(DT_NOPREFIX) ? shown : sourceLength(paragraph, shown);
    }

    const Font& font_;
    const TextFormat& format_;
    int width_;
    int height_;
    std::vector<TextLine> lines_;
};

} // namespace

MarkedText withoutMarks(std::string_view text) {
    MarkedText result;
    result.text.reserve(text.size());
    for (std::size_t index = 0; index < text.size(); ++index) {
        if (text[index] == '&') {
            ++index;
            if (index == text.size())
                break;
            if (text[index] != '&')
                result.marked = static_cast<int>(result.text.size());
        }
        result.text += text[index];
    }
    return result;
}

int widthWithTabs(const Font& font, std::string_view text, int tabWidth) {
    if (tabWidth <= 0)
        return font.width(text);
    int x = 0;
    for (char character : text)
        x = behind(font, character, x, tabWidth);
    return x;
}

std::vector<TextLine> layOutText(const Font& font, std::string_view text, const TextFormat& format, int width,
                                 int height) {
    Composer composer(font, format, width, height);
    std::size_t start = 0;
    while (true) {
        const std::size_t end =
            format.has(DT_SINGLELINE) ? text.size() : std::min(text.find_first_of("\r\n", start), text.size());
        std::size_t next = end;
        if (end < text.size())
            next += text.substr(end, 2) == "\r\n" ? 2 : 1;
        // A line end at the very end begins no further line.
        const bool last = next >= text.size();
        if (!composer.add(text.substr(start, end - start), start, next, last) || last)
            return composer.take();
        start = next;
    }
}

} // namespace vndk::win32
